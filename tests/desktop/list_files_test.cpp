// What the parts list and the pickers keep: the real file dialogs, the files beside the program,
// and that nothing of them is lost.
#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>

#include "com/utf.hpp"
#include "fixture.hpp"
#include "save_loop.hpp"
#include "tests/support/error_of.hpp"
#include "text/text.hpp"
#include "win32/files.hpp"

using namespace driver;
using testing_support::ErrorOf;

namespace {

using Texts = std::vector<std::string>;

const std::string kTwoRows = "Part 12@@True@@0001@@4@@2@@S235@@20x40@@\r\n"
                             "Part 13@@False@@0002@@1@@@@@@@@kalit\r\n";
const std::string kOneRow = "Kostka@@False@@0001@@1@@@@@@@@\r\n";
const std::string kSaveTitle = "Uložení tabulky";
const std::string kOpenTitle = "Nacteni tabulky";
const std::string kQuestion = "Přepsat Existujcí Soubor";
constexpr int kFields = 7; // of a row, its name included

void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(std::filesystem::path(com::Widen(path)), std::ios::binary) << bytes;
}

bool Exists(const std::string& path) {
    return std::filesystem::exists(std::filesystem::path(com::Widen(path)));
}

HWND Focus(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info.hwndFocus;
}

void WaitForNameField(HWND dialog) {
    BringToFront(dialog);
    WaitUntil("the field for the file name", [&] {
        const HWND focus = Focus(dialog);
        return ClassName(focus) == "Edit" && GetAncestor(focus, GA_ROOT) == dialog;
    });
}

void WaitForItsEnd(HWND dialog) {
    WaitUntil("the dialog's end",
              [&] { return IsWindow(dialog) == FALSE || IsWindowVisible(dialog) == FALSE; });
}

// Types a file name into a file dialog, in the place of the proposed one, and confirms.
void ChooseFile(HWND dialog, const std::string& name) {
    WaitForNameField(dialog);
    PressKey(VK_HOME);
    PressKey(VK_END, {VK_SHIFT});
    TypeText(name);
    WaitForText("the typed name", name, [&] { return Text(Focus(dialog)); });
    PressKey(VK_RETURN);
    WaitForItsEnd(dialog);
}

void Cancel(HWND dialog) {
    WaitForNameField(dialog);
    PressKey(VK_ESCAPE);
    WaitForItsEnd(dialog);
}

void SaveAs(const DorvakWindow& dorvak, const std::string& name) {
    dorvak.Press(ID_Command17);
    ChooseFile(WaitForDialog(dorvak, kSaveTitle), name);
}

void PressAndCancel(const DorvakWindow& dorvak, int button, const std::string& title) {
    dorvak.Press(button);
    Cancel(WaitForDialog(dorvak, title));
}

void PressRight(const DorvakWindow& dorvak, int button) {
    Click(dorvak[button], MouseButton::kRight);
}

HWND EditOf(HWND combo_box) {
    return FindWindowExW(combo_box, nullptr, L"Edit", nullptr);
}

// Clicks a row of the parts list, which fills the pickers.
void ClickRow(const DorvakWindow& dorvak, int row) {
    const HWND list = dorvak[ID_ListView1];
    Click(list, RowPoint(list, row));
    WaitUntil("the pickers", [&] {
        return RowSelected(list, row) && IsWindowEnabled(EditOf(dorvak[ID_Combo4])) != FALSE;
    });
}

// Gives a row a value by a picker and Enter.
void Enter(const DorvakWindow& dorvak, int row, int picker, int column, const std::string& value) {
    ClickRow(dorvak, row);
    PasteText(EditOf(dorvak[picker]), value);
    PressKey(VK_RETURN);
    WaitForText("the value", value, [&] { return Cell(dorvak[ID_ListView1], row, column); });
}

// A folder with the program and its files.
class FilesTest : public DesktopTest {
  protected:
    [[nodiscard]] std::string Path(const std::string& file_name) const {
        return folder_->Path(file_name);
    }
    [[nodiscard]] std::string InListFolder(const std::string& file_name) const {
        return folder_->Path("Tabulky\\" + file_name);
    }
    void GiveWorkingFile(const std::string& bytes) const { WriteBytes(Path("list.txt"), bytes); }
    void GiveListFile(const std::string& name, const std::string& bytes) const {
        std::filesystem::create_directories(Path("Tabulky"));
        WriteBytes(InListFolder(name), bytes);
    }
    void GiveSample(const std::string& sample, const std::string& file_name) const {
        WriteBytes(Path(file_name), ReadFile(SamplePath("lists\\" + sample)));
    }
    [[nodiscard]] DorvakWindow Start() const { return DorvakWindow(folder_); }
    [[nodiscard]] DorvakWindow StartOnEditPage() const { return DorvakWindow(folder_, kEditPage); }

