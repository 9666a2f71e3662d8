// "Vytvorení": a drawing table from the parts list.

#include <gtest/gtest.h>

#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"
#include "tests/support/failure_sweep.hpp"
#include "tests/support/sample_products.hpp"

namespace {

using testing_support::ActionTest;
using testing_support::AddRow;
using testing_support::HeadlessForm;
using testing_support::kEmptyDrawing;
using Texts = std::vector<std::string>;

struct CreateTable : ActionTest {
    controls::ListView& list = form.ListView1;

    CreateTable() { Open(kEmptyDrawing); }
};

void AddThreeRows(controls::ListView& list) {
    AddRow(list, {"Hřídel", "0001", "2", "2", "S235", "D25x120", "kalit"});
    AddRow(list, {"Kolo", "0002", "1", "", "C45", "", ""});
    AddRow(list, {"Šroub M8", "0003", "12", "3", "8.8", "M8x25", "DIN 933"});
}

TEST_F(CreateTable, WritesTheListFromTheBottomUpUnderTheHeaderAndTheFreeRows) {
    AddThreeRows(list);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_FALSE(Busy());
    const std::string empty = R"("" "" "" "" "" "" "")";
    EXPECT_EQ(
        DrawnRows(),
        (Texts{R"("Pozice" "nazev" "Kusu" "Ciste rozmery" "Material" "Poznamka" "List")", empty,
               empty, empty, empty, empty, R"("3" "Šroub M8" "12" "M8x25" "8.8" "DIN 933" "3")",
               R"("2" "Kolo" "1" "" "C45" "" "")",
               R"("1" "Hřídel" "2" "D25x120" "S235" "kalit" "2")"}));
}

TEST_F(CreateTable, MakesExactlyTheCallsThatItNeedsInTheirOrderAndKinds) {
    AddThreeRows(list);
    form.Command11.Click();
    Texts expected = testing_support::kOpeningCalls;
    expected.insert(expected.end(),
                    {"DrawingView.Tables", R"(DrawingTables.Add(100.0, 100.0, 9, 7, "6.8", 20))",
                     R"(DrawingTable.SetRowSize(1, "4.9"))"});
    const Texts widths{"13.88", "43.67", "15.76", "37.51", "34.61", "31.53", "14.68"};
    for (int column = 1; column <= 7; ++column) {
        expected.push_back("DrawingTable.SetColumnSize(" + std::to_string(column) + ", \"" +
                           widths[static_cast<std::size_t>(column - 1)] + "\")");
    }
    for (int row = 1; row <= 9; ++row) {
        for (int column = 1; column <= 7; ++column) {
            expected.push_back("DrawingTable.GetCellObject(" + std::to_string(row) + ", " +
                               std::to_string(column) + ")");
            expected.push_back(std::string("DrawingText.SetFontSize(0, 0, ") +
                               (row == 1 ? "2.5" : "3.0") + ")");
        }
    }
    const auto cells = [&](int row, const Texts& values) {
        for (int column = 1; column <= 7; ++column) {
            expected.push_back("DrawingTable.SetCellString(" + std::to_string(row) + ", " +
                               std::to_string(column) + ", " +
                               values[static_cast<std::size_t>(column - 1)] + ")");
        }
    };
    cells(1, {R"("Pozice")", R"("nazev")", R"("Kusu")", R"("Ciste rozmery")", R"("Material")",
              R"("Poznamka")", R"("List")"});
    cells(9, {"1.0", R"("Hřídel")", R"("2")", R"("D25x120")", R"("S235")", R"("kalit")", R"("2")"});
    cells(8, {"2.0", R"("Kolo")", R"("1")", R"("")", R"("C45")", R"("")", R"("")"});
    cells(7,
          {"3.0", R"("Šroub M8")", R"("12")", R"("M8x25")", R"("8.8")", R"("DIN 933")", R"("3")"});
    expected.insert(expected.end(), {"Application.ActiveDocument", "DrawingDocument.Selection",
                                     "Selection.Add(DrawingTable)", "Selection.VisProperties",
                                     "VisPropertySet.SetRealWidth(2.0, 1)"});
    EXPECT_EQ(session.Log(), expected);
}

TEST_F(CreateTable, AnnouncesEveryStepAndYieldsThreeKindsOfTimes) {
    AddThreeRows(list);
    form.Text2.SetText(form.Text2.Text() + "/AnchorPoint;2\r\n");
    form.Command11.Click();
    Texts expected{"Zjistuju spusteni Catie",      "Cekam na Catii",
                   "Catie vytvari tabulku",        "Catie upravuje velikost 1 radku",
                   "Catie upravuje pocatecni bod", "Catie upravuje sirku slopcu",
                   "Catie upravuje font"};
    for (int row = 2; row <= 9; ++row) {
        expected.push_back("Catie upravuje font " + std::to_string(row) + "/9");
    }
    expected.insert(expected.end(), {"Catie doplnuje hlavicku", "Catie doplnuje radku 9/9",
                                     "Catie doplnuje radku 8/9", "Catie doplnuje radku 7/9",
                                     "Catie meni tlousku cary", "Tabulka vytvorena Ok "});
    EXPECT_EQ(messages, expected);
    EXPECT_EQ(events.yields, 2 + 3);
}

TEST_F(CreateTable, AnAnchorIsSetOnlyWhenGivenZeroIncluded) {
    AddThreeRows(list);
    form.Text2.SetText("/vyska1;5\r\n/vyska2;5\r\n/sirka;1;1;1;1;1;1;1\r\n/fontsize1;1\r\n"
                       "/fontsize2;1\r\n/AnchorPoint;0\r\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_TRUE(Called("DrawingTable.AnchorPoint = 0.0"));
    EXPECT_FALSE(Called("Selection.VisProperties"));
}

TEST_F(CreateTable, AFontNameIsSetOnEveryCellWhenGivenAndNotEmpty) {
    AddThreeRows(list);
    form.Text2.SetText(form.Text2.Text() + "/fontname;Arial (TrueType)\r\n");
    form.Command11.Click();
    EXPECT_EQ(std::ranges::count(session.Log(),
                                 R"log(DrawingText.SetFontName(0, 0, "Arial (TrueType)"))log"),
              63);
    session.ClearLog();
    form.Text2.SetText(form.Text4.Text() + "/fontname;\r\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_FALSE(Called(R"(DrawingText.SetFontName(0, 0, ""))"));
}

TEST_F(CreateTable, WithoutFreeRowsTheLastListRowStandsUnderTheHeader) {
    AddThreeRows(list);
    form.Text2.SetText(form.Text2.Text() + "/volny;0\r\n");
    form.Command11.Click();
    const auto rows = DrawnRows();
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[1], R"("3" "Šroub M8" "12" "M8x25" "8.8" "DIN 933" "3")");
    EXPECT_EQ(rows[3], R"("1" "Hřídel" "2" "D25x120" "S235" "kalit" "2")");
}

TEST_F(CreateTable, APositionIsWrittenAsTheNumberAtItsBeginningAndZeroWithoutOne) {
    AddRow(list, {"a", "12a"});
    AddRow(list, {"b", "x"});
    AddRow(list, {"c", ""});
    form.Command11.Click();
    EXPECT_TRUE(Called("DrawingTable.SetCellString(9, 1, 12.0)"));
    EXPECT_TRUE(Called("DrawingTable.SetCellString(8, 1, 0.0)"));
    EXPECT_TRUE(Called("DrawingTable.SetCellString(7, 1, 0.0)"));
}

TEST_F(CreateTable, AnEmptyFieldIsWrittenAsAnEmptyCell) {
    AddRow(list, {"a"});
    form.Command11.Click();
    EXPECT_TRUE(Called(R"(DrawingTable.SetCellString(7, 3, ""))"));
}

TEST_F(CreateTable, ADisabledColumnOrderWritesTheNameIntoEveryColumn) {
    AddRow(list, {"a", "0001", "2"});
    form.Text2.SetText(form.Text2.Text() + "-");
    std::string text = form.Text4.Text();
    text.replace(text.find("/razeni"), 7, "-/razeni");
    form.Text2.SetText(text);
    form.Command11.Click();
    EXPECT_EQ(DrawnRows().back(), R"("a" "a" "a" "a" "a" "a" "a")");
}

TEST_F(CreateTable, AColumnOrderThatIsNoNumberEndsTheRunAtThatCell) {
    AddRow(list, {"a"});
    form.Text2.SetText(form.Text2.Text() + "/razeni;1;abc\r\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Catie doplnuje radku 7/7");
    EXPECT_EQ(session.Log().back(), "DrawingTable.SetCellString(7, 1, 0.0)");
    EXPECT_TRUE(Busy());
}

TEST_F(CreateTable, AColumnOrderBeyondTheListsColumnsEndsTheRunAtThatCell) {
    for (const char* slot : {"7", "-1", "99999999999"}) {
        session.ClearLog();
        list.Clear();
        AddRow(list, {"a"});
        form.Text2.SetText(form.Text4.Text() + "/razeni;" + slot + "\r\n");
        form.Command11.Click();
        EXPECT_EQ(Status(), "Catie doplnuje radku 7/7") << slot;
        EXPECT_TRUE(message_boxes.shown.empty());
    }
}

TEST_F(CreateTable, AnEmptyListEndsBeforeAnythingIsShown) {
    form.Command11.Click();
    EXPECT_TRUE(messages.empty());
    EXPECT_TRUE(session.Log().empty());
    EXPECT_FALSE(Busy());
}

TEST_F(CreateTable, WithoutASessionItEndsAfterTheDetection) {
    AddThreeRows(list);
    desktop.titles.clear();
    form.Command11.Click();
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie");
    EXPECT_FALSE(Busy());
    EXPECT_TRUE(session.Log().empty());
}

TEST_F(CreateTable, ADocumentThatIsNoDrawingIsReportedAndNothingIsChanged) {
    AddThreeRows(list);
    session.LoadDocument("product", testing_support::kSampleProduct);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Neni aktivni CATDrawing");
    EXPECT_FALSE(Busy());
    EXPECT_EQ(session.Log().size(), 2U);
}

TEST_F(CreateTable, OnlyTheNameDecidesWhetherADocumentIsADrawing) {
    AddThreeRows(list);
    session.LoadDocument("drawing", "DrawingDocument \"Drawing1.dwg\"\nsheet s\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Neni aktivni CATDrawing");
    session.LoadDocument("drawing", "DrawingDocument lower.catdrawing\nsheet s\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
}

TEST_F(CreateTable, AListOfMoreThanTenValuesEndsTheRunBeforeAnyCall) {
    AddThreeRows(list);
    form.Text2.SetText("/sirka;1;2;3;4;5;6;7;8;9;10;11");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie");
    EXPECT_TRUE(session.Log().empty());
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(CreateTable, APositionWithoutYEndsTheRunBeforeAnyCall) {
    AddThreeRows(list);
    form.Text2.SetText("/pozice;100");
    form.Command11.Click();
    EXPECT_TRUE(session.Log().empty());
}

TEST_F(CreateTable, AHeightThatCatiaCannotConvertEndsTheRunAtTheTable) {
    AddThreeRows(list);
    form.Text2.SetText(form.Text2.Text() + "/vyska2;vysoka\r\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Catie vytvari tabulku");
    EXPECT_TRUE(Busy());
    EXPECT_TRUE(DrawnRows().empty());
}

TEST_F(CreateTable, FreeRowsBeyondWhatATableCanHaveEndTheRunQuietly) {
    AddThreeRows(list);
    for (const char* free_rows : {"1e300", "3000000000", "-1e300"}) {
        form.Text2.SetText(form.Text4.Text() + "/volny;" + free_rows + "\r\n");
        form.Command11.Click();
        EXPECT_TRUE(message_boxes.shown.empty());
        EXPECT_TRUE(DrawnRows().empty());
    }
}

TEST_F(CreateTable, TextsKeepSeparatorsAndCzechLetters) {
    AddRow(list, {"a;b@@c", "0001", "1", "", "\"ocel\"", "ø25", "tab\there"});
    form.Command11.Click();
    EXPECT_EQ(DrawnRows().back(), R"("1" "a;b@@c" "1" "ø25" "\"ocel\"" "tab\there" "")");
}

TEST_F(CreateTable, WritesTheRowsAsTheyStoodWhenItWasPressed) {
    AddThreeRows(list);
    form.Command11.Click();
    const auto undisturbed = DrawnRows();
    Open(testing_support::kEmptyDrawing);
    events.yields = 0;
    events.at_yield[2] = [&] { list.Remove(1); };
    events.at_yield[4] = [&] { list.Clear(); };
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(DrawnRows(), undisturbed);
    EXPECT_EQ(list.Count(), 0U);
}

TEST_F(CreateTable, FreeRowsAreRoundedOnceSoThatNoPartIsLost) {
    AddThreeRows(list);
    for (const auto& [free_rows, rows] : {std::pair{"1.5", 6U}, {"0.5", 4U}, {"2.5", 6U}}) {
        Open(testing_support::kEmptyDrawing);
        form.Text2.SetText(form.Text4.Text() + "/volny;" + free_rows + "\r\n");
        form.Command11.Click();
        EXPECT_EQ(Status(), "Tabulka vytvorena Ok ") << free_rows;
        ASSERT_EQ(DrawnRows().size(), rows) << free_rows;
        EXPECT_EQ(DrawnRows().back(), R"("1" "Hřídel" "2" "D25x120" "S235" "kalit" "2")");
        EXPECT_EQ(DrawnRows()[rows - 3], R"("3" "Šroub M8" "12" "M8x25" "8.8" "DIN 933" "3")")
            << free_rows;
    }
}

TEST_F(CreateTable, FreeRowsAreRoundedTheSameWhateverTheNumberOfParts) {
    // Rounded together with the number of parts, a half would go up or down by that number.
    for (const std::size_t parts : {1U, 2U, 3U, 4U}) {
        for (const auto& [free_rows, rounded] : {std::pair{"0.5", 0U}, {"1.5", 2U}, {"2.5", 2U}}) {
            SCOPED_TRACE(std::to_string(parts) + " parts, free rows " + free_rows);
            Open(testing_support::kEmptyDrawing);
            list.Clear();
            for (std::size_t part = 1; part <= parts; ++part) {
                AddRow(list, {"p" + std::to_string(part), text::FourDigits(part), "1"});
            }
            form.Text2.SetText(form.Text4.Text() + "/volny;" + free_rows + "\r\n");
            form.Command11.Click();
            EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
            const Texts rows = DrawnRows();
            ASSERT_EQ(rows.size(), 1 + rounded + parts);
            for (std::size_t part = 1; part <= parts; ++part) {
                const std::string number = std::to_string(part);
                EXPECT_EQ(rows[rows.size() - part],
                          testing_support::RowOfCells({number, "p" + number, "1", "", "", "", ""}));
            }
        }
    }
}

TEST_F(CreateTable, ASecondClickAtAYieldRunsAndTheFirstRunGoesOn) {
    AddThreeRows(list);
    events.at_yield[3] = [&] { form.Command11.Click(); };
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(DrawnRows().size(), 18U);
    EXPECT_EQ(DrawnRows()[8], R"("1" "Hřídel" "2" "D25x120" "S235" "kalit" "2")");
    EXPECT_EQ(DrawnRows()[17], DrawnRows()[8]);
}

TEST_F(CreateTable, TheWindowClosedMeanwhileEndsItAtTheNextYieldAndThenCloses) {
    AddThreeRows(list);
    events.at_yield[3] = [&] { app::RequestClose(form); };
    form.Command11.Click();
    EXPECT_EQ(events.yields, 3);
    EXPECT_TRUE(form.unloaded);
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(CreateTable, ClosingDuringTwoNestedRunsEndsBoth) {
    AddThreeRows(list);
    events.at_yield[2] = [&] { form.Command11.Click(); };
    events.at_yield[4] = [&] { app::RequestClose(form); };
    form.Command11.Click();
    EXPECT_EQ(events.yields, 4);
    EXPECT_TRUE(form.unloaded);
}

TEST_F(CreateTable, TheThicknessGoesToTheDocumentThatIsActiveThen) {
    AddThreeRows(list);
    events.at_yield[5] = [&] { session.LoadDocument("product", testing_support::kSampleProduct); };
    form.Command11.Click();
    EXPECT_EQ(session.Log()[session.Log().size() - 1], "Selection.Add(DrawingTable)");
    EXPECT_EQ(Status(), "Catie meni tlousku cary") << "a product's selection takes no table";
}

TEST_F(CreateTable, EndsSilentlyWhicheverCallFails) {
    testing_support::Sweep({
        .button = &controls::Form1::Command11,
        .document = kEmptyDrawing,
        .fewest_calls = 176,
        .prepare = [](HeadlessForm& headless) { AddThreeRows(headless.form.ListView1); },
        .after_failure =
            [](const HeadlessForm& complete, HeadlessForm& failed, const simulator::Fault&) {
                testing_support::ExpectSilentEnd(complete, failed);
                EXPECT_LT(failed.messages.size(), complete.messages.size());
                EXPECT_TRUE(failed.Busy());
                EXPECT_EQ(failed.form.ListView1.Count(), 3U);
                EXPECT_EQ(testing_support::RowTexts(failed.form.ListView1, 1),
                          (Texts{"Hřídel", "0001", "2", "2", "S235", "D25x120", "kalit"}));
            },
        .after_next_run =
            [](const HeadlessForm&, const HeadlessForm& next) {
                EXPECT_EQ(next.Status(), "Tabulka vytvorena Ok ");
                EXPECT_FALSE(next.Busy());
            },
    });
}

struct Road : ActionTest {};

TEST_F(Road, FromTheProductToTheTable) {
    Open(testing_support::kSampleProduct);
    form.Command3.Click();
    form.Command4.Click();
    form.ListView1.UserCheck(1, true);
    Open(kEmptyDrawing);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    const std::string drawing = session.DrawingAsText();
    EXPECT_NE(drawing.find(R"("1" "Part 77" "1" "" "" "" "2")"), std::string::npos) << drawing;
    EXPECT_NE(drawing.find(R"("4" "Part 87" "8" "" "" "" "")"), std::string::npos);
}

} // namespace
