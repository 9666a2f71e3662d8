// The keys of the window, beside those that its controls take themselves: for its pages, for the
// actions that are wanted everywhere, and for the rows of the lists that are edited.
//
//   Ctrl+Tab, Ctrl+Shift+Tab   the next page, the one before
//   Ctrl+1 to Ctrl+5           a page
//   F1                         the guide, at the page of the tab that is shown
//   F5                         "Načtení stromu", on its page
//   Ctrl+S                     "Uložení  tabulky"
//   Ctrl+O                     "Otevreni tabulky"
//   Ctrl+Z, Ctrl+Y             "Zpět", "Znovu" of the list of the page; a field has its own
//   Insert, Delete             "Přidat", "Smazat" in the list that has the focus
//   Ctrl+V                     "Vložit" in the parts list
//   Ctrl+F, F3, Shift+F3       on the page of the parts list: find a text there, the next one, the
//                              one before
//   Ctrl+Delete                "Smazat vybrané" in the parts list
#pragma once

#include "controls/form1.hpp"

namespace app {

// Codes as Windows has them; those of digits and letters are their characters.
namespace key_codes {
inline constexpr int kTab = 0x09;
inline constexpr int kInsert = 0x2D;
inline constexpr int kDelete = 0x2E;
inline constexpr int kF1 = 0x70;
inline constexpr int kF3 = 0x72;
inline constexpr int kF5 = 0x74;
} // namespace key_codes

struct Key {
    int code = 0;
    bool control = false;
    bool shift = false;
    bool alt = false;
    bool repeated = false; // held since it was pressed
};

enum class Focus { kPartsList, kSheetList, kField, kPreview, kElsewhere };

// What a key that is pressed there stands for; nothing where it is the control's own. With Alt no
// key is taken: Czech keyboards write characters with Ctrl and Alt. A key that is held presses
// once; only undoing goes on.
controls::Event<> ActionOfKey(controls::Form1& form, const Key& key, Focus focus);

} // namespace app