    std::shared_ptr<const ProgramFolder> folder_ = std::make_shared<ProgramFolder>();
};

class ListFileDialogs : public FilesTest {};
class WorkingList : public FilesTest {};
class Pickers : public FilesTest {};
class SampleLists : public FilesTest {};
class FileErrors : public FilesTest {};
class KilledWhileSaving : public FilesTest {};

} // namespace

// Chosen files
// -------------------------------------------------------------------------------------

TEST_F(ListFileDialogs, SavesToANewFileInTheListFolder) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    SaveAs(dorvak, "skříň");
    dorvak.WaitForStatus("Ulozeni ok " + InListFolder("skříň.tab"));
    EXPECT_EQ(ReadFile(InListFolder("skříň.tab")), kTwoRows);
}

TEST_F(ListFileDialogs, ProposesTheTreesFirstNodeAndLaterTheLastFile) {
    const DorvakWindow dorvak = Start();
    dorvak.OpenPage(kStructurePage);
    dorvak.Press(ID_Command5);
    dorvak.Press(ID_Command4);
    WaitUntil("the parts list", [&] { return RowCount(dorvak[ID_ListView1]) > 0; });
    const std::string root = TreeItems(dorvak[ID_TreeView1]).at(0).text;
    dorvak.OpenPage(kEditPage);
    dorvak.Press(ID_Command17);
    HWND dialog = WaitForDialog(dorvak, kSaveTitle);
    WaitForNameField(dialog);
    EXPECT_EQ(Text(Focus(dialog)), root + ".tab");
    ChooseFile(dialog, "druhy");
    dorvak.WaitForStatus("Ulozeni ok " + InListFolder("druhy.tab"));

    dorvak.Press(ID_Command17);
    dialog = WaitForDialog(dorvak, kSaveTitle);
    WaitForNameField(dialog);
    EXPECT_EQ(Text(Focus(dialog)), "druhy.tab");
    Cancel(dialog);
}

TEST_F(ListFileDialogs, OverwritesAfterYes) {
    GiveWorkingFile(kTwoRows);
    GiveListFile("stary.tab", kOneRow);
    const DorvakWindow dorvak = StartOnEditPage();
    SaveAs(dorvak, "stary.tab");
    const HWND question = WaitForDialog(dorvak, "Dorvak");
    EXPECT_EQ(Text(Control(question, 0xFFFF)), kQuestion);
    Click(Control(question, IDYES));
    dorvak.WaitForStatus("Ulozeni ok " + InListFolder("stary.tab"));
    EXPECT_EQ(ReadFile(InListFolder("stary.tab")), kTwoRows);
}

TEST_F(ListFileDialogs, LeavesTheFileAfterNo) {
    GiveWorkingFile(kTwoRows);
    GiveListFile("stary.tab", kOneRow);
    const DorvakWindow dorvak = StartOnEditPage();
    SaveAs(dorvak, "stary.tab");
    Click(Control(WaitForDialog(dorvak, "Dorvak"), IDNO));
    dorvak.WaitForStatus("Ulozeni preruseno");
    EXPECT_EQ(ReadFile(InListFolder("stary.tab")), kOneRow);
}

TEST_F(ListFileDialogs, ACancelledSaveIsAnError) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    PressAndCancel(dorvak, ID_Command17, kSaveTitle);
    dorvak.WaitForStatus("Ulozeni Error 32755 Cancel was selected.");
    EXPECT_TRUE(std::filesystem::is_empty(Path("Tabulky")));
}

