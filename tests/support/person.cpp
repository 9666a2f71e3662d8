#include "tests/support/person.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>

#include "app/keys.hpp"
#include "app/recovery.hpp"
#include "simulator/model.hpp"
#include "tests/support/drawing_samples.hpp"
#include "tests/support/list_state.hpp"
#include "tests/support/sample_products.hpp"

namespace testing_support {

namespace {

using controls::ActionState;
using controls::Form1;
using controls::ListView;
using Texts = std::vector<std::string>;

constexpr int kDeepestYield = 2;
constexpr std::size_t kMostRows = 40; // of a list, above which nothing is added to it
constexpr const char* kOtherFile = "C:\\Lists\\other.tab";

// What is typed.
const Texts kTyped{"",
                   "5",
                   "0",
                   "-1",
                   "1e300",
                   "@@",
                   "a\rb",
                   "a\nb",
                   "\r\n",
                   "Příruba žlutá",
                   "\t",
                   ";",
                   "D25",
                   "20xD5",
                   "120",
                   "12,5",
                   "Part 46",
                   " ",
                   "x@",
                   "3-1",
                   "1-2",
                   "S235",
                   "List",
                   std::string(300, 'w'),
                   "12a",
                   "0007",
                   "Nový",
                   "Sheet.1",
                   "two\r\nlines"};

const Texts kStructures{
    "",
    std::string(controls::kSampleStructure),
    "0\tStroj\r\n1\t5\tStroj\r\n1\t120\tStroj\r\n1\tHřídel\tStroj\r\n1\t5\tStroj",
    "0\tA\r\n0\tA\r\n1\tx\tB\r\nx\ty\tA\r\n2\tz\r\n1\ts\tA\tA|||||s*1*\r\n2\t7\tA|||||s*1*\r\n",
    "  0\tTop\textra\r\n\r\nalone\r\n1\tTop\tTop\r\n1\t@@\tTop\r\n1e0\tq\tTop\ta\tb\r\n",
    "0\tT\r\n1\t9\tT\r\n1\t8\tT\r\n1\t7\tT\r\n1\t6\tT\r\n1\t5\tT\r\n1\t4\tT\r\n1\t3\tT"};

const Texts kListFiles{
    "a@@True@@0001@@1@@2@@@@@@\r\nb@@False@@0002@@3@@@@S235@@D20@@note\r\n",
    "5@@1@@7@@1@@@@@@@@\r\n120@@0@@12a@@2@@@@@@@@\r\n6@@False@@3@@2@@List@@@@@@\r\n",
    "a@@True@@1\r\n\r\nb@@True@@2\r\n",
    "alone\r\n",
    "a@@maybe@@1\r\n",
    "a@@False@@1@@2@@3@@4@@5@@6@@7\r\n",
    "",
    "one@@TRUE@@1\ntwo@@false@@2\n"};

const Texts kConfigurations{
    "",
    ("/vyska1;4\r\n/vyska2;5\r\n/sirka;1;2;3;4;5;6;7\r\n/sirka1;1;2;3;4;5;6;7\r\n"
     "/fontsize1;2\r\n/fontsize2;3\r\n/razeni;1;0;2;5;4;6;3\r\n/AnchorPoint;2\r\n"),
    "/sirka;1;2;3;4;5;6;7;8;9;10;11\r\n",
    "/volny;1e300\r\n/vyska2;1\r\n",
    "/volny;-3\r\n/vyska1;4\r\n/vyska2;5\r\n",
    "/razeni;9\r\n/vyska1;4\r\n/vyska2;5\r\n/sirka;1;2;3;4;5;6;7\r\n/fontsize1;2\r\n/fontsize2;3"};

const Texts kDocuments{kSampleProduct,
                       R"(ProductDocument Převodovka.CATProduct
product Převodovka
  child 120
  child 5 times 2
  child Hřídel
  child Skříň times 2
product Skříň
  child 120 times 3
  child "Šroub M8"
  child 0
)",
                       "ProductDocument alone.catproduct\nproduct Alone\n",
                       kEmptyDrawing,
                       R"(DrawingDocument Sestava.CATDrawing
sheet First
  view "Main View"
    table at 10 20 columns 10 10 10 10 10 10 10
      row 5 cells Pozice nazev Kusu rozmery Material Poznamka List
      row 5
      row 6 cells 4 "two\r\nlines" 1 D20 S235 "" ""
      row 6 cells "" skipped 1 "" "" "" 2
      row 6 cells 2 5 2 "" "" n 2
      row 6 cells 1 120 1 20xD5 S355 "a\nb" 3
    table at 50 60 columns 10 10 10 10 10 10
      row 5 cells a b c d e f
      row 5
    table at 70 60 columns 10 10 10 10 10 10 10
      row 5 cells only one row of this "" table
  view Side
    table at 70 60 columns 10 10 10
      row 5 cells x y z
      row 5 cells x y z
sheet Second
sheet Detail detail
sheet Nový
)",
                       DrawingWithTable(12, 7),
                       R"(DrawingDocument Listy.CATDrawing
sheet 1
sheet D1 detail
sheet 3
sheet D2 detail
sheet 5
sheet "1.Sestava"
)",
                       "DrawingDocument small.catdrawing\nsheet S\n",
                       "PartDocument Part1.CATPart\n"};

std::string FourDigits(std::size_t number) {
    std::array<char, 24> digits{};
    static_cast<void>(std::snprintf(digits.data(), digits.size(), "%04zu", number));
    return digits.data();
}

std::string Shown(const std::string& text) {
    std::string shown;
    for (const char c : text.substr(0, 60)) {
        shown += c == '\r' ? "\\r" : c == '\n' ? "\\n" : c == '\t' ? "\\t" : std::string(1, c);
    }
    return '"' + shown + '"';
}

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
    return text;
}

std::string WithLineFeeds(const std::string& text) {
    return Replaced(text, "\r\n", "\n");
}

Texts SplitAt(const std::string& text, const std::string& separator) {
    Texts pieces(1);
    for (std::size_t at = 0; at < text.size();) {
        if (text.compare(at, separator.size(), separator) == 0) {
            pieces.emplace_back();
            at += separator.size();
        } else {
            pieces.back() += text[at++];
        }
    }
    return pieces;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? ""
                                      : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// The number that `text` begins with, and how many characters it takes; 0 where there is none.
struct Leading {
    double number = 0;
    std::size_t length = 0;
};

Leading LeadingNumber(const std::string& text) {
    const auto digit = [&](std::size_t at) {
        return at < text.size() && text[at] >= '0' && text[at] <= '9';
    };
    std::size_t start = 0;
    while (start < text.size() && text[start] == ' ') {
        ++start;
    }
    std::size_t end = start;
    if (end < text.size() && (text[end] == '-' || text[end] == '+')) {
        ++end;
    }
    if (!digit(end) && !(end < text.size() && text[end] == '.' && digit(end + 1))) {
        return {};
    }
    while (digit(end)) {
        ++end;
    }
    if (end < text.size() && text[end] == '.') {
        ++end;
        while (digit(end)) {
            ++end;
        }
    }
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        std::size_t exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) {
            ++exponent;
        }
        if (digit(exponent)) {
            end = exponent;
            while (digit(end)) {
                ++end;
            }
        }
    }
    return {std::strtod(text.substr(start, end - start).c_str(), nullptr), end};
}

std::optional<double> WholeNumber(const std::string& text) {
    const Leading leading = LeadingNumber(text);
    if (leading.length == 0 || !Trimmed(text.substr(leading.length)).empty()) {
        return std::nullopt;
    }
    return leading.number;
}

bool SameNumber(const std::string& cell, double number) {
    const auto read = WholeNumber(cell);
    return read && (*read == number || std::abs(*read - number) <= std::abs(number) * 1e-13);
}

// Whether a row of that name can be dragged, with the decimal comma.
bool CanBeDragged(const std::string& name) {
    return name.find('.') == std::string::npos &&
           WholeNumber(Replaced(name, ",", ".")).value_or(0) != 0;
}

std::string WithDiameter(const std::string& size) {
    if (size.find_first_of("dD") == std::string::npos) {
        return size;
    }
    std::size_t second = 1;
    while (second < size.size() && (static_cast<unsigned char>(size[second]) & 0xC0U) == 0x80U) {
        ++second;
    }
    return "ø" + size.substr(second);
}

// A parts-list file as it is to be read: the rows up to the first fault.
struct ReadFile {
    std::vector<RowState> rows;
    bool whole = true;
};

std::string Lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
    });
    return text;
}

ReadFile ReadListFile(const std::string& file) {
    ReadFile read;
    Texts lines = SplitAt(file, file.find("\r\n") != std::string::npos ? "\r\n" : "\n");
    if (lines.back().empty()) {
        lines.pop_back();
    }
    const auto fault = [&read] {
        read.whole = false;
        return read;
    };
    for (const std::string& line : lines) {
        if (line.empty()) {
            return fault();
        }
        const Texts fields = SplitAt(line, "@@");
        RowState row;
        row.texts = Texts(7);
        row.texts[0] = fields[0];
        read.rows.push_back(row);
        if (fields.size() < 2) {
            return fault();
        }
        const std::string word = Lower(fields[1]);
        if (word != "true" && word != "false" && !WholeNumber(fields[1])) {
            return fault();
        }
        read.rows.back().checked = word == "true" || WholeNumber(fields[1]).value_or(0) != 0;
        for (std::size_t field = 2; field < fields.size(); ++field) {
            if (field - 1 >= read.rows.back().texts.size()) {
                return fault();
            }
            read.rows.back().texts[field - 1] = fields[field];
        }
    }
    return read;
}

std::string WrittenList(const ListState& list) {
    std::string file;
    for (const RowState& row : list.rows) {
        file += row.texts[0] + (row.checked ? "@@True" : "@@False");
        for (std::size_t field = 1; field < row.texts.size(); ++field) {
            file += "@@" + row.texts[field];
        }
        file += "\r\n";
    }
    return file;
}

// Whether the list can be written and read again: a separator or a line end in a field cannot, and
// a field that ends in "@" runs into the separator behind it.
bool Survives(const ListState& list) {
    return std::ranges::all_of(list.rows, [](const RowState& row) {
        for (std::size_t field = 0; field < row.texts.size(); ++field) {
            const std::string& text = row.texts[field];
            if (text.find("@@") != std::string::npos || text.find("\r\n") != std::string::npos ||
                (field + 1 < row.texts.size() && text.ends_with('@'))) {
                return false;
            }
        }
        return true;
    });
}

bool SameRows(const std::vector<RowState>& left, const std::vector<RowState>& right) {
    return std::ranges::equal(left, right,
                              [](const RowState& a, const RowState& b) { return a.SameAs(b); });
}

// The tree that a structure text stands for.
struct GrownTree {
    struct Node {
        std::string text;
        std::size_t parent;
        int image;
    };
    std::vector<Node> nodes;
    std::size_t skipped = 0;
    std::size_t first_skipped = 0;
};

GrownTree Grow(const std::string& structure) {
    GrownTree tree;
    std::map<std::string, std::size_t> keys;
    std::size_t number = 0;
    for (const std::string& line : SplitAt(Trimmed(structure), "\r\n")) {
        ++number;
        const Texts fields = SplitAt(line, "\t");
        if (fields.size() < 2) {
            continue;
        }
        const auto depth = WholeNumber(fields[0]);
        bool placed = false;
        if (depth && *depth == 0) {
            placed = !keys.contains(fields[1]);
            if (placed) {
                tree.nodes.push_back({fields[1], 0, 1});
                if (!fields[1].empty()) {
                    keys[fields[1]] = tree.nodes.size();
                }
            }
        } else if (depth && fields.size() > 2 && keys.contains(fields[2])) {
            const bool assembly = fields.size() == 4;
            placed = !assembly || !keys.contains(fields[3]);
            if (placed) {
                tree.nodes.push_back({fields[1], keys[fields[2]], assembly ? 1 : 2});
                if (assembly && !fields[3].empty()) {
                    keys[fields[3]] = tree.nodes.size();
                }
            }
        }
        if (!placed && tree.skipped++ == 0) {
            tree.first_skipped = number;
        }
    }
    return tree;
}

