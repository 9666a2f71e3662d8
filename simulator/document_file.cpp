#include "document_file.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "quoted.hpp"
#include "text/text.hpp"

namespace simulator {

namespace {

// Of one line, and altogether directly in a product.
constexpr std::size_t kMostInstances = 1'000'000;
constexpr int kDeepestNesting = 500;

// What is wrong in a line; the reader adds where.
struct Malformed {
    std::string reason;
};

struct Word {
    std::string text;
    bool quoted = false;
};

// The words of a line: separated by blanks or tabs, in double quotes where they hold some. A "#"
// outside quotes begins a comment.
std::vector<Word> Words(std::string_view line) {
    std::vector<Word> words;
    std::size_t i = 0;
    while (true) {
        i = std::min(line.find_first_not_of(" \t", i), line.size());
        if (i == line.size() || line[i] == '#') {
            return words;
        }
        Word word;
        if (line[i] != '"') {
            const std::size_t end = std::min(line.find_first_of(" \t\"#", i), line.size());
            word.text = line.substr(i, end - i);
            i = end;
        } else {
            word.quoted = true;
            for (++i; i < line.size() && line[i] != '"'; ++i) {
                if (line[i] != '\\') {
                    word.text += line[i];
                    continue;
                }
                if (++i == line.size()) {
                    break;
                }
                const auto escaped = Escaped(line[i]);
                if (!escaped) {
                    throw Malformed{std::string("unknown escape \\") + line[i]};
                }
                word.text += *escaped;
            }
            if (i == line.size()) {
                throw Malformed{"a quoted text has no end"};
            }
            ++i;
        }
        words.push_back(std::move(word));
    }
}

// The words of a line taken one after the other.
class Fields {
  public:
    explicit Fields(std::vector<Word> words) : words_(std::move(words)) {}

    [[nodiscard]] bool AtEnd() const { return next_ == words_.size(); }

    std::string Text() {
        if (AtEnd()) {
            throw Malformed{"the line ends too early"};
        }
        return words_[next_++].text;
    }

    double Number() {
        const std::string word = Text();
        double number = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        if (error != std::errc() || end != word.data() + word.size() || !std::isfinite(number)) {
            throw Malformed{"\"" + word + "\" is no number"};
        }
        return number;
    }

    double Size() {
        const double size = Number();
        if (!(size > 0)) {
            throw Malformed{"a size must be greater than 0"};
        }
        return size;
    }

    // A whole number from `least` to `most`.
    int Whole(int least, int most) {
        const double number = Number();
        if (number != std::floor(number) || number < least || number > most) {
            throw Malformed{"a whole number from " + std::to_string(least) + " to " +
                            std::to_string(most) + " is expected"};
        }
        return static_cast<int>(number);
    }

    // Whether the next word is the unquoted `keyword`; takes it then.
    bool Take(std::string_view keyword) {
        if (AtEnd() || words_[next_].quoted || words_[next_].text != keyword) {
            return false;
        }
        ++next_;
        return true;
    }

    // Takes the words of all of `options`, each a keyword and what reads its values, in any order
    // to the end of the line.
    void
    TakeOptions(std::initializer_list<std::pair<std::string_view, std::function<void()>>> options) {
        while (!AtEnd()) {
            const auto* const option = std::find_if(
                options.begin(), options.end(), [&](const auto& each) { return Take(each.first); });
            if (option == options.end()) {
                throw Malformed{"\"" + words_[next_].text + "\" is not expected here"};
            }
            option->second();
        }
    }

  private:
    std::vector<Word> words_;
    std::size_t next_ = 0;
};

// Builds a document line by line.
class Reader {
  public:
    Reader() = default;
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() {
        if (!finished_) {
            // Products that contain one another, or go too deep, cannot be left to their owners.
            for (const auto& [part_number, product] : products_) {
                product->instances.clear();
            }
        }
    }

