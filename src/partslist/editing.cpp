#include "partslist/partslist.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace partslist {

namespace {

using controls::ListView;

void NumberPositions(ListView& list) {
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        list.SetSubItem(row, kPosition, text::FourDigits(row));
    }
}

// The ticked rows get the sheets 2, 3, ... from the top: sheet 1 is the assembly's.
void NumberSheets(ListView& list) {
    std::size_t sheet = 1;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        list.SetSubItem(row, kSheet, list.Row(row).checked ? std::to_string(++sheet) : "");
    }
}

void ShowInPicker(controls::ComboBox& picker, controls::Button& apply, const std::string& value) {
    picker.SetText(value);
    picker.SetEnabled(true);
    apply.SetEnabled(true);
}

void Drop(Form1& form, int x, int y) {
    ListView& list = form.ListView1;
    const auto pressed = list.RowWithId(form.pressed_row);
    if (!pressed) {
        return;
    }
    // Only rows whose name is a number other than zero can be dragged.
    const std::string pressed_name = list.Row(*pressed).text;
    if (form.ports.number_format.ReadNumber(pressed_name).value_or(0) == 0) {
        return;
    }
    const auto target = list.HitTest(x, y);
    if (!target) {
        return;
    }
    const std::string target_name = list.Row(*target).text;
    if (target_name.empty() || target_name == pressed_name) {
        return;
    }

    // The rows are put in order by their positions, which get a digit more for it: the dragged row
    // sorts just before the target's position or just after it.
    const std::size_t target_index = list.RowWithText(target_name).value_or(0);
    const std::string target_position = list.SubItem(*target, kPosition);
    const std::size_t moved = form.pressed_index;
    list.SetSubItem(moved, kPosition, target_position + (target_index < moved ? "1" : "3"));
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        if (row != moved) {
            list.SetSubItem(row, kPosition, list.SubItem(row, kPosition) + "2");
        }
    }
    list.SetSorted(kPosition);
    shell::DoEvents(form);
    list.SetSorted(std::nullopt);

    NumberPositions(list);
    NumberSheets(list);
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
    ListView& list = form.ListView1;
    const bool checked = list.Row(row).checked;
    for (std::size_t other = 1; other <= list.Count(); ++other) {
        if (list.Row(other).selected) {
            list.SetChecked(other, checked);
        }
    }
    NumberSheets(list);
}

void ListView1_MouseDown(Form1& form, int button, int /*shift*/, int x, int y) {
    if (button == controls::kRightButton) {
        form.show_popup(form.m_Tabulka, controls::PopupPlace::kPointer);
        return;
    }
    const ListView& list = form.ListView1;
    const auto row = list.HitTest(x, y);
    if (!row) {
        form.pressed_row = 0;
        return;
    }
    form.pressed_row = list.Row(*row).id;
    // By name: with duplicate names it is the first row of that name that moves.
    form.pressed_index = list.RowWithText(list.Row(*row).text).value_or(0);
}

void ListView1_MouseUp(Form1& form, int button, int /*shift*/, int x, int y) {
    if (button != controls::kLeftButton) {
        return;
    }
    shell::TrapSilently([&] { Drop(form, x, y); });
}

void ListView1_MenuKey(Form1& form) {
    form.show_popup(form.m_Tabulka, controls::PopupPlace::kCurrentRow);
}

void m_Pridat_Click(Form1& form) {
    ListView& list = form.ListView1;
    const std::size_t row = list.Add("Novy");
    list.EnsureVisible(row);
    list.SetSubItem(row, kQuantity, "1");
    list.SetSubItem(row, kPosition, text::FourDigits(list.Count()));
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

} // namespace partslist
