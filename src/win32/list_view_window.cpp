#include "win32/list_view_window.hpp"

#include <windowsx.h>

#include <algorithm>

#include "com/utf.hpp"
#include "text/text.hpp"
#include "win32/accessible_names.hpp"
#include "win32/clipboard.hpp"
#include "win32/system_colours.hpp"

namespace win32 {

namespace {

int ToItem(std::size_t row) {
    return static_cast<int>(row) - 1;
}

// Windows asks to edit a name, with its item; the field opens once that has ended.
constexpr UINT kRenameMessage = WM_APP + 1;

WNDPROC own_header_procedure = nullptr; // of the headers' class

// Two parts of a colour on five of another.
COLORREF Mixed(COLORREF colour, COLORREF ground) {
    const auto part = [&](int shift) {
        const auto of = [shift](COLORREF from) { return from >> shift & 0xFFU; };
        return (2 * of(colour) + 5 * of(ground)) / 7 << shift;
    };
    return part(0) | part(8) | part(16);
}

// A list's font as marked rows have it.
com::Owned<HFONT> MarkedFont(HFONT font) {
    LOGFONTW description{};
    GetObjectW(font, sizeof description, &description);
    description.lfItalic = TRUE;
    if (IsHighContrast()) { // where the colours are the system's
        description.lfWeight = FW_BOLD;
    }
    return com::Owned<HFONT>(CreateFontIndirectW(&description));
}

POINT PointOf(LPARAM l) {
    return {GET_X_LPARAM(l), GET_Y_LPARAM(l)};
}

} // namespace

ListViewWindow::ListViewWindow(HWND window, controls::ListView& list, Look look, RunEvent run_event)
    : View(window), list_(list), look_(std::move(look)), run_event_(std::move(run_event)),
      field_(window, [this](CellField::Wish wish) { OnFieldWish(wish); }) {
    const DWORD check_boxes = look_.check_boxes ? LVS_EX_CHECKBOXES : 0U;
    ListView_SetExtendedListViewStyle(Window(), LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER |
                                                    LVS_EX_LABELTIP | check_boxes);
    if (look_.check_boxes) {
        ListView_SetCallbackMask(Window(), LVIS_STATEIMAGEMASK);
    }
    if (look_.edits_cells) { // rows that are painted spare the field
        SetWindowLongPtrW(Window(), GWL_STYLE,
                          GetWindowLongPtrW(Window(), GWL_STYLE) | WS_CLIPCHILDREN);
    }
    int index = 0;
    for (const std::string& caption : list_.Columns()) {
        std::wstring text = com::Widen(caption);
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_SUBITEM;
        column.pszText = text.data();
        column.iSubItem = index;
        SendMessageW(Window(), LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&column));
        ++index;
    }
    list_.HitTest = [this](int x, int y) { return RowAt({x, y}); };
    SetWindowSubclass(Window(), WindowProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
    // The list asks its header once for every item that it changes. A subclass of the common
    // controls would look itself up each time, which takes longer than everything else.
    const HWND header = ListView_GetHeader(Window());
    own_header_procedure = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(header, GWLP_WNDPROC));
    SetWindowLongPtrW(header, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(HeaderProcedure));
}

ListViewWindow::~ListViewWindow() {
    list_.HitTest = nullptr;
    field_.Close();
    RemoveWindowSubclass(Window(), WindowProcedure, kSubclass);
}

void ListViewWindow::SetDpi(UINT dpi) {
    const bool fills = shown_dpi_ == 0 || FillsWidth();
    int index = 0;
    for (const int width : look_.column_widths) {
        // The person may have changed it.
        const int scaled =
            shown_dpi_ == 0
                ? Scaled(width, dpi)
                : platform::Proportion(ListView_GetColumnWidth(Window(), index),
                                       static_cast<int>(dpi), static_cast<int>(shown_dpi_));
        ListView_SetColumnWidth(Window(), index, scaled);
        ++index;
    }
    shown_dpi_ = dpi;
    marked_font_.reset(); // the list has another one
    if (fills) {
        FillWidth();
    }
    // Columns that were too wide for a moment had a scroll bar, which takes room from the rows.
    if (look_.whole_rows) {
        EndAfterWholeRow();
    }
    PlaceField();
}

