// The drawing area of the preview: the table to scale, as much of it as is in sight. It scrolls by
// wheel, bars and keys, and zooms with Ctrl from the whole table to its real size.
#pragma once

#include <optional>
#include <string>

#include <windows.h>

#include "com/owned.hpp"
#include "tables/layout.hpp"

namespace win32 {

class PreviewCanvas {
  public:
    PreviewCanvas(HWND parent, int id);
    ~PreviewCanvas();
    PreviewCanvas(const PreviewCanvas&) = delete;
    PreviewCanvas& operator=(const PreviewCanvas&) = delete;

    [[nodiscard]] HWND Window() const { return window_; }
    void Show(tables::TableLayout layout);
    // Of the monitor: what the real size is there; and the font of notes.
    void SetDpi(UINT monitor_dpi, UINT layout_dpi, HFONT font);

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM w, LPARAM l);
    std::optional<LRESULT> OnMessage(UINT message, WPARAM w, LPARAM l);
    void OnScroll(int bar, int request);
    void OnWheel(int delta, bool with_control, bool sideways, POINT at);
    bool OnKey(WPARAM key);
    void ScrollBy(double right, double down);
    void Zoom(double factor, POINT about);
    void Arrange();
    void MakeFonts();
    void SetBar(int bar, double extent, double page, double at) const;
    void Paint();
    void PaintTable(HDC dc, const RECT& area) const;
    void PaintRow(HDC dc, int row, bool with_texts) const;
    void PaintText(HDC dc, const tables::LaidOutCell& cell, const RECT& box) const;
    void PaintAnchor(HDC dc) const;
    void PaintNote(HDC dc, const RECT& area) const;
    [[nodiscard]] SIZE Client() const;
    [[nodiscard]] double RealScale() const;
    [[nodiscard]] double WholeScale() const;
    [[nodiscard]] double Margin() const;
    // Pixels of the client area for millimetres from the table's upper left corner.
    [[nodiscard]] int X(double millimetres) const;
    [[nodiscard]] int Y(double millimetres) const;
    [[nodiscard]] com::Owned<HFONT> FontOfSize(double size) const;

    HWND window_;
    tables::TableLayout layout_;
    UINT monitor_dpi_ = USER_DEFAULT_SCREEN_DPI;
    UINT layout_dpi_ = USER_DEFAULT_SCREEN_DPI;
    HFONT note_font_ = nullptr;  // not ours
    std::optional<double> zoom_; // pixels per millimetre; none for the whole table
    double scale_ = 1;
    double scroll_x_ = 0; // pixels
    double scroll_y_ = 0;
    double origin_x_ = 0; // of the table's upper left corner in the client area, in pixels
    double origin_y_ = 0;
    int wheel_rest_ = 0;
    com::Owned<HFONT> header_font_;
    com::Owned<HFONT> body_font_;
    // What the fonts were made for.
    struct Fonts {
        std::string face;
        double header = 0;
        double body = 0;
        double scale = 0;
        friend bool operator==(const Fonts&, const Fonts&) = default;
    };
    Fonts fonts_;
};

// How wide the characters of a font are.
tables::CharacterWidths ReadCharacterWidths(const std::string& face);

} // namespace win32
