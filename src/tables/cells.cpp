#include "tables/cells.hpp"

#include <cmath>
#include <cstdlib>
#include <limits>

#include "automation/run_time_error.hpp"
#include "shell/explanations.hpp"
#include "text/text.hpp"

namespace tables {

int WholeNumber(double number) {
    const double rounded = std::nearbyint(number);
    if (!(std::abs(rounded) <= std::numeric_limits<int>::max())) {
        throw automation::Overflow();
    }
    return static_cast<int>(rounded);
}

std::size_t FieldOfSlot(const std::string& slot, std::size_t fields) {
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
    if (field >= fields) {
        throw refuse(automation::InvalidPropertyValue());
    }
    return field;
}

automation::Value CellValue(const PartTexts& part, const std::string& slot) {
    const std::size_t field = FieldOfSlot(slot, part.size());
    if (field == controls::kPosition) {
        return text::LeadingNumber(part[field]);
    }
    return part[field];
}

} // namespace tables
