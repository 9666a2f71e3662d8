// Popup menus.
#pragma once

#include "controls/form1.hpp"
#include "win32/layout.hpp"

namespace win32 {

// Opens `menu`, one of the form's, below a part of the screen, or above it where there is no room,
// and raises the event of the entry that the person chooses, if any. `owner` is the window that the
// menu belongs to.
void ShowPopupMenu(HWND owner, const controls::Form1& form, const controls::PopupMenu& menu,
                   const RECT& anchor);

} // namespace win32