TEST_F(ListFileDialogs, OpensAChosenFile) {
    GiveListFile("dva.tab", kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    dorvak.Press(ID_Command27);
    ChooseFile(WaitForDialog(dorvak, kOpenTitle), "dva.tab");
    dorvak.WaitForStatus("Nacteni ok 2");
    const HWND list = dorvak[ID_ListView1];
    EXPECT_EQ(Row(list, 0, kFields), (Texts{"Part 12", "0001", "4", "2", "S235", "20x40", ""}));
    EXPECT_EQ(Row(list, 1, kFields), (Texts{"Part 13", "0002", "1", "", "", "", "kalit"}));
    EXPECT_TRUE(RowChecked(list, 0));
    EXPECT_FALSE(RowChecked(list, 1));
    EXPECT_EQ(dorvak.Positions(), "Pozic: 2");
}

TEST_F(ListFileDialogs, ACancelledOpenIsSilentUntilASaveDialogWasShown) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    PressAndCancel(dorvak, ID_Command27, kOpenTitle);
    WaitUntil("the window again", [&] { return IsWindowEnabled(dorvak.Window()) != FALSE; });
    Send(dorvak.Window(), WM_NULL);
    EXPECT_EQ(dorvak.Status(), "Nacteni listu ok 2");
    EXPECT_EQ(RowCount(dorvak[ID_ListView1]), 2);

    PressAndCancel(dorvak, ID_Command17, kSaveTitle);
    dorvak.WaitForStatus("Ulozeni Error 32755 Cancel was selected.");
    PressAndCancel(dorvak, ID_Command27, kOpenTitle);
    dorvak.WaitForStatus("Nacteni Error 32755 Cancel was selected.");
    EXPECT_EQ(RowCount(dorvak[ID_ListView1]), 2);
}

TEST_F(ListFileDialogs, AnEmptyListShowsNoSaveDialog) {
    const DorvakWindow dorvak = StartOnEditPage();
    dorvak.Press(ID_Command17);
    PressRight(dorvak, ID_Command17);
    Send(dorvak.Window(), WM_NULL);
    EXPECT_EQ(dorvak.Process().FindVisible("#32770"), nullptr);
    EXPECT_FALSE(Exists(Path("list.txt")));
}

// The working file
// ---------------------------------------------------------------------------------

TEST_F(WorkingList, TheFirstStartFindsNoFiles) {
    const DorvakWindow dorvak = Start();
    EXPECT_EQ(dorvak.Status(), "Nacteni Error 53 File not found");
    EXPECT_EQ(dorvak.Positions(), "Pozic: 0");
    EXPECT_EQ(RowCount(dorvak[ID_ListView1]), 0);
    EXPECT_FALSE(IsWindowEnabled(dorvak[ID_Combo1]));
    EXPECT_FALSE(IsWindowEnabled(dorvak[ID_Command12]));
}

TEST_F(WorkingList, RightButtonsSaveAndLoadWithoutADialog) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    std::filesystem::remove(Path("list.txt"));
    PressRight(dorvak, ID_Command17);
    dorvak.WaitForStatus("Ulozeni listu ok " + Path("list.txt"));
    EXPECT_EQ(ReadFile(Path("list.txt")), kTwoRows);

    GiveWorkingFile(kOneRow);
    PressRight(dorvak, ID_Command27);
    dorvak.WaitForStatus("Nacteni listu ok 1");
    EXPECT_EQ(Cell(dorvak[ID_ListView1], 0, 0), "Kostka");
    EXPECT_EQ(dorvak.Process().FindVisible("#32770"), nullptr);
}

TEST_F(WorkingList, ARestartFindsListAndPickersAsTheyWere) {
    GiveWorkingFile(kTwoRows);
    {
        const DorvakWindow dorvak = StartOnEditPage();
        const HWND list = dorvak[ID_ListView1];
        ClickRow(dorvak, 1);
        PasteText(EditOf(dorvak[ID_Combo1]), "ocel");
        PressKey(VK_RETURN);
        PasteText(EditOf(dorvak[ID_Combo4]), "12");
        dorvak.Press(ID_Command15);
        Click(list, RowCheckPoint(list, 1));
        WaitUntil("the check mark", [&] { return RowChecked(list, 1); });
        dorvak.Close();
    }
    const DorvakWindow dorvak = Start();
    EXPECT_EQ(dorvak.Status(), "Nacteni listu ok 2");
    EXPECT_EQ(dorvak.Positions(), "Pozic: 2");
    const HWND list = dorvak[ID_ListView1];
    EXPECT_EQ(Row(list, 0, kFields), (Texts{"Part 12", "0001", "4", "2", "S235", "20x40", ""}));
    EXPECT_EQ(Row(list, 1, kFields), (Texts{"Part 13", "0002", "12", "3", "ocel", "", "kalit"}));
    EXPECT_TRUE(RowChecked(list, 1));
    EXPECT_EQ(ComboBoxItems(dorvak[ID_Combo1]), (Texts{"ocel"}));
    EXPECT_EQ(ComboBoxItems(dorvak[ID_Combo2]), Texts{});
    EXPECT_EQ(ComboBoxItems(dorvak[ID_Combo4]), (Texts{"12"}));
}

