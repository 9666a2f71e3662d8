#pragma once

#include <functional>

#include "automation/run_time_error.hpp"

namespace testing_support {

// The number of the error that `action` raises; 0 where it raises none.
inline long ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const automation::RunTimeError& error) {
        return error.number;
    }
    return 0;
}

} // namespace testing_support
