// The guide names captions, status texts, keys and configuration keys: each of them is one of the
// program's, and each status text, key and configuration key of the program is explained.
#include "app/keys.hpp"
#include "shell/guide.hpp"
#include "tables/hints.hpp"
#include "win32/control_table.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <tuple>

#include "tests/support/headless_form.hpp"
#include "tests/support/source_text.hpp"

namespace {

namespace fs = std::filesystem;

using testing_support::Matches;
using testing_support::QuotedTexts;
using testing_support::ReadSource;
using WordSet = std::set<std::string>;

// ---- the guide

constexpr const char* kGuideFolder = "docs/prirucka";
constexpr const char* kEllipsis = "…";

std::string GuidePage(const std::string& name) {
    return ReadSource(std::string(kGuideFolder) + "/" + name + ".md");
}

std::map<std::string, std::string> GuidePages() {
    std::map<std::string, std::string> pages;
    for (const auto& file : fs::directory_iterator(fs::path(SOURCE_FOLDER) / kGuideFolder)) {
        if (file.path().extension() == ".md") {
            pages[file.path().stem().string()] = GuidePage(file.path().stem().string());
        }
    }
    return pages;
}

// On one line, with single blanks and none at the ends: as a browser shows it.
std::string AsShown(const std::string& text) {
    std::string shown;
    for (const char c : text) {
        const bool blank = c == ' ' || c == '\n' || c == '\r' || c == '\t';
        if (!blank) {
            shown += c;
        } else if (!shown.empty() && shown.back() != ' ') {
            shown += ' ';
        }
    }
    return shown.ends_with(' ') ? shown.substr(0, shown.size() - 1) : shown;
}

std::string WithoutBlocks(const std::string& page) {
    return std::regex_replace(page, std::regex("```[^`]*```"), "");
}

std::vector<std::string> Marked(const std::string& page, const std::string& pattern) {
    const std::string text = WithoutBlocks(page);
    std::vector<std::string> found;
    for (const auto& match : Matches(text, std::regex(pattern))) {
        found.push_back(AsShown(match[1]));
    }
    return found;
}

std::vector<std::string> Bold(const std::string& page) {
    return Marked(page, R"(\*\*([^*]+)\*\*)");
}
std::vector<std::string> Code(const std::string& page) {
    return Marked(page, "`([^`]+)`");
}
std::vector<std::string> KeysOn(const std::string& page) {
    return Marked(page, "<kbd>([^<]+)</kbd>");
}
// The code that begins a row of a table.
std::vector<std::string> FirstCells(const std::string& page) {
    return Marked(page, "\n\\| `([^`]+)`");
}

WordSet Missing(const std::vector<std::string>& named, const WordSet& known) {
    WordSet missing;
    for (const std::string& name : named) {
        if (!known.contains(name)) {
            missing.insert(name);
        }
    }
    return missing;
}
WordSet Missing(const WordSet& named, const std::vector<std::string>& known) {
    return Missing(std::vector<std::string>(named.begin(), named.end()),
                   WordSet(known.begin(), known.end()));
}

// ---- captions

std::string WithoutMark(std::string caption) {
    std::erase(caption, '&');
    return AsShown(caption.substr(0, caption.find("\\t")));
}

// What a control of the window says, its headings and tabs included.
std::vector<std::string> CaptionsOfControl(const controls::Form1& form,
                                           const win32::ControlRow& row) {
    return std::visit(
        [&form](auto member) -> std::vector<std::string> {
            const auto& control = form.*member;
            if constexpr (requires { control.Label(); }) {
                return {control.Label()};
            } else if constexpr (requires { control.Caption(); }) {
                return {control.Caption()};
            } else if constexpr (requires { control.caption; }) {
                return {control.caption};
            } else if constexpr (requires { control.Columns(); }) {
                return control.Columns();
            } else if constexpr (requires { control.Captions(); }) {
                return control.Captions();
            } else {
                return {};
            }
        },
        row.member);
}

void AddCaptionsOfTheForm(WordSet& captions) {
    const testing_support::HeadlessForm headless;
    for (const win32::ControlRow& row : win32::kControlTable) {
        captions.insert(row.help.name);
        for (const std::string& caption : CaptionsOfControl(headless.form, row)) {
            captions.insert(AsShown(caption));
        }
    }
}

void AddQuoted(WordSet& captions, const std::string& path, const std::string& pattern) {
    const std::string source = ReadSource(path);
    for (const auto& match : Matches(source, std::regex(pattern))) {
        captions.insert(WithoutMark(match[1]));
    }
}

WordSet CaptionsOfThePrograms() {
    WordSet captions;
    AddCaptionsOfTheForm(captions);
    AddQuoted(captions, "src/shell/window.cpp", R"rx(SetCaption\("([^"]+)"\))rx");
    AddQuoted(captions, "src/win32/preview_window.cpp", R"rx(L"([^"]+)")rx");
    AddQuoted(captions, "src/win32/preview_window.cpp", R"rx(SetName\([^,]+, "([^"]+)"\))rx");
    AddQuoted(captions, "src/win32/tool_tips.cpp", R"rx(L"([^"]+)")rx");
    AddQuoted(captions, "src/win32/windows_ports.cpp", R"rx(L"([^"]+)"\}?[},])rx");
    AddQuoted(captions, "simulator/win32/catia_sim.rc", R"rx((?:POPUP|MENUITEM) "([^"]+)")rx");
    captions.erase("");
    return captions;
}

// ---- status texts

// The literals that a text of the program is put together from.
struct StatusText {
    std::vector<std::string> pieces;
    bool whole = false; // nothing but the one piece
};

// The text without what stands between its pieces, to be compared.
std::string Skeleton(const std::string& text) {
    std::string skeleton = std::regex_replace(text, std::regex(kEllipsis), "");
    std::erase_if(skeleton, [](char c) { return c == ' ' || c == '/'; });
    return skeleton;
}
std::string Skeleton(const StatusText& text) {
    std::string joined;
    for (const std::string& piece : text.pieces) {
        joined += piece;
    }
    return Skeleton(joined);
}

// From an opening parenthesis to its closing one; texts between quotes hold none that counts.
std::string Parenthesised(const std::string& source, std::size_t at) {
    int depth = 0;
    bool quoted = false;
    for (std::size_t end = at; end < source.size(); ++end) {
        if (source[end] == '"' && source[end - 1] != '\\') {
            quoted = !quoted;
        }
        if (!quoted && (source[end] == '(' || source[end] == ')')) {
            depth += source[end] == '(' ? 1 : -1;
            if (depth == 0) {
                return source.substr(at + 1, end - at - 1);
            }
        }
    }
    return "";
}

// What gives a name its text: a constant, a variable and what is added to it, or a function.
std::string DefinitionOf(const std::string& name, const std::string& source) {
    std::string definition;
    const std::string variable = "std::string " + name + " =|\\* const?(?:expr)? ?" + name + " =|" +
                                 name + " \\+=|char\\* " + name + " =";
    for (const auto& match : Matches(source, std::regex("(?:" + variable + ")([^;]*);"))) {
        definition += match[1];
    }
    const std::string function = "std::string " + name + "(";
    if (const std::size_t at = source.find(function); at != std::string::npos) {
        definition += source.substr(at, source.find("\n}\n", at) - at);
    }
    return definition;
}

// The texts that the arguments of a call may be.
std::vector<StatusText> TextsOf(std::string arguments, const std::string& source) {
    const std::string first =
        std::regex_search(arguments, std::regex("^\\w+"))
            ? arguments.substr(0, arguments.find_first_not_of(
                                      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                      "0123456789_"))
            : "";
    if (!first.empty()) {
        arguments.insert(0, DefinitionOf(first, source));
    }
    std::vector<std::string> pieces = QuotedTexts(arguments);
    std::erase(pieces, "");
    if (arguments.find('+') != std::string::npos || pieces.size() < 2) {
        const bool whole = pieces.size() == 1 && arguments.find('+') == std::string::npos;
        return {{.pieces = pieces, .whole = whole}};
    }
    std::vector<StatusText> alternatives;
    alternatives.reserve(pieces.size());
    for (const std::string& piece : pieces) {
        alternatives.push_back({.pieces = {piece}, .whole = true});
    }
    return alternatives;
}

// What a source shows on the status line.
std::vector<StatusText> StatusTextsOf(const std::string& source) {
    std::vector<StatusText> texts;
    const std::regex call(R"rx(\b(stat|ShowPassing|Refuse|SetPanelText)\((form_?|2), )rx");
    for (const auto& match : Matches(source, call)) {
        const auto at = static_cast<std::size_t>(match.position());
        const std::string arguments = Parenthesised(source, source.find('(', at));
        for (StatusText& text : TextsOf(arguments.substr(arguments.find(", ") + 2), source)) {
            texts.push_back(std::move(text));
        }
    }
    for (const auto& match :
         Matches(source, std::regex(R"rx(ShowError\(form, error, "([^"]+)")rx"))) {
        texts.push_back({.pieces = {match[1]}});
    }
    return texts;
}

std::vector<StatusText> StatusTextsOfTheProgram() {
    std::vector<StatusText> texts;
    for (const char* folder : {"app", "shell", "structure", "partslist", "tables", "sheets"}) {
        for (const auto& file : fs::directory_iterator(fs::path(SOURCE_FOLDER) / "src" / folder)) {
            std::string source =
                ReadSource(std::string("src/") + folder + "/" + file.path().filename().string());
            if (file.path().filename() == "status.cpp") {
                // Which is handed its texts, but for this one.
                source = std::regex_replace(source, std::regex(R"rx(stat\(form, )rx"), "");
            }
            for (StatusText& text : StatusTextsOf(source)) {
                texts.push_back(std::move(text));
            }
        }
    }
    return texts;
}

WordSet Skeletons(const std::vector<StatusText>& texts) {
    WordSet skeletons;
    for (const StatusText& text : texts) {
        skeletons.insert(Skeleton(text));
    }
    skeletons.erase(""); // a text that is taken away
    return skeletons;
}

// Whether a text that the guide shows with its numbers can be one of the program's.
bool IsStatusText(const std::string& shown, const std::vector<StatusText>& texts) {
    return std::ranges::any_of(texts, [&shown](const StatusText& text) {
        if (text.pieces.empty() || text.whole) {
            return !text.pieces.empty() && shown == AsShown(text.pieces.front());
        }
        return shown.size() > AsShown(text.pieces.front()).size() &&
               shown.starts_with(AsShown(text.pieces.front()));
    });
}

// ---- keys

std::string NameOfKey(const app::Key& key) {
    static const std::map<int, std::string> names{
        {app::key_codes::kTab, "Tab"},       {app::key_codes::kInsert, "Insert"},
        {app::key_codes::kDelete, "Delete"}, {app::key_codes::kF1, "F1"},
        {app::key_codes::kF3, "F3"},         {app::key_codes::kF5, "F5"}};
    const auto found = names.find(key.code);
    return std::string(key.control ? "Ctrl+" : "") + (key.shift ? "Shift+" : "") +
           (found != names.end() ? found->second : std::string(1, static_cast<char>(key.code)));
}

// The keys that the window takes on any of its pages.
WordSet KeysOfTheWindow() {
    testing_support::HeadlessForm headless;
    WordSet keys;
    for (std::size_t page = 0; page < headless.form.SSTab1.Captions().size(); ++page) {
        headless.form.SSTab1.UserClick(page);
        for (int code = 1; code < 256; ++code) {
            for (const bool control : {false, true}) {
                for (const bool shift : {false, true}) {
                    const app::Key key{.code = code, .control = control, .shift = shift};
                    const bool is_digit = code >= '0' && code <= '9';
                    for (const app::Focus focus :
                         {app::Focus::kPartsList, app::Focus::kSheetList, app::Focus::kElsewhere}) {
                        if (app::ActionOfKey(headless.form, key, focus) && !(is_digit && shift)) {
                            keys.insert(NameOfKey(key));
                        }
                    }
                }
            }
        }
    }
    return keys;
}

// The keys that windows take themselves, and the words of the source that takes them.
struct KeyOfAView {
    const char* name;
    const char* source;
    const char* words;
};
constexpr auto kKeysOfViews = std::to_array<KeyOfAView>({
    {"Mezera", "list_view_window.cpp", "case VK_SPACE:"},
    {"F2", "list_view_window.cpp", "case VK_F2:"},
    {"Vlevo", "list_view_window.cpp", "case VK_LEFT:"},
    {"Vpravo", "list_view_window.cpp", "case VK_RIGHT:"},
    {"Ctrl+A", "list_view_window.cpp", "case 'A':"},
    {"Ctrl+C", "list_view_window.cpp", "case 'C':"},
    {"Alt+Nahoru", "list_view_window.cpp", "w == VK_UP"},
    {"Alt+Dolů", "list_view_window.cpp", "w == VK_DOWN"},
    {"Enter", "cell_field.cpp", "case VK_RETURN:"},
    {"Ctrl+Enter", "cell_field.cpp", "control ? Wish::kForSelectedRows"},
    {"Tab", "cell_field.cpp", "case VK_TAB:"},
    {"Shift+Tab", "cell_field.cpp", "? Wish::kPrevious"},
    {"Esc", "cell_field.cpp", "case VK_ESCAPE:"},
    {"Ctrl+A", "cell_field.cpp", "case 'A':"},
    {"Shift+F10", "list_view_window.cpp", "case WM_CONTEXTMENU:"},
    {"Mezera", "tree_view_window.cpp", "w == VK_SPACE"},
    {"Ctrl+A", "views.cpp", "w == kControlA"},
    {"Ctrl+I", "views.cpp", "w == VK_TAB"},
    {"Enter", "views.cpp", "w == VK_RETURN"},
    {"Shift+Delete", "views.cpp", "w == VK_DELETE"},
    {"Enter", "main_window.cpp", "wParam == VK_RETURN"},
    {"Esc", "between_yields.cpp", "wParam != VK_ESCAPE"},
    {"Alt+F4", "between_yields.cpp", "wParam == VK_F4"},
    {"Nahoru", "preview_canvas.cpp", "case VK_UP:"},
    {"Dolů", "preview_canvas.cpp", "case VK_DOWN:"},
    {"Vlevo", "preview_canvas.cpp", "case VK_LEFT:"},
    {"Vpravo", "preview_canvas.cpp", "case VK_RIGHT:"},
    {"PageUp", "preview_canvas.cpp", "case VK_PRIOR:"},
    {"PageDown", "preview_canvas.cpp", "case VK_NEXT:"},
    {"Home", "preview_canvas.cpp", "case VK_HOME:"},
    {"Ctrl+Home", "preview_canvas.cpp", "control ? -far_away"},
    {"End", "preview_canvas.cpp", "case VK_END:"},
    {"Ctrl+End", "preview_canvas.cpp", "control ? far_away"},
    {"+", "preview_canvas.cpp", "case VK_ADD:"},
    {"+", "preview_canvas.cpp", "case VK_OEM_PLUS:"},
    {"-", "preview_canvas.cpp", "case VK_SUBTRACT:"},
    {"-", "preview_canvas.cpp", "case VK_OEM_MINUS:"},
});

// Where a source of the window asks for a key by itself: "list_view_window.cpp VK_F2".
WordSet KeysAskedFor(const std::string& name, const std::string& source) {
    const WordSet of_no_key{"VK_CONTROL", "VK_SHIFT", "VK_MENU", "VK_LBUTTON", "VK_PACKET"};
    WordSet asked;
    for (const auto& match : Matches(source, std::regex(R"((?:case|==|!=) (VK_\w+|'[A-Z]'))"))) {
        if (!of_no_key.contains(match[1])) {
            asked.insert(name + " " + std::string(match[1]));
        }
    }
    return asked;
}

// The row of a table on the page of the keys: what an access key leads to, and on which page.
struct AccessKey {
    std::string page;
    std::string key;
    std::string caption;
    bool operator==(const AccessKey&) const = default;
    bool operator<(const AccessKey& other) const {
        return std::tie(page, key, caption) < std::tie(other.page, other.key, other.caption);
    }
};

void PrintTo(const AccessKey& key, std::ostream* out) {
    *out << key.page << ": " << key.key << " " << key.caption;
}

// Where the dialogs place the control of that number.
std::size_t PlaceInDialogs(const std::string& dialogs, int id) {
    static const std::string header = ReadSource("src/win32/resource.h");
    std::smatch name;
    std::regex_search(header, name, std::regex("#define (ID_\\w+) " + std::to_string(id) + "\n"));
    std::smatch place;
    std::regex_search(dialogs, place, std::regex("\\b" + std::string(name[1]) + ","));
    return static_cast<std::size_t>(place.position());
}

std::set<AccessKey> AccessKeysOfTheProgram() {
    const testing_support::HeadlessForm headless;
    const std::string dialogs = ReadSource("src/win32/dorvak.rc");
    constexpr std::string_view kPage = "IDD_PAGE";
    std::set<AccessKey> keys;
    for (const win32::ControlRow& row : win32::kControlTable) {
        if (row.help.access_key != 0) {
            const std::size_t page = dialogs.rfind(kPage, PlaceInDialogs(dialogs, row.id));
            const auto tab = static_cast<std::size_t>(dialogs.at(page + kPage.size()) - '1');
            keys.insert({.page = headless.form.SSTab1.Captions().at(tab),
                         .key = std::string("Alt+") + row.help.access_key,
                         .caption = AsShown(CaptionsOfControl(headless.form, row).front())});
        }
    }
    const std::string preview = ReadSource("src/win32/preview_window.cpp");
    for (const auto& match : Matches(preview, std::regex(R"rx(L"([^"&]*&(\w)[^"]*)")rx"))) {
        keys.insert({.page = "Náhled tabulky",
                     .key = "Alt+" + std::string(match[2]),
                     .caption = WithoutMark(match[1])});
    }
    return keys;
}

std::set<AccessKey> AccessKeysOfTheGuide(const std::string& page) {
    std::set<AccessKey> keys;
    std::string heading;
    for (const auto& match : Matches(
             page,
             std::regex("\n### ([^\n]+)|\n\\| <kbd>(Alt\\+[A-Z])</kbd> \\| \\*\\*([^*]+)\\*\\*"))) {
        if (match[1].matched) {
            heading = match[1];
        } else if (!heading.empty()) {
            keys.insert({.page = heading, .key = match[2], .caption = AsShown(match[3])});
        }
    }
    return keys;
}

WordSet KeysOfTheProgram() {
    WordSet keys = KeysOfTheWindow();
    for (const KeyOfAView& key : kKeysOfViews) {
        keys.insert(key.name);
    }
    for (const AccessKey& key : AccessKeysOfTheProgram()) {
        keys.insert(key.key);
    }
    return keys;
}

// ---- the configuration

WordSet ConfigurationKeysOfTheProgram() {
    const std::string reader = ReadSource("src/tables/configuration.cpp");
    const std::string creator = ReadSource("src/tables/create_table.cpp");
    WordSet keys;
    for (const auto& match : Matches(reader, std::regex(R"rx(key == "([^"]+)")rx"))) {
        keys.insert(match[1]);
    }
    for (const auto& match : Matches(creator, std::regex(R"rx(widths_key = "([^"]+)")rx"))) {
        keys.insert(match[1]);
    }
    return keys;
}

// Those of the lines that "Parametry" writes.
WordSet KeysThatAreRead() {
    const std::string reader = ReadSource("src/tables/read_table.cpp");
    WordSet keys;
    for (const auto& match : Matches(reader, std::regex(R"rx("(/[^";]+);?")rx"))) {
        keys.insert(AsShown(match[1]));
    }
    return keys;
}

// The key of a configuration line, where the code is one: a "-" before it switches the line off.
std::optional<std::string> KeyOfLine(const std::string& code) {
    std::smatch match;
    if (std::regex_match(code, match, std::regex("-?(/\\w+)( =\\d+|;.*)?"))) {
        return AsShown(match[1]) + (std::string(match[2]).starts_with(" =") ? " =" : "");
    }
    return std::nullopt;
}

// ---- links

// The name of a heading in links, as the converter makes it.
std::string AnchorOf(const std::string& heading) {
    std::string anchor;
    for (const char c : AsShown(heading)) {
        const bool kept = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
                          c == '_' || static_cast<unsigned char>(c) >= 0x80;
        if (c >= 'A' && c <= 'Z') {
            anchor += static_cast<char>(c - 'A' + 'a');
        } else if (kept || c == ' ') {
            anchor += c == ' ' ? '-' : c;
        }
    }
    return anchor;
}

WordSet AnchorsOn(const std::string& page) {
    WordSet anchors;
    for (const auto& match : Matches(page, std::regex("(?:^|\n)#+ ([^\n]+)"))) {
        anchors.insert(AnchorOf(match[1]));
    }
    return anchors;
}

// Links that lead to no page or no heading; those to pictures aside.
WordSet BrokenLinks(const std::string& name, const std::map<std::string, std::string>& pages) {
    WordSet broken;
    for (const std::string& target : Marked(pages.at(name), R"(\]\(([^)]+)\))")) {
        std::smatch parts;
        if (target.starts_with("obrazky/")) {
            continue;
        }
        if (!std::regex_match(target, parts, std::regex("(?:([\\w-]+)\\.md)?(?:#(.+))?"))) {
            broken.insert(target);
            continue;
        }
        const auto page = pages.find(parts[1].matched ? std::string(parts[1]) : name);
        if (page == pages.end() ||
            (parts[2].matched && !AnchorsOn(page->second).contains(parts[2]))) {
            broken.insert(target);
        }
    }
    return broken;
}

} // namespace

TEST(Guide, HasAPageForEachTabOfTheWindowAndTheOthers) {
    const auto pages = GuidePages();
    const testing_support::HeadlessForm headless;
    const auto& tabs = headless.form.SSTab1.Captions();
    ASSERT_EQ(shell::kGuidePages.size(), tabs.size());
    for (std::size_t tab = 0; tab < tabs.size(); ++tab) {
        const std::string page(shell::kGuidePages.at(tab));
        ASSERT_TRUE(pages.contains(page)) << page;
        EXPECT_TRUE(pages.at(page).starts_with("# " + tabs[tab] + "\n")) << page;
    }
    for (const char* page :
         {"index", "prvni-tabulka", "potize", "klavesy", "konfigurace", "stavove-texty"}) {
        EXPECT_TRUE(pages.contains(page)) << page;
    }
}

TEST(Guide, NamesNoCaptionThatIsNotThere) {
    const WordSet captions = CaptionsOfThePrograms();
    for (const char* known : {"Načtení stromu", "Uložení tabulky", "max", "Poz.", "Pridat Sheety",
                              "Vrátit plánovaná jména", "Náhled tabulky", "Opravit", "Nedokončeno",
                              "Zavřít bez uložení", "Document", "Seznam dílů"}) {
        EXPECT_TRUE(captions.contains(known)) << known;
    }
    std::size_t found = 0;
    for (const auto& [name, page] : GuidePages()) {
        found += Bold(page).size();
        EXPECT_EQ(Missing(Bold(page), captions), WordSet()) << name;
    }
    EXPECT_GT(found, 150U);
    EXPECT_EQ(Missing(Bold("Tlačítko **Naplň\nlist** a **Naplň strom**."), captions),
              WordSet{"Naplň strom"});
}

// So that nothing that can be pressed goes unexplained.
TEST(Guide, ExplainsEveryButtonAndEveryMenuEntryOnThePageOfItsTab) {
    const testing_support::HeadlessForm headless;
    const std::string resources = ReadSource("src/win32/dorvak.rc");
    int buttons = 0;
    for (std::size_t tab = 0; tab < shell::kGuidePages.size(); ++tab) {
        const auto bold = Bold(GuidePage(std::string(shell::kGuidePages.at(tab))));
        const std::size_t begin = resources.find("IDD_PAGE" + std::to_string(tab + 1));
        const std::string dialog = resources.substr(begin, resources.find("\nEND", begin) - begin);
        for (const auto& match :
             Matches(dialog, std::regex(R"rx((?:BUTTON\(|AUTOCHECKBOX |GROUPBOX )"([^"]+)")rx"))) {
            ++buttons;
            EXPECT_EQ(Missing(WordSet{AsShown(match[1])}, bold), WordSet())
                << shell::kGuidePages.at(tab);
        }
    }
    EXPECT_GE(buttons, 35);
    struct Menu {
        const controls::PopupMenu& menu;
        const char* page;
    };
    for (const auto& [menu, page] :
         {Menu{headless.form.m_Tabulka, "editace-tabulky"},
          Menu{headless.form.m_Ulozeni, "editace-tabulky"},
          Menu{headless.form.m_Otevreni, "editace-tabulky"}, Menu{headless.form.m_sheets, "sheet"},
          Menu{headless.form.m_Stav, "potize"}}) {
        WordSet entries;
        for (const controls::MenuItem* item : menu.items) {
            if (!item->IsSeparator()) {
                entries.insert(item->caption);
            }
        }
        EXPECT_EQ(Missing(entries, Bold(GuidePage(page))), WordSet()) << page;
    }
}

TEST(Guide, ExplainsTheStatusTextsOfTheProgramAndNoOthers) {
    const WordSet program = Skeletons(StatusTextsOfTheProgram());
    EXPECT_GT(program.size(), 60U);
    WordSet guide;
    WordSet rows;
    for (const std::string& text : FirstCells(GuidePage("stavove-texty"))) {
        EXPECT_TRUE(rows.insert(text).second) << text << " stands there twice";
        guide.insert(Skeleton(text));
    }
    EXPECT_EQ(guide, program);
}

TEST(Guide, FindsTheStatusTextsInTheSources) {
    const auto skeletons = [](const std::string& source) {
        return Skeletons(StatusTextsOf(source));
    };
    EXPECT_EQ(skeletons("shell::stat(form, \"Hotovo (vse): \" + Count(list));"),
              WordSet{"Hotovo(vse):"});
    EXPECT_EQ(skeletons("Refuse(form, a ? \"Jedno\" : \"Druhe\");"), (WordSet{"Jedno", "Druhe"}));
    EXPECT_EQ(skeletons("constexpr const char* kText = \"Hledam\";\nstat(form, kText);"),
              WordSet{"Hledam"});
    EXPECT_EQ(skeletons("std::string message = \"Radku: \" + n;\nmessage += \", dalsi\";\n"
                        "stat(form, message);"),
              WordSet{"Radku:,dalsi"});
    EXPECT_EQ(skeletons("std::string Count(int n) {\n    return \"Bunek: \" + n;\n}\n"
                        "stat(form, Count(1));"),
              WordSet{"Bunek:"});
    EXPECT_EQ(skeletons("ShowError(form, error, \"Tisk Error \");"), WordSet{"TiskError"});
    EXPECT_EQ(skeletons("void stat(Form1& form, const std::string& tt);"), WordSet());
}

// Of every text that is shown, a literal has been found.
TEST(Guide, OverlooksNoStatusText) {
    const auto texts = StatusTextsOfTheProgram();
    EXPECT_EQ(
        std::ranges::count_if(texts, [](const StatusText& text) { return text.pieces.empty(); }), 1)
        << "the tree's message, where it is taken away";
}

// Texts, configuration lines and files that pages name in passing.
TEST(Guide, NamesNoStatusTextInPassingThatIsNotThere) {
    const auto texts = StatusTextsOfTheProgram();
    EXPECT_TRUE(IsStatusText("Sestav: 14 Partu: 45", texts));
    EXPECT_TRUE(IsStatusText("Neni aktivni CATDrawing", texts));
    EXPECT_FALSE(IsStatusText("Neni aktivni CATDrawin", texts));
    EXPECT_FALSE(IsStatusText("Sestava: 14", texts));
    WordSet keys = ConfigurationKeysOfTheProgram();
    keys.merge(KeysThatAreRead());
    const WordSet folders{"Nastaveni", "Tabulky", "Zkouska", "prirucka", "samples"};
    const WordSet typed{"C45", "D40-220", "6", "6.8"};
    std::size_t found = 0;
    for (const auto& [name, page] : GuidePages()) {
        if (name == "stavove-texty") {
            continue;
        }
        for (const std::string& code : Code(page)) {
            const auto key = KeyOfLine(code);
            const bool is_file_or_switch =
                code.find_first_of(".\\%") != std::string::npos || code.starts_with("--");
            if (key) {
                EXPECT_TRUE(keys.contains(*key)) << name << ": " << code;
            } else if (!is_file_or_switch && !folders.contains(code) && !typed.contains(code)) {
                ++found;
                EXPECT_TRUE(IsStatusText(code, texts)) << name << ": " << code;
            }
        }
    }
    EXPECT_GT(found, 10U);
}

TEST(Guide, ExplainsTheConfigurationKeysOfTheProgramAndNoOthers) {
    const WordSet program = ConfigurationKeysOfTheProgram();
    EXPECT_EQ(program.size(), 13U);
    const auto cells = FirstCells(GuidePage("konfigurace"));
    EXPECT_EQ(WordSet(cells.begin(), cells.end()), program);
    for (const std::string& key : program) { // by what the program says of a line
        for (const tables::Hint& hint : tables::HintsFor(key + ";1;1")) {
            EXPECT_EQ(hint.sentence.find("se nepoužije"), std::string::npos) << hint.sentence;
        }
    }
    EXPECT_EQ(Missing(FirstCells("\n| `/sirka` | x |\n| `/sirky` | y |\n"), program),
              WordSet{"/sirky"});
}

TEST(Guide, ShowsTheDefaultConfigurationToTheLetter) {
    const std::string page = GuidePage("konfigurace");
    std::string lines(controls::kDefaultConfiguration);
    std::erase(lines, '\r');
    EXPECT_NE(page.find("```\n" + lines + "```\n"), std::string::npos);
}

TEST(Guide, NamesTheKeysOfTheProgramAndNoOthers) {
    const WordSet program = KeysOfTheProgram();
    const WordSet modifiers{"Ctrl", "Alt"};
    EXPECT_EQ(Missing(program, KeysOn(GuidePage("klavesy"))), WordSet());
    for (const auto& [name, page] : GuidePages()) {
        WordSet known = program;
        known.insert(modifiers.begin(), modifiers.end());
        EXPECT_EQ(Missing(KeysOn(page), known), WordSet()) << name;
    }
    for (const char* known : {"Ctrl+Shift+Tab", "Ctrl+5", "Shift+F3", "Delete", "F1", "Alt+N"}) {
        EXPECT_TRUE(program.contains(known)) << known;
    }
    EXPECT_EQ(Missing(KeysOn("<kbd>F1</kbd> a <kbd>F7</kbd>"), program), WordSet{"F7"});
}

TEST(Guide, KnowsTheKeysThatWindowsTakeThemselves) {
    WordSet listed;
    for (const KeyOfAView& key : kKeysOfViews) {
        const std::string source = ReadSource(std::string("src/win32/") + key.source);
        EXPECT_NE(source.find(key.words), std::string::npos) << key.source << " " << key.words;
        const std::string words(key.words);
        std::smatch code;
        if (std::regex_search(words, code, std::regex("VK_\\w+|'[A-Z]'"))) {
            listed.insert(std::string(key.source) + " " + code.str());
        }
    }
    for (const auto& file : fs::directory_iterator(fs::path(SOURCE_FOLDER) / "src/win32")) {
        const std::string name = file.path().filename().string();
        if (name.ends_with(".cpp")) {
            const WordSet asked = KeysAskedFor(name, ReadSource("src/win32/" + name));
            EXPECT_EQ(Missing({asked.begin(), asked.end()}, listed), WordSet());
        }
    }
    EXPECT_EQ(KeysAskedFor("a.cpp", "case VK_F9:\nif (w == VK_SHIFT || w == 'Q')"),
              (WordSet{"a.cpp VK_F9", "a.cpp 'Q'"}));
}

TEST(Guide, NamesTheAccessKeysWithWhatTheyLeadTo) {
    const auto program = AccessKeysOfTheProgram();
    EXPECT_GE(program.size(), 30U);
    EXPECT_EQ(AccessKeysOfTheGuide(GuidePage("klavesy")), program);
    EXPECT_EQ(AccessKeysOfTheGuide("\n### Strom\n\n|---|\n| <kbd>Alt+Q</kbd> | **Naplň list** |\n"),
              (std::set<AccessKey>{{"Strom", "Alt+Q", "Naplň list"}}));
}

TEST(Guide, LinksLeadToItsPagesAndTheirHeadings) {
    const auto pages = GuidePages();
    for (const auto& [name, page] : pages) {
        EXPECT_EQ(BrokenLinks(name, pages), WordSet()) << name;
        // From the first page every other one can be reached.
        if (name != "index") {
            EXPECT_NE(pages.at("index").find("](" + name + ".md)"), std::string::npos) << name;
        }
    }
    const std::map<std::string, std::string> broken{
        {"a", "# A\n\n[b](b.md) [c](c.md) [d](b.md#b-č) [e](#e) [f](#a) [g](http://g)\n"},
        {"b", "# Začátek\n\n## B č\n"}};
    EXPECT_EQ(BrokenLinks("a", broken), (WordSet{"c.md", "#e", "http://g"}));
}

TEST(Guide, ShowsThePicturesThatAreThereAndNoOthers) {
    WordSet shown;
    for (const auto& [name, page] : GuidePages()) {
        for (const std::string& picture : Marked(page, R"(!\[[^\]]+\]\(obrazky/([^)]+)\))")) {
            shown.insert(picture);
        }
    }
    EXPECT_GT(shown.size(), 10U);
    WordSet there;
    const fs::path folder = fs::path(SOURCE_FOLDER) / kGuideFolder / "obrazky";
    if (fs::exists(folder)) {
        for (const auto& file : fs::directory_iterator(folder)) {
            there.insert(file.path().filename().string());
        }
    }
    EXPECT_EQ(shown, there);
}
