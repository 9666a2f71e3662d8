// "Bez překreslování": tables that are made and filled while CATIA does not compute their display,
// and that show it at every end.

#include <gtest/gtest.h>

#include "simulator/model.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"
#include "tests/support/failure_sweep.hpp"

namespace {

using controls::ActionState;
using testing_support::AddRow;
using testing_support::DrawingWithTable;
using testing_support::HeadlessForm;
using testing_support::kEmptyDrawing;
using Texts = std::vector<std::string>;

const char* const kRedrawingSetting = "Lumsek\\Tabulky\\bez_prekreslovani";
constexpr const char* kSwitchOff = "DrawingTable.ComputeMode = 0";
constexpr const char* kSwitchOn = "DrawingTable.ComputeMode = 1";
constexpr const char* kNotRedrawn =
    "Tabulka je zapsaná, ale CATIA ji nepřekreslila. Zapište ji znovu.";

void AddParts(controls::ListView& list) {
    AddRow(list, {"Hřídel", "0001", "2", "2", "S235", "D25x120", "kalit"});
    AddRow(list, {"Kolo", "0002", "1", "", "C45", "", ""});
    list.SetCurrentRow(2);
}

std::vector<std::shared_ptr<simulator::Table>> Tables(const simulator::Session& session) {
    std::vector<std::shared_ptr<simulator::Table>> tables;
    for (const auto& sheet : session.ActiveDocument()->sheets) {
        for (const auto& view : sheet->views) {
            tables.insert(tables.end(), view->tables.begin(), view->tables.end());
        }
    }
    return tables;
}

bool AllDisplaysComputed(const simulator::Session& session) {
    return std::ranges::all_of(
        Tables(session), [](const auto& table) { return simulator::ComputesDisplay(*table); });
}

struct WithoutRedrawing : testing_support::ActionTest {
    controls::ListView& list = form.ListView1;

    WithoutRedrawing() {
        AddParts(list);
        form.Check3.SetValue(1);
    }

    // The calls of `click`, pressed with the box as it is in the drawing that is then opened.
    Texts CallsOf(const controls::Event<>& click, const std::string& drawing, bool ticked) {
        form.Check3.SetValue(ticked ? 1 : 0);
        Open(drawing);
        session.ClearLog();
        click();
        return session.Log();
    }

    // `calls` with the two calls of the switching, behind the first call that begins with `before`
    // and behind the last one that begins with `last`.
    static Texts Switching(Texts calls, std::string_view before, std::string_view last) {
        const auto begins = [](std::string_view with) {
            return [with](const std::string& call) { return call.starts_with(with); };
        };
        const auto written = std::find_if(calls.rbegin(), calls.rend(), begins(last));
        calls.insert(written.base(), kSwitchOn);
        const auto there = std::ranges::find_if(calls, begins(before));
        calls.insert(there + 1, kSwitchOff);
        return calls;
    }

