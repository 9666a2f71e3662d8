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

#include <string>

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

// Appends the lines of everything below a product to the structure text. `children` are its
// `count` children, `part_number` is its part number and `otec` its instance path. Raises what
// CATIA raises, and 18 when the window is closed; Uroven then keeps the depth that it had.
void OtevreniStromu(Form1& form, const catia::Products& children, int count,
                    const std::string& part_number, const std::string& otec);

// Appends one line to the structure text.
void zapsat(Form1& form, const std::string& t);

} // namespace structure
