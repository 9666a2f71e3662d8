// What the program that is killed while it saves and the test that kills it have in common.
#pragma once

#include <string>

#include "partslist/list_file.hpp"

namespace driver {

// The two lists that are saved in turn, as files; each has its own length and its own rows.
inline std::string BigList(bool second) {
    controls::ListView list({"Jmeno", "Poz.", "kusů", "List", "Material", "Velikost", "Poznámka"});
    const int rows = second ? 30000 : 20000;
    for (int number = 1; number <= rows; ++number) {
        const std::size_t row =
            list.Add((second ? "Second " : "First ") + std::to_string(number * 7));
        list.SetSubItem(row, 4, "S235");
    }
    return partslist::WriteListFile(list);
}

} // namespace driver
