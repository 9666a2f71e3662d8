#include "win32/main_window.hpp"

#include <uxtheme.h>
#include <windowsx.h>

#include <algorithm>
#include <iterator>

#include "app/form_events.hpp"
#include "shell/list_gestures.hpp"
#include "win32/file_dialogs.hpp"
#include "win32/resource.h"
#include "win32/utf.hpp"

namespace win32 {

namespace {

constexpr const wchar_t* kClassName = L"DorvakForm1";
constexpr int kTwipsPerInch = 1440;
constexpr int kDesignHeight = 7155;     // twips, title bar included
constexpr int kDesignClientWidth = 693; // design pixels
constexpr int kStatusSecondPanel = 110; // design pixels
constexpr int kPictureEdge = 16;        // design pixels

constexpr UINT kDestroyMessage = WM_APP + 1;

// While an action runs, the contents of lists and texts are refreshed no more often than this, and
// never so often that refreshing takes more than a small part of the time.
constexpr ULONGLONG kFrugalInterval = 100; // milliseconds
constexpr ULONGLONG kFrugalShare = 10;
// How long a yield handles messages when they keep coming.
constexpr ULONGLONG kLongestYield = 200; // milliseconds

MainWindow* WindowOf(HWND window) {
    return reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void RegisterWindowClass(WNDPROC procedure) {
    WNDCLASSEXW window_class{};
    window_class.cbSize = sizeof window_class;
    window_class.lpfnWndProc = procedure;
    window_class.cbWndExtra = DLGWINDOWEXTRA;
    window_class.hInstance = GetModuleHandleW(nullptr);
    window_class.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    window_class.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    window_class.lpszClassName = kClassName;
    RegisterClassExW(&window_class);
}

// The window lays its pages out itself when the DPI changes.
void LeaveDpiChangesToTheProgram(HWND dialog) {
    using SetBehavior = BOOL(WINAPI*)(HWND, int, int);
    constexpr int kDisableAll = 1;
    const auto set_behavior = reinterpret_cast<SetBehavior>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetDialogDpiChangeBehavior")));
    if (set_behavior != nullptr) { // since Windows 10 1703
        set_behavior(dialog, kDisableAll, kDisableAll);
    }
}

} // namespace

MainWindow::MainWindow(controls::Form1& form) : form_(form) {
    RegisterWindowClass(WindowProcedure);
    window_ = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_FORM1), nullptr,
                                 nullptr, 0);
    dpi_ = GetDpiForWindow(window_);
    LeaveDpiChangesToTheProgram(window_);
    tabs_ = GetDlgItem(window_, ID_SSTab1);
    layout_.Collect(window_);
    CreatePages();
    CreateViews();
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));

    RECT frame{0, 0, Scaled(kDesignClientWidth, dpi_), 0};
    AdjustWindowRectExForDpi(&frame, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_STYLE)),
                             FALSE, static_cast<DWORD>(GetWindowLongPtrW(window_, GWL_EXSTYLE)),
                             dpi_);
    form_.hWnd = reinterpret_cast<platform::WindowHandle>(window_);
    form_.Width = MulDiv(frame.right - frame.left, kTwipsPerInch, static_cast<int>(dpi_));
    form_.Height = kDesignHeight;
    form_.show_now = [this] { ShowNow(); };
    form_.show_popup = [this](controls::PopupMenu& menu, controls::PopupPlace place) {
        ShowPopup(menu, place);
    };
    form_.show_save_dialog = [this](controls::FileDialog& dialog) {
        return ShowSaveDialog(window_, dialog);
    };
    form_.show_open_dialog = [this](controls::FileDialog& dialog) {
        return ShowOpenDialog(window_, dialog);
    };
    RefreshPlace();
    ApplyDpi(dpi_);
}

MainWindow::~MainWindow() {
    form_.show_now = nullptr;
    form_.show_popup = nullptr;
    form_.show_save_dialog = nullptr;
    form_.show_open_dialog = nullptr;
    if (window_ != nullptr) {
        DestroyWindow(window_);
    }
}

