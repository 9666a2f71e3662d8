// "Aktualizuj ze stromu", the names beside list files, and "Smazat vybrané".

#include <gtest/gtest.h>

#include <chrono>

#include "app/recovery.hpp"
#include "tests/support/drawing_samples.hpp"
#include "tests/support/headless_form.hpp"
#include "tests/support/list_state.hpp"

namespace {

using testing_support::AddRow;
using testing_support::Column;
using testing_support::HeadlessForm;
using testing_support::kWorkingFile;
using testing_support::RowTexts;
using testing_support::StateOf;
using Texts = std::vector<std::string>;

constexpr const char* kWorkingNames = "C:\\Dorvak\\list.strom";
constexpr const char* kTab = "C:\\Tabulky\\kolo.tab";
constexpr const char* kTabNames = "C:\\Tabulky\\kolo.strom";

// A structure text of parts right below the top, each so often as it is named.
std::string Structure(const Texts& parts) {
    std::string text = "0\tTop";
    for (const std::string& part : parts) {
        text += "\r\n1\t" + part + "\tTop";
    }
    return text;
}

struct ListUpdating : testing::Test, HeadlessForm {
    controls::ListView& list = form.ListView1;

    void BuildTree(const Texts& parts) {
        form.Text1.SetText(Structure(parts));
        form.Command5.Click();
    }
    void Fill(const Texts& parts) {
        BuildTree(parts);
        form.Command4.Click();
    }
    void Update(const Texts& parts) {
        BuildTree(parts);
        form.Command39.Click();
    }
    std::vector<std::size_t> Rows(bool controls::ListRow::*which) {
        std::vector<std::size_t> rows;
        for (std::size_t row = 1; row <= list.Count(); ++row) {
            if (list.Row(row).*which) {
                rows.push_back(row);
            }
        }
        return rows;
    }
    std::vector<std::size_t> Marked() { return Rows(&controls::ListRow::marked); }
    std::vector<std::size_t> Selected() { return Rows(&controls::ListRow::selected); }
    [[nodiscard]] const std::string& Explained() const {
        return form.StatusBar1.ShownExplanation().text;
    }
    void SaveTo(const char* path) {
        chosen_file = path;
        form.Command17.Click();
    }
    void LoadFrom(const char* path) {
        chosen_file = path;
        form.Command27.Click();
    }
};

using Numbers = std::vector<std::size_t>;

TEST_F(ListUpdating, KeepsWhatThePersonMadeAndShowsChangedNewAndMissing) {
    Fill({"a", "b", "c", "c", "d"});
    list.UserCheck(2, true);
    list.SetSubItem(2, controls::kMaterial, "S235");
    list.SetSubItem(2, controls::kSize, "20x40");
    list.SetSubItem(2, controls::kNote, "kalit");
    const auto overview = StateOf(form.ListView2);
    list.SelectAll();
    Update({"a", "b", "b", "c", "n", "m"});
    EXPECT_EQ(Column(list, 0), (Texts{"a", "b", "c", "d", "n", "m"}));
    EXPECT_EQ(RowTexts(list, 2), (Texts{"b", "0002", "2", "2", "S235", "20x40", "kalit"}));
    EXPECT_TRUE(list.Row(2).checked);
    EXPECT_EQ(RowTexts(list, 3), (Texts{"c", "0003", "1", "", "", "", ""}));
    EXPECT_EQ(RowTexts(list, 4), (Texts{"d", "0004", "1", "", "", "", ""}));
    EXPECT_EQ(RowTexts(list, 5), (Texts{"n", "0005", "1", "", "", "", ""}));
    EXPECT_FALSE(list.Row(5).checked);
    EXPECT_EQ(Status(), "Aktualizovano: zmeneno 2, novych 2, chybi 1");
    EXPECT_EQ(RowCount(), "Pozic: 6");
    EXPECT_EQ(Marked(), Numbers{4});
    EXPECT_EQ(Selected(), Numbers{4});
    EXPECT_EQ(list.CurrentRow(), 4U);
    EXPECT_EQ(list.TakeRowToShow(), 4U);
    EXPECT_EQ(Explained(), "1 vybraný řádek už nemá svůj díl ve stromu; smaže ho Ctrl+Delete.");
    EXPECT_FALSE(form.StatusBar1.ShownExplanation().is_error);
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kDone);
    const auto after = StateOf(form.ListView2);
    ASSERT_EQ(after.rows.size(), overview.rows.size());
    for (std::size_t row = 0; row < after.rows.size(); ++row) {
        EXPECT_TRUE(after.rows[row].SameAs(overview.rows[row]));
    }
}