    void ReadLine(Fields& fields) {
        static const std::map<std::string, void (Reader::*)(Fields&)> kLines{
            {"product", &Reader::ReadProduct}, {"child", &Reader::ReadChild},
            {"sheet", &Reader::ReadSheet},     {"view", &Reader::ReadView},
            {"line", &Reader::ReadLineDrawn},  {"circle", &Reader::ReadCircle},
            {"text", &Reader::ReadText},       {"table", &Reader::ReadTable},
            {"row", &Reader::ReadRow},         {"cell", &Reader::ReadCell},
        };
        const std::string keyword = fields.Text();
        if (document_->name.empty()) {
            ReadHeader(keyword, fields);
        } else if (const auto line = kLines.find(keyword); line != kLines.end()) {
            (this->*line->second)(fields);
        } else {
            throw Malformed{"unknown keyword \"" + keyword + "\""};
        }
        if (!fields.AtEnd()) {
            throw Malformed{"\"" + fields.Text() + "\" is not expected here"};
        }
    }

    std::shared_ptr<Document> Finish() {
        FinishTable();
        if (document_->name.empty()) {
            throw Malformed{"there is no document line"};
        }
        if (document_->kind == DocumentKind::kProduct) {
            if (document_->product == nullptr) {
                throw Malformed{"a product document needs a product"};
            }
            for (const auto& [part_number, product] : products_) {
                Height(*product, 0);
            }
        }
        if (document_->kind == DocumentKind::kDrawing) {
            if (document_->sheets.empty()) {
                throw Malformed{"a drawing needs a sheet"};
            }
            for (const auto& sheet : document_->sheets) {
                if (sheet->views.empty()) {
                    sheet->views = MakeSheet({})->views;
                }
                if (sheet->active_view == nullptr) {
                    sheet->active_view = sheet->views.front();
                }
            }
            if (document_->active_sheet == nullptr) {
                document_->active_sheet = document_->sheets.front();
            }
        }
        finished_ = true;
        return document_;
    }

  private:
    void ReadHeader(const std::string& keyword, Fields& fields) {
        for (const DocumentKind kind :
             {DocumentKind::kProduct, DocumentKind::kDrawing, DocumentKind::kPart}) {
            if (keyword == ClassName(kind)) {
                document_->kind = kind;
                document_->name = fields.Text();
                if (document_->name.empty()) {
                    throw Malformed{"the document has no name"};
                }
                return;
            }
        }
        throw Malformed{"ProductDocument, DrawingDocument or PartDocument is expected first"};
    }

    void Expect(DocumentKind kind, const void* parent, const char* parent_keyword) const {
        if (document_->kind != kind) {
            throw Malformed{std::string("not in a ") + ClassName(document_->kind)};
        }
        if (parent == nullptr) {
            throw Malformed{std::string("there is no ") + parent_keyword + " above"};
        }
    }

    std::shared_ptr<Product> ProductNamed(const std::string& part_number) {
        auto& product = products_[part_number];
        if (product == nullptr) {
            product = std::make_shared<Product>();
            product->part_number = part_number;
        }
        return product;
    }

    void ReadProduct(Fields& fields) {
        Expect(DocumentKind::kProduct, document_.get(), "");
        const std::string part_number = fields.Text();
        product_ = ProductNamed(part_number);
        if (!product_->instances.empty()) {
            throw Malformed{"product \"" + part_number + "\" is already there"};
        }
        if (document_->product == nullptr) {
            document_->product = product_;
        }
    }

    void ReadChild(Fields& fields) {
        Expect(DocumentKind::kProduct, product_.get(), "product");
        const auto child = ProductNamed(fields.Text());
        const auto most = static_cast<int>(kMostInstances - product_->instances.size());
        const int count = fields.Take("times") ? fields.Whole(1, most) : 1;
        auto number = std::count_if(product_->instances.begin(), product_->instances.end(),
                                    [&](const auto& each) { return each.reference == child; });
        for (int i = 0; i < count; ++i) {
            ++number;
            product_->instances.push_back(
                {child->part_number + "." + std::to_string(number), child});
        }
    }

