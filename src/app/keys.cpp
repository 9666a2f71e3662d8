#include "app/keys.hpp"

#include "app/form_events.hpp"
#include "shell/guide.hpp"

namespace app {

namespace {

using controls::Event;
using controls::Form1;

constexpr std::size_t kStructurePage = 0;
constexpr std::size_t kPartsPage = 1;
constexpr std::size_t kExportPage = 2;
constexpr std::size_t kSheetsPage = 4;

void ShowPage(Form1& form, std::size_t page) {
    if (page != form.SSTab1.Tab()) {
        form.SSTab1.UserClick(page);
    }
}

// As a click does it: not where it is greyed.
Event<> Press(const controls::Button& button) {
    return [&button] {
        if (button.Enabled()) {
            button.Click();
        }
    };
}

// An entry is greyed as its menu opens; what it does where there is nothing to do is its own
// affair.
Event<> Choose(const controls::MenuItem& item) {
    return [&item] { controls::Raise(item.Click); };
}

Event<> ActionOfRowKey(Form1& form, int code, Focus focus) {
    const bool parts = focus == Focus::kPartsList;
    if (!parts && focus != Focus::kSheetList) {
        return nullptr;
    }
    switch (code) {
    case key_codes::kInsert:
        return Choose(parts ? form.m_Pridat : form.m_Sheet_pridej);
    case key_codes::kDelete:
        return Choose(parts ? form.m_Smazat : form.m_Sheet_smaz);
    default:
        return nullptr;
    }
}

// Only where the list can be seen.
Event<> FindInList(Form1& form, controls::Find find) {
    if (form.SSTab1.Tab() != kPartsPage) {
        return nullptr;
    }
    return [&form, find] { form.ListView1.UserFind(find); };
}

Event<> ActionOfControlKey(Form1& form, const Key& key, Focus focus) {
    const std::size_t pages = form.SSTab1.Captions().size();
    if (key.code == key_codes::kTab) {
        return [&form, pages, step = key.shift ? pages - 1 : 1] {
            ShowPage(form, (form.SSTab1.Tab() + step) % pages);
        };
    }
    if (key.code >= '1' && key.code < '1' + static_cast<int>(pages)) {
        return [&form, page = static_cast<std::size_t>(key.code - '1')] { ShowPage(form, page); };
    }
    if (key.shift) {
        return nullptr;
    }
    const bool sheets = form.SSTab1.Tab() == kSheetsPage;
    // A field has undo of its own, and the preview none.
    const bool undoes = focus != Focus::kField && focus != Focus::kPreview;
    switch (key.code) {
    case key_codes::kDelete:
        return focus == Focus::kPartsList ? Choose(form.m_Smazat_vybrane) : nullptr;
    case 'S':
        return Press(form.Command17);
    case 'O':
        return Press(form.Command27);
    case 'Z':
        return undoes ? Choose(sheets ? form.m_Sheet_zpet : form.m_Zpet) : nullptr;
    case 'Y':
        return undoes ? Choose(sheets ? form.m_Sheet_znovu : form.m_Znovu) : nullptr;
    case 'F':
        return FindInList(form, controls::Find::kAsk);
    case 'V':
        return focus == Focus::kPartsList ? Choose(form.m_Vlozit) : nullptr;
    default:
        return nullptr;
    }
}

Event<> ShowGuide(Form1& form, Focus focus) {
    const std::size_t page = focus == Focus::kPreview ? kExportPage : form.SSTab1.Tab();
    return [&form, page] {
        Dispatch(
            form, [&form, page] { shell::ShowGuide(form, page); }, "Příručka");
    };
}

Event<> ActionOfPress(Form1& form, const Key& key, Focus focus) {
    if (key.code == key_codes::kF1 && !key.control && !key.shift) {
        return ShowGuide(form, focus);
    }
    if (key.control) {
        return ActionOfControlKey(form, key, focus);
    }
    if (key.code == key_codes::kF3) {
        return FindInList(form, key.shift ? controls::Find::kPrevious : controls::Find::kNext);
    }
    if (key.shift) {
        return nullptr;
    }
    if (key.code == key_codes::kF5) {
        return [&form, read = Press(form.Command3)] {
            ShowPage(form, kStructurePage);
            read();
        };
    }
    return ActionOfRowKey(form, key.code, focus);
}

} // namespace

Event<> ActionOfKey(Form1& form, const Key& key, Focus focus) {
    if (key.alt) {
        return nullptr;
    }
    const bool goes_on = key.code == 'Z' || key.code == 'Y';
    Event<> action = ActionOfPress(form, key, focus);
    if (action && key.repeated && !goes_on) {
        return [] {};
    }
    return action;
}

} // namespace app
