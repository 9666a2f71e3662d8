// "Aktualizovat tabulku": a table that stands in the drawing brought to the list's state.

#include <gtest/gtest.h>

#include <random>

#include "simulator/model.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"
#include "tests/support/failure_sweep.hpp"
#include "tests/support/sample_products.hpp"

namespace {

using controls::ActionState;
using testing_support::AddRow;
using testing_support::DrawingWithTable;
using testing_support::HeadlessForm;
using testing_support::kOpeningCalls;
using testing_support::TableRows;
using Texts = std::vector<std::string>;

constexpr const char* kHeaderQuestion =
    "Hlavička vybrané tabulky není ta z nastavení. Přesto tabulku aktualizovat?";

// Two parts under the usual header and two free rows, each row with a look of its own.
constexpr const char* kTwoParts = R"(DrawingDocument D.CATDrawing
sheet "Sheet.1" active
  view "Main View" active
    table at 30 40.5 anchor 2 weight 3 selected columns 13.88 43.67 15.76 37.51 34.61 31.53 14.68
      row 4.9 font 2.5 Arial cells Pozice nazev Kusu "Ciste rozmery" Material Poznamka List
      row 6 font 1 Courier
      row 6 font 1 Courier
      row 6.8 font 3 Times cells 2 Kolo 1 ø80 C45 "" ""
        cell 2 font 3.5 Helvetica
      row 7 font 4 Arial cells 1 Hřídel 2 20x120 S235 "kalit\nbrousit" 2
)";
const std::string kHeaderRow =
    R"("Pozice" "nazev" "Kusu" "Ciste rozmery" "Material" "Poznamka" "List")";
const std::string kFreeRow = R"("" "" "" "" "" "" "")";
const std::string kWheelRow = R"("2" "Kolo" "1" "ø80" "C45" "" "")";
const std::string kShaftRow = R"("1" "Hřídel" "2" "20x120" "S235" "kalit\nbrousit" "2")";

void AddTwoParts(controls::ListView& list) {
    AddRow(list, {"Hřídel", "0001", "2", "2", "S235", "20x120", "kalit\nbrousit"});
    AddRow(list, {"Kolo", "0002", "1", "", "C45", "D80", ""});
}
void AddCover(controls::ListView& list) {
    AddRow(list, {"Víko", "0003", "4", "3", "", "D120", "žlutá příruba"});
}

struct UpdateTable : testing_support::ActionTest {
    controls::ListView& list = form.ListView1;

    UpdateTable() { AddTwoParts(list); }

    void Update() { form.Command37.Click(); }
    // The calls behind those that find the table and read its texts.
    [[nodiscard]] Texts CallsAfterReading(int rows) const {
        const std::size_t before =
            kOpeningCalls.size() + 4 + 2 + 7 * static_cast<std::size_t>(rows);
        return {session.Log().begin() + static_cast<std::ptrdiff_t>(before), session.Log().end()};
    }
    [[nodiscard]] std::size_t Writes() const {
        return static_cast<std::size_t>(
            std::ranges::count_if(session.Log(), [](const std::string& call) {
                return call.find("Set") != std::string::npos ||
                       call.find("Row(") != std::string::npos;
            }));
    }
    [[nodiscard]] const controls::Explanation& Explained() const {
        return form.StatusBar1.ShownExplanation();
    }
};

TEST_F(UpdateTable, ATableThatIsRightIsReadAndLeftAlone) {
    Open(kTwoParts);
    const std::string before = session.DrawingAsText();
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 0, radku: 0");
    EXPECT_EQ(form.StatusBar1.State(), ActionState::kDone);
    EXPECT_EQ(session.DrawingAsText(), before);
    EXPECT_TRUE(message_boxes.questions.empty());

    Texts expected = kOpeningCalls;
    for (const char* call :
         {"Selection.Count2", "Selection.Item2(1)", "SelectedElement.Type", "SelectedElement.Value",
          "DrawingTable.NumberOfRows", "DrawingTable.NumberOfColumns"}) {
        expected.emplace_back(call);
    }
    for (int row = 1; row <= 5; ++row) {
        for (int column = 1; column <= 7; ++column) {
            expected.push_back("DrawingTable.GetCellString(" + std::to_string(row) + ", " +
                               std::to_string(column) + ")");
        }
    }
    EXPECT_EQ(session.Log(), expected);
}

