// Start-up, closing, and what the window itself does.

#include <gtest/gtest.h>

#include "shell/shell.hpp"
#include "tests/support/headless_form.hpp"
#include "version.h"

namespace {

using testing_support::HeadlessForm;
using testing_support::kFormWindow;

const char* const kSetting = "Lumsek\\Pantrel\\export";

struct StartUp : testing::Test, HeadlessForm {};
struct Closing : testing::Test, HeadlessForm {};

struct Window : testing::Test, HeadlessForm {
    Window() { app::Form_Load(form); }
};

TEST_F(StartUp, CentresTheWindow) {
    app::Form_Load(form);
    EXPECT_EQ(form.Left, (19200 - 9600) / 2);
    EXPECT_EQ(form.Top, (15360 - 7155) / 2);
}

TEST_F(StartUp, CaptionHoldsTheVersion) {
    app::Form_Load(form);
    EXPECT_EQ(form.Caption, "Dorvak pro Catii " DORVAK_VERSION_TEXT);
}

TEST_F(StartUp, OnTrialTheCaptionSaysSo) {
    form.on_trial = true;
    app::Form_Load(form);
    EXPECT_EQ(form.Caption, "Dorvak pro Catii " DORVAK_VERSION_TEXT " - na zkoušku");
}

TEST_F(StartUp, FirstStartWithNoSettingKeepsTheDesignTimeConfiguration) {
    app::Form_Load(form);
    EXPECT_EQ(form.Text2.Text(), controls::kDefaultConfiguration);
}

TEST_F(StartUp, AListThatWasNeverSavedIsNoFailure) {
    app::BindActions(form);
    app::Form_Load(form);
    EXPECT_EQ(Status(), "Nacteni Error 53 File not found");
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kNone);
}

TEST_F(StartUp, AListThatIsLoadedIsDoneAlsoWithoutRememberedValues) {
    app::BindActions(form);
    files.stored["C:\\Dorvak\\list.txt"] = "Šroub@@True@@0001@@4@@@@@@@@\r\n";
    app::Form_Load(form);
    EXPECT_EQ(Status(), "Nacteni listu ok 1");
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kDone);
    EXPECT_FALSE(form.last_error);
}

TEST_F(StartUp, AListThatCannotBeReadIsOne) {
    app::BindActions(form);
    files.stored["C:\\Dorvak\\list.txt"] = "no separator\r\n";
    app::Form_Load(form);
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kFailed);
}

TEST_F(StartUp, AStoredSettingReplacesTheConfiguration) {
    settings.stored[kSetting] = "/volny;2\r\n";
    app::Form_Load(form);
    EXPECT_EQ(form.Text2.Text(), "/volny;2\r\n");
    EXPECT_EQ(form.Text4.Text(), controls::kDefaultConfiguration);
}

TEST_F(StartUp, AStoredEmptyTextDoesNotClearTheConfiguration) {
    settings.stored[kSetting] = "";
    app::Form_Load(form);
    EXPECT_EQ(form.Text2.Text(), controls::kDefaultConfiguration);
}

TEST_F(StartUp, TicksOnTopAndPutsTheWindowOnTop) {
    app::Form_Load(form);
    EXPECT_EQ(form.Check2.Value(), 1);
    EXPECT_TRUE(desktop.topmost[kFormWindow]);
}

TEST_F(StartUp, PressesTheOpenButtonWithTheRightButtonAndShift) {
    std::vector<int> pressed;
    form.Command27.MouseDown = [&](int button, int shift, int x, int y) {
        pressed = {button, shift, x, y};
        EXPECT_EQ(form.Check2.Value(), 0) << "ticking On Top comes after it";
    };
    app::Form_Load(form);
    EXPECT_EQ(pressed, (std::vector<int>{2, 1, 1, 1}));
}

