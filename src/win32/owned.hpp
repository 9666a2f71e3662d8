// Owners of the window's system resources: each gives its resource back when it goes.
#pragma once

#include <memory>
#include <type_traits>

#include <windows.h>

#include <commctrl.h>

namespace win32 {

struct GiveBack {
    void operator()(HFONT font) const { DeleteObject(font); }
    void operator()(HICON icon) const { DestroyIcon(icon); }
    void operator()(HMENU menu) const { DestroyMenu(menu); }
    void operator()(HIMAGELIST images) const { ImageList_Destroy(images); }
};

template <typename Handle>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, GiveBack>;

// Sets a flag for as long as it lives: notifications that the program itself causes are not the
// person's doing.
class FlagWhile {
  public:
    explicit FlagWhile(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
    ~FlagWhile() { flag_ = before_; }
    FlagWhile(const FlagWhile&) = delete;
    FlagWhile& operator=(const FlagWhile&) = delete;

  private:
    bool& flag_;
    bool before_;
};

} // namespace win32
