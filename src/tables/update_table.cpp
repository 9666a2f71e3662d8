#include <array>

#include "automation/run_time_error.hpp"
#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "tables/drawing_action.hpp"
#include "tables/table_update.hpp"
#include "tables/tables.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

// How the texts of a row look, and how high it is.
struct RowLook {
    struct Font {
        std::string name;
        double size = 0;
    };
    double height = 0;
    std::array<Font, kColumns> fonts;
};

RowLook LookOf(const catia::DrawingTable& table, int row) {
    RowLook look{.height = table.GetRowSize(row), .fonts = {}};
    int column = 0;
    for (RowLook::Font& font : look.fonts) {
        const catia::DrawingText cell = table.GetCellObject(row, ++column);
        font = {.name = cell.GetFontName(0, 0), .size = cell.GetFontSize(0, 0)};
    }
    return look;
}

void SetLook(const catia::DrawingTable& table, int row, const RowLook& look) {
    table.SetrowSize(row, look.height);
    int column = 0;
    for (const RowLook::Font& font : look.fonts) {
        const catia::DrawingText cell = table.GetCellObject(row, ++column);
        cell.SetFontSize(0, 0, font.size);
        if (!font.name.empty()) {
            cell.SetFontName(0, 0, font.name);
        }
    }
}

// The rows that were added to a table and are not finished. Where they do not come to be, they go
// again: empty, they would be so many more free rows.
class UnfinishedRows {
  public:
    // Each of them has that number as it is added.
    UnfinishedRows(Form1& form, const catia::DrawingTable& table, int row)
        : form_(form), table_(table), row_(row) {}
    ~UnfinishedRows() {
        for (; rows_ > 0; --rows_) {
            TryPuttingBack(form_, [this] { table_.RemoveRow(row_); });
        }
    }
    UnfinishedRows(const UnfinishedRows&) = delete;
    UnfinishedRows& operator=(const UnfinishedRows&) = delete;

    void Add() { ++rows_; }
    void Finish() { rows_ = 0; }

  private:
    Form1& form_;
    const catia::DrawingTable& table_;
    int row_;
    int rows_ = 0;
};

// An update of a table, at work. At every yield it looks whether somebody else has written into a
// table meanwhile: what it knows of this one may be wrong then.
class Updating {
  public:
    Updating(Form1& form, const catia::DrawingTable& table)
        : form_(form), table_(table), writes_(form.table_writes) {}

    // The texts of a row, line breaks as line feeds.
    [[nodiscard]] CellTexts Read(int row) const {
        CellTexts texts;
        int column = 0;
        for (std::string& text : texts) {
            text = text::WithLineFeeds(table_.GetCellString(row, ++column));
        }
        return texts;
    }

    [[nodiscard]] std::vector<CellTexts> ReadOthers(CellTexts header, int rows) {
        std::vector<CellTexts> table{std::move(header)};
        table.reserve(static_cast<std::size_t>(rows));
        for (int row = 2; row <= rows; ++row) {
            table.push_back(Read(row));
            shell::ShowPassing(form_, "Cteni tabulky " + Progress(row, rows));
            shell::ShowProgress(form_, row, rows);
            Yield();
        }
        return table;
    }

    // `rows` is how many the table has.
    void Apply(const TableUpdate& update, int rows) {
        total_ = static_cast<int>(update.added_rows.size() + update.cells.size() +
                                  update.removed_rows.size());
        AddRows(update, rows);
        for (std::size_t cell = 0; cell < update.cells.size(); ++cell) {
            const CellChange& change = update.cells[cell];
            Write(change);
            Step(cell + 1 == update.cells.size() || update.cells[cell + 1].row != change.row);
        }
        for (const int row : update.removed_rows) {
            NoteWrite();
            table_.RemoveRow(row);
            Step(true);
        }
    }

    [[nodiscard]] int CellsWritten() const { return cells_written_; }

  private:
    void Write(const CellChange& cell) {
        NoteWrite();
        table_.SetCellString(cell.row, cell.column, cell.text);
        ++cells_written_;
    }

