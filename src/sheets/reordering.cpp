#include "automation/run_time_error.hpp"
#include "sheets/sheet_action.hpp"
#include "sheets/sheets.hpp"
#include "shell/explanations.hpp"
#include "shell/shell.hpp"

namespace sheets {

namespace {

// The active document where it is a drawing. The reordering actions make the looser test only.
std::optional<catia::DrawingDocument> ActiveDrawing(Form1& form) {
    const catia::Document document = shell::WaitForCatia(form).ActiveDocument();
    if (!shell::IsDrawing(form, document.Name())) {
        return std::nullopt;
    }
    return catia::DrawingDocument(document);
}

void ApplyOrder(Form1& form) {
    const auto drawing = ActiveDrawing(form);
    if (!drawing) {
        return;
    }
    const catia::DrawingSheets sheets = drawing->Sheets();
    const catia::DrawingRoot root = drawing->DrawingRoot();
    if (form.ListView3.Count() == 0) {
        throw automation::SubscriptOutOfRange(); // there is no array without elements
    }
    shell::stat(form, "Nacitam Sheets");
    std::vector<catia::DrawingSheet> order;
    for (std::size_t row = 1; row <= form.ListView3.Count(); ++row) {
        order.push_back(sheets.Item(form.ListView3.Row(row).text));
        shell::ShowProgress(form, static_cast<int>(row), static_cast<int>(form.ListView3.Count()));
    }
    shell::stat(form, "Presouvam Sheets");
    root.reorder_Sheets(order);
    shell::stat(form, "Presouvani Ok");
    shell::DoEvents(form);
    Command21_Click(form);
}

void SwapFirstTwo(Form1& form) {
    const auto drawing = ActiveDrawing(form);
    if (!drawing) {
        return;
    }
    const catia::DrawingSheets sheets = drawing->Sheets();
    const catia::DrawingRoot root = drawing->DrawingRoot();
    const catia::DrawingSheet first = sheets.Item(1);
    const catia::DrawingSheet second = sheets.Item(2);
    root.reorder_Sheets({second, first});
    shell::Explain(form, shell::SheetsSwapped());
}

} // namespace

void Command34_Click(Form1& form) {
    if (form.ListView1.Count() == 0 || !shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapToStatus(form, [&form] { ApplyOrder(form); });
}

void Command29_Click(Form1& form) {
    if (form.ListView1.Count() == 0 || !shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapToStatus(form, [&form] { SwapFirstTwo(form); });
}

} // namespace sheets
