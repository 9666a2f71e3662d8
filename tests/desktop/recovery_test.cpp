// What is left when something goes wrong: a killed program, a second start, a folder or a file that
// cannot be written, a code page that lacks a character. And what Ctrl+Z brings back.
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <mutex>
#include <random>
#include <stdexcept>
#include <thread>

#include "com/owned.hpp"
#include "com/utf.hpp"
#include "fixture.hpp"
#include "tests/support/error_of.hpp"
#include "win32/files.hpp"

using namespace driver;

namespace {

using Texts = std::vector<std::string>;

const std::string kPart = "Kostka@@False@@0001@@1@@@@";
const std::string kPartsEnd = "@@@@\r\n";
const std::string kList = kPart + "S235" + kPartsEnd;

std::string BytesOf(const std::string& path) {
    std::ifstream file(std::filesystem::path(com::Widen(path)), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void PutBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(std::filesystem::path(com::Widen(path)), std::ios::binary) << bytes;
}

bool IsThere(const std::string& path) {
    return GetFileAttributesW(com::Widen(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

com::OwnedHandle OpenFile(const std::string& path, DWORD access, DWORD sharing) {
    const HANDLE file =
        CreateFileW(com::Widen(path).c_str(), access, sharing, nullptr, OPEN_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        throw std::runtime_error("cannot open " + path);
    }
    return com::OwnedHandle(file);
}

// Windows 10 can since 2017, and Wine cannot yet.
bool CanTakeNamesFromOpenFiles() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") == nullptr;
}

HWND EditOfPicker(HWND dorvak) {
    return FindWindowExW(Control(dorvak, ID_Combo1), nullptr, L"Edit", nullptr);
}

// Enters a material for the first row without the mouse or the keyboard, which other programs may
// be using at the same time.
void EnterMaterial(HWND dorvak, const std::string& material) {
    Send(EditOfPicker(dorvak), EM_SETSEL, 0, -1);
    Send(EditOfPicker(dorvak), EM_REPLACESEL, FALSE,
         reinterpret_cast<LPARAM>(com::Widen(material).c_str()));
    Send(EditOfPicker(dorvak), WM_CHAR, VK_RETURN, 0);
}

void PressFirstRow(HWND dorvak) {
    const HWND list = Control(dorvak, ID_ListView1);
    const POINT point = RowPoint(list, 0);
    Send(list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
    Send(list, WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y));
}

void PressInBox(HWND box, const std::string& caption) {
    for (HWND button = nullptr;
         (button = FindWindowExW(box, button, L"Button", nullptr)) != nullptr;) {
        if (Text(button) == caption) {
            Click(button);
            return;
        }
    }
    FAIL() << "no button " << caption;
}

class LeftBehind : public DesktopTest {
  protected:
    [[nodiscard]] std::string Path(const std::string& name) const { return folder_->Path(name); }
    [[nodiscard]] DorvakWindow Start(int page = kEditPage, const Texts& arguments = {}) const {
        return DorvakWindow(folder_, page, arguments);
    }

    std::shared_ptr<const ProgramFolder> folder_ = std::make_shared<ProgramFolder>();
};

class Recovery : public LeftBehind {
  protected:
    // A program is killed when it has kept a list of three rows.
    void KillAfterAChange() const {
        const DorvakWindow dorvak(folder_, kStructurePage, {"--recovery-pace", "200"});
        FillList(dorvak, "\r\n0\tTop\r\n1\tA\tTop\r\n1\tB\tTop\r\n1\tHřídel\tTop", 3);
        WaitUntil("the recovery file", [this] { return IsThere(Path("obnova.txt")); });
    }
    static constexpr const char* kQuestion = "Program minule neskončil řádně. Obnovit seznam z ";
};
class DataFolders : public LeftBehind {};
class ClosingBox : public LeftBehind {};
class CodePages : public LeftBehind {};
class HeldFiles : public LeftBehind {};
class UndoKeys : public LeftBehind {};
class FullDisk : public LeftBehind {};

} // namespace

// A killed program --------------------------------------------------------------------------------

TEST_F(Recovery, WhatAKilledProgramHadIsOfferedAndTaken) {
    KillAfterAChange();
    const DorvakWindow dorvak(folder_);
    const HWND box = WaitForDialog(dorvak, "Dorvak");
    const std::string question =
        Text(FindWindowExW(box, nullptr, L"Static", nullptr)) + Text(GetDlgItem(box, 0xFFFF));
    EXPECT_NE(question.find(kQuestion), std::string::npos) << question;
    EXPECT_NE(question.find("(3 řádky)?"), std::string::npos) << question;
    Sleep(300);
    KeepPicture("recovery-question.png");
    Click(Control(box, IDYES));
    dorvak.OpenPage(kEditPage);
    WaitForColumn(dorvak[ID_ListView1], 0, {"A", "B", "Hřídel"});
    EXPECT_EQ(dorvak.Positions(), "Pozic: 3");
    SelectRow(dorvak[ID_ListView1], 0);
    PressKey('Z', {VK_CONTROL});
    WaitForColumn(dorvak[ID_ListView1], 0, {});
    PressKey('Y', {VK_CONTROL});
    WaitForColumn(dorvak[ID_ListView1], 0, {"A", "B", "Hřídel"});
    dorvak.Close();
    EXPECT_FALSE(IsThere(Path("obnova.txt")));
}

TEST_F(Recovery, WhatIsRefusedStaysInAFile) {
    KillAfterAChange();
    const DorvakWindow dorvak(folder_);
    Click(Control(WaitForDialog(dorvak, "Dorvak"), IDNO));
    WaitUntil("the refused file", [this] { return IsThere(Path("obnova-minula.txt")); });
    dorvak.Close();
    EXPECT_NE(BytesOf(Path("obnova-minula.txt")).find("konec"), std::string::npos);
}

// Folders and second starts -----------------------------------------------------------------------

TEST_F(DataFolders, ASecondStartBringsTheFirstForwardAndEnds) {
    const DorvakWindow first = Start();
    ShowWindow(first.Window(), SW_MINIMIZE);
    WaitUntil("the window minimized", [&] { return IsIconic(first.Window()) != FALSE; });
    const Program second(Path("Dorvak.exe"));
    EXPECT_EQ(second.WaitForEnd(), 0U);
    WaitUntil("the window restored", [&] { return IsIconic(first.Window()) == FALSE; });
    EXPECT_TRUE(first.Process().Running());
}

TEST_F(DataFolders, AStartRightAfterTheEndOfAnotherRuns) {
    PutBytes(Path("list.txt"), kList);
    for (int round = 0; round < 5; ++round) {
        const DorvakWindow dorvak = Start(kStructurePage);
        PostMessageW(dorvak.Window(), WM_CLOSE, 0, 0); // and the next one starts meanwhile
    }
    const DorvakWindow dorvak = Start();
    EXPECT_EQ(dorvak.Status(), "Nacteni listu ok 1");
}

TEST_F(DataFolders, WhereAnotherPersonRunsItThereThePersonsOwnFolderServes) {
    const ProgramFolder persons;
    const std::wstring before = _wgetenv(L"APPDATA");
    PutBytes(Path("dorvak.lock"), "ANOTHER\nPERSON\n12");
    const auto lock = OpenFile(Path("dorvak.lock"), GENERIC_WRITE, FILE_SHARE_READ);
    SetEnvironmentVariableW(L"APPDATA", com::Widen(persons.Path()).c_str());
    PutBytes(Path("list.txt"), kList);
    {
        const DorvakWindow dorvak = Start();
        EXPECT_EQ(dorvak.Status(), "Nacteni listu ok 1");
        PressFirstRow(dorvak.Window());
        EnterMaterial(dorvak.Window(), "14 220");
        dorvak.Close();
    }
    SetEnvironmentVariableW(L"APPDATA", before.c_str());
    EXPECT_EQ(BytesOf(Path("list.txt")), kList);
    EXPECT_EQ(BytesOf(persons.Path("Dorvak\\list.txt")), kPart + "14 220" + kPartsEnd);
    EXPECT_EQ(BytesOf(persons.Path("Dorvak\\Material.txt")), "14 220\r\n");
}

TEST_F(DataFolders, WhereItCannotBeWrittenTheNewerListIsLoadedAndSaidSo) {
    const ProgramFolder persons;
    const std::wstring before = _wgetenv(L"APPDATA");
    std::filesystem::create_directory(Path("dorvak.lock")); // no lock can be made in its place
    std::filesystem::create_directory(persons.Path("Dorvak"));
    PutBytes(persons.Path("Dorvak\\list.txt"), kPart + "old" + kPartsEnd);
    Sleep(50);
    PutBytes(Path("list.txt"), kList);
    SetEnvironmentVariableW(L"APPDATA", com::Widen(persons.Path()).c_str());
    const DorvakWindow dorvak = Start(kStructurePage); // a press would end the balloon
    SetEnvironmentVariableW(L"APPDATA", before.c_str());
    EXPECT_EQ(Cell(dorvak[ID_ListView1], 0, kMaterial), "S235");
    const std::string expected = "Seznam je načtený ze souboru " + Path("list.txt") +
                                 ", který je novější než " + persons.Path("Dorvak\\list.txt") + ".";
    WaitForText("the balloon", expected, [&] { return BalloonText(dorvak.Process()); });
    KeepPicture("newer-list.png");
    PostMessageW(dorvak[ID_Command17], WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
    dorvak.WaitForStatus("Ulozeni listu ok " + persons.Path("Dorvak\\list.txt"));
}

// Closing -----------------------------------------------------------------------------------------

TEST_F(ClosingBox, TriesAgainWhenAFailedSaveIsMended) {
    PutBytes(Path("list.txt"), kList);
    const DorvakWindow dorvak = Start();
    PressFirstRow(dorvak.Window());
    EnterMaterial(dorvak.Window(), "14 220");
    auto held = OpenFile(Path("list.txt"), GENERIC_READ, FILE_SHARE_READ);
    PostMessageW(dorvak.Window(), WM_CLOSE, 0, 0);
    const HWND box = WaitForDialog(dorvak, "Dorvak");
    Sleep(300);
    KeepPicture("closing-box.png");
    held.reset();
    PressInBox(box, "Zkusit znovu");
    dorvak.Process().WaitForEnd();
    EXPECT_EQ(BytesOf(Path("list.txt")), kPart + "14 220" + kPartsEnd);
    EXPECT_EQ(BytesOf(Path("list.bak")), kList);
    EXPECT_FALSE(IsThere(Path("obnova.txt")));
}

TEST_F(ClosingBox, ClosesWithoutSavingWhenThePersonWantsIt) {
    PutBytes(Path("list.txt"), kList);
    const DorvakWindow dorvak = Start();
    const auto held = OpenFile(Path("list.txt"), GENERIC_READ, FILE_SHARE_READ);
    PostMessageW(dorvak.Window(), WM_CLOSE, 0, 0);
    PressInBox(WaitForDialog(dorvak, "Dorvak"), "Zavřít bez uložení");
    dorvak.Process().WaitForEnd();
}

TEST_F(ClosingBox, DoesNotOpenWhenWindowsEndsTheSession) {
    PutBytes(Path("list.txt"), kList);
    {
        const DorvakWindow dorvak = Start();
        PressFirstRow(dorvak.Window());
        EnterMaterial(dorvak.Window(), "14 220");
        const auto held = OpenFile(Path("list.txt"), GENERIC_READ, FILE_SHARE_READ);
        Send(dorvak.Window(), WM_QUERYENDSESSION);
        Send(dorvak.Window(), WM_ENDSESSION, TRUE, 0);
        dorvak.Process().WaitForEnd();
    }
    EXPECT_EQ(BytesOf(Path("list.txt")), kList);
    const DorvakWindow next(folder_);
    Click(Control(WaitForDialog(next, "Dorvak"), IDYES));
    WaitForText("the material", "14 220", [&] { return Cell(next[ID_ListView1], 0, kMaterial); });
}

// Files -------------------------------------------------------------------------------------------

TEST_F(CodePages, ATextThatTheCodePageLacksIsKeptInUtf8) {
    struct Case {
        std::string text;
        bool on_1250;
        bool on_1252;
    };
    const std::array<Case, 6> cases{{{"příliš žluťoučký kůň", true, false},
                                     {"Ø20 naïve Ærø", false, true},
                                     {"Ωμέγα", false, false},
                                     {"😀 díl", false, false},
                                     {"plain 20x40", true, true},
                                     {"ï»¿begins like a signature", false, false}}};
    const UINT code_page = GetACP();
    ASSERT_TRUE(code_page == 1250 || code_page == 1252) << code_page;
    win32::CodePageFiles files;
    for (const Case& test : cases) {
        files.Write(Path("text.txt"), test.text);
        const std::string bytes = BytesOf(Path("text.txt"));
        const bool fits = code_page == 1250 ? test.on_1250 : test.on_1252;
        EXPECT_EQ(!bytes.starts_with("\xEF\xBB\xBF"), fits) << test.text;
        EXPECT_EQ(fits ? com::FromSystemCodePage(bytes) : bytes.substr(3), test.text);
        EXPECT_EQ(files.Read(Path("text.txt")), test.text);
    }
}

// Not every system can take the name from an open file: then the old file stays.
TEST_F(HeldFiles, AReaderThatLetsTheFileBeDeletedIsInNobodysWay) {
    PutBytes(Path("list.txt"), "old");
    const auto reader = OpenFile(Path("list.txt"), GENERIC_READ,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    win32::CodePageFiles files;
    const int error = testing_support::ErrorOf(
        [&] { files.Write(Path("list.txt"), "new", {.keep_before_as = Path("list.bak")}); });
    if (!CanTakeNamesFromOpenFiles()) {
        EXPECT_EQ(error, 75);
        EXPECT_EQ(BytesOf(Path("list.txt")), "old");
        GTEST_SKIP() << "this system keeps the names of open files";
    }
    EXPECT_EQ(error, 0);
    EXPECT_EQ(BytesOf(Path("list.txt")), "new");
    EXPECT_EQ(BytesOf(Path("list.bak")), "old");
}

TEST_F(HeldFiles, APatientSaveWaitsForAReaderThatLetsGo) {
    PutBytes(Path("list.txt"), "old");
    auto reader = OpenFile(Path("list.txt"), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    std::thread letting_go([&reader] {
        Sleep(1500);
        reader.reset();
    });
    win32::CodePageFiles files;
    const int error =
        testing_support::ErrorOf([&] { files.Write(Path("list.txt"), "new", {.patient = true}); });
    letting_go.join();
    EXPECT_EQ(error, 0);
    EXPECT_EQ(BytesOf(Path("list.txt")), "new");
}

TEST_F(HeldFiles, ABackupThatCannotBeMadeIsNoReasonNotToSave) {
    PutBytes(Path("list.txt"), "old");
    std::filesystem::create_directory(Path("list.bak"));
    win32::CodePageFiles files;
    files.Write(Path("list.txt"), "new", {.keep_before_as = Path("list.bak")});
    EXPECT_EQ(BytesOf(Path("list.txt")), "new");
}

// Whichever step of a write fails, the file is the old one and nothing is left beside it.
TEST_F(HeldFiles, WhicheverStepOfAWriteFailsTheOldFileStays) {
    const std::string path = Path("list.txt");
    win32::CodePageFiles files;
    const auto write = [&] {
        return testing_support::ErrorOf(
            [&] { files.Write(path, "new", {.keep_before_as = Path("list.bak")}); });
    };
    PutBytes(path, "old");
    {
        SCOPED_TRACE("the file itself may not be written");
        SetFileAttributesW(com::Widen(path).c_str(), FILE_ATTRIBUTE_READONLY);
        EXPECT_EQ(write(), 70);
        SetFileAttributesW(com::Widen(path).c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    {
        SCOPED_TRACE("the new one cannot be made beside it");
        std::filesystem::create_directory(path + ".new");
        EXPECT_EQ(write(), 75);
        std::filesystem::remove(path + ".new");
    }
    {
        SCOPED_TRACE("its making is held by another");
        const auto held = OpenFile(path + ".new", GENERIC_READ, FILE_SHARE_READ);
        EXPECT_EQ(write(), 70);
    }
    std::filesystem::remove(path + ".new");
    {
        SCOPED_TRACE("it cannot take the old one's place");
        const auto held = OpenFile(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
        EXPECT_EQ(write(), 70);
    }
    EXPECT_EQ(BytesOf(path), "old");
    EXPECT_FALSE(IsThere(path + ".new"));
    EXPECT_EQ(write(), 0);
    EXPECT_EQ(BytesOf(path), "new");
    EXPECT_EQ(BytesOf(Path("list.bak")), "old");
    std::filesystem::remove_all(Path("folder"));
    EXPECT_EQ(testing_support::ErrorOf([&] { files.Write(Path("folder\\list.txt"), "new"); }), 76);
}

TEST_F(FullDisk, LeavesTheOldFileAndSaysSo) {
    const char* disk = std::getenv("SMALL_DISK");
    if (disk == nullptr) {
        GTEST_SKIP() << "no small disk could be mounted";
    }
    const std::string path = std::string(disk) + "\\list.txt";
    win32::CodePageFiles files;
    files.Write(path, "old");
    const std::string long_text(150'000, 'x');
    EXPECT_EQ(testing_support::ErrorOf([&] { files.Write(path, long_text + long_text); }), 61);
    EXPECT_EQ(BytesOf(path), "old");
    EXPECT_FALSE(IsThere(path + ".new"));
    // The new file fits, what was before does not any more: the save matters more.
    files.Write(path, long_text);
    files.Write(path, "short", {.keep_before_as = std::string(disk) + "\\list.bak"});
    EXPECT_EQ(BytesOf(path), "short");
}

// Undo --------------------------------------------------------------------------------------------

TEST_F(UndoKeys, TakeBackInTheListAndLeaveFieldsTheirOwn) {
    PutBytes(Path("list.txt"), kList);
    const DorvakWindow dorvak = Start();
    const HWND list = dorvak[ID_ListView1];
    const auto material = [&] { return Cell(list, 0, kMaterial); };
    SelectRow(list, 0);
    PasteText(EditOfPicker(dorvak.Window()), "14 220");
    PressKey(VK_RETURN);
    WaitForText("the material", "14 220", material);
    PressKey('Z', {VK_CONTROL}); // in the picker's field
    Sleep(200);
    EXPECT_EQ(material(), "14 220");
    SelectRow(list, 0);
    PressKey('Z', {VK_CONTROL});
    WaitForText("the material", "S235", material);
    PressKey('Y', {VK_CONTROL});
    WaitForText("the material", "14 220", material);
    Click(list, RowPoint(list, 0), MouseButton::kRight);
    WaitForPopupMenu();
    KeepPicture("undo-menu.png");
    PressKey(VK_ESCAPE);
    WaitUntil("the menu gone", [] { return !PopupMenuOpen(); });
}

TEST_F(UndoKeys, LeaveTheConfigurationThatWasLoaded) {
    const DorvakWindow dorvak = Start(kExportPage);
    const HWND field = dorvak[ID_Text2];
    const std::string loaded = Text(field);
    ASSERT_NE(loaded, "");
    Click(field);
    PressKey('Z', {VK_CONTROL});
    Sleep(200);
    EXPECT_EQ(Text(field), loaded);
}

TEST_F(UndoKeys, TakeBackWhatResetPutIntoTheConfiguration) {
    const DorvakWindow dorvak = Start(kExportPage);
    const HWND field = dorvak[ID_Text2];
    const std::string standard = Text(field);
    PasteText(field, "/vyska1;9");
    WaitForText("the configuration", "/vyska1;9", [&] { return Text(field); });
    dorvak.Press(ID_Command19);
    WaitForText("the configuration", standard, [&] { return Text(field); });
    Click(field);
    PressKey('Z', {VK_CONTROL});
    WaitForText("the configuration", "/vyska1;9", [&] { return Text(field); });
    dorvak.Press(ID_Command18); // any event: the form has it, too
    dorvak.Close();
    EXPECT_EQ(SettingKeeper::Read(), "/vyska1;9");
}

// Kills -------------------------------------------------------------------------------------------

namespace {

// A program that has started and been told Yes where it asks. It is never brought to the front:
// several run at once.
struct Life {
    Life(const std::string& path, int pace)
        : program(path, {"--recovery-pace", std::to_string(pace)}),
          window(program.WaitForWindow("DorvakForm1")) {
        WaitForInputIdle(program.Process(), 20000); // in its own loop or in the box's
        while (const HWND box = program.FindVisible("#32770")) {
            PostMessageW(box, WM_COMMAND, IDYES, 0);
            Sleep(50);
        }
        WaitUntil("the list", [this] { return RowCount(Control(window, ID_ListView1)) == 1; });
    }

    Program program;
    HWND window;
};

// Programs are killed at random moments while materials are entered, the list is saved and the
// window closed. The next start must have every material that is older than `limit`.
class Killer {
  public:
    Killer(unsigned seed, int pace, Milliseconds longest_life, Milliseconds limit)
        : random_(seed), pace_(pace), longest_life_(longest_life), limit_(limit) {}

    // One life and what it left. Empty where all is as it should be.
    std::string Round() {
        Clock::time_point killed;
        std::vector<Clock::time_point> entered; // when entry n was made
        const int first = next_;
        {
            const Life life(folder_->Path("Dorvak.exe"), pace_);
            PressFirstRow(life.window);
            const auto end = Clock::now() + Milliseconds(Below(longest_life_.count()));
            bool closed = false;
            while (Clock::now() < end) {
                if (!closed) {
                    EnterMaterial(life.window, "e" + std::to_string(next_++));
                    entered.push_back(Clock::now());
                    const auto what = Below(40);
                    if (what == 0) {
                        PostMessageW(Control(life.window, ID_Command17), WM_RBUTTONDOWN, MK_RBUTTON,
                                     MAKELPARAM(5, 5));
                    } else if (what == 1) {
                        PostMessageW(life.window, WM_CLOSE, 0, 0);
                        closed = true;
                    }
                }
                std::this_thread::sleep_for(Milliseconds(1 + Below(300)));
            }
            killed = Clock::now();
        } // killed here
        int expected = first - 1;
        for (std::size_t i = 0; i < entered.size(); ++i) {
            if (entered[i] <= killed - limit_) {
                expected = first + static_cast<int>(i);
            }
        }
        const Life next(folder_->Path("Dorvak.exe"), pace_);
        const std::string found = Cell(Control(next.window, ID_ListView1), 0, kMaterial);
        PostMessageW(next.window, WM_CLOSE, 0, 0);
        next.program.WaitForEnd();
        const int number = found.starts_with("e") ? std::stoi(found.substr(1)) : -1;
        if (number < expected || number >= next_) {
            return "found " + found + ", expected e" + std::to_string(expected) + " or later";
        }
        next_ = number + 1;
        return {};
    }

    void Prepare() { PutBytes(folder_->Path("list.txt"), kPart + "e0" + kPartsEnd); }

  private:
    long long Below(long long limit) {
        return std::uniform_int_distribution<long long>(0, limit - 1)(random_);
    }
    std::mt19937 random_;
    int pace_;
    Milliseconds longest_life_;
    Milliseconds limit_;
    int next_ = 1;
    std::shared_ptr<const ProgramFolder> folder_ = std::make_shared<ProgramFolder>();
};

// Several at once, each in a folder of its own.
void Kill(int kills, int pace, Milliseconds longest_life, Milliseconds limit) {
    constexpr int kLanes = 4;
    const unsigned seed = std::random_device()();
    std::mutex mutex;
    std::vector<std::string> failures;
    std::vector<std::thread> lanes;
    lanes.reserve(kLanes);
    std::vector<std::unique_ptr<Killer>> killers;
    for (unsigned lane = 0; lane < kLanes; ++lane) {
        killers.push_back(std::make_unique<Killer>(seed + lane, pace, longest_life, limit));
        killers.back()->Prepare();
    }
    for (int lane = 0; lane < kLanes; ++lane) {
        lanes.emplace_back([&, lane] {
            for (int round = lane; round < kills; round += kLanes) {
                std::string failure;
                try {
                    failure = killers[static_cast<std::size_t>(lane)]->Round();
                } catch (const std::exception& error) {
                    failure = error.what();
                }
                if (!failure.empty()) {
                    const std::lock_guard lock(mutex);
                    failures.push_back("round " + std::to_string(round) + ": " + failure);
                }
            }
        });
    }
    for (std::thread& lane : lanes) {
        lane.join();
    }
    std::cout << kills << " kills, seed " << seed << ", " << failures.size() << " failures\n";
    for (const std::string& failure : failures) {
        ADD_FAILURE() << failure;
    }
}

class FewKills : public DesktopTest {};
class ManyKills : public DesktopTest {};

} // namespace

TEST_F(FewKills, LoseNothingThatIsOlderThanTheInterval) {
    Kill(16, 250, Milliseconds(3000), Milliseconds(1250));
}

TEST_F(ManyKills, LoseNothingThatIsOlderThanAShortenedInterval) {
    Kill(800, 250, Milliseconds(3000), Milliseconds(1250));
}

TEST_F(ManyKills, LoseNothingThatIsOlderThanTenSeconds) {
    Kill(200, 2000, Milliseconds(16000), Milliseconds(10000));
}