    // Refuses every switching of that kind from now on.
    void Refuse(const std::string& switching) {
        session.before_call = [this, switching](const std::string& call) {
            if (call.starts_with(switching)) {
                session.Arm({.call = 1});
            }
        };
    }
    [[nodiscard]] const controls::Explanation& Explained() const {
        return form.StatusBar1.ShownExplanation();
    }
};

struct RedrawingSetting : testing::Test, HeadlessForm {};

TEST_F(WithoutRedrawing, ATableIsSwitchedOffWhenItIsThereAndOnWhenItsCellsAreWritten) {
    for (const controls::Event<>* click :
         {&form.Command11.Click, &form.Command7.Click, &form.m_poslat_jako_tabulku.Click}) {
        const Texts as_always = CallsOf(*click, kEmptyDrawing, false);
        EXPECT_EQ(std::ranges::count_if(as_always,
                                        [](const std::string& call) {
                                            return call.find("ComputeMode") != std::string::npos;
                                        }),
                  0);
        const std::string drawn = session.DrawingAsText();
        EXPECT_EQ(CallsOf(*click, kEmptyDrawing, true),
                  Switching(as_always, "DrawingTables.Add", "DrawingTable.SetCellString"));
        EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
        EXPECT_EQ(session.DrawingAsText(), drawn);
        EXPECT_EQ(session.DisplayAsText(), drawn);
    }
}

TEST_F(WithoutRedrawing, ATableThatIsFilledIsSwitchedOffAroundIt) {
    for (const auto& [click, rows, columns] : {std::tuple{&form.Command16.Click, 2, 6},
                                               {&form.m_vlozit_do_tabulky.Click, 2, 6},
                                               {&form.Command30.Click, 5, 7}}) {
        const std::string drawing = DrawingWithTable(rows, columns);
        const Texts as_always = CallsOf(*click, drawing, false);
        const std::string drawn = session.DrawingAsText();
        EXPECT_EQ(
            CallsOf(*click, drawing, true),
            Switching(as_always,
                      columns == 6 ? "DrawingTable.NumberOfRows" : "DrawingTable.NumberOfColumns",
                      "DrawingTable.SetCellString"));
        EXPECT_EQ(Status(), "Vlozeni dat Ok");
        EXPECT_EQ(session.DrawingAsText(), drawn);
        EXPECT_EQ(session.DisplayAsText(), drawn);
    }
}

TEST_F(WithoutRedrawing, ANewTableShowsEmptyUntilItIsWritten) {
    Open(kEmptyDrawing);
    int texts_shown = 0;
    events.at_every_yield = [&] {
        const std::string display = session.DisplayAsText();
        const bool any = display.find("Kolo") != std::string::npos ||
                         display.find("Pozice") != std::string::npos;
        texts_shown += any ? 1 : 0;
    };
    std::string at_the_end_of_filling;
    session.before_call = [&](const std::string& call) {
        if (call == kSwitchOn) {
            at_the_end_of_filling = session.DisplayAsText();
        }
    };
    form.Command11.Click();
    EXPECT_EQ(events.yields, 4);
    EXPECT_EQ(texts_shown, 0);
    EXPECT_NE(at_the_end_of_filling.find("columns 20 20 20 20 20 20 20"), std::string::npos);
    EXPECT_EQ(testing_support::TableRows(at_the_end_of_filling),
              Texts(8, R"("" "" "" "" "" "" "")"));
    EXPECT_NE(session.DisplayAsText().find("Kolo"), std::string::npos);
}

TEST_F(WithoutRedrawing, MessagesAndYieldsAreTheSame) {
    Open(kEmptyDrawing);
    form.Check3.SetValue(0);
    form.Command11.Click();
    const Texts announced = messages;
    const int yields = events.yields;
    messages.clear();
    form.Check3.SetValue(1);
    form.Command11.Click();
    EXPECT_EQ(messages, announced);
    EXPECT_EQ(events.yields, 2 * yields);
    EXPECT_FALSE(Busy());
}

TEST_F(WithoutRedrawing, WhatIsRefusedIsNotSwitched) {
    Open(DrawingWithTable(3, 5));
    for (controls::Button* button : {&form.Command16, &form.Command30}) {
        session.ClearLog();
        button->Click();
        EXPECT_EQ(Status(), "spatna velikost tabulky");
        EXPECT_FALSE(Called(kSwitchOff) || Called(kSwitchOn));
    }
    Open(DrawingWithTable(2, 6));
    list.SetCurrentRow(std::nullopt);
    session.ClearLog();
    form.Command16.Click();
    EXPECT_FALSE(Called(kSwitchOff) || Called(kSwitchOn));
}

TEST_F(WithoutRedrawing, ABoxThatIsClickedMeanwhileIsForTheNextTable) {
    Open(kEmptyDrawing);
    events.at_yield[1] = [&] { form.Check3.SetValue(0); };
    form.Command11.Click();
    EXPECT_TRUE(Called(kSwitchOff));
    EXPECT_TRUE(AllDisplaysComputed(session));
    session.ClearLog();
    events.yields = 0;
    events.at_yield[1] = [&] { form.Check3.SetValue(1); };
    form.Command11.Click();
    EXPECT_FALSE(Called(kSwitchOff) || Called(kSwitchOn));
}

TEST_F(WithoutRedrawing, WhereTheTableHasNoSuchModeTheRunGoesOnAsAlways) {
    for (const auto& [click, drawing, end] :
         {std::tuple{&form.Command11.Click, std::string(kEmptyDrawing), "Tabulka vytvorena Ok "},
          {&form.Command7.Click, std::string(kEmptyDrawing), "Tabulka vytvorena Ok "},
          {&form.Command16.Click, DrawingWithTable(2, 6), "Vlozeni dat Ok"},
          {&form.Command30.Click, DrawingWithTable(5, 7), "Vlozeni dat Ok"}}) {
        session.before_call = nullptr;
        CallsOf(*click, drawing, false);
        const std::string drawn = session.DrawingAsText();
        Refuse("DrawingTable.ComputeMode");
        CallsOf(*click, drawing, true);
        EXPECT_EQ(Status(), end);
        EXPECT_EQ(form.StatusBar1.State(), ActionState::kDone);
        EXPECT_EQ(Explained().text, "");
        EXPECT_FALSE(Busy());
        EXPECT_EQ(session.DrawingAsText(), drawn);
        EXPECT_TRUE(AllDisplaysComputed(session));
    }
}

TEST_F(WithoutRedrawing, ADisplayThatStaysOffIsExplained) {
    for (const auto& [click, drawing, end] :
         {std::tuple{&form.Command11.Click, std::string(kEmptyDrawing), "Tabulka vytvorena Ok "},
          {&form.Command30.Click, DrawingWithTable(5, 7), "Vlozeni dat Ok"}}) {
        session.before_call = nullptr;
        CallsOf(*click, drawing, false);
        const std::string drawn = session.DrawingAsText();
        Refuse(kSwitchOn);
        CallsOf(*click, drawing, true);
        EXPECT_EQ(Status(), end);
        EXPECT_EQ(form.StatusBar1.State(), ActionState::kFailed);
        EXPECT_EQ(Explained().text, kNotRedrawn);
        EXPECT_TRUE(Explained().is_error);
        EXPECT_EQ(session.DrawingAsText(), drawn);
        EXPECT_FALSE(AllDisplaysComputed(session));
    }
}

TEST_F(WithoutRedrawing, WritingTheTableAgainShowsWhatStayedOff) {
    Open(DrawingWithTable(5, 7));
    Refuse(kSwitchOn);
    form.Command30.Click();
    ASSERT_FALSE(AllDisplaysComputed(session));
    session.before_call = nullptr;
    form.Command30.Click();
    EXPECT_EQ(form.StatusBar1.State(), ActionState::kDone);
    EXPECT_EQ(Explained().text, "");
    EXPECT_EQ(session.DisplayAsText(), session.DrawingAsText());
}

TEST_F(WithoutRedrawing, AFailureOfTheSwitchingHidesNoOtherError) {
    Open(kEmptyDrawing);
    form.Text2.SetText(form.Text2.Text() + "/razeni;1;abc\r\n");
    form.Check3.SetValue(0);
    form.Command11.Click();
    const std::string why = Explained().text;
    ASSERT_NE(why, "");
    for (const char* refused : {"", kSwitchOff, kSwitchOn, "DrawingTable.ComputeMode"}) {
        session.before_call = nullptr;
        if (*refused != '\0') {
            Refuse(refused);
        }
        CallsOf(form.Command11.Click, kEmptyDrawing, true);
        EXPECT_EQ(Status(), "Catie doplnuje radku 8/8");
        EXPECT_EQ(form.StatusBar1.State(), ActionState::kFailed);
        EXPECT_EQ(Explained().text, why);
        EXPECT_EQ(session.Log().back(), kSwitchOn);
        EXPECT_TRUE(Busy());
    }
}

TEST_F(WithoutRedrawing, AnErrorBehindADisplayThatStaysOffIsTheOneExplained) {
    Open(kEmptyDrawing);
    session.before_call = [this](const std::string& call) {
        if (call == kSwitchOn || call.starts_with("VisPropertySet")) {
            session.Arm({.call = 1});
        }
    };
    form.Command11.Click();
    EXPECT_EQ(Status(), "Catie meni tlousku cary");
    EXPECT_NE(Explained().text.find("VisPropertySet.SetRealWidth"), std::string::npos);
}

TEST_F(WithoutRedrawing, AConfigurationThatFailsBeforeTheTableIsThereSwitchesNothing) {
    Open(kEmptyDrawing);
    form.Text2.SetText(form.Text2.Text() + "/vyska2;vysoka\r\n");
    form.Command11.Click();
    EXPECT_FALSE(Called(kSwitchOff) || Called(kSwitchOn));
}

TEST_F(WithoutRedrawing, ClosedAtAnyYieldTheTableIsShownAsFarAsItIs) {
    for (const auto& [button, drawing] :
         {std::pair{&controls::Form1::Command11, std::string(kEmptyDrawing)},
          {&controls::Form1::Command7, std::string(kEmptyDrawing)},
          {&controls::Form1::Command30, DrawingWithTable(5, 7)}}) {
        bool closed = true;
        for (int yield = 1; closed; ++yield) {
            SCOPED_TRACE(yield);
            HeadlessForm headless;
            simulator::Session catia;
            catia.LoadDocument("document", drawing);
            headless.Connect(catia);
            AddParts(headless.form.ListView1);
            headless.form.Check3.SetValue(1);
            headless.events.at_yield[yield] = [&] { app::RequestClose(headless.form); };
            (headless.form.*button).Click();
            closed = headless.form.unloaded;
            EXPECT_EQ(headless.events.yields, closed ? yield : yield - 1);
            EXPECT_TRUE(headless.message_boxes.shown.empty());
            EXPECT_EQ(catia.DisplayAsText(), catia.DrawingAsText());
            EXPECT_EQ(std::ranges::count(catia.Log(), kSwitchOff),
                      std::ranges::count(catia.Log(), kSwitchOn));
        }
    }
}

TEST_F(WithoutRedrawing, WindowsEndingTheSessionMeanwhileSwitchesOnToo) {
    Open(kEmptyDrawing);
    events.at_yield[3] = [&] { app::EndSession(form); };
    form.Command11.Click();
    EXPECT_TRUE(form.unloaded);
    EXPECT_EQ(session.DisplayAsText(), session.DrawingAsText());
}

TEST_F(WithoutRedrawing, StoppedAgainAndAgainTheTableIsShownAsFarAsItIs) {
    for (const auto& [button, drawing] :
         {std::pair{&controls::Form1::Command11, std::string(kEmptyDrawing)},
          {&controls::Form1::Command30, DrawingWithTable(5, 7)}}) {
        for (const std::size_t call : {10U, 11U, 14U, 30U, 42U}) {
            SCOPED_TRACE(call);
            Open(drawing);
            session.ClearLog();
            form.before_call = [&] {
                if (session.Log().size() + 1 >= call) {
                    app::RequestStop(form);
                }
            };
            (form.*button).Click();
            EXPECT_EQ(form.StatusBar1.State(), ActionState::kFailed);
            EXPECT_EQ(session.DisplayAsText(), session.DrawingAsText());
            EXPECT_TRUE(Called(kSwitchOn) || !Called(kSwitchOff));
        }
    }
}

TEST_F(WithoutRedrawing, PressedAgainAtAnyYieldEachTableIsSwitchedByItself) {
    Open(kEmptyDrawing);
    form.Command11.Click();
    const auto alone = testing_support::Tables(session.DrawingAsText());
    const int yields = events.yields;
    for (int yield = 1; yield <= yields; ++yield) {
        for (const bool ticked : {true, false}) {
            SCOPED_TRACE(testing::Message() << yield << (ticked ? " ticked" : ""));
            Open(kEmptyDrawing);
            session.ClearLog();
            form.Check3.SetValue(1);
            std::size_t switched_off = 0;
            events.yields = 0;
            events.at_yield = {{yield, [&] {
                                    form.Check3.SetValue(ticked ? 1 : 0);
                                    form.Command11.Click();
                                    for (const auto& table : Tables(session)) {
                                        switched_off += simulator::ComputesDisplay(*table) ? 0 : 1;
                                    }
                                }}};
            form.Command11.Click();
            EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
            EXPECT_EQ(switched_off, yield == 1 ? 0U : 1U) << "the outer table goes on without";
            EXPECT_EQ(testing_support::Tables(session.DrawingAsText()),
                      (std::vector<Texts>{alone[0], alone[0]}));
            EXPECT_EQ(session.DisplayAsText(), session.DrawingAsText());
            EXPECT_EQ(std::ranges::count(session.Log(), kSwitchOff), ticked ? 2 : 1);
            EXPECT_EQ(std::ranges::count(session.Log(), kSwitchOn), ticked ? 2 : 1);
        }
    }
}

TEST_F(WithoutRedrawing, ARunThatFailsInsideAnotherLeavesThatOneSwitchedOff) {
    Open(kEmptyDrawing);
    bool outer_still_off = false;
    events.at_yield[3] = [&] {
        session.Arm({.call = 40});
        form.Command11.Click();
        EXPECT_EQ(form.StatusBar1.State(), ActionState::kFailed);
        const auto tables = Tables(session);
        ASSERT_EQ(tables.size(), 2U);
        outer_still_off = !simulator::ComputesDisplay(*tables[0]);
        EXPECT_TRUE(simulator::ComputesDisplay(*tables[1]));
    };
    form.Command11.Click();
    EXPECT_TRUE(outer_still_off);
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(session.DisplayAsText(), session.DrawingAsText());
}

TEST_F(WithoutRedrawing, ATableFilledWhileItIsMadeIsShownAtTheEnd) {
    Open(kEmptyDrawing);
    events.at_yield[2] = [&] {
        ASSERT_TRUE(session.SelectTable("Sheet.1", "Main View", 1));
        form.Command30.Click();
        EXPECT_EQ(Status(), "Vlozeni dat Ok");
    };
    form.Command11.Click();
    EXPECT_EQ(form.StatusBar1.State(), ActionState::kFailed);
    EXPECT_EQ(session.DisplayAsText(), session.DrawingAsText());
}

TEST_F(WithoutRedrawing, ClosingInsideANestedRunShowsBothTables) {
    Open(kEmptyDrawing);
    events.at_yield[2] = [&] { form.Command11.Click(); };
    events.at_yield[5] = [&] { app::RequestClose(form); };
    form.Command11.Click();
    EXPECT_TRUE(form.unloaded);
    EXPECT_EQ(Tables(session).size(), 2U);
    EXPECT_EQ(session.DisplayAsText(), session.DrawingAsText());
}

// One call fails, each in turn and each in every way. `switched_off` counts the call that switches
// off, `after` those behind the one that switches on, in a run in which none fails.
void SweepTicked(controls::Button controls::Form1::*button, const std::string& drawing,
                 std::size_t switched_off, std::size_t calls, std::size_t after) {
    const std::size_t switched_on = calls - after;
    const auto is_switching = [=](const simulator::Fault& fault) {
        return fault.call == switched_off || fault.call == switched_on;
    };
    testing_support::Sweep({
        .button = button,
        .document = drawing,
        .fewest_calls = calls,
        .calls_before_stop = [=](std::size_t call) -> std::optional<std::size_t> {
            if (call == switched_on && call == calls) {
                return std::nullopt;
            }
            // Switching on is one call more.
            return call >= switched_off && call <= switched_on ? call : call - 1;
        },
        .calls_made =
            [=](const simulator::Fault& fault) {
                if (fault.kind == simulator::FaultKind::kVanished) {
                    return fault.call;
                }
                if (fault.call == switched_off) {
                    return calls;
                }
                if (fault.call == switched_on) {
                    return calls + 1; // tried once more at the end
                }
                return fault.call > switched_off && fault.call < switched_on ? fault.call + 1
                                                                             : fault.call;
            },
        .prepare =
            [](HeadlessForm& headless) {
                AddParts(headless.form.ListView1);
                headless.form.Check3.SetValue(1);
            },
        .after_failure =
            [=](const HeadlessForm& complete, HeadlessForm& failed, const simulator::Fault& fault) {
                const auto& explained = failed.form.StatusBar1.ShownExplanation();
                const bool gone = fault.kind == simulator::FaultKind::kVanished;
                EXPECT_EQ(AllDisplaysComputed(*failed.servers.session),
                          !gone || fault.call <= switched_off || fault.call > switched_on);
                if (is_switching(fault) && !gone) {
                    EXPECT_EQ(failed.messages, complete.messages);
                    EXPECT_EQ(failed.form.StatusBar1.State(), ActionState::kDone);
                    EXPECT_EQ(explained.text, "");
                } else if (fault.call < calls || !gone) {
                    testing_support::ExpectSilentEnd(complete, failed);
                    EXPECT_TRUE(explained.is_error || fault.call == calls);
                    EXPECT_EQ(explained.text.find("ComputeMode"), std::string::npos);
                }
            },
    });
}

TEST_F(WithoutRedrawing, IsSwitchedOnAgainWhicheverCallOfACreationFails) {
    // 8 calls reach the view's tables; the table, the switching, a row, 7 columns, 8 rows of 7
    // cells with a call each for the cell and its font, 3 rows of 7 texts, the switching, 5 for the
    // thickness.
    SweepTicked(&controls::Form1::Command11, kEmptyDrawing, 10, 9 + 1 + 8 + 8 * 14 + 21 + 1 + 5, 5);
}

TEST_F(WithoutRedrawing, IsSwitchedOnAgainWhicheverCallOfASmallCreationFails) {
    SweepTicked(&controls::Form1::Command7, kEmptyDrawing, 10, 9 + 1 + 8 + 2 * 14 + 14 + 1 + 5, 5);
}

TEST_F(WithoutRedrawing, IsSwitchedOnAgainWhicheverCallOfAFillingFails) {
    SweepTicked(&controls::Form1::Command30, DrawingWithTable(5, 7), 14, 13 + 1 + 28 + 1, 0);
    SweepTicked(&controls::Form1::Command16, DrawingWithTable(2, 6), 14, 13 + 1 + 6 + 1, 0);
}

TEST_F(RedrawingSetting, IsOffAtFirst) {
    app::Form_Load(form);
    EXPECT_EQ(form.Check3.Value(), 0);
    EXPECT_FALSE(settings.stored.contains(kRedrawingSetting));
}

TEST_F(RedrawingSetting, IsStoredAtEveryClick) {
    app::Form_Load(form);
    form.Check3.SetValue(1);
    EXPECT_EQ(settings.stored[kRedrawingSetting], "1");
    form.Check3.SetValue(0);
    EXPECT_EQ(settings.stored[kRedrawingSetting], "0");
}

TEST_F(RedrawingSetting, IsThereAtTheNextStart) {
    settings.stored[kRedrawingSetting] = "1";
    app::Form_Load(form);
    EXPECT_EQ(form.Check3.Value(), 1);
    for (const char* stored : {"0", "", "2", "ano"}) {
        HeadlessForm next;
        next.settings.stored[kRedrawingSetting] = stored;
        app::Form_Load(next.form);
        EXPECT_EQ(next.form.Check3.Value(), 0) << stored;
    }
}

TEST_F(RedrawingSetting, ThatCannotBeStoredIsShownAndHoldsForThisRun) {
    app::Form_Load(form);
    settings.broken = true;
    form.Check3.SetValue(1);
    ASSERT_EQ(message_boxes.shown.size(), 1U);
    EXPECT_EQ(message_boxes.shown[0].number, 75);
    EXPECT_EQ(form.Check3.Value(), 1);
}

} // namespace
