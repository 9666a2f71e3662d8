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
    const int rows = RowCount(list);
    std::vector<std::string> cells;
    cells.reserve(static_cast<std::size_t>(rows));
    for (int row = 0; row < rows; ++row) {
        cells.push_back(Cell(list, row, column));
    }
    return cells;
}

void WaitForColumn(HWND list, int column, const std::vector<std::string>& expected) {
    WaitForText("column " + std::to_string(column), Joined(expected),
                [&] { return Joined(Column(list, column)); });
}

HWND WaitForDialog(const DorvakWindow& dorvak, const std::string& title) {
    HWND dialog = nullptr;
    WaitUntil("the dialog \"" + title + '"', [&] {
        dialog = dorvak.Process().FindVisible("#32770");
        return dialog != nullptr && Text(dialog) == title;
    });
    return dialog;
}

void SelectRow(HWND list, int row) {
    Click(list, RowPoint(list, row));
    WaitUntil("the row selected",
              [&] { return RowSelected(list, row) && FocusedRow(list) == row; });
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts) {
        joined += text + "|";
    }
    return joined;
}

std::string QuotedCells(const std::vector<std::string>& cells) {
    std::string quoted;
    for (const std::string& cell : cells) {
        quoted += quoted.empty() ? "\"" : " \"";
        for (const char c : cell) {
            quoted.append(c == '"' || c == '\\' ? 1U : 0U, '\\');
            quoted += c;
        }
        quoted += '"';
    }
    return quoted;
}

} // namespace driver
