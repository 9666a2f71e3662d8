// The yellow tips: one that comes while the mouse rests on a place, and one that stands by itself.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

namespace win32 {

// Puts a tip before all other windows, topmost ones too, whenever it shows. It has no owner: Wine
// does not put a window on top again that owns another one.
void KeepInFront(HWND tip);

class ToolTip {
  public:
    ToolTip() = default;
    ~ToolTip();
    ToolTip(const ToolTip&) = delete;
    ToolTip& operator=(const ToolTip&) = delete;

    // The tip of `window`, or of one of two parts of it that `area` gives in client coordinates. No
    // tip where the text is empty.
    void Show(HWND window, std::string_view text, const std::optional<RECT>& area = std::nullopt,
              std::size_t part = 0);

  private:
    struct Shown {
        std::string text;
        RECT area{};
    };
    HWND tip_ = nullptr;
    std::array<Shown, 2> shown_; // by part
};

// The tips that say what controls do, a line each.
class ControlTips {
  public:
    ControlTips() = default;
    ~ControlTips();
    ControlTips(const ControlTips&) = delete;
    ControlTips& operator=(const ControlTips&) = delete;

    void Add(HWND control, std::string_view text);
    // After the controls have been moved.
    void Place() const;

  private:
    HWND tip_ = nullptr;
    std::vector<HWND> controls_;
};

class Balloon {
  public:
    Balloon() = default;
    ~Balloon();
    Balloon(const Balloon&) = delete;
    Balloon& operator=(const Balloon&) = delete;

    // At a point of the screen; `window` is what it speaks of.
    void Show(HWND window, std::string_view text, bool is_error, POINT at);
    void Move(POINT at) const;
    void Hide();
    [[nodiscard]] bool Shown() const { return shown_; }

  private:
    HWND tip_ = nullptr;
    HWND window_ = nullptr;
    bool shown_ = false;
};

} // namespace win32
