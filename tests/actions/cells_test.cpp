// The cells of the parts list: to and from a spreadsheet, edited in place, looked through.

#include <gtest/gtest.h>

#include <chrono>

#include "partslist/finding.hpp"
#include "partslist/pasting.hpp"
#include "tests/support/headless_form.hpp"

namespace {

using controls::Cell;
using controls::Find;
using testing_support::AddRow;
using testing_support::Column;
using testing_support::HeadlessForm;
using testing_support::RowTexts;
using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

struct Cells : testing::Test, HeadlessForm {
    controls::ListView& list = form.ListView1;

    Cells() {
        AddRow(list, {"Hřídel", "0001", "1", "2", "C45", "D30", "kalit"}, true);
        AddRow(list, {"Kolo", "0002", "2", "", "", "", ""});
        AddRow(list, {"Pero", "0003", "3", "", "S235", "6x6", ""});
        form.parts_history.Start();
    }
    [[nodiscard]] Rows All() const {
        Rows rows;
        for (std::size_t row = 1; row <= list.Count(); ++row) {
            rows.push_back(RowTexts(list, row));
        }
        return rows;
    }
    void Paste(const std::string& text) {
        clipboard = text;
        form.m_Vlozit.Click();
    }
    void PasteAt(const Cell& cell, const std::string& text) {
        list.GoTo(cell);
        Paste(text);
    }
};

struct Pasting : Cells {};
struct CellEditing : Cells {};
struct Finding : Cells {};

const std::string kHeadings = "Jmeno\tPoz.\tkusů\tList\tMaterial\tVelikost\tPoznámka\r\n";

TEST_F(Cells, TheWholeListGoesOutBelowItsHeadings) {
    list.SetSubItem(2, controls::kNote, "kalit\npopustit");
    list.SetSubItem(3, controls::kNote, "5\"");
    form.m_Kopirovat_vse.Click();
    ASSERT_EQ(copied.size(), 1U);
    EXPECT_EQ(copied[0], kHeadings + "Hřídel\t0001\t1\t2\tC45\tD30\tkalit\r\n"
                                     "Kolo\t0002\t2\t\t\t\t\"kalit\npopustit\"\r\n"
                                     "Pero\t0003\t3\t\tS235\t6x6\t\"5\"\"\"\r\n");
    EXPECT_EQ(Status(), "Zkopirovano radku: 3");
}

TEST_F(Cells, AnEmptyListIsNotPutOut) {
    list.Clear();
    form.m_Kopirovat_vse.Click();
    EXPECT_TRUE(copied.empty());
    EXPECT_EQ(Status(), "Neni co kopirovat");
}

TEST_F(Cells, AClipboardThatIsTakenIsSaid) {
    form.copy_text = [](const std::string&) { return false; };
    form.m_Kopirovat_vse.Click();
    EXPECT_EQ(Status(), "Schranka je obsazena");
}

TEST_F(Pasting, CellsGoToTheRightAndDownFromTheCurrentOne) {
    PasteAt({2, controls::kMaterial}, "12 050\tD80\r\n11 373\tD90\r\n");
    EXPECT_EQ(All(), (Rows{{"Hřídel", "0001", "1", "2", "C45", "D30", "kalit"},
                           {"Kolo", "0002", "2", "", "12 050", "D80", ""},
                           {"Pero", "0003", "3", "", "11 373", "D90", ""}}));
    EXPECT_EQ(Status(), "Vlozeno bunek: 4");
    EXPECT_EQ(list.CurrentCell(), (Cell{2, controls::kMaterial}));
    EXPECT_TRUE(list.Row(1).checked) << "a check stays";
}

TEST_F(Pasting, PositionsAndSheetsArePassedOver) {
    PasteAt({1, 0}, "A\t0099\t7\t5\tS355\r\n");
    EXPECT_EQ(RowTexts(list, 1), (Texts{"A", "0001", "7", "2", "S355", "D30", "kalit"}));
    EXPECT_EQ(Status(), "Vlozeno bunek: 3");
}

TEST_F(Pasting, IntoAPositionOrASheetAloneChangesNothing) {
    const Rows before = All();
    for (const std::size_t column :
         {std::size_t{controls::kPosition}, std::size_t{controls::kSheet}}) {
        PasteAt({3, column}, "9\r\n8\r\n7\r\n");
        EXPECT_EQ(All(), before);
        EXPECT_EQ(Status(), "Neni co vlozit: pozice a listy se nevkladaji");
    }
    EXPECT_FALSE(form.m_Zpet.Enabled());
}

TEST_F(Pasting, RowsBeyondTheEndAreAppendedAsByTheMenu) {
    PasteAt({3, 0}, "Pero A\r\nČep\t\t12\r\n\t\t\t\tC45\r\nKolík\r\n");
    EXPECT_EQ(All(), (Rows{{"Hřídel", "0001", "1", "2", "C45", "D30", "kalit"},
                           {"Kolo", "0002", "2", "", "", "", ""},
                           {"Pero A", "0003", "3", "", "S235", "6x6", ""},
                           {"Čep", "0004", "12", "", "", "", ""},
                           {"Novy", "0005", "", "", "C45", "", ""},
                           {"Kolík", "0006", "1", "", "", "", ""}}));
    EXPECT_EQ(RowCount(), "Pozic: 6");
    EXPECT_EQ(Status(), "Vlozeno bunek: 7, radku: +3");
}

TEST_F(Pasting, RowsAppendedWithoutANameAreCalledAsNewOnes) {
    PasteAt({3, controls::kMaterial}, "C45\r\nC55\r\n");
    EXPECT_EQ(RowTexts(list, 3), (Texts{"Pero", "0003", "3", "", "C45", "6x6", ""}));
    EXPECT_EQ(RowTexts(list, 4), (Texts{"Novy", "0004", "1", "", "C55", "", ""}));
}

TEST_F(Pasting, EmptyRowsBeyondTheEndAppendNothing) {
    PasteAt({3, 0}, "Pero\r\n\r\n\t\t\r\nČep\r\n\r\n");
    EXPECT_EQ(Column(list, 0), (Texts{"Hřídel", "Kolo", "Pero", "Čep"}));
    EXPECT_EQ(list.SubItem(4, controls::kPosition), "0004");
}

TEST_F(Pasting, EmptyCellsClearAndMissingOnesLeaveWhatIsThere) {
    PasteAt({1, controls::kMaterial}, "\tD1\r\nC45\r\n\r\n");
    EXPECT_EQ(RowTexts(list, 1), (Texts{"Hřídel", "0001", "1", "2", "", "D1", "kalit"}));
    EXPECT_EQ(RowTexts(list, 2), (Texts{"Kolo", "0002", "2", "", "C45", "", ""}));
    EXPECT_EQ(RowTexts(list, 3), (Texts{"Pero", "0003", "3", "", "", "6x6", ""}));
}

TEST_F(Pasting, WithoutACurrentRowRowsAreAppended) {
    list.SetCurrentColumn(controls::kNote);
    Paste("Čep\t\t2\r\n");
    EXPECT_EQ(list.Count(), 4U);
    EXPECT_EQ(RowTexts(list, 4), (Texts{"Čep", "0004", "2", "", "", "", ""}));
    EXPECT_EQ(list.CurrentCell(), (Cell{4, 0}));
    list.Clear();
    Paste("Čep");
    EXPECT_EQ(All(), (Rows{{"Čep", "0001", "1", "", "", "", ""}}));
}

TEST_F(Pasting, WhatHasNoColumnIsCounted) {
    PasteAt({2, controls::kSize}, "D1\tbrousit\tx\t\ty\r\n");
    EXPECT_EQ(RowTexts(list, 2), (Texts{"Kolo", "0002", "2", "", "", "D1", "brousit"}));
    EXPECT_EQ(Status(), "Vlozeno bunek: 2, mimo sloupce: 2");
}

TEST_F(Pasting, AllHeadingsSayWhereTheCellsBegin) {
    PasteAt({2, controls::kNote}, kHeadings + "Čep\t\t4\t\tC45\tD5\tx\r\n");
    EXPECT_EQ(RowTexts(list, 2), (Texts{"Čep", "0002", "4", "", "C45", "D5", "x"}));
    EXPECT_EQ(list.Count(), 3U);
    EXPECT_EQ(list.CurrentCell(), (Cell{2, 0}));
}

TEST_F(Pasting, HeadingsFromTheCurrentColumnOnArePassedOver) {
    PasteAt({2, controls::kMaterial}, "Material\tVelikost\t\r\nC45\tD5\r\n");
    EXPECT_EQ(RowTexts(list, 2), (Texts{"Kolo", "0002", "2", "", "C45", "D5", ""}));
    EXPECT_EQ(RowTexts(list, 3), (Texts{"Pero", "0003", "3", "", "S235", "6x6", ""}));
}

TEST_F(Pasting, OtherWordsAreNoHeadings) {
    PasteAt({2, controls::kMaterial}, "Material\r\n");
    EXPECT_EQ(list.SubItem(2, controls::kMaterial), "Material") << "alone it is a text";
    PasteAt({2, controls::kMaterial}, "Velikost\tMaterial\r\nC45\r\n");
    EXPECT_EQ(list.SubItem(2, controls::kMaterial), "Velikost");
    PasteAt({2, controls::kMaterial}, "material\r\nC45\r\n");
    EXPECT_EQ(list.SubItem(2, controls::kMaterial), "material");
    PasteAt({2, controls::kNote}, "Poznámka\tx\r\nC45\r\n");
    EXPECT_EQ(list.SubItem(2, controls::kNote), "Poznámka");
}

TEST_F(Pasting, HeadingsAloneAreNothingToPaste) {
    const Rows before = All();
    PasteAt({1, 0}, kHeadings);
    EXPECT_EQ(All(), before);
    EXPECT_EQ(Status(), "Neni co vlozit");
}

TEST_F(Pasting, AClipboardWithoutTextSaysSo) {
    const Rows before = All();
    list.GoTo({1, 0});
    for (const auto& held : {std::optional<std::string>(), std::optional<std::string>("")}) {
        form.StatusBar1.SetPanelText(1, "");
        clipboard = held; // as where a picture stands there
        form.m_Vlozit.Click();
        EXPECT_EQ(Status(), "Ve schrance neni text");
        EXPECT_EQ(All(), before);
    }
}

TEST_F(Pasting, LineBreaksInACellAreLineFeeds) {
    PasteAt({1, controls::kNote}, "\"kalit\r\npopustit\"\r\n");
    EXPECT_EQ(list.SubItem(1, controls::kNote), "kalit\npopustit");
}

TEST_F(Pasting, TheFieldsBesideTheListShowTheCurrentRow) {
    PasteAt({2, controls::kMaterial}, "C45\r\n");
    EXPECT_EQ(form.Combo1.Text(), "C45");
    EXPECT_EQ(form.Combo4.Text(), "2");
}

// What a spreadsheet gives back: LF within cells, quotes only round cells with tabs or line breaks.
TEST_F(Pasting, ARoundTripThroughASpreadsheetChangesNothing) {
    list.Clear();
    const Rows rows{{"0012", "0001", "007", "2", "=A1", "1-2", "ěščřžýáíéúůďťňó"},
                    {"1-2", "0002", "1", "", "1,50", "+5", "kalit\npopustit\n"},
                    {"\"Kolo\"", "0003", "1e5", "3", "'S235", "3/4\"", " blanks "},
                    {"a;b@@c", "0004", "-1", "", "TRUE", "\t", "a\t\"b\"\nc"}};
    for (const Texts& row : rows) {
        AddRow(list, row);
    }
    form.m_Kopirovat_vse.Click();
    const std::string ours = copied.back();
    const std::string from_spreadsheet = "Jmeno\tPoz.\tkusů\tList\tMaterial\tVelikost\tPoznámka\n"
                                         "0012\t0001\t007\t2\t=A1\t1-2\těščřžýáíéúůďťňó\n"
                                         "1-2\t0002\t1\t\t1,50\t+5\t\"kalit\npopustit\n\"\n"
                                         "\"Kolo\"\t0003\t1e5\t3\t'S235\t3/4\"\t blanks \n"
                                         "a;b@@c\t0004\t-1\t\tTRUE\t\"\t\"\t\"a\t\"\"b\"\"\nc\"\n";
    for (const std::string& text : {ours, from_spreadsheet}) {
        for (const bool onto_itself : {true, false}) {
            if (onto_itself) {
                PasteAt({1, 0}, text);
                EXPECT_EQ(All(), rows);
            } else {
                list.Clear();
                Paste(text);
                for (std::size_t row = 1; row <= rows.size(); ++row) {
                    Texts expected = rows[row - 1];
                    expected[controls::kSheet].clear(); // the program gives it with the check
                    EXPECT_EQ(RowTexts(list, row), expected);
                }
            }
            list.Clear();
            for (const Texts& row : rows) {
                AddRow(list, row);
            }
        }
    }
}

TEST_F(Pasting, TenThousandRowsTakeNoTimeAndAreOneStep) {
    std::string text = kHeadings;
    for (int row = 0; row < 10000; ++row) {
        text += "Part " + std::to_string(row) + "\t\t2\t\tS235\t20x40\tkalit\r\n";
    }
    const auto start = std::chrono::steady_clock::now();
    PasteAt({2, 0}, text);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(list.Count(), 10001U);
    EXPECT_EQ(RowTexts(list, 10001),
              (Texts{"Part 9999", "10001", "2", "", "S235", "20x40", "kalit"}));
    form.m_Zpet.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"Hřídel", "Kolo", "Pero"}));
    EXPECT_EQ(form.m_Znovu.caption, "Znovu: Vložit");
}

