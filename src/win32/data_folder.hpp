// The folder that the program keeps its files in: the program's own where it can be written, else
// %APPDATA%\Dorvak. It belongs to one running copy, which holds the file "dorvak.lock" open there;
// the file says whose it is.
#pragma once

#include <optional>
#include <string>

#include "com/owned.hpp"

namespace win32 {

// The folder of the program's file.
std::string ProgramFolder();

struct DataFolder {
    std::string path;
    std::string other; // where an earlier run may have kept files; empty where there is none
    com::OwnedHandle lock;
};

// Claims the folder for as long as the result lives. Nothing where another copy of this person on
// this computer has it: that one has been brought forward, and this one is to end. Where none of
// the folders can be claimed, the result is the program's own without a lock.
std::optional<DataFolder> ClaimDataFolder();

} // namespace win32