TEST_F(UpdateTable, OneChangedQuantityIsOneCell) {
    Open(kTwoParts);
    list.SetSubItem(2, controls::kQuantity, "7");
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 1, radku: 0");
    EXPECT_EQ(CallsAfterReading(5), (Texts{R"(DrawingTable.SetCellString(4, 3, "7"))"}));
    EXPECT_EQ(messages, (Texts{"Zjistuju spusteni Catie", "Cekam na Catii", "Cteni tabulky ",
                               "Cteni tabulky 2/5", "Cteni tabulky 3/5", "Cteni tabulky 4/5",
                               "Cteni tabulky 5/5", "Aktualizace tabulky 1/1",
                               "Aktualizovano bunek: 1, radku: 0"}));
}

TEST_F(UpdateTable, OneChangedQuantityOfFiveHundredPartsCostsTheReadingAndOneCell) {
    list.Clear();
    for (int part = 1; part <= 500; ++part) {
        AddRow(list, {"díl " + std::to_string(part), text::FourDigits(list.Count() + 1), "1", "",
                      "S235", "D" + std::to_string(part), ""});
    }
    Open(testing_support::kEmptyDrawing);
    session.ClearLog();
    form.Command11.Click();
    ASSERT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(session.Log().size(), 10613U);
    session.SelectTable("Sheet.1", "Main View", 1);
    list.SetSubItem(250, controls::kQuantity, "2");
    session.ClearLog();
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 1, radku: 0");
    EXPECT_EQ(session.Log().size(), 3556U);
    EXPECT_EQ(CallsAfterReading(506), (Texts{R"(DrawingTable.SetCellString(257, 3, "2"))"}));
}

TEST_F(UpdateTable, ANewPartComesUnderTheFreeRowsWithTheLookOfTheRowBelow) {
    Open(kTwoParts);
    AddCover(list);
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 6, radku: +1");
    EXPECT_EQ(DrawnRows(),
              (Texts{kHeaderRow, kFreeRow, kFreeRow,
                     R"("3" "Víko" "4" "ø120" "" "žlutá příruba" "3")", kWheelRow, kShaftRow}));
    const std::string drawing = session.DrawingAsText();
    const std::string look = "row 6.8 font 3 \"Times\" cells ";
    const std::string other_cell = "cell 2 font 3.5 \"Helvetica\"";
    const std::size_t added = drawing.find(look + "\"3\"");
    const std::size_t beside = drawing.find(look + "\"2\"");
    ASSERT_NE(added, std::string::npos) << drawing;
    ASSERT_NE(beside, std::string::npos) << drawing;
    EXPECT_LT(drawing.find(other_cell), beside);
    EXPECT_NE(drawing.find(other_cell, beside), std::string::npos);
    // Nothing else has changed.
    std::string without = drawing;
    without.erase(added, beside - added);
    simulator::Session untouched;
    untouched.LoadDocument("document", kTwoParts);
    EXPECT_EQ(without, untouched.DrawingAsText());
}

TEST_F(UpdateTable, ANewRowCostsItsLookAndItsTexts) {
    Open(kTwoParts);
    AddCover(list);
    Update();
    Texts expected{"DrawingTable.GetRowSize(4)"};
    for (int column = 1; column <= 7; ++column) {
        expected.push_back("DrawingTable.GetCellObject(4, " + std::to_string(column) + ")");
        expected.emplace_back("DrawingText.GetFontName(0, 0)");
        expected.emplace_back("DrawingText.GetFontSize(0, 0)");
    }
    expected.emplace_back("DrawingTable.AddRow(4)");
    expected.emplace_back("DrawingTable.SetRowSize(4, 6.8)");
    for (int column = 1; column <= 7; ++column) {
        expected.push_back("DrawingTable.GetCellObject(4, " + std::to_string(column) + ")");
        expected.emplace_back(column == 2 ? "DrawingText.SetFontSize(0, 0, 3.5)"
                                          : "DrawingText.SetFontSize(0, 0, 3.0)");
        expected.emplace_back(column == 2 ? R"(DrawingText.SetFontName(0, 0, "Helvetica"))"
                                          : R"(DrawingText.SetFontName(0, 0, "Times"))");
    }
    for (const char* cell : {R"(4, 1, "3")", R"(4, 2, "Víko")", R"(4, 3, "4")", R"(4, 4, "ø120")",
                             R"(4, 6, "žlutá příruba")", R"(4, 7, "3")"}) {
        expected.push_back(std::string("DrawingTable.SetCellString(") + cell + ")");
    }
    EXPECT_EQ(CallsAfterReading(5), expected);
}

