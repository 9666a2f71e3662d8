#include "session_window.hpp"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <vector>

#include <commctrl.h>
#include <commdlg.h>
#include <windowsx.h>

#include "com/owned.hpp"
#include "com/utf.hpp"
#include "files.hpp"
#include "painter.hpp"
#include "remote_control.hpp"
#include "resource.h"
#include "simulator/model.hpp"

namespace simulator {

namespace {

constexpr const wchar_t* kProgramName = L"CatiaSim";

// Changes come by the thousand while a table is filled: they show a few times a second.
constexpr UINT_PTR kShowTimer = 1;
constexpr UINT kShowEvery = 60; // milliseconds

constexpr UINT_PTR kCompanionTimer = 2;
constexpr UINT kLookEvery = 50; // milliseconds

enum MenuPlace { kFileMenu, kDocumentMenu, kSheetMenu, kSelectionMenu, kFaultsMenu, kMannerMenu };

struct MannerItem {
    int id;
    bool Manner::*is_on;
};
constexpr auto kMannerItems =
    std::to_array<MannerItem>({{ID_CONVERT_USER, &Manner::converts_in_users_language},
                               {ID_LENGTHS_INCHES, &Manner::lengths_through_inches},
                               {ID_ZERO_AUTOMATIC, &Manner::zero_is_automatic},
                               {ID_SHEETS_BEFORE, &Manner::new_sheets_before_details},
                               {ID_EMPTY_REFUSED, &Manner::refuses_empty_texts},
                               {ID_BREAKS_CRLF, &Manner::line_breaks_are_pairs},
                               {ID_READ_ONLY, &Manner::read_only}});

// A menu that lists things: `checked` is the current one's place, or the list's length.
void FillList(HMENU menu, const std::vector<std::string>& names, std::size_t checked, UINT first_id,
              const wchar_t* none) {
    while (DeleteMenu(menu, 0, MF_BYPOSITION) != FALSE) {
    }
    if (names.empty()) {
        AppendMenuW(menu, MF_STRING | MF_GRAYED, ID_NONE, none);
        return;
    }
    for (std::size_t i = 0; i < std::min<std::size_t>(names.size(), ID_LIST_LENGTH); ++i) {
        std::wstring name = com::Widen(names[i]);
        for (std::size_t at = name.find(L'&'); at != std::wstring::npos;
             at = name.find(L'&', at + 2)) {
            name.insert(at, 1, L'&'); // an ampersand, not a mnemonic
        }
        AppendMenuW(menu, MF_STRING | (i == checked ? MF_CHECKED : MF_UNCHECKED),
                    first_id + static_cast<UINT>(i), name.c_str());
    }
}

} // namespace

SessionWindow::SessionWindow(HINSTANCE program, Session& session, com::Purpose purpose)
    : program_(program), session_(session) {
    const wchar_t* const class_name =
        purpose == com::Purpose::kTrial ? com::kTrialStandInWindow : com::kStandInWindow;
    WNDCLASSEXW window_class{};
    window_class.cbSize = sizeof window_class;
    window_class.style = CS_HREDRAW | CS_VREDRAW;
    window_class.lpfnWndProc = WindowProcedure;
    window_class.hInstance = program;
    window_class.hIcon = LoadIconW(program, MAKEINTRESOURCEW(IDI_CATIASIM));
    window_class.hIconSm = static_cast<HICON>(LoadImageW(program, MAKEINTRESOURCEW(IDI_CATIASIM),
                                                         IMAGE_ICON, GetSystemMetrics(SM_CXSMICON),
                                                         GetSystemMetrics(SM_CYSMICON), LR_SHARED));
    window_class.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)); // the arrow
    window_class.lpszMenuName = MAKEINTRESOURCEW(IDR_MENU);
    window_class.lpszClassName = class_name;
    RegisterClassExW(&window_class);

    const int dpi = static_cast<int>(GetDpiForSystem());
    CreateWindowExW(WS_EX_ACCEPTFILES, class_name, com::Widen(session.WindowTitle()).c_str(),
                    WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                    MulDiv(860, dpi, USER_DEFAULT_SCREEN_DPI),
                    MulDiv(680, dpi, USER_DEFAULT_SCREEN_DPI), nullptr, nullptr, program, this);
    if (window_ == nullptr) {
        throw std::runtime_error("the window cannot be created");
    }
    session_.changed = [this] { Changed(); };
    ShowChanges();
    ShowWindow(window_, SW_SHOWNORMAL);
}

SessionWindow::~SessionWindow() {
    session_.changed = nullptr;
    if (window_ != nullptr) {
        DestroyWindow(window_);
    }
}

