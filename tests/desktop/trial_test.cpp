// On trial: CATIA's stand-in and the program joined by a name of their own. And what the stand-in
// otherwise takes care of: other sessions, the registry, files that are dropped on it.
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "com/trial.hpp"
#include "com/utf.hpp"
#include "fixture.hpp"

using namespace driver;

namespace {

constexpr const char* kTrialSession = "CatiaSimZkouska";
constexpr Setting kTrialConfiguration{L"Software\\Lumsek\\Zkouska\\Pantrel", L"export"};

std::filesystem::path PathOf(const std::string& path) {
    return com::Widen(path);
}

bool KeyIsThere(const wchar_t* key) {
    HKEY opened = nullptr;
    const bool there = RegOpenKeyExW(HKEY_CLASSES_ROOT, key, 0, KEY_READ, &opened) == ERROR_SUCCESS;
    if (there) {
        RegCloseKey(opened);
    }
    return there;
}

bool CatiaIsRegistered() {
    return KeyIsThere(L"CATIA.Application");
}

// Dorvak's process, ended with the test.
class Started {
  public:
    explicit Started(HWND window) {
        DWORD process_id = 0;
        GetWindowThreadProcessId(window, &process_id);
        process_ = OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, process_id);
    }
    ~Started() {
        TerminateProcess(process_, 1);
        WaitForSingleObject(process_, INFINITE);
        CloseHandle(process_);
    }
    Started(const Started&) = delete;
    Started& operator=(const Started&) = delete;

    [[nodiscard]] bool Ends() const {
        return WaitForSingleObject(process_, static_cast<DWORD>(kPatience.count())) ==
               WAIT_OBJECT_0;
    }

  private:
    HANDLE process_;
};

RECT WorkArea() {
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

std::string StatusOf(HWND dorvak) {
    return StatusText(Control(dorvak, ID_StatusBar1), 0);
}

HWND WaitForBox(const Program& program) {
    HWND box = nullptr;
    WaitUntil("a message", [&] {
        box = program.FindVisible("#32770");
        return box != nullptr;
    });
    return box;
}

void CloseBox(const Program& program) {
    PostMessageW(WaitForBox(program), WM_CLOSE, 0, 0);
    WaitUntil("the message's end", [&] { return program.FindVisible("#32770") == nullptr; });
}

class Trial : public DesktopTest {
  protected:
    // What a session that an earlier test has ended may have left.
    Trial() { Unregister(Environment("CATIASIM_EXE")); }

    static void Unregister(const std::string& session) {
        EXPECT_EQ(Program(session, {"--unregister"}).WaitForEnd(), 0U);
    }

    InstalledFolder folder_;
};

} // namespace

TEST_F(Trial, TheTwoFindEachOtherAndNobodyElseFindsThem) {
    const Program session(folder_.Session(), {"--zkouska"});
    const HWND window = session.WaitForWindow(kTrialSession);
    WaitForText("the title", "CATIA V5 - [Gearbox.CATProduct] - simulace",
                [&] { return Text(window); });
    HWND dorvak = nullptr;
    WaitUntil("Dorvak", [&] { return (dorvak = FindDorvak()) != nullptr; });
    const Started process(dorvak);
    EXPECT_TRUE(Text(dorvak).ends_with(" - na zkoušku")) << Text(dorvak);
    const auto across = [](const RECT& place) {
        return std::to_string(place.left) + " to " + std::to_string(place.right);
    };
    const RECT area = WorkArea();
    const LONG edge = area.right - (Place(dorvak).right - Place(dorvak).left);
    const LONG third = area.left + (area.right - area.left) / 3;
    WaitForText("the places",
                across({area.left, 0, std::max(edge, third), 0}) + ", " +
                    across({edge, 0, area.right, 0}),
                [&] { return across(Place(window)) + ", " + across(Place(dorvak)); });

    Click(Control(dorvak, ID_Command3));
    WaitForText(
        "the walk's end", kWalked, [&] { return StatusOf(dorvak); }, kLong);
    KeepPicture("trial.png");
    EXPECT_FALSE(CatiaIsRegistered());

    {
        const DorvakWindow another;
        another.Press(ID_Command26);
        another.WaitForStatus("Spusteni Catie = False");
        const auto titles = ListBoxItems(another[ID_List1]);
        EXPECT_EQ(std::ranges::count(titles, Text(window)), 1);
        another.Close();
    }
    SettingKeeper::Write({});

    // Pressed again: both come forward, and there is one of each.
    ShowWindow(window, SW_MINIMIZE);
    ShowWindow(dorvak, SW_MINIMIZE);
    WaitUntil("both minimised",
              [&] { return IsIconic(window) != FALSE && IsIconic(dorvak) != FALSE; });
    EXPECT_EQ(Program(folder_.Session(), {"--zkouska"}).WaitForEnd(), 0U);
    WaitUntil("both back", [&] { return IsIconic(window) == FALSE && IsIconic(dorvak) == FALSE; });
    EXPECT_EQ(FindWindowExW(nullptr, window, com::kTrialStandInWindow, nullptr), nullptr);

    // A session beside it; the one on trial is none for it, and the program stays with its own.
    {
        const CatiaSession beside({kDrawing});
        EXPECT_TRUE(CatiaIsRegistered());
        Click(Control(dorvak, ID_Command3));
        WaitForText(
            "the walk's end", kWalked, [&] { return StatusOf(dorvak); }, kLong);
        PostMessageW(beside.Window(), WM_CLOSE, 0, 0);
        EXPECT_EQ(beside.Process().WaitForEnd(), 0U);
    }
    EXPECT_FALSE(CatiaIsRegistered());

    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_EQ(session.WaitForEnd(), 0U);
    Click(Control(dorvak, ID_Command26));
    WaitForText("the status", "Spusteni Catie = False", [&] { return StatusOf(dorvak); });
    Click(Control(dorvak, ID_Command4));
    WaitUntil("the parts list", [&] { return RowCount(Control(dorvak, ID_ListView1)) > 0; });
    PostMessageW(dorvak, WM_SYSCOMMAND, SC_CLOSE, 0);
    EXPECT_TRUE(process.Ends());
    EXPECT_TRUE(std::filesystem::exists(PathOf(folder_.Path("Zkouska\\list.txt"))));
    EXPECT_FALSE(std::filesystem::exists(PathOf(folder_.Path("list.txt"))));
    EXPECT_TRUE(SettingKeeper::Read(kTrialConfiguration));
    EXPECT_FALSE(SettingKeeper::Read());
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Lumsek\\Zkouska");
}

