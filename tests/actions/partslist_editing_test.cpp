// Editing of the parts list: check boxes, sheets, positions, dragging, adding and deleting rows.

#include <gtest/gtest.h>

#include "partslist/partslist.hpp"
#include "tests/support/headless_form.hpp"
#include "text/text.hpp"

namespace {

using testing_support::Column;
using testing_support::Drag;
using testing_support::HeadlessForm;
using testing_support::RowTexts;
using Texts = std::vector<std::string>;

struct PartsList : testing::Test, HeadlessForm {
    controls::ListView& list = form.ListView1;

    void Fill(const Texts& names) {
        for (const std::string& name : names) {
            const std::size_t row = list.Add(name);
            list.SetSubItem(row, partslist::kPosition, text::FourDigits(row));
        }
    }
    void Select(const std::vector<std::size_t>& rows) {
        for (std::size_t row = 1; row <= list.Count(); ++row) {
            list.SetSelected(row, std::ranges::find(rows, row) != rows.end());
        }
    }
    Texts Names() { return Column(list, 0); }
    Texts Positions() { return Column(list, partslist::kPosition); }
    Texts Sheets() { return Column(list, partslist::kSheet); }
};

TEST_F(PartsList, TickingOneOfThreeSelectedRowsTicksAllThreeAndNumbersTheirSheetsFromTwo) {
    Fill({"a", "b", "c", "d", "e"});
    Select({1, 3, 4});
    list.UserCheck(3, true);
    EXPECT_EQ(Sheets(), (Texts{"2", "", "3", "4", ""}));
    list.UserCheck(1, false);
    EXPECT_EQ(Sheets(), (Texts{"", "", "", "", ""}));
}

TEST_F(PartsList, TickingAnUnselectedRowTicksItAndGivesItsStateToTheSelectedOnes) {
    Fill({"a", "b", "c"});
    Select({1});
    list.UserCheck(3, true);
    EXPECT_EQ(Sheets(), (Texts{"2", "", "3"}));
}

TEST_F(PartsList, TickingWithNoSelectionTicksTheRowAlone) {
    Fill({"a", "b"});
    list.UserCheck(2, true);
    EXPECT_EQ(Sheets(), (Texts{"", "2"}));
}

TEST_F(PartsList, AClickPutsTheCurrentRowIntoThePickersAndEnablesThem) {
    Fill({"a", "b"});
    list.SetSubItem(2, partslist::kMaterial, "S235");
    list.SetSubItem(2, partslist::kSize, "20x40");
    list.SetSubItem(2, partslist::kNote, "poznámka");
    list.SetSubItem(2, partslist::kQuantity, "4");
    list.SetCurrentRow(2);
    EXPECT_FALSE(form.Combo1.Enabled());
    list.UserClick();
    EXPECT_EQ(form.Combo1.Text(), "S235");
    EXPECT_EQ(form.Combo2.Text(), "20x40");
    EXPECT_EQ(form.Combo3.Text(), "poznámka");
    EXPECT_EQ(form.Combo4.Text(), "4");
    EXPECT_TRUE(form.Combo1.Enabled() && form.Combo2.Enabled() && form.Combo3.Enabled() &&
                form.Combo4.Enabled());
}

TEST_F(PartsList, AClickOnAnEmptyListDoesNothing) {
    list.UserClick();
    EXPECT_FALSE(form.Combo1.Enabled());
}

TEST_F(PartsList, AClickWithNoCurrentRowDoesNothing) {
    Fill({"a"});
    list.UserClick();
    EXPECT_FALSE(form.Combo1.Enabled());
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(PartsList, AddingToFourRowsAppendsNovyAsTheFifth) {
    Fill({"a", "b", "c", "d"});
    form.m_Pridat.Click();
    EXPECT_EQ(RowTexts(list, 5), (Texts{"Novy", "0005", "1", "", "", "", ""}));
    EXPECT_EQ(RowCount(), "Pozic: 5");
    EXPECT_EQ(list.TakeRowToShow(), 5U);
}

TEST_F(PartsList, AddingRenumbersNoOtherRow) {
    Fill({"a", "b"});
    list.SetSubItem(1, partslist::kPosition, "0007");
    form.m_Pridat.Click();
    EXPECT_EQ(Positions(), (Texts{"0007", "0002", "0003"}));
}

TEST_F(PartsList, ANewRowCanBeRenamed) {
    form.m_Pridat.Click();
    list.UserRename(1, "Hřídel");
    EXPECT_EQ(Names(), Texts{"Hřídel"});
}

TEST_F(PartsList, DeletingRowTwoOfFiveRenumbersPositionsAndLeavesSheetsAsTheyWere) {
    Fill({"a", "b", "c", "d", "e"});
    list.UserCheck(2, true);
    list.UserCheck(4, true);
    list.SetCurrentRow(2);
    form.m_Smazat.Click();
    EXPECT_EQ(Names(), (Texts{"a", "c", "d", "e"}));
    EXPECT_EQ(Positions(), (Texts{"0001", "0002", "0003", "0004"}));
    EXPECT_EQ(Sheets(), (Texts{"", "", "3", ""}));
    EXPECT_EQ(RowCount(), "Pozic: 4");
}

TEST_F(PartsList, DeletingRemovesOnlyTheCurrentRowOfSeveralSelected) {
    Fill({"a", "b", "c"});
    Select({1, 2, 3});
    list.SetCurrentRow(3);
    form.m_Smazat.Click();
    EXPECT_EQ(Names(), (Texts{"a", "b"}));
}

TEST_F(PartsList, DeletingFromAnEmptyListOrWithNoCurrentRowDoesNothing) {
    form.m_Smazat.Click();
    EXPECT_EQ(RowCount(), "");
    Fill({"a"});
    form.m_Smazat.Click();
    EXPECT_EQ(Names(), Texts{"a"});
    EXPECT_EQ(RowCount(), "");
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(PartsList, DeletingTheOnlyRowLeavesAnEmptyList) {
    Fill({"a"});
    list.SetCurrentRow(1);
    form.m_Smazat.Click();
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_EQ(RowCount(), "Pozic: 0");
}

TEST_F(PartsList, DraggingRow120FromFifthPlaceOntoTheSecondLeavesItInSecondPlace) {
    Fill({"a", "b", "c", "d", "120", "e"});
    list.SetChecked(1, true);
    list.SetChecked(5, true);
    Drag(list, 5, 2);
    EXPECT_EQ(Names(), (Texts{"a", "120", "b", "c", "d", "e"}));
    EXPECT_EQ(Positions(), (Texts{"0001", "0002", "0003", "0004", "0005", "0006"}));
    EXPECT_EQ(Sheets(), (Texts{"2", "3", "", "", "", ""}));
}

TEST_F(PartsList, DraggingDownPutsTheRowJustAfterTheTarget) {
    Fill({"a", "7", "c", "d"});
    Drag(list, 2, 3);
    EXPECT_EQ(Names(), (Texts{"a", "c", "7", "d"}));
    Drag(list, 3, 4);
    EXPECT_EQ(Names(), (Texts{"a", "c", "d", "7"}));
}

TEST_F(PartsList, DraggingToTheEndsOfTheList) {
    Fill({"1", "b", "3"});
    Drag(list, 3, 1);
    EXPECT_EQ(Names(), (Texts{"3", "1", "b"}));
    Drag(list, 1, 3);
    EXPECT_EQ(Names(), (Texts{"1", "b", "3"}));
}

TEST_F(PartsList, OnlyARowNamedByANumberOtherThanZeroCanBeDragged) {
    for (const char* name : {"Part 12", "0", "", "0,0", "12 ks"}) {
        list.Clear();
        Fill({name, "b", "c"});
        Drag(list, 1, 3);
        EXPECT_EQ(Names(), (Texts{name, "b", "c"})) << '"' << name << '"';
        EXPECT_EQ(Positions(), (Texts{"0001", "0002", "0003"}));
    }
}

TEST_F(PartsList, TheNumberIsReadInTheSystemsFormat) {
    Fill({"12,5", "b"});
    Drag(list, 1, 2);
    EXPECT_EQ(Names(), (Texts{"b", "12,5"}));
    list.Clear();
    Fill({"12.5", "b"});
    Drag(list, 1, 2);
    EXPECT_EQ(Names(), (Texts{"12.5", "b"}));
}

TEST_F(PartsList, PressingAndReleasingOnTheSameRowChangesNothing) {
    Fill({"5", "b"});
    Drag(list, 1, 1);
    EXPECT_EQ(Positions(), (Texts{"0001", "0002"}));
}

TEST_F(PartsList, ReleasingOutsideAnyRowChangesNothing) {
    Fill({"5", "b"});
    Drag(list, 1, 99);
    EXPECT_EQ(Names(), (Texts{"5", "b"}));
    EXPECT_EQ(Positions(), (Texts{"0001", "0002"}));
}

TEST_F(PartsList, PressingOutsideAnyRowStartsNoDrag) {
    Fill({"5", "b"});
    Drag(list, 99, 2);
    EXPECT_EQ(Names(), (Texts{"5", "b"}));
}

TEST_F(PartsList, DroppingOntoARowWithoutANameChangesNothing) {
    Fill({"5", ""});
    Drag(list, 1, 2);
    EXPECT_EQ(Names(), (Texts{"5", ""}));
}

TEST_F(PartsList, OfDuplicateNamesTheFirstRowIsTheOneThatMoves) {
    Fill({"5", "b", "c", "5"});
    list.SetSubItem(1, partslist::kNote, "first");
    Drag(list, 4, 3);
    EXPECT_EQ(Names(), (Texts{"b", "c", "5", "5"}));
    EXPECT_EQ(list.SubItem(3, partslist::kNote), "first");
}

TEST_F(PartsList, ADragBeyondFourDigitPositionsStillEndsQuietly) {
    Texts names;
    for (int i = 1; i <= 10050; ++i) {
        names.push_back(std::to_string(i));
    }
    Fill(names);
    Drag(list, 10050, 2);
    EXPECT_EQ(list.Count(), 10050U);
    EXPECT_EQ(list.SubItem(10050, partslist::kPosition), "10050");
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(PartsList, TheRightButtonStartsNoDragAndDropsNothing) {
    Fill({"5", "b"});
    Drag(list, 1, 2, controls::kRightButton, controls::kLeftButton);
    EXPECT_EQ(Names(), (Texts{"5", "b"}));
    Drag(list, 1, 2, controls::kLeftButton, controls::kRightButton);
    EXPECT_EQ(Names(), (Texts{"5", "b"}));
}

TEST_F(PartsList, ARowDeletedAfterThePressEndsTheDragQuietly) {
    Fill({"5", "b", "c"});
    list.UserMouseDown(controls::kLeftButton, 0, 5, 1);
    list.Remove(1);
    list.UserMouseUp(controls::kLeftButton, 0, 5, 2);
    EXPECT_EQ(Names(), (Texts{"b", "c"}));
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(PartsList, AListShortenedAfterThePressEndsTheDragQuietly) {
    Fill({"a", "b", "5"});
    list.UserMouseDown(controls::kLeftButton, 0, 5, 3);
    list.Remove(1);
    list.UserMouseUp(controls::kLeftButton, 0, 5, 1);
    EXPECT_TRUE(message_boxes.shown.empty());
    EXPECT_EQ(list.Count(), 2U);
}

TEST_F(PartsList, TheDropYieldsOnceWhileTheListIsSorted) {
    Fill({"5", "b"});
    events.at_yield[1] = [&] { form.m_Pridat.Click(); };
    Drag(list, 1, 2);
    EXPECT_EQ(events.yields, 1);
    EXPECT_EQ(list.Count(), 3U);
    form.m_Pridat.Click();
    EXPECT_EQ(list.Row(4).text, "Novy") << "later rows are not sorted in";
}

TEST_F(PartsList, AListEmptiedAtTheYieldEndsTheDropQuietly) {
    Fill({"5", "b"});
    events.at_yield[1] = [&] { list.Clear(); };
    Drag(list, 1, 2);
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(PartsList, ThePressedRowStaysAfterTheGesture) {
    Fill({"5", "b", "c"});
    Drag(list, 1, 2);
    EXPECT_EQ(Names(), (Texts{"b", "5", "c"}));
    list.UserMouseUp(controls::kLeftButton, 0, 5, 3);
    EXPECT_EQ(Names(), (Texts{"b", "c", "5"})) << "the pressed row moves again";
}

TEST_F(PartsList, ARightClickOnAnEmptyListShowsTheMenuAtThePointer) {
    list.UserMouseDown(controls::kRightButton, 0, 5, 5);
    ASSERT_EQ(popups.size(), 1U);
    EXPECT_EQ(popups[0].first, "Tabulka");
    EXPECT_EQ(popups[0].second, controls::PopupPlace::kPointer);
}

TEST_F(PartsList, TheKeyboardShowsTheMenuAtTheCurrentRow) {
    list.UserMenuKey();
    ASSERT_EQ(popups.size(), 1U);
    EXPECT_EQ(popups[0].second, controls::PopupPlace::kCurrentRow);
}

TEST_F(PartsList, TheMenuHoldsItsItemsInOrder) {
    Texts captions;
    for (const controls::MenuItem* item : form.m_Tabulka.items) {
        captions.push_back(item->IsSeparator() ? "-" : item->caption);
    }
    EXPECT_EQ(captions, (Texts{"Poslat jako tabulku", "Poslat do tabulky", "-", "Poslat jako text",
                               "-", "Přidat", "Smazat", "-", "Zpět", "Znovu", "-", "Kopírovat vše",
                               "Vložit", "-", "Smazat vybrané", "Doplnit známé",
                               "Seřadit podle jména", "Seřadit podle materiálu"}));
    EXPECT_TRUE(form.m_poslat_jako_tabulku.Enabled());
    EXPECT_TRUE(form.m_vlozit_do_tabulky.Enabled());
    EXPECT_TRUE(form.m_Poslat_jako_text.Enabled());
    EXPECT_TRUE(form.m_Pridat.Enabled());
    EXPECT_TRUE(form.m_Smazat.Enabled());
}

} // namespace
