// Access keys: letters that press a control together with Alt.
#pragma once

#include <string>
#include <string_view>

namespace win32 {

// The text of a window that shows `caption` with the letter underlined at its first place, in
// whatever case it stands there. 0 underlines nothing.
inline std::string WithAccessKey(std::string_view caption, char letter) {
    const auto lower = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    };
    std::string text;
    for (const char c : caption) {
        if (c == '&') {
            text += '&'; // one alone would underline what follows
        } else if (letter != 0 && lower(c) == lower(letter)) {
            text += '&';
            letter = 0;
        }
        text += c;
    }
    return text;
}

} // namespace win32