    // How many levels stand under `product`; refuses cycles and what is too deep to walk.
    int Height(const Product& product, int depth) {
        constexpr int kBeingMeasured = -1;
        if (const auto known = heights_.find(&product); known != heights_.end()) {
            if (known->second == kBeingMeasured) {
                throw Malformed{"product \"" + product.part_number + "\" contains itself"};
            }
            return known->second;
        }
        heights_[&product] = kBeingMeasured;
        int height = 0;
        const Product* previous = nullptr;
        for (const auto& instance : product.instances) {
            if (instance.reference.get() != previous) {
                height = std::max(height, Height(*instance.reference, depth + 1) + 1);
                previous = instance.reference.get();
            }
        }
        if (height > kDeepestNesting || depth > kDeepestNesting) {
            throw Malformed{"product \"" + product.part_number + "\" is nested too deep"};
        }
        heights_[&product] = height;
        return height;
    }

    void ReadSheet(Fields& fields) {
        Expect(DocumentKind::kDrawing, document_.get(), "");
        FinishTable();
        auto sheet = std::make_shared<Sheet>();
        sheet->name = fields.Text();
        if (SheetNamed(*document_, sheet->name) != nullptr) {
            throw Malformed{"sheet \"" + sheet->name + "\" is already there"};
        }
        fields.TakeOptions({{"detail", [&] { sheet->detail = true; }},
                            {"active", [&] { document_->active_sheet = sheet; }},
                            {"selected", [&] { document_->selection.push_back(sheet); }},
                            {"weight", [&] { sheet->line_width = fields.Whole(1, kThickestLine); }},
                            {"size", [&] {
                                 sheet->width = fields.Size();
                                 sheet->height = fields.Size();
                             }}});
        document_->sheets.push_back(sheet);
        sheet_ = std::move(sheet);
        view_ = nullptr;
    }

    void ReadView(Fields& fields) {
        Expect(DocumentKind::kDrawing, sheet_.get(), "sheet");
        FinishTable();
        auto view = std::make_shared<View>();
        view->name = fields.Text();
        fields.TakeOptions({{"active", [&] { sheet_->active_view = view; }},
                            {"selected", [&] { document_->selection.push_back(view); }},
                            {"weight", [&] { view->line_width = fields.Whole(1, kThickestLine); }},
                            {"at", [&] { ReadPlace(fields, *view); }},
                            {"frame", [&] {
                                 view->frame_width = fields.Size();
                                 view->frame_height = fields.Size();
                             }}});
        sheet_->views.push_back(view);
        view_ = std::move(view);
    }

    template <typename Placed>
    static void ReadPlace(Fields& fields, Placed& placed) {
        placed.x = fields.Number();
        placed.y = fields.Number();
    }

    static void ReadFont(Fields& fields, Text& text) {
        text.font_size = fields.Size();
        text.font_name = fields.Text();
        if (text.font_name.empty()) {
            throw Malformed{"the font has no name"};
        }
    }

    void ReadLineDrawn(Fields& fields) {
        Expect(DocumentKind::kDrawing, view_.get(), "view");
        Line line{};
        for (double* number : {&line.from_x, &line.from_y, &line.to_x, &line.to_y}) {
            *number = fields.Number();
        }
        view_->lines.push_back(line);
    }

    void ReadCircle(Fields& fields) {
        Expect(DocumentKind::kDrawing, view_.get(), "view");
        Circle circle{};
        circle.x = fields.Number();
        circle.y = fields.Number();
        circle.radius = fields.Size();
        view_->circles.push_back(circle);
    }

    void ReadText(Fields& fields) {
        Expect(DocumentKind::kDrawing, view_.get(), "view");
        FinishTable();
        auto text = std::make_shared<Text>();
        text->text = fields.Text();
        fields.TakeOptions({{"at", [&] { ReadPlace(fields, *text); }},
                            {"font", [&] { ReadFont(fields, *text); }},
                            {"weight", [&] { text->line_width = fields.Whole(1, kThickestLine); }},
                            {"selected", [&] { document_->selection.push_back(text); }}});
        view_->texts.push_back(std::move(text));
    }

