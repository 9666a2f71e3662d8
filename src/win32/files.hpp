// The platform's files on Windows.
#pragma once

#include "platform/ports.hpp"

namespace win32 {

class CodePageFiles : public platform::Files {
  public:
    struct Folders {
        std::string data;    // that the program keeps its files in
        std::string other;   // and perhaps kept them in, in an earlier run
        std::string program; // that it stands in
    };

    CodePageFiles() = default;
    explicit CodePageFiles(Folders folders) : folders_(std::move(folders)) {}

    std::string DataFolder() override { return folders_.data; }
    std::string OtherDataFolder() override { return folders_.other; }
    std::string ProgramFolder() override { return folders_.program; }
    bool Exists(std::string_view path) override;
    bool IsNewer(std::string_view path, std::string_view than) override;
    std::string DateOf(std::string_view path) override;
    void Copy(std::string_view from, std::string_view to) override;
    void Remove(std::string_view path) override;
    void MakeFolder(std::string_view path) override;
    std::vector<std::string> NamesIn(std::string_view folder, std::string_view ending) override;
    std::string Read(std::string_view path) override;
    void Write(std::string_view path, std::string_view text,
               const platform::Writing& writing = {}) override;

  private:
    Folders folders_;
};

} // namespace win32