TEST_F(UpdateTable, MissingPartsGoFromUnderTheFreeRows) {
    Open(kTwoParts);
    list.Remove(1);
    list.SetSubItem(1, controls::kPosition, "0001");
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 6, radku: -1");
    EXPECT_EQ(DrawnRows(),
              (Texts{kHeaderRow, kFreeRow, kFreeRow, R"("1" "Kolo" "1" "ø80" "C45" "" "")"}));
    EXPECT_EQ(session.Log().back(), "DrawingTable.RemoveRow(4)");
}

TEST_F(UpdateTable, AnEmptyListLeavesTheHeaderAndTheFreeRowsIfThatIsWanted) {
    const std::string question = "Seznam je prázdný: z tabulky zmizí všechny řádky s díly. Přesto "
                                 "tabulku aktualizovat?";
    Open(kTwoParts);
    const Texts before = DrawnRows();
    list.Clear();
    message_boxes.answer = false;
    Update();
    EXPECT_EQ(message_boxes.questions, Texts{question});
    EXPECT_EQ(Status(), "Aktualizace prerusena");
    EXPECT_EQ(DrawnRows(), before);
    EXPECT_EQ(Writes(), 0U);

    message_boxes.answer = true;
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 0, radku: -2");
    EXPECT_EQ(DrawnRows(), (Texts{kHeaderRow, kFreeRow, kFreeRow}));
    message_boxes.questions.clear();
    Update();
    EXPECT_TRUE(message_boxes.questions.empty()) << "there is nothing to lose";
    AddTwoParts(list);
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 12, radku: +2");
    EXPECT_EQ(DrawnRows(), (Texts{kHeaderRow, kFreeRow, kFreeRow,
                                  R"("2" "Kolo" "1" "D80" "C45" "" "")", kShaftRow}));
    EXPECT_NE(session.DrawingAsText().find("row 6 font 1 \"Courier\" cells \"1\""),
              std::string::npos)
        << "the free row is the one beside";
}

TEST_F(UpdateTable, WithoutFreeRowsTheLastRowStaysEmptied) {
    Open("DrawingDocument D.CATDrawing\nsheet S\n view V\n"
         "  table selected columns 1 2 3 4 5 6 7\n"
         "   row 5 cells Pozice nazev Kusu \"Ciste rozmery\" Material Poznamka List\n"
         "   row 6 font 3 Times cells 2 b 1 \"\" \"\" \"\" \"\"\n"
         "   row 7 font 4 Arial cells 1 a 1 \"\" \"\" \"\" \"\"\n");
    list.Clear();
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 3, radku: -1");
    EXPECT_EQ(DrawnRows(), (Texts{kHeaderRow, kFreeRow}));
    EXPECT_NE(session.DrawingAsText().find("row 7 font 4 \"Arial\""), std::string::npos);
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 0, radku: 0");
}

TEST_F(UpdateTable, UnderAHeaderAloneRowsComeAtTheEnd) {
    Open("DrawingDocument D.CATDrawing\nsheet S\n view V\n"
         "  table selected columns 1 2 3 4 5 6 7\n"
         "   row 5 font 2.5 Arial cells Pozice nazev Kusu \"Ciste rozmery\" Material Poznamka "
         "List\n");
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 12, radku: +2");
    EXPECT_EQ(DrawnRows(), (Texts{kHeaderRow, R"("2" "Kolo" "1" "D80" "C45" "" "")", kShaftRow}));
    EXPECT_TRUE(Called("DrawingTable.AddRow(0)"));
    EXPECT_TRUE(Called("DrawingTable.AddRow(2)"));
    EXPECT_NE(session.DrawingAsText().find("row 5 font 2.5 \"Arial\" cells \"1\""),
              std::string::npos);
}

