// How many rows a table of the parts list has, and what its cells take from the list.
#pragma once

#include <string>

#include "automation/value.hpp"
#include "tables/configuration.hpp"
#include "tables/drawing_action.hpp"

namespace tables {

inline constexpr int kColumnWidth = 20; // mm, until every column gets its own

// Rounds to the nearest whole number. Raises 6 (overflow) where no integer holds it.
int WholeNumber(double number);

// The field of a parts-list row that a column-order slot names. An empty slot is the name; one that
// is no number raises 13, one beyond the list's columns raises 380.
std::size_t FieldOf(const std::string& slot);

// What a cell takes from a parts-list row: its name, its position as a number, or another of its
// fields as text.
automation::Value FieldValue(const PartTexts& part, std::size_t field);
automation::Value CellValue(const PartTexts& part, const std::string& slot);

// What a cell shows of a value: CATIA makes a text of a number, with 15 digits at the most.
std::string TextInCell(const automation::Value& value);

// The header, the free rows, and a row for every part.
int RowsForTheList(const Parts& parts, const Configuration& configuration);

} // namespace tables
