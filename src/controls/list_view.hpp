#pragma once

#include <memory>
#include <optional>
#include <set>

#include "controls/controls.hpp"

namespace controls {

using NameSet = std::set<std::string, std::less<>>;

struct ListRow {
    std::uint64_t id = 0; // stays with the row wherever it moves; never given twice in one list
    std::string text;
    std::vector<std::string>
        sub_items; // sub-item n stands at n - 1; those at the end may be absent
    std::string tag;
    bool checked = false;
    bool selected = false;
    bool marked = false; // to be looked at; no part of the content
};

// A sub-item of a row, counted from 1; empty where it is absent.
const std::string& SubItemOf(const ListRow& row, std::size_t sub_item);

// A cell of a list: its row, counted from 1, and its column: 0 for the row's own text, else the
// sub-item.
struct Cell {
    std::size_t row = 1;
    std::size_t column = 0;

    friend bool operator==(const Cell&, const Cell&) = default;
};

// A text that the person has typed into a cell.
struct TypedCell {
    std::uint64_t row_id = 0;
    std::size_t column = 0;
    std::string text;
    bool for_selected_rows = false; // it is meant for all of them
};

// A way from one cell to another: within the row, within the column, or over the rows' ends.
enum class CellStep { kLeft, kRight, kBelow, kNext, kPrevious };

// What is looked for: a text that is asked for first, or the one of the last time, after the
// current cell or before it.
enum class Find { kAsk, kNext, kPrevious };

// A report-style list with check boxes, several selected rows and one current row. Rows count from
// 1, sub-items from 1 to the number of columns minus 1. A row that does not exist raises 35600, a
// sub-item that the list has no column for raises 380.
class ListView : public Control {
  public:
    explicit ListView(std::vector<std::string> column_captions)
        : columns_(std::move(column_captions)) {}

    // Raised with the revision: by everything but a change of selection or current row; by whatever
    // may change which rows are selected.
    [[nodiscard]] std::uint64_t ContentRevision() const { return content_revision_; }
    [[nodiscard]] std::uint64_t SelectionRevision() const { return selection_revision_; }

    [[nodiscard]] const std::vector<std::string>& Columns() const { return columns_; }
    [[nodiscard]] std::size_t Count() const { return rows_.size(); }
    [[nodiscard]] const ListRow& Row(std::size_t row) const { return rows_[Index(row)]; }
    [[nodiscard]] const std::vector<ListRow>& Rows() const { return rows_; }
    [[nodiscard]] const std::string& SubItem(std::size_t row, std::size_t sub_item) const;

    // The text of a cell, whichever column it stands in.
    [[nodiscard]] const std::string& TextOf(const Cell& cell) const {
        return cell.column == 0 ? Row(cell.row).text : SubItem(cell.row, cell.column);
    }
    void SetTextOf(const Cell& cell, std::string text) {
        if (cell.column == 0) {
            SetText(cell.row, std::move(text));
        } else {
            SetSubItem(cell.row, cell.column, std::move(text));
        }
    }

    // Appends a row (or sorts it in, while the list is sorted) and returns its number.
    std::size_t Add(std::string text);
    void Remove(std::size_t row);
    // Removes all selected rows. Where the current one is among them, or there is none, the row
    // that takes its place becomes the current one and is selected.
    void RemoveSelected();
    // Removes all rows, and the tip, which spoke of one of them. The rows to come are another list:
    // it is not sorted, and where its rows come from is not known.
    void Clear();
    // Puts these rows, which were the list's own once, in the place of all others, in their order.
    void Replace(std::vector<ListRow> rows, std::optional<std::size_t> current_row);
    void SetText(std::size_t row, std::string text);
    void SetSubItem(std::size_t row, std::size_t sub_item, std::string text);
    void SetTag(std::size_t row, std::string tag);
    void SetChecked(std::size_t row, bool checked);
    void SetSelected(std::size_t row, bool selected);
    void SelectAll();
    void SelectOnly(std::size_t row);
    void SetMarked(std::size_t row, bool marked);
    void ClearMarks();

    // The row that has the list's focus. When it is removed, the row that takes its place becomes
    // the current one, and the selected one where no other is selected.
    [[nodiscard]] std::optional<std::size_t> CurrentRow() const { return current_; }
    void SetCurrentRow(std::optional<std::size_t> row);

    // The column of the cell cursor, which stands in the current row.
    [[nodiscard]] std::size_t CurrentColumn() const { return current_column_; }
    void SetCurrentColumn(std::size_t column);
    // The current row and its column; nothing where no row is current.
    [[nodiscard]] std::optional<Cell> CurrentCell() const;
    // Makes a cell the current one, in sight. Its row is selected, alone where it was not before.
    void GoTo(const Cell& cell);
    // The cell that a step leads to; nothing where the row, the column or the list ends.
    [[nodiscard]] std::optional<Cell> CellBeside(const Cell& cell, CellStep step) const;

