#include "platform/screen.hpp"

#include <algorithm>
#include <tuple>

namespace platform {

namespace {

// How much of the one lies in the other, in pixels.
long long Common(const Area& one, const Area& other) {
    const long long width = std::min(one.right, other.right) - std::max(one.left, other.left);
    const long long height = std::min(one.bottom, other.bottom) - std::max(one.top, other.top);
    return width > 0 && height > 0 ? width * height : 0;
}

// Between two spans on one axis; 0 where they touch or overlap.
long long Gap(int first_from, int first_to, int second_from, int second_to) {
    return std::max({0, second_from - first_to, first_from - second_to});
}

long long Distance(const Area& one, const Area& other) {
    return Gap(one.left, one.right, other.left, other.right) +
           Gap(one.top, one.bottom, other.top, other.bottom);
}

// The start of a span of that length, as near to `from` as it fits between the two ends.
int Start(int from, int length, int first, int last) {
    return std::max(std::min(from, last - length), first);
}

} // namespace

int Proportion(int length, int numerator, int denominator) {
    const long long product = static_cast<long long>(length) * numerator;
    const long long half = denominator / 2;
    return static_cast<int>((product + (product < 0 ? -half : half)) / denominator);
}

unsigned LayoutDpi(unsigned monitor_dpi, int text_size) {
    return static_cast<unsigned>(
        Proportion(static_cast<int>(monitor_dpi),
                   std::clamp(text_size, kDesignTextSize, kLargestTextSize), kDesignTextSize));
}

Area MovedIn(const Area& window, const std::vector<Area>& work_areas) {
    long long seen = 0;
    for (const Area& work_area : work_areas) {
        seen += Common(window, work_area);
    }
    if (work_areas.empty() || seen >= Common(window, window)) {
        return window;
    }
    const Area& best = *std::ranges::max_element(work_areas, {}, [&](const Area& work_area) {
        return std::tuple(Common(window, work_area), -Distance(window, work_area));
    });
    const int width = window.right - window.left;
    const int height = window.bottom - window.top;
    const int left = Start(window.left, width, best.left, best.right);
    const int top = Start(window.top, height, best.top, best.bottom);
    return {left, top, left + width, top + height};
}

SideBySide Beside(const Area& right, const Area& work_area) {
    const int width = right.right - right.left;
    const int height = right.bottom - right.top;
    const int left = std::max(work_area.right - width, work_area.left);
    const int middle = (work_area.top + work_area.bottom - height) / 2;
    const int top = std::max(middle, work_area.top);
    const int third = work_area.left + (work_area.right - work_area.left) / 3;
    return {.left = {work_area.left, work_area.top, std::max(left, third), work_area.bottom},
            .right = {left, top, left + width, top + height}};
}

} // namespace platform
