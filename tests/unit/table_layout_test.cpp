// The table as the preview shows it: sizes, places, texts, and what does not fit.

#include "tables/layout.hpp"

#include <gtest/gtest.h>

#include "controls/form1.hpp"

namespace {

using tables::CellAt;
using tables::CharacterWidths;
using tables::Parts;
using tables::TableContent;
using tables::TableLayout;

// Letters as wide as half their height, "W" as wide as it is high.
std::shared_ptr<const CharacterWidths> HalfAsWide() {
    CharacterWidths widths;
    widths.widths.assign(0x250, 0.5F);
    widths.widths['W'] = 1;
    widths.other = 2;
    return std::make_shared<const CharacterWidths>(std::move(widths));
}

Parts PartsOf(std::vector<tables::PartTexts> rows) {
    for (tables::PartTexts& row : rows) {
        row.resize(7);
    }
    return {.rows = std::move(rows), .current = std::nullopt};
}

TableLayout LayOut(std::string_view configuration, Parts parts,
                   TableContent content = TableContent::kWholeList) {
    return tables::LayOutTable({.configuration = configuration,
                                .content = content,
                                .parts = std::make_shared<const Parts>(std::move(parts))},
                               HalfAsWide());
}

std::string Default(const std::string& more = {}) {
    return std::string(controls::kDefaultConfiguration) + more;
}

Parts ThreeParts() {
    return PartsOf({{"Hřídel", "0001", "2", "2", "S235", "D25x120", "kalit"},
                    {"Kolo", "0002", "1", "", "", "", ""},
                    {"Šroub M8", "0003", "12", "3", " ", "M8x25", "DIN 933"}});
}

std::vector<std::string> RowTextsOf(const TableLayout& layout, int row) {
    std::vector<std::string> texts;
    for (int column = 1; column <= 7; ++column) {
        texts.push_back(CellAt(layout, row, column).text);
    }
    return texts;
}

TEST(TableLayout, OfTheDefaultConfigurationHasItsSizesAndTexts) {
    const TableLayout layout = LayOut(Default(), ThreeParts());
    EXPECT_EQ(layout.trouble, "");
    EXPECT_EQ(layout.rows, 9);
    EXPECT_DOUBLE_EQ(layout.width, 13.88 + 43.67 + 15.76 + 37.51 + 34.61 + 31.53 + 14.68);
    EXPECT_DOUBLE_EQ(layout.height, 4.9 + 8 * 6.8);
    EXPECT_EQ(layout.anchor_point, 0);
    EXPECT_DOUBLE_EQ(layout.left, 100);
    EXPECT_DOUBLE_EQ(layout.top, 100);
    EXPECT_EQ(layout.font_face, "Arial");
    EXPECT_EQ(layout.line_thickness, 2);
    EXPECT_EQ(layout.rows_without_material, 2U);
    using Texts = std::vector<std::string>;
    EXPECT_EQ(RowTextsOf(layout, 1),
              (Texts{"Pozice", "nazev", "Kusu", "Ciste rozmery", "Material", "Poznamka", "List"}));
    for (int row = 2; row <= 6; ++row) {
        EXPECT_EQ(RowTextsOf(layout, row), Texts(7)) << row;
    }
    EXPECT_EQ(RowTextsOf(layout, 7), (Texts{"3", "Šroub M8", "12", "M8x25", " ", "DIN 933", "3"}));
    EXPECT_EQ(RowTextsOf(layout, 9), (Texts{"1", "Hřídel", "2", "D25x120", "S235", "kalit", "2"}));
}

TEST(TableLayout, CellsStandSideBySideAndRowsUnderOneAnother) {
    const TableLayout layout = LayOut(Default(), ThreeParts());
    const auto header = CellAt(layout, 1, 2);
    EXPECT_DOUBLE_EQ(header.box.left, 13.88);
    EXPECT_DOUBLE_EQ(header.box.right, 13.88 + 43.67);
    EXPECT_DOUBLE_EQ(header.box.top, 0);
    EXPECT_DOUBLE_EQ(header.box.bottom, 4.9);
    EXPECT_DOUBLE_EQ(header.font_size, 2.5);
    const auto last = CellAt(layout, 9, 7);
    EXPECT_DOUBLE_EQ(last.box.right, layout.width);
    EXPECT_DOUBLE_EQ(last.box.top, 4.9 + 7 * 6.8);
    EXPECT_DOUBLE_EQ(last.box.bottom, layout.height);
    EXPECT_DOUBLE_EQ(last.font_size, 3);
    EXPECT_EQ(tables::RowAtHeight(layout, -5), 1);
    EXPECT_EQ(tables::RowAtHeight(layout, 4.8), 1);
    EXPECT_EQ(tables::RowAtHeight(layout, 5), 2);
    EXPECT_EQ(tables::RowAtHeight(layout, 4.9 + 6.8 + 0.1), 3);
    EXPECT_EQ(tables::RowAtHeight(layout, 1e6), 9);
}

TEST(TableLayout, TheAnchorSaysWhichPointStandsOnThePosition) {
    const std::string configuration = "/pozice;10;20\r\n/vyska1;10\r\n/vyska2;10\r\n"
                                      "/sirka;1;2;3;4;5;6;7\r\n/fontsize1;1\r\n/fontsize2;1\r\n";
    // 28 wide, header and two rows 30 high.
    const Parts parts = PartsOf({{"a", "1"}, {"b", "2"}});
    struct Corner {
        double left;
        double top;
    };
    constexpr std::array<Corner, 9> kCorners{{{10, 20},
                                              {10, 35},
                                              {10, 50},
                                              {-4, 20},
                                              {-4, 35},
                                              {-4, 50},
                                              {-18, 20},
                                              {-18, 35},
                                              {-18, 50}}};
    for (std::size_t code = 0; code < kCorners.size(); ++code) {
        const TableLayout layout =
            LayOut(configuration + "/AnchorPoint;" + std::to_string(code), parts);
        EXPECT_DOUBLE_EQ(layout.left, kCorners.at(code).left) << code;
        EXPECT_DOUBLE_EQ(layout.top, kCorners.at(code).top) << code;
    }
    EXPECT_EQ(AnchorAndPosition(LayOut(configuration + "/AnchorPoint;2", parts)),
              "Kotva vlevo dole na 10; 20");
    EXPECT_EQ(AnchorAndPosition(LayOut(configuration + "/AnchorPoint;7", parts)),
              "Kotva vpravo uprostřed na 10; 20");
}

TEST(TableLayout, TheCurrentRowHasATableOfItsOwn) {
    Parts parts = ThreeParts();
    parts.current = 2;
    const TableLayout layout =
        LayOut(Default("/razeni;0;0\r\n/volny;9\r\n"), parts, TableContent::kCurrentRow);
    EXPECT_EQ(layout.trouble, "");
    EXPECT_EQ(layout.rows, 2);
    EXPECT_DOUBLE_EQ(layout.height, 4.9 + 6.8);
    EXPECT_DOUBLE_EQ(CellAt(layout, 1, 6).box.right - CellAt(layout, 1, 6).box.left, 44.6);
    EXPECT_EQ(RowTextsOf(layout, 2),
              (std::vector<std::string>{"3", "Šroub M8", "12", "M8x25", " ", "DIN 933", ""}));
    EXPECT_EQ(layout.rows_without_material, 1U);
    const TableLayout none = LayOut(Default(), ThreeParts(), TableContent::kCurrentRow);
    EXPECT_NE(none.trouble, "");
    EXPECT_EQ(none.rows, 2);
    EXPECT_EQ(CellAt(none, 2, 2).text, "");
    EXPECT_EQ(none.rows_without_material, 0U);
}

TEST(TableLayout, AnEmptyListShowsItsHeaderAndSaysThatThereWouldBeNoTable) {
    const TableLayout layout = LayOut(Default(), {});
    EXPECT_EQ(layout.trouble, "Seznam dílů je prázdný, tabulka by nevznikla.");
    EXPECT_EQ(layout.rows, 6);
    EXPECT_EQ(CellAt(layout, 1, 2).text, "nazev");
    EXPECT_EQ(layout.rows_without_material, 0U);
}

TEST(TableLayout, FreeRowsAreRoundedAndMayBeNoneNegativeOrHuge) {
    const auto with = [](const std::string& free_rows) {
        return LayOut(Default("/volny;" + free_rows + "\r\n"), ThreeParts());
    };
    EXPECT_EQ(with("0").rows, 4);
    EXPECT_EQ(CellAt(with("0"), 2, 2).text, "Šroub M8");
    EXPECT_EQ(with("0.5").rows, 4);
    EXPECT_EQ(with("1.5").rows, 6);
    // Over the header: the last part takes its place.
    EXPECT_EQ(with("-1").rows, 3);
    EXPECT_EQ(with("-1").trouble, "");
    EXPECT_EQ(CellAt(with("-1"), 1, 2).text, "Šroub M8");
    EXPECT_EQ(with("-2").rows, 2);
    EXPECT_NE(with("-2").trouble, "");
    EXPECT_EQ(with("-4").rows, 0);
    EXPECT_NE(with("-4").trouble, "");
    EXPECT_EQ(with("1e300").rows, 0);
    EXPECT_NE(with("1e300").trouble, "");
    const TableLayout huge = with("2000000000");
    EXPECT_EQ(huge.rows, 2000000004);
    EXPECT_DOUBLE_EQ(huge.height, 4.9 + 2000000003 * 6.8);
    EXPECT_EQ(CellAt(huge, huge.rows, 2).text, "Hřídel");
    EXPECT_EQ(tables::RowAtHeight(huge, huge.height - 1), huge.rows);
}

TEST(TableLayout, ADecimalCommaIsReadAsCatiaReadsIt) {
    // The comma stands between groups of digits.
    const TableLayout layout =
        LayOut(Default("/vyska1;4,9\r\n/vyska2;6,8\r\n/sirka;13,88\r\n"), ThreeParts());
    EXPECT_EQ(layout.trouble, "");
    EXPECT_DOUBLE_EQ(layout.header_height, 49);
    EXPECT_DOUBLE_EQ(layout.row_height, 68);
    EXPECT_DOUBLE_EQ(layout.column_widths[0], 1388);
}

TEST(LengthOf, TakesANumberAloneAndPassesOverCommasBeforeThePoint) {
    EXPECT_EQ(tables::LengthOf("13.88"), 13.88);
    EXPECT_EQ(tables::LengthOf(" 5 "), 5);
    EXPECT_EQ(tables::LengthOf("1,234.5"), 1234.5);
    EXPECT_EQ(tables::LengthOf("-3"), -3);
    EXPECT_EQ(tables::LengthOf("1e2"), 100);
    for (const char* none : {"", " ", ",5", "1.2,3", "5 mm", "1.2.3", "abc", "--1"}) {
        EXPECT_EQ(tables::LengthOf(none), std::nullopt) << none;
    }
}

TEST(TableLayout, ALineOfElevenValuesGivesNoTableAndSaysWhy) {
    const TableLayout layout =
        LayOut("/pozice;1;2\r\n/sirka;1;2;3;4;5;6;7;8;9;10;11\r\n", ThreeParts());
    EXPECT_EQ(layout.rows, 0);
    EXPECT_EQ(layout.trouble, "Řádek 2: 11 hodnot, nejvýš je 10.");
    EXPECT_EQ(SizesAndCounts(layout), "Bez tabulky");
    // The table of the current row does not read that line.
    Parts parts = ThreeParts();
    parts.current = 0;
    const TableLayout one =
        LayOut(Default("/sirka;1;2;3;4;5;6;7;8;9;10;11\r\n/fontname;Tahoma\r\n"), parts,
               TableContent::kCurrentRow);
    EXPECT_EQ(one.trouble, "");
    EXPECT_EQ(one.font_face, "Tahoma");
}

TEST(TableLayout, APositionWithoutYGivesNoTableAndSaysWhy) {
    const TableLayout layout = LayOut(Default("/pozice;100"), ThreeParts());
    EXPECT_EQ(layout.rows, 0);
    EXPECT_EQ(layout.trouble, "Řádek 13: za /pozice chybí hodnota Y.");
}

TEST(TableLayout, ValuesThatCatiaRefusesAreSaidAndTheRestIsShown) {
    const auto trouble = [](const std::string& line) {
        TableLayout layout = LayOut(Default(line + "\r\n"), ThreeParts());
        EXPECT_NE(layout.trouble, "") << line;
        return layout;
    };
    EXPECT_EQ(trouble("/vyska2;vysoka").rows, 0);
    EXPECT_EQ(trouble("/vyska2;0").rows, 0);
    EXPECT_EQ(trouble("/vyska2;-1").rows, 0);
    EXPECT_DOUBLE_EQ(trouble("/vyska1;").header_height, 6.8);
    EXPECT_DOUBLE_EQ(trouble("/sirka;1;x").column_widths[1], 20);
    EXPECT_DOUBLE_EQ(trouble("/sirka;-1").column_widths[0], 20);
    EXPECT_EQ(trouble("/fontsize1;0").rows, 9);
    EXPECT_EQ(trouble("/fontsize2;-1").rows, 9);
    EXPECT_EQ(CellAt(trouble("/razeni;7"), 9, 1).text, "");
    EXPECT_EQ(trouble("/razeni;7").trouble,
              "„7“ v řádku /razeni není číslo sloupce seznamu, platí 0 až 6.");
    EXPECT_EQ(trouble("/AnchorPoint;9").anchor_point, 0);
    EXPECT_EQ(trouble("/tlouska_cary;64").line_thickness, 1);
    EXPECT_EQ(trouble("/tlouska_cary;0").line_thickness, 1);
}

TEST(TableLayout, ASizeOfZeroFollowsTheLargestCell) {
    const TableLayout layout = LayOut(
        "/vyska1;0\r\n/vyska2;6\r\n/sirka;0;50;50;50;50;50;50\r\n/razeni;0\r\n/hlavicka;ab\r\n"
        "/fontsize1;4\r\n/fontsize2;2\r\n",
        PartsOf({{"abcdefgh"}, {"ab"}}));
    EXPECT_EQ(layout.trouble, "");
    EXPECT_DOUBLE_EQ(layout.column_widths[0], 8 * 0.5 * 2 + 1);
    EXPECT_DOUBLE_EQ(layout.header_height, 5);
    EXPECT_EQ(layout.texts_too_large, 0U);
}

TEST(TextWidth, CountsCharactersAndNotBytesAndTakesTheLongestLine) {
    const auto widths = HalfAsWide();
    const auto width = [&](std::string_view text) { return tables::TextWidth(text, *widths); };
    EXPECT_DOUBLE_EQ(width(""), 0);
    EXPECT_DOUBLE_EQ(width("abc"), 1.5);
    EXPECT_DOUBLE_EQ(width("Šroubení"), 4);
    EXPECT_DOUBLE_EQ(width("WW"), 2);
    EXPECT_DOUBLE_EQ(width("\u2300"), 2) << "a character beyond the table";
    EXPECT_DOUBLE_EQ(width("\U0001F529"), 2);
    EXPECT_DOUBLE_EQ(width("a\r\nbcd\ne\rfg"), 1.5);
    EXPECT_DOUBLE_EQ(width("a\xC5"), 1) << "a character cut short is one";
    EXPECT_EQ(tables::LinesOf("a\r\nbcd\ne\rfg"), 4);
    EXPECT_EQ(tables::LinesOf(""), 1);
}

TEST(TableLayout, CountsTheTextsThatDoNotFit) {
    // Column 1 has room for 9 mm less its margins: letters of 3 mm, half as wide.
    const std::string configuration = "/vyska1;5\r\n/vyska2;7\r\n/sirka;10;90;90;90;90;90;90\r\n"
                                      "/razeni;0;2;2;2;2;2;2\r\n/fontsize1;3\r\n/fontsize2;3\r\n";
    const auto with = [&](const std::string& name) {
        return LayOut(configuration, PartsOf({{name}, {"a"}}));
    };
    EXPECT_EQ(with("123456").texts_too_large, 0U);
    EXPECT_EQ(with("1234567").texts_too_large, 1U);
    EXPECT_FALSE(CellAt(with("1234567"), 3, 1).fits);
    EXPECT_TRUE(CellAt(with("1234567"), 2, 1).fits);
    EXPECT_EQ(with("Řřčšžý").texts_too_large, 0U);
    EXPECT_EQ(with("1234\n1234").texts_too_large, 1U) << "two lines are too high";
    EXPECT_EQ(LayOut(configuration + "/vyska2;8\r\n", PartsOf({{"1234\n1234"}})).texts_too_large,
              0U);
    EXPECT_EQ(LayOut(configuration + "/hlavicka;1234567\r\n", PartsOf({{"a"}})).texts_too_large,
              1U);
    EXPECT_EQ(
        LayOut(configuration + "/fontsize1;6\r\n/hlavicka;1\r\n", PartsOf({{"a"}})).texts_too_large,
        1U)
        << "higher than its row";
}

TEST(TableLayout, TheLineUnderItNamesSizesAndCounts) {
    EXPECT_EQ(SizesAndCounts(LayOut(Default(), ThreeParts())),
              "191.64 × 59.3 mm, 9 řádků, 7 sloupců, bez materiálu 2 řádky");
    const std::string narrow = Default("/sirka;2;2;2;43;43;43;43\r\n/volny;0\r\n");
    const auto end_of = [&](std::vector<tables::PartTexts> rows) {
        const std::string line = SizesAndCounts(LayOut(narrow, PartsOf(std::move(rows))));
        return line.substr(line.find("bez"));
    };
    EXPECT_EQ(end_of({{"a", "1"}}), "bez materiálu 1 řádek, asi 5 textů se nevejde");
    EXPECT_EQ(SizesAndCounts(LayOut(Default("/sirka;2\r\n/hlavicka;\r\n/volny;0\r\n"),
                                    PartsOf({{"a", "1", "", "", "x"}}))),
              "179.76 × 11.7 mm, 2 řádky, 7 sloupců, bez materiálu 0 řádků, asi 1 text se "
              "nevejde");
}

TEST(TableLayout, TheFontIsTheNamedOneWithoutWhatCatiaAdds) {
    const auto face = [](const std::string& line) {
        return LayOut(Default(line + "\r\n"), ThreeParts()).font_face;
    };
    EXPECT_EQ(face("/fontname;Times New Roman (TrueType)"), "Times New Roman");
    EXPECT_EQ(face("/fontname;ISO3098"), "ISO3098");
    EXPECT_EQ(face("/fontname;"), "Arial");
}

TEST(TableLayout, OfTenThousandRowsKnowsEveryCell) {
    Parts parts;
    for (int row = 1; row <= 10'000; ++row) {
        const std::string number = std::to_string(row);
        parts.rows.push_back({"Díl " + number, number, "2", "", row % 10 == 0 ? "" : "S235",
                              "D25x120", row % 100 == 0 ? std::string(60, 'W') : "kalit"});
    }
    const TableLayout layout = LayOut(Default(), parts);
    EXPECT_EQ(layout.trouble, "");
    EXPECT_EQ(layout.rows, 10'006);
    EXPECT_EQ(layout.rows_without_material, 1000U);
    EXPECT_EQ(layout.texts_too_large, 100U);
    for (const int part : {1, 2, 5000, 10'000}) {
        EXPECT_EQ(CellAt(layout, 10'007 - part, 2).text, "Díl " + std::to_string(part));
        EXPECT_EQ(CellAt(layout, 10'007 - part, 1).text, std::to_string(part));
    }
}

} // namespace
