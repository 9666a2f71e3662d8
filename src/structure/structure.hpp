// The product structure: the walk over CATIA's active product into the structure text, the tree
// built from that text, and the counted parts list built from the tree. The user may edit the text
// between the first and the second step and the check boxes between the second and the third.
//
// Actions:
//   Command3_Click       "Načtení stromu"
//   Command5_Click       "naplneni tree"
//   Command4_Click       "Naplň list"
//   Command1_Click       "generator"
//   Command2_Click       "test rovnani"
//   TreeView1_NodeCheck  a check box of the tree
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "catia/product.hpp"
#include "controls/form1.hpp"

namespace structure {

using controls::Form1;

void Command3_Click(Form1& form);
void Command5_Click(Form1& form);
void Command4_Click(Form1& form);
void Command1_Click(Form1& form);
void Command2_Click(Form1& form);
void TreeView1_NodeCheck(Form1& form, std::size_t node);

// The children of a product, with their number: each costs a call, so they are read once.
struct Children {
    catia::Products products;
    int count;
};

// Appends the lines of everything below a product to the structure text. `part_number` is its part
// number, `otec` its instance path; its children are read here where the caller has not done so.
// Raises what CATIA raises, and 18 when the window is closed; Uroven then keeps the depth that it
// had.
void OtevreniStromu(Form1& form, const catia::Product& stromProductTMP,
                    const std::string& part_number, const std::string& otec,
                    const std::optional<Children>& known_children = std::nullopt);

// Appends one line to the structure text.
void zapsat(Form1& form, const std::string& t);

// The lines of a structure text that have no place in the tree: how many, and the number of the
// first one, counted from 1.
struct SkippedLines {
    std::size_t count = 0;
    std::size_t first = 0;
};

// Builds the tree from Text1, every node checked and expanded.
SkippedLines FillTree(Form1& form);

// Lines of a structure text as they come from a spreadsheet: line feeds alone become line ends, and
// the tabs at the end of a line that is pasted whole go, since each would be one more field. The
// rest of a line, without its end, stays as it is.
std::string PastedLines(std::string_view pasted);

} // namespace structure
