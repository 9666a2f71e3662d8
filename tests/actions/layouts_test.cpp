// What was read of a table's layout taken into the configuration, and layouts kept under names.

#include <gtest/gtest.h>

#include "tables/tables.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"

namespace {

using controls::ActionState;
using testing_support::DrawingWithTable;
using Texts = std::vector<std::string>;

const std::string kFolder = "C:\\Dorvak\\Nastaveni";
const std::string kA4 = "/vyska1;4\r\n/vyska2;5\r\n";
const std::string kA3 = "/vyska1;6\r\nHlavička: žlutá\r\n";

std::string PathOf(const std::string& name) {
    return kFolder + "\\" + name + ".txt";
}

struct TakeOver : testing_support::ActionTest {};

TEST_F(TakeOver, TheLayoutThatWasReadGoesIntoTheConfiguration) {
    Open(DrawingWithTable(3, 7));
    form.Command10.Click();
    ASSERT_EQ(Status(), "Nacteni parametru Ok");
    session.ClearLog();
    form.Command38.Click();
    EXPECT_EQ(Status(), "Prevzato radku: 10");
    EXPECT_EQ(form.StatusBar1.State(), ActionState::kDone);
    EXPECT_TRUE(session.Log().empty());
    EXPECT_EQ(form.Text2.Text(), "/tlouska_cary;3\r\n"
                                 "/pozice;30;40.5\r\n"
                                 "/razeni;1;0;2;5;4;6;3\r\n"
                                 "/sirka;11;12;13;14;15;16;17\r\n"
                                 "/vyska1;5.5\r\n"
                                 "/vyska2;6.5\r\n"
                                 "/hlavicka;old;old;old;old;old;old;old\r\n"
                                 "/volny;5\r\n"
                                 "/fontname;Arial (TrueType)\r\n"
                                 "/fontsize1;3.5\r\n"
                                 "/fontsize2;3.5\r\n"
                                 "/sirka1;13.88;43.67;15.76;37.51;34.61;44.6;14.68\r\n"
                                 "/AnchorPoint;2\r\n");
    EXPECT_EQ(form.Text4.Text(), controls::kDefaultConfiguration);
}

TEST_F(TakeOver, ATableMadeOfItIsTheOneThatWasRead) {
    Open(DrawingWithTable(3, 7));
    form.Command10.Click();
    const std::string read = form.Text3.Text();
    form.Command38.Click();
    form.Text2.SetText(form.Text2.Text() + "/volny;1\r\n");
    testing_support::AddRow(form.ListView1, {"a", "0001", "1"});
    form.Command11.Click();
    ASSERT_EQ(Status(), "Tabulka vytvorena Ok ");
    ASSERT_TRUE(session.SelectTable("Sheet.1", "Main View", 2));
    form.Command10.Click();
    EXPECT_EQ(form.Text3.Text(), read);
}

TEST_F(TakeOver, ATableOfManyColumnsGivesNoLineThatTableCreationRefuses) {
    Open(DrawingWithTable(2, 12));
    form.Command10.Click();
    form.Command38.Click();
    EXPECT_EQ(Status(), "Prevzato radku: 8, vynechano: /sirka (12 hodnot), /hlavicka (12 hodnot)");
    EXPECT_NE(form.Text2.Text().find("/sirka;13.88;"), std::string::npos);
    testing_support::AddRow(form.ListView1, {"a", "0001", "1"});
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
}

TEST_F(TakeOver, WithNothingReadThereIsNothingToTake) {
    const auto replacements = form.Text2.Replacements();
    for (const char* text : {"", "\r\n", "/text;x\r\n", "note"}) {
        form.Text3.SetText(text);
        form.Command38.Click();
        EXPECT_EQ(Status(), "Neni co prevzit");
        EXPECT_EQ(form.StatusBar1.State(), ActionState::kNone);
    }
    EXPECT_EQ(form.Text2.Replacements(), replacements);
}

TEST_F(TakeOver, TheSameAgainLeavesTheFieldWithWhatItCanTakeBack) {
    form.Text3.SetText("/vyska1;9\r\n");
    form.Command38.Click();
    const auto replacements = form.Text2.Replacements();
    form.Command38.Click();
    EXPECT_EQ(form.Text2.Replacements(), replacements);
    EXPECT_EQ(Status(), "Prevzato radku: 1");
}

struct NamedLayouts : testing::Test, testing_support::HeadlessForm {
    NamedLayouts() {
        files.stored[PathOf("A4")] = kA4;
        files.stored[PathOf("A3")] = kA3;
    }

