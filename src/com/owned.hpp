// Owners of system resources: each gives its resource back when it goes.
#pragma once

#include <memory>
#include <type_traits>

#include <windows.h>

#include <commctrl.h>

namespace com {

struct GiveBack {
    void operator()(HFONT font) const { DeleteObject(font); }
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
    void operator()(HICON icon) const { DestroyIcon(icon); }
    void operator()(HMENU menu) const { DestroyMenu(menu); }
    void operator()(HIMAGELIST images) const { ImageList_Destroy(images); }
    void operator()(HKEY key) const { RegCloseKey(key); }
};

template <typename Handle>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, GiveBack>;

// An open file, an event, a process. INVALID_HANDLE_VALUE must not get here.
struct CloseOwnedHandle {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<HANDLE, CloseOwnedHandle>;

} // namespace com
