#include "partslist/pickers.hpp"

namespace partslist {

void Nacist_List(controls::Form1& /*form*/, controls::ComboBox& /*list*/) {}

void Ulozit_List(controls::Form1& /*form*/, const controls::ComboBox& /*list*/) {}

} // namespace partslist
