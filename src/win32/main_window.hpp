// The main window: the form's controls on their pages. It brings what the program changed to the
// screen when events are processed and when a handler ends, and turns what the person does into the
// controls' events.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "controls/form1.hpp"
#include "win32/layout.hpp"
#include "win32/list_view_window.hpp"
#include "win32/tree_view_window.hpp"
#include "win32/views.hpp"

namespace win32 {

class MainWindow {
  public:
    // Creates the window, hidden, and gives `form` its handle, its design size and the functions
    // that it expects of its view.
    explicit MainWindow(controls::Form1& form);
    ~MainWindow();
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;

    [[nodiscard]] HWND Window() const { return window_; }

    // Loads the form, whose actions are bound, and shows the window.
    void Show();
    // Handles messages until the window is gone. Returns the program's exit code.
    int Run();
    // Brings the window up to date and handles the messages that wait.
    void DoEvents();

  private:
    enum class Thoroughness { kFrugal, kComplete };

    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l);
    static INT_PTR CALLBACK PageProcedure(HWND page, UINT message, WPARAM w, LPARAM l);
    std::optional<LRESULT> OnMessage(UINT message, WPARAM w, LPARAM l);
    void OnCommand(int id, UINT code);
    LRESULT OnNotify(NMHDR& header);

    void CreatePages();
    void CreateViews();
    ButtonView& AddButton(HWND page, int id, controls::Button& button);
    void AddCheckBox(HWND page, int id, controls::CheckBox& check_box);
    void AddTextBox(HWND page, int id, controls::TextBox& text_box);
    void AddComboBox(HWND page, int id, int label_id, controls::ComboBox& combo_box);
    void AddList(HWND page, int id, controls::ListView& list, ListViewWindow::Look look);
    // What a row needs to be dragged: a number other than zero.
    void ApplyDpi(UINT dpi);

    void RunEvent(const std::function<void()>& event);
    void Pull();
    void Refresh(Thoroughness thoroughness);
    void RefreshContents();
    void RefreshPlace();
    void ShowPage(std::size_t page);
    void ShowNow();
    void ShowPopup(const controls::PopupMenu& menu, controls::PopupPlace place) const;
    void HandleMessage(MSG& message) const;
    [[nodiscard]] int Pixels(int twips) const;

    controls::Form1& form_;
    HWND window_ = nullptr;
    HWND tabs_ = nullptr;
    std::vector<HWND> pages_;
    UINT dpi_ = 96;
    Owned<HFONT> font_;
    Owned<HICON> large_icon_;
    Owned<HICON> small_icon_;
    Layout layout_;

    std::vector<std::unique_ptr<ButtonView>> buttons_;
    std::vector<ButtonView*> picture_buttons_;
    std::vector<std::unique_ptr<CheckBoxView>> check_boxes_;
    std::vector<std::unique_ptr<TextBoxView>> text_boxes_;
    std::vector<std::unique_ptr<ComboBoxView>> combo_boxes_;
    std::vector<std::unique_ptr<ListViewWindow>> lists_;
    std::unique_ptr<TreeViewWindow> tree_;
    std::unique_ptr<ListBoxView> list_box_;
    std::unique_ptr<StatusBarView> status_bar_;

    bool loaded_ = false;
    std::string shown_caption_;
    RECT shown_place_{}; // left, top, width, height as last applied, in twips
    std::size_t shown_page_ = 0;
    controls::MousePointer shown_pointer_ = controls::MousePointer::kDefault;
    ULONGLONG next_frugal_refresh_ = 0; // in milliseconds of the system's tick count
};

} // namespace win32
