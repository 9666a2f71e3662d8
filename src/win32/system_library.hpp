// Functions of system libraries that the program is not linked with: a library of that name in the
// program's folder, which whoever may write there could put in its place, is never loaded.
#pragma once

#include <windows.h>

namespace win32 {

// Null where the system has no such function. The library stays loaded.
template <typename Function>
Function SystemFunction(const wchar_t* library, const char* name) {
    const HMODULE loaded = LoadLibraryExW(library, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    return loaded == nullptr
               ? nullptr
               : reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(loaded, name)));
}

} // namespace win32
