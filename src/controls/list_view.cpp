#include "controls/list_view.hpp"

#include <algorithm>

#include "automation/run_time_error.hpp"
#include "text/clipboard_cells.hpp"

namespace controls {

namespace {

const std::string kEmpty;

} // namespace

const std::string& SubItemOf(const ListRow& row, std::size_t sub_item) {
    return sub_item <= row.sub_items.size() ? row.sub_items[sub_item - 1] : kEmpty;
}

std::size_t ListView::Index(std::size_t row) const {
    if (row < 1 || row > rows_.size()) {
        throw automation::IndexOutOfBounds();
    }
    return row - 1;
}

std::size_t ListView::SubIndex(std::size_t sub_item) const {
    if (sub_item < 1 || sub_item >= columns_.size()) {
        throw automation::InvalidPropertyValue();
    }
    return sub_item - 1;
}

const std::string& ListView::SubItem(std::size_t row, std::size_t sub_item) const {
    const ListRow& found = Row(row);
    return SubItemOf(found, SubIndex(sub_item) + 1);
}

const std::string& ListView::SortText(const ListRow& row) const {
    return SubItemOf(row, *sorted_by_);
}

std::size_t ListView::Add(std::string text) {
    ListRow row;
    row.id = ++last_id_;
    row.text = std::move(text);
    auto place = rows_.end();
    if (sorted_by_) {
        place = std::upper_bound(rows_.begin(), rows_.end(), row,
                                 [this](const ListRow& left, const ListRow& right) {
                                     return SortText(left) < SortText(right);
                                 });
    }
    const auto index = static_cast<std::size_t>(place - rows_.begin());
    rows_.insert(place, std::move(row));
    if (current_ && *current_ > index) {
        ++*current_;
    }
    ContentChanged();
    return index + 1;
}

void ListView::Remove(std::size_t row) {
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(Index(row)));
    if (rows_.empty()) {
        current_.reset();
    } else if (current_ == row) {
        current_ = std::min(row, rows_.size());
        if (std::ranges::none_of(rows_, &ListRow::selected)) {
            rows_[*current_ - 1].selected = true;
        }
    } else if (current_ && *current_ > row) {
        --*current_;
    }
    ContentChanged();
}

void ListView::RemoveSelected() {
    const auto first = std::ranges::find(rows_, true, &ListRow::selected);
    if (first == rows_.end()) {
        return;
    }
    const std::size_t place =
        current_ ? *current_ : static_cast<std::size_t>(first - rows_.begin()) + 1;
    const bool current_goes = rows_[place - 1].selected;
    const auto removed_above = static_cast<std::size_t>(
        std::count_if(rows_.begin(), rows_.begin() + static_cast<std::ptrdiff_t>(place - 1),
                      [](const ListRow& row) { return row.selected; }));
    std::erase_if(rows_, [](const ListRow& row) { return row.selected; });
    if (rows_.empty()) {
        current_.reset();
    } else {
        current_ = std::min(place - removed_above, rows_.size());
        rows_[*current_ - 1].selected = current_goes;
    }
    ContentChanged();
}

void ListView::Clear() {
    rows_.clear();
    current_.reset();
    sorted_by_.reset();
    tool_tip_.clear();
    source_names_.reset();
    ContentChanged();
}

void ListView::Replace(std::vector<ListRow> rows, std::optional<std::size_t> current_row) {
    Clear();
    rows_ = std::move(rows);
    SetCurrentRow(current_row);
}

void ListView::SetText(std::size_t row, std::string text) {
    rows_[Index(row)].text = std::move(text);
    ContentChanged();
}

void ListView::SetSubItem(std::size_t row, std::size_t sub_item, std::string text) {
    auto& sub_items = rows_[Index(row)].sub_items;
    const std::size_t index = SubIndex(sub_item);
    if (index >= sub_items.size()) {
        sub_items.resize(index + 1);
    }
    sub_items[index] = std::move(text);
    ContentChanged();
}

void ListView::SetTag(std::size_t row, std::string tag) {
    rows_[Index(row)].tag = std::move(tag);
    ContentChanged();
}

void ListView::SetChecked(std::size_t row, bool checked) {
    rows_[Index(row)].checked = checked;
    ContentChanged();
}

void ListView::SetSelected(std::size_t row, bool selected) {
    rows_[Index(row)].selected = selected;
    SelectionChanged();
}

void ListView::SelectAll() {
    for (ListRow& row : rows_) {
        row.selected = true;
    }
    SelectionChanged();
}

void ListView::SelectOnly(std::size_t row) {
    const std::uint64_t id = Row(row).id;
    for (ListRow& other : rows_) {
        other.selected = other.id == id;
    }
    SelectionChanged();
}

void ListView::SetMarked(std::size_t row, bool marked) {
    rows_[Index(row)].marked = marked;
    Changed();
}

