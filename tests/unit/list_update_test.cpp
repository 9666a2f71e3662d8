// Bringing a list up to date, and the file of names that tells what is missing from what never was.
#include "partslist/list_update.hpp"

#include <gtest/gtest.h>

#include "partslist/tree_names.hpp"

namespace {

using controls::ListRow;
using controls::NameSet;
using partslist::UpdatedList;
using structure::CountedTree;

ListRow PresentRow(const std::string& name, const std::string& position,
                   const std::string& quantity) {
    ListRow row;
    row.text = name;
    row.sub_items = {position, quantity};
    return row;
}

// What becomes of the rows, each in a word: its quantity, "!" where it is marked, "*" where it is
// selected.
std::vector<std::string> Became(const partslist::ListUpdate& update) {
    std::vector<std::string> rows;
    for (const partslist::RowUpdate& row : update.rows) {
        rows.push_back(row.quantity + (row.marked ? "!" : "") + (row.selected ? "*" : ""));
    }
    return rows;
}

std::vector<std::string> Added(const partslist::ListUpdate& update) {
    std::vector<std::string> rows;
    for (const partslist::NewRow& row : update.added) {
        rows.push_back(row.name + " " + row.position + " " + row.quantity);
    }
    return rows;
}

using Words = std::vector<std::string>;

TEST(UpdatedList, APartThatIsInBothGetsTheNewQuantityOnly) {
    const NameSet before{"a", "b"};
    const auto update = UpdatedList({.listed = {{"a", 3}, {"b", 1}}, .others = {}}, &before,
                                    {PresentRow("b", "0007", "1"), PresentRow("a", "0002", "2")});
    EXPECT_EQ(Became(update), (Words{"1", "3"}));
    EXPECT_EQ(update.changed, 1U);
    EXPECT_EQ(Added(update), Words{});
    EXPECT_EQ(update.missing, 0U);
}

TEST(UpdatedList, NewPartsComeAtTheEndAboveTheHighestPosition) {
    const NameSet before{"a"};
    const auto update = UpdatedList({.listed = {{"z", 2}, {"a", 1}, {"b", 5}}, .others = {}},
                                    &before, {PresentRow("a", "0041", "1")});
    EXPECT_EQ(Added(update), (Words{"z 0042 2", "b 0043 5"}));
    EXPECT_EQ(update.changed, 0U);
}

TEST(UpdatedList, FindsTheHighestOfPositionsThatAreNoPlainNumbers) {
    const NameSet before;
    const auto after = [&](const Words& positions) {
        std::vector<ListRow> rows;
        for (const std::string& position : positions) {
            rows.push_back(PresentRow("row " + position, position, "1"));
        }
        return UpdatedList({.listed = {{"new", 1}}, .others = {}}, &before, rows)
            .added.at(0)
            .position;
    };
    EXPECT_EQ(after({}), "0001");
    EXPECT_EQ(after({"", "x"}), "0001");
    EXPECT_EQ(after({"0002", "12a", "7"}), "0013");
    EXPECT_EQ(after({" 5", "-9"}), "0006");
    EXPECT_EQ(after({"9999"}), "10000");
    EXPECT_EQ(after({"3", "99999999999999999999"}), "0004");
}

TEST(UpdatedList, UncheckedPartsAreNotMissingAndNotNew) {
    const NameSet before{"a", "b"};
    const auto update = UpdatedList({.listed = {}, .others = {{"a", 4}, {"c", 1}}}, &before,
                                    {PresentRow("a", "0001", "1")});
    EXPECT_EQ(Became(update), Words{"4"});
    EXPECT_EQ(Added(update), Words{});
    EXPECT_EQ(update.missing, 0U);
}

TEST(UpdatedList, WhatWasInTheTreeAndIsNoMoreIsMarkedAndSelected) {
    const NameSet before{"a", "gone", "unchecked before"};
    const auto update = UpdatedList({.listed = {{"a", 1}}, .others = {}}, &before,
                                    {PresentRow("gone", "0001", "7"), PresentRow("a", "0002", "1"),
                                     PresentRow("by hand", "0003", "2"),
                                     PresentRow("unchecked before", "0004", "1")});
    EXPECT_EQ(Became(update), (Words{"7!*", "1", "2", "1!*"}));
    EXPECT_EQ(update.missing, 2U);
    EXPECT_EQ(update.changed, 0U);
}

TEST(UpdatedList, WithoutTheTreeOfBeforeAbsentRowsAreMarkedAlone) {
    const auto update =
        UpdatedList({.listed = {{"a", 1}}, .others = {}}, nullptr,
                    {PresentRow("gone", "0001", "7"), PresentRow("a", "0002", "2")});
    EXPECT_EQ(Became(update), (Words{"7!", "1"}));
    EXPECT_EQ(update.missing, 1U);
}

TEST(UpdatedList, ANameInSeveralRowsIsMarkedAndNotTouched) {
    const NameSet before{"a", "gone"};
    const auto update =
        UpdatedList({.listed = {{"a", 9}}, .others = {}}, &before,
                    {PresentRow("a", "0001", "1"), PresentRow("a", "0002", "2"),
                     PresentRow("gone", "0003", "1"), PresentRow("gone", "0004", "1"),
                     PresentRow("by hand", "0005", "1"), PresentRow("by hand", "0006", "1")});
    EXPECT_EQ(Became(update), (Words{"1!", "2!", "1!*", "1!*", "1", "1"}));
    EXPECT_EQ(update.ambiguous, 2U);
    EXPECT_EQ(update.missing, 2U);
    EXPECT_EQ(update.changed, 0U);
    EXPECT_EQ(Added(update), Words{});
}

TEST(UpdatedList, NamesAreComparedExactly) {
    const NameSet before{"x"};
    const auto update =
        UpdatedList({.listed = {{"X", 2}, {"x ", 3}, {"Hřídel", 1}}, .others = {}}, &before,
                    {PresentRow("x", "0001", "1"), PresentRow("hřídel", "0002", "1")});
    EXPECT_EQ(Became(update), (Words{"1!*", "1"}));
    EXPECT_EQ(update.added.size(), 3U);
}

TEST(UpdatedList, AQuantityThatIsWrittenOtherwiseIsAChange) {
    const NameSet before{"a", "b"};
    std::vector<ListRow> rows{PresentRow("a", "0001", "02"), PresentRow("b", "0002", "1")};
    rows[1].sub_items.clear(); // fields at the end may be absent
    const auto update = UpdatedList({.listed = {{"a", 2}, {"b", 1}}, .others = {}}, &before, rows);
    EXPECT_EQ(Became(update), (Words{"2", "1"}));
    EXPECT_EQ(update.changed, 2U);
}

TEST(UpdatedList, AnEmptyListGetsEverythingChecked) {
    const auto update =
        UpdatedList({.listed = {{"b", 1}, {"a", 2}}, .others = {{"c", 3}}}, nullptr, {});
    EXPECT_EQ(Added(update), (Words{"b 0001 1", "a 0002 2"}));
}

// The file of names

constexpr std::string_view kSavedList = "a@@False@@0001@@1@@@@@@@@\r\n";

TEST(TreeNames, ComeBackWhateverTheyHold) {
    for (const NameSet& names : {NameSet{}, NameSet{"a"}, NameSet{""},
                                 NameSet{"", "Hřídel", "a\tb", "a\nb\r", "\\", "\\n"},
                                 NameSet{"strom\t1", "a@@b", std::string("nul\0", 4)}}) {
        const std::string file = partslist::WriteTreeNames(names, kSavedList);
        EXPECT_EQ(partslist::ReadTreeNames(file, kSavedList), names);
    }
}

TEST(TreeNames, MeanNothingBesideAnotherList) {
    const std::string file = partslist::WriteTreeNames({"a", "b"}, kSavedList);
    EXPECT_EQ(partslist::ReadTreeNames(file, ""), std::nullopt);
    EXPECT_EQ(partslist::ReadTreeNames(file, "a@@False@@0001@@2@@@@@@@@\r\n"), std::nullopt);
}

TEST(TreeNames, ABrokenFileIsNone) {
    const std::string file = partslist::WriteTreeNames({"a", "b"}, kSavedList);
    for (std::size_t length = 0; length + 2 < file.size(); ++length) {
        EXPECT_EQ(partslist::ReadTreeNames(file.substr(0, length), kSavedList) ==
                      NameSet({"a", "b"}),
                  false)
            << length;
    }
    EXPECT_EQ(partslist::ReadTreeNames(file + "more\r\n", kSavedList), std::nullopt);
    EXPECT_EQ(partslist::ReadTreeNames("x" + file, kSavedList), std::nullopt);
    EXPECT_EQ(partslist::ReadTreeNames("a\r\nb\r\n", kSavedList), std::nullopt);
}

} // namespace
