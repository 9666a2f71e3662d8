// The smaller exports: into a table that stands in the drawing, as a table of one row, as texts.

#include <gtest/gtest.h>

#include "tables/drawing_action.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"
#include "tests/support/failure_sweep.hpp"
#include "tests/support/sample_products.hpp"

namespace {

using testing_support::AddRow;
using testing_support::DrawingWithTable;
using testing_support::HeadlessForm;
using testing_support::kOpeningCalls;
using Texts = std::vector<std::string>;

const std::string kOldRow6 = R"("old" "old" "old" "old" "old" "old")";
const std::string kOldRow7 = kOldRow6 + R"( "old")";

// Three rows, the second of them the current one.
void AddRowsToExport(controls::ListView& list) {
    AddRow(list, {"Hřídel", "0001", "2", "2", "S235", "20x120", "kalit"});
    AddRow(list, {"Kolo", "0012b", "1", "3", "C45", "D25", "a;b@@c"});
    AddRow(list, {"Víko", "", "4", "", "", "20xd5", ""});
    list.SetCurrentRow(2);
}

struct Export : testing_support::ActionTest {
    Export() { AddRowsToExport(form.ListView1); }

    [[nodiscard]] std::size_t Count(std::string_view part) const {
        return static_cast<std::size_t>(
            std::ranges::count_if(session.Log(), [&](const std::string& call) {
                return call.find(part) != std::string::npos;
            }));
    }
};

struct SmallTable : Export {};
struct WholeTable : Export {};
struct SingleRow : Export {};
struct LooseTexts : Export {};

Texts AfterOpening(const std::vector<std::string>& log) {
    EXPECT_GE(log.size(), kOpeningCalls.size());
    EXPECT_TRUE(std::equal(kOpeningCalls.begin(), kOpeningCalls.end(), log.begin()));
    return {log.begin() + static_cast<std::ptrdiff_t>(kOpeningCalls.size()), log.end()};
}

TEST(DiameterSign, TakesThePlaceOfTheFirstCharacterWhereTheSizeHoldsAD) {
    EXPECT_EQ(tables::WithDiameterSign("D25", "ø"), "ø25");
    EXPECT_EQ(tables::WithDiameterSign("d25", "ø"), "ø25");
    EXPECT_EQ(tables::WithDiameterSign("20xD5", "ø"), "ø0xD5");
    EXPECT_EQ(tables::WithDiameterSign("ø25xD", "ř"), "ř25xD");
    EXPECT_EQ(tables::WithDiameterSign("D", "ø"), "ø");
}

TEST(DiameterSign, LeavesOtherSizesAsTheyAre) {
    EXPECT_EQ(tables::WithDiameterSign("20x40", "ø"), "20x40");
    EXPECT_EQ(tables::WithDiameterSign("", "ø"), "");
    EXPECT_EQ(tables::WithDiameterSign("Ď25", "ø"), "Ď25");
}

TEST(CurrentPart, WithoutACurrentRowIsAMissingObject) {
    HeadlessForm headless;
    try {
        static_cast<void>(tables::CurrentPart(tables::TakeParts(headless.form.ListView1)));
        FAIL();
    } catch (const automation::RunTimeError& error) {
        EXPECT_EQ(error.number, 91);
        EXPECT_EQ(error.description, "Object variable or With block variable not set");
    }
}

TEST_F(SmallTable, TakesTheCurrentRowIntoItsSecondRow) {
    Open(DrawingWithTable(2, 6));
    form.Command16.Click();
    EXPECT_EQ(Status(), "Vlozeni dat Ok");
    EXPECT_EQ(DrawnRows(), (Texts{kOldRow6, R"("12" "Kolo" "1" "ø25" "C45" "a;b@@c")"}));
    EXPECT_EQ(messages, (Texts{"Zjistuju spusteni Catie", "Cekam na Catii", "Vyplnovani tabulky ",
                               "Vlozeni dat Ok"}));
}

TEST_F(SmallTable, MakesEachCallOnce) {
    Open(DrawingWithTable(2, 6));
    form.Command16.Click();
    EXPECT_EQ(AfterOpening(session.Log()),
              (Texts{"Selection.Count2", "Selection.Item2(1)", "SelectedElement.Type",
                     "SelectedElement.Value", "DrawingTable.NumberOfColumns",
                     "DrawingTable.NumberOfRows", "DrawingTable.SetCellString(2, 1, 12.0)",
                     R"(DrawingTable.SetCellString(2, 2, "Kolo"))",
                     R"(DrawingTable.SetCellString(2, 3, "1"))",
                     R"(DrawingTable.SetCellString(2, 4, "ø25"))",
                     R"(DrawingTable.SetCellString(2, 5, "C45"))",
                     R"(DrawingTable.SetCellString(2, 6, "a;b@@c"))"}));
}

TEST_F(SmallTable, ASizeWithTheLetterFurtherInLosesItsFirstCharacter) {
    Open(DrawingWithTable(2, 6));
    form.ListView1.SetCurrentRow(3);
    form.Command16.Click();
    EXPECT_EQ(DrawnRows()[1], R"("0" "Víko" "4" "ø0xd5" "" "")");
}

TEST_F(SmallTable, TablesOfOtherSizesAreRefusedAndLeftAlone) {
    for (const auto& [rows, columns] : {std::pair{3, 6}, {2, 7}, {1, 6}, {2, 5}}) {
        Open(DrawingWithTable(rows, columns));
        form.Command16.Click();
        EXPECT_EQ(Status(), "spatna velikost tabulky") << rows << " x " << columns;
        EXPECT_EQ(Count("SetCellString"), 0U);
    }
}

TEST_F(SmallTable, NothingSelectedIsReported) {
    Open(testing_support::kEmptyDrawing);
    form.Command16.Click();
    EXPECT_EQ(Status(), "Nejsou vybrany zadny objekty");
    form.Command30.Click();
    EXPECT_EQ(Status(), "Nejsou vybrany zadny objekty");
}

TEST_F(SmallTable, SomethingElseSelectedIsReported) {
    Open("DrawingDocument D.CATDrawing\nsheet s\n view v\n  text abc selected\n");
    form.Command16.Click();
    EXPECT_EQ(Status(), "Spatny vyber");
    form.Command30.Click();
    EXPECT_EQ(Status(), "Spatny vyber");
}

TEST_F(SmallTable, WithoutACurrentRowItEndsWhereTheRowIsNeeded) {
    Open(DrawingWithTable(2, 6));
    form.ListView1.SetCurrentRow(std::nullopt);
    form.Command16.Click();
    EXPECT_EQ(Status(), "Vyplnovani tabulky ");
    EXPECT_EQ(Count("SetCellString"), 0U);
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(Export, ADocumentThatIsNoDrawingIsReportedByEveryAction) {
    Open(testing_support::kSampleProduct);
    for (controls::Button* button :
         {&form.Command16, &form.Command30, &form.Command7, &form.Command6, &form.Command8,
          &form.Command10, &form.Command9}) {
        form.StatusBar1.SetPanelText(1, "");
        button->Click();
        EXPECT_EQ(Status(), "Neni aktivni CATDrawing") << button->Caption();
        EXPECT_FALSE(Busy());
    }
    EXPECT_EQ(form.ListView1.Count(), 3U);
}

TEST_F(Export, WithoutASessionEveryActionEndsAfterTheDetection) {
    for (controls::Button* button :
         {&form.Command16, &form.Command30, &form.Command7, &form.Command6, &form.Command8,
          &form.Command10, &form.Command9}) {
        form.StatusBar1.SetPanelText(1, "");
        button->Click();
        EXPECT_EQ(Status(), "Zjistuju spusteni Catie") << button->Caption();
    }
}

TEST_F(Export, TheMenuItemsRunTheButtonsActions) {
    Open(DrawingWithTable(2, 6));
    form.m_vlozit_do_tabulky.Click();
    EXPECT_EQ(Status(), "Vlozeni dat Ok");
    form.m_poslat_jako_tabulku.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    session.ClearLog();
    form.m_Poslat_jako_text.Click();
    EXPECT_EQ(Count("DrawingTexts.Add"), 6U);
}

TEST_F(WholeTable, TakesTheListFromTheBottomAndEmptiesTheRest) {
    Open(DrawingWithTable(6, 7));
    form.Command30.Click();
    EXPECT_EQ(Status(), "Vlozeni dat Ok");
    const std::string empty = R"("" "" "" "" "" "" "")";
    EXPECT_EQ(DrawnRows(), (Texts{kOldRow7, empty, empty, R"("3" "Víko" "4" "ø0xd5" "" "" "")",
                                  R"("2" "Kolo" "1" "ø25" "C45" "a;b@@c" "3")",
                                  R"("1" "Hřídel" "2" "20x120" "S235" "kalit" "2")"}));
}

TEST_F(WholeTable, AnnouncesRowsAndColumns) {
    Open(DrawingWithTable(5, 7));
    form.Command30.Click();
    EXPECT_EQ(messages, (Texts{"Zjistuju spusteni Catie", "Cekam na Catii", "Vyplnovani tabulky ",
                               "Vyplnovani tabulky 5/5", "Vyplnovani tabulky 4/5",
                               "Vyplnovani tabulky 3/5", "Mazani tabulky 1/7", "Mazani tabulky 2/7",
                               "Mazani tabulky 3/7", "Mazani tabulky 4/7", "Mazani tabulky 5/7",
                               "Mazani tabulky 6/7", "Mazani tabulky 7/7", "Vlozeni dat Ok"}));
}

TEST_F(WholeTable, ATableOfExactlyTheListAndAHeaderIsFilledWithoutEmptying) {
    Open(DrawingWithTable(4, 7));
    form.Command30.Click();
    EXPECT_EQ(Status(), "Vlozeni dat Ok");
    EXPECT_EQ(DrawnRows()[1], R"("3" "Víko" "4" "ø0xd5" "" "" "")");
    EXPECT_EQ(DrawnRows()[0], kOldRow7);
}

TEST_F(WholeTable, ThePositionIsTheRowsPlaceAsText) {
    Open(DrawingWithTable(4, 7));
    form.Command30.Click();
    EXPECT_TRUE(Called(R"(DrawingTable.SetCellString(4, 1, "1"))"));
}

TEST_F(WholeTable, AnEmptyListEmptiesTheTable) {
    Open(DrawingWithTable(3, 7));
    form.ListView1.Clear();
    form.Command30.Click();
    const std::string empty = R"("" "" "" "" "" "" "")";
    EXPECT_EQ(DrawnRows(), (Texts{kOldRow7, empty, empty}));
}

TEST_F(WholeTable, TablesTooShortOrOfOtherColumnsAreRefusedAndLeftAlone) {
    for (const auto& [rows, columns] : {std::pair{3, 7}, {4, 6}, {4, 8}, {9, 12}}) {
        Open(DrawingWithTable(rows, columns));
        form.Command30.Click();
        EXPECT_EQ(Status(), "spatna velikost tabulky") << rows << " x " << columns;
        EXPECT_EQ(Count("SetCellString"), 0U);
    }
}

TEST_F(WholeTable, WritesTheRowsAsTheyStoodWhenItWasPressed) {
    Open(DrawingWithTable(4, 7));
    form.Command30.Click();
    const auto undisturbed = DrawnRows();
    Open(DrawingWithTable(4, 7));
    events.yields = 0;
    events.at_yield[1] = [&] { form.ListView1.Clear(); };
    form.Command30.Click();
    EXPECT_EQ(Status(), "Vlozeni dat Ok");
    EXPECT_EQ(DrawnRows(), undisturbed);
}

TEST_F(SingleRow, CreatesATableOfTheCurrentRow) {
    Open(testing_support::kEmptyDrawing);
    form.Command7.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_FALSE(Busy());
    EXPECT_EQ(DrawnRows(),
              (Texts{R"("Pozice" "nazev" "Kusu" "Ciste rozmery" "Material" "Poznamka" "List")",
                     R"("12" "Kolo" "1" "D25" "C45" "a;b@@c" "")"}));
}

TEST_F(SingleRow, DiffersFromTheWholeListInNothingButItsDifferences) {
    Open(testing_support::kEmptyDrawing);
    form.Text2.SetText(form.Text2.Text() + "/AnchorPoint;2\r\n");
    form.Command7.Click();
    Texts expected{"DrawingView.Tables", R"(DrawingTables.Add(100.0, 100.0, 2, 7, "6.8", 20))",
                   "DrawingTable.AnchorPoint = 2.0", R"(DrawingTable.SetRowSize(1, "4.9"))"};
    const Texts widths{"13.88", "43.67", "15.76", "37.51", "34.61", "44.6", "14.68"};
    for (std::size_t column = 1; column <= 7; ++column) {
        expected.push_back("DrawingTable.SetColumnSize(" + std::to_string(column) + ", \"" +
                           widths[column - 1] + "\")");
    }
    for (const std::string row : {"1", "2"}) {
        for (int column = 1; column <= 7; ++column) {
            expected.push_back("DrawingTable.GetCellObject(" + row + ", " + std::to_string(column) +
                               ")");
            expected.push_back(std::string("DrawingText.SetFontSize(0, 0, ") +
                               (row == "1" ? "2.5" : "3.0") + ")");
        }
    }
    const Texts headers{"Pozice", "nazev", "Kusu", "Ciste rozmery", "Material", "Poznamka", "List"};
    for (std::size_t column = 1; column <= 7; ++column) {
        expected.push_back("DrawingTable.SetCellString(1, " + std::to_string(column) + ", \"" +
                           headers[column - 1] + "\")");
    }
    expected.insert(
        expected.end(),
        {"DrawingTable.SetCellString(2, 1, 12.0)", "DrawingTable.SetCellString(2, 1, 12.0)",
         R"(DrawingTable.SetCellString(2, 2, "Kolo"))", R"(DrawingTable.SetCellString(2, 3, "1"))",
         R"(DrawingTable.SetCellString(2, 4, "D25"))", R"(DrawingTable.SetCellString(2, 5, "C45"))",
         R"(DrawingTable.SetCellString(2, 6, "a;b@@c"))", "Application.ActiveDocument",
         "DrawingDocument.Selection", "Selection.Add(DrawingTable)", "Selection.VisProperties",
         "VisPropertySet.SetRealWidth(2.0, 1)"});
    EXPECT_EQ(AfterOpening(session.Log()), expected);
    EXPECT_EQ(messages, (Texts{"Zjistuju spusteni Catie", "Cekam na Catii", "Catie vytvari tabulku",
                               "Catie upravuje pocatecni bod", "Catie upravuje velikost 1 radku",
                               "Catie upravuje sirku slopcu", "Catie upravuje font",
                               "Catie upravuje font 2/2", "Catie doplnuje hlavicku",
                               "Catie meni tlousku cary", "Tabulka vytvorena Ok "}));
}

TEST_F(SingleRow, AFontNameIsSetOnEveryCellAfterItsSize) {
    Open(testing_support::kEmptyDrawing);
    form.Text2.SetText(form.Text2.Text() + "/fontname;Arial (TrueType)\r\n");
    form.Command7.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    Texts expected;
    for (const char* size : {"2.5", "3.0"}) {
        for (int column = 1; column <= 7; ++column) {
            expected.push_back(std::string("DrawingText.SetFontSize(0, 0, ") + size + ")");
            expected.emplace_back(R"log(DrawingText.SetFontName(0, 0, "Arial (TrueType)"))log");
        }
    }
    Texts fonts;
    std::ranges::copy_if(session.Log(), std::back_inserter(fonts), [](const std::string& call) {
        return call.starts_with("DrawingText.SetFont");
    });
    EXPECT_EQ(fonts, expected);
}

TEST_F(SingleRow, AnEmptyFontNameIsNotSet) {
    Open(testing_support::kEmptyDrawing);
    form.Text2.SetText(form.Text2.Text() + "/fontname;\r\n");
    form.Command7.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(Count("SetFontName"), 0U);
}

TEST_F(SingleRow, FreeRowsAndColumnOrderHaveNoEffect) {
    Open(testing_support::kEmptyDrawing);
    form.Text2.SetText(form.Text2.Text() + "/volny;1e300\r\n/razeni;abc\r\n");
    form.Command7.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(DrawnRows().size(), 2U);
}

TEST_F(SingleRow, AListOfMoreThanTenValuesEndsItBeforeAnyCall) {
    Open(testing_support::kEmptyDrawing);
    form.Text2.SetText("/sirka1;1;2;3;4;5;6;7;8;9;10;11");
    form.Command7.Click();
    EXPECT_TRUE(session.Log().empty());
}

TEST_F(SingleRow, WithoutACurrentRowItEndsWhereTheRowIsNeeded) {
    Open(testing_support::kEmptyDrawing);
    form.ListView1.SetCurrentRow(std::nullopt);
    form.Command7.Click();
    EXPECT_EQ(Status(), "Catie doplnuje hlavicku");
    EXPECT_TRUE(Busy());
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(SingleRow, AnEmptyListEndsBeforeAnythingIsShown) {
    Open(testing_support::kEmptyDrawing);
    form.ListView1.Clear();
    form.Command7.Click();
    EXPECT_TRUE(messages.empty());
}

TEST_F(LooseTexts, PlacesTheSixValuesOfTheCurrentRowAtOnePoint) {
    Open(testing_support::kEmptyDrawing);
    form.Command6.Click();
    Texts expected{"DrawingView.Texts"};
    for (const char* value : {"12.0", "\"Kolo\"", "\"1\"", "\"D25\"", "\"C45\"", "\"a;b@@c\""}) {
        expected.push_back(std::string("DrawingTexts.Add(") + value + ", 100.0, 100.0)");
        expected.emplace_back(R"log(DrawingText.SetFontName(0, 0, "Arial (TrueType)"))log");
        expected.emplace_back("DrawingText.SetFontSize(0, 0, 3.5)");
    }
    EXPECT_EQ(AfterOpening(session.Log()), expected);
    EXPECT_NE(session.DrawingAsText().find(R"(text "12" at 100 100)"), std::string::npos)
        << session.DrawingAsText();
}

TEST_F(LooseTexts, AnEmptyListEndsWithoutAMessage) {
    Open(testing_support::kEmptyDrawing);
    form.ListView1.Clear();
    form.Command6.Click();
    EXPECT_TRUE(messages.empty());
    EXPECT_TRUE(session.Log().empty());
}

TEST_F(LooseTexts, WithoutACurrentRowNothingIsPlaced) {
    Open(testing_support::kEmptyDrawing);
    form.ListView1.SetCurrentRow(std::nullopt);
    form.Command6.Click();
    EXPECT_EQ(Count("DrawingTexts.Add"), 0U);
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(LooseTexts, TheTrialTextNeedsNoList) {
    Open(testing_support::kEmptyDrawing);
    form.ListView1.Clear();
    form.Command8.Click();
    EXPECT_NE(session.DrawingAsText().find(R"(text "ahoj")"), std::string::npos);
    EXPECT_EQ(AfterOpening(session.Log()).size(), 2U);
}

struct ExportSweep : testing::TestWithParam<std::pair<controls::Button controls::Form1::*, int>> {};

TEST_P(ExportSweep, EndsSilentlyWhicheverCallFailsAndTheListStays) {
    const auto [button, columns] = GetParam();
    testing_support::Sweep({
        .button = button,
        .document = DrawingWithTable(columns == 6 ? 2 : 5, columns),
        .fewest_calls = kOpeningCalls.size() + 1,
        .prepare = [](HeadlessForm& headless) { AddRowsToExport(headless.form.ListView1); },
        .after_failure =
            [](const HeadlessForm& complete, HeadlessForm& failed, const simulator::Fault&) {
                testing_support::ExpectSilentEnd(complete, failed);
                EXPECT_EQ(failed.form.ListView1.Count(), 3U);
            },
    });
}

INSTANTIATE_TEST_SUITE_P(Actions, ExportSweep,
                         testing::Values(std::pair{&controls::Form1::Command16, 6},
                                         std::pair{&controls::Form1::Command30, 7},
                                         std::pair{&controls::Form1::Command7, 6},
                                         std::pair{&controls::Form1::Command6, 6},
                                         std::pair{&controls::Form1::Command8, 6}));

} // namespace
