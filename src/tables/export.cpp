#include <array>

#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "tables/drawing_action.hpp"
#include "tables/tables.hpp"

namespace tables {

namespace {

using enum controls::PartField;

constexpr double kTextX = 100; // mm
constexpr double kTextY = 100;
constexpr const char* kTextFont = "Arial (TrueType)";
constexpr double kTextSize = 3.5; // mm

constexpr std::size_t kSizeValue = 3; // among the values of a part

// Runs an action on the active drawing in its trap, once a session was found.
template <typename Body>
void WithActiveDrawing(Form1& form, Body&& body) {
    if (!shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapExplaining(form, [&] {
        if (const auto drawing = OpenActiveDrawing(form)) {
            body(*drawing);
        }
    });
}

void FillSmallTable(Form1& form, const Parts& parts, const catia::DrawingTable& table) {
    constexpr int kSmallTableColumns = 6;
    constexpr int kSmallTableRows = 2;
    if (table.NumberOfColumns() != kSmallTableColumns || table.NumberOfRows() != kSmallTableRows) {
        shell::Refuse(form, "spatna velikost tabulky");
        return;
    }
    shell::stat(form, "Vyplnovani tabulky ");
    const PartTexts& part = CurrentPart(parts);
    auto values = PartValues(part);
    values[kSizeValue] = WithDiameterSign(part[kSize], DiameterSign(form));
    ++form.table_writes;
    WithoutRedrawing redrawing(form, table, WantsNoRedrawing(form));
    for (std::size_t value = 0; value < values.size(); ++value) {
        table.SetCellString(2, static_cast<int>(value) + 1, values[value]);
    }
    redrawing.Finish();
    shell::stat(form, "Vlozeni dat Ok");
}

void EmptyRow(Form1& form, const catia::DrawingTable& table, int row, int columns) {
    for (int column = 1; column <= columns; ++column) {
        table.SetCellString(row, column, "");
        shell::ShowPassing(form, "Mazani tabulky " + Progress(column, columns));
    }
}

// `position` counts the rows of the list from 1.
void FillRow(Form1& form, const catia::DrawingTable& table, int row, int position,
             const PartTexts& part) {
    const std::array<std::string, kColumns> texts{
        std::to_string(position),
        part[0],
        part[kQuantity],
        WithDiameterSign(part[kSize], DiameterSign(form)),
        part[kMaterial],
        part[kNote],
        part[kSheet],
    };
    int column = 0;
    for (const std::string& text : texts) {
        table.SetCellString(row, ++column, text);
    }
}

// From the bottom up: the first row of the list stands at the bottom of the table, and what is left
// between the header and the last one is emptied.
void FillWholeTable(Form1& form, const Parts& parts, const catia::DrawingTable& table) {
    const int rows = table.NumberOfRows();
    const int columns = table.NumberOfColumns();
    const auto count = static_cast<int>(parts.rows.size());
    if (columns != kColumns || rows < count + 1) {
        shell::Refuse(form, "spatna velikost tabulky");
        return;
    }
    shell::stat(form, "Vyplnovani tabulky ");
    const TableInWork in_work(form);
    WithoutRedrawing redrawing(form, table, WantsNoRedrawing(form));
    for (int row = rows; row >= 2; --row) {
        ++form.table_writes;
        if (row > rows - count) {
            const int position = rows + 1 - row;
            FillRow(form, table, row, position, parts.rows[static_cast<std::size_t>(position - 1)]);
            shell::ShowPassing(form, "Vyplnovani tabulky " + Progress(row, rows));
        } else {
            EmptyRow(form, table, row, columns);
        }
        shell::ShowProgress(form, rows + 1 - row, rows - 1);
        shell::DoEvents(form);
    }
    redrawing.Finish();
    shell::stat(form, "Vlozeni dat Ok");
    controls::Raise(form.list_exported, parts.rows);
}

} // namespace

void Command16_Click(Form1& form) {
    WithActiveDrawing(form, [&form, parts = TakeParts(form.ListView1)](const OpenDrawing& drawing) {
        if (const auto table = TableToFill(form, drawing.selection)) {
            FillSmallTable(form, parts, *table);
        }
    });
}

void Command30_Click(Form1& form) {
    WithActiveDrawing(form, [&form, parts = TakeParts(form.ListView1)](const OpenDrawing& drawing) {
        if (const auto table = TableToFill(form, drawing.selection)) {
            FillWholeTable(form, parts, *table);
        }
    });
}

void Command6_Click(Form1& form) {
    if (form.ListView1.Count() == 0) {
        return;
    }
    WithActiveDrawing(form, [&form, parts = TakeParts(form.ListView1)](const OpenDrawing& drawing) {
        const catia::DrawingTexts texts = drawing.view.Texts();
        const auto values = PartValues(CurrentPart(parts));
        // All on one another, for the person to drag them into their places.
        for (const automation::Value& value : values) {
            const catia::DrawingText text = texts.Add(value, kTextX, kTextY);
            text.SetFontName(0, 0, kTextFont);
            text.SetFontSize(0, 0, kTextSize);
        }
        shell::Explain(form, shell::TextsPlaced(values.size()));
    });
}

void Command8_Click(Form1& form) {
    WithActiveDrawing(form, [&form](const OpenDrawing& drawing) {
        static_cast<void>(drawing.view.Texts().Add("ahoj", kTextX, kTextY));
        shell::Explain(form, shell::TextsPlaced(1));
    });
}

void m_vlozit_do_tabulky_Click(Form1& form) {
    Command16_Click(form);
}

void m_Poslat_jako_text_Click(Form1& form) {
    Command6_Click(form);
}

} // namespace tables
