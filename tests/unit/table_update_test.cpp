#include "tables/table_update.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/support/error_of.hpp"

namespace {

using tables::CellTexts;
using tables::TableUpdate;
using tables::UpdateOfTable;
using tables::WantedTable;
using TableRows = std::vector<CellTexts>;

const CellTexts kHeadings{"Pozice", "nazev", "Kusu", "rozmery", "Material", "Poznamka", "List"};
const CellTexts kShaft{"1", "Hřídel", "2", "D25x120", "S235", "kalit", "2"};
const CellTexts kWheel{"2", "Kolo", "1", "80", "C45", "", ""};
const CellTexts kCover{"3", "Víko", "4", "", "", "", "3"};
const CellTexts kEmpty{};

// Of a list in the default column order.
WantedTable WantedOf(TableRows rows) {
    return {.headings = kHeadings,
            .rows = std::move(rows),
            .fields = {1, 0, 2, 5, 4, 6, 3},
            .diameter_sign = "ø"};
}

// What is done to the table, as far as `steps` allow. An added row comes with its texts, an empty
// one with those above it up to one that is not.
void Carry(const TableUpdate& update, TableRows& table, std::size_t steps) {
    for (std::size_t row = 0; row < update.added_rows.size(); ++row) {
        const bool is_step = row == 0 || !tables::IsEmpty(update.added_rows[row - 1]);
        if (is_step && steps-- == 0) {
            return;
        }
        table.insert(table.begin() + (update.new_row - 1), update.added_rows[row]);
    }
    for (const auto& cell : update.cells) {
        if (steps-- == 0) {
            return;
        }
        table.at(static_cast<std::size_t>(cell.row) - 1)
            .at(static_cast<std::size_t>(cell.column) - 1) = cell.text;
    }
    for (const int row : update.removed_rows) {
        if (steps-- == 0) {
            return;
        }
        EXPECT_GE(row, 2) << "the header";
        table.erase(table.begin() + (row - 1));
    }
}

TableRows Updated(TableRows table, const WantedTable& wanted) {
    Carry(UpdateOfTable(table, wanted), table, SIZE_MAX);
    return table;
}

std::size_t Steps(const TableUpdate& update) {
    return update.cells.size() + update.removed_rows.size() + update.added_rows.size();
}

TEST(TableUpdate, OfATableThatIsRightIsNothing) {
    const TableRows table{kHeadings, kEmpty, kEmpty, kCover, kWheel, kShaft};
    EXPECT_EQ(Steps(UpdateOfTable(table, WantedOf({kShaft, kWheel, kCover}))), 0U);
}

TEST(TableUpdate, OfOneChangedTextIsOneCell) {
    const TableRows table{kHeadings, kEmpty, kCover, kWheel, kShaft};
    CellTexts wheel = kWheel;
    wheel[2] = "7";
    const TableUpdate update = UpdateOfTable(table, WantedOf({kShaft, wheel, kCover}));
    ASSERT_EQ(update.cells.size(), 1U);
    EXPECT_EQ(update.cells[0].row, 4);
    EXPECT_EQ(update.cells[0].column, 3);
    EXPECT_EQ(update.cells[0].text, "7");
    EXPECT_EQ(Steps(update), 1U);
}

TEST(TableUpdate, AddsRowsUnderTheFreeOnes) {
    const TableRows table{kHeadings, kEmpty, kEmpty, kShaft};
    const TableUpdate update = UpdateOfTable(table, WantedOf({kShaft, kWheel, kCover}));
    EXPECT_EQ(update.added_rows, (TableRows{kWheel, kCover}));
    EXPECT_EQ(update.new_row, 4);
    EXPECT_EQ(update.row_beside, 4);
    EXPECT_EQ(Steps(update), 2U);
    EXPECT_EQ(Updated(table, WantedOf({kShaft, kWheel, kCover})),
              (TableRows{kHeadings, kEmpty, kEmpty, kCover, kWheel, kShaft}));
}

TEST(TableUpdate, RemovesRowsUnderTheFreeOnes) {
    const TableRows table{kHeadings, kEmpty, kCover, kWheel, kShaft};
    const TableUpdate update = UpdateOfTable(table, WantedOf({kShaft}));
    EXPECT_EQ(update.removed_rows, (std::vector<int>{4, 3}));
    EXPECT_EQ(Steps(update), 2U);
    EXPECT_EQ(Updated(table, WantedOf({kShaft})), (TableRows{kHeadings, kEmpty, kShaft}));
}

TEST(TableUpdate, OfATableOfAHeaderAloneAddsUnderIt) {
    const TableUpdate update = UpdateOfTable({kHeadings}, WantedOf({kShaft, kWheel}));
    EXPECT_EQ(update.new_row, 2);
    EXPECT_EQ(update.row_beside, 1);
    EXPECT_EQ(Updated({kHeadings}, WantedOf({kShaft, kWheel})),
              (TableRows{kHeadings, kWheel, kShaft}));
    EXPECT_EQ(Steps(UpdateOfTable({kHeadings}, WantedOf({}))), 0U);
}

TEST(TableUpdate, OfATableOfFreeRowsAloneAddsUnderThem) {
    const TableUpdate update = UpdateOfTable({kHeadings, kEmpty, kEmpty}, WantedOf({kShaft}));
    EXPECT_EQ(update.new_row, 4);
    EXPECT_EQ(update.row_beside, 3);
    EXPECT_EQ(update.added_rows, (TableRows{kShaft}));
}

TEST(TableUpdate, AnEmptyListLeavesTheFreeRows) {
    EXPECT_EQ(Updated({kHeadings, kEmpty, kCover, kWheel}, WantedOf({})),
              (TableRows{kHeadings, kEmpty}));
}

TEST(TableUpdate, AnEmptyListLeavesOneRowEmptiedWhereNoneIsFree) {
    const TableRows left = Updated({kHeadings, kCover, kWheel, kShaft}, WantedOf({}));
    EXPECT_EQ(left, (TableRows{kHeadings, kEmpty}));
    EXPECT_EQ(Updated(left, WantedOf({})), left);
    EXPECT_EQ(Updated({kHeadings, kShaft}, WantedOf({})), (TableRows{kHeadings, kEmpty}));
}

TEST(TableUpdate, EmptyRowsFurtherDownAreNotFree) {
    EXPECT_EQ(
        Updated({kHeadings, kEmpty, kCover, kEmpty, kShaft}, WantedOf({kShaft, kWheel, kCover})),
        (TableRows{kHeadings, kEmpty, kCover, kWheel, kShaft}));
    const TableRows table{kHeadings, kCover, kEmpty, kShaft};
    EXPECT_EQ(UpdateOfTable(table, WantedOf({kShaft})).removed_rows, (std::vector<int>{3, 2}));
}

TEST(TableUpdate, ASizeIsRightWithTheDiameterSignToo) {
    CellTexts with_sign = kShaft;
    with_sign[3] = "ø25x120";
    EXPECT_EQ(Steps(UpdateOfTable({kHeadings, with_sign}, WantedOf({kShaft}))), 0U);
    EXPECT_EQ(Steps(UpdateOfTable({kHeadings, kShaft}, WantedOf({kShaft}))), 0U);
    CellTexts note = kShaft;
    note[5] = "Druhý";
    CellTexts note_with_sign = note;
    note_with_sign[5] = "øruhý";
    EXPECT_EQ(Updated({kHeadings, note_with_sign}, WantedOf({note})), (TableRows{kHeadings, note}))
        << "it is no size";
}

TEST(TableUpdate, ASizeIsWrittenWithTheSignWhereTheColumnHasIt) {
    CellTexts with_sign = kShaft;
    with_sign[3] = "ø10";
    CellTexts wheel = kWheel;
    wheel[3] = "D90";
    const WantedTable wanted = WantedOf({kShaft, wheel, kCover});
    CellTexts shaft_after = kShaft;
    shaft_after[3] = "ø25x120";
    CellTexts wheel_after = kWheel;
    wheel_after[3] = "ø90";
    EXPECT_EQ(Updated({kHeadings, with_sign}, wanted),
              (TableRows{kHeadings, kCover, wheel_after, shaft_after}));
    with_sign[3] = "10";
    with_sign[5] = "ø in a note"; // which is no size
    EXPECT_EQ(Updated({kHeadings, with_sign}, wanted),
              (TableRows{kHeadings, kCover, wheel, kShaft}));
    CellTexts heading = kHeadings;
    heading[3] = "ø";
    EXPECT_EQ(Updated({heading, kCover}, wanted), (TableRows{heading, kCover, wheel, kShaft}))
        << "a heading is no size";
}

TEST(TableUpdate, ThePositionIsComparedAsTheTableGivesIt) {
    CellTexts padded = kShaft;
    padded[0] = "0001";
    EXPECT_EQ(Updated({kHeadings, padded}, WantedOf({kShaft})), (TableRows{kHeadings, kShaft}));
    CellTexts half = kShaft;
    half[0] = "2.5";
    CellTexts with_comma = half;
    with_comma[0] = "2,5"; // as a CATIA makes it that converts in the user's language
    EXPECT_EQ(Steps(UpdateOfTable({kHeadings, with_comma}, WantedOf({half}))), 0U);
}

TEST(TableUpdate, EmptyRowsOfTheListStandInFreeRows) {
    // A column order without the position: a row without any text.
    const WantedTable wanted = WantedOf({kShaft, kEmpty, kEmpty});
    const TableRows once = Updated({kHeadings, kEmpty, kShaft}, wanted);
    EXPECT_EQ(once, (TableRows{kHeadings, kEmpty, kEmpty, kShaft}));
    EXPECT_EQ(Updated(once, wanted), once);
    EXPECT_EQ(Updated({kHeadings, kCover, kWheel, kShaft}, wanted),
              (TableRows{kHeadings, kEmpty, kEmpty, kShaft}));
}

TEST(TableUpdate, ARowIsNeverEmptyOnTheWay) {
    CellTexts before = kEmpty;
    before[1] = "before";
    CellTexts after = kEmpty;
    after[6] = "after";
    const TableUpdate update = UpdateOfTable({kHeadings, before}, WantedOf({after}));
    ASSERT_EQ(update.cells.size(), 2U);
    EXPECT_EQ(update.cells[0].text, "after");
    EXPECT_EQ(update.cells[1].text, "");
}

// Tables and lists of few texts, so that all cases meet.
TEST(TableUpdate, EndedAnywhereItIsCompletedByTheNext) {
    std::mt19937 choose(20260301);
    const auto below = [&choose](std::size_t end) { return choose() % end; };
    const std::array<const char*, 4> texts{"", "", "a", "D5"};
    const auto row = [&] {
        CellTexts made;
        for (std::string& text : made) {
            text = below(3) == 0 ? texts.at(below(texts.size())) : "";
        }
        return made;
    };
    int with_rows = 0;
    for (int round = 0; round < 400; ++round) {
        TableRows table{kHeadings};
        table.resize(1 + below(3));
        for (std::size_t rows = below(5); rows > 0; --rows) {
            table.push_back(row());
        }
        TableRows list;
        for (std::size_t rows = below(5); rows > 0; --rows) {
            list.push_back(row());
        }
        const WantedTable wanted = WantedOf(list);
        const TableRows whole = Updated(table, wanted);
        const TableUpdate update = UpdateOfTable(table, wanted);
        with_rows += Steps(update) > update.cells.size() ? 1 : 0;

        ASSERT_EQ(whole.front(), kHeadings);
        ASSERT_GE(whole.size(), list.size() + 1);
        for (std::size_t part = 0; part < list.size(); ++part) {
            for (std::size_t column = 0; column < list[part].size(); ++column) {
                const std::string& drawn = whole[whole.size() - 1 - part].at(column);
                const std::string& value = list[part].at(column);
                ASSERT_TRUE(drawn == value || (column == 3 && value == "D5" && drawn == "ø5"));
            }
        }
        for (std::size_t above = 1; above < whole.size() - list.size(); ++above) {
            ASSERT_EQ(whole[above], kEmpty);
        }
        ASSERT_EQ(Steps(UpdateOfTable(whole, wanted)), 0U) << "it is at rest";

        for (std::size_t steps = 0; steps < Steps(update); ++steps) {
            TableRows ended = table;
            Carry(update, ended, steps);
            ASSERT_EQ(Updated(ended, wanted), whole) << "round " << round << " step " << steps;
        }
    }
    EXPECT_GT(with_rows, 100);
}

TEST(TableWanted, TakesTheColumnOrderAndTheHeadingsOfTheConfiguration) {
    tables::Configuration configuration;
    configuration.column_order = {"3", "1", "", "6", "5", "2", "4", "ignored"};
    configuration.headers = {"a", "b", "c", "d", "e", "f", "two\r\nlines", "ignored"};
    tables::Parts parts;
    parts.rows = {{"name", "0012b", "4", "2", "S235", "D25", "two\r\nlines"}};
    const WantedTable wanted = TableWanted(parts, configuration, "ø");
    EXPECT_EQ(wanted.headings, (CellTexts{"a", "b", "c", "d", "e", "f", "two\nlines"}));
    EXPECT_EQ(wanted.rows, (TableRows{{"2", "12", "name", "two\nlines", "D25", "4", "S235"}}));
    EXPECT_EQ(wanted.fields, (std::array<std::size_t, 7>{3, 1, 0, 6, 5, 2, 4}));
    EXPECT_EQ(wanted.diameter_sign, "ø");
}

TEST(TableWanted, HasPositionsAsCatiaWritesThem) {
    tables::Configuration configuration;
    configuration.column_order[0] = "1";
    tables::Parts parts;
    parts.rows = {{"name", "100000000000000000000", "1", "", "", "", ""},
                  {"name", "0012.5", "1", "", "", "", ""}};
    const WantedTable wanted = TableWanted(parts, configuration, "ø");
    EXPECT_EQ(wanted.rows.at(0)[0], "1E+20");
    EXPECT_EQ(wanted.rows.at(1)[0], "12.5");
}

TEST(TableWanted, RefusesAColumnOrderThatTheListDoesNotHave) {
    constexpr long kTypeMismatch = 13;
    constexpr long kInvalidPropertyValue = 380;
    tables::Configuration configuration;
    configuration.column_order[6] = "abc";
    EXPECT_EQ(testing_support::ErrorOf([&] { TableWanted({}, configuration, "ø"); }),
              kTypeMismatch);
    configuration.column_order[6] = "7";
    EXPECT_EQ(testing_support::ErrorOf([&] { TableWanted({}, configuration, "ø"); }),
              kInvalidPropertyValue);
}

} // namespace
