// What people do with mouse and keyboard beside the intended way: double clicks, keys instead of
// clicks, a rename left open, a press that is released elsewhere, a paste from a spreadsheet; and
// what the status line then explains.
#include "fixture.hpp"

using namespace driver;

namespace {

using Rows = std::vector<std::string>;

const std::string kThreeParts = "\r\n0\tTop"
                                "\r\n1\t101\tTop"
                                "\r\n1\tB\tTop"
                                "\r\n1\tC\tTop";

class Gestures : public DesktopTest {
  protected:
    Gestures() { FillList(dorvak_, kThreeParts, 3); }

    [[nodiscard]] HWND List() const { return dorvak_[ID_ListView1]; }
    [[nodiscard]] std::string BalloonText() const { return driver::BalloonText(dorvak_.Process()); }

    DorvakWindow dorvak_;
};

class Balloons : public Gestures {};

class Icon : public Gestures {
  protected:
    // The colour of the icon before the status text, as it was drawn; empty where there is none.
    [[nodiscard]] std::string Colour() const {
        const HWND bar = dorvak_[ID_StatusBar1];
        RECT area{};
        GetClientRect(bar, &area);
        area.right = area.bottom; // the icon is as high as the bar
        for (const auto& [name, colour] : {std::pair{"blue", RGB(0x1F, 0x4E, 0x79)},
                                           {"green", RGB(0x2E, 0x7D, 0x32)},
                                           {"red", RGB(0xB3, 0x26, 0x1E)}}) {
            if (ShowsColour(bar, area, colour)) {
                return name;
            }
        }
        return {};
    }
    void WaitForColour(const std::string& expected) const {
        WaitForText("the icon", expected, [&] { return Colour(); });
    }
};

} // namespace

TEST_F(Gestures, ADoubleClickOnTheWalkCountsEveryPartOnce) {
    const CatiaSession catia({"gearbox-assembly.txt"});
    dorvak_.OpenPage(kStructurePage);
    Click(dorvak_[ID_Command3]);
    WaitUntil("the walk's summary", [&] { return dorvak_.Status().starts_with("Sestav: "); });
    const std::string alone = dorvak_.Status();
    const std::string text = Text(dorvak_[ID_Text1]);
    dorvak_.Press(ID_Command26); // another text on the status line
    DoubleClick(dorvak_[ID_Command3]);
    dorvak_.WaitForStatus(alone);
    Sleep(500); // a second walk would begin now
    EXPECT_EQ(dorvak_.Status(), alone);
    EXPECT_EQ(Text(dorvak_[ID_Text1]), text);
}

TEST_F(Gestures, ADoubleClickOnVytvoreniMakesOneTable) {
    const CatiaSession catia({"gearbox-drawing.txt"});
    dorvak_.OpenPage(kExportPage);
    DoubleClick(dorvak_[ID_Command11]);
    dorvak_.WaitForStatus("Tabulka vytvorena Ok ");
    Sleep(300);
    int made = 0;
    for (const std::string& call : catia.Log()) {
        made += call.starts_with("DrawingTables.Add") ? 1 : 0;
    }
    EXPECT_EQ(made, 1);
}

TEST_F(Gestures, ArrowKeysShowEachRowInThePickers) {
    SelectRow(List(), 0);
    for (const auto& [row, material] : {std::pair{0, "S235"}, {1, "C45"}}) {
        SelectRow(List(), row);
        Click(dorvak_[ID_Combo1]);
        PressKey('A', {VK_CONTROL});
        TypeText(material);
        PressKey(VK_RETURN);
    }
    WaitForColumn(List(), kMaterial, {"S235", "C45", ""});
    SelectRow(List(), 0);
    PressKey(VK_DOWN);
    WaitForText("the picker", "C45", [&] { return Text(dorvak_[ID_Combo1]); });
    PressKey(VK_END);
    WaitForText("the picker", "", [&] { return Text(dorvak_[ID_Combo1]); });
    TypeText("101"); // to the row of that name
    WaitForText("the picker", "S235", [&] { return Text(dorvak_[ID_Combo1]); });
}

