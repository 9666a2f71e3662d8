// What the cells of a parts-list table get of the list, by the column order of the configuration.
#pragma once

#include <string>

#include "automation/value.hpp"
#include "tables/drawing_action.hpp"

namespace tables {

// The nearest whole number. Raises 6 (overflow) where there is none.
int WholeNumber(double number);

// Which of the fields of a parts-list row a column-order slot means; the empty slot is the name, 0.
// Raises 13 (type mismatch) where it is no number, 380 (invalid property value) where the row has
// no such field.
std::size_t FieldOfSlot(const std::string& slot, std::size_t fields);

// What that slot takes from a parts-list row: its name, its position as a number, or one of its
// fields as text.
automation::Value CellValue(const PartTexts& part, const std::string& slot);

} // namespace tables
