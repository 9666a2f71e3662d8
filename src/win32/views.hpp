// The controls on the screen. A view knows a window and the control object that it shows. The lists
// and the tree have files of their own; the small controls are here.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "controls/controls.hpp"
#include "win32/layout.hpp"
#include "win32/tool_tips.hpp"

namespace win32 {

// Runs what an event of a control does, with everything the person entered pulled in before and
// everything the program changed shown after. Between the yields of an action it runs later: it
// refers to nothing that is gone by then.
using RunEvent = std::function<void(const std::function<void()>&)>;

// Sets a flag for as long as it lives: notifications that the program itself causes are not the
// person's doing.
class FlagWhile {
  public:
    explicit FlagWhile(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
    ~FlagWhile() { flag_ = before_; }
    FlagWhile(const FlagWhile&) = delete;
    FlagWhile& operator=(const FlagWhile&) = delete;

  private:
    bool& flag_;
    bool before_;
};

class View {
  public:
    explicit View(HWND window) : window_(window) {}
    virtual ~View() = default;
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    [[nodiscard]] HWND Window() const { return window_; }
    // Brings to the screen what the program changed since the last time, Pull into the control
    // object what the person entered since. Both do nothing where nothing changed.
    virtual void Refresh() {}
    virtual void Pull() {}
    // Whether Refresh may take long, so that it is not done at every yield.
    [[nodiscard]] virtual bool ShowsContents() const { return false; }
    // What the window tells its parent.
    virtual void OnCommand(UINT /*code*/) {}
    virtual LRESULT OnNotify(NMHDR& /*header*/) { return 0; }
    virtual void SetDpi(UINT /*dpi*/) {}
    // Ends a drag that has begun here without a drop.
    virtual void CancelDrag() {}
    // Ends what the person edits in place, taking the text.
    virtual void EndEdit() {}
    // What a popup menu asked for by keyboard opens below, on the screen: the window unless it has
    // something that is current.
    [[nodiscard]] virtual RECT MenuAnchor() const;

  private:
    HWND window_;
};

class ButtonView : public View {
  public:
    // `access_key` is 0 for none.
    ButtonView(HWND window, controls::Button& button, char access_key, RunEvent run_event);
    ~ButtonView() override;

    void Refresh() override;
    void OnCommand(UINT code) override;
    // A button with a picture in place of a caption gets it in its size.
    void SetDpi(UINT dpi) override;

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                            UINT_PTR id, DWORD_PTR view);

    controls::Button& button_;
    char access_key_;
    RunEvent run_event_;
    std::uint64_t shown_revision_ = UINT64_MAX;
    bool shown_enabled_ = true;
    std::string shown_caption_;
    com::Owned<HICON> picture_;
};

class CheckBoxView : public View {
  public:
    CheckBoxView(HWND window, controls::CheckBox& check_box, RunEvent run_event);
    ~CheckBoxView() override;

    void Refresh() override;
    void Pull() override;
    void OnCommand(UINT code) override;

  private:
    void Changed();
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                            UINT_PTR id, DWORD_PTR view);

    controls::CheckBox& check_box_;
    RunEvent run_event_;
    std::uint64_t shown_revision_ = UINT64_MAX;
    bool changed_by_person_ = false;
    bool refreshing_ = false;
};

class TextBoxView : public View {
  public:
    TextBoxView(HWND window, controls::TextBox& text_box, RunEvent run_event);
    ~TextBoxView() override;

    void Refresh() override;
    void Pull() override;
    [[nodiscard]] bool ShowsContents() const override { return true; }
    void OnCommand(UINT code) override;

  private:
    void Changed() { changed_by_person_ = changed_by_person_ || !refreshing_; }
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                            UINT_PTR id, DWORD_PTR view);

    controls::TextBox& text_box_;
    RunEvent run_event_;
    std::uint64_t shown_revision_ = UINT64_MAX;
    std::uint64_t shown_replacements_ = UINT64_MAX;
    std::size_t shown_length_ = 0; // of the control's text, in bytes
    bool changed_by_person_ = false;
    bool refreshing_ = false;
};