void MainWindow::CreatePages() {
    int index = 0;
    for (const std::string& caption : form_.SSTab1.Captions()) {
        std::wstring text = Widen(caption);
        TCITEMW tab{};
        tab.mask = TCIF_TEXT;
        tab.pszText = text.data();
        SendMessageW(tabs_, TCM_INSERTITEMW, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&tab));
        HWND page =
            CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_PAGE1 + index),
                               window_, PageProcedure, reinterpret_cast<LPARAM>(this));
        SetWindowLongPtrW(page, GWLP_ID, ID_PAGE1 + index);
        LeaveDpiChangesToTheProgram(page);
        EnableThemeDialogTexture(page, ETDT_ENABLETAB);
        RECT units{0, 0, 4, 8};
        MapDialogRect(page, &units);
        RECT client;
        GetClientRect(page, &client);
        layout_.Add(page, {kPageUnits.x, kPageUnits.y,
                           kPageUnits.x + MulDiv(client.right, 4, units.right),
                           kPageUnits.y + MulDiv(client.bottom, 8, units.bottom)});
        layout_.Collect(page);
        // In front of the tab control. The tab order is a ring: the page still follows the tabs.
        SetWindowPos(page, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        pages_.push_back(page);
        ++index;
    }
    ShowWindow(pages_.front(), SW_SHOW);
}

ButtonView& MainWindow::AddButton(HWND page, int id, controls::Button& button) {
    buttons_.push_back(std::make_unique<ButtonView>(
        GetDlgItem(page, id), button, [this](const auto& event) { RunEvent(event); }));
    return *buttons_.back();
}

void MainWindow::AddCheckBox(HWND page, int id, controls::CheckBox& check_box) {
    check_boxes_.push_back(std::make_unique<CheckBoxView>(
        GetDlgItem(page, id), check_box, [this](const auto& event) { RunEvent(event); }));
}

void MainWindow::AddTextBox(HWND page, int id, controls::TextBox& text_box) {
    text_boxes_.push_back(std::make_unique<TextBoxView>(
        GetDlgItem(page, id), text_box, [this](const auto& event) { RunEvent(event); }));
}

void MainWindow::AddComboBox(HWND page, int id, int label_id, controls::ComboBox& combo_box) {
    combo_boxes_.push_back(
        std::make_unique<ComboBoxView>(GetDlgItem(page, id), GetDlgItem(page, label_id), combo_box,
                                       [this](const auto& event) { RunEvent(event); }));
}

void MainWindow::AddList(HWND page, int id, controls::ListView& list, ListViewWindow::Look look) {
    lists_.push_back(
        std::make_unique<ListViewWindow>(GetDlgItem(page, id), list, std::move(look),
                                         [this](const auto& event) { RunEvent(event); }));
}

