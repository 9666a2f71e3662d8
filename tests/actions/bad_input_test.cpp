// Files, names, trees and numbers that nobody meant: every action ends, with its result or a clear
// error, and the form works on.

#include <gtest/gtest.h>

#include <chrono>

#include "partslist/partslist.hpp"
#include "tests/support/action_test.hpp"
#include "tests/support/drawing_samples.hpp"

namespace {

using testing_support::AddRow;
using testing_support::Column;
using testing_support::Drag;
using testing_support::RowTexts;
using Texts = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

constexpr const char* kFile = "C:\\Tabulky\\bad.tab";

struct BadInput : testing_support::ActionTest {
    controls::ListView& list = form.ListView1;
    controls::ListView& sheets = form.ListView3;
    Clock::time_point started = Clock::now();

    // Whatever has happened, the next table is made, and nothing has taken long.
    void TearDown() override {
        EXPECT_LT(std::chrono::duration<double>(Clock::now() - started).count(), 20.0)
            << "seconds, also on a slow machine with sanitizers";
        session.Arm({});
        Open("DrawingDocument Next.CATDrawing\nsheet s\n view v\n");
        form.Command19.Click();
        form.Command1.Click();
        form.Command11.Click();
        EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
        EXPECT_FALSE(Busy());
        EXPECT_EQ(DrawnRows().size(), 1U + 5U + 10U);
        EXPECT_FALSE(form.unloaded);
    }
    void LoadText(std::string file) {
        files.stored[kFile] = std::move(file);
        chosen_file = kFile;
        form.Command27.Click();
    }
    // Makes a table of one part with a line more, or another, in its configuration.
    void CreateWith(const std::string& line) {
        Open(testing_support::kEmptyDrawing);
        list.Clear();
        AddRow(list, {"Kolo", "0001", "1"});
        form.Text2.SetText(form.Text4.Text() + line + "\r\n");
        form.Command11.Click();
        EXPECT_TRUE(message_boxes.shown.empty()) << line;
    }
    void ExpectCreated(const std::string& line, const std::string& call) {
        CreateWith(line);
        EXPECT_EQ(Status(), "Tabulka vytvorena Ok ") << line;
        EXPECT_FALSE(Busy()) << line;
        EXPECT_TRUE(Called(call)) << line;
        session.ClearLog();
    }
    void ExpectEnded(const std::string& line, const std::string& status) {
        CreateWith(line);
        EXPECT_EQ(Status(), status) << line;
        EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kFailed) << line;
        EXPECT_FALSE(form.StatusBar1.ShownExplanation().text.empty()) << line;
        session.ClearLog();
    }
};

struct BadListFile : BadInput {};
struct LongNames : BadInput {};
struct DeepTree : BadInput {};
struct BadNumber : BadInput {};

constexpr std::size_t kMegabyte = 1 << 20;

TEST_F(BadListFile, AMegabyteOnOneLineWithoutASeparatorIsOneNameAndAnError) {
    const std::string line(kMegabyte, 'x');
    LoadText(line);
    EXPECT_EQ(Status(), "Nacteni Error 9 Subscript out of range");
    EXPECT_EQ(Column(list, 0), Texts{line});
    EXPECT_EQ(RowCount(), "Pozic: 1");
}

TEST_F(BadListFile, AMegabyteOfSeparatorsIsARowWithoutACheckedField) {
    LoadText(std::string(kMegabyte, '@'));
    EXPECT_EQ(Status(), "Nacteni Error 13 Type mismatch");
    EXPECT_EQ(Column(list, 0), Texts{""});
}

TEST_F(BadListFile, AHundredThousandFieldsAreARowOfTheFirstEightAndAnError) {
    std::string line = "name@@True";
    for (int field = 1; field <= 100'000; ++field) {
        line += "@@" + std::to_string(field);
    }
    LoadText(line + "\r\n");
    EXPECT_EQ(Status(), "Nacteni Error 380 Invalid property value");
    ASSERT_EQ(list.Count(), 1U);
    EXPECT_EQ(RowTexts(list, 1), (Texts{"name", "1", "2", "3", "4", "5", "6"}));
}