void ListViewWindow::EndAfterWholeRow() const {
    const bool empty = shown_count_ == 0;
    if (empty) { // only a row says how high it is
        ListView_SetItemCountEx(Window(), 1, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
    }
    RECT row{};
    ListView_GetItemRect(Window(), 0, &row, LVIR_BOUNDS);
    if (empty) {
        ListView_SetItemCountEx(Window(), 0, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
    }
    RECT header{};
    RECT client;
    RECT outer;
    GetClientRect(ListView_GetHeader(Window()), &header);
    GetClientRect(Window(), &client);
    GetWindowRect(Window(), &outer);
    if (row.bottom > row.top) {
        const int part = (client.bottom - header.bottom) % (row.bottom - row.top);
        SetWindowPos(Window(), nullptr, 0, 0, outer.right - outer.left,
                     outer.bottom - outer.top - part, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

int ListViewWindow::ColumnsWidth() const {
    int width = 0;
    for (int column = 0; column < static_cast<int>(look_.column_widths.size()); ++column) {
        width += ListView_GetColumnWidth(Window(), column);
    }
    return width;
}

// The last column in sight takes what the others leave.
void ListViewWindow::FillWidth() {
    RECT client;
    GetClientRect(Window(), &client);
    auto last = static_cast<int>(look_.column_widths.size()) - 1;
    while (last > 0 && ListView_GetColumnWidth(Window(), last) == 0) {
        --last;
    }
    const int left_over = client.right - ColumnsWidth();
    const int width = ListView_GetColumnWidth(Window(), last) + left_over;
    if (width > 0) {
        filled_width_ = client.right;
        ListView_SetColumnWidth(Window(), last, width);
    }
}

void ListViewWindow::Refresh() {
    if (list_.Revision() == shown_revision_) {
        return;
    }
    const FlagWhile refreshing(refreshing_);
    shown_revision_ = list_.Revision();
    if (list_.Count() != shown_count_) {
        const bool grows = list_.Count() > shown_count_;
        ListView_SetItemCountEx(Window(), static_cast<int>(list_.Count()),
                                LVSICF_NOINVALIDATEALL | (grows ? LVSICF_NOSCROLL : 0U));
        shown_count_ = list_.Count();
        // Which rows stay selected and current when their number changes is Windows' affair.
        ReadStates();
        shown_selected_ = selected_items_;
    }
    PushSelection();
    if (const auto row = list_.TakeRowToShow(); row && *row <= shown_count_) {
        ListView_EnsureVisible(Window(), ToItem(*row), FALSE);
    }
    if (list_.CurrentColumn() != shown_column_) {
        shown_column_ = list_.CurrentColumn();
        ShowColumn(shown_column_);
    }
    if (list_.TakeWantsFocus() && IsWindowVisible(Window()) != FALSE) {
        SetFocus(Window());
    }
    FollowEditedRow();
    tool_tip_.Show(Window(), list_.ToolTip());
    InvalidateRect(Window(), nullptr, FALSE);
}

void ListViewWindow::PushSelection() {
    if (list_.SelectionRevision() != shown_selection_) {
        shown_selection_ = list_.SelectionRevision();
        PushSelectedRows();
    }
    const auto current = list_.CurrentRow();
    if (current && !HasItemState(ToItem(*current), LVIS_FOCUSED)) {
        SetItemState(ToItem(*current), LVIS_FOCUSED, LVIS_FOCUSED);
    } else if (const int focused = FocusedItem(); !current && focused >= 0) {
        // Not for all rows at once, which takes seconds for a long list.
        SetItemState(focused, 0, LVIS_FOCUSED);
    }
}

void ListViewWindow::PushSelectedRows() {
    const std::vector<controls::ListRow>& rows = list_.Rows();
    const auto selected_rows =
        static_cast<std::size_t>(std::ranges::count(rows, true, &controls::ListRow::selected));
    if (shown_count_ > 0 && (selected_rows == 0 || selected_rows == shown_count_)) {
        if (selected_rows != selected_count_) {
            // Every item would be invalidated by itself.
            SetWindowRedraw(Window(), FALSE);
            SetItemState(-1, selected_rows > 0 ? LVIS_SELECTED : 0U, LVIS_SELECTED);
            SetWindowRedraw(Window(), TRUE);
        }
        shown_selected_.assign(shown_count_, selected_rows > 0);
        return;
    }
    for (std::size_t row = 1; row <= shown_count_; ++row) {
        const bool selected = rows[row - 1].selected;
        if (selected != shown_selected_[row - 1]) {
            shown_selected_[row - 1] = selected;
            SetItemState(ToItem(row), selected ? LVIS_SELECTED : 0U, LVIS_SELECTED);
        }
    }
}

void ListViewWindow::Pull() {
    if (!selection_changed_) {
        return;
    }
    selection_changed_ = false;
    if (list_.Count() != shown_count_) {
        return; // the program has changed the rows meanwhile
    }
    const bool in_step = list_.Revision() == shown_revision_;
    if (ListView_GetSelectedCount(Window()) != selected_count_) {
        ReadStates();
    }
    for (std::size_t row = 1; row <= shown_count_; ++row) {
        if (selected_items_[row - 1] != shown_selected_[row - 1]) {
            list_.SetSelected(row, selected_items_[row - 1]);
        }
    }
    shown_selected_ = selected_items_;
    const int focused = FocusedItem();
    list_.SetCurrentRow(focused < 0 ? std::nullopt
                                    : std::optional(static_cast<std::size_t>(focused) + 1));
    if (in_step) {
        shown_revision_ = list_.Revision();
        shown_selection_ = list_.SelectionRevision();
    }
}

LRESULT ListViewWindow::OnNotify(NMHDR& header) {
    switch (header.code) {
    case LVN_GETDISPINFOW:
        OnGetDisplayInfo(reinterpret_cast<NMLVDISPINFOW&>(header).item);
        return 0;
    case LVN_ITEMCHANGED: {
        const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
        const bool all = change.iItem < 0;
        NoteStates(all ? 0 : change.iItem, all ? static_cast<int>(shown_count_) - 1 : change.iItem,
                   change.uOldState, change.uNewState);
        return 0;
    }
    case LVN_ODSTATECHANGED: {
        const auto& change = reinterpret_cast<const NMLVODSTATECHANGE&>(header);
        NoteStates(change.iFrom, change.iTo, change.uOldState, change.uNewState);
        return 0;
    }
    case LVN_ODFINDITEMW:
        return FindByPrefix(reinterpret_cast<const NMLVFINDITEMW&>(header));
    case NM_CLICK:
        if (!dragging_) {
            run_event_([this] { list_.UserClick(); });
        }
        return 0;
    case LVN_BEGINDRAG: {
        const auto& begin = reinterpret_cast<const NMLISTVIEW&>(header);
        const auto row = static_cast<std::size_t>(begin.iItem) + 1;
        if (left_down_ && begin.iItem >= 0) {
            dragging_ = true;
            dragged_row_ = can_drag && row <= list_.Count() && can_drag(row) ? row : 0;
            SetCapture(Window());
        }
        return 0;
    }
    case LVN_BEGINLABELEDITW: {
        const LVITEMW& item = reinterpret_cast<const NMLVDISPINFOW&>(header).item;
        PostMessageW(Window(), kRenameMessage, static_cast<WPARAM>(item.iItem), 0);
        return TRUE; // not by Windows' own field
    }
    case NM_CUSTOMDRAW:
        return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
    default:
        return 0;
    }
}

void ListViewWindow::OnGetDisplayInfo(LVITEMW& item) {
    const auto row = static_cast<std::size_t>(item.iItem) + 1;
    const bool exists = row >= 1 && row <= list_.Count();
    if ((item.mask & LVIF_TEXT) != 0) {
        display_text_.clear();
        if (exists) {
            display_text_ = com::Widen(
                item.iSubItem == 0 ? list_.Row(row).text
                                   : list_.SubItem(row, static_cast<std::size_t>(item.iSubItem)));
        }
        item.pszText = display_text_.data();
    }
    if ((item.mask & LVIF_STATE) != 0 && look_.check_boxes && item.iSubItem == 0) {
        const bool checked = exists && list_.Row(row).checked;
        item.state = CheckState(checked);
        item.stateMask = LVIS_STATEIMAGEMASK;
    }
}

LRESULT ListViewWindow::FindByPrefix(const NMLVFINDITEMW& find) const {
    const std::size_t count = list_.Count();
    if ((find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || count == 0) {
        return -1;
    }
    const std::wstring_view wanted = find.lvfi.psz;
    const auto first = static_cast<std::size_t>(std::max(find.iStart, 0));
    for (std::size_t step = 0; step < count; ++step) {
        const std::size_t row = (first + step) % count + 1;
        // No character of UTF-16 takes more than three bytes of UTF-8.
        const std::wstring text =
            com::Widen(std::string_view(list_.Row(row).text).substr(0, 3 * wanted.size()))
                .substr(0, wanted.size());
        if (CompareStringOrdinal(text.data(), static_cast<int>(text.size()), wanted.data(),
                                 static_cast<int>(wanted.size()), TRUE) == CSTR_EQUAL) {
            return ToItem(row);
        }
    }
    return -1;
}

LRESULT CALLBACK ListViewWindow::HeaderProcedure(HWND window, UINT message, WPARAM w, LPARAM l) {
    // The header shows a pointer of its own over the dividers; the busy pointer goes first.
    if (message == WM_SETCURSOR && SendMessageW(GetParent(window), message, w, l) != 0) {
        return TRUE;
    }
    return CallWindowProcW(own_header_procedure, window, message, w, l);
}

LRESULT CALLBACK ListViewWindow::WindowProcedure(HWND, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                                                 DWORD_PTR self) {
    return reinterpret_cast<ListViewWindow*>(self)->OnMessage(message, w, l);
}

LRESULT ListViewWindow::OnMessage(UINT message, WPARAM w, LPARAM l) {
    switch (message) {
    case WM_SIZE: {
        const bool fills = FillsWidth();
        const LRESULT result = DefSubclassProc(Window(), message, w, l);
        if (fills) {
            FillWidth();
        }
        PlaceField();
        return result;
    }
    case WM_NOTIFY: {
        const LRESULT result = DefSubclassProc(Window(), message, w, l);
        if (reinterpret_cast<const NMHDR*>(l)->code == HDN_ITEMCHANGEDW) {
            PlaceField(); // a column has another width
        }
        return result;
    }
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
        TakeEdit();
        break;
    case WM_COMMAND:
        if (field_.IsOpen() && reinterpret_cast<HWND>(l) == field_.Window()) {
            return 0; // Windows would take it for its own field
        }
        break;
    case LVM_GETEDITCONTROL:
        return reinterpret_cast<LRESULT>(field_.Window());
    case LVM_CANCELEDITLABEL:
        field_.Close();
        return 0;
    case kRenameMessage:
        // Not by a click on another cell of a row that is selected.
        if (!field_.IsOpen() && GetFocus() == Window() && list_.CurrentColumn() == 0) {
            BeginEdit({w + 1, 0}, false);
        }
        return 0;
    case WM_LBUTTONDBLCLK:
        return OnDoubleClick(w, l) ? 0 : OnButtonDown(message, w, l);
    case WM_LBUTTONDOWN:
        return OnButtonDown(message, w, l);
    case WM_RBUTTONDOWN:
        return OnRightButtonDown(l);
    case WM_RBUTTONUP:
        RaiseMouseUp(controls::kRightButton, PointOf(l));
        return 0;
    case WM_LBUTTONUP:
        if (on_check_box_) {
            // Its release is no drop, wherever the mouse has gone meanwhile.
            on_check_box_ = false;
            left_down_ = false;
            ReleaseCapture();
            run_event_([this] { list_.UserClick(); });
            return 0;
        }
        {
            const FlagWhile releasing(releasing_);
            DefSubclassProc(Window(), message, w, l);
        }
        RaiseMouseUp(controls::kLeftButton, PointOf(l));
        return 0;
    case WM_MOUSEMOVE:
        if (dragging_) {
            DragOver(PointOf(l));
            return 0;
        }
        break;
    case WM_CAPTURECHANGED:
        if (!releasing_ && reinterpret_cast<HWND>(l) != Window()) {
            CancelDrag();
        }
        break;
    case WM_KEYDOWN:
        return OnKeyDown(w) ? 0 : OnKey(message, w, l);
    case LVM_SETITEMSTATE:
        if (OnSetState(w, *reinterpret_cast<const LVITEMW*>(l))) {
            return TRUE;
        }
        break;
    case WM_SYSCOLORCHANGE:
        marked_font_.reset(); // high contrast has another one
        break;
    case WM_SYSKEYDOWN:
        if (w == VK_UP || w == VK_DOWN) {
            run_event_([this, w] { list_.UserMoveKey(w == VK_DOWN ? 1 : -1); });
        }
        break; // Windows must see it: Alt alone would open the window's menu as it goes up
    case WM_CHAR:
        if (w == L' ' && look_.check_boxes) {
            return 0; // the key has toggled the check box already
        }
        return OnKey(message, w, l);
    case WM_CONTEXTMENU:
        // The mouse's menu belongs to the press of the button; this one comes from the keyboard.
        if (l == -1) {
            run_event_([this] { list_.UserMenuKey(); });
        }
        return 0;
    default:
        break;
    }
    return DefSubclassProc(Window(), message, w, l);
}

void ListViewWindow::NoteStates(int first, int last, UINT before, UINT now) {
    selection_changed_ = selection_changed_ || !refreshing_;
    if (((before ^ now) & LVIS_SELECTED) != 0) {
        const bool selected = (now & LVIS_SELECTED) != 0;
        const auto end = std::min(static_cast<std::size_t>(last + 1), selected_items_.size());
        for (auto item = static_cast<std::size_t>(first); item < end; ++item) {
            if (selected_items_[item] != selected) {
                selected_items_[item] = selected;
                selected_count_ = selected ? selected_count_ + 1 : selected_count_ - 1;
            }
        }
    }
    // A list that takes the focus from a row and gives it back says of the second that the row has
    // had it all along.
    if ((now & LVIS_FOCUSED) != 0 && first == last) {
        focused_item_ = first;
    } else if ((before & LVIS_FOCUSED) != 0 && first <= focused_item_ && focused_item_ <= last) {
        focused_item_ = -1;
    }
}

// Asks Windows for what its notifications cannot tell.
void ListViewWindow::ReadStates() {
    selected_items_.assign(shown_count_, false);
    selected_count_ = ListView_GetSelectedCount(Window());
    int item = -1;
    for (std::size_t left = selected_count_; left > 0; --left) {
        item = ListView_GetNextItem(Window(), item, LVNI_SELECTED);
        if (item < 0 || static_cast<std::size_t>(item) >= shown_count_) {
            selected_count_ -= left;
            break;
        }
        selected_items_[static_cast<std::size_t>(item)] = true;
    }
    focused_item_ = shown_count_ == 0 ? -1 : ListView_GetNextItem(Window(), -1, LVNI_FOCUSED);
}

// Whoever goes from row to row by keyboard sees each in the fields beside the list, as by a click.
LRESULT ListViewWindow::OnKey(UINT message, WPARAM w, LPARAM l) {
    const int before = FocusedItem();
    const LRESULT result = DefSubclassProc(Window(), message, w, l);
    if (FocusedItem() != before) {
        run_event_([this] { list_.UserClick(); });
    }
    return result;
}

void ListViewWindow::PlaceField() {
    if (!field_.IsOpen()) {
        return;
    }
    const auto row = list_.RowWithId(field_.Begun().row_id);
    if (row && *row <= shown_count_) {
        field_.Place(CellRect({*row, field_.Begun().column}));
    }
}

void ListViewWindow::BeginEdit(const controls::Cell& cell, bool goes_on) {
    TakeEdit();
    if (cell.row > shown_count_ || cell.row > list_.Count()) {
        return;
    }
    ListView_EnsureVisible(Window(), ToItem(cell.row), FALSE);
    ShowColumn(cell.column);
    edit_goes_on_ = goes_on;
    field_.Open({list_.Row(cell.row).id, cell.column, list_.TextOf(cell), false},
                list_.Columns()[cell.column], CellRect(cell));
}

// A row that is gone has nothing to be edited any more.
void ListViewWindow::FollowEditedRow() {
    if (!field_.IsOpen()) {
        return;
    }
    if (list_.RowWithId(field_.Begun().row_id)) {
        PlaceField();
    } else {
        field_.Close();
    }
}

void ListViewWindow::EndEdit() {
    if (const auto typed = field_.Close()) {
        list_.UserEdit(*typed);
    }
}

void ListViewWindow::TakeEdit() {
    if (const auto typed = field_.Close()) {
        run_event_([this, typed = *typed] { list_.UserEdit(typed); });
    }
}

// Also a text that is as it was: other rows may have other ones.
void ListViewWindow::TakeEditForSelectedRows() {
    controls::TypedCell typed = field_.Typed();
    typed.for_selected_rows = true;
    field_.Close();
    run_event_([this, typed] { list_.UserEdit(typed); });
}

// Takes the text and opens the field over another cell, where there is one.
void ListViewWindow::GoOn(controls::CellStep step) {
    const controls::TypedCell from = field_.Begun();
    TakeEdit();
    const auto row = list_.RowWithId(from.row_id);
    const auto next =
        row ? list_.CellBeside({*row, from.column}, step) : std::optional<controls::Cell>();
    if (!next) {
        return;
    }
    run_event_([this, next = *next] {
        if (next.row <= list_.Count()) {
            const bool is_another = list_.CurrentRow() != next.row;
            list_.GoTo(next);
            if (is_another) {
                list_.UserClick(); // the fields beside the list show each row
            }
        }
    });
    BeginEdit(*next, true);
}

void ListViewWindow::OnFieldWish(CellField::Wish wish) {
    switch (wish) {
    case CellField::Wish::kTake:
        TakeEdit();
        break;
    case CellField::Wish::kEnter:
        if (edit_goes_on_) {
            GoOn(controls::CellStep::kBelow);
        } else {
            TakeEdit();
        }
        break;
    case CellField::Wish::kForSelectedRows:
        TakeEditForSelectedRows();
        break;
    case CellField::Wish::kNext:
        GoOn(controls::CellStep::kNext);
        break;
    case CellField::Wish::kPrevious:
        GoOn(controls::CellStep::kPrevious);
        break;
    case CellField::Wish::kCancel:
        field_.Close();
        break;
    }
}

void ListViewWindow::StepCell(controls::CellStep step) {
    Pull();
    if (const auto next =
            list_.CellBeside({list_.CurrentRow().value_or(1), list_.CurrentColumn()}, step)) {
        run_event_([this, column = next->column] { list_.SetCurrentColumn(column); });
    }
}

void ListViewWindow::ShowColumn(std::size_t column) const {
    int left = -GetScrollPos(Window(), SB_HORZ);
    for (int before = 0; before < static_cast<int>(column); ++before) {
        left += ListView_GetColumnWidth(Window(), before);
    }
    RECT client;
    GetClientRect(Window(), &client);
    const int right = left + ListView_GetColumnWidth(Window(), static_cast<int>(column));
    const int beyond = std::min<int>(std::max<int>(right - client.right, 0), left);
    if (const int distance = left < 0 ? left : beyond; distance != 0) {
        ListView_Scroll(Window(), distance, 0);
    }
}

// In the first column of the text, beside the check box.
RECT ListViewWindow::CellRect(const controls::Cell& cell) const {
    RECT place{};
    const int item = ToItem(cell.row);
    if (cell.column == 0) {
        ListView_GetItemRect(Window(), item, &place, LVIR_LABEL);
    } else {
        ListView_GetSubItemRect(Window(), item, static_cast<int>(cell.column), LVIR_BOUNDS, &place);
    }
    return place;
}

bool ListViewWindow::OnDoubleClick(WPARAM w, LPARAM l) {
    const auto cell = CellAt(PointOf(l));
    if (!cell) {
        return false;
    }
    left_down_ = false; // nothing is dragged or dropped by it
    DefSubclassProc(Window(), WM_LBUTTONDBLCLK, w, l);
    run_event_([this, cell = *cell] {
        if (cell.row <= list_.Count()) {
            list_.GoTo(cell);
        }
    });
    BeginEdit(*cell, true);
    return true;
}

// The column is in sight where it was pressed: scrolled further, something else would be there.
void ListViewWindow::MakeCurrent(const std::optional<controls::Cell>& pressed) {
    if (pressed) {
        shown_column_ = pressed->column;
        list_.SetCurrentColumn(pressed->column);
    }
}

LRESULT ListViewWindow::OnButtonDown(UINT message, WPARAM w, LPARAM l) {
    const POINT at = PointOf(l);
    left_down_ = true;
    run_event_([this, at, shift = ShiftState(), cell = CellAt(at)] {
        MakeCurrent(cell);
        list_.UserMouseDown(controls::kLeftButton, shift, at.x, at.y);
    });
    UINT flags = 0;
    const auto row = RowAt(at, &flags);
    if (row && look_.check_boxes && flags == LVHT_ONITEMSTATEICON) {
        SetFocus(Window());
        on_check_box_ = true;
        SetCapture(Window());
        Toggle(*row);
        return 0;
    }
    const LRESULT result = DefSubclassProc(Window(), message, w, l);
    // Where Windows detected by itself that this was no drag, the release never arrives here.
    if (left_down_ && !dragging_ && GetKeyState(VK_LBUTTON) >= 0) {
        const DWORD position = GetMessagePos();
        POINT released{GET_X_LPARAM(position), GET_Y_LPARAM(position)};
        ScreenToClient(Window(), &released);
        RaiseMouseUp(controls::kLeftButton, released);
    }
    return result;
}

LRESULT ListViewWindow::OnRightButtonDown(LPARAM l) {
    const POINT at = PointOf(l);
    SetFocus(Window());
    if (const auto row = RowAt(at)) {
        if (!HasItemState(ToItem(*row), LVIS_SELECTED)) {
            SetItemState(-1, 0, LVIS_SELECTED);
        }
        SetItemState(ToItem(*row), LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    }
    run_event_([this, at, shift = ShiftState(), cell = CellAt(at)] {
        MakeCurrent(cell);
        list_.UserMouseDown(controls::kRightButton, shift, at.x, at.y);
    });
    return 0;
}

void ListViewWindow::RaiseMouseUp(int button, POINT at) {
    if (button == controls::kLeftButton) {
        if (!left_down_) {
            return;
        }
        left_down_ = false;
        CancelDrag();
    }
    run_event_(
        [this, button, at, shift = ShiftState()] { list_.UserMouseUp(button, shift, at.x, at.y); });
}

bool ListViewWindow::OnKeyDown(WPARAM key) {
    const bool control = GetKeyState(VK_CONTROL) < 0;
    switch (key) {
    case VK_SPACE:
        if (!look_.check_boxes || control) {
            return false;
        }
        Pull();
        if (const auto row = list_.CurrentRow()) {
            Toggle(*row);
        }
        return true;
    case VK_F2:
        Pull();
        if (const auto row = list_.CurrentRow();
            row && (GetWindowLongPtrW(Window(), GWL_STYLE) & LVS_EDITLABELS) != 0) {
            BeginEdit({*row, list_.CurrentColumn()}, true);
        }
        return true;
    case VK_LEFT:
    case VK_RIGHT:
        if (!look_.edits_cells || control) {
            return false;
        }
        StepCell(key == VK_LEFT ? controls::CellStep::kLeft : controls::CellStep::kRight);
        return true;
    case 'A':
        if (control) {
            run_event_([this] { list_.SelectAll(); });
        }
        return control;
    case 'C':
        if (control) {
            Pull();
            CopySelection();
        }
        return control;
    default:
        return false;
    }
}

void ListViewWindow::Toggle(std::size_t row) {
    run_event_([this, row] {
        if (row <= list_.Count()) {
            list_.UserCheck(row, !list_.Row(row).checked);
        }
    });
}

// Programs that work the window for the person set a check box as an item's state, which a virtual
// list has none of.
bool ListViewWindow::OnSetState(WPARAM item, const LVITEMW& change) {
    const auto row = static_cast<std::size_t>(item) + 1;
    if (!look_.check_boxes || change.stateMask != LVIS_STATEIMAGEMASK || row < 1 ||
        row > list_.Count()) {
        return false;
    }
    if ((change.state & LVIS_STATEIMAGEMASK) != CheckState(list_.Row(row).checked)) {
        Toggle(row);
    }
    return true;
}

void ListViewWindow::DragOver(POINT at) {
    RECT client;
    GetClientRect(Window(), &client);
    RECT header{};
    GetClientRect(ListView_GetHeader(Window()), &header);
    const int top = ListView_GetTopIndex(Window());
    if (at.y < header.bottom && top > 0) {
        ListView_EnsureVisible(Window(), top - 1, FALSE);
    } else if (at.y >= client.bottom) {
        const int below = top + ListView_GetCountPerPage(Window());
        if (below < static_cast<int>(shown_count_)) {
            ListView_EnsureVisible(Window(), below, FALSE);
        }
    }
    const auto row = RowAt(at);
    const bool lands =
        row && dragged_row_ != 0 && *row != dragged_row_ && (!can_drop_on || can_drop_on(*row));
    ShowDropMark(lands ? row : std::nullopt);
    SetCursor(LoadCursorW(nullptr, lands || dragged_row_ == row ? IDC_ARROW : IDC_NO));
}

void ListViewWindow::CancelDrag() {
    if (dragging_) {
        dragging_ = false;
        left_down_ = false;
        ShowDropMark(std::nullopt);
        if (GetCapture() == Window()) {
            ReleaseCapture();
        }
    }
}

void ListViewWindow::ShowDropMark(std::optional<std::size_t> row) {
    if (row == drop_row_) {
        return;
    }
    for (const auto& changed : {drop_row_, row}) {
        if (changed) {
            ListView_RedrawItems(Window(), ToItem(*changed), ToItem(*changed));
        }
    }
    drop_row_ = row;
}

// Windows shows a list's selected rows in the colour of its frame while the focus is elsewhere.
// They decide what the fields beside the list write, so they get a clear tint.
void ListViewWindow::TintSelectedRow(NMLVCUSTOMDRAW& draw) const {
    if (!is_tinted_ || !HasItemState(static_cast<int>(draw.nmcd.dwItemSpec), LVIS_SELECTED)) {
        return;
    }
    draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);
    if (IsHighContrast()) {
        draw.clrText = GetSysColor(COLOR_HIGHLIGHTTEXT);
        draw.clrTextBk = GetSysColor(COLOR_HIGHLIGHT);
    } else {
        draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
        draw.clrTextBk = Mixed(GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_WINDOW));
    }
}

// A frame round the current cell, in a colour that stands out of its row.
void ListViewWindow::DrawCellCursor(const NMLVCUSTOMDRAW& draw) const {
    const auto item = static_cast<int>(draw.nmcd.dwItemSpec);
    if (!shows_cursor_ || item != FocusedItem()) {
        return;
    }
    RECT frame = CellRect({static_cast<std::size_t>(item) + 1, list_.CurrentColumn()});
    const int edge = HasItemState(item, LVIS_SELECTED) ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT;
    for (int pixel = 0; pixel < std::max(1, Scaled(1, shown_dpi_)); ++pixel) {
        FrameRect(draw.nmcd.hdc, &frame, GetSysColorBrush(edge));
        InflateRect(&frame, -1, -1);
    }
}

// A line at the edge where the dragged row would land: above a row before it, below a row after it.
void ListViewWindow::DrawDropMark(const NMLVCUSTOMDRAW& draw) const {
    const auto item = static_cast<int>(draw.nmcd.dwItemSpec);
    RECT line;
    if (!drop_row_ || item != ToItem(*drop_row_) ||
        ListView_GetItemRect(Window(), item, &line, LVIR_BOUNDS) == FALSE) {
        return;
    }
    if (*drop_row_ < dragged_row_) {
        line.bottom = line.top + 2;
    } else {
        line.top = line.bottom - 2;
    }
    const int edge = HasItemState(item, LVIS_SELECTED) ? COLOR_HIGHLIGHTTEXT : COLOR_HIGHLIGHT;
    FillRect(draw.nmcd.hdc, &line, GetSysColorBrush(edge));
}

// Marked rows have a warm ground and slanted letters, which stay where they are selected too.
void ListViewWindow::ShowMark(NMLVCUSTOMDRAW& draw) {
    constexpr COLORREF kMark = RGB(0xFF, 0xB0, 0x20);
    const auto row = static_cast<std::size_t>(draw.nmcd.dwItemSpec) + 1;
    const bool marked = row <= list_.Count() && list_.Row(row).marked;
    auto* const font = reinterpret_cast<HFONT>(SendMessageW(Window(), WM_GETFONT, 0, 0));
    if (marked && !marked_font_) {
        marked_font_ = MarkedFont(font);
    }
    SelectObject(draw.nmcd.hdc, marked ? marked_font_.get() : font);
    if (marked && !IsHighContrast()) {
        draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
        draw.clrTextBk = Mixed(kMark, GetSysColor(COLOR_WINDOW));
    }
}

LRESULT ListViewWindow::OnCustomDraw(NMLVCUSTOMDRAW& draw) {
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        is_tinted_ = GetFocus() != Window() && selected_count_ > 0;
        shows_cursor_ = look_.edits_cells && GetFocus() == Window();
        has_marks_ = std::ranges::any_of(list_.Rows(), &controls::ListRow::marked);
        return drop_row_ || is_tinted_ || shows_cursor_ || has_marks_ ? CDRF_NOTIFYITEMDRAW
                                                                      : CDRF_DODEFAULT;
    case CDDS_ITEMPREPAINT:
        if (has_marks_) {
            ShowMark(draw);
        }
        TintSelectedRow(draw);
        return (drop_row_ || shows_cursor_ ? CDRF_NOTIFYPOSTPAINT : CDRF_DODEFAULT) |
               (has_marks_ ? CDRF_NEWFONT : CDRF_DODEFAULT);
    case CDDS_ITEMPOSTPAINT:
        DrawCellCursor(draw);
        DrawDropMark(draw);
        return CDRF_DODEFAULT;
    default:
        return CDRF_DODEFAULT;
    }
}

std::optional<std::size_t> ListViewWindow::RowAt(POINT at, UINT* flags) const {
    LVHITTESTINFO hit{};
    hit.pt = at;
    const int item = ListView_HitTest(Window(), &hit);
    if (flags != nullptr) {
        *flags = hit.flags;
    }
    if (item < 0 || static_cast<std::size_t>(item) >= list_.Count()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(item) + 1;
}

std::optional<controls::Cell> ListViewWindow::CellAt(POINT at) const {
    UINT flags = 0;
    const auto row = look_.edits_cells ? RowAt(at, &flags) : std::nullopt;
    if (!row || flags == LVHT_ONITEMSTATEICON) {
        return std::nullopt;
    }
    LVHITTESTINFO hit{};
    hit.pt = at;
    if (ListView_SubItemHitTest(Window(), &hit) < 0 || hit.iSubItem < 0) {
        return std::nullopt;
    }
    return controls::Cell{*row, static_cast<std::size_t>(hit.iSubItem)};
}

void ListViewWindow::SetItemState(int item, UINT state, UINT mask) const {
    LVITEMW change{};
    change.state = state;
    change.stateMask = mask;
    SendMessageW(Window(), LVM_SETITEMSTATE, static_cast<WPARAM>(item),
                 reinterpret_cast<LPARAM>(&change));
}

bool ListViewWindow::HasItemState(int item, UINT state) const {
    return (SendMessageW(Window(), LVM_GETITEMSTATE, static_cast<WPARAM>(item),
                         static_cast<LPARAM>(state)) &
            static_cast<LRESULT>(state)) != 0;
}

void ListViewWindow::CopySelection() const {
    const std::string text = list_.SelectionAsText();
    if (!text.empty()) {
        PutOnClipboard(Window(), text);
    }
}

RECT ListViewWindow::MenuAnchor() const {
    RECT anchor{};
    RECT client;
    GetClientRect(Window(), &client);
    RECT row;
    const auto current = list_.CurrentRow();
    if (current && *current <= shown_count_ &&
        ListView_GetItemRect(Window(), ToItem(*current), &row, LVIR_LABEL) != FALSE) {
        anchor = {row.left, std::clamp(row.top, client.top, client.bottom), row.right,
                  std::clamp(row.bottom, client.top, client.bottom)};
    }
    MapWindowPoints(Window(), HWND_DESKTOP, reinterpret_cast<POINT*>(&anchor), 2);
    return anchor;
}

} // namespace win32
