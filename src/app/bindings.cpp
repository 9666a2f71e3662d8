// The table that says which control raises which action.

#include "app/form_events.hpp"
#include "partslist/partslist.hpp"
#include "shell/shell.hpp"
#include "structure/structure.hpp"
#include "tables/tables.hpp"

namespace app {

namespace {

using controls::Form1;

template <typename... Arguments>
void Bind(Form1& form, controls::Event<Arguments...>& event,
          void (*action)(Form1&, std::type_identity_t<Arguments>...)) {
    event = [&form, action](Arguments... arguments) {
        Dispatch(form, [&] { action(form, arguments...); });
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
    Bind(form, form.TreeView1.NodeCheck, structure::TreeView1_NodeCheck);

    Bind(form, form.ListView1.Click, partslist::ListView1_Click);
    Bind(form, form.ListView1.ItemCheck, partslist::ListView1_ItemCheck);
    Bind(form, form.ListView1.MouseDown, partslist::ListView1_MouseDown);
    Bind(form, form.ListView1.MouseUp, partslist::ListView1_MouseUp);
    Bind(form, form.ListView1.MenuKey, partslist::ListView1_MenuKey);
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
    Bind(form, form.Command11.Click, tables::Command11_Click);
}

} // namespace app
