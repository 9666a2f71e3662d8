// The comparison that every action test passes through: that it finds what differs.

#include "tests/support/drawing_comparison.hpp"

#include <gtest/gtest-spi.h>

#include "catia/session.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"

namespace {

using testing_support::AddRow;
using testing_support::RowOfCells;
using testing_support::Strings;
using testing_support::TableDifference;

const Strings kHeader{"P", "n", "k", "r", "m", "p", "List"};
const std::vector<Strings> kParts{{"Hřídel", "0001", "2", "3", "S235", "D25", "kalit"},
                                  {"Kolo \"A\"", "0012b", "1", "", "C45", "", "a;b"}};
// The parts under the header and an empty row.
const Strings kTable{RowOfCells(kHeader), RowOfCells(Strings(7)),
                     R"("12" "Kolo \"A\"" "1" "" "C45" "a;b" "")",
                     R"("1" "Hřídel" "2" "D25" "S235" "kalit" "3")"};

TEST(TableDifference, IsEmptyForTheTableOfTheList) {
    EXPECT_EQ(TableDifference(kTable, kHeader, kParts), "");
    EXPECT_EQ(TableDifference(kTable, std::nullopt, kParts), "");
}

TEST(TableDifference, NamesTheRowThatDiffers) {
    for (std::size_t row = 0; row < kTable.size(); ++row) {
        Strings changed = kTable;
        changed[row].insert(changed[row].size() - 1, "x");
        const std::string difference = TableDifference(changed, kHeader, kParts);
        EXPECT_TRUE(difference.starts_with("row " + std::to_string(row + 1) + " ")) << difference;
    }
}

TEST(TableDifference, FindsRowsThatAreSwappedOrMissing) {
    EXPECT_NE(TableDifference({kTable[0], kTable[3], kTable[2]}, kHeader, kParts), "");
    EXPECT_NE(TableDifference({kTable[0], kTable[3]}, kHeader, kParts), "");
    EXPECT_NE(TableDifference({}, kHeader, kParts), "");
}

TEST(TableDifference, FindsAWrongPositionAlsoWhereItHasSeveralReadings) {
    Strings table = kTable;
    table[3].replace(0, 3, "\"2\"");
    EXPECT_NE(TableDifference(table, kHeader, kParts), "");
    auto parts = kParts;
    parts[0][1] = "1e0";
    EXPECT_EQ(TableDifference(table, kHeader, parts), "") << "any position is right";
    parts[0][0] = "Kolo";
    EXPECT_NE(TableDifference(table, kHeader, parts), "");
}

struct Comparison : testing_support::ActionTest {
    // What a person does to the drawing in CATIA.
    catia::DrawingDocument Drawing() {
        return catia::DrawingDocument(catia::Application(session.Application()).ActiveDocument());
    }
};

TEST_F(Comparison, FailsWhereTheTableIsNotTheList) {
    Open(testing_support::kEmptyDrawing);
    AddRow(form.ListView1, {"Hřídel", "0001", "2"});
    form.ListView1.SetCurrentRow(1);
    session.before_call = [this](const std::string& call) {
        if (call.starts_with("VisPropertySet.SetRealWidth")) {
            const auto selection =
                catia::Application(session.Application()).ActiveDocument().Selection();
            catia::DrawingTable(selection.Item2(1).Value()).SetCellString(2, 5, "changed");
        }
    };
    EXPECT_NONFATAL_FAILURE(form.Command11.Click(), "row 2 of the table is");
    session.ClearSelection();
    EXPECT_NONFATAL_FAILURE(form.Command7.Click(), "row 2 of the table is");
    session.ClearSelection();
    EXPECT_NONFATAL_FAILURE(form.m_poslat_jako_tabulku.Click(), "row 2 of the table is");
}

TEST_F(Comparison, FailsWhereTheSheetsAreNotNamedAsPlanned) {
    Open("DrawingDocument D.CATDrawing\nsheet a\nsheet b\n");
    for (const char* name : {"a", "b", "Nový"}) {
        AddRow(form.ListView3, {name, std::string("new ") + name}, true);
    }
    session.before_call = [this](const std::string& call) {
        if (call.starts_with("DrawingSheets.Add")) {
            Drawing().Sheets().Item(1).SetName("changed");
        }
    };
    EXPECT_NONFATAL_FAILURE(form.Command23.Click(), "not as planned");
}

TEST_F(Comparison, FailsWhereTheSheetsAreNotInTheOrderOfTheList) {
    Open("DrawingDocument D.CATDrawing\nsheet a\nsheet b\n");
    AddRow(form.ListView1, {"part"});
    for (const char* name : {"b", "a"}) {
        AddRow(form.ListView3, {name}, true);
    }
    events.at_yield[1] = [this] {
        const catia::DrawingSheets sheets = Drawing().Sheets();
        Drawing().DrawingRoot().reorder_Sheets({sheets.Item(2), sheets.Item(1)});
    };
    EXPECT_NONFATAL_FAILURE(form.Command34.Click(), "not in the order that the list had");
}

TEST_F(Comparison, FailsWhereTheSheetListIsNotTheDrawings) {
    Open("DrawingDocument D.CATDrawing\nsheet a\nsheet b\n");
    AddRow(form.ListView1, {"part"});
    session.before_call = [this, calls = 0](const std::string& call) mutable {
        if (call == "DrawingSheets.Item(2)" && ++calls == 1) {
            Drawing().Sheets().Item(1).SetName("changed");
        }
    };
    EXPECT_NONFATAL_FAILURE(form.Command21.Click(), "not what the drawing holds");
}

} // namespace