TEST_F(Gestures, TheKeyboardAloneReachesThePickers) {
    EXPECT_FALSE(IsWindowEnabled(dorvak_[ID_Combo1]));
    SetFocus(nullptr);
    PressKey(VK_TAB); // from the tab that was clicked to the list
    WaitUntil("a row of the list current", [&] {
        PressKey(VK_DOWN);
        return FocusedRow(List()) >= 0;
    });
    WaitUntil("the pickers enabled", [&] { return IsWindowEnabled(dorvak_[ID_Combo1]) != FALSE; });
}

TEST_F(Gestures, AltWithAnArrowMovesARow) {
    SelectRow(List(), 2);
    PressKey(VK_UP, {VK_MENU});
    WaitForColumn(List(), 0, {"101", "C", "B"});
    EXPECT_EQ(FocusedRow(List()), 1);
    EXPECT_EQ(Column(List(), 1), (Rows{"0001", "0002", "0003"}));
}

TEST_F(Gestures, ARenameLeftOpenIsSavedWithTheWorkingFile) {
    SelectRow(List(), 1);
    PressKey(VK_F2);
    WaitUntil("the edit field", [&] { return Send(List(), LVM_GETEDITCONTROL) != 0; });
    PressKey('A', {VK_CONTROL});
    TypeText("Kolo");
    Click(dorvak_[ID_Command17], MouseButton::kRight);
    WaitForColumn(List(), 0, {"101", "Kolo", "C"});
    WaitUntil("the save", [&] { return dorvak_.Status().starts_with("Ulozeni listu ok "); });
    EXPECT_EQ(Send(List(), LVM_GETEDITCONTROL), 0);
}

TEST_F(Gestures, ARenameLeftOpenSurvivesClosing) {
    const auto folder = std::make_shared<ProgramFolder>();
    {
        const DorvakWindow first(folder);
        FillList(first, kThreeParts, 3);
        SelectRow(first[ID_ListView1], 0);
        PressKey(VK_F2);
        WaitUntil("the edit field",
                  [&] { return Send(first[ID_ListView1], LVM_GETEDITCONTROL) != 0; });
        PressKey('A', {VK_CONTROL});
        TypeText("Pero");
        first.Close();
    }
    EXPECT_TRUE(ReadFile(folder->Path("list.txt")).starts_with("Pero@@"));
}

TEST_F(Gestures, APressOnACheckBoxReleasedOverAnotherRowTogglesAndMovesNothing) {
    Drag(List(), RowCheckPoint(List(), 0), RowPoint(List(), 2));
    WaitForColumn(List(), kSheet, {"2", "", ""});
    Sleep(200);
    EXPECT_EQ(Column(List(), 0), (Rows{"101", "B", "C"}));
    EXPECT_TRUE(RowChecked(List(), 0));
}

TEST_F(Gestures, LinesPastedFromASpreadsheetBuildTheSameTree) {
    dorvak_.OpenPage(kStructurePage);
    const HWND text = dorvak_[ID_Text1];
    PutTextOnClipboard("0\tTop\t\t\n1\tP\tTop\t\n1\tQ\tTop\t\n");
    Click(text);
    PressKey('A', {VK_CONTROL});
    PressKey('V', {VK_CONTROL});
    WaitForText("the pasted lines", "0\tTop\r\n1\tP\tTop\r\n1\tQ\tTop\r\n",
                [&] { return Text(text); });
    dorvak_.Press(ID_Command5);
    WaitUntil("three nodes", [&] { return TreeItems(dorvak_[ID_TreeView1]).size() == 3; });
}

