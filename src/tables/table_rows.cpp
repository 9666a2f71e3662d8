#include "tables/table_rows.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "automation/run_time_error.hpp"
#include "shell/explanations.hpp"
#include "text/text.hpp"

namespace tables {

namespace {

// The name, then the fields by their numbers.
constexpr std::size_t kFields = controls::kNote + 1;

} // namespace

int WholeNumber(double number) {
    const double rounded = std::nearbyint(number);
    if (!(std::abs(rounded) <= std::numeric_limits<int>::max())) {
        throw automation::Overflow();
    }
    return static_cast<int>(rounded);
}

std::size_t FieldOf(const std::string& slot) {
    const auto refuse = [&slot](automation::RunTimeError error) {
        return automation::WithReason(std::move(error), shell::NoColumnOfTheList(slot));
    };
    const auto number = slot.empty() ? 0 : text::Number(slot);
    if (!number) {
        throw refuse(automation::TypeMismatch());
    }
    if (*number < 0) {
        throw refuse(automation::InvalidPropertyValue());
    }
    const auto field = static_cast<std::size_t>(WholeNumber(*number));
    if (field >= kFields) {
        throw refuse(automation::InvalidPropertyValue());
    }
    return field;
}

automation::Value FieldValue(const PartTexts& part, std::size_t field) {
    if (field == controls::kPosition) {
        return text::LeadingNumber(part[field]);
    }
    return part[field];
}

automation::Value CellValue(const PartTexts& part, const std::string& slot) {
    return FieldValue(part, FieldOf(slot));
}

std::string TextInCell(const automation::Value& value) {
    if (!value.Is<double>()) {
        return value.AsText();
    }
    constexpr int kDigits = 15;
    std::array<char, 40> written{};
    auto* const end = std::to_chars(written.data(), written.data() + written.size(), value.AsReal(),
                                    std::chars_format::general, kDigits)
                          .ptr;
    std::string text(written.data(), end);
    std::ranges::replace(text, 'e', 'E');
    return text;
}

int RowsForTheList(const Parts& parts, const Configuration& configuration) {
    return WholeNumber(static_cast<double>(parts.rows.size()) + 1 +
                       WholeNumber(configuration.free_rows));
}

} // namespace tables