TEST_F(Pasting, IntoAListThatIsBeingSortedLosesNothing) {
    list.SetSorted(controls::kPosition);
    PasteAt({3, 0}, "Pero\r\nČep\r\nKolík\r\n");
    Texts names = Column(list, 0);
    std::ranges::sort(names);
    EXPECT_EQ(names, (Texts{"Hřídel", "Kolo", "Kolík", "Pero", "Čep"}));
}

TEST_F(CellEditing, ATextGoesIntoItsCell) {
    for (std::size_t column = 1; column < list.Columns().size(); ++column) {
        list.UserEdit({list.Row(2).id, column, "text " + std::to_string(column), false});
    }
    list.UserEdit({list.Row(2).id, 0, "Kolo A", false});
    EXPECT_EQ(RowTexts(list, 2),
              (Texts{"Kolo A", "text 1", "text 2", "text 3", "text 4", "text 5", "text 6"}));
    EXPECT_EQ(RowTexts(list, 1), (Texts{"Hřídel", "0001", "1", "2", "C45", "D30", "kalit"}));
}

TEST_F(CellEditing, APositionHoldsUntilTheProgramNumbersAgain) {
    list.UserEdit({list.Row(3).id, controls::kPosition, "12a", false});
    list.UserEdit({list.Row(3).id, controls::kSheet, "9", false});
    form.m_Pridat.Click();
    EXPECT_EQ(list.SubItem(3, controls::kPosition), "12a");
    EXPECT_EQ(list.SubItem(3, controls::kSheet), "9");
    list.SetCurrentRow(4);
    form.m_Smazat.Click();
    EXPECT_EQ(list.SubItem(3, controls::kPosition), "0003");
    list.SetSelected(3, false);
    list.UserCheck(2, true);
    EXPECT_EQ(list.SubItem(3, controls::kSheet), "");
}