void ListView::ClearMarks() {
    for (ListRow& row : rows_) {
        row.marked = false;
    }
    Changed();
}

void ListView::SetSourceNames(NameSet names) {
    // The same names are kept once, also by whoever remembers what the list was.
    if (!source_names_ || *source_names_ != names) {
        source_names_ = std::make_shared<const NameSet>(std::move(names));
    }
    Changed();
}

void ListView::SetSourceNames(std::shared_ptr<const NameSet> names) {
    source_names_ = std::move(names);
    Changed();
}

void ListView::SetCurrentRow(std::optional<std::size_t> row) {
    if (row) {
        Index(*row);
    }
    current_ = row;
    Changed();
}

void ListView::SetCurrentColumn(std::size_t column) {
    if (column != 0) {
        SubIndex(column);
    }
    current_column_ = column;
    Changed();
}

std::optional<Cell> ListView::CurrentCell() const {
    if (!current_) {
        return std::nullopt;
    }
    return Cell{*current_, current_column_};
}

void ListView::GoTo(const Cell& cell) {
    if (!Row(cell.row).selected) {
        SelectOnly(cell.row);
    }
    SetCurrentRow(cell.row);
    SetCurrentColumn(cell.column);
    EnsureVisible(cell.row);
}

std::optional<Cell> ListView::CellBeside(const Cell& cell, CellStep step) const {
    const std::size_t last_column = columns_.size() - 1;
    const bool is_first = cell.column == 0;
    const bool is_last = cell.column == last_column;
    switch (step) {
    case CellStep::kLeft:
        return is_first ? std::nullopt : std::optional(Cell{cell.row, cell.column - 1});
    case CellStep::kRight:
        return is_last ? std::nullopt : std::optional(Cell{cell.row, cell.column + 1});
    case CellStep::kBelow:
        return cell.row >= Count() ? std::nullopt : std::optional(Cell{cell.row + 1, cell.column});
    case CellStep::kNext:
        return CellBeside(is_last ? Cell{cell.row, 0} : cell,
                          is_last ? CellStep::kBelow : CellStep::kRight);
    case CellStep::kPrevious:
        if (!is_first) {
            return Cell{cell.row, cell.column - 1};
        }
        return cell.row <= 1 ? std::nullopt : std::optional(Cell{cell.row - 1, last_column});
    }
    return std::nullopt;
}

std::optional<std::size_t> ListView::RowWithId(std::uint64_t id) const {
    const auto found = std::ranges::find(rows_, id, &ListRow::id);
    if (found == rows_.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - rows_.begin()) + 1;
}

std::optional<std::size_t> ListView::RowWithText(std::string_view text) const {
    const auto found = std::ranges::find(rows_, text, &ListRow::text);
    if (found == rows_.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - rows_.begin()) + 1;
}

void ListView::SetSorted(std::size_t by_sub_item) {
    SubIndex(by_sub_item);
    sorted_by_ = by_sub_item;
    const std::uint64_t current_id = current_ ? Row(*current_).id : 0;
    std::ranges::stable_sort(
        rows_, {}, [this](const ListRow& row) -> const std::string& { return SortText(row); });
    if (current_) {
        current_ = RowWithId(current_id);
    }
    ContentChanged();
}

void ListView::Arrange(const std::vector<std::size_t>& order) {
    const std::uint64_t current_id = current_ ? Row(*current_).id : 0;
    std::vector<ListRow> arranged;
    arranged.reserve(order.size());
    for (const std::size_t row : order) {
        arranged.push_back(rows_[Index(row)]);
    }
    rows_ = std::move(arranged);
    if (current_) {
        current_ = RowWithId(current_id);
    }
    ContentChanged();
}

void ListView::EnsureVisible(std::size_t row) {
    Index(row);
    row_to_show_ = row;
    Changed();
}

void ListView::AppendAsText(const ListRow& row, std::string& lines) const {
    lines += text::ClipboardCell(row.text);
    for (std::size_t column = 1; column < columns_.size(); ++column) {
        if (columns_[column].empty()) {
            continue; // not for the person's eyes
        }
        lines += '\t';
        lines += text::ClipboardCell(SubItemOf(row, column));
    }
    lines += "\r\n";
}

std::string ListView::SelectionAsText() const {
    std::string lines;
    for (const ListRow& row : rows_) {
        if (row.selected) {
            AppendAsText(row, lines);
        }
    }
    return lines;
}

std::string ListView::TableAsText() const {
    ListRow captions;
    captions.text = columns_[0];
    captions.sub_items.assign(columns_.begin() + 1, columns_.end());
    std::string lines;
    AppendAsText(captions, lines);
    for (const ListRow& row : rows_) {
        AppendAsText(row, lines);
    }
    return lines;
}

} // namespace controls
