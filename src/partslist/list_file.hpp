// The format of parts-list files: a line per row, its eight fields joined by "@@": name, checked
// ("True" or "False"), position, quantity, sheet, material, size, note. Nothing is escaped.
#pragma once

#include <string>
#include <string_view>

#include "controls/list_view.hpp"

namespace partslist {

// The rows of `list` as a file, every line ended by CR LF.
std::string WriteListFile(const controls::ListView& list);

// Appends the rows of a file to `list`. Raises 9 (subscript out of range) at a blank line and,
// after its row was added with its name, at a line without a separator; 13 (type mismatch) at a
// checked field that is neither a boolean word nor a number; 380 (invalid property value) at a
// field that the list has no column for. What was read before stays in the list.
void ReadListFile(std::string_view file, controls::ListView& list);

} // namespace partslist
