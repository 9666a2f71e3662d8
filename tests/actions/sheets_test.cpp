// The sheet list: loading, ticking, new names, and the drawing's sheets named, numbered, ordered
// and created from it.

#include <gtest/gtest.h>

#include "sheets/sheet_names.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/failure_sweep.hpp"
#include "tests/support/sample_products.hpp"

namespace {

using testing_support::Column;
using testing_support::Drag;
using testing_support::HeadlessForm;
using Texts = std::vector<std::string>;

constexpr const char* kThreeSheets = "DrawingDocument D.CATDrawing\n"
                                     "sheet Sestava active\nsheet Hřídel\nsheet Kolo\n";
constexpr const char* kWithDetail = "DrawingDocument D.CATDrawing\n"
                                    "sheet A active\nsheet B\nsheet Detail detail\n";

// Parts with the given sheet entries, named A, B, C, ...
void AddParts(controls::Form1& form, const Texts& sheet_entries) {
    for (const std::string& entry : sheet_entries) {
        const std::size_t row =
            form.ListView1.Add(std::string(1, static_cast<char>('A' + form.ListView1.Count())));
        form.ListView1.SetSubItem(row, controls::kSheet, entry);
    }
}

struct SheetList : testing_support::ActionTest {
    controls::ListView& list = form.ListView3;

    SheetList() { form.Caption = "Dorvak pro Catii 0.0.10"; }

