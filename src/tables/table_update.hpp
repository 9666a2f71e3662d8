// What brings a table that stands in the drawing to the parts list's state: the cells that differ,
// and the rows that are to come or to go. The list stands in it from the bottom up, as it is
// written into a new table; the empty rows directly under the header are free ones and stay.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "tables/configuration.hpp"
#include "tables/drawing_action.hpp"

namespace tables {

using CellTexts = std::array<std::string, kColumns>;

// What the table is to hold.
struct WantedTable {
    CellTexts headings;
    std::vector<CellTexts> rows;                // of the list, from its first one
    std::array<std::size_t, kColumns> fields{}; // the field of the list that feeds each column
    std::string diameter_sign;
};

// Raises what table creation raises for a column order that the list does not have.
WantedTable TableWanted(const Parts& parts, const Configuration& configuration,
                        std::string diameter_sign);

// A text for a cell; rows and columns count from 1.
struct CellChange {
    int row = 0;
    int column = 0;
    std::string text;
};

// What is to be done, in this order. A run that ends between two steps leaves a table from which
// the next one comes to the same end; a row that comes empty is one step with the next ones up to
// one that does not.
struct TableUpdate {
    int new_row = 0;                   // the number of each row that comes, as it comes
    int row_beside = 0;                // before any comes, the row that they will stand beside
    std::vector<CellTexts> added_rows; // each above the one before it
    std::vector<CellChange> cells;     // row by row, of the rows that were there and stay
    std::vector<int> removed_rows;     // each by its number at its turn
};

bool IsEmpty(const CellTexts& row);

// `table` is the texts of the table's rows, the header first, line breaks as line feeds. The last
// row under a header without free rows stays, emptied, also where the list is empty: it keeps the
// font and the size of the rows to come.
TableUpdate UpdateOfTable(const std::vector<CellTexts>& table, const WantedTable& wanted);

} // namespace tables