TEST_F(ListUpdating, ATreeOfTheSamePartsChangesNothingAndSelectsNothing) {
    Fill({"a", "b"});
    list.SelectAll();
    list.SetCurrentRow(2);
    const auto step = form.parts_history.UndoName();
    Update({"a", "b"});
    EXPECT_EQ(Status(), "Aktualizovano: zmeneno 0, novych 0, chybi 0");
    EXPECT_EQ(Selected(), Numbers{});
    EXPECT_EQ(list.CurrentRow(), 2U);
    EXPECT_EQ(Explained(), "");
    EXPECT_EQ(form.parts_history.UndoName(), step) << "there is nothing to take back";
}

TEST_F(ListUpdating, WithoutATreeNothingHappensButAWord) {
    AddRow(list, {"a", "0001", "1"});
    list.SetSelected(1, true);
    form.Command39.Click();
    EXPECT_EQ(Status(), "Strom je prazdny");
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kNone);
    EXPECT_EQ(Selected(), Numbers{1});
    EXPECT_EQ(Marked(), Numbers{});
}

TEST_F(ListUpdating, IntoAnEmptyListIsLikeFilling) {
    Update({"b", "a", "b"});
    EXPECT_EQ(Column(list, 0), (Texts{"b", "a"}));
    EXPECT_EQ(Column(list, 1), (Texts{"0001", "0002"}));
    EXPECT_EQ(Column(list, 2), (Texts{"2", "1"}));
    EXPECT_EQ(Status(), "Aktualizovano: zmeneno 0, novych 2, chybi 0");
    Update({"a"});
    EXPECT_EQ(Selected(), Numbers{1}) << "the tree of before is known";
}

TEST_F(ListUpdating, APartThatIsUncheckedIsNotMissingAndGetsItsQuantity) {
    Fill({"a", "b"});
    BuildTree({"a", "b", "b", "c"});
    form.TreeView1.UserCheck(3, false);
    form.TreeView1.UserCheck(4, false);
    form.TreeView1.UserCheck(5, false);
    form.Command39.Click();
    EXPECT_EQ(Column(list, 2), (Texts{"1", "2"}));
    EXPECT_EQ(Marked(), Numbers{});
    Update({"a"}); // in which it is not at all
    EXPECT_EQ(Selected(), Numbers{2});
}

TEST_F(ListUpdating, CountsLikeFilling) {
    const std::string text = "0\tA\r\n1\tx\tA\r\n1\tx\tA\tk\r\n2\ty\tk";
    form.Text1.SetText(text);
    form.Command5.Click();
    form.Command39.Click();
    const Texts quantities = Column(list, 2);
    form.Command4.Click();
    EXPECT_EQ(Column(list, 2), quantities);
    EXPECT_EQ(quantities, (Texts{"2", "1"}));
}

TEST_F(ListUpdating, RowsAddedByHandAreLeftAlone) {
    Fill({"a"});
    form.m_Pridat.Click();
    form.m_Pridat.Click();
    Update({"b"});
    EXPECT_EQ(Column(list, 0), (Texts{"a", "Novy", "Novy", "b"}));
    EXPECT_EQ(Marked(), Numbers{1});
    EXPECT_EQ(RowTexts(list, 4), (Texts{"b", "0004", "1", "", "", "", ""}));
}

