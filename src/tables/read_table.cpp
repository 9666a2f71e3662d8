#include <array>

#include "shell/shell.hpp"
#include "tables/drawing_action.hpp"
#include "tables/tables.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

using enum controls::PartField;

// A table of the drawing with the sizes that were read from it.
struct ReadTable {
    catia::DrawingTable table;
    int columns;
    int rows;
};

void AppendLine(Form1& form, const std::string& line) {
    form.Text3.Append(line + "\r\n");
}

ReadTable ReadLayout(Form1& form, const catia::DrawingTable& table) {
    const catia::DrawingText cell = table.GetCellObject(1, 1);
    AppendLine(form, "/fontname;" + cell.GetFontName(0, 0));
    AppendLine(form, "/fontsize;" + text::PlainDecimal(cell.GetFontSize(0, 0)));
    AppendLine(form, "/text;" + cell.Text());
    const int columns = table.NumberOfColumns();
    AppendLine(form, "/sloupcu;" + std::to_string(columns));
    const int rows = table.NumberOfRows();
    AppendLine(form, "/radek;" + std::to_string(rows));

    std::string widths = "/sirka";
    for (int column = 1; column <= columns; ++column) {
        widths += ";" + text::PlainDecimal(table.GetColumnSize(column));
    }
    AppendLine(form, widths);
    AppendLine(form, "/vyska1;" + text::PlainDecimal(table.GetRowSize(1)));
    AppendLine(form, "/vyska2;" + text::PlainDecimal(table.GetRowSize(2)));

    std::string headers = "/hlavicka";
    for (int column = 1; column <= columns; ++column) {
        headers += ";" + table.GetCellString(1, column);
    }
    AppendLine(form, headers);
    const std::string x = text::PlainDecimal(table.X());
    AppendLine(form, "/pozice;" + x + ";" + text::PlainDecimal(table.Y()));
    AppendLine(form, "/AnchorPoint;" + std::to_string(table.AnchorPoint()));
    return {table, columns, rows};
}

// What was read of the selection: nothing where the action has ended with its message, else whether
// the first selected element is a table, and then that.
struct ReadSelection {
    std::optional<ReadTable> table;
};

// Writes the selected table's layout into Text3 as configuration lines; of anything else the line
// width alone. The key of the line width has no ";", so that table creation does not take it.
std::optional<ReadSelection> ReadParameters(Form1& form) {
    const auto drawing = OpenActiveDrawing(form);
    if (!drawing || !HasSelection(form, drawing->selection)) {
        return std::nullopt;
    }
    form.Text3.SetText("");
    AppendLine(form, "/tlouska_cary =" +
                         std::to_string(drawing->selection.VisProperties().GetRealWidth()));
    ReadSelection read;
    if (const auto table = SelectedTable(drawing->selection)) {
        read.table = ReadLayout(form, *table);
    }
    return read;
}

std::string CellText(const catia::DrawingTable& table, int row, int column) {
    return table.GetCellObject(row, column).Text();
}

// The parts-list field of each table column from the third on.
constexpr std::array kColumnFields{kQuantity, kSize, kMaterial, kNote};
constexpr int kPositionColumn = 1;
constexpr int kNameColumn = 2;
constexpr int kSheetColumn = 7;

// Rows without a position and a header whose last heading is "List" are passed over.
void LoadRow(Form1& form, const catia::DrawingTable& table, int row) {
    const std::string position = CellText(table, row, kPositionColumn);
    if (position.empty()) {
        return;
    }
    const std::string sheet = CellText(table, row, kSheetColumn);
    if (sheet == "List") {
        return;
    }
    shell::stat(form, "Nacteni radky:" + std::to_string(row));
    controls::ListView& list = form.ListView1;
    const std::size_t list_row = list.Add(CellText(table, row, kNameColumn));
    list.SetSubItem(list_row, kPosition, position);
    int column = kNameColumn;
    for (const controls::PartField field : kColumnFields) {
        list.SetSubItem(list_row, field, CellText(table, row, ++column));
    }
    list.SetSubItem(list_row, kSheet, sheet);
    list.SetChecked(list_row, !sheet.empty());
}

// From the bottom up, as the table was written.
void LoadRows(Form1& form, const ReadTable& read) {
    form.ListView1.Clear();
    shell::ShowRowCount(form);
    if (read.columns != kColumns) {
        return;
    }
    for (int row = read.rows; row >= 1; --row) {
        LoadRow(form, read.table, row);
        shell::DoEvents(form);
    }
    shell::ShowRowCount(form);
    shell::stat(form, "Nacteni tabulky Ok");
}

} // namespace

void Command10_Click(Form1& form) {
    if (!shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapSilently([&form] {
        if (ReadParameters(form)) {
            shell::stat(form, "Nacteni parametru Ok");
        }
    });
}

void Command9_Click(Form1& form) {
    if (!shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapSilently([&form] {
        const auto read = ReadParameters(form);
        if (!read) {
            return;
        }
        if (!read->table) {
            shell::stat(form, "Spatny vyber"); // and the list stays
            return;
        }
        LoadRows(form, *read->table);
    });
}

} // namespace tables
