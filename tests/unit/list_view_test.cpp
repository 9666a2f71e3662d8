#include "controls/list_view.hpp"

#include <gtest/gtest.h>

#include "tests/support/error_of.hpp"

namespace {

using controls::ListView;
using testing_support::ErrorOf;

ListView ThreeColumns(const std::vector<std::string>& names) {
    ListView list({"Name", "One", "Two"});
    for (const std::string& name : names) {
        list.Add(name);
    }
    return list;
}

std::string Names(const ListView& list) {
    std::string names;
    for (std::size_t row = 1; row <= list.Count(); ++row) {
        names += list.Row(row).text + " ";
    }
    return names;
}

TEST(ListView, RowsCountFromOneAndOthersAreOutOfBounds) {
    ListView list = ThreeColumns({"a"});
    EXPECT_EQ(list.Row(1).text, "a");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(list.Row(0)); }), 35600);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(list.Row(2)); }), 35600);
    EXPECT_EQ(ErrorOf([&] { list.Remove(2); }), 35600);
    EXPECT_EQ(ErrorOf([&] { list.SetCurrentRow(2); }), 35600);
    EXPECT_EQ(ErrorOf([&] { list.EnsureVisible(2); }), 35600);
}

TEST(ListView, ASubItemWithoutAColumnIsAnInvalidPropertyValue) {
    ListView list = ThreeColumns({"a"});
    list.SetSubItem(1, 2, "x");
    EXPECT_EQ(list.SubItem(1, 2), "x");
    EXPECT_EQ(list.SubItem(1, 1), "");
    EXPECT_EQ(ErrorOf([&] { list.SetSubItem(1, 3, "x"); }), 380);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(list.SubItem(1, 0)); }), 380);
}

TEST(ListView, EveryChangeRaisesTheRevision) {
    ListView list = ThreeColumns({"a"});
    const std::vector<std::function<void()>> changes{
        [&] { list.Add("b"); },
        [&] { list.SetText(1, "c"); },
        [&] { list.SetSubItem(1, 1, "d"); },
        [&] { list.SetChecked(1, true); },
        [&] { list.SetSelected(1, true); },
        [&] { list.SetTag(1, "t"); },
        [&] { list.SelectAll(); },
        [&] { list.SelectOnly(1); },
        [&] { list.SetCurrentColumn(2); },
        [&] { list.WantFocus(); },
        [&] { list.SetCurrentRow(1); },
        [&] { list.SetSorted(1); },
        [&] { list.EnsureVisible(1); },
        [&] { list.SetMarked(1, true); },
        [&] { list.ClearMarks(); },
        [&] { list.SetSourceNames(controls::NameSet{"a"}); },
        [&] {
            list.Arrange({2, 1});
        },
        [&] { list.RemoveSelected(); },
        [&] { list.Add("d"); },
        [&] { list.Remove(1); },
        [&] { list.Clear(); }};
    for (const auto& change : changes) {
        const auto before = list.Revision();
        change();
        EXPECT_NE(list.Revision(), before);
    }
}

TEST(ListView, SortsOnceByTheTextOfASubItemAndKeepsTheOrderOfEquals) {
    ListView list = ThreeColumns({"a", "b", "c", "d"});
    list.SetSubItem(1, 1, "2");
    list.SetSubItem(2, 1, "10");
    list.SetSubItem(3, 1, "2");
    list.SetCurrentRow(4);
    list.SetSorted(1);
    EXPECT_EQ(Names(list), "d b a c ");
    EXPECT_EQ(list.CurrentRow(), 1U);
    list.SetUnsorted();
    list.Add("e");
    EXPECT_EQ(Names(list), "d b a c e ");
}

TEST(ListView, SortsNewRowsInWhileItIsSorted) {
    ListView list = ThreeColumns({"a", "b"});
    list.SetSubItem(1, 1, "1");
    list.SetSubItem(2, 1, "2");
    list.SetSorted(1);
    EXPECT_EQ(list.Add("new"), 1U);
    EXPECT_EQ(Names(list), "new a b ");
}

TEST(ListView, TheRowThatTakesTheRemovedCurrentRowsPlaceIsCurrent) {
    ListView list = ThreeColumns({"a", "b", "c"});
    list.SetCurrentRow(2);
    list.Remove(2);
    EXPECT_EQ(list.CurrentRow(), 2U);
    EXPECT_TRUE(list.Row(2).selected);
    list.Remove(2);
    EXPECT_EQ(list.CurrentRow(), 1U);
    list.Remove(1);
    EXPECT_EQ(list.CurrentRow(), std::nullopt);
}