TEST_F(ListUpdating, MarksGoWithTheNextUpdateFillingSaveAndLoad) {
    const std::vector<std::function<void()>> ends{
        [this] { Update({"a"}); }, [this] { Fill({"a"}); }, [this] { SaveTo(kTab); },
        [this] { form.Command17.MouseDown(controls::kRightButton, 0, 1, 1); },
        [this] {
            files.stored[kTab] = "a@@False@@0001@@1\r\nb@@False@@0002@@1\r\n";
            LoadFrom(kTab);
        }};
    for (const auto& end : ends) {
        Fill({"a", "b"});
        Update({"a"});
        ASSERT_EQ(Marked(), Numbers{2});
        list.UserRename(list.Row(1).id, "a");
        ASSERT_EQ(Marked(), Numbers{2});
        end();
        EXPECT_EQ(Marked(), Numbers{});
    }
}

TEST_F(ListUpdating, MarksStayWhereASaveFails) {
    Fill({"a", "b"});
    Update({"a"});
    files.failing.emplace(kTab, automation::RunTimeError(61, "Disk full"));
    SaveTo(kTab);
    EXPECT_EQ(Marked(), Numbers{2});
}

TEST_F(ListUpdating, NamesInSeveralRowsAreMarkedAndTold) {
    Fill({"a", "b"});
    list.UserRename(list.Row(2).id, "a");
    Update({"a", "a", "a"});
    EXPECT_EQ(Column(list, 2), (Texts{"1", "1"}));
    EXPECT_EQ(Marked(), (Numbers{1, 2}));
    EXPECT_EQ(Selected(), Numbers{});
    EXPECT_EQ(Status(), "Aktualizovano: zmeneno 0, novych 0, chybi 0");
    EXPECT_EQ(Explained(),
              "2 označené řádky mají jméno, které je v seznamu víckrát; kusy v nich zůstaly.");
}

TEST_F(ListUpdating, AListFromElsewhereMarksWithoutSelecting) {
    form.Command1.Click(); // ten rows of test data
    Update({"A", "B"});
    EXPECT_EQ(Marked().size(), 8U);
    EXPECT_EQ(Selected(), Numbers{});
    EXPECT_EQ(Status(), "Aktualizovano: zmeneno 2, novych 0, chybi 8");
    EXPECT_EQ(Explained(), "8 označených řádků nemá svůj díl ve stromu. Zda tam dřív byl, není "
                           "známo, proto není nic vybráno.");
    Update({"A"});
    EXPECT_EQ(Selected(), Numbers{2}) << "now it is known what the tree had";
}

TEST_F(ListUpdating, IsOneStepThatTakesTheNamesOfTheTreeWithIt) {
    Fill({"a", "b", "c"});
    const auto before = StateOf(list);
    Update({"a", "a", "n"});
    EXPECT_EQ(form.m_Zpet.caption, "Zpět: Aktualizuj ze stromu");
    form.m_Zpet.Click();
    const auto back = StateOf(list);
    ASSERT_EQ(back.rows.size(), 3U);
    for (std::size_t row = 0; row < 3; ++row) {
        EXPECT_TRUE(back.rows[row].SameAs(before.rows[row]));
    }
    form.Command39.Click();
    EXPECT_EQ(Status(), "Aktualizovano: zmeneno 1, novych 1, chybi 2");
    EXPECT_EQ(Selected(), (Numbers{2, 3}));
    form.m_Zpet.Click();
    form.m_Znovu.Click();
    EXPECT_EQ(Column(list, 2), (Texts{"2", "1", "1", "1"}));
    Update({"a"});
    EXPECT_EQ(Selected(), Numbers{4}) << "b and c were not in the tree of before";
}

TEST_F(ListUpdating, AFillingThatIsTakenBackWasNone) {
    Fill({"a", "b"});
    Fill({"x", "y"});
    form.m_Zpet.Click();
    ASSERT_EQ(Column(list, 0), (Texts{"a", "b"}));
    Update({"b", "y"});
    EXPECT_EQ(Selected(), Numbers{1});
}

