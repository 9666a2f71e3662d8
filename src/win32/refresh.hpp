// Keeps the screen and the form in step: brings what the program changed to the screen, and what
// the person entered into the controls.
#pragma once

#include <optional>

#include "controls/form1.hpp"
#include "win32/control_views.hpp"
#include "win32/pages.hpp"
#include "win32/taskbar.hpp"

namespace win32 {

// Of the main window, for messages that wait to be shown.
inline constexpr UINT_PTR kStatusTimer = 2;

class Refresher {
  public:
    Refresher(controls::Form1& form, HWND window, Pages& pages, const ControlViews& views,
              TaskbarButton& taskbar_button);

    // What the person entered since the last time goes into the controls.
    void Pull() const;
    // Everything that the program changed goes to the screen.
    void Complete();
    // The same while an action runs: the contents of lists and texts only now and then, so that
    // showing them takes a small part of the action's time.
    void Frugal();
    // The status bar and the mouse pointer only; now, or after a moment where they were shown just
    // now.
    void StatusAndPointer();
    void StatusSoon();
    // The window's place and size, where the program changed them: the person may have moved the
    // window meanwhile. It does not come to reach beyond the work area; a collapsed window that had
    // to be moved for its full height goes back when it is collapsed again. A minimised one waits.
    void Place();

  private:
    void Everything(bool with_status, bool with_contents);
    [[nodiscard]] bool ContentsAreDue(double now) const;

    controls::Form1& form_;
    HWND window_;
    Pages& pages_;
    const ControlViews& views_;
    TaskbarButton& taskbar_button_;

    std::string shown_caption_;
    RECT shown_place_{}; // left, top, width, height as last applied, in twips
    POINT grown_at_{};   // where the window stood with its last size,
    POINT stood_at_{};   // and before it was moved for that
    controls::MousePointer shown_pointer_ = controls::MousePointer::kDefault;
    ULONGLONG next_status_ = 0; // in milliseconds of the system's tick count
    bool status_waits_ = false; // for the timer

    // The refreshing of contents while an action runs, in milliseconds.
    struct Contents {
        double start = 0; // of the action
        double last = 0;  // refreshed then
        double spent = 0;
        double growth = 0; // what a refresh costs for each millisecond since the last one
    };
    std::optional<Contents> contents_;
};

} // namespace win32
