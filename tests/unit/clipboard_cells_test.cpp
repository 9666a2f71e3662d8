#include "text/clipboard_cells.hpp"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using text::ClipboardCell;
using text::ClipboardCells;
using text::TextWithLineBreaks;
using Rows = std::vector<std::vector<std::string>>;

TEST(ClipboardCells, LinesAreRowsAndTabsSeparateCells) {
    EXPECT_EQ(ClipboardCells("a\tb\r\nc\td\r\n"), (Rows{{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(ClipboardCells("a\tb\nc\td\n"), (Rows{{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(ClipboardCells("a\tb\r\nc\td"), (Rows{{"a", "b"}, {"c", "d"}}))
        << "the last line may end with the text";
}

TEST(ClipboardCells, NothingIsNoRowAndOneWordIsOneCell) {
    EXPECT_EQ(ClipboardCells(""), Rows{});
    EXPECT_EQ(ClipboardCells("C45"), (Rows{{"C45"}}));
    EXPECT_EQ(ClipboardCells("C45\r\n"), (Rows{{"C45"}}));
    EXPECT_EQ(ClipboardCells("\r\n"), (Rows{{""}}));
}

TEST(ClipboardCells, EmptyCellsAndRaggedRowsStayAsTheyAre) {
    EXPECT_EQ(ClipboardCells("\ta\t\r\n\r\nb\r\n"), (Rows{{"", "a", ""}, {""}, {"b"}}));
    EXPECT_EQ(ClipboardCells("a\t"), (Rows{{"a", ""}}));
}

TEST(ClipboardCells, QuotedCellsHoldTabsLineBreaksAndQuotes) {
    EXPECT_EQ(ClipboardCells("\"a\tb\"\tc\r\n"), (Rows{{"a\tb", "c"}}));
    EXPECT_EQ(ClipboardCells("\"kalit\npopustit\"\t1\r\n"), (Rows{{"kalit\npopustit", "1"}}));
    EXPECT_EQ(ClipboardCells("\"kalit\r\npopustit\"\r\nb"), (Rows{{"kalit\npopustit"}, {"b"}}))
        << "a line break inside is a line feed";
    EXPECT_EQ(ClipboardCells("\"5\"\"\"\n"), (Rows{{"5\""}}));
    EXPECT_EQ(ClipboardCells("x\t\"a\n\"\"b\"\"\""), (Rows{{"x", "a\n\"b\""}}));
}

TEST(ClipboardCells, QuotesThatQuoteNothingAreTheCellsOwn) {
    for (const std::string& cell :
         std::vector<std::string>{R"(5")", R"(")", R"("")", R"("Kolo")", R"("Kolo" velké)",
                                  R"("Kolo)", R"(a"b")", R"("a"b")"}) {
        EXPECT_EQ(ClipboardCells(cell + "\tx\r\n"), (Rows{{cell, "x"}})) << cell;
        EXPECT_EQ(ClipboardCells("x\t" + cell), (Rows{{"x", cell}})) << cell;
    }
    EXPECT_EQ(ClipboardCells("\"open\r\nb\r\n"), (Rows{{"\"open"}, {"b"}}));
}

TEST(ClipboardCells, ALoneCarriageReturnBelongsToItsCell) {
    EXPECT_EQ(ClipboardCells("a\rb\tc\n"), (Rows{{"a\rb", "c"}}));
}

TEST(ClipboardCells, ACellIsQuotedWhereItNeedsIt) {
    EXPECT_EQ(ClipboardCell("Hřídel 20x40"), "Hřídel 20x40");
    EXPECT_EQ(ClipboardCell("=A1"), "=A1");
    EXPECT_EQ(ClipboardCell(""), "");
    EXPECT_EQ(ClipboardCell("a\tb"), "\"a\tb\"");
    EXPECT_EQ(ClipboardCell("a\nb"), "\"a\nb\"");
    EXPECT_EQ(ClipboardCell("a\rb"), "\"a\rb\"");
    EXPECT_EQ(ClipboardCell("5\""), "\"5\"\"\"");
}

TEST(ClipboardCells, EveryCellComesBackAsItWas) {
    const std::vector<std::string> cells{
        "",         "0012", "1-2", "=A1",   "ěščřžýáíé ŮŇ", "a\nb",     "a\n", "\n",   "\"", "\"\"",
        "\"Kolo\"", "5\"",  "\ta", "a\t\"", "\"\n\"",       " blanks ", "@@",  "a\rb", "\r", "''"};
    Rows all{{"x"}};
    std::string line = "x";
    for (const std::string& cell : cells) {
        all[0].push_back(cell);
        line += "\t" + ClipboardCell(cell);
    }
    EXPECT_EQ(ClipboardCells(line + "\r\n"), all);
    EXPECT_EQ(ClipboardCells(line), all);
}

// Both texts as LibreOffice Calc 7.4 puts them on the clipboard, of cells that are texts.
TEST(ClipboardCells, CalcsSecondTextKeepsLineBreaksThatItsPlainOneLacks) {
    const std::string plain = "Jmeno\tkusů\tMaterial\n"
                              "0012\t007\t1-2\t=A1\t6,8\n"
                              "Hřídel „ě“ ŮŇ\t2\t+5\t'x\t-3\n"
                              "kalit popustit\t1\ta b c\t\"Kolo\"\t5\"\n"
                              "trailing  \t3\t  leading\t1e5\t12/5\n"
                              "\"\"\t5\tx\"y z\"\t\"a\" b\t1 000\n"
                              "'\t9\t'0012\t\"\t\"\"\"x\n"
                              "''y\t8\t\t \tend \n";
    const std::string quoted = "Jmeno\tkusů\tMaterial\n"
                               "0012\t007\t1-2\t=A1\t6,8\n"
                               "Hřídel „ě“ ŮŇ\t2\t+5\t'x\t-3\n"
                               "\"kalit\npopustit\"\t1\t\"a\nb\nc\"\t\"Kolo\"\t5\"\n"
                               "trailing  \t3\t  leading\t1e5\t12/5\n"
                               "\"\"\t5\t\"x\"\"y\nz\"\"\"\t\"a\" b\t1 000\n"
                               "'\t9\t'0012\t\"\t\"\"\"x\n"
                               "''y\t8\t\t \t\"end\n\"\n";
    EXPECT_EQ(ClipboardCells(TextWithLineBreaks(plain, quoted)),
              (Rows{{"Jmeno", "kusů", "Material"},
                    {"0012", "007", "1-2", "=A1", "6,8"},
                    {"Hřídel „ě“ ŮŇ", "2", "+5", "'x", "-3"},
                    {"kalit\npopustit", "1", "a\nb\nc", "\"Kolo\"", "5\""},
                    {"trailing  ", "3", "  leading", "1e5", "12/5"},
                    {"\"\"", "5", "x\"y\nz\"", "\"a\" b", "1 000"},
                    {"'", "9", "'0012", "\"", "\"\"\"x"},
                    {"''y", "8", "", " ", "end\n"}}));
    // One cell alone: its plain text looks like two rows.
    EXPECT_EQ(ClipboardCells(TextWithLineBreaks("a\nb", "\"a\nb\"")), (Rows{{"a\nb"}}));
}

TEST(ClipboardCells, ASecondTextThatIsAnotherOneIsNotTaken) {
    EXPECT_EQ(TextWithLineBreaks("a\tb", "c\td"), "a\tb");
    EXPECT_EQ(TextWithLineBreaks("a\tb", ""), "a\tb");
    EXPECT_EQ(TextWithLineBreaks("C45", "㑃5"), "C45") << "in another encoding";
}

TEST(ClipboardCells, ManyRowsAndStrayQuotesTakeNoTime) {
    std::string whole;
    for (int row = 0; row < 100000; ++row) {
        whole += row % 2 == 0 ? "\"\"\"a\t\"b\n" : "\"c\t\"\"d\n";
    }
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ClipboardCells(whole).size(), 100000U);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

} // namespace
