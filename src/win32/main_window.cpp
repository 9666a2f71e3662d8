#include "win32/main_window.hpp"

#include <windowsx.h>

#include <algorithm>
#include <array>

#include "app/form_events.hpp"
#include "com/utf.hpp"
#include "win32/clipboard.hpp"
#include "win32/file_dialogs.hpp"
#include "win32/popup_menu.hpp"
#include "win32/resource.h"

namespace win32 {

namespace {

constexpr int kDesignHeight = 7155;     // twips, title bar included
constexpr int kDesignClientWidth = 693; // design pixels

constexpr std::size_t kExportPage = 2;

constexpr UINT kDestroyMessage = WM_APP + 1;
constexpr UINT kOtherPagesMessage = WM_APP + 2;
constexpr UINT_PTR kRecoveryTimer = 1;

// How long a yield handles messages when they keep coming.
constexpr ULONGLONG kLongestYield = 200; // milliseconds

MainWindow* WindowOf(HWND window) {
    return reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

HWND CreateMainWindow(WNDPROC procedure) {
    WNDCLASSEXW window_class{};
    window_class.cbSize = sizeof window_class;
    window_class.lpfnWndProc = procedure;
    window_class.cbWndExtra = DLGWINDOWEXTRA;
    window_class.hInstance = GetModuleHandleW(nullptr);
    window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    window_class.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    window_class.lpszClassName = com::kDorvakWindow;
    RegisterClassExW(&window_class);
    const HWND window = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_FORM1),
                                           nullptr, nullptr, 0);
    LeaveDpiChangesToTheProgram(window);
    return window;
}

// The main window's places, before its pages add theirs.
Layout CollectLayout(HWND window) {
    Layout layout;
    layout.Collect(window);
    return layout;
}

bool IsField(HWND window) {
    std::array<wchar_t, 16> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return lstrcmpiW(name.data(), WC_EDITW) == 0;
}

// Whether the key has been held since the message before.
bool IsRepeated(const MSG& message) {
    return (HIWORD(message.lParam) & KF_REPEAT) != 0;
}

// Whether a dialog would press a button for this key, and ours does not: for a key that is held,
// once more, and for a letter without Alt.
bool IsNoPress(const MSG& message) {
    const auto wants = [&message](LRESULT what) {
        return (SendMessageW(message.hwnd, WM_GETDLGCODE, 0, 0) & what) != 0;
    };
    switch (message.message) {
    case WM_SYSCHAR:
        return IsRepeated(message);
    case WM_CHAR:
        return !wants(DLGC_WANTCHARS | DLGC_WANTALLKEYS);
    case WM_KEYDOWN:
        return message.wParam == VK_RETURN && IsRepeated(message) && !wants(DLGC_WANTALLKEYS);
    default:
        return false;
    }
}

int DesignWidth(HWND window, UINT monitor_dpi) { // in twips
    RECT frame{0, 0, Scaled(kDesignClientWidth, LayoutDpi()), 0};
    AdjustWindowRectExForDpi(&frame, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)),
                             FALSE, static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)),
                             monitor_dpi);
    return Twips(frame.right - frame.left, LayoutDpi());
}

BOOL CALLBACK PassOn(HWND window, LPARAM message) {
    SendMessageW(window, static_cast<UINT>(message), 0, 0);
    return TRUE;
}

} // namespace

