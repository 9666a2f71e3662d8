#include "win32/data_folder.hpp"

#include <array>
#include <cstdlib>
#include <string_view>

#include "com/utf.hpp"
#include "win32/main_window.hpp"

namespace win32 {

namespace {

// How long a copy that is just starting or ending is waited for, in milliseconds.
constexpr ULONGLONG kPatience = 5000;
constexpr DWORD kPause = 50;

std::wstring FolderOfThisFile() {
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = 0;
    while ((length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()))) ==
           path.size()) {
        path.resize(path.size() * 2);
    }
    path.resize(length);
    return path.substr(0, path.find_last_of(L'\\'));
}

// %APPDATA%\Dorvak, which is made where it is not there; empty where there is no such place.
std::wstring PersonsFolder() {
    constexpr DWORD kLongest = 32768;
    std::wstring path(kLongest, L'\0');
    path.resize(GetEnvironmentVariableW(L"APPDATA", path.data(), kLongest));
    if (path.empty()) {
        return path;
    }
    path += L"\\Dorvak";
    CreateDirectoryW(path.c_str(), nullptr);
    return path;
}

std::wstring LockPath(const std::wstring& folder) {
    return folder + L"\\dorvak.lock";
}

// The computer and the person.
std::string ThisPerson() {
    std::array<wchar_t, 256> computer{};
    std::array<wchar_t, 257> user{};
    auto length = static_cast<DWORD>(computer.size());
    GetComputerNameW(computer.data(), &length);
    length = static_cast<DWORD>(user.size());
    GetUserNameW(user.data(), &length);
    return com::Narrow(computer.data()) + "\n" + com::Narrow(user.data()) + "\n";
}

struct Holder {
    std::string person;
    DWORD process = 0;
};

// What the lock file says; nothing where it cannot be read.
std::optional<Holder> HolderOf(const std::wstring& folder) {
    const HANDLE opened = CreateFileW(LockPath(folder).c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, 0, nullptr);
    if (opened == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    const com::OwnedHandle file(opened);
    std::array<char, 2048> bytes{};
    DWORD read = 0;
    ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    const std::string_view text(bytes.data(), read);
    const std::size_t end = text.rfind('\n');
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    return Holder{
        std::string(text.substr(0, end + 1)),
        static_cast<DWORD>(std::strtoul(std::string(text.substr(end + 1)).c_str(), nullptr, 10))};
}

// Takes the lock file; the error where that fails.
DWORD TakeLock(const std::wstring& folder, com::OwnedHandle& lock) {
    const HANDLE file =
        CreateFileW(LockPath(folder).c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr,
                    CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return GetLastError();
    }
    lock.reset(file);
    const std::string text = ThisPerson() + std::to_string(GetCurrentProcessId());
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    FlushFileBuffers(file);
    return ERROR_SUCCESS;
}

bool BringForward(DWORD process) {
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, kMainWindowClass, nullptr)) != nullptr) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == process && IsWindowVisible(window) != FALSE) {
            if (IsIconic(window) != FALSE) {
                ShowWindowAsync(window, SW_RESTORE);
            }
            SetForegroundWindow(window);
            return true;
        }
    }
    return false;
}

// A file that is being deleted denies access for a moment, to whoever asks anything of it.
bool LockIsGoing(const std::wstring& folder) {
    return GetFileAttributesW(LockPath(folder).c_str()) == INVALID_FILE_ATTRIBUTES &&
           GetLastError() == ERROR_ACCESS_DENIED;
}

enum class Claim { kTaken, kHeldByThisPerson, kNotToBeHad };

Claim ClaimFolder(const std::wstring& folder, com::OwnedHandle& lock) {
    const ULONGLONG deadline = GetTickCount64() + kPatience;
    for (;;) {
        const DWORD error = TakeLock(folder, lock);
        if (error == ERROR_SUCCESS) {
            return Claim::kTaken;
        }
        const auto holder = HolderOf(folder);
        if (error != ERROR_SHARING_VIOLATION && !holder && !LockIsGoing(folder)) {
            return Claim::kNotToBeHad;
        }
        if (holder && holder->person != ThisPerson()) {
            return Claim::kNotToBeHad;
        }
        if (holder && BringForward(holder->process)) {
            return Claim::kHeldByThisPerson;
        }
        if (GetTickCount64() >= deadline) {
            return Claim::kNotToBeHad;
        }
        Sleep(kPause);
    }
}

} // namespace

std::string ProgramFolder() {
    return com::Narrow(FolderOfThisFile());
}

std::optional<DataFolder> ClaimDataFolder() {
    const std::wstring program = FolderOfThisFile();
    const std::wstring persons = PersonsFolder();
    for (const bool own : {true, false}) {
        const std::wstring& folder = own ? program : persons;
        if (folder.empty()) {
            continue;
        }
        DataFolder claimed;
        switch (ClaimFolder(folder, claimed.lock)) {
        case Claim::kTaken:
            claimed.path = com::Narrow(folder);
            claimed.other = com::Narrow(own ? persons : program);
            return claimed;
        case Claim::kHeldByThisPerson:
            return std::nullopt;
        case Claim::kNotToBeHad:
            break;
        }
    }
    return DataFolder{com::Narrow(program), com::Narrow(persons), {}};
}

} // namespace win32
