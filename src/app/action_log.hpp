// What the log says of the handlers that run: of each that has a name, when it begins and ends,
// with its calls to CATIA, its time and the error that ended it; of the others only that error.
// Calls and time of a handler hold those of what ran inside it at its yields. Nothing that the
// person has named or typed goes into the log.
#pragma once

#include <string>

#include "controls/form1.hpp"

namespace app {

struct BegunAction {
    std::uint64_t calls = 0; // made before
    double seconds = 0;      // of the clock
};

// `step` is the handler's name, empty for none; the innermost run of the form is its own.
BegunAction LogBegin(controls::Form1& form, const std::string& step);
void LogEnd(controls::Form1& form, const std::string& step, const BegunAction& begun);

} // namespace app