int SessionWindow::Run() {
    ACCEL open{FCONTROL | FVIRTKEY, 'O', ID_OPEN};
    const HACCEL accelerators = CreateAcceleratorTableW(&open, 1);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (dialog_ != nullptr && IsDialogMessageW(dialog_, &message) != FALSE) {
            continue;
        }
        if (TranslateAcceleratorW(window_, accelerators, &message) == 0) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    DestroyAcceleratorTable(accelerators);
    return static_cast<int>(message.wParam);
}

void SessionWindow::Open(const std::vector<std::string>& paths) {
    std::string first;
    for (const std::string& path : paths) {
        try {
            session_.LoadDocument(path, ReadWholeFile(path));
            if (first.empty()) {
                first = session_.ActiveDocumentName();
            }
        } catch (const std::runtime_error& error) {
            ShowError("Dokument se nepodařilo otevřít.\n\n" + std::string(error.what()));
        }
    }
    if (!first.empty()) {
        first_line_ = 0;
        session_.Activate(first);
        ShowChanges();
    }
}

// The names are taken before anything of them is opened: a message would keep the memory.
void SessionWindow::OpenDropped(HDROP drop) {
    constexpr UINT kHowMany = 0xFFFFFFFF;
    const UINT count = DragQueryFileW(drop, kHowMany, nullptr, 0);
    std::vector<std::string> paths;
    paths.reserve(count);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, nullptr, 0) + 1, L'\0');
        path.resize(DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size())));
        paths.push_back(com::Narrow(path));
    }
    DragFinish(drop);
    SetForegroundWindow(window_);
    Open(paths);
}

void SessionWindow::StartCompanion() {
    Trap([this] {
        companion_.Start();
        SetTimer(window_, kCompanionTimer, kLookEvery, nullptr);
    });
}

void SessionWindow::ComeForward() {
    if (IsIconic(window_) != FALSE) {
        ShowWindow(window_, SW_RESTORE);
    }
    SetForegroundWindow(window_);
    StartCompanion();
}

LRESULT CALLBACK SessionWindow::WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message == WM_NCCREATE) {
        auto* const created =
            static_cast<SessionWindow*>(reinterpret_cast<CREATESTRUCTW*>(l)->lpCreateParams);
        created->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* const self = reinterpret_cast<SessionWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return self != nullptr ? self->Handle(message, w, l) : DefWindowProcW(window, message, w, l);
}

LRESULT SessionWindow::Handle(UINT message, WPARAM w, LPARAM l) {
    switch (message) {
    case WM_CREATE:
        status_ = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP,
                                  0, 0, 0, 0, window_, nullptr, program_, nullptr);
        return 0;
    case WM_SIZE:
        LayOut();
        return 0;
    case WM_DPICHANGED: {
        const RECT& place = *reinterpret_cast<const RECT*>(l);
        SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    }
    case WM_ERASEBKGND:
        return 1; // painted whole
    case WM_PAINT:
        Paint();
        return 0;
    case WM_TIMER:
        if (w == kShowTimer) {
            KillTimer(window_, kShowTimer);
            ShowChanges();
        } else if (companion_.PlaceBeside(window_)) {
            KillTimer(window_, kCompanionTimer);
        }
        return 0;
    case WM_DROPFILES:
        OpenDropped(reinterpret_cast<HDROP>(w));
        return 0;
    case kComeForward:
        ComeForward();
        return 0;
    case WM_VSCROLL:
        Scroll(w);
        return 0;
    case WM_MOUSEWHEEL: {
        constexpr int kLinesPerNotch = 3;
        ScrollTo(first_line_ - GET_WHEEL_DELTA_WPARAM(w) * kLinesPerNotch / WHEEL_DELTA);
        return 0;
    }
    case WM_LBUTTONDOWN:
        Click({GET_X_LPARAM(l), GET_Y_LPARAM(l)});
        return 0;
    case WM_INITMENUPOPUP:
        if (HIWORD(l) == FALSE) { // not the system menu
            FillMenu(reinterpret_cast<HMENU>(w), LOWORD(l));
        }
        return 0;
    case WM_COMMAND:
        Do(LOWORD(w));
        return 0;
    case WM_COPYDATA: {
        const auto& data = *reinterpret_cast<COPYDATASTRUCT*>(l);
        if (data.dwData != kRemoteControl) {
            return 0;
        }
        try {
            DoRemoteCommand(session_, {static_cast<const char*>(data.lpData), data.cbData},
                            {.set_title = [this](const std::string& title) { title_ = title; },
                             .show_dialog = [this](bool open) { ShowDialog(open); }});
        } catch (const std::runtime_error&) {
            return 0; // the driver reports it
        }
        ShowChanges();
        return 1;
    }
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    case WM_NCDESTROY:
        SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
        window_ = nullptr;
        return 0;
    default:
        return DefWindowProcW(window_, message, w, l);
    }
}