TEST_F(WorkingList, TheEndOfTheWindowsSessionKeepsEverything) {
    GiveWorkingFile(kOneRow);
    const DorvakWindow dorvak = StartOnEditPage();
    Enter(dorvak, 0, ID_Combo1, kMaterial, "mosaz");
    EXPECT_EQ(Send(dorvak.Window(), WM_QUERYENDSESSION), TRUE);
    Send(dorvak.Window(), WM_ENDSESSION, TRUE);
    EXPECT_EQ(ReadFile(Path("list.txt")), "Kostka@@False@@0001@@1@@@@mosaz@@@@\r\n");
    EXPECT_EQ(ReadFile(Path("Material.txt")), "mosaz\r\n");
    EXPECT_TRUE(SettingKeeper::Read());
    EXPECT_EQ(dorvak.Process().WaitForEnd(), 0U);
}

TEST_F(WorkingList, ASessionThatDoesNotEndAfterAllChangesNothing) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = Start();
    std::filesystem::remove(Path("list.txt"));
    EXPECT_EQ(Send(dorvak.Window(), WM_QUERYENDSESSION), TRUE);
    Send(dorvak.Window(), WM_ENDSESSION, FALSE);
    EXPECT_FALSE(Exists(Path("list.txt")));
    EXPECT_TRUE(dorvak.Process().Running());
}

// While a file dialog is open, the action that shows it still runs.
TEST_F(WorkingList, TheEndOfTheWindowsSessionDuringADialogKeepsTheList) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    dorvak.Press(ID_Command17);
    WaitForNameField(WaitForDialog(dorvak, kSaveTitle));
    std::filesystem::remove(Path("list.txt"));
    EXPECT_EQ(Send(dorvak.Window(), WM_QUERYENDSESSION), TRUE);
    Send(dorvak.Window(), WM_ENDSESSION, TRUE);
    EXPECT_EQ(ReadFile(Path("list.txt")), kTwoRows);
}

TEST_F(WorkingList, AReadOnlyFileStaysWhole) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    GiveWorkingFile(kOneRow);
    const std::wstring path = com::Widen(Path("list.txt"));
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
    PressRight(dorvak, ID_Command17);
    dorvak.WaitForStatus("Ulozeni Error 70 Permission denied");
    EXPECT_EQ(ReadFile(Path("list.txt")), kOneRow);
    EXPECT_FALSE(Exists(Path("list.txt.new")));
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(WorkingList, AFileLockedByAnotherProgramStaysWhole) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    GiveWorkingFile(kOneRow);
    const HANDLE lock = CreateFileW(com::Widen(Path("list.txt")).c_str(), GENERIC_READ, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    PressRight(dorvak, ID_Command17);
    dorvak.WaitForStatus("Ulozeni Error 70 Permission denied");
    PressRight(dorvak, ID_Command27);
    dorvak.WaitForStatus("Nacteni Error 70 Permission denied");
    CloseHandle(lock);
    EXPECT_EQ(ReadFile(Path("list.txt")), kOneRow);
}

// As in a folder where nothing can be made: what stands in the way is a folder of the new file's
// name.
TEST_F(WorkingList, WhereNoFileCanBeWrittenBesideTheOldOneStaysWhole) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    GiveWorkingFile(kOneRow);
    std::filesystem::create_directory(Path("list.txt.new"));
    PressRight(dorvak, ID_Command17);
    dorvak.WaitForStatus("Ulozeni Error 75 Path/File access error");
    EXPECT_EQ(ReadFile(Path("list.txt")), kOneRow);
}

