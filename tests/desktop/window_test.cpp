// The window's own life: start-up, "On Top", collapsing, "Reset", the stored configuration.
#include <array>

#include "controls/form1.hpp"
#include "fixture.hpp"
#include "version.h"

using namespace driver;

namespace {

const std::string kDefault(controls::kDefaultConfiguration);

int Height(const DorvakWindow& dorvak) {
    const RECT place = Place(dorvak.Window());
    return place.bottom - place.top;
}

// Twips in the pixels of the window's monitor.
int Pixels(const DorvakWindow& dorvak, int twips) {
    return MulDiv(twips, static_cast<int>(GetDpiForWindow(dorvak.Window())), 1440);
}

void WaitForHeight(const DorvakWindow& dorvak, int twips) {
    WaitUntil("a height of " + std::to_string(twips) + " twips",
              [&] { return Height(dorvak) == Pixels(dorvak, twips); });
}

void WaitForTopmost(const DorvakWindow& dorvak, bool topmost) {
    WaitUntil(topmost ? "the window above all others" : "the window among the others",
              [&] { return Topmost(dorvak.Window()) == topmost; });
}

class StartUp : public DesktopTest {};
class OnTop : public DesktopTest {};
class Collapse : public DesktopTest {};
class Configuration : public DesktopTest {};

} // namespace

TEST_F(StartUp, CaptionCarriesTheVersion) {
    const DorvakWindow dorvak;
    EXPECT_EQ(Text(dorvak.Window()), "Dorvak pro Catii " DORVAK_VERSION_TEXT);
}

TEST_F(StartUp, WindowStandsInTheMiddleOfTheScreenAtFullHeight) {
    const DorvakWindow dorvak;
    const RECT place = Place(dorvak.Window());
    EXPECT_NEAR(place.left, GetSystemMetrics(SM_CXSCREEN) - place.right, 2);
    EXPECT_NEAR(place.top, GetSystemMetrics(SM_CYSCREEN) - place.bottom, 2);
    EXPECT_EQ(Height(dorvak), Pixels(dorvak, 7155));
    EXPECT_EQ(Text(dorvak[ID_Command18]), "min");
}

TEST_F(StartUp, OnTopIsTickedAndTheWindowIsTopmost) {
    const DorvakWindow dorvak;
    EXPECT_TRUE(Ticked(dorvak[ID_Check2]));
    EXPECT_TRUE(Topmost(dorvak.Window()));
}

TEST_F(StartUp, WithoutAStoredConfigurationTheDefaultStands) {
    const DorvakWindow dorvak;
    EXPECT_EQ(Text(dorvak[ID_Text2]), kDefault);
    EXPECT_FALSE(IsWindowVisible(dorvak[ID_Text4]));
}

TEST_F(StartUp, EveryButtonCanBePressedButThePickersThatWaitForARow) {
    const DorvakWindow dorvak;
    for (int id = ID_Command1; id <= ID_Command35; ++id) {
        const bool waits = id >= ID_Command12 && id <= ID_Command15;
        EXPECT_EQ(IsWindowEnabled(dorvak[id]) != FALSE, !waits) << id;
    }
}

TEST_F(StartUp, EveryPageShowsItsOwnControls) {
    const DorvakWindow dorvak;
    const std::array controls{ID_TreeView1, ID_ListView1, ID_Text2, ID_Text3, ID_ListView3};
    for (int page = kStructurePage; page <= kSheetPage; ++page) {
        dorvak.OpenPage(page);
        for (int other = kStructurePage; other <= kSheetPage; ++other) {
            EXPECT_EQ(IsWindowVisible(dorvak[controls.at(static_cast<std::size_t>(other))]) != 0,
                      other == page)
                << "page " << page << ", control of page " << other;
        }
    }
}

TEST_F(OnTop, UntickingMakesTheWindowOrdinaryAtOnceAndTickingTopmostAgain) {
    const DorvakWindow dorvak;
    WaitForTopmost(dorvak, true);
    dorvak.Press(ID_Check2);
    WaitForTopmost(dorvak, false);
    EXPECT_FALSE(Ticked(dorvak[ID_Check2]));
    dorvak.Press(ID_Check2);
    WaitForTopmost(dorvak, true);
    EXPECT_TRUE(Ticked(dorvak[ID_Check2]));
}