RECT SessionWindow::DocumentArea() const {
    RECT area;
    RECT status;
    GetClientRect(window_, &area);
    GetWindowRect(status_, &status);
    area.bottom = std::max(area.bottom - (status.bottom - status.top), area.top);
    return area;
}

// Drawn to memory first, so that the window does not flicker while a table fills.
void SessionWindow::Paint() {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window_, &paint);
    const RECT area = DocumentArea();
    const HDC memory = CreateCompatibleDC(dc);
    const com::Owned<HBITMAP> bitmap(
        CreateCompatibleBitmap(dc, std::max(area.right, 1L), std::max(area.bottom, 1L)));
    const HGDIOBJ before = SelectObject(memory, bitmap.get());
    PaintDocument(memory, area, GetDpiForWindow(window_), session_.ActiveDocument().get(),
                  first_line_);
    BitBlt(dc, 0, 0, area.right, area.bottom, memory, 0, 0, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    EndPaint(window_, &paint);
}

void SessionWindow::Changed() {
    // A timer that runs is left alone: set anew by every change, it would never end.
    if (window_ != nullptr && !show_pending_) {
        show_pending_ = SetTimer(window_, kShowTimer, kShowEvery, nullptr) != 0;
    }
}

void SessionWindow::ShowChanges() {
    show_pending_ = false;
    const std::wstring title = com::Widen(title_.empty() ? session_.WindowTitle() : title_);
    std::wstring shown(title.size() + 2, L'\0');
    shown.resize(static_cast<std::size_t>(
        GetWindowTextW(window_, shown.data(), static_cast<int>(shown.size()))));
    if (shown != title) {
        SetWindowTextW(window_, title.c_str());
    }
    ShowStatus();
    UpdateScrollBar();
    InvalidateRect(window_, nullptr, FALSE);
}

void SessionWindow::ShowStatus() {
    const auto& document = session_.ActiveDocument();
    std::string text = "Ready";
    if (document != nullptr && document->active_sheet != nullptr) {
        const Sheet& sheet = *document->active_sheet;
        std::size_t tables = 0;
        for (const auto& view : sheet.views) {
            tables += view->tables.size();
        }
        text = sheet.name + (sheet.detail ? " (detail)" : "") +
               "    tables: " + std::to_string(tables) +
               "    selected: " + std::to_string(document->selection.size());
    } else if (document != nullptr && document->product != nullptr) {
        text = document->product->part_number +
               "    instances: " + std::to_string(TreeLines(*document->product) - 1);
    }
    SendMessageW(status_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(com::Widen(text).c_str()));
}

void SessionWindow::LayOut() {
    SendMessageW(status_, WM_SIZE, 0, 0);
    UpdateScrollBar();
    InvalidateRect(window_, nullptr, FALSE);
}

void SessionWindow::UpdateScrollBar() {
    const auto& document = session_.ActiveDocument();
    const bool tree = document != nullptr && document->product != nullptr;
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = tree ? TreeLines(*document->product) - 1 : 0;
    info.nPage =
        tree ? static_cast<UINT>(TreeLinesIn(DocumentArea(), GetDpiForWindow(window_))) : 1;
    info.nPos = first_line_;
    first_line_ = SetScrollInfo(window_, SB_VERT, &info, TRUE);
}

void SessionWindow::ScrollTo(int line) {
    first_line_ = std::max(line, 0);
    UpdateScrollBar();
    InvalidateRect(window_, nullptr, FALSE);
}

void SessionWindow::Scroll(WPARAM request) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window_, SB_VERT, &info);
    switch (LOWORD(request)) {
    case SB_LINEUP:
        return ScrollTo(first_line_ - 1);
    case SB_LINEDOWN:
        return ScrollTo(first_line_ + 1);
    case SB_PAGEUP:
        return ScrollTo(first_line_ - static_cast<int>(info.nPage));
    case SB_PAGEDOWN:
        return ScrollTo(first_line_ + static_cast<int>(info.nPage));
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return ScrollTo(info.nTrackPos);
    case SB_TOP:
        return ScrollTo(info.nMin);
    case SB_BOTTOM:
        return ScrollTo(info.nMax);
    default:
        return;
    }
}

