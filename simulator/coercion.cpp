#include "coercion.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>

#include "automation/run_time_error.hpp"
#include "text/text.hpp"

namespace simulator {

using automation::Array;
using automation::ObjectPtr;
using automation::Reference;
using automation::TypeMismatch;
using automation::Value;

namespace {

constexpr std::string_view kNoBreakSpace = "\xC2\xA0";

// The whole text must be a number. Group separators are skipped, as the platform does: "12,5" is
// 125 where the decimal separator is the point.
double NumberFromText(std::string_view whole, char decimal_separator) {
    whole = text::TrimBlanks(whole);
    std::string digits;
    bool in_fraction = false;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        const char c = whole[i];
        const bool group =
            decimal_separator == '.' ? c == ',' : whole.substr(i, 2) == kNoBreakSpace;
        if (c == decimal_separator) {
            digits += '.';
            in_fraction = true;
        } else if (group && !in_fraction && !digits.empty()) {
            i += decimal_separator == '.' ? 0 : 1;
        } else if (c == '.') {
            throw TypeMismatch();
        } else {
            digits += c;
        }
    }
    std::string_view number = digits;
    const bool negative = number.starts_with('-');
    if (negative || number.starts_with('+')) {
        number.remove_prefix(1);
    }
    if (number.empty() || number.find_first_not_of("0123456789.eE+-") != std::string_view::npos ||
        number.front() == '+' || number.front() == '-') {
        throw TypeMismatch();
    }
    double magnitude = 0;
    const auto [end, error] =
        std::from_chars(number.data(), number.data() + number.size(), magnitude);
    if (error != std::errc() || end != number.data() + number.size()) {
        throw TypeMismatch();
    }
    return negative ? -magnitude : magnitude;
}

double ToReal(const Value& value, char decimal_separator) {
    const auto& storage = value.storage();
    if (std::holds_alternative<std::monostate>(storage)) {
        return 0;
    }
    if (const auto* boolean = std::get_if<bool>(&storage)) {
        return *boolean ? -1 : 0;
    }
    if (const auto* written = std::get_if<std::string>(&storage)) {
        return NumberFromText(*written, decimal_separator);
    }
    return value.AsReal();
}

std::int32_t ToLong(const Value& value, char decimal_separator) {
    using Limits = std::numeric_limits<std::int32_t>;
    const double whole = std::nearbyint(ToReal(value, decimal_separator));
    if (whole < Limits::min() || whole > Limits::max()) {
        throw automation::Overflow();
    }
    return Value(whole).AsInteger();
}

// With the digits that the kind of real has: 15 in double precision, 7 in single.
std::string RealAsText(double real, int digits, char decimal_separator) {
    std::array<char, 40> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), "%.*G", digits, real);
    std::string written(buffer.data(), static_cast<std::size_t>(length));
    if (const std::size_t point = written.find('.'); point != std::string::npos) {
        written[point] = decimal_separator;
    }
    return written;
}

std::string ToText(const Value& value, char decimal_separator) {
    const auto& storage = value.storage();
    if (std::holds_alternative<std::monostate>(storage)) {
        return {};
    }
    if (const auto* boolean = std::get_if<bool>(&storage)) {
        return *boolean ? "-1" : "0";
    }
    if (const auto* integer = std::get_if<std::int32_t>(&storage)) {
        return std::to_string(*integer);
    }
    if (const auto* real = std::get_if<double>(&storage)) {
        return RealAsText(*real, 15, decimal_separator);
    }
    if (const auto* single = std::get_if<float>(&storage)) {
        return RealAsText(*single, 7, decimal_separator);
    }
    return value.AsText();
}

} // namespace

Value Coerce(const Value& value, Kind kind, char decimal_separator) {
    const auto* reference = std::get_if<Reference>(&value.storage());
    if (reference != nullptr && *reference == nullptr) {
        throw TypeMismatch();
    }
    switch (kind) {
    case Kind::kLongReference:
        if (reference == nullptr) {
            throw TypeMismatch();
        }
        ToLong(**reference, decimal_separator);
        return value;
    case Kind::kArrayReference:
        if (reference == nullptr || !(*reference)->Is<Array>()) {
            throw TypeMismatch();
        }
        return **reference;
    default:
        break;
    }
    if (reference != nullptr) {
        return Coerce(**reference, kind, decimal_separator);
    }
    switch (kind) {
    case Kind::kLong:
        return ToLong(value, decimal_separator);
    case Kind::kReal:
        return ToReal(value, decimal_separator);
    case Kind::kText:
        return ToText(value, decimal_separator);
    case Kind::kIndex:
        if (value.Is<std::string>()) {
            return value;
        }
        return ToLong(value, decimal_separator);
    case Kind::kObject:
        if (!value.Is<ObjectPtr>() || value.storage() == Value(ObjectPtr()).storage()) {
            throw TypeMismatch();
        }
        return value;
    default:
        throw TypeMismatch();
    }
}

} // namespace simulator