TEST_F(StartUp, AFailingSettingsStoreIsShownAndTheProgramGoesOn) {
    settings.broken = true;
    app::Form_Load(form);
    ASSERT_EQ(message_boxes.shown.size(), 1U);
    EXPECT_EQ(message_boxes.shown[0].number, 75);
    settings.broken = false;
    form.Command26.Click();
    EXPECT_EQ(Status(), "Spusteni Catie = False");
}

TEST_F(Closing, WritesTheConfigurationToTheSetting) {
    app::Form_Load(form);
    form.Text2.UserChange("/volny;9");
    app::RequestClose(form);
    EXPECT_EQ(settings.stored[kSetting], "/volny;9");
    EXPECT_TRUE(form.unloaded);
}

TEST_F(Closing, PressesTheSaveButtonBeforeItWritesTheSetting) {
    app::Form_Load(form);
    std::vector<int> pressed;
    form.Command17.MouseDown = [&](int button, int shift, int x, int y) {
        pressed = {button, shift, x, y};
        EXPECT_FALSE(settings.stored.contains(kSetting));
    };
    app::RequestClose(form);
    EXPECT_EQ(pressed, (std::vector<int>{2, 1, 1, 1}));
    EXPECT_TRUE(settings.stored.contains(kSetting));
}

TEST_F(Closing, RunsOnce) {
    app::Form_Load(form);
    int saves = 0;
    form.Command17.MouseDown = [&](int, int, int, int) {
        ++saves;
        app::RequestClose(form);
    };
    app::RequestClose(form);
    app::RequestClose(form);
    EXPECT_EQ(saves, 1);
}

TEST_F(Closing, AFailingSettingsStoreIsShownAndTheWindowClosesAllTheSame) {
    app::Form_Load(form);
    settings.broken = true;
    app::RequestClose(form);
    ASSERT_EQ(message_boxes.shown.size(), 1U);
    EXPECT_EQ(message_boxes.shown[0].number, 75);
    EXPECT_TRUE(form.unloaded);
}

