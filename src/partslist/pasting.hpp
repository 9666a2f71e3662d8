// Cells of a spreadsheet put into the parts list. Positions and sheets are the program's: a cell
// that would come there is passed over, so that a whole table lands where it came from.
#pragma once

#include <string>
#include <vector>

#include "controls/list_view.hpp"

namespace partslist {

// Appends a row with the next position and the quantity 1, and returns its number.
std::size_t AppendRow(controls::ListView& list, std::string name);

// Whether texts are pasted into that column.
bool IsPastedInto(std::size_t column);

struct Pasted {
    std::size_t cells = 0;    // that were put in
    std::size_t rows = 0;     // that were appended
    std::size_t left_out = 0; // cells that hold a text and have no column
    controls::Cell first;     // where it began
};

// Puts the cells into the list, from `from` to the right and down; its row may be the one behind
// the last. Rows beyond the end are appended, under the name "Novy" where none is pasted; an empty
// one appends nothing. A first row that holds the list's headings is passed over: all of them,
// which says that the cells begin in the first column, or, with rows below it, those from `from`
// on.
Pasted PasteCells(controls::ListView& list, const std::vector<std::vector<std::string>>& cells,
                  const controls::Cell& from);

} // namespace partslist
