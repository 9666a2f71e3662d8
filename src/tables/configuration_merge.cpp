#include "tables/configuration_merge.hpp"

#include <algorithm>
#include <array>
#include <optional>

#include "tables/configuration.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kSeparator = ";";

// That table creation reads.
constexpr std::array<std::string_view, 13> kKeys{
    "/razeni", "/vyska1",   "/vyska2",    "/sirka",     "/sirka1",       "/hlavicka",   "/pozice",
    "/volny",  "/fontname", "/fontsize1", "/fontsize2", "/tlouska_cary", "/AnchorPoint"};
constexpr std::array<std::string_view, 4> kListKeys{"/razeni", "/sirka", "/sirka1", "/hlavicka"};

// As "Parametry" writes it.
constexpr std::string_view kReadLineWidth = "/tlouska_cary =";

bool IsAmong(const auto& keys, std::string_view key) {
    return std::ranges::find(keys, key) != keys.end();
}

// A line that gives its key a value.
struct Setting {
    std::string key;
    std::string values; // with the separators between them

    [[nodiscard]] std::string Line() const { return key + std::string(kSeparator) + values; }
};

// Nothing where the line has no value.
std::optional<Setting> SettingOf(std::string_view line) {
    const std::size_t separator = line.find(kSeparator);
    if (separator == std::string_view::npos) {
        return std::nullopt;
    }
    return Setting{.key = std::string(line.substr(0, separator)),
                   .values = std::string(line.substr(separator + kSeparator.size()))};
}

// The settings that a line of the layout stands for.
std::vector<Setting> SettingsOf(std::string_view line) {
    if (line.starts_with(kReadLineWidth)) {
        return {
            {.key = "/tlouska_cary", .values = std::string(line.substr(kReadLineWidth.size()))}};
    }
    const auto setting = SettingOf(line);
    if (!setting) {
        return {};
    }
    if (setting->key == "/fontsize") {
        return {{.key = "/fontsize1", .values = setting->values},
                {.key = "/fontsize2", .values = setting->values}};
    }
    const bool is_read = IsAmong(kKeys, setting->key);
    const bool says_nothing = setting->key == "/fontname" && setting->values.empty();
    return is_read && !says_nothing ? std::vector{*setting} : std::vector<Setting>();
}

// Why table creation would end at it with an error; empty where it would not.
std::string Refused(const Setting& setting) {
    const std::size_t values = text::Split(setting.values, kSeparator).size();
    if (IsAmong(kListKeys, setting.key) && values > kSlots) {
        return std::to_string(values) + " hodnot";
    }
    return setting.key == "/pozice" && values < 2 ? "bez Y" : "";
}

// The last line of that key; nothing where there is none.
std::optional<std::size_t> LastLineOf(const std::vector<std::string>& lines, std::string_view key) {
    for (std::size_t line = lines.size(); line > 0; --line) {
        const auto setting = SettingOf(lines[line - 1]);
        if (setting && setting->key == key) {
            return line - 1;
        }
    }
    return std::nullopt;
}

void Put(std::vector<std::string>& lines, const Setting& setting) {
    auto place = LastLineOf(lines, setting.key);
    if (!place && setting.key == "/fontname") {
        place = LastLineOf(lines, "-/fontname");
    }
    if (place) {
        lines[*place] = setting.Line();
        return;
    }
    // Behind the last line break stands a line of its own, which is empty as a rule.
    if (!lines.back().empty()) {
        lines.emplace_back();
    }
    lines.insert(lines.end() - 1, setting.Line());
}

} // namespace

MergedConfiguration MergeConfiguration(std::string_view configuration, std::string_view layout) {
    MergedConfiguration merged;
    const auto present = text::Split(configuration, kLineEnd);
    std::vector<std::string> lines(present.begin(), present.end());
    for (const std::string_view line : text::Split(layout, kLineEnd)) {
        for (const Setting& setting : SettingsOf(line)) {
            const std::string refused = Refused(setting);
            if (!refused.empty()) {
                merged.left_out.push_back(setting.key + " (" + refused + ")");
            } else {
                Put(lines, setting);
                ++merged.lines;
            }
        }
    }
    for (std::size_t line = 0; line < lines.size(); ++line) {
        merged.text += lines[line];
        merged.text += line + 1 < lines.size() ? kLineEnd : "";
    }
    return merged;
}

} // namespace tables
