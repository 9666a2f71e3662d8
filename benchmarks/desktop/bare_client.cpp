// BareClient.exe JOB RESULT-FILE [INPUT-FILE]
//
// What an action of the program costs at least: a plain client in C++ that makes the same calls of
// the active CATIA session in the same order, looks every member up once, and does nothing else. It
// shares no code with the program; Measure compares the calls of both.
//
//     walk                the active product: "Načtení stromu"
//     table  ROWS         a new table of a parts list: "Vytvorení"; a row is seven texts
//     read                the selected table: "Tabulka"
//     load                the drawing's sheets: "Načtení Sheetu"
//     rename ROWS         sheets; a row is the name and the new one: "Přejmenuj Sheet v Catii"
//     order  ROWS         sheets, and loads them again; a row is a name: "Přesun Sheetu v Catii"
//
// The texts of a row are separated by tabs. Leaves in the result file, in microseconds: from the
// first call to the last release; in Invoke; in GetIDsOfNames; in Release; and the number of
// releases.
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include <ole2.h>

namespace {

constexpr LCID kUnitedStates = 0x0409;

LONG64 Now() {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}

// Where the time went.
struct Spent {
    LONG64 invoking = 0;
    LONG64 looking_up = 0;
    LONG64 releasing = 0;
    LONG64 releases = 0;
};
Spent spent;

void Check(HRESULT result, const char* what) {
    if (FAILED(result)) {
        throw std::runtime_error(std::string(what) + " fails: " + std::to_string(result));
    }
}

// A member of one class of objects, looked up at its first call.
struct Member {
    const wchar_t* name;
    DISPID id = DISPID_UNKNOWN;
};

struct Members {
    struct {
        Member active_document{L"ActiveDocument"};
    } application;
    struct {
        Member name{L"Name"};
        Member selection{L"Selection"};
        Member product{L"Product"};
        Member sheets{L"Sheets"};
        Member drawing_root{L"DrawingRoot"};
    } document;
    struct {
        Member part_number{L"PartNumber"};
        Member products{L"Products"};
    } product;
    struct {
        Member count{L"Count"};
        Member item{L"Item"};
    } products;
    struct {
        Member count2{L"Count2"};
        Member item2{L"Item2"};
        Member add{L"Add"};
        Member vis_properties{L"VisProperties"};
    } selection;
    struct {
        Member type{L"Type"};
        Member value{L"Value"};
    } selected;
    struct {
        Member get_real_width{L"GetRealWidth"};
        Member set_real_width{L"SetRealWidth"};
    } properties;
    struct {
        Member count{L"Count"};
        Member item{L"Item"};
        Member active_sheet{L"ActiveSheet"};
    } sheets;
    struct {
        Member views{L"Views"};
        Member name{L"Name"};
        Member is_detail{L"IsDetail"};
    } sheet;
    struct {
        Member active_view{L"ActiveView"};
    } views;
    struct {
        Member tables{L"Tables"};
    } view;
    struct {
        Member add{L"Add"};
    } tables;
    struct {
        Member number_of_rows{L"NumberOfRows"};
        Member number_of_columns{L"NumberOfColumns"};
        Member x{L"X"};
        Member y{L"Y"};
        Member anchor_point{L"AnchorPoint"};
        Member get_row_size{L"GetRowSize"};
        Member get_column_size{L"GetColumnSize"};
        Member get_cell_string{L"GetCellString"};
        Member get_cell_object{L"GetCellObject"};
        Member set_row_size{L"SetrowSize"};
        Member set_column_size{L"SetColumnSize"};
        Member set_cell_string{L"SetCellString"};
    } table;
    struct {
        Member text{L"Text"};
        Member get_font_name{L"GetFontName"};
        Member get_font_size{L"GetFontSize"};
        Member set_font_size{L"SetFontSize"};
    } text;
    struct {
        Member reorder_sheets{L"reorder_Sheets"};
    } root;
};

// An object of the session; goes with its last reference.
class Object {
  public:
    Object() = default;
    explicit Object(IDispatch* dispatch) : dispatch_(dispatch) {}
    Object(Object&& other) noexcept : dispatch_(std::exchange(other.dispatch_, nullptr)) {}
    Object& operator=(Object&& other) noexcept {
        std::swap(dispatch_, other.dispatch_);
        return *this;
    }
    ~Object() {
        if (dispatch_ != nullptr) {
            const LONG64 start = Now();
            dispatch_->Release();
            spent.releasing += Now() - start;
            ++spent.releases;
        }
    }

