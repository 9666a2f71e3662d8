#include "quoted.hpp"

namespace simulator {

namespace {

constexpr std::string_view kLetters = "nrt\\\"";
constexpr std::string_view kMeanings = "\n\r\t\\\"";

} // namespace

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (const auto meaning = kMeanings.find(c); meaning != std::string_view::npos) {
            quoted += '\\';
            quoted += kLetters[meaning];
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

std::optional<char> Escaped(char letter) {
    const auto found = kLetters.find(letter);
    return found != std::string_view::npos ? std::optional(kMeanings[found]) : std::nullopt;
}

} // namespace simulator
