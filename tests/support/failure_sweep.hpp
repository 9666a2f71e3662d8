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
    // How many calls the run makes in which one fails: as a rule that one is the last.
    std::function<std::size_t(const simulator::Fault&)> calls_made =
        [](const simulator::Fault& fault) { return fault.call; };
    // What stands in the form before the action.
    std::function<void(HeadlessForm&)> prepare = [](HeadlessForm&) {};
    // What the failure leaves behind; `complete` is the form after a run in which nothing failed.
    std::function<void(const HeadlessForm& complete, HeadlessForm& failed, const simulator::Fault&)>
        after_failure;
    // What the next run makes of it, with CATIA started again.
    std::function<void(const HeadlessForm& complete, const HeadlessForm& next)> after_next_run =
        [](const HeadlessForm&, const HeadlessForm&) {};
};

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
