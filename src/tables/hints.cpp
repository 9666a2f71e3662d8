#include "tables/hints.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <utility>

#include "controls/form1.hpp"
#include "tables/configuration.hpp"
#include "tables/drawing_action.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

// What the values of a key have to be.
enum class Wanted {
    kText,
    kNumber,
    kLength, // a number that is not below zero
    kCount,  // the same, of rows
    kColumn, // the number of a field of the list, or nothing
    kThickness,
    kAnchor,
};

struct KnownKey {
    std::string_view key;
    Wanted wanted = Wanted::kText;
    bool is_list = false;
};
constexpr std::array kKnownKeys{
    KnownKey{"/razeni", Wanted::kColumn, true}, KnownKey{"/vyska1", Wanted::kLength},
    KnownKey{"/vyska2", Wanted::kLength},       KnownKey{"/sirka", Wanted::kLength, true},
    KnownKey{"/sirka1", Wanted::kLength, true}, KnownKey{"/hlavicka", Wanted::kText, true},
    KnownKey{"/pozice", Wanted::kNumber},       KnownKey{"/volny", Wanted::kCount},
    KnownKey{"/fontname", Wanted::kText},       KnownKey{"/fontsize1", Wanted::kLength},
    KnownKey{"/fontsize2", Wanted::kLength},    KnownKey{"/tlouska_cary", Wanted::kThickness},
    KnownKey{"/AnchorPoint", Wanted::kAnchor},
};

constexpr int kLastField = controls::kNote; // of a row of the list
constexpr double kThickestLineCode = 63;
constexpr double kLastAnchorCodeThereIs = 8;

const KnownKey* Known(std::string_view key) {
    const auto* const found = std::ranges::find(kKnownKeys, key, &KnownKey::key);
    return found == kKnownKeys.end() ? nullptr : found;
}