TEST_F(UpdateTable, ATableAsItWasMadeFollowsEveryChangeOfTheList) {
    std::mt19937 choose(20260302);
    const auto below = [&choose](std::size_t end) { return choose() % end; };
    const Texts texts{"", "D25", "20xD5", "ČSN 02", "two\nlines", "7", "a;b", "ø8"};
    for (const char* order : {"", "/razeni;0;6;5;4;3;2;1\r\n", "/razeni;1;0;2;5;4;6;3\r\n"}) {
        form.Text2.SetText(form.Text4.Text() + order);
        Open(testing_support::kEmptyDrawing);
        list.Clear();
        AddTwoParts(list);
        form.Command11.Click();
        ASSERT_EQ(Status(), "Tabulka vytvorena Ok ");
        for (int round = 0; round < 30; ++round) {
            SCOPED_TRACE(testing::Message() << order << round);
            list.Clear();
            for (std::size_t rows = 1 + below(6); rows > 0; --rows) {
                Texts row{texts.at(below(texts.size())), text::FourDigits(list.Count() + 1)};
                for (int field = 2; field < 7; ++field) {
                    row.push_back(texts.at(below(texts.size())));
                }
                AddRow(list, row);
            }
            session.SelectTable("Sheet.1", "Main View", 1);
            Update();
            ASSERT_TRUE(Status().starts_with("Aktualizovano bunek: ")) << Status();
            const Texts updated = DrawnRows();

            simulator::Session fresh;
            fresh.LoadDocument("document", testing_support::kEmptyDrawing);
            Connect(fresh);
            form.Command11.Click();
            Connect(session);
            // The sign may stay where it stands.
            Texts made = TableRows(fresh.DrawingAsText());
            ASSERT_EQ(updated.size(), made.size());
            for (std::size_t row = 0; row < made.size(); ++row) {
                ASSERT_TRUE(updated[row] == made[row] ||
                            updated[row].find("ø") != std::string::npos)
                    << updated[row] << made[row];
            }
            session.ClearLog();
            Update();
            EXPECT_EQ(Status(), "Aktualizovano bunek: 0, radku: 0");
            EXPECT_EQ(Writes(), 0U);
        }
    }
}

TEST_F(UpdateTable, LineBreaksAreTheSameAsPairs) {
    Open(kTwoParts);
    session.manner.line_breaks_are_pairs = true;
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 0, radku: 0");
}

TEST_F(UpdateTable, TheSignOfTheCodePageIsTheOneThatIsLookedFor) {
    Open(kTwoParts);
    list.SetSubItem(1, controls::kSize, "D30");
    Update();
    EXPECT_EQ(DrawnRows().back(), R"("1" "Hřídel" "2" "ø30" "S235" "kalit\nbrousit" "2")");
    list.SetSubItem(2, controls::kSize, "Ø90");
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 1, radku: 0");
    EXPECT_EQ(DrawnRows()[3], R"("2" "Kolo" "1" "Ø90" "C45" "" "")");
}

TEST_F(UpdateTable, AsksWhereTheHeaderIsAnother) {
    Open(DrawingWithTable(3, 7));
    const std::string before = session.DrawingAsText();
    message_boxes.answer = false;
    message_boxes.while_asking = [&] { EXPECT_EQ(CallsAfterReading(1), Texts()); };
    Update();
    EXPECT_EQ(message_boxes.questions, (Texts{kHeaderQuestion}));
    EXPECT_EQ(Status(), "Aktualizace prerusena");
    EXPECT_EQ(form.StatusBar1.State(), ActionState::kNone);
    EXPECT_EQ(session.DrawingAsText(), before);
    EXPECT_EQ(CallsAfterReading(1), Texts());

    message_boxes.answer = true;
    message_boxes.while_asking = nullptr;
    Update();
    EXPECT_EQ(Status(), "Aktualizovano bunek: 14, radku: 0");
    EXPECT_EQ(DrawnRows()[0], R"("old" "old" "old" "old" "old" "old" "old")");
    form.Text2.SetText("/hlavicka;old;old;old;old;old;old;old;ignored\r\n/razeni;1;0;2;5;4;6;3");
    message_boxes.questions.clear();
    Update();
    EXPECT_TRUE(message_boxes.questions.empty());
    EXPECT_EQ(Status(), "Aktualizovano bunek: 0, radku: 0");
}

TEST_F(UpdateTable, EndsAsTheOtherExportsWhereThereIsNoTableForIt) {
    Open(testing_support::kEmptyDrawing);
    Update();
    EXPECT_EQ(Status(), "Nejsou vybrany zadny objekty");
    Open("DrawingDocument D.CATDrawing\nsheet s\n view v\n  text abc selected\n");
    Update();
    EXPECT_EQ(Status(), "Spatny vyber");
    for (const int columns : {1, 6, 8, 12}) {
        Open(DrawingWithTable(3, columns));
        Update();
        EXPECT_EQ(Status(), "spatna velikost tabulky") << columns;
        EXPECT_EQ(Writes(), 0U);
    }
    Open(testing_support::kSampleProduct);
    Update();
    EXPECT_EQ(Status(), "Neni aktivni CATDrawing");
    servers.session = nullptr;
    desktop.titles.clear();
    Update();
    EXPECT_EQ(Status(), "Zjistuju spusteni Catie");
}

