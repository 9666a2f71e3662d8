#include "text/czech_order.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using OrderedNames = std::vector<std::string>;

// The names as a person looks for them, whatever order they come in.
void ExpectOrder(const OrderedNames& names) {
    std::mt19937 random(7);
    OrderedNames mixed = names;
    for (int time = 0; time < 5; ++time) {
        std::ranges::shuffle(mixed, random);
        std::ranges::stable_sort(mixed, {}, text::CzechOrderKey);
        EXPECT_EQ(mixed, names);
    }
}

TEST(CzechOrder, TakesNumbersInsideNamesByTheirValue) {
    ExpectOrder({"M6", "M8", "M10", "M10x20", "M10x100", "M100"});
    ExpectOrder({"Part 1-2", "Part 1-10", "Part 2-1", "Part 10"});
    ExpectOrder({"1", "2", "10", "A"});
}

TEST(CzechOrder, TakesNumbersLongerThanAnyThatCanBeReckonedWith) {
    const std::string nines(70, '9');
    ExpectOrder({"x18446744073709551615", "x18446744073709551616", "x" + nines, "x1" + nines});
}

TEST(CzechOrder, LeadingZerosChangeNothingButTheOrderOfEquals) {
    ExpectOrder({"M6", "M06", "M006", "M7", "M07"});
    ExpectOrder({"A0", "A00", "A1"});
    ExpectOrder({"M6 b", "M06 b", "M6 c"});
}

TEST(CzechOrder, HasTheLettersOfACzechDictionary) {
    ExpectOrder({"a", "b", "c", "č", "d", "e", "f", "g", "h", "ch", "i", "j", "k", "l", "m", "n",
                 "o", "p", "q", "r", "ř", "s", "š", "t", "u", "v",  "w", "x", "y", "z", "ž"});
    ExpectOrder({"Cihla", "Cyklon", "Čep", "Dno", "Hřídel", "Chladič", "Ihla"});
    ExpectOrder(
        {"Rám", "Rychloupínač", "Řemen", "Skříň", "Svorník", "Šroub", "Víko", "Zámek", "Žlab"});
}

TEST(CzechOrder, TakesChInEveryWriting) {
    ExpectOrder({"hz", "chata", "Chata", "CHATA", "ia"});
}

TEST(CzechOrder, AccentsCountWhereTheLettersAreAlike) {
    ExpectOrder({"pas", "pás", "pasa", "pása", "past"});
    ExpectOrder({"vada", "váda", "vadný"});
    ExpectOrder({"ďas", "dáse"}); // "das" before "dase", whatever stands on them
    ExpectOrder({"e", "é", "ě"});
    ExpectOrder({"u", "ú", "ů"});
}

TEST(CzechOrder, NumbersCountBeforeAccentsAndCapitals) {
    ExpectOrder({"Šroub M6", "šroub M8", "Šroub M10"});
    ExpectOrder({"Přiruba 9", "Příruba 10"});
}

TEST(CzechOrder, SmallLettersStandBeforeCapitalsWhereAllElseIsAlike) {
    ExpectOrder({"kolo", "Kolo", "KOLO", "koloa"});
}

TEST(CzechOrder, WhatIsShorterStandsFirst) {
    ExpectOrder({"", " ", "-", "1", "kolo", "kolo 1", "kolo-1", "kolo1", "koloa"});
}

TEST(CzechOrder, ReadsLettersOfTheNeighboursToo) {
    ExpectOrder({"Masa", "Maß", "Maßz", "Mast"});
    ExpectOrder({"l", "ĺ", "ľ", "ł", "m"});
    ExpectOrder({"z", "ж", "я"});
}

TEST(CzechOrder, TakesBytesThatAreNoTextInSomeOrder) {
    const OrderedNames broken{"a", "ž", "\x80", "\xC3", "\xC3(", "\xF0\x9F", "\xFF"};
    OrderedNames sorted = broken;
    std::ranges::sort(sorted, {}, text::CzechOrderKey);
    EXPECT_EQ(sorted.front(), "a");
    for (const std::string& name : broken) {
        EXPECT_EQ(std::ranges::count(sorted, name), 1) << name;
    }
}

TEST(CzechOrder, AnAccentBehindItsLetterCountsAsOne) {
    ExpectOrder({"pa", "pa\xCC\x81", "pb"});
}

TEST(CzechOrder, NamesThatDifferHaveDifferentKeys) {
    std::mt19937 random(3);
    const OrderedNames pieces{"a", "A", "á", "c", "h", "ch", "0", "1", "00", " ", "-", "č", "ж"};
    OrderedNames names;
    for (int name = 0; name < 3000; ++name) {
        std::string made;
        for (auto piece = random() % 6; piece > 0; --piece) {
            made += pieces[random() % pieces.size()];
        }
        names.push_back(made);
    }
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    OrderedNames keys(names.size());
    std::ranges::transform(names, keys.begin(), text::CzechOrderKey);
    std::ranges::sort(keys);
    EXPECT_EQ(std::ranges::adjacent_find(keys), keys.end());
}

} // namespace
