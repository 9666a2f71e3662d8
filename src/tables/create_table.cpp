#include <cmath>
#include <limits>

#include "automation/run_time_error.hpp"
#include "catia/session.hpp"
#include "shell/shell.hpp"
#include "tables/configuration.hpp"
#include "tables/tables.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

constexpr int kColumns = 7;
constexpr int kColumnWidth = 20; // mm, until every column gets its own
constexpr std::size_t kName = 0;
constexpr std::size_t kPosition = 1;

int WholeNumber(double number) {
    const double rounded = std::nearbyint(number);
    if (!(std::abs(rounded) <= std::numeric_limits<int>::max())) {
        throw automation::Overflow();
    }
    return static_cast<int>(rounded);
}

// What a column-order slot takes from a parts-list row: its name, its position as a number, or one
// of its fields as text. An empty slot is the name; one that is no number raises 13, one beyond the
// list's columns raises 380.
automation::Value CellValue(const controls::ListView& list, std::size_t row,
                            const std::string& slot) {
    const auto number = slot.empty() ? 0 : text::Number(slot);
    if (!number) {
        throw automation::TypeMismatch();
    }
    if (*number < 0) {
        throw automation::InvalidPropertyValue();
    }
    const auto field = static_cast<std::size_t>(WholeNumber(*number));
    if (field == kName) {
        return list.Row(row).text;
    }
    const std::string& value = list.SubItem(row, field);
    if (field == kPosition) {
        return text::LeadingNumber(value);
    }
    return value;
}

void SetRowFont(const catia::DrawingTable& table, int row, double size,
                const std::optional<std::string>& font_name) {
    for (int column = 1; column <= kColumns; ++column) {
        const catia::DrawingText cell = table.GetCellObject(row, column);
        cell.SetFontSize(0, 0, size);
        if (font_name && !font_name->empty()) {
            cell.SetFontName(0, 0, *font_name);
        }
    }
}

std::string Progress(int row, int rows) {
    return std::to_string(row) + "/" + std::to_string(rows);
}

void CreateTable(Form1& form) {
    const Configuration configuration = ParseConfiguration(form.Text2.Text(), "/sirka");
    shell::SetMousePointer(form, controls::MousePointer::kHourglass);
    const int free_rows = WholeNumber(configuration.free_rows);
    const int rows =
        WholeNumber(static_cast<double>(form.ListView1.Count()) + 1 + configuration.free_rows);

    shell::stat(form, "Cekam na Catii");
    const catia::Application application = shell::CatiaApplication(form);
    const catia::Document document = application.ActiveDocument();
    if (!text::ContainsIgnoringCase(document.Name(), ".CATDrawing")) {
        shell::stat(form, "Neni aktivni CATDrawing");
        shell::SetMousePointer(form, controls::MousePointer::kDefault);
        return;
    }
    // Part of the fixed opening of a drawing action: a document without a selection fails here,
    // before anything is drawn.
    static_cast<void>(document.Selection());
    const catia::DrawingTables tables =
        catia::DrawingDocument(document).Sheets().ActiveSheet().Views().ActiveView().Tables();

    shell::stat(form, "Catie vytvari tabulku");
    shell::DoEvents(form);
    const catia::DrawingTable table = tables.Add(configuration.x, configuration.y, rows, kColumns,
                                                 configuration.body_row_height, kColumnWidth);

    shell::stat(form, "Catie upravuje velikost 1 radku");
    table.SetrowSize(1, configuration.header_row_height);

    if (configuration.anchor_point) {
        shell::stat(form, "Catie upravuje pocatecni bod");
        table.SetAnchorPoint(*configuration.anchor_point);
    }

    shell::stat(form, "Catie upravuje sirku slopcu");
    for (int column = 1; column <= kColumns; ++column) {
        table.SetColumnSize(column, configuration.widths.at(static_cast<std::size_t>(column - 1)));
    }

    shell::stat(form, "Catie upravuje font");
    SetRowFont(table, 1, configuration.header_font_size, configuration.font_name);
    for (int row = 2; row <= rows; ++row) {
        SetRowFont(table, row, configuration.body_font_size, configuration.font_name);
        shell::stat(form, "Catie upravuje font " + Progress(row, rows));
    }

    shell::stat(form, "Catie doplnuje hlavicku");
    shell::DoEvents(form);
    for (int column = 1; column <= kColumns; ++column) {
        table.SetCellString(1, column,
                            configuration.headers.at(static_cast<std::size_t>(column - 1)));
    }

    // From the bottom up: the first row of the list stands at the bottom of the table.
    for (int row = rows; row >= free_rows + 2; --row) {
        shell::stat(form, "Catie doplnuje radku " + Progress(row, rows));
        shell::DoEvents(form);
        const auto list_row = static_cast<std::size_t>(rows + 1 - row);
        for (int column = 1; column <= kColumns; ++column) {
            const std::string& slot =
                configuration.column_order.at(static_cast<std::size_t>(column - 1));
            table.SetCellString(row, column, CellValue(form.ListView1, list_row, slot));
        }
    }

    if (configuration.line_thickness) {
        shell::stat(form, "Catie meni tlousku cary");
        // The document that is active now: the user may have switched while the table was written.
        const catia::Selection selection = application.ActiveDocument().Selection();
        selection.Add(table);
        selection.VisProperties().SetRealWidth(*configuration.line_thickness, 1);
    }

    shell::stat(form, "Tabulka vytvorena Ok ");
    shell::SetMousePointer(form, controls::MousePointer::kDefault);
}

} // namespace

void Command11_Click(Form1& form) {
    if (form.ListView1.Count() == 0 || !shell::Spusteni_Catie(form)) {
        return;
    }
    // On an error the status line keeps the last announcement, which tells at which step the run
    // stopped, and the pointer stays busy.
    shell::TrapSilently([&form] { CreateTable(form); });
}

} // namespace tables
