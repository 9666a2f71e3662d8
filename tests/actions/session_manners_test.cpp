// Every action with a CATIA that answers otherwise than the simulated session does by itself, and
// with one that fails in the middle: it does the same, or ends as it is to.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/support/catia_actions.hpp"
#include "tests/support/drawing_comparison.hpp"
#include "tests/support/drawing_text.hpp"
#include "tests/support/failure_sweep.hpp"
#include "tests/support/server_client.hpp"

namespace {

using controls::ActionState;
using controls::Form1;
using simulator::FaultKind;
using simulator::Session;
using testing_support::ActionRun;
using testing_support::CatiaAction;
using testing_support::CatiaActions;
using testing_support::RowTexts;
using Texts = std::vector<std::string>;

// How the error of a refused call begins.
constexpr const char* kMethodRefused = "-2147467259 The method ";

bool Is(const CatiaAction& action, controls::Button Form1::*button) {
    return action.button == button;
}

const CatiaAction& ActionOf(controls::Button Form1::*button) {
    static const auto actions = CatiaActions();
    return *std::ranges::find_if(actions,
                                 [&](const CatiaAction& each) { return each.button == button; });
}

void ExpectState(const ActionRun& run, ActionState state) {
    EXPECT_EQ(run.headless.form.StatusBar1.State(), state) << run.headless.Status();
    EXPECT_TRUE(run.headless.message_boxes.shown.empty());
}

// The run has done its work. Two actions announce nothing, and have no closing message either.
void ExpectDone(const ActionRun& run) {
    if (Is(run.action, &Form1::Command25) || Is(run.action, &Form1::Command31)) {
        EXPECT_TRUE(run.headless.message_boxes.shown.empty());
        EXPECT_TRUE(run.headless.form.StatusBar1.ShownExplanation().text.starts_with("Hotovo: "))
            << run.headless.Status();
    } else {
        ExpectState(run, ActionState::kDone);
    }
}

// A run with a session that answers as it does by itself.
struct PlainRun : ActionRun {
    explicit PlainRun(const CatiaAction& which) : ActionRun(which) { Press(); }
};

// The run has ended by an error, as the action is to: with the error on the status line, which then
// begins so, or with the last announcement there and the reason in the explanation.
void ExpectEndedByAnError(const ActionRun& run, const ActionRun& plain,
                          const std::string& error_begins) {
    ExpectState(run, ActionState::kFailed);
    EXPECT_EQ(run.headless.Busy(), run.action.stays_busy);
    EXPECT_FALSE(run.headless.form.StatusBar1.ShownProgress());
    if (run.action.shows_error) {
        EXPECT_TRUE(run.headless.Status().starts_with(error_begins)) << run.headless.Status();
    } else {
        testing_support::ExpectSilentEnd(plain.headless, run.headless);
        EXPECT_FALSE(run.headless.form.StatusBar1.ShownExplanation().text.empty());
    }
}

// The next run, with the document open and everything as it should be, does what a first one does.
void ExpectNextRunWorks(ActionRun& run, const ActionRun& plain) {
    run.session.manner = {};
    run.headless.servers.hand_out = nullptr;
    run.Open([](Session&) {});
    run.Press();
    ExpectDone(run);
    EXPECT_EQ(run.Left(), plain.Left());
}

std::string Without(std::string whole, const std::string& part) {
    for (auto at = whole.find(part); at != std::string::npos; at = whole.find(part)) {
        whole.erase(at, part.size());
    }
    return whole;
}

struct EveryAction : testing::TestWithParam<CatiaAction> {
    const PlainRun plain{GetParam()};

