// The person ends what runs: by the escape key, by closing the window; and what the window does
// between the yields of an action.
#include <fstream>
#include <sstream>
#include <thread>

#include <objbase.h>

#include "com/client.hpp"
#include "fixture.hpp"

using namespace driver;

namespace {

constexpr const char* kStopped = "18 User interrupt occurred";

// A product of so many children, each a part, or an assembly of one part.
std::string WriteProduct(const std::string& file_name, int children, bool assemblies) {
    std::string path = TemporaryPath(file_name);
    std::ofstream file(path);
    file << "ProductDocument Flat.CATProduct\nproduct \"Flat\"\n";
    for (int i = 1; i <= children; ++i) {
        file << "  child \"Child " << i << "\"\n";
    }
    for (int i = 1; i <= children && assemblies; ++i) {
        file << "product \"Child " << i << "\"\n  child \"Part " << i << "\"\n";
    }
    return path;
}

std::string WriteSheets(const std::string& file_name, int sheets) {
    std::string path = TemporaryPath(file_name);
    std::ofstream file(path);
    file << "DrawingDocument Sheets.CATDrawing\n";
    for (int i = 1; i <= sheets; ++i) {
        file << "sheet \"S" << i << "\"" << (i == 1 ? " active\n" : "\n") << "  view \"Main\"\n";
    }
    return path;
}

std::string LongStructure(int parts) {
    std::string structure = "\r\n0\tTop";
    for (int i = 1; i <= parts; ++i) {
        structure += "\r\n1\tPart " + std::to_string(i) + "\tTop";
    }
    return structure;
}

// Whether a window stands below another one.
bool IsBelow(HWND window, HWND other) {
    for (HWND next = GetWindow(other, GW_HWNDNEXT); next != nullptr;
         next = GetWindow(next, GW_HWNDNEXT)) {
        if (next == window) {
            return true;
        }
    }
    return false;
}

class Stopping : public DesktopTest {
  protected:
    // Stops the action that a button of the page that is open runs, some time after it says
    // `meanwhile` and before it says `end`.
    void StopMidway(const CatiaSession& catia, int button, const std::string& meanwhile,
                    const std::string& end) const {
        dorvak_.Press(button);
        WaitUntil(
            meanwhile, [&] { return dorvak_.Status().starts_with(meanwhile); }, kLong);
        Sleep(100);
        KeepPicture("running-" + std::to_string(button) + ".png");
        PressKey(VK_ESCAPE);
        int calls = 0;
        WaitUntil("no further call", [&] {
            const int before = std::exchange(calls, CallsMade(catia.Log()));
            Sleep(200);
            return calls == before;
        });
        EXPECT_FALSE(dorvak_.Status().starts_with(end)) << dorvak_.Status();
        KeepPicture("stopped-" + std::to_string(button) + ".png");
    }
    void Run(int button, const std::string& end) const {
        dorvak_.Press(button);
        WaitUntil(
            end, [&] { return dorvak_.Status().starts_with(end); }, kLong);
    }
    void StopAndRunAgain(const CatiaSession& catia, int button, const std::string& meanwhile,
                         const std::string& end) const {
        StopMidway(catia, button, meanwhile, end);
        Run(button, end);
    }

    void BeginWalk() const {
        dorvak_.Press(ID_Command3);
        WaitUntil("the walk", [&] { return dorvak_.Status().starts_with("Product: "); });
    }
    // Presses the button of the walk while the focus stays where it is.
    static void StartWalk(const DorvakWindow& dorvak) {
        const HWND walk = dorvak[ID_Command3];
        PostMessageW(GetParent(walk), WM_COMMAND, MAKEWPARAM(ID_Command3, BN_CLICKED),
                     reinterpret_cast<LPARAM>(walk));
        WaitUntil("the walk", [&] { return dorvak.Status().starts_with("Product: "); });
    }
    // Edits the name of the first of two rows during a walk, and does not end that.
    static void RenameInAWalk(const DorvakWindow& dorvak, const std::string& name) {
        FillList(dorvak, LongStructure(2), 2);
        const HWND list = dorvak[ID_ListView1];
        SelectRow(list, 0);
        StartWalk(dorvak);
        PressKey(VK_F2);
        const auto edit = [&] { return reinterpret_cast<HWND>(Send(list, LVM_GETEDITCONTROL)); };
        WaitUntil("the edit field", [&] { return edit() != nullptr; });
        PressKey('A', {VK_CONTROL});
        TypeText(name);
        WaitForText("the new name", name, [&] { return Text(edit()); });
    }

