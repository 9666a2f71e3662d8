// The table that says which control raises which action.

#include "app/form_events.hpp"
#include "partslist/partslist.hpp"
#include "sheets/sheets.hpp"
#include "shell/shell.hpp"
#include "structure/structure.hpp"
#include "tables/tables.hpp"

namespace app {

namespace {

using controls::Form1;

// An event that is raised again while its own action runs, at a yield, starts it again.
template <typename... Arguments>
void BindRepeatable(Form1& form, controls::Event<Arguments...>& event,
                    void (*action)(Form1&, std::type_identity_t<Arguments>...)) {
    event = [&form, action](Arguments... arguments) {
        Dispatch(form, [&] { action(form, arguments...); });
    };
}

// An event that is raised again while its own action runs is ignored: a second walk inside the
// first one would double every quantity.
template <typename... Arguments>
void Bind(Form1& form, controls::Event<Arguments...>& event,
          void (*action)(Form1&, std::type_identity_t<Arguments>...)) {
    event = [&form, action, running = false](Arguments... arguments) mutable {
        if (running) {
            return;
        }
        running = true;
        Dispatch(form, [&] { action(form, arguments...); }); // raises nothing
        running = false;
    };
}

} // namespace

void BindActions(Form1& form) {
    Bind(form, form.Check2.Click, shell::Check2_Click);
    Bind(form, form.Command18.Click, shell::Command18_Click);
    Bind(form, form.SSTab1.Click, shell::SSTab1_Click);

    Bind(form, form.Command3.Click, structure::Command3_Click);
    Bind(form, form.Command5.Click, structure::Command5_Click);
    Bind(form, form.Command4.Click, structure::Command4_Click);
    Bind(form, form.Command1.Click, structure::Command1_Click);
    Bind(form, form.Command2.Click, structure::Command2_Click);
    Bind(form, form.Command26.Click, shell::Command26_Click);
    form.Text1.Pasted = structure::PastedLines;
    Bind(form, form.TreeView1.NodeCheck, structure::TreeView1_NodeCheck);

    Bind(form, form.ListView1.Click, partslist::ListView1_Click);
    Bind(form, form.ListView1.ItemCheck, partslist::ListView1_ItemCheck);
    // A popup menu's entry runs inside the press that opened it; presses go on being taken.
    BindRepeatable(form, form.ListView1.MouseDown, partslist::ListView1_MouseDown);
    Bind(form, form.ListView1.MouseUp, partslist::ListView1_MouseUp);
    BindRepeatable(form, form.ListView1.MenuKey, partslist::ListView1_MenuKey);
    Bind(form, form.ListView1.MoveKey, partslist::ListView1_MoveKey);
    Bind(form, form.m_Pridat.Click, partslist::m_Pridat_Click);
    Bind(form, form.m_Smazat.Click, partslist::m_Smazat_Click);
    Bind(form, form.Combo1.KeyPress, partslist::Combo1_KeyPress);
    Bind(form, form.Combo2.KeyPress, partslist::Combo2_KeyPress);
    Bind(form, form.Combo3.KeyPress, partslist::Combo3_KeyPress);
    Bind(form, form.Combo4.KeyPress, partslist::Combo4_KeyPress);
    Bind(form, form.Command12.Click, partslist::Command12_Click);
    Bind(form, form.Command13.Click, partslist::Command13_Click);
    Bind(form, form.Command14.Click, partslist::Command14_Click);
    Bind(form, form.Command15.Click, partslist::Command15_Click);
    Bind(form, form.Command17.Click, partslist::Command17_Click);
    Bind(form, form.Command17.MouseDown, partslist::Command17_MouseDown);
    Bind(form, form.Command27.Click, partslist::Command27_Click);
    Bind(form, form.Command27.MouseDown, partslist::Command27_MouseDown);

    Bind(form, form.Command19.Click, shell::Command19_Click);
    // A second table may be wanted while the first one is being made.
    BindRepeatable(form, form.Command11.Click, tables::Command11_Click);
    BindRepeatable(form, form.Command7.Click, tables::Command7_Click);
    Bind(form, form.Command16.Click, tables::Command16_Click);
    Bind(form, form.Command30.Click, tables::Command30_Click);
    Bind(form, form.Command6.Click, tables::Command6_Click);
    Bind(form, form.Command8.Click, tables::Command8_Click);
    BindRepeatable(form, form.m_poslat_jako_tabulku.Click, tables::m_poslat_jako_tabulku_Click);
    Bind(form, form.m_vlozit_do_tabulky.Click, tables::m_vlozit_do_tabulky_Click);
    Bind(form, form.m_Poslat_jako_text.Click, tables::m_Poslat_jako_text_Click);
    Bind(form, form.Command10.Click, tables::Command10_Click);
    Bind(form, form.Command9.Click, tables::Command9_Click);

    Bind(form, form.Command21.Click, sheets::Command21_Click);
    Bind(form, form.ListView3.Click, sheets::ListView3_Click);
    Bind(form, form.ListView3.ItemCheck, sheets::ListView3_ItemCheck);
    BindRepeatable(form, form.ListView3.MouseDown, sheets::ListView3_MouseDown);
    Bind(form, form.ListView3.MouseUp, sheets::ListView3_MouseUp);
    BindRepeatable(form, form.ListView3.MenuKey, sheets::ListView3_MenuKey);
    Bind(form, form.ListView3.MoveKey, sheets::ListView3_MoveKey);
    Bind(form, form.m_Sheet_pridej.Click, sheets::m_Sheet_pridej_Click);
    Bind(form, form.m_Sheet_smaz.Click, sheets::m_Sheet_smaz_Click);
    Bind(form, form.Text5.KeyPress, sheets::Text5_KeyPress);
    Bind(form, form.Command28.Click, sheets::Command28_Click);
    Bind(form, form.Command35.Click, sheets::Command35_Click);
    Bind(form, form.Command20.Click, sheets::Command20_Click);
    Bind(form, form.Command22.Click, sheets::Command22_Click);
    Bind(form, form.Command23.Click, sheets::Command23_Click);
    Bind(form, form.Command24.Click, sheets::Command24_Click);
    Bind(form, form.Command25.Click, sheets::Command25_Click);
    Bind(form, form.Command34.Click, sheets::Command34_Click);
    Bind(form, form.Command29.Click, sheets::Command29_Click);
    Bind(form, form.Command33.Click, sheets::Command33_Click);
    Bind(form, form.Command32.Click, sheets::Command32_Click);
    Bind(form, form.Command31.Click, sheets::Command31_Click);
}

} // namespace app
