// The layout that the preview shows, held against the table that the session has afterwards.

#include "tables/layout.hpp"

#include <gtest/gtest.h>

#include <random>

#include "simulator/model.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"

namespace {

using tables::CellAt;
using tables::TableContent;
using tables::TableLayout;

constexpr const char* kMade = "Tabulka vytvorena Ok ";

struct LaidOutAndMade : testing_support::ActionTest {
    LaidOutAndMade() { Open(testing_support::kEmptyDrawing); }

    [[nodiscard]] TableLayout LayOut(TableContent content) const {
        return tables::LayOutTable(
            {.configuration = form.Text2.Text(),
             .content = content,
             .parts = std::make_shared<const tables::Parts>(tables::TakeParts(form.ListView1))},
            std::make_shared<const tables::CharacterWidths>());
    }

    // Whether a table came of the press.
    bool Make(TableContent content) {
        Open(testing_support::kEmptyDrawing);
        messages.clear();
        (content == TableContent::kWholeList ? form.Command11 : form.Command7).Click();
        return !messages.empty() && Status() == kMade;
    }

    [[nodiscard]] const simulator::View& DrawnView() const {
        return *session.ActiveDocument()->active_sheet->active_view;
    }

    // Nothing but the one table stands in the view.
    void ExpectAsDrawn(const TableLayout& layout) const {
        ASSERT_EQ(DrawnView().tables.size(), 1U);
        const simulator::Table& table = *DrawnView().tables.front();
        ASSERT_EQ(table.row_sizes.size(), static_cast<std::size_t>(layout.rows));
        ASSERT_EQ(table.column_sizes.size(), layout.column_widths.size());
        EXPECT_EQ(table.anchor_point, layout.anchor_point);
        EXPECT_EQ(table.line_width, layout.line_thickness);
        const simulator::Rectangle place = simulator::Place(DrawnView(), table);
        constexpr double kNear = 1e-6;
        EXPECT_NEAR(place.left, layout.left, kNear);
        EXPECT_NEAR(place.top, layout.top, kNear);
        EXPECT_NEAR(place.right, layout.left + layout.width, kNear);
        EXPECT_NEAR(place.bottom, layout.top - layout.height, kNear);
        for (std::size_t row = 0; row < table.row_sizes.size(); ++row) {
            for (std::size_t column = 0; column < table.column_sizes.size(); ++column) {
                SCOPED_TRACE("row " + std::to_string(row + 1) + ", column " +
                             std::to_string(column + 1));
                const auto cell =
                    CellAt(layout, static_cast<int>(row) + 1, static_cast<int>(column) + 1);
                const simulator::Text& drawn = *table.Cell(row, column);
                EXPECT_EQ(cell.text, drawn.text);
                EXPECT_DOUBLE_EQ(cell.font_size, drawn.font_size);
                EXPECT_NEAR(cell.box.right - cell.box.left, table.column_sizes[column], kNear);
                EXPECT_NEAR(cell.box.bottom - cell.box.top, table.row_sizes[row], kNear);
                if (layout.font_face != "Arial") {
                    EXPECT_TRUE(drawn.font_name.starts_with(layout.font_face));
                }
            }
        }
    }

