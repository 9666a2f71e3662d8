// The small controls on the screen. A view knows a window and the control object that it shows:
// Refresh brings to the screen what the program changed since the last time, Pull brings into the
// control object what the person entered since. Both do nothing where nothing changed.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "controls/controls.hpp"
#include "win32/layout.hpp"

namespace win32 {

// Runs what an event of a control does, with everything the person entered pulled in before and
// everything the program changed shown after.
using RunEvent = std::function<void(const std::function<void()>&)>;

class ButtonView {
  public:
    ButtonView(HWND window, controls::Button& button, RunEvent run_event);
    ~ButtonView();
    ButtonView(const ButtonView&) = delete;
    ButtonView& operator=(const ButtonView&) = delete;

    [[nodiscard]] HWND Window() const { return window_; }
    void Refresh();
    void Click();
    // Shows a picture in place of a caption. The icon's owner is the view.
    void ShowPicture(int icon_resource, int size);

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                            UINT_PTR id, DWORD_PTR view);

    HWND window_;
    controls::Button& button_;
    RunEvent run_event_;
    std::uint64_t shown_revision_ = UINT64_MAX;
    bool shown_enabled_ = true;
    Owned<HICON> picture_;
};

class CheckBoxView {
  public:
    CheckBoxView(HWND window, controls::CheckBox& check_box, RunEvent run_event);

    [[nodiscard]] HWND Window() const { return window_; }
    void Refresh();
    void Click();

  private:
    HWND window_;
    controls::CheckBox& check_box_;
    RunEvent run_event_;
    std::uint64_t shown_revision_ = UINT64_MAX;
};

class TextBoxView {
  public:
    TextBoxView(HWND window, controls::TextBox& text_box, RunEvent run_event);
    ~TextBoxView();
    TextBoxView(const TextBoxView&) = delete;
    TextBoxView& operator=(const TextBoxView&) = delete;

    [[nodiscard]] HWND Window() const { return window_; }
    void Refresh();
    void Pull();
    // The edit control's text changed.
    void Changed() { changed_by_person_ = changed_by_person_ || !refreshing_; }

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                            UINT_PTR id, DWORD_PTR view);

    HWND window_;
    controls::TextBox& text_box_;
    RunEvent run_event_;
    std::uint64_t shown_revision_ = UINT64_MAX;
    std::uint64_t shown_replacements_ = UINT64_MAX;
    std::size_t shown_length_ = 0; // of the control's text, in bytes
    bool changed_by_person_ = false;
    bool refreshing_ = false;
};

class ComboBoxView {
  public:
    ComboBoxView(HWND window, HWND label, controls::ComboBox& combo_box, RunEvent run_event);
    ~ComboBoxView();
    ComboBoxView(const ComboBoxView&) = delete;
    ComboBoxView& operator=(const ComboBoxView&) = delete;

    [[nodiscard]] HWND Window() const { return window_; }
    void Refresh();
    void Pull();
    void Changed() { changed_by_person_ = changed_by_person_ || !refreshing_; }
    // Makes the drop-down list wide enough for its values, within the window's width.
    void FitDropDown() const;

  private:
    static LRESULT CALLBACK EditProcedure(HWND edit, UINT message, WPARAM w, LPARAM l, UINT_PTR id,
                                          DWORD_PTR view);

    HWND window_;
    HWND edit_; // the field inside
    controls::ComboBox& combo_box_;
    RunEvent run_event_;
    std::uint64_t shown_revision_ = UINT64_MAX;
    std::size_t shown_items_ = 0;
    bool changed_by_person_ = false;
    bool refreshing_ = false;
};

class ListBoxView {
  public:
    ListBoxView(HWND window, const controls::ListBox& list_box)
        : window_(window), list_box_(list_box) {}

    void Refresh();

  private:
    HWND window_;
    const controls::ListBox& list_box_;
    std::uint64_t shown_revision_ = 0;
};

class StatusBarView {
  public:
    StatusBarView(HWND window, const controls::StatusBar& status_bar)
        : window_(window), status_bar_(status_bar) {}

    // Divides the bar into its two panels. `second_panel` is the width of the second, in pixels.
    void SetPanels(int width, int second_panel) const;
    // Shows what changed at once, without waiting for a paint message.
    void Refresh();

  private:
    HWND window_;
    const controls::StatusBar& status_bar_;
    std::uint64_t shown_revision_ = UINT64_MAX;
    std::string shown_[2];
};

// The text of a window, UTF-8.
std::string ReadText(HWND window);
void ShowText(HWND window, std::string_view text);
// The shift states that mouse events carry.
int ShiftState();

} // namespace win32
