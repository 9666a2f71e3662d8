// How a server turns the arguments that come into the types that its members declare.
#pragma once

#include "automation/value.hpp"

namespace simulator {

enum class Kind {
    kLong,
    kReal,
    kText,
    kIndex, // of a collection: a number as a long, a text as a name
    kObject,
    kLongReference,  // a variable that the member fills in
    kArrayReference, // an array passed by reference
};

// `value` as a value of `kind`, by the rules of the platform's variant conversion. Raises 13 (type
// mismatch) where there is no such conversion, 6 (overflow) for a long beyond its bounds.
// `decimal_separator` is that of numbers in texts, '.' or ','.
automation::Value Coerce(const automation::Value& value, Kind kind, char decimal_separator);

} // namespace simulator
