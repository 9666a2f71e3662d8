// Files of the session's window. Paths are Windows paths as UTF-8.
#pragma once

#include <string>

namespace simulator {

// Raises std::runtime_error with the path where the file cannot be read or written.
std::string ReadWholeFile(const std::string& path);
void WriteWholeFile(const std::string& path, const std::string& content);

// Of the program's own file.
std::string ProgramPath();

} // namespace simulator
