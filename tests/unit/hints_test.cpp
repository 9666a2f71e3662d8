// The hints on the configuration text.

#include "tables/hints.hpp"

#include <gtest/gtest.h>

#include "controls/form1.hpp"

namespace {

using tables::Hint;
using tables::HintsFor;

// The only hint of a text.
Hint HintOf(const std::string& configuration) {
    const auto hints = HintsFor(configuration);
    EXPECT_EQ(hints.size(), 1U) << configuration;
    return hints.empty() ? Hint{} : hints.front();
}

std::string PlaceOf(const std::string& configuration) {
    const Hint hint = HintOf(configuration);
    return configuration.substr(hint.offset, hint.length);
}

std::string PutRight(std::string configuration) {
    const Hint hint = HintOf(configuration);
    return hint.replacement ? configuration.replace(hint.offset, hint.length, *hint.replacement)
                            : "";
}

TEST(Hints, ThereAreNoneForWhatIsRight) {
    for (const std::string& right :
         {std::string(), std::string(controls::kDefaultConfiguration),
          std::string("-/sirka;13,88\r\n-nic;;;\r\n\r\n   \r\n"),
          std::string("/sirka;0;1e1; 5 ;.5;7;8;9;x;y;z\r\n/hlavicka;a,b;;;1,5\r\n"),
          std::string("/razeni;;0;6\r\n/AnchorPoint;8\r\n/AnchorPoint;0\r\n/tlouska_cary;63\r\n"),
          std::string("/fontname;\r\n/pozice;-5;-3.5;poznámka\r\n/volny;0")}) {
        EXPECT_TRUE(HintsFor(right).empty()) << right;
    }
}

TEST(Hints, ADecimalCommaIsPutRight) {
    const std::string text = "/vyska1;4.9\r\n/sirka;13.88;43,67;15.76\r\n";
    const Hint hint = HintOf(text);
    EXPECT_EQ(hint.line, 2U);
    EXPECT_EQ(PlaceOf(text), "43,67");
    EXPECT_EQ(hint.sentence, "Desetinná čárka v „43,67“: má to být tečka.");
    EXPECT_EQ(PutRight(text), "/vyska1;4.9\r\n/sirka;13.88;43.67;15.76\r\n");
    EXPECT_TRUE(HintsFor(PutRight(text)).empty());
    for (const char* line : {"/vyska1;4,9", "/vyska2;6,8", "/sirka1;1;2,5", "/volny;1,0",
                             "/fontsize1;2,5", "/fontsize2;3,5", "/tlouska_cary;2,0",
                             "/AnchorPoint;1,0", "/pozice;1;2,5", "/pozice;1,5;2"}) {
        EXPECT_TRUE(HintsFor(PutRight(line)).empty()) << line;
    }
}

TEST(Hints, EveryCommaOfALineHasItsOwn) {
    const auto hints = HintsFor("/sirka;13,88;43,67;15,76");
    ASSERT_EQ(hints.size(), 3U);
    EXPECT_EQ(hints[0].offset, 7U);
    EXPECT_EQ(hints[1].offset, 13U);
    EXPECT_EQ(hints[2].offset, 19U);
    EXPECT_EQ(hints[2].replacement, "15.76");
}

TEST(Hints, CommasBetweenValuesAreNotPutRight) {
    for (const char* line : {"/sirka;13,88,43", "/sirka;,5", "/sirka;5,", "/sirka;1,5.5"}) {
        EXPECT_FALSE(HintOf(line).replacement) << line;
        EXPECT_NE(HintOf(line).sentence.find("středník"), std::string::npos) << line;
    }
}

TEST(Hints, ALineWithMoreThanTenValues) {
    for (const char* key : {"/razeni", "/sirka", "/sirka1", "/hlavicka"}) {
        const std::string text = std::string(key) + ";1;2;3;4;5;6;0;8;9;10;11;12";
        EXPECT_EQ(PlaceOf(text), "11;12");
        EXPECT_EQ(HintOf(text).sentence, "Řádek má 12 hodnot, nejvýš je 10; tabulka by nevznikla.");
    }
}

TEST(Hints, APositionWithoutY) {
    EXPECT_EQ(PlaceOf("/pozice;100"), "100");
    EXPECT_FALSE(HintOf("/pozice;100").replacement);
    EXPECT_EQ(PutRight("/pozice;100,50"), "/pozice;100;50");
    EXPECT_EQ(HintOf("/pozice;").length, 0U);
    EXPECT_EQ(HintOf("/pozice;").offset, 8U);
}

TEST(Hints, AKeyThatIsNoneIsNamedWithTheOneThatWasMeant) {
    struct Key {
        const char* written;
        const char* meant;
    };
    for (const Key& key :
         {Key{"/Pozice", "/pozice"}, Key{"/pozise", "/pozice"}, Key{"pozice", "/pozice"},
          Key{"/sirky", "/sirka"}, Key{" /volny", "/volny"}, Key{"/anchorpoint", "/AnchorPoint"},
          Key{"/fontsize", "/fontsize1"}, Key{"/hlavička", "/hlavicka"},
          Key{"/tloustka_cary", "/tlouska_cary"}}) {
        const std::string text = "\r\n" + std::string(key.written) + ";1;2";
        EXPECT_EQ(PlaceOf(text), key.written);
        EXPECT_EQ(HintOf(text).line, 2U);
        EXPECT_EQ(HintOf(text).replacement, key.meant);
        EXPECT_EQ(HintOf(text).sentence, "Řádek se nepoužije: klíč „" + std::string(key.written) +
                                             "“ není, snad „" + key.meant + "“.");
    }
    for (const char* none : {"/radek;9", "/text;ahoj", "poznámka", "/sloupcu;7", ";1"}) {
        EXPECT_FALSE(HintOf(none).replacement) << none;
        EXPECT_TRUE(HintOf(none).sentence.starts_with("Řádek se nepoužije")) << none;
    }
    EXPECT_TRUE(HintOf("/sirka").sentence.starts_with("Řádek se nepoužije"));
}

TEST(Hints, AValueThatIsNoNumberWhereOneIsNeeded) {
    for (const char* key : {"/sirka", "/sirka1", "/vyska1", "/vyska2", "/volny", "/fontsize1",
                            "/fontsize2", "/tlouska_cary", "/AnchorPoint", "/razeni"}) {
        const std::string text = std::string(key) + ";2x";
        EXPECT_EQ(PlaceOf(text), "2x");
        EXPECT_EQ(HintOf(text).sentence, "„2x“ není číslo.");
    }
    EXPECT_EQ(PlaceOf("/pozice;1;dole"), "dole");
    EXPECT_EQ(HintOf("/vyska1;").sentence, "Chybí číslo.");
}

TEST(Hints, ValuesOutOfRange) {
    for (const char* line :
         {"/sirka;5;-1", "/sirka1;-0.5", "/vyska1;-4", "/vyska2;-1", "/fontsize1;-1",
          "/fontsize2;-3", "/volny;-1", "/razeni;7", "/razeni;1;-1", "/tlouska_cary;0",
          "/tlouska_cary;64", "/AnchorPoint;9", "/AnchorPoint;-1"}) {
        const std::string text = line;
        EXPECT_EQ(PlaceOf(text), text.substr(text.rfind(';') + 1));
        EXPECT_FALSE(HintOf(text).replacement) << line;
    }
    EXPECT_EQ(HintOf("/razeni;7").sentence, "„7“: Sloupec seznamu není, platí 0 až 6.");
}

TEST(Hints, StandInTheOrderOfTheirPlaces) {
    const auto hints =
        HintsFor("/sirka;1;2,5;x;4;5;6;7;8;9;10;11\r\n/nic;1\r\nČáry;1\r\n/vyska1;1,5");
    ASSERT_EQ(hints.size(), 6U);
    for (std::size_t hint = 1; hint < hints.size(); ++hint) {
        EXPECT_LT(hints[hint - 1].offset, hints[hint].offset);
    }
    EXPECT_EQ(hints.back().line, 4U);
    EXPECT_EQ(hints.back().replacement, "1.5");
}

TEST(Hints, AreNoMoreThanCanBeRead) {
    std::string text;
    for (int line = 0; line < 1000; ++line) {
        text += "/nic;1\r\n/sirka;1,5;1,5;1,5\r\n";
    }
    const auto hints = HintsFor(text);
    ASSERT_EQ(hints.size(), tables::kMostHints);
    EXPECT_EQ(hints.back().line, tables::kMostHints / 2);
}

} // namespace
