#include "partslist/finding.hpp"
#include "partslist/partslist.hpp"
#include "partslist/pasting.hpp"
#include "shell/shell.hpp"
#include "text/clipboard_cells.hpp"

namespace partslist {

namespace {

using controls::Cell;

// Whether several rows may be given the same text at once.
bool IsSharedByRows(std::size_t column) {
    return column == kQuantity || column == kMaterial || column == kSize || column == kNote;
}

std::string CountOfPasted(const Pasted& pasted) {
    std::string text = "Vlozeno bunek: " + std::to_string(pasted.cells);
    if (pasted.rows > 0) {
        text += ", radku: +" + std::to_string(pasted.rows);
    }
    if (pasted.left_out > 0) {
        text += ", mimo sloupce: " + std::to_string(pasted.left_out);
    }
    return text;
}

} // namespace

void m_Kopirovat_vse_Click(Form1& form) {
    if (form.ListView1.Count() == 0) {
        shell::Refuse(form, "Neni co kopirovat");
        return;
    }
    if (form.copy_text(form.ListView1.TableAsText())) {
        shell::stat(form, "Zkopirovano radku: " + std::to_string(form.ListView1.Count()));
    } else {
        shell::Refuse(form, "Schranka je obsazena");
    }
}

void m_Vlozit_Click(Form1& form) {
    controls::ListView& list = form.ListView1;
    const std::optional<std::string> copied = form.pasted_text();
    if (!copied || copied->empty()) {
        shell::Refuse(form, "Ve schrance neni text");
        return;
    }
    const Pasted pasted = PasteCells(list, text::ClipboardCells(*copied),
                                     list.CurrentCell().value_or(Cell{list.Count() + 1, 0}));
    if (pasted.cells == 0) {
        shell::Refuse(form, IsPastedInto(pasted.first.column)
                                ? "Neni co vlozit"
                                : "Neni co vlozit: pozice a listy se nevkladaji");
        return;
    }
    list.GoTo(pasted.first);
    ListView1_Click(form);
    shell::ShowRowCount(form);
    shell::stat(form, CountOfPasted(pasted));
}

void ListView1_CellEdit(Form1& form, const controls::TypedCell& typed) {
    controls::ListView& list = form.ListView1;
    const auto edited = list.RowWithId(typed.row_id);
    if (!edited) {
        return;
    }
    list.SetTextOf({*edited, typed.column}, typed.text);
    if (typed.for_selected_rows && IsSharedByRows(typed.column)) {
        for (std::size_t row = 1; row <= list.Count(); ++row) {
            if (list.Row(row).selected) {
                list.SetTextOf({row, typed.column}, typed.text);
            }
        }
    }
    ListView1_Click(form);
}

void ListView1_FindKey(Form1& form, controls::Find find) {
    if (find == controls::Find::kAsk || form.looked_for.empty()) {
        const std::string wanted =
            form.ports.message_boxes.AskText("Hledaný text:", "Hledat", form.looked_for);
        if (wanted.empty()) {
            return;
        }
        form.looked_for = wanted;
    }
    controls::ListView& list = form.ListView1;
    const auto found =
        FindCell(list, form.looked_for, list.CurrentCell(), find == controls::Find::kPrevious);
    if (!found) {
        shell::Refuse(form, "Nenalezeno");
        return;
    }
    list.SelectOnly(found->row);
    list.GoTo(*found);
    list.WantFocus();
    ListView1_Click(form);
    shell::stat(form, "Nalezeno");
}

} // namespace partslist