TEST_F(WorkingList, FilesHoldTheBytesOfTheCodePageOrUtf8WhereItLacksACharacter) {
    std::string signature;
    std::string bytes;
    if (GetACP() == 1250) {
        bytes = "H\xF8\xED"
                "del";
    } else if (GetACP() == 1252) {
        signature = "\xEF\xBB\xBF";
        bytes = "Hřídel";
    } else {
        GTEST_SKIP() << "code page " << GetACP();
    }
    GiveWorkingFile(kOneRow);
    {
        const DorvakWindow dorvak = StartOnEditPage();
        Enter(dorvak, 0, ID_Combo1, kMaterial, "Hřídel");
        dorvak.Close();
    }
    EXPECT_EQ(ReadFile(Path("list.txt")),
              signature + "Kostka@@False@@0001@@1@@@@" + bytes + "@@@@\r\n");
    EXPECT_EQ(ReadFile(Path("Material.txt")), signature + bytes + "\r\n");
    const DorvakWindow dorvak = Start();
    EXPECT_EQ(Cell(dorvak[ID_ListView1], 0, kMaterial), "Hřídel");
    EXPECT_EQ(ComboBoxItems(dorvak[ID_Combo1]), Texts{"Hřídel"});
}

// Pickers
// ------------------------------------------------------------------------------------------

TEST_F(Pickers, AreEnabledByTheFirstClickOnARow) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    for (const int id : {ID_Combo1, ID_Combo2, ID_Combo3, ID_Combo4, ID_Command12, ID_Command13,
                         ID_Command14, ID_Command15}) {
        EXPECT_FALSE(IsWindowEnabled(dorvak[id])) << id;
    }
    ClickRow(dorvak, 0);
    WaitForText("the size", "20x40", [&] { return Text(dorvak[ID_Combo2]); });
    EXPECT_EQ(Text(dorvak[ID_Combo1]), "S235");
    EXPECT_EQ(Text(dorvak[ID_Combo3]), "");
    EXPECT_EQ(Text(dorvak[ID_Combo4]), "4");
    for (const int id : {ID_Combo1, ID_Combo2, ID_Combo3, ID_Combo4, ID_Command12, ID_Command13,
                         ID_Command14, ID_Command15}) {
        EXPECT_TRUE(IsWindowEnabled(dorvak[id])) << id;
    }
}

TEST_F(Pickers, EnterGivesTheTextToEverySelectedRowAndRemembersItOnce) {
    GiveWorkingFile(kTwoRows + kOneRow);
    const DorvakWindow dorvak = StartOnEditPage();
    const HWND list = dorvak[ID_ListView1];
    ClickRow(dorvak, 1);
    PressKey(VK_DOWN, {VK_SHIFT});
    WaitUntil("two selected rows", [&] { return RowSelected(list, 1) && RowSelected(list, 2); });
    PasteText(EditOf(dorvak[ID_Combo1]), "11 600");
    PressKey(VK_RETURN);
    WaitForText("the material", "11 600", [&] { return Cell(list, 2, kMaterial); });
    PressKey(VK_RETURN);
    Send(dorvak.Window(), WM_NULL);
    EXPECT_EQ(Column(list, kMaterial), (Texts{"S235", "11 600", "11 600"}));
    EXPECT_EQ(ComboBoxItems(dorvak[ID_Combo1]), (Texts{"11 600"}));
}

TEST_F(Pickers, TheButtonBehavesAsEnter) {
    GiveWorkingFile(kTwoRows);
    const DorvakWindow dorvak = StartOnEditPage();
    const HWND list = dorvak[ID_ListView1];
    ClickRow(dorvak, 0);
    PasteText(EditOf(dorvak[ID_Combo4]), "40");
    dorvak.Press(ID_Command15);
    WaitForText("the quantity", "40", [&] { return Cell(list, 0, kQuantity); });
    EXPECT_EQ(ComboBoxItems(dorvak[ID_Combo4]), (Texts{"40"}));
}

TEST_F(Pickers, AValueChosenInTheDropDownIsAppliedByEnter) {
    GiveWorkingFile(kOneRow);
    WriteBytes(Path("Material.txt"), "dub\r\nocel\r\n");
    const DorvakWindow dorvak = StartOnEditPage();
    const HWND list = dorvak[ID_ListView1];
    const HWND combo = dorvak[ID_Combo1];
    ClickRow(dorvak, 0);
    Click(EditOf(combo));
    PressKey(VK_F4);
    WaitUntil("the drop-down", [&] { return Send(combo, CB_GETDROPPEDSTATE) != 0; });
    PressKey(VK_DOWN);
    PressKey(VK_DOWN);
    WaitForText("the chosen value", "ocel", [&] { return Text(combo); });
    PressKey(VK_RETURN);
    WaitForText("the material", "ocel", [&] { return Cell(list, 0, kMaterial); });
    EXPECT_EQ(Send(combo, CB_GETDROPPEDSTATE), 0);
    EXPECT_EQ(ComboBoxItems(combo), (Texts{"dub", "ocel"}));
}

