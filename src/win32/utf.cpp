#include "win32/utf.hpp"

#include <windows.h>

namespace {

// The API counts in int: longer texts than it takes do not fit into its world at all.
int Length(std::size_t size) {
    return static_cast<int>(size);
}

} // namespace

std::wstring Widen(std::string_view text) {
    if (text.empty()) {
        return {};
    }
    const int length = Length(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)),
        L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), Length(wide.size()));
    return wide;
}

std::string Narrow(std::wstring_view text) {
    if (text.empty()) {
        return {};
    }
    const int length = Length(text.size());
    std::string narrow(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), length,
                                                                    nullptr, 0, nullptr, nullptr)),
                       '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), Length(narrow.size()),
                        nullptr, nullptr);
    return narrow;
}
