#include "win32/clipboard.hpp"

#include <cstring>

#include "com/utf.hpp"

namespace win32 {

void PutOnClipboard(HWND owner, std::string_view text) {
    const std::wstring wide = com::Widen(text);
    const std::size_t bytes = (wide.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes);
    if (memory == nullptr) {
        return;
    }
    std::memcpy(GlobalLock(memory), wide.data(), wide.size() * sizeof(wchar_t));
    GlobalUnlock(memory);
    if (OpenClipboard(owner) != FALSE) {
        EmptyClipboard();
        const bool taken = SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
        CloseClipboard();
        if (taken) {
            return; // the clipboard owns the memory now
        }
    }
    GlobalFree(memory);
}

std::optional<std::string> TextOnClipboard(HWND owner) {
    if (OpenClipboard(owner) == FALSE) {
        return std::nullopt;
    }
    std::optional<std::string> text;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT); data != nullptr) {
        if (const auto* wide = static_cast<const wchar_t*>(GlobalLock(data)); wide != nullptr) {
            text = com::Narrow(wide);
            GlobalUnlock(data);
        }
    }
    CloseClipboard();
    return text;
}

} // namespace win32
