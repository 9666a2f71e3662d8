#include "win32/layout.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace win32 {

namespace {

// The list of a picker, dropped down.
constexpr int kDropDownUnitsHigh = 110;

// Of the font that the resources are drawn for, in design pixels.
constexpr int kDesignFontHeight = 12;

UINT layout_dpi = platform::kDesignDpi;

bool IsComboBox(HWND window) {
    std::array<wchar_t, 16> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return std::wstring_view(name.data()) == L"ComboBox";
}

// What the person has chosen for the texts of all programs, in per cent.
int TextSize() {
    DWORD size = 0;
    DWORD bytes = sizeof size;
    return RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Accessibility",
                        L"TextScaleFactor", RRF_RT_REG_DWORD, nullptr, &size,
                        &bytes) == ERROR_SUCCESS
               ? static_cast<int>(size)
               : platform::kDesignTextSize;
}

BOOL CALLBACK AddWorkArea(HMONITOR monitor, HDC, LPRECT, LPARAM areas) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (GetMonitorInfoW(monitor, &info) != FALSE) {
        const RECT& work = info.rcWork;
        reinterpret_cast<std::vector<platform::Area>*>(areas)->push_back(
            {work.left, work.top, work.right, work.bottom});
    }
    return TRUE;
}

} // namespace

void Layout::Collect(HWND dialog) {
    RECT base{0, 0, 4, 8};
    MapDialogRect(dialog, &base);
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        RECT place;
        GetWindowRect(child, &place);
        MapWindowPoints(HWND_DESKTOP, dialog, reinterpret_cast<POINT*>(&place), 2);
        places_.push_back(
            {child,
             {MulDiv(place.left, 4, base.right), MulDiv(place.top, 8, base.bottom),
              MulDiv(place.right, 4, base.right), MulDiv(place.bottom, 8, base.bottom)}});
    }
}

void Layout::Place(int width, int height, HFONT font, std::size_t first) const {
    const auto x = [width](int units) { return MulDiv(units, width, kClientUnitsWide); };
    const auto y = [height](int units) { return MulDiv(units, height, kClientUnitsHigh); };
    const PlacedWindow* picker = nullptr; // where the window before was one
    for (std::size_t place = first; place < places_.size(); ++place) {
        const auto& [window, units] = places_[place];
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
        const bool combo_box = IsComboBox(window);
        int high = y(combo_box ? units.top + kDropDownUnitsHigh : units.bottom) - y(units.top);
        if (picker != nullptr && picker->units.top == units.top) {
            // Its button is as high as it is, which is its font's affair.
            RECT field;
            GetWindowRect(picker->window, &field);
            high = field.bottom - field.top;
        }
        SetWindowPos(window, nullptr, x(units.left), y(units.top), x(units.right) - x(units.left),
                     high, SWP_NOZORDER | SWP_NOACTIVATE);
        picker = combo_box ? &places_[place] : nullptr;
    }
}

UINT LayoutDpi() {
    return layout_dpi;
}

UINT LayoutDpiOf(UINT monitor_dpi) {
    return platform::LayoutDpi(monitor_dpi, TextSize());
}

void NoteMonitorDpi(UINT monitor_dpi) {
    layout_dpi = LayoutDpiOf(monitor_dpi);
}

com::Owned<HFONT> MessageFont(UINT monitor_dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, monitor_dpi);
    LOGFONTW& font = metrics.lfMessageFont; // a negative height is that of its letters
    font.lfHeight =
        std::max<LONG>(font.lfHeight, -Scaled(kDesignFontHeight, LayoutDpiOf(monitor_dpi)));
    return com::Owned<HFONT>(CreateFontIndirectW(&font));
}

com::Owned<HICON> LoadIconOfSize(int resource, int size) {
    return com::Owned<HICON>(
        static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource),
                                      IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

RECT MovedIn(const RECT& window) {
    std::vector<platform::Area> work_areas;
    EnumDisplayMonitors(nullptr, nullptr, AddWorkArea, reinterpret_cast<LPARAM>(&work_areas));
    const platform::Area moved =
        platform::MovedIn({window.left, window.top, window.right, window.bottom}, work_areas);
    return {moved.left, moved.top, moved.right, moved.bottom};
}

} // namespace win32
