// Drawings of the simulated session that the action tests open, and how a drawing's tables read.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "simulator/session.hpp"

namespace testing_support {

inline constexpr const char* kEmptyDrawing = R"(DrawingDocument Drawing1.CATDrawing
sheet Sheet.1
  view "Main View"
)";

// A selected table of `rows` rows and `columns` columns, every cell holding "old".
inline std::string DrawingWithTable(int rows, int columns) {
    std::string drawing =
        std::string(kEmptyDrawing) + "    table at 30 40.5 anchor 2 weight 3 selected columns";
    std::string cells;
    for (int column = 1; column <= columns; ++column) {
        drawing += " " + std::to_string(10 + column);
        cells += " old";
    }
    for (int row = 1; row <= rows; ++row) {
        drawing += "\n      row " + std::to_string(4 + row) +
                   ".5 font 3.5 \"Arial (TrueType)\" cells" + cells;
    }
    return drawing + "\n";
}

// The texts of all table rows of the active drawing, from the top, as its text form has them.
inline std::vector<std::string> DrawnRows(const simulator::Session& session) {
    std::vector<std::string> rows;
    std::istringstream lines(session.DrawingAsText());
    for (std::string line; std::getline(lines, line);) {
        if (const auto cells = line.find(" cells "); cells != std::string::npos) {
            rows.push_back(line.substr(cells + 7));
        }
    }
    return rows;
}

} // namespace testing_support