TEST_F(BadListFile, NulBytesStayInTheirFieldsAndComeBackFromAFile) {
    const std::string nul(1, '\0');
    LoadText("a" + nul + "b@@True@@" + nul + "@@1\r\n" + nul + "@@0\r\n");
    EXPECT_EQ(Status(), "Nacteni ok 2");
    const auto loaded = RowTexts(list, 1);
    EXPECT_EQ(loaded, (Texts{"a" + nul + "b", nul, "1", "", "", "", ""}));
    form.Command17.Click();
    form.Command27.Click();
    EXPECT_EQ(RowTexts(list, 1), loaded);
    EXPECT_EQ(list.Row(2).text, nul);
    LoadText("a@@True" + nul + "\r\n");
    EXPECT_EQ(Status(), "Nacteni Error 13 Type mismatch");
    LoadText(std::string(kMegabyte, '\0'));
    EXPECT_EQ(Status(), "Nacteni Error 9 Subscript out of range");
}

TEST_F(BadListFile, ALineWithoutAnEndIsReadWhereverItIsCut) {
    const std::string whole = "Part 12@@True@@0003@@4@@2@@S235@@20x40@@kalit\r\n";
    const std::size_t with_checked = std::string_view("Part 12@@True").size();
    for (std::size_t length = 1; length <= whole.size(); ++length) {
        LoadText(whole.substr(0, length));
        ASSERT_EQ(list.Count(), 1U) << length;
        EXPECT_EQ(RowCount(), "Pozic: 1") << length;
        // Cut inside the next separator, the checked field is no word that is known.
        const bool complete = length >= with_checked && length != with_checked + 1;
        EXPECT_EQ(Status() == "Nacteni ok 1", complete) << length << " " << Status();
        EXPECT_EQ(Status().starts_with("Nacteni Error "), !complete) << length << " " << Status();
    }
}

TEST_F(BadListFile, AHundredThousandRowsAreReadEditedAndWrittenBack) {
    constexpr std::size_t kRows = 100'000;
    std::string file;
    for (std::size_t row = 1; row <= kRows; ++row) {
        file += std::to_string(row) + "@@True@@" + text::FourDigits(row) + "@@1@@@@@@@@\r\n";
    }
    LoadText(file);
    EXPECT_EQ(Status(), "Nacteni ok 100000");
    list.UserCheck(2, false);
    EXPECT_EQ(list.SubItem(kRows, partslist::kSheet), "100000") << "one of them has no sheet";
    list.SetCurrentRow(1);
    form.m_Smazat.Click();
    EXPECT_EQ(list.SubItem(kRows - 1, partslist::kPosition), "99999");
    form.Command17.Click();
    form.Command27.Click();
    EXPECT_EQ(Status(), "Nacteni ok 99999");
    EXPECT_FALSE(list.Row(1).checked);
    EXPECT_EQ(RowTexts(list, kRows - 1), (Texts{"100000", "99999", "1", "100000", "", "", ""}));
}

TEST_F(BadListFile, AWorkingFileAndASettingOfRubbishDoNotKeepTheProgramFromStarting) {
    files.stored["C:\\Dorvak\\list.txt"] = std::string(kMegabyte, '\0') + "\r\n@@\r\n";
    files.stored["C:\\Dorvak\\Material.txt"] = std::string(kMegabyte, '\xFF');
    settings.stored["Lumsek\\Pantrel\\export"] = std::string(kMegabyte, ';');
    app::Form_Load(form);
    EXPECT_EQ(Status(), "Nacteni Error 9 Subscript out of range");
    EXPECT_EQ(RowCount(), "Pozic: 1");
    EXPECT_EQ(form.Check2.Value(), 1);
    EXPECT_EQ(form.Text2.Text().size(), kMegabyte);
    EXPECT_EQ(form.Combo1.Items().size(), 1U);
    EXPECT_TRUE(message_boxes.shown.empty());
    Open(testing_support::kEmptyDrawing);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Catie vytvari tabulku") << "there is no height";
}

