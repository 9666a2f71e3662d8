#include <algorithm>

#include "sheets/sheet_action.hpp"
#include "sheets/sheets.hpp"
#include "shell/list_gestures.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"

namespace sheets {

namespace {

using controls::ListView;

// The answer is compared with the number 1: a detail sheet that CATIA reports as the boolean true,
// which is -1 as a number, counts as a working sheet.
bool IsOne(const automation::Value& answer) {
    return (answer.Is<std::int32_t>() || answer.Is<double>() || answer.Is<float>()) &&
           answer.AsReal() == 1;
}

// The new names that the list plans are kept for as long as no other plan takes their place.
void KeepPlannedNames(Form1& form) {
    std::vector<std::pair<std::string, std::string>> planned;
    const ListView& list = form.ListView3;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        const std::string& new_name = list.SubItem(row, controls::kNewName);
        if (!new_name.empty() && list.Row(row).text != kPlannedSheet) {
            planned.emplace_back(list.Row(row).text, new_name);
        }
    }
    if (!planned.empty()) {
        form.planned_names = std::move(planned);
    }
}

void Load(Form1& form) {
    const auto sheets = DrawingSheetsOf(form, shell::WaitForCatia(form).ActiveDocument());
    if (!sheets) {
        return;
    }
    ListView& list = form.ListView3;
    KeepPlannedNames(form);
    list.Clear();
    shell::stat(form, "Nacitam Sheets");
    std::size_t details = 0;
    const int count = sheets->Count();
    for (int i = 1; i <= count; ++i) {
        const catia::DrawingSheet sheet = sheets->Item(i);
        const std::size_t row = list.Add(sheet.Name());
        if (IsOne(sheet.IsDetail())) {
            list.SetTag(row, "A" + text::FourDigits(++details));
        } else {
            list.SetChecked(row, true);
        }
        shell::ShowProgress(form, i, count);
    }
    shell::stat(form, "Sheets nacteny: " + std::to_string(list.Count()));
}

void WriteSortKeys(ListView& list) {
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        const std::string& detail_mark = list.Row(row).tag;
        list.SetSubItem(row, controls::kSortKey,
                        detail_mark.empty() ? text::FourDigits(row) : detail_mark);
    }
}

void OpenMenu(Form1& form, controls::PopupPlace place) {
    shell::OpenListMenu(form, form.ListView3, form.m_sheets, form.m_Sheet_smaz, place);
}

void Press(Form1& form, int x, int y) {
    ListView& list = form.ListView3;
    if (list.Count() == 0) {
        return;
    }
    WriteSortKeys(list);
    shell::PressRow(list, form.sheets_drag, x, y);
    // Detail sheets stay where they are: no row has the id 0.
    if (form.sheets_drag.row != 0 &&
        !list.Row(shell::MovedRow(list, form.sheets_drag)).tag.empty()) {
        form.sheets_drag.moved = 0;
    }
}

void Drop(Form1& form, int x, int y) {
    ListView& list = form.ListView3;
    const auto dragged = shell::DraggedRow(form, list, form.sheets_drag);
    if (!dragged) {
        return;
    }
    const auto target = list.HitTest(x, y);
    if (!target || *target == *dragged) {
        return;
    }
    const std::size_t target_index = list.RowWithText(list.Row(*target).text).value_or(0);
    if (!list.Row(target_index).tag.empty()) {
        return;
    }
    shell::MoveRow(list, controls::kSortKey, shell::MovedRow(list, form.sheets_drag), *target,
                   target_index);
    shell::YieldWhileSorted(form, list);
}

} // namespace

void Command21_Click(Form1& form) {
    // The names for the sheets come from the parts list, so there must be one.
    if (form.ListView1.Count() == 0 || !shell::Spusteni_Catie(form)) {
        return;
    }
    shell::TrapToStatus(form, [&form] { Load(form); });
}

void ListView3_Click(Form1& form) {
    ListView& list = form.ListView3;
    const auto row = list.CurrentRow();
    if (!row) {
        return;
    }
    form.Text5.SetText(list.SubItem(*row, controls::kNewName));
    list.SetToolTip(list.Row(*row).tag);
}

void ListView3_ItemCheck(Form1& form, std::size_t row) {
    ListView& list = form.ListView3;
    shell::CheckSelectedRows(list, row);
    for (std::size_t other = 1; other <= list.Count(); ++other) {
        if (!list.Row(other).tag.empty()) {
            list.SetChecked(other, false);
        }
    }
}

void ListView3_MouseDown(Form1& form, int button, int /*shift*/, int x, int y) {
    if (button == controls::kRightButton) {
        OpenMenu(form, controls::PopupPlace::kPointer);
        return;
    }
    shell::TrapToStatus(form, [&] { Press(form, x, y); });
}

void ListView3_MouseUp(Form1& form, int button, int /*shift*/, int x, int y) {
    if (button != controls::kLeftButton) {
        return;
    }
    shell::TrapSilently([&] { Drop(form, x, y); });
}

void ListView3_MenuKey(Form1& form) {
    OpenMenu(form, controls::PopupPlace::kCurrentRow);
}

void ListView3_MoveKey(Form1& form, int rows) {
    ListView& list = form.ListView3;
    const auto neighbour = shell::NeighbourOfCurrentRow(list, rows);
    if (neighbour && list.Row(*neighbour).tag.empty() && list.Row(*list.CurrentRow()).tag.empty()) {
        WriteSortKeys(list);
        shell::MoveRow(list, controls::kSortKey, *list.CurrentRow(), *neighbour, *neighbour);
        list.SetUnsorted();
        list.EnsureVisible(*list.CurrentRow());
    }
}

void m_Sheet_pridej_Click(Form1& form) {
    AddPlannedSheet(form);
}

void m_Sheet_smaz_Click(Form1& form) {
    if (const auto row = form.ListView3.CurrentRow()) {
        form.ListView3.Remove(*row);
    }
}

void m_Sheet_zpet_Click(Form1& form) {
    form.sheets_history.Undo();
}

void m_Sheet_znovu_Click(Form1& form) {
    form.sheets_history.Redo();
}

void m_Sheet_vratit_jmena_Click(Form1& form) {
    ListView& list = form.ListView3;
    auto planned = form.planned_names;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        const auto found = std::ranges::find(planned, list.Row(row).text,
                                             [](const auto& pair) { return pair.first; });
        if (found != planned.end()) {
            list.SetSubItem(row, controls::kNewName, found->second);
            planned.erase(found); // the next row of that name takes the next one
        }
    }
}

void Text5_KeyPress(Form1& form, int key) {
    if (key != controls::kEnterKey) {
        return;
    }
    const auto row = form.ListView3.CurrentRow();
    if (!row) {
        throw automation::ObjectVariableNotSet();
    }
    form.ListView3.SetSubItem(*row, controls::kNewName,
                              std::string(text::TrimBlanks(form.Text5.Text())));
}

void Command28_Click(Form1& form) {
    Text5_KeyPress(form, controls::kEnterKey);
}

void Command35_Click(Form1& form) {
    constexpr int kRows = 10;
    form.ListView3.Clear();
    for (int i = 1; i <= kRows; ++i) {
        form.ListView3.Add("test " + std::to_string(i));
    }
}

} // namespace sheets
