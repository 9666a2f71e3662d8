// What "Parametry" has read of a table, taken into a configuration text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tables {

struct MergedConfiguration {
    std::string text;
    std::size_t lines = 0; // of the configuration that were taken over
    // The keys of lines that table creation would refuse, with what is wrong: "/sirka (12 hodnot)".
    std::vector<std::string> left_out;
};

// The configuration with the lines of `layout` that table creation reads. A line takes the place of
// the last one of its key that counts; where there is none, the place of the switched-off font
// name's line or the end. The font's size is that of the header and of the other rows; the line
// width gets the key that is read. Every other line stays to the letter.
MergedConfiguration MergeConfiguration(std::string_view configuration, std::string_view layout);

} // namespace tables