MainWindow::MainWindow(controls::Form1& form, const app::RecoveryPace& pace)
    : form_(form), pace_(pace), window_(CreateMainWindow(WindowProcedure)),
      monitor_dpi_(GetDpiForWindow(window_)), layout_(CollectLayout(window_)),
      pages_(window_, form.SSTab1, PageProcedure, reinterpret_cast<LPARAM>(this), layout_),
      views_(form, pages_, [this](const auto& event) { RunEvent(event); }),
      taskbar_button_(window_), refresher_(form, window_, pages_, views_, taskbar_button_),
      between_yields_(form, window_, views_.StatusBar(), refresher_,
                      [this](const auto& event) { RunAtOnce(event); }),
      preview_(
          form, window_, [this](const auto& event) { RunEvent(event); },
          [this](const tables::Hint& hint, bool put_right) { UseHint(hint, put_right); }) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    form_.hWnd = reinterpret_cast<platform::WindowHandle>(window_);
    NoteMonitorDpi(monitor_dpi_);
    laid_out_dpi_ = LayoutDpi();
    form_.Width = DesignWidth(window_, monitor_dpi_);
    form_.Height = kDesignHeight;
    form_.show_now = [this] { refresher_.StatusAndPointer(); };
    form_.show_soon = [this] { refresher_.StatusSoon(); };
    form_.before_call = [this] { between_yields_.BeforeCall(); };
    form_.show_popup = [this](controls::PopupMenu& menu, controls::PopupPlace place) {
        app::KeepRecoveryNow(form_);
        ShowPopupMenu(window_, form_, menu, PopupAnchor(place));
    };
    form_.copy_text = [this](const std::string& text) { return PutOnClipboard(window_, text); };
    form_.pasted_text = [this] { return CellsOnClipboard(window_); };
    form_.show_save_dialog = [this](controls::FileDialog& dialog) {
        app::KeepRecoveryNow(form_);
        return ShowSaveDialog(window_, dialog);
    };
    form_.show_open_dialog = [this](controls::FileDialog& dialog) {
        app::KeepRecoveryNow(form_);
        return ShowOpenDialog(window_, dialog);
    };
    refresher_.Place();
    LayOut();
}

MainWindow::~MainWindow() {
    form_.show_now = nullptr;
    form_.show_soon = nullptr;
    form_.before_call = nullptr;
    form_.show_popup = nullptr;
    form_.copy_text = nullptr;
    form_.pasted_text = nullptr;
    form_.show_save_dialog = nullptr;
    form_.show_open_dialog = nullptr;
    if (window_ != nullptr) {
        DestroyWindow(window_);
    }
}

// The collapsed window shows the upper part of what stands at full height.
void MainWindow::PlaceFrom(std::size_t first) const {
    RECT client;
    RECT outer;
    GetClientRect(window_, &client);
    GetWindowRect(window_, &outer);
    const int frame = outer.bottom - outer.top - client.bottom;
    layout_.Place(client.right, Pixels(kDesignHeight, laid_out_dpi_) - frame, font_.get(), first);
}

// All pages but the first one, when the window has been painted.
void MainWindow::MakeOtherPages() {
    const std::size_t placed = layout_.Count();
    const std::size_t made = views_.All().size();
    pages_.CreateOthers();
    views_.MakeOthers();
    if (IsIconic(window_) != FALSE) {
        laid_out_dpi_ = 0; // there is no room to lay them out in: when it is restored
    } else {
        PlaceFrom(placed);
        views_.SetDpi(laid_out_dpi_, made);
    }
    refresher_.Complete();
    views_.Explain();
}

