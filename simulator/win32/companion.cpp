#include "companion.hpp"

#include <stdexcept>
#include <string>

#include "com/trial.hpp"
#include "com/utf.hpp"
#include "files.hpp"
#include "platform/screen.hpp"

namespace simulator {

namespace {

platform::Area AreaOf(const RECT& rect) {
    return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right),
            static_cast<int>(rect.bottom)};
}

} // namespace

void Companion::Start() {
    const std::string own = ProgramPath();
    const std::wstring folder = com::Widen(own.substr(0, own.find_last_of('\\')));
    const std::wstring program = folder + L"\\Dorvak.exe";
    std::wstring command = L"\"" + program + L"\" " + com::Widen(com::kTrialSwitch);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION started{};
    if (CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                       folder.c_str(), &start, &started) == FALSE) {
        throw std::runtime_error("Program se nepodařilo spustit:\n" + com::Narrow(program));
    }
    CloseHandle(started.hThread);
    process_.reset(started.hProcess);
    process_id_ = started.dwProcessId;
}

HWND Companion::Window() const {
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, com::kDorvakWindow, nullptr)) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == process_id_ && IsWindowVisible(window) != FALSE) {
            break;
        }
    }
    return window;
}

bool Companion::PlaceBeside(HWND session) {
    const HWND window = Window();
    if (window == nullptr) {
        return WaitForSingleObject(process_.get(), 0) == WAIT_OBJECT_0;
    }
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    RECT place;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    GetWindowRect(window, &place);
    const auto [left, right] = platform::Beside(AreaOf(place), AreaOf(monitor.rcWork));
    SetWindowPos(session, nullptr, left.left, left.top, left.right - left.left,
                 left.bottom - left.top, SWP_NOZORDER | SWP_NOACTIVATE);
    // Dorvak may be at work, and is not waited for.
    SetWindowPos(window, nullptr, right.left, right.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
    return true;
}

} // namespace simulator
