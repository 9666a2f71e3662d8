// The preview: a window of its own that shows the table as tables/layout.hpp lays it out, and the
// hints on the configuration beneath it. It computes nothing itself. It has no owner, so that it
// can stand beside the main window, and follows it: topmost with it, gone while that is minimised.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "com/owned.hpp"
#include "controls/form1.hpp"
#include "tables/hints.hpp"
#include "tables/layout.hpp"
#include "win32/preview_canvas.hpp"
#include "win32/tool_tips.hpp"
#include "win32/views.hpp"

namespace win32 {

inline constexpr const wchar_t* kPreviewWindowClass = L"DorvakNahled";

class PreviewWindow {
  public:
    // What the person does with a hint: goes to its place in the configuration, or has it put
    // right.
    using UseHint = std::function<void(const tables::Hint&, bool put_right)>;

    PreviewWindow(controls::Form1& form, HWND main_window, RunEvent run_event, UseHint use_hint);
    ~PreviewWindow();
    PreviewWindow(const PreviewWindow&) = delete;
    PreviewWindow& operator=(const PreviewWindow&) = delete;

    // Opens and closes the window as the form says, and brings it in step with the configuration
    // and the list where they have changed.
    void Refresh();
    // The main window's place among the others has changed.
    void FollowMainWindow();
    // Whether a window is the preview or one of its controls.
    [[nodiscard]] bool Holds(HWND window) const;
    // Handles a message that is theirs.
    bool TakeMessage(MSG& message) const;
    void Destroy();

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l);
    std::optional<LRESULT> OnMessage(UINT message, WPARAM w, LPARAM l);
    void OnCommand(UINT code, int id);
    void Create();
    void CreateControls();
    void ShowTable();
    void ShowHints();
    void EnablePutRight() const;
    [[nodiscard]] const tables::Hint* SelectedHint() const;
    void Use(bool put_right);
    void Close();
    void SetFont();
    void LayOut();
    void NotePlace();
    [[nodiscard]] bool MatchTopmost() const;
    [[nodiscard]] int Pixels(int design_pixels) const;
    std::shared_ptr<const tables::CharacterWidths> WidthsOf(const std::string& face);
    static LRESULT CALLBACK HintsProcedure(HWND list, UINT message, WPARAM w, LPARAM l, UINT_PTR id,
                                           DWORD_PTR self);

    controls::Form1& form_;
    HWND main_window_;
    RunEvent run_event_;
    UseHint use_hint_;

    HWND window_ = nullptr;
    UINT monitor_dpi_ = 0;
    com::Owned<HFONT> font_;
    HWND summary_ = nullptr;
    HWND current_row_only_ = nullptr;
    HWND hints_list_ = nullptr;
    HWND put_right_ = nullptr;
    HWND focused_ = nullptr; // when another window got the keys
    std::unique_ptr<PreviewCanvas> canvas_;
    std::unique_ptr<ControlTips> tips_;

    // What is shown, and of what.
    struct Source {
        std::string configuration;
        std::uint64_t list = 0; // its content, by its revision
        std::optional<std::size_t> current_row;
        bool current_row_only = false;
        friend bool operator==(const Source&, const Source&) = default;
    };
    std::optional<Source> shown_;
    std::shared_ptr<const tables::Parts> parts_;
    std::vector<tables::Hint> hints_;
    std::map<std::string, std::shared_ptr<const tables::CharacterWidths>> widths_; // by the face
};

} // namespace win32
