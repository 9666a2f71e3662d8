#include "automation/number_texts.hpp"

#include "text/text.hpp"

namespace automation {

std::optional<Array> TextsAsNumbers(const Member& member, const Array& arguments) {
    if (text::EqualsIgnoringCase(member.name, "Item")) {
        return std::nullopt;
    }
    std::optional<Array> numbers;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto* written = std::get_if<std::string>(&arguments[i].storage());
        const auto number = written != nullptr ? text::Number(*written) : std::nullopt;
        if (number) {
            if (!numbers) {
                numbers = arguments;
            }
            (*numbers)[i] = *number;
        }
    }
    return numbers;
}

} // namespace automation