    // As the view does it.
    void Type(const std::string& text) { form.Combo5.UserChange(text); }
    void Choose(const std::string& text) {
        form.Combo5.DropDown();
        Type(text);
        form.Combo5.Choose();
    }
    [[nodiscard]] const Texts& Offered() const { return form.Combo5.Items(); }
};

TEST_F(NamedLayouts, AreOfferedFromTheStart) {
    app::Form_Load(form);
    EXPECT_EQ(Offered(), (Texts{"A3", "A4"}));
    EXPECT_EQ(form.Combo5.Text(), "");
    EXPECT_TRUE(form.Combo5.Enabled());
    EXPECT_EQ(form.Text2.Text(), controls::kDefaultConfiguration);
}

TEST_F(NamedLayouts, FilesPutThereByHandAreOfferedWhenTheListOpens) {
    app::Form_Load(form);
    files.stored[PathOf("Žlutý")] = kA3;
    files.stored[PathOf("a3 zákazník")] = kA3;
    files.stored[kFolder + "\\A3.bak"] = kA3;
    files.stored[kFolder + "\\old\\B.txt"] = kA3;
    files.stored["C:\\Dorvak\\list.txt"] = "";
    files.stored.erase(PathOf("A4"));
    form.Combo5.DropDown();
    EXPECT_EQ(Offered(), (Texts{"A3", "a3 zákazník", "Žlutý"}));
    const auto revision = form.Combo5.Revision();
    form.Combo5.DropDown();
    EXPECT_EQ(form.Combo5.Revision(), revision) << "nothing new";
}

TEST_F(NamedLayouts, AChosenOneGoesIntoTheConfiguration) {
    Choose("A3");
    EXPECT_EQ(form.Text2.Text(), kA3);
    EXPECT_EQ(Status(), "Nacteni ok " + PathOf("A3"));
    EXPECT_EQ(form.StatusBar1.State(), ActionState::kDone);
    // By keyboard, with the list closed.
    Type("A4");
    form.Combo5.KeyPress('x');
    EXPECT_EQ(form.Text2.Text(), kA3);
    form.Combo5.KeyPress(controls::kEnterKey);
    EXPECT_EQ(form.Text2.Text(), kA4);
    EXPECT_EQ(files.stored[PathOf("A3")], kA3);
}

TEST_F(NamedLayouts, ChosenTwiceLeavesTheFieldWithWhatItCanTakeBack) {
    Choose("A3");
    const auto replacements = form.Text2.Replacements();
    Choose("A3");
    EXPECT_EQ(form.Text2.Replacements(), replacements);
}

TEST_F(NamedLayouts, AFileWithLineFeedsAloneIsReadLineByLine) {
    files.stored[PathOf("unix")] = "/vyska1;4\n/vyska2;5";
    files.stored[PathOf("mixed")] = "/hlavicka;a\nb\r\n";
    Choose("unix");
    EXPECT_EQ(form.Text2.Text(), "/vyska1;4\r\n/vyska2;5\r\n");
    Choose("mixed");
    EXPECT_EQ(form.Text2.Text(), "/hlavicka;a\nb\r\n");
}

TEST_F(NamedLayouts, AFileThatCannotBeReadLeavesTheConfiguration) {
    files.failing.emplace(PathOf("A3"), automation::RunTimeError(70, "Permission denied"));
    Choose("A3");
    EXPECT_EQ(Status(), "Nacteni Error 70 Permission denied");
    EXPECT_EQ(form.Text2.Text(), controls::kDefaultConfiguration);
    EXPECT_TRUE(message_boxes.shown.empty());
    Type("missing");
    form.Combo5.KeyPress(controls::kEnterKey);
    EXPECT_EQ(Status(), "Nacteni Error 53 File not found");
}

TEST_F(NamedLayouts, IsSavedUnderTheNameInThePicker) {
    form.Text2.SetText("/vyska1;7\r\n");
    Type(" Zákazník 1 ");
    form.Command40.Click();
    const std::string path = PathOf("Zákazník 1");
    EXPECT_EQ(Status(), "Ulozeni ok " + path);
    EXPECT_EQ(files.stored[path], "/vyska1;7\r\n");
    EXPECT_EQ(files.folders, (Texts{kFolder}));
    EXPECT_EQ(form.Combo5.Text(), "Zákazník 1");
    EXPECT_EQ(Offered(), (Texts{"A3", "A4", "Zákazník 1"}));
    EXPECT_TRUE(message_boxes.questions.empty());
    EXPECT_EQ(form.Text2.Text(), "/vyska1;7\r\n");
}

TEST_F(NamedLayouts, IsReadBackToTheLetter) {
    for (const char* text : {"", "/vyska1;7", "/hlavicka;a\nb", "\r\n\r\n", "a\r\nb\nc\r\n"}) {
        form.Text2.SetText(text);
        Type("x");
        form.layout = "x";
        form.Command40.Click();
        form.Text2.SetText("other");
        Choose("x");
        const std::string read = form.Text2.Text();
        EXPECT_TRUE(read == text || read == std::string(text) + "\r\n") << read;
    }
}

TEST_F(NamedLayouts, AnotherOneIsOverwrittenOnlyWhenThePersonWantsIt) {
    Type("A4");
    message_boxes.answer = false;
    form.Command40.Click();
    EXPECT_EQ(message_boxes.questions, (Texts{"Přepsat rozložení „A4“?"}));
    EXPECT_EQ(Status(), "Ulozeni preruseno");
    EXPECT_EQ(form.StatusBar1.State(), ActionState::kNone);
    EXPECT_EQ(files.stored[PathOf("A4")], kA4);
    message_boxes.answer = true;
    form.Command40.Click();
    EXPECT_EQ(files.stored[PathOf("A4")], controls::kDefaultConfiguration);
    EXPECT_EQ(files.stored[kFolder + "\\A4.bak"], kA4) << "the one before stays";
}

TEST_F(NamedLayouts, TheOneThatIsWorkedOnIsSavedWithoutAQuestion) {
    Choose("A4");
    form.Text2.SetText("/vyska1;8\r\n");
    form.Command40.Click();
    Type("new");
    form.Command40.Click();
    form.Command40.Click();
    EXPECT_TRUE(message_boxes.questions.empty());
    EXPECT_EQ(files.stored[PathOf("A4")], "/vyska1;8\r\n");
    Type("A4");
    form.Command40.Click();
    EXPECT_EQ(message_boxes.questions.size(), 1U) << "it is another one by now";
}

TEST_F(NamedLayouts, NamesBecomeNamesOfFiles) {
    for (const auto& [typed, name] : {std::pair{"A4/A3: \"x\"", "A4_A3_ _x_"},
                                      {"..\\list", ".._list"},
                                      {"a\tb", "a_b"},
                                      {"con", "_con"},
                                      {"LPT1.a", "_LPT1.a"},
                                      {"COM", "COM"},
                                      {"COM10", "COM10"},
                                      {"nul ", "_nul"},
                                      {"console", "console"}}) {
        Type(typed);
        form.Command40.Click();
        EXPECT_EQ(Status(), "Ulozeni ok " + PathOf(name)) << typed;
        EXPECT_EQ(form.Combo5.Text(), name);
    }
}

TEST_F(NamedLayouts, WithoutANameThereIsNothingToDo) {
    const auto stored = files.stored;
    for (const char* typed : {"", "   "}) {
        Type(typed);
        for (const controls::Event<>* event :
             {&form.Command40.Click, &form.Command41.Click, &form.Combo5.Choose}) {
            form.StatusBar1.SetPanelText(1, "");
            (*event)();
            EXPECT_EQ(Status(), "Zadejte nazev rozlozeni");
            EXPECT_EQ(form.StatusBar1.State(), ActionState::kNone);
        }
    }
    EXPECT_EQ(files.stored, stored);
    EXPECT_TRUE(message_boxes.questions.empty());
}

TEST_F(NamedLayouts, WhatCannotBeSavedStays) {
    files.failing.emplace(PathOf("A4"), automation::RunTimeError(61, "Disk full"));
    Choose("A3");
    form.Text2.SetText("typed");
    Type("A4");
    form.Command40.Click();
    EXPECT_EQ(Status(), "Ulozeni Error 61 Disk full");
    EXPECT_EQ(form.StatusBar1.State(), ActionState::kFailed);
    EXPECT_EQ(form.Text2.Text(), "typed");
    EXPECT_EQ(form.Combo5.Text(), "A4");
    EXPECT_EQ(files.stored[PathOf("A4")], kA4);
    files.failing.clear();
    form.Command40.Click();
    EXPECT_EQ(files.stored[PathOf("A4")], "typed\r\n");
    EXPECT_EQ(message_boxes.questions.size(), 2U) << "it was not saved the first time";
}

TEST_F(NamedLayouts, IsDeletedWhenThePersonWantsIt) {
    Choose("A4");
    message_boxes.answer = false;
    form.Command41.Click();
    EXPECT_EQ(message_boxes.questions, (Texts{"Smazat rozložení „A4“?"}));
    EXPECT_EQ(Status(), "Smazani preruseno");
    EXPECT_TRUE(files.stored.contains(PathOf("A4")));
    message_boxes.answer = true;
    form.Command41.Click();
    EXPECT_EQ(Status(), "Smazani ok " + PathOf("A4"));
    EXPECT_FALSE(files.stored.contains(PathOf("A4")));
    EXPECT_EQ(Offered(), (Texts{"A3"}));
    EXPECT_EQ(form.Combo5.Text(), "");
    EXPECT_EQ(form.Text2.Text(), kA4) << "the configuration stays";
    Type("A4");
    form.Command41.Click();
    EXPECT_EQ(Status(), "Rozlozeni neexistuje");
    EXPECT_EQ(message_boxes.questions.size(), 2U);
}

TEST_F(NamedLayouts, WhatCannotBeDeletedIsSaid) {
    files.failing.emplace(PathOf("A4"), automation::RunTimeError(70, "Permission denied"));
    Type("A4");
    form.Command41.Click();
    EXPECT_EQ(Status(), "Smazani Error 75 Path/File access error");
    EXPECT_EQ(form.Combo5.Text(), "A4");
    EXPECT_TRUE(files.stored.contains(PathOf("A4")));
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(NamedLayouts, ThoseOfAnotherDataFolderAreThereToo) {
    files.other_folder = R"(D:\Program)";
    const std::string other = R"(D:\Program\Nastaveni\)";
    files.stored[other + "A2.txt"] = "/vyska1;2\r\n";
    files.stored[other + "a4.txt"] = "/vyska1;9\r\n";
    files.written[other + "A2.txt"] = 1;
    app::Form_Load(form);
    EXPECT_EQ(Offered(), (Texts{"A2", "A3", "A4"}));
    Choose("A2");
    EXPECT_EQ(form.Text2.Text(), "/vyska1;2\r\n");
    form.Command41.Click();
    EXPECT_EQ(Status(), "Smazani ok " + PathOf("A2"));
    EXPECT_EQ(Offered(), (Texts{"A3", "A4"}));
}

TEST_F(NamedLayouts, TheRegistryKeepsTheConfigurationAsBefore) {
    app::Form_Load(form);
    Choose("A3");
    app::RequestClose(form);
    EXPECT_EQ(settings.stored["Lumsek\\Pantrel\\export"], kA3);
    HeadlessForm next;
    next.files.stored = files.stored;
    next.settings.stored = settings.stored;
    app::Form_Load(next.form);
    EXPECT_EQ(next.form.Text2.Text(), kA3);
    EXPECT_EQ(next.form.Combo5.Text(), "");
}

} // namespace