void SessionWindow::Click(POINT point) {
    const auto& document = session_.ActiveDocument();
    if (document == nullptr) {
        return;
    }
    if (const auto table = TableAt(DocumentArea(), *document, point)) {
        document->selection = {table};
    } else {
        document->selection.clear();
    }
    ShowChanges();
}

void SessionWindow::FillMenu(HMENU menu, int place) {
    const auto& document = session_.ActiveDocument();
    std::vector<std::string> names;
    switch (place) {
    case kDocumentMenu: {
        names = session_.DocumentNames();
        const auto active = std::find(names.begin(), names.end(), session_.ActiveDocumentName());
        FillList(menu, names, static_cast<std::size_t>(active - names.begin()), ID_FIRST_DOCUMENT,
                 L"(none open)");
        break;
    }
    case kSheetMenu: {
        std::size_t active = 0;
        if (document != nullptr) {
            const auto& sheets = document->sheets;
            active = static_cast<std::size_t>(
                std::find(sheets.begin(), sheets.end(), document->active_sheet) - sheets.begin());
            for (const auto& sheet : sheets) {
                names.push_back(sheet->name + (sheet->detail ? " (detail)" : ""));
            }
        }
        FillList(menu, names, active, ID_FIRST_SHEET, L"(no drawing)");
        break;
    }
    case kSelectionMenu: {
        std::size_t selected = ID_LIST_LENGTH;
        if (document != nullptr && document->active_sheet != nullptr) {
            for (const auto& view : document->active_sheet->views) {
                for (std::size_t i = 0; i < view->tables.size(); ++i) {
                    if (IsSelected(*document, view->tables[i])) {
                        selected = names.size();
                    }
                    names.push_back(view->name + ": table " + std::to_string(i + 1));
                }
            }
        }
        FillList(menu, names, selected, ID_FIRST_TABLE, L"(no table)");
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        AppendMenuW(menu, MF_STRING, ID_CLEAR_SELECTION, L"&Clear selection");
        break;
    }
    case kFaultsMenu:
        CheckMenuItem(menu, ID_DETAIL_AS_NUMBER,
                      session_.detail_as_number ? MF_CHECKED : MF_UNCHECKED);
        CheckMenuItem(menu, ID_RECOMPUTE,
                      session_.recompute_time.count() > 0 ? MF_CHECKED : MF_UNCHECKED);
        break;
    case kMannerMenu:
        for (const MannerItem& item : kMannerItems) {
            CheckMenuItem(menu, static_cast<UINT>(item.id),
                          session_.manner.*item.is_on ? MF_CHECKED : MF_UNCHECKED);
        }
        break;
    default:
        EnableMenuItem(menu, ID_WRITE_DRAWING,
                       document != nullptr && document->kind == DocumentKind::kDrawing ? MF_ENABLED
                                                                                       : MF_GRAYED);
    }
}

// The window takes no input meanwhile, as CATIA's own does not.
void SessionWindow::ShowDialog(bool open) {
    if (open && dialog_ == nullptr) {
        dialog_ = CreateDialogParamW(program_, MAKEINTRESOURCEW(IDD_BUSY), window_, DialogProcedure,
                                     reinterpret_cast<LPARAM>(this));
        if (dialog_ == nullptr) {
            throw std::runtime_error("the dialog cannot be opened");
        }
        EnableWindow(window_, FALSE);
        ShowWindow(dialog_, SW_SHOW);
    } else if (!open && dialog_ != nullptr) {
        EnableWindow(window_, TRUE); // before the dialog goes, so that this window is the next one
        DestroyWindow(dialog_);
        dialog_ = nullptr;
    }
    session_.dialog_open = open;
}

INT_PTR CALLBACK SessionWindow::DialogProcedure(HWND dialog, UINT message, WPARAM w, LPARAM l) {
    switch (message) {
    case WM_INITDIALOG:
        SetWindowLongPtrW(dialog, DWLP_USER, l);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(w) == IDOK || LOWORD(w) == IDCANCEL) {
            reinterpret_cast<SessionWindow*>(GetWindowLongPtrW(dialog, DWLP_USER))
                ->ShowDialog(false);
            return TRUE;
        }
        return FALSE;
    default:
        return FALSE;
    }
}

