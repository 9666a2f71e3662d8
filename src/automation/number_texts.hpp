// Texts that stand for numbers among the arguments of a call.
#pragma once

#include <optional>

#include "automation/object.hpp"
#include "automation/value.hpp"

namespace automation {

// `arguments` of a call of `member` with every text that as a whole is a number, with "." as its
// decimal separator, as that number; nothing where there is no such text. What a collection's Item
// is asked for stays a text: it is a name, and as a number it would mean another element.
std::optional<Array> TextsAsNumbers(const Member& member, const Array& arguments);

} // namespace automation
