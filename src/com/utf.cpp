#include "com/utf.hpp"

#include <windows.h>

namespace com {

namespace {

// The API counts in int: longer texts than it takes do not fit into its world at all.
int Length(std::size_t size) {
    return static_cast<int>(size);
}

std::wstring Decode(UINT code_page, std::string_view bytes) {
    if (bytes.empty()) {
        return {};
    }
    const int length = Length(bytes.size());
    std::wstring wide(static_cast<std::size_t>(
                          MultiByteToWideChar(code_page, 0, bytes.data(), length, nullptr, 0)),
                      L'\0');
    MultiByteToWideChar(code_page, 0, bytes.data(), length, wide.data(), Length(wide.size()));
    return wide;
}

std::string Encode(UINT code_page, std::wstring_view wide) {
    if (wide.empty()) {
        return {};
    }
    const int length = Length(wide.size());
    std::string bytes(static_cast<std::size_t>(WideCharToMultiByte(
                          code_page, 0, wide.data(), length, nullptr, 0, nullptr, nullptr)),
                      '\0');
    WideCharToMultiByte(code_page, 0, wide.data(), length, bytes.data(), Length(bytes.size()),
                        nullptr, nullptr);
    return bytes;
}

} // namespace

std::wstring Widen(std::string_view text) {
    return Decode(CP_UTF8, text);
}

std::string Narrow(std::wstring_view text) {
    return Encode(CP_UTF8, text);
}

std::string FromSystemCodePage(std::string_view bytes) {
    return Narrow(Decode(CP_ACP, bytes));
}

std::string ToSystemCodePage(std::string_view text) {
    return Encode(CP_ACP, Widen(text));
}

std::string CharacterAt(unsigned char code, unsigned code_page) {
    const char byte = static_cast<char>(code);
    wchar_t character = 0;
    if (MultiByteToWideChar(code_page, MB_ERR_INVALID_CHARS, &byte, 1, &character, 1) != 1) {
        character = code; // the first 256 characters of Unicode are those of Latin-1
    }
    return Narrow({&character, 1});
}

std::optional<std::string> ToSystemCodePageExactly(std::string_view text) {
    std::string bytes = ToSystemCodePage(text);
    if (FromSystemCodePage(bytes) != text) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace com
