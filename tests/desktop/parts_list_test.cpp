// Editing the parts list by mouse and keyboard.
#include "fixture.hpp"

using namespace driver;

namespace {

// Parts whose first-seen order is A, B, C, D, 120.
const std::string kFiveParts = "\r\n0\tTop"
                               "\r\n1\tA\tTop"
                               "\r\n1\tB\tTop"
                               "\r\n1\tC\tTop"
                               "\r\n1\tD\tTop"
                               "\r\n1\t120\tTop";

using Rows = std::vector<std::string>;

class PartsList : public DesktopTest {
  protected:
    PartsList() { FillList(dorvak_, kFiveParts, 5); }

    [[nodiscard]] HWND List() const { return dorvak_[ID_ListView1]; }

    void WaitForColumn(int column, const Rows& expected) const {
        driver::WaitForColumn(List(), column, expected);
    }
    void SelectRow(int row) const { driver::SelectRow(List(), row); }

    // Entries count from 1; separators do not.
    static void ChooseEntry(int entry) {
        WaitForPopupMenu();
        for (int step = 0; step < entry; ++step) {
            PressKey(VK_DOWN);
        }
        PressKey(VK_RETURN);
        WaitUntil("the menu gone", [] { return !PopupMenuOpen(); });
    }
    void AddByKeyboard() const {
        SelectRow(0);
        PressKey(VK_F10, {VK_SHIFT});
        ChooseEntry(4); // "Přidat"
        WaitUntil("a sixth row", [&] { return RowCount(List()) == 6; });
    }

    DorvakWindow dorvak_;
};

} // namespace

TEST_F(PartsList, PridatByTheKeyboardsMenuAddsNovy) {
    AddByKeyboard();
    EXPECT_EQ(Row(List(), 5, 7), (Rows{"Novy", "0006", "1", "", "", "", ""}));
    WaitForText("the second panel", "Pozic: 6", [&] { return dorvak_.Positions(); });
}

TEST_F(PartsList, TheMenuKeyOpensTheMenuToo) {
    SelectRow(1);
    PressKey(VK_APPS);
    ChooseEntry(5); // "Smazat"
    WaitForColumn(0, {"A", "C", "D", "120"});
}

TEST_F(PartsList, SmazatByTheMouseDeletesTheRowAndRenumbers) {
    SelectRow(1);
    Click(List(), RowPoint(List(), 1), MouseButton::kRight);
    ClickEntry(WaitForPopupMenu(), 4, 2); // below four entries and two separators
    WaitForColumn(0, {"A", "C", "D", "120"});
    EXPECT_EQ(Column(List(), 1), (Rows{"0001", "0002", "0003", "0004"}));
    WaitForText("the second panel", "Pozic: 4", [&] { return dorvak_.Positions(); });
}

// One part is changed, two are missing, one is new.
TEST_F(PartsList, AnUpdateMarksAndSelectsWhatIsMissingAndControlDeleteRemovesIt) {
    BuildTree(dorvak_, "\r\n0\tTop\r\n1\tA\tTop\r\n1\tA\tTop\r\n1\tC\tTop"
                       "\r\n1\t120\tTop\r\n1\tE\tTop");
    dorvak_.OpenPage(kEditPage);
    dorvak_.Press(ID_Command39);
    dorvak_.WaitForStatus("Aktualizovano: zmeneno 1, novych 1, chybi 2");
    WaitForColumn(0, {"A", "B", "C", "D", "120", "E"});
    EXPECT_EQ(Column(List(), kQuantity), (Rows{"2", "1", "1", "1", "1", "1"}));
    for (int row = 0; row < 6; ++row) {
        EXPECT_EQ(RowSelected(List(), row), row == 1 || row == 3) << row;
    }
    EXPECT_EQ(FocusedRow(List()), 1);
    WaitForText("the balloon",
                "2 vybrané řádky už nemají svůj díl ve stromu; smaže je Ctrl+Delete.",
                [&] { return BalloonText(dorvak_.Process()); });
    KeepPicture("list-update.png");

    // The mark does not need the selection.
    SelectRow(0);
    const POINT in_d = RowPoint(List(), 3);
    const RECT area{in_d.x, in_d.y - 4, in_d.x + 80, in_d.y + 4};
    WaitUntil("the marked row's colour",
              [&] { return ShowsColour(List(), area, RGB(0xFF, 0xE8, 0xBF)); });
    KeepPicture("list-update-marks.png");
    TellDpi(dorvak_.Window(), 144, {30, 20, 1100, 760});
    Sleep(700); // until it is painted
    KeepPicture("list-update-144.png");

    Click(List(), RowPoint(List(), 1));
    PressKey(VK_DOWN, {VK_SHIFT});
    WaitUntil("two rows selected", [&] { return RowSelected(List(), 2); });
    PressKey(VK_DELETE, {VK_CONTROL});
    WaitForColumn(0, {"A", "D", "120", "E"});
    EXPECT_EQ(Column(List(), 1), (Rows{"0001", "0002", "0003", "0004"}));
    EXPECT_TRUE(RowSelected(List(), 1));
}

TEST_F(PartsList, ARightClickOpensOneMenuOnly) {
    Click(List(), RowPoint(List(), 0), MouseButton::kRight);
    WaitForPopupMenu();
    PressKey(VK_ESCAPE);
    WaitUntil("the menu gone", [] { return !PopupMenuOpen(); });
    Sleep(300); // a second one would open now
    EXPECT_FALSE(PopupMenuOpen());
    EXPECT_EQ(RowCount(List()), 5);
}

