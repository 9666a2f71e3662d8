// What helps from afar: the status line's popup menu, the diagnosis of a real system, the log, and
// why a session that is there cannot be reached.
#include <algorithm>
#include <filesystem>

#include "com/utf.hpp"
#include "fixture.hpp"
#include "text/text.hpp"
#include "version.h"
#include "win32/files.hpp"
#include "win32/log_file.hpp"
#include "win32/other_programs.hpp"

using namespace driver;

namespace {

const std::string kSession = "gearbox-assembly.txt";

std::string LocalFolder() {
    return Environment("LOCALAPPDATA") + "\\Dorvak";
}

std::string SessionProgram() {
    return std::filesystem::path(Environment("CATIASIM_EXE")).make_preferred().string();
}

std::vector<std::string> LinesOf(const std::string& path) {
    const std::string text = win32::CodePageFiles().Read(path);
    std::vector<std::string> lines;
    for (const std::string_view line : text::Lines(text)) {
        lines.emplace_back(line);
    }
    return lines;
}

// The value that the diagnosis has under a name.
std::string ValueOf(const std::vector<std::string>& diagnosis, const std::string& name) {
    for (const std::string& line : diagnosis) {
        if (line.starts_with(name + ": ")) {
            return line.substr(name.size() + 2);
        }
    }
    return "(none)";
}

class Support : public DesktopTest {
  protected:
    // Chooses "Diagnostika" from the menu that is open, and reads what it has written.
    [[nodiscard]] std::vector<std::string> ChooseDiagnosis(const std::string& picture) const {
        WaitForPopupMenu();
        PressKey(VK_UP); // "O programu"
        PressKey(VK_UP);
        KeepPicture(picture);
        PressKey(VK_RETURN);
        const std::string path = LocalFolder() + "\\diagnostika.txt";
        dorvak_.WaitForStatus("Diagnostika ulozena " + path, kLong);
        return LinesOf(path);
    }

    DorvakWindow dorvak_;
};

// A folder that goes with the object.
class TemporaryFolder {
  public:
    TemporaryFolder() { std::filesystem::create_directories(path_); }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& Path() const { return path_; }

  private:
    std::string path_ = TemporaryPath("dorvak-log-" + std::to_string(GetCurrentProcessId()));
};

} // namespace

TEST_F(Support, ARightClickOnTheStatusLineLeadsToTheDiagnosisOfASession) {
    const CatiaSession catia({kSession});
    Click(dorvak_[ID_StatusBar1], POINT{200, 8}, MouseButton::kRight);
    const auto diagnosis = ChooseDiagnosis("status-menu.png");
    const std::string session = SessionProgram();
    EXPECT_EQ(ValueOf(diagnosis, "Okna CATIE"), "1");
    EXPECT_TRUE(text::EqualsIgnoringCase(ValueOf(diagnosis, "Třída CATIA.Application"),
                                         "zapsaná, " + session))
        << ValueOf(diagnosis, "Třída CATIA.Application");
    EXPECT_EQ(ValueOf(diagnosis, "Objekt CATIE"), "dostupný");
    EXPECT_EQ(ValueOf(diagnosis, "Jméno"), "CNEXT");
    EXPECT_EQ(ValueOf(diagnosis, "Verze"), "V5 R28 SP4");
    EXPECT_EQ(ValueOf(diagnosis, "Aktivní dokument"), "CATProduct");
    const std::string times = ValueOf(diagnosis, "Deset volání");
    EXPECT_EQ(std::ranges::count(times, ';'), 9) << times;
    EXPECT_TRUE(std::ranges::any_of(diagnosis, [&](const std::string& line) {
        return text::ContainsIgnoringCase(line, "  " + session + ", ");
    })) << "the program of the session's window";
    EXPECT_FALSE(std::ranges::any_of(diagnosis, [](const std::string& line) {
        return line.find("Gearbox") != std::string::npos;
    }));
}

