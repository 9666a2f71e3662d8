// The main road over COM: from the product to the table in the drawing, with every round trip
// counted.
#include <algorithm>
#include <array>
#include <set>

#include "fixture.hpp"
#include "tests/support/drawing_text.hpp"

using namespace driver;

namespace {

using Rows = std::vector<std::string>;

// The gearbox, counted by hand: 58 instances below the top product, 13 of them sub-assemblies.
constexpr int kInstances = 58;
struct CountedPart {
    const char* name;
    const char* quantity;
};
const auto kGearbox = std::to_array<CountedPart>(
    {{"Skříň spodní", "1"},     {"Skříň horní", "1"},         {"Hřídel vstupní", "1"},
     {"Ložisko 6204", "4"},     {"Pojistný kroužek 47", "4"}, {"Ozubené kolo z18", "1"},
     {"Pero 6x6x25", "3"},      {"Gufero 20x40x7", "1"},      {"Hřídel", "1"},
     {"Ozubené kolo z52", "1"}, {"Ozubené kolo z21", "1"},    {"Hřídel výstupní", "1"},
     {"Ložisko 6206", "2"},     {"Pojistný kroužek 62", "2"}, {"Ozubené kolo z63", "1"},
     {"Pero 8x7x36", "1"},      {"Gufero 30x52x7", "1"},      {"Šroub M8x25", "4"},
     {"Podložka 8", "8"},       {"Matice M8", "4"},           {"Zátka vypouštěcí", "1"},
     {"Olejoznak", "1"}});
constexpr int kGearboxParts = 22;

// With five free rows under the header.
constexpr int kFreeRows = 5;
constexpr int kTableRows = 1 + kFreeRows + kGearboxParts;

class Road : public DesktopTest {
  protected:
    void Walk() const {
        dorvak_.OpenPage(kStructurePage);
        dorvak_.Press(ID_Command3);
        dorvak_.WaitForStatus(kWalked, kLong);
        WaitUntil("the tree",
                  [this] { return Send(dorvak_[ID_TreeView1], TVM_GETCOUNT) == kInstances + 1; });
    }

    // Walks the gearbox, fills the list and makes the drawing the active document.
    void FillFromCatia() const {
        Walk();
        dorvak_.Press(ID_Command4);
        WaitUntil("the parts list",
                  [&] { return RowCount(dorvak_[ID_ListView1]) == kGearboxParts; });
        catia_.Do("activate Gearbox.CATDrawing");
    }

    void CreateTable() const {
        dorvak_.OpenPage(kExportPage);
        dorvak_.Press(ID_Command11);
        dorvak_.WaitForStatus("Tabulka vytvorena Ok ", kLong);
    }

    CatiaSession catia_{{kProduct, kDrawing}};
    DorvakWindow dorvak_;
};

// Look-ups of names that were made before in the same log.
Rows RepeatedLookups(const Rows& log) {
    std::set<std::string> seen;
    Rows repeated;
    for (const std::string& line : log) {
        if (IsLookup(line) && !seen.insert(line).second) {
            repeated.push_back(line);
        }
    }
    return repeated;
}

} // namespace

TEST_F(Road, WalkBuildsTheCheckedTree) {
    Walk();
    const std::vector<TreeItem> items = TreeItems(dorvak_[ID_TreeView1]);
    ASSERT_EQ(items.size(), kInstances + 1U);
    EXPECT_EQ(items[0].text, "Převodovka");
    EXPECT_EQ(items[3].text, "Sestava vstupního hřídele");
    EXPECT_EQ(items[4].text, "Hřídel vstupní");
    EXPECT_EQ(items[4].depth, 2);
    for (const TreeItem& item : items) {
        EXPECT_TRUE(item.checked) << item.text;
    }
    const std::string structure = Text(dorvak_[ID_Text1]);
    EXPECT_TRUE(structure.starts_with("\r\n0\tPřevodovka\r\n1\tSkříň spodní\tPřevodovka\r\n"))
        << structure;
}

TEST_F(Road, ListHoldsEveryPartWithItsPositionAndQuantity) {
    FillFromCatia();
    const HWND list = dorvak_[ID_ListView1];
    for (int row = 0; row < kGearboxParts; ++row) {
        const CountedPart& part = kGearbox.at(static_cast<std::size_t>(row));
        EXPECT_EQ(Row(list, row, 7),
                  (Rows{part.name, text::FourDigits(static_cast<std::size_t>(row) + 1),
                        part.quantity, "", "", "", ""}));
    }
    EXPECT_EQ(dorvak_.Positions(), "Pozic: 22");
}

