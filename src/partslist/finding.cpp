#include "partslist/finding.hpp"

#include "text/text.hpp"

namespace partslist {

std::optional<controls::Cell> FindCell(const controls::ListView& list, std::string_view wanted,
                                       const std::optional<controls::Cell>& from, bool backwards) {
    const std::size_t columns = list.Columns().size();
    const std::size_t cells = list.Count() * columns;
    const std::string small = text::WithSmallLetters(wanted);
    const std::size_t before_first = backwards ? cells : cells + cells - 1;
    const std::size_t start = from ? (from->row - 1) * columns + from->column : before_first;
    for (std::size_t step = 1; step <= cells; ++step) {
        const std::size_t place = (backwards ? start + cells - step : start + step) % cells;
        const controls::Cell cell{place / columns + 1, place % columns};
        if (!list.Columns()[cell.column].empty() &&
            text::WithSmallLetters(list.TextOf(cell)).find(small) != std::string::npos) {
            return cell;
        }
    }
    return std::nullopt;
}

} // namespace partslist
