// The views of all the form's controls, made from the control table.
#pragma once

#include <memory>
#include <vector>

#include "controls/form1.hpp"
#include "win32/accessible_names.hpp"
#include "win32/pages.hpp"
#include "win32/tool_tips.hpp"
#include "win32/views.hpp"

namespace win32 {

class ControlViews {
  public:
    // `run_event` runs what the person's doings raise.
    ControlViews(controls::Form1& form, const Pages& pages, RunEvent run_event);
    // Makes the views of the controls on pages that have been created meanwhile.
    void MakeOthers();
    // Gives the controls their tips and the names that are read aloud; once, when all are there.
    void Explain();

    [[nodiscard]] const std::vector<std::unique_ptr<View>>& All() const { return views_; }
    [[nodiscard]] StatusBarView& StatusBar() const { return *status_bar_; }
    // The view of a window, or null where it is no control's.
    [[nodiscard]] View* Of(HWND window) const;

    // Of the views from that one on, counted from 0.
    void SetDpi(UINT dpi, std::size_t first = 0) const;

  private:
    controls::Form1& form_;
    const Pages& pages_;
    RunEvent run_event_;
    std::vector<std::unique_ptr<View>> views_;
    StatusBarView* status_bar_ = nullptr;
    ControlTips tips_;
};

} // namespace win32
