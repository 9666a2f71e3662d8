// Which names the tree had that a saved list was last filled or brought up to date from: a small
// file beside the list's, with the ending ".strom". It says which text of the list file it belongs
// to, so that it means nothing beside any other list, however the two files came together.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "controls/form1.hpp"

namespace partslist {

std::string WriteTreeNames(const controls::NameSet& names, std::string_view list_file);
// Nothing where the text is none that was written for that list file.
std::optional<controls::NameSet> ReadTreeNames(std::string_view file, std::string_view list_file);

// After the list has been saved to `path` as `list_file`: keeps its names beside it. Where there
// are none, or they cannot be written, no file of another list stays. Raises nothing.
void KeepTreeNames(controls::Form1& form, const std::string& path, std::string_view list_file);
// After the list has been loaded from there: gives it the names that stand beside it. Raises
// nothing.
void TakeTreeNames(controls::Form1& form, const std::string& path, std::string_view list_file);

// The path with another ending.
std::string WithEnding(const std::string& path, const std::string& ending);

} // namespace partslist