// Files made by others
// -----------------------------------------------------------------------------

TEST_F(SampleLists, ACompleteList) {
    GiveSample("prevodovka.tab", "list.txt");
    const DorvakWindow dorvak = Start();
    EXPECT_EQ(dorvak.Status(), "Nacteni listu ok 4");
    const HWND list = dorvak[ID_ListView1];
    const std::string shaft = GetACP() == 1250 ? "Hřídel"
                                               : com::FromSystemCodePage("H\xF8\xED"
                                                                         "del");
    EXPECT_EQ(Row(list, 0, kFields),
              (Texts{shaft, "0001", "1", "2", "11 600", "D25x120", "kalit a brousit"}));
    EXPECT_EQ(Column(list, 2), (Texts{"1", "1", "12", "24"}));
    EXPECT_TRUE(RowChecked(list, 1));
    EXPECT_FALSE(RowChecked(list, 2));
}

TEST_F(SampleLists, ANameWithTheSeparatorShiftsItsFields) {
    GiveSample("field-with-separator.tab", "list.txt");
    const DorvakWindow dorvak = Start();
    EXPECT_EQ(dorvak.Status(), "Nacteni Error 13 Type mismatch");
    EXPECT_EQ(RowCount(dorvak[ID_ListView1]), 1);
}

TEST_F(SampleLists, MissingFieldsStayEmpty) {
    GiveSample("missing-fields.tab", "list.txt");
    const DorvakWindow dorvak = Start();
    EXPECT_EQ(dorvak.Status(), "Nacteni listu ok 3");
    const HWND list = dorvak[ID_ListView1];
    EXPECT_EQ(Column(list, 1), (Texts{"0001", "", "0003"}));
    EXPECT_EQ(Column(list, 2), (Texts{"", "", "2"}));
    EXPECT_TRUE(RowChecked(list, 2)); // from a number
}

TEST_F(SampleLists, ABlankLineStopsTheReading) {
    GiveSample("blank-line.tab", "list.txt");
    const DorvakWindow dorvak = Start();
    EXPECT_EQ(dorvak.Status(), "Nacteni Error 9 Subscript out of range");
    EXPECT_EQ(RowCount(dorvak[ID_ListView1]), 1);
}

TEST_F(SampleLists, PickerValuesKeepTheirBlanks) {
    GiveSample("Material.txt", "Material.txt");
    const DorvakWindow dorvak = Start();
    EXPECT_EQ(ComboBoxItems(dorvak[ID_Combo1]),
              (Texts{com::FromSystemCodePage("ocel t\xF8. 11"), "  dub  ",
                     com::FromSystemCodePage("litina \x9A"
                                             "ed\xE1"),
                     "S235"}));
}

// Errors of the file system
// ------------------------------------------------------------------------

TEST_F(FileErrors, HaveTheirClassicNumbers) {
    win32::CodePageFiles files;
    const auto read = [&](const std::string& path) { return ErrorOf([&] { files.Read(path); }); };
    const auto write = [&](const std::string& path) {
        return ErrorOf([&] { files.Write(path, "text"); });
    };
    EXPECT_EQ(read(Path("missing.tab")), 53);
    EXPECT_EQ(read(Path("missing\\list.tab")), 76);
    EXPECT_EQ(write(Path("missing\\list.tab")), 76);
    EXPECT_EQ(read(Path("what?.tab")), 52);
    EXPECT_EQ(write(Path("what?.tab")), 52);
    std::filesystem::create_directory(Path("folder.tab"));
    EXPECT_EQ(read(Path("folder.tab")), 75);
    EXPECT_EQ(write(Path("folder.tab")), 75);
    EXPECT_EQ(write(Path("new.tab")), 0);
    EXPECT_EQ(read(Path("new.tab")), 0);
}

TEST_F(FileErrors, AFileThatMayOnlyBeReadByOthersCannotBeReplaced) {
    const std::string path = Path("list.tab");
    WriteBytes(path, kOneRow);
    for (const DWORD sharing :
         {0UL, DWORD{FILE_SHARE_READ}, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}}) {
        const HANDLE lock = CreateFileW(com::Widen(path).c_str(), GENERIC_READ, sharing, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(lock, INVALID_HANDLE_VALUE);
        win32::CodePageFiles files;
        EXPECT_EQ(ErrorOf([&] { files.Write(path, kTwoRows); }), 70) << sharing;
        CloseHandle(lock);
        EXPECT_EQ(ReadFile(path), kOneRow);
    }
}

