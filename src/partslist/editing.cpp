#include <algorithm>

#include "partslist/numbering.hpp"
#include "partslist/partslist.hpp"
#include "partslist/pasting.hpp"
#include "shell/list_gestures.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace partslist {

namespace {

using controls::ListView;

bool IsDigits(const std::string& position) {
    return !position.empty() && position.find_first_not_of("0123456789") == std::string::npos;
}

// Positions that were read from a drawing have no leading zeros; sorted as texts, they need them.
void PadPositions(ListView& list) {
    std::size_t widest = 0;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        const std::string& position = list.SubItem(row, kPosition);
        widest = std::max(widest, IsDigits(position) ? position.size() : 0);
    }
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        const std::string& position = list.SubItem(row, kPosition);
        if (IsDigits(position) && position.size() < widest) {
            list.SetSubItem(row, kPosition, std::string(widest - position.size(), '0') + position);
        }
    }
}

void ShowInPicker(controls::ComboBox& picker, controls::Button& apply, const std::string& value) {
    picker.SetText(value);
    picker.SetEnabled(true);
    apply.SetEnabled(true);
}

// Puts row `moved` where row `target` stands; `target_index` says from which side it comes. The
// list is left sorted, and numbered already: it may be saved at the yield that follows a drag.
void DropOn(ListView& list, std::size_t moved, std::size_t target, std::size_t target_index) {
    PadPositions(list);
    shell::MoveRow(list, kPosition, moved, target, target_index);
    NumberRows(list);
}

void OpenMenu(Form1& form, controls::PopupPlace place) {
    const std::vector<controls::ListRow>& rows = form.ListView1.Rows();
    form.m_Smazat_vybrane.enabled = std::ranges::any_of(rows, &controls::ListRow::selected);
    for (controls::MenuItem* item :
         {&form.m_Doplnit_zname, &form.m_Seradit_jmeno, &form.m_Seradit_material}) {
        item->enabled = !rows.empty();
    }
    shell::OpenListMenu(form, form.ListView1, form.m_Tabulka, form.m_Smazat, place);
}

void Drop(Form1& form, int x, int y) {
    ListView& list = form.ListView1;
    const auto pressed = shell::DraggedRow(form, list, form.parts_drag);
    if (!pressed) {
        return;
    }
    const auto target = list.HitTest(x, y);
    if (!target) {
        return;
    }
    const std::string target_name = list.Row(*target).text;
    if (target_name.empty() || target_name == list.Row(*pressed).text) {
        return;
    }
    DropOn(list, shell::MovedRow(list, form.parts_drag), *target,
           list.RowWithText(target_name).value_or(0));
    if (shell::YieldWhileSorted(form, list)) {
        NumberRows(list);
    }
}

} // namespace

void ListView1_Click(Form1& form) {
    const ListView& list = form.ListView1;
    const auto row = list.CurrentRow();
    if (!row) {
        return;
    }
    ShowInPicker(form.Combo1, form.Command12, list.SubItem(*row, kMaterial));
    ShowInPicker(form.Combo2, form.Command13, list.SubItem(*row, kSize));
    ShowInPicker(form.Combo3, form.Command14, list.SubItem(*row, kNote));
    ShowInPicker(form.Combo4, form.Command15, list.SubItem(*row, kQuantity));
}

void ListView1_ItemCheck(Form1& form, std::size_t row) {
    shell::CheckSelectedRows(form.ListView1, row);
    NumberSheets(form.ListView1);
}

void ListView1_MouseDown(Form1& form, int button, int /*shift*/, int x, int y) {
    if (button == controls::kRightButton) {
        OpenMenu(form, controls::PopupPlace::kPointer);
        return;
    }
    shell::PressRow(form.ListView1, form.parts_drag, x, y);
}

void ListView1_MouseUp(Form1& form, int button, int /*shift*/, int x, int y) {
    if (button != controls::kLeftButton) {
        return;
    }
    shell::TrapSilently([&] { Drop(form, x, y); });
}

void ListView1_MenuKey(Form1& form) {
    OpenMenu(form, controls::PopupPlace::kCurrentRow);
}

void ListView1_MoveKey(Form1& form, int rows) {
    ListView& list = form.ListView1;
    if (const auto neighbour = shell::NeighbourOfCurrentRow(list, rows)) {
        DropOn(list, *list.CurrentRow(), *neighbour, *neighbour);
        list.SetUnsorted();
        list.EnsureVisible(*list.CurrentRow());
    }
}

void m_Pridat_Click(Form1& form) {
    ListView& list = form.ListView1;
    list.EnsureVisible(AppendRow(list, "Novy"));
    shell::ShowRowCount(form);
}

void ListView1_Rename(Form1& form, std::uint64_t id, const std::string& text) {
    if (const auto row = form.ListView1.RowWithId(id)) {
        form.ListView1.SetText(*row, text);
    }
}

void m_Zpet_Click(Form1& form) {
    form.parts_history.Undo();
    shell::ShowRowCount(form);
}

void m_Znovu_Click(Form1& form) {
    form.parts_history.Redo();
    shell::ShowRowCount(form);
}

void m_Smazat_Click(Form1& form) {
    ListView& list = form.ListView1;
    const auto row = list.CurrentRow();
    if (!row) {
        return;
    }
    list.Remove(*row);
    shell::ShowRowCount(form);
    NumberPositions(list);
}

void m_Smazat_vybrane_Click(Form1& form) {
    controls::ListView& list = form.ListView1;
    if (std::ranges::none_of(list.Rows(), &controls::ListRow::selected)) {
        return;
    }
    list.RemoveSelected();
    shell::ShowRowCount(form);
    NumberPositions(list);
    if (const auto current = list.CurrentRow()) {
        list.EnsureVisible(*current);
    }
}

} // namespace partslist
