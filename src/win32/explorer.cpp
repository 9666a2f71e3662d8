#include "win32/explorer.hpp"

#include <array>

#include <windows.h>

#include "automation/run_time_error.hpp"

namespace win32 {

void OpenInExplorer(const std::wstring& path) {
    std::array<wchar_t, MAX_PATH> windows{};
    GetWindowsDirectoryW(windows.data(), static_cast<UINT>(windows.size()));
    const std::wstring explorer = std::wstring(windows.data()) + L"\\explorer.exe";
    std::wstring command = L"\"" + explorer + L"\" \"" + path + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(explorer.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                       nullptr, &start, &process) == FALSE) {
        throw automation::FileNotFound();
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

} // namespace win32
