#include "fixture.hpp"

#include <algorithm>

namespace driver {

void BuildTree(const DorvakWindow& dorvak, const std::string& structure_text) {
    dorvak.OpenPage(kStructurePage);
    PasteText(dorvak[ID_Text1], structure_text);
    dorvak.Press(ID_Command5);
    const auto lines = std::count(structure_text.begin(), structure_text.end(), '\n');
    WaitUntil("the tree", [&] {
        return Send(dorvak[ID_TreeView1], TVM_GETCOUNT) == static_cast<LRESULT>(lines);
    });
}

void FillList(const DorvakWindow& dorvak, const std::string& structure_text, int expected_rows) {
    BuildTree(dorvak, structure_text);
    dorvak.Press(ID_Command4);
    WaitUntil("the parts list", [&] { return RowCount(dorvak[ID_ListView1]) == expected_rows; });
    dorvak.OpenPage(kEditPage);
}

std::vector<std::string> Column(HWND list, int column) {
    std::vector<std::string> cells;
    for (int row = 0; row < RowCount(list); ++row) {
        cells.push_back(Cell(list, row, column));
    }
    return cells;
}

} // namespace driver
