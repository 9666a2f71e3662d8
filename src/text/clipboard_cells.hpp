// Cells as spreadsheets put them on the clipboard as text: a line per row, a tab between cells. A
// cell that holds a tab or a line break stands in quotes, its own quotes doubled.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

// A cell as it is written there.
std::string ClipboardCell(std::string_view cell);

// The cells of such a text, row by row; a line ends with CR LF or LF, the last one may also end
// with the text. A text without tabs is one column, the empty text has no row. Spreadsheets quote
// only what needs it: quotes round anything else, and quotes that are not closed at a cell's end,
// are the cell's own. Line breaks inside a cell are line feeds.
std::vector<std::vector<std::string>> ClipboardCells(std::string_view whole);

// The cells' text of the two that LibreOffice Calc offers: its plain one has blanks for the line
// breaks inside cells, and no quotes; the other one has both. Where that is not the same text
// otherwise, it is not taken.
std::string TextWithLineBreaks(std::string plain, std::string with_line_breaks);

} // namespace text
