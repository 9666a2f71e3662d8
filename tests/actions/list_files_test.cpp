// Saving and loading the parts list: chosen files and the working file.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "partslist/list_file.hpp"
#include "partslist/partslist.hpp"
#include "tests/support/headless_form.hpp"

namespace {

using testing_support::AddRow;
using testing_support::Column;
using testing_support::HeadlessForm;
using testing_support::kWorkingFile;
using testing_support::RowTexts;
using Texts = std::vector<std::string>;

constexpr const char* kChosen = "C:\\Tabulky\\skříň.tab";

struct ListFiles : testing::Test, HeadlessForm {
    controls::ListView& list = form.ListView1;

    void AddTwoRows() {
        AddRow(list, {"Part 12", "0003", "4", "2", "S235", "20x40", ""}, true);
        AddRow(list, {"Hřídel", "0004", "1", "", "", "", "kalit"}, false);
    }
    static void PressRight(controls::Button& button) { button.MouseDown(2, 0, 5, 5); }
    void Save() {
        chosen_file = kChosen;
        form.Command17.Click();
    }
    void LoadText(const std::string& file) {
        files.stored[kChosen] = file;
        chosen_file = kChosen;
        form.Command27.Click();
    }
};

TEST_F(ListFiles, ACheckedRowIsTheLineOfItsEightFields) {
    AddTwoRows();
    EXPECT_EQ(partslist::WriteListFile(list), "Part 12@@True@@0003@@4@@2@@S235@@20x40@@\r\n"
                                              "Hřídel@@False@@0004@@1@@@@@@@@kalit\r\n");
}

TEST_F(ListFiles, ASaveAndLoadBringsEveryFieldBack) {
    AddTwoRows();
    Save();
    EXPECT_EQ(Status(), std::string("Ulozeni ok ") + kChosen);
    list.Clear();
    form.Command27.Click();
    ASSERT_EQ(list.Count(), 2U);
    EXPECT_EQ(RowTexts(list, 1), (Texts{"Part 12", "0003", "4", "2", "S235", "20x40", ""}));
    EXPECT_EQ(RowTexts(list, 2), (Texts{"Hřídel", "0004", "1", "", "", "", "kalit"}));
    EXPECT_TRUE(list.Row(1).checked);
    EXPECT_FALSE(list.Row(2).checked);
}

TEST_F(ListFiles, LoadingFourRowsSaysSo) {
    LoadText("a@@False\r\nb@@False\r\nc@@False\r\nd@@False\r\n");
    EXPECT_EQ(Status(), "Nacteni ok 4");
    EXPECT_EQ(RowCount(), "Pozic: 4");
}

TEST_F(ListFiles, NothingIsRenumberedByLoading) {
    LoadText("a@@True@@0009@@1@@7\r\n");
    EXPECT_EQ(RowTexts(list, 1), (Texts{"a", "0009", "1", "7", "", "", ""}));
}

TEST_F(ListFiles, LoadingReplacesTheList) {
    AddTwoRows();
    LoadText("a@@False\r\n");
    EXPECT_EQ(Column(list, 0), Texts{"a"});
}

TEST_F(ListFiles, AnEmptyFileIsAnEmptyList) {
    AddTwoRows();
    LoadText("");
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_EQ(Status(), "Nacteni ok 0");
}

TEST_F(ListFiles, TheLastLineNeedsNoEnd) {
    LoadText("a@@True\r\nb@@True");
    EXPECT_EQ(Column(list, 0), (Texts{"a", "b"}));
    EXPECT_EQ(Status(), "Nacteni ok 2");
}

TEST_F(ListFiles, LineFeedsAloneEndLinesInAFileThatHasNothingElse) {
    LoadText("a@@True\nb@@True\nc@@True\n");
    EXPECT_EQ(Column(list, 0), (Texts{"a", "b", "c"}));
    EXPECT_EQ(Status(), "Nacteni ok 3");
}

TEST_F(ListFiles, LineBreaksInsideEveryFieldSurviveASaveAndALoad) {
    const Texts fields{"two\nlines", "0001\n", "\r4", "2\r", "\n", "a\rb\nc\r", "last\r"};
    testing_support::AddRow(list, fields, true);
    testing_support::AddRow(list, {"Kolo", "0002", "1", "", "", "", ""});
    chosen_file = kChosen;
    form.Command17.Click();
    list.Clear();
    form.Command27.Click();
    EXPECT_EQ(Status(), "Nacteni ok 2");
    ASSERT_EQ(list.Count(), 2U);
    EXPECT_EQ(testing_support::RowTexts(list, 1), fields);
    EXPECT_TRUE(list.Row(1).checked);
    EXPECT_EQ(list.Row(2).text, "Kolo");
}

TEST_F(ListFiles, ANulByteALoneCrAndALongLineDoNoHarm) {
    const std::string longest(2'000'000, 'x');
    LoadText(std::string("a\0b@@True\r\n", 11) + "c\rd@@True\r\n" + longest + "@@False\r\n");
    ASSERT_EQ(list.Count(), 3U);
    EXPECT_EQ(list.Row(1).text, std::string("a\0b", 3));
    EXPECT_EQ(list.Row(2).text, "c\rd");
    EXPECT_EQ(list.Row(3).text, longest);
}

TEST_F(ListFiles, AMillionLinesAreRead) {
    std::string file;
    for (int i = 0; i < 1'000'000; ++i) {
        file += "a@@True@@1\r\n";
    }
    LoadText(file);
    EXPECT_EQ(Status(), "Nacteni ok 1000000");
}

TEST_F(ListFiles, CheckedIsABooleanWordInAnyLetterCaseOrANumber) {
    LoadText("a@@TRUE\r\nb@@false\r\nc@@0\r\nd@@-1\r\ne@@1\r\nf@@0.0\r\n");
    ASSERT_EQ(list.Count(), 6U);
    std::vector<bool> checked;
    for (std::size_t row = 1; row <= 6; ++row) {
        checked.push_back(list.Row(row).checked);
    }
    EXPECT_EQ(checked, (std::vector<bool>{true, false, false, true, true, false}));
}

TEST_F(ListFiles, ACheckedFieldThatIsNeitherStopsTheLoadWithATypeMismatch) {
    LoadText("a@@True\r\nb@@ano\r\nc@@True\r\n");
    EXPECT_EQ(Status(), "Nacteni Error 13 Type mismatch");
    EXPECT_EQ(Column(list, 0), (Texts{"a", "b"}));
    LoadText("a@@\r\n");
    EXPECT_EQ(Status(), "Nacteni Error 13 Type mismatch");
}

TEST_F(ListFiles, ABlankLineStopsTheLoadWithASubscriptOutOfRange) {
    LoadText("a@@True\r\n\r\nb@@True\r\n");
    EXPECT_EQ(Status(), "Nacteni Error 9 Subscript out of range");
    EXPECT_EQ(Column(list, 0), Texts{"a"});
}

TEST_F(ListFiles, AnEmptyLineAfterTheLastRowLoadsAllRowsAndReportsAnError) {
    LoadText("a@@True\r\nb@@True\r\n\r\n");
    EXPECT_EQ(Column(list, 0), (Texts{"a", "b"}));
    EXPECT_EQ(Status(), "Nacteni Error 9 Subscript out of range");
    EXPECT_EQ(RowCount(), "Pozic: 2");
}

TEST_F(ListFiles, ALineWithoutASeparatorAddsItsNameAndStopsTheLoad) {
    LoadText("just a name\r\nb@@True\r\n");
    EXPECT_EQ(Status(), "Nacteni Error 9 Subscript out of range");
    EXPECT_EQ(Column(list, 0), Texts{"just a name"});
}

TEST_F(ListFiles, ANinthFieldStopsTheLoadWithAnInvalidPropertyValue) {
    LoadText("a@@True@@1@@2@@3@@4@@5@@6@@7\r\nb@@True\r\n");
    EXPECT_EQ(Status(), "Nacteni Error 380 Invalid property value");
    EXPECT_EQ(RowTexts(list, 1), (Texts{"a", "1", "2", "3", "4", "5", "6"}));
    EXPECT_EQ(list.Count(), 1U);
}

TEST_F(ListFiles, TheRowCountIsRightAfterEveryFailingLoad) {
    struct Case {
        const char* file;
        std::size_t rows;
    };
    const std::vector<Case> cases{
        {"", 0},
        {"\r\n", 0},
        {"a@@True\r\n\r\nb@@True\r\n", 1},
        {"a@@True\r\nno separator\r\n", 2},
        {"a@@True\r\nb@@maybe\r\nc@@True\r\n", 2},
        {"a@@True\r\nb@@1@@2@@3@@4@@5@@6@@7@@8@@9\r\n", 2},
    };
    for (const auto& [file, rows] : cases) {
        form.m_Pridat.Click();
        LoadText(file);
        EXPECT_EQ(list.Count(), rows) << file;
        EXPECT_EQ(RowCount(), "Pozic: " + std::to_string(rows)) << file;
        form.m_Pridat.Click();
        files.stored[kWorkingFile] = file;
        PressRight(form.Command27);
        EXPECT_EQ(list.Count(), rows) << file;
        EXPECT_EQ(RowCount(), "Pozic: " + std::to_string(rows)) << file;
    }
}

TEST_F(ListFiles, TheRowCountIsRightWhereAFileCannotBeReadOrNoneIsChosen) {
    form.m_Pridat.Click();
    chosen_file = "";
    form.Command27.Click();
    EXPECT_EQ(RowCount(), "Pozic: 1");
    chosen_file.reset();
    form.Command17.Click();
    form.Command27.Click();
    EXPECT_EQ(Status(), "Nacteni Error 32755 Cancel was selected.");
    EXPECT_EQ(RowCount(), "Pozic: 1");
    EXPECT_EQ(list.Count(), 1U);
    files.stored[kChosen] = "a@@True\r\n";
    files.failing.emplace(kChosen, automation::RunTimeError(70, "Permission denied"));
    chosen_file = kChosen;
    form.Command27.Click();
    EXPECT_EQ(Status(), "Nacteni Error 70 Permission denied");
    EXPECT_EQ(list.Count(), 0U) << "it was emptied before the reading";
    EXPECT_EQ(RowCount(), "Pozic: 0");
    form.m_Pridat.Click();
    PressRight(form.Command27);
    EXPECT_EQ(Status(), "Nacteni Error 53 File not found");
    EXPECT_EQ(RowCount(), "Pozic: 0");
}

TEST_F(ListFiles, AValueWithTheSeparatorDoesNotSurvive) {
    AddRow(list, {"a@@b", "0001"}, true);
    Save();
    form.Command27.Click();
    EXPECT_EQ(Status(), "Nacteni Error 13 Type mismatch");
    EXPECT_EQ(list.Row(1).text, "a");
}

TEST_F(ListFiles, FieldsMissingAtTheEndStayEmpty) {
    LoadText("a@@True@@0001\r\n");
    EXPECT_EQ(RowTexts(list, 1), (Texts{"a", "0001", "", "", "", "", ""}));
}

TEST_F(ListFiles, SavingAnEmptyListDoesNothing) {
    files.stored[kWorkingFile] = "old";
    form.Command17.Click();
    PressRight(form.Command17);
    EXPECT_TRUE(dialogs.empty());
    EXPECT_EQ(files.stored[kWorkingFile], "old");
    EXPECT_EQ(Status(), "");
}

TEST_F(ListFiles, TheSaveDialogIsSetUpAsItShouldBe) {
    AddTwoRows();
    form.TreeView1.AddRoot("t", "Převodovka", 1);
    Save();
    ASSERT_EQ(dialogs.size(), 1U);
    EXPECT_EQ(dialogs[0].file_name, "Převodovka.tab");
    EXPECT_EQ(dialogs[0].initial_folder, "C:\\Dorvak\\Tabulky");
    EXPECT_EQ(dialogs[0].filter, "tab (*.tab)|*.tab");
    EXPECT_EQ(dialogs[0].title, "Uložení tabulky");
    EXPECT_TRUE(dialogs[0].path_must_exist);
    EXPECT_FALSE(dialogs[0].file_must_exist);
    EXPECT_TRUE(dialogs[0].cancel_is_error);
    EXPECT_EQ(files.folders, Texts{"C:\\Dorvak\\Tabulky"});
}

TEST_F(ListFiles, WithoutATreeNoNameIsProposedAndLaterTheLastFileIs) {
    AddTwoRows();
    Save();
    EXPECT_EQ(dialogs[0].file_name, "");
    form.TreeView1.AddRoot("t", "Top", 1);
    form.Command17.Click();
    EXPECT_EQ(dialogs[1].file_name, kChosen);
}

TEST_F(ListFiles, APartNumberThatIsNoFileNameIsProposedWithoutWhatWindowsRefuses) {
    AddTwoRows();
    form.TreeView1.AddRoot("t", "A/B:C*?", 1);
    Save();
    EXPECT_EQ(dialogs[0].file_name, "A_B_C__.tab");
}

TEST_F(ListFiles, AnExistingFileIsOverwrittenOnYesOnly) {
    AddTwoRows();
    files.stored[kChosen] = "old";
    chosen_file = kChosen;
    message_boxes.answer = false;
    form.Command17.Click();
    EXPECT_EQ(message_boxes.questions, Texts{"Přepsat Existujcí Soubor"});
    EXPECT_EQ(Status(), "Ulozeni preruseno");
    EXPECT_EQ(files.stored[kChosen], "old");
    message_boxes.answer = true;
    form.Command17.Click();
    EXPECT_EQ(Status(), std::string("Ulozeni ok ") + kChosen);
    EXPECT_NE(files.stored[kChosen], "old");
}

TEST_F(ListFiles, ANewFileIsWrittenWithoutAQuestion) {
    AddTwoRows();
    Save();
    EXPECT_TRUE(message_boxes.questions.empty());
    EXPECT_TRUE(files.stored.contains(kChosen));
}

TEST_F(ListFiles, AnEmptyChosenNameStopsWithoutAMessage) {
    AddTwoRows();
    chosen_file = "";
    form.Command17.Click();
    EXPECT_EQ(Status(), "");
    EXPECT_TRUE(files.stored.empty());
}

TEST_F(ListFiles, CancellingTheSaveDialogIsReported) {
    AddTwoRows();
    form.Command17.Click();
    EXPECT_EQ(Status(), "Ulozeni Error 32755 Cancel was selected.");
    EXPECT_EQ(list.Count(), 2U);
}

TEST_F(ListFiles, CancellingTheOpenDialogIsSilentUntilASaveDialogWasShown) {
    AddTwoRows();
    form.Command27.Click();
    EXPECT_EQ(Status(), "");
    EXPECT_EQ(list.Count(), 2U);
    form.Command17.Click();
    form.Command27.Click();
    EXPECT_EQ(Status(), "Nacteni Error 32755 Cancel was selected.");
    EXPECT_EQ(list.Count(), 2U);
}

TEST_F(ListFiles, TheOpenDialogIsSetUpAsItShouldBe) {
    AddTwoRows();
    Save();
    form.Command27.Click();
    ASSERT_EQ(dialogs.size(), 2U);
    EXPECT_EQ(dialogs[1].file_name, "");
    EXPECT_EQ(dialogs[1].initial_folder, "C:\\Dorvak\\Tabulky");
    EXPECT_EQ(dialogs[1].filter, "tab (*.tab)|*.tab");
    EXPECT_EQ(dialogs[1].title, "Nacteni tabulky");
    EXPECT_TRUE(dialogs[1].file_must_exist);
    EXPECT_FALSE(dialogs[1].path_must_exist);
}

TEST_F(ListFiles, AFileThatCannotBeWrittenIsReportedAndTheOldOneStays) {
    AddTwoRows();
    files.stored[kChosen] = "old";
    files.failing.emplace(kChosen, automation::RunTimeError(70, "Permission denied"));
    Save();
    EXPECT_EQ(Status(), "Ulozeni Error 70 Permission denied");
    EXPECT_EQ(files.stored[kChosen], "old");
    EXPECT_EQ(list.Count(), 2U);
}

TEST_F(ListFiles, AChosenFileThatIsNotThereIsReported) {
    chosen_file = "C:\\nowhere.tab";
    form.Command27.Click();
    EXPECT_EQ(Status(), "Nacteni Error 53 File not found");
}

TEST_F(ListFiles, TheRightButtonSavesToAndLoadsFromTheWorkingFileWithoutAQuestion) {
    AddTwoRows();
    files.stored[kWorkingFile] = "old";
    PressRight(form.Command17);
    EXPECT_EQ(Status(), std::string("Ulozeni listu ok ") + kWorkingFile);
    list.Clear();
    PressRight(form.Command27);
    EXPECT_EQ(Status(), "Nacteni listu ok 2");
    EXPECT_TRUE(dialogs.empty());
    EXPECT_TRUE(message_boxes.questions.empty());
}

TEST_F(ListFiles, OtherButtonsDoNotTouchTheWorkingFile) {
    AddTwoRows();
    form.Command17.MouseDown(1, 0, 5, 5);
    form.Command27.MouseDown(1, 0, 5, 5);
    EXPECT_TRUE(files.stored.empty());
    EXPECT_EQ(list.Count(), 2U);
}

TEST_F(ListFiles, TheFirstStartWithoutAWorkingFileShowsAnErrorAndAnEmptyList) {
    app::Form_Load(form);
    EXPECT_EQ(Status(), "Nacteni Error 53 File not found");
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_EQ(form.Check2.Value(), 1);
}

TEST_F(ListFiles, TheListIsThereAgainAfterClosingAndStarting) {
    app::Form_Load(form);
    AddTwoRows();
    app::RequestClose(form);
    HeadlessForm next;
    next.files.stored = files.stored;
    app::Form_Load(next.form);
    EXPECT_EQ(next.Status(), "Nacteni listu ok 2");
    EXPECT_EQ(RowTexts(next.form.ListView1, 2), RowTexts(list, 2));
    EXPECT_TRUE(next.form.ListView1.Row(1).checked);
}

TEST_F(ListFiles, ClosingWithAnEmptyListKeepsTheOldWorkingFile) {
    files.stored[kWorkingFile] = "a@@True\r\n";
    app::Form_Load(form);
    list.Clear();
    app::RequestClose(form);
    EXPECT_EQ(files.stored[kWorkingFile], "a@@True\r\n");
}

TEST_F(ListFiles, AWorkingFileThatCannotBeWrittenDoesNotKeepTheWindowOpen) {
    app::Form_Load(form);
    AddTwoRows();
    files.failing.emplace(kWorkingFile, automation::RunTimeError(61, "Disk full"));
    app::RequestClose(form);
    EXPECT_EQ(Status(), "Ulozeni Error 61 Disk full");
    EXPECT_TRUE(form.unloaded);
    EXPECT_TRUE(settings.stored.contains("Lumsek\\Pantrel\\export"));
}

// Files that others made. Their bytes are code page 1250, which the bytes below spell out; decoding
// is the port's.
struct SampleLists : ListFiles {
    static std::string Bytes(const std::string& name) {
        std::ifstream file(std::string(SAMPLES_FOLDER) + "/lists/" + name, std::ios::binary);
        EXPECT_TRUE(file.is_open()) << name;
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

TEST_F(SampleLists, ACompleteListIsRead) {
    LoadText(Bytes("prevodovka.tab"));
    EXPECT_EQ(Status(), "Nacteni ok 4");
    EXPECT_EQ(RowTexts(list, 1), (Texts{std::string("H\xF8\xED") + "del", "0001", "1", "2",
                                        "11 600", "D25x120", "kalit a brousit"}));
    EXPECT_EQ(list.Row(3).text, "\x8Aroub M8x25");
    EXPECT_TRUE(list.Row(2).checked);
    EXPECT_FALSE(list.Row(4).checked);
}

TEST_F(SampleLists, AFieldWithTheSeparatorShiftsTheOthersOutOfTheirPlaces) {
    LoadText(Bytes("field-with-separator.tab"));
    EXPECT_EQ(Status(), "Nacteni Error 13 Type mismatch");
    EXPECT_EQ(Column(list, 0), Texts{"V\xEDko"});
}

TEST_F(SampleLists, MissingTrailingFieldsStayEmpty) {
    LoadText(Bytes("missing-fields.tab"));
    EXPECT_EQ(Status(), "Nacteni ok 3");
    EXPECT_EQ(RowTexts(list, 2), (Texts{std::string("\x8E") + "ebro", "", "", "", "", "", ""}));
    EXPECT_EQ(RowTexts(list, 3), (Texts{"P\xF8\xEDruba", "0003", "2", "", "", "", ""}));
    EXPECT_TRUE(list.Row(3).checked);
}

TEST_F(SampleLists, ABlankLineStopsTheReadingThere) {
    LoadText(Bytes("blank-line.tab"));
    EXPECT_EQ(Status(), "Nacteni Error 9 Subscript out of range");
    EXPECT_EQ(Column(list, 0), Texts{"\xC8"
                                     "ep"});
}

TEST_F(SampleLists, AValueFileIsReadWithoutItsBlankLines) {
    files.stored["C:\\Dorvak\\Material.txt"] = Bytes("Material.txt");
    partslist::Nacist_List(form, form.Combo1);
    EXPECT_EQ(form.Combo1.Items(), (Texts{"ocel t\xF8. 11", "  dub  ",
                                          "litina \x9A"
                                          "ed\xE1",
                                          "S235"}));
}

} // namespace
