// The table that says which control raises which action.

#include "app/form_events.hpp"
#include "partslist/known_parts.hpp"
#include "partslist/partslist.hpp"
#include "sheets/sheets.hpp"
#include "shell/shell.hpp"
#include "shell/support.hpp"
#include "structure/structure.hpp"
#include "tables/tables.hpp"

namespace app {

namespace {

using controls::Form1;

// What undoing calls that which has no caption.
constexpr const char* kTicking = "Zaškrtnutí";
constexpr const char* kMoving = "Přesun";
constexpr const char* kRenaming = "Přejmenování";
constexpr const char* kEditing = "Úprava";

// An event that is raised again while its own action runs, at a yield, starts it again.
template <typename... Arguments>
void BindRepeatable(Form1& form, controls::Event<Arguments...>& event,
                    void (*action)(Form1&, std::type_identity_t<Arguments>...),
                    const std::string& step = {}) {
    event = [&form, action, step](Arguments... arguments) {
        Dispatch(
            form, [&] { action(form, arguments...); }, step);
    };
}

// An event that is raised again while its own action runs is ignored: a second walk inside the
// first one would double every quantity.
template <typename... Arguments>
void Bind(Form1& form, controls::Event<Arguments...>& event,
          void (*action)(Form1&, std::type_identity_t<Arguments>...),
          const std::string& step = {}) {
    event = [&form, action, step, running = false](Arguments... arguments) mutable {
        if (running) {
            return;
        }
        running = true;
        // raises nothing
        Dispatch(
            form, [&] { action(form, arguments...); }, step);
        running = false;
    };
}

template <typename Control>
concept HasClick = requires(Control control) {
    control.Click;
};

const std::string& CaptionOf(const controls::Button& button) {
    return button.Caption();
}
const std::string& CaptionOf(const controls::MenuItem& item) {
    return item.caption;
}

template <HasClick Pressed>
void BindRepeatable(Form1& form, Pressed& pressed, void (*action)(Form1&)) {
    BindRepeatable(form, pressed.Click, action, CaptionOf(pressed));
}

template <HasClick Pressed>
void Bind(Form1& form, Pressed& pressed, void (*action)(Form1&)) {
    Bind(form, pressed.Click, action, CaptionOf(pressed));
}

} // namespace

void BindActions(Form1& form) {
    Bind(form, form.Check2.Click, shell::Check2_Click);
    Bind(form, form.Command18, shell::Command18_Click);
    Bind(form, form.SSTab1.Click, shell::SSTab1_Click);
    BindRepeatable(form, form.StatusBar1.RightClick, shell::StatusBar1_RightClick);
    BindRepeatable(form, form.StatusBar1.MenuKey, shell::StatusBar1_MenuKey);
    Bind(form, form.m_Kopirovat_chybu, shell::m_Kopirovat_chybu_Click);
    Bind(form, form.m_Slozka_protokolu, shell::m_Slozka_protokolu_Click);
    Bind(form, form.m_Diagnostika, shell::m_Diagnostika_Click);
    Bind(form, form.m_O_programu, shell::m_O_programu_Click);

    Bind(form, form.Command3, structure::Command3_Click);
    Bind(form, form.Command5, structure::Command5_Click);
    Bind(form, form.Command4, structure::Command4_Click);
    Bind(form, form.Command1, structure::Command1_Click);
    Bind(form, form.Command2, structure::Command2_Click);
    Bind(form, form.Command26, shell::Command26_Click);
    form.Text1.Pasted = structure::PastedLines;
    Bind(form, form.TreeView1.NodeCheck, structure::TreeView1_NodeCheck);

    Bind(form, form.ListView1.Click, partslist::ListView1_Click);
    Bind(form, form.ListView1.ItemCheck, partslist::ListView1_ItemCheck, kTicking);
    // A popup menu's entry runs inside the press that opened it; presses go on being taken.
    BindRepeatable(form, form.ListView1.MouseDown, partslist::ListView1_MouseDown);
    Bind(form, form.ListView1.MouseUp, partslist::ListView1_MouseUp, kMoving);
    BindRepeatable(form, form.ListView1.MenuKey, partslist::ListView1_MenuKey);
    Bind(form, form.ListView1.MoveKey, partslist::ListView1_MoveKey, kMoving);
    Bind(form, form.ListView1.Rename, partslist::ListView1_Rename, kRenaming);
    Bind(form, form.m_Pridat, partslist::m_Pridat_Click);
    Bind(form, form.m_Smazat, partslist::m_Smazat_Click);
    Bind(form, form.m_Zpet, partslist::m_Zpet_Click);
    Bind(form, form.m_Znovu, partslist::m_Znovu_Click);
    Bind(form, form.ListView1.CellEdit, partslist::ListView1_CellEdit, kEditing);
    Bind(form, form.ListView1.FindKey, partslist::ListView1_FindKey);
    Bind(form, form.m_Kopirovat_vse, partslist::m_Kopirovat_vse_Click);
    Bind(form, form.m_Vlozit, partslist::m_Vlozit_Click);
    Bind(form, form.m_Smazat_vybrane, partslist::m_Smazat_vybrane_Click);
    Bind(form, form.m_Doplnit_zname, partslist::m_Doplnit_zname_Click);
    Bind(form, form.m_Seradit_jmeno, partslist::m_Seradit_jmeno_Click);
    Bind(form, form.m_Seradit_material, partslist::m_Seradit_material_Click);
    Bind(form, form.Command39, partslist::Command39_Click);
    form.list_exported = [&form](const auto& rows) { partslist::LearnExported(form, rows); };
    Bind(form, form.Combo1.Forget, partslist::Combo1_Forget);
    Bind(form, form.Combo2.Forget, partslist::Combo2_Forget);
    Bind(form, form.Combo3.Forget, partslist::Combo3_Forget);
    Bind(form, form.Combo4.Forget, partslist::Combo4_Forget);
    Bind(form, form.Combo1.KeyPress, partslist::Combo1_KeyPress, form.Combo1.Label());
    Bind(form, form.Combo2.KeyPress, partslist::Combo2_KeyPress, form.Combo2.Label());
    Bind(form, form.Combo3.KeyPress, partslist::Combo3_KeyPress, form.Combo3.Label());
    Bind(form, form.Combo4.KeyPress, partslist::Combo4_KeyPress, form.Combo4.Label());
    Bind(form, form.Command12.Click, partslist::Command12_Click, form.Combo1.Label());
    Bind(form, form.Command13.Click, partslist::Command13_Click, form.Combo2.Label());
    Bind(form, form.Command14.Click, partslist::Command14_Click, form.Combo3.Label());
    Bind(form, form.Command15.Click, partslist::Command15_Click, form.Combo4.Label());
    Bind(form, form.Command17, partslist::Command17_Click);
    Bind(form, form.Command17.MouseDown, partslist::Command17_MouseDown, form.Command17.Caption());
    BindRepeatable(form, form.Command17.MenuKey, partslist::Command17_MenuKey);
    Bind(form, form.m_Ulozit_pracovni, partslist::m_Ulozit_pracovni_Click);
    Bind(form, form.Command27, partslist::Command27_Click);
    Bind(form, form.Command27.MouseDown, partslist::Command27_MouseDown, form.Command27.Caption());
    BindRepeatable(form, form.Command27.MenuKey, partslist::Command27_MenuKey);
    Bind(form, form.m_Otevrit_pracovni, partslist::m_Otevrit_pracovni_Click);

    Bind(form, form.Command19, shell::Command19_Click);
    // A second table may be wanted while the first one is being made.
    BindRepeatable(form, form.Command11, tables::Command11_Click);
    BindRepeatable(form, form.Command7, tables::Command7_Click);
    Bind(form, form.Command16, tables::Command16_Click);
    Bind(form, form.Command30, tables::Command30_Click);
    Bind(form, form.Command37, tables::Command37_Click);
    Bind(form, form.Command6, tables::Command6_Click);
    Bind(form, form.Check3.Click, shell::Check3_Click);
    Bind(form, form.Command8, tables::Command8_Click);
    Bind(form, form.Command36, shell::Command36_Click);
    BindRepeatable(form, form.m_poslat_jako_tabulku, tables::m_poslat_jako_tabulku_Click);
    Bind(form, form.m_vlozit_do_tabulky, tables::m_vlozit_do_tabulky_Click);
    Bind(form, form.m_Poslat_jako_text, tables::m_Poslat_jako_text_Click);
    Bind(form, form.Combo5.DropDown, tables::Combo5_DropDown);
    Bind(form, form.Combo5.Choose, tables::Combo5_Choose, form.Combo5.Label());
    Bind(form, form.Combo5.KeyPress, tables::Combo5_KeyPress, form.Combo5.Label());
    Bind(form, form.Command40, tables::Command40_Click);
    Bind(form, form.Command41, tables::Command41_Click);
    Bind(form, form.Command10, tables::Command10_Click);
    Bind(form, form.Command9, tables::Command9_Click);
    Bind(form, form.Command38, tables::Command38_Click);

    Bind(form, form.Command21, sheets::Command21_Click);
    Bind(form, form.ListView3.Click, sheets::ListView3_Click);
    Bind(form, form.ListView3.ItemCheck, sheets::ListView3_ItemCheck, kTicking);
    BindRepeatable(form, form.ListView3.MouseDown, sheets::ListView3_MouseDown);
    Bind(form, form.ListView3.MouseUp, sheets::ListView3_MouseUp, kMoving);
    BindRepeatable(form, form.ListView3.MenuKey, sheets::ListView3_MenuKey);
    Bind(form, form.ListView3.MoveKey, sheets::ListView3_MoveKey, kMoving);
    Bind(form, form.m_Sheet_pridej, sheets::m_Sheet_pridej_Click);
    Bind(form, form.m_Sheet_smaz, sheets::m_Sheet_smaz_Click);
    Bind(form, form.m_Sheet_zpet, sheets::m_Sheet_zpet_Click);
    Bind(form, form.m_Sheet_znovu, sheets::m_Sheet_znovu_Click);
    Bind(form, form.m_Sheet_vratit_jmena, sheets::m_Sheet_vratit_jmena_Click);
    Bind(form, form.Text5.KeyPress, sheets::Text5_KeyPress, kRenaming);
    Bind(form, form.Command28.Click, sheets::Command28_Click, kRenaming);
    Bind(form, form.Command35, sheets::Command35_Click);
    Bind(form, form.Command20, sheets::Command20_Click);
    Bind(form, form.Text6.KeyPress, sheets::Text6_KeyPress, form.Command20.Caption());
    Bind(form, form.Command22, sheets::Command22_Click);
    Bind(form, form.Command23, sheets::Command23_Click);
    Bind(form, form.Command24, sheets::Command24_Click);
    Bind(form, form.Command25, sheets::Command25_Click);
    Bind(form, form.Command34, sheets::Command34_Click);
    Bind(form, form.Command29, sheets::Command29_Click);
    Bind(form, form.Command33, sheets::Command33_Click);
    Bind(form, form.Command32, sheets::Command32_Click);
    Bind(form, form.Text7.KeyPress, sheets::Text7_KeyPress, form.Command32.Caption());
    Bind(form, form.Command31, sheets::Command31_Click);
}

} // namespace app