void SessionWindow::Do(int command) {
    constexpr int kTenth = 10;
    constexpr std::chrono::seconds kSlow{5};
    constexpr std::chrono::milliseconds kSlowDisplay{2};
    constexpr int kShort = 4;
    constexpr int kEndless = 1'000'000'000;
    switch (command) {
    case ID_OPEN:
        if (const std::string path = AskPath(false, L"Open a document"); !path.empty()) {
            Open({path});
        }
        break;
    case ID_CLOSE_ALL:
        session_.CloseAllDocuments();
        break;
    case ID_WRITE_DRAWING:
        if (const std::string path = AskPath(true, L"Write the drawing as text"); !path.empty()) {
            Trap([&] { WriteWholeFile(path, session_.DrawingAsText()); });
        }
        break;
    case ID_WRITE_LOG:
        if (const std::string path = AskPath(true, L"Write the call log"); !path.empty()) {
            Trap([&] { WriteWholeFile(path, LogAsText(session_)); });
        }
        break;
    case ID_CLEAR_LOG:
        session_.ClearLog();
        break;
    case ID_EXIT:
        SendMessageW(window_, WM_CLOSE, 0, 0);
        return;
    case ID_CLEAR_SELECTION:
        session_.ClearSelection();
        break;
    case ID_REFUSE_NEXT:
        session_.Arm({1, FaultKind::kRefused, 1});
        break;
    case ID_REFUSE_TENTH:
        session_.Arm({kTenth, FaultKind::kRefused, 1});
        break;
    case ID_BUSY_SHORT:
        session_.Arm({1, FaultKind::kBusy, kShort});
        break;
    case ID_BUSY_LONG:
        session_.Arm({1, FaultKind::kBusy, kEndless});
        break;
    case ID_DIALOG:
        Trap([this] { ShowDialog(true); });
        break;
    case ID_SLOW_NEXT:
        session_.Arm({.call = 1, .kind = FaultKind::kSlow, .milliseconds = kSlow});
        break;
    case ID_RECOMPUTE:
        session_.recompute_time =
            session_.recompute_time.count() > 0 ? std::chrono::milliseconds{0} : kSlowDisplay;
        break;
    case ID_VANISH_NEXT:
        session_.Arm({1, FaultKind::kVanished, 1});
        break;
    case ID_VANISH_TENTH:
        session_.Arm({kTenth, FaultKind::kVanished, 1});
        break;
    case ID_CLOSE_NEXT:
        session_.Arm({1, FaultKind::kClosed, 1});
        break;
    case ID_DELETE_NEXT:
        session_.Arm({1, FaultKind::kDeleted, 1});
        break;
    case ID_DISARM:
        session_.Arm({});
        break;
    case ID_DETAIL_AS_NUMBER:
        session_.detail_as_number = !session_.detail_as_number;
        break;
    default:
        for (const MannerItem& item : kMannerItems) {
            if (item.id == command) {
                session_.manner.*item.is_on = !(session_.manner.*item.is_on);
            }
        }
        DoInList(command);
    }
    ShowChanges();
}

// A command of one of the menus that list things. The list may have changed since the menu opened.
void SessionWindow::DoInList(int command) {
    const auto& document = session_.ActiveDocument();
    const auto place = static_cast<std::size_t>(command % ID_LIST_LENGTH);
    switch (command - command % ID_LIST_LENGTH) {
    case ID_FIRST_DOCUMENT:
        if (const auto names = session_.DocumentNames(); place < names.size()) {
            first_line_ = 0;
            session_.Activate(names[place]);
        }
        break;
    case ID_FIRST_SHEET:
        if (document != nullptr && place < document->sheets.size()) {
            session_.ActivateSheet(document->sheets[place]->name);
        }
        break;
    case ID_FIRST_TABLE:
        if (document != nullptr && document->active_sheet != nullptr) {
            std::size_t first = 0;
            for (const auto& view : document->active_sheet->views) {
                if (place < first + view->tables.size()) {
                    document->selection = {view->tables[place - first]};
                    break;
                }
                first += view->tables.size();
            }
        }
        break;
    default:
        break;
    }
}

void SessionWindow::Trap(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        ShowError(error.what());
    }
}

// Above a Dorvak that is kept on top.
void SessionWindow::ShowError(const std::string& text) const {
    MessageBoxW(window_, com::Widen(text).c_str(), kProgramName, MB_OK | MB_ICONERROR | MB_TOPMOST);
}

std::string SessionWindow::AskPath(bool save, const wchar_t* title) const {
    std::array<wchar_t, 32768> path{};
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = window_;
    dialog.lpstrFilter = L"Text files (*.txt)\0*.txt\0All files\0*.*\0";
    dialog.lpstrFile = path.data();
    dialog.nMaxFile = static_cast<DWORD>(path.size());
    dialog.lpstrTitle = title;
    dialog.lpstrDefExt = L"txt";
    dialog.Flags =
        OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST | (save ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    const BOOL chosen = save ? GetSaveFileNameW(&dialog) : GetOpenFileNameW(&dialog);
    return chosen != FALSE ? com::Narrow(path.data()) : std::string();
}

} // namespace simulator
