#include "partslist/pasting.hpp"

#include <algorithm>

#include "controls/form1.hpp"
#include "text/text.hpp"

namespace partslist {

namespace {

using PastedRow = std::vector<std::string>;

// The row without the empty cells at its end.
std::size_t FilledCells(const PastedRow& row) {
    std::size_t filled = row.size();
    while (filled > 0 && row[filled - 1].empty()) {
        --filled;
    }
    return filled;
}

// Whether the row holds headings of the list, from that column on.
bool HoldsHeadings(const PastedRow& row, const std::vector<std::string>& headings,
                   std::size_t column) {
    const std::size_t filled = FilledCells(row);
    return filled > 0 && column + filled <= headings.size() &&
           std::equal(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(filled),
                      headings.begin() + static_cast<std::ptrdiff_t>(column));
}

} // namespace

std::size_t AppendRow(controls::ListView& list, std::string name) {
    const std::size_t row = list.Add(std::move(name));
    list.SetSubItem(row, controls::kQuantity, "1");
    list.SetSubItem(row, controls::kPosition, text::FourDigits(list.Count()));
    return row;
}

bool IsPastedInto(std::size_t column) {
    return column != controls::kPosition && column != controls::kSheet;
}

Pasted PasteCells(controls::ListView& list, const std::vector<PastedRow>& cells,
                  const controls::Cell& from) {
    const std::vector<std::string>& headings = list.Columns();
    Pasted pasted{.first = from};
    std::size_t row = 0;
    if (!cells.empty()) {
        const bool all_headings =
            FilledCells(cells[0]) == headings.size() && HoldsHeadings(cells[0], headings, 0);
        const bool headings_from_here =
            cells.size() > 1 && HoldsHeadings(cells[0], headings, from.column);
        pasted.first.column = all_headings ? 0 : from.column;
        row = all_headings || headings_from_here ? 1 : 0;
    }
    std::size_t target = from.row;
    const std::size_t last = list.Count(); // before rows are appended
    const auto put_in = [&](std::size_t into, const PastedRow& texts) {
        for (std::size_t cell = 0; cell < texts.size(); ++cell) {
            const std::size_t column = pasted.first.column + cell;
            if (column >= headings.size()) {
                pasted.left_out += texts[cell].empty() ? 0 : 1;
            } else if (IsPastedInto(column)) {
                list.SetTextOf({into, column}, texts[cell]);
                ++pasted.cells;
            }
        }
    };
    const auto lands = [&](const PastedRow& texts) {
        for (std::size_t cell = 0; cell < texts.size(); ++cell) {
            const std::size_t column = pasted.first.column + cell;
            if (column < headings.size() && IsPastedInto(column) && !texts[cell].empty()) {
                return true;
            }
        }
        return false;
    };
    for (; row < cells.size(); ++row, ++target) {
        if (target <= last) {
            put_in(target, cells[row]);
        } else if (lands(cells[row])) {
            const std::size_t added = AppendRow(list, {});
            ++pasted.rows;
            put_in(added, cells[row]);
            if (list.Row(added).text.empty()) {
                list.SetText(added, "Novy");
            }
        }
    }
    return pasted;
}

} // namespace partslist