    void AddRows(const TableUpdate& update, int rows) {
        if (update.added_rows.empty()) {
            return;
        }
        const RowLook look = LookOf(table_, update.row_beside);
        const int row = update.new_row;
        UnfinishedRows unfinished(form_, table_, row);
        for (const CellTexts& texts : update.added_rows) {
            NoteWrite();
            table_.AddRow(row > rows ? 0 : row);
            ++rows;
            unfinished.Add();
            SetLook(table_, row, look);
            int column = 0;
            for (const std::string& text : texts) {
                ++column;
                if (!text.empty()) {
                    Write({.row = row, .column = column, .text = text});
                }
            }
            const bool finished = !IsEmpty(texts);
            if (finished) {
                unfinished.Finish();
            }
            Step(finished); // what others write meanwhile would go with a row that is not
        }
        unfinished.Finish();
    }

    void Step(bool yields) {
        ++done_;
        shell::ShowPassing(form_, "Aktualizace tabulky " + Progress(done_, total_));
        shell::ShowProgress(form_, done_, total_);
        if (yields) {
            Yield();
        }
    }

    void NoteWrite() { writes_ = ++form_.table_writes; }

    void Yield() const {
        shell::DoEvents(form_);
        if (form_.table_writes != writes_) {
            throw automation::WithReason(automation::InvalidProcedureCall(),
                                         shell::TableChangedWhileUpdated());
        }
    }

    Form1& form_;
    const catia::DrawingTable& table_;
    std::uint64_t writes_;
    int done_ = 0;
    int total_ = 0;
    int cells_written_ = 0;
};

// "+1", "-2", "0".
std::string WithSign(int number) {
    return (number > 0 ? "+" : "") + std::to_string(number);
}

// Asks whether the table is to be updated although that is so; says so where it is not.
bool IsWanted(Form1& form, const std::string& concern) {
    const bool wanted =
        form.ports.message_boxes.AskYesNo(concern + " Přesto tabulku aktualizovat?");
    if (!wanted) {
        shell::Refuse(form, "Aktualizace prerusena");
    }
    return wanted;
}

// Whether the table is in the list's state now.
bool UpdateTable(Form1& form, const WantedTable& wanted, bool without_redrawing,
                 const catia::DrawingTable& table) {
    if (form.tables_in_work > 0) { // at a yield of what makes, fills or reads it
        throw automation::WithReason(automation::InvalidProcedureCall(),
                                     shell::TableToUpdateInWork());
    }
    const int rows = table.NumberOfRows();
    if (table.NumberOfColumns() != kColumns) {
        shell::Refuse(form, "spatna velikost tabulky");
        return false;
    }
    shell::stat(form, "Cteni tabulky ");
    Updating updating(form, table);
    CellTexts header = updating.Read(1);
    if (header != wanted.headings &&
        !IsWanted(form, "Hlavička vybrané tabulky není ta z nastavení.")) {
        return false;
    }
    const TableUpdate update = UpdateOfTable(updating.ReadOthers(std::move(header), rows), wanted);
    if (wanted.rows.empty() && !update.removed_rows.empty() &&
        !IsWanted(form, "Seznam je prázdný: z tabulky zmizí všechny řádky s díly.")) {
        return false;
    }
    if (!update.cells.empty() || !update.removed_rows.empty() || !update.added_rows.empty()) {
        const TableInWork in_work(form);
        WithoutRedrawing redrawing(form, table, without_redrawing);
        updating.Apply(update, rows);
        redrawing.Finish();
    }
    shell::stat(form, "Aktualizovano bunek: " + std::to_string(updating.CellsWritten()) +
                          ", radku: " +
                          WithSign(static_cast<int>(update.added_rows.size()) -
                                   static_cast<int>(update.removed_rows.size())));
    return true;
}

} // namespace

void Command37_Click(Form1& form) {
    const Parts parts = TakeParts(form.ListView1);
    if (!shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapExplaining(form, [&] {
        const WantedTable wanted =
            TableWanted(parts, ParseConfiguration(form.Text2.Text(), "/sirka"), DiameterSign(form));
        const bool without_redrawing = WantsNoRedrawing(form);
        const auto drawing = OpenActiveDrawing(form);
        if (!drawing) {
            return;
        }
        const auto table = TableToFill(form, drawing->selection);
        if (table && UpdateTable(form, wanted, without_redrawing, *table)) {
            controls::Raise(form.list_exported, parts.rows);
        }
    });
}

} // namespace tables
