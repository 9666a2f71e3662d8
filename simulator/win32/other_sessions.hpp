// Whether another CATIA runs, which programs would take the session for.
#pragma once

#include <string>

namespace simulator {

// What shows that one runs: the title of its window, or "CATIA.Application" where only its object
// is there; empty where nothing does. A stand-in on trial is none.
std::string RunningCatia();

} // namespace simulator
