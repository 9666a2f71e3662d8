// Drawing tables made from the parts list, and read back into it.
//
// Actions:
//   Command11_Click  "Vytvorení": the list as a new table
//   Command7_Click   "Export 1 tabulky": the current row as a new table
//   Command16_Click  "Export do tabulky": the current row into the selected table
//   Command30_Click  "Exportovat do tabulky": the list into the selected table
//   Command37_Click  "Aktualizovat tabulku": the selected table brought to the list's state
//   Command6_Click   "Export jako text": the current row as loose texts
//   Command8_Click   "text": a trial text
//   Command10_Click  "Parametry": the selected table's layout
//   Command9_Click   "Tabulka": the selected table's layout and rows
//   Command38_Click  "Převzít do exportu": what was read of a layout, into the configuration
//   Combo5_DropDown  the named layouts, as their files stand there now
//   Combo5_Choose, Combo5_KeyPress  one of them into the configuration
//   Command40_Click  "Uložit": the configuration as a named layout
//   Command41_Click  "Smazat": a named layout
//   m_poslat_jako_tabulku_Click  "Poslat jako tabulku": as Command7
//   m_vlozit_do_tabulky_Click    "Poslat do tabulky": as Command16
//   m_Poslat_jako_text_Click     "Poslat jako text": as Command6
//
// When something fails, the status line keeps the last announcement, which tells how far they came,
// a balloon says why, and what was already done in CATIA stays.
#pragma once

#include "controls/form1.hpp"

namespace tables {

using controls::Form1;

void Command11_Click(Form1& form);
void Command7_Click(Form1& form);
void Command16_Click(Form1& form);
void Command30_Click(Form1& form);
void Command37_Click(Form1& form);
void Command6_Click(Form1& form);
void Command8_Click(Form1& form);
void Command10_Click(Form1& form);
void Command9_Click(Form1& form);
void Command38_Click(Form1& form);
void Combo5_DropDown(Form1& form);
void Combo5_Choose(Form1& form);
void Combo5_KeyPress(Form1& form, int key);
void Command40_Click(Form1& form);
void Command41_Click(Form1& form);
void m_poslat_jako_tabulku_Click(Form1& form);
void m_vlozit_do_tabulky_Click(Form1& form);
void m_Poslat_jako_text_Click(Form1& form);

// Puts the names of the layouts into their picker: of the files in the folder "Nastaveni" of the
// data folder, whoever has put them there.
void OfferLayouts(Form1& form);

// Where "Tabulka" has emptied the parts list and still reads its successor: the rows that stood
// there stand again, as when reading has not begun, unless the person has begun another list.
void PutBackRowsBeforeReading(Form1& form);

} // namespace tables
