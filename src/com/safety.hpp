// Where libraries are loaded from. The program's folder may be one where others can write, and so
// may the current folder: a library there is never taken for the system's of the same name.
#pragma once

namespace com {

// For all that is loaded from now on without a path, by the program and by what runs inside it,
// such as the extensions of the file dialogs: the system folder, and folders that they add
// themselves.
void LoadLibrariesOfTheSystemOnly();

} // namespace com