// A killed program
// ---------------------------------------------------------------------------------

// A process saves two big lists in turn and is killed at a random moment, time and again; what it
// leaves is always one of them as a whole, and the next process carries on from it.
TEST_F(KilledWhileSaving, LeavesTheOldOrTheNewFileWhole) {
    const std::string path = Path("list.txt");
    const std::array lists{BigList(false), BigList(true)};
    WriteBytes(path, lists[0]);
    const std::string event_name = "DorvakSaveLoop" + std::to_string(GetCurrentProcessId());
    const HANDLE begun = CreateEventW(nullptr, FALSE, FALSE, com::Widen(event_name).c_str());
    std::wstring own_path(MAX_PATH, L'\0');
    own_path.resize(GetModuleFileNameW(nullptr, own_path.data(), MAX_PATH));
    const std::string save_loop =
        (std::filesystem::path(own_path).parent_path() / "SaveLoop.exe").string();

    const auto seed = std::random_device()();
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> moment(0, 60000); // microseconds
    constexpr int kRounds = 60;
    std::array found{0, 0};
    int killed_while_writing = 0;
    for (int round = 0; round < kRounds; ++round) {
        {
            const Program saving(save_loop, {path, event_name});
            ASSERT_EQ(WaitForSingleObject(begun, 20000), WAIT_OBJECT_0);
            const auto end =
                std::chrono::steady_clock::now() + std::chrono::microseconds(moment(random));
            while (std::chrono::steady_clock::now() < end) {
            }
            ASSERT_TRUE(saving.Running()) << "it ended by itself";
        } // killed here
        const std::string left = ReadFile(path);
        ASSERT_TRUE(left == lists[0] || left == lists[1])
            << left.size() << " bytes, round " << round << ", seed " << seed;
        ++found[left == lists[1] ? 1 : 0];
        killed_while_writing += Exists(path + ".new") ? 1 : 0;
    }
    CloseHandle(begun);
    EXPECT_GT(found[0], 0);
    EXPECT_GT(found[1], 0);
    EXPECT_GT(killed_while_writing, 0) << "the moments were too early or too late";
    std::cout << "found the first list " << found[0] << " times, the second " << found[1]
              << " times; killed while writing " << killed_while_writing << " times\n";

    // What the last one left in the making is in nobody's way.
    win32::CodePageFiles files;
    files.Write(path, kTwoRows);
    EXPECT_EQ(ReadFile(path), kTwoRows);
    EXPECT_FALSE(Exists(path + ".new"));
}

// The same with the program itself, whose list changes from start to start by one quantity.
TEST_F(KilledWhileSaving, TheProgramFindsItsWholeListAgain) {
    const std::string path = Path("list.txt");
    std::string rest;
    constexpr std::size_t kRows = 30000;
    for (std::size_t number = 2; number <= kRows; ++number) {
        rest += "Part " + std::to_string(number) + "@@False@@" + text::FourDigits(number) +
                "@@1@@@@S235@@20x40@@\r\n";
    }
    const auto file_with = [&](const std::string& quantity) {
        return "Kostka@@False@@0001@@" + quantity + "@@@@@@@@\r\n" + rest;
    };
    std::string old_file = file_with("0");
    WriteBytes(path, old_file);

    const auto seed = std::random_device()();
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> moment(0, 30); // milliseconds
    for (int round = 1; round <= 10; ++round) {
        const std::string quantity = std::to_string(round);
        {
            std::filesystem::remove(Path("obnova.txt")); // which would be asked about
            const DorvakWindow dorvak = Start();
            ASSERT_EQ(dorvak.Status(), "Nacteni listu ok " + std::to_string(kRows));
            dorvak.OpenPage(kEditPage);
            Enter(dorvak, 0, ID_Combo4, kQuantity, quantity);
            PostMessageW(dorvak[ID_Command17], WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
            Sleep(static_cast<DWORD>(moment(random)));
        } // killed here
        const std::string left = ReadFile(path);
        ASSERT_TRUE(left == old_file || left == file_with(quantity))
            << left.size() << " bytes, round " << round << ", seed " << seed;
        old_file = left;
    }
}
