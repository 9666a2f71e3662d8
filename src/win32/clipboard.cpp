#include "win32/clipboard.hpp"

#include <cstring>

#include "com/utf.hpp"

namespace win32 {

namespace {

// The clipboard, open for as long as it lives.
class OpenedClipboard {
  public:
    // Other programs open it for moments: it is tried for a quarter of a second.
    explicit OpenedClipboard(HWND owner) {
        constexpr int kTries = 10;
        constexpr DWORD kBetween = 25; // milliseconds
        opened_ = OpenClipboard(owner) != FALSE;
        for (int tries = 1; !opened_ && tries < kTries; ++tries) {
            Sleep(kBetween);
            opened_ = OpenClipboard(owner) != FALSE;
        }
    }
    ~OpenedClipboard() {
        if (opened_) {
            CloseClipboard();
        }
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;

    explicit operator bool() const { return opened_; }

  private:
    bool opened_ = false;
};

} // namespace

bool PutOnClipboard(HWND owner, std::string_view text) {
    const std::wstring wide = com::Widen(text);
    const std::size_t bytes = (wide.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes);
    if (memory == nullptr) {
        return false;
    }
    std::memcpy(GlobalLock(memory), wide.data(), wide.size() * sizeof(wchar_t));
    GlobalUnlock(memory);
    if (const OpenedClipboard clipboard(owner); clipboard) {
        EmptyClipboard();
        if (SetClipboardData(CF_UNICODETEXT, memory) != nullptr) {
            return true; // the clipboard owns the memory now
        }
    }
    GlobalFree(memory);
    return false;
}

std::optional<std::string> TextOnClipboard(HWND owner) {
    const OpenedClipboard clipboard(owner);
    if (!clipboard) {
        return std::nullopt;
    }
    std::optional<std::string> text;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT); data != nullptr) {
        if (const auto* wide = static_cast<const wchar_t*>(GlobalLock(data)); wide != nullptr) {
            text = com::Narrow(wide);
            GlobalUnlock(data);
        }
    }
    return text;
}

} // namespace win32
