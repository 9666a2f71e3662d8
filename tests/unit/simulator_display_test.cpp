// What the simulated session displays of a table, and the time that it takes.

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "automation/run_time_error.hpp"
#include "simulator/model.hpp"
#include "simulator/session.hpp"
#include "tests/support/error_of.hpp"

namespace {

using automation::ObjectPtr;
using namespace std::chrono_literals;

constexpr long kMethodFailed = -2147467259;
constexpr long kCallRejected = -2147418111;
constexpr int kOff = 0;
constexpr int kOn = 1;

constexpr const char* kOneTable = R"(DrawingDocument D.CATDrawing
sheet S active
  view V at 10 20 active
    table at 5 6 columns 10 20
      row 7 cells "a" "b"
      row 8
)";

// The first table of the active sheet, and the times that calls would have taken.
struct Display : testing::Test {
    simulator::Session session;
    std::vector<std::chrono::microseconds> passed;

    Display() {
        session.LoadDocument("drawing", kOneTable);
        session.pass_time = [this](std::chrono::microseconds time) { passed.push_back(time); };
    }

    static ObjectPtr Get(const ObjectPtr& object, const char* name) {
        return object->get({"", name}).AsObject();
    }
    [[nodiscard]] ObjectPtr Tables() {
        ObjectPtr object = session.Application();
        for (const char* name :
             {"ActiveDocument", "Sheets", "ActiveSheet", "Views", "ActiveView", "Tables"}) {
            object = Get(object, name);
        }
        return object;
    }
    [[nodiscard]] ObjectPtr Table() { return Tables()->call({"", "Item"}, {1}).AsObject(); }
    [[nodiscard]] bool Shows(const std::string& text) const {
        return session.DisplayAsText().find(text) != std::string::npos;
    }
    [[nodiscard]] bool Holds(const std::string& text) const {
        return session.DrawingAsText().find(text) != std::string::npos;
    }
};

struct Duration : Display {};

void SetMode(const ObjectPtr& table, int mode) {
    table->put({"", "ComputeMode"}, mode);
}

void SetCell(const ObjectPtr& table, int row, int column, const char* text) {
    table->call({"", "SetCellString"}, {row, column, text});
}

TEST_F(Display, FollowsEveryChangeAtFirst) {
    const ObjectPtr table = Table();
    EXPECT_EQ(table->get({"", "ComputeMode"}).AsInteger(), kOn);
    SetCell(table, 1, 1, "new");
    EXPECT_TRUE(Shows(R"("new" "b")"));
    EXPECT_EQ(session.DisplayAsText(), session.DrawingAsText());
}

TEST_F(Display, StaysAsItWasWhenItWasSwitchedOff) {
    const ObjectPtr table = Table();
    SetCell(table, 1, 1, "before");
    const std::string before = session.DrawingAsText();
    SetMode(table, kOff);
    EXPECT_EQ(table->get({"", "ComputeMode"}).AsInteger(), kOff);
    SetCell(table, 1, 1, "after");
    table->call({"", "SetRowSize"}, {1, 70});
    table->call({"", "SetColumnSize"}, {2, 200});
    table->put({"", "AnchorPoint"}, 2);
    table->put({"", "X"}, 55);
    const ObjectPtr cell = table->call({"", "GetCellObject"}, {2, 1}).AsObject();
    cell->call({"", "SetFontSize"}, {0, 0, 9});
    cell->put({"", "Text"}, "under");
    SetMode(table, kOff); // again: what was computed last is still the same
    EXPECT_EQ(session.DisplayAsText(), before);
    EXPECT_TRUE(Holds(R"(row 70 font 3.5 "Monospac821 BT" cells "after" "b")"));
    EXPECT_TRUE(Holds(R"("under")"));
    EXPECT_EQ(table->call({"", "GetCellString"}, {1, 1}).AsText(), "after");
}

TEST_F(Display, KeepsItsRowsWhileItIsSwitchedOff) {
    const ObjectPtr table = Table();
    const std::string before = session.DrawingAsText();
    SetMode(table, kOff);
    table->call({"", "AddRow"}, {1});
    SetCell(table, 1, 1, "added");
    table->call({"", "RemoveRow"}, {2});
    EXPECT_EQ(session.DisplayAsText(), before);
    SetMode(table, kOn);
    EXPECT_TRUE(Shows(R"("added" "")"));
    EXPECT_FALSE(Shows(R"("a" "b")"));
}

TEST_F(Display, IsComputedWholeWhenItIsSwitchedOn) {
    const ObjectPtr table = Table();
    SetMode(table, kOff);
    SetCell(table, 2, 2, "late");
    table->call({"", "SetRowSize"}, {1, 70});
    EXPECT_NE(session.DisplayAsText(), session.DrawingAsText());
    SetMode(table, kOn);
    EXPECT_EQ(session.DisplayAsText(), session.DrawingAsText());
    EXPECT_TRUE(Shows(R"("late")"));
}

TEST_F(Display, OfANewTableThatIsSwitchedOffIsEmpty) {
    const ObjectPtr table = Tables()->call({"", "Add"}, {0, 0, 1, 2, 5, 20}).AsObject();
    SetMode(table, kOff);
    SetCell(table, 1, 1, "hidden");
    EXPECT_TRUE(Shows("columns 20 20"));
    EXPECT_FALSE(Shows("hidden"));
}

