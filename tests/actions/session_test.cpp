// Detection of a running CATIA session.

#include <gtest/gtest.h>

#include "shell/shell.hpp"
#include "tests/support/action_test.hpp"

namespace {

using testing_support::AddRow;
using testing_support::HeadlessForm;
using testing_support::kFormWindow;

struct Detection : testing::Test, HeadlessForm {};

TEST(CatiaTitle, BeginsWithCatiaV5InAnyLetterCase) {
    EXPECT_TRUE(catia::IsSessionTitle("CATIA V5 - [Product1.CATProduct]"));
    EXPECT_TRUE(catia::IsSessionTitle("catia v5"));
    EXPECT_TRUE(catia::IsSessionTitle("CaTiA v5R21"));
}

TEST(CatiaTitle, BeginsWithTheSessionWindowsName) {
    EXPECT_TRUE(catia::IsSessionTitle("CATIASessionWnd"));
    EXPECT_TRUE(catia::IsSessionTitle("catiasessionwnd 2"));
}

TEST(CatiaTitle, WithTheWordsFurtherInDoesNotCount) {
    EXPECT_FALSE(catia::IsSessionTitle("C:\\CATIA V5"));
    EXPECT_FALSE(catia::IsSessionTitle(" CATIA V5"));
    EXPECT_FALSE(catia::IsSessionTitle("My CATIASessionWnd"));
}

TEST(CatiaTitle, ShorterOrOtherTextsDoNotCount) {
    EXPECT_FALSE(catia::IsSessionTitle(""));
    EXPECT_FALSE(catia::IsSessionTitle("CATIA V"));
    EXPECT_FALSE(catia::IsSessionTitle("CATIA V6"));
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

TEST_F(Detection, AWindowThatIsNotOfTheCatiaWorkedWithIsListedAndNoSession) {
    desktop.titles = {"CATIA V5 - [a]", "Notepad"};
    desktop.not_of_catia = {1};
    EXPECT_FALSE(shell::Spusteni_Catie(form));
    EXPECT_EQ(form.List1.Items(), desktop.titles);
    EXPECT_TRUE(form.catia_windows.empty());
    desktop.titles.emplace_back("CATIA V5 - [b]");
    EXPECT_TRUE(shell::Spusteni_Catie(form));
    EXPECT_EQ(form.catia_windows, std::vector<platform::WindowHandle>{3});
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

// A window of CATIA is there, its application cannot be had.
struct Unreachable : Detection {
    Unreachable() {
        desktop.titles = {"Explorer", "CATIA V5 - [a.CATDrawing]"};
        AddRow(form.ListView1, {"Part", "0001", "1", "", "", "", ""});
    }
    // Of the main job, which shows no error on the status line.
    std::string Explanation() {
        form.Command11.Click();
        EXPECT_EQ(Status(), "Cekam na Catii");
        return form.StatusBar1.ShownExplanation().text;
    }
};

TEST_F(Unreachable, CatiaWithOtherRightsSaysWhichOfTheTwoIsToBeStartedAnew) {
    programs.rights[2] = platform::Rights::kMore;
    EXPECT_EQ(Explanation(),
              "CATIA běží jako správce a tento program ne, proto se nespojí. Ukončete CATII a "
              "spusťte ji bez volby „Spustit jako správce“.");
    programs.rights[2] = platform::Rights::kLess;
    EXPECT_EQ(Explanation(), "Tento program běží jako správce a CATIA ne, proto se nespojí. "
                             "Ukončete ho a spusťte bez volby „Spustit jako správce“.");
}

TEST_F(Unreachable, CatiaThatIsNotRegisteredSaysTheCommandThatDoesIt) {
    const std::string expected =
        "CATIA není na tomto počítači zapsaná pro ovládání jinými programy. Ukončete CATII, "
        "spusťte jako správce příkaz „\"C:\\CATIA\\code\\bin\\CNEXT.exe\" /regserver“ a spusťte "
        "CATII znovu.";
    programs.registration = {};
    EXPECT_EQ(Explanation(), expected);
    programs.registration.found = true; // but no program stands there
    EXPECT_EQ(Explanation(), expected);
    programs.path.clear();
    EXPECT_EQ(Explanation(), "CATIA není na tomto počítači zapsaná pro ovládání jinými programy. "
                             "Ukončete CATII, spusťte jako správce příkaz „CNEXT.exe /regserver“ "
                             "ve složce code\\bin CATIE a spusťte CATII znovu.");
}

TEST_F(Unreachable, AnotherRegisteredProgramIsNamed) {
    programs.registration.program = "D:\\Other\\3DEXPERIENCE.exe";
    EXPECT_EQ(Explanation(),
              "Pro ovládání jinými programy je místo běžící CATIE zapsaný program "
              "„D:\\Other\\3DEXPERIENCE.exe“. Ukončete CATII, spusťte jako správce příkaz "
              "„\"C:\\CATIA\\code\\bin\\CNEXT.exe\" /regserver“ a spusťte CATII znovu.");
    programs.registration.program = R"(c:\catia\CODE\bin\cnext.EXE)"; // the same after all
    EXPECT_EQ(Explanation(), "Okno CATIE je vidět, ale CATIA ještě nepřijímá příkazy. Počkejte, až "
                             "se celá spustí; nepomůže-li to, ukončete ji a spusťte znovu.");
}

TEST_F(Unreachable, WhereNothingCanBeToldTheCommonReasonIsGiven) {
    programs.rights[2] = platform::Rights::kUnknown;
    programs.path.clear();
    EXPECT_EQ(Explanation(), "Okno CATIE je vidět, ale program se s ní nespojil. Spusťte CATII pod "
                             "stejným uživatelem jako tento program, ne jako správce.");
}

TEST_F(Unreachable, OfSeveralWindowsOneOfTheSameRightsCounts) {
    desktop.titles.emplace_back("CATIA V5 - [b.CATPart]");
    programs.rights[2] = platform::Rights::kMore;
    EXPECT_TRUE(Explanation().starts_with("Okno CATIE je vidět, ale CATIA ještě"));
    programs.rights[3] = platform::Rights::kMore;
    EXPECT_TRUE(Explanation().starts_with("CATIA běží jako správce"));
}

TEST_F(Unreachable, TheReasonStandsBesideAnErrorOnTheStatusLineToo) {
    programs.rights[2] = platform::Rights::kMore;
    for (auto* button : {&form.Command3, &form.Command21, &form.Command24}) {
        button->Click();
        EXPECT_EQ(Status(), "429 ActiveX component can't create object");
        EXPECT_TRUE(form.StatusBar1.ShownExplanation().text.starts_with("CATIA běží jako správce"));
        EXPECT_TRUE(form.StatusBar1.ShownExplanation().is_error);
    }
}

TEST_F(Unreachable, WhereNobodyHasLookedForTheWindowItIsLookedForNow) {
    programs.rights[2] = platform::Rights::kMore;
    form.Command31.Click(); // begins without the search for a session
    EXPECT_EQ(Status(), "429 ActiveX component can't create object");
    EXPECT_TRUE(form.StatusBar1.ShownExplanation().text.starts_with("CATIA běží jako správce"));
    EXPECT_EQ(form.List1.Items(), std::vector<std::string>()) << "that is the search's own";
    form.Command21.Click();
    desktop.titles = {"Explorer"}; // CATIA is gone since
    form.Command31.Click();
    EXPECT_EQ(Status(), "429 ActiveX component can't create object");
    EXPECT_EQ(form.StatusBar1.ShownExplanation().text, "");
}

TEST_F(Unreachable, WithoutAWindowThereIsNoExplanation) {
    desktop.titles = {"Explorer"};
    form.Command11.Click();
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie");
    EXPECT_EQ(form.StatusBar1.ShownExplanation().text, "");
}

// Several windows of CATIA, of whose sessions one answers.
struct SeveralSessions : testing_support::ActionTest {
    SeveralSessions() { AddRow(form.ListView1, {"Part", "0001", "1", "", "", "", ""}); }
    void OpenBeside(std::string_view document) {
        Open(document);
        desktop.titles.emplace_back("CATIA V5 - [Other.CATPart]");
    }
};

TEST_F(SeveralSessions, TheTipNamesTheDocumentThatTheLastActionWorkedOn) {
    const char* tip =
        "Poslední příkaz pracoval s dokumentem „D.CATDrawing“. Otevřená okna CATIE: 2.";
    for (auto* button : {&form.Command8, &form.Command9, &form.Command21, &form.Command24,
                         &form.Command29, &form.Command31}) {
        form.StatusBar1.SetTip({});
        OpenBeside("DrawingDocument D.CATDrawing\nsheet A active\n  view V\nsheet B\n");
        button->Click();
        EXPECT_EQ(form.StatusBar1.Tip(), tip) << button->Caption();
    }
    OpenBeside("ProductDocument P.CATProduct\nproduct A\n");
    form.Command3.Click();
    EXPECT_EQ(form.StatusBar1.Tip(),
              "Poslední příkaz pracoval s dokumentem „P.CATProduct“. Otevřená okna CATIE: 2.");
    form.Command8.Click(); // it is no drawing
    EXPECT_EQ(form.StatusBar1.Tip(),
              "Poslední příkaz pracoval s dokumentem „P.CATProduct“. Otevřená okna CATIE: 2.");
    Open("ProductDocument P.CATProduct\nproduct A\n");
    form.Command3.Click();
    EXPECT_EQ(form.StatusBar1.Tip(), "") << "one window needs no telling";
}

} // namespace
