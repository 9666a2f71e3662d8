// The guide: which of its pages belongs to which page of the window.
#pragma once

#include <array>

#include "controls/form1.hpp"

namespace shell {

// By the window's pages, from left to right.
inline constexpr std::array<std::string_view, 5> kGuidePages{
    "strom", "editace-tabulky", "export-tabulky", "import-tabulky", "sheet"};

// Opens the guide for a page of the window; announces nothing where that is done.
void ShowGuide(controls::Form1& form, std::size_t page);

} // namespace shell