// The structure text of a product, with the numbers of its assemblies and of its leaves.
struct Walk {
    std::string text;
    int assemblies = 0;
    int leaves = 0;

    void Enter(const simulator::Product& product, const std::string& path, int depth) {
        ++assemblies;
        for (const auto& instance : product.instances) {
            const simulator::Product& child = *instance.reference;
            std::string line = "\r\n" + std::to_string(depth);
            line.append("\t").append(child.part_number).append("\t").append(path);
            if (child.instances.empty()) {
                ++leaves;
                text += line;
                continue;
            }
            const std::string own_path =
                path + "|||||" + child.part_number + "*" + std::to_string(assemblies) + "*";
            text.append(line).append("\t").append(own_path);
            Enter(child, own_path, depth + 1);
        }
    }
};

Walk WalkOf(const simulator::Product& top, int depth_before) {
    Walk walk;
    walk.text = "\r\n0\t" + top.part_number;
    walk.Enter(top, top.part_number, depth_before + 1);
    return walk;
}

using TablePtr = std::shared_ptr<simulator::Table>;

std::vector<Texts> CellsOf(const simulator::Table& table) {
    std::vector<Texts> rows;
    for (std::size_t row = 0; row < table.row_sizes.size(); ++row) {
        rows.emplace_back();
        for (std::size_t column = 0; column < table.column_sizes.size(); ++column) {
            rows.back().push_back(table.Cell(row, column)->text);
        }
    }
    return rows;
}

// A position, which is a number in the drawing.
bool SameCells(const std::vector<Texts>& cells, const std::vector<Texts>& expected,
               std::size_t first_number_row) {
    if (cells.size() != expected.size()) {
        return false;
    }
    for (std::size_t row = 0; row < cells.size(); ++row) {
        const bool numbered = row >= first_number_row;
        if (numbered && !SameNumber(cells[row].at(0), LeadingNumber(expected[row].at(0)).number)) {
            return false;
        }
        if (!std::equal(cells[row].begin() + (numbered ? 1 : 0), cells[row].end(),
                        expected[row].begin() + (numbered ? 1 : 0), expected[row].end())) {
            return false;
        }
    }
    return true;
}

// A row of the list in the order of the drawing's columns, the position as the list has it.
Texts InColumns(const RowState& row) {
    return {row.texts[1], row.texts[0], row.texts[2], row.texts[5],
            row.texts[4], row.texts[6], row.texts[3]};
}

const Texts kHeader{"Pozice", "nazev", "Kusu", "Ciste rozmery", "Material", "Poznamka", "List"};

