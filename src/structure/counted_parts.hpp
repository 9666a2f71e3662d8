// The parts of the tree with their quantities, as "Naplň list" lists them and as a list is brought
// up to date.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "controls/list_view.hpp"
#include "controls/tree_view.hpp"

namespace structure {

struct CountedPart {
    std::string name;
    std::size_t quantity = 0;
};

// Every part of a tree once. The check boxes decide which of them are listed; a quantity counts
// every node of that text, checked or not, parts and assemblies alike.
struct CountedTree {
    std::vector<CountedPart> listed; // in the order in which each one is first met checked
    std::vector<CountedPart> others; // that are nowhere checked
};

CountedTree CountParts(const controls::TreeView& tree);
// The names of all of them.
controls::NameSet NamesOf(const CountedTree& counted);

} // namespace structure
