// The names that a parts list gives to the sheets of its drawing.
#pragma once

#include <string>
#include <vector>

#include "controls/list_view.hpp"

namespace sheets {

// Names by the place of their sheet: slot 1 stands at 0. Slots of parts without a sheet are empty.
struct NameTable {
    std::vector<std::string> slots;
    std::size_t names = 0; // given, the assembly's included
};

// For the ticked rows of the sheet list, in 500 slots: each part with a sheet gives the running
// number, a point and its name to the slot of its row, one further down after the assembly's. The
// numbers begin with 2 with and without the assembly's. Raises 9 beyond the last slot.
NameTable NamesForTheList(const controls::ListView& parts_list, bool first_is_assembly);

// For CATIA's sheets themselves, in 100 slots: the number is the slot's. Raises 9 beyond the last
// slot.
NameTable NamesForTheDrawing(const controls::ListView& parts_list, bool first_is_assembly);

} // namespace sheets
