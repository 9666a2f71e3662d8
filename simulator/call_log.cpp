#include "call_log.hpp"

#include <array>
#include <charconv>
#include <cmath>

#include "quoted.hpp"
#include "session_object.hpp"
#include "text/text.hpp"

namespace simulator {

using automation::Array;
using automation::ObjectPtr;
using automation::Reference;
using automation::Value;

namespace {

std::string Joined(const Array& values) {
    std::string joined;
    for (const Value& value : values) {
        if (!joined.empty()) {
            joined += ", ";
        }
        joined += LogText(value);
    }
    return joined;
}

struct ValueText {
    std::string operator()(std::monostate) const { return "Empty"; }
    std::string operator()(bool boolean) const { return boolean ? "True" : "False"; }
    std::string operator()(std::int32_t integer) const { return std::to_string(integer); }
    std::string operator()(double real) const {
        if (!std::isfinite(real)) {
            return std::isnan(real) ? "NaN" : real > 0 ? "Infinity" : "-Infinity";
        }
        const std::string plain = text::PlainDecimal(real);
        return plain.find('.') == std::string::npos ? plain + ".0" : plain;
    }
    // The mark tells it from a double.
    std::string operator()(float real) const {
        std::array<char, 32> digits{};
        auto* const end = std::to_chars(digits.data(), digits.data() + digits.size(), real).ptr;
        return std::string(digits.data(), end) + "!";
    }
    std::string operator()(const std::string& text) const { return Quoted(text); }
    std::string operator()(const ObjectPtr& object) const {
        if (object == nullptr) {
            return "Nothing";
        }
        const auto* ours = dynamic_cast<const SessionObject*>(object.get());
        return ours != nullptr ? ours->Label() : "object";
    }
    std::string operator()(const Array& array) const { return "[" + Joined(array) + "]"; }
    std::string operator()(const Reference& reference) const {
        return "ref " + (reference != nullptr ? LogText(*reference) : "Nothing");
    }
};

} // namespace

std::string LogText(const Value& value) {
    return std::visit(ValueText(), value.storage());
}

std::string CallLine(std::string_view class_name, std::string_view member_name, bool is_method,
                     const Array& arguments) {
    std::string line(class_name);
    line.append(".").append(member_name);
    if (is_method || !arguments.empty()) {
        line.append("(").append(Joined(arguments)).append(")");
    }
    return line;
}

std::string PutLine(std::string_view class_name, std::string_view member_name, const Value& value) {
    std::string line(class_name);
    return line.append(".").append(member_name).append(" = ").append(LogText(value));
}

} // namespace simulator
