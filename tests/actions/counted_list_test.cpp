// "Naplň list", and the buttons with test data.

#include <gtest/gtest.h>

#include "tests/support/headless_form.hpp"

namespace {

using testing_support::Column;
using testing_support::HeadlessForm;
using testing_support::RowTexts;
using Texts = std::vector<std::string>;

struct CountedList : testing::Test, HeadlessForm {
    controls::ListView& list = form.ListView1;

    void Build(std::string_view text) {
        form.Text1.SetText(std::string(text));
        form.Command5.Click();
    }
    void Uncheck(std::size_t node) { form.TreeView1.SetChecked(node, false); }
};

TEST_F(CountedList, TheSampleGivesItsPartsInOrderOfAppearanceWithPositionsAndQuantities) {
    form.Command5.Click();
    form.Command4.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"Part 77", "Part 46", "Part 12", "Part 87"}));
    EXPECT_EQ(Column(list, 1), (Texts{"0001", "0002", "0003", "0004"}));
    EXPECT_EQ(Column(list, 2), (Texts{"1", "11", "4", "8"}));
    EXPECT_EQ(RowTexts(list, 1), (Texts{"Part 77", "0001", "1", "", "", "", ""}));
    EXPECT_EQ(Column(form.ListView2, 0), Column(list, 0));
    EXPECT_EQ(Column(form.ListView2, 1), Column(list, 2));
    EXPECT_EQ(RowCount(), "Pozic: 4");
    EXPECT_FALSE(Busy());
}

TEST_F(CountedList, APartWhoseNodesAreAllUncheckedGetsNoRow) {
    form.Command5.Click();
    form.TreeView1.UserCheck(2, false);
    form.Command4.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"Part 46", "Part 12", "Part 87"}));
}

TEST_F(CountedList, WithEveryPartUncheckedTheListIsEmptyAndTheCountSaysSo) {
    form.m_Pridat.Click();
    form.Command5.Click();
    form.TreeView1.UserCheck(1, false);
    form.Command4.Click();
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_EQ(form.ListView2.Count(), 0U);
    EXPECT_EQ(RowCount(), "Pozic: 0");
    EXPECT_FALSE(Busy());
}

TEST_F(CountedList, OneCheckedNodeAmongTenGivesARowWithQuantityTen) {
    std::string text = "0\tA";
    for (int i = 0; i < 10; ++i) {
        text += "\r\n1\tpart\tA";
    }
    Build(text);
    for (std::size_t node = 2; node <= 10; ++node) {
        Uncheck(node);
    }
    form.Command4.Click();
    ASSERT_EQ(list.Count(), 1U);
    EXPECT_EQ(list.SubItem(1, 2), "10");
}

TEST_F(CountedList, ASubAssemblyOfAPartsNameIsCountedWithIt) {
    Build("0\tA\r\n1\tx\tA\r\n1\tx\tA\tk\r\n2\ty\tk");
    form.Command4.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"x", "y"}));
    EXPECT_EQ(Column(list, 2), (Texts{"2", "1"}));
}

TEST_F(CountedList, AssembliesGetNoRow) {
    Build("0\tA\r\n1\tB\tA\tk");
    form.Command4.Click();
    EXPECT_EQ(list.Count(), 0U);
    EXPECT_EQ(RowCount(), "Pozic: 0");
}

TEST_F(CountedList, NamesAreComparedExactly) {
    Build("0\tA\r\n1\tx\tA\r\n1\tX\tA\r\n1\tx \tA\r\n1\tHřídel\tA\r\n1\thřídel\tA");
    form.Command4.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"x", "X", "x ", "Hřídel", "hřídel"}));
}

TEST_F(CountedList, RowsFollowTheFirstCheckedNode) {
    Build("0\tA\r\n1\tx\tA\r\n1\ty\tA\r\n1\tx\tA");
    Uncheck(2);
    form.Command4.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"y", "x"}));
    EXPECT_EQ(Column(list, 2), (Texts{"1", "2"}));
}

TEST_F(CountedList, AnEmptyTreeLeavesBothListsAsTheyWereWithoutAMessage) {
    list.Add("kept");
    form.ListView2.Add("kept");
    form.Command4.Click();
    EXPECT_EQ(list.Count(), 1U);
    EXPECT_EQ(form.ListView2.Count(), 1U);
    EXPECT_EQ(RowCount(), "");
    EXPECT_EQ(Status(), "");
}

TEST_F(CountedList, PressingTwiceGivesTheSameRowsWithoutTheAttributesEntered) {
    form.Command5.Click();
    form.Command4.Click();
    list.SetSubItem(1, 4, "S235");
    list.SetChecked(1, true);
    form.Command4.Click();
    EXPECT_EQ(list.Count(), 4U);
    EXPECT_EQ(RowTexts(list, 1), (Texts{"Part 77", "0001", "1", "", "", "", ""}));
    EXPECT_FALSE(list.Row(1).checked);
}

TEST_F(CountedList, ManyDistinctPartsGetPositionsBeyondFourDigits) {
    std::string text = "0\tA";
    for (int i = 1; i <= 12345; ++i) {
        text += "\r\n1\tp" + std::to_string(i) + "\tA";
    }
    Build(text);
    form.Command4.Click();
    EXPECT_EQ(list.Count(), 12345U);
    EXPECT_EQ(list.SubItem(12345, 1), "12345");
    EXPECT_EQ(list.SubItem(999, 1), "0999");
}

TEST_F(CountedList, GeneratorLeavesExactlyTenRowsWhateverWasThere) {
    list.Add("old");
    list.SetSubItem(1, 5, "x");
    form.ListView2.Add("kept");
    form.Command1.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"A", "B", "C", "D", "E", "F", "G", "H", "I", "J"}));
    EXPECT_EQ(Column(list, 1), (Texts{"0001", "0002", "0003", "0004", "0005", "0006", "0007",
                                      "0008", "0009", "0010"}));
    EXPECT_EQ(RowTexts(list, 1), (Texts{"A", "0001", "", "", "", "", ""}));
    EXPECT_EQ(form.ListView2.Count(), 1U);
}

TEST_F(CountedList, TestRovnaniGeneratesAndShowsItsTwoFixedValues) {
    form.Command2.Click();
    EXPECT_EQ(list.Count(), 10U);
    EXPECT_EQ(list.Row(1).text, "A");
    EXPECT_EQ(Status(), "6");
    EXPECT_EQ(RowCount(), "3");
}

} // namespace
