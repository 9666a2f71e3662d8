#include "win32/windows_ports.hpp"

#include <oleauto.h>

#include <commctrl.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <vector>

#include "com/client.hpp"
#include "com/utf.hpp"
#include "controls/controls.hpp"
#include "win32/input_box.hpp"
#include "win32/layout.hpp"

namespace win32 {

namespace {

constexpr const wchar_t* kTitle = L"Dorvak";

using Callback = std::function<long(platform::WindowHandle)>;

BOOL CALLBACK VisitWindow(HWND window, LPARAM callback) {
    return (*reinterpret_cast<const Callback*>(callback))(
               reinterpret_cast<platform::WindowHandle>(window)) != 0
               ? TRUE
               : FALSE;
}

// In the twips that the window is placed and measured in: what the screen's own DPI was when the
// person signed in may be another.
int ScreenTwips(int metric) {
    return Twips(GetSystemMetrics(metric), LayoutDpi());
}

automation::RunTimeError RegistryRefusal() {
    return {75, "Path/File access error"};
}

} // namespace

void WindowsDesktop::EnumWindows(const Callback& callback) {
    ::EnumWindows(VisitWindow, reinterpret_cast<LPARAM>(&callback));
}

std::string WindowsDesktop::GetWindowTitle(platform::WindowHandle window) {
    std::array<char, 256> title{};
    const int length = GetWindowTextA(reinterpret_cast<HWND>(window), title.data(),
                                      static_cast<int>(title.size()));
    return com::FromSystemCodePage({title.data(), static_cast<std::size_t>(length)});
}

bool WindowsDesktop::MayBeOfCatia(platform::WindowHandle window) {
    return com::IsTrialStandIn(reinterpret_cast<HWND>(window)) ==
           (purpose_ == com::Purpose::kTrial);
}

void WindowsDesktop::SetTopmost(platform::WindowHandle window, bool topmost) {
    SetWindowPos(reinterpret_cast<HWND>(window), topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0,
                 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
}

int WindowsDesktop::ScreenWidth() {
    return ScreenTwips(SM_CXSCREEN);
}

int WindowsDesktop::ScreenHeight() {
    return ScreenTwips(SM_CYSCREEN);
}

std::wstring RegistrySettings::KeyPath(std::string_view application,
                                       std::string_view section) const {
    return L"Software\\" + com::Widen(application) + L"\\" +
           (purpose_ == com::Purpose::kTrial ? L"Zkouska\\" : L"") + com::Widen(section);
}

std::string RegistrySettings::GetSetting(std::string_view application, std::string_view section,
                                         std::string_view key, std::string_view fallback) {
    const std::wstring path = KeyPath(application, section);
    const std::wstring name = com::Widen(key);
    DWORD bytes = 0;
    if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr,
                     &bytes) != ERROR_SUCCESS) {
        return std::string(fallback);
    }
    std::vector<wchar_t> value(bytes / sizeof(wchar_t) + 1);
    bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr,
                     value.data(), &bytes) != ERROR_SUCCESS) {
        return std::string(fallback);
    }
    return com::Narrow(value.data());
}

void RegistrySettings::SaveSetting(std::string_view application, std::string_view section,
                                   std::string_view key, std::string_view value) {
    HKEY opened = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, KeyPath(application, section).c_str(), 0, nullptr, 0,
                        KEY_SET_VALUE, nullptr, &opened, nullptr) != ERROR_SUCCESS) {
        throw RegistryRefusal();
    }
    const com::Owned<HKEY> registry_key(opened);
    const std::wstring wide = com::Widen(value);
    if (RegSetValueExW(registry_key.get(), com::Widen(key).c_str(), 0, REG_SZ,
                       reinterpret_cast<const BYTE*>(wide.c_str()),
                       static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t))) != ERROR_SUCCESS) {
        throw RegistryRefusal();
    }
}

automation::ObjectPtr ComServers::GetActiveObject(std::string_view program_id) {
    return purpose_ == com::Purpose::kTrial ? com::GetActiveObject(com::kTrialClass)
                                            : com::GetActiveObject(program_id);
}

std::optional<double> UserNumberFormat::ReadNumber(std::string_view text) {
    std::wstring wide = com::Widen(text);
    double number = 0;
    if (FAILED(VarR8FromStr(wide.data(), GetUserDefaultLCID(), 0, &number))) {
        return std::nullopt;
    }
    return number;
}