void MainWindow::CreateViews() {
    AddCheckBox(window_, ID_Check2, form_.Check2);
    AddButton(window_, ID_Command18, form_.Command18);
    status_bar_ =
        std::make_unique<StatusBarView>(GetDlgItem(window_, ID_StatusBar1), form_.StatusBar1);

    const HWND structure = pages_[0];
    AddButton(structure, ID_Command3, form_.Command3);
    AddButton(structure, ID_Command5, form_.Command5);
    AddButton(structure, ID_Command4, form_.Command4);
    AddButton(structure, ID_Command1, form_.Command1);
    AddButton(structure, ID_Command2, form_.Command2);
    AddButton(structure, ID_Command26, form_.Command26);
    tree_ = std::make_unique<TreeViewWindow>(GetDlgItem(structure, ID_TreeView1), form_.TreeView1,
                                             [this](const auto& event) { RunEvent(event); });
    AddTextBox(structure, ID_Text1, form_.Text1);
    AddList(structure, ID_ListView2, form_.ListView2, {.column_widths = {122, 48}});
    list_box_ = std::make_unique<ListBoxView>(GetDlgItem(structure, ID_List1), form_.List1);

    const HWND editing = pages_[1];
    AddList(editing, ID_ListView1, form_.ListView1,
            {.column_widths = {188, 50, 50, 44, 96, 96, 94}, .check_boxes = true});
    lists_.back()->can_drag = [this](std::size_t row) {
        return shell::CanDrag(form_, form_.ListView1, row);
    };
    AddComboBox(editing, ID_Combo1, ID_Combo1_Label, form_.Combo1);
    AddComboBox(editing, ID_Combo2, ID_Combo2_Label, form_.Combo2);
    AddComboBox(editing, ID_Combo3, ID_Combo3_Label, form_.Combo3);
    AddComboBox(editing, ID_Combo4, ID_Combo4_Label, form_.Combo4);
    picture_buttons_ = {&AddButton(editing, ID_Command12, form_.Command12),
                        &AddButton(editing, ID_Command13, form_.Command13),
                        &AddButton(editing, ID_Command14, form_.Command14),
                        &AddButton(editing, ID_Command15, form_.Command15)};
    AddButton(editing, ID_Command17, form_.Command17);
    AddButton(editing, ID_Command27, form_.Command27);

    const HWND creating = pages_[2];
    AddTextBox(creating, ID_Text2, form_.Text2);
    AddTextBox(creating, ID_Text4, form_.Text4);
    AddButton(creating, ID_Command19, form_.Command19);
    AddButton(creating, ID_Command11, form_.Command11);
    AddButton(creating, ID_Command16, form_.Command16);
    AddButton(creating, ID_Command30, form_.Command30);
    AddButton(creating, ID_Command7, form_.Command7);
    AddButton(creating, ID_Command6, form_.Command6);
    AddButton(creating, ID_Command8, form_.Command8);

    const HWND reading = pages_[3];
    AddButton(reading, ID_Command10, form_.Command10);
    AddButton(reading, ID_Command9, form_.Command9);
    AddTextBox(reading, ID_Text3, form_.Text3);

    const HWND sheets = pages_[4];
    AddList(sheets, ID_ListView3, form_.ListView3,
            {.column_widths = {154, 154, 0}, .check_boxes = true});
    // Detail sheets stay where they are.
    const auto is_working_sheet = [this](std::size_t row) {
        return form_.ListView3.Row(row).tag.empty();
    };
    lists_.back()->can_drag = [this, is_working_sheet](std::size_t row) {
        return shell::CanDrag(form_, form_.ListView3, row) && is_working_sheet(row);
    };
    lists_.back()->can_drop_on = is_working_sheet;
    AddButton(sheets, ID_Command21, form_.Command21);
    AddTextBox(sheets, ID_Text5, form_.Text5);
    picture_buttons_.push_back(&AddButton(sheets, ID_Command28, form_.Command28));
    ShowText(GetDlgItem(sheets, ID_Frame1), form_.Frame1.caption);
    AddTextBox(sheets, ID_Text6, form_.Text6);
    AddButton(sheets, ID_Command20, form_.Command20);
    ShowText(GetDlgItem(sheets, ID_Frame2), form_.Frame2.caption);
    AddCheckBox(sheets, ID_Check1, form_.Check1);
    AddButton(sheets, ID_Command22, form_.Command22);
    AddButton(sheets, ID_Command23, form_.Command23);
    AddButton(sheets, ID_Command24, form_.Command24);
    AddButton(sheets, ID_Command25, form_.Command25);
    AddButton(sheets, ID_Command34, form_.Command34);
    AddButton(sheets, ID_Command33, form_.Command33);
    ShowText(GetDlgItem(sheets, ID_Frame3), form_.Frame3.caption);
    AddTextBox(sheets, ID_Text7, form_.Text7);
    AddButton(sheets, ID_Command32, form_.Command32);
    AddButton(sheets, ID_Command29, form_.Command29);
    AddButton(sheets, ID_Command31, form_.Command31);
    AddButton(sheets, ID_Command35, form_.Command35);
}

