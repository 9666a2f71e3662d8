// The table configuration: lines separated by CR LF, each a key and its values separated by ";".
// Lines without a value and lines with an unknown key are ignored, so a "-" before a key switches
// its line off. A later line overwrites an earlier one, value by value.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tables {

inline constexpr std::size_t kSlots = 10;
using Slots = std::array<std::string, kSlots>; // value k of a list line stands at k - 1

struct Configuration {
    double x = 0; // "/pozice", mm in the view's axes
    double y = 0;
    Slots column_order; // "/razeni": which field of a parts-list row feeds each table column
    Slots widths;       // "/sirka", mm
    Slots headers;      // "/hlavicka"
    std::string header_row_height; // "/vyska1", mm
    std::string body_row_height;   // "/vyska2", mm
    double free_rows = 0;          // "/volny": empty rows between the header and the first data row
    std::optional<std::string> font_name;
    double header_font_size = 0;          // "/fontsize1", mm
    double body_font_size = 0;            // "/fontsize2", mm
    std::optional<double> line_thickness; // "/tlouska_cary": index of a line thickness
    std::optional<double> anchor_point;   // "/AnchorPoint": code of CATIA's anchor point
};

// Reads a configuration text. `widths_key` is the key of the column widths, "/sirka" or "/sirka1".
// Raises 9 (subscript out of range) for a list line of more than ten values and for a "/pozice"
// line without a Y value.
Configuration ParseConfiguration(std::string_view text, std::string_view widths_key);

} // namespace tables
