// What stands on the screen is what the form says: every caption, column heading, tab, frame, label
// and menu entry, through the control table.
#include <array>

#include "com/utf.hpp"
#include "fixture.hpp"
#include "tests/support/headless_form.hpp"
#include "win32/control_table.hpp"
#include "win32/popup_menu.hpp"

using namespace driver;

namespace {

using Texts = std::vector<std::string>;

class Captions : public DesktopTest {
  protected:
    // Calls `check` with the number and the control of every row of that kind of control.
    template <typename Kind, typename Check>
    void ForEach(Check&& check) {
        int found = 0;
        for (const win32::ControlRow& row : win32::kControlTable) {
            if (const auto* member = std::get_if<Kind controls::Form1::*>(&row.member)) {
                ++found;
                check(row, form_.form.**member);
            }
        }
        EXPECT_GT(found, 0);
    }

    testing_support::HeadlessForm form_;
};

// What is drawn of a window's text: "&" underlines the letter behind it, "&&" stands for one.
std::string Drawn(HWND window) {
    const std::string text = Text(window);
    std::string drawn;
    for (std::size_t at = 0; at < text.size(); ++at) {
        at += text[at] == '&' && at + 1 < text.size() ? 1U : 0U;
        drawn += text[at];
    }
    return drawn;
}

// The entries of the popup menu that is open, the separators empty.
Texts OpenMenuEntries() {
    auto* const menu = reinterpret_cast<HMENU>(SendMessageW(WaitForPopupMenu(), MN_GETHMENU, 0, 0));
    Texts entries;
    for (int item = 0; item < GetMenuItemCount(menu); ++item) {
        std::array<wchar_t, 128> text{};
        GetMenuStringW(menu, static_cast<UINT>(item), text.data(), static_cast<int>(text.size()),
                       MF_BYPOSITION);
        entries.push_back(com::Narrow(text.data()));
    }
    return entries;
}

// Opens the menu as the program does, in this process, whose menus alone can be read; gives its
// entries and closes it.
Texts EntriesWhenOpen(const controls::Form1& form, const controls::PopupMenu& menu) {
    static Texts entries;
    entries.clear();
    const HWND owner = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0,
                                       10, 10, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(owner);
    SetTimer(owner, 1, 200, [](HWND window, UINT, UINT_PTR timer, DWORD) {
        KillTimer(window, timer);
        entries = OpenMenuEntries();
        SendMessageW(window, WM_CANCELMODE, 0, 0);
        EndMenu();
    });
    win32::ShowPopupMenu(owner, form, menu, RECT{20, 20, 20, 20});
    DestroyWindow(owner);
    return entries;
}

} // namespace

TEST_F(Captions, ButtonsCheckBoxesFramesAndLabels) {
    const DorvakWindow dorvak;
    ForEach<controls::Button>([&](const win32::ControlRow& row, const controls::Button& button) {
        const bool picture = (GetWindowLongPtrW(dorvak[row.id], GWL_STYLE) & BS_ICON) != 0;
        EXPECT_EQ(button.Caption().empty(), picture) << row.id;
        // The text of a picture is not drawn, but read aloud.
        EXPECT_EQ(Drawn(dorvak[row.id]), picture ? row.help.name : button.Caption());
        EXPECT_EQ(Send(dorvak[row.id], BM_GETIMAGE, IMAGE_ICON) != 0, picture) << row.id;
    });
    ForEach<controls::CheckBox>([&](const win32::ControlRow& row, const controls::CheckBox& box) {
        EXPECT_EQ(Drawn(dorvak[row.id]), box.Caption());
    });
    ForEach<controls::Frame>([&](const win32::ControlRow& row, const controls::Frame& frame) {
        EXPECT_EQ(Drawn(dorvak[row.id]), frame.caption);
    });
    ForEach<controls::ComboBox>([&](const win32::ControlRow& row, const controls::ComboBox& box) {
        EXPECT_EQ(Drawn(dorvak[row.help.label_id]), box.Label());
    });
}

TEST_F(Captions, ColumnHeadings) {
    const DorvakWindow dorvak;
    ForEach<controls::ListView>([&](const win32::ControlRow& row, const controls::ListView& list) {
        EXPECT_EQ(ColumnHeadings(dorvak[row.id]), list.Columns());
    });
}

TEST_F(Captions, Tabs) {
    const DorvakWindow dorvak;
    ForEach<controls::TabControl>(
        [&](const win32::ControlRow& row, const controls::TabControl& tabs) {
            EXPECT_EQ(TabCaptions(dorvak[row.id]), tabs.Captions());
        });
}

TEST_F(Captions, MenuEntries) {
    for (const controls::PopupMenu* menu :
         {&form_.form.m_Tabulka, &form_.form.m_sheets, &form_.form.m_Ulozeni,
          &form_.form.m_Otevreni, &form_.form.m_Stav}) {
        Texts expected;
        for (const controls::MenuItem* item : menu->items) {
            expected.push_back(item->caption);
        }
        EXPECT_EQ(EntriesWhenOpen(form_.form, *menu), expected) << menu->caption;
    }
}
