#include "win32/guide_pages.hpp"

#include <windows.h>

#include "com/utf.hpp"
#include "win32/explorer.hpp"

namespace win32 {

void GuidePages::Show(std::string_view page) {
    const std::wstring path = com::Widen(beside_ + "\\prirucka\\" + std::string(page) + ".html");
    // Explorer shows another folder where it is not there.
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
        throw automation::FileNotFound();
    }
    OpenInExplorer(path);
}

} // namespace win32