    void AddRows(const Texts& names, bool ticked = false) {
        for (const std::string& name : names) {
            list.SetChecked(list.Add(name), ticked);
        }
    }
    Texts Names() { return Column(list, 0); }
    Texts NewNames() { return Column(list, controls::kNewName); }
    std::vector<bool> Ticks() {
        std::vector<bool> ticks;
        for (std::size_t row = 1; row <= list.Count(); ++row) {
            ticks.push_back(list.Row(row).checked);
        }
        return ticks;
    }
};

struct Loading : SheetList {};
struct SheetRows : SheetList {};
struct Naming : SheetList {};
struct Applying : SheetList {};
struct NumberingRange : SheetList {};
struct NamingDirectly : SheetList {};
struct Reordering : SheetList {};
struct Missing : SheetList {};
struct Endings : SheetList {
    // Lists and answers that every action finds something to do with.
    Endings() {
        AddParts(form, {"2"});
        AddRows({"a", "b"}, true);
        list.SetSubItem(1, controls::kNewName, "new");
        message_boxes.text_answer = "1-2";
        message_boxes.three_way_answer = platform::Answer::kYes;
    }
    void ExpectMessages(controls::Button& button, const Texts& expected) {
        messages.clear();
        button.Click();
        EXPECT_EQ(messages, expected) << button.Caption();
        EXPECT_EQ(Names(), (Texts{"a", "b"})) << button.Caption();
        EXPECT_TRUE(message_boxes.asked.empty()) << button.Caption();
        EXPECT_TRUE(message_boxes.shown.empty()) << button.Caption();
    }
};

TEST_F(Loading, ThreeSheetsAreThreeTickedRowsWithEmptyNewNames) {
    Open(kThreeSheets);
    AddParts(form, {"2"});
    form.Command21.Click();
    EXPECT_EQ(Names(), (Texts{"Sestava", "Hřídel", "Kolo"}));
    EXPECT_EQ(Ticks(), (std::vector<bool>{true, true, true}));
    EXPECT_EQ(NewNames(), (Texts{"", "", ""}));
    EXPECT_EQ(messages, (Texts{"Zjistuju spusteni Catie", "Cekam na Catii", "Nacitam Sheets",
                               "Sheets nacteny: 3"}));
}

TEST_F(Loading, MakesThreeCallsPerSheetAndAConstant) {
    Open(kThreeSheets);
    AddParts(form, {"2"});
    form.Command21.Click();
    // ActiveDocument, Name, Selection, Sheets, ActiveSheet, Count
    EXPECT_EQ(session.Log().size(), 6U + 3 * 3);
}

TEST_F(Loading, ADetailSheetReportedAsTheNumberOneIsMarkedAndUnticked) {
    Open(kWithDetail);
    session.detail_as_number = true;
    AddParts(form, {"2"});
    form.Command21.Click();
    EXPECT_EQ(list.Row(3).tag, "A0001");
    EXPECT_EQ(Ticks(), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(list.Row(1).tag, "");
}

TEST_F(Loading, ADetailSheetReportedAsTheBooleanTrueIsTickedWithoutAMark) {
    Open(kWithDetail);
    AddParts(form, {"2"});
    form.Command21.Click();
    EXPECT_EQ(list.Row(3).tag, "");
    EXPECT_EQ(Ticks(), (std::vector<bool>{true, true, true}));
}

TEST_F(Loading, WithAnEmptyPartsListNothingHappens) {
    Open(kThreeSheets);
    AddRows({"kept"});
    form.Command21.Click();
    EXPECT_EQ(Names(), Texts{"kept"});
    EXPECT_TRUE(messages.empty());
}

TEST_F(Loading, AnExtensionInSmallLettersIsRefusedByTheSecondTest) {
    Open("DrawingDocument d.catdrawing\nsheet s\n");
    AddParts(form, {""});
    AddRows({"kept"});
    form.Command21.Click();
    EXPECT_EQ(Status(), "Neni aktivni CATDrawing");
    EXPECT_EQ(session.Log().back(), "DrawingDocument.Selection") << "after passing the first";
    EXPECT_EQ(Names(), Texts{"kept"});
}

TEST_F(Loading, ADocumentThatIsNoDrawingIsReportedAndTheListStays) {
    Open(testing_support::kSampleProduct);
    AddParts(form, {""});
    AddRows({"kept"});
    form.Command21.Click();
    EXPECT_EQ(Status(), "Neni aktivni CATDrawing");
    EXPECT_EQ(session.Log().size(), 2U);
    EXPECT_EQ(Names(), Texts{"kept"});
}

TEST_F(Loading, RowsAddedBeforeAnErrorStay) {
    Open(kThreeSheets);
    AddParts(form, {""});
    session.Arm({.call = 11}); // the second sheet's name
    form.Command21.Click();
    EXPECT_EQ(Status(), "-2147467259 The method Name failed");
    EXPECT_EQ(Names(), Texts{"Sestava"});
}

TEST_F(SheetRows, TickingOneOfThreeSelectedRowsTicksAllButTheDetails) {
    AddRows({"a", "b", "c"});
    list.SetTag(2, "A0001");
    for (std::size_t row = 1; row <= 3; ++row) {
        list.SetSelected(row, true);
    }
    list.UserCheck(1, true);
    EXPECT_EQ(Ticks(), (std::vector<bool>{true, false, true}));
    list.UserCheck(3, false);
    EXPECT_EQ(Ticks(), (std::vector<bool>{false, false, false}));
}

TEST_F(SheetRows, ADetailRowIsUntickedAgainAtOnce) {
    AddRows({"a", "b"});
    list.SetTag(2, "A0001");
    list.UserCheck(2, true);
    EXPECT_EQ(Ticks(), (std::vector<bool>{false, false}));
}

TEST_F(SheetRows, PridatAddsATickedRowAtTheEndAndShowsIt) {
    AddRows({"a"});
    form.m_Sheet_pridej.Click();
    EXPECT_EQ(Names(), (Texts{"a", "Nový"}));
    EXPECT_TRUE(list.Row(2).checked);
    EXPECT_EQ(list.TakeRowToShow(), 2U);
}

TEST_F(SheetRows, SmazatRemovesTheCurrentRowAndNothingFromAnEmptyList) {
    form.m_Sheet_smaz.Click();
    AddRows({"a", "b"});
    form.m_Sheet_smaz.Click();
    EXPECT_EQ(list.Count(), 2U) << "no row is the current one";
    list.SetCurrentRow(1);
    form.m_Sheet_smaz.Click();
    EXPECT_EQ(Names(), Texts{"b"});
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(SheetRows, SheetGenerovatLeavesExactlyTenUntickedRows) {
    AddRows({"old"}, true);
    form.Command35.Click();
    EXPECT_EQ(Names(), (Texts{"test 1", "test 2", "test 3", "test 4", "test 5", "test 6", "test 7",
                              "test 8", "test 9", "test 10"}));
    EXPECT_EQ(Ticks(), std::vector<bool>(10, false));
}

TEST_F(SheetRows, AClickShowsTheNewNameAndTheDetailMark) {
    AddRows({"a", "b"});
    list.SetSubItem(2, controls::kNewName, "2.Kolo");
    list.SetTag(2, "A0001");
    list.UserClick();
    EXPECT_EQ(form.Text5.Text(), "");
    list.SetCurrentRow(2);
    list.UserClick();
    EXPECT_EQ(form.Text5.Text(), "2.Kolo");
    EXPECT_EQ(list.ToolTip(), "A0001");
}

TEST_F(SheetRows, EnterGivesTheTextWithoutBlanksAtItsEndsAsTheNewName) {
    AddRows({"a"});
    list.SetCurrentRow(1);
    form.Text5.UserChange("  3.Víko ven  ");
    form.Text5.KeyPress('x');
    EXPECT_EQ(NewNames(), Texts{""});
    form.Text5.KeyPress(controls::kEnterKey);
    EXPECT_EQ(NewNames(), Texts{"3.Víko ven"});
    form.Text5.UserChange("4");
    form.Command28.Click();
    EXPECT_EQ(NewNames(), Texts{"4"});
}

TEST_F(SheetRows, EnterWithoutACurrentRowIsAnErrorOfTheDefaultHandling) {
    AddRows({"a"});
    form.Text5.KeyPress(controls::kEnterKey);
    ASSERT_EQ(message_boxes.shown.size(), 1U);
    EXPECT_EQ(message_boxes.shown[0].number, 91);
}

TEST_F(SheetRows, TheMenuOpensByMouseAndByKeyboardOnAnEmptyListToo) {
    list.UserMouseDown(controls::kRightButton, 0, 5, 5);
    list.UserMenuKey();
    ASSERT_EQ(popups.size(), 2U);
    EXPECT_EQ(popups[0], (std::pair<std::string, controls::PopupPlace>(
                             "Sheets", controls::PopupPlace::kPointer)));
    EXPECT_EQ(popups[1].second, controls::PopupPlace::kCurrentRow);
}

TEST_F(SheetRows, TheMenuHoldsItsItemsInOrder) {
    Texts captions;
    for (const controls::MenuItem* item : form.m_sheets.items) {
        captions.push_back(item->IsSeparator() ? "-" : item->caption);
    }
    EXPECT_EQ(captions,
              (Texts{"Pridat", "Smazat", "-", "Zpět", "Znovu", "-", "Vrátit plánovaná jména"}));
}

TEST_F(Naming, NumbersTheTickedRowsFromTheStartNumber) {
    AddRows({"a", "b", "c", "d"}, true);
    list.SetChecked(3, false);
    list.SetSubItem(3, controls::kNewName, "kept");
    form.Text6.UserChange("3");
    form.Command20.Click();
    EXPECT_EQ(NewNames(), (Texts{"3", "4", "kept", "5"}));
    EXPECT_EQ(Status(), "Ocislovano: 5");
}

TEST_F(Naming, AFractionalStartIsKeptAndNoNumberIsZero) {
    AddRows({"a", "b"}, true);
    form.Text6.UserChange("1.5x");
    form.Command20.Click();
    EXPECT_EQ(NewNames(), (Texts{"1.5", "2.5"}));
    EXPECT_EQ(Status(), "Ocislovano: 2.5");
    form.Text6.UserChange("abc");
    form.Command20.Click();
    EXPECT_EQ(NewNames(), (Texts{"0", "1"}));
}

TEST_F(Naming, NumbersWithAFractionShowNoBinaryNoise) {
    AddRows({"a"}, true);
    form.Text6.UserChange("1.3");
    form.Command20.Click();
    EXPECT_EQ(NewNames(), Texts{"1.3"});
    EXPECT_EQ(Status(), "Ocislovano: 1.3");
    AddRows({"b", "c", "d", "e", "f", "g"}, true);
    form.Text6.UserChange("10.01");
    form.Command20.Click();
    EXPECT_EQ(NewNames(), (Texts{"10.01", "11.01", "12.01", "13.01", "14.01", "15.01", "16.01"}));
    EXPECT_EQ(Status(), "Ocislovano: 16.01");
}

TEST_F(Naming, NumberingWithoutATickedRowShowsTheStartNumberMinusOne) {
    AddRows({"a"});
    form.Text6.UserChange("7");
    form.Command20.Click();
    EXPECT_EQ(Status(), "Ocislovano: 6");
}

TEST_F(Naming, AnEmptySheetListIsLeftAlone) {
    form.Command20.Click();
    form.Command22.Click();
    form.Command23.Click();
    EXPECT_TRUE(messages.empty());
}

TEST_F(Naming, WithTheAssemblyTheNamesStandOneSlotFurtherDown) {
    AddParts(form, {"1", "", "2"});
    AddRows({"x", "y", "z"}, true);
    form.Check1.SetValue(1);
    form.Command22.Click();
    EXPECT_EQ(NewNames(), (Texts{"1.Sestava", "2.A", ""}));
    EXPECT_EQ(Status(), "Pojmenovano: 3");
    const auto names = sheets::NamesForTheList(form.ListView1, true);
    EXPECT_EQ(names.slots[3], "3.C");
}

TEST_F(Naming, WithoutTheAssemblyTheFirstNameBeginsWithTwoToo) {
    AddParts(form, {"1", "", "2"});
    AddRows({"x", "y", "z"}, true);
    form.Command22.Click();
    EXPECT_EQ(NewNames(), (Texts{"2.A", "", "3.C"}));
}

TEST_F(Naming, UntickedRowsTakeNoName) {
    AddParts(form, {"1", "2"});
    AddRows({"x", "y", "z"}, true);
    list.SetChecked(1, false);
    list.SetSubItem(1, controls::kNewName, "kept");
    form.Command22.Click();
    EXPECT_EQ(NewNames(), (Texts{"kept", "2.A", "3.B"}));
    EXPECT_EQ(Status(), "Pojmenovano: 2");
}

TEST_F(Naming, ANameAboveSlot500IsErrorNineOfTheDefaultHandling) {
    for (int i = 1; i <= 500; ++i) {
        form.ListView1.SetSubItem(form.ListView1.Add("p"), controls::kSheet, "x");
    }
    AddRows({"x"}, true);
    form.Command22.Click();
    EXPECT_EQ(NewNames(), Texts{"2.p"});
    form.Check1.SetValue(1);
    form.Command22.Click();
    ASSERT_EQ(message_boxes.shown.size(), 1U);
    EXPECT_EQ(message_boxes.shown[0].number, 9);
    EXPECT_EQ(message_boxes.shown[0].description, "Subscript out of range");
}

TEST_F(Naming, MoreThan500TickedRowsAreErrorNineAtTheRowWithoutASlot) {
    AddParts(form, {"1"});
    AddRows(Texts(500, "x"), true);
    AddRows({"unticked"});
    form.Command22.Click();
    EXPECT_EQ(Status(), "Pojmenovano: 500");
    EXPECT_TRUE(message_boxes.shown.empty());
    list.SetSubItem(501, controls::kNewName, "kept");
    list.SetChecked(501, true);
    form.Command22.Click();
    ASSERT_EQ(message_boxes.shown.size(), 1U);
    EXPECT_EQ(message_boxes.shown[0].number, 9);
    EXPECT_EQ(NewNames()[0], "2.A");
    EXPECT_EQ(NewNames()[500], "kept");
}

TEST_F(Naming, PartsWithoutASheetMayStandAboveSlot500) {
    AddParts(form, {"x"});
    for (int i = 0; i < 600; ++i) {
        form.ListView1.Add("without a sheet");
    }
    AddRows({"x", "y"}, true);
    form.Command22.Click();
    EXPECT_EQ(NewNames(), (Texts{"2.A", ""}));
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(Applying, RenamesTickedRowsWithANewNameAndCreatesPlannedOnes) {
    Open(kThreeSheets);
    AddRows({"Sestava", "Hřídel", "Kolo", "Nový", "Nový", "Nový"}, true);
    list.SetSubItem(1, controls::kNewName, "1.Sestava");
    list.SetSubItem(2, controls::kNewName, "2.Hřídel");
    list.SetChecked(2, false);
    list.SetSubItem(4, controls::kNewName, "4.Kolo");
    list.SetSubItem(6, controls::kNewName, "5.Víko");
    list.SetChecked(6, false);
    form.Command23.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"1.Sestava", "Hřídel", "Kolo", "4.Kolo"}));
    EXPECT_EQ(Status(), "Prejmenovano: 2");
    EXPECT_EQ(Names()[0], "Sestava") << "the list is not loaded again";
    EXPECT_EQ(messages, (Texts{"Zjistuju spusteni Catie", "Cekam na Catii", "Prejmenovavam Sheets",
                               "Prejmenovano: 2"}));
}

TEST_F(Applying, ANameInUseIsReportedAndNamesAppliedBeforeStay) {
    Open(kThreeSheets);
    AddRows({"Sestava", "Hřídel", "Kolo"}, true);
    list.SetSubItem(1, controls::kNewName, "1");
    list.SetSubItem(2, controls::kNewName, "Kolo");
    list.SetSubItem(3, controls::kNewName, "3");
    form.Command23.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"1", "Hřídel", "Kolo"}));
    EXPECT_EQ(Status(), "-2147467259 The method Name failed");
}

