// The program that is tried out: started from the session's own folder, and placed beside its
// window.
#pragma once

#include <windows.h>

#include "com/owned.hpp"

namespace simulator {

class Companion {
  public:
    // Starts Dorvak on trial; where it runs already, that brings it forward. Raises
    // std::runtime_error where it cannot be started.
    void Start();
    // Places the windows side by side once Dorvak's is there. False while it is still to come.
    bool PlaceBeside(HWND session);

  private:
    [[nodiscard]] HWND Window() const;

    com::OwnedHandle process_;
    DWORD process_id_ = 0;
};

} // namespace simulator