TEST_F(Support, TheKeyboardComesToTheStatusLineAndToTheDiagnosisWithoutASession) {
    Click(dorvak_[ID_Check2]);
    PressKey(VK_TAB, {VK_SHIFT});
    KeepPicture("status-focus.png");
    PressKey(VK_APPS);
    const auto diagnosis = ChooseDiagnosis("status-menu-by-key.png");
    EXPECT_EQ(diagnosis.front().substr(0, sizeof "Dorvak " DORVAK_VERSION_TEXT),
              "Dorvak " DORVAK_VERSION_TEXT ":");
    for (const char* name : {"Windows", "Kódové stránky", "Jazyk a oblast", "Formát čísel",
                             "Obrazovky", "Rozlišení při přihlášení", "Velikost textu"}) {
        EXPECT_GT(ValueOf(diagnosis, name).size(), 3U) << name << ": " << ValueOf(diagnosis, name);
    }
    EXPECT_TRUE(ValueOf(diagnosis, "Kódové stránky").starts_with(std::to_string(GetACP()) + " "));
    EXPECT_EQ(ValueOf(diagnosis, "Okna CATIE"), "0");
    EXPECT_TRUE(ValueOf(diagnosis, "Objekt CATIE").starts_with("chyba 429: "));
    const auto log = LinesOf(LocalFolder() + "\\dorvak.log");
    ASSERT_GE(log.size(), 2U);
    EXPECT_TRUE(log[log.size() - 2].ends_with(" Diagnostika: začátek")) << log[log.size() - 2];
    EXPECT_TRUE(log.back().ends_with(", konec")) << log.back();
}

TEST_F(Support, EscapeEndsTheWaitForABusySessionAndTheRestOfTheDiagnosisIsThere) {
    const CatiaSession catia({kSession});
    catia.Do("dialog open");
    Click(dorvak_[ID_StatusBar1], POINT{200, 8}, MouseButton::kRight);
    WaitForPopupMenu();
    PressKey(VK_UP);
    PressKey(VK_UP);
    PressKey(VK_RETURN);
    dorvak_.WaitForStatus("Diagnostika");
    PressKey(VK_ESCAPE);
    const std::string path = LocalFolder() + "\\diagnostika.txt";
    dorvak_.WaitForStatus("Diagnostika ulozena " + path, kLong);
    KeepPicture("diagnosis-stopped.png");
    const auto diagnosis = LinesOf(path);
    EXPECT_GT(ValueOf(diagnosis, "Windows").size(), 3U);
    EXPECT_TRUE(std::ranges::any_of(diagnosis, [](const std::string& line) {
        return line.find(": chyba 18 ") != std::string::npos;
    }));
    catia.Do("dialog close");
}

TEST_F(Support, ASessionsWindowWithoutAnObjectIsExplained) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"CATIA V5 - [A.CATProduct]", WS_POPUP, 0, 0,
                                        10, 10, nullptr, nullptr, nullptr, nullptr);
    dorvak_.Press(ID_Command3);
    dorvak_.WaitForStatus("429 ActiveX component can't create object");
    // The mouse may rest on a button, whose tip shows as well.
    std::string balloon;
    WaitUntil("the balloon", [&] {
        const auto tips = dorvak_.Process().AllVisible("tooltips_class32");
        const auto is_it = [&](HWND tip) {
            balloon = Text(tip);
            return balloon.find("/regserver") != std::string::npos;
        };
        return std::ranges::any_of(tips, is_it);
    });
    KeepPicture("unreachable.png");
    // Nobody is registered, or a session that an earlier test has ended; never this test's program.
    EXPECT_NE(balloon.find("zapsan"), std::string::npos) << balloon;
    EXPECT_NE(balloon.find("„CNEXT.exe /regserver“"), std::string::npos) << balloon;
    DestroyWindow(window);
}