    [[nodiscard]] IDispatch* Get() const { return dispatch_; }

  private:
    IDispatch* dispatch_ = nullptr;
};

// What a call takes or gives.
class Variant : public VARIANT {
  public:
    Variant() { VariantInit(this); }
    Variant(int value) : Variant() { Set(VT_I4), lVal = value; }
    Variant(double value) : Variant() { Set(VT_R8), dblVal = value; }
    Variant(const std::wstring& value) : Variant() {
        Set(VT_BSTR), bstrVal = SysAllocStringLen(value.data(), static_cast<UINT>(value.size()));
    }
    Variant(const wchar_t* value) : Variant(std::wstring(value)) {}
    Variant(const Object& object) : Variant() {
        Set(VT_DISPATCH), pdispVal = object.Get();
        pdispVal->AddRef();
    }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }

    void Set(int type) { vt = static_cast<VARTYPE>(type); }

    // Each takes the value out.
    Object TakeObject() {
        if (vt != VT_DISPATCH) {
            throw std::runtime_error("an object was expected");
        }
        vt = VT_EMPTY;
        return Object(pdispVal);
    }
    [[nodiscard]] std::wstring Text() const {
        if (vt != VT_BSTR) {
            throw std::runtime_error("a text was expected");
        }
        return {bstrVal, SysStringLen(bstrVal)};
    }
    [[nodiscard]] int Number() const {
        if (vt != VT_I4 && vt != VT_I2) {
            throw std::runtime_error("a number was expected");
        }
        return vt == VT_I4 ? lVal : iVal;
    }
};

DISPID IdOf(const Object& object, Member& member) {
    if (member.id == DISPID_UNKNOWN) {
        auto* name = const_cast<wchar_t*>(member.name); // only read
        const LONG64 start = Now();
        Check(object.Get()->GetIDsOfNames(IID_NULL, &name, 1, kUnitedStates, &member.id),
              "GetIDsOfNames");
        spent.looking_up += Now() - start;
    }
    return member.id;
}

void Invoke(const Object& object, Member& member, WORD flags, DISPPARAMS parameters,
            VARIANT* result) {
    const DISPID id = IdOf(object, member);
    EXCEPINFO exception{};
    const LONG64 start = Now();
    const HRESULT done = object.Get()->Invoke(id, IID_NULL, kUnitedStates, flags, &parameters,
                                              result, &exception, nullptr);
    spent.invoking += Now() - start;
    Check(done, "Invoke");
}

// Calls a method or reads a property. The arguments stand as they are in memory.
template <typename... Arguments>
void Call(VARIANT& result, const Object& object, Member& member, const Arguments&... arguments) {
    constexpr UINT kCount = sizeof...(Arguments);
    std::array<VARIANT, kCount + 1> reversed{arguments...};
    std::reverse(reversed.begin(), reversed.begin() + kCount);
    Invoke(object, member, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
           {reversed.data(), nullptr, kCount, 0}, &result);
}

template <typename... Arguments>
Object ObjectOf(const Object& object, Member& member, const Arguments&... arguments) {
    Variant result;
    Call(result, object, member, Variant(arguments)...);
    return result.TakeObject();
}

template <typename... Arguments>
std::wstring TextOf(const Object& object, Member& member, const Arguments&... arguments) {
    Variant result;
    Call(result, object, member, Variant(arguments)...);
    return result.Text();
}

template <typename... Arguments>
int NumberOf(const Object& object, Member& member, const Arguments&... arguments) {
    Variant result;
    Call(result, object, member, Variant(arguments)...);
    return result.Number();
}

// Of a result that nothing is done with.
template <typename... Arguments>
void Do(const Object& object, Member& member, const Arguments&... arguments) {
    Variant result;
    Call(result, object, member, Variant(arguments)...);
}

