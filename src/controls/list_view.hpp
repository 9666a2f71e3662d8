#pragma once

#include <optional>

#include "controls/controls.hpp"

namespace controls {

struct ListRow {
    std::uint64_t id = 0; // stays with the row wherever it moves; never given twice in one list
    std::string text;
    std::vector<std::string>
        sub_items; // sub-item n stands at n - 1; those at the end may be absent
    std::string tag;
    bool checked = false;
    bool selected = false;
};

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

    // Appends a row (or sorts it in, while the list is sorted) and returns its number.
    std::size_t Add(std::string text);
    void Remove(std::size_t row);
    // Removes all rows, and the tip, which spoke of one of them. The rows to come are another list:
    // it is not sorted.
    void Clear();
    // Puts these rows, which were the list's own once, in the place of all others, in their order.
    void Replace(std::vector<ListRow> rows, std::optional<std::size_t> current_row);
    void SetText(std::size_t row, std::string text);
    void SetSubItem(std::size_t row, std::size_t sub_item, std::string text);
    void SetTag(std::size_t row, std::string tag);
    void SetChecked(std::size_t row, bool checked);
    void SetSelected(std::size_t row, bool selected);
    void SelectAll();

    // The row that has the list's focus. When it is removed, the row that takes its place becomes
    // the current one, and the selected one where no other is selected.
    [[nodiscard]] std::optional<std::size_t> CurrentRow() const { return current_; }
    void SetCurrentRow(std::optional<std::size_t> row);

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

    // Asks the view to scroll the row into sight when it refreshes next.
    void EnsureVisible(std::size_t row);
    // The row to scroll to, given once.
    std::optional<std::size_t> TakeRowToShow() { return std::exchange(row_to_show_, std::nullopt); }

    // The selected rows, a line each ended by CR LF, their fields separated by tabs, in the form
    // that spreadsheets take from the clipboard. Columns without a caption are left out.
    [[nodiscard]] std::string SelectionAsText() const;

    void UserClick() { Raise(Click); }
    void UserCheck(std::size_t row, bool checked) {
        SetChecked(row, checked);
        Raise(ItemCheck, row);
    }
    void UserRename(std::uint64_t id, const std::string& text) { Raise(Rename, id, text); }
    void UserMouseDown(int button, int shift, int x, int y) {
        Raise(MouseDown, button, shift, x, y);
    }
    void UserMouseUp(int button, int shift, int x, int y) { Raise(MouseUp, button, shift, x, y); }
    void UserMenuKey() { Raise(MenuKey); }
    void UserMoveKey(int rows) { Raise(MoveKey, rows); }

    Event<> Click;
    Event<std::size_t> ItemCheck;                    // the row, already in its new state
    Event<std::uint64_t, const std::string&> Rename; // the row's id, its new text
    Event<int, int, int, int> MouseDown;             // button, shift state, x, y
    Event<int, int, int, int> MouseUp;               // button, shift state, x, y
    Event<> MenuKey;                                 // the popup menu asked for by keyboard
    Event<int> MoveKey; // the current row to be moved by keyboard: 1 down, -1 up

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
    [[nodiscard]] const std::string& SortText(const ListRow& row) const;

    std::vector<std::string> columns_;
    std::vector<ListRow> rows_;
    std::uint64_t last_id_ = 0;
    std::uint64_t content_revision_ = 0;
    std::uint64_t selection_revision_ = 0;
    std::string tool_tip_;
    std::optional<std::size_t> current_;
    std::optional<std::size_t> sorted_by_;
    std::optional<std::size_t> row_to_show_;
};

} // namespace controls