void MainWindow::ApplyDpi(UINT dpi) {
    dpi_ = dpi;
    RECT client;
    RECT outer;
    GetClientRect(window_, &client);
    GetWindowRect(window_, &outer);
    // The collapsed window shows the upper part of what stands at full height.
    const int frame = outer.bottom - outer.top - client.bottom;
    Owned<HFONT> font = MessageFont(dpi);
    layout_.Place(client.right, Pixels(kDesignHeight) - frame, font.get());
    font_ = std::move(font);
    status_bar_->SetPanels(client.right, Scaled(kStatusSecondPanel, dpi));

    for (const auto& list : lists_) {
        list->SetDpi(dpi);
    }
    tree_->SetDpi(dpi);
    for (ButtonView* button : picture_buttons_) {
        button->ShowPicture(IDI_APPLY, Scaled(kPictureEdge, dpi));
    }
    // Depth, part number and paths of the structure text under one another.
    UINT tab_stops[] = {12, 80, 240, 400};
    SendDlgItemMessageW(pages_[0], ID_Text1, EM_SETTABSTOPS, std::size(tab_stops),
                        reinterpret_cast<LPARAM>(tab_stops));

    Owned<HICON> large = LoadIconOfSize(IDI_DORVAK, GetSystemMetricsForDpi(SM_CXICON, dpi));
    Owned<HICON> small = LoadIconOfSize(IDI_DORVAK, GetSystemMetricsForDpi(SM_CXSMICON, dpi));
    SendMessageW(window_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large.get()));
    SendMessageW(window_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.get()));
    large_icon_ = std::move(large);
    small_icon_ = std::move(small);
    RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void MainWindow::Show() {
    app::Form_Load(form_);
    loaded_ = true;
    Refresh(Thoroughness::kComplete);
    ShowWindow(window_, SW_SHOWNORMAL);
    UpdateWindow(window_);
}

int MainWindow::Run() {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        HandleMessage(message);
    }
    return static_cast<int>(message.wParam);
}

void MainWindow::HandleMessage(MSG& message) const {
    if (window_ == nullptr || IsDialogMessageW(window_, &message) == FALSE) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void MainWindow::DoEvents() {
    if (!loaded_ || window_ == nullptr) {
        return;
    }
    Refresh(Thoroughness::kFrugal);
    const ULONGLONG deadline = GetTickCount64() + kLongestYield;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        HandleMessage(message);
        if (GetTickCount64() > deadline) {
            break;
        }
    }
    Pull();
}

void MainWindow::RunEvent(const std::function<void()>& event) {
    if (!loaded_ || form_.unloaded) {
        return;
    }
    Pull();
    event();
    if (form_.unloaded) {
        // Not now: the control whose event this is may still be at work. An action that runs ends
        // first.
        if (form_.running_handlers == 0) {
            PostMessageW(window_, kDestroyMessage, 0, 0);
        }
    } else {
        Refresh(Thoroughness::kComplete);
    }
}

void MainWindow::Pull() {
    for (const auto& text_box : text_boxes_) {
        text_box->Pull();
    }
    for (const auto& combo_box : combo_boxes_) {
        combo_box->Pull();
    }
    for (const auto& list : lists_) {
        list->Pull();
    }
}

void MainWindow::Refresh(Thoroughness thoroughness) {
    if (form_.Caption != shown_caption_) {
        shown_caption_ = form_.Caption;
        ShowText(window_, shown_caption_);
    }
    ShowNow();
    for (const auto& button : buttons_) {
        button->Refresh();
    }
    for (const auto& check_box : check_boxes_) {
        check_box->Refresh();
    }
    ShowPage(form_.SSTab1.Tab());
    RefreshPlace();

    const ULONGLONG start = GetTickCount64();
    if (thoroughness == Thoroughness::kComplete || start >= next_frugal_refresh_) {
        RefreshContents();
        const ULONGLONG end = GetTickCount64();
        next_frugal_refresh_ = end + std::max(kFrugalInterval, kFrugalShare * (end - start));
    }
}