TEST_F(Road, TableStandsInTheDrawing) {
    FillFromCatia();
    dorvak_.OpenPage(kEditPage);
    const HWND list = dorvak_[ID_ListView1];
    Click(list, RowCheckPoint(list, 0));
    Click(list, RowCheckPoint(list, 2));
    WaitForText("the sheet of the third row", "3", [&] { return Cell(list, 2, 3); });
    CreateTable();

    // The list's first row stands at the bottom of the table, its last under the free rows.
    Rows expected{
        QuotedCells({"Pozice", "nazev", "Kusu", "Ciste rozmery", "Material", "Poznamka", "List"})};
    expected.insert(expected.end(), kFreeRows, QuotedCells({"", "", "", "", "", "", ""}));
    for (int row = kGearboxParts; row >= 1; --row) {
        const CountedPart& part = kGearbox.at(static_cast<std::size_t>(row - 1));
        const std::string sheet = row == 1 ? "2" : row == 3 ? "3" : "";
        expected.push_back(
            QuotedCells({std::to_string(row), part.name, part.quantity, "", "", "", sheet}));
    }
    const std::string drawing = catia_.Drawing();
    const std::size_t sheet_end = drawing.find("sheet \"Hřídel\"");
    ASSERT_NE(sheet_end, std::string::npos);
    EXPECT_EQ(testing_support::TableRows(drawing.substr(0, sheet_end)), expected);
    EXPECT_NE(drawing.find("table at 100 100"), std::string::npos) << drawing;
    EXPECT_NE(drawing.find("columns 13.88 43.67 15.76 37.51 34.61 31.53 14.68"), std::string::npos);
}

TEST_F(Road, WalkMakesFourCallsPerInstanceAndLooksEveryNameUpOnce) {
    catia_.Do("log clear");
    Walk();
    const Rows log = catia_.Log();
    const int calls = CallsMade(log);
    constexpr int kOnce = 6; // the document, its name, the top product, its number and children
    EXPECT_LE(calls, 4 * kInstances + kOnce);
    EXPECT_GE(calls, 4 * kInstances);
    EXPECT_EQ(RepeatedLookups(log), Rows());
}

TEST_F(Road, TableTakesExactlyTheCallsItNeeds) {
    FillFromCatia();
    catia_.Do("log clear");
    CreateTable();
    const Rows log = catia_.Log();
    const std::map<std::string, int> expected{
        {"Application.ActiveDocument", 2}, // at the start, and for the selection at the end
        {"DrawingDocument.Name", 1},
        {"DrawingDocument.Selection", 2},
        {"DrawingDocument.Sheets", 1},
        {"DrawingSheets.ActiveSheet", 1},
        {"DrawingSheet.Views", 1},
        {"DrawingViews.ActiveView", 1},
        {"DrawingView.Tables", 1},
        {"DrawingTables.Add", 1},
        {"DrawingTable.SetRowSize", 1},
        {"DrawingTable.SetColumnSize", 7},
        {"DrawingTable.GetCellObject", 7 * kTableRows},
        {"DrawingText.SetFontSize", 7 * kTableRows},
        {"DrawingTable.SetCellString", 7 * (1 + kGearboxParts)},
        {"Selection.Add", 1},
        {"Selection.VisProperties", 1},
        {"VisPropertySet.SetRealWidth", 1}};
    EXPECT_EQ(CallCounts(log), expected);
    EXPECT_EQ(RepeatedLookups(log), Rows());

    const auto made = [&](const std::string& call) {
        return std::count(log.begin(), log.end(), call);
    };
    EXPECT_EQ(made("DrawingTables.Add(100.0, 100.0, 28, 7, \"6.8\", 20)"), 1);
    EXPECT_EQ(made("DrawingTable.SetRowSize(1, \"4.9\")"), 1);
    EXPECT_EQ(made("DrawingTable.SetColumnSize(2, \"43.67\")"), 1);
    EXPECT_EQ(made("DrawingTable.SetCellString(28, 1, 1.0)"), 1); // the position is a number
    EXPECT_EQ(made("DrawingTable.SetCellString(28, 3, \"1\")"), 1);
}

TEST_F(Road, WithADrawingActiveTheWalkSaysSo) {
    catia_.Do("activate Gearbox.CATDrawing");
    dorvak_.Press(ID_Command3);
    dorvak_.WaitForStatus("Neni aktivni CATProduct");
    EXPECT_EQ(Text(dorvak_[ID_Text1]), "");
}

TEST_F(Road, WithAProductActiveTheTableSaysSo) {
    FillFromCatia();
    catia_.Do("activate Gearbox.CATProduct");
    dorvak_.OpenPage(kExportPage);
    dorvak_.Press(ID_Command11);
    dorvak_.WaitForStatus("Neni aktivni CATDrawing");
}
