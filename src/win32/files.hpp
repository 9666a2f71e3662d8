// The platform's files on Windows.
#pragma once

#include "platform/ports.hpp"

namespace win32 {

class CodePageFiles : public platform::Files {
  public:
    std::string ProgramFolder() override;
    bool Exists(std::string_view path) override;
    void MakeFolder(std::string_view path) override;
    std::string Read(std::string_view path) override;
    void Write(std::string_view path, std::string_view text) override;
};

} // namespace win32
