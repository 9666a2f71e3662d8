// Looking for a text in the cells of the parts list.
#pragma once

#include <string_view>

#include "controls/list_view.hpp"

namespace partslist {

// The first cell after `from` that holds `wanted`, or, where `backwards`, the last one before it,
// row by row from left to right; beyond the end it goes on at the other one, and `from` comes last.
// Without `from` the whole list is looked through. Capital letters are small ones; accents count.
std::optional<controls::Cell> FindCell(const controls::ListView& list, std::string_view wanted,
                                       const std::optional<controls::Cell>& from, bool backwards);

} // namespace partslist