TEST_F(OnTop, AfterUntickingAResizeDoesNotBringItBack) {
    const DorvakWindow dorvak;
    WaitForTopmost(dorvak, true);
    dorvak.Press(ID_Check2);
    WaitForTopmost(dorvak, false);
    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, 660);
    EXPECT_FALSE(Topmost(dorvak.Window()));
    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, 7155);
    EXPECT_FALSE(Topmost(dorvak.Window()));
}

TEST_F(OnTop, WhileTickedAResizeAssertsItAgain) {
    const DorvakWindow dorvak;
    WaitForTopmost(dorvak, true);
    // Another program takes the window down; the box stays ticked.
    SetWindowPos(dorvak.Window(), HWND_NOTOPMOST, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    WaitForTopmost(dorvak, false);
    dorvak.Press(ID_Command18);
    WaitForTopmost(dorvak, true);
}

TEST_F(Collapse, ButtonSwitchesBetweenTheTwoHeights) {
    const DorvakWindow dorvak;
    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, 660);
    EXPECT_EQ(Text(dorvak[ID_Command18]), "max");
    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, 7155);
    EXPECT_EQ(Text(dorvak[ID_Command18]), "min");
}

TEST_F(Collapse, TheStripStaysInReachWhileCollapsed) {
    const DorvakWindow dorvak;
    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, 660);
    const RECT window = Place(dorvak.Window());
    for (const int id : {ID_Check2, ID_Command18}) {
        const RECT control = Place(dorvak[id]);
        EXPECT_GE(control.top, window.top);
        EXPECT_LE(control.bottom, window.bottom);
    }
}

// Nobody can click a tab below the collapsed window's edge: the keyboard reaches it.
TEST_F(Collapse, ChangingTheTabWhileCollapsedRestoresTheFullHeight) {
    const DorvakWindow dorvak;
    dorvak.Press(ID_Command18);
    WaitForHeight(dorvak, 660);
    PressKey(VK_TAB); // from the button to the tabs
    PressKey(VK_RIGHT);
    WaitForHeight(dorvak, 7155);
    EXPECT_EQ(Text(dorvak[ID_Command18]), "min");
    EXPECT_EQ(Send(dorvak[ID_SSTab1], TCM_GETCURSEL), kEditPage);
}

TEST_F(Configuration, ResetRestoresTheDefault) {
    const DorvakWindow dorvak;
    dorvak.OpenPage(kExportPage);
    PasteText(dorvak[ID_Text2], "/pozice;1;2\r\n");
    dorvak.Press(ID_Command19);
    WaitForText("the configuration", kDefault, [&] { return Text(dorvak[ID_Text2]); });
}

TEST_F(Configuration, SurvivesARestart) {
    const std::string edited = "/pozice;30;40\r\n/hlavicka;Číslo;Název;Kusů\r\n";
    {
        const DorvakWindow dorvak;
        dorvak.OpenPage(kExportPage);
        PasteText(dorvak[ID_Text2], edited);
        dorvak.Close();
    }
    EXPECT_EQ(SettingKeeper::Read(), edited);
    const DorvakWindow dorvak;
    EXPECT_EQ(Text(dorvak[ID_Text2]), edited);
}

TEST_F(Configuration, TypedTextIsStoredToo) {
    {
        const DorvakWindow dorvak;
        dorvak.OpenPage(kExportPage);
        Click(dorvak[ID_Text2]);
        PressKey(VK_END, {VK_CONTROL});
        TypeText("/AnchorPoint;8\r\n");
        WaitUntil("the text typed", [&] { return Text(dorvak[ID_Text2]).ends_with("8\r\n"); });
        dorvak.Close();
    }
    EXPECT_EQ(SettingKeeper::Read(), kDefault + "/AnchorPoint;8\r\n");
}

TEST_F(Configuration, AnEmptyStoredTextLeavesTheDefault) {
    SettingKeeper::Write("");
    const DorvakWindow dorvak;
    EXPECT_EQ(Text(dorvak[ID_Text2]), kDefault);
}

TEST_F(Configuration, ClosingStoresTheDefaultWhereNothingWasEdited) {
    {
        const DorvakWindow dorvak;
        EXPECT_FALSE(SettingKeeper::Read());
        dorvak.Close();
    }
    EXPECT_EQ(SettingKeeper::Read(), kDefault);
}