    // The layout says whether a table comes, and which.
    void ExpectForetold(TableContent content) {
        const TableLayout layout = LayOut(content);
        EXPECT_EQ(Make(content), layout.trouble.empty()) << layout.trouble << "\n" << Status();
        if (layout.trouble.empty()) {
            ExpectAsDrawn(layout);
        } else if (layout.rows == 0) {
            EXPECT_TRUE(DrawnView().tables.empty());
        }
    }
};

void AddShaftWheelAndBolt(controls::ListView& list) {
    using testing_support::AddRow;
    AddRow(list, {"Hřídel", "0001", "2", "2", "S235", "D25x120", "kalit"});
    AddRow(list, {"Kolo", "12a", "1", "", "", "", "a\nb"});
    AddRow(list, {"Šroub \"M8\"", "x", "12", "3", "8.8", "M8x25", "DIN;933"});
}

TEST_F(LaidOutAndMade, AreTheSameForTheDefaultConfiguration) {
    AddShaftWheelAndBolt(form.ListView1);
    form.ListView1.SetCurrentRow(2);
    ExpectForetold(TableContent::kWholeList);
    ExpectForetold(TableContent::kCurrentRow);
    EXPECT_EQ(Status(), kMade);
}

TEST_F(LaidOutAndMade, AreTheSameForEveryAnchor) {
    AddShaftWheelAndBolt(form.ListView1);
    form.ListView1.SetCurrentRow(1);
    for (const char* code : {"0", "1", "2", "3", "4", "5", "6", "7", "8", "2.5", "8.4"}) {
        SCOPED_TRACE(code);
        form.Text2.SetText(form.Text4.Text() + "/AnchorPoint;" + code + "\r\n");
        ExpectForetold(TableContent::kWholeList);
        ExpectForetold(TableContent::kCurrentRow);
        EXPECT_EQ(Status(), kMade);
    }
}

TEST_F(LaidOutAndMade, AreTheSameForEveryNumberOfFreeRows) {
    AddShaftWheelAndBolt(form.ListView1);
    for (const char* free_rows : {"0", "1", "40", "0.5", "1.5", "-1", "x", ""}) {
        SCOPED_TRACE(free_rows);
        form.Text2.SetText(form.Text4.Text() + "/volny;" + free_rows + "\r\n");
        ExpectForetold(TableContent::kWholeList);
        EXPECT_EQ(Status(), kMade);
    }
    for (const char* free_rows : {"-2", "-3", "-4", "-100", "1e300", "-1e300", "2147483646"}) {
        SCOPED_TRACE(free_rows);
        form.Text2.SetText(form.Text4.Text() + "/volny;" + free_rows + "\r\n");
        ExpectForetold(TableContent::kWholeList);
        EXPECT_NE(Status(), kMade);
    }
}

TEST_F(LaidOutAndMade, FollowAutomaticSizesWhereCatiaHasThem) {
    session.manner.zero_is_automatic = true;
    AddShaftWheelAndBolt(form.ListView1);
    form.Text2.SetText(form.Text4.Text() + "/vyska1;0\r\n/sirka;0;43;0\r\n");
    const TableLayout layout = LayOut(TableContent::kWholeList);
    EXPECT_EQ(layout.trouble, "");
    EXPECT_TRUE(Make(TableContent::kWholeList));
    const simulator::Table& table = *DrawnView().tables.front();
    ASSERT_EQ(table.row_sizes.size(), static_cast<std::size_t>(layout.rows));
    EXPECT_DOUBLE_EQ(table.column_sizes[1], layout.column_widths[1]);
    EXPECT_DOUBLE_EQ(table.row_sizes[1], layout.row_height);
    EXPECT_GT(layout.column_widths[0], 0);
    EXPECT_GT(layout.header_height, 0);
    EXPECT_EQ(layout.texts_too_large > 0, true) << "the fixed columns hold less than their texts";
}

// A person who writes all kinds of things.
class Writer {
  public:
    explicit Writer(unsigned seed) : random_(seed) {}

    std::size_t Below(std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random_);
    }
    std::string OneOf(const std::vector<std::string>& choices) {
        return choices[Below(choices.size())];
    }

    std::string Configuration() {
        std::string text = Below(4) == 0 ? "" : std::string(controls::kDefaultConfiguration);
        for (std::size_t lines = Below(5); lines > 0; --lines) {
            text += Line() + "\r\n";
        }
        return text;
    }

