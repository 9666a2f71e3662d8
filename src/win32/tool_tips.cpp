#include "win32/tool_tips.hpp"

#include <commctrl.h>

#include "com/utf.hpp"
#include "win32/layout.hpp"

namespace win32 {

namespace {

constexpr int kWidestTip = 360; // design pixels

constexpr UINT_PTR kInFront = 1; // the subclass

LRESULT CALLBACK TipProcedure(HWND tip, UINT message, WPARAM w, LPARAM l, UINT_PTR, DWORD_PTR) {
    const LRESULT result = DefSubclassProc(tip, message, w, l);
    if (message == WM_WINDOWPOSCHANGED &&
        (reinterpret_cast<const WINDOWPOS*>(l)->flags & SWP_SHOWWINDOW) != 0) {
        SetWindowPos(tip, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    } else if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(tip, TipProcedure, kInFront);
    }
    return result;
}

HWND CreateTip(DWORD style) {
    const HWND tip = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                     WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX | style, 0, 0, 0, 0,
                                     nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    KeepInFront(tip);
    return tip;
}

TTTOOLINFOW Tool(HWND window, UINT flags, std::wstring& text, UINT_PTR part = 0) {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = flags;
    tool.hwnd = window;
    tool.uId = (flags & TTF_IDISHWND) != 0 ? reinterpret_cast<UINT_PTR>(window) : part + 1;
    tool.lpszText = text.data();
    return tool;
}

// The part of its parent that a control stands in.
TTTOOLINFOW PlaceOf(HWND control, std::wstring& text) {
    const HWND parent = GetParent(control);
    TTTOOLINFOW tool = Tool(parent, TTF_SUBCLASS | TTF_TRANSPARENT, text,
                            static_cast<UINT_PTR>(GetDlgCtrlID(control)));
    GetWindowRect(control, &tool.rect);
    MapWindowPoints(HWND_DESKTOP, parent, reinterpret_cast<POINT*>(&tool.rect), 2);
    return tool;
}

LPARAM Pointer(TTTOOLINFOW& tool) {
    return reinterpret_cast<LPARAM>(&tool);
}

} // namespace

void KeepInFront(HWND tip) {
    SetWindowLongPtrW(tip, GWLP_HWNDPARENT, 0);
    SetWindowSubclass(tip, TipProcedure, kInFront, 0);
}

ToolTip::~ToolTip() {
    if (tip_ != nullptr) {
        DestroyWindow(tip_);
    }
}

void ToolTip::Show(HWND window, std::string_view text, const std::optional<RECT>& area,
                   std::size_t part) {
    Shown& shown = shown_.at(part);
    const RECT rect = area && !text.empty() ? *area : RECT{};
    if (text == shown.text && EqualRect(&rect, &shown.area) != FALSE) {
        return;
    }
    shown = {std::string(text), rect};
    const auto tool_of = [&](std::size_t of_part, std::wstring& wide) {
        TTTOOLINFOW tool = Tool(window, TTF_SUBCLASS | (area ? 0U : TTF_IDISHWND), wide, of_part);
        tool.rect = shown_.at(of_part).area;
        return tool;
    };
    if (tip_ == nullptr) {
        tip_ = CreateTip(0);
        SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, Scaled(kWidestTip, LayoutDpi()));
        for (std::size_t each = 0; each < (area ? shown_.size() : 1); ++each) {
            std::wstring nothing;
            TTTOOLINFOW tool = tool_of(each, nothing);
            SendMessageW(tip_, TTM_ADDTOOLW, 0, Pointer(tool));
        }
    }
    std::wstring wide = com::Widen(text);
    TTTOOLINFOW tool = tool_of(part, wide);
    SendMessageW(tip_, TTM_NEWTOOLRECTW, 0, Pointer(tool));
    SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, Pointer(tool));
    const bool any = !shown_[0].text.empty() || !shown_[1].text.empty();
    SendMessageW(tip_, TTM_ACTIVATE, any ? TRUE : FALSE, 0);
}

ControlTips::~ControlTips() {
    if (tip_ != nullptr) {
        DestroyWindow(tip_);
    }
}

void ControlTips::Add(HWND control, std::string_view text) {
    if (tip_ == nullptr) {
        constexpr LPARAM kToRead = 20000; // milliseconds
        tip_ = CreateTip(0);
        SendMessageW(tip_, TTM_SETDELAYTIME, TTDT_AUTOPOP, kToRead);
    }
    std::wstring wide = com::Widen(text);
    TTTOOLINFOW tool = Tool(control, TTF_SUBCLASS | TTF_IDISHWND | TTF_TRANSPARENT, wide);
    SendMessageW(tip_, TTM_ADDTOOLW, 0, Pointer(tool));
    if (IsWindowEnabled(control) == FALSE) {
        // The mouse does not see it; its parent's does.
        TTTOOLINFOW place = PlaceOf(control, wide);
        SendMessageW(tip_, TTM_ADDTOOLW, 0, Pointer(place));
        controls_.push_back(control);
    }
}

void ControlTips::Place() const {
    for (const HWND control : controls_) {
        std::wstring nothing;
        TTTOOLINFOW place = PlaceOf(control, nothing);
        SendMessageW(tip_, TTM_NEWTOOLRECTW, 0, Pointer(place));
    }
}

Balloon::~Balloon() {
    if (tip_ != nullptr) {
        DestroyWindow(tip_);
    }
}

void Balloon::Show(HWND window, std::string_view text, bool is_error, POINT at) {
    std::wstring wide = com::Widen(text);
    window_ = window;
    if (tip_ == nullptr) {
        tip_ = CreateTip(TTS_BALLOON);
        std::wstring nothing;
        TTTOOLINFOW tool = Tool(window_, TTF_TRACK | TTF_ABSOLUTE, nothing);
        SendMessageW(tip_, TTM_ADDTOOLW, 0, Pointer(tool));
    }
    TTTOOLINFOW tool = Tool(window_, TTF_TRACK | TTF_ABSOLUTE, wide);
    SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, Scaled(kWidestTip, LayoutDpi()));
    SendMessageW(tip_, TTM_SETTITLEW, is_error ? TTI_ERROR : TTI_INFO,
                 reinterpret_cast<LPARAM>(is_error ? L"Nedokončeno" : L"Dorvak"));
    SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, Pointer(tool));
    Move(at);
    SendMessageW(tip_, TTM_TRACKACTIVATE, TRUE, Pointer(tool));
    shown_ = true;
}

void Balloon::Move(POINT at) const {
    SendMessageW(tip_, TTM_TRACKPOSITION, 0, MAKELPARAM(at.x, at.y));
}

void Balloon::Hide() {
    if (shown_) {
        shown_ = false;
        std::wstring nothing;
        TTTOOLINFOW tool = Tool(window_, TTF_TRACK | TTF_ABSOLUTE, nothing);
        SendMessageW(tip_, TTM_TRACKACTIVATE, FALSE, Pointer(tool));
    }
}

} // namespace win32
