// Bringing the list up to date: the tree has changed, and the list keeps what the person has made
// of it. A row whose part is still in the tree gets the new quantity and nothing else; checked
// parts that are new come at the end; rows whose parts are there no more are pointed out and stay.
#pragma once

#include <string>
#include <vector>

#include "controls/list_view.hpp"
#include "structure/counted_parts.hpp"

namespace partslist {

// What becomes of a row of the list.
struct RowUpdate {
    std::string quantity;
    bool marked = false;
    bool selected = false;
};

struct NewRow {
    std::string name;
    std::string position;
    std::string quantity;
};

struct ListUpdate {
    std::vector<RowUpdate> rows; // of the rows that are there, in their order
    std::vector<NewRow> added;   // to come behind them, in this order
    std::size_t changed = 0;     // rows that get another quantity
    // Rows whose part was in the tree of before and is no more, or, where that tree is not known,
    // may have been: they are marked, and selected only where it is known.
    std::size_t missing = 0;
    // Rows marked because their name stands in several rows; their quantities are not touched.
    std::size_t ambiguous = 0;
};

// `before` has the names that were in the tree when the list was last filled or brought up to date;
// null where they are not known. A row whose part was never in a tree is left alone.
ListUpdate UpdatedList(const structure::CountedTree& tree, const controls::NameSet* before,
                       const std::vector<controls::ListRow>& rows);

} // namespace partslist
