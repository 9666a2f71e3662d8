// The form, the resources and the table between them, read as texts: every control of the form has
// its number, its place and its row, in the same words.
#include "win32/control_table.hpp"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>

namespace {

struct FormControl {
    std::string kind;
    std::string name;
    std::vector<std::string> captions; // the texts of its declaration
};

std::string ReadSource(const std::string& path) {
    std::ifstream file(SOURCE_FOLDER "/" + path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::smatch> Matches(const std::string& text, const std::regex& pattern) {
    return {std::sregex_iterator(text.begin(), text.end(), pattern), {}};
}

std::vector<std::string> QuotedTexts(const std::string& text) {
    std::vector<std::string> quoted;
    for (const auto& match : Matches(text, std::regex("\"([^\"]*)\""))) {
        quoted.push_back(match[1]);
    }
    return quoted;
}

// Every control that the form declares; separators of menus are none.
std::vector<FormControl> FormControls() {
    static const std::string form = ReadSource("src/controls/form1.hpp");
    std::vector<FormControl> controls;
    for (const auto& match :
         Matches(form, std::regex("\n    (Button|CheckBox|TextBox|ComboBox|ListBox|ListView|"
                                  "TreeView|TabControl|StatusBar|Frame|MenuItem) (\\w+)"
                                  "(\\{[^;]*\\})?;"))) {
        if (match[1] != "MenuItem" || match[3].matched) {
            controls.push_back({match[1], match[2], QuotedTexts(match[3])});
        }
    }
    return controls;
}

std::map<std::string, int> ResourceNumbers() {
    static const std::string header = ReadSource("src/win32/resource.h");
    std::map<std::string, int> numbers;
    for (const auto& match : Matches(header, std::regex("#define (ID_\\w+) (\\d+)"))) {
        numbers[match[1]] = std::stoi(match[2]);
    }
    return numbers;
}

// The line of the dialogs that places a control; empty where there is none or more than one.
std::string PlacingLine(const std::string& id) {
    static const std::string resources = ReadSource("src/win32/dorvak.rc");
    const auto lines = Matches(resources, std::regex("\n    ([^\n]*\\b" + id + "\\b[^\n]*)"));
    return lines.size() == 1 ? std::string(lines[0][1]) : std::string();
}

// Null where the table has none.
const win32::ControlRow* RowOf(int id) {
    for (const win32::ControlRow& row : win32::kControlTable) {
        if (row.id == id) {
            return &row;
        }
    }
    return nullptr;
}

const char* KindOf(const win32::ControlRow& row) {
    constexpr std::array kKinds{"Button",    "CheckBox", "TextBox",  "ComboBox",
                                "ListBox",   "ListView", "TreeView", "TabControl",
                                "StatusBar", "Frame",    "MenuItem"};
    static_assert(kKinds.size() == std::variant_size_v<win32::ControlMember>);
    return kKinds[row.member.index()];
}

} // namespace

TEST(ControlTable, TheFormHasItsControls) {
    const auto controls = FormControls();
    std::map<std::string, int> counts;
    for (const FormControl& control : controls) {
        ++counts[control.kind];
    }
    // Enough that a change of the form's manner cannot empty the other tests unseen.
    EXPECT_GE(counts["Button"], 35);
    EXPECT_EQ(counts["ListView"], 3);
    EXPECT_GE(counts["MenuItem"], 7);
    EXPECT_EQ(counts["TabControl"], 1);
}

TEST(ControlTable, EveryControlOfTheFormHasItsNumberItsPlaceAndItsRow) {
    const auto numbers = ResourceNumbers();
    for (const FormControl& control : FormControls()) {
        SCOPED_TRACE(control.name);
        const std::string id = "ID_" + control.name;
        ASSERT_TRUE(numbers.contains(id));
        const win32::ControlRow* const row = RowOf(numbers.at(id));
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(KindOf(*row), control.kind);
        if (control.kind != "MenuItem") { // menus are made as they open
            EXPECT_NE(PlacingLine(id), "");
        }
    }
}

TEST(ControlTable, EveryRowPairsTheNumberAndTheMemberOfOneName) {
    const std::string table = ReadSource("src/win32/control_table.hpp");
    const auto rows = Matches(table, std::regex(R"(\{ID_(\w+),\s*&controls::Form1::(\w+))"));
    EXPECT_EQ(rows.size(), std::size(win32::kControlTable));
    std::set<std::string> names;
    for (const auto& row : rows) {
        EXPECT_EQ(row[1], row[2]);
        EXPECT_TRUE(names.insert(row[1]).second) << row[1];
    }
    EXPECT_EQ(names.size(), FormControls().size());
}

TEST(ControlTable, NoNumberIsGivenTwice) {
    std::set<int> given;
    for (const auto& [id, number] : ResourceNumbers()) {
        EXPECT_TRUE(given.insert(number).second) << id;
    }
}

TEST(ControlTable, CaptionsInTheDialogsAreTheForms) {
    for (const FormControl& control : FormControls()) {
        SCOPED_TRACE(control.name);
        const auto placed = QuotedTexts(PlacingLine("ID_" + control.name));
        if (control.kind == "Button" || control.kind == "CheckBox" || control.kind == "Frame") {
            const std::string caption = control.captions.at(0);
            if (caption.empty()) { // it shows a picture
                EXPECT_TRUE(placed.empty());
            } else {
                EXPECT_EQ(placed.at(0), caption);
            }
        } else if (control.kind == "ComboBox") {
            EXPECT_EQ(QuotedTexts(PlacingLine("ID_" + control.name + "_Label")).at(0),
                      control.captions.at(0));
        }
    }
}