void Put(const Object& object, Member& member, const std::wstring& text) {
    Variant value(text);
    DISPID named = DISPID_PROPERTYPUT;
    Invoke(object, member, DISPATCH_PROPERTYPUT, {&value, &named, 1, 1}, nullptr);
}

Object RunningApplication() {
    CLSID class_id{};
    IUnknown* running = nullptr;
    IDispatch* application = nullptr;
    Check(CLSIDFromProgID(L"CATIA.Application", &class_id), "CLSIDFromProgID");
    Check(GetActiveObject(class_id, nullptr, &running), "GetActiveObject");
    const HRESULT result =
        running->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&application));
    running->Release();
    Check(result, "QueryInterface");
    return Object(application);
}

using Row = std::vector<std::wstring>;
using Rows = std::vector<Row>;

// Walk ------------------------------------------------------------------------------------------

struct Children {
    Object products;
    int count;
};

Children ChildrenOf(Members& members, const Object& product) {
    Object products = ObjectOf(product, members.product.products);
    const int count = NumberOf(products, members.products.count);
    return {std::move(products), count};
}

struct Structure {
    std::wstring text;
    int assemblies = 0;
};

void WalkChildren(Members& members, Structure& structure, int depth, const Children& children,
                  const std::wstring& path) {
    const int ordinal = ++structure.assemblies;
    for (int i = 1; i <= children.count; ++i) {
        const Object child = ObjectOf(children.products, members.products.item, i);
        const std::wstring number = TextOf(child, members.product.part_number);
        const Children grandchildren = ChildrenOf(members, child);
        structure.text.append(L"\r\n").append(std::to_wstring(depth)).append(L"\t");
        structure.text.append(number).append(L"\t").append(path);
        if (grandchildren.count > 0) {
            std::wstring below = path;
            below.append(L"|||||").append(number).append(L"*");
            below.append(std::to_wstring(ordinal)).append(L"*");
            structure.text += L'\t' + below;
            WalkChildren(members, structure, depth + 1, grandchildren, below);
        }
    }
}

void Walk(const Rows& /*rows*/) {
    Members members;
    const Object application = RunningApplication();
    const Object document = ObjectOf(application, members.application.active_document);
    TextOf(document, members.document.name);
    const Object top = ObjectOf(document, members.document.product);
    Structure structure;
    const std::wstring number = TextOf(top, members.product.part_number);
    structure.text = L"\r\n0\t" + number;
    WalkChildren(members, structure, 1, ChildrenOf(members, top), number);
}

// Tables ------------------------------------------------------------------------------------------

constexpr int kColumns = 7;

struct Drawing {
    Object application;
    Object selection;
    Object view;
};

Drawing OpenDrawing(Members& members) {
    Object application = RunningApplication();
    const Object document = ObjectOf(application, members.application.active_document);
    TextOf(document, members.document.name);
    Object selection = ObjectOf(document, members.document.selection);
    const Object sheets = ObjectOf(document, members.document.sheets);
    const Object sheet = ObjectOf(sheets, members.sheets.active_sheet);
    const Object views = ObjectOf(sheet, members.sheet.views);
    return {std::move(application), std::move(selection),
            ObjectOf(views, members.views.active_view)};
}

