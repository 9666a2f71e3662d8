#include "text/text.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <system_error>

namespace text {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualIgnoringCase(char left, char right) {
    return Lower(left) == Lower(right);
}

// The small letter of a capital one among the characters from U+0080 to U+07FF, which take two
// bytes.
unsigned SmallLetter(unsigned character) {
    const auto is_in = [character](unsigned first, unsigned last) {
        return first <= character && character <= last;
    };
    if (is_in(0xC0, 0xDE) && character != 0xD7) { // but the multiplication sign
        return character + 0x20;
    }
    if (character == 0x178) { // whose small letter is in Latin-1
        return 0xFF;
    }
    // Pairs of a capital letter and its small one.
    const bool even_first =
        (is_in(0x100, 0x137) && character != 0x130 && character != 0x131) || is_in(0x14A, 0x177);
    const bool odd_first = is_in(0x139, 0x148) || is_in(0x179, 0x17E);
    if (even_first) {
        return character | 1U;
    }
    return odd_first ? character + (character & 1U) : character;
}

struct LeadingPart {
    bool is_number = false;
    double value = 0;
    std::string_view rest;
};

LeadingPart ReadNumber(std::string_view whole) {
    const std::size_t first = whole.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    whole.remove_prefix(first);
    const bool negative = whole.front() == '-';
    if (negative || whole.front() == '+') {
        whole.remove_prefix(1);
    }
    // std::from_chars reads the number but would also take "inf" and "nan".
    const bool starts_with_point = whole.size() > 1 && whole[0] == '.' && IsDigit(whole[1]);
    if (whole.empty() || !(IsDigit(whole.front()) || starts_with_point)) {
        return {};
    }
    double magnitude = 0;
    const char* const end = whole.data() + whole.size();
    const auto [after, error] = std::from_chars(whole.data(), end, magnitude);
    if (error != std::errc()) {
        return {};
    }
    return {true, negative ? -magnitude : magnitude, {after, end}};
}

} // namespace

std::vector<std::string_view> Split(std::string_view whole, std::string_view separator) {
    std::vector<std::string_view> pieces;
    std::size_t start = 0;
    for (std::size_t end = whole.find(separator); end != std::string_view::npos;
         end = whole.find(separator, start)) {
        pieces.push_back(whole.substr(start, end - start));
        start = end + separator.size();
    }
    pieces.push_back(whole.substr(start));
    return pieces;
}

std::vector<std::string_view> Lines(std::string_view file) {
    const bool has_pairs = file.find("\r\n") != std::string_view::npos;
    auto lines = Split(file, has_pairs ? "\r\n" : "\n");
    if (lines.back().empty()) {
        lines.pop_back();
    }
    return lines;
}

std::string WithLineFeeds(std::string_view whole) {
    std::string changed;
    for (const std::string_view piece : Split(whole, "\r\n")) {
        if (piece.data() != whole.data()) {
            // More carriage returns before the pair would make a pair with the line feed.
            changed.erase(changed.find_last_not_of('\r') + 1);
            changed += '\n';
        }
        changed += piece;
    }
    return changed;
}

