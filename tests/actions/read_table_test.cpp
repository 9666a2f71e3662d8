// "Parametry" and "Tabulka": a table that stands in the drawing, read back.

#include <gtest/gtest.h>

#include <set>

#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"
#include "tests/support/failure_sweep.hpp"

namespace {

using testing_support::AddRow;
using testing_support::DrawingWithTable;
using testing_support::HeadlessForm;
using testing_support::RowTexts;
using Texts = std::vector<std::string>;

struct Reading : testing_support::ActionTest {
    controls::ListView& list = form.ListView1;
};

struct Parameters : Reading {};
struct ReadTable : Reading {};

const std::string kTwoBySix = "/tlouska_cary =3\r\n"
                              "/fontname;Arial (TrueType)\r\n"
                              "/fontsize;3.5\r\n"
                              "/text;old\r\n"
                              "/sloupcu;6\r\n"
                              "/radek;2\r\n"
                              "/sirka;11;12;13;14;15;16\r\n"
                              "/vyska1;5.5\r\n"
                              "/vyska2;6.5\r\n"
                              "/hlavicka;old;old;old;old;old;old\r\n"
                              "/pozice;30;40.5\r\n"
                              "/AnchorPoint;2\r\n";

TEST_F(Parameters, WritesTheTablesLayoutAsConfigurationLines) {
    Open(DrawingWithTable(2, 6));
    form.Command10.Click();
    EXPECT_EQ(form.Text3.Text(), kTwoBySix);
    EXPECT_EQ(Status(), "Nacteni parametru Ok");
}

TEST_F(Parameters, PressingTwiceGivesTheSameText) {
    Open(DrawingWithTable(2, 6));
    form.Command10.Click();
    form.Command10.Click();
    EXPECT_EQ(form.Text3.Text(), kTwoBySix);
}

TEST_F(Parameters, MakesEachCallOnce) {
    Open(DrawingWithTable(2, 6));
    form.Command10.Click();
    Texts expected = testing_support::kOpeningCalls;
    expected.insert(expected.end(),
                    {"Selection.Count2", "Selection.VisProperties",
                     "VisPropertySet.GetRealWidth(ref 0)", "Selection.Item2(1)",
                     "SelectedElement.Type", "SelectedElement.Value",
                     "DrawingTable.GetCellObject(1, 1)", "DrawingText.GetFontName(0, 0)",
                     "DrawingText.GetFontSize(0, 0)", "DrawingText.Text",
                     "DrawingTable.NumberOfColumns", "DrawingTable.NumberOfRows"});
    for (int column = 1; column <= 6; ++column) {
        expected.push_back("DrawingTable.GetColumnSize(" + std::to_string(column) + ")");
    }
    expected.insert(expected.end(), {"DrawingTable.GetRowSize(1)", "DrawingTable.GetRowSize(2)"});
    for (int column = 1; column <= 6; ++column) {
        expected.push_back("DrawingTable.GetCellString(1, " + std::to_string(column) + ")");
    }
    expected.insert(expected.end(),
                    {"DrawingTable.X", "DrawingTable.Y", "DrawingTable.AnchorPoint"});
    EXPECT_EQ(session.Log(), expected);
}

TEST_F(Parameters, ATableMadeFromTheDefaultReadsBackAsIt) {
    Open(testing_support::kEmptyDrawing);
    AddRow(list, {"Hřídel", "0001", "2"});
    form.Command11.Click();
    ASSERT_EQ(Status(), "Tabulka vytvorena Ok "); // which leaves the table selected
    form.Command10.Click();
    const std::string& text = form.Text3.Text();
    for (const char* line :
         {"/sirka;13.88;43.67;15.76;37.51;34.61;31.53;14.68\r\n", "/vyska1;4.9\r\n",
          "/vyska2;6.8\r\n", "/hlavicka;Pozice;nazev;Kusu;Ciste rozmery;Material;Poznamka;List\r\n",
          "/pozice;100;100\r\n", "/sloupcu;7\r\n", "/radek;7\r\n", "/tlouska_cary =2\r\n"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << "is not in\n" << text;
    }
}

TEST_F(Parameters, AWideTableWritesAllItsColumns) {
    Open(DrawingWithTable(2, 12));
    form.Command10.Click();
    EXPECT_NE(form.Text3.Text().find("/sirka;11;12;13;14;15;16;17;18;19;20;21;22\r\n"),
              std::string::npos);
    EXPECT_EQ(Status(), "Nacteni parametru Ok");
}

TEST_F(Parameters, AnEmptySelectionIsReportedAndTheTextStays) {
    Open(testing_support::kEmptyDrawing);
    form.Text3.SetText("kept");
    form.Command10.Click();
    EXPECT_EQ(Status(), "Nejsou vybrany zadny objekty");
    EXPECT_EQ(form.Text3.Text(), "kept");
}

TEST_F(Parameters, OfAnElementThatIsNoTableTheLineWidthAloneIsWritten) {
    Open("DrawingDocument D.CATDrawing\nsheet s\n view v\n  text \"20 H7\" weight 4 selected\n");
    form.Command10.Click();
    EXPECT_EQ(form.Text3.Text(), "/tlouska_cary =4\r\n");
    EXPECT_EQ(Status(), "Nacteni parametru Ok");
}

TEST_F(Parameters, ATableOfOneRowLeavesWhatWasWrittenBeforeTheFailingQuery) {
    Open(DrawingWithTable(1, 6));
    form.Command10.Click();
    EXPECT_TRUE(
        form.Text3.Text().ends_with("/radek;1\r\n/sirka;11;12;13;14;15;16\r\n/vyska1;5.5\r\n"))
        << form.Text3.Text();
    EXPECT_EQ(Status(), "Cekam na Catii");
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(ReadTable, ATableMadeFromAListGivesTheListBackCheckBoxesIncluded) {
    Open(testing_support::kEmptyDrawing);
    AddRow(list, {"Hřídel", "0001", "2", "2", "S235", "20x120", "kalit;brousit"}, true);
    AddRow(list, {"Kolo", "0002", "1", "", "C45", "", "a@@b"}, false);
    AddRow(list, {"Šroub M8", "0003", "12", "3", "", "M8x25", ""}, true);
    form.Command11.Click();
    ASSERT_EQ(Status(), "Tabulka vytvorena Ok ");
    list.Clear();
    form.Command9.Click();
    EXPECT_EQ(Status(), "Nacteni tabulky Ok");
    EXPECT_EQ(RowCount(), "Pozic: 3");
    ASSERT_EQ(list.Count(), 3U);
    // A position goes out as a number.
    EXPECT_EQ(RowTexts(list, 1),
              (Texts{"Hřídel", "1", "2", "2", "S235", "20x120", "kalit;brousit"}));
    EXPECT_EQ(RowTexts(list, 2), (Texts{"Kolo", "2", "1", "", "C45", "", "a@@b"}));
    EXPECT_EQ(RowTexts(list, 3), (Texts{"Šroub M8", "3", "12", "3", "", "M8x25", ""}));
    EXPECT_TRUE(list.Row(1).checked);
    EXPECT_FALSE(list.Row(2).checked);
    EXPECT_TRUE(list.Row(3).checked);
}

TEST_F(ReadTable, WritesTheParametersToo) {
    Open(DrawingWithTable(2, 7));
    form.Command9.Click();
    EXPECT_TRUE(form.Text3.Text().starts_with("/tlouska_cary =3\r\n/fontname;"));
    EXPECT_TRUE(form.Text3.Text().ends_with("/AnchorPoint;2\r\n"));
}

TEST_F(ReadTable, ReplacesTheListAndAnnouncesEveryRow) {
    Open(DrawingWithTable(2, 7));
    AddRow(list, {"gone"});
    form.Command9.Click();
    EXPECT_EQ(messages, (Texts{"Zjistuju spusteni Catie", "Cekam na Catii", "Nacteni radky:2",
                               "Nacteni radky:1", "Nacteni tabulky Ok"}));
    EXPECT_EQ(list.Count(), 2U);
}

std::string SevenColumns(const Texts& rows) {
    std::string drawing = "DrawingDocument D.CATDrawing\nsheet s\n view v\n"
                          "  table at 0 0 selected columns 10 10 10 10 10 10 10\n";
    for (const std::string& row : rows) {
        drawing += "   row 5 font 3 Arial cells " + row + "\n";
    }
    return drawing;
}

TEST_F(ReadTable, ARowWithoutAPositionIsSkippedWhateverElseItHolds) {
    Open(SevenColumns({R"("P" "h" "h" "h" "h" "h" "List")", R"("" "x" "1" "2" "3" "4" "5")",
                       R"("1" "a" "1" "2" "3" "4" "5")"}));
    form.Command9.Click();
    EXPECT_EQ(RowCount(), "Pozic: 1");
    EXPECT_EQ(RowTexts(list, 1), (Texts{"a", "1", "1", "5", "3", "2", "4"}));
}

TEST_F(ReadTable, AHeaderWithAnotherLastHeadingIsLoadedAsARow) {
    Open(SevenColumns(
        {R"("Pozice" "nazev" "k" "r" "m" "p" "list")", R"("1" "a" "1" "2" "3" "4" "")"}));
    form.Command9.Click();
    EXPECT_EQ(testing_support::Column(list, 0), (Texts{"a", "nazev"}));
    EXPECT_TRUE(list.Row(2).checked);
}

TEST_F(ReadTable, ATableOfOtherColumnsLeavesTheListEmpty) {
    Open(DrawingWithTable(3, 6));
    AddRow(list, {"gone"});
    form.Command9.Click();
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_EQ(RowCount(), "Pozic: 0");
}

TEST_F(ReadTable, NothingSelectedIsReportedAndTheListStays) {
    Open(testing_support::kEmptyDrawing);
    AddRow(list, {"kept"});
    form.Command9.Click();
    EXPECT_EQ(Status(), "Nejsou vybrany zadny objekty");
    EXPECT_EQ(list.Count(), 1U);
}

TEST_F(ReadTable, AnElementThatIsNoTableIsReportedAndTheListStays) {
    Open("DrawingDocument D.CATDrawing\nsheet s\n view v\n  text \"20 H7\" selected\n");
    AddRow(list, {"kept"});
    form.Command9.Click();
    EXPECT_EQ(Status(), "Spatny vyber");
    EXPECT_EQ(list.Count(), 1U);
    EXPECT_EQ(form.Text3.Text(), "/tlouska_cary =1\r\n");
}

TEST_F(ReadTable, ReadsNoCellTwice) {
    Open(DrawingWithTable(3, 7));
    form.Command9.Click();
    Texts cells;
    for (const std::string& call : session.Log()) {
        if (call.starts_with("DrawingTable.GetCellObject")) {
            cells.push_back(call);
        }
    }
    // Cell 1, 1 is read for its font and for its text.
    EXPECT_EQ(cells.size(), 1U + 3 * 7);
    EXPECT_EQ(std::set<std::string>(cells.begin(), cells.end()).size(), cells.size() - 1);
}

TEST_F(ReadTable, FiveHundredRowsComeBack) {
    Open(testing_support::kEmptyDrawing);
    Texts names;
    for (int i = 1; i <= 500; ++i) {
        names.push_back("díl " + std::to_string(i));
        AddRow(list, {names.back(), std::to_string(i), "1", i % 3 == 0 ? "2" : "", "m", "s", "n"});
    }
    form.Command11.Click();
    list.Clear();
    form.Command9.Click();
    EXPECT_EQ(testing_support::Column(list, 0), names);
    EXPECT_EQ(RowCount(), "Pozic: 500");
}

TEST_F(ReadTable, TheWindowClosedMeanwhileEndsIt) {
    Open(DrawingWithTable(5, 7));
    events.at_yield[2] = [&] { app::RequestClose(form); };
    form.Command9.Click();
    EXPECT_TRUE(form.unloaded);
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_FALSE(files.stored.contains("C:\\Dorvak\\list.txt")) << "a part of a list was saved";
}

// The second panel tells the number of rows that stand in the list, however reading ends.
struct RowCountAfter : Reading {
    RowCountAfter() {
        form.m_Pridat.Click();
        form.m_Pridat.Click();
    }
    void ReadAndExpect(const std::string& status, std::size_t rows) {
        form.Command9.Click();
        EXPECT_EQ(Status(), status);
        EXPECT_EQ(list.Count(), rows) << status;
        EXPECT_EQ(RowCount(), "Pozic: " + std::to_string(rows)) << status;
    }
};

TEST_F(RowCountAfter, EveryRefusal) {
    ASSERT_EQ(RowCount(), "Pozic: 2");
    ReadAndExpect("Zjistuju spusteni Catie", 2);
    desktop.titles = {"CATIA V5"};
    ReadAndExpect("Cekam na Catii", 2); // there is a window, and no application
    Open("ProductDocument P.CATProduct\nproduct a\n");
    ReadAndExpect("Neni aktivni CATDrawing", 2);
    Open(testing_support::kEmptyDrawing);
    ReadAndExpect("Nejsou vybrany zadny objekty", 2);
    Open("DrawingDocument D.CATDrawing\nsheet s\n view v\n  text abc selected\n");
    ReadAndExpect("Spatny vyber", 2);
    Open(DrawingWithTable(1, 7));
    ReadAndExpect("Cekam na Catii", 2); // there is no second row whose height is read
    Open(DrawingWithTable(3, 6));
    ReadAndExpect("Cekam na Catii", 0); // emptied, and nothing to load
}

TEST_F(RowCountAfter, AFailureOfAnyCall) {
    Open(DrawingWithTable(3, 7));
    form.Command9.Click();
    ASSERT_EQ(RowCount(), "Pozic: 3");
    const std::size_t calls = session.Log().size();
    std::size_t least = 3;
    for (std::size_t call = 1; call <= calls; ++call) {
        Open(DrawingWithTable(3, 7));
        list.Clear();
        form.m_Pridat.Click();
        session.Arm({.call = call});
        form.Command9.Click();
        EXPECT_NE(Status(), "Nacteni tabulky Ok") << call;
        EXPECT_EQ(RowCount(), "Pozic: " + std::to_string(list.Count())) << call;
        least = std::min(least, list.Count());
    }
    EXPECT_EQ(least, 0U) << "the failures reach into the rows";
    EXPECT_EQ(list.Count(), 3U) << "rows read before the failure stay, the last with what it had";
    EXPECT_EQ(RowTexts(list, 1), (Texts{"old", "old", "old", "old", "old", "old", "old"}));
}

struct ReadingSweep : testing::TestWithParam<controls::Button controls::Form1::*> {};

TEST_P(ReadingSweep, EndsSilentlyWhicheverCallFails) {
    testing_support::Sweep({
        .button = GetParam(),
        .document = DrawingWithTable(3, 7),
        .fewest_calls = 30,
        .after_failure =
            [](const HeadlessForm& complete, HeadlessForm& failed, const simulator::Fault&) {
                testing_support::ExpectSilentEnd(complete, failed);
                EXPECT_TRUE(complete.form.Text3.Text().starts_with(failed.form.Text3.Text()));
            },
        .after_next_run =
            [](const HeadlessForm& complete, const HeadlessForm& next) {
                EXPECT_EQ(next.form.Text3.Text(), complete.form.Text3.Text());
                EXPECT_EQ(next.form.ListView1.Count(), complete.form.ListView1.Count());
            },
    });
}

INSTANTIATE_TEST_SUITE_P(Actions, ReadingSweep,
                         testing::Values(&controls::Form1::Command10, &controls::Form1::Command9));

} // namespace
