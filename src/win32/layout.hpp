// Where everything stands. The dialog resources give places in dialog units on a grid that fills
// the window's client area at full height; the layout maps that grid to pixels, so that the window
// has the same proportions at every DPI and whatever the height of the title bar.
#pragma once

#include <vector>

#include "com/owned.hpp"
#include "platform/screen.hpp"

namespace win32 {

// The client area at full height, in dialog units, as in the resource.
inline constexpr int kClientUnitsWide = 396;
inline constexpr int kClientUnitsHigh = 239;
// Where the pages stand in it.
inline constexpr POINT kPageUnits{6, 24};

class Layout {
  public:
    // Notes the places of a dialog's children. Call it once, before anything moves them.
    void Collect(HWND dialog);
    // Adds a window that stands at a place of its own.
    void Add(HWND window, const RECT& units) { places_.push_back({window, units}); }
    [[nodiscard]] std::size_t Count() const { return places_.size(); }
    // Puts the noted windows from that one on, counted from 0, to their places in a client area of
    // `width` by `height` pixels and gives them `font`.
    void Place(int width, int height, HFONT font, std::size_t first = 0) const;

  private:
    struct PlacedWindow {
        HWND window;
        RECT units;
    };
    std::vector<PlacedWindow> places_;
};

using platform::Pixels;
using platform::Scaled;
using platform::Twips;

// The DPI that the window is laid out for: its monitor's, times the person's "text size".
UINT LayoutDpi();
// The same for a window on a monitor of that DPI; reads the text size anew.
UINT LayoutDpiOf(UINT monitor_dpi);
// Says what the monitor's DPI is, and reads the text size anew.
void NoteMonitorDpi(UINT monitor_dpi);

// The system's font for messages and dialogs on a monitor of that DPI, no larger than the layout
// has room for. It follows the text size by itself.
com::Owned<HFONT> MessageFont(UINT monitor_dpi);
// An icon of the resources with an edge of `size` pixels.
com::Owned<HICON> LoadIconOfSize(int resource, int size);

// Where a window of that place stands without reaching beyond the monitors' work areas.
RECT MovedIn(const RECT& window);

} // namespace win32