TEST_F(ListUpdating, AListReadFromADrawingHasNoTree) {
    simulator::Session session;
    session.LoadDocument("document", testing_support::DrawingWithTable(3, 7));
    Connect(session);
    Fill({"a", "b"});
    form.Command9.Click();
    EXPECT_EQ(list.SourceNames(), nullptr);
}

TEST_F(ListUpdating, AReadingThatIsStoppedGivesTheTreeBack) {
    simulator::Session session;
    session.LoadDocument("document", testing_support::DrawingWithTable(3, 7));
    Connect(session);
    Fill({"a", "b"});
    events.at_every_yield = [this] { app::RequestStop(form); };
    form.Command9.Click();
    events.at_every_yield = nullptr;
    ASSERT_EQ(Column(list, 0), (Texts{"a", "b"}));
    Update({"a"});
    EXPECT_EQ(Selected(), Numbers{2});
}

// Names beside list files

TEST_F(ListUpdating, TheNamesComeBackWithTheFile) {
    Fill({"a", "b"});
    SaveTo(kTab);
    EXPECT_TRUE(files.stored.contains(kTabNames));
    EXPECT_EQ(Status(), std::string("Ulozeni ok ") + kTab);
    HeadlessForm other;
    other.files.stored = files.stored;
    other.chosen_file = kTab;
    other.form.Command27.Click();
    EXPECT_EQ(other.Status(), "Nacteni ok 2");
    ASSERT_NE(other.form.ListView1.SourceNames(), nullptr);
    EXPECT_EQ(*other.form.ListView1.SourceNames(), (controls::NameSet{"a", "b"}));
}

TEST_F(ListUpdating, TheWorkingListHasItsNamesAfterClosingAndStarting) {
    app::Form_Load(form);
    Fill({"a", "b"});
    app::RequestClose(form);
    EXPECT_TRUE(files.stored.contains(kWorkingNames));
    HeadlessForm next;
    next.files.stored = files.stored;
    app::Form_Load(next.form);
    EXPECT_EQ(next.Status(), "Nacteni listu ok 2");
    EXPECT_FALSE(next.form.m_Zpet.Enabled());
    next.form.Text1.SetText(Structure({"a"}));
    next.form.Command5.Click();
    next.form.Command39.Click();
    EXPECT_TRUE(next.form.ListView1.Row(2).selected);
}

TEST_F(ListUpdating, NamesOfAnotherListDoNotStayBesideAFile) {
    Fill({"a", "b"});
    SaveTo(kTab);
    form.Command1.Click();
    SaveTo(kTab);
    EXPECT_FALSE(files.stored.contains(kTabNames));
    LoadFrom(kTab);
    EXPECT_EQ(list.SourceNames(), nullptr);
}

TEST_F(ListUpdating, NamesBesideAFileThatOthersHaveChangedMeanNothing) {
    Fill({"a", "b"});
    SaveTo(kTab);
    files.stored[kTab] = "x@@False@@0001@@1\r\na@@False@@0002@@1\r\n";
    LoadFrom(kTab);
    EXPECT_EQ(Status(), "Nacteni ok 2");
    EXPECT_EQ(list.SourceNames(), nullptr);
    Update({"x"});
    EXPECT_EQ(Marked(), Numbers{2});
    EXPECT_EQ(Selected(), Numbers{});
}

TEST_F(ListUpdating, WhatFailsBesideTheListIsNoFailureOfTheSave) {
    Fill({"a", "b"});
    SaveTo(kTab);
    files.failing.emplace(kTabNames, automation::RunTimeError(61, "Disk full"));
    Fill({"c"});
    SaveTo(kTab);
    EXPECT_EQ(Status(), std::string("Ulozeni ok ") + kTab);
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kDone);
    EXPECT_TRUE(message_boxes.shown.empty());
    LoadFrom(kTab); // the names of then may still stand beside it
    EXPECT_EQ(Status(), "Nacteni ok 1");
    EXPECT_EQ(list.SourceNames(), nullptr);
}