TEST_F(Applying, ASheetRenamedSinceLoadingIsNotFound) {
    Open(kThreeSheets);
    AddRows({"gone"}, true);
    list.SetSubItem(1, controls::kNewName, "1");
    form.Command23.Click();
    EXPECT_EQ(Status(), "-2147467259 The method Item failed");
}

TEST_F(NumberingRange, AsksWithTheProposalAndNumbersTheFirstSheets) {
    Open(kThreeSheets);
    AddParts(form, {"2", "", "3"});
    message_boxes.text_answer = "5-7";
    form.Command24.Click();
    EXPECT_EQ(message_boxes.asked, (Texts{"Rozsah listu", "Dorvak pro Catii 0.0.10", "1-2"}));
    EXPECT_EQ(DrawnSheets(), (Texts{"5", "6", "7"}));
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie") << "no waiting is announced";
}

TEST_F(NumberingRange, StopsAtTheLastSheet) {
    Open("DrawingDocument D.CATDrawing\nsheet a\nsheet b\n");
    message_boxes.text_answer = "1-3";
    form.Command24.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"1", "2"}));
}

TEST_F(NumberingRange, AnAnswerWithoutExactlyOneDashIsReported) {
    Open(kThreeSheets);
    for (const char* answer : {"7", "1-2-3", "--"}) {
        message_boxes.text_answer = answer;
        form.Command24.Click();
        EXPECT_EQ(Status(), "Spatny pocet listu") << answer;
    }
    EXPECT_EQ(DrawnSheets(), (Texts{"Sestava", "Hřídel", "Kolo"}));
}

