#include "win32/clipboard.hpp"

#include <array>
#include <cstring>
#include <string_view>
#include <utility>

#include "com/utf.hpp"
#include "text/clipboard_cells.hpp"

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

// A text of the opened clipboard. Another program's format may lack the zero at its end.
std::optional<std::string> ReadAs(UINT format) {
    const HANDLE data =
        IsClipboardFormatAvailable(format) != FALSE ? GetClipboardData(format) : nullptr;
    const auto* const wide =
        data != nullptr ? static_cast<const wchar_t*>(GlobalLock(data)) : nullptr;
    if (wide == nullptr) {
        return std::nullopt;
    }
    const std::wstring_view all(wide, GlobalSize(data) / sizeof(wchar_t));
    std::string text = com::Narrow(all.substr(0, all.find(L'\0')));
    GlobalUnlock(data);
    return text;
}

// What LibreOffice Calc calls its second text: by its type, and as its own programs show it.
constexpr std::array kTextsWithLineBreaks{L"application/x-libreoffice-tsvc", L"Text TSV-Calc"};

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
    return clipboard ? ReadAs(CF_UNICODETEXT) : std::nullopt;
}

std::optional<std::string> CellsOnClipboard(HWND owner) {
    const OpenedClipboard clipboard(owner);
    auto text = clipboard ? ReadAs(CF_UNICODETEXT) : std::nullopt;
    for (const wchar_t* const name : kTextsWithLineBreaks) {
        if (!text) {
            break;
        }
        if (auto other = ReadAs(RegisterClipboardFormatW(name))) {
            return text::TextWithLineBreaks(std::move(*text), std::move(*other));
        }
    }
    return text;
}

} // namespace win32