    // Moves the window to the left at its title bar, so many pixels.
    void MoveAtTitle(int pixels) const {
        const RECT before = Place(dorvak_.Window());
        Drag(dorvak_.Window(), {120, -10}, {120 - pixels, -10});
        WaitUntil("the window moved",
                  [&] { return Place(dorvak_.Window()).left == before.left - pixels; });
    }

    DorvakWindow dorvak_;
};

} // namespace

TEST_F(Stopping, AWalk) {
    const CatiaSession catia({WriteProduct("assemblies.txt", 300, true)});
    StopAndRunAgain(catia, ID_Command3, "Product: ", "Sestav: 301 Partu: 300");
}

TEST_F(Stopping, AWalkWithoutYields) {
    const CatiaSession catia({WriteProduct("flat.txt", 5000, false)});
    MoveAtTitle(20);
    BeginWalk();

    // Meanwhile the window paints, and what is typed waits.
    RECT client;
    GetClientRect(dorvak_.Window(), &client);
    InvalidateRect(dorvak_.Window(), nullptr, TRUE);
    WaitUntil("the window painted",
              [&] { return GetUpdateRect(dorvak_.Window(), nullptr, FALSE) == FALSE; });
    // It can be moved.
    MoveAtTitle(30);
    EXPECT_TRUE(dorvak_.Status().starts_with("Product: ")) << dorvak_.Status();
    PressKey(VK_ESCAPE);
    dorvak_.WaitForStatus(kStopped);
}

TEST_F(Stopping, MessagesThatComeMeanwhileDoNotShowMoreTexts) {
    const CatiaSession catia({WriteProduct("flat.txt", 5000, false)});
    BeginWalk();
    const Clock::time_point start = Clock::now();
    int texts = 0;
    std::string last;
    while (MillisecondsSince(start) < 1000) {
        for (int i = 0; i < 5; ++i) {
            PostMessageW(dorvak_.Window(), WM_NULL, 0, 0);
        }
        const std::string text = dorvak_.Status();
        texts += std::exchange(last, text) == text ? 0 : 1;
    }
    EXPECT_GT(texts, 3);
    EXPECT_LE(texts, 15);
    PressKey(VK_ESCAPE);
    dorvak_.WaitForStatus(kStopped);
}

TEST_F(Stopping, KeysPressedBetweenYieldsAreTyped) {
    const CatiaSession catia({WriteProduct("flat.txt", 700, false)});
    Click(dorvak_[ID_Text1]);
    PressKey('A', {VK_CONTROL});
    BeginWalk();
    Click(dorvak_[ID_Text1]); // waits for the end, like the keys
    TypeText("Čáp");
    for (const WORD key : {WORD{'X'}, WORD{VK_LEFT}, WORD{'U'}}) {
        PressKey(key);
    }
    EXPECT_TRUE(dorvak_.Status().starts_with("Product: "));
    dorvak_.WaitForStatus("Sestav: 1 Partu: 700", kLong);
    WaitUntil("the text",
              [&] { return Text(dorvak_[ID_Text1]).find("Čápux") != std::string::npos; });
}

TEST_F(Stopping, APressBetweenYieldsBringsTheWindowForward) {
    const CatiaSession catia({WriteProduct("flat.txt", 5000, false)});
    BeginWalk();
    BringToFront(catia.Window());
    ClickAsItStands(dorvak_[ID_Text1], {20, 20}); // the window is on top
    WaitUntil("the window in front", [&] { return GetForegroundWindow() == dorvak_.Window(); });
    EXPECT_TRUE(dorvak_.Status().starts_with("Product: ")) << dorvak_.Status();
    PressKey(VK_ESCAPE);
    dorvak_.WaitForStatus(kStopped);
}

TEST_F(Stopping, WhatIsPressedWithoutTheQueueBetweenYieldsWaits) {
    const CatiaSession catia({WriteProduct("flat.txt", 5000, false)});
    BeginWalk();
    Send(dorvak_[ID_Check2], BM_CLICK); // as programs for the blind do
    EXPECT_TRUE(Topmost(dorvak_.Window()));
    EXPECT_TRUE(dorvak_.Status().starts_with("Product: ")) << dorvak_.Status();
    PressKey(VK_ESCAPE);
    dorvak_.WaitForStatus(kStopped);
    WaitUntil("the window among the others", [&] { return !Topmost(dorvak_.Window()); });
    EXPECT_FALSE(Ticked(dorvak_[ID_Check2]));
}

