// What in a configuration text does probably not mean what the person meant: for the list beside
// the preview, and for nothing else. The creation of tables takes the text as it always did.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tables {

struct Hint {
    std::size_t line = 0;   // counted from 1
    std::size_t offset = 0; // of its place in the text, in bytes
    std::size_t length = 0;
    std::string sentence;                   // Czech
    std::optional<std::string> replacement; // what puts the place right
};

// In the order of their places; of those that come after some hundreds nobody would read any. Lines
// that a "-" switches off give none.
inline constexpr std::size_t kMostHints = 200;
std::vector<Hint> HintsFor(std::string_view configuration);

} // namespace tables