// Whichever of the two writes is the last before the power is gone, and whether or not the list
// could be written.
TEST_F(ListUpdating, ACrashBetweenTheTwoWritesNeverSelectsRows) {
    Fill({"a", "b"});
    SaveTo(kTab);
    const auto before = files.stored;
    Fill({"b", "c"});
    SaveTo(kTab);
    const auto after = files.stored;
    for (const bool list_written : {false, true}) {
        auto crashed = before;
        (list_written ? crashed[kTab] : crashed[kTabNames]) =
            after.at(list_written ? kTab : kTabNames);
        files.stored = crashed;
        LoadFrom(kTab);
        EXPECT_EQ(list.Count(), 2U);
        Update({"x"});
        EXPECT_EQ(Selected(), Numbers{}) << list_written;
    }
}

TEST_F(ListUpdating, AListThatCannotBeWrittenKeepsItsNames) {
    Fill({"a", "b"});
    SaveTo(kTab);
    const auto before = files.stored;
    files.failing.emplace(kTab, automation::RunTimeError(70, "Permission denied"));
    Fill({"c"});
    SaveTo(kTab);
    EXPECT_EQ(files.stored, before);
}

TEST_F(ListUpdating, AListFileOfTheNamesEndingIsNotWrittenOver) {
    Fill({"a", "b"});
    SaveTo("C:\\Tabulky\\x.STROM");
    EXPECT_EQ(files.stored["C:\\Tabulky\\x.STROM"],
              "a@@False@@0001@@1@@@@@@@@\r\nb@@False@@0002@@1@@@@@@@@\r\n");
    LoadFrom("C:\\Tabulky\\x.STROM");
    EXPECT_EQ(Status(), "Nacteni ok 2");
    form.Command1.Click();
    SaveTo("C:\\Tabulky\\x.STROM");
    EXPECT_TRUE(files.stored.contains("C:\\Tabulky\\x.STROM"));
}

TEST_F(ListUpdating, ALoadThatFailsHalfWayHasNoNames) {
    Fill({"a", "b"});
    SaveTo(kTab);
    files.stored[kTab] += "broken\r\n";
    LoadFrom(kTab);
    EXPECT_EQ(list.SourceNames(), nullptr);
    files.failing.emplace(kTabNames, automation::RunTimeError(70, "Permission denied"));
    files.stored[kTab] = "a@@False@@0001@@1@@@@@@@@\r\nb@@False@@0002@@1@@@@@@@@\r\n";
    LoadFrom(kTab);
    EXPECT_EQ(Status(), "Nacteni ok 2");
    EXPECT_EQ(list.SourceNames(), nullptr);
}

TEST_F(ListUpdating, RecoveryBringsTheNamesBackToo) {
    app::Form_Load(form);
    app::OfferRecovery(form);
    Fill({"a", "b"});
    app::KeepRecoveryNow(form);
    HeadlessForm next;
    next.files.stored = files.stored;
    next.files.written = files.written;
    app::Form_Load(next.form);
    app::OfferRecovery(next.form);
    ASSERT_EQ(Column(next.form.ListView1, 0), (Texts{"a", "b"}));
    ASSERT_NE(next.form.ListView1.SourceNames(), nullptr);
    EXPECT_EQ(*next.form.ListView1.SourceNames(), (controls::NameSet{"a", "b"}));
    next.form.m_Zpet.Click();
    EXPECT_EQ(next.form.ListView1.SourceNames(), nullptr);
}

TEST_F(ListUpdating, WhereOnlyTheNamesAreLostNothingIsAsked) {
    app::Form_Load(form);
    app::OfferRecovery(form);
    Fill({"a", "b"});
    form.Command17.MouseDown(controls::kRightButton, 0, 1, 1);
    app::KeepRecoveryNow(form);
    HeadlessForm next;
    next.files.stored = files.stored;
    next.files.stored.erase(kWorkingNames);
    next.files.written = files.written;
    app::Form_Load(next.form);
    app::OfferRecovery(next.form);
    EXPECT_EQ(next.message_boxes.questions, Texts{});
}

