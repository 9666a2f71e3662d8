// "Doplnit známé", and when the program remembers what it fills in.

#include <gtest/gtest.h>

#include "tests/support/drawing_samples.hpp"
#include "tests/support/headless_form.hpp"

namespace {

using testing_support::AddRow;
using testing_support::HeadlessForm;
using testing_support::kWorkingFile;
using testing_support::RowTexts;
using Texts = std::vector<std::string>;

constexpr const char* kMemory = "C:\\Dorvak\\znama.txt";
constexpr const char* kMemoryBefore = "C:\\Dorvak\\znama.bak";
constexpr const char* kList = "C:\\a.tab";
constexpr const char* kLearned = "Hřídel\t11 600\tD25\tkalit\r\n";

struct KnownPartsOfLists : testing::Test, HeadlessForm {
    controls::ListView& list = form.ListView1;
    simulator::Session session;

    void AddPart() { AddRow(list, {"Hřídel", "0001", "1", "", "11 600", "D25", "kalit"}); }
    void SaveToFile() {
        chosen_file = kList;
        form.Command17.Click();
    }
    [[nodiscard]] std::string Memory() const {
        const auto found = files.stored.find(kMemory);
        return found == files.stored.end() ? "" : found->second;
    }
    [[nodiscard]] const std::string& Explained() const {
        return form.StatusBar1.ShownExplanation().text;
    }
    void Open(const std::string& document) {
        session.LoadDocument("document", document);
        Connect(session);
    }
};

TEST_F(KnownPartsOfLists, AreRememberedWhenAListIsSaved) {
    AddPart();
    SaveToFile();
    EXPECT_EQ(Memory(), kLearned);
    EXPECT_EQ(Status(), std::string("Ulozeni ok ") + kList);
    list.SetSubItem(1, controls::kMaterial, "S235");
    form.Command17.MouseDown(controls::kRightButton, 0, 1, 1);
    EXPECT_EQ(Memory(), "Hřídel\tS235\tD25\tkalit\r\n");
}

TEST_F(KnownPartsOfLists, AreRememberedWhenATableIsMade) {
    AddPart();
    Open(testing_support::kEmptyDrawing);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(Memory(), kLearned);
}

TEST_F(KnownPartsOfLists, AreThoseOfTheListThatWasExportedNotOfALaterOne) {
    AddPart();
    Open(testing_support::kEmptyDrawing);
    events.at_yield[1] = [this] { list.SetSubItem(1, controls::kMaterial, "later"); };
    form.Command11.Click();
    EXPECT_EQ(Memory(), kLearned);
}

TEST_F(KnownPartsOfLists, AreRememberedWhenATableIsBroughtUpToDate) {
    AddPart();
    Open(testing_support::DrawingWithTable(3, 7));
    message_boxes.answer = false; // to the question about its header
    form.Command37.Click();
    EXPECT_EQ(Memory(), "");
    message_boxes.answer = true;
    form.Command37.Click();
    EXPECT_TRUE(Status().starts_with("Aktualizovano bunek: ")) << Status();
    EXPECT_EQ(Memory(), kLearned);
}

TEST_F(KnownPartsOfLists, AreRememberedWhenATableIsFilled) {
    AddPart();
    Open(testing_support::DrawingWithTable(3, 7));
    form.Command30.Click();
    EXPECT_EQ(Status(), "Vlozeni dat Ok");
    EXPECT_EQ(Memory(), kLearned);
}

TEST_F(KnownPartsOfLists, AreNotRememberedWhereAnExportFailsOrTakesOneRow) {
    AddPart();
    list.SetCurrentRow(1);
    Open(testing_support::DrawingWithTable(3, 7));
    form.Command7.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(Memory(), "");
    session.ClearLog();
    session.Arm({.call = 12, .kind = simulator::FaultKind::kRefused});
    form.Command11.Click();
    ASSERT_EQ(form.StatusBar1.State(), controls::ActionState::kFailed);
    EXPECT_EQ(Memory(), "");
}

TEST_F(KnownPartsOfLists, AreRememberedWhenTheProgramCloses) {
    app::Form_Load(form);
    AddPart();
    app::RequestClose(form);
    EXPECT_EQ(Memory(), kLearned);
    HeadlessForm next;
    next.files.stored = files.stored;
    app::Form_Load(next.form);
    next.form.ListView1.SetSubItem(1, controls::kMaterial, "");
    next.form.m_Doplnit_zname.Click();
    EXPECT_EQ(next.form.ListView1.SubItem(1, controls::kMaterial), "11 600");
}

TEST_F(KnownPartsOfLists, AreRememberedAlsoWhereTheListCouldNotBeSaved) {
    app::Form_Load(form);
    AddPart();
    files.failing.emplace(kWorkingFile, automation::RunTimeError(61, "Disk full"));
    app::RequestClose(form);
    EXPECT_EQ(Memory(), kLearned);
}

TEST_F(KnownPartsOfLists, AListWithoutValuesAsksForNothing) {
    AddRow(list, {"a", "0001", "1"});
    files.stored[kMemory] = kLearned;
    SaveToFile();
    EXPECT_FALSE(files.written.contains(kMemory));
}

TEST_F(KnownPartsOfLists, NothingIsWrittenWhereNothingIsNew) {
    AddPart();
    SaveToFile();
    const int written = files.written.at(kMemory);
    SaveToFile();
    form.Command17.MouseDown(controls::kRightButton, 0, 1, 1);
    EXPECT_EQ(files.written.at(kMemory), written);
}

TEST_F(KnownPartsOfLists, FillEmptyCellsOfAllRowsAsOneStep) {
    AddPart();
    SaveToFile();
    list.Clear();
    AddRow(list, {"Hřídel", "0001", "1", "", "", "own", ""});
    AddRow(list, {"Kolo", "0002", "1"});
    AddRow(list, {"Hřídel", "0003", "1"});
    form.parts_history.Start();
    form.m_Doplnit_zname.Click();
    EXPECT_EQ(RowTexts(list, 1), (Texts{"Hřídel", "0001", "1", "", "11 600", "own", "kalit"}));
    EXPECT_EQ(RowTexts(list, 2), (Texts{"Kolo", "0002", "1", "", "", "", ""}));
    EXPECT_EQ(RowTexts(list, 3), (Texts{"Hřídel", "0003", "1", "", "11 600", "D25", "kalit"}));
    EXPECT_EQ(Status(), "Doplneno bunek: 5");
    EXPECT_EQ(form.m_Zpet.caption, "Zpět: Doplnit známé");
    form.m_Zpet.Click();
    EXPECT_EQ(RowTexts(list, 1), (Texts{"Hřídel", "0001", "1", "", "", "own", ""}));
    form.m_Doplnit_zname.Click();
    form.m_Doplnit_zname.Click();
    EXPECT_EQ(Status(), "Doplneno bunek: 0");
}

TEST_F(KnownPartsOfLists, TheFieldsBesideTheListShowWhatWasFilledIn) {
    AddPart();
    SaveToFile();
    list.SetSubItem(1, controls::kMaterial, "");
    list.SetCurrentRow(1);
    list.UserClick();
    ASSERT_EQ(form.Combo1.Text(), "");
    form.m_Doplnit_zname.Click();
    EXPECT_EQ(form.Combo1.Text(), "11 600");
}

TEST_F(KnownPartsOfLists, OfNoPartFillNothing) {
    form.m_Doplnit_zname.Click();
    EXPECT_EQ(Status(), "") << "the list is empty";
    AddRow(list, {"Hřídel", "0001", "1"});
    form.m_Doplnit_zname.Click();
    EXPECT_EQ(Status(), "Doplneno bunek: 0") << "there is no file yet";
}

TEST_F(KnownPartsOfLists, ABrokenLineIsKeptAsideWhenTheOthersAreWrittenAnew) {
    files.stored[kMemory] = "a\tm\t\t\r\nbroken\r\n";
    AddPart();
    SaveToFile();
    EXPECT_EQ(Memory(), std::string("a\tm\t\t\r\n") + kLearned);
    EXPECT_EQ(files.stored[kMemoryBefore], "a\tm\t\t\r\nbroken\r\n");
}

TEST_F(KnownPartsOfLists, AFileThatCannotBeReadIsNotWrittenOver) {
    files.stored[kMemory] = "a\tm\t\t\r\n";
    files.failing.emplace(kMemory, automation::RunTimeError(70, "Permission denied"));
    AddPart();
    SaveToFile();
    EXPECT_EQ(Status(), std::string("Ulozeni ok ") + kList);
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kDone);
    EXPECT_EQ(Explained(),
              "Materiály, velikosti a poznámky se nepodařilo zapamatovat pro „Doplnit "
              "známé“. Soubor má otevřený jiný program, nebo je určený jen pro čtení.");
    EXPECT_EQ(Memory(), "a\tm\t\t\r\n");
    form.m_Doplnit_zname.Click();
    EXPECT_EQ(Status(), "Nacteni Error 70 Permission denied");
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kFailed);
    EXPECT_TRUE(message_boxes.shown.empty());
    files.failing.clear();
    SaveToFile();
    EXPECT_EQ(Memory(), std::string("a\tm\t\t\r\n") + kLearned) << "it is learned the next time";
    EXPECT_EQ(Explained(), "");
}

