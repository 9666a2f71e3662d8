#include "win32/computer.hpp"

#include <array>

#include <windows.h>

#include "com/owned.hpp"
#include "com/utf.hpp"
#include "win32/system_library.hpp"

namespace win32 {

namespace {

constexpr const wchar_t* kVersionKey = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

std::string VersionText(const wchar_t* name) {
    std::array<wchar_t, 128> text{};
    auto bytes = static_cast<DWORD>(sizeof text);
    RegGetValueW(HKEY_LOCAL_MACHINE, kVersionKey, name, RRF_RT_REG_SZ, nullptr, text.data(),
                 &bytes);
    return com::Narrow(text.data());
}

std::string Number(HKEY root, const wchar_t* key, const wchar_t* name, const char* otherwise) {
    DWORD number = 0;
    DWORD bytes = sizeof number;
    return RegGetValueW(root, key, name, RRF_RT_REG_DWORD, nullptr, &number, &bytes) ==
                   ERROR_SUCCESS
               ? std::to_string(number)
               : otherwise;
}

std::string WindowsVersion() {
    return VersionText(L"ProductName") + " " + VersionText(L"DisplayVersion") + ", sestavení " +
           VersionText(L"CurrentBuildNumber") + "." +
           Number(HKEY_LOCAL_MACHINE, kVersionKey, L"UBR", "0");
}

std::string LocaleText(LCTYPE type) {
    std::array<wchar_t, 128> text{};
    GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, text.data(), static_cast<int>(text.size()));
    return com::Narrow(text.data());
}

std::string NumberFormat() {
    return "desetinný oddělovač \"" + LocaleText(LOCALE_SDECIMAL) + "\", tisíce \"" +
           LocaleText(LOCALE_STHOUSAND) + "\", seznam \"" + LocaleText(LOCALE_SLIST) + "\"";
}

UINT DpiOf(HMONITOR monitor) {
    using GetDpi = HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*);
    static const auto get_dpi = SystemFunction<GetDpi>(L"shcore.dll", "GetDpiForMonitor");
    constexpr int kEffective = 0;
    UINT across = 0;
    UINT down = 0;
    return get_dpi != nullptr && SUCCEEDED(get_dpi(monitor, kEffective, &across, &down))
               ? across
               : GetDpiForSystem();
}

BOOL CALLBACK DescribeMonitor(HMONITOR monitor, HDC, RECT*, LPARAM text) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(monitor, &info);
    auto& all = *reinterpret_cast<std::string*>(text);
    all += (all.empty() ? "" : "; ") + std::to_string(info.rcMonitor.right - info.rcMonitor.left) +
           " x " + std::to_string(info.rcMonitor.bottom - info.rcMonitor.top) + " bodů, " +
           std::to_string(DpiOf(monitor)) + " dpi" +
           ((info.dwFlags & MONITORINFOF_PRIMARY) != 0 ? " (hlavní)" : "");
    return TRUE;
}

std::string Monitors() {
    std::string text;
    EnumDisplayMonitors(nullptr, nullptr, DescribeMonitor, reinterpret_cast<LPARAM>(&text));
    return text;
}

bool IsElevated() {
    HANDLE opened = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened) == FALSE) {
        return false;
    }
    const com::OwnedHandle token(opened);
    TOKEN_ELEVATION elevation{};
    DWORD size = 0;
    return GetTokenInformation(opened, TokenElevation, &elevation, sizeof elevation, &size) !=
               FALSE &&
           elevation.TokenIsElevated != 0;
}

} // namespace

std::vector<platform::Fact> ThisComputer::Facts() {
    return {{"Windows", WindowsVersion()},
            {"Kódové stránky",
             std::to_string(GetACP()) + " (ANSI), " + std::to_string(GetOEMCP()) + " (OEM)"},
            {"Jazyk a oblast", LocaleText(LOCALE_SNAME)},
            {"Formát čísel", NumberFormat()},
            {"Obrazovky", Monitors()},
            {"Rozlišení při přihlášení", std::to_string(GetDpiForSystem()) + " dpi"},
            {"Velikost textu", Number(HKEY_CURRENT_USER, L"SOFTWARE\\Microsoft\\Accessibility",
                                      L"TextScaleFactor", "100") +
                                   " %"},
            {"Spuštěno jako správce", IsElevated() ? "ano" : "ne"}};
}

} // namespace win32
