#include <array>
#include <vector>

#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "tables/configuration_merge.hpp"
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

// A line break in a text of the table must not end the line: it is a line feed alone.
void AppendLine(Form1& form, const std::string& line) {
    form.Text3.Append(text::WithLineFeeds(line) + "\r\n");
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
    return text::WithLineFeeds(table.GetCellObject(row, column).Text());
}

// The parts-list field of each table column from the third on.
constexpr std::array kColumnFields{kQuantity, kSize, kMaterial, kNote};
constexpr int kPositionColumn = 1;
constexpr int kNameColumn = 2;
constexpr int kSheetColumn = 7;

// A row of the list as it is read, field by field.
struct ReadRow {
    std::string name;
    std::array<std::string, kNote + 1> fields; // by their numbers
};

// Reads a row to the end of `rows`. Rows without a position and a header whose last heading is
// "List" are passed over.
void LoadRow(Form1& form, const catia::DrawingTable& table, int row, std::vector<ReadRow>& rows) {
    const std::string position = CellText(table, row, kPositionColumn);
    if (position.empty()) {
        return;
    }
    const std::string sheet = CellText(table, row, kSheetColumn);
    if (sheet == "List") {
        return;
    }
    shell::ShowPassing(form, "Nacteni radky:" + std::to_string(row));
    rows.push_back({.name = CellText(table, row, kNameColumn), .fields = {}});
    auto& fields = rows.back().fields;
    fields[kPosition] = position;
    int column = kNameColumn;
    for (const controls::PartField field : kColumnFields) {
        fields.at(field) = CellText(table, row, ++column);
    }
    fields[kSheet] = sheet;
}

// The rows take the place of whatever stands in the list.
void FillList(Form1& form, const std::vector<ReadRow>& rows) {
    controls::ListView& list = form.ListView1;
    list.Clear();
    for (const ReadRow& read : rows) {
        const std::size_t row = list.Add(read.name);
        for (std::size_t field = 1; field < read.fields.size(); ++field) {
            list.SetSubItem(row, field, read.fields.at(field));
        }
        list.SetChecked(row, !read.fields[kSheet].empty());
    }
    shell::ShowRowCount(form);
}

// Whether an error ends the reading because the person wants it ended.
bool IsInterrupted(const Form1& form, const automation::RunTimeError& error) {
    return shell::IsInterrupt(error) || form.close_requested;
}

// From the bottom up, as the table was written. The list stays empty until all rows are read: what
// is read at a yield is no list yet, and must not be saved as one where the window is closed.
void LoadRows(Form1& form, const ReadTable& read) {
    if (form.tables_in_work > 0) { // read at a yield of what makes or fills it
        throw automation::WithReason(automation::InvalidProcedureCall(), shell::TableInWork());
    }
    const TableInWork in_work(form); // the list that is empty meanwhile is nobody's wish
    form.rows_before_reading = form.ListView1.Rows();
    form.names_before_reading = form.ListView1.SourceNames();
    FillList(form, {});
    if (read.columns != kColumns) {
        form.rows_before_reading.clear();
        shell::Explain(form, shell::NotSevenColumns(read.columns));
        return;
    }
    std::vector<ReadRow> rows;
    const std::uint64_t writes_before = form.table_writes;
    try {
        for (int row = read.rows; row >= 1; --row) {
            LoadRow(form, read.table, row, rows);
            shell::ShowProgress(form, read.rows - row + 1, read.rows);
            shell::DoEvents(form);
        }
        if (form.table_writes != writes_before) {
            throw automation::WithReason(automation::InvalidProcedureCall(),
                                         shell::TableChangedMeanwhile());
        }
    } catch (const automation::RunTimeError& error) {
        if (IsInterrupted(form, error)) {
            PutBackRowsBeforeReading(form);
        } else {
            form.rows_before_reading.clear();
            FillList(form, rows); // what was read
        }
        throw;
    }
    form.rows_before_reading.clear();
    FillList(form, rows);
    shell::stat(form, "Nacteni tabulky Ok");
}

} // namespace

void PutBackRowsBeforeReading(Form1& form) {
    if (form.ListView1.Count() == 0) {
        form.ListView1.Replace(std::move(form.rows_before_reading), std::nullopt);
        form.ListView1.SetSourceNames(std::move(form.names_before_reading));
        shell::ShowRowCount(form);
    }
    form.rows_before_reading.clear();
}

void Command10_Click(Form1& form) {
    if (!shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapExplaining(form, [&form] {
        if (ReadParameters(form)) {
            shell::stat(form, "Nacteni parametru Ok");
        }
    });
}

void Command9_Click(Form1& form) {
    if (!shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapExplaining(form, [&form] {
        const auto read = ReadParameters(form);
        if (!read) {
            return;
        }
        if (!read->table) {
            shell::Refuse(form, "Spatny vyber"); // and the list stays
            return;
        }
        LoadRows(form, *read->table);
    });
}

void Command38_Click(Form1& form) {
    MergedConfiguration merged = MergeConfiguration(form.Text2.Text(), form.Text3.Text());
    if (merged.lines == 0 && merged.left_out.empty()) {
        shell::Refuse(form, "Neni co prevzit");
        return;
    }
    if (merged.text != form.Text2.Text()) {
        form.Text2.SetText(std::move(merged.text));
    }
    std::string message = "Prevzato radku: " + std::to_string(merged.lines);
    for (const std::string& line : merged.left_out) {
        message += (&line == &merged.left_out.front() ? ", vynechano: " : ", ") + line;
    }
    shell::stat(form, message);
}

} // namespace tables
