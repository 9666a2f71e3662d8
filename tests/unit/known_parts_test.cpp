#include "partslist/known_parts.hpp"

#include <gtest/gtest.h>

namespace {

using partslist::FilledCell;
using partslist::KnownPart;
using partslist::KnownParts;
using partslist::Learn;

TEST(KnownParts, TheLastValueOfEachFieldWins) {
    KnownParts known;
    EXPECT_TRUE(Learn(known, {{"a", "S235", "20", ""}, {"b", "", "", "x"}}));
    EXPECT_TRUE(Learn(known, {{"a", "S355", "", "kalit"}}));
    EXPECT_EQ(known, (KnownParts{{"b", "", "", "x"}, {"a", "S355", "20", "kalit"}}));
}

TEST(KnownParts, OfANameThatComesTwiceTheLaterRowCounts) {
    KnownParts known;
    EXPECT_TRUE(Learn(known, {{"a", "S235", "", "n"}, {"b", "m"}, {"a", "S355", "7", ""}}));
    EXPECT_EQ(known, (KnownParts{{"a", "S355", "7", "n"}, {"b", "m"}}));
}

TEST(KnownParts, WhatSaysNothingIsNotLearned) {
    KnownParts known{{"a", "S235", "", ""}};
    EXPECT_FALSE(Learn(known, {{"a"}, {"b"}, {"", "m", "s", "n"}, {"c", " ", "", "  "}}));
    EXPECT_EQ(known, (KnownParts{{"a", "S235"}}));
    EXPECT_FALSE(Learn(known, {}));
}

TEST(KnownParts, WhatIsKnownAlreadyIsNoNews) {
    KnownParts known{{"a", "S235", "20", "x"}, {"b", "m"}};
    EXPECT_FALSE(Learn(known, {{"a", "S235", "", "x"}}));
    EXPECT_EQ(known.front().name, "a");
    EXPECT_TRUE(Learn(known, {{"a", "S235", "", "y"}}));
    EXPECT_EQ(known.front().name, "b");
}

TEST(KnownParts, NamesAreComparedExactly) {
    KnownParts known{{"Hřídel", "S235"}};
    EXPECT_TRUE(Learn(known, {{"hřídel", "S355"}}));
    EXPECT_EQ(known.size(), 2U);
}

TEST(KnownParts, OfTooManyTheOldestGo) {
    KnownParts known;
    std::vector<KnownPart> parts;
    for (std::size_t part = 0; part < partslist::kMostKnownParts; ++part) {
        parts.push_back({std::to_string(part), "m"});
    }
    EXPECT_TRUE(Learn(known, parts));
    EXPECT_EQ(known.size(), partslist::kMostKnownParts);
    EXPECT_TRUE(Learn(known, {{"0", "other"}, {"new", "m"}}));
    EXPECT_EQ(known.size(), partslist::kMostKnownParts);
    EXPECT_EQ(known.front().name, "2") << "1 is gone, 0 was seen again";
    EXPECT_EQ(known.back().name, "new");
    EXPECT_EQ(known[known.size() - 2], (KnownPart{"0", "other"}));
    for (std::size_t part = 0; part < 5; ++part) {
        parts.push_back({"more " + std::to_string(part), "m"});
    }
    known.clear();
    EXPECT_TRUE(Learn(known, parts));
    EXPECT_EQ(known.size(), partslist::kMostKnownParts);
    EXPECT_EQ(known.front().name, "5");
}

TEST(KnownParts, FillEmptyCellsOnly) {
    const KnownParts known{{"a", "S235", "20", ""}, {"b", "m", "s", "n"}};
    std::vector<controls::ListRow> rows(4);
    rows[0].text = "a";
    rows[1].text = "b";
    rows[1].sub_items = {"0002", "1", "2", "kept", "", " "};
    rows[2].text = "c";
    rows[3].text = "a";
    rows[3].sub_items = {"", "", "", "x", "y", "z"};
    EXPECT_EQ(partslist::KnownCells(known, rows),
              (std::vector<FilledCell>{{1, 4, "S235"}, {1, 5, "20"}, {2, 5, "s"}}));
    EXPECT_TRUE(partslist::KnownCells({}, rows).empty());
}

TEST(KnownParts, AFileHoldsAnyTextOfAField) {
    const KnownParts known{{"Hřídel", "11 600", "ø25\r\n\"x\"", "a\nb\rc\td\\n"},
                           {"a@@b@", "@@", "@", "\\"},
                           {"\t", " ", "\r\n", "\n"},
                           {std::string("nul\0", 4), std::string(100'000, 'w'), "", "ж"}};
    const auto read = partslist::ParseKnownParts(partslist::WriteKnownParts(known));
    EXPECT_EQ(read.parts.size(), known.size());
    EXPECT_FALSE(read.passed_over);
    // Blank values say nothing and are not kept.
    EXPECT_EQ(read.parts[0], known[0]);
    EXPECT_EQ(read.parts[1], known[1]);
    EXPECT_EQ(read.parts[2], (KnownPart{"\t", "", "\r\n", "\n"}));
    EXPECT_EQ(read.parts[3], known[3]);
}

TEST(KnownParts, ABrokenLineLosesNothingElse) {
    const auto read = partslist::ParseKnownParts("a\tm\t\t\r\nbroken\r\n\r\n\tm\ts\tn\r\n"
                                                 "too\tmany\tfields\tin\tit\r\nb\t\ts\t\r\nc\tm");
    EXPECT_EQ(read.parts, (KnownParts{{"a", "m"}, {"b", "", "s"}}));
    EXPECT_TRUE(read.passed_over);
    EXPECT_TRUE(partslist::ParseKnownParts("").parts.empty());
    EXPECT_FALSE(partslist::ParseKnownParts("").passed_over);
}

} // namespace
