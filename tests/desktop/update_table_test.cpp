// A table of the drawing brought to the list's state, over COM.
#include "fixture.hpp"
#include "tests/support/drawing_text.hpp"

using namespace driver;

namespace {

using Texts = std::vector<std::string>;

class UpdateTable : public DesktopTest {};

TEST_F(UpdateTable, FollowsTheListWithFewCalls) {
    const CatiaSession catia({kDrawing});
    const DorvakWindow dorvak;
    FillList(dorvak, "0\tStroj\r\n1\tHřídel\tStroj\r\n1\tKolo\tStroj\r\n1\tVíko\tStroj\r\n", 3);
    dorvak.OpenPage(kExportPage);
    dorvak.Press(ID_Command11);
    dorvak.WaitForStatus("Tabulka vytvorena Ok ");
    const Texts made = testing_support::TableRows(catia.Drawing());
    ASSERT_GE(made.size(), 9U) << catia.Drawing();

    // The new table is selected. One quantity changes, and one part comes.
    dorvak.OpenPage(kEditPage);
    SelectRow(dorvak[ID_ListView1], 1);
    PasteText(FindWindowExW(dorvak[ID_Combo4], nullptr, L"Edit", nullptr), "7");
    PressKey(VK_RETURN);
    WaitForText("the quantity", "7", [&] { return Cell(dorvak[ID_ListView1], 1, kQuantity); });
    SelectRow(dorvak[ID_ListView1], 0);
    PressKey(VK_INSERT);
    WaitUntil("the row", [&] { return RowCount(dorvak[ID_ListView1]) == 4; });
    catia.Do("log clear");
    dorvak.OpenPage(kExportPage);
    KeepPicture("export-page.png");
    dorvak.Press(ID_Command37);
    dorvak.WaitForStatus("Aktualizovano bunek: 4, radku: +1");
    KeepPicture("table-updated.png");

    Texts expected = made;
    const auto row = [&](const char* cells) {
        return std::find(expected.begin(), expected.end(), cells);
    };
    const auto wheel = row(R"("2" "Kolo" "1" "" "" "" "")");
    ASSERT_NE(wheel, expected.end());
    *wheel = R"("2" "Kolo" "7" "" "" "" "")";
    const auto cover = row(R"("3" "Víko" "1" "" "" "" "")");
    ASSERT_NE(cover, expected.end());
    expected.insert(cover, R"("4" "Novy" "1" "" "" "" "")");
    EXPECT_EQ(testing_support::TableRows(catia.Drawing()), expected);
    const auto counts = CallCounts(catia.Log());
    EXPECT_EQ(counts.at("DrawingTable.GetCellString"), 9 * 7);
    EXPECT_EQ(counts.at("DrawingTable.SetCellString"), 4);
    EXPECT_EQ(counts.at("DrawingTable.AddRow"), 1);

    dorvak.Press(ID_Command37);
    dorvak.WaitForStatus("Aktualizovano bunek: 0, radku: 0");
}

} // namespace