// Brings the window to the size and the layout of the monitor that it stands on and of the person's
// text size: a minimised one when it is restored. A window that the person is moving is left where
// the mouse holds it.
void MainWindow::Rescale(const std::optional<POINT>& corner) {
    NoteMonitorDpi(monitor_dpi_);
    if (IsIconic(window_) != FALSE || LayoutDpi() == laid_out_dpi_) {
        return;
    }
    laid_out_dpi_ = LayoutDpi();
    RECT place;
    GetWindowRect(window_, &place);
    SetWindowPos(window_, nullptr, corner ? corner->x : place.left, corner ? corner->y : place.top,
                 Pixels(form_.Width, laid_out_dpi_), Pixels(form_.Height, laid_out_dpi_),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    LayOut();
    if (!person_moves_it_) {
        MoveIn();
    }
}

// Not while it is minimised: when it is restored.
void MainWindow::MoveIn() {
    may_be_outside_ = IsIconic(window_) != FALSE;
    if (may_be_outside_) {
        return;
    }
    RECT place;
    GetWindowRect(window_, &place);
    const RECT inside = MovedIn(place);
    if (inside.left != place.left || inside.top != place.top) {
        SetWindowPos(window_, nullptr, inside.left, inside.top, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void MainWindow::LayOut() {
    const com::Owned<HFONT> font_before = std::exchange(font_, MessageFont(monitor_dpi_));
    PlaceFrom(0);
    views_.SetDpi(laid_out_dpi_);
    // Depth, part number and paths of the structure text under one another.
    const std::array<UINT, 4> tab_stops{12, 80, 240, 400};
    SendMessageW(pages_.Control(ID_Text1), EM_SETTABSTOPS, tab_stops.size(),
                 reinterpret_cast<LPARAM>(tab_stops.data()));

    const auto icon = [this](int metric) {
        return LoadIconOfSize(IDI_DORVAK, GetSystemMetricsForDpi(metric, monitor_dpi_));
    };
    com::Owned<HICON> large_icon = icon(SM_CXICON);
    com::Owned<HICON> small_icon = icon(SM_CXSMICON);
    SendMessageW(window_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large_icon.get()));
    SendMessageW(window_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small_icon.get()));
    large_icon_ = std::move(large_icon);
    small_icon_ = std::move(small_icon);
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void MainWindow::Show(bool owns_data_folder) {
    app::Form_Load(form_);
    loaded_ = true;
    refresher_.Complete();
    ShowWindow(window_, SW_SHOWNORMAL);
    UpdateWindow(window_);
    preview_.Refresh();
    // Before anything that the person does from now on.
    PostMessageW(window_, kOtherPagesMessage, 0, 0);
    if (owns_data_folder) {
        app::OfferRecovery(form_);
        if (window_ == nullptr) {
            return; // closed under the question
        }
        refresher_.Complete();
        preview_.Refresh();
    }
    SetTimer(window_, kRecoveryTimer, static_cast<UINT>(pace_.idle / 4), nullptr);
}

int MainWindow::Run() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        HandleMessage(message);
        while (between_yields_.HasKept() &&
               between_yields_.HandleNext([this](MSG& next) { HandleMessage(next); })) {
        }
    }
    return static_cast<int>(message.wParam);
}

app::Focus MainWindow::FocusOf(HWND window) const {
    return window == pages_.Control(ID_ListView1)   ? app::Focus::kPartsList
           : window == pages_.Control(ID_ListView3) ? app::Focus::kSheetList
           : preview_.Holds(window)                 ? app::Focus::kPreview
           : IsField(window)                        ? app::Focus::kField
                                                    : app::Focus::kElsewhere;
}

// An enter key that leads to another control writes nothing there while it is still held.
bool MainWindow::IsHeldElsewhere(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN) {
        return false;
    }
    if (!IsRepeated(message)) {
        enter_pressed_in_ = message.hwnd;
    }
    return message.hwnd != enter_pressed_in_;
}

// Only while nothing modal is open: boxes, menus and dialogs take their keys themselves.
bool MainWindow::TakeKey(const MSG& message) {
    if (message.message != WM_KEYDOWN) {
        return false;
    }
    const auto pressed = [](int key) { return GetKeyState(key) < 0; };
    const app::Key key{.code = static_cast<int>(message.wParam),
                       .control = pressed(VK_CONTROL),
                       .shift = pressed(VK_SHIFT),
                       .alt = pressed(VK_MENU),
                       .repeated = IsRepeated(message)};
    const auto action = app::ActionOfKey(form_, key, FocusOf(message.hwnd));
    if (!action) {
        return false;
    }
    const std::size_t page = form_.SSTab1.Tab();
    RunEvent(action);
    if (window_ != nullptr && form_.SSTab1.Tab() != page) {
        pages_.FocusShown();
    }
    return true;
}

// What the person has typed since the last event is kept too; while an action runs, a field's text
// waits for the action's next yield.
void MainWindow::KeepRecovery() {
    if (form_.running_handlers == 0) {
        refresher_.Pull();
        preview_.Refresh();
    }
    app::KeepRecovery(form_, static_cast<long long>(GetTickCount64()), pace_);
}

// The preview follows each letter; while an action runs, the text waits for its next yield.
void MainWindow::FollowTyping(View& configuration) {
    if (loaded_ && !form_.unloaded && form_.preview.open && form_.running_handlers == 0) {
        configuration.Pull();
        preview_.Refresh();
    }
}

// The configuration's own undo takes back what is put right.
void MainWindow::UseHint(const tables::Hint& hint, bool put_right) {
    const HWND configuration = pages_.Control(ID_Text2);
    const auto units = [](std::string_view text) {
        return static_cast<WPARAM>(com::Widen(text).size());
    };
    const std::string& text = form_.Text2.Text();
    const WPARAM from = units(std::string_view(text).substr(0, hint.offset));
    const WPARAM to = from + units(std::string_view(text).substr(hint.offset, hint.length));
    if (!put_right) {
        // A collapsed window comes back to its full height with a page.
        if (form_.SSTab1.Tab() != kExportPage || form_.Command18.Caption() != "min") {
            form_.SSTab1.UserClick(kExportPage);
        }
        refresher_.Complete();
        SetForegroundWindow(window_);
        SetFocus(configuration);
    }
    SendMessageW(configuration, EM_SETSEL, from, static_cast<LPARAM>(to));
    SendMessageW(configuration, EM_SCROLLCARET, 0, 0);
    if (put_right && hint.replacement) {
        SendMessageW(configuration, EM_REPLACESEL, TRUE,
                     reinterpret_cast<LPARAM>(com::Widen(*hint.replacement).c_str()));
    }
}