TEST_F(NumberingRange, AnEmptyAnswerEndsIt) {
    Open(kThreeSheets);
    form.Command24.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"Sestava", "Hřídel", "Kolo"}));
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie");
}

TEST_F(NumberingRange, ARangeThatEndsBeforeItStartsNumbersNothing) {
    Open(kThreeSheets);
    message_boxes.text_answer = "5-2";
    form.Command24.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"Sestava", "Hřídel", "Kolo"}));
}

TEST_F(NumberingRange, StepsAreRoundedToAWholeNumber) {
    struct Case {
        const char* answer;
        Texts names;
    };
    const std::vector<Case> cases{
        {"1-2.4", {"1", "2", "c", "d", "e"}},
        {"1-2.5", {"1", "2", "c", "d", "e"}}, // two and a half steps: to the even number
        {"1-2.6", {"1", "2", "3", "d", "e"}},
        {"1-3.5", {"1", "2", "3", "4", "e"}},
        {"1.5-3", {"1.5", "2.5", "c", "d", "e"}},
        {"0.3-1", {"0.3", "1.3", "c", "d", "e"}},
    };
    for (const auto& [answer, names] : cases) {
        Open("DrawingDocument D.CATDrawing\nsheet a\nsheet b\nsheet c\nsheet d\nsheet e\n");
        message_boxes.text_answer = answer;
        form.Command24.Click();
        EXPECT_EQ(DrawnSheets(), names) << answer;
    }
}

TEST_F(NumberingRange, APieceWithoutANumberIsZero) {
    struct Case {
        const char* answer;
        Texts names;
    };
    const std::vector<Case> cases{
        {"-2", {"0", "1", "2"}},
        {"-5", {"0", "1", "2"}},
        {"5-", {"Sestava", "Hřídel", "Kolo"}},
        {"a-b", {"0", "Hřídel", "Kolo"}},
        {"-", {"0", "Hřídel", "Kolo"}},
        {"3-1", {"Sestava", "Hřídel", "Kolo"}},
        {" 7x - 8y", {"7", "8", "Kolo"}},
    };
    for (const auto& [answer, names] : cases) {
        Open(kThreeSheets);
        message_boxes.text_answer = answer;
        form.Command24.Click();
        EXPECT_EQ(DrawnSheets(), names) << answer;
        EXPECT_EQ(Status(), "Zjistuju spusteni Catie") << answer;
    }
}

