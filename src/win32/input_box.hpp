// A small box that asks for one line of text.
#pragma once

#include <string>
#include <string_view>

#include <windows.h>

namespace win32 {

// Shows the box over `owner` with the proposed answer, selected, in its field. The answer; empty
// when the person cancels.
std::string ShowInputBox(HWND owner, std::string_view prompt, std::string_view title,
                         std::string_view proposal);

} // namespace win32