TEST(OtherPrograms, AreKnownByTheirWindowsAndTheRegistry) {
    win32::OtherPrograms programs;
    const HWND own = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                     nullptr, nullptr);
    const auto handle = reinterpret_cast<platform::WindowHandle>(own);
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    EXPECT_EQ(programs.RightsOf(handle), platform::Rights::kSame);
    EXPECT_TRUE(text::EqualsIgnoringCase(programs.PathOf(handle), com::Narrow(path)))
        << programs.PathOf(handle);
    DestroyWindow(own);
    EXPECT_EQ(programs.RightsOf(handle), platform::Rights::kUnknown);
    EXPECT_EQ(programs.PathOf(handle), "");
    EXPECT_FALSE(programs.RegisteredUnder("Dorvak.NothingOfThatName").found);
    const CatiaSession catia({kSession});
    const platform::Registration session = programs.RegisteredUnder("Catia.application");
    EXPECT_TRUE(session.found);
    EXPECT_TRUE(text::EqualsIgnoringCase(session.program, SessionProgram())) << session.program;
}

TEST(LogFile, KeepsOnePredecessorAndStaysWithinItsLimit) {
    const TemporaryFolder folder;
    const std::string log = folder.Path() + "\\dorvak.log";
    const std::string old = folder.Path() + "\\dorvak.old.log";
    win32::LogFile file(folder.Path(), 100);
    const std::string line(30, 'x'); // 32 bytes with its end, and the signature of the file
    file.Write("č" + line);
    file.Write(line);
    EXPECT_EQ(ReadFile(log), "\xEF\xBB\xBFč" + line + "\r\n" + line + "\r\n");
    EXPECT_FALSE(std::filesystem::exists(old));
    file.Write(line);
    EXPECT_EQ(ReadFile(old), "\xEF\xBB\xBFč" + line + "\r\n" + line + "\r\n");
    EXPECT_EQ(ReadFile(log), "\xEF\xBB\xBF" + line + "\r\n");
    for (int i = 0; i < 20; ++i) {
        file.Write(std::to_string(i) + line);
        EXPECT_LE(std::filesystem::file_size(log), 100U);
        EXPECT_LE(std::filesystem::file_size(old), 100U);
    }
    EXPECT_TRUE(ReadFile(log).ends_with("19" + line + "\r\n"));
}

TEST(LogFile, BeginsAnewWhereThePredecessorCannotBeReplacedForLong) {
    const TemporaryFolder folder;
    const std::string log = folder.Path() + "\\dorvak.log";
    // A folder stands in its place.
    std::filesystem::create_directory(folder.Path() + "\\dorvak.old.log");
    win32::LogFile file(folder.Path(), 100);
    for (int i = 0; i < 20; ++i) {
        file.Write(std::to_string(i) + std::string(30, 'x'));
        EXPECT_LE(std::filesystem::file_size(log), 200U);
    }
    EXPECT_TRUE(ReadFile(log).starts_with("\xEF\xBB\xBF"));
    EXPECT_TRUE(ReadFile(log).ends_with("18" + std::string(30, 'x') + "\r\n19" +
                                        std::string(30, 'x') + "\r\n"));
}

TEST(LogFile, MakesItsFolderAgain) {
    const TemporaryFolder folder;
    win32::LogFile file(folder.Path());
    file.Write("a");
    std::filesystem::remove_all(folder.Path());
    file.Write("b");
    EXPECT_EQ(LinesOf(folder.Path() + "\\dorvak.log"), std::vector<std::string>{"b"});
}

TEST(LogFile, CanBeReadAndSharedWhileItIsWritten) {
    const TemporaryFolder folder;
    win32::LogFile first(folder.Path());
    win32::LogFile second(folder.Path());
    first.Write("a");
    second.Write("b");
    first.Write("c");
    EXPECT_EQ(LinesOf(folder.Path() + "\\dorvak.log"), (std::vector<std::string>{"a", "b", "c"}));
    win32::LogFile nowhere(folder.Path() + R"(\no\such\place)");
    nowhere.Write("is no error");
}
