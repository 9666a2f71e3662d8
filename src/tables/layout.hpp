// The table that "Vytvorení" or "Export 1 tabulky" would make, before CATIA makes it: plain values,
// for the preview to draw. Lengths are in millimetres, heights of letters too. Rows and columns
// count from 1, row 1 being the header.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tables/drawing_action.hpp"

namespace tables {

// How wide the characters of a font are, as parts of the height of its letters.
struct CharacterWidths {
    std::vector<float> widths; // by their Unicode numbers, from 0 on
    float other = 1;           // of all that come after them
};
// The width of a text's longest line, as part of the height of its letters.
double TextWidth(std::string_view text, const CharacterWidths& widths);
// How many lines a text has, whichever way they are broken.
int LinesOf(std::string_view text);
// How high so many lines are, as part of the height of their letters.
double LinesHeight(int lines);

// A length that is sent as a text, as CATIA reads it: the whole text is a number with "." as its
// decimal separator, and "," between its digits is passed over. Nothing where it is none.
std::optional<double> LengthOf(std::string_view sent);

enum class TableContent { kWholeList, kCurrentRow };

// What a table is made of.
struct TableSource {
    std::string_view configuration;
    TableContent content = TableContent::kWholeList;
    std::shared_ptr<const Parts> parts; // never null
};

// The font that the configuration names, for the screen: without what CATIA adds to the names of
// TrueType fonts; Arial where none is named.
std::string FontFace(const TableSource& source);

struct TableLayout {
    // Why the creation would end before the table is ready, a Czech sentence; empty where it would
    // not. What is known of the table stands here all the same.
    std::string trouble;

    int rows = 0; // none where there would be no table at all
    std::array<double, kColumns> column_widths{};
    double header_height = 0;
    double row_height = 0;
    double header_font_size = 0;
    double body_font_size = 0;
    std::string font_face;
    int line_thickness = 1; // its index

    // The point of the table that stands on the position, by CATIA's code: 0 to 2 left, 3 to 5
    // centre, 6 to 8 right; top, middle, bottom in each. The position is in the view's axes, y
    // upwards, and so is the table's upper left corner.
    int anchor_point = 0;
    double x = 0;
    double y = 0;
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    std::size_t rows_without_material = 0;
    std::size_t texts_too_large = 0; // for their cells

    // Where its texts come from.
    TableContent content = TableContent::kWholeList;
    int first_row_with_part = 0;
    std::array<std::string, kColumns> headers;
    std::array<std::optional<std::size_t>, kColumns> fields; // of the parts; none stays empty
    std::shared_ptr<const Parts> parts;
    std::shared_ptr<const CharacterWidths> character_widths; // never null
};

TableLayout LayOutTable(const TableSource& source,
                        std::shared_ptr<const CharacterWidths> character_widths);

// From the table's upper left corner, y downwards.
struct Box {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};
struct LaidOutCell {
    Box box;
    std::string text;
    double font_size = 0;
    bool fits = true;
};
LaidOutCell CellAt(const TableLayout& layout, int row, int column);
// Where a row begins; one row behind the last it is the table's lower edge.
double RowTop(const TableLayout& layout, int row);
// The row at a height; the first one or the last one where that is beyond the table.
int RowAtHeight(const TableLayout& layout, double height);

// What stands under the preview: sizes and counts, and where the table stands.
std::string SizesAndCounts(const TableLayout& layout);
std::string AnchorAndPosition(const TableLayout& layout);
std::string PositionText(const TableLayout& layout);

} // namespace tables
