#include "sheets/sheet_action.hpp"

#include "shell/shell.hpp"

namespace sheets {

bool IsDrawingExactly(controls::Form1& form, const std::string& document_name) {
    shell::NoteDocument(form, document_name);
    if (document_name.find("CATDrawing") != std::string::npos) {
        return true;
    }
    shell::SayThereIsNoDrawing(form);
    return false;
}

std::optional<catia::DrawingDocument> DrawingOf(controls::Form1& form,
                                                const catia::Document& document) {
    const std::string name = document.Name();
    if (!shell::IsDrawing(form, name)) {
        return std::nullopt;
    }
    static_cast<void>(document.Selection());
    if (!IsDrawingExactly(form, name)) {
        return std::nullopt;
    }
    return catia::DrawingDocument(document);
}

std::optional<catia::DrawingSheets> DrawingSheetsOf(controls::Form1& form,
                                                    const catia::Document& document) {
    const auto drawing = DrawingOf(form, document);
    if (!drawing) {
        return std::nullopt;
    }
    const catia::DrawingSheets sheets = drawing->Sheets();
    static_cast<void>(sheets.ActiveSheet());
    return sheets;
}

bool HasSheet(const controls::ListView& parts_list, std::size_t row) {
    return !parts_list.SubItem(row, controls::kSheet).empty();
}

std::size_t CountRowsWithSheet(const controls::ListView& parts_list) {
    std::size_t count = 0;
    for (std::size_t row = 1; row <= parts_list.Count(); ++row) {
        count += HasSheet(parts_list, row) ? 1 : 0;
    }
    return count;
}

void AddPlannedSheet(controls::Form1& form) {
    controls::ListView& list = form.ListView3;
    const std::size_t row = list.Add(kPlannedSheet);
    list.SetChecked(row, true);
    list.EnsureVisible(row);
}

} // namespace sheets
