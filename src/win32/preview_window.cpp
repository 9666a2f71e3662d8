#include "win32/preview_window.hpp"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <array>

#include "com/utf.hpp"
#include "win32/accessible_names.hpp"
#include "win32/resource.h"

namespace win32 {

namespace {

// All in design pixels.
constexpr int kUsualWidth = 470;
constexpr int kUsualHeight = 520;
constexpr int kLeastWidth = 360;
constexpr int kLeastHeight = 340;
constexpr int kGap = 6;
constexpr int kButtonWidth = 80;
constexpr int kCheckBoxWidth = 160;

constexpr int kSummaryLines = 3;
constexpr int kHintLines = 5;

constexpr const char* kCurrentRowTip =
    "Ukáže tabulku, kterou by z aktuálního řádku udělalo Export 1 tabulky.";
constexpr const char* kPutRightTip =
    "Opraví místo, o kterém mluví vybraná rada; Ctrl+Z v nastavení to vrátí.";

PreviewWindow* PreviewOf(HWND window) {
    return reinterpret_cast<PreviewWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

bool IsTopmost(HWND window) {
    return (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

HWND CreateChild(HWND parent, const wchar_t* window_class, const wchar_t* text, DWORD style,
                 int id) {
    return CreateWindowExW((style & WS_BORDER) != 0 ? WS_EX_CLIENTEDGE : 0, window_class, text,
                           WS_CHILD | WS_VISIBLE | (style & ~static_cast<DWORD>(WS_BORDER)), 0, 0,
                           0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                           GetModuleHandleW(nullptr), nullptr);
}

int LineHeight(HWND window, HFONT font) {
    const HDC screen = GetDC(window);
    const HGDIOBJ before = SelectObject(screen, font);
    TEXTMETRICW metrics{};
    GetTextMetricsW(screen, &metrics);
    SelectObject(screen, before);
    ReleaseDC(window, screen);
    return metrics.tmHeight;
}

} // namespace

PreviewWindow::PreviewWindow(controls::Form1& form, HWND main_window, RunEvent run_event,
                             UseHint use_hint)
    : form_(form), main_window_(main_window), run_event_(std::move(run_event)),
      use_hint_(std::move(use_hint)) {}

PreviewWindow::~PreviewWindow() {
    Destroy();
}

void PreviewWindow::Destroy() {
    if (window_ != nullptr) {
        tips_.reset();
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        canvas_.reset();
        DestroyWindow(std::exchange(window_, nullptr));
    }
}

void PreviewWindow::Create() {
    static const ATOM kRegistered = [] {
        WNDCLASSEXW window_class{};
        window_class.cbSize = sizeof window_class;
        window_class.lpfnWndProc = WindowProcedure;
        window_class.hInstance = GetModuleHandleW(nullptr);
        window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        window_class.hIcon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_DORVAK));
        window_class.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        window_class.lpszClassName = kPreviewWindowClass;
        return RegisterClassExW(&window_class);
    }();
    static_cast<void>(kRegistered);
    RECT main;
    GetWindowRect(main_window_, &main);
    const controls::Preview& before = form_.preview;
    const bool stood = before.width > 0;
    window_ = CreateWindowExW(WS_EX_CONTROLPARENT, kPreviewWindowClass, L"Náhled tabulky",
                              (WS_OVERLAPPEDWINDOW & ~static_cast<DWORD>(WS_MINIMIZEBOX)) |
                                  WS_CLIPCHILDREN,
                              stood ? before.left : main.right, stood ? before.top : main.top, 1, 1,
                              nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    monitor_dpi_ = GetDpiForWindow(window_);
    CreateControls();
    const int width =
        stood ? win32::Pixels(before.width, LayoutDpiOf(monitor_dpi_)) : Pixels(kUsualWidth);
    const int height =
        stood ? win32::Pixels(before.height, LayoutDpiOf(monitor_dpi_)) : Pixels(kUsualHeight);
    RECT place;
    GetWindowRect(window_, &place);
    RECT inside = MovedIn({place.left, place.top, place.left + width, place.top + height});
    if (!stood && inside.left < main.right) { // it would cover the buttons
        const RECT left = MovedIn({main.left - width, main.top, main.left, main.top + height});
        inside = left.right <= main.left ? left : inside;
    }
    SetWindowPos(window_, nullptr, inside.left, inside.top, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    monitor_dpi_ = GetDpiForWindow(window_);
    SetFont();
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    LayOut();
}

void PreviewWindow::CreateControls() {
    canvas_ = std::make_unique<PreviewCanvas>(window_, ID_Preview_Canvas);
    summary_ = CreateChild(window_, WC_STATICW, L"", SS_LEFT | SS_NOPREFIX, ID_Preview_Summary);
    current_row_only_ = CreateChild(window_, WC_BUTTONW, L"&Jen aktuální řádek",
                                    BS_AUTOCHECKBOX | WS_TABSTOP, ID_Preview_CurrentRow);
    hints_list_ = CreateChild(window_, WC_LISTBOXW, L"",
                              LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_HSCROLL |
                                  WS_TABSTOP | WS_BORDER,
                              ID_Preview_Hints);
    put_right_ = CreateChild(window_, WC_BUTTONW, L"&Opravit",
                             BS_PUSHBUTTON | WS_TABSTOP | WS_DISABLED, ID_Preview_PutRight);
    SetWindowSubclass(hints_list_, HintsProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
    Button_SetCheck(current_row_only_,
                    form_.preview.current_row_only ? BST_CHECKED : BST_UNCHECKED);
    const AccessibleNames names;
    names.SetName(canvas_->Window(), "Náhled tabulky");
    names.SetName(hints_list_, "Rady k nastavení tabulky");
    tips_ = std::make_unique<ControlTips>();
    tips_->Add(current_row_only_, kCurrentRowTip);
    tips_->Add(put_right_, kPutRightTip);
    focused_ = canvas_->Window();
}

int PreviewWindow::Pixels(int design_pixels) const {
    return Scaled(design_pixels, LayoutDpiOf(monitor_dpi_));
}

void PreviewWindow::LayOut() {
    RECT client;
    GetClientRect(window_, &client);
    const int gap = Pixels(kGap);
    const int line = LineHeight(window_, font_.get());
    const int button = line + gap + gap / 2;
    const int right = client.right - gap;
    const int hints_high = kHintLines * line + gap;
    const int hints_top = client.bottom - gap - hints_high;
    const int check_box_top = hints_top - gap - button;
    const int summary_high = kSummaryLines * line;
    const int summary_top = check_box_top - gap - summary_high;
    const int button_left = right - Pixels(kButtonWidth);
    const auto place = [](HWND window, const RECT& at) {
        SetWindowPos(window, nullptr, at.left, at.top, std::max<LONG>(at.right - at.left, 0),
                     std::max<LONG>(at.bottom - at.top, 0), SWP_NOZORDER | SWP_NOACTIVATE);
    };
    place(canvas_->Window(), {gap, gap, right, summary_top - gap});
    place(summary_, {gap, summary_top, right, summary_top + summary_high});
    place(current_row_only_,
          {gap, check_box_top, gap + 2 * Pixels(kCheckBoxWidth), check_box_top + button});
    place(hints_list_, {gap, hints_top, button_left - gap, hints_top + hints_high});
    place(put_right_, {button_left, hints_top, right, hints_top + button});
    tips_->Place();
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void PreviewWindow::Refresh() {
    if (!form_.preview.open) {
        if (window_ != nullptr && IsWindowVisible(window_) != FALSE) {
            ShowWindow(window_, SW_HIDE);
        }
        return;
    }
    if (window_ == nullptr) {
        Create();
    }
    ShowTable();
    const bool in_sight = IsIconic(main_window_) == FALSE;
    if ((IsWindowVisible(window_) != FALSE) != in_sight) {
        ShowWindow(window_, in_sight ? SW_SHOWNA : SW_HIDE); // maximised where it was
    }
    if (in_sight) {
        static_cast<void>(MatchTopmost());
        NotePlace();
    }
}

// Whether it had to be changed.
bool PreviewWindow::MatchTopmost() const {
    const bool topmost = IsTopmost(main_window_);
    if (topmost == IsTopmost(window_)) {
        return false;
    }
    SetWindowPos(window_, topmost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return true;
}

// Among ordinary windows it goes where the main window goes: behind CATIA too, where that waits for
// the person.
void PreviewWindow::FollowMainWindow() {
    if (window_ == nullptr || IsWindowVisible(window_) == FALSE) {
        return;
    }
    static_cast<void>(MatchTopmost());
    if (!IsTopmost(main_window_)) {
        SetWindowPos(window_, main_window_, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

bool PreviewWindow::Holds(HWND window) const {
    return window_ != nullptr && (window == window_ || IsChild(window_, window) != FALSE);
}

bool PreviewWindow::TakeMessage(MSG& message) const {
    if (!Holds(message.hwnd)) {
        return false;
    }
    if (IsDialogMessageW(window_, &message) == FALSE) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

std::shared_ptr<const tables::CharacterWidths> PreviewWindow::WidthsOf(const std::string& face) {
    auto& widths = widths_[face];
    if (widths == nullptr) {
        widths = std::make_shared<const tables::CharacterWidths>(ReadCharacterWidths(face));
    }
    return widths;
}

void PreviewWindow::ShowTable() {
    const bool current_row_only = form_.preview.current_row_only;
    Source source{.configuration = form_.Text2.Text(),
                  .list = form_.ListView1.ContentRevision(),
                  .current_row = current_row_only ? form_.ListView1.CurrentRow() : std::nullopt,
                  .current_row_only = current_row_only};
    if (shown_ == source) {
        return;
    }
    const bool other_parts =
        !shown_ || shown_->list != source.list || shown_->current_row != source.current_row;
    const bool other_text = !shown_ || shown_->configuration != source.configuration;
    shown_ = std::move(source);
    if (other_parts) {
        parts_ = std::make_shared<const tables::Parts>(tables::TakeParts(form_.ListView1));
    }
    if (other_text) {
        ShowHints();
    }
    const tables::TableSource table{.configuration = shown_->configuration,
                                    .content = current_row_only ? tables::TableContent::kCurrentRow
                                                                : tables::TableContent::kWholeList,
                                    .parts = parts_};
    tables::TableLayout layout = tables::LayOutTable(table, WidthsOf(tables::FontFace(table)));
    std::string summary = tables::SizesAndCounts(layout);
    if (layout.rows > 0) {
        summary += "\n" + tables::AnchorAndPosition(layout);
    }
    if (!layout.trouble.empty()) {
        summary += "\n" + layout.trouble;
    }
    ShowText(summary_, summary);
    canvas_->Show(std::move(layout));
}

// The selected hint stays where it stands, so that one after the other can be put right.
void PreviewWindow::ShowHints() {
    const int selected = std::max(ListBox_GetCurSel(hints_list_), 0);
    hints_ = tables::HintsFor(shown_->configuration);
    SetWindowRedraw(hints_list_, FALSE);
    ListBox_ResetContent(hints_list_);
    const HDC screen = GetDC(hints_list_);
    const HGDIOBJ before = SelectObject(screen, font_.get());
    LONG widest = 0;
    for (const tables::Hint& hint : hints_) {
        const std::wstring text =
            com::Widen("Řádek " + std::to_string(hint.line) + ": " + hint.sentence);
        ListBox_AddString(hints_list_, text.c_str());
        SIZE size{};
        GetTextExtentPoint32W(screen, text.c_str(), static_cast<int>(text.size()), &size);
        widest = std::max(widest, size.cx);
    }
    SelectObject(screen, before);
    ReleaseDC(hints_list_, screen);
    ListBox_SetHorizontalExtent(hints_list_, widest + Pixels(kGap));
    ListBox_SetCurSel(hints_list_, std::min(selected, static_cast<int>(hints_.size()) - 1));
    SetWindowRedraw(hints_list_, TRUE);
    InvalidateRect(hints_list_, nullptr, TRUE);
    EnablePutRight();
}

const tables::Hint* PreviewWindow::SelectedHint() const {
    const int selected = ListBox_GetCurSel(hints_list_);
    return selected >= 0 && selected < static_cast<int>(hints_.size())
               ? &hints_[static_cast<std::size_t>(selected)]
               : nullptr;
}

void PreviewWindow::EnablePutRight() const {
    const tables::Hint* const hint = SelectedHint();
    const bool can = hint != nullptr && hint->replacement;
    if (!can && GetFocus() == put_right_) {
        SetFocus(hints_list_); // keys would go nowhere
    }
    EnableWindow(put_right_, can ? TRUE : FALSE);
}

// While a box of the main window is open, everything but looking waits.
void PreviewWindow::Use(bool put_right) {
    const tables::Hint* const selected = SelectedHint();
    if (selected == nullptr || (put_right && !selected->replacement)) {
        return;
    }
    if (IsWindowEnabled(main_window_) == FALSE) {
        MessageBeep(MB_OK);
        return;
    }
    run_event_([this, put_right, hint = *selected, configuration = shown_->configuration] {
        if (form_.Text2.Text() == configuration) { // else it is of a text that is gone
            use_hint_(hint, put_right);
        }
    });
}

void PreviewWindow::Close() {
    if (IsWindowEnabled(main_window_) == FALSE) {
        MessageBeep(MB_OK);
        return;
    }
    run_event_([this] {
        if (form_.preview.open) {
            controls::Raise(form_.Command36.Click);
        }
    });
}

void PreviewWindow::OnCommand(UINT code, int id) {
    switch (id) {
    case ID_Preview_CurrentRow:
        if (code == BN_CLICKED) {
            run_event_([this] {
                form_.preview.current_row_only = Button_GetCheck(current_row_only_) == BST_CHECKED;
            });
        }
        break;
    case ID_Preview_PutRight:
        if (code == BN_CLICKED) {
            Use(true);
        }
        break;
    case ID_Preview_Hints:
        if (code == LBN_SELCHANGE) {
            EnablePutRight();
        }
        break;
    case IDOK: // the enter key
        if (GetFocus() == hints_list_) {
            Use(false);
        } else if (GetFocus() == put_right_) {
            Use(true);
        }
        break;
    default:
        break;
    }
}

LRESULT CALLBACK PreviewWindow::HintsProcedure(HWND list, UINT message, WPARAM w, LPARAM l,
                                               UINT_PTR, DWORD_PTR self) {
    const LRESULT result = DefSubclassProc(list, message, w, l);
    if (message == WM_LBUTTONUP) {
        const auto item = SendMessageW(list, LB_ITEMFROMPOINT, 0, l);
        if (HIWORD(item) == 0) { // on one of them
            reinterpret_cast<PreviewWindow*>(self)->Use(false);
        }
    } else if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(list, HintsProcedure, kSubclass);
    }
    return result;
}

LRESULT CALLBACK PreviewWindow::WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (PreviewWindow* self = PreviewOf(window)) {
        if (const auto result = self->OnMessage(message, w, l)) {
            return *result;
        }
    }
    return DefWindowProcW(window, message, w, l);
}

std::optional<LRESULT> PreviewWindow::OnMessage(UINT message, WPARAM w, LPARAM l) {
    switch (message) {
    case WM_COMMAND:
        OnCommand(HIWORD(w), LOWORD(w));
        return 0;
    case WM_CLOSE:
        Close();
        return 0;
    case WM_SIZE:
        LayOut();
        NotePlace();
        return 0;
    case WM_MOVE:
        NotePlace();
        return 0;
    case WM_GETMINMAXINFO: {
        POINT& least = reinterpret_cast<MINMAXINFO*>(l)->ptMinTrackSize;
        least = {Pixels(kLeastWidth), Pixels(kLeastHeight)};
        return 0;
    }
    case WM_ACTIVATE:
        if (LOWORD(w) == WA_INACTIVE && IsChild(window_, GetFocus()) != FALSE) {
            focused_ = GetFocus();
        }
        return std::nullopt;
    case WM_SETFOCUS:
        SetFocus(IsWindowEnabled(focused_) != FALSE ? focused_ : hints_list_);
        return 0;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
        return SendMessageW(canvas_->Window(), message, w, l);
    case WM_DPICHANGED: {
        const RECT& suggested = *reinterpret_cast<const RECT*>(l);
        monitor_dpi_ = HIWORD(w);
        SetFont();
        SetWindowPos(window_, nullptr, suggested.left, suggested.top,
                     suggested.right - suggested.left, suggested.bottom - suggested.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        LayOut();
        return 0;
    }
    case WM_SETTINGCHANGE:
        SetFont();
        LayOut();
        return std::nullopt;
    case WM_SYSCOLORCHANGE:
        for (const HWND control : {summary_, current_row_only_, hints_list_, put_right_}) {
            SendMessageW(control, message, 0, 0);
        }
        RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

// A maximised window keeps the place that it goes back to.
void PreviewWindow::NotePlace() {
    if (IsWindowVisible(window_) == FALSE || IsIconic(window_) != FALSE ||
        IsZoomed(window_) != FALSE) {
        return;
    }
    RECT place;
    GetWindowRect(window_, &place);
    controls::Preview& preview = form_.preview;
    preview.left = place.left;
    preview.top = place.top;
    preview.width = Twips(place.right - place.left, LayoutDpiOf(monitor_dpi_));
    preview.height = Twips(place.bottom - place.top, LayoutDpiOf(monitor_dpi_));
}

void PreviewWindow::SetFont() {
    com::Owned<HFONT> font = MessageFont(monitor_dpi_);
    for (const HWND control : {summary_, current_row_only_, hints_list_, put_right_}) {
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
    }
    canvas_->SetDpi(monitor_dpi_, LayoutDpiOf(monitor_dpi_), font.get());
    const int line = LineHeight(window_, font.get());
    ListBox_SetItemHeight(hints_list_, 0, line);
    font_ = std::move(font);
}

} // namespace win32