TEST_F(Closing, WaitsForTheHandlerThatRuns) {
    app::Form_Load(form);
    app::Dispatch(form, [&] {
        app::RequestClose(form);
        EXPECT_FALSE(form.unloaded);
        EXPECT_THROW(shell::DoEvents(form), automation::RunTimeError);
    });
    EXPECT_TRUE(form.unloaded);
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(Closing, AnActionThatIsEndedByItShowsNoError) {
    app::Form_Load(form);
    app::Dispatch(form, [&] {
        app::RequestClose(form);
        shell::DoEvents(form);
    });
    EXPECT_TRUE(form.unloaded);
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(Closing, NoHandlerStartsOnceTheWindowIsClosed) {
    app::Form_Load(form);
    app::RequestClose(form);
    const std::string status = Status();
    form.Command26.Click();
    EXPECT_EQ(Status(), status);
}

TEST_F(Closing, NoHandlerStartsWhileTheRunningOnesEnd) {
    app::Form_Load(form);
    app::Dispatch(form, [&] {
        app::RequestClose(form);
        form.Command26.Click();
    });
    EXPECT_EQ(std::ranges::count(messages, "Spusteni Catie = False"), 0);
}

TEST_F(Closing, TheEndOfTheWindowsSessionRunsTheClosingStepsAtOnceAndOnce) {
    app::Form_Load(form);
    int saves = 0;
    form.Command17.MouseDown = [&](int, int, int, int) { ++saves; };
    app::Dispatch(form, [&] {
        app::EndSession(form);
        EXPECT_TRUE(form.unloaded);
        EXPECT_EQ(saves, 1);
        EXPECT_THROW(shell::DoEvents(form), automation::RunTimeError);
    });
    app::EndSession(form);
    EXPECT_EQ(saves, 1);
}

TEST_F(Window, UntickingOnTopTakesEffectAtOnceAndALaterResizeDoesNotUndoIt) {
    form.Check2.SetValue(0);
    EXPECT_FALSE(desktop.topmost[kFormWindow]);
    app::Form_Resize(form);
    EXPECT_FALSE(desktop.topmost[kFormWindow]);
    form.SSTab1.UserClick(2);
    EXPECT_FALSE(desktop.topmost[kFormWindow]);
}

TEST_F(Window, ResizeAndTabChangePutItOnTopAgainWhileOnTopIsTicked) {
    const int before = desktop.times_put_on_top;
    app::Form_Resize(form);
    EXPECT_EQ(desktop.times_put_on_top, before + 1);
    form.SSTab1.UserClick(1);
    EXPECT_EQ(desktop.times_put_on_top, before + 2);
}

TEST_F(Window, TheCollapseButtonGoesToTheTopStripAndBack) {
    EXPECT_EQ(form.Command18.Caption(), "min");
    form.Command18.Click();
    EXPECT_EQ(form.Command18.Caption(), "max");
    EXPECT_EQ(form.Height, 660);
    form.Command18.Click();
    EXPECT_EQ(form.Command18.Caption(), "min");
    EXPECT_EQ(form.Height, 7155);
}

TEST_F(Window, ChangingTheTabWhileCollapsedRestoresTheFullHeight) {
    form.Command18.Click();
    form.SSTab1.UserClick(1);
    EXPECT_EQ(form.Command18.Caption(), "min");
    EXPECT_EQ(form.Height, 7155);
}

TEST_F(Window, ChangingTheTabAtFullHeightChangesNothing) {
    form.SSTab1.UserClick(1);
    EXPECT_EQ(form.Command18.Caption(), "min");
    EXPECT_EQ(form.Height, 7155);
}

TEST_F(Window, ResetBringsTheDefaultConfigurationBack) {
    form.Text2.UserChange("nonsense");
    form.Command19.Click();
    EXPECT_EQ(form.Text2.Text(), controls::kDefaultConfiguration);
}

TEST_F(Window, TabsAndColumnsBearTheirCaptions) {
    using Texts = std::vector<std::string>;
    EXPECT_EQ(form.SSTab1.Captions(),
              (Texts{"Strom", "Editace tabulky", "Export tabulky", "Import tabulky", "Sheet"}));
    EXPECT_EQ(form.ListView1.Columns(),
              (Texts{"Jmeno", "Poz.", "kusů", "List", "Material", "Velikost", "Poznámka"}));
    EXPECT_EQ(form.ListView2.Columns(), (Texts{"Jmeno", "Kusů"}));
    EXPECT_EQ(form.ListView3.Columns(), (Texts{"Catia", "Přejmenovaní", ""}));
}

TEST_F(Window, ButtonsWithoutAnActionAreDisabled) {
    form.Command21.Click = nullptr;
    EXPECT_FALSE(form.Command21.Enabled());
    EXPECT_TRUE(form.Command3.Enabled());
    EXPECT_TRUE(form.Command11.Enabled());
}

TEST(Dispatcher, ShowsAnErrorThatNoActionTrappedAndGoesOn) {
    HeadlessForm headless;
    app::Dispatch(headless.form, [] { throw automation::SubscriptOutOfRange(); });
    ASSERT_EQ(headless.message_boxes.shown.size(), 1U);
    EXPECT_EQ(headless.message_boxes.shown[0].number, 9);
    EXPECT_EQ(headless.message_boxes.shown[0].description, "Subscript out of range");
    int ran = 0;
    app::Dispatch(headless.form, [&] { ++ran; });
    EXPECT_EQ(ran, 1);
}

TEST(Trap, RunsTheHandlerWithTheErrorAndOnlyThen) {
    std::string handled;
    shell::Trap([] {}, [&](const automation::RunTimeError&) { handled = "unexpected"; });
    EXPECT_EQ(handled, "");
    shell::Trap([] { throw automation::RunTimeError(-2147467259, "The method Item failed"); },
                [&](const automation::RunTimeError& error) { handled = shell::ErrorText(error); });
    EXPECT_EQ(handled, "-2147467259 The method Item failed");
}

} // namespace
