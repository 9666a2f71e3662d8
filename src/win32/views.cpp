#include "win32/views.hpp"

#include <windowsx.h>

#include <algorithm>

#include "com/utf.hpp"
#include "win32/access_keys.hpp"
#include "win32/clipboard.hpp"
#include "win32/resource.h"

namespace win32 {

namespace {

constexpr int kDroppedValues = 15;      // of a picker, in sight at a time
constexpr int kPictureEdge = 16;        // of a button, in design pixels
constexpr int kStatusSecondPanel = 110; // design pixels
constexpr int kIconEdge = 16;           // of the status bar, in design pixels
constexpr int kProgressHeight = 3;      // design pixels

constexpr UINT kListClosedMessage = WM_APP + 1; // of a picker, to its field

// The parts of the status bar that have tips.
constexpr std::size_t kIconTip = 0;
constexpr std::size_t kTextTip = 1;

HWND EditOf(HWND combo_box) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo_box, &info);
    return info.hwndItem;
}

// In the window's font, in pixels.
int TextWidth(HWND window, const std::wstring& text) {
    const HDC screen = GetDC(window);
    const HGDIOBJ before = SelectObject(screen, GetWindowFont(window));
    SIZE size{};
    GetTextExtentPoint32W(screen, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(screen, before);
    ReleaseDC(window, screen);
    return size.cx;
}

} // namespace

UINT CheckState(bool checked) {
    constexpr UINT kUnticked = 1;
    constexpr UINT kTicked = 2;
    return INDEXTOSTATEIMAGEMASK(checked ? kTicked : kUnticked);
}

std::string ReadText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    return com::Narrow(text);
}

void ShowText(HWND window, std::string_view text) {
    SetWindowTextW(window, com::Widen(text).c_str());
}

int ShiftState() {
    return GetKeyState(VK_SHIFT) < 0 ? controls::kShiftHeld : 0;
}

RECT View::MenuAnchor() const {
    RECT place;
    GetWindowRect(window_, &place);
    return place;
}