// The rows that a table gives to the list.
std::vector<RowState> RowsOf(const simulator::Table& table) {
    std::vector<RowState> rows;
    auto cells = CellsOf(table);
    std::ranges::reverse(cells);
    for (Texts& texts : cells) {
        std::ranges::transform(texts, texts.begin(), WithLineFeeds);
        if (texts[0].empty() || texts[6] == "List") {
            continue;
        }
        RowState row;
        row.texts = {texts[1], texts[0], texts[2], texts[6], texts[4], texts[3], texts[5]};
        row.checked = !texts[6].empty();
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace

class Person::Life {
  public:
    explicit Life(std::span<const std::uint8_t> choices) : bytes_(choices) {
        OpenDocuments();
        session_.before_call = [this](const std::string&) {
            if (calls_to_meddling_ > 0 && --calls_to_meddling_ == 0) {
                Meddle();
            }
        };
        catia_runs_ = true;
        StartProgram({}, {});
    }

    void Live() {
        while (next_ < bytes_.size()) {
            if (form().unloaded) {
                NextProgram();
            }
            Act();
        }
    }

    std::vector<std::string> steps;
    std::map<std::string, std::size_t> successes;

  private:
    struct Doing {
        int weight;
        const char* words;
        void (Life::*act)();
    };
    static const std::vector<Doing>& Doings();

    // What an action began with.
    struct Run {
        bool starts;            // whether the program takes it
        std::size_t acts;       // that were done before
        std::uint64_t revision; // of the status bar
        int yields;
        bool calm; // CATIA runs and nothing is about to fail
        std::size_t fillings;
        std::size_t meddlings;
        ListState parts;
    };

    Form1& form() { return program_->form; }
    [[nodiscard]] const Form1& form() const { return program_->form; }

    // ---- choices

    std::uint8_t Byte() { return next_ < bytes_.size() ? bytes_[next_++] : std::uint8_t{0}; }
    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : Byte() % limit; }
    const std::string& Typed() { return kTyped[Below(kTyped.size())]; }
    // A row of a list, from 1.
    std::size_t AnyRow(const ListView& list) { return 1 + Below(list.Count()); }

    // ---- steps

    void Note(const std::string& more) { steps.back() += " " + more; }
    void Good(const std::string& what) { ++successes[what]; }

    void Require(bool holds, const std::string& rule) const {
        if (!holds) {
            throw Broken(rule + " (status: " + Shown(form().StatusBar1.PanelText(1)) + ", state " +
                         std::to_string(static_cast<int>(form().StatusBar1.State())) + ")");
        }
    }

    void Act() {
        static const std::vector<const Doing*> chances = [] {
            std::vector<const Doing*> all;
            for (const Doing& doing : Doings()) {
                all.insert(all.end(), static_cast<std::size_t>(doing.weight), &doing);
            }
            return all;
        }();
        ++acts_;
        const Doing& doing = *chances[(Byte() + 256U * (Byte() % 2U)) % chances.size()];
        steps.push_back(std::string(static_cast<std::size_t>(depth_) * 2, ' ') + doing.words);
        const bool at_rest = depth_ == 0;
        const bool busy_before = program_->Busy();
        const int depth_before = form().Uroven;
        const int program_before = programs_;
        if (at_rest) {
            creation_failed_ = false;
            walk_failed_ = false;
        }
        (this->*doing.act)();
        if (!at_rest) {
            return;
        }
        if (programs_ != program_before) {
            session_.ClearLog();
            return;
        }
        Require(form().running_handlers == 0, "a handler has not ended");
        Require(!form().stop_requested, "the next action would be stopped");
        Require(!form().StatusBar1.ShownProgress(), "progress is shown where nothing runs");
        Require(form().StatusBar1.State() != ActionState::kRunning, "the state stays at running");
        Require(!program_->Busy() || busy_before || creation_failed_, "the pointer stays busy");
        Require(form().Uroven == depth_before || walk_failed_, "the depth has changed");
        Require(form().StatusBar1.State() != ActionState::kDone ||
                    !form().StatusBar1.ShownExplanation().is_error,
                "an error is explained where there is none");
        Require(form().unloaded == form().close_requested, "a closed window is still there");
        Require(program_->message_boxes.shown.size() == boxes_expected_,
                "the error boxes are not those expected");
        for (const ListView* list : {&form().ListView1, &form().ListView3}) {
            Require(!list->CurrentRow() ||
                        (*list->CurrentRow() >= 1 && *list->CurrentRow() <= list->Count()),
                    "the current row is none");
        }
        if (form().unloaded && !session_ended_) {
            RequireKept(StateOf(form().ListView1));
        }
        if (fault_calls_left_ > 0) {
            fault_calls_left_ -= std::min(fault_calls_left_, session_.Log().size());
        }
        RequireDisplays();
        session_.ClearLog();
    }

    void AtYield() {
        if (depth_ >= kDeepestYield || Byte() < 190) {
            return;
        }
        ++depth_;
        Act();
        --depth_;
    }

    // ---- programs

    void StartProgram(std::map<std::string, std::string, std::less<>> files,
                      std::map<std::string, std::string> settings, bool takes_leftover = false,
                      std::map<std::string, int, std::less<>> written = {}) {
        program_ = std::make_unique<HeadlessForm>();
        ++programs_;
        running_.clear();
        boxes_expected_ = 0;
        session_ended_ = false;
        program_->files.stored = std::move(files);
        program_->settings.stored = std::move(settings);
        program_->files.written = std::move(written);
        program_->events.at_every_yield = [this] { AtYield(); };
        form().show_popup = [this](controls::PopupMenu& menu, controls::PopupPlace) {
            ChooseFrom(menu);
        };
        form().show_save_dialog = [this](controls::FileDialog& dialog) { return Answer(dialog); };
        form().show_open_dialog = [this](controls::FileDialog& dialog) { return Answer(dialog); };
        form().show_now = {};
        Connect();
        app::Form_Load(form());
        program_->message_boxes.answer = takes_leftover;
        app::OfferRecovery(form());
        program_->message_boxes.answer = true;
    }

    // What is taken back can be made again, and is then what it was.
    void TakeBack() {
        const bool parts = Below(3) != 0;
        ListView& list = parts ? form().ListView1 : form().ListView3;
        const controls::Event<>& back = parts ? form().m_Zpet.Click : form().m_Sheet_zpet.Click;
        const controls::Event<>& again = parts ? form().m_Znovu.Click : form().m_Sheet_znovu.Click;
        if (depth_ > 0 || !Alive()) {
            ++fillings_; // with the rows of before
            return back();
        }
        const auto& history = parts ? form().parts_history : form().sheets_history;
        const ListState before = ShownState(list);
        const auto step = history.UndoName();
        back();
        if (!step) {
            Require(SameShown(ShownState(list), before),
                    "nothing was taken back, and rows have changed");
            return;
        }
        const ListState earlier = ShownState(list);
        Require(history.RedoName() == step, "what was taken back cannot be made again");
        again();
        Require(SameShown(ShownState(list), before), "a step made again is another one");
        Require(history.UndoName() == step, "a step made again cannot be taken back");
        back();
        Require(SameShown(ShownState(list), earlier), "a step taken back twice is another one");
        Good("take back");
    }

    // What the person sees of a list: not what stands in columns without a caption.
    static ListState ShownState(const ListView& list) {
        ListState state = StateOf(list);
        for (std::size_t column = 1; column < list.Columns().size(); ++column) {
            for (RowState& row : state.rows) {
                if (list.Columns()[column].empty()) {
                    row.texts.at(column).clear();
                }
            }
        }
        return state;
    }

    static bool SameShown(const ListState& left, const ListState& right) {
        return left.current == right.current &&
               std::ranges::equal(left.rows, right.rows,
                                  [](const RowState& one, const RowState& other) {
                                      return one.SameAs(other) && one.selected == other.selected;
                                  });
    }

    // The program is gone at once, some seconds after the last change; the next one is told to take
    // what is left.
    void LosePower() {
        if (depth_ > 0 || !Alive() || !form().recovery.on || !program_->files.failing.empty()) {
            return;
        }
        for (const long long later : {0, 10'000}) {
            app::KeepRecovery(form(), form().recovery.last_look + later);
        }
        if (!program_->files.stored.contains("C:\\Dorvak\\obnova.txt")) {
            return; // nothing has changed since the start
        }
        const ListState list = StateOf(form().ListView1);
        const std::string configuration = form().Text2.Text();
        const Texts materials = Picker(0).Items();
        const auto files = program_->files;
        StartProgram(files.stored, program_->settings.stored, true, files.written);
        const ListState found = StateOf(form().ListView1);
        Require(std::ranges::equal(
                    found.rows, list.rows,
                    [](const RowState& one, const RowState& other) { return one.SameAs(other); }),
                "the list did not survive");
        Require(form().Text2.Text() == configuration, "the configuration did not survive");
        for (const std::string& material : materials) {
            Require(std::ranges::find(Picker(0).Items(), material) != Picker(0).Items().end(),
                    "a material did not survive");
        }
        Good("power lost");
    }

    bool Answer(controls::FileDialog& dialog) {
        const std::size_t choice = Below(8);
        if (choice == 0 && depth_ == 0) {
            EndSession();
            return false;
        }
        if (choice < 3) {
            return false;
        }
        dialog.file_name = kOtherFile;
        return true;
    }

    void ChooseFrom(controls::PopupMenu& menu) {
        if (&menu == &form().m_Ulozeni) {
            return form().m_Ulozit_pracovni.Click();
        }
        if (&menu == &form().m_Otevreni) {
            return form().m_Otevrit_pracovni.Click();
        }
        const bool parts = &menu == &form().m_Tabulka;
        switch (Below(6)) {
        case 0:
            return; // nothing
        case 1:
            return parts ? Add() : AddSheet();
        case 2:
            return parts ? Delete() : DeleteSheet();
        case 3:
            return parts ? Create(form().m_poslat_jako_tabulku.Click, "entry", false) : AddSheet();
        case 4:
            return parts ? FillSmall(form().m_vlozit_do_tabulky.Click) : DeleteSheet();
        default:
            return parts ? PlaceTexts(form().m_Poslat_jako_text.Click) : AddSheet();
        }
    }

    void NextProgram() {
        const auto files = program_->files.stored;
        const auto settings = program_->settings.stored;
        const auto failing = program_->files.failing;
        std::array<Texts, 4> values;
        for (std::size_t picker = 0; picker < values.size(); ++picker) {
            values.at(picker) = Picker(picker).Items();
        }
        const std::string configuration = form().Text2.Text();
        const bool ended = session_ended_;
        StartProgram(files, settings);
        steps.emplace_back("(the next program)");
        for (std::size_t picker = 0; picker < values.size() && !ended; ++picker) {
            std::erase_if(values.at(picker),
                          [](const std::string& value) { return Trimmed(value).empty(); });
            Require(Picker(picker).Items() == values.at(picker) || values.at(picker).empty(),
                    "a picker has not kept its values");
        }
        Require(form().Text2.Text() == configuration || configuration.empty() || ended,
                "the configuration was not kept");
        RequireLoaded(kWorkingFile, "Nacteni listu ok ", ActionState::kNone);
        Good("restart");
    }

    // After the closing steps.
    void RequireKept(const ListState& list) {
        const auto& stored = program_->files.stored;
        if (!list.rows.empty() && !program_->files.failing.contains(kWorkingFile)) {
            const auto file = stored.find(kWorkingFile);
            Require(file != stored.end() && file->second == WrittenList(list),
                    "the closing has not kept the list");
        }
        const auto setting = program_->settings.stored.find("Lumsek\\Pantrel\\export");
        Require(setting != program_->settings.stored.end() &&
                    setting->second == form().Text2.Text(),
                "the closing has not kept the configuration");
    }

    void CloseProgram() {
        if (Alive()) {
            app::RequestClose(form());
        }
    }

    void EndSession() {
        if (form().closing || form().unloaded) {
            return;
        }
        session_ended_ = true;
        app::EndSession(form());
        const ListState list = StateOf(form().ListView1);
        RequireKept(list);
        if (running_.contains(&form().ListView1)) {
            RequireNumbered(list, "Windows ended the session while rows were sorted");
        }
    }

    void PressEsc() { app::RequestStop(form()); }

    [[nodiscard]] bool Alive() const { return !form().close_requested && !form().unloaded; }

    // ---- runs

    Run Begin(const void* key = nullptr) {
        return {.starts = Alive() && !running_.contains(key),
                .acts = acts_,
                .revision = form().StatusBar1.Revision(),
                .yields = program_->events.yields,
                .calm = catia_runs_ && fault_calls_left_ == 0 && !vanishing_,
                .fillings = fillings_,
                .meddlings = meddlings_,
                .parts = StateOf(form().ListView1)};
    }

    void Raise(const void* key, const std::function<void()>& event) {
        const bool first = running_.insert(key).second;
        event();
        if (first) {
            running_.erase(key);
        }
    }

    [[nodiscard]] bool Undisturbed(const Run& run) const { return acts_ == run.acts; }
    // Something was done in CATIA between two calls: which document the action has worked on is
    // open.
    [[nodiscard]] bool Meddled(const Run& run) const { return meddlings_ != run.meddlings; }
    [[nodiscard]] bool Failed() const {
        return form().StatusBar1.State() == ActionState::kFailed || form().close_requested;
    }
    // The run has ended with words that begin so, not with an error.
    [[nodiscard]] bool Says(const Run& run, const std::string& words) const {
        return run.starts && form().StatusBar1.Revision() != run.revision && !Failed() &&
               program_->Status().starts_with(words);
    }
    [[nodiscard]] bool SaysExactly(const Run& run, const std::string& words) const {
        return Says(run, words) && program_->Status() == words;
    }

    // ---- what holds of the parts list

    void RequirePositions(const ListState& list, const std::string& after) const {
        for (std::size_t row = 0; row < list.rows.size(); ++row) {
            Require(list.rows[row].texts[1] == FourDigits(row + 1),
                    after + ": position " + list.rows[row].texts[1] + " of row " +
                        std::to_string(row + 1));
        }
    }
    void RequireSheets(const ListState& list, const std::string& after) const {
        std::size_t sheet = 1;
        for (const RowState& row : list.rows) {
            Require(row.texts[3] == (row.checked ? std::to_string(++sheet) : ""),
                    after + ": sheet " + row.texts[3] + " of " + Shown(row.texts[0]));
        }
    }
    void RequireNumbered(const ListState& list, const std::string& after) const {
        RequirePositions(list, after);
        RequireSheets(list, after);
    }
    void RequireCountShown(const std::string& after) const {
        Require(program_->RowCount() == "Pozic: " + std::to_string(form().ListView1.Count()),
                after + ": the count is wrong: " + program_->RowCount());
    }
    void RequireUnsorted(const ListView& list) const {
        Require(!list.Sorted(), "the list was left sorted");
    }

    // ---- structure

    void RequireTree(const std::string& structure) {
        const GrownTree expected = Grow(structure);
        const controls::TreeView& tree = form().TreeView1;
        Require(tree.Count() == expected.nodes.size(), "the tree has not the text's nodes");
        for (std::size_t node = 1; node <= tree.Count(); ++node) {
            const auto& grown = expected.nodes[node - 1];
            const controls::TreeNode& shown = tree.Node(node);
            Require(shown.text == grown.text && shown.parent == grown.parent &&
                        shown.image == grown.image && shown.checked && shown.expanded,
                    "node " + std::to_string(node) + " is not the text's");
        }
    }

    [[nodiscard]] const simulator::Document* Active() const {
        return session_.ActiveDocument().get();
    }
    [[nodiscard]] bool ActiveIs(const std::string& extension) const {
        return Active() != nullptr &&
               Lower(Active()->name).find(Lower(extension)) != std::string::npos;
    }

    void WalkByButton() {
        WalkProduct([this] { form().Command3.Click(); }, false);
    }

    void WalkProduct(const std::function<void()>& press, bool is_held) {
        Run run = Begin(&form().Command3);
        run.starts = run.starts && !is_held;
        const int depth = form().Uroven;
        const auto document = session_.ActiveDocument();
        const bool product = ActiveIs(".CATProduct");
        const std::uint64_t tree_before = form().TreeView1.Restructurings();
        Raise(&form().Command3, press);
        if (!run.starts) {
            Require(form().Uroven == depth, "an ignored walk has changed the depth");
            return;
        }
        if (Failed()) {
            walk_failed_ = true;
            if (Undisturbed(run)) {
                Require(!product ||
                            WalkOf(*document->product, depth).text.starts_with(form().Text1.Text()),
                        "a failed walk has left something else than its beginning");
                Require(form().TreeView1.Restructurings() == tree_before,
                        "a failed walk has changed the tree");
                Good("failed walk");
            }
            return;
        }
        Require(form().Uroven == depth, "a walk has changed the depth");
        if (Meddled(run)) {
            return;
        }
        if (Says(run, "Sestav: ")) {
            Require(product, "something else than a product was walked");
            const Walk walk = WalkOf(*document->product, depth);
            Require(program_->Status() == "Sestav: " + std::to_string(walk.assemblies) +
                                              " Partu: " + std::to_string(walk.leaves),
                    "the walk has counted wrong");
            Require(form().Text1.Text() == walk.text, "the walk has not written the product");
            RequireTree(walk.text);
            Require(!program_->Busy(), "the pointer is busy after a walk");
            Good(Undisturbed(run) ? "walk" : "disturbed walk");
            return;
        }
        Require(!run.calm || !product || !Undisturbed(run), "a walk without an end");
        Require(SaysExactly(run, "Neni aktivni CATProduct") ||
                    (!catia_runs_ && SaysExactly(run, "Zjistuju spusteni Catie")),
                "a walk ended without a word");
    }

    void FillTree() {
        const Run run = Begin();
        form().Command5.Click();
        if (!run.starts || form().Text1.Text().empty()) {
            return;
        }
        RequireTree(form().Text1.Text());
        const GrownTree grown = Grow(form().Text1.Text());
        Require((grown.skipped == 0) != program_->Status().starts_with("Preskoceno radku: "),
                "skipped lines are not told");
        if (grown.skipped > 0) {
            Require(program_->Status() == "Preskoceno radku: " + std::to_string(grown.skipped) +
                                              " prvni je radek " +
                                              std::to_string(grown.first_skipped),
                    "the wrong lines are told as skipped");
        }
        Good("tree");
    }

    void FillList() {
        ++fillings_;
        const Run run = Begin();
        form().Command4.Click();
        const controls::TreeView& tree = form().TreeView1;
        const ListState list = StateOf(form().ListView1);
        if (!run.starts || tree.Count() == 0) {
            Require(SameRows(list.rows, run.parts.rows), "the list has changed without a tree");
            return;
        }
        std::map<std::string, std::size_t> nodes;
        Texts parts;
        for (std::size_t node = 1; node <= tree.Count(); ++node) {
            ++nodes[tree.Node(node).text];
        }
        for (std::size_t node = 1; node <= tree.Count(); ++node) {
            const auto& shown = tree.Node(node);
            if (shown.checked && shown.image == 2 &&
                std::ranges::find(parts, shown.text) == parts.end()) {
                parts.push_back(shown.text);
            }
        }
        Require(Column(form().ListView1, 0) == parts, "the rows are not the ticked parts");
        Require(Column(form().ListView2, 0) == parts, "the overview has not the list's rows");
        for (std::size_t row = 0; row < list.rows.size(); ++row) {
            const std::string quantity = std::to_string(nodes[parts[row]]);
            const Texts expected{parts[row], FourDigits(row + 1), quantity, "", "", "", ""};
            Require(list.rows[row].texts == expected && !list.rows[row].checked,
                    "row " + std::to_string(row + 1) + " is not as it was counted");
            Require(form().ListView2.SubItem(row + 1, 1) == quantity, "the overview counts else");
        }
        RequireCountShown("the filling");
        Require(!program_->Busy(), "the pointer is busy after the filling");
        Good("counted list");
    }

    void Generate() {
        ++fillings_;
        const bool arranging = Below(2) == 1;
        const Run run = Begin();
        (arranging ? form().Command2 : form().Command1).Click();
        if (!run.starts) {
            return;
        }
        const ListState list = StateOf(form().ListView1);
        Require(list.rows.size() == 10, "the generator has not made ten rows");
        for (std::size_t row = 0; row < list.rows.size(); ++row) {
            Require(list.rows[row].texts == Texts({std::string(1, static_cast<char>('A' + row)),
                                                   FourDigits(row + 1), "", "", "", "", ""}),
                    "the generator's rows are not A to J");
        }
    }

    void SearchForCatia() {
        const Run run = Begin();
        form().Command26.Click();
        if (run.starts) {
            Require(program_->Status() ==
                        std::string("Spusteni Catie = ") + (catia_runs_ ? "True" : "False"),
                    "the search has not told the truth");
        }
    }

    void TickNode() {
        controls::TreeView& tree = form().TreeView1;
        if (!Alive() || tree.Count() == 0) {
            return;
        }
        const std::size_t node = 1 + Below(tree.Count());
        const bool checked = Below(2) == 1;
        std::vector<std::string> paths{""};
        std::vector<bool> expected{false};
        for (std::size_t n = 1; n <= tree.Count(); ++n) {
            const auto& shown = tree.Node(n);
            paths.push_back(shown.parent == 0 ? shown.text
                                              : paths[shown.parent] + "\\" + shown.text);
            expected.push_back(shown.checked);
        }
        for (std::size_t n = 1; n <= tree.Count(); ++n) {
            if (paths[n] == paths[node] || paths[n].find(paths[node] + "\\") != std::string::npos) {
                expected[n] = checked;
            }
        }
        tree.UserCheck(node, checked);
        for (std::size_t n = 1; n <= tree.Count(); ++n) {
            Require(tree.Node(n).checked == expected[n], "a tick was not carried on as it should");
        }
    }

    void TypeStructure() {
        if (Alive()) {
            const std::string& text = kStructures[Below(kStructures.size())];
            const bool pasted = Below(3) == 1;
            form().Text1.UserChange(pasted ? form().Text1.Pasted(Replaced(text, "\r\n", "\n"))
                                           : text);
        }
    }

    void AppendToStructure() {
        if (Alive()) {
            form().Text1.UserChange(form().Text1.Text() + "\r\n1\tmeanwhile\tProduct1");
        }
    }

    // ---- the parts list

    ListView& AnyList() { return Below(4) == 0 ? form().ListView3 : form().ListView1; }

    void Select() {
        ListView& list = AnyList();
        if (!Alive() || list.Count() == 0) {
            return;
        }
        const std::size_t row = AnyRow(list);
        switch (Below(4)) {
        case 0:
            list.SelectAll();
            break;
        case 1:
            for (std::size_t other = 1; other <= list.Count(); ++other) {
                list.SetSelected(other, false);
            }
            list.SetCurrentRow(std::nullopt);
            break;
        default:
            list.SetSelected(row, Below(3) != 0);
            list.SetCurrentRow(row);
        }
    }

    void ClickList() {
        ListView& list = AnyList();
        if (!Alive()) {
            return;
        }
        list.UserClick();
        if (const auto row = list.CurrentRow()) {
            const auto texts = RowTexts(list, *row);
            Require(&list == &form().ListView3
                        ? form().Text5.Text() == texts[1]
                        : form().Combo1.Text() == texts[4] && form().Combo2.Text() == texts[5] &&
                              form().Combo3.Text() == texts[6] && form().Combo4.Text() == texts[2],
                    "a click does not show the current row's fields");
        }
    }

    void Tick() {
        ListView& list = AnyList();
        if (!Alive() || list.Count() == 0) {
            return;
        }
        const std::size_t row = AnyRow(list);
        const bool checked = Below(3) != 0;
        ListState expected = StateOf(list);
        expected.rows[row - 1].checked = checked;
        for (RowState& other : expected.rows) {
            other.checked = other.selected ? checked : other.checked;
            if (&list == &form().ListView3 && !other.tag.empty()) {
                other.checked = false;
            }
        }
        list.UserCheck(row, checked);
        const ListState after = StateOf(list);
        for (std::size_t i = 0; i < expected.rows.size(); ++i) {
            Require(after.rows[i].checked == expected.rows[i].checked &&
                        after.rows[i].texts[1] == expected.rows[i].texts[1],
                    "a tick went to the wrong rows");
        }
        if (&list == &form().ListView1) {
            RequireSheets(after, "a tick");
        }
    }

    void Rename() {
        ListView& list = form().ListView1;
        if (Alive() && list.Count() > 0) {
            const std::size_t row = AnyRow(list);
            const std::string& name = Typed();
            list.UserRename(list.Row(row).id, Replaced(name, "\r\n", ""));
        }
    }

    void RenameToNumbers() {
        ListView& list = form().ListView1;
        for (std::size_t row = 1; Alive() && row <= list.Count(); ++row) {
            list.UserRename(list.Row(row).id, std::to_string(100 + row));
        }
    }

    void EditCell() {
        ListView& list = form().ListView1;
        if (!Alive() || list.Count() == 0) {
            return;
        }
        const std::size_t edited = AnyRow(list);
        const std::size_t column = std::array{4U, 5U, 6U, 2U}.at(Below(4));
        const bool for_all = Below(3) == 0;
        const std::string text = WithLineFeeds(Typed());
        Run run = Begin();
        list.UserEdit({list.Row(edited).id, column, text, for_all});
        for (std::size_t row = 1; row <= run.parts.rows.size(); ++row) {
            RowState& state = run.parts.rows[row - 1];
            if (row == edited || (for_all && state.selected)) {
                state.texts[column] = text;
            }
        }
        Require(SameRows(StateOf(list).rows, run.parts.rows),
                "a cell's text is not in its cell alone");
        Good("edited cell");
    }

    // Two materials from a spreadsheet.
    void Paste() {
        ListView& list = form().ListView1;
        if (!Alive() || list.Count() == 0 || list.Count() >= kMostRows || list.Sorted()) {
            return;
        }
        list.SetCurrentRow(AnyRow(list));
        list.SetCurrentColumn(4);
        const Texts pasted{"a " + WithLineFeeds(Typed()), "b " + WithLineFeeds(Typed())};
        std::string copied;
        for (const std::string& text : pasted) {
            copied +=
                "\"" + Replaced(text, "\"", "\"\"") + "\t\"\n"; // a tab makes it need its quotes
        }
        program_->clipboard = copied;
        Run run = Begin();
        form().m_Vlozit.Click();
        const std::size_t first = *run.parts.current;
        if (first == run.parts.rows.size()) {
            RowState added;
            added.texts = {"Novy", FourDigits(first + 1), "1", "", "", "", ""};
            run.parts.rows.push_back(added);
        }
        const std::vector<RowState> rows = StateOf(list).rows;
        Require(rows.size() == run.parts.rows.size(), "a paste gave another number of rows");
        for (std::size_t row = 0; row < rows.size(); ++row) {
            RowState& expected = run.parts.rows[row];
            if (row + 1 == first || row == first) {
                expected.texts[4] = pasted[row + 1 - first] + "\t";
            }
            Require(rows[row].texts == expected.texts && rows[row].checked == expected.checked,
                    "a paste is not in its cells alone");
        }
        RequireCountShown("the paste");
        Good("paste");
    }

    // The order of the ids that a drag of the parts list leaves, where it moves a row.
    static std::optional<std::vector<std::uint64_t>> Dragged(const ListState& list,
                                                             std::size_t from, std::size_t to) {
        const auto named = [&](const std::string& name) {
            return static_cast<std::size_t>(
                std::ranges::find_if(list.rows,
                                     [&](const RowState& row) { return row.texts[0] == name; }) -
                list.rows.begin());
        };
        const std::string& name = list.rows[from].texts[0];
        const std::string& target = list.rows[to].texts[0];
        if (!CanBeDragged(name) || target.empty() || name == target) {
            return std::nullopt;
        }
        const std::size_t moved = named(name);
        std::vector<std::uint64_t> order;
        for (std::size_t row = 0; row < list.rows.size(); ++row) {
            if (row == to && named(target) < moved) {
                order.push_back(list.rows[moved].id);
            }
            if (row != moved) {
                order.push_back(list.rows[row].id);
            }
            if (row == to && named(target) >= moved) {
                order.push_back(list.rows[moved].id);
            }
        }
        return order;
    }

    // Whether the positions are the rows' numbers.
    static bool Numbered(const ListState& list) {
        for (std::size_t row = 0; row < list.rows.size(); ++row) {
            if (list.rows[row].texts[1] != FourDigits(row + 1)) {
                return false;
            }
        }
        return true;
    }

    static std::vector<std::uint64_t> Ids(const ListState& list) {
        std::vector<std::uint64_t> ids;
        std::ranges::transform(list.rows, std::back_inserter(ids), &RowState::id);
        return ids;
    }

    void DragPart() {
        ListView& list = form().ListView1;
        if (!Alive() || list.Count() == 0) {
            return;
        }
        const std::size_t from = AnyRow(list);
        const std::size_t to = AnyRow(list);
        const Run run = Begin(&list);
        const bool numbered = Numbered(run.parts);
        list.UserMouseDown(controls::kLeftButton, 0, 5, static_cast<int>(from));
        Raise(&list, [&] { list.UserMouseUp(controls::kLeftButton, 0, 5, static_cast<int>(to)); });
        RequireDropped(run, list);
        if (!run.starts || !Undisturbed(run)) {
            return;
        }
        const auto expected = Dragged(run.parts, from - 1, to - 1);
        const ListState after = StateOf(list);
        if (!expected) {
            Require(SameRows(after.rows, run.parts.rows), "a drag of nothing has changed rows");
        } else if (numbered) {
            Require(Ids(after) == *expected, "a dragged row is not where it was dropped");
            Good("drag");
        }
    }

    void RequireDropped(const Run& run, const ListView& list) {
        if (run.starts && program_->events.yields > run.yields) {
            if (&list == &form().ListView1 && fillings_ == run.fillings) {
                RequireNumbered(StateOf(list), "a drag");
            }
            RequireUnsorted(list);
        }
    }

    void PressOnRow() {
        ListView& list = AnyList();
        if (Alive()) {
            list.UserMouseDown(Below(4) == 0 ? controls::kRightButton : controls::kLeftButton, 0, 5,
                               static_cast<int>(Below(list.Count() + 2)));
        }
    }

    void ReleaseOnRow() {
        ListView& list = AnyList();
        const int row = static_cast<int>(Below(list.Count() + 2));
        if (!Alive()) {
            return;
        }
        const Run run = Begin(&list);
        Raise(&list, [&] { list.UserMouseUp(controls::kLeftButton, 0, 5, row); });
        RequireDropped(run, list);
    }

    void MoveByKey() {
        ListView& list = form().ListView1;
        if (!Alive()) {
            return;
        }
        const int rows = Below(2) == 0 ? 1 : -1;
        const Run run = Begin();
        const bool in_order = Numbered(run.parts);
        auto expected = Ids(run.parts);
        list.UserMoveKey(rows);
        const ListState after = StateOf(list);
        if (run.parts.current) {
            const auto to = static_cast<std::ptrdiff_t>(*run.parts.current) + rows;
            if (to >= 1 && to <= static_cast<std::ptrdiff_t>(expected.size())) {
                std::swap(expected[*run.parts.current - 1],
                          expected[static_cast<std::size_t>(to - 1)]);
                RequireNumbered(after, "a move by key");
                Require(after.rows.at(after.current.value_or(0) - 1).id ==
                            expected[static_cast<std::size_t>(to - 1)],
                        "another row is the current one after a move by key");
                RequireUnsorted(list);
                Good("row moved by key");
                if (!in_order) {
                    return; // they come into their order, as by a drag
                }
            }
        }
        Require(Ids(after) == expected, "a key has moved something else");
    }

    void OpenMenu() {
        if (Alive()) {
            ListView& list = AnyList();
            if (Below(2) == 0) {
                list.UserMenuKey();
            } else {
                list.UserMouseDown(controls::kRightButton, 0, 5, 1);
            }
        }
    }

    void Add() {
        ListView& list = form().ListView1;
        if (list.Count() >= kMostRows) {
            return;
        }
        const Run run = Begin();
        form().m_Pridat.Click();
        if (!run.starts || list.Sorted()) { // where a sorted list takes its new rows
            return;
        }
        const ListState after = StateOf(list);
        const std::size_t count = run.parts.rows.size() + 1;
        Require(after.rows.size() == count, "no row was added");
        RequireCountShown("the adding");
        Require(after.rows.back().texts == Texts({"Novy", FourDigits(count), "1", "", "", "", ""}),
                "the added row is not the last");
        Good("added row");
    }

    void Delete() {
        const Run run = Begin();
        form().m_Smazat.Click();
        ListState expected = run.parts;
        if (run.starts && expected.current) {
            expected.rows.erase(expected.rows.begin() +
                                static_cast<std::ptrdiff_t>(*expected.current - 1));
            for (std::size_t row = 0; row < expected.rows.size(); ++row) {
                expected.rows[row].texts[1] = FourDigits(row + 1);
            }
            RequireCountShown("the deleting");
        }
        Require(SameRows(StateOf(form().ListView1).rows, expected.rows),
                "the deleting has left something else");
    }

    void DeleteSelected() {
        const Run run = Begin();
        form().m_Smazat_vybrane.Click();
        ListState expected = run.parts;
        if (run.starts && std::erase_if(expected.rows, &RowState::selected) > 0) {
            for (std::size_t row = 0; row < expected.rows.size(); ++row) {
                expected.rows[row].texts[1] = FourDigits(row + 1);
            }
            RequireCountShown("the deleting of selected rows");
            Good("selected rows deleted");
        }
        Require(SameRows(StateOf(form().ListView1).rows, expected.rows),
                "the deleting of selected rows has left something else");
    }

    void SortParts() {
        const Run run = Begin();
        (Below(2) == 0 ? form().m_Seradit_jmeno : form().m_Seradit_material).Click();
        const ListState after = StateOf(form().ListView1);
        auto ids = Ids(after);
        auto before = Ids(run.parts);
        std::ranges::sort(ids);
        std::ranges::sort(before);
        Require(ids == before, "the sorting has other rows");
        if (run.starts) {
            RequireNumbered(after, "the sorting");
            Good("sorted parts");
        }
    }

    void FillKnown() {
        const Run run = Begin();
        form().m_Doplnit_zname.Click();
        ListState expected = run.parts;
        const ListState after = StateOf(form().ListView1);
        Require(after.rows.size() == expected.rows.size(), "the filling in has other rows");
        std::size_t filled = 0;
        for (std::size_t row = 0; row < expected.rows.size() && run.starts; ++row) {
            for (std::size_t field = 4; field <= 6; ++field) {
                std::string& text = expected.rows[row].texts[field];
                if (text.empty() && !after.rows[row].texts[field].empty()) {
                    text = after.rows[row].texts[field];
                    ++filled;
                }
            }
        }
        Require(SameRows(after.rows, expected.rows), "the filling in has changed what was there");
        if (SaysExactly(run, "Doplneno bunek: " + std::to_string(filled)) && filled > 0) {
            Good("known parts");
        }
    }

    void UpdateList() {
        ++fillings_;
        const Run run = Begin();
        const bool was_sorted = form().ListView1.Sorted();
        form().Command39.Click();
        const controls::TreeView& tree = form().TreeView1;
        const std::vector<RowState> after = StateOf(form().ListView1).rows;
        ListState expected = run.parts;
        std::map<std::string, std::size_t> nodes;
        std::map<std::string, std::size_t> rows;
        std::set<std::string> parts;
        for (std::size_t node = 1; node <= tree.Count(); ++node) {
            ++nodes[tree.Node(node).text];
            if (tree.Node(node).image == 2) {
                parts.insert(tree.Node(node).text);
            }
        }
        std::size_t highest = 0;
        for (const RowState& row : expected.rows) {
            ++rows[row.texts[0]];
            const std::string digits =
                row.texts[1].substr(0, row.texts[1].find_first_not_of("0123456789"));
            highest = std::max<std::size_t>(highest, digits.empty() ? 0 : std::stoul(digits));
        }
        if (run.starts && tree.Count() > 0) {
            for (RowState& row : expected.rows) {
                if (parts.contains(row.texts[0]) && rows[row.texts[0]] == 1) {
                    row.texts[2] = std::to_string(nodes[row.texts[0]]);
                }
            }
            for (std::size_t node = 1; node <= tree.Count(); ++node) {
                const auto& shown = tree.Node(node);
                if (shown.checked && shown.image == 2 && !rows.contains(shown.text)) {
                    rows[shown.text] = 1;
                    RowState added;
                    const auto position = static_cast<std::size_t>(++highest);
                    added.texts = {shown.text,
                                   FourDigits(position),
                                   std::to_string(nodes[shown.text]),
                                   "",
                                   "",
                                   "",
                                   ""};
                    expected.rows.push_back(added);
                }
            }
            Require(form().ListView1.SourceNames() &&
                        std::ranges::equal(*form().ListView1.SourceNames(), parts),
                    "the update has not kept the tree's names");
            RequireCountShown("the update");
        }
        if (!was_sorted) { // where a sorted list takes its new rows
            Require(SameRows(after, expected.rows), "the update has left something else");
            Good("updated list");
        }
    }

    controls::ComboBox& Picker(std::size_t picker) {
        return *std::array{&form().Combo1, &form().Combo2, &form().Combo3, &form().Combo4}.at(
            picker);
    }

    void UsePicker() {
        const std::size_t which = Below(4);
        controls::ComboBox& picker = Picker(which);
        if (!Alive() || !picker.Enabled()) {
            return;
        }
        if (Below(3) != 0) {
            picker.UserChange(Typed());
        }
        Run run = Begin();
        const Texts items = picker.Items();
        if (Below(2) == 0) {
            picker.KeyPress(controls::kEnterKey);
        } else {
            std::array{&form().Command12, &form().Command13, &form().Command14, &form().Command15}
                .at(which)
                ->Click();
        }
        const std::string value = WithLineFeeds(picker.Text());
        for (RowState& row : run.parts.rows) {
            if (row.selected) {
                row.texts[std::array{4U, 5U, 6U, 2U}.at(which)] = value;
            }
        }
        Require(SameRows(StateOf(form().ListView1).rows, run.parts.rows),
                "a picker's value is not in the selected rows alone");
        Texts remembered = items;
        if (std::ranges::find(items, value) == items.end()) {
            remembered.push_back(value);
        }
        Require(picker.Items() == remembered, "a picker has not remembered the value");
    }

    // ---- list files

    [[nodiscard]] bool IsNotThere(const std::string& path) const {
        return !program_->files.stored.contains(path) && !program_->files.failing.contains(path);
    }

    // `missing`: the state that a file that is not there leaves.
    void RequireLoaded(const std::string& path, const std::string& words,
                       ActionState missing = ActionState::kFailed) {
        const auto& stored = program_->files.stored;
        const auto file = stored.find(path);
        const ReadFile expected = file == stored.end() || program_->files.failing.contains(path)
                                      ? ReadFile{.rows = {}, .whole = false}
                                      : ReadListFile(file->second);
        Require(SameRows(StateOf(form().ListView1).rows, expected.rows),
                "the list is not what the file holds");
        RequireCountShown("the loading");
        if (expected.whole) {
            Require(program_->Status() == words + std::to_string(expected.rows.size()),
                    "a good file was not read");
            Good("list from file");
        } else {
            Require(program_->Status().starts_with("Nacteni Error ") &&
                        form().StatusBar1.State() ==
                            (IsNotThere(path) ? missing : ActionState::kFailed),
                    "a bad file was read without a word");
        }
    }

    void PressSave() {
        if (!Alive()) {
            return;
        }
        const Run run = Begin();
        const auto before = program_->files.stored;
        program_->message_boxes.answer = Below(2) == 0;
        std::string path = kWorkingFile;
        std::string words = "Ulozeni listu ok ";
        switch (Below(4)) {
        case 0:
            form().Command17.MouseDown(controls::kRightButton, 0, 1, 1);
            break;
        case 1:
            form().Command17.MenuKey();
            break;
        default:
            form().Command17.Click();
            path = kOtherFile;
            words = "Ulozeni ok ";
        }
        if (!form().unloaded && Says(run, words)) {
            Require(program_->files.stored[path] == WrittenList(run.parts),
                    "the file does not hold the list");
            Require(program_->Status() == words + path, "another file is told than was written");
            Good("list into file");
        } else if (Undisturbed(run) && !form().unloaded) {
            Require(program_->files.stored == before, "a save that did not happen changed a file");
        }
    }

    void PressOpen() {
        ++fillings_;
        if (!Alive()) {
            return;
        }
        const Run run = Begin();
        if (const auto way = Below(4); way < 2) {
            if (way == 0) {
                form().Command27.MouseDown(controls::kRightButton, 0, 1, 1);
            } else {
                form().Command27.MenuKey();
            }
            RequireLoaded(kWorkingFile, "Nacteni listu ok ");
            return;
        }
        form().Command27.Click();
        if (!form().unloaded && !form().CMD.file_name.empty()) {
            RequireLoaded(kOtherFile, "Nacteni ok ");
        } else if (!form().unloaded) {
            Require(SameRows(StateOf(form().ListView1).rows, run.parts.rows),
                    "cancelling has changed the list");
        }
    }

    void ForeignFile() {
        program_->files.stored[Below(2) == 0 ? kWorkingFile : kOtherFile] =
            kListFiles[Below(kListFiles.size())];
    }

    void BreakWorkingFile() {
        auto& failing = program_->files.failing;
        if (failing.erase(kWorkingFile) == 0) {
            failing.emplace(kWorkingFile, automation::RunTimeError(70, "Permission denied"));
        }
    }

    // The list into a file and out of it, and into a table and out of it, by other programs.
    void ThereAndBack() {
        const ListState list = StateOf(form().ListView1);
        if (list.rows.empty() || list.rows.size() > 12) {
            return;
        }
        HeadlessForm writer;
        for (const RowState& row : list.rows) {
            AddRow(writer.form.ListView1, row.texts, row.checked);
        }
        writer.form.Command17.MouseDown(controls::kRightButton, 0, 1, 1);
        HeadlessForm reader;
        reader.files.stored = writer.files.stored;
        reader.form.Command27.MouseDown(controls::kRightButton, 0, 1, 1);
        if (Survives(list)) {
            Require(SameRows(StateOf(reader.form.ListView1).rows, list.rows),
                    "a list is not the same out of its file");
            Good("file there and back");
        }

        simulator::Session session;
        session.LoadDocument("document", kEmptyDrawing);
        writer.Connect(session);
        writer.form.Command11.Click();
        Require(writer.Status() == "Tabulka vytvorena Ok ", "a table was not made of the list");
        Require(session.SelectTable("Sheet.1", "Main View", 1), "there is no table");
        reader.Connect(session);
        reader.form.Command9.Click();
        Require(reader.Status() == "Nacteni tabulky Ok", "the table was not read");
        std::vector<RowState> expected = list.rows;
        std::erase_if(expected,
                      [](const RowState& row) { return WithLineFeeds(row.texts[3]) == "List"; });
        std::vector<RowState> read = StateOf(reader.form.ListView1).rows;
        Require(read.size() == expected.size(), "rows are missing out of the table");
        for (std::size_t row = 0; row < read.size(); ++row) {
            Require(SameNumber(read[row].texts[1], LeadingNumber(expected[row].texts[1]).number),
                    "a position is another out of the table");
            for (std::string& text : expected[row].texts) {
                text = WithLineFeeds(text);
            }
            expected[row].texts[1] = read[row].texts[1];
            Require(read[row].texts == expected[row].texts,
                    "a row is not the same out of its table");
        }
        Good("table there and back");
    }

    // ---- tables

    void ClickRedrawing() {
        if (Alive()) {
            form().Check3.SetValue(1 - form().Check3.Value());
        }
    }

    // A table shows what it holds, unless a call may have failed that was to see to it.
    void RequireDisplays() {
        const auto& calls = session_.Log();
        if (std::ranges::find(calls, "DrawingTable.ComputeMode = 0") != calls.end()) {
            const Texts names = session_.DocumentNames();
            hidden_ = std::ranges::any_of(names, [this](const std::string& name) {
                return session_.DisplayAsText(name) != session_.DrawingAsText(name);
            });
            Require(!hidden_ || calls_may_have_failed_, "a table does not show what it holds");
        }
        calls_may_have_failed_ = fault_calls_left_ > 0 || vanishing_ || hidden_;
    }

    void TypeConfiguration() {
        if (!Alive()) {
            return;
        }
        if (Below(3) == 0) {
            form().Text2.UserChange(kConfigurations[Below(kConfigurations.size())]);
        } else {
            form().Command19.Click();
            Require(form().Text2.Text() == controls::kDefaultConfiguration, "no default");
        }
    }

    static std::vector<TablePtr> TablesOf(const simulator::Document* document) {
        if (document == nullptr || document->kind != simulator::DocumentKind::kDrawing) {
            return {};
        }
        return document->active_sheet->active_view->tables;
    }

    void CreateWhole() { Create(form().Command11.Click, "table", true); }
    void CreateOne() { Create(form().Command7.Click, "small table", false); }

    void Create(const controls::Event<>& event, const std::string& name, bool whole) {
        const Run run = Begin();
        const auto document = session_.ActiveDocument();
        const bool drawing = ActiveIs(".CATDrawing");
        const auto view = TablesOf(document.get()).empty() && !drawing
                              ? nullptr
                              : document->active_sheet->active_view;
        const auto before = TablesOf(document.get());
        std::vector<std::vector<Texts>> cells_before;
        cells_before.reserve(before.size());
        for (const TablePtr& table : before) {
            cells_before.push_back(CellsOf(*table));
        }
        const bool by_default = form().Text2.Text() == controls::kDefaultConfiguration;
        const bool redrawing = form().Check3.Value() == 0;
        event();
        if (!run.starts || run.parts.rows.empty()) {
            return;
        }
        creation_failed_ = creation_failed_ || Failed();
        if (Meddled(run)) {
            return;
        }
        if (Undisturbed(run) && view != nullptr) {
            Require(view->tables.size() <= before.size() + 1, "a creation has made two tables");
            for (std::size_t table = 0; table < before.size(); ++table) {
                Require(view->tables.at(table) == before[table] &&
                            CellsOf(*before[table]) == cells_before[table],
                        "a creation has changed another table");
            }
        }
        if (!Says(run, "Tabulka vytvorena Ok ")) {
            Require(Failed() || SaysExactly(run, "Neni aktivni CATDrawing") ||
                        SaysExactly(run, "Zjistuju spusteni Catie"),
                    "a creation ended without a word");
            Require(!run.calm || !drawing || !by_default || !Undisturbed(run) ||
                        (!whole && !run.parts.current),
                    "a table was not made");
            return;
        }
        Require(!program_->Busy(), "the pointer is busy after a creation");
        Require(view != nullptr, "a table was made in no drawing");
        std::vector<TablePtr> made;
        for (const TablePtr& table : view->tables) {
            if (std::ranges::find(before, table) == before.end()) {
                made.push_back(table);
            }
        }
        Require(!made.empty(), "a creation has made no table");
        if (!by_default) {
            return;
        }
        std::vector<Texts> expected{kHeader};
        if (whole) {
            expected.resize(6, Texts(7));
            for (auto row = run.parts.rows.rbegin(); row != run.parts.rows.rend(); ++row) {
                expected.push_back(InColumns(*row));
            }
        } else {
            expected.push_back(InColumns(run.parts.rows.at(*run.parts.current - 1)));
            expected.back().back() = "";
        }
        const std::size_t first_part = whole ? 6 : 1;
        Require(std::ranges::any_of(made,
                                    [&](const TablePtr& table) {
                                        return SameCells(CellsOf(*table), expected, first_part);
                                    }),
                "no new table holds the list as it stood");
        Require(!Undisturbed(run) || SameCells(CellsOf(*view->tables.back()), expected, first_part),
                "the last table is not the list's");
        Good(Undisturbed(run) ? name : "disturbed " + name);
        if (!redrawing) {
            Good("table without redrawing");
        }
    }

    // The selected table, where the first selected element is one.
    [[nodiscard]] TablePtr SelectedTable() const {
        return Active() == nullptr || Active()->selection.empty()
                   ? nullptr
                   : std::dynamic_pointer_cast<simulator::Table>(Active()->selection.front());
    }

    void FillSmallByButton() { FillSmall(form().Command16.Click); }

    void FillSmall(const controls::Event<>& event) {
        const Run run = Begin();
        const TablePtr table = SelectedTable();
        auto expected = table ? CellsOf(*table) : std::vector<Texts>();
        event();
        if (Meddled(run)) {
            return;
        }
        if (Says(run, "Vlozeni dat Ok")) {
            Require(table != nullptr && run.parts.current, "what was filled?");
            const RowState& row = run.parts.rows.at(*run.parts.current - 1);
            Require(expected.size() == 2 && expected[0].size() == 6, "a table of another size");
            expected[1] = {row.texts[1], row.texts[0], row.texts[2], WithDiameter(row.texts[5]),
                           row.texts[4], row.texts[6]};
            Require(SameCells(CellsOf(*table), expected, 1), "the table has not the row");
            Good("row into table");
        } else if (run.starts && table && !Failed()) {
            Require(CellsOf(*table) == expected, "a refused table was written into");
        }
    }

    void FillWhole() {
        const Run run = Begin(&form().Command30);
        const TablePtr table = SelectedTable();
        auto expected = table ? CellsOf(*table) : std::vector<Texts>();
        Raise(&form().Command30, [this] { form().Command30.Click(); });
        if (Meddled(run)) {
            return;
        }
        if (!run.starts) {
            return;
        }
        const std::size_t count = run.parts.rows.size();
        const bool fits = table && expected[0].size() == 7 && expected.size() > count;
        if (Says(run, "Vlozeni dat Ok")) {
            Require(fits, "a table of another size was filled");
            for (std::size_t row = 1; row < expected.size(); ++row) {
                const std::size_t part = expected.size() - row; // from 1
                expected[row] = Texts(7);
                if (part <= count) {
                    expected[row] = InColumns(run.parts.rows[part - 1]);
                    expected[row][0] = std::to_string(part);
                    expected[row][3] = WithDiameter(expected[row][3]);
                }
            }
            Require(CellsOf(*table) == expected, "the table has not the list");
            Good(Undisturbed(run) ? "list into table" : "disturbed list into table");
            return;
        }
        Require(Failed() || !run.calm || !fits || !ActiveIs(".CATDrawing") || !Undisturbed(run),
                "a table was not filled");
    }

    // What an error has left: everything as it was, or the beginning of what it was to become.
    void RequireBeginning(std::vector<RowState> rows, const std::vector<RowState>& before,
                          std::vector<RowState> complete) const {
        if (SameRows(rows, before)) {
            return;
        }
        Require(rows.size() <= complete.size(), "a failure has left rows from nowhere");
        if (!rows.empty()) {
            rows.pop_back(); // it may lack what the failing call was to tell
        }
        complete.resize(rows.size());
        Require(SameRows(rows, complete), "a failure has left other rows");
    }

    void ReadBack() {
        ++fillings_;
        const Run run = Begin(&form().Command9);
        const TablePtr table = SelectedTable();
        Raise(&form().Command9, [this] { form().Command9.Click(); });
        if (Meddled(run)) {
            return;
        }
        if (!run.starts) {
            return;
        }
        if (Says(run, "Nacteni tabulky Ok")) {
            Require(table != nullptr && table->column_sizes.size() == 7, "what was read?");
            Require(SameRows(StateOf(form().ListView1).rows, RowsOf(*table)),
                    "the list is not the table's");
            RequireCountShown("the reading");
            Good(Undisturbed(run) ? "list from table" : "disturbed list from table");
            return;
        }
        const bool readable =
            table && table->column_sizes.size() == 7 && table->row_sizes.size() > 1;
        if (Failed() && Undisturbed(run)) {
            RequireBeginning(StateOf(form().ListView1).rows, run.parts.rows,
                             readable ? RowsOf(*table) : std::vector<RowState>());
            Good("failed list from table");
        }
        Require(Failed() || !run.calm || !readable || !ActiveIs(".CATDrawing") || !Undisturbed(run),
                "a table was not read");
    }

    void ReadParameters() {
        const Run run = Begin();
        const TablePtr table = SelectedTable();
        form().Command10.Click();
        if (Meddled(run)) {
            return;
        }
        if (Says(run, "Nacteni parametru Ok")) {
            const std::string& text = form().Text3.Text();
            Require(text.starts_with("/tlouska_cary ="), "no line width");
            Require(!table || text.find("\r\n/radek;" + std::to_string(table->row_sizes.size()) +
                                        "\r\n") != std::string::npos,
                    "the parameters are not the table's");
            Good("parameters");
        }
    }

    void PlaceTextsByButton() {
        if (Below(3) == 0) {
            form().Command8.Click();
        } else {
            PlaceTexts(form().Command6.Click);
        }
    }

    void PlaceTexts(const controls::Event<>& event) {
        const Run run = Begin();
        const bool drawing = ActiveIs(".CATDrawing");
        const auto view = drawing ? Active()->active_sheet->active_view : nullptr;
        const std::size_t before = view ? view->texts.size() : 0;
        event();
        if (Meddled(run)) {
            return;
        }
        if (!run.starts || !run.parts.current || !drawing || Failed() || !catia_runs_) {
            return;
        }
        const RowState& row = run.parts.rows.at(*run.parts.current - 1);
        const Texts expected{row.texts[1], row.texts[0], row.texts[2],
                             row.texts[5], row.texts[4], row.texts[6]};
        Require(view->texts.size() == before + expected.size(), "not six texts were placed");
        for (std::size_t text = 0; text < expected.size(); ++text) {
            const simulator::Text& placed = *view->texts[before + text];
            Require((text == 0 ? SameNumber(placed.text, LeadingNumber(expected[0]).number)
                               : placed.text == expected[text]) &&
                        placed.x == 100 && placed.y == 100 && placed.font_size == 3.5,
                    "a placed text is another");
        }
        Good("texts");
    }

    // ---- sheets

    [[nodiscard]] Texts Sheets() const {
        Texts names;
        if (Active() != nullptr) {
            for (const auto& sheet : Active()->sheets) {
                names.push_back(sheet->name);
            }
        }
        return names;
    }

    [[nodiscard]] std::vector<RowState> SheetRows() const {
        std::vector<RowState> rows;
        std::size_t details = 0;
        for (const auto& sheet : Active()->sheets) {
            const bool detail = sheet->detail && session_.detail_as_number;
            rows.push_back({.texts = {sheet->name, "", ""},
                            .tag = detail ? "A" + FourDigits(++details) : "",
                            .checked = !detail});
        }
        return rows;
    }

    void RequireSheetList() {
        const ListState list = StateOf(form().ListView3);
        Require(program_->Status() == "Sheets nacteny: " + std::to_string(list.rows.size()),
                "the sheets are counted wrong");
        Require(SameRows(list.rows, SheetRows()), "the list has not the drawing's sheets");
    }

    void LoadSheets() {
        const Run run = Begin();
        const ListState before = StateOf(form().ListView3);
        form().Command21.Click();
        if (Meddled(run)) {
            return;
        }
        if (Says(run, "Sheets nacteny: ")) {
            RequireSheetList();
            Good("sheets");
            return;
        }
        if (run.starts && Failed() && Active() != nullptr) {
            RequireBeginning(StateOf(form().ListView3).rows, before.rows, SheetRows());
        }
        Require(!run.starts || !run.calm || Failed() || run.parts.rows.empty() ||
                    Active() == nullptr || Active()->name.find(".CATDrawing") == std::string::npos,
                "the sheets were not loaded");
    }

    void RenameSheets() {
        const Run run = Begin();
        const ListState list = StateOf(form().ListView3);
        Texts names = Sheets();
        bool refused = false;
        std::size_t done = 0;
        for (const RowState& row : list.rows) {
            const std::string& name = row.texts[1];
            if (!row.checked || name.empty()) {
                continue;
            }
            ++done;
            const bool taken = std::ranges::find(names, name) != names.end();
            if (row.texts[0] == "Nový") {
                refused = refused || taken;
                names.push_back(name);
                continue;
            }
            const auto named = std::ranges::find(names, row.texts[0]);
            if (named == names.end() || (taken && name != row.texts[0])) {
                refused = true;
                break;
            }
            *named = name;
        }
        form().Command23.Click();
        if (Meddled(run)) {
            return;
        }
        if (Says(run, "Prejmenovano: ")) {
            Require(!refused && Sheets() == names, "the drawing's sheets are named otherwise");
            Require(program_->Status() == "Prejmenovano: " + std::to_string(done),
                    "the renamed sheets are counted wrong");
            Good("renamed sheets");
        }
    }

    void ReorderSheets() {
        const Run run = Begin(&form().Command34);
        const Texts order = Column(form().ListView3, 0);
        const auto document = session_.ActiveDocument();
        Raise(&form().Command34, [this] { form().Command34.Click(); });
        if (Meddled(run)) {
            return;
        }
        if (run.starts && Says(run, "Sheets nacteny: ")) {
            if (Undisturbed(run)) {
                Require(Sheets() == order, "the sheets are not in the list's order");
                Good("reordered sheets");
            }
            RequireSheetList();
        }
    }

    void NumberSheets() {
        if (!Alive()) {
            return;
        }
        ListState expected = StateOf(form().ListView3);
        form().Text6.UserChange(std::array{"3", "", "0", "-2", "12"}.at(Below(5)));
        int number = std::atoi(form().Text6.Text().c_str());
        if (Below(3) == 0) {
            form().Text6.KeyPress(controls::kEnterKey);
        } else {
            form().Command20.Click();
        }
        if (expected.rows.empty()) {
            return;
        }
        for (RowState& row : expected.rows) {
            if (row.checked) {
                row.texts[1] = std::to_string(number++);
            }
        }
        Require(SameRows(StateOf(form().ListView3).rows, expected.rows), "numbered otherwise");
        Require(program_->Status() == "Ocislovano: " + std::to_string(number - 1),
                "the last number is told wrong");
    }

    void NameSheets() {
        if (!Alive()) {
            return;
        }
        form().Check1.SetValue(static_cast<int>(Below(2)));
        const bool assembly = form().Check1.Value() == 1;
        Texts names(assembly ? 1 : 0, "1.Sestava");
        std::size_t number = 1;
        for (const RowState& part : StateOf(form().ListView1).rows) {
            names.push_back(part.texts[3].empty() ? ""
                                                  : std::to_string(++number) + "." + part.texts[0]);
        }
        ListState expected = StateOf(form().ListView3);
        form().Command22.Click();
        if (expected.rows.empty()) {
            return;
        }
        std::size_t ticked = 0;
        for (RowState& row : expected.rows) {
            if (row.checked) {
                row.texts[1] = ticked < names.size() ? names[ticked] : "";
                ++ticked;
            }
        }
        Require(SameRows(StateOf(form().ListView3).rows, expected.rows), "named otherwise");
        Require(program_->Status() == "Pojmenovano: " + std::to_string(ticked),
                "the named sheets are counted wrong");
        Good("named sheets");
    }

    void CountMissing() {
        const Run run = Begin();
        form().Command33.Click();
        const ListState sheets = StateOf(form().ListView3);
        if (!run.starts || run.parts.rows.empty() || sheets.rows.empty()) {
            return;
        }
        const auto listed = std::ranges::count_if(
            run.parts.rows, [](const RowState& row) { return !row.texts[3].empty(); });
        const auto ticked = std::ranges::count_if(sheets.rows, &RowState::checked);
        const bool assembly = form().Check1.Value() == 1;
        Require(program_->Status() == "Schazi:   listu " + std::to_string(listed) +
                                          (assembly ? " + sestava " : "") + " - catie " +
                                          std::to_string(ticked),
                "the missing sheets are told wrong");
        Require(form().Text7.Text() == std::to_string(listed + (assembly ? 1 : 0) - ticked),
                "the missing sheets are counted wrong");
    }

    void PlanSheets() {
        if (!Alive() || form().ListView3.Count() >= kMostRows) {
            return;
        }
        if (Below(2) == 0) {
            form().Text7.UserChange(Typed());
        }
        const double rows = LeadingNumber(form().Text7.Text()).number;
        if (rows > 130 && rows < 1e6) {
            return; // too much to look at
        }
        const std::size_t before = form().ListView3.Count();
        boxes_expected_ += rows >= 1e6 ? 1 : 0;
        if (Below(3) == 0) {
            form().Text7.KeyPress(controls::kEnterKey);
        } else {
            form().Command32.Click();
        }
        const std::size_t added = rows >= 1 && rows < 1e6 ? static_cast<std::size_t>(rows) : 0;
        Require(form().ListView3.Count() == before + added, "not as many rows as planned");
        for (std::size_t row = before + 1; row <= before + added; ++row) {
            Require(form().ListView3.Sorted() || (form().ListView3.Row(row).text == "Nový" &&
                                                  form().ListView3.Row(row).checked),
                    "a planned row is not one");
        }
    }

    // A key of the window, with whatever is held beside it. What it presses is looked at elsewhere;
    // here, that it does what it says or nothing.
    void PressKey() {
        if (!Alive()) {
            return;
        }
        constexpr std::array kCodes{0x09,     0x2D,     0x2E,     0x74,     int{'1'}, int{'3'},
                                    int{'5'}, int{'S'}, int{'O'}, int{'Z'}, int{'Y'}};
        const app::Key key{.code = kCodes.at(Below(kCodes.size())),
                           .control = Below(2) == 0,
                           .shift = Below(8) == 0,
                           .alt = Below(8) == 0,
                           .repeated = Below(8) == 0};
        const auto focus = std::array{app::Focus::kPartsList, app::Focus::kSheetList,
                                      app::Focus::kField, app::Focus::kElsewhere}
                               .at(Below(4));
        const auto action = app::ActionOfKey(form(), key, focus);
        Note(std::to_string(key.code));
        if (!action) {
            return;
        }
        Require(!key.alt, "a key with Alt was taken");
        if (key.code == 0x74) {
            return WalkProduct([&] { action(); }, key.repeated);
        }
        const std::size_t page = form().SSTab1.Tab();
        const std::size_t rows = form().ListView1.Count();
        const std::size_t sheets = form().ListView3.Count();
        const bool parts = focus == app::Focus::kPartsList;
        if (key.code == 0x2D && (parts ? rows : sheets) >= kMostRows) {
            return;
        }
        const bool has_row = (parts ? form().ListView1 : form().ListView3).CurrentRow().has_value();
        const auto selected = static_cast<std::size_t>(
            std::ranges::count(form().ListView1.Rows(), true, &controls::ListRow::selected));
        program_->message_boxes.answer = true;
        fillings_ += key.code == 'O' || key.code == 'Z' || key.code == 'Y' ? 1 : 0;
        action();
        if (key.code == 0x2D || key.code == 0x2E) {
            const std::size_t added = !key.repeated && key.code == 0x2D ? 1 : 0;
            const std::size_t gone = key.control ? selected : has_row ? 1 : 0;
            const std::size_t removed = !key.repeated && key.code == 0x2E ? gone : 0;
            Require(form().ListView1.Count() + (parts ? removed : 0) ==
                            rows + (parts ? added : 0) &&
                        form().ListView3.Count() + (parts ? 0 : removed) ==
                            sheets + (parts ? 0 : added),
                    "a key has added or removed other rows");
            Good("row by key");
        } else if (key.code == 0x09 || (key.code >= '1' && key.code <= '5')) {
            const std::size_t shown = key.repeated       ? page
                                      : key.code != 0x09 ? static_cast<std::size_t>(key.code - '1')
                                      : key.shift        ? (page + 4) % 5
                                                         : (page + 1) % 5;
            Require(form().SSTab1.Tab() == shown, "a key has shown another page");
            Require(shown == page || form().Command18.Caption() == "min",
                    "a page of a collapsed window");
            Good("page by key");
        }
    }

    void ForgetValue() {
        controls::ComboBox& picker = Picker(Below(4));
        if (!Alive() || picker.Items().empty()) {
            return;
        }
        Texts expected = picker.Items();
        const std::size_t item = Below(expected.size());
        expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(item));
        picker.Forget(item);
        Require(picker.Items() == expected, "another value was forgotten");
    }

    void EditNewName() {
        if (!Alive()) {
            return;
        }
        form().Text5.UserChange(Replaced(Typed(), "\r\n", ""));
        const auto row = form().ListView3.CurrentRow();
        boxes_expected_ += row ? 0 : 1;
        if (Below(2) == 0) {
            form().Text5.KeyPress(controls::kEnterKey);
        } else {
            form().Command28.Click();
        }
        Require(!row || form().ListView3.SubItem(*row, 1) == Trimmed(form().Text5.Text()),
                "the new name is not the typed one");
    }

    void AddSheet() {
        if (form().ListView3.Count() < kMostRows && Alive()) {
            const std::size_t before = form().ListView3.Count();
            form().m_Sheet_pridej.Click();
            Require(form().ListView3.Sorted() || (form().ListView3.Count() == before + 1 &&
                                                  form().ListView3.Row(before + 1).text == "Nový" &&
                                                  form().ListView3.Row(before + 1).checked),
                    "no planned row at the end");
        }
    }

    void DeleteSheet() {
        ListState expected = StateOf(form().ListView3);
        if (Alive() && expected.current) {
            expected.rows.erase(expected.rows.begin() +
                                static_cast<std::ptrdiff_t>(*expected.current - 1));
        }
        form().m_Sheet_smaz.Click();
        Require(SameRows(StateOf(form().ListView3).rows, expected.rows), "another row is gone");
    }

    void GenerateSheets() {
        const bool alive = Alive();
        form().Command35.Click();
        Require(!alive ||
                    (form().ListView3.Count() == 10 && form().ListView3.Row(10).text == "test 10"),
                "the test rows are not there");
    }

    void DragSheet() {
        ListView& list = form().ListView3;
        if (!Alive() || list.Count() == 0) {
            return;
        }
        const std::size_t from = AnyRow(list);
        const std::size_t to = AnyRow(list);
        const ListState before = StateOf(list);
        const Run run = Begin(&list);
        list.UserMouseDown(controls::kLeftButton, 0, 5, static_cast<int>(from));
        Raise(&list, [&] { list.UserMouseUp(controls::kLeftButton, 0, 5, static_cast<int>(to)); });
        RequireDropped(run, list);
        if (!run.starts || !Undisturbed(run)) {
            return;
        }
        std::set<std::string> names;
        for (const RowState& row : before.rows) {
            if (!names.insert(row.texts[0]).second) {
                return; // which one is meant is settled elsewhere
            }
        }
        const RowState& dragged = before.rows[from - 1];
        const RowState& target = before.rows[to - 1];
        std::vector<std::uint64_t> expected = Ids(before);
        if (CanBeDragged(dragged.texts[0]) && from != to && dragged.tag.empty() &&
            target.tag.empty()) {
            const auto at = expected.begin() + static_cast<std::ptrdiff_t>(from - 1);
            const auto place = expected.begin() + static_cast<std::ptrdiff_t>(to - 1);
            if (at < place) {
                std::rotate(at, at + 1, place + 1);
            } else {
                std::rotate(place, at, at + 1);
            }
            std::stable_partition(expected.begin(), expected.end(), [&](std::uint64_t id) {
                return std::ranges::find(before.rows, id, &RowState::id)->tag.empty();
            });
            Good("sheet drag");
        }
        Require(Ids(StateOf(list)) == expected, "a dragged sheet is not where it was dropped");
    }

    void MoveSheetByKey() {
        ListView& list = form().ListView3;
        if (!Alive()) {
            return;
        }
        const ListState before = StateOf(list);
        const int rows = Below(2) == 0 ? 1 : -1;
        list.UserMoveKey(rows);
        auto expected = Ids(before);
        if (before.current) {
            const auto to = static_cast<std::ptrdiff_t>(*before.current) + rows - 1;
            if (to >= 0 && to < static_cast<std::ptrdiff_t>(expected.size()) &&
                before.rows[static_cast<std::size_t>(to)].tag.empty() &&
                before.rows[*before.current - 1].tag.empty()) {
                std::swap(expected[static_cast<std::size_t>(to)], expected[*before.current - 1]);
                std::ranges::stable_sort(expected, {}, [&](std::uint64_t id) {
                    return std::ranges::find(before.rows, id, &RowState::id)->tag;
                });
                Good("sheet moved by key");
            }
        }
        Require(Ids(StateOf(list)) == expected, "a key has moved another sheet");
    }

    // The buttons that work on the drawing's sheets directly.
    void OtherSheetButton() {
        if (!Alive()) {
            return;
        }
        program_->message_boxes.text_answer = Typed();
        const auto answer =
            std::array{platform::Answer::kYes, platform::Answer::kNo, platform::Answer::kCancel}.at(
                Below(3));
        program_->message_boxes.three_way_answer = answer;
        const std::size_t button = Below(4);
        const Run run = Begin();
        Texts names = Sheets();
        const Texts before = names;
        std::array{&form().Command24, &form().Command25, &form().Command29, &form().Command31}
            .at(button)
            ->Click();
        if (Meddled(run)) {
            return;
        }
        if (Failed()) {
            return;
        }
        const bool drawing = Active() != nullptr &&
                             Active()->name.find(".CATDrawing") != std::string::npos && catia_runs_;
        if (drawing && button == 0) {
            NumberDirectly(names, program_->message_boxes.text_answer);
        } else if (drawing && button == 1 && answer != platform::Answer::kCancel &&
                   !run.parts.rows.empty()) {
            NameDirectly(names, run.parts, answer == platform::Answer::kYes);
        } else if (drawing && button == 2 && !run.parts.rows.empty()) {
            std::swap(names.at(0), names.at(1));
        } else if (drawing && button == 3) {
            names.emplace_back("45296.25");
        }
        Require(Sheets() == names, "a direct button has made other sheets of them");
        if (names != before) {
            Good("direct sheets");
        }
    }

    static void NumberDirectly(Texts& names, const std::string& answer) {
        const Texts pieces = SplitAt(answer, "-");
        if (pieces.size() != 2) {
            return;
        }
        const int first = static_cast<int>(LeadingNumber(pieces[0]).number);
        const int last = static_cast<int>(LeadingNumber(pieces[1]).number);
        for (int number = first; number <= last; ++number) {
            if (static_cast<std::size_t>(number - first) < names.size()) {
                names[static_cast<std::size_t>(number - first)] = std::to_string(number);
            }
        }
    }

    static void NameDirectly(Texts& names, const ListState& parts, bool assembly) {
        Texts slots(assembly ? 1 : 0, "1.Sestava");
        std::size_t counted = slots.size();
        for (const RowState& part : parts.rows) {
            const bool has_sheet = !part.texts[3].empty();
            slots.push_back(has_sheet ? std::to_string(slots.size() + 1) + "." + part.texts[0]
                                      : "");
            counted += has_sheet ? 1 : 0;
        }
        for (std::size_t sheet = 0; sheet < std::min(counted, names.size()); ++sheet) {
            names[sheet] = slots[sheet];
        }
    }

    // ---- the window

    void UseWindow() {
        if (!Alive()) {
            return;
        }
        switch (Below(4)) {
        case 0:
            form().SSTab1.UserClick(Below(5));
            Require(form().Command18.Caption() == "min", "a tab of a collapsed window");
            break;
        case 1:
            form().Command18.Click();
            Require(form().Height == (form().Command18.Caption() == "min" ? 7155 : 660),
                    "the window's height is another");
            break;
        case 2:
            form().Check2.SetValue(static_cast<int>(Below(2)));
            break;
        default:
            app::Form_Resize(form());
        }
    }

    // ---- CATIA

    void OpenDocuments() {
        session_.CloseAllDocuments();
        for (const std::string& document : kDocuments) {
            session_.LoadDocument("document", document);
        }
        session_.Activate("Product1.CATProduct");
    }

    void Connect() {
        program_->desktop.titles = {"Desktop", "other"};
        program_->servers.session = nullptr;
        if (catia_runs_) {
            program_->Connect(session_);
        }
    }

    void SwitchDocument() {
        const auto names = session_.DocumentNames();
        if (names.empty()) {
            return;
        }
        const std::string& name = names[Below(names.size())];
        session_.Activate(name);
        Note(name);
    }

    void SelectInCatia() {
        if (Active() == nullptr || Active()->sheets.empty()) {
            return;
        }
        std::vector<std::shared_ptr<simulator::Element>> elements;
        for (const auto& sheet : Active()->sheets) {
            for (const auto& view : sheet->views) {
                elements.insert(elements.end(), view->tables.rbegin(), view->tables.rend());
                elements.push_back(view);
            }
        }
        const std::size_t element = Below(elements.size() + 1);
        session_.ClearSelection();
        if (element < elements.size()) {
            session_.ActiveDocument()->selection = {elements[element]};
        }
        Note(std::to_string(element));
    }

    void SelectATable() {
        constexpr std::array kNames{"Sestava.CATDrawing", "Drawing1.CATDrawing"};
        const std::string name = kNames.at(Below(kNames.size()));
        const auto names = session_.DocumentNames();
        if (std::ranges::find(names, name) == names.end()) {
            return;
        }
        session_.Activate(name);
        const auto& tables = Active()->sheets.front()->views.front()->tables;
        if (!tables.empty()) {
            session_.ActiveDocument()->selection = {tables[Below(tables.size())]};
        }
        Note(name);
    }

    void SwitchSheet() {
        const Texts names = Sheets();
        if (!names.empty()) {
            session_.ActivateSheet(names[Below(names.size())]);
        }
    }

    void StartOrCloseCatia() {
        catia_runs_ = !catia_runs_;
        session_.Arm({});
        fault_calls_left_ = 0;
        vanishing_ = false;
        if (catia_runs_) {
            OpenDocuments();
        } else {
            session_.CloseAllDocuments();
        }
        Connect();
        Note(catia_runs_ ? "starts" : "closes");
    }

    void LetACallFail() {
        const std::size_t call = 1 + Below(256) % 80;
        const auto kind = std::array{simulator::FaultKind::kRefused, simulator::FaultKind::kBusy,
                                     simulator::FaultKind::kVanished}
                              .at(Below(3));
        session_.Arm({.call = call, .kind = kind});
        vanishing_ = kind == simulator::FaultKind::kVanished;
        calls_may_have_failed_ = true;
        fault_calls_left_ = call + session_.Log().size();
        Note(std::to_string(call));
    }

    void WillMeddle() { calls_to_meddling_ = 1 + Below(256) % 60; }

    // What a person does in CATIA while a call is on its way.
    void Meddle() {
        ++meddlings_;
        ++acts_;
        steps.push_back(std::string(static_cast<std::size_t>(depth_) * 2, ' ') + "  at a call:");
        switch (Below(5)) {
        case 0:
            return SwitchDocument();
        case 1:
            return SelectInCatia();
        case 2:
            return SwitchSheet();
        case 3:
            return OpenDocuments(); // anew: what was open is closed
        default:
            return session_.CloseAllDocuments();
        }
    }

    void CatiaComesBack() {
        if (session_.DocumentNames().empty()) {
            OpenDocuments();
        }
        session_.Arm({});
        fault_calls_left_ = 0;
        vanishing_ = false;
        session_.detail_as_number = Below(2) == 1;
        if (!catia_runs_) {
            StartOrCloseCatia();
        }
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t next_ = 0;
    simulator::Session session_;
    bool catia_runs_ = false;
    std::size_t fault_calls_left_ = 0; // until the armed call, and with it
    bool vanishing_ = false;
    bool calls_may_have_failed_ = false;
    bool hidden_ = false; // whether a table does not show what it holds
    std::unique_ptr<HeadlessForm> program_;
    int programs_ = 0;              // started so far
    std::set<const void*> running_; // what ignores being started again
    std::size_t acts_ = 0;
    std::size_t meddlings_ = 0;
    std::size_t calls_to_meddling_ = 0;
    std::size_t fillings_ = 0; // how often the parts list may have been filled anew
    int depth_ = 0;
    std::size_t boxes_expected_ = 0;
    bool creation_failed_ = false;
    bool walk_failed_ = false;
    bool session_ended_ = false;
};

const std::vector<Person::Life::Doing>& Person::Life::Doings() {
    static const std::vector<Doing> doings{
        {4, "takes back", &Life::TakeBack},
        {2, "loses the power", &Life::LosePower},
        {6, "Načtení stromu", &Life::WalkByButton},
        {4, "naplneni tree", &Life::FillTree},
        {9, "Naplň list", &Life::FillList},
        {3, "generator", &Life::Generate},
        {1, "procesy", &Life::SearchForCatia},
        {5, "ticks a node", &Life::TickNode},
        {4, "types a structure", &Life::TypeStructure},
        {2, "types on into the structure", &Life::AppendToStructure},
        {10, "selects rows", &Life::Select},
        {3, "clicks a list", &Life::ClickList},
        {8, "ticks a row", &Life::Tick},
        {6, "renames a row", &Life::Rename},
        {4, "renames all rows to numbers", &Life::RenameToNumbers},
        {3, "edits a cell", &Life::EditCell},
        {2, "pastes", &Life::Paste},
        {10, "drags a part", &Life::DragPart},
        {3, "presses on a row", &Life::PressOnRow},
        {3, "releases on a row", &Life::ReleaseOnRow},
        {5, "Alt and an arrow", &Life::MoveByKey},
        {5, "opens a menu", &Life::OpenMenu},
        {4, "Přidat", &Life::Add},
        {6, "presses the key", &Life::PressKey},
        {1, "forgets a value", &Life::ForgetValue},
        {4, "Smazat", &Life::Delete},
        {8, "uses a picker", &Life::UsePicker},
        {4, "Aktualizuj ze stromu", &Life::UpdateList},
        {3, "Smazat vybrané", &Life::DeleteSelected},
        {3, "Seřadit", &Life::SortParts},
        {3, "Doplnit známé", &Life::FillKnown},
        {5, "Uložení tabulky", &Life::PressSave},
        {4, "Otevreni tabulky", &Life::PressOpen},
        {2, "puts a list file there", &Life::ForeignFile},
        {1, "locks or unlocks the working file", &Life::BreakWorkingFile},
        {3, "(there and back)", &Life::ThereAndBack},
        {3, "types a configuration", &Life::TypeConfiguration},
        {4, "Bez překreslování", &Life::ClickRedrawing},
        {8, "Vytvorení", &Life::CreateWhole},
        {4, "Export 1 tabulky", &Life::CreateOne},
        {4, "Export do tabulky", &Life::FillSmallByButton},
        {6, "Exportovat do tabulky", &Life::FillWhole},
        {8, "Tabulka", &Life::ReadBack},
        {2, "Parametry", &Life::ReadParameters},
        {2, "Export jako text", &Life::PlaceTextsByButton},
        {6, "Načíst Sheets z catie", &Life::LoadSheets},
        {4, "Přejmenuj Sheet v Catii", &Life::RenameSheets},
        {4, "Přesun Sheetu v Catii", &Life::ReorderSheets},
        {3, "Číslovat Sheet od", &Life::NumberSheets},
        {3, "Jména z tabulky", &Life::NameSheets},
        {2, "Schazi", &Life::CountMissing},
        {2, "Pridat Sheety", &Life::PlanSheets},
        {3, "types a sheet's new name", &Life::EditNewName},
        {2, "Pridat sheet", &Life::AddSheet},
        {2, "Smazat sheet", &Life::DeleteSheet},
        {1, "Sheet generovat", &Life::GenerateSheets},
        {4, "drags a sheet", &Life::DragSheet},
        {2, "Alt and an arrow on a sheet", &Life::MoveSheetByKey},
        {2, "a direct button of the sheets", &Life::OtherSheetButton},
        {2, "uses the window", &Life::UseWindow},
        {12, "CATIA: document", &Life::SwitchDocument},
        {10, "CATIA: selects", &Life::SelectInCatia},
        {12, "CATIA: selects a table", &Life::SelectATable},
        {2, "CATIA: sheet", &Life::SwitchSheet},
        {1, "CATIA:", &Life::StartOrCloseCatia},
        {3, "CATIA: a call will fail:", &Life::LetACallFail},
        {3, "CATIA: something will be done at a call", &Life::WillMeddle},
        {6, "CATIA: is well", &Life::CatiaComesBack},
        {5, "Esc", &Life::PressEsc},
        {2, "closes the window", &Life::CloseProgram},
        {1, "Windows ends the session", &Life::EndSession},
    };
    return doings;
}

Person::Person(std::span<const std::uint8_t> choices) : life_(std::make_unique<Life>(choices)) {}
Person::~Person() = default;

void Person::Live() {
    life_->Live();
}

const std::vector<std::string>& Person::Steps() const {
    return life_->steps;
}

const std::map<std::string, std::size_t>& Person::Successes() const {
    return life_->successes;
}

} // namespace testing_support