TEST_F(PartsList, ANewRowIsRenamedInPlace) {
    AddByKeyboard();
    SelectRow(5);
    PressKey(VK_F2);
    WaitUntil("the edit field", [&] { return Send(List(), LVM_GETEDITCONTROL) != 0; });
    PressKey('A', {VK_CONTROL});
    TypeText("Hřídel");
    PressKey(VK_RETURN);
    WaitForColumn(0, {"A", "B", "C", "D", "120", "Hřídel"});
}

TEST_F(PartsList, EscapeLeavesTheNameAsItWas) {
    SelectRow(0);
    PressKey(VK_F2);
    WaitUntil("the edit field", [&] { return Send(List(), LVM_GETEDITCONTROL) != 0; });
    TypeText("Jiný");
    PressKey(VK_ESCAPE);
    WaitUntil("no edit field", [&] { return Send(List(), LVM_GETEDITCONTROL) == 0; });
    EXPECT_EQ(Column(List(), 0), (Rows{"A", "B", "C", "D", "120"}));
    EXPECT_TRUE(dorvak_.Process().Running());
}

TEST_F(PartsList, TickingARowByMouseNumbersItsSheet) {
    Click(List(), RowCheckPoint(List(), 1));
    WaitForColumn(kSheet, {"", "2", "", "", ""});
    Click(List(), RowCheckPoint(List(), 3));
    WaitForColumn(kSheet, {"", "2", "", "3", ""});
    Click(List(), RowCheckPoint(List(), 1));
    WaitForColumn(kSheet, {"", "", "", "2", ""});
    EXPECT_FALSE(RowChecked(List(), 1));
    EXPECT_TRUE(RowChecked(List(), 3));
}

TEST_F(PartsList, SpaceTicksTheCurrentRowAndTheSelectionFollows) {
    SelectRow(1);
    PressKey(VK_DOWN, {VK_SHIFT});
    PressKey(VK_DOWN, {VK_SHIFT});
    WaitUntil("three rows selected", [&] { return RowSelected(List(), 3); });
    PressKey(VK_SPACE);
    WaitForColumn(kSheet, {"", "2", "3", "4", ""});
    for (int row = 0; row < 5; ++row) {
        EXPECT_EQ(RowChecked(List(), row), row >= 1 && row <= 3) << row;
    }
    PressKey(VK_SPACE);
    WaitForColumn(kSheet, {"", "", "", "", ""});
}

TEST_F(PartsList, ARowWithANumberForANameIsDraggedUp) {
    Drag(List(), RowPoint(List(), 4), RowPoint(List(), 1));
    WaitForColumn(0, {"A", "120", "B", "C", "D"});
    EXPECT_EQ(Column(List(), 1), (Rows{"0001", "0002", "0003", "0004", "0005"}));
}

TEST_F(PartsList, ARowIsDraggedDownAgainAndTheSheetsAreRenumbered) {
    Click(List(), RowCheckPoint(List(), 4));
    WaitForColumn(kSheet, {"", "", "", "", "2"});
    Click(List(), RowCheckPoint(List(), 1));
    WaitForColumn(kSheet, {"", "2", "", "", "3"});
    Drag(List(), RowPoint(List(), 4), RowPoint(List(), 0));
    WaitForColumn(0, {"120", "A", "B", "C", "D"});
    WaitForColumn(kSheet, {"2", "", "3", "", ""});
    Drag(List(), RowPoint(List(), 0), RowPoint(List(), 2));
    WaitForColumn(0, {"A", "B", "120", "C", "D"});
    WaitForColumn(kSheet, {"", "2", "3", "", ""});
}

TEST_F(PartsList, ARowWithAWordForANameStays) {
    Drag(List(), RowPoint(List(), 3), RowPoint(List(), 0));
    Sleep(300); // what should not happen would have happened
    EXPECT_EQ(Column(List(), 0), (Rows{"A", "B", "C", "D", "120"}));
}

TEST_F(PartsList, ControlAAndControlCCopyTheRowsAsTabSeparatedText) {
    SelectRow(2);
    PressKey('A', {VK_CONTROL});
    WaitUntil("all rows selected", [&] { return RowSelected(List(), 4); });
    PressKey('C', {VK_CONTROL});
    const std::string expected = "A\t0001\t1\t\t\t\t\r\n"
                                 "B\t0002\t1\t\t\t\t\r\n"
                                 "C\t0003\t1\t\t\t\t\r\n"
                                 "D\t0004\t1\t\t\t\t\r\n"
                                 "120\t0005\t1\t\t\t\t\r\n";
    WaitForText("the clipboard", expected, [] { return ClipboardText().value_or(""); });
}

TEST_F(PartsList, AClickFillsThePickersFromTheRow) {
    EXPECT_FALSE(IsWindowEnabled(dorvak_[ID_Combo4]));
    SelectRow(1);
    WaitForText("the quantity", "1", [&] { return Text(dorvak_[ID_Combo4]); });
    for (const int id : {ID_Combo1, ID_Combo2, ID_Combo3, ID_Combo4}) {
        EXPECT_TRUE(IsWindowEnabled(dorvak_[id]));
    }
}

TEST_F(PartsList, ControlASelectsAllTextOfAMultiLineField) {
    dorvak_.OpenPage(kExportPage);
    const HWND text = dorvak_[ID_Text2];
    Click(text);
    PressKey('A', {VK_CONTROL});
    WaitUntil("the whole text selected", [&] {
        const auto selection = static_cast<DWORD>(Send(text, EM_GETSEL));
        return LOWORD(selection) == 0 && HIWORD(selection) == Send(text, WM_GETTEXTLENGTH);
    });
}
