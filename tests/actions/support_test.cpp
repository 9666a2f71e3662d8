// What helps whoever helps the person from afar: the log, and the status line's popup menu.

#include <gtest/gtest.h>

#include "shell/explanations.hpp"
#include "shell/support.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"
#include "text/text.hpp"
#include "version.h"

namespace {

using automation::RunTimeError;
using testing_support::AddRow;

using Lines = std::vector<std::string>;

constexpr const char* kDiagnosis = R"(C:\Local\Dorvak\diagnostika.txt)";

struct Log : testing_support::ActionTest {
    Log() { AddRow(form.ListView1, {"Hřídel tajná", "0001", "2", "2", "S235", "D25", ""}); }

    // Whether the person's words are anywhere in the log.
    [[nodiscard]] bool Tells(std::string_view words) const {
        return std::ranges::any_of(log.lines, [&](const std::string& line) {
            return line.find(words) != std::string::npos;
        });
    }
};

TEST_F(Log, HoldsTheBeginningAndTheEndOfAnActionWithItsCallsAndItsTime) {
    Open(testing_support::kEmptyDrawing);
    form.Command8.Click();
    const std::string calls = std::to_string(session.Log().size());
    ASSERT_NE(calls, "0");
    EXPECT_EQ(log.lines,
              (Lines{"2026-03-01 14:32:05.123 [1] text: začátek",
                     "2026-03-01 14:32:05.123 [1] text: volání " + calls + ", 0.250 s, konec"}));
}

TEST_F(Log, HoldsTheErrorThatAnActionEndedWithInSilence) {
    Open(testing_support::kEmptyDrawing);
    session.Arm({.call = 9});
    form.Command11.Click();
    ASSERT_EQ(log.lines.size(), 2U);
    EXPECT_EQ(log.lines[1],
              "2026-03-01 14:32:05.123 [1] Vytvorení: volání 9, 0.250 s, chyba -2147467259 při "
              "volání DrawingTables.Add: The method Add failed.");
    form.Command11.Click(); // is not the one that failed
    EXPECT_TRUE(log.lines.back().ends_with(", konec")) << log.lines.back();
}

TEST_F(Log, HoldsErrorsThatTheStatusLineAndABoxShow) {
    Open(testing_support::kEmptyDrawing);
    session.Arm({.call = 1});
    form.Command21.Click();
    EXPECT_TRUE(log.lines.back().ends_with(
        "volání 1, 0.250 s, chyba -2147467259 při volání Application.ActiveDocument: The method "
        "ActiveDocument failed."))
        << log.lines.back();
    form.Text5.KeyPress(controls::kEnterKey); // there is no row to give the name to
    ASSERT_EQ(message_boxes.shown.size(), 1U);
    EXPECT_TRUE(log.lines.back().ends_with("Přejmenování: volání 0, 0.250 s, chyba 91: Object "
                                           "variable or With block variable not set."))
        << log.lines.back();
}

TEST_F(Log, TellsRunsInsideOneAnotherApart) {
    Open(testing_support::kEmptyDrawing);
    events.at_yield[1] = [this] { form.Command19.Click(); };
    form.Command11.Click();
    ASSERT_EQ(log.lines.size(), 4U);
    EXPECT_TRUE(log.lines[0].ends_with("[1] Vytvorení: začátek"));
    EXPECT_TRUE(log.lines[1].ends_with("[2] Reset: začátek"));
    EXPECT_NE(log.lines[2].find("[2] Reset: volání 0, "), std::string::npos);
    EXPECT_NE(log.lines[3].find("[1] Vytvorení: volání "), std::string::npos);
}

TEST_F(Log, AStopIsThereAndIsNoErrorToCopy) {
    Open(testing_support::kEmptyDrawing);
    events.at_yield[2] = [this] { app::RequestStop(form); };
    form.Command11.Click();
    EXPECT_NE(log.lines.back().find("chyba 18"), std::string::npos) << log.lines.back();
    EXPECT_FALSE(form.m_Kopirovat_chybu.Enabled());
}

TEST_F(Log, HoldsStartAndEndOfTheProgram) {
    app::Form_Load(form);
    EXPECT_TRUE(log.lines.front().ends_with("[1] Spuštění " DORVAK_VERSION_TEXT ": začátek"));
    EXPECT_NE(log.lines.back().find("[1] Spuštění " DORVAK_VERSION_TEXT ": volání 0, "),
              std::string::npos);
    EXPECT_FALSE(form.last_error) << "files that are not there yet are no error";
    app::RequestClose(form);
    EXPECT_NE(log.lines.back().find("Ukončení: volání 0, "), std::string::npos);
}

TEST_F(Log, HoldsNothingThatThePersonNamedOrTyped) {
    form.Text2.SetText(form.Text4.Text() + "/razeni;tajne\r\n");
    Open("DrawingDocument Tajny.CATDrawing\nsheet \"Tajny list\" active\n  view V\n");
    form.Command11.Click();
    EXPECT_TRUE(log.lines.back().ends_with(
        "chyba 13: Type mismatch. „…“ v řádku /razeni není číslo sloupce seznamu, platí 0 "
        "až 6."))
        << log.lines.back();
    form.Command21.Click();
    form.Text2.SetText(form.Text4.Text());
    for (std::size_t call = 1; call < 12; ++call) {
        session.Arm({.call = call});
        form.Command11.Click();
        form.Command22.Click();
        form.Command23.Click();
    }
    for (const char* words : {"ajn", "Tajn", "tajn", "S235"}) {
        EXPECT_FALSE(Tells(words)) << words;
    }
}

TEST(ErrorForLog, LeavesOutWhatACallWasGivenAndWhateverLooksLikeAName) {
    RunTimeError error(-2147467259, "The name Skříň 2 is taken by Skříň 2a");
    error.member = "DrawingSheet.Name";
    error.given = {"Skříň 2", "Skříň 2a", ""};
    EXPECT_EQ(shell::ErrorForLog(error),
              "chyba -2147467259 při volání DrawingSheet.Name: The name … is taken by ….");
    EXPECT_EQ(shell::ErrorForLog({5, "No \"A b\" and „c d“ in C:\\Data\\x.txt or y.CATPart!"}),
              "chyba 5: No \"…\" and „…“ in … or ….");
    EXPECT_EQ(shell::ErrorForLog({429, "ActiveX component can't create object"}),
              "chyba 429: ActiveX component can't create object.");
    EXPECT_EQ(shell::ErrorForLog({5, "an open \" quote"}), "chyba 5: an open \" quote.");
}

TEST(ErrorForLog, LeavesShortTextsOutAsWordsAndIsOneLine) {
    RunTimeError error(-2147467259, "The method Add failed for e\r\nat 1, not at 12");
    error.given = {"e", "1", "A"};
    EXPECT_EQ(shell::ErrorForLog(error),
              "chyba -2147467259: The method Add failed for … at …, not at 12.");
    RunTimeError broken(-2147467259, "Kolo\r\nozubené is refused");
    broken.given = {"Kolo\nozubené"};
    EXPECT_EQ(shell::ErrorForLog(broken), "chyba -2147467259: … is refused.");
}

TEST_F(Log, LeavesOutTheNameOfTheDocumentThatWasWorkedOn) {
    Open("DrawingDocument \"Tajny vykres 2.CATDrawing\"\nsheet A active\n  view V active\n");
    const std::string words = "Tajny vykres 2.CATDrawing is locked, Tajny vykres 2";
    session.before_call = [&](const std::string& call) {
        if (call.starts_with("DrawingTables.Add(")) {
            throw RunTimeError(-2147467259, words);
        }
    };
    form.Command11.Click();
    EXPECT_TRUE(log.lines.back().ends_with("DrawingTables.Add: … is locked, …."))
        << log.lines.back();
    EXPECT_EQ(form.last_error->error.description, words) << "what the person copies";
}

TEST_F(Log, LeavesOutTheNamesThatWereAnsweredBefore) {
    Open("ProductDocument P.CATProduct\nproduct Sestava\n child \"Hřídel tajná\"\n child B\n");
    int asked = 0;
    session.before_call = [&](const std::string& call) {
        if (call.starts_with("Product.PartNumber") && ++asked == 3) {
            throw RunTimeError(-2147467259, "Hřídel tajná in Sestava has no number");
        }
    };
    form.Command3.Click();
    EXPECT_TRUE(log.lines.back().ends_with("Product.PartNumber: … in … has no number."))
        << log.lines.back();
    EXPECT_EQ(Status(), "-2147467259 Hřídel tajná in Sestava has no number");
}

// The status line's popup menu.
struct Support : Log {
    // The lines of the file that "Diagnostika" has written.
    Lines Diagnosis() {
        form.m_Diagnostika.Click();
        Lines lines;
        for (const std::string_view line : text::Lines(files.stored[kDiagnosis])) {
            lines.emplace_back(line);
        }
        return lines;
    }
    // The value that stands there under a name.
    std::string Value(const std::string& name) {
        for (const std::string& line : Diagnosis()) {
            if (line.starts_with(name + ": ")) {
                return line.substr(name.size() + 2);
            }
        }
        return "(none)";
    }
};

TEST_F(Support, TheMenuOpensAtTheMouseAndByKeyboard) {
    form.StatusBar1.RightClick();
    form.StatusBar1.MenuKey();
    EXPECT_EQ(popups, (std::vector<std::pair<std::string, controls::PopupPlace>>{
                          {"Stav", controls::PopupPlace::kPointer},
                          {"Stav", controls::PopupPlace::kCurrentRow}}));
}

TEST_F(Support, TheLastErrorIsCopiedWithItsNumberDescriptionMemberAndTime) {
    app::Form_Load(form);
    EXPECT_FALSE(form.m_Kopirovat_chybu.Enabled());
    AddRow(form.ListView1, {"Hřídel", "0001", "2", "2", "S235", "D25", ""});
    Open(testing_support::kEmptyDrawing);
    session.Arm({.call = 9});
    form.Command11.Click();
    EXPECT_TRUE(form.m_Kopirovat_chybu.Enabled());
    form.Command8.Click(); // ends well
    form.m_Kopirovat_chybu.Click();
    EXPECT_EQ(copied, Lines{"Dorvak " DORVAK_VERSION_TEXT "\r\nChyba: -2147467259\r\nPopis: The "
                            "method Add failed\r\nVolání: DrawingTables.Add\r\nPříkaz: "
                            "Vytvorení\r\nČas: 2026-03-01 14:32:05.123\r\n"});
    EXPECT_EQ(Status(), "Chyba zkopirovana");
}

TEST_F(Support, AClipboardThatAnotherProgramHoldsIsSaid) {
    Open(testing_support::kEmptyDrawing);
    session.Arm({.call = 9});
    form.Command11.Click();
    form.copy_text = [](const std::string&) { return false; };
    form.m_Kopirovat_chybu.Click();
    EXPECT_EQ(Status(), "Schranka je obsazena");
}

TEST_F(Support, TheLogsFolderIsShown) {
    form.m_Slozka_protokolu.Click();
    EXPECT_EQ(log.times_shown, 1);
    log.broken = true;
    form.m_Slozka_protokolu.Click();
    EXPECT_EQ(Status(), "53 File not found");
}

TEST_F(Support, OProgramuSaysTheVersionAndWhereTheFilesStand) {
    form.m_O_programu.Click();
    ASSERT_EQ(message_boxes.informed.size(), 2U);
    EXPECT_NE(message_boxes.informed[0].find(DORVAK_VERSION_TEXT), std::string::npos);
    EXPECT_NE(message_boxes.informed[0].find("C:\\Local\\Dorvak"), std::string::npos);
    EXPECT_EQ(message_boxes.informed[1], "O programu");
}

TEST_F(Support, TheDiagnosisAsksASessionWhatItIsAndTimesTenCalls) {
    Open("DrawingDocument \"Tajny 1.2.CATDrawing\"\nsheet A active\n");
    const std::string version = DORVAK_VERSION_TEXT;
    const std::string ten_times = "250.00; 250.00; 250.00; 250.00; 250.00; "
                                  "250.00; 250.00; 250.00; 250.00; 250.00 ms";
    const Lines expected{"Dorvak " + version + ": diagnostika 2026-03-01 14:32:05.123",
                         "Složka dat: C:\\Dorvak",
                         "Windows: 11",
                         "Jazyk: cs",
                         "Okna CATIE: 1",
                         "  C:\\CATIA\\code\\bin\\CNEXT.exe, stejná práva",
                         "Třída CATIA.Application: zapsaná, C:\\CATIA\\code\\bin\\CNEXT.exe",
                         "Objekt CATIE: dostupný",
                         "Jméno: CNEXT",
                         "Verze: V5 R28 SP4",
                         "Aktivní dokument: CATDrawing",
                         "Deset volání: " + ten_times};
    EXPECT_EQ(Diagnosis(), expected);
    EXPECT_EQ(Status(), "Diagnostika ulozena C:\\Local\\Dorvak\\diagnostika.txt");
    EXPECT_EQ(files.folders, Lines{"C:\\Local\\Dorvak"});
}

TEST_F(Support, TheDiagnosisWithoutASessionSaysThatThereIsNone) {
    desktop.titles = {"Explorer"};
    programs.registration = {};
    EXPECT_EQ(Value("Okna CATIE"), "0");
    EXPECT_EQ(Value("Třída CATIA.Application"), "není zapsaná");
    EXPECT_EQ(Value("Objekt CATIE"), "chyba 429: ActiveX component can't create object.");
    EXPECT_EQ(Value("Jméno"), "(none)");
    EXPECT_EQ(Value("Poslední chyba"), "(none)") << "the diagnosis itself is no failed action";
}

TEST_F(Support, TheDiagnosisTellsAMissingObjectApartFromAMissingWindow) {
    desktop.titles = {"CATIA V5 - [Tajny.CATPart]", "CATIA V5"};
    programs.rights = {{1, platform::Rights::kMore}, {2, platform::Rights::kUnknown}};
    const Lines lines = Diagnosis();
    EXPECT_EQ(lines.at(4), "Okna CATIE: 2");
    EXPECT_EQ(lines.at(5), "  C:\\CATIA\\code\\bin\\CNEXT.exe, vyšší práva");
    EXPECT_EQ(lines.at(6), "  C:\\CATIA\\code\\bin\\CNEXT.exe, práva se nedají zjistit");
    EXPECT_TRUE(Value("Objekt CATIE")
                    .starts_with("chyba 429: ActiveX component can't create "
                                 "object. CATIA běží jako správce"));
}

TEST_F(Support, EachQuestionOfTheDiagnosisFailsForItself) {
    Connect(session); // no document is open
    EXPECT_EQ(Value("Aktivní dokument"),
              "chyba -2147467259 při volání Application.ActiveDocument: The method ActiveDocument "
              "failed.");
    EXPECT_TRUE(Value("Deset volání").ends_with(" ms"));
    session.Arm({.call = 1});
    EXPECT_EQ(Value("Jméno"), "chyba -2147467259 při volání Application.Name: The method Name "
                              "failed.");
}

TEST_F(Support, TheDiagnosisHoldsTheLastError) {
    Open(testing_support::kEmptyDrawing);
    session.Arm({.call = 9});
    form.Command11.Click();
    EXPECT_EQ(Value("Poslední chyba"), "2026-03-01 14:32:05.123 Vytvorení: chyba -2147467259 při "
                                       "volání DrawingTables.Add: The method Add failed.");
}

TEST_F(Support, WhereThePersonStopsTheWaitForCatiaTheRestOfTheDiagnosisIsThere) {
    Open(testing_support::kEmptyDrawing);
    form.before_call = [this] { app::RequestStop(form); };
    form.m_Diagnostika.Click();
    EXPECT_EQ(Status(), std::string("Diagnostika ulozena ") + kDiagnosis);
    EXPECT_TRUE(session.Log().empty());
    form.before_call = nullptr;
    const std::string& text = files.stored[kDiagnosis];
    EXPECT_NE(text.find("Windows: 11\r\n"), std::string::npos);
    EXPECT_NE(text.find("Jméno: chyba 18 "), std::string::npos) << text;
    EXPECT_NE(text.find("Deset volání: chyba 18 "), std::string::npos) << text;
    EXPECT_EQ(Value("Jméno"), "CNEXT") << "the next one asks again";
}

TEST_F(Support, TheDiagnosisTellsNothingOfANameWithoutADocumentsEnding) {
    struct Named {
        const char* name;
        const char* kind;
    };
    for (const auto& [name, kind] :
         {Named{"Akce 1.Tajny", "jiný druh"}, Named{"Tajny", "jiný druh"},
          Named{"a.CATIE tajna", "jiný druh"}, Named{"a.b.catpart", "CATPart"},
          Named{"x.CATProduct", "CATProduct"}}) {
        Open("DrawingDocument \"" + std::string(name) + "\"\nsheet A active\n");
        EXPECT_EQ(Value("Aktivní dokument"), kind) << name;
    }
}

TEST_F(Support, ADiagnosisThatCannotBeWrittenSaysWhy) {
    files.failing.emplace(kDiagnosis, RunTimeError(61, "Disk full"));
    form.m_Diagnostika.Click();
    EXPECT_EQ(Status(), "Diagnostika Error 61 Disk full");
}

} // namespace
