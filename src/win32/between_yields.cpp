#include "win32/between_yields.hpp"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

#include "app/form_events.hpp"
#include "shell/explanations.hpp"
#include "shell/shell.hpp"

namespace win32 {

namespace {

constexpr ULONGLONG kLookEvery = 50;      // milliseconds, between calls
constexpr ULONGLONG kShowAfter = 30;      // of a call; texts that wait come by their timer before
constexpr ULONGLONG kGoBehindAfter = 500; // of rejections
constexpr ULONGLONG kTellAfter = 2000;    // of any wait

bool IsOfClass(HWND window, const wchar_t* name) {
    std::array<wchar_t, 32> found{};
    GetClassNameW(window, found.data(), static_cast<int>(found.size()));
    return lstrcmpiW(found.data(), name) == 0;
}

// Whether something is open that the escape key closes: a drag, a drop-down list, an edited name.
// A menu takes its keys itself.
bool EscapeIsWanted() {
    const HWND focus = GetFocus();
    const HWND parent = GetParent(focus);
    return GetCapture() != nullptr ||
           (IsOfClass(focus, WC_EDITW) && IsOfClass(parent, WC_LISTVIEWW)) ||
           (IsOfClass(parent, WC_COMBOBOXW) && ComboBox_GetDroppedState(parent) != FALSE);
}

struct Range {
    UINT first;
    UINT last;
    UINT kind; // QS_..., of what the queue says that it has
};
constexpr Range kKeys{WM_KEYFIRST, WM_KEYLAST, QS_KEY | QS_POSTMESSAGE};
// Messages that no handler runs for.
constexpr std::array kHarmless{
    Range{WM_PAINT, WM_PAINT, QS_PAINT},
    Range{WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK, QS_MOUSE},
    Range{WM_NCMOUSEHOVER, WM_NCMOUSEHOVER, QS_POSTMESSAGE},
    Range{WM_NCMOUSELEAVE, WM_NCMOUSELEAVE, QS_POSTMESSAGE},
    Range{WM_SYSCOMMAND, WM_SYSCOMMAND, QS_POSTMESSAGE},
    Range{WM_CLOSE, WM_CLOSE, QS_POSTMESSAGE},
    Range{WM_TIMER, WM_TIMER, QS_TIMER},
};

// Takes the next message of the range out of the queue. The end of the program comes whatever is
// asked for, and goes back. Looks first: where there is no such message, Wine takes the second
// press of a double click, which it only passes over, for the first one of another.
bool TakeMessage(MSG& message, const Range& range) {
    if (PeekMessageW(&message, nullptr, range.first, range.last, PM_NOREMOVE) == FALSE ||
        PeekMessageW(&message, nullptr, range.first, range.last, PM_REMOVE) == FALSE) {
        return false;
    }
    if (message.message == WM_QUIT) {
        PostQuitMessage(static_cast<int>(message.wParam));
        return false;
    }
    return true;
}

} // namespace

void BetweenYields::BeforeCall() {
    const ULONGLONG now = GetTickCount64();
    if (now >= next_look_) {
        Take();
        next_look_ = GetTickCount64() + kLookEvery;
    }
}

bool BetweenYields::Waiting(ULONGLONG milliseconds, bool rejected) {
    Take();
    if (rejected || milliseconds >= kShowAfter) {
        refresher_.StatusAndPointer();
    }
    if (rejected && !behind_ && milliseconds >= kGoBehindAfter) {
        GoBehindCatia();
    }
    if (!told_ && milliseconds >= kTellAfter) {
        told_ =
            status_bar_.ShowNotice(rejected ? shell::CatiaRejectsCalls() : shell::CatiaIsBusy());
    }
    return !form_.stop_requested;
}

void BetweenYields::WaitEnded() {
    if (std::exchange(told_, false)) {
        status_bar_.HideBalloon();
    }
    if (std::exchange(behind_, false)) {
        const bool on_top = form_.Check2.Value() == 1;
        SetWindowPos(window_, on_top ? HWND_TOPMOST : HWND_TOP, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

// The dialog that CATIA waits for can be answered.
void BetweenYields::GoBehindCatia() {
    platform::DesktopWindows& desktop = form_.ports.desktop_windows;
    HWND session = nullptr;
    desktop.EnumWindows([&](platform::WindowHandle window) {
        auto* const candidate = reinterpret_cast<HWND>(window);
        if (IsWindowVisible(candidate) != FALSE &&
            shell::IsWindowOfCatia(desktop, window, desktop.GetWindowTitle(window))) {
            session = candidate;
        }
        return session == nullptr ? 1 : 0;
    });
    if (session == nullptr) {
        return;
    }
    behind_ = true;
    constexpr UINT kInPlace = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
    SetWindowPos(window_, HWND_NOTOPMOST, 0, 0, 0, 0, kInPlace);
    SetWindowPos(window_, GetLastActivePopup(session), 0, 0, 0, 0, kInPlace);
}

void BetweenYields::Take() {
    if (taking_) {
        return;
    }
    const FlagWhile taking(taking_); // also for what comes without the queue, as one looks at it
    // Each look for messages is a round trip to Wine's server. What is left is not new any more.
    const UINT there = HIWORD(GetQueueStatus(QS_ALLINPUT));
    if (there == 0) {
        return;
    }
    if ((there & kKeys.kind) != 0) {
        TakeKeys();
    }
    constexpr int kMost = 64; // a window that never gets itself painted must not hold us here
    MSG message;
    for (const Range& range : kHarmless) {
        for (int i = 0; i < kMost && (there & range.kind) != 0 && TakeMessage(message, range);
             ++i) {
            DispatchMessageW(&message);
        }
    }
    if ((there & QS_MOUSEBUTTON) != 0) {
        ComeForwardWherePressed();
    }
}

// A press inside the window waits, but the window gets the keys from then on.
void BetweenYields::ComeForwardWherePressed() {
    MSG press;
    if (GetActiveWindow() == nullptr &&
        PeekMessageW(&press, nullptr, WM_LBUTTONDOWN, WM_MBUTTONDBLCLK, PM_NOREMOVE) != FALSE &&
        press.message != WM_QUIT && std::exchange(last_press_, press.time) != press.time) {
        SetForegroundWindow(window_);
    }
}

// All keys are taken, since the one that ends the action may stand behind others.
void BetweenYields::TakeKeys() {
    MSG message;
    while (TakeMessage(message, kKeys)) {
        if (TakeStopKey(message)) {
            continue;
        }
        if (message.message == WM_KEYDOWN && message.wParam == VK_PACKET) {
            // Windows keeps its character only until the next one comes: that is taken instead.
            TranslateMessage(&message);
            continue;
        }
        const bool with_alt = (HIWORD(message.lParam) & KF_ALTDOWN) != 0;
        if (message.message == WM_SYSKEYDOWN && message.wParam == VK_F4 && with_alt) {
            SendMessageW(GetAncestor(message.hwnd, GA_ROOT), WM_CLOSE, 0, 0); // or the preview
            continue;
        }
        Key& key = keys_.emplace_back();
        key.message = message;
        GetKeyboardState(key.pressed.data());
    }
}

bool BetweenYields::TakeStopKey(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_ESCAPE ||
        form_.running_handlers == 0 || (EscapeIsWanted() && !KeepsEscape())) {
        return false;
    }
    app::RequestStop(form_);
    return true;
}

bool BetweenYields::KeepsEscape() const {
    return std::ranges::any_of(keys_, [](const Key& key) {
        return key.message.message == WM_KEYDOWN && key.message.wParam == VK_ESCAPE;
    });
}

bool BetweenYields::HandleNext(const std::function<void(MSG&)>& handle) {
    if (!events_.empty()) {
        const std::function<void()> event = std::move(events_.front());
        events_.pop_front();
        run_event_(event);
        return true;
    }
    MSG message;
    if (keys_.empty()) {
        if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) == FALSE) {
            return false;
        }
        handle(message);
        return true;
    }
    // A click before the key may have moved the focus.
    const auto is_earlier = [](DWORD time, DWORD than) {
        return static_cast<std::int32_t>(time - than) <= 0;
    };
    if (PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE &&
        is_earlier(message.time, keys_.front().message.time)) {
        PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);
        handle(message);
        return true;
    }
    Key key = keys_.front();
    keys_.pop_front();
    if (const HWND focus = GetFocus(); focus != nullptr) {
        key.message.hwnd = focus;
    }
    std::array<BYTE, 256> pressed{};
    GetKeyboardState(pressed.data());
    SetKeyboardState(key.pressed.data());
    handle(key.message);
    // What it types comes before the next key.
    for (const Range& range : {Range{WM_CHAR, WM_DEADCHAR, QS_POSTMESSAGE},
                               Range{WM_SYSCHAR, WM_SYSDEADCHAR, QS_POSTMESSAGE}}) {
        while (TakeMessage(message, range)) {
            handle(message);
        }
    }
    SetKeyboardState(pressed.data());
    return true;
}

} // namespace win32