TEST_F(ListUpdating, TenThousandRowsTakeNoTime) {
    Texts parts;
    for (int part = 0; part < 10'000; ++part) {
        parts.push_back("part " + std::to_string(part));
    }
    Fill(parts);
    parts.erase(parts.begin(), parts.begin() + 5000);
    for (int part = 0; part < 5000; ++part) {
        parts.push_back("new " + std::to_string(part));
    }
    BuildTree(parts);
    const auto start = std::chrono::steady_clock::now();
    form.Command39.Click();
    form.m_Smazat_vybrane.Click();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(list.Count(), 10'000U);
    EXPECT_EQ(list.SubItem(10'000, controls::kPosition), "10000");
}

// "Smazat vybrané"

struct DeletingSelected : ListUpdating {
    void AddRows(const std::string& names) {
        for (const char name : names) {
            AddRow(list, {std::string(1, name), "0009", "1"}, true);
            list.SetSubItem(list.Count(), controls::kSheet, std::string("s") + name);
        }
    }
    void Delete(const Numbers& selected, std::optional<std::size_t> current) {
        for (const std::size_t row : selected) {
            list.SetSelected(row, true);
        }
        list.SetCurrentRow(current);
        form.parts_history.Start();
        form.m_Smazat_vybrane.Click();
    }
};

TEST_F(DeletingSelected, RemovesThemAllAndNumbersPositionsAlone) {
    AddRows("abcde");
    Delete({2, 4}, 4);
    EXPECT_EQ(Column(list, 0), (Texts{"a", "c", "e"}));
    EXPECT_EQ(Column(list, 1), (Texts{"0001", "0002", "0003"}));
    EXPECT_EQ(Column(list, 3), (Texts{"sa", "sc", "se"}));
    EXPECT_EQ(RowCount(), "Pozic: 3");
    EXPECT_EQ(form.m_Zpet.caption, "Zpět: Smazat vybrané");
    EXPECT_EQ(list.CurrentRow(), 3U);
    EXPECT_EQ(Selected(), Numbers{3});
}

TEST_F(DeletingSelected, TheCurrentRowStaysWhereItIsNotSelected) {
    AddRows("abcde");
    Delete({1, 2}, 4);
    EXPECT_EQ(Column(list, 0), (Texts{"c", "d", "e"}));
    EXPECT_EQ(list.CurrentRow(), 2U);
    EXPECT_EQ(Selected(), Numbers{});
}

TEST_F(DeletingSelected, AtTheEndTheLastRowThatIsLeftBecomesCurrent) {
    AddRows("abcd");
    Delete({3, 4}, 3);
    EXPECT_EQ(list.CurrentRow(), 2U);
    EXPECT_EQ(Selected(), Numbers{2});
}

TEST_F(DeletingSelected, WithoutACurrentRowTheFirstGapDecides) {
    AddRows("abcd");
    Delete({2, 4}, std::nullopt);
    EXPECT_EQ(list.CurrentRow(), 2U);
    EXPECT_EQ(Selected(), Numbers{2});
}

TEST_F(DeletingSelected, AllOfThemLeaveAnEmptyList) {
    AddRows("ab");
    Delete({1, 2}, 2);
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_EQ(list.CurrentRow(), std::nullopt);
    EXPECT_EQ(RowCount(), "Pozic: 0");
    form.m_Zpet.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"a", "b"}));
    EXPECT_EQ(Selected(), (Numbers{1, 2}));
}

TEST_F(DeletingSelected, IsGreyAndDoesNothingWhereNothingIsSelected) {
    list.UserMenuKey();
    EXPECT_FALSE(form.m_Smazat_vybrane.Enabled());
    AddRows("ab");
    list.SetCurrentRow(1);
    list.UserMenuKey();
    EXPECT_FALSE(form.m_Smazat_vybrane.Enabled());
    form.m_Smazat_vybrane.Click();
    EXPECT_EQ(list.Count(), 2U);
    EXPECT_EQ(Column(list, 1), (Texts{"0009", "0009"}));
    list.SetSelected(1, true);
    list.UserMenuKey();
    EXPECT_TRUE(form.m_Smazat_vybrane.Enabled());
}

} // namespace
