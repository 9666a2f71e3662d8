#include "tables/drawing_action.hpp"

#include "automation/run_time_error.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

using enum controls::PartField;

constexpr unsigned char kDiameterCode = 248;

} // namespace

std::optional<OpenDrawing> OpenActiveDrawing(controls::Form1& form) {
    const catia::Application application = shell::WaitForCatia(form);
    const catia::Document document = application.ActiveDocument();
    if (!shell::IsDrawing(form, document.Name())) {
        return std::nullopt;
    }
    const catia::Selection selection = document.Selection();
    return OpenDrawing{
        application, selection,
        catia::DrawingDocument(document).Sheets().ActiveSheet().Views().ActiveView()};
}

bool HasSelection(controls::Form1& form, const catia::Selection& selection) {
    if (selection.Count2() == 0) {
        shell::stat(form, "Nejsou vybrany zadny objekty");
        return false;
    }
    return true;
}

std::optional<catia::DrawingTable> SelectedTable(const catia::Selection& selection) {
    const catia::SelectedElement first = selection.Item2(1);
    if (first.Type() != "DrawingTable") {
        return std::nullopt;
    }
    return catia::DrawingTable(first.Value());
}

std::size_t CurrentPart(const controls::Form1& form) {
    const auto row = form.ListView1.CurrentRow();
    if (!row) {
        throw automation::ObjectVariableNotSet();
    }
    return *row;
}

std::array<automation::Value, 6> PartValues(const controls::ListView& list, std::size_t row) {
    return {text::LeadingNumber(list.SubItem(row, kPosition)),
            list.Row(row).text,
            list.SubItem(row, kQuantity),
            list.SubItem(row, kSize),
            list.SubItem(row, kMaterial),
            list.SubItem(row, kNote)};
}

std::string Progress(int done, int total) {
    return std::to_string(done) + "/" + std::to_string(total);
}

std::string WithDiameterSign(const std::string& size, const std::string& diameter_sign) {
    if (!text::ContainsIgnoringCase(size, "D")) {
        return size;
    }
    return diameter_sign + std::string(text::WithoutFirstCharacter(size));
}

std::string DiameterSign(controls::Form1& form) {
    return form.ports.code_page.Character(kDiameterCode);
}

} // namespace tables
