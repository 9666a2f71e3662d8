#include "other_sessions.hpp"

#include <array>

#include <windows.h>

#include <ole2.h>
#include <wrl/client.h>

#include "catia/session.hpp"
#include "com/trial.hpp"
#include "com/utf.hpp"

using Microsoft::WRL::ComPtr;

namespace simulator {

namespace {

constexpr const wchar_t* kCatiaName = L"CATIA.Application";

std::string TitleOf(HWND window) {
    std::array<wchar_t, 256> title{};
    GetWindowTextW(window, title.data(), static_cast<int>(title.size()));
    return com::Narrow(title.data());
}

BOOL CALLBACK FindCatia(HWND window, LPARAM found) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const std::string title = TitleOf(window);
    if (process == GetCurrentProcessId() || !catia::IsSessionTitle(title) ||
        com::IsTrialStandIn(window)) {
        return TRUE;
    }
    *reinterpret_cast<std::string*>(found) = title;
    return FALSE;
}

// An entry that an ended program has left answers to nobody.
bool ObjectAnswers() {
    CLSID class_id{};
    ComPtr<IUnknown> running;
    if (FAILED(CLSIDFromProgID(kCatiaName, &class_id)) ||
        FAILED(GetActiveObject(class_id, nullptr, &running))) {
        return false;
    }
    ComPtr<IDispatch> application;
    const HRESULT answer = running.As(&application);
    return SUCCEEDED(answer) || answer == RPC_E_CALL_REJECTED ||
           answer == RPC_E_SERVERCALL_RETRYLATER;
}

} // namespace

std::string RunningCatia() {
    std::string title;
    EnumWindows(FindCatia, reinterpret_cast<LPARAM>(&title));
    if (title.empty() && ObjectAnswers()) {
        title = com::Narrow(kCatiaName);
    }
    return title;
}

} // namespace simulator
