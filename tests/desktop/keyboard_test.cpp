// The window without a mouse: the whole main road, the keys of fields and buttons, and what
// programs that work it for the person set and see.
#include <array>

#include "com/utf.hpp"
#include "fixture.hpp"
#include "tests/support/drawing_text.hpp"
#include "win32/views.hpp"

using namespace driver;

namespace {

using Rows = std::vector<std::string>;

const std::string kThreeRows = "\r\n0\tTop"
                               "\r\n1\tA\tTop"
                               "\r\n1\tB\tTop"
                               "\r\n1\tC\tTop";

class Keyboard : public DesktopTest {
  protected:
    [[nodiscard]] HWND List() const { return dorvak_[ID_ListView1]; }
    [[nodiscard]] bool OnPage(int control) const { return IsWindowVisible(dorvak_[control]) != 0; }
    // A selected row is seen while the focus is elsewhere.
    void ExpectTint(int row) const {
        const POINT name = RowPoint(List(), row);
        const RECT area{name.x, name.y - 5, name.x + 300, name.y + 5};
        const auto part = [](COLORREF colour, int shift) {
            return static_cast<int>(colour >> shift & 0xFFU);
        };
        COLORREF tint = 0;
        for (const int shift : {0, 8, 16}) {
            tint |= static_cast<COLORREF>((2 * part(GetSysColor(COLOR_HIGHLIGHT), shift) +
                                           5 * part(GetSysColor(COLOR_WINDOW), shift)) /
                                          7)
                    << shift;
        }
        WaitUntil("the row in its tint", [&] { return ShowsColour(List(), area, tint); });
        EXPECT_FALSE(ShowsColour(List(), area, GetSysColor(COLOR_BTNFACE)));
    }
    void WaitForPage(int control) const {
        WaitUntil("another page", [&] { return OnPage(control); });
    }

    DorvakWindow dorvak_;
};

std::size_t Count(const std::string& text, const std::string& what) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
        ++count;
    }
    return count;
}

// The tip of the status text, as this process's own tips have it.
std::string TipOfStatusText(HWND status_bar) {
    HWND tips = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM found) -> BOOL {
            const bool is_tip = ClassName(window) == TOOLTIPS_CLASSA &&
                                (GetWindowLongPtrW(window, GWL_STYLE) & TTS_BALLOON) == 0;
            if (is_tip) {
                *reinterpret_cast<HWND*>(found) = window;
            }
            return is_tip ? FALSE : TRUE;
        },
        reinterpret_cast<LPARAM>(&tips));
    if (tips == nullptr) {
        return {};
    }
    std::array<wchar_t, 1024> text{};
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.hwnd = status_bar;
    tool.uId = 2;
    tool.lpszText = text.data();
    SendMessageW(tips, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
    return com::Narrow(text.data());
}

} // namespace

TEST(StatusText, IsATipWhereItIsCut) {
    const HWND form = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 500, 100,
                                      nullptr, nullptr, nullptr, nullptr);
    const HWND bar = CreateWindowExW(0, STATUSCLASSNAMEW, L"",
                                     WS_CHILD | WS_VISIBLE | CCS_NORESIZE | CCS_NOPARENTALIGN, 0,
                                     80, 500, 20, form, nullptr, nullptr, nullptr);
    {
        controls::StatusBar status;
        win32::StatusBarView view(bar, status, [](const auto& event) { event(); });
        view.SetDpi(96);
        const std::string path = "Ulozeni ok C:\\Vykresy" + std::string(120, 'x') + "\\a.tab";
        for (const bool cut : {false, true, false, true}) {
            status.SetPanelText(1, cut ? path : "Tabulka vytvorena Ok ");
            view.Refresh();
            EXPECT_EQ(TipOfStatusText(bar), cut ? path : "");
        }
        SetWindowPos(bar, nullptr, 0, 80, 1500, 20, SWP_NOZORDER); // wide enough for all
        view.SetDpi(96);
        EXPECT_EQ(TipOfStatusText(bar), "");
    }
    DestroyWindow(form);
}