TEST_F(NumberingRange, MakesTheStricterTestOnly) {
    Open("DrawingDocument \"my CATDrawing\"\nsheet a\n");
    message_boxes.text_answer = "1-1";
    form.Command24.Click();
    EXPECT_EQ(DrawnSheets(), Texts{"1"});
    Open("DrawingDocument d.catdrawing\nsheet s\n");
    form.Command24.Click();
    EXPECT_EQ(Status(), "Neni aktivni CATDrawing");
}

TEST_F(NamingDirectly, NoNamesTheSheetsByTheRowsOfTheirParts) {
    Open(kThreeSheets);
    AddParts(form, {"2", "", "3"});
    message_boxes.three_way_answer = platform::Answer::kNo;
    form.Command25.Click();
    EXPECT_EQ(message_boxes.asked, (Texts{"Je prvni sheet sestava?", "Dorvak pro Catii 0.0.10"}));
    EXPECT_EQ(DrawnSheets(), (Texts{"1.A", "", "Kolo"}));
}

TEST_F(NamingDirectly, YesPutsTheAssemblyFirst) {
    Open(kThreeSheets);
    AddParts(form, {"2", "3"});
    message_boxes.three_way_answer = platform::Answer::kYes;
    form.Command25.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"1.Sestava", "2.A", "3.B"}));
}

TEST_F(NamingDirectly, CancelEndsIt) {
    Open(kThreeSheets);
    AddParts(form, {"2"});
    form.Command25.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"Sestava", "Hřídel", "Kolo"}));
    EXPECT_TRUE(messages.empty()) << "it looks for no session and announces nothing";
}

TEST_F(NamingDirectly, TheNumberIsTheRowsPositionAndPartsWithoutASheetLeaveEmptyNames) {
    constexpr const char* kFive =
        "DrawingDocument D.CATDrawing\nsheet s1\nsheet s2\nsheet s3\nsheet s4\nsheet s5\n";
    AddParts(form, {"x", "", "x", "x"});
    Open(kFive);
    message_boxes.three_way_answer = platform::Answer::kNo;
    form.Command25.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"1.A", "", "3.C", "s4", "s5"})) << "three names were counted";
    Open(kFive);
    message_boxes.three_way_answer = platform::Answer::kYes;
    form.Command25.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"1.Sestava", "2.A", "", "4.C", "s5"}));
}

TEST_F(NamingDirectly, ASecondEmptyNameThatCatiaRefusesIsReportedAndTheNamesBeforeStay) {
    Open(kThreeSheets);
    AddParts(form, {"x", "", "", "x", "x"});
    message_boxes.three_way_answer = platform::Answer::kNo;
    form.Command25.Click();
    EXPECT_EQ(Status(), "-2147467259 The method Name failed");
    EXPECT_EQ(DrawnSheets(), (Texts{"1.A", "", "Kolo"}));
}

TEST_F(NamingDirectly, TheAssemblyMovesTheHundredthPartAboveTheSlots) {
    Open(kThreeSheets);
    AddParts(form, Texts(100, "x"));
    form.ListView1.Add("without a sheet");
    message_boxes.three_way_answer = platform::Answer::kYes;
    form.Command25.Click();
    EXPECT_EQ(Status(), "9 Subscript out of range");
    EXPECT_EQ(DrawnSheets(), (Texts{"Sestava", "Hřídel", "Kolo"}));
    message_boxes.three_way_answer = platform::Answer::kNo;
    form.Command25.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"1.A", "2.B", "3.C"}));
}

TEST_F(NamingDirectly, ANameAboveSlot100IsCaughtByTheTrap) {
    Open(kThreeSheets);
    for (int i = 1; i <= 101; ++i) {
        form.ListView1.SetSubItem(form.ListView1.Add("p"), controls::kSheet, "x");
    }
    message_boxes.three_way_answer = platform::Answer::kNo;
    form.Command25.Click();
    EXPECT_EQ(Status(), "9 Subscript out of range");
    EXPECT_EQ(DrawnSheets(), (Texts{"Sestava", "Hřídel", "Kolo"}));
}

TEST_F(NamingDirectly, WithoutCatiaTheErrorIsShown) {
    AddParts(form, {"2"});
    form.Command25.Click();
    EXPECT_EQ(Status(), "429 ActiveX component can't create object");
}

TEST_F(NamingDirectly, AnEmptyPartsListEndsIt) {
    form.Command25.Click();
    EXPECT_TRUE(messages.empty());
}

TEST_F(Reordering, ADraggedRowTakesTheTargetsPlace) {
    AddRows({"1", "2", "3", "4"});
    Drag(list, 4, 2);
    EXPECT_EQ(Names(), (Texts{"1", "4", "2", "3"}));
    list.Clear();
    AddRows({"1", "2", "3", "4"});
    Drag(list, 1, 3);
    EXPECT_EQ(Names(), (Texts{"2", "3", "1", "4"}));
}