TEST_F(LongNames, GoFromTheProductThroughTreeListFileAndTableAndBack) {
    const std::string name(10'000, 'n');
    const std::string other = name + "2";
    Open("ProductDocument P.CATProduct\nproduct " + name + "\n child " + other +
         " times 2\n child " + name + "A\nproduct " + name + "A\n child " + other + "\n");
    form.Command3.Click();
    EXPECT_EQ(Status(), "Sestav: 2 Partu: 3");
    ASSERT_EQ(form.TreeView1.Count(), 5U);
    EXPECT_EQ(form.TreeView1.Node(1).text, name);
    form.TreeView1.UserCheck(2, false);
    EXPECT_FALSE(form.TreeView1.Node(3).checked) << "its twin";
    EXPECT_TRUE(form.TreeView1.Node(5).checked);
    form.Command4.Click();
    EXPECT_EQ(Column(list, 0), Texts{other});
    EXPECT_EQ(list.SubItem(1, partslist::kQuantity), "3");
    for (std::size_t field = partslist::kSheet; field <= partslist::kNote; ++field) {
        list.SetSubItem(1, field, std::string(10'000, static_cast<char>('a' + field)));
    }
    const auto row = RowTexts(list, 1);

    chosen_file = kFile;
    form.Command17.Click();
    list.Clear();
    form.Command27.Click();
    EXPECT_EQ(Status(), "Nacteni ok 1");
    EXPECT_EQ(RowTexts(list, 1), row);

    Open(testing_support::kEmptyDrawing);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    list.Clear();
    form.Command9.Click();
    EXPECT_EQ(Status(), "Nacteni tabulky Ok");
    auto expected = row;
    expected[partslist::kPosition] = "1";
    EXPECT_EQ(RowTexts(list, 1), expected);
}

TEST_F(LongNames, NameSheetsToo) {
    const std::string name(10'000, 'n');
    Open("DrawingDocument D.CATDrawing\nsheet a\nsheet " + name + "\n");
    AddRow(list, {name, "0001", "1", "2"});
    form.Command21.Click();
    EXPECT_EQ(Column(sheets, 0), (Texts{"a", name}));
    form.Command22.Click();
    form.Command23.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"2." + name, name}));
    form.Command21.Click();
    form.Text5.UserChange(name + "x");
    sheets.SetCurrentRow(2);
    form.Command28.Click();
    form.Command23.Click();
    EXPECT_EQ(DrawnSheets(), (Texts{"2." + name, name + "x"}));
}

TEST_F(DeepTree, OfTwoHundredLevelsIsWalkedCheckedAndCounted) {
    constexpr int kLevels = 200;
    std::string product = "ProductDocument P.CATProduct\n";
    for (int level = 1; level <= kLevels; ++level) {
        const std::string number = std::to_string(level);
        product += "product A" + number + "\n child bolt\n child ";
        product += level < kLevels ? "A" + std::to_string(level + 1) : "last";
        product += "\n";
    }
    Open(product);
    form.Command3.Click();
    EXPECT_EQ(Status(), "Sestav: 200 Partu: 201");
    EXPECT_EQ(form.Uroven, 0);
    controls::TreeView& tree = form.TreeView1;
    ASSERT_EQ(tree.Count(), 401U);
    EXPECT_TRUE(tree.FullPath(401).ends_with("A199\\A200\\last")) << tree.FullPath(401).size();
    const auto checked = [&tree] {
        std::size_t count = 0;
        for (std::size_t node = 1; node <= tree.Count(); ++node) {
            count += tree.Node(node).checked ? 1 : 0;
        }
        return count;
    };
    tree.UserCheck(1, false);
    EXPECT_EQ(checked(), 0U);
    tree.UserCheck(1, true);
    EXPECT_EQ(checked(), 401U);
    tree.UserCheck(399, false); // the assembly at the bottom and its two parts
    EXPECT_EQ(tree.Node(399).text, "A200");
    EXPECT_EQ(checked(), 398U);
    form.Command4.Click();
    EXPECT_EQ(Column(list, 0), Texts{"bolt"});
    EXPECT_EQ(list.SubItem(1, partslist::kQuantity), "200");
}

TEST_F(BadNumber, InTheConfigurationIsZeroOrEndsAtTheCallThatRefusesIt) {
    ExpectCreated("/pozice;1e400;-1e400", R"(DrawingTables.Add(0.0, 0.0, 7, 7, "6.8", 20))");
    ExpectCreated("/pozice;;", R"(DrawingTables.Add(0.0, 0.0, 7, 7, "6.8", 20))");
    ExpectCreated("/pozice;nan;inf", R"(DrawingTables.Add(0.0, 0.0, 7, 7, "6.8", 20))");
    ExpectCreated("/AnchorPoint;abc", "DrawingTable.AnchorPoint = 0.0");
    ExpectCreated("/volny;1e400", R"(DrawingTables.Add(100.0, 100.0, 2, 7, "6.8", 20))");

    std::string empty_lines;
    for (std::size_t line = 0; line < kMegabyte / 2; ++line) {
        empty_lines += "\r\n";
    }
    ExpectCreated(empty_lines, R"(DrawingTables.Add(100.0, 100.0, 7, 7, "6.8", 20))");

    ExpectEnded("/sirka" + std::string(kMegabyte, ';'), "Zjistuju spusteni Catie");
    ExpectEnded("/volny;1e300", "Zjistuju spusteni Catie");
    ExpectEnded("/volny;2147483647", "Zjistuju spusteni Catie");
    ExpectEnded("/volny;-1e300", "Zjistuju spusteni Catie");
    ExpectEnded("/volny;200000", "Catie vytvari tabulku");
    ExpectEnded("/volny;-2", "Catie vytvari tabulku");
    ExpectEnded("/vyska1;1e400", "Catie upravuje velikost 1 radku");
    ExpectEnded("/vyska2;1e400", "Catie vytvari tabulku");
    ExpectEnded("/vyska2;-1", "Catie vytvari tabulku");
    ExpectEnded("/AnchorPoint;99999999999", "Catie upravuje pocatecni bod");
    ExpectEnded("/AnchorPoint;-1", "Catie upravuje pocatecni bod");
    ExpectEnded("/sirka;1e400", "Catie upravuje sirku slopcu");
    ExpectEnded("/fontsize1;1e400", "Catie upravuje font");
    ExpectEnded("/fontsize1;-1e300", "Catie upravuje font");
    ExpectEnded("/fontsize2;abc", "Catie upravuje font");
    ExpectEnded("/razeni;1e400", "Catie doplnuje radku 7/7");
    ExpectEnded("/tlouska_cary;99999999999", "Catie meni tlousku cary");
    ExpectEnded("/tlouska_cary;1e400", "Catie meni tlousku cary");
}

TEST_F(BadNumber, OfFreeRowsBelowNoneLetsTheListGoOverTheHeaderAsFarAsThereAreRows) {
    CreateWith("/volny;-1");
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    EXPECT_EQ(DrawnRows(), Texts{R"("1" "Kolo" "1" "" "" "" "")"});
    AddRow(list, {"Víko", "0002", "1"});
    form.Text2.SetText(form.Text4.Text() + "/volny;-2\r\n");
    form.Command11.Click();
    EXPECT_EQ(Status(), "Catie doplnuje radku 0/1") << "there is no such row";
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kFailed);
}