TEST(ListView, TheCurrentRowStaysTheSameRowWhenOthersAreRemoved) {
    ListView list = ThreeColumns({"a", "b", "c"});
    list.SetCurrentRow(3);
    list.Remove(1);
    EXPECT_EQ(list.CurrentRow(), 2U);
    EXPECT_EQ(list.Row(2).text, "c");
}

TEST(ListView, RowsComeIntoAnotherOrderAndStayTheSameRows) {
    ListView list = ThreeColumns({"a", "b", "c"});
    list.SetCurrentRow(1);
    list.SetSelected(3, true);
    list.SetMarked(2, true);
    const auto id = list.Row(2).id;
    list.Arrange({3, 1, 2});
    EXPECT_EQ(Names(list), "c a b ");
    EXPECT_EQ(list.CurrentRow(), 2U);
    EXPECT_TRUE(list.Row(1).selected);
    EXPECT_TRUE(list.Row(3).marked);
    EXPECT_EQ(list.Row(3).id, id);
}

TEST(ListView, MarksAreNoContentAndNoSelection) {
    ListView list = ThreeColumns({"a", "b"});
    const auto content = list.ContentRevision();
    const auto selection = list.SelectionRevision();
    list.SetMarked(2, true);
    EXPECT_TRUE(list.Row(2).marked);
    list.ClearMarks();
    EXPECT_FALSE(list.Row(2).marked);
    EXPECT_EQ(list.ContentRevision(), content);
    EXPECT_EQ(list.SelectionRevision(), selection);
    EXPECT_EQ(ErrorOf([&] { list.SetMarked(3, true); }), 35600);
}

TEST(ListView, WhereRowsComeFromGoesWithThem) {
    ListView list = ThreeColumns({"a"});
    EXPECT_EQ(list.SourceNames(), nullptr);
    list.SetSourceNames(controls::NameSet{"a", "b"});
    ASSERT_NE(list.SourceNames(), nullptr);
    const auto kept = list.SourceNames();
    list.SetSourceNames(controls::NameSet{"b", "a"});
    EXPECT_EQ(list.SourceNames(), kept) << "the same names are kept once";
    list.Clear();
    EXPECT_EQ(list.SourceNames(), nullptr);
}

TEST(ListView, RowsAreFoundByIdAndByTheFirstOfTheirName) {
    ListView list = ThreeColumns({"a", "b", "b"});
    const auto id = list.Row(3).id;
    EXPECT_EQ(list.RowWithId(id), 3U);
    EXPECT_EQ(list.RowWithText("b"), 2U);
    EXPECT_EQ(list.RowWithText("B"), std::nullopt);
    list.Remove(1);
    EXPECT_EQ(list.RowWithId(id), 2U);
    list.Clear();
    list.Add("x");
    EXPECT_EQ(list.RowWithId(id), std::nullopt);
}

TEST(ListView, SelectionGoesOutAsTabSeparatedLines) {
    ListView list = ThreeColumns({"Hřídel", "b", "c\td"});
    list.SetSubItem(1, 2, "20x40");
    list.SetSubItem(3, 1, "5\"");
    list.SetSelected(1, true);
    list.SetSelected(3, true);
    EXPECT_EQ(list.SelectionAsText(), "Hřídel\t\t20x40\r\n\"c\td\"\t\"5\"\"\"\t\r\n");
}

TEST(ListView, AColumnWithoutACaptionDoesNotGoOut) {
    ListView list({"Catia", "Přejmenovaní", ""});
    list.Add("A");
    list.SetSubItem(1, 1, "2.Kolo");
    list.SetSubItem(1, 2, "0001");
    list.SelectAll();
    EXPECT_EQ(list.SelectionAsText(), "A\t2.Kolo\r\n");
}

TEST(ListView, TheTipGoesWithTheRows) {
    ListView list = ThreeColumns({"a"});
    list.SetToolTip("A0001");
    list.Clear();
    EXPECT_EQ(list.ToolTip(), "");
}

TEST(ListView, AnEmptySelectionGoesOutAsNothing) {
    EXPECT_EQ(ThreeColumns({"a"}).SelectionAsText(), "");
}

TEST(ListView, AllRowsGoOutBelowTheirHeadings) {
    ListView list({"Jmeno", "Poz.", ""});
    list.Add("Hřídel");
    list.SetSubItem(1, 1, "0001");
    list.SetSubItem(1, 2, "hidden");
    list.Add("a\nb");
    EXPECT_EQ(list.TableAsText(), "Jmeno\tPoz.\r\nHřídel\t0001\r\n\"a\nb\"\t\r\n");
}

