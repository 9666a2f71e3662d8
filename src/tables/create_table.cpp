#include <cstdlib>
#include <string_view>

#include "automation/run_time_error.hpp"
#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "tables/configuration.hpp"
#include "tables/drawing_action.hpp"
#include "tables/table_rows.hpp"
#include "tables/tables.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

// A new table, what it was asked to be, and the list that goes into it.
struct NewTable {
    catia::DrawingTable table;
    const Configuration& configuration;
    const Parts& parts;
    int rows;
};

// What tells the ways of creating a table apart; everything else is the same.
struct Manner {
    std::string_view widths_key;
    int (*rows)(const Parts& parts, const Configuration& configuration);
    bool anchor_before_row_height;
    void (*fill)(Form1& form, const NewTable& created);
    bool whole_list;
};

// A row gets its fonts with three times as many calls as its texts.
void ShowAmount(Form1& form, const NewTable& created, int rows_with_font, int rows_with_texts) {
    constexpr int kFont = 3;
    shell::ShowProgress(form, kFont * rows_with_font + rows_with_texts, (kFont + 1) * created.rows);
}

// From the bottom up: the first row of the list stands at the bottom of the table.
void FillWithTheList(Form1& form, const NewTable& created) {
    const int free_rows = WholeNumber(created.configuration.free_rows);
    for (int row = created.rows; row >= free_rows + 2; --row) {
        shell::ShowPassing(form, "Catie doplnuje radku " + Progress(row, created.rows));
        // The header and the free rows are ready.
        ShowAmount(form, created, created.rows, 1 + free_rows + created.rows - row);
        shell::DoEvents(form);
        const PartTexts& part = created.parts.rows.at(static_cast<std::size_t>(created.rows - row));
        for (int column = 1; column <= kColumns; ++column) {
            const std::string& slot =
                created.configuration.column_order.at(static_cast<std::size_t>(column - 1));
            created.table.SetCellString(row, column, CellValue(part, slot));
        }
    }
}

int HeaderAndOneRow(const Parts& /*parts*/, const Configuration& /*configuration*/) {
    return 2;
}