TEST_F(Reordering, DetailRowsGoToTheEndWithEveryDragAndCannotMove) {
    AddRows({"1", "2", "3"});
    list.SetTag(2, "A0001");
    Drag(list, 2, 1);
    EXPECT_EQ(Names(), (Texts{"1", "2", "3"}));
    Drag(list, 1, 2);
    EXPECT_EQ(Names(), (Texts{"1", "2", "3"}));
    Drag(list, 3, 1);
    EXPECT_EQ(Names(), (Texts{"3", "1", "2"}));
    EXPECT_EQ(Status(), "");
}

TEST_F(Reordering, OnlyRowsNamedByANumberOtherThanZeroCanBeDragged) {
    for (const char* name : {"Sheet.1", "0", "1.Sestava", ""}) {
        list.Clear();
        AddRows({name, "b", "c"});
        Drag(list, 1, 3);
        EXPECT_EQ(Names(), (Texts{name, "b", "c"})) << '"' << name << '"';
    }
}

TEST_F(Reordering, ReleasingOnTheSameRowOrOutsideAnyRowChangesNothing) {
    AddRows({"1", "2"});
    Drag(list, 1, 1);
    Drag(list, 1, 99);
    Drag(list, 99, 1);
    EXPECT_EQ(Names(), (Texts{"1", "2"}));
    EXPECT_EQ(Status(), "");
}

TEST_F(Reordering, TheRightButtonNeitherStartsNorDrops) {
    AddRows({"1", "2"});
    Drag(list, 1, 2, controls::kRightButton, controls::kLeftButton);
    EXPECT_EQ(Names(), (Texts{"1", "2"}));
    Drag(list, 1, 2, controls::kLeftButton, controls::kRightButton);
    EXPECT_EQ(Names(), (Texts{"1", "2"}));
}

TEST_F(Reordering, AnEmptyListStartsNoDrag) {
    list.UserMouseDown(controls::kLeftButton, 0, 5, 1);
    EXPECT_EQ(Status(), "");
}

TEST_F(Reordering, SeveralDetailRowsGoToTheEndInTheOrderOfTheirMarks) {
    AddRows({"1", "D2", "2", "D1", "3"});
    list.SetTag(2, "A0002");
    list.SetTag(4, "A0001");
    Drag(list, 5, 1);
    EXPECT_EQ(Names(), (Texts{"3", "1", "2", "D1", "D2"}));
    Drag(list, 1, 3);
    EXPECT_EQ(Names(), (Texts{"1", "2", "3", "D1", "D2"}));
}

TEST_F(Reordering, OfDraggedRowsOfOneNameTheFirstMoves) {
    AddRows({"2", "1", "3", "1", "4"});
    list.SetSubItem(2, controls::kNewName, "first");
    list.SetSubItem(4, controls::kNewName, "second");
    Drag(list, 4, 5);
    EXPECT_EQ(Names(), (Texts{"2", "3", "1", "4", "1"}));
    EXPECT_EQ(NewNames(), (Texts{"", "", "second", "", "first"}));
}

TEST_F(Reordering, ARowDroppedOntoAnotherOfItsNameStaysInItsPlace) {
    AddRows({"1", "2", "1"});
    list.SetSubItem(1, controls::kNewName, "first");
    Drag(list, 3, 1);
    EXPECT_EQ(NewNames(), (Texts{"first", "", ""}));
    EXPECT_EQ(Names(), (Texts{"1", "2", "1"}));
}

TEST_F(Reordering, OfTargetsOfOneNameTheFirstSaysWhetherTheRowMovesUp) {
    // Dropped onto the third row, whose name the first row bears too: it sorts before the third.
    AddRows({"x", "5", "x", "y"});
    Drag(list, 2, 3);
    EXPECT_EQ(Names(), (Texts{"x", "5", "x", "y"}));
    // Down onto the last: both rows of that name stand below.
    list.Clear();
    AddRows({"5", "x", "y", "x"});
    Drag(list, 1, 4);
    EXPECT_EQ(Names(), (Texts{"x", "y", "x", "5"}));
}

TEST_F(Reordering, ATargetWhoseNameADetailRowBearsFirstTakesNoRow) {
    AddRows({"x", "5", "x"});
    list.SetTag(1, "A0001");
    Drag(list, 2, 3);
    EXPECT_EQ(Names(), (Texts{"x", "5", "x"}));
}

TEST_F(Reordering, AnEmptySheetListHasNoOrderToApply) {
    Open(kThreeSheets);
    AddParts(form, {"2"});
    form.Command34.Click();
    EXPECT_EQ(Status(), "9 Subscript out of range");
    EXPECT_EQ(messages,
              (Texts{"Zjistuju spusteni Catie", "Cekam na Catii", "9 Subscript out of range"}));
    EXPECT_EQ(std::ranges::count_if(session.Log(),
                                    [](const std::string& call) {
                                        return call.find("reorder_Sheets") != std::string::npos;
                                    }),
              0);
    EXPECT_EQ(list.Count(), 0U) << "it is not loaded again";
    EXPECT_EQ(DrawnSheets(), (Texts{"Sestava", "Hřídel", "Kolo"}));
}

