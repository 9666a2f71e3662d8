#include "controls/list_history.hpp"

#include <gtest/gtest.h>

#include <random>

using controls::ListHistory;
using controls::ListRow;
using controls::ListView;

namespace {

// A list as a value: its rows with all that undoing brings back, and the current row.
struct Shown {
    std::vector<ListRow> rows;
    std::optional<std::size_t> current;

    bool operator==(const Shown& other) const {
        return current == other.current &&
               std::ranges::equal(rows, other.rows, [](const ListRow& left, const ListRow& right) {
                   return left.text == right.text && left.sub_items == right.sub_items &&
                          left.tag == right.tag && left.checked == right.checked &&
                          left.selected == right.selected;
               });
    }
};

Shown Look(const ListView& list) {
    Shown shown{{}, list.CurrentRow()};
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        shown.rows.push_back(list.Row(row));
    }
    return shown;
}

class History : public testing::Test {
  protected:
    History() {
        list_.Add("Hřídel");
        list_.Add("Kolo");
        history_.Start();
    }

    // What one handler does.
    template <typename Change>
    void Do(const std::string& step, Change&& change) {
        change();
        history_.Note(step, ++runs_);
    }

    ListView list_{{"Jmeno", "Poz.", ""}};
    ListHistory history_{list_};
    std::uint64_t runs_ = 0;
};

} // namespace

TEST_F(History, BringsBackRowsChecksSelectionAndCurrentRow) {
    list_.SetSelected(2, true);
    list_.SetCurrentRow(2);
    history_.Note("click", ++runs_);
    const Shown before = Look(list_);
    Do("Smazat", [&] { list_.Remove(2); });
    Do("Zaškrtnutí", [&] { list_.SetChecked(1, true); });
    const Shown after = Look(list_);
    history_.Undo();
    EXPECT_FALSE(list_.Row(1).checked);
    history_.Undo();
    EXPECT_EQ(Look(list_), before);
    history_.Redo();
    history_.Redo();
    EXPECT_EQ(Look(list_), after);
}

TEST_F(History, BringsBackWhereTheRowsCameFrom) {
    list_.SetSourceNames(controls::NameSet{"Hřídel"});
    history_.Note("fill", ++runs_);
    Do("update", [&] {
        list_.SetSubItem(1, 1, "0001");
        list_.SetSourceNames(controls::NameSet{"Kolo"});
    });
    history_.Undo();
    EXPECT_EQ(*list_.SourceNames(), controls::NameSet{"Hřídel"});
    history_.Redo();
    EXPECT_EQ(*list_.SourceNames(), controls::NameSet{"Kolo"});
    Do("Clear", [&] { list_.Clear(); });
    history_.Undo();
    EXPECT_EQ(*list_.SourceNames(), controls::NameSet{"Kolo"});
    history_.Redo();
    EXPECT_EQ(list_.SourceNames(), nullptr);
}

TEST_F(History, LeavesMarksOnTheRowsThatStay) {
    Do("update", [&] {
        list_.SetChecked(1, true);
        list_.SetMarked(2, true);
    });
    Do("Smazat", [&] { list_.Remove(1); });
    history_.Undo();
    EXPECT_FALSE(list_.Row(1).marked);
    EXPECT_TRUE(list_.Row(2).marked);
    history_.Undo();
    EXPECT_TRUE(list_.Row(2).marked);
    list_.ClearMarks();
    history_.Redo();
    EXPECT_FALSE(list_.Row(2).marked);
    list_.SetMarked(2, true);
    Do("Smazat", [&] { list_.Remove(2); });
    history_.Undo();
    EXPECT_FALSE(list_.Row(2).marked) << "a row that comes back is none of those";
}

TEST_F(History, NamesWhatItTakesBackAndMakesAgain) {
    EXPECT_EQ(history_.UndoName(), std::nullopt);
    Do("Přidat", [&] { list_.Add("Novy"); });
    EXPECT_EQ(history_.UndoName(), "Přidat");
    EXPECT_EQ(history_.RedoName(), std::nullopt);
    history_.Undo();
    EXPECT_EQ(history_.UndoName(), std::nullopt);
    EXPECT_EQ(history_.RedoName(), "Přidat");
}

TEST_F(History, WithoutAStepItDoesNothing) {
    const Shown before = Look(list_);
    history_.Undo();
    history_.Redo();
    EXPECT_EQ(Look(list_), before);
}