// By the configuration that the program has at first.
void CreateTable(const Rows& rows) {
    const std::array widths{L"13.88", L"43.67", L"15.76", L"37.51", L"34.61", L"31.53", L"14.68"};
    const std::array headings{L"Pozice",   L"nazev",    L"Kusu", L"Ciste rozmery",
                              L"Material", L"Poznamka", L"List"};
    constexpr std::array kFields{1, 0, 2, 5, 4, 6, 3}; // of a row, by the table's columns
    constexpr int kPositionColumn = 1;
    constexpr int kFreeRows = 5;

    Members members;
    const Drawing drawing = OpenDrawing(members);
    const Object tables = ObjectOf(drawing.view, members.view.tables);
    const int count = static_cast<int>(rows.size()) + 1 + kFreeRows;
    const Object table =
        ObjectOf(tables, members.tables.add, 100.0, 100.0, count, kColumns, L"6.8", 20);
    Do(table, members.table.set_row_size, 1, L"4.9");
    for (int column = 1; column <= kColumns; ++column) {
        Do(table, members.table.set_column_size, column,
           widths.at(static_cast<std::size_t>(column - 1)));
    }
    for (int row = 1; row <= count; ++row) {
        for (int column = 1; column <= kColumns; ++column) {
            const Object cell = ObjectOf(table, members.table.get_cell_object, row, column);
            Do(cell, members.text.set_font_size, 0, 0, row == 1 ? 2.5 : 3.0);
        }
    }
    for (int column = 1; column <= kColumns; ++column) {
        Do(table, members.table.set_cell_string, 1, column,
           headings.at(static_cast<std::size_t>(column - 1)));
    }
    for (int row = count; row >= kFreeRows + 2; --row) {
        const Row& part = rows.at(static_cast<std::size_t>(count - row));
        for (int column = 1; column <= kColumns; ++column) {
            const std::wstring& text =
                part.at(static_cast<std::size_t>(kFields.at(static_cast<std::size_t>(column - 1))));
            if (column == kPositionColumn) {
                Do(table, members.table.set_cell_string, row, column, std::stod(text));
            } else {
                Do(table, members.table.set_cell_string, row, column, text);
            }
        }
    }
    const Object selection =
        ObjectOf(ObjectOf(drawing.application, members.application.active_document),
                 members.document.selection);
    Do(selection, members.selection.add, table);
    Do(ObjectOf(selection, members.selection.vis_properties), members.properties.set_real_width,
       2.0, 1);
}

std::wstring CellText(Members& members, const Object& table, int row, int column) {
    return TextOf(ObjectOf(table, members.table.get_cell_object, row, column), members.text.text);
}

void ReadLineWidth(Members& members, const Object& selection) {
    const Object properties = ObjectOf(selection, members.selection.vis_properties);
    LONG width = 0;
    VARIANT reference{};
    reference.vt = VT_I4 | VT_BYREF;
    reference.plVal = &width;
    Variant result;
    Call(result, properties, members.properties.get_real_width, reference);
}

void ReadLayout(Members& members, const Object& table, int& columns, int& rows) {
    const Object cell = ObjectOf(table, members.table.get_cell_object, 1, 1);
    Do(cell, members.text.get_font_name, 0, 0);
    Do(cell, members.text.get_font_size, 0, 0);
    TextOf(cell, members.text.text);
    columns = NumberOf(table, members.table.number_of_columns);
    rows = NumberOf(table, members.table.number_of_rows);
    for (int column = 1; column <= columns; ++column) {
        Do(table, members.table.get_column_size, column);
    }
    Do(table, members.table.get_row_size, 1);
    Do(table, members.table.get_row_size, 2);
    for (int column = 1; column <= columns; ++column) {
        TextOf(table, members.table.get_cell_string, 1, column);
    }
    Do(table, members.table.x);
    Do(table, members.table.y);
    Do(table, members.table.anchor_point);
}

void ReadTable(const Rows& /*rows*/) {
    Members members;
    const Drawing drawing = OpenDrawing(members);
    NumberOf(drawing.selection, members.selection.count2);
    ReadLineWidth(members, drawing.selection);
    Object table;
    {
        const Object first = ObjectOf(drawing.selection, members.selection.item2, 1);
        TextOf(first, members.selected.type);
        table = ObjectOf(first, members.selected.value);
    }
    int columns = 0;
    int rows = 0;
    ReadLayout(members, table, columns, rows);
    Rows read;
    for (int row = rows; row >= 1; --row) {
        Row texts{CellText(members, table, row, 1)};
        if (texts[0].empty()) {
            continue;
        }
        texts.push_back(CellText(members, table, row, kColumns));
        if (texts[1] == L"List") {
            continue;
        }
        for (int column = 2; column < kColumns; ++column) {
            texts.push_back(CellText(members, table, row, column));
        }
        read.push_back(std::move(texts));
    }
}

// Sheets ------------------------------------------------------------------------------------------