TEST_F(UpdateTable, AConfigurationThatTableCreationRefusesEndsItBeforeAnyCall) {
    for (const char* line : {"/razeni;1;abc\r\n", "/razeni;9\r\n", "/pozice;5\r\n"}) {
        Open(kTwoParts);
        session.ClearLog();
        form.Text2.SetText(form.Text4.Text() + line);
        Update();
        EXPECT_TRUE(session.Log().empty());
        EXPECT_EQ(form.StatusBar1.State(), ActionState::kFailed);
        EXPECT_NE(Explained().text, "");
    }
}

TEST_F(UpdateTable, WithoutRedrawingOnlyWhatIsWrittenIsBracketed) {
    form.Check3.SetValue(1);
    Open(kTwoParts);
    Update();
    EXPECT_FALSE(Called("DrawingTable.ComputeMode = 0"));
    EXPECT_FALSE(Called("DrawingTable.ComputeMode = 1"));
    list.SetSubItem(2, controls::kQuantity, "7");
    session.ClearLog();
    events.at_every_yield = [&] { form.Check3.SetValue(0); };
    Update();
    EXPECT_EQ(CallsAfterReading(5),
              (Texts{"DrawingTable.ComputeMode = 0", R"(DrawingTable.SetCellString(4, 3, "7"))",
                     "DrawingTable.ComputeMode = 1"}));
    EXPECT_EQ(session.DisplayAsText(), session.DrawingAsText());
}

TEST_F(UpdateTable, ShowsHowFarItIs) {
    Open(kTwoParts);
    AddCover(list);
    list.SetSubItem(1, controls::kQuantity, "9");
    std::vector<controls::Progress> shown;
    events.at_every_yield = [&] {
        ASSERT_TRUE(form.StatusBar1.ShownProgress());
        shown.push_back(*form.StatusBar1.ShownProgress());
    };
    Update();
    EXPECT_EQ(shown,
              (std::vector<controls::Progress>{{2, 5}, {3, 5}, {4, 5}, {5, 5}, {1, 2}, {2, 2}}));
    EXPECT_FALSE(form.StatusBar1.ShownProgress());
}

TEST_F(UpdateTable, WritesTheListAsItStoodWhenItWasPressed) {
    Open(kTwoParts);
    AddCover(list);
    Update();
    const std::string undisturbed = session.DrawingAsText();
    const int yields = events.yields;
    for (int yield = 1; yield <= yields; ++yield) {
        list.Clear();
        AddTwoParts(list);
        AddCover(list);
        form.Text2.SetText(form.Text4.Text());
        Open(kTwoParts);
        events.yields = 0;
        events.at_yield = {{yield, [&] {
                                list.Clear();
                                form.Text2.SetText("");
                            }}};
        Update();
        EXPECT_EQ(Status(), "Aktualizovano bunek: 6, radku: +1");
        EXPECT_EQ(session.DrawingAsText(), undisturbed);
    }
}

TEST_F(UpdateTable, PressedAgainWhileItRunsItGoesOnAlone) {
    Open(kTwoParts);
    AddCover(list);
    Update();
    const Texts alone = session.Log();
    Open(kTwoParts);
    session.ClearLog();
    events.at_every_yield = [&] { Update(); };
    Update();
    EXPECT_EQ(session.Log(), alone);
    EXPECT_EQ(Status(), "Aktualizovano bunek: 6, radku: +1");
}

TEST_F(UpdateTable, ATableWrittenMeanwhileIsNotWrittenOn) {
    Open(kTwoParts);
    AddCover(list);
    Update();
    const int yields = events.yields;
    for (int yield = 1; yield <= yields; ++yield) {
        SCOPED_TRACE(yield);
        Open(kTwoParts);
        events.yields = 0;
        std::string written;
        events.at_yield = {{yield, [&] {
                                form.Command30.Click();
                                EXPECT_EQ(Status(), "Vlozeni dat Ok");
                                written = session.DrawingAsText();
                            }}};
        Update();
        EXPECT_EQ(form.StatusBar1.State(), ActionState::kFailed);
        EXPECT_EQ(Explained().text,
                  "Během aktualizace zapsal do tabulky jiný příkaz. Aktualizujte ji znovu.");
        EXPECT_EQ(session.DrawingAsText(), written);
    }
}

