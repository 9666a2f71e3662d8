#include "com/safety.hpp"

#include <windows.h>

namespace com {

void LoadLibrariesOfTheSystemOnly() {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);
    SetDllDirectoryW(L""); // for what asks for the old search: not the current folder
}

} // namespace com