TEST_F(KnownPartsOfLists, AFileThatCannotBeWrittenFailsNothingElse) {
    app::Form_Load(form);
    files.failing.emplace(kMemory, automation::RunTimeError(61, "Disk full"));
    AddPart();
    SaveToFile();
    EXPECT_EQ(Status(), std::string("Ulozeni ok ") + kList);
    EXPECT_TRUE(Explained().ends_with("Disk je plný. Uvolněte na něm místo.")) << Explained();
    Open(testing_support::kEmptyDrawing);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kDone);
    EXPECT_FALSE(Busy());
    EXPECT_TRUE(Explained().ends_with("Disk je plný. Uvolněte na něm místo.")) << Explained();
    app::RequestClose(form);
    EXPECT_TRUE(form.unloaded);
    EXPECT_TRUE(files.stored.contains(kWorkingFile));
    EXPECT_TRUE(message_boxes.shown.empty());
    EXPECT_TRUE(message_boxes.failed_saves.empty());
}

TEST_F(KnownPartsOfLists, ComeFromTheNewerOfTwoFolders) {
    files.other_folder = "C:\\Other";
    files.stored[kMemory] = "Hřídel\told\t\t\r\n";
    files.written[kMemory] = 1;
    files.stored["C:\\Other\\znama.txt"] = "Hřídel\tnew\t\t\r\n";
    files.written["C:\\Other\\znama.txt"] = 2;
    AddRow(list, {"Hřídel", "0001", "1"});
    form.m_Doplnit_zname.Click();
    EXPECT_EQ(list.SubItem(1, controls::kMaterial), "new");
}

} // namespace
