#include "files.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <windows.h>

#include "com/utf.hpp"

namespace simulator {

std::string ReadWholeFile(const std::string& path) {
    std::ifstream file(std::filesystem::path(com::Widen(path)), std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad()) {
        throw std::runtime_error(path + ": cannot be read");
    }
    return content;
}

void WriteWholeFile(const std::string& path, const std::string& content) {
    std::ofstream file(std::filesystem::path(com::Widen(path)), std::ios::binary);
    file << content;
    file.close();
    if (!file) {
        throw std::runtime_error(path + ": cannot be written");
    }
}

std::string ProgramPath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return com::Narrow(path);
}

} // namespace simulator
