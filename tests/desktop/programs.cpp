#include "programs.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>

#include "com/trial.hpp"
#include "com/utf.hpp"
#include "text/text.hpp"
#include "win32/resource.h"

namespace driver {
namespace {

constexpr ULONG_PTR kRemoteControl = 0x43534D31;

std::vector<std::string> SessionArguments(const std::vector<std::string>& documents,
                                          std::vector<std::string> arguments) {
    for (const std::string& document : documents) {
        const bool sample = document.find_first_of("/\\") == std::string::npos;
        arguments.push_back(sample ? SamplePath(document) : document);
    }
    return arguments;
}

std::string WriteAndRead(const CatiaSession& session, const std::string& command) {
    const std::string path = TemporaryPath("catia-session.txt");
    session.Do(command + " " + path);
    return ReadFile(path);
}

} // namespace

std::string Environment(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    if (value == nullptr) {
        throw std::runtime_error("the environment variable " + name + " is missing");
    }
    return value;
}

std::string SamplePath(const std::string& name) {
    return Environment("SAMPLES") + "\\" + name;
}

std::string TemporaryPath(const std::string& file_name) {
    return (std::filesystem::temp_directory_path() / file_name).string();
}

void KeepLogsApart() {
    const std::string folder = TemporaryPath("dorvak-tests-local");
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    _putenv_s("LOCALAPPDATA", folder.c_str());
}

ProgramFolder::ProgramFolder() {
    static int number = 0;
    path_ = TemporaryPath("dorvak-test-" + std::to_string(GetCurrentProcessId()) + "-" +
                          std::to_string(++number));
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
    // The name that programs see, where the folder for temporary files has a short one too.
    std::wstring full(32768, L'\0');
    full.resize(GetLongPathNameW(com::Widen(path_).c_str(), full.data(), 32768));
    path_ = com::Narrow(full);
    std::filesystem::copy_file(Environment("DORVAK_EXE"), Path("Dorvak.exe"));
}

ProgramFolder::~ProgramFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string ProgramFolder::Path(const std::string& file_name) const {
    return file_name.empty() ? path_ : path_ + '\\' + file_name;
}

InstalledFolder::InstalledFolder() {
    const auto copy = [](const std::string& from, const std::string& to) {
        std::filesystem::copy_file(com::Widen(from), com::Widen(to));
    };
    copy(Environment("CATIASIM_EXE"), Session());
    std::filesystem::create_directory(com::Widen(Path("samples")));
    for (const char* sample : {"gearbox-assembly.txt", "gearbox-drawing.txt"}) {
        copy(SamplePath(sample), Path(std::string("samples\\") + sample));
    }
}

HWND FindDorvak() {
    const HWND found = FindWindowW(com::kDorvakWindow, nullptr);
    return found != nullptr && IsWindowVisible(found) != FALSE &&
                   GetDlgItem(found, ID_PAGE1 + kSheetPage) != nullptr
               ? found
               : nullptr;
}

DorvakWindow::DorvakWindow(const std::shared_ptr<const ProgramFolder>& folder, int page,
                           const std::vector<std::string>& arguments)
    : DorvakWindow(folder->Path("Dorvak.exe"), folder, page, arguments) {}

DorvakWindow::DorvakWindow(const std::string& path, std::shared_ptr<const ProgramFolder> folder,
                           int page, const std::vector<std::string>& arguments)
    : folder_(std::move(folder)), program_(path, arguments),
      window_(program_.WaitForWindow("DorvakForm1")) {
    BringToFront(window_);
    WaitUntil("all pages", [&] { return GetDlgItem(window_, ID_PAGE1 + kSheetPage) != nullptr; });
    Send(window_, WM_NULL); // their controls too
    if (page != kStructurePage) {
        OpenPage(page);
    }
}

void DorvakWindow::OpenPage(int page) const {
    const HWND tabs = (*this)[ID_SSTab1];
    ClickTab(tabs, page);
    WaitUntil("the page", [&] { return Send(tabs, TCM_GETCURSEL) == page; });
}

std::string DorvakWindow::Status() const {
    return StatusText((*this)[ID_StatusBar1], 0);
}

std::string DorvakWindow::Positions() const {
    return StatusText((*this)[ID_StatusBar1], 1);
}

void DorvakWindow::WaitForStatus(const std::string& expected, Milliseconds limit) const {
    WaitForText(
        "the status", expected, [this] { return Status(); }, limit);
}

void DorvakWindow::Close() const {
    PostMessageW(window_, WM_SYSCOMMAND, SC_CLOSE, 0);
    program_.WaitForEnd();
}

CatiaSession::CatiaSession(const std::vector<std::string>& documents,
                           const std::vector<std::string>& options)
    : program_(Environment("CATIASIM_EXE"), SessionArguments(documents, options)),
      window_(program_.WaitForWindow("CatiaSimWindow")) {
    if (!documents.empty()) {
        WaitUntil(
            "an open document in the simulated session",
            [this] { return Text(window_).starts_with("CATIA V5 - ["); }, Milliseconds(10000));
    }
}

void CatiaSession::Do(const std::string& command) const {
    std::string payload = command;
    COPYDATASTRUCT data{};
    data.dwData = kRemoteControl;
    data.cbData = static_cast<DWORD>(payload.size());
    data.lpData = payload.data();
    if (Send(window_, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data)) != 1) {
        throw std::runtime_error("the simulated session refuses: " + command);
    }
}

