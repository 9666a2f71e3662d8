#include "win32/layout.hpp"

#include <array>
#include <string_view>

namespace win32 {

namespace {

// The list of a picker, dropped down.
constexpr int kDropDownUnitsHigh = 110;

bool IsComboBox(HWND window) {
    std::array<wchar_t, 16> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return std::wstring_view(name.data()) == L"ComboBox";
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
    for (std::size_t place = first; place < places_.size(); ++place) {
        const auto& [window, units] = places_[place];
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
        const bool combo_box = IsComboBox(window);
        const int bottom = combo_box ? units.top + kDropDownUnitsHigh : units.bottom;
        SetWindowPos(window, nullptr, x(units.left), y(units.top), x(units.right) - x(units.left),
                     y(bottom) - y(units.top), SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

com::Owned<HFONT> MessageFont(UINT dpi) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi);
    return com::Owned<HFONT>(CreateFontIndirectW(&metrics.lfMessageFont));
}

com::Owned<HICON> LoadIconOfSize(int resource, int size) {
    return com::Owned<HICON>(
        static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource),
                                      IMAGE_ICON, size, size, LR_DEFAULTCOLOR)));
}

} // namespace win32
