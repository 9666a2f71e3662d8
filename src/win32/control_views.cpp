#include "win32/control_views.hpp"

#include <algorithm>
#include <iterator>

#include "shell/list_gestures.hpp"
#include "win32/access_keys.hpp"
#include "win32/control_table.hpp"
#include "win32/list_view_window.hpp"
#include "win32/tree_view_window.hpp"

namespace win32 {

namespace {

ListViewWindow::Look LookOf(int id) {
    switch (id) {
    case ID_ListView1:
        return {.column_widths = {188, 50, 50, 44, 96, 96, 94},
                .check_boxes = true,
                .edits_cells = true,
                .whole_rows = true};
    case ID_ListView2:
        return {.column_widths = {122, 48}};
    case ID_ListView3:
        return {.column_widths = {154, 154, 0}, .check_boxes = true};
    default:
        return {};
    }
}

// The rows that can be dragged: those whose names are numbers, and of the sheets only the working
// ones, since detail sheets stay where they are.
void AllowDrags(controls::Form1& form, int id, ListViewWindow& list) {
    if (id == ID_ListView1) {
        list.can_drag = [&form](std::size_t row) {
            return shell::CanDrag(form, form.ListView1, row);
        };
    } else if (id == ID_ListView3) {
        const auto is_working_sheet = [&form](std::size_t row) {
            return form.ListView3.Row(row).tag.empty();
        };
        list.can_drag = [&form, is_working_sheet](std::size_t row) {
            return shell::CanDrag(form, form.ListView3, row) && is_working_sheet(row);
        };
        list.can_drop_on = is_working_sheet;
    }
}

// Makes the view of one row of the control table; null for what needs none.
struct MakeView {
    controls::Form1& form;
    const Pages& pages;
    const RunEvent& run_event;
    const ControlRow& row;

    [[nodiscard]] HWND Window() const { return pages.Control(row.id); }

    std::unique_ptr<View> operator()(controls::Button controls::Form1::*button) const {
        return std::make_unique<ButtonView>(Window(), form.*button, row.help.access_key, run_event);
    }
    std::unique_ptr<View> operator()(controls::CheckBox controls::Form1::*check_box) const {
        ShowText(Window(), WithAccessKey((form.*check_box).Caption(), row.help.access_key));
        return std::make_unique<CheckBoxView>(Window(), form.*check_box, run_event);
    }
    std::unique_ptr<View> operator()(controls::TextBox controls::Form1::*text_box) const {
        return std::make_unique<TextBoxView>(Window(), form.*text_box, run_event);
    }
    std::unique_ptr<View> operator()(controls::ComboBox controls::Form1::*combo_box) const {
        const HWND label = pages.Control(row.help.label_id);
        ShowText(label, WithAccessKey((form.*combo_box).Label(), row.help.access_key));
        return std::make_unique<ComboBoxView>(Window(), label, form.*combo_box, run_event);
    }
    std::unique_ptr<View> operator()(controls::ListBox controls::Form1::*list_box) const {
        return std::make_unique<ListBoxView>(Window(), form.*list_box);
    }
    std::unique_ptr<View> operator()(controls::ListView controls::Form1::*list_view) const {
        auto list =
            std::make_unique<ListViewWindow>(Window(), form.*list_view, LookOf(row.id), run_event);
        AllowDrags(form, row.id, *list);
        return list;
    }
    std::unique_ptr<View> operator()(controls::TreeView controls::Form1::*tree_view) const {
        return std::make_unique<TreeViewWindow>(Window(), form.*tree_view, run_event);
    }
    std::unique_ptr<View> operator()(controls::TabControl controls::Form1::*tab_control) const {
        return std::make_unique<TabControlView>(Window(), form.*tab_control, run_event);
    }
    std::unique_ptr<View> operator()(controls::StatusBar controls::Form1::*status_bar) const {
        return std::make_unique<StatusBarView>(Window(), form.*status_bar, run_event);
    }
    std::unique_ptr<View> operator()(controls::Frame controls::Form1::*frame) const {
        // It never changes.
        ShowText(Window(), WithAccessKey((form.*frame).caption, row.help.access_key));
        return nullptr;
    }
    std::unique_ptr<View> operator()(controls::MenuItem controls::Form1::* /*item*/) const {
        return nullptr; // menus are made when they open
    }
};

} // namespace

ControlViews::ControlViews(controls::Form1& form, const Pages& pages, RunEvent run_event)
    : form_(form), pages_(pages), run_event_(std::move(run_event)) {
    MakeOthers();
}

void ControlViews::MakeOthers() {
    for (const ControlRow& row : kControlTable) {
        const HWND window = pages_.Control(row.id);
        if (window == nullptr || Of(window) != nullptr) {
            continue;
        }
        auto view = std::visit(MakeView{form_, pages_, run_event_, row}, row.member);
        if (view != nullptr) {
            if (row.id == ID_StatusBar1) {
                status_bar_ = static_cast<StatusBarView*>(view.get());
            }
            views_.push_back(std::move(view));
        }
    }
}

void ControlViews::Explain() {
    const AccessibleNames names;
    for (const ControlRow& row : kControlTable) {
        const HWND window = pages_.Control(row.id);
        const std::string_view tip = row.help.tip;
        if (window == nullptr) {
            continue; // an entry of a menu
        }
        names.SetName(window, row.help.name);
        names.SetHelp(window, tip);
        const auto* button = std::get_if<controls::Button controls::Form1::*>(&row.member);
        if (button != nullptr && (form_.**button).Caption().empty()) {
            ShowText(window, row.help.name); // a picture is drawn in its place
        }
        if (!tip.empty()) {
            tips_.Add(window, tip);
        }
    }
}

View* ControlViews::Of(HWND window) const {
    const auto found = std::ranges::find(views_, window, &View::Window);
    return found == views_.end() ? nullptr : found->get();
}

void ControlViews::SetDpi(UINT dpi, std::size_t first) const {
    for (std::size_t view = first; view < views_.size(); ++view) {
        views_[view]->SetDpi(dpi);
    }
    tips_.Place();
}

} // namespace win32