std::string SystemCodePage::Character(unsigned char code) {
    return com::CharacterAt(code, GetACP());
}

float SystemClock::SecondsSinceMidnight() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    const int seconds = (now.wHour * 60 + now.wMinute) * 60 + now.wSecond;
    return static_cast<float>(seconds + now.wMilliseconds / 1000.0);
}

std::string SystemClock::Now() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    std::array<char, 32> text{};
    const int length =
        std::snprintf(text.data(), text.size(), "%04u-%02u-%02u %02u:%02u:%02u.%03u", now.wYear,
                      now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
    return {text.data(), static_cast<std::size_t>(length)};
}

double SystemClock::Seconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

int WindowMessageBoxes::Show(const std::wstring& text, const wchar_t* title, UINT style) const {
    controls::Raise(opening);
    return MessageBoxW(owner, text.c_str(), title, style);
}

void WindowMessageBoxes::ShowError(const automation::RunTimeError& error) {
    const std::string text = std::to_string(error.number) + "\n" + error.description;
    Show(com::Widen(text), kTitle, MB_OK | MB_ICONERROR);
}

void WindowMessageBoxes::ShowInformation(std::string_view text, std::string_view title) {
    Show(com::Widen(text), com::Widen(title).c_str(), MB_OK | MB_ICONINFORMATION);
}

bool WindowMessageBoxes::AskYesNo(std::string_view question) {
    return Show(com::Widen(question), kTitle, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

platform::Answer WindowMessageBoxes::AskYesNoCancel(std::string_view question,
                                                    std::string_view title) {
    switch (
        Show(com::Widen(question), com::Widen(title).c_str(), MB_YESNOCANCEL | MB_ICONQUESTION)) {
    case IDYES:
        return platform::Answer::kYes;
    case IDNO:
        return platform::Answer::kNo;
    default:
        return platform::Answer::kCancel;
    }
}

platform::AfterFailedSave WindowMessageBoxes::AskAfterFailedSave(std::string_view reason) {
    enum : int { kTryAgain = 100, kChooseFile, kCloseWithoutSaving };
    controls::Raise(opening);
    const std::array<TASKDIALOG_BUTTON, 3> buttons{{{kTryAgain, L"Zkusit znovu"},
                                                    {kChooseFile, L"Uložit do jiného souboru…"},
                                                    {kCloseWithoutSaving, L"Zavřít bez uložení"}}};
    const std::wstring content = com::Widen(reason);
    TASKDIALOGCONFIG box{};
    box.cbSize = sizeof box;
    box.hwndParent = owner;
    box.dwFlags = TDF_POSITION_RELATIVE_TO_WINDOW | TDF_SIZE_TO_CONTENT;
    box.pszWindowTitle = kTitle;
    box.pszMainIcon = TD_WARNING_ICON;
    box.pszMainInstruction = L"Seznam se nepodařilo uložit.";
    box.pszContent = content.c_str();
    box.cButtons = static_cast<UINT>(buttons.size());
    box.pButtons = buttons.data();
    box.nDefaultButton = kTryAgain;
    int chosen = 0;
    if (FAILED(TaskDialogIndirect(&box, &chosen, nullptr, nullptr))) {
        const std::wstring question =
            content + L"\n\nUložit seznam do jiného souboru? Ne zavře program bez uložení.";
        chosen = MessageBoxW(owner, question.c_str(), kTitle, MB_YESNO | MB_ICONWARNING);
        if (chosen == 0) {
            throw automation::RunTimeError(7, "Out of memory");
        }
        chosen = chosen == IDYES ? kChooseFile : kCloseWithoutSaving;
    }
    switch (chosen) {
    case kChooseFile:
        return platform::AfterFailedSave::kChooseFile;
    case kCloseWithoutSaving:
        return platform::AfterFailedSave::kCloseWithoutSaving;
    default:
        return platform::AfterFailedSave::kTryAgain;
    }
}

std::string WindowMessageBoxes::AskText(std::string_view prompt, std::string_view title,
                                        std::string_view proposal) {
    controls::Raise(opening);
    return ShowInputBox(owner, prompt, title, proposal);
}

} // namespace win32
