// The files that the program keeps for itself: the working list and the pickers' values. They stand
// in the data folder, whose place may have changed since the run before.
#pragma once

#include "controls/form1.hpp"

namespace shell {

// The path that the file of that name is saved to.
std::string DataFile(controls::Form1& form, const std::string& name);
// The path that it is loaded from: where an earlier run kept one elsewhere, the newer of the two.
std::string NewestDataFile(controls::Form1& form, const std::string& name);
// A name as a file can bear it: the characters that Windows takes in none become "_".
std::string WithoutForbiddenCharacters(std::string name);
// Before it is saved to: a file that was not read to its end holds more than the form does. It
// stays, under a name with its date.
void KeepUnreadFile(controls::Form1& form, const std::string& name);

} // namespace shell
