// The tab control and the pages behind its tabs. Each page is a dialog of the resources, a child of
// the main window that stands in front of the tab control.
#pragma once

#include <cstddef>
#include <vector>

#include "controls/form1.hpp"
#include "win32/layout.hpp"

namespace win32 {

class Pages {
  public:
    // Gives the tab control of `main_window` its tabs and creates the pages, the first one shown,
    // with all places noted in `layout`. `procedure` handles the pages' messages; it finds `owner`
    // in their GWLP_USERDATA.
    Pages(HWND main_window, const controls::TabControl& tab_control, DLGPROC procedure,
          LPARAM owner, Layout& layout);

    [[nodiscard]] HWND Tabs() const { return tabs_; }
    // The control with that id, on the main window or on a page; null where there is none.
    [[nodiscard]] HWND Control(int id) const;
    // Pages count from 0.
    void Show(std::size_t page);

  private:
    HWND main_window_;
    HWND tabs_;
    std::vector<HWND> pages_;
    std::size_t shown_ = 0;
};

// The window lays itself and its pages out when the DPI changes: `dialog` leaves it alone.
void LeaveDpiChangesToTheProgram(HWND dialog);

} // namespace win32
