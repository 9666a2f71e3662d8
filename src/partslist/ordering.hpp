// The rows of the parts list in the order of their names or materials. Rows that are alike keep the
// order that they have.
#pragma once

#include <vector>

#include "controls/list_view.hpp"

namespace partslist {

// The numbers of the rows, counted from 1, in the wanted order.
std::vector<std::size_t> OrderByName(const std::vector<controls::ListRow>& rows);
// Rows of one material by their names; those without a material at the end.
std::vector<std::size_t> OrderByMaterial(const std::vector<controls::ListRow>& rows);

} // namespace partslist