    void ExpectTheSame(const std::function<void(Session&)>& change) const {
        ActionRun run(GetParam(), change);
        run.Press();
        ExpectDone(run);
        EXPECT_EQ(run.Left(), plain.Left());
        EXPECT_EQ(run.session.Log(), plain.session.Log());
    }
};

TEST_P(EveryAction, DoesItsWorkWithTheSessionAsItIs) {
    ActionRun run(GetParam());
    testing_support::CompareWithDrawing(run.headless);
    run.Press();
    ExpectDone(run);
    EXPECT_EQ(run.Left(), plain.Left());
    EXPECT_FALSE(run.headless.Busy());
}

TEST_P(EveryAction, DoesTheSameWhereTextsAreConvertedInTheUsersLanguage) {
    ActionRun run(GetParam(),
                  [](Session& session) { session.manner.converts_in_users_language = true; });
    run.headless.servers.hand_out = [](const automation::ObjectPtr& application) {
        return std::make_shared<testing_support::ServerClient>(application);
    };
    run.Press();
    ExpectDone(run);
    EXPECT_EQ(run.Left(), plain.Left());

    // The calls are those that are made otherwise, but for the lengths, each as a text and then as
    // a number.
    const Texts& calls = run.session.Log();
    std::size_t repeated = 0;
    std::size_t next = 0;
    for (const std::string& call : plain.session.Log()) {
        ASSERT_LT(next, calls.size());
        EXPECT_EQ(calls[next++], call);
        const auto quote = std::ranges::find(call, '"');
        const bool length = call.starts_with("DrawingTables.Add(") ||
                            call.starts_with("DrawingTable.SetRowSize(") ||
                            call.starts_with("DrawingTable.SetColumnSize(");
        if (length) {
            EXPECT_NE(quote, call.end()) << call;
            ASSERT_LT(next, calls.size());
            EXPECT_EQ(calls[next++], Without(call, "\""));
            ++repeated;
        }
    }
    EXPECT_EQ(next, calls.size());
    const bool creates = Is(GetParam(), &Form1::Command11) || Is(GetParam(), &Form1::Command7);
    EXPECT_EQ(repeated, creates ? 9U : 0U);
}

TEST_P(EveryAction, DoesTheSameWithLengthsThatComeThroughInches) {
    ExpectTheSame([](Session& session) { session.manner.lengths_through_inches = true; });
}

TEST_P(EveryAction, DoesTheSameWithLineBreaksThatComeAsPairs) {
    ExpectTheSame([](Session& session) { session.manner.line_breaks_are_pairs = true; });
}

TEST_P(EveryAction, DoesTheSameWhereASizeOfZeroIsAutomaticAndEmptyTextsAreRefused) {
    ExpectTheSame([](Session& session) {
        session.manner.zero_is_automatic = true;
        session.manner.refuses_empty_texts = true;
    });
}

TEST_P(EveryAction, DoesTheSameWithNamesThatNoCodePageHas) {
    const std::string names = "Ж漢😀";
    ActionRun run(GetParam(), [&](Session& session) { session.AddToNames(names); });
    run.Press();
    ExpectDone(run);
    EXPECT_NE(run.Left(), plain.Left());
    EXPECT_EQ(Without(run.Left(), names), plain.Left());
}

TEST_P(EveryAction, DoesItsWorkWithDetailSheetsThatAnswerANumber) {
    ActionRun run(GetParam(), [](Session& session) { session.detail_as_number = true; });
    run.Press();
    ExpectDone(run);
    const bool loads = Is(GetParam(), &Form1::Command21) || Is(GetParam(), &Form1::Command34);
    EXPECT_EQ(run.Left() != plain.Left(), loads);
    if (loads) {
        const controls::ListView& sheets = run.headless.form.ListView3;
        EXPECT_EQ(sheets.Row(3).tag, "A0001");
        EXPECT_FALSE(sheets.Row(3).checked);
        EXPECT_EQ(plain.headless.form.ListView3.Row(3).tag, "");
        EXPECT_TRUE(plain.headless.form.ListView3.Row(3).checked);
    }
}

TEST_P(EveryAction, DoesItsWorkWithNewSheetsBeforeTheDetails) {
    ActionRun run(GetParam(),
                  [](Session& session) { session.manner.new_sheets_before_details = true; });
    run.Press();
    ExpectDone(run);
    EXPECT_EQ(run.headless.Status(), plain.headless.Status());
    Texts expected = testing_support::SheetNames(plain.session.DrawingAsText());
    const bool adds = Is(GetParam(), &Form1::Command23) || Is(GetParam(), &Form1::Command31);
    if (adds) {
        ASSERT_EQ(expected.size(), 4U);
        std::swap(expected[2], expected[3]);
    }
    EXPECT_EQ(testing_support::SheetNames(run.session.DrawingAsText()), expected);
}

TEST_P(EveryAction, WorksInTheBackgroundViewWhereThatIsActive) {
    if (!testing_support::SheetNames(plain.session.DrawingAsText()).empty()) {
        ActionRun run(GetParam(),
                      [](Session& session) { session.ActivateView("Sheet.1", "Background View"); });
        run.Press();
        ExpectDone(run);
        EXPECT_EQ(run.headless.Status(), plain.headless.Status());
        const std::string drawing = run.session.DrawingAsText();
        const auto background = drawing.find(R"(view "Background View" at 0 0 active)");
        ASSERT_NE(background, std::string::npos);
        std::string after_it = drawing.substr(background);
        after_it.resize(std::min(after_it.find("\nsheet "), after_it.size()));
        const bool table = Is(GetParam(), &Form1::Command11) || Is(GetParam(), &Form1::Command7);
        const bool texts = Is(GetParam(), &Form1::Command6) || Is(GetParam(), &Form1::Command8);
        EXPECT_EQ(after_it.find("    table ") != std::string::npos, table);
        EXPECT_EQ(after_it.find("    text ") != std::string::npos, texts);
    }
}

TEST_P(EveryAction, TakesTheFirstOfSeveralSelectedElements) {
    if (testing_support::TableRows(plain.session.DrawingAsText()).empty()) {
        return;
    }
    using Selecting = Session::Selecting;
    ActionRun first(GetParam(), [](Session& session) {
        session.SelectTable("Sheet.1", "Main View", 1, Selecting::kBeforeItsView);
    });
    first.Press();
    ExpectDone(first);
    EXPECT_EQ(first.headless.Status(), plain.headless.Status());
    EXPECT_EQ(testing_support::TableRows(first.session.DrawingAsText()),
              testing_support::TableRows(plain.session.DrawingAsText()));

    ActionRun last(GetParam(), [](Session& session) {
        session.SelectTable("Sheet.1", "Main View", 1, Selecting::kAfterItsView);
    });
    const std::string before = last.session.DrawingAsText();
    const auto list_before = testing_support::comparison::Rows(last.headless.form.ListView1);
    last.Press();
    const bool fills = Is(GetParam(), &Form1::Command16) || Is(GetParam(), &Form1::Command30) ||
                       Is(GetParam(), &Form1::Command37) || Is(GetParam(), &Form1::Command9);
    if (fills) {
        EXPECT_EQ(last.headless.Status(), "Spatny vyber");
        EXPECT_EQ(last.session.DrawingAsText(), before);
        EXPECT_EQ(testing_support::comparison::Rows(last.headless.form.ListView1), list_before);
    } else {
        EXPECT_EQ(last.headless.Status(), plain.headless.Status());
    }
    if (Is(GetParam(), &Form1::Command10)) {
        EXPECT_EQ(last.headless.form.Text3.Text(), "/tlouska_cary =0\r\n")
            << "the kinds have no width in common";
    }
}

TEST_P(EveryAction, EndsWhereAReadOnlyDocumentRefusesAndTheNextRunWorks) {
    ActionRun run(GetParam(), [](Session& session) { session.manner.read_only = true; });
    const std::string before = run.session.DrawingAsText();
    run.Press();
    if (Is(GetParam(), &Form1::Command3) || Is(GetParam(), &Form1::Command10) ||
        Is(GetParam(), &Form1::Command9) || Is(GetParam(), &Form1::Command21)) {
        ExpectDone(run);
        EXPECT_EQ(run.Left(), plain.Left());
        return;
    }
    ExpectEndedByAnError(run, plain, kMethodRefused);
    EXPECT_EQ(run.session.DrawingAsText(), before);
    ExpectNextRunWorks(run, plain);
}

TEST_P(EveryAction, EndsWhereTheDocumentIsClosedInAnyCallAndTheNextRunWorks) {
    for (std::size_t call = 1; call <= plain.session.Log().size(); ++call) {
        SCOPED_TRACE(plain.session.Log()[call - 1]);
        ActionRun run(GetParam());
        run.session.Arm({.call = call, .kind = FaultKind::kClosed});
        run.Press();
        EXPECT_EQ(run.session.Log().size(), call) << "no call is made after it";
        const bool of_application = plain.session.Log()[call - 1].starts_with("Application.");
        ExpectEndedByAnError(run, plain,
                             of_application ? kMethodRefused : "-2147417848 The object invoked");
        ExpectNextRunWorks(run, plain);
    }
}

TEST_P(EveryAction, EndsWhereTheTableIsDeletedInAnyCallAndTheNextRunWorks) {
    std::size_t failures = 0;
    for (std::size_t call = 1; call <= plain.session.Log().size(); ++call) {
        SCOPED_TRACE(plain.session.Log()[call - 1]);
        ActionRun run(GetParam());
        run.session.Arm({.call = call, .kind = FaultKind::kDeleted});
        run.Press();
        switch (run.headless.form.StatusBar1.State()) {
        case ActionState::kDone:
        case ActionState::kNone:
            EXPECT_TRUE(run.headless.Status() == plain.headless.Status() ||
                        run.headless.Status() == "Nejsou vybrany zadny objekty")
                << run.headless.Status();
            break;
        default:
            ExpectEndedByAnError(run, plain, "-2147417848 The object invoked");
            ++failures;
        }
        ExpectNextRunWorks(run, plain);
    }
    const auto of_tables = std::ranges::count_if(plain.session.Log(), [](const std::string& call) {
        return call.starts_with("DrawingTable.");
    });
    EXPECT_GE(failures, static_cast<std::size_t>(of_tables));
}

TEST_P(EveryAction, EndsWhereAMemberIsMissingAndTheNextRunWorks) {
    std::set<std::string> members;
    for (const std::string& call : plain.session.Log()) {
        members.insert(call.substr(0, call.find_first_of("( ")));
    }
    for (const std::string& member : members) {
        SCOPED_TRACE(member);
        ActionRun run(GetParam(),
                      [&](Session& session) { session.manner.missing_members = {member}; });
        run.Press();
        ExpectEndedByAnError(run, plain, "438 Object doesn't support this property or method");
        EXPECT_TRUE(text::StartsWithIgnoringCase(run.session.Log().back(), member))
            << "no call is made after it: " << run.session.Log().back();
        ExpectNextRunWorks(run, plain);
    }
}

// An application object that is no CATIA: whatever it is asked, it gives the one answer, or raises
// 438 where there is none.
class NoCatia : public automation::Object {
  public:
    explicit NoCatia(std::optional<automation::Value> answer) : answer_(std::move(answer)) {}

