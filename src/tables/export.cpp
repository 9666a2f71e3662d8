#include <array>

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
    shell::TrapSilently([&] {
        if (const auto drawing = OpenActiveDrawing(form)) {
            body(*drawing);
        }
    });
}

// The selected table; says so where nothing or something else is selected.
std::optional<catia::DrawingTable> TableToFill(Form1& form, const catia::Selection& selection) {
    if (!HasSelection(form, selection)) {
        return std::nullopt;
    }
    auto table = SelectedTable(selection);
    if (!table) {
        shell::stat(form, "Spatny vyber");
    }
    return table;
}

void FillSmallTable(Form1& form, const catia::DrawingTable& table) {
    constexpr int kSmallTableColumns = 6;
    constexpr int kSmallTableRows = 2;
    if (table.NumberOfColumns() != kSmallTableColumns || table.NumberOfRows() != kSmallTableRows) {
        shell::stat(form, "spatna velikost tabulky");
        return;
    }
    shell::stat(form, "Vyplnovani tabulky ");
    const std::size_t row = CurrentPart(form);
    auto values = PartValues(form.ListView1, row);
    values[kSizeValue] = WithDiameterSign(form.ListView1.SubItem(row, kSize), DiameterSign(form));
    for (std::size_t value = 0; value < values.size(); ++value) {
        table.SetCellString(2, static_cast<int>(value) + 1, values[value]);
    }
    shell::stat(form, "Vlozeni dat Ok");
}

void EmptyRow(Form1& form, const catia::DrawingTable& table, int row, int columns) {
    for (int column = 1; column <= columns; ++column) {
        table.SetCellString(row, column, "");
        shell::stat(form, "Mazani tabulky " + Progress(column, columns));
    }
}

void FillRow(Form1& form, const catia::DrawingTable& table, int row, std::size_t list_row) {
    const controls::ListView& list = form.ListView1;
    const std::array<std::string, kColumns> texts{
        std::to_string(list_row),
        list.Row(list_row).text,
        list.SubItem(list_row, kQuantity),
        WithDiameterSign(list.SubItem(list_row, kSize), DiameterSign(form)),
        list.SubItem(list_row, kMaterial),
        list.SubItem(list_row, kNote),
        list.SubItem(list_row, kSheet),
    };
    int column = 0;
    for (const std::string& text : texts) {
        table.SetCellString(row, ++column, text);
    }
}

// From the bottom up: the first row of the list stands at the bottom of the table, and what is left
// between the header and the last one is emptied.
void FillWholeTable(Form1& form, const catia::DrawingTable& table) {
    const int rows = table.NumberOfRows();
    const int columns = table.NumberOfColumns();
    const auto parts = static_cast<int>(form.ListView1.Count());
    if (columns != kColumns || rows < parts + 1) {
        shell::stat(form, "spatna velikost tabulky");
        return;
    }
    shell::stat(form, "Vyplnovani tabulky ");
    for (int row = rows; row >= 2; --row) {
        if (row > rows - parts) {
            FillRow(form, table, row, static_cast<std::size_t>(rows + 1 - row));
            shell::stat(form, "Vyplnovani tabulky " + Progress(row, rows));
        } else {
            EmptyRow(form, table, row, columns);
        }
        shell::DoEvents(form);
    }
    shell::stat(form, "Vlozeni dat Ok");
}

} // namespace

void Command16_Click(Form1& form) {
    WithActiveDrawing(form, [&form](const OpenDrawing& drawing) {
        if (const auto table = TableToFill(form, drawing.selection)) {
            FillSmallTable(form, *table);
        }
    });
}

void Command30_Click(Form1& form) {
    WithActiveDrawing(form, [&form](const OpenDrawing& drawing) {
        if (const auto table = TableToFill(form, drawing.selection)) {
            FillWholeTable(form, *table);
        }
    });
}

void Command6_Click(Form1& form) {
    if (form.ListView1.Count() == 0) {
        return;
    }
    WithActiveDrawing(form, [&form](const OpenDrawing& drawing) {
        const catia::DrawingTexts texts = drawing.view.Texts();
        // All on one another, for the person to drag them into their places.
        for (const automation::Value& value : PartValues(form.ListView1, CurrentPart(form))) {
            const catia::DrawingText text = texts.Add(value, kTextX, kTextY);
            text.SetFontName(0, 0, kTextFont);
            text.SetFontSize(0, 0, kTextSize);
        }
    });
}

void Command8_Click(Form1& form) {
    WithActiveDrawing(form, [](const OpenDrawing& drawing) {
        static_cast<void>(drawing.view.Texts().Add("ahoj", kTextX, kTextY));
    });
}

void m_vlozit_do_tabulky_Click(Form1& form) {
    Command16_Click(form);
}

void m_Poslat_jako_text_Click(Form1& form) {
    Command6_Click(form);
}

} // namespace tables
