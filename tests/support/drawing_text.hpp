// How the text form of a drawing reads: its sheets, and the rows of its tables.
#pragma once

#include <string>
#include <vector>

#include "text/text.hpp"

namespace testing_support {

// The names of the sheets, in their order.
inline std::vector<std::string> SheetNames(std::string_view drawing) {
    constexpr std::string_view kSheet = "sheet \"";
    std::vector<std::string> names;
    for (std::string_view line : text::Lines(drawing)) {
        if (line.starts_with(kSheet)) {
            line.remove_prefix(kSheet.size());
            names.emplace_back(line.substr(0, line.find('"')));
        }
    }
    return names;
}

// The cells of every row of every table, from the top, each in double quotes.
inline std::vector<std::string> TableRows(std::string_view drawing) {
    constexpr std::string_view kCells = " cells ";
    std::vector<std::string> rows;
    for (const std::string_view line : text::Lines(drawing)) {
        if (const auto cells = line.find(kCells); cells != std::string_view::npos) {
            rows.emplace_back(line.substr(cells + kCells.size()));
        }
    }
    return rows;
}

} // namespace testing_support
