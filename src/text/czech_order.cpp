#include "text/czech_order.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <unordered_map>

namespace text {

namespace {

// What a character is, from the one that stands first: each kind's weights follow its byte.
constexpr char kEnd = 0; // of a level: whatever goes on is later
constexpr char kSign = 2;
constexpr char kNumber = 3;
constexpr char kLetter = 4;
constexpr char kOtherLetter = 5;

// Within a level, for each letter.
constexpr char kSmall = 1;
constexpr char kCapital = 2;

constexpr std::array<std::string_view, 31> kAlphabet{
    "a", "b", "c", "č", "d", "e", "f", "g", "h", "ch", "i", "j", "k", "l", "m", "n",
    "o", "p", "q", "r", "ř", "s", "š", "t", "u", "v",  "w", "x", "y", "z", "ž"};

// Accented letters, small and capital, by the letter that they stand with. The accents of each
// follow one another.
struct Accented {
    std::string_view letter;
    std::string_view lower;
    std::string_view upper;
};
constexpr std::array kAccented{
    Accented{"a", "áàâǎăäãåāą", "ÁÀÂǍĂÄÃÅĀĄ"},
    Accented{"c", "ćĉċç", "ĆĈĊÇ"},
    Accented{"č", "č", "Č"},
    Accented{"d", "ďđ", "ĎĐ"},
    Accented{"e", "éèêěĕëėēę", "ÉÈÊĚĔËĖĒĘ"},
    Accented{"g", "ĝğġģ", "ĜĞĠĢ"},
    Accented{"h", "ĥħ", "ĤĦ"},
    Accented{"i", "íìîĭïĩīį", "ÍÌÎĬÏĨĪĮ"},
    Accented{"j", "ĵ", "Ĵ"},
    Accented{"k", "ķ", "Ķ"},
    Accented{"l", "ĺľļŀł", "ĹĽĻĿŁ"},
    Accented{"n", "ńňñņ", "ŃŇÑŅ"},
    Accented{"o", "óòôŏöőõōø", "ÓÒÔŎÖŐÕŌØ"},
    Accented{"r", "ŕŗ", "ŔŖ"},
    Accented{"ř", "ř", "Ř"},
    Accented{"s", "śŝşș", "ŚŜŞȘ"},
    Accented{"š", "š", "Š"},
    Accented{"t", "ťţțŧ", "ŤŢȚŦ"},
    Accented{"u", "úůùûŭüűũūų", "ÚŮÙÛŬÜŰŨŪŲ"},
    Accented{"w", "ŵ", "Ŵ"},
    Accented{"y", "ýŷÿ", "ÝŶŸ"},
    Accented{"z", "źż", "ŹŻ"},
    Accented{"ž", "ž", "Ž"},
};

struct Letter {
    char weight = 0;
    char accent = 0;
    char size = kSmall;
};

// The first character of `rest`, which is not empty, and the bytes that it takes. A byte that is no
// UTF-8 is a character of its own, beyond all others.
struct Character {
    std::uint32_t code = 0;
    std::size_t bytes = 1;
};

Character FirstCharacter(std::string_view rest) {
    constexpr std::uint32_t kBeyond = 0x110000;
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(rest[at]); };
    const std::uint32_t first = byte(0);
    if (first < 0x80) {
        return {first, 1};
    }
    const std::size_t bytes = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || bytes > rest.size()) {
        return {kBeyond + first, 1};
    }
    std::uint32_t code = first & (0x7FU >> bytes);
    for (std::size_t at = 1; at < bytes; ++at) {
        if ((byte(at) & 0xC0U) != 0x80) {
            return {kBeyond + first, 1};
        }
        code = code << 6 | (byte(at) & 0x3FU);
    }
    return {code, bytes};
}

char WeightOf(std::string_view letter) {
    const auto before =
        std::ranges::distance(kAlphabet.begin(), std::ranges::find(kAlphabet, letter));
    return static_cast<char>(before + 1);
}

using Letters = std::unordered_map<std::uint32_t, Letter>;