TEST_F(BadNumber, AsTheStartOfTheNumberingIsTakenOrIsZero) {
    AddRow(sheets, {"a"}, true);
    AddRow(sheets, {"b"}, true);
    const auto number = [&](const std::string& start) {
        form.Text6.UserChange(start);
        form.Command20.Click();
        return Column(sheets, controls::kNewName);
    };
    EXPECT_EQ(number("1e400"), (Texts{"0", "1"}));
    EXPECT_EQ(number("-1e400"), (Texts{"0", "1"}));
    EXPECT_EQ(number("-1"), (Texts{"-1", "0"}));
    EXPECT_EQ(Status(), "Ocislovano: 0");
    EXPECT_EQ(number("99999999999"), (Texts{"99999999999", "100000000000"}));
    const std::string huge = "1" + std::string(300, '0');
    EXPECT_EQ(number("1e300"), (Texts{huge, huge})) << "one more is the same number";
    EXPECT_EQ(Status(), "Ocislovano: " + huge);
    EXPECT_EQ(number(std::string(kMegabyte, '9')), (Texts{"0", "1"}));
    EXPECT_TRUE(message_boxes.shown.empty());
}

TEST_F(BadNumber, OfSheetsToAddAddsNoneAndIsReportedWhereItIsAbsurd) {
    for (const char* none : {"1e400", "-1e400", "-1e300", "0.9", "", "nan", "-99999999999"}) {
        form.Text7.UserChange(none);
        form.Command32.Click();
        EXPECT_EQ(sheets.Count(), 0U) << none;
    }
    EXPECT_TRUE(message_boxes.shown.empty());
    for (const char* absurd : {"1e300", "99999999999", "32768"}) {
        message_boxes.shown.clear();
        form.Text7.UserChange(absurd);
        form.Command32.Click();
        EXPECT_EQ(sheets.Count(), 0U) << absurd;
        ASSERT_EQ(message_boxes.shown.size(), 1U) << absurd;
        EXPECT_EQ(message_boxes.shown[0].number, 6) << absurd;
    }
    form.Text7.UserChange("2.9");
    form.Command32.Click();
    EXPECT_EQ(sheets.Count(), 2U);
}