TEST_F(Trial, AnotherSessionRefusesAndWhatOneLeftIsRemovedByItselfAlone) {
    {
        const CatiaSession first({kProduct});
        const Program second(Environment("CATIASIM_EXE"), {SamplePath(kDrawing)});
        const HWND box = WaitForBox(second);
        const std::string text = Text(Control(box, 0xFFFF));
        EXPECT_NE(text.find("CATIA V5 - [Gearbox.CATProduct] - simulace"), std::string::npos)
            << text;
        KeepPicture("refused.png");
        CloseBox(second);
        EXPECT_EQ(second.WaitForEnd(), 1U);
        EXPECT_TRUE(CatiaIsRegistered()) << "the first one's";
    } // and is killed
    ASSERT_TRUE(CatiaIsRegistered());
    Unregister(folder_.Session());
    EXPECT_TRUE(CatiaIsRegistered()) << "it is another folder's";
    Unregister(Environment("CATIASIM_EXE"));
    EXPECT_FALSE(CatiaIsRegistered());
    EXPECT_FALSE(KeyIsThere(L"CLSID\\{2B6F1A5E-41D3-4C0A-A718-5E903D62C47F}"));
}

TEST_F(Trial, AWindowTitledLikeCatiaKeepsTheSessionFromStarting) {
    const HWND catia = CreateWindowExW(0, L"STATIC", L"CATIASessionWnd", WS_POPUP, 0, 0, 10, 10,
                                       nullptr, nullptr, nullptr, nullptr);
    const Program session(Environment("CATIASIM_EXE"), {SamplePath(kProduct)});
    CloseBox(session);
    EXPECT_EQ(session.WaitForEnd(), 1U);
    DestroyWindow(catia);
}

TEST_F(Trial, DroppedFilesAreOpenedAndABadOneIsSaid) {
    const CatiaSession session({kProduct});
    DropFiles(session.Window(), {SamplePath(kDrawing), SamplePath("tables\\tables.txt")});
    WaitForText("the title", "CATIA V5 - [Gearbox.CATDrawing] - simulace",
                [&] { return Text(session.Window()); });

    const std::string bad = folder_.Path("špatný.txt");
    std::ofstream(PathOf(bad)) << "ProductDocument\n";
    DropFiles(session.Window(), {bad});
    const std::string text = Text(Control(WaitForBox(session.Process()), 0xFFFF));
    EXPECT_TRUE(text.starts_with("Dokument se nepodařilo otevřít.\n\n" + bad)) << text;
    KeepPicture("bad-document.png");
    CloseBox(session.Process());
    EXPECT_EQ(Text(session.Window()), "CATIA V5 - [Gearbox.CATDrawing] - simulace");
}