  private:
    automation::Value Get(const automation::Member&) override {
        if (!answer_) {
            throw automation::MemberNotSupported();
        }
        return *answer_;
    }
    automation::Value Call(const automation::Member& member, const automation::Array&) override {
        return Get(member);
    }
    void Put(const automation::Member& member, const automation::Value&) override { Get(member); }

    std::optional<automation::Value> answer_;
};

TEST_P(EveryAction, EndsAtAnApplicationThatIsNoCatiaAndTheNextRunWorks) {
    const auto silent = std::make_shared<NoCatia>(std::nullopt);
    struct Case {
        automation::ObjectPtr application;
        const char* status;
    };
    const std::vector<Case> cases{
        {silent, "438 "},
        {std::make_shared<NoCatia>(automation::Value("D.CATDrawing")), "424 "},
        {std::make_shared<NoCatia>(automation::Value(1)), "424 "},
        {std::make_shared<NoCatia>(automation::Value()), "424 "},
        {std::make_shared<NoCatia>(automation::ObjectPtr()), "424 "},
        {std::make_shared<NoCatia>(automation::ObjectPtr(silent)), "438 "},
        {std::make_shared<NoCatia>(automation::ObjectPtr(
             std::make_shared<NoCatia>(automation::Value("D.CATDrawing or D.CATProduct")))),
         "424 "},
        {std::make_shared<NoCatia>(
             automation::ObjectPtr(std::make_shared<NoCatia>(automation::Value(1)))),
         ""}, // 13 or 424: the actions ask for different things first
    };
    int number = 0;
    for (const auto& [application, status] : cases) {
        SCOPED_TRACE(++number);
        ActionRun run(GetParam());
        const std::string before = run.session.DrawingAsText();
        run.headless.servers.hand_out = [no_catia = application](const automation::ObjectPtr&) {
            return no_catia;
        };
        run.Press();
        ExpectEndedByAnError(run, plain, status);
        EXPECT_TRUE(run.session.Log().empty());
        EXPECT_EQ(run.session.DrawingAsText(), before);
        ExpectNextRunWorks(run, plain);
    }
}

INSTANTIATE_TEST_SUITE_P(Actions, EveryAction, testing::ValuesIn(CatiaActions()),
                         [](const auto& each) { return std::string(each.param.name); });

// What concerns single actions.

TEST(SessionManners, AnEmptyTextThatIsRefusedEndsTheTextsAndNoneIsLeftOut) {
    const auto without_note = [](ActionRun& run) {
        run.headless.form.ListView1.SetSubItem(1, controls::kQuantity, "");
        run.Press();
    };
    ActionRun taken(ActionOf(&Form1::Command6));
    without_note(taken);
    ExpectDone(taken);
    ActionRun run(ActionOf(&Form1::Command6),
                  [](Session& session) { session.manner.refuses_empty_texts = true; });
    without_note(run);
    ExpectEndedByAnError(run, taken, "");
    EXPECT_EQ(run.headless.Status(), "Cekam na Catii");
    EXPECT_EQ(run.session.Log().back(), R"(DrawingTexts.Add("", 100.0, 100.0))");
    EXPECT_NE(run.session.DrawingAsText().find(R"(text "Hřídel" at 100 100)"), std::string::npos)
        << "what was placed before stays";
    ExpectNextRunWorks(run, PlainRun(ActionOf(&Form1::Command6)));
}

TEST(SessionManners, SizesOfZeroMakeATableThatFitsItsTextsAndReadsBack) {
    ActionRun run(ActionOf(&Form1::Command11),
                  [](Session& session) { session.manner.zero_is_automatic = true; });
    Form1& form = run.headless.form;
    const auto list = testing_support::comparison::Rows(form.ListView1);
    form.Text2.SetText(form.Text4.Text() + "/vyska1;0\r\n/sirka;0;43.67;0;0;0;0;0\r\n");
    run.Press();
    ExpectDone(run);
    EXPECT_EQ(std::ranges::count(run.session.Log(), R"(DrawingTable.SetRowSize(1, "0"))"), 1);
    ASSERT_TRUE(run.session.SelectTable("Sheet.1", "Main View", 2));
    form.Command9.Click();
    ExpectDone(run);
    const auto widths = testing_support::OnlyLine(form.Text3.Text(), "/sirka");
    ASSERT_EQ(widths.value_or(Texts()).size(), 7U);
    EXPECT_EQ((*widths)[1], "43.67");
    for (const std::string& width : *widths) {
        EXPECT_GT(text::LeadingNumber(width), 0) << width;
    }
    auto expected = list;
    expected[0][controls::kPosition] = "1";
    expected[1][controls::kPosition] = "2";
    EXPECT_EQ(testing_support::comparison::Rows(form.ListView1), expected);

    // A session that takes no such size ends it where it always did.
    run.Open([](Session& session) { session.manner = {}; });
    run.Press();
    EXPECT_EQ(run.headless.Status(), "Catie upravuje velikost 1 radku");
    ExpectState(run, ActionState::kFailed);
}

TEST(SessionManners, WhatWasReadWithLineBreaksMakesTheSameTable) {
    ActionRun run(ActionOf(&Form1::Command9),
                  [](Session& session) { session.manner.line_breaks_are_pairs = true; });
    run.Press();
    Form1& form = run.headless.form;
    EXPECT_EQ(form.ListView1.Row(2).text, "Kolo\nozubené");
    EXPECT_EQ(form.ListView1.SubItem(1, controls::kNote), "kalit\nbrousit");
    EXPECT_NE(form.Text3.Text().find("/hlavicka;Pozice;nazev\ndílu;Kusu;"), std::string::npos);
    const Texts rows = testing_support::TableRows(run.session.DrawingAsText());

    // The person copies the parameters over.
    form.Text2.SetText(form.Text4.Text() + form.Text3.Text() + "/volny;1\r\n");
    run.session.LoadDocument("next", "DrawingDocument N.CATDrawing\nsheet s\n view v\n");
    form.Command11.Click();
    EXPECT_EQ(run.headless.Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(testing_support::TableRows(run.session.DrawingAsText()), rows);
}

TEST(SessionManners, SheetsAddedBehindTheDetailsCannotBeOrderedUntilTheyStandBeforeThem) {
    for (const bool before : {false, true}) {
        ActionRun run(ActionOf(&Form1::Command31), [&](Session& session) {
            session.detail_as_number = true;
            session.manner.new_sheets_before_details = before;
        });
        run.Press();
        Form1& form = run.headless.form;
        form.Command21.Click();
        EXPECT_EQ(form.ListView3.Row(before ? 4 : 3).tag, "A0001");
        form.Command34.Click();
        EXPECT_EQ(run.headless.Status(),
                  before ? "Sheets nacteny: 4" : "-2147467259 The method reorder_Sheets failed");
    }
}

TEST(SessionManners, NumbersWithAFractionAreWrittenInTheUsersLanguageWhereTheServerConverts) {
    ActionRun run(ActionOf(&Form1::Command11),
                  [](Session& session) { session.manner.converts_in_users_language = true; });
    run.headless.servers.hand_out = [](const automation::ObjectPtr& application) {
        return std::make_shared<testing_support::ServerClient>(application);
    };
    run.headless.form.ListView1.SetSubItem(1, controls::kPosition, "1.5");
    run.Press();
    EXPECT_EQ(run.headless.Status(), "Tabulka vytvorena Ok ");
    EXPECT_TRUE(testing_support::TableRows(run.session.DrawingAsText())
                    .back()
                    .starts_with(R"("1,5" "Hřídel")"));
}

// Converts the lengths in texts in a language that groups thousands by points, and passes them on:
// to it "6.8" is 68.
class GroupingServer : public automation::Object {
  public:
    explicit GroupingServer(automation::ObjectPtr session) : session_(std::move(session)) {}

    static automation::ObjectPtr Of(const automation::ObjectPtr& session) {
        return std::make_shared<GroupingServer>(session);
    }

  private:
    using Value = automation::Value;

    Value Get(const automation::Member& member) override { return Call(member, {}); }
    Value Call(const automation::Member& member, const automation::Array& arguments) override {
        automation::Array sent;
        for (const Value& value : arguments) {
            sent.push_back(Sent(member, value));
        }
        const Value answer = session_->call(member, sent);
        return answer.Is<automation::ObjectPtr>() ? Value(Of(answer.AsObject())) : answer;
    }
    void Put(const automation::Member& member, const Value& value) override {
        session_->put(member, value);
    }

    static Value Sent(const automation::Member& member, const Value& value) {
        if (const auto* object = std::get_if<automation::ObjectPtr>(&value.storage())) {
            return dynamic_cast<const GroupingServer&>(**object).session_;
        }
        const bool length = member.name.ends_with("Size") || member.object_class == "DrawingTables";
        if (!length || !value.Is<std::string>()) {
            return value;
        }
        std::string text = value.AsText();
        std::erase(text, '.');
        return {text};
    }

    automation::ObjectPtr session_;
};

TEST(SessionManners, LengthsTakenForOthersWherePointsGroupThousandsAreMendedByNumbers) {
    for (controls::Button Form1::*const button : {&Form1::Command11, &Form1::Command7}) {
        const PlainRun plain(ActionOf(button));
        ActionRun run(ActionOf(button));
        run.headless.servers.hand_out = GroupingServer::Of;
        run.headless.number_format.groups_by_points = true;
        run.Press();
        ExpectDone(run);
        EXPECT_EQ(run.Left(), plain.Left());
        const Texts& calls = run.session.Log();
        EXPECT_EQ(std::ranges::count(calls, R"(DrawingTable.SetRowSize(1, "49"))"), 1)
            << "the text goes first, as it stands";
        EXPECT_EQ(std::ranges::count(calls, "DrawingTable.SetRowSize(1, 4.9)"), 1);
    }
}

TEST(SessionManners, WherePointsGroupThousandsAndTheServerHeedsTheCallsLanguageNothingIsSetAgain) {
    const PlainRun plain(ActionOf(&Form1::Command11));
    ActionRun run(ActionOf(&Form1::Command11));
    run.headless.number_format.groups_by_points = true;
    run.headless.form.Text2.SetText(run.headless.form.Text4.Text() +
                                    "/sirka;13.88;43.67;15.76;20;20;20;20\r\n");
    run.Press();
    ExpectDone(run);
    const auto starting = [&run](const char* begin) {
        return std::ranges::count_if(run.session.Log(), [begin](const std::string& call) {
            return call.starts_with(begin);
        });
    };
    EXPECT_EQ(starting("DrawingTable.SetRowSize("), 1);
    EXPECT_EQ(starting("DrawingTable.SetColumnSize("), 7);
    EXPECT_EQ(starting("DrawingTable.GetRowSize("), 2);
    EXPECT_EQ(starting("DrawingTable.GetColumnSize("), 3) << "20 is 20 in every language";
    EXPECT_EQ(plain.session.Log().size() + 5, run.session.Log().size());
}

TEST(SessionManners, AHeightThatIsNoNumberFailsAsBefore) {
    for (const bool users : {false, true}) {
        ActionRun run(ActionOf(&Form1::Command11),
                      [&](Session& session) { session.manner.converts_in_users_language = users; });
        run.headless.servers.hand_out = [](const automation::ObjectPtr& application) {
            return std::make_shared<testing_support::ServerClient>(application);
        };
        Form1& form = run.headless.form;
        form.Text2.SetText(form.Text4.Text() + "/vyska1;abc\r\n");
        run.Press();
        EXPECT_EQ(run.headless.Status(), "Catie upravuje velikost 1 radku");
        EXPECT_EQ(run.session.Log().back(), R"(DrawingTable.SetRowSize(1, "abc"))");
        EXPECT_EQ(std::ranges::count(run.session.Log(), run.session.Log().back()), 1);
        EXPECT_TRUE(form.StatusBar1.ShownExplanation().text.starts_with("Hodnota není číslo"));
    }
}

} // namespace
