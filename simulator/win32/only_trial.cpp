#include "only_trial.hpp"

#include <stdexcept>

#include "com/trial.hpp"
#include "session_window.hpp"

namespace simulator {

namespace {

constexpr const wchar_t* kPlaceName = L"Local\\Dorvak.Zkouska";

// How long a session that is just starting or ending is waited for, in milliseconds.
constexpr ULONGLONG kPatience = 5000;
constexpr DWORD kPause = 50;

bool BringForward() {
    const HWND window = FindWindowW(com::kTrialStandInWindow, nullptr);
    if (window == nullptr) {
        return false;
    }
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    AllowSetForegroundWindow(process);
    return PostMessageW(window, kComeForward, 0, 0) != FALSE;
}

} // namespace

com::OwnedHandle TakeTrial() {
    const ULONGLONG deadline = GetTickCount64() + kPatience;
    for (;;) {
        com::OwnedHandle place(CreateMutexW(nullptr, FALSE, kPlaceName));
        if (place && GetLastError() != ERROR_ALREADY_EXISTS) {
            return place;
        }
        place.reset(); // so that it goes with the session that has it
        if (BringForward()) {
            return nullptr;
        }
        if (GetTickCount64() >= deadline) {
            throw std::runtime_error("Simulace CATIE už běží, ale její okno se neotevřelo. "
                                     "Zkuste to za chvíli znovu.");
        }
        Sleep(kPause);
    }
}

} // namespace simulator
