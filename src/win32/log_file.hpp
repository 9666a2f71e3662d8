// The log: "dorvak.log" in UTF-8. When it has come to its limit it becomes "dorvak.old.log", and a
// new one begins; where that one is not to be replaced, the log is emptied at twice its limit. Each
// line is appended for itself, so that it is there whatever becomes of the program, and several
// running copies can share the file.
#pragma once

#include <string>

#include "platform/ports.hpp"

namespace win32 {

inline constexpr long long kLogLimit = 1LL << 20; // bytes

class LogFile : public platform::Log {
  public:
    // Makes the folder where it is not there; its parent exists.
    explicit LogFile(std::string folder, long long limit = kLogLimit);

    std::string Folder() override { return folder_; }
    void Write(std::string_view line) override;
    void ShowFolder() override;

  private:
    void MakeFolder() const;

    std::string folder_;
    long long limit_;
};

// %LOCALAPPDATA%\Dorvak; `otherwise` where there is no such place.
std::string LogFolder(const std::string& otherwise);

} // namespace win32
