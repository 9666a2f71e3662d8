// The platform's files on Windows.
#pragma once

#include "platform/ports.hpp"

namespace win32 {

class CodePageFiles : public platform::Files {
  public:
    // The folders that the program keeps its files in, now and perhaps in an earlier run.
    explicit CodePageFiles(std::string data_folder = {}, std::string other_folder = {})
        : data_folder_(std::move(data_folder)), other_folder_(std::move(other_folder)) {}

    std::string DataFolder() override { return data_folder_; }
    std::string OtherDataFolder() override { return other_folder_; }
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
    std::string data_folder_;
    std::string other_folder_;
};

} // namespace win32
