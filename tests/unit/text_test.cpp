#include "text/text.hpp"

#include <gtest/gtest.h>

namespace {

using Pieces = std::vector<std::string_view>;

TEST(Split, EmptyTextGivesOneEmptyPiece) {
    EXPECT_EQ(text::Split("", ";"), Pieces{""});
}

TEST(Split, KeepsEmptyPiecesBetweenAndAtTheEnds) {
    EXPECT_EQ(text::Split(";a;;b;", ";"), (Pieces{"", "a", "", "b", ""}));
}

TEST(Split, TakesASeparatorOfSeveralCharacters) {
    EXPECT_EQ(text::Split("a\r\nb\nc\r\n", "\r\n"), (Pieces{"a", "b\nc", ""}));
}

TEST(Escaped, HoldsEverythingInOneFieldOfALine) {
    EXPECT_EQ(text::Escaped("a\tb\r\nc\\n"), R"(a\tb\r\nc\\n)");
    for (const char* whole : {"", "\\", R"(\\)", "\t\n\r", R"(\t)", "Hřídel", R"(a\)"}) {
        EXPECT_EQ(text::Unescaped(text::Escaped(whole)), whole);
        EXPECT_EQ(text::Escaped(whole).find_first_of("\t\r\n"), std::string::npos);
    }
    EXPECT_EQ(text::Unescaped("a\\"), "a\\") << "one that nobody has escaped";
    EXPECT_EQ(text::Unescaped("\\x"), "x");
}

TEST(TrimBlanks, RemovesBlanksOnly) {
    EXPECT_EQ(text::TrimBlanks("  a b  "), "a b");
    EXPECT_EQ(text::TrimBlanks("\r\n a"), "\r\n a");
    EXPECT_EQ(text::TrimBlanks("   "), "");
    EXPECT_EQ(text::TrimBlanks(""), "");
}

TEST(FixedDecimal, HasAsManyDigitsAsWanted) {
    EXPECT_EQ(text::FixedDecimal(0.0444, 3), "0.044");
    EXPECT_EQ(text::FixedDecimal(12, 2), "12.00");
    EXPECT_EQ(text::FixedDecimal(-1.5, 0), "-2");
    EXPECT_EQ(text::FixedDecimal(1e300, 2).size(), 304U);
}

TEST(ProgramOf, TakesWhatStandsBetweenQuotes) {
    EXPECT_EQ(text::ProgramOf("\"C:\\A b\\CNEXT.exe\" -Embedding"), "C:\\A b\\CNEXT.exe");
    EXPECT_EQ(text::ProgramOf("  \"C:\\never closed"), "C:\\never closed");
}

TEST(ProgramOf, TakesBlanksUpToTheExtension) {
    EXPECT_EQ(text::ProgramOf("C:\\A b\\CNEXT.EXE /automation"), "C:\\A b\\CNEXT.EXE");
    EXPECT_EQ(text::ProgramOf("C:\\A b\\server /automation"), "C:\\A b\\server /automation");
    EXPECT_EQ(text::ProgramOf(""), "");
}

TEST(HasArgument, LooksBehindTheProgramForAWholeWord) {
    EXPECT_TRUE(text::HasArgument("\"C:\\A b\\Dorvak.exe\" --zkouska", "--zkouska"));
    EXPECT_TRUE(text::HasArgument("Dorvak --pace 5  --zkouska ", "--zkouska"));
    EXPECT_TRUE(text::HasArgument("Dorvak \"--zkouska\"", "--zkouska"));
    EXPECT_FALSE(text::HasArgument("Dorvak", "--zkouska"));
    EXPECT_FALSE(text::HasArgument("--zkouska", "--zkouska"));
    EXPECT_FALSE(text::HasArgument("Dorvak --zkouska2 x--zkouska", "--zkouska"));
    EXPECT_FALSE(text::HasArgument("", "--zkouska"));
}

TEST(HasArgument, TakesNoPartOfAQuotedPath) {
    EXPECT_FALSE(text::HasArgument("\"C:\\A --zkouska b\\Dorvak.exe\" x", "--zkouska"));
    EXPECT_FALSE(text::HasArgument("Dorvak \"C:\\A --zkouska b.txt\"", "--zkouska"));
}

TEST(LeadingNumber, ReadsSignDigitsFractionAndExponent) {
    EXPECT_EQ(text::LeadingNumber("12"), 12);
    EXPECT_EQ(text::LeadingNumber("-12.5"), -12.5);
    EXPECT_EQ(text::LeadingNumber("+3"), 3);
    EXPECT_EQ(text::LeadingNumber("1.5e2"), 150);
    EXPECT_EQ(text::LeadingNumber("2E-1"), 0.2);
    EXPECT_EQ(text::LeadingNumber("5."), 5);
}

TEST(LeadingNumber, SkipsLeadingBlanksAndIgnoresWhatFollows) {
    EXPECT_EQ(text::LeadingNumber("  7"), 7);
    EXPECT_EQ(text::LeadingNumber("2 "), 2);
    EXPECT_EQ(text::LeadingNumber("12a"), 12);
    EXPECT_EQ(text::LeadingNumber("12,5"), 12);
    EXPECT_EQ(text::LeadingNumber("1e"), 1);
    EXPECT_EQ(text::LeadingNumber("1.2.3"), 1.2);
}

TEST(LeadingNumber, IsZeroWithoutANumber) {
    for (const char* none :
         {"", " ", "abc", "a1", "-", "+", ".", "-.", "e5", ",5", "--1", "+-1", "\t7", "Hřídel"}) {
        EXPECT_EQ(text::LeadingNumber(none), 0) << '"' << none << '"';
    }
}

TEST(LeadingNumber, TakesNoInfinityNanOrHexadecimal) {
    for (const char* none : {"inf", "INF", "-inf", "infinity", "nan", "NaN", "nan(1)"}) {
        EXPECT_EQ(text::LeadingNumber(none), 0) << none;
    }
    EXPECT_EQ(text::LeadingNumber("0x10"), 0);
    EXPECT_EQ(text::LeadingNumber("1x"), 1);
}

TEST(LeadingNumber, IsZeroBeyondWhatADoubleHolds) {
    EXPECT_EQ(text::LeadingNumber("1e999"), 0);
    EXPECT_EQ(text::LeadingNumber("-1e999"), 0);
}

TEST(Number, TakesOnlyAWholeText) {
    EXPECT_EQ(text::Number("0"), 0.0);
    EXPECT_EQ(text::Number(" 12.5 "), 12.5);
    EXPECT_EQ(text::Number("12a"), std::nullopt);
    EXPECT_EQ(text::Number("1 2"), std::nullopt);
    EXPECT_EQ(text::Number(""), std::nullopt);
    EXPECT_EQ(text::Number("nan"), std::nullopt);
}

TEST(FourDigits, HasAtLeastFourDigits) {
    EXPECT_EQ(text::FourDigits(0), "0000");
    EXPECT_EQ(text::FourDigits(1), "0001");
    EXPECT_EQ(text::FourDigits(12), "0012");
    EXPECT_EQ(text::FourDigits(9999), "9999");
    EXPECT_EQ(text::FourDigits(12345), "12345");
}

TEST(PlainDecimal, HasNoExponentAndNoTrailingZeros) {
    EXPECT_EQ(text::PlainDecimal(7), "7");
    EXPECT_EQ(text::PlainDecimal(100), "100");
    EXPECT_EQ(text::PlainDecimal(1.5), "1.5");
    EXPECT_EQ(text::PlainDecimal(13.88), "13.88");
    EXPECT_EQ(text::PlainDecimal(-2), "-2");
    EXPECT_EQ(text::PlainDecimal(-0.0), "0");
    EXPECT_EQ(text::PlainDecimal(1e21), "1000000000000000000000");
    EXPECT_EQ(text::PlainDecimal(1e-7), "0.0000001");
    EXPECT_EQ(text::PlainDecimal(1.7976931348623157e308).size(), 309U);
}

TEST(ContainsIgnoringCase, FoldsAsciiLettersOnly) {
    EXPECT_TRUE(text::ContainsIgnoringCase("Skříň.catdrawing", ".CATDrawing"));
    EXPECT_TRUE(text::ContainsIgnoringCase("a", ""));
    EXPECT_FALSE(text::ContainsIgnoringCase("", "a"));
    EXPECT_FALSE(text::ContainsIgnoringCase("x.CATPart", ".CATProduct"));
    EXPECT_FALSE(text::ContainsIgnoringCase("[", "{"));
}

TEST(StartsWithIgnoringCase, LooksAtTheBeginningOnly) {
    EXPECT_TRUE(text::StartsWithIgnoringCase("catia v5 - [a]", "CATIA V5"));
    EXPECT_FALSE(text::StartsWithIgnoringCase("My CATIA V5", "CATIA V5"));
    EXPECT_FALSE(text::StartsWithIgnoringCase("CATIA", "CATIA V5"));
}

TEST(PlainDecimal, SparesTheNoiseOfBinaryFractions) {
    EXPECT_EQ(text::PlainDecimal(1.3 + 1 - 1), "1.3");
    EXPECT_EQ(text::PlainDecimal(10.01 + 6), "16.01");
    EXPECT_EQ(text::PlainDecimal(13.879999999999999), "13.88");
    EXPECT_EQ(text::PlainDecimal(-0.000123), "-0.000123");
    EXPECT_EQ(text::PlainDecimal(1e20), "100000000000000000000");
    EXPECT_EQ(text::PlainDecimal(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(text::PlainDecimal(9999999999999999.0), "10000000000000000");
    EXPECT_EQ(text::PlainDecimal(0.1 + 0.2), "0.3");
}

TEST(Lines, ALoneLineFeedEndsALineOnlyInAFileWithoutPairs) {
    using Views = std::vector<std::string_view>;
    EXPECT_EQ(text::Lines("a\nb\r\nc\rd\r\r\n"), (Views{"a\nb", "c\rd\r"}));
    EXPECT_EQ(text::Lines("a\nb\n"), (Views{"a", "b"}));
    EXPECT_EQ(text::Lines("a\r\n\r\n"), (Views{"a", ""}));
    EXPECT_EQ(text::Lines(""), Views{});
}

TEST(WithLineFeeds, MakesOneOfEveryPairAndLeavesTheRest) {
    EXPECT_EQ(text::WithLineFeeds("a\r\nb\r\n"), "a\nb\n");
    EXPECT_EQ(text::WithLineFeeds("\r\n"), "\n");
    EXPECT_EQ(text::WithLineFeeds("a\rb\nc"), "a\rb\nc");
    EXPECT_EQ(text::WithLineFeeds(""), "");
}

TEST(WithLineFeeds, LeavesNoPairBehind) {
    EXPECT_EQ(text::WithLineFeeds("a\r\r\nb"), "a\nb");
    EXPECT_EQ(text::WithLineFeeds("\r\r\r\n\r\r\n"), "\n\n");
    EXPECT_EQ(text::WithLineFeeds("\r\ra\r\r"), "\r\ra\r\r");
}

TEST(WithSmallLetters, KnowsTheLettersOfCzechAndItsNeighbours) {
    EXPECT_EQ(text::WithSmallLetters("ABCXYZ abc 019 _[]@"), "abcxyz abc 019 _[]@");
    EXPECT_EQ(text::WithSmallLetters("PŘÍLIŠ ŽLUŤOUČKÝ KŮŇ ÚPĚL ĎÁBELSKÉ ÓDY"),
              "příliš žluťoučký kůň úpěl ďábelské ódy");
    EXPECT_EQ(text::WithSmallLetters("příliš žluťoučký kůň úpěl ďábelské ódy"),
              "příliš žluťoučký kůň úpěl ďábelské ódy");
    EXPECT_EQ(text::WithSmallLetters("ÄÖÜß ĽĹŔÔ ĄĆĘŁŃÓŚŹŻ ŐŰ Ÿ"), "äöüß ľĺŕô ąćęłńóśźż őű ÿ");
}

TEST(WithSmallLetters, LeavesEverythingElse) {
    EXPECT_EQ(text::WithSmallLetters("Ø20×5 ÷ € 漢 😀"), "ø20×5 ÷ € 漢 😀");
    EXPECT_EQ(text::WithSmallLetters(""), "");
    EXPECT_EQ(text::WithSmallLetters("a\xC5"), "a\xC5") << "half a letter at the end";
}

} // namespace