    std::vector<std::string> Part() {
        const std::vector<std::string> texts{
            "",      "Kolo", "Ø25", "a\nb", "a;b", "\"x\"",    "příčka\r\n2", "1,5",
            "-0.25", "0012", " ",   "@@",   "1e3", "12345678", "ěščřžýáíé"};
        std::vector<std::string> part{OneOf(texts)};
        part.push_back(OneOf(
            {"0001", "12a", "x", "", "-3.5", "1e20", "123456789012345678", ".5", "0.1", "1e-7"}));
        while (part.size() < 7) {
            part.push_back(OneOf(texts));
        }
        return part;
    }

  private:
    std::string Line() {
        switch (Below(13)) {
        case 0:
            return "/sirka" + Values(7, kLengths);
        case 1:
            return "/sirka1" + Values(7, kLengths);
        case 2:
            return "/hlavicka" + Values(9, {"", "a", "Čís.", "dlouhé záhlaví sloupce", "\"q\""});
        case 3:
            return "/razeni" + Values(8, {"0", "1", "2", "3", "4", "5", "6", "", " 6 ", "1.4"});
        case 4:
            return "/vyska1;" + OneOf(kLengths);
        case 5:
            return "/vyska2;" + OneOf(kLengths);
        case 6:
            return "/volny;" + OneOf({"0", "1", "3", "-1", "0.5", "-2", "x", "9"});
        case 7:
            return "/pozice" + Values(4, {"0", "-12.5", "100", "x", "1e2", ""});
        case 8:
            return "/fontname;" + OneOf({"", "Tahoma", "Arial (TrueType)", "Monospac821 BT"});
        case 9:
            return OneOf({"/fontsize1;", "/fontsize2;"}) + OneOf({"2.5", "3", "7", "0.1", "1e1"});
        case 10:
            return "/tlouska_cary;" + OneOf({"1", "2 ", "63", "2.5", "64", "1"});
        case 11:
            return "/AnchorPoint;" + OneOf({"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"});
        default:
            return OneOf({"-/sirka;1", "/Sirka;1", "", ";", "/sirka", "nic;1;2", "/razeni;7",
                          "/razeni;x", "/vyska2;0", "/fontsize1;0", "/fontsize2;-1",
                          "/sirka;1;2;3;4;5;6;7;8;9;10;11"});
        }
    }

    std::string Values(std::size_t most, const std::vector<std::string>& choices) {
        std::string values;
        for (std::size_t count = 1 + Below(most); count > 0; --count) {
            values += ";" + OneOf(choices);
        }
        return values;
    }

    // Mostly such that CATIA takes.
    const std::vector<std::string> kLengths{"13.88", "4.9", "6",  " 5 ", "1e1", "2,5", "1,234.5",
                                            "0.75",  "20",  "33", "8",   "12",  "+7",  ".5"};
    std::mt19937 random_;
};

TEST_F(LaidOutAndMade, AreTheSameForRandomConfigurationsAndLists) {
    constexpr unsigned kSeed = 20261121;
    constexpr int kRounds = 300;
    Writer writer(kSeed);
    int made = 0;
    int refused = 0;
    for (int round = 0; round < kRounds && !HasFailure(); ++round) {
        form.Text2.SetText(writer.Configuration());
        form.ListView1.Clear();
        for (std::size_t parts = writer.Below(6); parts > 0; --parts) {
            testing_support::AddRow(form.ListView1, writer.Part());
        }
        const std::size_t rows = form.ListView1.Count();
        if (rows > 0 && writer.Below(8) != 0) {
            form.ListView1.SetCurrentRow(1 + writer.Below(rows));
        } else {
            form.ListView1.SetCurrentRow(std::nullopt);
        }
        for (const TableContent content : {TableContent::kWholeList, TableContent::kCurrentRow}) {
            SCOPED_TRACE("round " + std::to_string(round) + "\n" + form.Text2.Text());
            ExpectForetold(content);
            ++(Status() == kMade ? made : refused);
        }
    }
    // So that the choice of texts cannot make the test empty.
    EXPECT_GT(made, kRounds / 4);
    EXPECT_GT(refused, kRounds / 4);
}

} // namespace
