#include "automation/value.hpp"

#include <gtest/gtest.h>

#include "automation/object.hpp"
#include "tests/support/error_of.hpp"

namespace {

using automation::Value;
using testing_support::ErrorOf;

TEST(Value, KeepsTheKindThatItWasMadeOf) {
    EXPECT_TRUE(Value().Is<std::monostate>());
    EXPECT_TRUE(Value(true).Is<bool>());
    EXPECT_TRUE(Value(1).Is<std::int32_t>());
    EXPECT_TRUE(Value(1.0).Is<double>());
    EXPECT_TRUE(Value("1").Is<std::string>());
}

TEST(Value, NumbersConvertIntoOneAnother) {
    EXPECT_EQ(Value(3).AsReal(), 3.0);
    EXPECT_EQ(Value(3.0).AsInteger(), 3);
    EXPECT_EQ(Value(2.5).AsInteger(), 2);
}

TEST(Value, OtherDifferencesAreATypeMismatch) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Value("3").AsInteger()); }), 13);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Value(3).AsText()); }), 13);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Value().AsReal()); }), 13);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Value(3e9).AsInteger()); }), 13);
}

TEST(Value, WhatIsNoObjectIsAnObjectRequired) {
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Value(3).AsObject()); }), 424);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Value(automation::ObjectPtr()).AsObject()); }), 424);
}

} // namespace
