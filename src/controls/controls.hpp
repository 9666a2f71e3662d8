// The small controls of the window. A control owns its data and behaves the same with a window and
// without one; the view shows what it holds and hands it what the person does. Members whose names
// begin with "User" are the person's doings, called by the view; everything else is the program's.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace controls {

// Mouse buttons and shift states as the events carry them.
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kShiftHeld = 1;
inline constexpr int kEnterKey = 13;

template <typename... Arguments>
using Event = std::function<void(Arguments...)>;

template <typename... Arguments>
void Raise(const Event<Arguments...>& event, std::type_identity_t<Arguments>... arguments) {
    if (event) {
        event(arguments...);
    }
}

// Anything whose content the view shows. A change raises the revision and does nothing else; the
// view compares revisions when it refreshes.
class Control {
  public:
    [[nodiscard]] std::uint64_t Revision() const { return revision_; }

  protected:
    void Changed() { ++revision_; }

  private:
    std::uint64_t revision_ = 0;
};

class Button : public Control {
  public:
    explicit Button(std::string caption) : caption_(std::move(caption)) {}

    [[nodiscard]] const std::string& Caption() const { return caption_; }
    void SetCaption(std::string caption) {
        caption_ = std::move(caption);
        Changed();
    }

    // A button whose click nothing is bound to is shown disabled, whatever it was set to.
    [[nodiscard]] bool Enabled() const { return enabled_ && Click; }
    void SetEnabled(bool enabled) {
        enabled_ = enabled;
        Changed();
    }

    Event<> Click;
    Event<int, int, int, int> MouseDown; // button, shift state, x, y
    Event<> MenuKey;                     // the popup menu asked for by keyboard

  private:
    std::string caption_;
    bool enabled_ = true;
};

class CheckBox : public Control {
  public:
    explicit CheckBox(std::string caption) : caption_(std::move(caption)) {}

    [[nodiscard]] const std::string& Caption() const { return caption_; }
    [[nodiscard]] int Value() const { return value_; }

    // 1 is ticked, 0 is not. A change raises Click, whether the person or the program makes it.
    void SetValue(int value) {
        if (value == value_) {
            return;
        }
        value_ = value;
        Changed();
        Raise(Click);
    }

    Event<> Click;

  private:
    std::string caption_;
    int value_ = 0;
};

class TextBox : public Control {
  public:
    explicit TextBox(std::string text = {}) : text_(std::move(text)) {}

    [[nodiscard]] const std::string& Text() const { return text_; }
    void SetText(std::string text) {
        text_ = std::move(text);
        ++replacements_;
        Changed();
    }
    void Append(std::string_view more) {
        text_ += more;
        Changed();
    }

    // How often the text was set anew: while it stays the same, the text has only grown at its end,
    // so a view needs to add no more than that.
    [[nodiscard]] std::uint64_t Replacements() const { return replacements_; }

    // What the person typed, which the view shows already.
    void UserChange(std::string text) { text_ = std::move(text); }

    Event<int> KeyPress; // the key's character code, kEnterKey for Enter

    // What becomes of a text that the person pastes; without it, it goes in as it is.
    std::function<std::string(std::string_view)> Pasted;

  private:
    std::string text_;
    std::uint64_t replacements_ = 0;
};

class ComboBox : public Control {
  public:
    // `tag` is the name under which the picker's values are remembered.
    ComboBox(std::string label, std::string tag) : label_(std::move(label)), tag_(std::move(tag)) {}

    [[nodiscard]] const std::string& Label() const { return label_; }
    [[nodiscard]] const std::string& Tag() const { return tag_; }
    [[nodiscard]] const std::string& Text() const { return text_; }
    [[nodiscard]] const std::vector<std::string>& Items() const { return items_; }
    [[nodiscard]] bool Enabled() const { return enabled_; }

    void SetText(std::string text) {
        text_ = std::move(text);
        Changed();
    }
    void SetEnabled(bool enabled) {
        enabled_ = enabled;
        Changed();
    }

    void AddItem(std::string item) {
        items_.push_back(std::move(item));
        Changed();
    }
    // Items count from 0.
    void RemoveItem(std::size_t item) {
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(item));
        ++removals_;
        Changed();
    }
    // Others in the place of all; nothing where they are the same.
    void SetItems(std::vector<std::string> items) {
        if (items != items_) {
            items_ = std::move(items);
            ++removals_;
            Changed();
        }
    }
    // How often one was removed: while it stays the same, items have only been added at the end.
    [[nodiscard]] std::uint64_t Removals() const { return removals_; }

    void UserChange(std::string text) { text_ = std::move(text); }

    Event<int> KeyPress;       // the key's character code, kEnterKey for Enter
    Event<std::size_t> Forget; // an item that is not to be remembered any more
    Event<> DropDown;          // the list of items is about to open
    Event<> Choose;            // an item of the open list was taken, whose text stands there now

  private:
    std::string label_;
    std::string tag_;
    std::string text_;
    std::vector<std::string> items_;
    std::uint64_t removals_ = 0;
    bool enabled_ = false;
};

