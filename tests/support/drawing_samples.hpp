// Drawings of the simulated session that the action tests open.
#pragma once

#include <string>
#include <vector>

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

// The calls that every action on a drawing's tables and texts begins with.
inline const std::vector<std::string> kOpeningCalls{
    "Application.ActiveDocument", "DrawingDocument.Name",      "DrawingDocument.Selection",
    "DrawingDocument.Sheets",     "DrawingSheets.ActiveSheet", "DrawingSheet.Views",
    "DrawingViews.ActiveView"};

} // namespace testing_support