void MainWindow::HandleMessage(MSG& message) {
    const bool is_press =
        (message.message >= WM_LBUTTONDOWN && message.message <= WM_MBUTTONDBLCLK) ||
        (message.message >= WM_NCLBUTTONDOWN && message.message <= WM_NCMBUTTONDBLCLK);
    if (is_press && window_ != nullptr) {
        views_.StatusBar().HideBalloon();
    }
    if (window_ != nullptr &&
        (between_yields_.TakeStopKey(message) || IsNoPress(message) || IsHeldElsewhere(message) ||
         TakeKey(message) || preview_.TakeMessage(message))) {
        return;
    }
    if (window_ == nullptr || IsDialogMessageW(window_, &message) == FALSE) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void MainWindow::DoEvents() {
    if (!loaded_ || window_ == nullptr) {
        return;
    }
    refresher_.Frugal();
    const ULONGLONG deadline = GetTickCount64() + kLongestYield;
    bool quits = false;
    const auto handle = [&](MSG& message) {
        quits = message.message == WM_QUIT;
        if (quits) {
            PostQuitMessage(static_cast<int>(message.wParam));
        } else {
            HandleMessage(message);
        }
    };
    while (!quits && !form_.stop_requested && GetTickCount64() <= deadline &&
           between_yields_.HandleNext(handle)) {
    }
    refresher_.Pull();
    KeepRecovery();
}

void MainWindow::RunEvent(const std::function<void()>& event) {
    if (between_yields_.Now()) {
        between_yields_.Keep(event);
    } else {
        RunAtOnce(event);
    }
}

void MainWindow::RunAtOnce(const std::function<void()>& event) {
    if (!loaded_ || form_.unloaded) {
        return;
    }
    for (const auto& view : views_.All()) {
        view->EndEdit();
    }
    refresher_.Pull();
    event();
    if (form_.unloaded) {
        // Not now: the control whose event this is may still be at work. An action that runs ends
        // first.
        if (form_.running_handlers == 0) {
            PostMessageW(window_, kDestroyMessage, 0, 0);
        }
    } else {
        refresher_.Complete();
        preview_.Refresh();
    }
}

// What a popup menu opens below, on the screen.
RECT MainWindow::PopupAnchor(controls::PopupPlace place) const {
    if (place == controls::PopupPlace::kCurrentRow) {
        if (const View* view = views_.Of(GetFocus())) {
            return view->MenuAnchor();
        }
    }
    POINT mouse;
    GetCursorPos(&mouse);
    return {mouse.x, mouse.y, mouse.x, mouse.y};
}

LRESULT CALLBACK MainWindow::WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (MainWindow* self = WindowOf(window)) {
        if (const auto result = self->OnMessage(message, w, l)) {
            return *result;
        }
    }
    return DefDlgProcW(window, message, w, l);
}

INT_PTR CALLBACK MainWindow::PageProcedure(HWND page, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(page, GWLP_USERDATA, l);
        return FALSE; // the focus stays where it is
    }
    if (message == WM_CLOSE) {
        return TRUE; // a multi-line text sends this for the escape key
    }
    MainWindow* self = WindowOf(page);
    if (self == nullptr || !self->loaded_) {
        return FALSE;
    }
    if (message == WM_NEXTDLGCTL && LOWORD(l) == 0) {
        // The tab key in a text of many lines, which asks its page: that would go round the page.
        SendMessageW(self->window_, message, w, l);
        return TRUE;
    }
    if (message == WM_COMMAND) {
        self->OnCommand(HIWORD(w), LOWORD(w), reinterpret_cast<HWND>(l));
        return TRUE;
    }
    if (message == WM_NOTIFY) {
        SetWindowLongPtrW(page, DWLP_MSGRESULT, self->OnNotify(*reinterpret_cast<NMHDR*>(l)));
        return TRUE;
    }
    return FALSE;
}

