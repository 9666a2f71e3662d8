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

// What a control says of itself beyond its caption.
struct ControlHelp {
    int label_id = 0;      // of the text above a picker
    char access_key = 0;   // pressed with Alt: a letter of the caption, or of the label
    const char* name = ""; // for programs that read aloud, where neither a text nor a label says it
    const char* tip = "";  // one line: what it does and what it needs
};

struct ControlRow {
    int id; // of the resources
    ControlMember member;
    ControlHelp help = {};
};

// The main window, then its pages from left to right, then the popup menus.
inline constexpr auto kControlTable = std::to_array<ControlRow>({
    {ID_Check2, &controls::Form1::Check2, {.tip = "Drží okno nad ostatními okny, i nad CATII."}},
    {ID_Command18,
     &controls::Form1::Command18,
     {.tip = "Sbalí okno na horní proužek a zase ho rozbalí."}},
    {ID_SSTab1, &controls::Form1::SSTab1, {.name = "Stránky"}},
    {ID_StatusBar1, &controls::Form1::StatusBar1},

    {ID_Command3,
     &controls::Form1::Command3,
     {.access_key = 'N',
      .tip = "Přečte z CATIE strukturu aktivní sestavy (CATProduct) a postaví z ní strom (F5)."}},
    {ID_Text1, &controls::Form1::Text1, {.name = "Text struktury"}},
    {ID_Command5,
     &controls::Form1::Command5,
     {.access_key = 'T',
      .tip = "Postaví strom znovu z textu struktury vlevo; všechno v něm zaškrtne."}},
    {ID_TreeView1, &controls::Form1::TreeView1, {.name = "Strom sestavy"}},
    {ID_Command4,
     &controls::Form1::Command4,
     {.access_key = 'L',
      .tip = "Nahradí seznam dílů díly zaškrtnutými ve stromu a spočítá jejich kusy."}},
    {ID_ListView2, &controls::Form1::ListView2, {.name = "Přehled kusů"}},
    {ID_Command1,
     &controls::Form1::Command1,
     {.tip = "Zkouška bez CATIE: nahradí seznam dílů deseti řádky A až J."}},
    {ID_Command2,
     &controls::Form1::Command2,
     {.tip = "Zkouška bez CATIE: udělá totéž co generator a ukáže dvě pevná čísla."}},
    {ID_Command26,
     &controls::Form1::Command26,
     {.tip = "Zjistí, zda běží CATIA, a vypíše titulky všech oken; nic nemění."}},
    {ID_List1, &controls::Form1::List1, {.name = "Titulky oken"}},

    {ID_ListView1, &controls::Form1::ListView1, {.name = "Seznam dílů"}},
    {ID_Combo1, &controls::Form1::Combo1, {.label_id = ID_Combo1_Label, .access_key = 'M'}},
    {ID_Command12,
     &controls::Form1::Command12,
     {.name = "Použít materiál",
      .tip = "Dá materiál vybraným řádkům a zapamatuje si ho (Enter v poli)."}},
    {ID_Combo2, &controls::Form1::Combo2, {.label_id = ID_Combo2_Label, .access_key = 'V'}},
    {ID_Command13,
     &controls::Form1::Command13,
     {.name = "Použít velikost",
      .tip = "Dá velikost vybraným řádkům a zapamatuje si ji (Enter v poli)."}},
    {ID_Combo3, &controls::Form1::Combo3, {.label_id = ID_Combo3_Label, .access_key = 'P'}},
    {ID_Command14,
     &controls::Form1::Command14,
     {.name = "Použít poznámku",
      .tip = "Dá poznámku vybraným řádkům a zapamatuje si ji (Enter v poli)."}},
    {ID_Combo4, &controls::Form1::Combo4, {.label_id = ID_Combo4_Label, .access_key = 'K'}},
    {ID_Command15,
     &controls::Form1::Command15,
     {.name = "Použít počet kusů",
      .tip = "Dá počet kusů vybraným řádkům a zapamatuje si ho (Enter v poli)."}},
    {ID_Command17,
     &controls::Form1::Command17,
     {.access_key = 'U',
      .tip = "Uloží seznam dílů do souboru (Ctrl+S); pravým tlačítkem do pracovního souboru."}},
    {ID_Command27,
     &controls::Form1::Command27,
     {.access_key = 'O',
      .tip = "Otevře seznam dílů ze souboru (Ctrl+O); pravým tlačítkem z pracovního souboru."}},

    {ID_Text2, &controls::Form1::Text2, {.name = "Nastavení tabulky"}},
    {ID_Text4, &controls::Form1::Text4, {.name = "Výchozí nastavení tabulky"}},
    {ID_Command19,
     &controls::Form1::Command19,
     {.access_key = 'R', .tip = "Vrátí výchozí nastavení tabulky."}},
    {ID_Command11,
     &controls::Form1::Command11,
     {.access_key = 'V',
      .tip = "Vytvoří v aktivním pohledu výkresu novou tabulku z celého seznamu dílů."}},
    {ID_Command16,
     &controls::Form1::Command16,
     {.access_key = 'E',
      .tip = "Zapíše aktuální řádek seznamu do tabulky vybrané v CATII (2 řádky, 6 sloupců)."}},
    {ID_Command30,
     &controls::Form1::Command30,
     {.access_key = 'X',
      .tip = "Zapíše celý seznam do tabulky vybrané v CATII (7 sloupců, aspoň o řádek víc než "
             "seznam); "
             "zbytek smaže."}},
    {ID_Command7,
     &controls::Form1::Command7,
     {.access_key = 'K',
      .tip = "Vytvoří v aktivním pohledu výkresu novou tabulku jen s aktuálním řádkem seznamu."}},
    {ID_Command6,
     &controls::Form1::Command6,
     {.access_key = 'J',
      .tip = "Vloží aktuální řádek seznamu do aktivního pohledu výkresu jako šest textů."}},
    {ID_Check3,
     &controls::Form1::Check3,
     {.access_key = 'B',
      .tip = "CATIA vypočítá zobrazení tabulky až po jejím zapsání, což ušetří mnoho času."}},
    {ID_Command8,
     &controls::Form1::Command8,
     {.tip = "Zkouška: vloží do aktivního pohledu výkresu text „ahoj“."}},

    {ID_Text3, &controls::Form1::Text3, {.name = "Přečtené nastavení tabulky"}},
    {ID_Command10,
     &controls::Form1::Command10,
     {.access_key = 'P',
      .tip = "Vypíše vlevo rozměry a písma tabulky vybrané v CATII; nic nemění."}},
    {ID_Command9,
     &controls::Form1::Command9,
     {.access_key = 'T', .tip = "Nahradí seznam dílů řádky tabulky vybrané v CATII (7 sloupců)."}},

    {ID_ListView3, &controls::Form1::ListView3, {.name = "Seznam listů"}},
    {ID_Command21,
     &controls::Form1::Command21,
     {.access_key = 'N', .tip = "Načte listy aktivního výkresu; potřebuje neprázdný seznam dílů."}},
    {ID_Text5, &controls::Form1::Text5, {.name = "Nové jméno listu"}},
    {ID_Command28,
     &controls::Form1::Command28,
     {.name = "Použít nové jméno",
      .tip = "Dá nové jméno aktuálnímu řádku seznamu (Enter v poli)."}},
    {ID_Frame1, &controls::Form1::Frame1, {.access_key = 'O'}},
    {ID_Text6, &controls::Form1::Text6, {.name = "Číslovat od"}},
    {ID_Command20,
     &controls::Form1::Command20,
     {.tip = "Očísluje zaškrtnuté řádky seznamu od čísla vlevo; v CATII nic nemění."}},
    {ID_Frame2, &controls::Form1::Frame2},
    {ID_Check1,
     &controls::Form1::Check1,
     {.access_key = 'V',
      .tip = "První list je sestava: dostane jméno 1.Sestava a počítá se mezi potřebné."}},
    {ID_Command22,
     &controls::Form1::Command22,
     {.access_key = 'U',
      .tip = "Pojmenuje zaškrtnuté řádky podle dílů, které mají list; v CATII nic nemění."}},
    {ID_Command23,
     &controls::Form1::Command23,
     {.access_key = 'P',
      .tip = "Přejmenuje listy výkresu v CATII podle seznamu a založí plánované listy."}},
    {ID_Command24,
     &controls::Form1::Command24,
     {.tip = "Hned očísluje první listy výkresu v CATII; nejdřív se zeptá na rozsah."}},
    {ID_Command25,
     &controls::Form1::Command25,
     {.tip = "Hned pojmenuje listy výkresu v CATII podle seznamu dílů; nejdřív se zeptá."}},
    {ID_Command34,
     &controls::Form1::Command34,
     {.access_key = 'S',
      .tip = "Seřadí listy výkresu v CATII podle seznamu a načte je; potřebuje neprázdný seznam "
             "dílů."}},
    {ID_Command33,
     &controls::Form1::Command33,
     {.access_key = 'H',
      .tip = "Spočítá, kolik listů chybí pro díly s listem, a napíše to do Pridat Sheety."}},
    {ID_Frame3, &controls::Form1::Frame3, {.access_key = 'A'}},
    {ID_Text7, &controls::Form1::Text7, {.name = "Kolik listů přidat"}},
    {ID_Command32,
     &controls::Form1::Command32,
     {.tip = "Přidá do seznamu tolik plánovaných listů, kolik je vlevo; v CATII nic nemění."}},
    {ID_Command29,
     &controls::Form1::Command29,
     {.tip = "Zkouška: hned prohodí první dva listy výkresu v CATII."}},
    {ID_Command31,
     &controls::Form1::Command31,
     {.tip = "Zkouška: hned založí ve výkresu v CATII jeden list."}},
    {ID_Command35,
     &controls::Form1::Command35,
     {.tip = "Zkouška bez CATIE: nahradí seznam listů deseti řádky test 1 až test 10."}},

    {ID_m_poslat_jako_tabulku, &controls::Form1::m_poslat_jako_tabulku},
    {ID_m_vlozit_do_tabulky, &controls::Form1::m_vlozit_do_tabulky},
    {ID_m_Poslat_jako_text, &controls::Form1::m_Poslat_jako_text},
    {ID_m_Pridat, &controls::Form1::m_Pridat},
    {ID_m_Smazat, &controls::Form1::m_Smazat},
    {ID_m_Zpet, &controls::Form1::m_Zpet},
    {ID_m_Znovu, &controls::Form1::m_Znovu},
    {ID_m_Ulozit_pracovni, &controls::Form1::m_Ulozit_pracovni},
    {ID_m_Otevrit_pracovni, &controls::Form1::m_Otevrit_pracovni},
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
