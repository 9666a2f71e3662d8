// The system's dialogs for choosing a file.
#pragma once

#include "com/owned.hpp"
#include "controls/controls.hpp"

namespace win32 {

// Show the dialog as `dialog` describes it, proposing its file name, over `owner`. True when the
// person chose a file, whose full path then stands in the dialog; false, with the dialog's file
// name as it was, when the person cancelled. Raise 5 (invalid procedure call) when the system
// cannot show the dialog.
bool ShowSaveDialog(HWND owner, controls::FileDialog& dialog);
bool ShowOpenDialog(HWND owner, controls::FileDialog& dialog);

} // namespace win32
