// Drives Windows programs as a person would: finds their windows and controls, clicks and types
// with real mouse and keyboard input, and reads back what stands on the screen.
//
// Every wait has a time limit; when it runs out, and whenever something that is looked for is not
// there, std::runtime_error says what was awaited. All texts are UTF-8.
#pragma once

#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace driver {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;
inline constexpr Milliseconds kPatience{20000};

// Waits until `holds`; `awaited` describes it.
void WaitUntil(std::string_view awaited, const std::function<bool()>& holds,
               Milliseconds limit = kPatience);

// Waits until `read` gives `expected`; the failure shows what it gave last.
void WaitForText(std::string_view what, const std::string& expected,
                 const std::function<std::string()>& read, Milliseconds limit = kPatience);

// A program that was started here and is ended here.
class Program {
  public:
    // `arguments` are quoted as needed.
    explicit Program(const std::string& path, const std::vector<std::string>& arguments = {});
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    [[nodiscard]] HANDLE Process() const { return process_; }
    [[nodiscard]] bool Running() const;
    // Waits for the program's own end and gives its exit code.
    DWORD WaitForEnd(Milliseconds limit = kPatience) const;
    // Waits for the visible top-level window of that class.
    [[nodiscard]] HWND WaitForWindow(const std::string& window_class,
                                     Milliseconds limit = kPatience) const;
    // The same without waiting; nullptr where there is none.
    [[nodiscard]] HWND FindVisible(const std::string& window_class) const;
    [[nodiscard]] std::vector<HWND> AllVisible(const std::string& window_class) const;

  private:
    HANDLE process_ = nullptr;
    DWORD process_id_ = 0;
};

// Windows -----------------------------------------------------------------------------------------

// The control with that id, anywhere inside the window.
HWND Control(HWND window, int id);
// A message that waits for its answer no longer than `limit`.
LRESULT Send(HWND window, UINT message, WPARAM wparam = 0, LPARAM lparam = 0,
             Milliseconds limit = kPatience);
std::string ClassName(HWND window);
std::string Text(HWND window);
RECT Place(HWND window); // on the screen, in pixels
bool Topmost(HWND window);
bool Ticked(HWND check_box);
void BringToFront(HWND window);
void RequestFront(HWND window); // the same for a window of the top level, without waiting
// Whether `upper` stands before `lower` on the screen.
bool StandsBefore(HWND upper, HWND lower);
// Tells the window what Windows tells it when the DPI of its monitor changes, and the place that it
// suggests.
void TellDpi(HWND window, UINT dpi, const RECT& place);
// The control that keys go to, of the program that the window belongs to.
HWND FocusedControl(HWND window);

// Mouse and keyboard ------------------------------------------------------------------------------

enum class MouseButton { kLeft, kRight };

// Points are in the window's client coordinates.
void MoveMouse(HWND window, POINT point);
// Does not bring the window to the front.
void ClickAsItStands(HWND window, POINT point, MouseButton button = MouseButton::kLeft);
void Click(HWND window, POINT point, MouseButton button = MouseButton::kLeft);
// Clicks the middle of a control that must be enabled and visible.
void Click(HWND control, MouseButton button = MouseButton::kLeft);
// Two presses in quick succession at the middle of a control.
void DoubleClick(HWND control);
void DoubleClick(HWND window, POINT point);
void Drag(HWND window, POINT from, POINT to);

// Drops files on a window that takes them.
void DropFiles(HWND window, const std::vector<std::string>& paths);

// Presses and releases a key while the given ones are held.
void PressKey(WORD virtual_key, const std::vector<WORD>& held = {});
// The same, but those that are held go up before the key does, as fast fingers have it.
void PressKeyThatGoesUpLast(WORD virtual_key, const std::vector<WORD>& held);
// Presses a key so often before it is released, as the keyboard does while it is held.
void HoldKey(WORD virtual_key, int times, const std::vector<WORD>& held = {});
void TypeText(std::string_view text);
// Clicks into the edit control and puts a text from the clipboard in the place of its whole text.
void PasteText(HWND edit, const std::string& text);

// Controls ----------------------------------------------------------------------------------------

std::string StatusText(HWND status_bar, int panel); // panels count from 0
// What a button or check box needs for its caption.
SIZE IdealSize(HWND button);
std::vector<std::string> ListBoxItems(HWND list_box);
std::vector<std::string> ComboBoxItems(HWND combo_box);
void ClickTab(HWND tab_control, int tab); // tabs count from 0
std::vector<std::string> TabCaptions(HWND tab_control);

// List views; rows and columns count from 0.
std::vector<std::string> ColumnHeadings(HWND list);
int RowCount(HWND list);
std::string Cell(HWND list, int row, int column);
std::vector<std::string> Row(HWND list, int row, int columns);
bool RowChecked(HWND list, int row);
bool RowSelected(HWND list, int row);
void SetRowChecked(HWND list, int row, bool checked); // by a message, as assistive programs do
int FocusedRow(HWND list);                            // -1 for none
POINT RowPoint(HWND list, int row);                   // in the row's name
POINT RowCheckPoint(HWND list, int row);              // in the row's check box
POINT CellPoint(HWND list, int row, int column);      // in the middle of a cell
int ColumnWidth(HWND list, int column);

// Tree views.
struct TreeItem {
    HTREEITEM item = nullptr;
    int depth = 0;
    std::string text;
    bool checked = false;
    int image = 0; // counted from 0
};
// Every node from the top down, children under their parents.
std::vector<TreeItem> TreeItems(HWND tree);
POINT TreeCheckPoint(HWND tree, HTREEITEM item);                  // scrolls the item into sight
void SetTreeItemChecked(HWND tree, HTREEITEM item, bool checked); // by a message
RECT TreeLabel(HWND tree, HTREEITEM item); // in client coordinates, of one in sight

// The popup menu that is open on the desktop.
HWND WaitForPopupMenu();
// Clicks the entry that has so many entries and separators above it.
void ClickEntry(HWND popup_menu, int entries_above, int separators_above);
bool PopupMenuOpen();

// Whole desktop -----------------------------------------------------------------------------------

std::optional<std::string> ClipboardText();
void PutTextOnClipboard(std::string_view text);
HCURSOR ShownPointer();
// The balloon and the tip that the program shows; empty where there is none.
std::string BalloonText(const Program& program);
std::string TipText(const Program& program);
// Whether a pixel of the window's client area inside `area` has the colour.
bool ShowsColour(HWND window, const RECT& area, COLORREF colour);
// Saves what the screen shows as a PNG file: all of it, or only `part`.
void SaveScreenshot(const std::string& path, const std::optional<RECT>& part = {});

// The same into the folder that the environment variable PICTURES names; nothing where it names
// none.
void KeepPicture(const std::string& file_name);

std::string ReadFile(const std::string& path);

} // namespace driver
