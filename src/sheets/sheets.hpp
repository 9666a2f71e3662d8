// The sheets of the active drawing in ListView3: a plan of their names, their order and their
// number, which the apply buttons carry into CATIA.
//
// Actions:
//   Command21_Click      "Načíst Sheets z catie"
//   ListView3_Click      a click on the list: its current row's new name goes into Text5
//   ListView3_ItemCheck  a check box of the list
//   ListView3_MouseDown  right: the popup menu; left: the start of a drag
//   ListView3_MouseUp    left: the drop
//   ListView3_MenuKey    the popup menu by keyboard
//   ListView3_MoveKey    Alt and an arrow key: the current row moves by one
//   m_Sheet_pridej_Click "Pridat"
//   m_Sheet_smaz_Click   "Smazat"
//   m_Sheet_zpet_Click, m_Sheet_znovu_Click  "Zpět", "Znovu"
//   m_Sheet_vratit_jmena_Click  "Vrátit plánovaná jména"
//   Text5_KeyPress       Enter: the text becomes the current row's new name
//   Command28_Click      the picture button beside it, likewise
//   Command35_Click      "Sheet generovat"
//   Command20_Click      "Udělej" in "Číslovat Sheet od"
//   Text6_KeyPress       Enter in its field, likewise
//   Command22_Click      "Udělej" in "Jména z tabulky"
//   Command23_Click      "Přejmenuj Sheet v Catii"
//   Command24_Click      "Sheet cislovani"
//   Command25_Click      "Sheet nazvy"
//   Command34_Click      "Přesun Sheetu v Catii"
//   Command29_Click      "Sheet prehazovani"
//   Command33_Click      "Schazi"
//   Command32_Click      "Udělej" in "Pridat Sheety"
//   Text7_KeyPress       Enter in its field, likewise
//   Command31_Click      "Sheet Vytvorit"
//
// What fails in CATIA is shown on the status line; what was already done stays done.
#pragma once

#include "controls/form1.hpp"

namespace sheets {

using controls::Form1;

void Command21_Click(Form1& form);
void ListView3_Click(Form1& form);
void ListView3_ItemCheck(Form1& form, std::size_t row);
void ListView3_MouseDown(Form1& form, int button, int shift, int x, int y);
void ListView3_MouseUp(Form1& form, int button, int shift, int x, int y);
void ListView3_MenuKey(Form1& form);
void ListView3_MoveKey(Form1& form, int rows);
void m_Sheet_pridej_Click(Form1& form);
void m_Sheet_smaz_Click(Form1& form);
void m_Sheet_zpet_Click(Form1& form);
void m_Sheet_znovu_Click(Form1& form);
void m_Sheet_vratit_jmena_Click(Form1& form);
void Text5_KeyPress(Form1& form, int key);
void Command28_Click(Form1& form);
void Command35_Click(Form1& form);

void Command20_Click(Form1& form);
void Text6_KeyPress(Form1& form, int key);
void Command22_Click(Form1& form);
void Command23_Click(Form1& form);
void Command24_Click(Form1& form);
void Command25_Click(Form1& form);

void Command34_Click(Form1& form);
void Command29_Click(Form1& form);

void Command33_Click(Form1& form);
void Command32_Click(Form1& form);
void Text7_KeyPress(Form1& form, int key);
void Command31_Click(Form1& form);

} // namespace sheets
