// What becomes of an action when a call to CATIA fails: each of its calls in turn, and each in
// every way.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/drawing_comparison.hpp"
#include "tests/support/headless_form.hpp"

namespace testing_support {

struct FailureSweep {
    controls::Button controls::Form1::*button = nullptr; // that runs the action
    std::string document;                                // that is open in the session
    std::size_t fewest_calls = 1;                        // of a run in which nothing fails
    // How many calls are made where the person stops the action before that call; nothing where
    // that comes too late for it to end otherwise.
    std::function<std::optional<std::size_t>(std::size_t call)> calls_before_stop =
        [](std::size_t call) { return call - 1; };
    // How many calls the run makes in which one fails: as a rule that one is the last.
    std::function<std::size_t(const simulator::Fault&)> calls_made =
        [](const simulator::Fault& fault) { return fault.call; };
    // What stands in the form before the action.
    std::function<void(HeadlessForm&)> prepare = [](HeadlessForm&) {};
    // What the failure leaves behind; `complete` is the form after a run in which nothing failed.
    std::function<void(const HeadlessForm& complete, HeadlessForm& failed, const simulator::Fault&)>
        after_failure;
    // What the person puts right before the next run.
    std::function<void(HeadlessForm&)> before_next_run = [](HeadlessForm&) {};
    // What the next run makes of it, with CATIA started again.
    std::function<void(const HeadlessForm& complete, const HeadlessForm& next)> after_next_run =
        [](const HeadlessForm&, const HeadlessForm&) {};
};

// The person stops the action in each of its calls and yields in turn. It ends before the call, or
// at the yield, by its error, and the next run ends as one that nobody stopped.
inline void SweepStops(const FailureSweep& sweep, const HeadlessForm& complete,
                       const simulator::Session& whole) {
    const auto open = [&](HeadlessForm& headless, simulator::Session& session) {
        session.LoadDocument("document", sweep.document);
        headless.Connect(session);
    };
    const auto calls = static_cast<int>(whole.Log().size());
    for (int moment = 1; moment <= calls + complete.events.yields; ++moment) {
        SCOPED_TRACE(testing::Message() << "stopped at " << moment);
        HeadlessForm headless;
        simulator::Session session;
        CompareWithDrawing(headless);
        open(headless, session);
        sweep.prepare(headless);
        int calls_made = 0;
        headless.form.before_call = [&] {
            if (++calls_made == moment) {
                app::RequestStop(headless.form);
            }
        };
        const int yields_before = headless.events.yields;
        headless.events.at_yield[yields_before + moment - calls] = [&] {
            app::RequestStop(headless.form);
        };
        (headless.form.*sweep.button).Click();
        if (moment <= calls) {
            const auto expected = sweep.calls_before_stop(static_cast<std::size_t>(moment));
            if (!expected) {
                EXPECT_EQ(headless.Status(), complete.Status());
                continue;
            }
            EXPECT_EQ(session.Log().size(), *expected);
        }
        EXPECT_FALSE(headless.form.stop_requested);
        EXPECT_FALSE(headless.form.StatusBar1.ShownProgress());
        EXPECT_FALSE(headless.Busy());
        EXPECT_TRUE(headless.message_boxes.shown.empty());
        EXPECT_EQ(headless.form.StatusBar1.State(), controls::ActionState::kFailed);
        EXPECT_TRUE(headless.form.StatusBar1.ShownExplanation().text.starts_with("Přerušeno"))
            << headless.form.StatusBar1.ShownExplanation().text;

        headless.form.before_call = nullptr;
        headless.events.at_yield.clear();
        simulator::Session again;
        open(headless, again);
        sweep.before_next_run(headless);
        headless.form.StatusBar1.SetPanelText(1, "");
        (headless.form.*sweep.button).Click();
        EXPECT_EQ(headless.Status(), complete.Status());
        EXPECT_EQ(again.DrawingAsText(), whole.DrawingAsText());
        sweep.after_next_run(complete, headless);
    }
}

// In every case the run ends as it is to and without a box, and the next run ends as one does in
// which nothing failed.
inline void Sweep(const FailureSweep& sweep) {
    const auto open = [&](HeadlessForm& headless, simulator::Session& session) {
        session.LoadDocument("document", sweep.document);
        headless.Connect(session);
    };
    const auto press = [&](HeadlessForm& headless) { (headless.form.*sweep.button).Click(); };

    HeadlessForm complete;
    simulator::Session whole;
    CompareWithDrawing(complete);
    open(complete, whole);
    sweep.prepare(complete);
    press(complete);
    const std::size_t calls = whole.Log().size();
    ASSERT_GE(calls, sweep.fewest_calls);
    SweepStops(sweep, complete, whole);
    for (std::size_t call = 1; call <= calls; ++call) {
        for (const auto kind : {simulator::FaultKind::kRefused, simulator::FaultKind::kVanished,
                                simulator::FaultKind::kBusy}) {
            SCOPED_TRACE(testing::Message()
                         << "call " << call << " kind " << static_cast<int>(kind));
            const simulator::Fault fault{.call = call, .kind = kind};
            HeadlessForm headless;
            simulator::Session doomed;
            CompareWithDrawing(headless);
            open(headless, doomed);
            sweep.prepare(headless);
            doomed.Arm(fault);
            press(headless);
            EXPECT_EQ(doomed.Log().size(), sweep.calls_made(fault));
            EXPECT_TRUE(headless.message_boxes.shown.empty());
            sweep.after_failure(complete, headless, fault);
            if (testing::Test::HasFatalFailure()) {
                return;
            }

            simulator::Session restarted;
            open(headless, restarted);
            sweep.before_next_run(headless);
            headless.form.StatusBar1.SetPanelText(1, "");
            press(headless);
            EXPECT_EQ(headless.Status(), complete.Status());
            EXPECT_EQ(restarted.DrawingAsText(), whole.DrawingAsText());
            sweep.after_next_run(complete, headless);
        }
    }
}

// The run ended without a word: the status line keeps the last announcement.
inline void ExpectSilentEnd(const HeadlessForm& complete, const HeadlessForm& failed) {
    ASSERT_LE(failed.messages.size(), complete.messages.size());
    EXPECT_TRUE(
        std::equal(failed.messages.begin(), failed.messages.end(), complete.messages.begin()))
        << failed.Status();
}

// The run ended with the error on the status line.
inline void ExpectErrorShown(const HeadlessForm& failed, simulator::FaultKind kind) {
    const std::string expected =
        kind == simulator::FaultKind::kVanished ? "-2147023174 The RPC server is unavailable."
        : kind == simulator::FaultKind::kBusy   ? "-2147418111 Call was rejected by callee."
                                                : "-2147467259 The method ";
    EXPECT_TRUE(failed.Status().starts_with(expected)) << failed.Status();
}

} // namespace testing_support