void AddAccented(Letters& letters, const Accented& row, std::string_view accented, char size) {
    // A letter of the alphabet with an accent has no other one before it.
    char accent = row.letter.size() == 1 ? 2 : 1;
    while (!accented.empty()) {
        const Character character = FirstCharacter(accented);
        letters[character.code] = {WeightOf(row.letter), accent, size};
        accented.remove_prefix(character.bytes);
        ++accent;
    }
}

const Letters& AllLetters() {
    static const Letters letters = [] {
        Letters all;
        for (char lower = 'a'; lower <= 'z'; ++lower) {
            const char weight = WeightOf(std::string_view(&lower, 1));
            all[static_cast<std::uint32_t>(lower)] = {weight, 1, kSmall};
            all[static_cast<std::uint32_t>(lower - 'a' + 'A')] = {weight, 1, kCapital};
        }
        for (const Accented& row : kAccented) {
            AddAccented(all, row, row.lower, kSmall);
            AddAccented(all, row, row.upper, kCapital);
        }
        return all;
    }();
    return letters;
}

bool IsOrderedDigit(char c) {
    return c >= '0' && c <= '9';
}

void AppendNumber(std::string& key, std::size_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        key += static_cast<char>(number >> shift & 0xFFU);
    }
}

// The levels of a key, each of which counts where those before it are alike.
struct Levels {
    std::string letters_and_numbers;
    std::string accents;
    std::string sizes;
    std::string zeros;

    // The digits from the front of `rest`.
    void TakeDigits(std::string_view& rest) {
        const std::size_t end = std::min(rest.find_first_not_of("0123456789"), rest.size());
        std::string_view digits = rest.substr(0, end);
        rest.remove_prefix(digits.size());
        const std::size_t leading = std::min(digits.find_first_not_of('0'), digits.size());
        digits.remove_prefix(leading);
        letters_and_numbers += kNumber;
        AppendNumber(letters_and_numbers, digits.size());
        letters_and_numbers += digits;
        AppendNumber(zeros, leading);
    }

    void Add(const Letter& letter) {
        letters_and_numbers += kLetter;
        letters_and_numbers += letter.weight;
        accents += letter.accent;
        sizes += letter.size;
    }

    void AddOther(std::uint32_t code) {
        constexpr std::uint32_t kAscii = 0x80;
        constexpr std::uint32_t kFirstMark = 0x300; // accents that stand behind their letter
        constexpr std::uint32_t kLastMark = 0x36F;
        if (code >= kFirstMark && code <= kLastMark) {
            constexpr std::uint32_t kAccents = 0x80;
            accents += static_cast<char>(kAccents + (code - kFirstMark));
        } else if (code < kAscii) {
            letters_and_numbers += kSign;
            letters_and_numbers += static_cast<char>(code);
        } else {
            letters_and_numbers += kOtherLetter;
            AppendNumber(letters_and_numbers, code);
        }
    }

    // The letter or sign from the front of `rest`.
    void TakeCharacter(std::string_view& rest) {
        if (rest.size() > 1 && (rest[0] == 'c' || rest[0] == 'C') &&
            (rest[1] == 'h' || rest[1] == 'H')) {
            const int capitals = (rest[0] == 'C' ? 1 : 0) + (rest[1] == 'H' ? 1 : 0);
            static const char kWeight = WeightOf("ch");
            Add({kWeight, 1, static_cast<char>(kSmall + capitals)});
            rest.remove_prefix(2);
            return;
        }
        const Character character = FirstCharacter(rest);
        rest.remove_prefix(character.bytes);
        if (const auto found = AllLetters().find(character.code); found != AllLetters().end()) {
            Add(found->second);
        } else if (character.code == U'ß') {
            Add(AllLetters().at('s'));
            Add(AllLetters().at('s'));
        } else {
            AddOther(character.code);
        }
    }
};

} // namespace

std::string CzechOrderKey(std::string_view name) {
    Levels levels;
    while (!name.empty()) {
        if (IsOrderedDigit(name.front())) {
            levels.TakeDigits(name);
        } else {
            levels.TakeCharacter(name);
        }
    }
    return levels.letters_and_numbers + kEnd + levels.accents + kEnd + levels.sizes + kEnd +
           levels.zeros;
}

} // namespace text
