// Detection of a running CATIA session.

#include <gtest/gtest.h>

#include "shell/shell.hpp"
#include "tests/support/headless_form.hpp"

namespace {

using testing_support::HeadlessForm;
using testing_support::kFormWindow;

struct Detection : testing::Test, HeadlessForm {};

TEST(CatiaTitle, BeginsWithCatiaV5InAnyLetterCase) {
    EXPECT_TRUE(shell::IsCatiaTitle("CATIA V5 - [Product1.CATProduct]"));
    EXPECT_TRUE(shell::IsCatiaTitle("catia v5"));
    EXPECT_TRUE(shell::IsCatiaTitle("CaTiA v5R21"));
}

TEST(CatiaTitle, BeginsWithTheSessionWindowsName) {
    EXPECT_TRUE(shell::IsCatiaTitle("CATIASessionWnd"));
    EXPECT_TRUE(shell::IsCatiaTitle("catiasessionwnd 2"));
}

TEST(CatiaTitle, WithTheWordsFurtherInDoesNotCount) {
    EXPECT_FALSE(shell::IsCatiaTitle("C:\\CATIA V5"));
    EXPECT_FALSE(shell::IsCatiaTitle(" CATIA V5"));
    EXPECT_FALSE(shell::IsCatiaTitle("My CATIASessionWnd"));
}

TEST(CatiaTitle, ShorterOrOtherTextsDoNotCount) {
    EXPECT_FALSE(shell::IsCatiaTitle(""));
    EXPECT_FALSE(shell::IsCatiaTitle("CATIA V"));
    EXPECT_FALSE(shell::IsCatiaTitle("CATIA V6"));
}

TEST_F(Detection, FindsASessionWindowWhenNoWindowBeginsWithCatiaV5) {
    desktop.titles = {"Explorer", "CATIASessionWnd"};
    EXPECT_TRUE(shell::Spusteni_Catie(form));
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie");
}

TEST_F(Detection, WithNoTitledWindowTheListIsEmptyAndTheResultIsFalse) {
    desktop.titles = {"", "", ""};
    form.List1.AddItem("from before");
    EXPECT_FALSE(shell::Spusteni_Catie(form));
    EXPECT_TRUE(form.List1.Items().empty());
}

TEST_F(Detection, TwoCatiaWindowsAreBothListed) {
    desktop.titles = {"CATIA V5 - [a]", "", "Notepad", "CATIA V5 - [b]"};
    EXPECT_TRUE(shell::Hledani_Catie(form));
    EXPECT_EQ(form.List1.Items(),
              (std::vector<std::string>{"CATIA V5 - [a]", "Notepad", "CATIA V5 - [b]"}));
}

TEST_F(Detection, GoesOnAfterTheWindowIsFound) {
    desktop.titles = {"CATIA V5", "Later"};
    EXPECT_TRUE(shell::Hledani_Catie(form));
    EXPECT_EQ(form.List1.Items().back(), "Later");
    EXPECT_EQ(shell::Projdi_Okno(form, 1), 1);
}

TEST_F(Detection, ForgetsAnEarlierSession) {
    desktop.titles = {"CATIA V5"};
    EXPECT_TRUE(shell::Hledani_Catie(form));
    desktop.titles = {"Notepad"};
    EXPECT_FALSE(shell::Hledani_Catie(form));
    EXPECT_EQ(form.List1.Items(), std::vector<std::string>{"Notepad"});
}

TEST_F(Detection, PutsTheWindowBackOnTopOnlyWhileOnTopIsTicked) {
    form.Check2.SetValue(1);
    const int before = desktop.times_put_on_top;
    shell::Spusteni_Catie(form);
    EXPECT_EQ(desktop.times_put_on_top, before + 1);
    form.Check2.SetValue(0);
    shell::Spusteni_Catie(form);
    EXPECT_EQ(desktop.times_put_on_top, before + 1);
    EXPECT_FALSE(desktop.topmost[kFormWindow]);
}

TEST_F(Detection, ProcesyShowsTheResultAsAWord) {
    desktop.titles = {"CATIA V5 - [a]"};
    form.Command26.Click();
    EXPECT_EQ(messages,
              (std::vector<std::string>{"Zjistuju spusteni Catie", "Spusteni Catie = True"}));
    desktop.titles.clear();
    form.Command26.Click();
    EXPECT_EQ(Status(), "Spusteni Catie = False");
}

TEST_F(Detection, ProcesyDoesNotPutTheWindowBackOnTop) {
    form.Check2.SetValue(1);
    const int before = desktop.times_put_on_top;
    form.Command26.Click();
    EXPECT_EQ(desktop.times_put_on_top, before);
}

TEST_F(Detection, AnApplicationThatCannotBeHadIsError429) {
    try {
        static_cast<void>(shell::CatiaApplication(form));
        FAIL();
    } catch (const automation::RunTimeError& error) {
        EXPECT_EQ(shell::ErrorText(error), "429 ActiveX component can't create object");
    }
}

} // namespace
