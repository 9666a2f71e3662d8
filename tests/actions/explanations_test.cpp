// What the balloon and the icon at the status line say: why an action ended, and that it is done
// where it has no closing message.

#include <gtest/gtest.h>

#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"

namespace {

using automation::RunTimeError;
using controls::ActionState;
using testing_support::AddRow;
using testing_support::DrawingWithTable;

RunTimeError At(const char* member, long number, const char* description) {
    RunTimeError error(number, description);
    error.member = member;
    return error;
}

TEST(Explained, NamesWhatHappenedTheMemberAndWhatThePersonCanDo) {
    EXPECT_EQ(shell::Explained(At("DrawingTables.Add", -2147467259, "The method Add failed")),
              "CATIA odmítla provést krok při volání DrawingTables.Add: The method Add failed. "
              "Zkontrolujte aktivní výkres, pohled a výběr a zkuste to znovu.");
    for (const long busy : {-2147418111L, -2147417846L}) {
        EXPECT_EQ(shell::Explained(At("Document.Name", busy, "Call was rejected by callee.")),
                  "CATIA je zaneprázdněná při volání Document.Name. Dokončete v ní rozpracovaný "
                  "příkaz, zavřete otevřená okna a zkuste to znovu.");
    }
    for (const long gone : {-2147023174L, -2147417851L, -2147023170L}) {
        EXPECT_EQ(shell::Explained(At("DrawingText.SetFontSize", gone, "gone")),
                  "Spojení s CATIÍ se přerušilo při volání DrawingText.SetFontSize. "
                  "Zkontrolujte, zda CATIA běží, a zkuste to znovu.");
    }
    EXPECT_EQ(shell::Explained(At("DrawingTable.SetCellString", -2147417848, "gone")),
              "S čím program pracoval, to už v CATII není při volání DrawingTable.SetCellString: "
              "dokument je zavřený, tabulka smazaná, nebo CATIA skončila. Zkuste to znovu.");
    EXPECT_EQ(shell::Explained(At("DrawingTable.AnchorPoint", 6, "Overflow")),
              "Číslo je příliš velké při volání DrawingTable.AnchorPoint. Zkontrolujte čísla v "
              "nastavení tabulky.");
    EXPECT_EQ(shell::Explained(At("DrawingTable.SetColumnSize", 13, "Type mismatch")),
              "Hodnota není číslo, jaké CATIA čeká při volání DrawingTable.SetColumnSize. "
              "Zkontrolujte čísla v nastavení tabulky, desetinný oddělovač je tečka.");
    EXPECT_TRUE(shell::Explained(At("DrawingTable.SetColumnSize", -2147352571, "Type mismatch"))
                    .starts_with("Hodnota není číslo"))
        << "the same, as a server reports it";
    EXPECT_EQ(shell::Explained(At("Document.Sheets", 438, "")),
              "Objekt CATIE neumí, co je potřeba při volání Document.Sheets. Zkontrolujte, zda je "
              "aktivní správný dokument.");
    EXPECT_EQ(shell::Explained(automation::ObjectRequired()),
              "CATIA nevrátila žádný objekt. Zkontrolujte, zda je výkres otevřený a pohled "
              "aktivní.");
    EXPECT_EQ(shell::Explained(automation::CannotCreateObject()),
              "Okno CATIE je vidět, ale program se s ní nespojil. Spusťte CATII pod stejným "
              "uživatelem jako tento program, ne jako správce.");
    EXPECT_EQ(shell::Explained(automation::Overflow()), "Chyba 6: Overflow.");
}

TEST(Explained, AStopSaysHowFarTheActionCame) {
    EXPECT_EQ(shell::Interrupted("", std::nullopt), "Přerušeno.");
    EXPECT_EQ(shell::Interrupted("Nacitam Sheets ", controls::Progress{12, 600}),
              "Přerušeno, hotovo 12 z 600. Poslední krok: „Nacitam Sheets“.");
    EXPECT_EQ(shell::Interrupted("Product: A Part: B", std::nullopt),
              "Přerušeno. Poslední krok: „Product: A Part: B“.");
}

TEST(Explained, CountsInProperCzech) {
    EXPECT_EQ(shell::SheetsNumbered(1), "Hotovo: očíslován 1 list.");
    EXPECT_EQ(shell::SheetsNumbered(3), "Hotovo: očíslovány 3 listy.");
    EXPECT_EQ(shell::SheetsNumbered(0), "Hotovo: očíslováno 0 listů.");
    EXPECT_EQ(shell::SheetsNamed(1), "Hotovo: pojmenován 1 list.");
    EXPECT_EQ(shell::SheetsNamed(2), "Hotovo: pojmenovány 2 listy.");
    EXPECT_EQ(shell::SheetsNamed(12), "Hotovo: pojmenováno 12 listů.");
    EXPECT_EQ(shell::TextsPlaced(1), "Hotovo: do výkresu je vložen 1 text.");
    EXPECT_EQ(shell::TextsPlaced(2), "Hotovo: do výkresu jsou vloženy 2 texty.");
    EXPECT_EQ(shell::TextsPlaced(6), "Hotovo: do výkresu je vloženo 6 textů.");
}

TEST(Explained, EndsWithOnePointWhereCatiasOwnTextHasOne) {
    EXPECT_EQ(shell::Explained(At("Sheets.Item", -2147352565, "Invalid index.")),
              "Chyba -2147352565 při volání Sheets.Item: Invalid index.");
    EXPECT_EQ(shell::Explained(At("Sheets.Item", -2147467259, "The name is taken.")),
              "CATIA odmítla provést krok při volání Sheets.Item: The name is taken. "
              "Zkontrolujte aktivní výkres, pohled a výběr a zkuste to znovu.");
    EXPECT_EQ(shell::FileTrouble({32755, "Cancel was selected."}),
              "Chyba 32755 Cancel was selected.");
}

struct Explanations : testing_support::ActionTest {
    Explanations() {
        AddRow(form.ListView1, {"Hřídel", "0001", "2", "2", "S235", "D25", ""});
        form.ListView1.SetCurrentRow(1);
    }
    [[nodiscard]] const std::string& Explanation() const {
        return form.StatusBar1.ShownExplanation().text;
    }
    [[nodiscard]] ActionState State() const { return form.StatusBar1.State(); }
};

TEST_F(Explanations, AConfigurationErrorNamesItsLine) {
    Open(testing_support::kEmptyDrawing);
    form.Text2.SetText("/vyska1;4\r\n/vyska2;5\r\n\r\n/sirka;1;2;3;4;5;6;7;8;9;10;11\r\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie") << "the status line keeps its last text";
    EXPECT_EQ(Explanation(), "Řádek 4: 11 hodnot, nejvýš je 10.");
    EXPECT_TRUE(form.StatusBar1.ShownExplanation().is_error);
    EXPECT_EQ(State(), ActionState::kFailed);
    form.Text2.SetText("/pozice;100\r\n");
    form.Command7.Click();
    EXPECT_EQ(Explanation(), "Řádek 1: za /pozice chybí hodnota Y.");
}

TEST_F(Explanations, AColumnThatTheListLacksIsNamed) {
    for (const char* slot : {"7", "-1", "abc"}) {
        Open(testing_support::kEmptyDrawing);
        form.Text2.SetText(form.Text4.Text() + "/razeni;" + slot + "\r\n");
        form.Command11.Click();
        EXPECT_EQ(Explanation(), "„" + std::string(slot) +
                                     "“ v řádku /razeni není číslo sloupce seznamu, platí 0 až 6.");
    }
}

TEST_F(Explanations, ACallThatFailsIsNamedAndTheNextActionClearsIt) {
    Open(testing_support::kEmptyDrawing);
    session.Arm({.call = 9});
    form.Command11.Click();
    EXPECT_EQ(session.Log().back().substr(0, 17), "DrawingTables.Add");
    EXPECT_EQ(Status(), "Catie vytvari tabulku");
    EXPECT_EQ(Explanation(), "CATIA odmítla provést krok při volání DrawingTables.Add: The method "
                             "Add failed. Zkontrolujte aktivní výkres, pohled a výběr a zkuste to "
                             "znovu.");
    EXPECT_EQ(State(), ActionState::kFailed);
    form.Command11.Click();
    EXPECT_EQ(Explanation(), "");
    EXPECT_EQ(State(), ActionState::kDone);
}

TEST_F(Explanations, TheIconSaysRunningWhileAnActionRuns) {
    Open(testing_support::kEmptyDrawing);
    ActionState meanwhile = ActionState::kNone;
    events.at_yield[2] = [&] { meanwhile = State(); };
    form.Command11.Click();
    EXPECT_EQ(meanwhile, ActionState::kRunning);
    EXPECT_EQ(State(), ActionState::kDone);
}

TEST_F(Explanations, ThereIsNoneForAMissingSessionAnUnmetPreconditionOrADrag) {
    form.Command11.Click();
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie");
    EXPECT_EQ(Explanation(), "");
    EXPECT_EQ(State(), ActionState::kNone);

    Open("ProductDocument a.CATProduct\nproduct A\n");
    for (auto* button : {&form.Command11, &form.Command6, &form.Command9, &form.Command21}) {
        button->Click();
        EXPECT_EQ(Status(), "Neni aktivni CATDrawing");
        EXPECT_EQ(Explanation(), "");
        EXPECT_EQ(State(), ActionState::kNone);
    }
    Open(testing_support::kEmptyDrawing);
    form.Command16.Click();
    EXPECT_EQ(Status(), "Nejsou vybrany zadny objekty");
    EXPECT_EQ(State(), ActionState::kNone);
    testing_support::Drag(form.ListView1, 1, 1);
    EXPECT_EQ(Explanation(), "");
}

TEST_F(Explanations, ActionsWithoutAClosingMessageSayThatTheyAreDone) {
    Open("DrawingDocument D.CATDrawing\nsheet A active\n  view V\nsheet B\n");
    form.Command6.Click();
    EXPECT_EQ(Status(), "Cekam na Catii") << "the status line has no text of its own for this";
    EXPECT_EQ(Explanation(), "Hotovo: do výkresu je vloženo 6 textů.");
    EXPECT_FALSE(form.StatusBar1.ShownExplanation().is_error);
    EXPECT_EQ(State(), ActionState::kDone);
    form.Command8.Click();
    EXPECT_EQ(Explanation(), "Hotovo: do výkresu je vložen 1 text.");
    message_boxes.text_answer = "5-6";
    form.Command24.Click();
    EXPECT_EQ(Explanation(), "Hotovo: očíslovány 2 listy.");
    message_boxes.three_way_answer = platform::Answer::kYes;
    form.Command25.Click();
    EXPECT_EQ(Explanation(), "Hotovo: pojmenovány 2 listy.");
    form.Command29.Click();
    EXPECT_EQ(Explanation(), "Hotovo: prohozeny 2 listy.");
    form.Command31.Click();
    EXPECT_EQ(Explanation(), "Hotovo: vytvořen 1 list.");
}

TEST_F(Explanations, AnActionThatAnnouncesNothingIsDoneAlsoAfterOneThatFailed) {
    for (auto* button : {&form.Command25, &form.Command31}) {
        Open("DrawingDocument D.CATDrawing\nsheet A active\n  view V\nsheet B\n");
        session.Arm({.call = 1});
        button->Click();
        ASSERT_EQ(State(), ActionState::kFailed);
        const std::string status = Status();
        message_boxes.three_way_answer = platform::Answer::kYes;
        button->Click();
        EXPECT_EQ(State(), ActionState::kDone);
        EXPECT_EQ(Status(), status) << "it has no text of its own";
        EXPECT_TRUE(Explanation().starts_with("Hotovo: "));
    }
}

TEST_F(Explanations, ACancelledRangeIsNothingDone) {
    Open("DrawingDocument D.CATDrawing\nsheet A active\n");
    form.Command24.Click();
    EXPECT_EQ(message_boxes.asked.size(), 3U);
    EXPECT_EQ(State(), ActionState::kNone);
}

TEST_F(Explanations, ATableWithoutSevenColumnsSaysWhyTheListIsEmpty) {
    Open(DrawingWithTable(3, 6));
    form.Command9.Click();
    EXPECT_EQ(form.ListView1.Count(), 0U);
    EXPECT_EQ(Explanation(), "Vybraná tabulka má 6 sloupců, načíst jde jen tabulka se 7 sloupci. "
                             "Seznam je proto prázdný.");
}

TEST_F(Explanations, WithoutACurrentRowTheSingleRowExportsSayWhatToDo) {
    form.ListView1.SetCurrentRow(std::nullopt);
    for (auto* button : {&form.Command7, &form.Command16, &form.Command6}) {
        Open(DrawingWithTable(2, 6));
        button->Click();
        EXPECT_EQ(Explanation(),
                  "V seznamu není vybraný řádek. Klikněte na řádek, který se má zapsat.");
    }
}

TEST_F(Explanations, AnErrorOnTheStatusLineSetsTheIconAlone) {
    Open("DrawingDocument D.CATDrawing\nsheet A active\n");
    session.Arm({.call = 1});
    form.Command21.Click();
    EXPECT_TRUE(Status().starts_with("-2147467259 "));
    EXPECT_EQ(Explanation(), "");
    EXPECT_EQ(State(), ActionState::kFailed);
}

TEST_F(Explanations, AnErrorThatNoActionTrapsSetsTheIconToo) {
    form.Text5.KeyPress(controls::kEnterKey); // there is no row to give the name to
    ASSERT_EQ(message_boxes.shown.size(), 1U);
    EXPECT_EQ(State(), ActionState::kFailed);
}

TEST_F(Explanations, ACleanTreeClearsItsOwnOldMessageAndNoOther) {
    form.Text1.SetText("\r\n0\tA\r\n1\tb\tnowhere");
    form.Command5.Click();
    EXPECT_EQ(Status(), "Preskoceno radku: 1 prvni je radek 3");
    form.Text1.SetText("\r\n0\tA\r\n1\tb\tA");
    form.Command5.Click();
    EXPECT_EQ(Status(), "");
    form.Command26.Click();
    form.Command5.Click();
    EXPECT_EQ(Status(), "Spusteni Catie = False");
}

} // namespace
