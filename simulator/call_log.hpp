// How a call shows in the session's log.
#pragma once

#include <string>
#include <string_view>

#include "automation/value.hpp"

namespace simulator {

// `value` so that its kind shows: 20, 100.0, "6.8", True, Empty, DrawingSheet("Sheet.1"),
// [1, 2], and "ref " before what is passed by reference. Always one line.
std::string LogText(const automation::Value& value);

// `Class.Member`, with "(...)" where it is a method or takes arguments.
std::string CallLine(std::string_view class_name, std::string_view member_name, bool is_method,
                     const automation::Array& arguments);

// `Class.Member = value`.
std::string PutLine(std::string_view class_name, std::string_view member_name,
                    const automation::Value& value);

} // namespace simulator