TEST_F(CellEditing, ATextForAllSelectedRowsGoesIntoFourColumnsOnly) {
    for (std::size_t column = 1; column < list.Columns().size(); ++column) {
        const bool is_shared = column == controls::kQuantity || column == controls::kMaterial ||
                               column == controls::kSize || column == controls::kNote;
        const Texts before = Column(list, column);
        list.SetSelected(1, true);
        list.SetSelected(3, true);
        list.UserEdit({list.Row(3).id, column, "x", true});
        EXPECT_EQ(Column(list, column), (Texts{is_shared ? "x" : before[0], before[1], "x"}));
    }
    list.UserEdit({list.Row(3).id, 0, "x", true});
    EXPECT_EQ(Column(list, 0), (Texts{"Hřídel", "Kolo", "x"}));
}

TEST_F(CellEditing, OfARowThatIsGoneChangesNothing) {
    const auto id = list.Row(2).id;
    list.Remove(2);
    const Rows before = All();
    list.SelectAll();
    list.UserEdit({id, controls::kMaterial, "x", true});
    EXPECT_EQ(All(), before);
}

TEST_F(CellEditing, TheFieldsBesideTheListShowWhatWasTyped) {
    list.SetCurrentRow(2);
    list.UserEdit({list.Row(2).id, controls::kMaterial, "C45", false});
    EXPECT_EQ(form.Combo1.Text(), "C45");
    EXPECT_TRUE(form.Combo1.Items().empty()) << "only a picker's own values are remembered";
}