TEST_F(Keyboard, AloneGoesTheWholeMainRoad) {
    const CatiaSession catia({kProduct, kDrawing});
    BringToFront(dorvak_.Window());
    PressKey(VK_F5);
    dorvak_.WaitForStatus(kWalked, kLong);
    PressKey('L', {VK_MENU}); // "Naplň list"
    WaitUntil("the parts list", [&] { return RowCount(List()) == 22; });
    catia.Do("activate Gearbox.CATDrawing");
    BringToFront(dorvak_.Window());

    PressKey('2', {VK_CONTROL});
    WaitForPage(ID_ListView1);
    WaitUntil("a current row", [&] {
        PressKey(VK_HOME);
        return FocusedRow(List()) == 0;
    });
    PressKey(VK_SPACE);
    WaitForText("the sheet", "2", [&] { return Cell(List(), 0, kSheet); });
    PressKey('M', {VK_MENU}); // to the picker below "Material"
    TypeText("EN-GJL-250\r");
    WaitForText("the material", "EN-GJL-250", [&] { return Cell(List(), 0, kMaterial); });
    ExpectTint(0);
    KeepPicture("keyboard-picker.png");
    PressKey(VK_TAB, {VK_SHIFT});               // back to the list
    PressKeyThatGoesUpLast(VK_DOWN, {VK_MENU}); // opens no menu of the window
    WaitForText("the moved row", "Skříň spodní", [&] { return Cell(List(), 1, 0); });
    EXPECT_EQ(Row(List(), 1, 5), (Rows{"Skříň spodní", "0002", "1", "2", "EN-GJL-250"}));
    PressKey(VK_INSERT);
    WaitUntil("another row", [&] { return RowCount(List()) == 23; });
    PressKey(VK_END);
    PressKey(VK_F2);
    PressKey(VK_ESCAPE); // the row is the current one as before
    HoldKey(VK_DELETE, 3);
    WaitUntil("one row less", [&] { return RowCount(List()) == 22; });
    EXPECT_EQ(dorvak_.Positions(), "Pozic: 22");

    PressKey(VK_TAB, {VK_CONTROL});
    WaitForPage(ID_Command11);
    HoldKey('V', 3, {VK_MENU}); // "Vytvorení", once
    dorvak_.WaitForStatus("Tabulka vytvorena Ok ", kLong);
    Sleep(500); // what should not happen would have begun
    dorvak_.WaitForStatus("Tabulka vytvorena Ok ", kLong);
    const std::string drawing = catia.Drawing();
    EXPECT_EQ(Count(drawing, "table at 100 100"), 1U) << drawing;
    const Rows rows =
        testing_support::TableRows(drawing.substr(0, drawing.find("sheet \"Hřídel\"")));
    ASSERT_EQ(rows.size(), 28U);
    EXPECT_EQ(rows.at(26), QuotedCells({"2", "Skříň spodní", "1", "", "EN-GJL-250", "", "2"}));
    EXPECT_EQ(rows.at(27), QuotedCells({"1", "Skříň horní", "1", "", "", "", ""}));

    PressKey('5', {VK_CONTROL});
    WaitForPage(ID_ListView3);
    PressKey(VK_SPACE); // the page's first button, which has the focus: "Načíst Sheets z catie"
    dorvak_.WaitForStatus("Sheets nacteny: 3");
    PressKey('A', {VK_MENU}); // to the field of "Pridat Sheety"
    TypeText("2");
    HoldKey(VK_RETURN, 3);
    WaitUntil("two rows more", [&] { return RowCount(dorvak_[ID_ListView3]) == 5; });
    PressKey('O', {VK_MENU}); // to the field of "Číslovat Sheet od"
    TypeText("7\r");
    dorvak_.WaitForStatus("Ocislovano: 11");
    EXPECT_EQ(RowCount(dorvak_[ID_ListView3]), 5);
    KeepPicture("keyboard-sheets.png");
    PressKey(VK_TAB, {VK_CONTROL, VK_SHIFT});
    WaitForPage(ID_Command10);
}

TEST_F(Keyboard, OpensTheMenuOfTheSaveButtonAndForgetsAValue) {
    FillList(dorvak_, kThreeRows, 3);
    Click(List(), RowPoint(List(), 0));
    const HWND picker = dorvak_[ID_Combo1];
    WaitUntil("the pickers enabled", [&] { return IsWindowEnabled(picker) != FALSE; });
    for (const char* value : {"C45", "S235", "S355"}) {
        PressKey('M', {VK_MENU});
        PressKey('A', {VK_CONTROL}); // the focus may be there already
        TypeText(std::string(value) + "\r");
        WaitForText("the material", value, [&] { return Cell(List(), 0, kMaterial); });
    }
    PressKey(VK_F4);
    WaitUntil("the list dropped down", [&] { return Send(picker, CB_GETDROPPEDSTATE) != 0; });
    while (Send(picker, CB_GETCURSEL) != 1) {
        PressKey(Send(picker, CB_GETCURSEL) > 1 ? VK_UP : VK_DOWN);
    }
    KeepPicture("keyboard-values.png");
    HoldKey(VK_DELETE, 3, {VK_SHIFT});
    WaitForText("the values", "C45|S355|", [&] { return Joined(ComboBoxItems(picker)); });
    PressKey(VK_ESCAPE);
    EXPECT_EQ(Joined(Column(List(), kMaterial)), "S355|||");

    Click(List(), RowPoint(List(), 0));
    PressKey('S', {VK_CONTROL}); // "Uložení  tabulky", whose dialog is not wanted now
    WaitForDialog(dorvak_, "Uložení tabulky");
    PressKey('5', {VK_CONTROL}); // the dialog's, if anybody's
    PressKey(VK_ESCAPE);
    dorvak_.WaitForStatus("Ulozeni Error 32755 Cancel was selected.");
    EXPECT_TRUE(OnPage(ID_ListView1));
    PressKey('K', {VK_MENU}); // to the last picker, before its button and this one
    PressKey(VK_TAB);
    PressKey(VK_TAB);
    WaitUntil("the focus on the button",
              [&] { return FocusedControl(dorvak_.Window()) == dorvak_[ID_Command17]; });
    PressKey(VK_APPS);
    const HWND menu = WaitForPopupMenu();
    KeepPicture("keyboard-menu.png");
    EXPECT_GE(Place(menu).top, Place(dorvak_[ID_Command17]).bottom);
    PressKey(VK_DOWN);
    PressKey(VK_RETURN);
    WaitUntil("the save", [&] { return dorvak_.Status().starts_with("Ulozeni listu ok "); });
}

