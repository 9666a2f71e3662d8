// The session's window: it shows the active document and lets the person switch documents and
// sheets, select a table and arm failures. Files that are dropped on it are opened.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <windows.h>

#include <shellapi.h>

#include "com/trial.hpp"
#include "companion.hpp"
#include "simulator/session.hpp"

namespace simulator {

// The message that has a window on trial come to the front, and the program that is tried out too.
inline constexpr UINT kComeForward = WM_APP + 1;

class SessionWindow {
  public:
    // Creates and shows the window. `session` outlives it; its `changed` is taken.
    SessionWindow(HINSTANCE program, Session& session, com::Purpose purpose);
    ~SessionWindow();
    SessionWindow(const SessionWindow&) = delete;
    SessionWindow& operator=(const SessionWindow&) = delete;

    // Runs until the window is closed.
    int Run();

    // Opens the documents in the files, and makes the first of them the active one; shows a message
    // where that fails.
    void Open(const std::vector<std::string>& paths);
    // Starts the program that is tried out, and places it beside the window.
    void StartCompanion();

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l);
    LRESULT Handle(UINT message, WPARAM w, LPARAM l);

    void Paint();
    void Changed();
    void ShowChanges();
    void ShowStatus();
    void LayOut();
    void Scroll(WPARAM request);
    void ScrollTo(int line);
    void UpdateScrollBar();
    void OpenDropped(HDROP drop);
    void ComeForward();
    void Click(POINT point);
    void FillMenu(HMENU menu, int place);
    // Opens the dialog that has every call rejected, or closes it.
    void ShowDialog(bool open);
    static INT_PTR CALLBACK DialogProcedure(HWND dialog, UINT message, WPARAM w, LPARAM l);
    void Do(int command);
    void DoInList(int command);
    void Trap(const std::function<void()>& action);
    void ShowError(const std::string& text) const;
    [[nodiscard]] std::string AskPath(bool save, const wchar_t* title) const;
    [[nodiscard]] RECT DocumentArea() const;

    HINSTANCE program_;
    Session& session_;
    HWND window_ = nullptr;
    HWND status_ = nullptr;
    HWND dialog_ = nullptr; // null while none is open
    std::string title_;     // in place of its own, where not empty
    bool show_pending_ = false;
    int first_line_ = 0; // of a product's tree
    Companion companion_;
};

} // namespace simulator
