// The four pickers beside the parts list and the values that they remember between runs.
#pragma once

#include "controls/form1.hpp"

namespace partslist {

// Load and save the remembered values of a picker. Nothing is remembered yet: pickers have no value
// files so far, and both do nothing.
void Nacist_List(controls::Form1& form, controls::ComboBox& list);
void Ulozit_List(controls::Form1& form, const controls::ComboBox& list);

} // namespace partslist
