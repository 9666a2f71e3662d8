// What the system knows of other running programs, and of the classes that stand in the registry.
#pragma once

#include "platform/ports.hpp"

namespace win32 {

class OtherPrograms : public platform::Programs {
  public:
    platform::Rights RightsOf(platform::WindowHandle window) override;
    std::string PathOf(platform::WindowHandle window) override;
    platform::Registration RegisteredUnder(std::string_view program_id) override;
};

} // namespace win32
