#include "shell/list_gestures.hpp"

#include "automation/run_time_error.hpp"
#include "shell/shell.hpp"

namespace shell {

using controls::ListView;

void CheckSelectedRows(ListView& list, std::size_t changed_row) {
    const bool checked = list.Row(changed_row).checked;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        if (list.Row(row).selected) {
            list.SetChecked(row, checked);
        }
    }
}

void PressRow(const ListView& list, controls::Drag& drag, int x, int y) {
    const auto row = list.HitTest(x, y);
    if (!row) {
        drag.row = 0;
        return;
    }
    drag.row = list.Row(*row).id;
    drag.moved = list.Row(list.RowWithText(list.Row(*row).text).value_or(*row)).id;
}

bool CanDrag(controls::Form1& form, const ListView& list, std::size_t row) {
    return form.ports.number_format.ReadNumber(list.Row(row).text).value_or(0) != 0;
}

std::optional<std::size_t> DraggedRow(controls::Form1& form, const ListView& list,
                                      const controls::Drag& drag) {
    const auto row = list.RowWithId(drag.row);
    if (!row || !CanDrag(form, list, *row)) {
        return std::nullopt;
    }
    return row;
}

std::size_t MovedRow(const ListView& list, const controls::Drag& drag) {
    const auto row = list.RowWithId(drag.moved);
    if (!row) {
        throw automation::IndexOutOfBounds();
    }
    return *row;
}

std::optional<std::size_t> NeighbourOfCurrentRow(const ListView& list, int rows) {
    const auto current = list.CurrentRow();
    if (!current) {
        return std::nullopt;
    }
    const auto row = static_cast<std::ptrdiff_t>(*current) + rows;
    if (row < 1 || row > static_cast<std::ptrdiff_t>(list.Count())) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(row);
}

void MoveRow(ListView& list, std::size_t key, std::size_t moved, std::size_t target,
             std::size_t target_index) {
    // The keys get a digit more: the moved row sorts just before the target's or just after it.
    const std::string target_key = list.SubItem(target, key);
    list.SetSubItem(moved, key, target_key + (target_index < moved ? "1" : "3"));
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        if (row != moved) {
            list.SetSubItem(row, key, list.SubItem(row, key) + "2");
        }
    }
    list.SetSorted(key);
}

void OpenListMenu(controls::Form1& form, const ListView& list, controls::PopupMenu& menu,
                  controls::MenuItem& remove, controls::PopupPlace place) {
    remove.enabled = list.CurrentRow().has_value();
    form.show_popup(menu, place);
}

bool YieldWhileSorted(controls::Form1& form, ListView& list) {
    const struct SortedWhile {
        ListView& list;
        ~SortedWhile() { list.SetUnsorted(); }
    } sorted{list};
    // A drag is whole or was none: it goes on where the person stops what else runs.
    form.ports.events.DoEvents();
    if (form.close_requested) {
        throw automation::UserInterrupt();
    }
    return list.Sorted();
}

} // namespace shell
