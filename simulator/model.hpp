// The documents of the simulated session as plain data. The automation objects (objects.hpp) are
// thin handles on it, and the session's window draws from it. What a client may still hold when the
// session has let go of it is owned by shared pointers.
#pragma once

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

// A product as every instance of it shares it: a part, or an assembly of instances.
struct Product {
    struct Instance {
        std::string name; // the part number at loading, "." and the instance's number
        std::shared_ptr<Product> reference;
    };
    std::string part_number;
    std::vector<Instance> instances;
};

// What a drawing's selection can hold.
struct Element {
    virtual ~Element() = default;

    int line_width = 1; // index of a line type, 1 to 63
};

constexpr int kThickestLine = 63;

// Lengths are in millimetres, y upwards; positions are in the axes of what holds the element.
struct Text : Element {
    std::string text;
    double x = 0;
    double y = 0;
    std::string font_name = "Monospac821 BT";
    double font_size = 3.5;
    bool removed = false; // with its row; a client may still hold it
};

constexpr int kLastAnchorPoint = 8;
constexpr int kMostCells = 1'000'000; // of a table

struct Table : Element {
    double x = 0;
    double y = 0;
    int anchor_point = 0; // 0 to 2 left, 3 to 5 centre, 6 to 8 right; top, middle, bottom in each
    std::vector<double> row_sizes;
    std::vector<double> column_sizes;
    std::vector<std::shared_ptr<Text>> cells; // row by row
    // The rows and columns, counted from 0, whose sizes follow their largest cells.
    std::set<std::size_t> automatic_rows;
    std::set<std::size_t> automatic_columns;
    bool deleted = false; // a client may still hold it
    // What it displays where that is no longer computed: the table as it was then. Null while every
    // change shows at once.
    std::shared_ptr<const Table> computed_last;

    // `row` and `column` count from 0.
    [[nodiscard]] const std::shared_ptr<Text>& Cell(std::size_t row, std::size_t column) const {
        return cells[row * column_sizes.size() + column];
    }
};

// A table of empty cells.
std::shared_ptr<Table> MakeTable(std::vector<double> row_sizes, std::vector<double> column_sizes);

// A row of empty cells before that row, or after the last one where `row` is their number. It takes
// nothing from the rows beside it: its texts have the standard's font, and it is as high as one.
void AddRow(Table& table, std::size_t row);
// The row goes with its texts.
void RemoveRow(Table& table, std::size_t row);

// Gives the rows and columns whose sizes are automatic the sizes of their largest cells.
void FitAutomaticSizes(Table& table);

// Whether the display of `table` follows its changes. Switched on, all of it is computed at once.
bool ComputesDisplay(const Table& table);
void SetComputesDisplay(Table& table, bool computes);
// The table as it is displayed.
const Table& Displayed(const Table& table);

struct Line {
    double from_x, from_y, to_x, to_y;
};

struct Circle {
    double x, y, radius;
};

struct View : Element {
    std::string name;
    double x = 0; // of its axes, on the sheet
    double y = 0;
    double frame_width = 0; // of the frame around its axes; 0 where it has none
    double frame_height = 0;
    std::vector<Line> lines;
    std::vector<Circle> circles;
    std::vector<std::shared_ptr<Table>> tables;
    std::vector<std::shared_ptr<Text>> texts;
};

struct Sheet : Element {
    std::string name;
    bool detail = false;
    double width = 420;
    double height = 297;
    std::vector<std::shared_ptr<View>> views;
    std::shared_ptr<View> active_view;
};

// A sheet with the two views that every new one has.
std::shared_ptr<Sheet> MakeSheet(std::string name);

enum class DocumentKind { kProduct, kDrawing, kPart };

// The class name of documents of that kind, "DrawingDocument".
const char* ClassName(DocumentKind kind);

struct Document {
    DocumentKind kind = DocumentKind::kPart;
    std::string name;
    bool open = true;
    std::shared_ptr<Product> product;           // of a product document
    std::vector<std::shared_ptr<Sheet>> sheets; // of a drawing, at least one
    std::shared_ptr<Sheet> active_sheet;
    std::vector<std::shared_ptr<Element>> selection;
};

// The drawing's sheet, the sheet's view of that name; null where there is none.
std::shared_ptr<Sheet> SheetNamed(const Document& drawing, std::string_view name);
std::shared_ptr<View> ViewNamed(const Sheet& sheet, std::string_view name);
// Every product of a document once, its top product first.
std::vector<std::shared_ptr<Product>> ProductsOf(const Document& document);
bool IsSelected(const Document& document, const std::shared_ptr<Element>& element);

// A rectangle on the sheet, y upwards.
struct Rectangle {
    double left, bottom, right, top;
};

// Where `table` of `view` is displayed on the sheet.
Rectangle Place(const View& view, const Table& whole_table);

} // namespace simulator