TEST_F(Finding, GoesRowByRowAndRoundTheEnd) {
    const auto find = [&](const std::string& text, const std::optional<Cell>& from,
                          bool backwards = false) {
        return partslist::FindCell(list, text, from, backwards);
    };
    EXPECT_EQ(find("2", std::nullopt), (Cell{1, controls::kSheet}));
    EXPECT_EQ(find("2", Cell{1, controls::kSheet}), (Cell{2, controls::kPosition}));
    EXPECT_EQ(find("2", Cell{2, controls::kPosition}), (Cell{2, controls::kQuantity}));
    EXPECT_EQ(find("2", Cell{2, controls::kQuantity}), (Cell{3, controls::kMaterial}));
    EXPECT_EQ(find("2", Cell{3, controls::kMaterial}), (Cell{1, controls::kSheet}));
    EXPECT_EQ(find("2", std::nullopt, true), (Cell{3, controls::kMaterial}));
    EXPECT_EQ(find("2", Cell{3, controls::kMaterial}, true), (Cell{2, controls::kQuantity}));
    EXPECT_EQ(find("2", Cell{1, controls::kSheet}, true), (Cell{3, controls::kMaterial}));
    EXPECT_EQ(find("kalit", Cell{1, controls::kNote}), (Cell{1, controls::kNote}))
        << "itself comes last";
    EXPECT_EQ(find("kalit", Cell{1, controls::kNote}, true), (Cell{1, controls::kNote}));
    EXPECT_EQ(find("Řetěz", std::nullopt), std::nullopt);
    list.Clear();
    EXPECT_EQ(find("2", std::nullopt), std::nullopt);
    EXPECT_EQ(find("2", std::nullopt, true), std::nullopt);
}

