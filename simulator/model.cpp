#include "model.hpp"

#include <algorithm>
#include <numeric>
#include <utility>

#include "text/text.hpp"

namespace simulator {

std::shared_ptr<Table> MakeTable(std::vector<double> row_sizes, std::vector<double> column_sizes) {
    auto table = std::make_shared<Table>();
    table->cells.resize(row_sizes.size() * column_sizes.size());
    for (auto& cell : table->cells) {
        cell = std::make_shared<Text>();
    }
    table->row_sizes = std::move(row_sizes);
    table->column_sizes = std::move(column_sizes);
    return table;
}

namespace {

// What a text takes, with some space around it.
double WidthOf(const Text& text) {
    constexpr double kOfACharacter = 0.7; // of the font's size
    std::size_t longest = 1;
    for (const std::string_view line : text::Split(text.text, "\n")) {
        longest = std::max(longest, line.size());
    }
    return text.font_size * (kOfACharacter * static_cast<double>(longest) + 1);
}

double HeightOf(const Text& text) {
    constexpr double kOfALine = 1.5; // of the font's size
    return text.font_size * kOfALine * static_cast<double>(text::Split(text.text, "\n").size());
}

} // namespace

namespace {

// Counts the rows from `first` on by `change` more.
std::set<std::size_t> Moved(const std::set<std::size_t>& rows, std::size_t first, int change) {
    std::set<std::size_t> moved;
    for (const std::size_t row : rows) {
        moved.insert(row < first ? row : row + static_cast<std::size_t>(change));
    }
    return moved;
}

} // namespace

void AddRow(Table& table, std::size_t row) {
    const auto place = static_cast<std::ptrdiff_t>(row);
    const std::size_t columns = table.column_sizes.size();
    table.row_sizes.insert(table.row_sizes.begin() + place, HeightOf(Text()));
    table.automatic_rows = Moved(table.automatic_rows, row, 1);
    std::vector<std::shared_ptr<Text>> cells(columns);
    for (auto& cell : cells) {
        cell = std::make_shared<Text>();
    }
    table.cells.insert(table.cells.begin() + place * static_cast<std::ptrdiff_t>(columns),
                       cells.begin(), cells.end());
    FitAutomaticSizes(table);
}

void RemoveRow(Table& table, std::size_t row) {
    const auto place = static_cast<std::ptrdiff_t>(row);
    const auto columns = static_cast<std::ptrdiff_t>(table.column_sizes.size());
    const auto first = table.cells.begin() + place * columns;
    for (auto cell = first; cell != first + columns; ++cell) {
        (*cell)->removed = true;
    }
    table.cells.erase(first, first + columns);
    table.row_sizes.erase(table.row_sizes.begin() + place);
    table.automatic_rows.erase(row);
    table.automatic_rows = Moved(table.automatic_rows, row, -1);
    FitAutomaticSizes(table);
}

void FitAutomaticSizes(Table& table) {
    for (const std::size_t row : table.automatic_rows) {
        table.row_sizes[row] = 0;
        for (std::size_t column = 0; column < table.column_sizes.size(); ++column) {
            table.row_sizes[row] =
                std::max(table.row_sizes[row], HeightOf(*table.Cell(row, column)));
        }
    }
    for (const std::size_t column : table.automatic_columns) {
        table.column_sizes[column] = 0;
        for (std::size_t row = 0; row < table.row_sizes.size(); ++row) {
            table.column_sizes[column] =
                std::max(table.column_sizes[column], WidthOf(*table.Cell(row, column)));
        }
    }
}

bool ComputesDisplay(const Table& table) {
    return table.computed_last == nullptr;
}

void SetComputesDisplay(Table& table, bool computes) {
    if (computes) {
        table.computed_last = nullptr;
    } else if (ComputesDisplay(table)) {
        auto copy = std::make_shared<Table>(table);
        for (auto& cell : copy->cells) {
            cell = std::make_shared<Text>(*cell);
        }
        table.computed_last = std::move(copy);
    }
}

const Table& Displayed(const Table& table) {
    return ComputesDisplay(table) ? table : *table.computed_last;
}

std::shared_ptr<Sheet> MakeSheet(std::string name) {
    auto sheet = std::make_shared<Sheet>();
    sheet->name = std::move(name);
    for (const char* view_name : {"Main View", "Background View"}) {
        auto view = std::make_shared<View>();
        view->name = view_name;
        sheet->views.push_back(std::move(view));
    }
    sheet->active_view = sheet->views.front();
    return sheet;
}

const char* ClassName(DocumentKind kind) {
    switch (kind) {
    case DocumentKind::kProduct:
        return "ProductDocument";
    case DocumentKind::kDrawing:
        return "DrawingDocument";
    case DocumentKind::kPart:
        break;
    }
    return "PartDocument";
}

std::shared_ptr<Sheet> SheetNamed(const Document& drawing, std::string_view name) {
    const auto found = std::find_if(drawing.sheets.begin(), drawing.sheets.end(),
                                    [&](const auto& sheet) { return sheet->name == name; });
    return found != drawing.sheets.end() ? *found : nullptr;
}

std::shared_ptr<View> ViewNamed(const Sheet& sheet, std::string_view name) {
    const auto found = std::find_if(sheet.views.begin(), sheet.views.end(),
                                    [&](const auto& view) { return view->name == name; });
    return found != sheet.views.end() ? *found : nullptr;
}

std::vector<std::shared_ptr<Product>> ProductsOf(const Document& document) {
    std::vector<std::shared_ptr<Product>> products;
    if (document.product != nullptr) {
        products.push_back(document.product);
    }
    for (std::size_t place = 0; place < products.size(); ++place) {
        const std::shared_ptr<Product> product = products[place]; // the vector may move
        for (const Product::Instance& instance : product->instances) {
            if (std::find(products.begin(), products.end(), instance.reference) == products.end()) {
                products.push_back(instance.reference);
            }
        }
    }
    return products;
}

bool IsSelected(const Document& document, const std::shared_ptr<Element>& element) {
    const auto& selection = document.selection;
    return std::find(selection.begin(), selection.end(), element) != selection.end();
}

Rectangle Place(const View& view, const Table& whole_table) {
    const Table& table = Displayed(whole_table);
    const double width = std::accumulate(table.column_sizes.begin(), table.column_sizes.end(), 0.0);
    const double height = std::accumulate(table.row_sizes.begin(), table.row_sizes.end(), 0.0);
    const int across = table.anchor_point / 3;
    const int down = table.anchor_point % 3;
    const double left = view.x + table.x - width * across / 2;
    const double top = view.y + table.y + height * down / 2;
    return {left, top - height, left + width, top};
}

} // namespace simulator