std::vector<std::string> CatiaSession::Log() const {
    const std::string log = WriteAndRead(*this, "log write");
    const auto lines = text::Lines(log);
    return {lines.begin(), lines.end()};
}

std::string CatiaSession::Drawing() const {
    return WriteAndRead(*this, "drawing write");
}

std::string CatiaSession::Display() const {
    return WriteAndRead(*this, "display write");
}

bool IsLookup(const std::string& log_line) {
    return log_line.starts_with("lookup ");
}

std::map<std::string, int> CallCounts(const std::vector<std::string>& log) {
    std::map<std::string, int> counts;
    for (const std::string& line : log) {
        if (!IsLookup(line)) {
            ++counts[line.substr(0, line.find_first_of("( "))];
        }
    }
    return counts;
}

int CallsMade(const std::vector<std::string>& log) {
    return static_cast<int>(std::count_if(log.begin(), log.end(), std::not_fn(IsLookup)));
}

long long MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration_cast<Milliseconds>(Clock::now() - start).count();
}

void LeaveResult(int exit_code) {
    if (const char* const result_file = std::getenv("RESULT_FILE")) {
        std::ofstream(result_file) << exit_code;
    }
}

SettingKeeper::SettingKeeper()
    : configuration_(Read()), redrawing_(Read(kRedrawing)), preview_open_(Read(kPreviewOpen)),
      preview_place_(Read(kPreviewPlace)) {
    for (const Setting& setting : {kConfiguration, kRedrawing, kPreviewOpen, kPreviewPlace}) {
        Write({}, setting);
    }
}

SettingKeeper::~SettingKeeper() {
    Write(configuration_);
    Write(redrawing_, kRedrawing);
    Write(preview_open_, kPreviewOpen);
    Write(preview_place_, kPreviewPlace);
}

std::optional<std::string> SettingKeeper::Read(const Setting& setting) {
    DWORD size = 0;
    if (RegGetValueW(HKEY_CURRENT_USER, setting.key, setting.name, RRF_RT_REG_SZ, nullptr, nullptr,
                     &size) != ERROR_SUCCESS) {
        return {};
    }
    std::wstring value(size / sizeof(wchar_t), L'\0');
    RegGetValueW(HKEY_CURRENT_USER, setting.key, setting.name, RRF_RT_REG_SZ, nullptr, value.data(),
                 &size);
    return com::Narrow(value.substr(0, value.find(L'\0')));
}

void SettingKeeper::Write(const std::optional<std::string>& value, const Setting& setting) {
    if (!value) {
        RegDeleteKeyValueW(HKEY_CURRENT_USER, setting.key, setting.name);
        return;
    }
    const std::wstring wide = com::Widen(*value);
    RegSetKeyValueW(HKEY_CURRENT_USER, setting.key, setting.name, REG_SZ, wide.c_str(),
                    static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t)));
}

} // namespace driver
