// Texts at the Windows API: UTF-16 there, UTF-8 in the program.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace com {

// What is no valid UTF-8 or UTF-16 becomes the replacement character U+FFFD.
std::wstring Widen(std::string_view text);
std::string Narrow(std::wstring_view text);

// Texts in the system's 8-bit code page, which files and window titles are in. A character that the
// code page lacks becomes its best fit there.
std::string FromSystemCodePage(std::string_view bytes);
std::string ToSystemCodePage(std::string_view text);
// The same; nothing where the code page lacks a character.
std::optional<std::string> ToSystemCodePageExactly(std::string_view text);

// The character that a code page has at `code`. One in which that byte is no character of its own,
// such as UTF-8, is taken for Latin-1.
std::string CharacterAt(unsigned char code, unsigned code_page);

} // namespace com