Object OpenSheets(Members& members) {
    const Object application = RunningApplication();
    const Object document = ObjectOf(application, members.application.active_document);
    TextOf(document, members.document.name);
    ObjectOf(document, members.document.selection);
    Object sheets = ObjectOf(document, members.document.sheets);
    ObjectOf(sheets, members.sheets.active_sheet);
    return sheets;
}

void LoadSheets(const Rows& /*rows*/) {
    Members members;
    const Object sheets = OpenSheets(members);
    const int count = NumberOf(sheets, members.sheets.count);
    std::vector<std::pair<std::wstring, bool>> read;
    for (int i = 1; i <= count; ++i) {
        const Object sheet = ObjectOf(sheets, members.sheets.item, i);
        std::wstring name = TextOf(sheet, members.sheet.name);
        Variant detail;
        Call(detail, sheet, members.sheet.is_detail);
        read.emplace_back(std::move(name), detail.vt == VT_I4 && detail.lVal == 1);
    }
}

void RenameSheets(const Rows& rows) {
    Members members;
    const Object sheets = OpenSheets(members);
    for (const Row& row : rows) {
        Put(ObjectOf(sheets, members.sheets.item, row.at(0)), members.sheet.name, row.at(1));
    }
}

void OrderSheets(const Rows& rows) {
    Members members;
    const Object application = RunningApplication();
    const Object document = ObjectOf(application, members.application.active_document);
    TextOf(document, members.document.name);
    const Object sheets = ObjectOf(document, members.document.sheets);
    const Object root = ObjectOf(document, members.document.drawing_root);
    std::vector<Object> order;
    for (const Row& row : rows) {
        order.push_back(ObjectOf(sheets, members.sheets.item, row.at(0)));
    }
    Variant array;
    array.Set(VT_ARRAY | VT_VARIANT);
    array.parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(order.size()));
    for (LONG i = 0; i < static_cast<LONG>(order.size()); ++i) {
        Variant sheet(order[static_cast<std::size_t>(i)]);
        Check(SafeArrayPutElement(array.parray, &i, &sheet), "SafeArrayPutElement");
    }
    VARIANT reference{};
    reference.vt = VT_ARRAY | VT_VARIANT | VT_BYREF;
    reference.pparray = &array.parray;
    Variant result;
    Call(result, root, members.root.reorder_sheets, reference);
    LoadSheets({});
}

// -------------------------------------------------------------------------------------------------

struct Job {
    const char* name;
    void (*run)(const Rows& rows);
};
constexpr auto kJobs = std::to_array<Job>({{"walk", Walk},
                                           {"table", CreateTable},
                                           {"read", ReadTable},
                                           {"load", LoadSheets},
                                           {"rename", RenameSheets},
                                           {"order", OrderSheets}});

// Plain ASCII.
Rows ReadRows(const std::string& path) {
    Rows rows;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        Row& row = rows.emplace_back(1);
        for (const char character : line) {
            if (character == '\t') {
                row.emplace_back();
            } else if (character != '\r') {
                row.back() += static_cast<wchar_t>(character);
            }
        }
    }
    return rows;
}

long long Microseconds(LONG64 ticks) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return ticks * 1'000'000 / frequency.QuadPart;
}

void Run(const std::string& name, const std::string& result_path, const Rows& rows) {
    const Job* job = nullptr;
    for (const Job& known : kJobs) {
        if (name == known.name) {
            job = &known;
        }
    }
    if (job == nullptr) {
        throw std::runtime_error("there is no job " + name);
    }
    const LONG64 start = Now();
    job->run(rows);
    const LONG64 time = Now() - start;
    std::ofstream(result_path) << Microseconds(time) << ' ' << Microseconds(spent.invoking) << ' '
                               << Microseconds(spent.looking_up) << ' '
                               << Microseconds(spent.releasing) << ' ' << spent.releases << '\n';
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        return 2;
    }
    int result = 1;
    if (SUCCEEDED(CoInitialize(nullptr))) { // the apartment of a program with a window
        try {
            Run(argv[1], argv[2], argc > 3 ? ReadRows(argv[3]) : Rows());
            result = 0;
        } catch (const std::exception& failure) {
            std::ofstream(argv[2]) << failure.what() << '\n';
        }
        CoUninitialize();
    }
    return result;
}
