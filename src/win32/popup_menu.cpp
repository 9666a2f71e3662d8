#include "win32/popup_menu.hpp"

#include "com/owned.hpp"
#include "com/utf.hpp"
#include "win32/control_table.hpp"

namespace win32 {

namespace {

// The number of a menu's entry in the resources; 0, which Windows gives for nothing chosen, where
// the table has none.
UINT NumberOf(const controls::Form1& form, const controls::MenuItem* item) {
    for (const ControlRow& row : kControlTable) {
        const auto* member = std::get_if<controls::MenuItem controls::Form1::*>(&row.member);
        if (member != nullptr && &(form.**member) == item) {
            return static_cast<UINT>(row.id);
        }
    }
    return 0;
}

} // namespace

void ShowPopupMenu(HWND owner, const controls::Form1& form, const controls::PopupMenu& menu,
                   const RECT& anchor) {
    const com::Owned<HMENU> popup(CreatePopupMenu());
    for (const controls::MenuItem* item : menu.items) {
        if (item->IsSeparator()) {
            AppendMenuW(popup.get(), MF_SEPARATOR, 0, nullptr);
        } else {
            AppendMenuW(popup.get(), MF_STRING | (item->Enabled() ? MF_ENABLED : MF_GRAYED),
                        NumberOf(form, item), com::Widen(item->caption).c_str());
        }
    }
    TPMPARAMS kept_free{sizeof kept_free, anchor};
    const auto chosen = static_cast<UINT>(TrackPopupMenuEx(
        popup.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON | TPM_VERTICAL, anchor.left, anchor.bottom,
        owner, IsRectEmpty(&anchor) != FALSE ? nullptr : &kept_free));
    for (const controls::MenuItem* item : menu.items) {
        if (chosen != 0 && NumberOf(form, item) == chosen) {
            controls::Raise(item->Click);
        }
    }
}

} // namespace win32
