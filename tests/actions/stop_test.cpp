// The person stops what runs, and sees how far it is.

#include <gtest/gtest.h>

#include "partslist/partslist.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"
#include "tests/support/sample_products.hpp"

namespace {

using testing_support::AddRow;
using testing_support::Column;
using Texts = std::vector<std::string>;

struct Stop : testing_support::ActionTest {
    controls::StatusBar& bar = form.StatusBar1;
    std::vector<controls::Progress> progress;

    Stop() {
        form.show_soon = [this, show = form.show_soon] {
            show();
            if (bar.ShownProgress() &&
                (progress.empty() || progress.back() != *bar.ShownProgress())) {
                progress.push_back(*bar.ShownProgress());
            }
        };
    }
    void FillTheList(int rows) {
        for (int row = 1; row <= rows; ++row) {
            AddRow(form.ListView1, {"part " + std::to_string(row), std::to_string(row), "1", "x"});
        }
    }
    void StopAtCall(int call) {
        form.before_call = [this, call, made = 0]() mutable {
            if (++made == call) {
                app::RequestStop(form);
            }
        };
    }
};

TEST_F(Stop, DoesNothingWhereNothingRuns) {
    Open(testing_support::kEmptyDrawing);
    FillTheList(2);
    app::RequestStop(form);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(bar.ShownExplanation().text, "");
}

TEST_F(Stop, EndsTheActionsInsideOneAnother) {
    Open(testing_support::kEmptyDrawing);
    FillTheList(2);
    events.at_yield[2] = [&] {
        form.Command7.Click(); // another table
        EXPECT_EQ(bar.State(), controls::ActionState::kFailed);
    };
    events.at_yield[3] = [&] { app::RequestStop(form); };
    form.Command11.Click();
    EXPECT_EQ(events.yields, 3);
    EXPECT_EQ(bar.State(), controls::ActionState::kFailed);
    EXPECT_FALSE(Busy());
}

TEST_F(Stop, EachOfTheActionsSaysHowFarItCameItself) {
    Open(testing_support::kEmptyDrawing);
    FillTheList(2);
    events.at_yield[2] = [&] {
        StopAtCall(3);
        form.Command21.Click();
        EXPECT_EQ(Status(), "18 User interrupt occurred");
        EXPECT_EQ(bar.ShownExplanation().text, "Přerušeno. Poslední krok: „Cekam na Catii“.");
    };
    form.Command11.Click();
    EXPECT_EQ(bar.ShownExplanation().text,
              "Přerušeno, hotovo 24 z 32. Poslední krok: „Catie doplnuje hlavicku“.");
}

TEST_F(Stop, AfterTheLastCallTheActionEndsAsAlways) {
    Open(testing_support::kEmptyDrawing);
    FillTheList(2);
    form.Command11.Click();
    const std::size_t calls = session.Log().size();
    session.ClearLog();
    session.before_call = [&, made = std::size_t{0}](const std::string&) mutable {
        if (++made == calls) {
            app::RequestStop(form);
        }
    };
    form.Command11.Click();
    EXPECT_EQ(session.Log().size(), calls);
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(bar.State(), controls::ActionState::kDone);
    EXPECT_FALSE(form.stop_requested);
}

TEST_F(Stop, SaysOnTheStatusLineWhatAnErrorWouldAndInTheBalloonHowFarItCame) {
    Open(testing_support::kSampleProduct);
    StopAtCall(20);
    form.Command3.Click();
    EXPECT_EQ(Status(), "18 User interrupt occurred");
    EXPECT_TRUE(bar.ShownExplanation().text.starts_with("Přerušeno. Poslední krok: „Product: "))
        << bar.ShownExplanation().text;
    EXPECT_TRUE(bar.ShownExplanation().is_error);

    Open(testing_support::kEmptyDrawing);
    FillTheList(2);
    StopAtCall(40);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Catie upravuje font");
    EXPECT_EQ(bar.ShownExplanation().text, "Přerušeno. Poslední krok: „Catie upravuje font“.");
}

TEST_F(Stop, ADragIsWholeAndGoesOn) {
    FillTheList(3);
    for (int row = 1; row <= 3; ++row) {
        form.ListView1.SetText(static_cast<std::size_t>(row), std::to_string(row));
    }
    events.at_every_yield = [&] { app::RequestStop(form); };
    testing_support::Drag(form.ListView1, 1, 3);
    EXPECT_EQ(Column(form.ListView1, 0), (Texts{"2", "3", "1"}));
    EXPECT_EQ(Column(form.ListView1, partslist::kPosition), (Texts{"0001", "0002", "0003"}));
    EXPECT_EQ(bar.ShownExplanation().text, "");
}

TEST_F(Stop, TheListStaysAsItWasWhereItsSuccessorIsNotRead) {
    Open(testing_support::DrawingWithTable(5, 7));
    FillTheList(2);
    events.at_yield[3] = [&] { app::RequestStop(form); };
    form.Command9.Click();
    EXPECT_EQ(Column(form.ListView1, 0), (Texts{"part 1", "part 2"}));
    EXPECT_EQ(RowCount(), "Pozic: 2");
    EXPECT_EQ(bar.ShownExplanation().text,
              "Přerušeno, hotovo 3 z 5. Poslední krok: „Nacteni radky:3“.");
}

TEST_F(Stop, WhatIsPressedAtTheYieldAfterwardsDoesNotStart) {
    Open(testing_support::kSampleProduct);
    FillTheList(1);
    events.at_yield[2] = [&] {
        app::RequestStop(form);
        form.Command9.Click();
    };
    form.Command3.Click();
    EXPECT_EQ(bar.State(), controls::ActionState::kFailed);
    EXPECT_FALSE(Called("Document.Selection"));
}

struct ProgressOf : Stop {
    // From its beginning to its end, and nothing of it stays.
    void ExpectProgress(int total) const {
        ASSERT_FALSE(progress.empty());
        for (std::size_t i = 0; i < progress.size(); ++i) {
            EXPECT_EQ(progress[i].total, total);
            EXPECT_LE(progress[i].done, total);
            EXPECT_TRUE(i == 0 || progress[i].done > progress[i - 1].done);
        }
        EXPECT_LE(progress.front().done, total / 2);
        EXPECT_GE(progress.back().done, total - 1);
        EXPECT_FALSE(bar.ShownProgress());
    }
};

TEST_F(ProgressOf, ATableThatIsMade) {
    Open(testing_support::kEmptyDrawing);
    FillTheList(5);
    form.Command11.Click();
    ASSERT_EQ(Status(), "Tabulka vytvorena Ok ");
    ExpectProgress(4 * 11); // five rows, five free ones and the header
}

TEST_F(ProgressOf, ATableThatIsRead) {
    Open(testing_support::DrawingWithTable(9, 7));
    form.Command9.Click();
    ExpectProgress(9);
}

TEST_F(ProgressOf, ATableThatIsFilled) {
    Open(testing_support::DrawingWithTable(9, 7));
    FillTheList(4);
    form.Command30.Click();
    ExpectProgress(8);
}

TEST_F(ProgressOf, SheetsThatAreLoadedAndRenamed) {
    std::string drawing = "DrawingDocument D.CATDrawing\n";
    for (int sheet = 1; sheet <= 6; ++sheet) {
        drawing +=
            "sheet S" + std::to_string(sheet) + (sheet == 1 ? " active\n" : "\n") + "  view V\n";
    }
    Open(drawing);
    FillTheList(1);
    form.Command21.Click();
    ExpectProgress(6);
    progress.clear();
    form.Command20.Click();
    form.Command23.Click();
    ExpectProgress(6);
}

TEST_F(ProgressOf, SheetsOfWhichSomeAreNumbered) {
    std::string drawing = "DrawingDocument D.CATDrawing\n";
    for (int sheet = 1; sheet <= 9; ++sheet) {
        drawing +=
            "sheet S" + std::to_string(sheet) + (sheet == 1 ? " active\n" : "\n") + "  view V\n";
    }
    Open(drawing);
    message_boxes.text_answer = "11-14";
    form.Command24.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"11", "12", "13", "14", "S5", "S6", "S7", "S8", "S9"}));
    ExpectProgress(4);
}

TEST_F(ProgressOf, AnActionInsideAnotherIsItsOwn) {
    Open(testing_support::DrawingWithTable(9, 7));
    FillTheList(4);
    events.at_yield[1] = [&] { // the outer one does not know yet how much there is to do
        form.Command9.Click();
        ASSERT_EQ(Status(), "Nacteni tabulky Ok");
        EXPECT_FALSE(bar.ShownProgress());
    };
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");

    events.yields = 0;
    bool shows_nothing = false;
    events.at_yield = {{3, [&] {
                            form.show_now = [&] { shows_nothing |= !bar.ShownProgress(); };
                            form.Command26.Click();
                            EXPECT_EQ(bar.ShownProgress(), (controls::Progress{3, 9}));
                        }}};
    form.Command9.Click();
    EXPECT_TRUE(shows_nothing);
}

} // namespace