char LowerLetter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// How many letters are to be put in, taken out or changed, the case of letters aside.
std::size_t Distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= one.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i);
        for (std::size_t j = 1; j <= other.size(); ++j) {
            const std::size_t changed =
                diagonal + (LowerLetter(one[i - 1]) == LowerLetter(other[j - 1]) ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

// The known key that is most like this one, where one is like it at all.
std::optional<std::string_view> MeantKey(std::string_view key) {
    constexpr std::size_t kLongest = 40; // of what may be one
    constexpr std::size_t kMostChanges = 2;
    if (key.size() > kLongest) {
        return std::nullopt;
    }
    const auto distance = [&key](const KnownKey& known) {
        return Distance(text::TrimBlanks(key), known.key);
    };
    const KnownKey& nearest = *std::ranges::min_element(kKnownKeys, {}, distance);
    return distance(nearest) <= kMostChanges ? std::optional(nearest.key) : std::nullopt;
}

// A value with one comma between digits, and nothing else that is no number: with the point.
std::optional<std::string> WithDecimalPoint(std::string_view value) {
    const std::size_t comma = value.find(',');
    const auto is_digit = [value](std::size_t at) {
        return at < value.size() && value[at] >= '0' && value[at] <= '9';
    };
    if (comma == std::string_view::npos || comma == 0 || !is_digit(comma - 1) ||
        !is_digit(comma + 1)) {
        return std::nullopt;
    }
    std::string with_point(value);
    with_point[comma] = '.';
    return text::Number(with_point) ? std::optional(with_point) : std::nullopt;
}

std::string InQuotes(std::string_view words) {
    return "„" + std::string(words) + "“";
}

class Finder {
  public:
    explicit Finder(std::string_view whole) : whole_(whole) {}

    std::vector<Hint> Find() {
        for (const std::string_view line : text::Split(whole_, "\r\n")) {
            ++line_;
            CheckLine(line);
            if (hints_.size() >= kMostHints) {
                break;
            }
        }
        return std::move(hints_);
    }

  private:
    void CheckLine(std::string_view line) {
        const auto fields = text::Split(line, ";");
        const std::string_view key = fields[0];
        if (text::TrimBlanks(line).empty() || key.starts_with('-')) {
            return;
        }
        const KnownKey* const known = Known(key);
        if (known == nullptr) {
            CheckUnknown(line, key, fields.size());
            return;
        }
        if (fields.size() < 2) {
            Add(line, "Řádek se nepoužije: za klíčem chybí středník a hodnota.");
            return;
        }
        if (known->is_list && fields.size() - 1 > kSlots) {
            const std::string_view from = fields[kSlots + 1];
            Add(line.substr(static_cast<std::size_t>(from.data() - line.data())),
                "Řádek má " + std::to_string(fields.size() - 1) + " hodnot, nejvýš je " +
                    std::to_string(kSlots) + "; tabulka by nevznikla.");
        }
        std::size_t values = known->is_list ? kColumns : 1; // that are used
        if (key == "/pozice") {
            values = 2;
            if (fields.size() - 1 < values) {
                AddPositionWithoutY(fields[1]);
                return;
            }
        }
        for (std::size_t value = 1; value <= std::min(values, fields.size() - 1); ++value) {
            CheckValue(fields[value], known->wanted);
        }
    }

    void CheckUnknown(std::string_view line, std::string_view key, std::size_t fields) {
        std::string sentence = "Řádek se nepoužije";
        const auto meant = MeantKey(key);
        if (meant && fields > 1) {
            Add(key, sentence + ": klíč " + InQuotes(key) + " není, snad " + InQuotes(*meant) + ".",
                std::string(*meant));
        } else if (meant) {
            Add(line, sentence + ", snad měl začínat " + InQuotes(std::string(*meant) + ";") + ".");
        } else if (key.empty()) {
            Add(line, sentence + ": nezačíná klíčem.");
        } else {
            Add(key, sentence + ": klíč " + InQuotes(key) + " není.");
        }
    }

    void AddPositionWithoutY(std::string_view x) {
        std::optional<std::string> replacement;
        if (const std::size_t comma = x.find(',');
            comma != std::string_view::npos && WithDecimalPoint(x)) {
            replacement = std::string(x.substr(0, comma)) + ";" + std::string(x.substr(comma + 1));
        }
        Add(x, "Za /pozice chybí hodnota Y; tabulka by nevznikla.", std::move(replacement));
    }

    void CheckValue(std::string_view value, Wanted wanted) {
        if (wanted == Wanted::kText || (wanted == Wanted::kColumn && value.empty())) {
            return;
        }
        if (const auto with_point = WithDecimalPoint(value)) {
            Add(value, "Desetinná čárka v " + InQuotes(value) + ": má to být tečka.", with_point);
            return;
        }
        const auto number = text::Number(value);
        if (!number) {
            Add(value, NoNumber(value));
            return;
        }
        const std::string trouble = TroubleWith(*number, wanted);
        if (!trouble.empty()) {
            Add(value, InQuotes(value) + ": " + trouble);
        }
    }

    static std::string NoNumber(std::string_view value) {
        if (text::TrimBlanks(value).empty()) {
            return "Chybí číslo.";
        }
        if (value.find(',') != std::string_view::npos) {
            return InQuotes(value) +
                   " není číslo: hodnoty odděluje středník, desetinná místa tečka.";
        }
        return InQuotes(value) + " není číslo.";
    }

    // Empty where there is none.
    static std::string TroubleWith(double number, Wanted wanted) {
        const double whole = std::nearbyint(number);
        switch (wanted) {
        case Wanted::kLength:
            return number < 0 ? "Rozměr nesmí být záporný." : "";
        case Wanted::kCount:
            return whole < 0 ? "Počet řádků nesmí být záporný." : "";
        case Wanted::kColumn:
            return number < 0 || whole > kLastField
                       ? "Sloupec seznamu není, platí 0 až " + std::to_string(kLastField) + "."
                       : "";
        case Wanted::kThickness:
            return whole < 1 || whole > kThickestLineCode ? "Tloušťka čáry není, platí 1 až 63."
                                                          : "";
        case Wanted::kAnchor:
            return whole < 0 || whole > kLastAnchorCodeThereIs ? "Kód kotvy není, platí 0 až 8."
                                                               : "";
        default:
            return "";
        }
    }

    void Add(std::string_view place, std::string sentence,
             std::optional<std::string> replacement = std::nullopt) {
        hints_.push_back({.line = line_,
                          .offset = static_cast<std::size_t>(place.data() - whole_.data()),
                          .length = place.size(),
                          .sentence = std::move(sentence),
                          .replacement = std::move(replacement)});
    }

    std::string_view whole_;
    std::size_t line_ = 0;
    std::vector<Hint> hints_;
};

} // namespace

std::vector<Hint> HintsFor(std::string_view configuration) {
    auto hints = Finder(configuration).Find();
    std::ranges::stable_sort(hints, {}, &Hint::offset);
    hints.resize(std::min(hints.size(), kMostHints));
    return hints;
}

} // namespace tables
