// "Seřadit podle jména" and "Seřadit podle materiálu".

#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "tests/support/headless_form.hpp"

namespace {

using testing_support::AddRow;
using testing_support::Column;
using testing_support::HeadlessForm;
using Texts = std::vector<std::string>;

struct Ordering : testing::Test, HeadlessForm {
    controls::ListView& list = form.ListView1;

    void AddPart(const std::string& name, const std::string& material = {}, bool checked = false) {
        AddRow(list, {name, "0009", "1", "", material}, checked);
    }
};

TEST_F(Ordering, ByNameNumbersCountByTheirValueAndLettersAreCzech) {
    for (const char* name : {"Šroub M10", "Chladič", "Šroub M6", "Hřídel", "Cihla", "Čep", ""}) {
        AddPart(name);
    }
    form.m_Seradit_jmeno.Click();
    EXPECT_EQ(Column(list, 0),
              (Texts{"", "Cihla", "Čep", "Hřídel", "Chladič", "Šroub M6", "Šroub M10"}));
    EXPECT_EQ(Column(list, 1), (Texts{"0001", "0002", "0003", "0004", "0005", "0006", "0007"}));
}

TEST_F(Ordering, RowsAreNumberedAsAfterADragAndChecksGoWithThem) {
    AddPart("c", "", true);
    AddPart("b");
    AddPart("a", "", true);
    form.m_Seradit_jmeno.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"a", "b", "c"}));
    EXPECT_EQ(Column(list, 3), (Texts{"2", "", "3"}));
    EXPECT_TRUE(list.Row(1).checked);
    EXPECT_FALSE(list.Row(2).checked);
    EXPECT_TRUE(list.Row(3).checked);
    EXPECT_FALSE(list.Sorted());
}

TEST_F(Ordering, SelectionMarksAndCurrentRowStayWithTheirRows) {
    AddPart("c");
    AddPart("b");
    AddPart("a");
    list.SetSelected(1, true);
    list.SetMarked(2, true);
    list.SetCurrentRow(3);
    form.m_Seradit_jmeno.Click();
    EXPECT_EQ(list.CurrentRow(), 1U);
    EXPECT_TRUE(list.Row(3).selected);
    EXPECT_FALSE(list.Row(1).selected);
    EXPECT_TRUE(list.Row(2).marked);
    EXPECT_EQ(list.TakeRowToShow(), 1U);
}

TEST_F(Ordering, ByMaterialThenByNameThoseWithoutOneLast) {
    AddPart("b", "S355");
    AddPart("x");
    AddPart("M10", "S235");
    AddPart("c", " ");
    AddPart("M6", "S235");
    AddPart("č", "ocel");
    form.m_Seradit_material.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"č", "M6", "M10", "b", "c", "x"}));
    EXPECT_EQ(Column(list, 1), (Texts{"0001", "0002", "0003", "0004", "0005", "0006"}));
}

TEST_F(Ordering, RowsThatAreAlikeKeepTheirOrder) {
    for (const char* quantity : {"1", "2", "3"}) {
        AddPart("same", "S235");
        list.SetSubItem(list.Count(), controls::kQuantity, quantity);
    }
    form.m_Seradit_jmeno.Click();
    EXPECT_EQ(Column(list, 2), (Texts{"1", "2", "3"}));
    form.m_Seradit_material.Click();
    EXPECT_EQ(Column(list, 2), (Texts{"1", "2", "3"}));
}

TEST_F(Ordering, IsOneStepOfItsName) {
    AddPart("b", "1");
    AddPart("a", "2");
    form.parts_history.Start();
    form.m_Seradit_jmeno.Click();
    EXPECT_EQ(form.m_Zpet.caption, "Zpět: Seřadit podle jména");
    form.m_Zpet.Click();
    EXPECT_EQ(Column(list, 0), (Texts{"b", "a"}));
    EXPECT_EQ(Column(list, 1), (Texts{"0009", "0009"}));
    form.m_Seradit_material.Click();
    EXPECT_EQ(form.m_Zpet.caption, "Zpět: Seřadit podle materiálu");
}

TEST_F(Ordering, OfNoRowAndOfOne) {
    form.m_Seradit_jmeno.Click();
    form.m_Seradit_material.Click();
    EXPECT_EQ(list.Count(), 0U);
    list.UserMenuKey();
    for (const controls::MenuItem* item :
         {&form.m_Seradit_jmeno, &form.m_Seradit_material, &form.m_Doplnit_zname}) {
        EXPECT_FALSE(item->Enabled());
    }
    AddPart("a");
    form.m_Seradit_material.Click();
    EXPECT_EQ(Column(list, 1), Texts{"0001"});
    list.UserMenuKey();
    EXPECT_TRUE(form.m_Seradit_jmeno.Enabled());
}

TEST_F(Ordering, AtTheYieldOfADragItLeavesAListInOrder) {
    AddPart("3");
    AddPart("2");
    AddPart("1");
    events.at_yield[1] = [this] { form.m_Seradit_jmeno.Click(); };
    testing_support::Drag(list, 1, 3);
    EXPECT_EQ(Column(list, 0), (Texts{"1", "2", "3"}));
    EXPECT_EQ(Column(list, 1), (Texts{"0001", "0002", "0003"}));
    EXPECT_FALSE(list.Sorted());
}

TEST_F(Ordering, TenThousandRowsTakeNoTime) {
    std::mt19937 random(1);
    for (int row = 0; row < 10'000; ++row) {
        AddPart("Šroub M" + std::to_string(random() % 10'000), "S" + std::to_string(random() % 9));
    }
    const auto start = std::chrono::steady_clock::now();
    form.m_Seradit_jmeno.Click();
    form.m_Seradit_material.Click();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(list.SubItem(10'000, controls::kPosition), "10000");
}

} // namespace