TEST_F(UpdateTable, ATableThatIsBeingWrittenIsNotUpdated) {
    Open(DrawingWithTable(5, 7));
    form.Command30.Click();
    const std::string alone = session.DrawingAsText();
    Open(DrawingWithTable(5, 7));
    events.yields = 0;
    int refused = 0;
    events.at_every_yield = [&] {
        Update();
        refused += Explained().text == "S tabulkou právě pracuje jiný příkaz. Aktualizujte ji, "
                                       "až skončí."
                       ? 1
                       : 0;
    };
    form.Command30.Click();
    EXPECT_EQ(refused, 4);
    EXPECT_EQ(session.DrawingAsText(), alone);
    EXPECT_EQ(Status(), "Vlozeni dat Ok");
}

TEST_F(UpdateTable, ATableThatIsBeingReadIntoTheListIsNotUpdated) {
    Open(kTwoParts);
    const std::string before = session.DrawingAsText();
    int refused = 0;
    events.at_every_yield = [&] { // the list is empty meanwhile
        Update();
        refused += form.StatusBar1.State() == ActionState::kFailed ? 1 : 0;
    };
    form.Command9.Click();
    EXPECT_EQ(refused, 5);
    EXPECT_EQ(session.DrawingAsText(), before);
    EXPECT_EQ(list.Count(), 2U);
    EXPECT_EQ(Status(), "Nacteni tabulky Ok");
    events.at_every_yield = nullptr;
    Update();
    EXPECT_TRUE(Status().starts_with("Aktualizovano bunek: ")) << Status();
}

TEST_F(UpdateTable, ATableThatIsBeingUpdatedIsNotRead) {
    Open(kTwoParts);
    AddCover(list);
    bool refused = false;
    events.at_yield[5] = [&] { // the row is there
        form.Command9.Click();
        refused = Explained().text.starts_with("Do tabulky právě zapisuje jiný příkaz.");
    };
    Update();
    EXPECT_TRUE(refused);
    EXPECT_EQ(list.Count(), 3U);
    EXPECT_EQ(Status(), "Aktualizovano bunek: 6, radku: +1");
}

TEST_F(UpdateTable, ATableDeletedMeanwhileEndsIt) {
    AddCover(list);
    Open(kTwoParts);
    Update();
    const std::size_t calls = session.Log().size();
    for (std::size_t call = 12; call <= calls; ++call) {
        SCOPED_TRACE(call);
        Open(kTwoParts);
        session.Arm({.call = call, .kind = simulator::FaultKind::kDeleted});
        Update();
        EXPECT_EQ(form.StatusBar1.State(), ActionState::kFailed);
        EXPECT_TRUE(Explained().text.starts_with("S čím program pracoval, to už v CATII není"))
            << Explained().text;
        EXPECT_EQ(form.tables_in_work, 0);
    }
}

TEST_F(UpdateTable, StoppedInARowThatComesItTakesThatRowAway) {
    Open(kTwoParts);
    const std::string before = session.DrawingAsText();
    AddCover(list);
    form.before_call = [&] {
        if (!session.Log().empty() && session.Log().back() == "DrawingTable.AddRow(4)") {
            app::RequestStop(form);
        }
    };
    Update();
    EXPECT_EQ(session.DrawingAsText(), before);
    EXPECT_EQ(session.Log().back(), "DrawingTable.RemoveRow(4)");
    EXPECT_TRUE(Explained().text.starts_with("Přerušeno"));
    EXPECT_FALSE(form.putting_back);
}

TEST_F(UpdateTable, ClosedAtAnyYieldItLeavesWhatItWrote) {
    AddCover(list);
    for (int yield = 1; yield <= 5; ++yield) {
        HeadlessForm headless;
        simulator::Session catia;
        catia.LoadDocument("document", kTwoParts);
        headless.Connect(catia);
        AddTwoParts(headless.form.ListView1);
        AddCover(headless.form.ListView1);
        headless.events.at_yield[yield] = [&] { app::RequestClose(headless.form); };
        headless.form.Command37.Click();
        EXPECT_TRUE(headless.form.unloaded);
        EXPECT_EQ(TableRows(catia.DrawingAsText()).size(), yield < 5 ? 5U : 6U);
    }
}

