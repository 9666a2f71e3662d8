// Draws a document as CATIA would show it: a drawing's active sheet, or a product's tree.
#pragma once

#include <memory>
#include <optional>

#include <windows.h>

#include "simulator/model.hpp"

namespace simulator {

// Draws `document` (none when null) into the area `area` of `dc`, on a monitor of that DPI.
// `first_line` is the first visible line of a product's tree.
void PaintDocument(HDC dc, const RECT& area, UINT dpi, const Document* document, int first_line);

// The table of the active sheet under `point`, in the area that the sheet was drawn into; null
// where there is none.
std::shared_ptr<Table> TableAt(const RECT& area, const Document& document, POINT point);

// How many lines a product's tree has, and how many fit into `area`.
int TreeLines(const Product& product);
int TreeLinesIn(const RECT& area, UINT dpi);

} // namespace simulator
