#include "win32/cell_field.hpp"

#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "com/utf.hpp"
#include "text/text.hpp"
#include "win32/accessible_names.hpp"

namespace win32 {

CellField::CellField(HWND list, std::function<void(Wish)> on_wish)
    : list_(list), on_wish_(std::move(on_wish)) {}

void CellField::Open(const controls::TypedCell& cell, const std::string& name, const RECT& place) {
    SetFocus(list_);
    window_ = CreateWindowExW(0, WC_EDITW, com::Widen(cell.text).c_str(),
                              WS_CHILD | WS_BORDER | WS_CLIPSIBLINGS | ES_AUTOHSCROLL, 0, 0, 0, 0,
                              list_, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (window_ == nullptr) {
        return;
    }
    SetWindowSubclass(window_, WindowProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
    begun_ = cell;
    begun_.text = ReadText(window_); // as the field shows it
    AccessibleNames().SetName(window_, name);
    SendMessageW(window_, EM_SETLIMITTEXT, 0, 0);
    Place(place); // before the text is selected: without a width its beginning would scroll away
    SendMessageW(window_, EM_SETSEL, 0, -1);
    SetFocus(window_);
}

void CellField::Place(const RECT& cell) {
    RECT client;
    GetClientRect(list_, &client);
    const LONG right = std::min(cell.right, client.right);
    SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(GetWindowFont(list_)), TRUE);
    SetWindowPos(window_, HWND_TOP, cell.left, cell.top, right - cell.left,
                 cell.bottom - cell.top + 1, SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

controls::TypedCell CellField::Typed() const {
    controls::TypedCell typed = begun_;
    typed.text = text::WithLineFeeds(ReadText(window_));
    return typed;
}

std::optional<controls::TypedCell> CellField::Close() {
    if (window_ == nullptr) {
        return std::nullopt;
    }
    const controls::TypedCell typed = Typed();
    const bool has_changed = ReadText(window_) != begun_.text;
    const HWND window = std::exchange(window_, nullptr);
    if (GetFocus() == window) {
        SetFocus(list_);
    }
    AccessibleNames().Clear(window);
    DestroyWindow(window);
    return has_changed ? std::optional(typed) : std::nullopt;
}

// Whether the key is the field's, and not that of the text in it.
bool CellField::OnKey(WPARAM key, bool repeated) {
    const bool control = GetKeyState(VK_CONTROL) < 0;
    switch (key) {
    case VK_RETURN:
        if (!repeated) {
            on_wish_(control ? Wish::kForSelectedRows : Wish::kEnter);
        }
        return true;
    case VK_TAB:
        on_wish_(GetKeyState(VK_SHIFT) < 0 ? Wish::kPrevious : Wish::kNext);
        return true;
    case VK_ESCAPE:
        on_wish_(Wish::kCancel);
        return true;
    case 'A':
        if (control) {
            SendMessageW(window_, EM_SETSEL, 0, -1);
        }
        return control;
    default:
        return false;
    }
}

LRESULT CellField::OnMessage(UINT message, WPARAM w, LPARAM l) {
    const HWND window = window_; // a wish closes it
    switch (message) {
    case WM_GETDLGCODE:
        return DefSubclassProc(window, message, w, l) | DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
        if (OnKey(w, (HIWORD(l) & KF_REPEAT) != 0)) {
            return 0;
        }
        break;
    case WM_CHAR: {
        constexpr WPARAM kControlA = 1;
        if (w == kControlA || w == L'\r' || w == L'\n' || w == L'\t') {
            return 0; // the key has done it already
        }
        break;
    }
    case WM_KILLFOCUS: {
        const LRESULT result = DefSubclassProc(window, message, w, l);
        if (w != 0) { // not where another program has it: the person looks something up there
            on_wish_(Wish::kTake);
        }
        return result;
    }
    default:
        break;
    }
    return DefSubclassProc(window, message, w, l);
}

LRESULT CALLBACK CellField::WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                            UINT_PTR id, DWORD_PTR self) {
    auto& field = *reinterpret_cast<CellField*>(self);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, WindowProcedure, id);
        field.window_ = field.window_ == window ? nullptr : field.window_;
    } else if (window == field.window_) {
        return field.OnMessage(message, w, l);
    }
    return DefSubclassProc(window, message, w, l);
}

} // namespace win32
