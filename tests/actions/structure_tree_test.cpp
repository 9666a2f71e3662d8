// "naplneni tree" and the tree's check boxes.

#include <gtest/gtest.h>

#include "structure/structure.hpp"
#include "tests/support/headless_form.hpp"

namespace {

using testing_support::HeadlessForm;

struct Tree : testing::Test, HeadlessForm {
    controls::TreeView& tree = form.TreeView1;

    void Build(std::string_view text) {
        form.Text1.SetText(std::string(text));
        form.Command5.Click();
    }
    std::vector<std::size_t> NodesAt(std::string_view path) {
        std::vector<std::size_t> nodes;
        for (std::size_t node = 1; node <= tree.Count(); ++node) {
            if (tree.FullPath(node) == path) {
                nodes.push_back(node);
            }
        }
        return nodes;
    }
    // The full paths of the nodes that are not checked.
    std::vector<std::string> Unchecked() {
        std::vector<std::string> paths;
        for (std::size_t node = 1; node <= tree.Count(); ++node) {
            if (!tree.Node(node).checked) {
                paths.push_back(tree.FullPath(node));
            }
        }
        return paths;
    }
};

TEST_F(Tree, TheSampleHasOneRootTwoSubtreesAndIdenticalLeaves) {
    form.Command5.Click();
    EXPECT_EQ(NodesAt("Product1"), std::vector<std::size_t>{1});
    const auto subtrees = NodesAt("Product1\\Product2.2");
    ASSERT_EQ(subtrees.size(), 2U);
    for (const std::size_t subtree : subtrees) {
        EXPECT_EQ(tree.Node(subtree).parent, 1U);
        EXPECT_EQ(tree.Node(subtree).image, 1);
    }
    EXPECT_TRUE(tree.HasKey("Product1|||||Product2.2*1*"));
    EXPECT_TRUE(tree.HasKey("Product1|||||Product2.2*3*"));
    const auto leaves = NodesAt("Product1\\Part 46");
    EXPECT_EQ(leaves.size(), 3U);
    for (const std::size_t leaf : leaves) {
        EXPECT_EQ(tree.Node(leaf).image, 2);
    }
    EXPECT_EQ(tree.Count(), 29U);
}

TEST_F(Tree, EveryNodeIsExpandedAndCheckedAndTheFirstIsShown) {
    form.Command5.Click();
    for (std::size_t node = 1; node <= tree.Count(); ++node) {
        EXPECT_TRUE(tree.Node(node).expanded && tree.Node(node).checked) << node;
    }
    EXPECT_EQ(tree.TakeNodeToShow(), 1U);
}

TEST_F(Tree, AnEmptyTextLeavesTheTreeAsItWas) {
    form.Command5.Click();
    Build("");
    EXPECT_EQ(tree.Count(), 29U);
}

TEST_F(Tree, ATextOfBlanksClearsTheTree) {
    form.Command5.Click();
    Build("   ");
    EXPECT_EQ(tree.Count(), 0U);
    EXPECT_EQ(Status(), "");
}

TEST_F(Tree, BlanksAroundTheTextAreIgnoredAndThoseInsideKept) {
    Build("  0\tA B\r\n1\t c \tA B  ");
    ASSERT_EQ(tree.Count(), 2U);
    EXPECT_EQ(tree.Node(2).text, " c ");
}

TEST_F(Tree, UncheckingOnePart46UncheckItsTwinsUnderTheSameParentOnly) {
    form.Command5.Click();
    tree.UserCheck(NodesAt("Product1\\Part 46")[1], false);
    EXPECT_EQ(Unchecked(), (std::vector<std::string>(3, "Product1\\Part 46")));
}

TEST_F(Tree, UncheckingOneProduct22UncheckBothInstancesAndEverythingBelow) {
    form.Command5.Click();
    tree.UserCheck(NodesAt("Product1\\Product2.2")[1], false);
    EXPECT_EQ(Unchecked().size(), 2U * (1 + 2 + 1 + 8));
    for (const std::string& path : Unchecked()) {
        EXPECT_EQ(path.find("Product1\\Product2.2"), 0U) << path;
    }
}

TEST_F(Tree, CheckingAgainChecksTheSameNodes) {
    form.Command5.Click();
    tree.UserCheck(1, false);
    EXPECT_EQ(Unchecked().size(), 29U);
    tree.UserCheck(NodesAt("Product1\\Product2.2")[0], true);
    EXPECT_EQ(Unchecked().size(), 29U - 24U);
    EXPECT_FALSE(tree.Node(1).checked) << "the parent stays as it is";
}

TEST_F(Tree, APathThatMerelyContainsThePrefixChangesToo) {
    // "X\A\B" holds "A\" though it stands elsewhere.
    Build("0\tX\r\n1\tA\tX\tX|A\r\n2\tB\tX|"
          "A\r\n0\tA\r\n1\tC\tA\r\n0\tBA\r\n1\tD\tBA\r\n0\tAB\r\n1\tE\tAB");
    tree.UserCheck(NodesAt("A")[0], false);
    EXPECT_EQ(Unchecked(), (std::vector<std::string>{"X\\A\\B", "A", "A\\C", "BA\\D"}));
}

TEST_F(Tree, TheSearchIsCaseSensitive) {
    Build("0\ta\r\n1\tc\ta\r\n0\tA\r\n1\tc\tA");
    tree.UserCheck(NodesAt("a")[0], false);
    EXPECT_EQ(Unchecked(), (std::vector<std::string>{"a", "a\\c"}));
}

TEST_F(Tree, APartNumberWithThePathSeparatorStaysInTheRules) {
    Build("0\tA\r\n1\tB\\C\tA\r\n1\tB\tA\tk\r\n2\tC\tk\r\n1\tB\\D\\E\tA");
    tree.UserCheck(NodesAt("A\\B")[0], false);
    EXPECT_EQ(Unchecked(), (std::vector<std::string>{"A\\B\\C", "A\\B", "A\\B\\C", "A\\B\\D\\E"}));
}

TEST_F(Tree, ALineWithAnUnknownParentIsSkippedAndReportedAndTheRestBuilds) {
    Build("\r\n0\tA\r\n1\tx\tnobody\r\n1\ty\tA");
    EXPECT_EQ(tree.Count(), 2U);
    EXPECT_EQ(tree.Node(2).text, "y");
    EXPECT_EQ(Status(), "Preskoceno radku: 1 prvni je radek 3");
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(Tree, AKeyThatIsAlreadyThereIsSkippedAndReported) {
    Build("0\tA\r\n0\tA\r\n1\tB\tA\tk\r\n1\tC\tA\tk\r\n2\td\tk");
    EXPECT_EQ(tree.Count(), 3U);
    EXPECT_EQ(tree.Node(3).parent, 2U);
    EXPECT_EQ(Status(), "Preskoceno radku: 2 prvni je radek 2");
}

TEST_F(Tree, AFirstFieldThatIsNoNumberIsSkippedAndReported) {
    Build("0\tA\r\nx\ty\tA\r\n1\tz\tA");
    EXPECT_EQ(tree.Count(), 2U);
    EXPECT_EQ(Status(), "Preskoceno radku: 1 prvni je radek 2");
}

TEST_F(Tree, ALineOfTwoFieldsBelowTheTopIsSkippedAndReported) {
    Build("0\tA\r\n1\tz");
    EXPECT_EQ(tree.Count(), 1U);
    EXPECT_EQ(Status(), "Preskoceno radku: 1 prvni je radek 2");
}

TEST_F(Tree, LinesOutOfOrderAreReportedAndTheRestStands) {
    Build("1\ty\tA\r\n0\tA\r\n1\tz\tA");
    EXPECT_EQ(tree.Count(), 2U);
    EXPECT_EQ(Status(), "Preskoceno radku: 1 prvni je radek 1");
}

TEST_F(Tree, TextThatIsNoStructureAtAllBuildsAnEmptyTree) {
    Build("just\r\nwords\r\nwithout tabs");
    EXPECT_EQ(tree.Count(), 0U);
    EXPECT_EQ(Status(), "");
}

} // namespace
