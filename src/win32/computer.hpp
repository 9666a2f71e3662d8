// What the diagnosis says of the computer.
#pragma once

#include "platform/ports.hpp"

namespace win32 {

class ThisComputer : public platform::Computer {
  public:
    std::vector<platform::Fact> Facts() override;
};

} // namespace win32
