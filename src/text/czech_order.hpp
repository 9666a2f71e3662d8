// The order in which a person looks for names: letters as in a Czech dictionary ("ch" after "h",
// "č" after "c"), numbers inside them by their value ("M6" before "M10"), then accents and small
// and capital letters.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Names stand in this order where their keys, compared byte by byte, do. Names that differ have
// different keys, but for a few letters that are read as two ("ß" as "ss").
std::string CzechOrderKey(std::string_view name);

} // namespace text
