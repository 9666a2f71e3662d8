// One session on trial at a time: a second start brings the first one forward.
#pragma once

#include "com/owned.hpp"

namespace simulator {

// Holds the place of the one session. Null where another one has it, which has been told to come
// forward.
com::OwnedHandle TakeTrial();

} // namespace simulator