void MainWindow::RefreshContents() {
    for (const auto& text_box : text_boxes_) {
        text_box->Refresh();
    }
    for (const auto& combo_box : combo_boxes_) {
        combo_box->Refresh();
    }
    for (const auto& list : lists_) {
        list->Refresh();
    }
    tree_->Refresh();
    list_box_->Refresh();
}

// Only what changed since the last time is applied: the person may have moved the window meanwhile.
void MainWindow::RefreshPlace() {
    const bool moved = form_.Left != shown_place_.left || form_.Top != shown_place_.top;
    const bool resized = form_.Width != shown_place_.right || form_.Height != shown_place_.bottom;
    if (!moved && !resized) {
        return;
    }
    shown_place_ = {form_.Left, form_.Top, form_.Width, form_.Height};
    SetWindowPos(window_, nullptr, Pixels(form_.Left), Pixels(form_.Top), Pixels(form_.Width),
                 Pixels(form_.Height),
                 SWP_NOZORDER | SWP_NOACTIVATE | (moved ? 0U : SWP_NOMOVE) |
                     (resized ? 0U : SWP_NOSIZE));
}

void MainWindow::ShowPage(std::size_t page) {
    if (page == shown_page_) {
        return;
    }
    ShowWindow(pages_[page], SW_SHOW);
    ShowWindow(pages_[shown_page_], SW_HIDE);
    shown_page_ = page;
    TabCtrl_SetCurSel(tabs_, static_cast<int>(page));
}

void MainWindow::ShowNow() {
    status_bar_->Refresh();
    if (form_.Pointer != shown_pointer_) {
        shown_pointer_ = form_.Pointer;
        POINT mouse;
        GetCursorPos(&mouse);
        const HWND below = WindowFromPoint(mouse);
        if (below == window_ || IsChild(window_, below) != FALSE) {
            SetCursor(LoadCursorW(nullptr, shown_pointer_ == controls::MousePointer::kHourglass
                                               ? IDC_WAIT
                                               : IDC_ARROW));
        }
    }
}

void MainWindow::ShowPopup(const controls::PopupMenu& menu, controls::PopupPlace place) const {
    const std::pair<const controls::MenuItem*, UINT> numbers[] = {
        {&form_.m_poslat_jako_tabulku, ID_m_poslat_jako_tabulku},
        {&form_.m_vlozit_do_tabulky, ID_m_vlozit_do_tabulky},
        {&form_.m_Poslat_jako_text, ID_m_Poslat_jako_text},
        {&form_.m_Pridat, ID_m_Pridat},
        {&form_.m_Smazat, ID_m_Smazat},
        {&form_.m_Sheet_pridej, ID_m_Sheet_pridej},
        {&form_.m_Sheet_smaz, ID_m_Sheet_smaz},
    };
    const Owned<HMENU> popup(CreatePopupMenu());
    for (const controls::MenuItem* item : menu.items) {
        if (item->IsSeparator()) {
            AppendMenuW(popup.get(), MF_SEPARATOR, 0, nullptr);
            continue;
        }
        const auto number =
            std::ranges::find(numbers, item, &std::pair<const controls::MenuItem*, UINT>::first);
        AppendMenuW(popup.get(), MF_STRING | (item->Enabled() ? MF_ENABLED : MF_GRAYED),
                    number->second, Widen(item->caption).c_str());
    }
    POINT at;
    GetCursorPos(&at);
    if (place == controls::PopupPlace::kCurrentRow) {
        const HWND focus = GetFocus();
        for (const auto& list : lists_) {
            if (list->Window() == focus) {
                at = list->MenuPlace();
            }
        }
    }
    const auto chosen = static_cast<UINT>(TrackPopupMenu(
        popup.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, window_, nullptr));
    const auto number =
        std::ranges::find(numbers, chosen, &std::pair<const controls::MenuItem*, UINT>::second);
    if (number != std::end(numbers)) {
        controls::Raise(number->first->Click);
    }
}