TEST_F(Stopping, ARenameOutlastsALookIntoTheSessionDuringACall) {
    const CatiaSession catia({WriteProduct("assemblies.txt", 300, true)});
    const HWND list = dorvak_[ID_ListView1];
    RenameInAWalk(dorvak_, "Kolo");
    catia.Do("fail 1 slow 2000");
    Sleep(300);
    RequestFront(catia.Window());
    Sleep(300);
    EXPECT_EQ(Text(reinterpret_cast<HWND>(Send(list, LVM_GETEDITCONTROL))), "Kolo");
    Click(list, RowPoint(list, 1));
    WaitUntil("no edit field", [&] { return Send(list, LVM_GETEDITCONTROL) == 0; });
    WaitForColumn(list, 0, {"Kolo", "Part 2"});
    EXPECT_TRUE(dorvak_.Status().starts_with("Product: ")) << dorvak_.Status();
}

TEST_F(Stopping, ClosingTheWindowBetweenYieldsClosesTheProgram) {
    const CatiaSession catia({WriteProduct("flat.txt", 5000, false)});
    BeginWalk();
    dorvak_.Close();
    EXPECT_LT(CallsMade(catia.Log()), 15000);
}

TEST_F(Stopping, ClosingByTheKeyDuringACallKeepsARenameLeftOpen) {
    const CatiaSession catia({WriteProduct("assemblies.txt", 300, true)});
    const auto folder = std::make_shared<ProgramFolder>();
    const DorvakWindow dorvak(folder);
    RenameInAWalk(dorvak, "Pero");
    catia.Do("fail 1 slow 1500");
    Sleep(300);
    PressKey(VK_F4, {VK_MENU});
    dorvak.Process().WaitForEnd();
    EXPECT_TRUE(ReadFile(folder->Path("list.txt")).starts_with("Pero@@"));
}

TEST_F(Stopping, ATable) {
    const CatiaSession catia({WriteSheets("sheet.txt", 1)});
    FillList(dorvak_, LongStructure(60), 60);
    dorvak_.OpenPage(kExportPage);
    StopAndRunAgain(catia, ID_Command11, "Catie upravuje font", "Tabulka vytvorena Ok ");
    catia.Do("select S1 Main 2"); // behind the one that was stopped
    dorvak_.OpenPage(kImportPage);
    StopAndRunAgain(catia, ID_Command9, "Nacteni radky:", "Nacteni tabulky Ok");
    EXPECT_EQ(RowCount(dorvak_[ID_ListView1]), 60);
    dorvak_.OpenPage(kExportPage);
    StopAndRunAgain(catia, ID_Command30, "Vyplnovani tabulky", "Vlozeni dat Ok");
}

TEST_F(Stopping, Sheets) {
    const CatiaSession catia({WriteSheets("sheets.txt", 250)});
    FillList(dorvak_, LongStructure(2), 2);
    dorvak_.OpenPage(kSheetPage);
    StopAndRunAgain(catia, ID_Command21, "Nacitam Sheets", "Sheets nacteny: 250");
    Run(ID_Command20, "Ocislovano: 249");
    StopMidway(catia, ID_Command23, "Prejmenovavam Sheets", "Prejmenovano: 250");
    Run(ID_Command21, "Sheets nacteny: 250"); // some have their new names
    Run(ID_Command20, "Ocislovano: 249");
    Run(ID_Command23, "Prejmenovano: 250");
    Run(ID_Command21, "Sheets nacteny: 250");
    StopAndRunAgain(catia, ID_Command34, "Nacitam Sheets", "Sheets nacteny: 250");
}

TEST_F(Stopping, AnOpenDropDownTakesTheKeyFirst) {
    const CatiaSession catia({WriteProduct("assemblies.txt", 300, true)});
    FillList(dorvak_, LongStructure(2), 2);
    SelectRow(dorvak_[ID_ListView1], 0);
    dorvak_.OpenPage(kStructurePage);
    BeginWalk();
    dorvak_.OpenPage(kEditPage);
    Click(dorvak_[ID_Combo1]);
    PressKey(VK_DOWN, {VK_MENU});
    const HWND picker = dorvak_[ID_Combo1];
    WaitUntil("the drop-down", [&] { return Send(picker, CB_GETDROPPEDSTATE) != 0; });
    PressKey(VK_ESCAPE);
    WaitUntil("the drop-down closed", [&] { return Send(picker, CB_GETDROPPEDSTATE) == 0; });
    EXPECT_TRUE(dorvak_.Status().starts_with("Product: ")) << dorvak_.Status();
    PressKey(VK_ESCAPE);
    dorvak_.WaitForStatus(kStopped);
}