TEST_F(Balloons, AnActionEndedByAnErrorSaysWhyAndAClickTakesItAway) {
    const CatiaSession catia({"gearbox-drawing.txt"});
    catia.Do("fail 9 refused");
    dorvak_.OpenPage(kExportPage);
    dorvak_.Press(ID_Command11);
    WaitUntil("the balloon", [&] { return !BalloonText().empty(); });
    EXPECT_EQ(dorvak_.Status(), "Catie vytvari tabulku");
    EXPECT_TRUE(BalloonText().starts_with(
        "CATIA odmítla provést krok při volání DrawingTables.Add: The method Add failed."))
        << BalloonText();
    KeepPicture("balloon-error.png");
    Click(dorvak_[ID_Text2]);
    WaitUntil("no balloon", [&] { return BalloonText().empty(); });
}

TEST_F(Balloons, ComeWhenTheStatusLineIsInSight) {
    dorvak_.OpenPage(kExportPage);
    const CatiaSession catia({"gearbox-drawing.txt"});
    PasteText(dorvak_[ID_Text2], "/pozice;100\r\n");
    Click(dorvak_[ID_Command11]);
    WaitUntil("the balloon", [&] { return !BalloonText().empty(); });
    EXPECT_EQ(BalloonText(), "Řádek 1: za /pozice chybí hodnota Y.");
    dorvak_.Press(ID_Command18); // collapsed
    WaitUntil("no balloon", [&] { return BalloonText().empty(); });
}

TEST_F(Balloons, SayWhatWasDoneWhereThereIsNoClosingMessage) {
    SelectRow(List(), 0);
    const CatiaSession catia({"gearbox-drawing.txt"});
    dorvak_.OpenPage(kExportPage);
    dorvak_.Press(ID_Command6);
    WaitUntil("the balloon", [&] { return !BalloonText().empty(); });
    EXPECT_EQ(BalloonText(), "Hotovo: do výkresu je vloženo 6 textů.");
    EXPECT_EQ(dorvak_.Status(), "Cekam na Catii");
    KeepPicture("balloon-done.png");
}

TEST_F(Icon, IsBlueWhileAnActionRunsAndGreenWhenItIsDone) {
    const CatiaSession catia({"gearbox-assembly.txt"});
    catia.Do("fail 20 busy 8"); // two seconds
    dorvak_.OpenPage(kStructurePage);
    Click(dorvak_[ID_Command3]);
    WaitForColour("blue");
    EXPECT_FALSE(dorvak_.Status().starts_with("Sestav: "));
    WaitUntil("the walk's summary", [&] { return dorvak_.Status().starts_with("Sestav: "); });
    WaitForColour("green");
}

TEST_F(Icon, IsAbsentWhereThereIsNothingToWorkOnAndRedAfterAnError) {
    Sleep(300);
    WaitForColour(""); // that a first start finds no list is no failure
    dorvak_.OpenPage(kExportPage);
    dorvak_.Press(ID_Command11);
    dorvak_.WaitForStatus("Zjistuju spusteni Catie");
    WaitForColour("");
    const CatiaSession catia({"gearbox-drawing.txt"});
    catia.Do("fail 9 refused");
    dorvak_.Press(ID_Command11);
    WaitForColour("red");
}

TEST_F(Icon, HasTheExplanationAsItsTip) {
    const CatiaSession catia({"gearbox-drawing.txt"});
    dorvak_.OpenPage(kExportPage);
    PasteText(dorvak_[ID_Text2], "/pozice;100\r\n");
    dorvak_.Press(ID_Command11);
    WaitUntil("the balloon", [&] { return !BalloonText().empty(); });
    Click(dorvak_[ID_Text2]);
    WaitUntil("no balloon", [&] { return BalloonText().empty(); });
    MoveMouse(dorvak_[ID_StatusBar1], {8, 8});
    MoveMouse(dorvak_[ID_StatusBar1], {10, 10});
    WaitForText("the tip", "Řádek 1: za /pozice chybí hodnota Y.",
                [&] { return TipText(dorvak_.Process()); });
}
