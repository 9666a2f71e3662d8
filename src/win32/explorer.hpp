// Windows Explorer, for what the person is to see outside the window.
#pragma once

#include <string>

namespace win32 {

// Shows a folder, or a file in the program that it belongs to. Raises 53 (file not found) where
// Explorer does not start.
void OpenInExplorer(const std::wstring& path);

} // namespace win32