TEST_F(History, ANewChangeEndsWhatCouldBeMadeAgain) {
    Do("a", [&] { list_.SetText(1, "a"); });
    history_.Undo();
    Do("b", [&] { list_.SetText(1, "b"); });
    EXPECT_EQ(history_.RedoName(), std::nullopt);
    history_.Redo();
    EXPECT_EQ(list_.Row(1).text, "b");
}

TEST_F(History, SelectionTipAndSortKeysAreNoChange) {
    Do("click", [&] {
        list_.SelectAll();
        list_.SetCurrentRow(2);
        list_.SetToolTip("tip");
        list_.SetSubItem(1, 2, "0001");
    });
    EXPECT_EQ(history_.UndoName(), std::nullopt);
    EXPECT_EQ(history_.Changes(), 0U);
}

TEST_F(History, TheSameRowsLoadedAgainAreNoChange) {
    Do("load", [&] {
        list_.Clear();
        list_.Add("Hřídel");
        list_.Add("Kolo");
    });
    EXPECT_EQ(history_.UndoName(), std::nullopt);
}

TEST_F(History, WhatOneRunChangesIsOneStep) {
    ++runs_;
    list_.SetText(1, "a");
    history_.Note("read", runs_); // a handler runs inside it
    list_.SetText(2, "b");
    history_.Note("read", runs_);
    history_.Undo();
    EXPECT_EQ(list_.Row(1).text, "Hřídel");
    EXPECT_EQ(list_.Row(2).text, "Kolo");
}

TEST_F(History, KeepsAHundredSteps) {
    for (int step = 1; step <= 120; ++step) {
        Do("step", [&] { list_.SetText(1, std::to_string(step)); });
    }
    int taken_back = 0;
    while (history_.UndoName()) {
        history_.Undo();
        ++taken_back;
    }
    EXPECT_EQ(taken_back, 100);
    EXPECT_EQ(list_.Row(1).text, "20");
}

TEST_F(History, KeepsFewerStepsWhereTheyHoldTooMuchButAlwaysOne) {
    ListHistory small(list_, 100'000);
    small.Start();
    const std::string long_text(40'000, 'x');
    for (int step = 1; step <= 10; ++step) {
        list_.SetText(1, long_text + std::to_string(step));
        small.Note("step", static_cast<std::uint64_t>(step));
    }
    int taken_back = 0;
    while (small.UndoName()) {
        small.Undo();
        ++taken_back;
    }
    EXPECT_EQ(taken_back, 2);

    ListHistory tiny(list_, 1);
    tiny.Start();
    list_.SetText(1, long_text);
    tiny.Note("step", 1);
    EXPECT_TRUE(tiny.UndoName());
}

TEST_F(History, ARowThatComesBackKeepsItsNumber) {
    const std::uint64_t id = list_.Row(2).id;
    Do("Smazat", [&] { list_.Remove(2); });
    Do("Přidat", [&] { list_.Add("Novy"); });
    history_.Undo();
    history_.Undo();
    EXPECT_EQ(list_.RowWithId(id), 2U);
    Do("Přidat", [&] { list_.Add("Novy"); });
    EXPECT_NE(list_.Row(3).id, id);
}

// Whatever is done, all of it can be taken back and made again, step by step.
TEST_F(History, TakesBackAndMakesAgainWhateverWasDone) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        list_.Clear();
        list_.Add("x");
        history_.Start();
        std::vector<Shown> shown{Look(list_)};
        for (int step = 0; step < 60; ++step) {
            const std::size_t rows = list_.Count();
            const std::size_t row = rows == 0 ? 0 : 1 + random() % rows;
            const auto changes = history_.Changes();
            Do("step", [&] {
                switch (rows == 0 ? 0 : random() % 6) {
                case 0:
                    list_.Add(std::to_string(random() % 5));
                    break;
                case 1:
                    list_.Remove(row);
                    break;
                case 2:
                    list_.SetSubItem(row, 1, std::to_string(random() % 3));
                    break;
                case 3:
                    list_.SetChecked(row, random() % 2 == 0);
                    break;
                case 4:
                    list_.SetSorted(1);
                    list_.SetUnsorted();
                    break;
                default:
                    list_.SetSelected(row, true);
                    list_.SetCurrentRow(row);
                }
            });
            if (history_.Changes() == changes) {
                shown.back() = Look(list_); // the selection of then
            } else {
                shown.push_back(Look(list_));
            }
        }
        for (auto state = shown.rbegin(); state != shown.rend(); ++state) {
            EXPECT_EQ(Look(list_), *state);
            history_.Undo();
        }
        for (const Shown& state : shown) {
            EXPECT_EQ(Look(list_), state);
            history_.Redo();
        }
    }
}
