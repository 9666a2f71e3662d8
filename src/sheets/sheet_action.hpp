// What the actions on the drawing's sheets have in common. The actions differ in how they open the
// drawing; each uses of these what it needs, in its own order.
#pragma once

#include <optional>
#include <string>

#include "catia/session.hpp"
#include "controls/form1.hpp"

namespace sheets {

// The text of a row that stands for a sheet still to be created.
inline constexpr const char* kPlannedSheet = "Nový";

// A stricter test of a document's name than shell::IsDrawing: "CATDrawing" in its exact letters.
bool IsDrawingExactly(controls::Form1& form, const std::string& document_name);

// `document` where both tests take its name; nothing, with a message, where one does not. Reads the
// selection on the way, as a drawing must have one.
std::optional<catia::DrawingDocument> DrawingOf(controls::Form1& form,
                                                const catia::Document& document);
// Its sheets. Reads the active sheet too, for the same reason.
std::optional<catia::DrawingSheets> DrawingSheetsOf(controls::Form1& form,
                                                    const catia::Document& document);

// Whether a row of the parts list has a drawing sheet.
bool HasSheet(const controls::ListView& parts_list, std::size_t row);
std::size_t CountRowsWithSheet(const controls::ListView& parts_list);

// Appends a ticked row for a sheet still to be created, and shows it.
void AddPlannedSheet(controls::Form1& form);

} // namespace sheets