    void ReadTable(Fields& fields) {
        Expect(DocumentKind::kDrawing, view_.get(), "view");
        FinishTable();
        auto table = std::make_shared<Table>();
        fields.TakeOptions(
            {{"at", [&] { ReadPlace(fields, *table); }},
             {"anchor", [&] { table->anchor_point = fields.Whole(0, kLastAnchorPoint); }},
             {"weight", [&] { table->line_width = fields.Whole(1, kThickestLine); }},
             {"selected", [&] { document_->selection.push_back(table); }},
             {"columns", [&] {
                  while (!fields.AtEnd()) {
                      table->column_sizes.push_back(fields.Size());
                  }
              }}});
        if (table->column_sizes.empty()) {
            throw Malformed{"a table needs columns"};
        }
        view_->tables.push_back(table);
        table_ = std::move(table);
    }

    void ReadRow(Fields& fields) {
        Expect(DocumentKind::kDrawing, table_.get(), "table");
        const std::size_t columns = table_->column_sizes.size();
        if (table_->cells.size() + columns > kMostCells) {
            throw Malformed{"the table is too large"};
        }
        const double height = fields.Size();
        Text font;
        if (fields.Take("font")) {
            ReadFont(fields, font);
        }
        std::vector<std::shared_ptr<Text>> cells(columns);
        for (auto& cell : cells) {
            cell = std::make_shared<Text>(font);
        }
        if (fields.Take("cells")) {
            for (std::size_t i = 0; !fields.AtEnd(); ++i) {
                if (i == columns) {
                    throw Malformed{"there are more cells than columns"};
                }
                cells[i]->text = fields.Text();
            }
        }
        table_->row_sizes.push_back(height);
        table_->cells.insert(table_->cells.end(), cells.begin(), cells.end());
    }

    void ReadCell(Fields& fields) {
        Expect(DocumentKind::kDrawing, table_.get(), "table");
        if (table_->row_sizes.empty()) {
            throw Malformed{"there is no row above"};
        }
        const std::size_t columns = table_->column_sizes.size();
        const auto column = static_cast<std::size_t>(fields.Whole(1, static_cast<int>(columns)));
        Text& cell = *table_->Cell(table_->row_sizes.size() - 1, column - 1);
        fields.TakeOptions({{"font", [&] { ReadFont(fields, cell); }},
                            {"weight", [&] { cell.line_width = fields.Whole(1, kThickestLine); }}});
    }

    void FinishTable() {
        if (table_ != nullptr && table_->row_sizes.empty()) {
            throw Malformed{"the table above has no rows"};
        }
        table_ = nullptr;
    }

    std::shared_ptr<Document> document_ = std::make_shared<Document>();
    std::map<std::string, std::shared_ptr<Product>> products_;
    std::map<const Product*, int> heights_;
    bool finished_ = false;
    std::shared_ptr<Product> product_; // the ones that the next lines belong to
    std::shared_ptr<Sheet> sheet_;
    std::shared_ptr<View> view_;
    std::shared_ptr<Table> table_;
};

} // namespace

std::shared_ptr<Document> ReadDocument(std::string_view file_name, std::string_view content) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (content.starts_with(kByteOrderMark)) {
        content.remove_prefix(kByteOrderMark.size());
    }
    Reader reader;
    std::size_t line_number = 0;
    try {
        for (std::string_view line : text::Split(content, "\n")) {
            ++line_number;
            if (line.ends_with('\r')) {
                line.remove_suffix(1);
            }
            Fields fields(Words(line));
            if (!fields.AtEnd()) {
                reader.ReadLine(fields);
            }
        }
        return reader.Finish();
    } catch (const Malformed& malformed) {
        throw std::runtime_error(std::string(file_name) + ":" + std::to_string(line_number) + ": " +
                                 malformed.reason);
    }
}

