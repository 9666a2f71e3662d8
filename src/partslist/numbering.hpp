// The numbers that the program gives to the rows of the parts list.
#pragma once

#include "controls/list_view.hpp"

namespace partslist {

// Positions from "0001" on.
void NumberPositions(controls::ListView& list);
// The ticked rows get the sheets 2, 3, ... from the top: sheet 1 is the assembly's.
void NumberSheets(controls::ListView& list);
// Both.
void NumberRows(controls::ListView& list);

} // namespace partslist
