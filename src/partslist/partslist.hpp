// The parts list in ListView1: one row per distinct part, edited by hand before it goes into a
// drawing. A ticked row is a part with a drawing sheet of its own.
//
// Actions:
//   ListView1_Click      a click on the list: its current row goes into the pickers
//   ListView1_ItemCheck  a check box of the list
//   ListView1_MouseDown  right: the popup menu; left: the start of a drag
//   ListView1_MouseUp    left: the drop
//   ListView1_MenuKey    the popup menu by keyboard
//   ListView1_MoveKey    Alt and an arrow key: the current row moves by one
//   m_Pridat_Click       "Přidat"
//   m_Smazat_Click       "Smazat"
//   m_Zpet_Click, m_Znovu_Click  "Zpět", "Znovu"
//   m_Kopirovat_vse_Click, m_Vlozit_Click  "Kopírovat vše", "Vložit"
//   m_Smazat_vybrane_Click   "Smazat vybrané"
//   m_Doplnit_zname_Click    "Doplnit známé": materials, sizes and notes that parts had before
//   m_Seradit_jmeno_Click, m_Seradit_material_Click  "Seřadit podle jména", "podle materiálu"
//   Command39_Click      "Aktualizuj ze stromu"
//   ListView1_Rename     a name typed into a row
//   ListView1_CellEdit   a text typed into another cell
//   ListView1_FindKey    Ctrl+F, F3, Shift+F3: a text to be found
//   Combo1_KeyPress to Combo4_KeyPress  a key in a picker: Enter applies its text
//   Combo1_Forget to Combo4_Forget  a value of a picker is not to be remembered any more
//   Command12_Click to Command15_Click  the picture buttons beside the pickers, likewise
//   Command17_Click      "Uložení  tabulky": the list into a chosen file
//   Command17_MouseDown  the right button on it: the list into the working file
//   Command17_MenuKey    the popup menu on it by keyboard
//   m_Ulozit_pracovni_Click  its entry: what the right button does
//   Command27_Click      "Otevreni tabulky": the list from a chosen file
//   Command27_MouseDown  the right button on it: the list from the working file
//   Command27_MenuKey    the popup menu on it by keyboard
//   m_Otevrit_pracovni_Click  its entry: what the right button does
#pragma once

#include "controls/form1.hpp"

namespace partslist {

using controls::Form1;

using enum controls::PartField;

void ListView1_Click(Form1& form);
void ListView1_ItemCheck(Form1& form, std::size_t row);
void ListView1_MouseDown(Form1& form, int button, int shift, int x, int y);
void ListView1_MouseUp(Form1& form, int button, int shift, int x, int y);
void ListView1_MenuKey(Form1& form);
void ListView1_MoveKey(Form1& form, int rows);
void m_Pridat_Click(Form1& form);
void m_Smazat_Click(Form1& form);
void m_Zpet_Click(Form1& form);
void m_Znovu_Click(Form1& form);
void m_Kopirovat_vse_Click(Form1& form);
void m_Vlozit_Click(Form1& form);
void m_Smazat_vybrane_Click(Form1& form);
void m_Doplnit_zname_Click(Form1& form);
void m_Seradit_jmeno_Click(Form1& form);
void m_Seradit_material_Click(Form1& form);
void Command39_Click(Form1& form);
void ListView1_Rename(Form1& form, std::uint64_t id, const std::string& text);
void ListView1_CellEdit(Form1& form, const controls::TypedCell& typed);
void ListView1_FindKey(Form1& form, controls::Find find);

void Combo1_KeyPress(Form1& form, int key);
void Combo2_KeyPress(Form1& form, int key);
void Combo3_KeyPress(Form1& form, int key);
void Combo4_KeyPress(Form1& form, int key);
void Combo1_Forget(Form1& form, std::size_t item);
void Combo2_Forget(Form1& form, std::size_t item);
void Combo3_Forget(Form1& form, std::size_t item);
void Combo4_Forget(Form1& form, std::size_t item);
void Command12_Click(Form1& form);
void Command13_Click(Form1& form);
void Command14_Click(Form1& form);
void Command15_Click(Form1& form);

// Load and save the remembered values of a picker, one per line in the file of its tag's name in
// the data folder. Where there is none, those that the program brings along in its folder "Hodnoty"
// are taken over. What fails is shown on the status line, by both in the words of saving.
void Nacist_List(Form1& form, controls::ComboBox& list);
void Ulozit_List(Form1& form, const controls::ComboBox& list);

void Command17_Click(Form1& form);
void Command17_MouseDown(Form1& form, int button, int shift, int x, int y);
void Command17_MenuKey(Form1& form);
void m_Ulozit_pracovni_Click(Form1& form);
// Saves the working list as the program closes, and asks what to do where that fails, unless
// Windows ends the session. Whether nothing is left to be saved, also where the person wants it so.
bool SaveBeforeClosing(Form1& form);
void Command27_Click(Form1& form);
void Command27_MouseDown(Form1& form, int button, int shift, int x, int y);
void Command27_MenuKey(Form1& form);
void m_Otevrit_pracovni_Click(Form1& form);

} // namespace partslist
