// The guide's first page, done to the letter: each step ends with the words that the page promises.
#include <gtest/gtest.h>

#include "tests/support/action_test.hpp"
#include "tests/support/source_text.hpp"

namespace {

using testing_support::Column;
using testing_support::Matches;
using testing_support::ReadSource;
using Texts = std::vector<std::string>;

struct GuideRoad : testing_support::ActionTest {
    const std::string page = ReadSource("docs/prirucka/prvni-tabulka.md");

    GuideRoad() {
        for (const char* file : {"gearbox-assembly.txt", "gearbox-drawing.txt"}) {
            session.LoadDocument(file, ReadSource(std::string("samples/") + file));
        }
    }

    // What stands as code in a step of the page.
    [[nodiscard]] Texts CodeOfStep(int step) const {
        const std::size_t begin = page.find("\n## " + std::to_string(step) + ".");
        const std::string part = page.substr(begin, page.find("\n## ", begin + 1) - begin);
        Texts code;
        for (const auto& match : Matches(part, std::regex("`([^`]+)`"))) {
            code.push_back(match[1]);
        }
        return code;
    }
    [[nodiscard]] bool Promises(int step, const std::string& text) const {
        return std::ranges::count(CodeOfStep(step), std::string(text::TrimBlanks(text))) == 1;
    }
    void Activate(const std::string& document) {
        session.Activate(document);
        Connect(session);
    }
    [[nodiscard]] std::size_t RowOf(const std::string& part) const {
        return form.ListView1.RowWithText(part).value_or(0);
    }
    // Tick, as a click on the box does.
    void Tick(const std::string& part) { form.ListView1.UserCheck(RowOf(part), true); }
    void TypeIntoCell(const std::string& part, std::size_t column, const std::string& text) {
        form.ListView1.CellEdit(
            {.row_id = form.ListView1.Row(RowOf(part)).id, .column = column, .text = text});
    }
};

TEST_F(GuideRoad, EndsEachStepWithTheWordsThatThePagePromises) {
    Activate("Gearbox.CATProduct");
    form.Command3.Click();
    EXPECT_TRUE(Promises(2, Status())) << Status();

    const std::size_t last = form.TreeView1.Count();
    ASSERT_EQ(form.TreeView1.Node(last).text, "Olejoznak") << "it is the last one in the tree";
    form.TreeView1.UserCheck(last, false);
    form.Command4.Click();
    EXPECT_TRUE(Promises(3, RowCount())) << RowCount();
    EXPECT_EQ(form.ListView1.SubItem(RowOf("Ložisko 6204"), controls::kQuantity), "4");
    EXPECT_EQ(form.ListView1.SubItem(RowOf("Podložka 8"), controls::kQuantity), "8");

    const Texts shafts{"Hřídel vstupní", "Hřídel", "Hřídel výstupní"};
    const Texts typed = CodeOfStep(4);
    ASSERT_EQ(typed.size(), 2U);
    Texts sheets;
    for (const std::string& shaft : shafts) {
        Tick(shaft);
        form.ListView1.SetSelected(RowOf(shaft), true);
    }
    form.Combo1.UserChange(typed[0]);
    form.Combo1.KeyPress(controls::kEnterKey);
    for (const std::string& shaft : shafts) {
        sheets.push_back(form.ListView1.SubItem(RowOf(shaft), controls::kSheet));
        EXPECT_EQ(form.ListView1.SubItem(RowOf(shaft), controls::kMaterial), typed[0]);
    }
    EXPECT_EQ(sheets, (Texts{"2", "3", "4"}));
    TypeIntoCell("Hřídel", controls::kSize, typed[1]);

    Activate("Gearbox.CATDrawing");
    form.Command11.Click();
    EXPECT_TRUE(Promises(6, Status())) << Status();
    ASSERT_FALSE(DrawnRows().empty());

    const Texts change = CodeOfStep(7);
    ASSERT_EQ(change.size(), 2U);
    EXPECT_NE(form.ListView1.SubItem(RowOf("Matice M8"), controls::kQuantity), change[0]);
    TypeIntoCell("Matice M8", controls::kQuantity, change[0]);
    form.Command37.Click();
    EXPECT_EQ(Status(), change[1]);

    form.Command10.Click();
    EXPECT_TRUE(Promises(8, Status())) << Status();
    const Texts names = Column(form.ListView1, 0);
    form.ListView1.Clear();
    form.Command9.Click();
    EXPECT_TRUE(Promises(8, Status())) << Status();
    EXPECT_EQ(Column(form.ListView1, 0), names);
    EXPECT_EQ(names.size(), 21U);
    EXPECT_NE(page.find("všech 21 dílů"), std::string::npos);
    for (const std::string& shaft : shafts) {
        EXPECT_TRUE(form.ListView1.Row(RowOf(shaft)).checked);
        EXPECT_EQ(form.ListView1.SubItem(RowOf(shaft), controls::kMaterial), typed[0]);
    }
    EXPECT_TRUE(message_boxes.shown.empty());
}

} // namespace
