#include "tables/configuration_merge.hpp"

#include <gtest/gtest.h>

#include "controls/form1.hpp"
#include "tables/configuration.hpp"

namespace {

using tables::MergeConfiguration;
using LeftOut = std::vector<std::string>;

// As "Parametry" writes it of a table with two columns.
constexpr const char* kLayout =
    "/tlouska_cary =3\r\n/fontname;Arial (TrueType)\r\n/fontsize;2.5\r\n"
    "/text;Pozice\r\n/sloupcu;2\r\n/radek;9\r\n/sirka;10;20.5\r\n"
    "/vyska1;5\r\n/vyska2;7\r\n/hlavicka;Pozice;two\nlines\r\n"
    "/pozice;30;-40.5\r\n/AnchorPoint;2\r\n";

std::string Merged(const std::string& configuration, const std::string& layout) {
    return MergeConfiguration(configuration, layout).text;
}

TEST(MergeConfiguration, TheDefaultTakesEveryLineInItsPlace) {
    const auto merged = MergeConfiguration(controls::kDefaultConfiguration, kLayout);
    EXPECT_EQ(merged.text, "/tlouska_cary;3\r\n"
                           "/pozice;30;-40.5\r\n"
                           "/razeni;1;0;2;5;4;6;3\r\n"
                           "/sirka;10;20.5\r\n"
                           "/vyska1;5\r\n"
                           "/vyska2;7\r\n"
                           "/hlavicka;Pozice;two\nlines\r\n"
                           "/volny;5\r\n"
                           "/fontname;Arial (TrueType)\r\n"
                           "/fontsize1;2.5\r\n"
                           "/fontsize2;2.5\r\n"
                           "/sirka1;13.88;43.67;15.76;37.51;34.61;44.6;14.68\r\n"
                           "/AnchorPoint;2\r\n");
    EXPECT_EQ(merged.lines, 10U);
    EXPECT_EQ(merged.left_out, LeftOut());
    // What table creation makes of it is what was read.
    const auto read = tables::ParseConfiguration(merged.text, "/sirka");
    EXPECT_EQ(read.x, 30);
    EXPECT_EQ(read.y, -40.5);
    EXPECT_EQ(read.widths[1], "20.5");
    EXPECT_EQ(read.headers[1], "two\nlines");
    EXPECT_EQ(read.font_name, "Arial (TrueType)");
    EXPECT_EQ(read.header_font_size, 2.5);
    EXPECT_EQ(read.body_font_size, 2.5);
    EXPECT_EQ(read.line_thickness, 3);
    EXPECT_EQ(read.anchor_point, 2);
    EXPECT_EQ(Merged(merged.text, kLayout), merged.text) << "once more changes nothing";
}

TEST(MergeConfiguration, TheLastLineThatCountsIsReplaced) {
    EXPECT_EQ(Merged("/vyska1;1\r\n/vyska1;2\r\n/vyska1\r\n-/vyska1;3\r\n /vyska1;4\r\n"
                     "/VYSKA1;5\r\n/vyska11;6\r\n",
                     "/vyska1;9"),
              "/vyska1;1\r\n/vyska1;9\r\n/vyska1\r\n-/vyska1;3\r\n /vyska1;4\r\n"
              "/VYSKA1;5\r\n/vyska11;6\r\n");
}

TEST(MergeConfiguration, WithoutANamesakeTheLineIsAppended) {
    EXPECT_EQ(Merged("", "/vyska1;9"), "/vyska1;9\r\n");
    EXPECT_EQ(Merged("note", "/vyska1;9"), "note\r\n/vyska1;9\r\n");
    EXPECT_EQ(Merged("note\r\n", "/vyska1;9"), "note\r\n/vyska1;9\r\n");
    EXPECT_EQ(Merged("note\r\n\r\n", "/vyska1;9\r\n/vyska2;8"),
              "note\r\n\r\n/vyska1;9\r\n/vyska2;8\r\n");
    EXPECT_EQ(Merged("-/AnchorPoint;4\r\n", "/AnchorPoint;2"),
              "-/AnchorPoint;4\r\n/AnchorPoint;2\r\n");
}

TEST(MergeConfiguration, ASwitchedOffFontNameGivesItsPlace) {
    EXPECT_EQ(Merged("-/fontname;a\r\n-/fontname;b\r\nend\r\n", "/fontname;Arial"),
              "-/fontname;a\r\n/fontname;Arial\r\nend\r\n");
    EXPECT_EQ(Merged("/fontname;a\r\n-/fontname;b\r\n", "/fontname;Arial"),
              "/fontname;Arial\r\n-/fontname;b\r\n");
    EXPECT_EQ(Merged("-/fontname;a\r\n", "/fontname;"), "-/fontname;a\r\n")
        << "no name says nothing";
}

TEST(MergeConfiguration, TheFontSizeIsThatOfAllRows) {
    EXPECT_EQ(Merged("/fontsize2;3\r\n/fontsize;4\r\n", "/fontsize;2.5\r\n"),
              "/fontsize2;2.5\r\n/fontsize;4\r\n/fontsize1;2.5\r\n");
}

TEST(MergeConfiguration, TheLineWidthGetsItsKey) {
    EXPECT_EQ(Merged("/tlouska_cary;2 \r\n", "/tlouska_cary =12\r\n"), "/tlouska_cary;12\r\n");
    EXPECT_EQ(Merged("/tlouska_cary =7\r\n", "/tlouska_cary =12\r\n"),
              "/tlouska_cary =7\r\n/tlouska_cary;12\r\n");
}

TEST(MergeConfiguration, LinesThatTableCreationDoesNotReadAreNotTaken) {
    const auto merged = MergeConfiguration(
        "/volny;5", "/text;x\r\n/sloupcu;7\r\n/radek;3\r\n/sirka\r\n\r\nnote;1\r\n-/sirka;1;2");
    EXPECT_EQ(merged.text, "/volny;5");
    EXPECT_EQ(merged.lines, 0U);
    EXPECT_EQ(merged.left_out, LeftOut());
}

TEST(MergeConfiguration, LinesWrittenByHandAreTakenToo) {
    EXPECT_EQ(Merged("/razeni;1;0\r\n/volny;5\r\n/sirka1;1\r\n",
                     "/volny;2\r\n/sirka1;8;9\r\n/razeni;0;1\r\n"),
              "/razeni;0;1\r\n/volny;2\r\n/sirka1;8;9\r\n");
}

TEST(MergeConfiguration, LinesOfMoreThanTenValuesAreLeftOut) {
    const std::string ten = "1;2;3;4;5;6;7;8;9;10";
    const auto merged = MergeConfiguration("/sirka;5\r\n", "/sirka;" + ten + ";11\r\n/hlavicka;" +
                                                               ten + ";11;12\r\n/vyska1;4\r\n");
    EXPECT_EQ(merged.text, "/sirka;5\r\n/vyska1;4\r\n");
    EXPECT_EQ(merged.left_out, (LeftOut{"/sirka (11 hodnot)", "/hlavicka (12 hodnot)"}));
    EXPECT_EQ(Merged("", "/sirka;" + ten), "/sirka;" + ten + "\r\n");
    EXPECT_EQ(MergeConfiguration("", "/pozice;5\r\n").left_out, (LeftOut{"/pozice (bez Y)"}));
    EXPECT_NO_THROW(tables::ParseConfiguration(merged.text, "/sirka"));
}

TEST(MergeConfiguration, EverythingElseStaysToTheLetter) {
    for (const char* text : {"", "\r\n", "\n\n", "a\nb;c\r\n\r\n", ";;\r\n-/x;1", "\r", "/sirka"}) {
        EXPECT_EQ(Merged(text, ""), text);
        EXPECT_EQ(Merged(std::string("/vyska1;1\r\n") + text, "/vyska1;1"),
                  std::string("/vyska1;1\r\n") + text);
    }
}

} // namespace