std::string Escaped(std::string_view whole) {
    std::string escaped;
    for (const char c : whole) {
        switch (c) {
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        case '\t':
            escaped += "\\t";
            break;
        case '\\':
            escaped += "\\\\";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string Unescaped(std::string_view escaped) {
    std::string whole;
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        if (escaped[i] != '\\' || i + 1 == escaped.size()) {
            whole += escaped[i];
            continue;
        }
        const char c = escaped[++i];
        whole += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c;
    }
    return whole;
}

std::string_view TrimBlanks(std::string_view whole) {
    const std::size_t first = whole.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return whole.substr(first, whole.find_last_not_of(' ') - first + 1);
}

std::string_view WithoutFirstCharacter(std::string_view whole) {
    constexpr unsigned kContinuationMask = 0xC0;
    constexpr unsigned kContinuation = 0x80;
    std::size_t second = std::min<std::size_t>(1, whole.size());
    while (second < whole.size() &&
           (static_cast<unsigned char>(whole[second]) & kContinuationMask) == kContinuation) {
        ++second;
    }
    return whole.substr(second);
}

double LeadingNumber(std::string_view whole) {
    return ReadNumber(whole).value;
}

std::optional<double> Number(std::string_view whole) {
    const LeadingPart part = ReadNumber(whole);
    if (!part.is_number || !TrimBlanks(part.rest).empty()) {
        return std::nullopt;
    }
    return part.value;
}

std::string FourDigits(std::size_t number) {
    constexpr std::size_t kDigits = 4;
    std::string digits = std::to_string(number);
    if (digits.size() < kDigits) {
        digits.insert(0, kDigits - digits.size(), '0');
    }
    return digits;
}

std::string PlainDecimal(double number) {
    if (number == 0) {
        return "0"; // and not "-0"
    }
    constexpr int kDigitsAfterTheFirst = 14;
    std::array<char, 32> written{}; // -d.dddddddddddddde-308
    auto* const end =
        std::to_chars(written.data(), written.data() + written.size(), std::abs(number),
                      std::chars_format::scientific, kDigitsAfterTheFirst)
            .ptr;
    const std::string_view scientific(written.data(), end);
    const std::size_t mark = scientific.find('e');
    int exponent = 0; // from_chars takes no plus sign
    std::from_chars(scientific.data() + mark + (scientific[mark + 1] == '+' ? 2 : 1), end,
                    exponent);
    std::string digits;
    digits += scientific.front();
    digits += scientific.substr(2, mark - 2);
    digits.erase(digits.find_last_not_of('0') + 1);

    std::string plain = number < 0 ? "-" : "";
    if (exponent < 0) {
        return plain + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    }
    const auto before_point = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= before_point) {
        return plain + digits + std::string(before_point - digits.size(), '0');
    }
    return plain + digits.substr(0, before_point) + "." + digits.substr(before_point);
}

std::string FixedDecimal(double number, int digits) {
    std::array<char, 400> written{}; // for every double
    auto* const end = std::to_chars(written.data(), written.data() + written.size(), number,
                                    std::chars_format::fixed, digits)
                          .ptr;
    return {written.data(), end};
}

bool StartsWithIgnoringCase(std::string_view whole, std::string_view part) {
    return whole.size() >= part.size() &&
           std::equal(part.begin(), part.end(), whole.begin(), EqualIgnoringCase);
}

bool EqualsIgnoringCase(std::string_view left, std::string_view right) {
    return left.size() == right.size() && StartsWithIgnoringCase(left, right);
}

bool ContainsIgnoringCase(std::string_view whole, std::string_view part) {
    return part.empty() || std::search(whole.begin(), whole.end(), part.begin(), part.end(),
                                       EqualIgnoringCase) != whole.end();
}

std::string WithSmallLetters(std::string_view whole) {
    constexpr unsigned kFirstOfTwo = 0xC0; // with the upper five bits of the character
    constexpr unsigned kSecondOfTwo = 0x80;
    constexpr unsigned kLowerBits = 0x3F;
    std::string small;
    small.reserve(whole.size());
    for (std::size_t at = 0; at < whole.size(); ++at) {
        const auto first = static_cast<unsigned char>(whole[at]);
        const bool is_two_bytes = first >= kFirstOfTwo && first < 0xE0 && at + 1 < whole.size();
        if (!is_two_bytes) {
            small += Lower(whole[at]);
            continue;
        }
        const auto second = static_cast<unsigned char>(whole[++at]);
        const unsigned letter = SmallLetter((first - kFirstOfTwo) << 6U | (second & kLowerBits));
        small += static_cast<char>(kFirstOfTwo | letter >> 6U);
        small += static_cast<char>(kSecondOfTwo | (letter & kLowerBits));
    }
    return small;
}

std::string_view ProgramOf(std::string_view command_line) {
    constexpr std::string_view kExtension = ".exe";
    command_line = TrimBlanks(command_line);
    if (command_line.starts_with('"')) {
        command_line.remove_prefix(1);
        return command_line.substr(0, command_line.find('"'));
    }
    for (std::size_t at = 0; at < command_line.size(); ++at) {
        if (StartsWithIgnoringCase(command_line.substr(at), kExtension)) {
            return command_line.substr(0, at + kExtension.size());
        }
    }
    return command_line;
}

bool HasArgument(std::string_view command_line, std::string_view argument) {
    std::string word;
    bool quoted = false;
    bool is_program = true;
    for (const char c : std::string(TrimBlanks(command_line)) + ' ') {
        if (c == '"') {
            quoted = !quoted;
        } else if (c != ' ' || quoted) {
            word += c;
        } else {
            if (!is_program && word == argument) {
                return true;
            }
            is_program = false;
            word.clear();
        }
    }
    return false;
}

} // namespace text
