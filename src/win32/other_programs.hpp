// What the system knows of other running programs, and of the classes that stand in the registry.
#pragma once

#include "com/trial.hpp"
#include "platform/ports.hpp"

namespace win32 {

class OtherPrograms : public platform::Programs {
  public:
    explicit OtherPrograms(com::Purpose purpose = com::Purpose::kWork) : purpose_(purpose) {}

    platform::Rights RightsOf(platform::WindowHandle window) override;
    std::string PathOf(platform::WindowHandle window) override;
    // On trial the stand-in's program: it needs no registration.
    platform::Registration RegisteredUnder(std::string_view program_id) override;

  private:
    com::Purpose purpose_;
};

} // namespace win32
