#include "sheets/sheet_action.hpp"

#include "shell/shell.hpp"
#include "text/text.hpp"

namespace sheets {

namespace {

constexpr const char* kNoDrawing = "Neni aktivni CATDrawing";

} // namespace

bool IsDrawing(controls::Form1& form, const std::string& document_name) {
    if (text::ContainsIgnoringCase(document_name, ".CATDrawing")) {
        return true;
    }
    shell::stat(form, kNoDrawing);
    return false;
}

bool IsDrawingExactly(controls::Form1& form, const std::string& document_name) {
    if (document_name.find("CATDrawing") != std::string::npos) {
        return true;
    }
    shell::stat(form, kNoDrawing);
    return false;
}

catia::Document WaitForDocument(controls::Form1& form) {
    shell::stat(form, "Cekam na Catii");
    return shell::CatiaApplication(form).ActiveDocument();
}

std::optional<catia::DrawingSheets> DrawingSheetsOf(controls::Form1& form,
                                                    const catia::Document& document) {
    const std::string name = document.Name();
    if (!IsDrawing(form, name)) {
        return std::nullopt;
    }
    static_cast<void>(document.Selection());
    if (!IsDrawingExactly(form, name)) {
        return std::nullopt;
    }
    const catia::DrawingSheets sheets = catia::DrawingDocument(document).Sheets();
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
