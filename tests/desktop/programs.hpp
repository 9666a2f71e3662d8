// The programs under test, each a running process with its window, and the fixture that all desktop
// tests share. Where the programs stand is told by the environment: DORVAK_EXE, CATIASIM_EXE, and
// SAMPLES for the folder with the sample documents.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "driver.hpp"

namespace driver {

// The value of an environment variable that must be there.
std::string Environment(const std::string& name);
// The path of a sample, "tables\\tables.txt".
std::string SamplePath(const std::string& name);
// Lets the programs that are started write their log into a folder of the tests' own, which the
// environment variable LOCALAPPDATA names from now on.
void KeepLogsApart();
// A path in the folder for temporary files.
std::string TemporaryPath(const std::string& file_name);

// A folder of its own with a copy of Dorvak.exe in it, so that the files that Dorvak keeps beside
// itself are the test's own. It goes with the object.
class ProgramFolder {
  public:
    ProgramFolder();
    ~ProgramFolder();
    ProgramFolder(const ProgramFolder&) = delete;
    ProgramFolder& operator=(const ProgramFolder&) = delete;

    // The path of a file in it; of the folder itself without a name.
    [[nodiscard]] std::string Path(const std::string& file_name = {}) const;

  private:
    std::string path_;
};

// The programs as they are installed: in one folder, the gearbox in its samples.
class InstalledFolder : public ProgramFolder {
  public:
    InstalledFolder();
    [[nodiscard]] std::string Session() const { return Path("CatiaSim.exe"); }
};

// The window of a Dorvak that somebody else has started, complete; nullptr while none is there.
HWND FindDorvak();

inline constexpr int kStructurePage = 0;
inline constexpr int kEditPage = 1;
inline constexpr int kExportPage = 2;
inline constexpr int kImportPage = 3;
inline constexpr int kSheetPage = 4;

// Dorvak. Controls are named by the ids of its resources.
class DorvakWindow {
  public:
    // In a new folder, without a file beside it.
    DorvakWindow() : DorvakWindow(std::make_shared<ProgramFolder>()) {}
    // In a folder that stays for the next one; a page that is not the first is opened.
    explicit DorvakWindow(const std::shared_ptr<const ProgramFolder>& folder,
                          int page = kStructurePage,
                          const std::vector<std::string>& arguments = {});

    // The program of that path, where it stands.
    explicit DorvakWindow(const std::string& path) : DorvakWindow(path, {}, kStructurePage, {}) {}

    [[nodiscard]] HWND Window() const { return window_; }
    [[nodiscard]] const Program& Process() const { return program_; }
    [[nodiscard]] HWND operator[](int id) const { return Control(window_, id); }

    void OpenPage(int page) const; // pages count from 0
    // Clicks a button on the page that is open.
    void Press(int button) const { Click((*this)[button]); }

    // The two panels of the status bar.
    [[nodiscard]] std::string Status() const;
    [[nodiscard]] std::string Positions() const;
    void WaitForStatus(const std::string& expected, Milliseconds limit = kPatience) const;

    // Closes the window as a person does and waits for the program's end.
    void Close() const;

  private:
    DorvakWindow(const std::string& path, std::shared_ptr<const ProgramFolder> folder, int page,
                 const std::vector<std::string>& arguments);

    std::shared_ptr<const ProgramFolder> folder_; // goes after the program
    Program program_;
    HWND window_;
};

// The simulated CATIA session.
class CatiaSession {
  public:
    // The first document is the active one. A name without a folder is a sample's.
    explicit CatiaSession(const std::vector<std::string>& documents,
                          const std::vector<std::string>& options = {});

    [[nodiscard]] HWND Window() const { return window_; }
    [[nodiscard]] const Program& Process() const { return program_; }

    // Carries out a command of the simulated session's remote control.
    void Do(const std::string& command) const;
    // Every call since the log was cleared: member calls as they were made, and look-ups of
    // members' names, which begin with "lookup ".
    [[nodiscard]] std::vector<std::string> Log() const;
    // The active drawing's content, and what the session displays of it.
    [[nodiscard]] std::string Drawing() const;
    [[nodiscard]] std::string Display() const;

  private:
    Program program_;
    HWND window_;
};

// Whether a line of the log is a look-up of a member's name.
bool IsLookup(const std::string& log_line);
// How often each member was called: {"Products.Item", 12}, ...
std::map<std::string, int> CallCounts(const std::vector<std::string>& log);
// How many calls there were altogether.
int CallsMade(const std::vector<std::string>& log);

// Where a setting is stored.
struct Setting {
    const wchar_t* key;
    const wchar_t* name;
};
inline constexpr Setting kConfiguration{L"Software\\Lumsek\\Pantrel", L"export"};
inline constexpr Setting kRedrawing{L"Software\\Lumsek\\Tabulky", L"bez_prekreslovani"};
inline constexpr Setting kPreviewOpen{L"Software\\Lumsek\\Tabulky", L"nahled"};
inline constexpr Setting kPreviewPlace{L"Software\\Lumsek\\Tabulky", L"nahled_misto"};

// The stored settings of the person who runs the tests: put away while one runs.
class SettingKeeper {
  public:
    SettingKeeper();
    ~SettingKeeper();
    SettingKeeper(const SettingKeeper&) = delete;
    SettingKeeper& operator=(const SettingKeeper&) = delete;

    // What is stored; nothing where there is none.
    static std::optional<std::string> Read(const Setting& setting = kConfiguration);
    static void Write(const std::optional<std::string>& value,
                      const Setting& setting = kConfiguration);

  private:
    std::optional<std::string> configuration_;
    std::optional<std::string> redrawing_;
    std::optional<std::string> preview_open_;
    std::optional<std::string> preview_place_;
};

long long MillisecondsSince(Clock::time_point start);

// Leaves a program's exit code in the file that the environment variable RESULT_FILE names, for a
// launcher that cannot see it.
void LeaveResult(int exit_code);

} // namespace driver