TEST_F(Finding, TakesNoNoticeOfCapitalLettersButOfAccents) {
    EXPECT_EQ(partslist::FindCell(list, "HŘÍDEL", std::nullopt, false), (Cell{1, 0}));
    EXPECT_EQ(partslist::FindCell(list, "s235", std::nullopt, false),
              (Cell{3, controls::kMaterial}));
    EXPECT_EQ(partslist::FindCell(list, "hridel", std::nullopt, false), std::nullopt);
}

TEST_F(Finding, AsksForATextAndRemembersIt) {
    message_boxes.text_answer = "er";
    list.UserFind(Find::kAsk);
    EXPECT_EQ(message_boxes.asked, (Texts{"Hledaný text:", "Hledat", ""}));
    EXPECT_EQ(list.CurrentCell(), (Cell{3, 0}));
    EXPECT_EQ(Status(), "Nalezeno");
    EXPECT_TRUE(list.TakeWantsFocus());
    EXPECT_EQ(list.TakeRowToShow(), 3U);
    EXPECT_EQ(form.Combo1.Text(), "S235");
    message_boxes.text_answer = "";
    message_boxes.asked.clear();
    list.UserFind(Find::kNext);
    EXPECT_TRUE(message_boxes.asked.empty());
    EXPECT_EQ(list.CurrentCell(), (Cell{3, 0}));
    list.UserFind(Find::kAsk); // cancelled
    EXPECT_EQ(message_boxes.asked, (Texts{"Hledaný text:", "Hledat", "er"}));
    EXPECT_EQ(form.looked_for, "er");
}

TEST_F(Finding, TheNextOneIsAskedForWhereNothingWasLookedForYet) {
    message_boxes.text_answer = "Kolo";
    list.UserFind(Find::kNext);
    EXPECT_EQ(list.CurrentCell(), (Cell{2, 0}));
}

TEST_F(Finding, SelectsTheRowAlone) {
    list.SelectAll();
    message_boxes.text_answer = "Kolo";
    list.UserFind(Find::kAsk);
    EXPECT_FALSE(list.Row(1).selected);
    EXPECT_TRUE(list.Row(2).selected);
    EXPECT_FALSE(list.Row(3).selected);
}

TEST_F(Finding, WhatIsNotThereIsSaid) {
    list.GoTo({2, controls::kNote});
    message_boxes.text_answer = "Řetěz";
    list.UserFind(Find::kAsk);
    EXPECT_EQ(Status(), "Nenalezeno");
    EXPECT_EQ(list.CurrentCell(), (Cell{2, controls::kNote}));
    EXPECT_FALSE(list.TakeWantsFocus());
}

} // namespace
