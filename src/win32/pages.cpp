#include "win32/pages.hpp"

#include <uxtheme.h>

#include <string>

#include "com/utf.hpp"
#include "win32/resource.h"
#include "win32/system_library.hpp"

namespace win32 {

namespace {

// The tab control's background shows through a page.
void ShowTabsBehind(HWND page) {
    using EnableTexture = HRESULT(WINAPI*)(HWND, DWORD);
    static const auto enable_texture =
        SystemFunction<EnableTexture>(L"uxtheme.dll", "EnableThemeDialogTexture");
    if (enable_texture != nullptr) {
        enable_texture(page, ETDT_ENABLETAB);
    }
}

} // namespace

void LeaveDpiChangesToTheProgram(HWND dialog) {
    using SetBehavior = BOOL(WINAPI*)(HWND, int, int);
    constexpr int kDisableAll = 1;
    static const auto set_behavior =
        SystemFunction<SetBehavior>(L"user32.dll", "SetDialogDpiChangeBehavior");
    if (set_behavior != nullptr) { // since Windows 10 1703
        set_behavior(dialog, kDisableAll, kDisableAll);
    }
}

Pages::Pages(HWND main_window, const controls::TabControl& tab_control, DLGPROC procedure,
             LPARAM owner, Layout& layout)
    : main_window_(main_window), tabs_(GetDlgItem(main_window, ID_SSTab1)), procedure_(procedure),
      owner_(owner), layout_(layout), count_(tab_control.Captions().size()) {
    int index = 0;
    for (const std::string& caption : tab_control.Captions()) {
        std::wstring text = com::Widen(caption);
        TCITEMW tab{};
        tab.mask = TCIF_TEXT;
        tab.pszText = text.data();
        SendMessageW(tabs_, TCM_INSERTITEMW, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&tab));
        ++index;
    }
    Create(0);
    ShowWindow(pages_.front(), SW_SHOW);
}

void Pages::CreateOthers() {
    for (std::size_t page = pages_.size(); page < count_; ++page) {
        Create(page);
    }
}

void Pages::Create(std::size_t page) {
    const auto index = static_cast<int>(page);
    HWND window = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_PAGE1 + index),
                                     main_window_, procedure_, owner_);
    SetWindowLongPtrW(window, GWLP_ID, ID_PAGE1 + index);
    LeaveDpiChangesToTheProgram(window);
    ShowTabsBehind(window);
    RECT units{0, 0, 4, 8};
    MapDialogRect(window, &units);
    RECT client;
    GetClientRect(window, &client);
    layout_.Add(window,
                {kPageUnits.x, kPageUnits.y, kPageUnits.x + MulDiv(client.right, 4, units.right),
                 kPageUnits.y + MulDiv(client.bottom, 8, units.bottom)});
    layout_.Collect(window);
    // In front of the tab control. The tab order is a ring: the page still follows the tabs.
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    pages_.push_back(window);
}

HWND Pages::Control(int id) const {
    HWND control = GetDlgItem(main_window_, id);
    for (auto page = pages_.begin(); control == nullptr && page != pages_.end(); ++page) {
        control = GetDlgItem(*page, id);
    }
    return control;
}

void Pages::Show(std::size_t page) {
    if (page == shown_ || page >= pages_.size()) {
        return;
    }
    ShowWindow(pages_[page], SW_SHOW);
    ShowWindow(pages_[shown_], SW_HIDE);
    shown_ = page;
    SendMessageW(tabs_, TCM_SETCURSEL, page, 0);
}

void Pages::FocusShown() const {
    const HWND first = GetNextDlgTabItem(pages_[shown_], nullptr, FALSE);
    if (first != nullptr && GetFocus() != tabs_) {
        SendMessageW(main_window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
    }
}

} // namespace win32
