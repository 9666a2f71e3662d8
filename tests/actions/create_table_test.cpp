// "Vytvorení": a drawing table from the parts list.

#include <gtest/gtest.h>

#include "tests/support/drawing_samples.hpp"
#include "tests/support/headless_form.hpp"
#include "tests/support/sample_products.hpp"
#include "text/text.hpp"

namespace {

using testing_support::DrawnRows;
using testing_support::HeadlessForm;
using testing_support::kEmptyDrawing;
using Texts = std::vector<std::string>;

struct CreateTable : testing::Test, HeadlessForm {
    simulator::Session session;

    CreateTable() {
        session.LoadDocument("drawing", kEmptyDrawing);
        Connect(session);
    }

    static void AddRow(controls::Form1& to, const Texts& fields) {
        const std::size_t row = to.ListView1.Add(fields.at(0));
        for (std::size_t field = 1; field < fields.size(); ++field) {
            to.ListView1.SetSubItem(row, field, fields[field]);
        }
    }
    static void AddThreeRows(controls::Form1& to) {
        AddRow(to, {"Hřídel", "0001", "2", "2", "S235", "D25x120", "kalit"});
        AddRow(to, {"Kolo", "0002", "1", "", "C45", "", ""});
        AddRow(to, {"Šroub M8", "0003", "12", "3", "8.8", "M8x25", "DIN 933"});
    }
    [[nodiscard]] bool Called(const std::string& call) const {
        return std::ranges::find(session.Log(), call) != session.Log().end();
    }
};

TEST_F(CreateTable, WritesTheListFromTheBottomUpUnderTheHeaderAndTheFreeRows) {
    AddThreeRows(form);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_FALSE(Busy());
    const std::string empty = R"("" "" "" "" "" "" "")";
    EXPECT_EQ(
        DrawnRows(session),
        (Texts{R"("Pozice" "nazev" "Kusu" "Ciste rozmery" "Material" "Poznamka" "List")", empty,
               empty, empty, empty, empty, R"("3" "Šroub M8" "12" "M8x25" "8.8" "DIN 933" "3")",
               R"("2" "Kolo" "1" "" "C45" "" "")",
               R"("1" "Hřídel" "2" "D25x120" "S235" "kalit" "2")"}));
}

TEST_F(CreateTable, MakesExactlyTheCallsThatItNeedsInTheirOrderAndKinds) {
    AddThreeRows(form);
    form.Command11.Click();
    Texts expected{"Application.ActiveDocument",
                   "DrawingDocument.Name",
                   "DrawingDocument.Selection",
                   "DrawingDocument.Sheets",
                   "DrawingSheets.ActiveSheet",
                   "DrawingSheet.Views",
                   "DrawingViews.ActiveView",
                   "DrawingView.Tables",
                   R"(DrawingTables.Add(100.0, 100.0, 9, 7, "6.8", 20))",
                   R"(DrawingTable.SetRowSize(1, "4.9"))"};
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
    AddThreeRows(form);
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
    AddThreeRows(form);
    form.Text2.SetText("/vyska1;5\r\n/vyska2;5\r\n/sirka;1;1;1;1;1;1;1\r\n/fontsize1;1\r\n"
                       "/fontsize2;1\r\n/AnchorPoint;0\r\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_TRUE(Called("DrawingTable.AnchorPoint = 0.0"));
    EXPECT_FALSE(Called("Selection.VisProperties"));
}

TEST_F(CreateTable, AFontNameIsSetOnEveryCellWhenGivenAndNotEmpty) {
    AddThreeRows(form);
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
    AddThreeRows(form);
    form.Text2.SetText(form.Text2.Text() + "/volny;0\r\n");
    form.Command11.Click();
    const auto rows = DrawnRows(session);
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[1], R"("3" "Šroub M8" "12" "M8x25" "8.8" "DIN 933" "3")");
    EXPECT_EQ(rows[3], R"("1" "Hřídel" "2" "D25x120" "S235" "kalit" "2")");
}

TEST_F(CreateTable, APositionIsWrittenAsTheNumberAtItsBeginningAndZeroWithoutOne) {
    AddRow(form, {"a", "12a"});
    AddRow(form, {"b", "x"});
    AddRow(form, {"c", ""});
    form.Command11.Click();
    EXPECT_TRUE(Called("DrawingTable.SetCellString(9, 1, 12.0)"));
    EXPECT_TRUE(Called("DrawingTable.SetCellString(8, 1, 0.0)"));
    EXPECT_TRUE(Called("DrawingTable.SetCellString(7, 1, 0.0)"));
}

TEST_F(CreateTable, AnEmptyFieldIsWrittenAsAnEmptyCell) {
    AddRow(form, {"a"});
    form.Command11.Click();
    EXPECT_TRUE(Called(R"(DrawingTable.SetCellString(7, 3, ""))"));
}

TEST_F(CreateTable, ADisabledColumnOrderWritesTheNameIntoEveryColumn) {
    AddRow(form, {"a", "0001", "2"});
    form.Text2.SetText(form.Text2.Text() + "-");
    std::string text = form.Text4.Text();
    text.replace(text.find("/razeni"), 7, "-/razeni");
    form.Text2.SetText(text);
    form.Command11.Click();
    EXPECT_EQ(DrawnRows(session).back(), R"("a" "a" "a" "a" "a" "a" "a")");
}

TEST_F(CreateTable, AColumnOrderThatIsNoNumberEndsTheRunAtThatCell) {
    AddRow(form, {"a"});
    form.Text2.SetText(form.Text2.Text() + "/razeni;1;abc\r\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Catie doplnuje radku 7/7");
    EXPECT_EQ(session.Log().back(), "DrawingTable.SetCellString(7, 1, 0.0)");
    EXPECT_TRUE(Busy());
}

TEST_F(CreateTable, AColumnOrderBeyondTheListsColumnsEndsTheRunAtThatCell) {
    for (const char* slot : {"7", "-1", "99999999999"}) {
        session.ClearLog();
        form.ListView1.Clear();
        AddRow(form, {"a"});
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
    AddThreeRows(form);
    desktop.titles.clear();
    form.Command11.Click();
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie");
    EXPECT_FALSE(Busy());
    EXPECT_TRUE(session.Log().empty());
}

TEST_F(CreateTable, ADocumentThatIsNoDrawingIsReportedAndNothingIsChanged) {
    AddThreeRows(form);
    session.LoadDocument("product", testing_support::kSampleProduct);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Neni aktivni CATDrawing");
    EXPECT_FALSE(Busy());
    EXPECT_EQ(session.Log().size(), 2U);
}

TEST_F(CreateTable, OnlyTheNameDecidesWhetherADocumentIsADrawing) {
    AddThreeRows(form);
    session.LoadDocument("drawing", "DrawingDocument \"Drawing1.dwg\"\nsheet s\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Neni aktivni CATDrawing");
    session.LoadDocument("drawing", "DrawingDocument lower.catdrawing\nsheet s\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
}

TEST_F(CreateTable, AListOfMoreThanTenValuesEndsTheRunBeforeAnyCall) {
    AddThreeRows(form);
    form.Text2.SetText("/sirka;1;2;3;4;5;6;7;8;9;10;11");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie");
    EXPECT_TRUE(session.Log().empty());
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(CreateTable, APositionWithoutYEndsTheRunBeforeAnyCall) {
    AddThreeRows(form);
    form.Text2.SetText("/pozice;100");
    form.Command11.Click();
    EXPECT_TRUE(session.Log().empty());
}

TEST_F(CreateTable, AHeightThatCatiaCannotConvertEndsTheRunAtTheTable) {
    AddThreeRows(form);
    form.Text2.SetText(form.Text2.Text() + "/vyska2;vysoka\r\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Catie vytvari tabulku");
    EXPECT_TRUE(Busy());
    EXPECT_TRUE(DrawnRows(session).empty());
}

TEST_F(CreateTable, FreeRowsBeyondWhatATableCanHaveEndTheRunQuietly) {
    AddThreeRows(form);
    for (const char* free_rows : {"1e300", "3000000000", "-1e300"}) {
        form.Text2.SetText(form.Text4.Text() + "/volny;" + free_rows + "\r\n");
        form.Command11.Click();
        EXPECT_TRUE(message_boxes.shown.empty());
        EXPECT_TRUE(DrawnRows(session).empty());
    }
}

TEST_F(CreateTable, TextsKeepSeparatorsAndCzechLetters) {
    AddRow(form, {"a;b@@c", "0001", "1", "", "\"ocel\"", "ø25", "tab\there"});
    form.Command11.Click();
    EXPECT_EQ(DrawnRows(session).back(), R"("1" "a;b@@c" "1" "ø25" "\"ocel\"" "tab\there" "")");
}

TEST_F(CreateTable, AListChangedAtAYieldEndsTheRunInItsTrap) {
    AddThreeRows(form);
    events.at_yield = [&](int yield) {
        if (yield == 4) {
            form.ListView1.Clear();
        }
    };
    form.Command11.Click();
    EXPECT_EQ(Status(), "Catie doplnuje radku 8/9");
    EXPECT_TRUE(Busy());
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(CreateTable, ASecondClickAtAYieldRunsAndTheFirstRunGoesOn) {
    AddThreeRows(form);
    events.at_yield = [&](int yield) {
        if (yield == 3) {
            form.Command11.Click();
        }
    };
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(DrawnRows(session).size(), 18U);
    EXPECT_EQ(DrawnRows(session)[8], R"("1" "Hřídel" "2" "D25x120" "S235" "kalit" "2")");
    EXPECT_EQ(DrawnRows(session)[17], DrawnRows(session)[8]);
}

TEST_F(CreateTable, TheWindowClosedMeanwhileEndsItAtTheNextYieldAndThenCloses) {
    AddThreeRows(form);
    events.at_yield = [&](int yield) {
        if (yield == 3) {
            app::RequestClose(form);
        }
    };
    form.Command11.Click();
    EXPECT_EQ(events.yields, 3);
    EXPECT_TRUE(form.unloaded);
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(CreateTable, ClosingDuringTwoNestedRunsEndsBoth) {
    AddThreeRows(form);
    events.at_yield = [&](int yield) {
        if (yield == 2) {
            form.Command11.Click();
        } else if (yield == 4) {
            app::RequestClose(form);
        }
    };
    form.Command11.Click();
    EXPECT_EQ(events.yields, 4);
    EXPECT_TRUE(form.unloaded);
}

TEST_F(CreateTable, TheThicknessGoesToTheDocumentThatIsActiveThen) {
    AddThreeRows(form);
    events.at_yield = [&](int yield) {
        if (yield == 5) {
            session.LoadDocument("product", testing_support::kSampleProduct);
        }
    };
    form.Command11.Click();
    EXPECT_EQ(session.Log()[session.Log().size() - 1], "Selection.Add(DrawingTable)");
    EXPECT_EQ(Status(), "Catie meni tlousku cary") << "a product's selection takes no table";
}

// The n-th call fails, for every n: refused, with a busy session, and with the session gone.
TEST_F(CreateTable, EndsSilentlyWhicheverCallFails) {
    AddThreeRows(form);
    form.Command11.Click();
    const std::size_t calls = session.Log().size();
    const Texts all_messages = messages;
    for (std::size_t call = 1; call <= calls; ++call) {
        for (const auto kind : {simulator::FaultKind::kRefused, simulator::FaultKind::kVanished,
                                simulator::FaultKind::kBusy}) {
            SCOPED_TRACE(testing::Message()
                         << "call " << call << " kind " << static_cast<int>(kind));
            HeadlessForm fresh;
            AddThreeRows(fresh.form);
            simulator::Session doomed;
            doomed.LoadDocument("drawing", kEmptyDrawing);
            fresh.Connect(doomed);
            doomed.Arm({.call = call, .kind = kind});
            fresh.form.Command11.Click();

            EXPECT_EQ(doomed.Log().size(), call);
            ASSERT_LE(fresh.messages.size(), all_messages.size() - 1);
            EXPECT_TRUE(
                std::equal(fresh.messages.begin(), fresh.messages.end(), all_messages.begin()))
                << "the status line keeps the last announcement: " << fresh.Status();
            EXPECT_TRUE(fresh.Busy());
            EXPECT_TRUE(fresh.message_boxes.shown.empty());
            EXPECT_EQ(fresh.form.ListView1.Count(), 3U);
            EXPECT_EQ(testing_support::RowTexts(fresh.form.ListView1, 1),
                      (Texts{"Hřídel", "0001", "2", "2", "S235", "D25x120", "kalit"}));

            simulator::Session restarted;
            restarted.LoadDocument("drawing", kEmptyDrawing);
            fresh.Connect(restarted);
            fresh.form.Command11.Click();
            EXPECT_EQ(fresh.Status(), "Tabulka vytvorena Ok ");
            EXPECT_FALSE(fresh.Busy());
        }
    }
}

TEST(Road, FromTheProductToTheTable) {
    HeadlessForm headless;
    simulator::Session session;
    session.LoadDocument("product", testing_support::kSampleProduct);
    headless.Connect(session);
    headless.form.Command3.Click();
    headless.form.Command4.Click();
    headless.form.ListView1.UserCheck(1, true);
    session.LoadDocument("drawing", kEmptyDrawing);
    headless.form.Command11.Click();
    EXPECT_EQ(headless.Status(), "Tabulka vytvorena Ok ");
    const std::string drawing = session.DrawingAsText();
    EXPECT_NE(drawing.find(R"("1" "Part 77" "1" "" "" "" "2")"), std::string::npos) << drawing;
    EXPECT_NE(drawing.find(R"("4" "Part 87" "8" "" "" "" "")"), std::string::npos);
}

} // namespace