TEST_F(Reordering, AppliesTheOrderAndLoadsTheListAgain) {
    Open(kThreeSheets);
    AddParts(form, {"2"});
    AddRows({"Kolo", "Sestava", "Hřídel"});
    list.SetSubItem(1, controls::kNewName, "x");
    form.Command34.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"Kolo", "Sestava", "Hřídel"}));
    EXPECT_EQ(Names(), (Texts{"Kolo", "Sestava", "Hřídel"}));
    EXPECT_EQ(Ticks(), (std::vector<bool>{true, true, true}));
    EXPECT_EQ(NewNames(), (Texts{"", "", ""}));
    EXPECT_EQ(messages, (Texts{"Zjistuju spusteni Catie", "Cekam na Catii", "Nacitam Sheets",
                               "Presouvam Sheets", "Presouvani Ok", "Zjistuju spusteni Catie",
                               "Cekam na Catii", "Nacitam Sheets", "Sheets nacteny: 3"}));
    EXPECT_EQ(events.yields, 1);
}

TEST_F(Reordering, ARowThatNamesNoSheetLeavesTheDrawingAsItIs) {
    Open(kThreeSheets);
    AddParts(form, {"2"});
    AddRows({"Kolo", "Nový", "Sestava", "Hřídel"});
    form.Command34.Click();
    EXPECT_EQ(Status(), "-2147467259 The method Item failed");
    EXPECT_EQ(DrawnSheets(), (Texts{"Sestava", "Hřídel", "Kolo"}));
}

TEST_F(Reordering, AnArrayThatCatiaRefusesIsReportedAndTheListIsNotLoadedAgain) {
    Open(kThreeSheets);
    AddParts(form, {"2"});
    AddRows({"Kolo", "Sestava"});
    form.Command34.Click();
    EXPECT_EQ(Status(), "-2147467259 The method reorder_Sheets failed");
    EXPECT_EQ(Names(), (Texts{"Kolo", "Sestava"}));
}

TEST_F(Reordering, NeedsAPartsList) {
    Open(kThreeSheets);
    form.Command34.Click();
    form.Command29.Click();
    EXPECT_TRUE(messages.empty());
}

TEST_F(Reordering, TheDiagnosticSwapsTheSheetsOfADrawingOfTwo) {
    Open("DrawingDocument D.CATDrawing\nsheet a\nsheet b\n");
    AddParts(form, {""});
    form.Command29.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"b", "a"}));
    Open("DrawingDocument D.CATDrawing\nsheet a\n");
    form.Command29.Click();
    EXPECT_EQ(Status(), "-2147467259 The method Item failed");
}

TEST_F(Missing, CountsWithTheAssembly) {
    AddParts(form, {"1", "2", "", "3", "4", "", "5"});
    AddRows({"a", "b", "c", "d"}, true);
    AddRows({"unticked"});
    form.Check1.SetValue(1);
    form.Command33.Click();
    EXPECT_EQ(form.Text7.Text(), "2");
    EXPECT_EQ(Status(), "Schazi:   listu 5 + sestava  - catie 4");
}

TEST_F(Missing, CountsWithoutTheAssembly) {
    AddParts(form, {"1", "2", "", "3", "4", "", "5"});
    AddRows({"a", "b", "c", "d"}, true);
    form.Command33.Click();
    EXPECT_EQ(form.Text7.Text(), "1");
    EXPECT_EQ(Status(), "Schazi:   listu 5 - catie 4");
}

TEST_F(Missing, MoreTickedThanNeededIsNegativeAndAddsNothing) {
    AddParts(form, {"1", "2", "3", "4", "5"});
    AddRows({"a", "b", "c", "d", "e", "f", "g"}, true);
    form.Command33.Click();
    EXPECT_EQ(form.Text7.Text(), "-2");
    form.Command32.Click();
    EXPECT_EQ(list.Count(), 7U);
}

TEST_F(Missing, EmptyListsAreLeftAlone) {
    AddParts(form, {"1"});
    form.Command33.Click();
    EXPECT_TRUE(messages.empty());
    form.ListView1.Clear();
    AddRows({"a"});
    form.Command33.Click();
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(form.Text7.Text(), "");
}

TEST_F(Missing, AddsAsManyTickedPlannedRowsAsTheTextSays) {
    form.Text7.UserChange("3");
    form.Command32.Click();
    EXPECT_EQ(Names(), (Texts{"Nový", "Nový", "Nový"}));
    EXPECT_EQ(Ticks(), std::vector<bool>(3, true));
    EXPECT_EQ(list.TakeRowToShow(), 3U);
}

TEST_F(Missing, ATextThatIsNoNumberAddsNothingAndAnAbsurdOneIsRefused) {
    form.Text7.UserChange("abc");
    form.Command32.Click();
    EXPECT_EQ(list.Count(), 0U);
    form.Text7.UserChange("1e300");
    form.Command32.Click();
    EXPECT_EQ(list.Count(), 0U);
    ASSERT_EQ(message_boxes.shown.size(), 1U);
    EXPECT_EQ(message_boxes.shown[0].number, 6);
}

TEST_F(Missing, TheDiagnosticCreatesASheetNamedAfterTheTimeOfDay) {
    Open(kThreeSheets);
    form.Command31.Click();
    EXPECT_EQ(session.Log().back(), "DrawingSheets.Add(45296.25!)");
    EXPECT_EQ(DrawnSheets().back(), "45296.25");
    clock.seconds = 45296.13F;
    form.Command31.Click();
    EXPECT_EQ(DrawnSheets().back(), "45296.13") << "single precision has seven digits";
    EXPECT_TRUE(messages.empty());
}