class ListBox : public Control {
  public:
    [[nodiscard]] const std::vector<std::string>& Items() const { return items_; }
    void Clear() {
        items_.clear();
        Changed();
    }
    void AddItem(std::string item) {
        items_.push_back(std::move(item));
        Changed();
    }

  private:
    std::vector<std::string> items_;
};

// How the action whose text stands on the status line goes or went.
enum class ActionState {
    kNone, // there was nothing to do
    kRunning,
    kDone,
    kFailed, // ended by an error
};

// More than the status text has room for: Czech sentences that the view shows as a balloon.
struct Explanation {
    std::string text; // empty for none
    bool is_error = false;
};

// How far an action is, in whatever it counts.
struct Progress {
    int done = 0;
    int total = 0;
    friend bool operator==(const Progress&, const Progress&) = default;
};

class StatusBar : public Control {
  public:
    // Panels count from 1.
    [[nodiscard]] const std::string& PanelText(std::size_t panel) const {
        return panels_.at(panel - 1);
    }
    void SetPanelText(std::size_t panel, std::string text) {
        panels_.at(panel - 1) = std::move(text);
        Changed();
    }

    [[nodiscard]] ActionState State() const { return state_; }
    void SetState(ActionState state) {
        state_ = state;
        Changed();
    }

    // Nothing where nobody knows how much there is to do.
    [[nodiscard]] const std::optional<Progress>& ShownProgress() const { return progress_; }
    void SetProgress(const std::optional<Progress>& progress) {
        if (progress != progress_) {
            progress_ = progress;
            Changed();
        }
    }

    // What else the person may want to know of the status text; empty for nothing.
    [[nodiscard]] const std::string& Tip() const { return tip_; }
    void SetTip(std::string tip) {
        if (tip != tip_) {
            tip_ = std::move(tip);
            Changed();
        }
    }

    [[nodiscard]] const Explanation& ShownExplanation() const { return explanation_; }
    void SetExplanation(Explanation explanation) {
        explanation_ = std::move(explanation);
        ++explanations_;
        Changed();
    }
    // How often an explanation was set: each is shown once, also where it says the same again.
    [[nodiscard]] std::uint64_t Explanations() const { return explanations_; }

    Event<> RightClick;
    Event<> MenuKey; // the popup menu asked for by keyboard

  private:
    std::vector<std::string> panels_ = std::vector<std::string>(2);
    ActionState state_ = ActionState::kNone;
    std::optional<Progress> progress_;
    std::string tip_;
    Explanation explanation_;
    std::uint64_t explanations_ = 0;
};

class TabControl : public Control {
  public:
    explicit TabControl(std::vector<std::string> captions) : captions_(std::move(captions)) {}

    [[nodiscard]] const std::vector<std::string>& Captions() const { return captions_; }
    // The page that is shown; pages count from 0.
    [[nodiscard]] std::size_t Tab() const { return tab_; }

    void UserClick(std::size_t tab) {
        tab_ = tab;
        Raise(Click);
    }

    Event<> Click;

  private:
    std::vector<std::string> captions_;
    std::size_t tab_ = 0;
};

// A frame around controls that belong together.
struct Frame {
    std::string caption;
};

// An entry of a popup menu. Without a caption it is a separator; with nothing bound to it, it is
// shown disabled, whatever it was set to.
struct MenuItem {
    std::string caption;
    Event<> Click;
    bool enabled = true;

    [[nodiscard]] bool IsSeparator() const { return caption.empty(); }
    [[nodiscard]] bool Enabled() const { return enabled && Click; }
};

// The file dialog that saving and opening share. It keeps its file name and its settings between
// uses.
struct FileDialog {
    std::string file_name; // with its folder, once one was chosen; empty for none
    std::string title;
    std::string filter; // caption and pattern, separated by "|"
    std::string initial_folder;
    bool path_must_exist = false;
    bool file_must_exist = false;
    bool cancel_is_error = false; // cancelling raises 32755 instead of leaving the file name
};

struct PopupMenu {
    std::string caption;
    std::vector<MenuItem*> items;
};

} // namespace controls