namespace {

std::string Font(const Text& text) {
    return " font " + text::PlainDecimal(text.font_size) + " " + Quoted(text.font_name);
}

bool SameFont(const Text& left, const Text& right) {
    return left.font_size == right.font_size && left.font_name == right.font_name;
}

std::string At(double x, double y) {
    return " at " + text::PlainDecimal(x) + " " + text::PlainDecimal(y);
}

std::string Weight(const Element& element) {
    return element.line_width != 1 ? " weight " + std::to_string(element.line_width)
                                   : std::string();
}

class DrawingWriter {
  public:
    // Of a table either what it holds or what it displays.
    using TableOf = const Table& (*)(const Table& table);

    DrawingWriter(const Document& drawing, TableOf table_of)
        : drawing_(drawing), table_of_(table_of) {}

    std::string Write() {
        written_ = std::string(ClassName(drawing_.kind)) + " " + Quoted(drawing_.name) + "\n";
        for (const auto& sheet : drawing_.sheets) {
            written_ += "sheet " + Quoted(sheet->name) + " size " +
                        text::PlainDecimal(sheet->width) + " " + text::PlainDecimal(sheet->height) +
                        (sheet->detail ? " detail" : "") +
                        (sheet == drawing_.active_sheet ? " active" : "") + Weight(*sheet) +
                        Selected(sheet) + "\n";
            for (const auto& view : sheet->views) {
                WriteView(view, view == sheet->active_view);
            }
        }
        return std::move(written_);
    }

  private:
    void WriteView(const std::shared_ptr<View>& view, bool active) {
        written_ += "  view " + Quoted(view->name) + At(view->x, view->y);
        if (view->frame_width > 0) {
            written_ += " frame " + text::PlainDecimal(view->frame_width) + " " +
                        text::PlainDecimal(view->frame_height);
        }
        written_ += (active ? " active" : "") + Weight(*view) + Selected(view) + "\n";
        for (const Line& line : view->lines) {
            written_ += "    line";
            for (const double number : {line.from_x, line.from_y, line.to_x, line.to_y}) {
                written_ += " " + text::PlainDecimal(number);
            }
            written_ += "\n";
        }
        for (const Circle& circle : view->circles) {
            written_ += "    circle";
            for (const double number : {circle.x, circle.y, circle.radius}) {
                written_ += " " + text::PlainDecimal(number);
            }
            written_ += "\n";
        }
        for (const auto& table : view->tables) {
            WriteTable(table);
        }
        for (const auto& text : view->texts) {
            written_ += "    text " + Quoted(text->text) + At(text->x, text->y) + Font(*text) +
                        Weight(*text) + Selected(text) + "\n";
        }
    }

    // Its line thickness is no part of what is computed.
    void WriteTable(const std::shared_ptr<Table>& element) {
        const Table& table = table_of_(*element);
        written_ += "    table" + At(table.x, table.y) + " anchor " +
                    std::to_string(table.anchor_point) + Weight(*element) + Selected(element) +
                    " columns";
        for (const double size : table.column_sizes) {
            written_ += " " + text::PlainDecimal(size);
        }
        written_ += "\n";
        for (std::size_t row = 0; row < table.row_sizes.size(); ++row) {
            const Text& first = *table.Cell(row, 0);
            written_ +=
                "      row " + text::PlainDecimal(table.row_sizes[row]) + Font(first) + " cells";
            std::string exceptions;
            for (std::size_t column = 0; column < table.column_sizes.size(); ++column) {
                const Text& cell = *table.Cell(row, column);
                written_ += " " + Quoted(cell.text);
                if (!SameFont(cell, first) || cell.line_width != 1) {
                    exceptions += "        cell " + std::to_string(column + 1) + Font(cell) +
                                  Weight(cell) + "\n";
                }
            }
            written_ += "\n" + exceptions;
        }
    }

    [[nodiscard]] std::string Selected(const std::shared_ptr<Element>& element) const {
        return IsSelected(drawing_, element) ? " selected" : "";
    }

    const Document& drawing_;
    TableOf table_of_;
    std::string written_;
};

} // namespace

std::string WriteDrawing(const Document& drawing) {
    return DrawingWriter(drawing, [](const Table& table) -> const Table& { return table; }).Write();
}

std::string WriteDisplay(const Document& drawing) {
    return DrawingWriter(drawing, Displayed).Write();
}

} // namespace simulator