// The last column stays empty.
void FillWithTheCurrentRow(Form1& /*form*/, const NewTable& created) {
    const auto values = PartValues(CurrentPart(created.parts));
    created.table.SetCellString(2, 1, values[0]); // written twice, as it always was
    for (std::size_t value = 0; value < values.size(); ++value) {
        created.table.SetCellString(2, static_cast<int>(value) + 1, values[value]);
    }
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

// A length has gone out as a text. Where the user's language reads that as another number ("6.8" is
// 68 where points group thousands), a server that converts in it has taken it for that without a
// word: what has come of it is asked, and it is set once more as the number. Other languages need
// no such call: the text is read as it is meant, or refused.
template <typename Taken, typename Set>
void MendLength(Form1& form, const std::string& length, Taken&& taken, Set&& set) {
    const auto meant = text::Number(length);
    const auto read = form.ports.number_format.ReadNumber(length);
    if (!meant || !read || *read == *meant) {
        return;
    }
    const double size = taken();
    if (std::abs(size - *read) < std::abs(size - *meant)) {
        set(*meant);
    }
}

void MendRowHeights(Form1& form, const NewTable& created) {
    MendLength(
        form, created.configuration.body_row_height,
        [&] { return created.table.GetRowSize(created.rows); },
        [&](double height) {
            for (int row = 2; row <= created.rows; ++row) {
                created.table.SetrowSize(row, height);
            }
        });
}

void SetHeaderRowHeight(Form1& form, const NewTable& created) {
    shell::stat(form, "Catie upravuje velikost 1 radku");
    const std::string& height = created.configuration.header_row_height;
    created.table.SetrowSize(1, height);
    MendLength(
        form, height, [&] { return created.table.GetRowSize(1); },
        [&](double number) { created.table.SetrowSize(1, number); });
}

void SetWidth(Form1& form, const NewTable& created, int column) {
    const std::string& width =
        created.configuration.widths.at(static_cast<std::size_t>(column - 1));
    created.table.SetColumnSize(column, width);
    MendLength(
        form, width, [&] { return created.table.GetColumnSize(column); },
        [&](double number) { created.table.SetColumnSize(column, number); });
}

void SetAnchorPoint(Form1& form, const NewTable& created) {
    if (created.configuration.anchor_point) {
        shell::stat(form, "Catie upravuje pocatecni bod");
        created.table.SetAnchorPoint(*created.configuration.anchor_point);
    }
}

void CreateTable(Form1& form, const Parts& parts, const Manner& manner) {
    const Configuration configuration = ParseConfiguration(form.Text2.Text(), manner.widths_key);
    const bool without_redrawing = WantsNoRedrawing(form);
    shell::SetMousePointer(form, controls::MousePointer::kHourglass);
    const int rows = manner.rows(parts, configuration);
    const auto drawing = OpenActiveDrawing(form);
    if (!drawing) {
        shell::SetMousePointer(form, controls::MousePointer::kDefault);
        return;
    }
    const catia::DrawingTables tables = drawing->view.Tables();

    const std::uint64_t writes_before = form.table_writes;
    shell::stat(form, "Catie vytvari tabulku");
    shell::DoEvents(form);
    const NewTable created{tables.Add(configuration.x, configuration.y, rows, kColumns,
                                      configuration.body_row_height, kColumnWidth),
                           configuration, parts, rows};
    const catia::DrawingTable& table = created.table;
    const TableInWork in_work(form);
    WithoutRedrawing redrawing(form, table, without_redrawing);
    MendRowHeights(form, created);

    if (manner.anchor_before_row_height) {
        SetAnchorPoint(form, created);
        SetHeaderRowHeight(form, created);
    } else {
        SetHeaderRowHeight(form, created);
        SetAnchorPoint(form, created);
    }

    shell::stat(form, "Catie upravuje sirku slopcu");
    for (int column = 1; column <= kColumns; ++column) {
        SetWidth(form, created, column);
    }

    shell::stat(form, "Catie upravuje font");
    SetRowFont(table, 1, configuration.header_font_size, configuration.font_name);
    for (int row = 2; row <= rows; ++row) {
        SetRowFont(table, row, configuration.body_font_size, configuration.font_name);
        shell::ShowPassing(form, "Catie upravuje font " + Progress(row, rows));
        ShowAmount(form, created, row, 0);
    }

    shell::stat(form, "Catie doplnuje hlavicku");
    shell::DoEvents(form);
    for (int column = 1; column <= kColumns; ++column) {
        table.SetCellString(1, column,
                            configuration.headers.at(static_cast<std::size_t>(column - 1)));
    }

    manner.fill(form, created);
    if (form.table_writes != writes_before) {
        // The person can select the new table while it is being made.
        throw automation::WithReason(automation::InvalidProcedureCall(),
                                     shell::TableFilledMeanwhile());
    }
    redrawing.Finish();

    if (configuration.line_thickness) {
        shell::stat(form, "Catie meni tlousku cary");
        // The document that is active now: the user may have switched while the table was written.
        const catia::Selection selection = drawing->application.ActiveDocument().Selection();
        selection.Add(table);
        selection.VisProperties().SetRealWidth(*configuration.line_thickness, 1);
    }

    shell::stat(form, "Tabulka vytvorena Ok ");
    shell::SetMousePointer(form, controls::MousePointer::kDefault);
    if (manner.whole_list) {
        controls::Raise(form.list_exported, parts.rows);
    }
}

// On an error the status line keeps the last announcement, which tells at which step the run
// stopped, and the pointer stays busy.
void RunCreation(Form1& form, const Manner& manner) {
    if (form.ListView1.Count() == 0) {
        return;
    }
    const Parts parts = TakeParts(form.ListView1);
    if (!shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapExplaining(form, [&] { CreateTable(form, parts, manner); });
}

} // namespace

void Command11_Click(Form1& form) {
    RunCreation(form, {.widths_key = "/sirka",
                       .rows = RowsForTheList,
                       .anchor_before_row_height = false,
                       .fill = FillWithTheList,
                       .whole_list = true});
}

void Command7_Click(Form1& form) {
    RunCreation(form, {.widths_key = "/sirka1",
                       .rows = HeaderAndOneRow,
                       .anchor_before_row_height = true,
                       .fill = FillWithTheCurrentRow,
                       .whole_list = false});
}

void m_poslat_jako_tabulku_Click(Form1& form) {
    Command7_Click(form);
}

} // namespace tables
