#include "tables/configuration.hpp"

#include <gtest/gtest.h>

#include "controls/form1.hpp"
#include "tests/support/error_of.hpp"

namespace {

using tables::Configuration;
using tables::Slots;

Configuration Parse(std::string_view text) {
    return tables::ParseConfiguration(text, "/sirka");
}

long ErrorOf(std::string_view text) {
    return testing_support::ErrorOf([text] { static_cast<void>(Parse(text)); });
}

TEST(Configuration, TheDefaultTextHasItsTwelveLines) {
    EXPECT_EQ(controls::kDefaultConfiguration,
              "/tlouska_cary;2 \r\n"
              "/pozice;100;100\r\n"
              "/razeni;1;0;2;5;4;6;3\r\n"
              "/sirka;13.88;43.67;15.76;37.51;34.61;31.53;14.68\r\n"
              "/vyska1;4.9\r\n"
              "/vyska2;6.8\r\n"
              "/hlavicka;Pozice;nazev;Kusu;Ciste rozmery;Material;Poznamka;List\r\n"
              "/volny;5\r\n"
              "-/fontname;Arial (TrueType)\r\n"
              "/fontsize1;2.5\r\n"
              "/fontsize2;3\r\n"
              "/sirka1;13.88;43.67;15.76;37.51;34.61;44.6;14.68\r\n");
}

TEST(Configuration, TheDefaultTextYieldsTheDefaultLayout) {
    const Configuration parsed = Parse(controls::kDefaultConfiguration);
    EXPECT_EQ(parsed.x, 100);
    EXPECT_EQ(parsed.y, 100);
    EXPECT_EQ(parsed.column_order, (Slots{"1", "0", "2", "5", "4", "6", "3"}));
    EXPECT_EQ(parsed.widths,
              (Slots{"13.88", "43.67", "15.76", "37.51", "34.61", "31.53", "14.68"}));
    EXPECT_EQ(parsed.headers,
              (Slots{"Pozice", "nazev", "Kusu", "Ciste rozmery", "Material", "Poznamka", "List"}));
    EXPECT_EQ(parsed.header_row_height, "4.9");
    EXPECT_EQ(parsed.body_row_height, "6.8");
    EXPECT_EQ(parsed.free_rows, 5);
    EXPECT_EQ(parsed.font_name, std::nullopt);
    EXPECT_EQ(parsed.header_font_size, 2.5);
    EXPECT_EQ(parsed.body_font_size, 3);
    EXPECT_EQ(parsed.line_thickness, 2);
    EXPECT_EQ(parsed.anchor_point, std::nullopt);
}

TEST(Configuration, TheSingleRowWidthsReplaceTheOthersUnderTheirOwnKey) {
    const Configuration parsed =
        tables::ParseConfiguration(controls::kDefaultConfiguration, "/sirka1");
    EXPECT_EQ(parsed.widths, (Slots{"13.88", "43.67", "15.76", "37.51", "34.61", "44.6", "14.68"}));
}

TEST(Configuration, AnEmptyTextYieldsNothing) {
    const Configuration parsed = Parse("");
    EXPECT_EQ(parsed.column_order, Slots{});
    EXPECT_EQ(parsed.line_thickness, std::nullopt);
    EXPECT_EQ(parsed.x, 0);
}

TEST(Configuration, AThicknessWithATrailingBlankIsRead) {
    EXPECT_EQ(Parse("/tlouska_cary;2 ").line_thickness, 2);
}

TEST(Configuration, AbsentValuesDifferFromZero) {
    EXPECT_EQ(Parse("/tlouska_cary;0\r\n/AnchorPoint;0\r\n/fontname;").line_thickness, 0);
    EXPECT_EQ(Parse("/tlouska_cary;0\r\n/AnchorPoint;0\r\n/fontname;").anchor_point, 0);
    EXPECT_EQ(Parse("/tlouska_cary;0\r\n/AnchorPoint;0\r\n/fontname;").font_name, "");
    EXPECT_EQ(Parse("/volny;5").anchor_point, std::nullopt);
}

TEST(Configuration, LinesSeparatedByLineFeedsOnlyAreOneLine) {
    const Configuration parsed = Parse("/vyska1;4.9\n/pozice;7;8");
    EXPECT_EQ(parsed.header_row_height, "4.9\n/pozice");
    EXPECT_EQ(parsed.x, 0);
    EXPECT_EQ(Parse("/hlavicka;a\n/vyska2;3").headers, (Slots{"a\n/vyska2", "3"}));
}

TEST(Configuration, ADisabledColumnOrderLeavesEverySlotEmpty) {
    EXPECT_EQ(Parse("-/razeni;1;0;2;5;4;6;3").column_order, Slots{});
}

TEST(Configuration, ASecondListLineOverwritesTheFirstSlotBySlot) {
    EXPECT_EQ(Parse("/sirka;1;2;3\r\n/sirka;9;8").widths, (Slots{"9", "8", "3"}));
}

TEST(Configuration, ALaterSingleValueOverwritesAnEarlierOne) {
    EXPECT_EQ(Parse("/vyska1;1\r\n/vyska1;2").header_row_height, "2");
}

TEST(Configuration, AKeyInOtherLetterCaseIsIgnored) {
    const Configuration parsed = Parse("/Pozice;7;8");
    EXPECT_EQ(parsed.x, 0);
    EXPECT_EQ(parsed.y, 0);
}

TEST(Configuration, KeysAreComparedWholeAndUntrimmed) {
    EXPECT_EQ(Parse("/sirka1;5").widths, Slots{});
    EXPECT_EQ(Parse("/fontsize;5").header_font_size, 0);
    EXPECT_EQ(Parse(" /vyska1;5").header_row_height, "");
    EXPECT_EQ(Parse("/vyska1 ;5").header_row_height, "");
}

TEST(Configuration, LinesWithoutAValueAreIgnored) {
    EXPECT_EQ(Parse("/pozice\r\n\r\n/tlouska_cary =2\r\n/vyska1").line_thickness, std::nullopt);
}

TEST(Configuration, TextValuesStayAsTheyAreWritten) {
    EXPECT_EQ(Parse("/vyska1; 4,9 mm").header_row_height, " 4,9 mm");
    EXPECT_EQ(Parse("/hlavicka;Poznámka ").headers, Slots{"Poznámka "});
}

TEST(Configuration, NumbersThatAreNoneAreZero) {
    EXPECT_EQ(Parse("/pozice;abc;12mm").x, 0);
    EXPECT_EQ(Parse("/pozice;abc;12mm").y, 12);
    EXPECT_EQ(Parse("/volny;inf").free_rows, 0);
}

TEST(Configuration, MoreThanTenListValuesAreOutOfRange) {
    EXPECT_EQ(Parse("/sirka;1;2;3;4;5;6;7;8;9;10").widths[9], "10");
    EXPECT_EQ(ErrorOf("/sirka;1;2;3;4;5;6;7;8;9;10;11"), 9);
    EXPECT_EQ(ErrorOf("/razeni;1;2;3;4;5;6;7;8;9;10;11"), 9);
    EXPECT_EQ(ErrorOf("/hlavicka;1;2;3;4;5;6;7;8;9;10;"), 9);
    EXPECT_EQ(ErrorOf("-/hlavicka;1;2;3;4;5;6;7;8;9;10;11"), 0);
}

TEST(Configuration, APositionWithoutYIsOutOfRange) {
    EXPECT_EQ(ErrorOf("/pozice;100"), 9);
    EXPECT_EQ(ErrorOf("/pozice;100;"), 0);
}

} // namespace
