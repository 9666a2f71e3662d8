#include "automation/number_texts.hpp"

#include <gtest/gtest.h>

namespace {

using automation::Array;
using automation::TextsAsNumbers;
using automation::Value;

constexpr automation::Member kSetColumnSize{"DrawingTable", "SetColumnSize"};

TEST(TextsAsNumbers, GivesTheNumberOfATextThatIsOneAsAWhole) {
    EXPECT_EQ(TextsAsNumbers(kSetColumnSize, {3, "13.88"}), (Array{3, 13.88}));
    EXPECT_EQ(TextsAsNumbers(kSetColumnSize, {100.0, 9, "6.8", 20}), (Array{100.0, 9, 6.8, 20}));
    EXPECT_EQ(TextsAsNumbers(kSetColumnSize, {" -2.5e1 "}), (Array{-25.0}));
    EXPECT_EQ(TextsAsNumbers(kSetColumnSize, {"4"}), (Array{4.0}))
        << "a double, though it is whole";
    EXPECT_EQ(TextsAsNumbers(kSetColumnSize, {"abc", "1", true}), (Array{"abc", 1.0, true}));
}

TEST(TextsAsNumbers, LeavesEverythingElse) {
    for (const char* none : {"", " ", "abc", "6.8 mm", "6,8", "1,234.5", "1e400", "nan", "0x10"}) {
        EXPECT_EQ(TextsAsNumbers(kSetColumnSize, {1, none}), std::nullopt) << none;
    }
    EXPECT_EQ(TextsAsNumbers(kSetColumnSize, {}), std::nullopt);
    EXPECT_EQ(TextsAsNumbers(kSetColumnSize, {1, 2.5, true, Value()}), std::nullopt);
}

TEST(TextsAsNumbers, AnElementsNameIsNoNumber) {
    EXPECT_EQ(TextsAsNumbers({"DrawingSheets", "Item"}, {"2"}), std::nullopt);
    EXPECT_EQ(TextsAsNumbers({"DrawingSheets", "item"}, {"2"}), std::nullopt);
}

} // namespace