TEST(ListView, ACellIsTheRowsOwnTextOrASubItem) {
    ListView list = ThreeColumns({"a", "b"});
    list.SetTextOf({2, 0}, "c");
    list.SetTextOf({1, 2}, "d");
    EXPECT_EQ(list.TextOf({2, 0}), "c");
    EXPECT_EQ(list.TextOf({1, 2}), "d");
    EXPECT_EQ(list.TextOf({1, 1}), "");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(list.TextOf({3, 0})); }), 35600);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(list.TextOf({1, 3})); }), 380);
}

TEST(ListView, TheCellCursorStandsInTheCurrentRow) {
    ListView list = ThreeColumns({"a", "b"});
    EXPECT_EQ(list.CurrentCell(), std::nullopt);
    list.SetCurrentColumn(2);
    EXPECT_EQ(list.CurrentCell(), std::nullopt);
    list.SetCurrentRow(2);
    EXPECT_EQ(list.CurrentCell(), (controls::Cell{2, 2}));
    EXPECT_EQ(ErrorOf([&] { list.SetCurrentColumn(3); }), 380);
    list.Clear();
    EXPECT_EQ(list.CurrentCell(), std::nullopt);
    EXPECT_EQ(list.CurrentColumn(), 2U) << "whoever fills a column goes on in it";
}

TEST(ListView, GoingToACellSelectsItsRowAloneUnlessItIsSelected) {
    ListView list = ThreeColumns({"a", "b", "c"});
    list.SetSelected(1, true);
    list.SetSelected(2, true);
    list.GoTo({2, 1});
    EXPECT_EQ(list.CurrentCell(), (controls::Cell{2, 1}));
    EXPECT_TRUE(list.Row(1).selected);
    EXPECT_EQ(list.TakeRowToShow(), 2U);
    list.GoTo({3, 2});
    EXPECT_EQ(list.CurrentCell(), (controls::Cell{3, 2}));
    EXPECT_FALSE(list.Row(1).selected);
    EXPECT_FALSE(list.Row(2).selected);
    EXPECT_TRUE(list.Row(3).selected);
    EXPECT_EQ(ErrorOf([&] { list.GoTo({4, 0}); }), 35600);
}

TEST(ListView, StepsLeadFromCellToCell) {
    using controls::Cell;
    using controls::CellStep;
    const ListView list = ThreeColumns({"a", "b"});
    const auto none = std::optional<Cell>();
    EXPECT_EQ(list.CellBeside({1, 1}, CellStep::kLeft), (Cell{1, 0}));
    EXPECT_EQ(list.CellBeside({2, 0}, CellStep::kLeft), none);
    EXPECT_EQ(list.CellBeside({1, 1}, CellStep::kRight), (Cell{1, 2}));
    EXPECT_EQ(list.CellBeside({1, 2}, CellStep::kRight), none);
    EXPECT_EQ(list.CellBeside({1, 2}, CellStep::kBelow), (Cell{2, 2}));
    EXPECT_EQ(list.CellBeside({2, 2}, CellStep::kBelow), none);
    EXPECT_EQ(list.CellBeside({1, 1}, CellStep::kNext), (Cell{1, 2}));
    EXPECT_EQ(list.CellBeside({1, 2}, CellStep::kNext), (Cell{2, 0}));
    EXPECT_EQ(list.CellBeside({2, 2}, CellStep::kNext), none);
    EXPECT_EQ(list.CellBeside({1, 1}, CellStep::kPrevious), (Cell{1, 0}));
    EXPECT_EQ(list.CellBeside({2, 0}, CellStep::kPrevious), (Cell{1, 2}));
    EXPECT_EQ(list.CellBeside({1, 0}, CellStep::kPrevious), none);
}

TEST(ListView, ANameIsRenamedAndEveryOtherCellEdited) {
    ListView list = ThreeColumns({"a"});
    std::string raised;
    list.Rename = [&](std::uint64_t id, const std::string& text) {
        raised += std::to_string(id) + text;
    };
    list.CellEdit = [&](const controls::TypedCell& typed) {
        raised += std::to_string(typed.column) + typed.text + (typed.for_selected_rows ? "!" : "");
    };
    list.UserEdit({1, 0, "x", false});
    list.UserEdit({1, 0, "y", true});
    list.UserEdit({1, 2, "z", true});
    EXPECT_EQ(raised, "1x1y2z!");
}

TEST(ListView, TheFocusIsWantedOnce) {
    ListView list = ThreeColumns({"a"});
    EXPECT_FALSE(list.TakeWantsFocus());
    list.WantFocus();
    EXPECT_TRUE(list.TakeWantsFocus());
    EXPECT_FALSE(list.TakeWantsFocus());
}

} // namespace