TEST_F(Missing, TheDiagnosticWithoutCatiaShowsTheError) {
    form.Command31.Click();
    EXPECT_EQ(Status(), "429 ActiveX component can't create object");
}

TEST_F(Missing, TheDiagnosticRefusesWhatIsNoDrawing) {
    Open("DrawingDocument d.catdrawing\nsheet s\n");
    form.Command31.Click();
    EXPECT_EQ(Status(), "Neni aktivni CATDrawing");
    EXPECT_EQ(DrawnSheets(), Texts{"s"});
}

TEST_F(Endings, WithoutASession) {
    for (controls::Button* button :
         {&form.Command21, &form.Command23, &form.Command24, &form.Command29, &form.Command34}) {
        ExpectMessages(*button, {"Zjistuju spusteni Catie"});
    }
    for (controls::Button* button : {&form.Command25, &form.Command31}) {
        ExpectMessages(*button, {"429 ActiveX component can't create object"});
    }
}

TEST_F(Endings, WithAWindowOfCatiaWhoseApplicationCannotBeHad) {
    desktop.titles = {"CATIA V5"};
    const std::string error = "429 ActiveX component can't create object";
    for (controls::Button* button :
         {&form.Command21, &form.Command23, &form.Command29, &form.Command34}) {
        ExpectMessages(*button, {"Zjistuju spusteni Catie", "Cekam na Catii", error});
    }
    ExpectMessages(form.Command24, {"Zjistuju spusteni Catie", error});
    for (controls::Button* button : {&form.Command25, &form.Command31}) {
        ExpectMessages(*button, {error});
    }
}

TEST_F(Endings, WithAnotherDocument) {
    Open(testing_support::kSampleProduct);
    const std::string refusal = "Neni aktivni CATDrawing";
    for (controls::Button* button :
         {&form.Command21, &form.Command23, &form.Command29, &form.Command34}) {
        ExpectMessages(*button, {"Zjistuju spusteni Catie", "Cekam na Catii", refusal});
    }
    ExpectMessages(form.Command24, {"Zjistuju spusteni Catie", refusal});
    for (controls::Button* button : {&form.Command25, &form.Command31}) {
        ExpectMessages(*button, {refusal});
    }
}

TEST_F(Endings, WithNoDocument) {
    Open(kThreeSheets);
    session.CloseAllDocuments();
    const std::string error = "-2147467259 The method ActiveDocument failed";
    for (controls::Button* button :
         {&form.Command21, &form.Command23, &form.Command29, &form.Command34}) {
        ExpectMessages(*button, {"Zjistuju spusteni Catie", "Cekam na Catii", error});
    }
    ExpectMessages(form.Command24, {"Zjistuju spusteni Catie", error});
    for (controls::Button* button : {&form.Command25, &form.Command31}) {
        ExpectMessages(*button, {error});
    }
}

TEST_F(Endings, AnExtensionInSmallLettersIsEnoughForTheReorderingActionsAlone) {
    constexpr const char* kSmallLetters = "DrawingDocument d.catdrawing\nsheet a\nsheet b\n";
    for (controls::Button* button :
         {&form.Command21, &form.Command23, &form.Command24, &form.Command25, &form.Command31}) {
        Open(kSmallLetters);
        button->Click();
        EXPECT_EQ(Status(), "Neni aktivni CATDrawing") << button->Caption();
        EXPECT_EQ(DrawnSheets(), (Texts{"a", "b"})) << button->Caption();
    }
    form.Command29.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"b", "a"}));
    form.Command34.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"a", "b"}));
    EXPECT_EQ(Status(), "Neni aktivni CATDrawing") << "the loading afterwards refuses it";
}

struct SheetSweep : testing::TestWithParam<controls::Button controls::Form1::*> {
    // Lists and answers that every action finds something to do with.
    static void Prepare(HeadlessForm& headless) {
        headless.form.ListView1.Clear();
        AddParts(headless.form, {"2", "3"});
        headless.form.ListView3.Clear();
        for (const char* name : {"b", "a"}) {
            const std::size_t row = headless.form.ListView3.Add(name);
            headless.form.ListView3.SetChecked(row, true);
            headless.form.ListView3.SetSubItem(row, controls::kNewName, std::string("new ") + name);
        }
        headless.message_boxes.text_answer = "1-2";
        headless.message_boxes.three_way_answer = platform::Answer::kYes;
    }
};

TEST_P(SheetSweep, ShowsTheErrorWhicheverCallFails) {
    testing_support::Sweep({
        .button = GetParam(),
        .document = "DrawingDocument D.CATDrawing\nsheet a\nsheet b\n",
        .fewest_calls = 4,
        .prepare = Prepare,
        .after_failure =
            [](const HeadlessForm&, HeadlessForm& failed, const simulator::Fault& fault) {
                testing_support::ExpectErrorShown(failed, fault.kind);
                EXPECT_EQ(failed.form.ListView1.Count(), 2U);
            },
        .before_next_run = Prepare, // the sheet list may have been loaded again
    });
}

INSTANTIATE_TEST_SUITE_P(Actions, SheetSweep,
                         testing::Values(&controls::Form1::Command21, &controls::Form1::Command23,
                                         &controls::Form1::Command24, &controls::Form1::Command25,
                                         &controls::Form1::Command34, &controls::Form1::Command29,
                                         &controls::Form1::Command31));

} // namespace