// A list that changes cells and has as many rows as the table, more or fewer.
void ChangeList(controls::ListView& list, int rows) {
    list.Clear();
    for (int row = 1; row <= rows; ++row) {
        AddRow(list, {"díl " + std::to_string(row), text::FourDigits(list.Count() + 1), "9", "",
                      row == 2 ? "S355" : "", "D" + std::to_string(row), ""});
    }
}

struct InterruptedUpdate : testing::TestWithParam<int> {};

// The same drawing: what was written stays, and the next run completes it.
TEST_P(InterruptedUpdate, IsCompletedByTheNext) {
    const int rows = GetParam();
    const auto make = [&](HeadlessForm& headless, simulator::Session& session) {
        session.LoadDocument("document", kTwoParts);
        headless.Connect(session);
        ChangeList(headless.form.ListView1, rows);
    };
    HeadlessForm complete;
    simulator::Session whole;
    make(complete, whole);
    complete.form.Command37.Click();
    ASSERT_TRUE(complete.Status().starts_with("Aktualizovano")) << complete.Status();
    const std::size_t calls = whole.Log().size();
    for (std::size_t call = 1; call <= calls; ++call) {
        for (const bool stopped : {true, false}) {
            SCOPED_TRACE(testing::Message() << call << (stopped ? " stopped" : " refused"));
            HeadlessForm headless;
            simulator::Session session;
            make(headless, session);
            std::size_t made = 0;
            headless.form.before_call = [&] {
                if (++made == call && stopped) {
                    app::RequestStop(headless.form);
                }
            };
            session.Arm({.call = stopped ? 0 : call});
            headless.form.Command37.Click();
            ASSERT_EQ(headless.form.StatusBar1.State(), ActionState::kFailed);
            EXPECT_EQ(headless.form.tables_in_work, 0);
            headless.form.before_call = nullptr;
            headless.form.Command37.Click();
            EXPECT_TRUE(headless.Status().starts_with("Aktualizovano")) << headless.Status();
            EXPECT_EQ(session.DrawingAsText(), whole.DrawingAsText());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Lists, InterruptedUpdate, testing::Values(0, 1, 2, 4));

// 11 calls reach the table, 2 its size, 35 its texts.
constexpr std::size_t kRead = 11 + 2 + 35;

TEST(UpdateTableSweep, EndsSilentlyWhicheverCallFailsAndTheListStays) {
    // The look of a row, the row, its look and six texts: it goes again where it is not finished.
    constexpr std::size_t kAdded = kRead + 22 + 1;
    constexpr std::size_t kCalls = kAdded + 22 + 6;
    const auto is_unfinished = [](std::size_t call) { return call > kAdded; };
    testing_support::Sweep({
        .button = &controls::Form1::Command37,
        .document = kTwoParts,
        .fewest_calls = kCalls,
        .calls_before_stop = [=](std::size_t call) -> std::optional<std::size_t> {
            return is_unfinished(call) ? call : call - 1;
        },
        .calls_made =
            [=](const simulator::Fault& fault) {
                const bool gone = fault.kind == simulator::FaultKind::kVanished;
                return is_unfinished(fault.call) && !gone ? fault.call + 1 : fault.call;
            },
        .prepare =
            [](HeadlessForm& headless) {
                AddTwoParts(headless.form.ListView1);
                AddCover(headless.form.ListView1);
            },
        .after_failure =
            [](const HeadlessForm& complete, HeadlessForm& failed, const simulator::Fault&) {
                testing_support::ExpectSilentEnd(complete, failed);
                EXPECT_EQ(failed.form.ListView1.Count(), 3U);
            },
    });
}

TEST(UpdateTableSweep, EndsSilentlyWhicheverCallOfAShorteningFails) {
    testing_support::Sweep({
        .button = &controls::Form1::Command37,
        .document = kTwoParts,
        .fewest_calls = kRead + 5 + 1,
        .prepare = [](HeadlessForm& headless) { ChangeList(headless.form.ListView1, 1); },
        .after_failure =
            [](const HeadlessForm& complete, HeadlessForm& failed, const simulator::Fault&) {
                testing_support::ExpectSilentEnd(complete, failed);
            },
    });
}

} // namespace
