// The form, the resources and the table between them, read as texts: every control of the form has
// its number, its place and its row, in the same words.
#include "win32/access_keys.hpp"
#include "win32/control_table.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <regex>
#include <set>

#include "tests/support/headless_form.hpp"
#include "tests/support/source_text.hpp"

namespace {

using testing_support::Matches;
using testing_support::QuotedTexts;
using testing_support::ReadSource;

struct FormControl {
    std::string kind;
    std::string name;
    std::vector<std::string> captions; // the texts of its declaration
};

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

// What every dialog of the resources places, by the dialog's name.
std::map<std::string, std::string> Dialogs() {
    static const std::string resources = ReadSource("src/win32/dorvak.rc");
    std::map<std::string, std::string> dialogs;
    for (const auto& match : Matches(resources, std::regex("\n(IDD_\\w+) DIALOGEX"))) {
        const auto at = static_cast<std::size_t>(match.position());
        const std::size_t begin = resources.find("\nBEGIN\n", at);
        dialogs[match[1]] = resources.substr(begin, resources.find("\nEND\n", at) - begin);
    }
    return dialogs;
}

// The name under which the resources have a number.
std::string NameOf(int id) {
    for (const auto& [name, number] : ResourceNumbers()) {
        if (number == id) {
            return name;
        }
    }
    return "";
}

bool Places(const std::string& dialog, int id) {
    return std::regex_search(dialog, std::regex("\\b" + NameOf(id) + "\\b"));
}

// The words that an access key underlines a letter of.
std::string CaptionOf(const controls::Form1& form, const win32::ControlRow& row) {
    return std::visit(
        [&form](auto member) -> std::string {
            const auto& control = form.*member;
            if constexpr (requires { control.Label(); }) {
                return control.Label();
            } else if constexpr (requires { control.Caption(); }) {
                return control.Caption();
            } else if constexpr (requires { control.caption; }) {
                return control.caption;
            } else {
                return "";
            }
        },
        row.member);
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

TEST(ControlTable, EveryButtonHasATipOfOneLine) {
    for (const win32::ControlRow& row : win32::kControlTable) {
        const std::string kind = KindOf(row);
        const std::string tip = row.help.tip;
        SCOPED_TRACE(NameOf(row.id));
        EXPECT_EQ(!tip.empty(), kind == "Button" || kind == "CheckBox");
        EXPECT_EQ(tip.find_first_of("\r\n\t&"), std::string::npos);
        // In characters: more would not fit on a narrow screen.
        EXPECT_LE(std::ranges::count_if(tip, [](char c) { return (c & 0xC0) != 0x80; }), 100);
        EXPECT_TRUE(tip.empty() || tip.ends_with('.')) << tip;
    }
}

TEST(ControlTable, NoTwoTipsAreAlike) {
    std::set<std::string> tips;
    for (const win32::ControlRow& row : win32::kControlTable) {
        EXPECT_TRUE(row.help.tip[0] == 0 || tips.insert(row.help.tip).second) << row.help.tip;
    }
}

TEST(ControlTable, WhatHasNoCaptionHasAName) {
    const testing_support::HeadlessForm headless;
    for (const win32::ControlRow& row : win32::kControlTable) {
        const std::string kind = KindOf(row);
        SCOPED_TRACE(NameOf(row.id));
        if (kind == "StatusBar" || kind == "MenuItem") {
            continue; // its text is its name
        }
        const bool says_itself = !CaptionOf(headless.form, row).empty() && kind != "TabControl";
        EXPECT_NE(std::string(row.help.name).empty(), !says_itself);
        EXPECT_EQ(row.help.label_id != 0, kind == "ComboBox");
    }
}

// A label names the control that follows it.
TEST(ControlTable, EveryPickerFollowsItsLabel) {
    std::string dialogs;
    for (const auto& [name, dialog] : Dialogs()) {
        dialogs += dialog;
    }
    for (const win32::ControlRow& row : win32::kControlTable) {
        if (row.help.label_id != 0) {
            const std::string picker = NameOf(row.id);
            EXPECT_TRUE(std::regex_search(dialogs, std::regex(NameOf(row.help.label_id) +
                                                              "[^\n]*\n +PICKER." + picker + ",")))
                << picker;
        }
    }
}

TEST(ControlTable, AccessKeysAreLettersOfTheirCaptionsAndNoTwoAlikeOnAPage) {
    const testing_support::HeadlessForm headless;
    const auto dialogs = Dialogs();
    int found = 0;
    for (const auto& [name, dialog] : dialogs) {
        if (name != "IDD_INPUT_BOX" && name != "IDD_FORM1") {
            std::set<char> used;
            for (const win32::ControlRow& row : win32::kControlTable) {
                const char key = row.help.access_key;
                // The top strip stands above every page.
                if (key == 0 ||
                    (!Places(dialog, row.id) && !Places(dialogs.at("IDD_FORM1"), row.id))) {
                    continue;
                }
                ++found;
                EXPECT_TRUE(used.insert(key).second) << name << " " << key;
                EXPECT_TRUE(key >= 'A' && key <= 'Z') << key;
                const std::string caption = CaptionOf(headless.form, row);
                EXPECT_EQ(win32::WithAccessKey(caption, key).size(), caption.size() + 1)
                    << caption << " " << key;
            }
        }
    }
    EXPECT_GE(found, 20);
    // The main road, from the product to the table and the sheets.
    for (const int id : {ID_Command3, ID_Command5, ID_Command4, ID_Command11, ID_Command21,
                         ID_Command22, ID_Command23, ID_Command34}) {
        EXPECT_NE(
            std::ranges::find(win32::kControlTable, id, &win32::ControlRow::id)->help.access_key, 0)
            << NameOf(id);
    }
}

TEST(ControlTable, FromTheConfigurationTheTabKeyGoesToTheButtonThatMakesTheTable) {
    const std::string page = Dialogs().at("IDD_PAGE3");
    const auto place = [&page](const char* id) { return page.find(id); };
    EXPECT_LT(place("ID_Text2"), place("ID_Command11"));
    for (const char* other : {"ID_Command19", "ID_Command16", "ID_Command8", "ID_Check3"}) {
        EXPECT_LT(place("ID_Command11"), place(other)) << other;
    }
}

TEST(AccessKey, IsUnderlinedAtTheFirstPlaceOfItsLetter) {
    EXPECT_EQ(win32::WithAccessKey("naplneni tree", 'T'), "naplneni &tree");
    EXPECT_EQ(win32::WithAccessKey("Vytvorení", 'V'), "&Vytvorení");
    EXPECT_EQ(win32::WithAccessKey("Exportovat", 'X'), "E&xportovat");
    EXPECT_EQ(win32::WithAccessKey("min", 0), "min");
    EXPECT_EQ(win32::WithAccessKey("a & b", 'B'), "a && &b");
    EXPECT_EQ(win32::WithAccessKey("", 'B'), "");
}
