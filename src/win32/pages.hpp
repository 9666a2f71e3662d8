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
    // Gives the tab control of `main_window` its tabs and creates the first page. `procedure`
    // handles the pages' messages; it finds `owner` in their GWLP_USERDATA. All places are noted in
    // `layout`.
    Pages(HWND main_window, const controls::TabControl& tab_control, DLGPROC procedure,
          LPARAM owner, Layout& layout);
    // Creates the others, which a start does not wait for.
    void CreateOthers();

    [[nodiscard]] HWND Tabs() const { return tabs_; }
    // The control with that id, on the main window or on a page; null where there is none.
    [[nodiscard]] HWND Control(int id) const;
    // Pages count from 0. One that is not there yet comes when it is shown next.
    void Show(std::size_t page);
    // Gives the focus to the first control of the page that is shown, unless the tabs have it.
    void FocusShown() const;

  private:
    void Create(std::size_t page);

    HWND main_window_;
    HWND tabs_;
    DLGPROC procedure_;
    LPARAM owner_;
    Layout& layout_;
    std::size_t count_;
    std::vector<HWND> pages_;
    std::size_t shown_ = 0;
};

// The window lays itself and its pages out when the DPI changes: `dialog` leaves it alone.
void LeaveDpiChangesToTheProgram(HWND dialog);

} // namespace win32