TEST_F(Display, OfOneTableDoesNotDependOnAnother) {
    const ObjectPtr other = Tables()->call({"", "Add"}, {0, 0, 1, 1, 5, 20}).AsObject();
    SetMode(Table(), kOff);
    SetCell(other, 1, 1, "shown");
    EXPECT_TRUE(Shows("shown"));
}

TEST_F(Display, HasTheLineThicknessAtOnce) {
    session.SelectTable("S", "V", 1);
    SetMode(Table(), kOff);
    const ObjectPtr selection = Get(Get(session.Application(), "ActiveDocument"), "Selection");
    Get(selection, "VisProperties")->call({"", "SetRealWidth"}, {3, 1});
    EXPECT_TRUE(Shows("weight 3"));
}

TEST_F(Display, StandsWhereItWasComputedLast) {
    const ObjectPtr table = Table();
    SetMode(table, kOff);
    table->put({"", "X"}, 100);
    table->call({"", "SetColumnSize"}, {1, 90});
    const auto& view = *session.ActiveDocument()->active_sheet->views.front();
    const auto place = simulator::Place(view, *view.tables.front());
    EXPECT_EQ(place.left, 15);
    EXPECT_EQ(place.right, 45);
    SetMode(table, kOn);
    EXPECT_EQ(simulator::Place(view, *view.tables.front()).right, 220);
}

TEST_F(Display, TakesNoOtherMode) {
    for (const int mode : {-1, 2}) {
        EXPECT_EQ(testing_support::ErrorOf([&] { SetMode(Table(), mode); }), kMethodFailed);
    }
    EXPECT_EQ(Table()->get({"", "ComputeMode"}).AsInteger(), kOn);
}

TEST_F(Duration, IsNothingAtFirst) {
    SetCell(Table(), 1, 1, "quick");
    EXPECT_TRUE(passed.empty());
}

TEST_F(Duration, OfAComputedDisplayComesWithEveryChange) {
    const ObjectPtr table = Table();
    session.recompute_time = 2000us;
    SetCell(table, 1, 1, "x");
    table->call({"", "SetRowSize"}, {1, 70});
    table->put({"", "AnchorPoint"}, 1);
    const ObjectPtr cell = table->call({"", "GetCellObject"}, {2, 1}).AsObject();
    cell->call({"", "SetFontSize"}, {0, 0, 9});
    EXPECT_EQ(passed, std::vector<std::chrono::microseconds>(4, 2000us));
}

TEST_F(Duration, OfADisplayThatIsSwitchedOffComesOnceAtItsEnd) {
    const ObjectPtr table = Table();
    session.recompute_time = 2000us;
    SetMode(table, kOff);
    SetCell(table, 1, 1, "x");
    table->call({"", "GetCellObject"}, {2, 1}).AsObject()->call({"", "SetFontSize"}, {0, 0, 9});
    EXPECT_TRUE(passed.empty());
    SetMode(table, kOn);
    EXPECT_EQ(passed.size(), 1U);
}

TEST_F(Duration, DoesNotComeWithWhatOnlyReads) {
    session.recompute_time = 2000us;
    const ObjectPtr table = Table();
    table->call({"", "GetCellString"}, {1, 1});
    EXPECT_TRUE(passed.empty());
}

TEST_F(Duration, OfASlowCallIsTheArmedOneAndTheCallIsCarriedOut) {
    const ObjectPtr table = Table();
    session.Arm({.call = 2, .kind = simulator::FaultKind::kSlow, .milliseconds = 5000ms});
    SetCell(table, 1, 1, "first");
    EXPECT_TRUE(passed.empty());
    SetCell(table, 1, 1, "second");
    EXPECT_EQ(passed, std::vector<std::chrono::microseconds>{5000ms});
    SetCell(table, 1, 2, "third");
    EXPECT_EQ(passed.size(), 1U);
    EXPECT_TRUE(Shows(R"("second" "third")"));
}

TEST_F(Duration, ReallyPasses) {
    const ObjectPtr table = Table();
    session.pass_time = simulator::Session().pass_time;
    for (const auto time : {3ms, 60ms}) { // spent and slept
        session.Arm({.call = 1, .kind = simulator::FaultKind::kSlow, .milliseconds = time});
        const auto start = std::chrono::steady_clock::now();
        SetCell(table, 1, 1, "x");
        EXPECT_GE(std::chrono::steady_clock::now() - start, time);
    }
}

TEST_F(Display, AnOpenDialogRejectsEveryCallUntilItIsClosed) {
    const ObjectPtr table = Table();
    session.dialog_open = true;
    EXPECT_EQ(testing_support::ErrorOf([&] { SetCell(table, 1, 1, "x"); }), kCallRejected);
    EXPECT_EQ(testing_support::ErrorOf([&] { Get(session.Application(), "ActiveDocument"); }),
              kCallRejected);
    EXPECT_FALSE(Holds(R"("x")"));
    session.dialog_open = false;
    SetCell(table, 1, 1, "x");
    EXPECT_TRUE(Holds(R"("x")"));
}

} // namespace
