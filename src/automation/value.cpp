#include "automation/value.hpp"

#include <cmath>
#include <limits>

#include "automation/run_time_error.hpp"

namespace automation {

double Value::AsReal() const {
    if (const auto* real = std::get_if<double>(&storage_)) {
        return *real;
    }
    if (const auto* single = std::get_if<float>(&storage_)) {
        return *single;
    }
    if (const auto* integer = std::get_if<std::int32_t>(&storage_)) {
        return *integer;
    }
    throw TypeMismatch();
}

std::int32_t Value::AsInteger() const {
    const double rounded = std::nearbyint(AsReal());
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max())) {
        throw TypeMismatch();
    }
    return static_cast<std::int32_t>(rounded);
}

const std::string& Value::AsText() const {
    if (const auto* text = std::get_if<std::string>(&storage_)) {
        return *text;
    }
    throw TypeMismatch();
}

const ObjectPtr& Value::AsObject() const {
    if (const auto* object = std::get_if<ObjectPtr>(&storage_); object != nullptr && *object) {
        return *object;
    }
    throw ObjectRequired();
}

} // namespace automation
