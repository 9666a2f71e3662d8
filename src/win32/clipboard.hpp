// Texts on the clipboard, as UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <windows.h>

namespace win32 {

// Whether it stands there now; where the clipboard cannot be had, what stands on it stays.
bool PutOnClipboard(HWND owner, std::string_view text);
// Nothing where no text stands on it.
std::optional<std::string> TextOnClipboard(HWND owner);
// The same for the cells of a spreadsheet: with the line breaks inside them, where they stand there
// besides.
std::optional<std::string> CellsOnClipboard(HWND owner);

} // namespace win32
