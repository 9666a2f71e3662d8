// The guide: pages in the folder "prirucka" beside the program, which the person's browser shows.
#pragma once

#include "platform/ports.hpp"

namespace win32 {

class GuidePages : public platform::Guide {
  public:
    // The folder that holds the guide's folder, without a backslash at its end.
    explicit GuidePages(std::string beside) : beside_(std::move(beside)) {}

    void Show(std::string_view page) override;

  private:
    std::string beside_;
};

} // namespace win32
