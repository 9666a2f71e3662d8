// Lengths and places on the screen, as plain arithmetic: how many pixels something of the design
// has, and where a window must stand to be seen whole.
#pragma once

#include <vector>

namespace platform {

inline constexpr unsigned kDesignDpi = 96;   // of design pixels
inline constexpr int kTwipsPerInch = 1440;   // of places and sizes of the form
inline constexpr int kDesignTextSize = 100;  // the person's "text size", in per cent
inline constexpr int kLargestTextSize = 150; // that the window follows

// `length` times `numerator` by `denominator`, rounded to the nearest.
int Proportion(int length, int numerator, int denominator);

// The DPI that the design is laid out for: the monitor's, and by as much more as the person has
// enlarged all texts.
unsigned LayoutDpi(unsigned monitor_dpi, int text_size);

// Design pixels as pixels at `dpi`.
inline int Scaled(int design_pixels, unsigned dpi) {
    return Proportion(design_pixels, static_cast<int>(dpi), static_cast<int>(kDesignDpi));
}

// Twips as pixels at `dpi`, and back.
inline int Pixels(int twips, unsigned dpi) {
    return Proportion(twips, static_cast<int>(dpi), kTwipsPerInch);
}
inline int Twips(int pixels, unsigned dpi) {
    return Proportion(pixels, kTwipsPerInch, static_cast<int>(dpi));
}

// A part of the screen in pixels; right and bottom are the first that do not belong to it.
struct Area {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    friend bool operator==(const Area&, const Area&) = default;
};

// Where a window stands that may not reach beyond the monitors' work areas: in its place where it
// does not, else moved into the one that holds most of it, or is nearest. A window that is larger
// than that begins at its left or upper edge, so that the title bar is in reach.
Area MovedIn(const Area& window, const std::vector<Area>& work_areas);

// Two windows side by side in a work area: the right one keeps its size, the left one has the rest
// at full height. Where that is less than a third, it has a third, and the right one covers some of
// it.
struct SideBySide {
    Area left;
    Area right;
};
SideBySide Beside(const Area& right, const Area& work_area);

} // namespace platform