int MainWindow::Pixels(int twips) const {
    return MulDiv(twips, static_cast<int>(dpi_), kTwipsPerInch);
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
    if (message == WM_COMMAND) {
        self->OnCommand(LOWORD(w), HIWORD(w));
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
        OnCommand(LOWORD(w), HIWORD(w));
        return 0;
    case WM_NOTIFY:
        return OnNotify(*reinterpret_cast<NMHDR*>(l));
    case WM_SETCURSOR:
        if (form_.Pointer == controls::MousePointer::kHourglass && LOWORD(l) == HTCLIENT) {
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        return std::nullopt;
    case WM_SIZE:
        if (w != SIZE_MINIMIZED) {
            RunEvent([this] { app::Form_Resize(form_); });
        }
        return std::nullopt;
    case WM_DPICHANGED: {
        const RECT& suggested = *reinterpret_cast<const RECT*>(l);
        dpi_ = HIWORD(w);
        SetWindowPos(window_, nullptr, suggested.left, suggested.top, Pixels(form_.Width),
                     Pixels(form_.Height), SWP_NOZORDER | SWP_NOACTIVATE);
        ApplyDpi(dpi_);
        return 0;
    }
    case WM_CLOSE:
        RunEvent([this] { app::RequestClose(form_); });
        return 0;
    case WM_QUERYENDSESSION:
        return TRUE;
    case WM_ENDSESSION:
        if (w != FALSE) {
            RunEvent([this] { app::EndSession(form_); });
        }
        return 0;
    case kDestroyMessage:
        DestroyWindow(window_);
        return 0;
    case WM_NCDESTROY:
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        window_ = nullptr;
        PostQuitMessage(0);
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

void MainWindow::OnCommand(int id, UINT code) {
    if (id == IDCANCEL) {
        for (const auto& list : lists_) {
            list->CancelDrag();
        }
        return;
    }
    const auto is_source = [id](const auto& view) { return GetDlgCtrlID(view->Window()) == id; };
    if (code == BN_CLICKED) {
        if (const auto found = std::ranges::find_if(buttons_, is_source); found != buttons_.end()) {
            (*found)->Click();
            return;
        }
        if (const auto found = std::ranges::find_if(check_boxes_, is_source);
            found != check_boxes_.end()) {
            (*found)->Click();
            return;
        }
    }
    if (code == EN_CHANGE) {
        if (const auto found = std::ranges::find_if(text_boxes_, is_source);
            found != text_boxes_.end()) {
            (*found)->Changed();
            return;
        }
    }
    if (const auto found = std::ranges::find_if(combo_boxes_, is_source);
        found != combo_boxes_.end()) {
        // The drop-down list may complete the text as it opens, and sets it as it closes.
        if (code == CBN_EDITCHANGE || code == CBN_SELCHANGE || code == CBN_SELENDOK ||
            code == CBN_CLOSEUP) {
            (*found)->Changed();
        } else if (code == CBN_DROPDOWN) {
            (*found)->FitDropDown();
        }
    }
}

LRESULT MainWindow::OnNotify(NMHDR& header) {
    if (header.hwndFrom == tabs_) {
        if (header.code == TCN_SELCHANGE) {
            const int page = TabCtrl_GetCurSel(tabs_);
            RunEvent([this, page] { form_.SSTab1.UserClick(static_cast<std::size_t>(page)); });
        }
        return 0;
    }
    if (header.hwndFrom == tree_->Window()) {
        return tree_->OnNotify(header);
    }
    for (const auto& list : lists_) {
        if (list->Window() == header.hwndFrom) {
            return list->OnNotify(header);
        }
    }
    return 0;
}

} // namespace win32
