// Which window of the resources shows which control of the form. Views are made, messages routed
// and popup menus built from this table; a control that stands in the form and in the resources
// needs a row here and nothing else on this side.
#pragma once

#include <array>
#include <variant>

#include "controls/form1.hpp"
#include "win32/resource.h"

namespace win32 {

using ControlMember =
    std::variant<controls::Button controls::Form1::*, controls::CheckBox controls::Form1::*,
                 controls::TextBox controls::Form1::*, controls::ComboBox controls::Form1::*,
                 controls::ListBox controls::Form1::*, controls::ListView controls::Form1::*,
                 controls::TreeView controls::Form1::*, controls::TabControl controls::Form1::*,
                 controls::StatusBar controls::Form1::*, controls::Frame controls::Form1::*,
                 controls::MenuItem controls::Form1::*>;

struct ControlRow {
    int id; // of the resources
    ControlMember member;
    int label_id = 0; // of the text above a picker
};

// The main window, then its pages from left to right, then the popup menus.
inline constexpr auto kControlTable = std::to_array<ControlRow>({
    {ID_Check2, &controls::Form1::Check2},
    {ID_Command18, &controls::Form1::Command18},
    {ID_SSTab1, &controls::Form1::SSTab1},
    {ID_StatusBar1, &controls::Form1::StatusBar1},

    {ID_Command3, &controls::Form1::Command3},
    {ID_Text1, &controls::Form1::Text1},
    {ID_Command5, &controls::Form1::Command5},
    {ID_TreeView1, &controls::Form1::TreeView1},
    {ID_Command4, &controls::Form1::Command4},
    {ID_ListView2, &controls::Form1::ListView2},
    {ID_Command1, &controls::Form1::Command1},
    {ID_Command2, &controls::Form1::Command2},
    {ID_Command26, &controls::Form1::Command26},
    {ID_List1, &controls::Form1::List1},

    {ID_ListView1, &controls::Form1::ListView1},
    {ID_Combo1, &controls::Form1::Combo1, ID_Combo1_Label},
    {ID_Command12, &controls::Form1::Command12},
    {ID_Combo2, &controls::Form1::Combo2, ID_Combo2_Label},
    {ID_Command13, &controls::Form1::Command13},
    {ID_Combo3, &controls::Form1::Combo3, ID_Combo3_Label},
    {ID_Command14, &controls::Form1::Command14},
    {ID_Combo4, &controls::Form1::Combo4, ID_Combo4_Label},
    {ID_Command15, &controls::Form1::Command15},
    {ID_Command17, &controls::Form1::Command17},
    {ID_Command27, &controls::Form1::Command27},

    {ID_Text2, &controls::Form1::Text2},
    {ID_Text4, &controls::Form1::Text4},
    {ID_Command19, &controls::Form1::Command19},
    {ID_Command11, &controls::Form1::Command11},
    {ID_Command16, &controls::Form1::Command16},
    {ID_Command30, &controls::Form1::Command30},
    {ID_Command7, &controls::Form1::Command7},
    {ID_Command6, &controls::Form1::Command6},
    {ID_Check3, &controls::Form1::Check3},
    {ID_Command8, &controls::Form1::Command8},

    {ID_Text3, &controls::Form1::Text3},
    {ID_Command10, &controls::Form1::Command10},
    {ID_Command9, &controls::Form1::Command9},

    {ID_ListView3, &controls::Form1::ListView3},
    {ID_Command21, &controls::Form1::Command21},
    {ID_Text5, &controls::Form1::Text5},
    {ID_Command28, &controls::Form1::Command28},
    {ID_Frame1, &controls::Form1::Frame1},
    {ID_Text6, &controls::Form1::Text6},
    {ID_Command20, &controls::Form1::Command20},
    {ID_Frame2, &controls::Form1::Frame2},
    {ID_Check1, &controls::Form1::Check1},
    {ID_Command22, &controls::Form1::Command22},
    {ID_Command23, &controls::Form1::Command23},
    {ID_Command24, &controls::Form1::Command24},
    {ID_Command25, &controls::Form1::Command25},
    {ID_Command34, &controls::Form1::Command34},
    {ID_Command33, &controls::Form1::Command33},
    {ID_Frame3, &controls::Form1::Frame3},
    {ID_Text7, &controls::Form1::Text7},
    {ID_Command32, &controls::Form1::Command32},
    {ID_Command29, &controls::Form1::Command29},
    {ID_Command31, &controls::Form1::Command31},
    {ID_Command35, &controls::Form1::Command35},

    {ID_m_poslat_jako_tabulku, &controls::Form1::m_poslat_jako_tabulku},
    {ID_m_vlozit_do_tabulky, &controls::Form1::m_vlozit_do_tabulky},
    {ID_m_Poslat_jako_text, &controls::Form1::m_Poslat_jako_text},
    {ID_m_Pridat, &controls::Form1::m_Pridat},
    {ID_m_Smazat, &controls::Form1::m_Smazat},
    {ID_m_Zpet, &controls::Form1::m_Zpet},
    {ID_m_Znovu, &controls::Form1::m_Znovu},
    {ID_m_Sheet_pridej, &controls::Form1::m_Sheet_pridej},
    {ID_m_Sheet_smaz, &controls::Form1::m_Sheet_smaz},
    {ID_m_Sheet_zpet, &controls::Form1::m_Sheet_zpet},
    {ID_m_Sheet_znovu, &controls::Form1::m_Sheet_znovu},
    {ID_m_Sheet_vratit_jmena, &controls::Form1::m_Sheet_vratit_jmena},
    {ID_m_Kopirovat_chybu, &controls::Form1::m_Kopirovat_chybu},
    {ID_m_Slozka_protokolu, &controls::Form1::m_Slozka_protokolu},
    {ID_m_Diagnostika, &controls::Form1::m_Diagnostika},
    {ID_m_O_programu, &controls::Form1::m_O_programu},
});

} // namespace win32
