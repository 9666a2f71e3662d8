#include "controls/tree_view.hpp"

#include <gtest/gtest.h>

#include "tests/support/error_of.hpp"

namespace {

using controls::TreeView;
using testing_support::ErrorOf;

TEST(TreeView, ChildrenHangUnderTheNodeOfTheirParentsKey) {
    TreeView tree;
    EXPECT_EQ(tree.AddRoot("top", "Product1", 1), 1U);
    EXPECT_EQ(tree.AddChild("top", "sub", "Product2", 1), 2U);
    EXPECT_EQ(tree.AddChild("sub", "", "Part", 2), 3U);
    EXPECT_EQ(tree.Node(3).parent, 2U);
    EXPECT_EQ(tree.FullPath(3), "Product1\\Product2\\Part");
    EXPECT_EQ(tree.FullPath(1), "Product1");
}

TEST(TreeView, AnUnknownParentIsAnElementNotFound) {
    TreeView tree;
    EXPECT_EQ(ErrorOf([&] { tree.AddChild("x", "", "Part", 2); }), 35601);
    EXPECT_EQ(ErrorOf([&] { tree.AddChild("", "", "Part", 2); }), 35601);
    EXPECT_EQ(tree.Count(), 0U);
}

TEST(TreeView, AKeyIsUniqueAndEmptyKeysAreNone) {
    TreeView tree;
    tree.AddRoot("top", "a", 1);
    EXPECT_EQ(ErrorOf([&] { tree.AddRoot("top", "b", 1); }), 35602);
    tree.AddChild("top", "", "leaf", 2);
    tree.AddChild("top", "", "leaf", 2);
    EXPECT_EQ(tree.Count(), 3U);
    tree.Clear();
    EXPECT_EQ(tree.AddRoot("top", "a", 1), 1U);
}

TEST(TreeView, NodesCountFromOneAndOthersAreOutOfBounds) {
    TreeView tree;
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(tree.Node(1)); }), 35600);
    EXPECT_EQ(ErrorOf([&] { tree.SetChecked(0, true); }), 35600);
    EXPECT_EQ(ErrorOf([&] { tree.EnsureVisible(1); }), 35600);
}

} // namespace
