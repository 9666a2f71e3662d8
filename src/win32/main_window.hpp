// The main window: its life and its messages. What stands in it is made by pages.hpp and
// control_views.hpp, kept in step by refresh.hpp.
#pragma once

#include <optional>

#include "app/keys.hpp"
#include "app/recovery.hpp"
#include "com/owned.hpp"
#include "com/trial.hpp"
#include "controls/form1.hpp"
#include "win32/between_yields.hpp"
#include "win32/control_views.hpp"
#include "win32/layout.hpp"
#include "win32/pages.hpp"
#include "win32/preview_window.hpp"
#include "win32/refresh.hpp"
#include "win32/taskbar.hpp"

namespace win32 {

class MainWindow {
  public:
    // Creates the window, hidden, and gives `form` its handle, its design size and the functions
    // that it expects of its view.
    MainWindow(controls::Form1& form, const app::RecoveryPace& pace);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    [[nodiscard]] HWND Window() const { return window_; }
    // Of the calls to CATIA.
    [[nodiscard]] com::CallWatch& Watch() { return between_yields_; }

    // Loads the form, whose actions are bound, and shows the window. Recovery is for the copy that
    // owns the data folder alone.
    void Show(bool owns_data_folder);
    // Handles messages until the window is gone. Returns the program's exit code.
    int Run();
    // Brings the window up to date and handles the messages that wait.
    void DoEvents();

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l);
    static INT_PTR CALLBACK PageProcedure(HWND page, UINT message, WPARAM w, LPARAM l);
    std::optional<LRESULT> OnMessage(UINT message, WPARAM w, LPARAM l);
    void OnCommand(UINT code, int id, HWND control);
    LRESULT OnNotify(NMHDR& header);
    [[nodiscard]] RECT PopupAnchor(controls::PopupPlace place) const;
    void HandleMessage(MSG& message);
    void Rescale(const std::optional<POINT>& corner = std::nullopt);
    void MoveIn();
    void LayOut();
    void PlaceFrom(std::size_t first) const;
    void MakeOtherPages();
    void RunEvent(const std::function<void()>& event);
    void RunAtOnce(const std::function<void()>& event);
    bool IsHeldElsewhere(const MSG& message);
    bool TakeKey(const MSG& message);
    [[nodiscard]] app::Focus FocusOf(HWND window) const;
    void KeepRecovery();
    void FollowTyping(View& configuration);
    void UseHint(const tables::Hint& hint, bool put_right);

    controls::Form1& form_;
    app::RecoveryPace pace_;
    HWND window_;
    UINT monitor_dpi_;
    UINT laid_out_dpi_ = 0; // that the window has its size and layout for; 0 where it has none
    bool may_be_outside_ = false; // of the monitors, while it is minimised
    bool person_moves_it_ = false;
    HWND enter_pressed_in_ = nullptr;
    Layout layout_;
    Pages pages_;
    ControlViews views_;
    TaskbarButton taskbar_button_;
    Refresher refresher_;
    BetweenYields between_yields_;
    PreviewWindow preview_;
    com::Owned<HFONT> font_;
    com::Owned<HICON> large_icon_;
    com::Owned<HICON> small_icon_;
    bool loaded_ = false;
};

} // namespace win32