TEST_F(Keyboard, AManyLinedTextKeepsLettersWithTheRightAltAndIsLeftByTheTabKey) {
    dorvak_.OpenPage(kExportPage);
    Click(dorvak_[ID_Text2]);
    for (const WORD key : {WORD{'1'}, WORD{'2'}, WORD{'5'}, WORD{'S'}, WORD{'O'}}) {
        PressKey(key, {VK_CONTROL, VK_MENU});
    }
    Sleep(300);
    EXPECT_TRUE(OnPage(ID_Text2));
    EXPECT_EQ(dorvak_.Process().FindVisible("#32770"), nullptr);
    // A text of many lines that is the first control of its page.
    PressKey(VK_TAB, {VK_SHIFT});
    WaitUntil("the focus on the tabs",
              [&] { return FocusedControl(dorvak_.Window()) == dorvak_[ID_SSTab1]; });
    PressKey(VK_TAB);
    WaitUntil("the focus in the text",
              [&] { return FocusedControl(dorvak_.Window()) == dorvak_[ID_Text2]; });
    PressKey(VK_TAB);
    WaitUntil("the focus behind the text",
              [&] { return FocusedControl(dorvak_.Window()) == dorvak_[ID_Command11]; });
}

TEST_F(Keyboard, CheckBoxesFollowProgramsThatSetThem) {
    FillList(dorvak_, kThreeRows, 3);
    ASSERT_TRUE(Topmost(dorvak_.Window()));
    Send(dorvak_[ID_Check2], BM_SETCHECK, BST_UNCHECKED);
    WaitUntil("the window not on top", [&] { return !Topmost(dorvak_.Window()); });
    Send(dorvak_[ID_Check2], BM_CLICK);
    WaitUntil("the window on top", [&] { return Topmost(dorvak_.Window()); });
    EXPECT_TRUE(Ticked(dorvak_[ID_Check2]));

    SetRowChecked(List(), 1, true);
    WaitForColumn(List(), kSheet, {"", "2", ""});
    EXPECT_TRUE(RowChecked(List(), 1));
    SetRowChecked(List(), 1, true); // which it is
    EXPECT_TRUE(RowChecked(List(), 1));
    SetRowChecked(List(), 1, false);
    WaitForColumn(List(), kSheet, {"", "", ""});

    dorvak_.OpenPage(kStructurePage);
    const HWND tree = dorvak_[ID_TreeView1];
    SetTreeItemChecked(tree, TreeItems(tree).at(0).item, false);
    for (const TreeItem& item : TreeItems(tree)) {
        EXPECT_FALSE(item.checked) << item.text;
    }
    SetTreeItemChecked(tree, TreeItems(tree).at(2).item, true);
    dorvak_.Press(ID_Command4);
    WaitForColumn(List(), 0, {"B"});
}

TEST_F(Keyboard, TipsSayWhatButtonsDoAlsoGreyedOnes) {
    dorvak_.OpenPage(kExportPage);
    MoveMouse(dorvak_[ID_Command16], {20, 5});
    MoveMouse(dorvak_[ID_Command16], {22, 6});
    WaitForText("the tip",
                "Zapíše aktuální řádek seznamu do tabulky vybrané v CATII (2 řádky, 6 sloupců).",
                [&] { return TipText(dorvak_.Process()); });
    KeepPicture("tip.png");
    dorvak_.OpenPage(kEditPage);
    const HWND apply = dorvak_[ID_Command13];
    ASSERT_FALSE(IsWindowEnabled(apply));
    MoveMouse(apply, {8, 8});
    MoveMouse(apply, {10, 9});
    WaitForText("the tip", "Dá velikost vybraným řádkům a zapamatuje si ji (Enter v poli).",
                [&] { return TipText(dorvak_.Process()); });
    Click(List());
    PressKey('V', {VK_MENU}); // of a greyed picker: goes nowhere else
    PressKey(VK_INSERT);
    WaitUntil("a row", [&] { return RowCount(List()) == 1; });
}
