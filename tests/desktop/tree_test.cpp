// The tree built from a pasted structure text, its check boxes, and the list that is counted from
// it.
#include <array>

#include "fixture.hpp"

using namespace driver;

namespace {

using Rows = std::vector<std::string>;

const std::string kStructure = "\r\n0\tProduct1"
                               "\r\n1\tPart 77\tProduct1"
                               "\r\n1\tPart 46\tProduct1"
                               "\r\n1\tPart 46\tProduct1"
                               "\r\n1\tProduct2.2\tProduct1\tProduct1|||||Product2.2*1*"
                               "\r\n2\tPart 12\tProduct1|||||Product2.2*1*"
                               "\r\n2\tPart 46\tProduct1|||||Product2.2*1*"
                               "\r\n1\tProduct2.2\tProduct1\tProduct1|||||Product2.2*2*"
                               "\r\n2\tPart 12\tProduct1|||||Product2.2*2*"
                               "\r\n2\tPart 46\tProduct1|||||Product2.2*2*";

class Tree : public DesktopTest {
  protected:
    [[nodiscard]] HWND View() const { return dorvak_[ID_TreeView1]; }

    // Clicks the check box of the n-th node and waits until it is off.
    void Uncheck(std::size_t node) const {
        const HTREEITEM item = TreeItems(View())[node].item;
        Click(View(), TreeCheckPoint(View(), item));
        WaitUntil("the node unchecked", [&] { return !TreeItems(View())[node].checked; });
    }

    // A letter for each node, from the top down: x for checked, - for not.
    [[nodiscard]] std::string Checks() const {
        std::string checks;
        for (const TreeItem& item : TreeItems(View())) {
            checks += item.checked ? 'x' : '-';
        }
        return checks;
    }

    void WaitForChecks(const std::string& expected) const {
        WaitForText("the check boxes", expected, [this] { return Checks(); });
    }

    DorvakWindow dorvak_;
};

} // namespace

TEST_F(Tree, ShowsEveryLineAsACheckedNodeUnderItsParent) {
    BuildTree(dorvak_, kStructure);
    const std::vector<TreeItem> items = TreeItems(View());
    ASSERT_EQ(items.size(), 10U);
    const std::array texts{"Product1", "Part 77", "Part 46",    "Part 46", "Product2.2",
                           "Part 12",  "Part 46", "Product2.2", "Part 12", "Part 46"};
    const std::array depths{0, 1, 1, 1, 1, 2, 2, 1, 2, 2};
    const std::array assembly{true, false, false, false, true, false, false, true, false, false};
    for (std::size_t node = 0; node < items.size(); ++node) {
        EXPECT_EQ(items[node].text, texts[node]);
        EXPECT_EQ(items[node].depth, depths[node]);
        EXPECT_EQ(items[node].image == items[0].image, assembly[node]) << texts[node];
    }
    EXPECT_EQ(Checks(), "xxxxxxxxxx");
}

TEST_F(Tree, UncheckingASubAssemblyUnchecksItsSubtreeAndItsOtherInstance) {
    BuildTree(dorvak_, kStructure);
    Uncheck(4);
    WaitForChecks("xxxx------");
}

TEST_F(Tree, UncheckingALeafUnchecksItsLikesUnderTheSameParentOnly) {
    BuildTree(dorvak_, kStructure);
    Uncheck(2);
    WaitForChecks("xx--xxxxxx");
}

TEST_F(Tree, UncheckingTheRootUnchecksEverything) {
    BuildTree(dorvak_, kStructure);
    Uncheck(0);
    WaitForChecks("----------");
}

TEST_F(Tree, SpaceTogglesTheSelectedNode) {
    BuildTree(dorvak_, kStructure);
    Uncheck(0); // gives the tree the focus
    WaitForChecks("----------");
    Send(View(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(TreeItems(View())[4].item));
    PressKey(VK_SPACE);
    WaitForChecks("----xxxxxx");
}

TEST_F(Tree, TheListHoldsOneRowPerCheckedPartWithTheQuantityOfAllItsNodes) {
    BuildTree(dorvak_, kStructure);
    Uncheck(2); // the two "Part 46" under the top; two more stay checked
    dorvak_.Press(ID_Command4);
    WaitForText("the second panel", "Pozic: 3", [&] { return dorvak_.Positions(); });
    const HWND list = dorvak_[ID_ListView1];
    WaitUntil("three rows", [&] { return RowCount(list) == 3; });
    EXPECT_EQ(Column(list, 0), (Rows{"Part 77", "Part 12", "Part 46"}));
    EXPECT_EQ(Column(list, 1), (Rows{"0001", "0002", "0003"}));
    EXPECT_EQ(Column(list, 2), (Rows{"1", "2", "4"}));
    EXPECT_EQ(Column(dorvak_[ID_ListView2], 0), Column(list, 0));
    EXPECT_EQ(Column(dorvak_[ID_ListView2], 1), Column(list, 2));
}

TEST_F(Tree, ALineWithAnUnknownParentIsSkippedAndReported) {
    dorvak_.OpenPage(kStructurePage);
    PasteText(dorvak_[ID_Text1], "0\tTop\r\n1\tStray\tNowhere\r\n1\tPart\tTop");
    dorvak_.Press(ID_Command5);
    WaitUntil("two nodes", [&] { return TreeItems(View()).size() == 2; });
    EXPECT_EQ(TreeItems(View())[1].text, "Part");
    dorvak_.WaitForStatus("Preskoceno radku: 1 prvni je radek 2");
}

TEST_F(Tree, ALongNameLeavesTheCheckBoxesInSight) {
    const std::string name(80, 'W');
    BuildTree(dorvak_, "\r\n0\t" + name + "\r\n1\tPart 1\t" + name);
    const RECT label = TreeLabel(View(), TreeItems(View()).front().item);
    EXPECT_GT(label.left, 2 * 16) << "beside the check box and the image";
}