class ComboBoxView : public View {
  public:
    ComboBoxView(HWND window, HWND label, controls::ComboBox& combo_box, RunEvent run_event);
    ~ComboBoxView() override;

    void Refresh() override;
    void Pull() override;
    [[nodiscard]] bool ShowsContents() const override { return true; }
    void OnCommand(UINT code) override;

  private:
    // Makes the drop-down list wide enough for its values, within the window's width.
    void FitDropDown() const;
    // What is marked in the drop-down list is not to be remembered any more.
    void ForgetMarked();
    // The list has closed, and the text is what it comes to be.
    void Closed();
    static LRESULT CALLBACK EditProcedure(HWND edit, UINT message, WPARAM w, LPARAM l, UINT_PTR id,
                                          DWORD_PTR view);

    HWND label_;
    HWND edit_; // the field inside
    controls::ComboBox& combo_box_;
    RunEvent run_event_;
    std::uint64_t shown_revision_ = UINT64_MAX;
    std::size_t shown_items_ = 0;
    std::uint64_t shown_removals_ = 0;
    bool open_ = false;
    bool chosen_ = false; // from the open list
    std::string text_as_it_opened_;
    bool changed_by_person_ = false;
    bool refreshing_ = false;
};

class ListBoxView : public View {
  public:
    ListBoxView(HWND window, const controls::ListBox& list_box)
        : View(window), list_box_(list_box) {}

    void Refresh() override;
    [[nodiscard]] bool ShowsContents() const override { return true; }

  private:
    const controls::ListBox& list_box_;
    std::uint64_t shown_revision_ = 0;
};

// The tabs themselves; the pages follow the form's current tab.
class TabControlView : public View {
  public:
    TabControlView(HWND window, controls::TabControl& tab_control, RunEvent run_event)
        : View(window), tab_control_(tab_control), run_event_(std::move(run_event)) {}

    LRESULT OnNotify(NMHDR& header) override;

  private:
    controls::TabControl& tab_control_;
    RunEvent run_event_;
};

// The tab key comes to the bar as well, after the page: its popup menu is there for the keyboard.
class StatusBarView : public View {
  public:
    StatusBarView(HWND window, const controls::StatusBar& status_bar, RunEvent run_event);
    ~StatusBarView() override;

    // Shows what changed at once, without waiting for a paint message. An explanation comes as a
    // balloon as soon as the bar is in sight; it stays in the tip of the icon.
    void Refresh() override;
    // Divides the bar into its two panels.
    void SetDpi(UINT dpi) override;
    // Shows a balloon that is no explanation of the form's. False where the bar is out of sight.
    bool ShowNotice(std::string_view text);
    // The balloon goes with a click anywhere, and moves with the window.
    void HideBalloon() { balloon_.Hide(); }
    void PlaceBalloon();

  private:
    void ShowIcon();
    void ShowProgress();
    LRESULT PaintWithFocus(WPARAM w, LPARAM l) const;
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l,
                                            UINT_PTR id, DWORD_PTR view);
    // The tip beside the icon: the whole text where it does not fit into the panel, and what the
    // status bar has to say of it.
    void ShowTextTip();
    [[nodiscard]] bool InSight() const;
    [[nodiscard]] POINT BalloonPoint() const;

    const controls::StatusBar& status_bar_;
    RunEvent run_event_;
    std::uint64_t shown_revision_ = UINT64_MAX;
    std::array<std::string, 2> shown_; // by panel
    controls::ActionState shown_state_ = controls::ActionState::kNone;
    com::Owned<HICON> icon_;
    std::uint64_t shown_explanations_ = 0;
    HWND progress_bar_; // at the lower edge of the first panel
    std::optional<controls::Progress> shown_progress_;
    Balloon balloon_;
    ToolTip tip_; // of the icon, and of the text
};

// A view subclasses its window once.
inline constexpr UINT_PTR kSubclass = 1;
// The image of a list's or tree's own check box, as an item's state.
UINT CheckState(bool checked);
// The text of a window, UTF-8.
std::string ReadText(HWND window);
void ShowText(HWND window, std::string_view text);
// The shift states that mouse events carry.
int ShiftState();

} // namespace win32
