// Drawing tables made from the parts list.
//
// Actions:
//   Command11_Click  "Vytvorení"
#pragma once

#include "controls/form1.hpp"

namespace tables {

using controls::Form1;

void Command11_Click(Form1& form);

} // namespace tables