TEST_F(Stopping, ADropDownThatCannotCloseBetweenYieldsTakesTheKeyOnce) {
    const CatiaSession catia({WriteProduct("flat.txt", 5000, false)});
    FillList(dorvak_, LongStructure(2), 2);
    SelectRow(dorvak_[ID_ListView1], 0);
    const HWND picker = dorvak_[ID_Combo1];
    Click(picker);
    PressKey(VK_DOWN, {VK_MENU});
    WaitUntil("the drop-down", [&] { return Send(picker, CB_GETDROPPEDSTATE) != 0; });
    StartWalk(dorvak_); // the drop-down stays open
    PressKey(VK_ESCAPE);
    Sleep(300);
    EXPECT_TRUE(dorvak_.Status().starts_with("Product: ")) << dorvak_.Status();
    PressKey(VK_ESCAPE);
    dorvak_.WaitForStatus(kStopped);
    EXPECT_LT(CallsMade(catia.Log()), 15000);
    WaitUntil("the drop-down closed", [&] { return Send(picker, CB_GETDROPPEDSTATE) == 0; });
}

TEST_F(Stopping, ASessionThatIsAtWorkWhenTheActionBegins) {
    const CatiaSession catia({kProduct});
    catia.Do("fail 1 slow 4000");
    const std::jthread macro([] {
        CoInitialize(nullptr);
        com::GetActiveObject("CATIA.Application")->get({"Application", "ActiveDocument"});
        CoUninitialize();
    });
    Sleep(500);
    dorvak_.Press(ID_Command3);
    dorvak_.WaitForStatus("Cekam na Catii");
    MoveAtTitle(30);
    EXPECT_EQ(dorvak_.Status(), "Cekam na Catii");
    dorvak_.WaitForStatus(kWalked, kLong);
}

TEST_F(Stopping, ADialogOfTheSessionCanBeAnswered) {
    const CatiaSession catia({kProduct});
    catia.Do("dialog open");
    dorvak_.Press(ID_Command3);
    const HWND dialog = GetLastActivePopup(catia.Window());
    ASSERT_NE(dialog, catia.Window());
    WaitUntil("the window behind the dialog",
              [&] { return IsBelow(dorvak_.Window(), dialog) && !Topmost(dorvak_.Window()); });
    catia.Do("dialog close");
    dorvak_.WaitForStatus(kWalked, kLong);
    WaitUntil("the window on top again", [&] { return Topmost(dorvak_.Window()); });
}

TEST_F(Stopping, ASessionThatRejectsEverything) {
    const CatiaSession catia({kProduct});
    catia.Do("fail 20 busy 1000");
    // A session has windows that nobody sees.
    const HWND hidden = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"CATIASessionWnd", WS_POPUP, 0,
                                        0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    dorvak_.Press(ID_Command3);
    ASSERT_TRUE(Topmost(dorvak_.Window()));
    WaitUntil("the window behind the session's", [&] {
        return !Topmost(dorvak_.Window()) && IsBelow(dorvak_.Window(), catia.Window());
    });
    PostMessageW(dorvak_.Window(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    WaitUntil("the window minimised", [&] { return IsIconic(dorvak_.Window()) != FALSE; });
    Sleep(2500); // the balloon's time
    EXPECT_EQ(dorvak_.Process().FindVisible(TOOLTIPS_CLASSA), nullptr);
    PostMessageW(dorvak_.Window(), WM_SYSCOMMAND, SC_RESTORE, 0);
    EXPECT_NE(dorvak_.Process().WaitForWindow(TOOLTIPS_CLASSA), nullptr);
    KeepPicture("catia-rejects-calls.png");
    BringToFront(dorvak_.Window());
    PressKey(VK_ESCAPE);
    dorvak_.WaitForStatus(kStopped);
    WaitUntil("the window on top again", [&] { return Topmost(dorvak_.Window()); });
    catia.Do("disarm");
    dorvak_.Press(ID_Command3);
    dorvak_.WaitForStatus(kWalked, kLong);
    DestroyWindow(hidden);
}