std::optional<LRESULT> MainWindow::OnMessage(UINT message, WPARAM w, LPARAM l) {
    switch (message) {
    case WM_COMMAND:
        OnCommand(HIWORD(w), LOWORD(w), reinterpret_cast<HWND>(l));
        return 0;
    case WM_NOTIFY:
        return OnNotify(*reinterpret_cast<NMHDR*>(l));
    case WM_SETCURSOR:
        if (form_.Pointer == controls::MousePointer::kHourglass && LOWORD(l) == HTCLIENT) {
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        return std::nullopt;
    case WM_WINDOWPOSCHANGED:
        if ((reinterpret_cast<const WINDOWPOS*>(l)->flags & SWP_NOZORDER) == 0) {
            preview_.FollowMainWindow();
        }
        return std::nullopt;
    case WM_SIZE:
        if (w == SIZE_MINIMIZED) {
            preview_.Refresh();
        } else {
            Rescale();
            if (may_be_outside_) {
                MoveIn();
            }
            RunEvent([this] { app::Form_Resize(form_); });
        }
        views_.StatusBar().PlaceBalloon();
        return std::nullopt;
    case WM_MOVE:
        views_.StatusBar().PlaceBalloon();
        return std::nullopt;
    case WM_DPICHANGED: {
        const RECT& suggested = *reinterpret_cast<const RECT*>(l);
        monitor_dpi_ = HIWORD(w);
        Rescale(POINT{suggested.left, suggested.top});
        return 0;
    }
    case WM_SETTINGCHANGE:
        if (w == SPI_SETNONCLIENTMETRICS) {
            laid_out_dpi_ = 0; // fonts and the title bar may be others
        }
        Rescale();
        return std::nullopt;
    case WM_SYSCOLORCHANGE:
        EnumChildWindows(window_, PassOn, static_cast<LPARAM>(message));
        RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        return std::nullopt;
    case WM_GETMINMAXINFO: { // of its full height also where the screen is lower
        POINT& most = reinterpret_cast<MINMAXINFO*>(l)->ptMaxTrackSize;
        most.x = std::max<LONG>(most.x, Pixels(form_.Width, LayoutDpi()));
        most.y = std::max<LONG>(most.y, Pixels(kDesignHeight, LayoutDpi()));
        return 0;
    }
    case WM_DISPLAYCHANGE: // a monitor may be gone
        MoveIn();
        return std::nullopt;
    case WM_ENTERSIZEMOVE:
    case WM_EXITSIZEMOVE:
        person_moves_it_ = message == WM_ENTERSIZEMOVE;
        return std::nullopt;
    case WM_CLOSE:
        RunAtOnce([this] { app::RequestClose(form_); });
        return 0;
    case WM_QUERYENDSESSION:
        return TRUE;
    case WM_ENDSESSION:
        if (w != FALSE) {
            RunAtOnce([this] { app::EndSession(form_); });
        }
        return 0;
    case WM_TIMER:
        if (w == kStatusTimer) {
            refresher_.StatusAndPointer();
        } else if (w == kRecoveryTimer && !form_.unloaded) {
            KeepRecovery();
        }
        return 0;
    case WM_ACTIVATE:
        taskbar_button_.Show(form_.StatusBar1);
        return std::nullopt;
    case kOtherPagesMessage:
        MakeOtherPages();
        return 0;
    case kDestroyMessage:
        DestroyWindow(window_);
        return 0;
    case WM_NCDESTROY:
        preview_.Destroy();
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        window_ = nullptr;
        PostQuitMessage(0);
        return std::nullopt;
    default:
        if (taskbar_button_.TakeMessage(message)) {
            return 0;
        }
        return std::nullopt;
    }
}

void MainWindow::OnCommand(UINT code, int id, HWND control) {
    if (id == IDCANCEL) { // the escape key
        for (const auto& view : views_.All()) {
            view->CancelDrag();
        }
    } else if (View* view = views_.Of(control)) {
        view->OnCommand(code);
        if (id == ID_Text2 && code == EN_CHANGE) {
            FollowTyping(*view);
        }
    }
}

LRESULT MainWindow::OnNotify(NMHDR& header) {
    View* view = views_.Of(header.hwndFrom);
    return view != nullptr ? view->OnNotify(header) : 0;
}

} // namespace win32