    // The names that the rows' source had when rows were last taken from it, those of no row among
    // them; null where there is no such source, or it is not known.
    [[nodiscard]] const std::shared_ptr<const NameSet>& SourceNames() const {
        return source_names_;
    }
    void SetSourceNames(NameSet names);
    void SetSourceNames(std::shared_ptr<const NameSet> names);

    // The tip that the view shows while the mouse rests on the list.
    [[nodiscard]] const std::string& ToolTip() const { return tool_tip_; }
    void SetToolTip(std::string tip) {
        tool_tip_ = std::move(tip);
        Changed();
    }

    [[nodiscard]] std::optional<std::size_t> RowWithId(std::uint64_t id) const;
    // The first row of that name.
    [[nodiscard]] std::optional<std::size_t> RowWithText(std::string_view text) const;

    // While the list is sorted, its rows stand in ascending order of a sub-item's text, rows with
    // equal texts in the order that they had. Afterwards they stay where they are.
    void SetSorted(std::size_t by_sub_item);
    void SetUnsorted() noexcept { sorted_by_.reset(); }
    [[nodiscard]] bool Sorted() const { return sorted_by_.has_value(); }

    // Puts the rows into another order: `order` has their numbers. The current row stays the same.
    void Arrange(const std::vector<std::size_t>& order);

    // Asks the view to scroll the row into sight when it refreshes next.
    void EnsureVisible(std::size_t row);
    // The row to scroll to, given once.
    std::optional<std::size_t> TakeRowToShow() { return std::exchange(row_to_show_, std::nullopt); }

    // Asks the view for the keyboard when it refreshes next.
    void WantFocus() {
        wants_focus_ = true;
        Changed();
    }
    // Whether it was asked for, told once.
    bool TakeWantsFocus() { return std::exchange(wants_focus_, false); }

    // The selected rows, a line each ended by CR LF, their fields separated by tabs, in the form
    // that spreadsheets take from the clipboard. Columns without a caption are left out.
    [[nodiscard]] std::string SelectionAsText() const;
    // All rows in this form, below a line with the captions of their columns.
    [[nodiscard]] std::string TableAsText() const;

    void UserClick() { Raise(Click); }
    void UserCheck(std::size_t row, bool checked) {
        SetChecked(row, checked);
        Raise(ItemCheck, row);
    }
    void UserRename(std::uint64_t id, const std::string& text) { Raise(Rename, id, text); }
    // The row's own text is its name.
    void UserEdit(const TypedCell& typed) {
        if (typed.column == 0) {
            UserRename(typed.row_id, typed.text);
        } else {
            Raise(CellEdit, typed);
        }
    }
    void UserFind(Find find) { Raise(FindKey, find); }
    void UserMouseDown(int button, int shift, int x, int y) {
        Raise(MouseDown, button, shift, x, y);
    }
    void UserMouseUp(int button, int shift, int x, int y) { Raise(MouseUp, button, shift, x, y); }
    void UserMenuKey() { Raise(MenuKey); }
    void UserMoveKey(int rows) { Raise(MoveKey, rows); }

    Event<> Click;
    Event<std::size_t> ItemCheck;                    // the row, already in its new state
    Event<std::uint64_t, const std::string&> Rename; // the row's id, its new text
    Event<const TypedCell&> CellEdit;
    Event<Find> FindKey;                 // a text to be found
    Event<int, int, int, int> MouseDown; // button, shift state, x, y
    Event<int, int, int, int> MouseUp;   // button, shift state, x, y
    Event<> MenuKey;                     // the popup menu asked for by keyboard
    Event<int> MoveKey;                  // the current row to be moved by keyboard: 1 down, -1 up

    // The row at a point, in the coordinates of the mouse events. Supplied by the view.
    std::function<std::optional<std::size_t>(int x, int y)> HitTest;

  private:
    void ContentChanged() {
        ++content_revision_;
        SelectionChanged();
    }
    void SelectionChanged() {
        ++selection_revision_;
        Changed();
    }
    std::size_t Index(std::size_t row) const;
    std::size_t SubIndex(std::size_t sub_item) const;
    void AppendAsText(const ListRow& row, std::string& lines) const;
    [[nodiscard]] const std::string& SortText(const ListRow& row) const;

    std::vector<std::string> columns_;
    std::vector<ListRow> rows_;
    std::uint64_t last_id_ = 0;
    std::uint64_t content_revision_ = 0;
    std::uint64_t selection_revision_ = 0;
    std::string tool_tip_;
    std::shared_ptr<const NameSet> source_names_;
    std::optional<std::size_t> current_;
    std::size_t current_column_ = 0;
    bool wants_focus_ = false;
    std::optional<std::size_t> sorted_by_;
    std::optional<std::size_t> row_to_show_;
};

} // namespace controls