TEST_F(BadNumber, InARangeOfSheetsEndsWithThemOrWithWhatCatiaRefuses) {
    const std::string huge = "1" + std::string(300, '0');
    struct Case {
        std::string answer;
        Texts names;
        const char* status;
    };
    const std::vector<Case> cases{
        {"0-1e300", {"0", "1", "2"}, "Zjistuju spusteni Catie"},
        {"1-1e400", {"a", "b", "c"}, "Zjistuju spusteni Catie"}, // ends at zero
        {"1e400-2", {"0", "1", "2"}, "Zjistuju spusteni Catie"}, // begins with zero
        {"1e300-5", {"a", "b", "c"}, "Zjistuju spusteni Catie"},
        {"1e300-1e301", {huge, "b", "c"}, "-2147467259 The method Name failed"},
        {"1-99999999999", {"1", "2", "3"}, "Zjistuju spusteni Catie"},
        {"-1e300-2", {"a", "b", "c"}, "Spatny pocet listu"},
        {"1e-5-7", {"a", "b", "c"}, "Spatny pocet listu"},
        {std::string(kMegabyte, '-'), {"a", "b", "c"}, "Spatny pocet listu"},
    };
    for (const auto& [answer, names, status] : cases) {
        Open("DrawingDocument D.CATDrawing\nsheet a\nsheet b\nsheet c\n");
        message_boxes.text_answer = answer;
        form.Command24.Click();
        EXPECT_EQ(DrawnSheets(), names) << answer.substr(0, 20);
        EXPECT_EQ(Status(), status) << answer.substr(0, 20);
    }
}

TEST_F(BadNumber, AsAPositionIsZeroInATableAndGoneAfterADrag) {
    const std::string digits(10'000, '9');
    for (const auto& [name, position] :
         {std::pair{"1", std::string("1e400")}, {"2", "-1e400"}, {"3", "nan"}, {"4", digits}}) {
        AddRow(list, {name, position, "1"});
    }
    Open(testing_support::kEmptyDrawing);
    form.Command11.Click();
    EXPECT_EQ(Status(), "Tabulka vytvorena Ok ");
    const auto rows = DrawnRows();
    for (std::size_t part = 1; part <= list.Count(); ++part) {
        const std::string name = std::to_string(part);
        EXPECT_TRUE(rows[rows.size() - part].starts_with("\"0\" \"" + name + "\"")) << part;
    }
    list.SetCurrentRow(4);
    form.Command6.Click();
    EXPECT_EQ(form.StatusBar1.State(), controls::ActionState::kDone) << Status();
    Drag(list, 4, 1);
    auto names = Column(list, 0);
    std::ranges::sort(names);
    EXPECT_EQ(names, (Texts{"1", "2", "3", "4"}));
    EXPECT_EQ(Column(list, partslist::kPosition), (Texts{"0001", "0002", "0003", "0004"}));
}

TEST_F(BadNumber, InTheStructureTextIsReportedWithItsLine) {
    form.Text1.SetText("0\tTop\r\n1e400\tx\tTop\r\n-1e300\ty\tTop\r\nnan\tz\tTop\r\n1\tpart\tTop");
    form.Command5.Click();
    EXPECT_TRUE(Status().starts_with("Preskoceno radku: ")) << Status();
    form.Command4.Click();
    const auto names = Column(list, 0);
    EXPECT_NE(std::ranges::find(names, "part"), names.end());
}

} // namespace