ButtonView::ButtonView(HWND window, controls::Button& button, char access_key, RunEvent run_event)
    : View(window), button_(button), access_key_(access_key), run_event_(std::move(run_event)),
      shown_caption_(ReadText(window)) {
    if (access_key_ != 0) {
        ShowText(Window(), WithAccessKey(shown_caption_, access_key_));
    }
    SetWindowSubclass(Window(), WindowProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

ButtonView::~ButtonView() {
    RemoveWindowSubclass(Window(), WindowProcedure, kSubclass);
}

void ButtonView::Refresh() {
    if (button_.Enabled() != shown_enabled_) {
        shown_enabled_ = button_.Enabled();
        EnableWindow(Window(), shown_enabled_ ? TRUE : FALSE);
    }
    if (button_.Revision() != shown_revision_) {
        shown_revision_ = button_.Revision();
        if (button_.Caption() != shown_caption_) {
            shown_caption_ = button_.Caption();
            ShowText(Window(), WithAccessKey(shown_caption_, access_key_));
        }
    }
}

void ButtonView::OnCommand(UINT code) {
    if (code == BN_CLICKED) {
        run_event_([this] { controls::Raise(button_.Click); });
    }
}

void ButtonView::SetDpi(UINT dpi) {
    if ((GetWindowLongPtrW(Window(), GWL_STYLE) & BS_ICON) == 0) {
        return;
    }
    com::Owned<HICON> picture = LoadIconOfSize(IDI_APPLY, Scaled(kPictureEdge, dpi));
    SendMessageW(Window(), BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(picture.get()));
    picture_ = std::move(picture);
}

LRESULT CALLBACK ButtonView::WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                             UINT_PTR, DWORD_PTR view) {
    if (message == WM_LBUTTONDBLCLK) {
        return 0; // the second press of a double click is the same press
    }
    if (message == WM_RBUTTONDOWN) {
        auto& self = *reinterpret_cast<ButtonView*>(view);
        self.run_event_([&self, shift = ShiftState(), x = GET_X_LPARAM(l), y = GET_Y_LPARAM(l)] {
            controls::Raise(self.button_.MouseDown, controls::kRightButton, shift, x, y);
        });
        return 0;
    }
    if (message == WM_CONTEXTMENU && l == -1) { // from the keyboard
        auto& self = *reinterpret_cast<ButtonView*>(view);
        self.run_event_([&self] { controls::Raise(self.button_.MenuKey); });
        return 0;
    }
    return DefSubclassProc(window, message, w, l);
}

CheckBoxView::CheckBoxView(HWND window, controls::CheckBox& check_box, RunEvent run_event)
    : View(window), check_box_(check_box), run_event_(std::move(run_event)) {
    SetWindowSubclass(Window(), WindowProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

CheckBoxView::~CheckBoxView() {
    RemoveWindowSubclass(Window(), WindowProcedure, kSubclass);
}

void CheckBoxView::Refresh() {
    if (check_box_.Revision() != shown_revision_) {
        const FlagWhile refreshing(refreshing_);
        shown_revision_ = check_box_.Revision();
        Button_SetCheck(Window(), check_box_.Value() == 1 ? BST_CHECKED : BST_UNCHECKED);
    }
}

// Also what came while no handler could run.
void CheckBoxView::Pull() {
    if (changed_by_person_) {
        changed_by_person_ = false;
        check_box_.SetValue(Button_GetCheck(Window()) == BST_CHECKED ? 1 : 0);
    }
}

void CheckBoxView::Changed() {
    changed_by_person_ = true;
    run_event_([] {}); // which pulls
}

void CheckBoxView::OnCommand(UINT code) {
    if (code == BN_CLICKED) {
        Changed();
    }
}

// Programs that work the window for the person set the state without a click.
LRESULT CALLBACK CheckBoxView::WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                               UINT_PTR, DWORD_PTR view) {
    const LRESULT result = DefSubclassProc(window, message, w, l);
    auto& self = *reinterpret_cast<CheckBoxView*>(view);
    if (message == BM_SETCHECK && !self.refreshing_) {
        self.Changed();
    }
    return result;
}

TextBoxView::TextBoxView(HWND window, controls::TextBox& text_box, RunEvent run_event)
    : View(window), text_box_(text_box), run_event_(std::move(run_event)) {
    SendMessageW(Window(), EM_SETLIMITTEXT, 0, 0);
    SetWindowSubclass(Window(), WindowProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

TextBoxView::~TextBoxView() {
    RemoveWindowSubclass(Window(), WindowProcedure, kSubclass);
}

void TextBoxView::Refresh() {
    if (text_box_.Revision() == shown_revision_) {
        return;
    }
    const FlagWhile refreshing(refreshing_);
    const std::string& text = text_box_.Text();
    const bool is_first = shown_replacements_ == UINT64_MAX;
    if (text_box_.Replacements() == shown_replacements_ && shown_length_ <= text.size()) {
        const int end = GetWindowTextLengthW(Window());
        const std::wstring more = com::Widen(std::string_view(text).substr(shown_length_));
        SetWindowRedraw(Window(), FALSE);
        SendMessageW(Window(), EM_SETSEL, static_cast<WPARAM>(end), end);
        SendMessageW(Window(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(more.c_str()));
        SendMessageW(Window(), WM_HSCROLL, SB_LEFT, 0); // the lines' beginnings stay in sight
        SetWindowRedraw(Window(), TRUE);
        RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    } else {
        // Not by setting the text: the person can take it back.
        SendMessageW(Window(), EM_SETSEL, 0, -1);
        SendMessageW(Window(), EM_REPLACESEL, TRUE,
                     reinterpret_cast<LPARAM>(com::Widen(text).c_str()));
        SendMessageW(Window(), EM_SETSEL, 0, 0);
        SendMessageW(Window(), EM_SCROLLCARET, 0, 0);
        if (is_first) { // what was loaded is where the person begins
            SendMessageW(Window(), EM_EMPTYUNDOBUFFER, 0, 0);
        }
    }
    shown_revision_ = text_box_.Revision();
    shown_replacements_ = text_box_.Replacements();
    shown_length_ = text.size();
}

void TextBoxView::Pull() {
    if (!changed_by_person_) {
        return;
    }
    changed_by_person_ = false;
    if (text_box_.Replacements() != shown_replacements_) {
        return; // the program has set another text meanwhile
    }
    // What was appended since the last refresh is not on the screen yet and stays to be shown.
    std::string text = ReadText(Window());
    const std::size_t shown = text.size();
    text += std::string_view(text_box_.Text()).substr(shown_length_);
    shown_length_ = shown;
    text_box_.UserChange(std::move(text));
}

void TextBoxView::OnCommand(UINT code) {
    if (code == EN_CHANGE) {
        Changed();
    }
}

LRESULT CALLBACK TextBoxView::WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                              UINT_PTR, DWORD_PTR view) {
    constexpr WPARAM kControlA = 1;
    if (message == WM_CHAR && w == kControlA) {
        SendMessageW(window, EM_SETSEL, 0, -1);
        return 0;
    }
    // Ctrl+I: the tab key itself leaves the field, and with Ctrl the page.
    if (message == WM_CHAR && w == VK_TAB && GetKeyState(VK_CONTROL) < 0 &&
        (GetWindowLongPtrW(window, GWL_STYLE) & ES_MULTILINE) != 0) {
        SendMessageW(window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"\t"));
        return 0;
    }
    auto& self = *reinterpret_cast<TextBoxView*>(view);
    if (message == WM_PASTE && self.text_box_.Pasted) {
        if (const auto pasted = TextOnClipboard(window)) {
            const std::wstring text = com::Widen(self.text_box_.Pasted(*pasted));
            SendMessageW(window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
        }
        return 0;
    }
    const bool wants_enter = static_cast<bool>(self.text_box_.KeyPress);
    if (message == WM_CHAR && w == VK_RETURN && wants_enter) {
        self.run_event_([&self] { controls::Raise(self.text_box_.KeyPress, controls::kEnterKey); });
        return 0;
    }
    const LRESULT result = DefSubclassProc(window, message, w, l);
    if (message == WM_SETTEXT) {
        // Multi-line edits do not notify of a text that an assistive program sets as a whole.
        self.Changed();
    }
    if (message == WM_GETDLGCODE && wants_enter && l != 0 &&
        reinterpret_cast<const MSG*>(l)->wParam == VK_RETURN) {
        return result | DLGC_WANTMESSAGE; // the dialog keeps Enter from its fields otherwise
    }
    if (message == WM_GETDLGCODE && (GetWindowLongPtrW(window, GWL_STYLE) & ES_MULTILINE) != 0) {
        // The focus moved by the tab key does not select a whole multi-line text.
        return result & ~DLGC_HASSETSEL;
    }
    return result;
}

ComboBoxView::ComboBoxView(HWND window, HWND label, controls::ComboBox& combo_box,
                           RunEvent run_event)
    : View(window), label_(label), edit_(EditOf(window)), combo_box_(combo_box),
      run_event_(std::move(run_event)) {
    SendMessageW(Window(), CB_SETMINVISIBLE, kDroppedValues, 0);
    SetWindowSubclass(edit_, EditProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

ComboBoxView::~ComboBoxView() {
    RemoveWindowSubclass(edit_, EditProcedure, kSubclass);
}

void ComboBoxView::Refresh() {
    if (combo_box_.Revision() == shown_revision_) {
        return;
    }
    const FlagWhile refreshing(refreshing_);
    shown_revision_ = combo_box_.Revision();
    if (combo_box_.Removals() != shown_removals_) {
        shown_removals_ = combo_box_.Removals();
        for (; shown_items_ > 0; --shown_items_) { // clearing all would clear the text
            ComboBox_DeleteString(Window(), shown_items_ - 1);
        }
    }
    const auto& items = combo_box_.Items();
    for (; shown_items_ < items.size(); ++shown_items_) {
        ComboBox_AddString(Window(), com::Widen(items[shown_items_]).c_str());
    }
    if (ReadText(Window()) != combo_box_.Text()) {
        ShowText(Window(), combo_box_.Text());
    }
    const BOOL enabled = combo_box_.Enabled() ? TRUE : FALSE;
    EnableWindow(Window(), enabled);
    EnableWindow(label_, enabled); // its access key would go to whatever is enabled behind them
}

void ComboBoxView::Pull() {
    if (!changed_by_person_) {
        return;
    }
    changed_by_person_ = false;
    if (combo_box_.Revision() == shown_revision_) {
        combo_box_.UserChange(ReadText(Window()));
    }
}

void ComboBoxView::OnCommand(UINT code) {
    switch (code) {
    case CBN_EDITCHANGE:
    case CBN_SELCHANGE:
    case CBN_SELENDOK: // the drop-down list may complete the text as it opens,
    case CBN_CLOSEUP:  // and sets it as it closes
        changed_by_person_ = changed_by_person_ || !refreshing_;
        chosen_ = chosen_ || (code == CBN_SELENDOK && open_);
        if (code == CBN_CLOSEUP) { // it may be told before what was chosen
            PostMessageW(edit_, kListClosedMessage, 0, 0);
        }
        break;
    case CBN_DROPDOWN:
        open_ = true;
        chosen_ = false;
        text_as_it_opened_ = ReadText(Window());
        if (combo_box_.DropDown) {
            run_event_([this] { controls::Raise(combo_box_.DropDown); });
        }
        FitDropDown();
        break;
    default:
        break;
    }
}

void ComboBoxView::ForgetMarked() {
    const int marked = ComboBox_GetCurSel(Window());
    if (marked < 0 || combo_box_.Removals() != shown_removals_) {
        return;
    }
    run_event_(
        [this, marked] { controls::Raise(combo_box_.Forget, static_cast<std::size_t>(marked)); });
    // The next one is marked, for whoever clears the list.
    ComboBox_SetCurSel(Window(), std::min(marked, static_cast<int>(shown_items_) - 1));
    changed_by_person_ = true;
}

// A list that opens and closes again says the same as one from which something was taken.
void ComboBoxView::Closed() {
    open_ = false;
    const bool chosen = std::exchange(chosen_, false) && ReadText(Window()) != text_as_it_opened_;
    if (chosen && combo_box_.Choose) {
        run_event_([this] { controls::Raise(combo_box_.Choose); });
    }
}

void ComboBoxView::FitDropDown() const {
    RECT field;
    RECT form;
    GetWindowRect(Window(), &field);
    GetWindowRect(GetAncestor(Window(), GA_ROOT), &form);
    const int margins = field.bottom - field.top + GetSystemMetrics(SM_CXVSCROLL) / 2;

    LONG widest = 0;
    for (const std::string& item : combo_box_.Items()) {
        widest = std::max<LONG>(widest, TextWidth(Window(), com::Widen(item)));
    }
    const LONG width = std::clamp(widest + margins, field.right - field.left,
                                  std::max(field.right - field.left, form.right - field.left));
    SendMessageW(Window(), CB_SETDROPPEDWIDTH, static_cast<WPARAM>(width), 0);
}

// A dialog keeps Enter from its fields unless they ask for it.
LRESULT CALLBACK ComboBoxView::EditProcedure(HWND edit, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                                             DWORD_PTR view) {
    if (message == kListClosedMessage) {
        reinterpret_cast<ComboBoxView*>(view)->Closed();
        return 0;
    }
    if (message == WM_GETDLGCODE) {
        const LRESULT code = DefSubclassProc(edit, message, w, l);
        const auto* asked = reinterpret_cast<const MSG*>(l);
        return asked != nullptr && asked->wParam == VK_RETURN ? code | DLGC_WANTMESSAGE : code;
    }
    if (message == WM_KEYDOWN && w == VK_DELETE && GetKeyState(VK_SHIFT) < 0) {
        auto& self = *reinterpret_cast<ComboBoxView*>(view);
        if (ComboBox_GetDroppedState(self.Window()) != FALSE) {
            if ((HIWORD(l) & KF_REPEAT) == 0) {
                self.ForgetMarked();
            }
            return 0; // it would cut the text
        }
    }
    if (message == WM_CHAR && w == VK_RETURN) {
        auto& self = *reinterpret_cast<ComboBoxView*>(view);
        if (ComboBox_GetDroppedState(self.Window()) != FALSE) {
            DefSubclassProc(edit, message, w, l); // takes the value that is marked
            ComboBox_ShowDropdown(self.Window(), FALSE);
        }
        self.run_event_(
            [&self] { controls::Raise(self.combo_box_.KeyPress, controls::kEnterKey); });
        return 0;
    }
    return DefSubclassProc(edit, message, w, l);
}

void ListBoxView::Refresh() {
    if (list_box_.Revision() == shown_revision_) {
        return;
    }
    shown_revision_ = list_box_.Revision();
    SetWindowRedraw(Window(), FALSE);
    ListBox_ResetContent(Window());
    for (const std::string& item : list_box_.Items()) {
        ListBox_AddString(Window(), com::Widen(item).c_str());
    }
    SetWindowRedraw(Window(), TRUE);
    InvalidateRect(Window(), nullptr, TRUE);
}

LRESULT TabControlView::OnNotify(NMHDR& header) {
    if (header.code == TCN_SELCHANGE) {
        const auto page = static_cast<std::size_t>(TabCtrl_GetCurSel(Window()));
        run_event_([this, page] { tab_control_.UserClick(page); });
    }
    return 0;
}

StatusBarView::StatusBarView(HWND window, const controls::StatusBar& status_bar, RunEvent run_event)
    : View(window), status_bar_(status_bar), run_event_(std::move(run_event)),
      progress_bar_(CreateWindowExW(0, PROGRESS_CLASSW, nullptr, WS_CHILD | PBS_SMOOTH, 0, 0, 0, 0,
                                    window, nullptr, GetModuleHandleW(nullptr), nullptr)) {
    SetWindowSubclass(Window(), WindowProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

StatusBarView::~StatusBarView() {
    RemoveWindowSubclass(Window(), WindowProcedure, kSubclass);
}

// The panel is painted whole, since drawing the rectangle again would take it away.
LRESULT StatusBarView::PaintWithFocus(WPARAM w, LPARAM l) const {
    RECT panel;
    SendMessageW(Window(), SB_GETRECT, 0, reinterpret_cast<LPARAM>(&panel));
    InvalidateRect(Window(), &panel, TRUE);
    const LRESULT result = DefSubclassProc(Window(), WM_PAINT, w, l);
    InflateRect(&panel, -1, -1);
    const HDC screen = GetDC(Window());
    DrawFocusRect(screen, &panel);
    ReleaseDC(Window(), screen);
    return result;
}

LRESULT CALLBACK StatusBarView::WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                                UINT_PTR, DWORD_PTR view) {
    auto& self = *reinterpret_cast<StatusBarView*>(view);
    switch (message) {
    case WM_CONTEXTMENU:
        self.run_event_([&] {
            controls::Raise(l == -1 ? self.status_bar_.MenuKey : self.status_bar_.RightClick);
        });
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(window, nullptr, TRUE);
        break;
    case WM_PAINT:
        if (GetFocus() == window) {
            return self.PaintWithFocus(w, l);
        }
        break;
    default:
        break;
    }
    return DefSubclassProc(window, message, w, l);
}

void StatusBarView::SetDpi(UINT dpi) {
    RECT bar;
    GetClientRect(Window(), &bar);
    const std::array<int, 2> edges{bar.right - Scaled(kStatusSecondPanel, dpi), -1};
    SendMessageW(Window(), SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
    RECT panel;
    SendMessageW(Window(), SB_GETRECT, 0, reinterpret_cast<LPARAM>(&panel));
    const int height = Scaled(kProgressHeight, dpi);
    SetWindowPos(progress_bar_, nullptr, panel.left, panel.bottom - height,
                 panel.right - panel.left, height, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowIcon();
    ShowTextTip();
}

bool StatusBarView::InSight() const {
    const HWND form = GetAncestor(Window(), GA_ROOT);
    RECT bar;
    RECT client;
    GetWindowRect(Window(), &bar);
    MapWindowPoints(HWND_DESKTOP, form, reinterpret_cast<POINT*>(&bar), 2);
    GetClientRect(form, &client);
    return IsWindowVisible(Window()) != FALSE && IsIconic(form) == FALSE &&
           bar.bottom <= client.bottom;
}

// Below the icon, so that the text stays readable.
POINT StatusBarView::BalloonPoint() const {
    const UINT dpi = LayoutDpi();
    RECT bar;
    GetClientRect(Window(), &bar);
    POINT point{Scaled(kIconEdge / 2 + 4, dpi), bar.bottom - Scaled(3, dpi)};
    ClientToScreen(Window(), &point);
    return point;
}

void StatusBarView::PlaceBalloon() {
    if (balloon_.Shown() && !InSight()) {
        balloon_.Hide();
    } else if (balloon_.Shown()) {
        balloon_.Move(BalloonPoint());
    }
}

void StatusBarView::ShowIcon() {
    const UINT dpi = LayoutDpi();
    const controls::ActionState state = status_bar_.State();
    com::Owned<HICON> icon;
    if (state != controls::ActionState::kNone) {
        icon = LoadIconOfSize(state == controls::ActionState::kRunning ? IDI_RUNNING
                              : state == controls::ActionState::kDone  ? IDI_DONE
                                                                       : IDI_FAILED,
                              Scaled(kIconEdge, dpi));
    }
    SendMessageW(Window(), SB_SETICON, 0, reinterpret_cast<LPARAM>(icon.get()));
    icon_ = std::move(icon);
}

void StatusBarView::ShowTextTip() {
    RECT panel;
    SendMessageW(Window(), SB_GETRECT, 0, reinterpret_cast<LPARAM>(&panel));
    const UINT dpi = LayoutDpi();
    const int width = TextWidth(Window(), com::Widen(shown_[0]));
    const int before =
        Scaled(shown_state_ == controls::ActionState::kNone ? 4 : kIconEdge + 8, dpi);
    const bool cut = before + width > panel.right - panel.left;
    panel.left += Scaled(kIconEdge + 8, dpi); // beside the icon's tip
    std::string text = cut ? shown_[0] : std::string();
    if (!status_bar_.Tip().empty()) {
        text += (text.empty() ? "" : "\r\n") + status_bar_.Tip();
    }
    tip_.Show(Window(), text, panel, kTextTip);
}

bool StatusBarView::ShowNotice(std::string_view text) {
    if (!InSight()) {
        return false;
    }
    balloon_.Show(Window(), text, false, BalloonPoint());
    return true;
}

void StatusBarView::ShowProgress() {
    const auto& progress = status_bar_.ShownProgress();
    if (progress == shown_progress_) {
        return;
    }
    const bool was_shown = shown_progress_.has_value();
    shown_progress_ = progress;
    if (progress) {
        SendMessageW(progress_bar_, PBM_SETRANGE32, 0, progress->total);
        SendMessageW(progress_bar_, PBM_SETPOS, static_cast<WPARAM>(progress->done), 0);
    }
    if (progress.has_value() != was_shown) {
        ShowWindow(progress_bar_, progress ? SW_SHOWNA : SW_HIDE);
    }
}

void StatusBarView::Refresh() {
    const controls::Explanation& explanation = status_bar_.ShownExplanation();
    if (status_bar_.Explanations() != shown_explanations_ &&
        (explanation.text.empty() || InSight())) {
        shown_explanations_ = status_bar_.Explanations();
        const UINT dpi = LayoutDpi();
        tip_.Show(Window(), explanation.text, RECT{0, 0, Scaled(kIconEdge + 8, dpi), 100},
                  kIconTip);
        if (explanation.text.empty()) {
            balloon_.Hide();
        } else {
            balloon_.Show(Window(), explanation.text, explanation.is_error, BalloonPoint());
        }
    }
    if (status_bar_.Revision() == shown_revision_) {
        return;
    }
    if (status_bar_.State() != shown_state_) {
        shown_state_ = status_bar_.State();
        ShowIcon();
    }
    shown_revision_ = status_bar_.Revision();
    for (std::size_t panel = 0; panel < shown_.size(); ++panel) {
        const std::string& text = status_bar_.PanelText(panel + 1);
        if (text != shown_[panel]) {
            shown_[panel] = text;
            SendMessageW(Window(), SB_SETTEXTW, panel,
                         reinterpret_cast<LPARAM>(com::Widen(text).c_str()));
        }
    }
    ShowTextTip();
    ShowProgress();
    UpdateWindow(Window());
}

} // namespace win32
