#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>

#include "automation/run_time_error.hpp"
#include "simulator/model.hpp"
#include "simulator/session.hpp"
#include "tests/support/error_of.hpp"

namespace {

using automation::Array;
using automation::ObjectPtr;
using automation::RunTimeError;
using automation::Value;
using simulator::FaultKind;
using simulator::Session;

constexpr long kFailed = -2147467259;
constexpr long kRejected = -2147418111;
constexpr long kUnavailable = -2147023174;
constexpr long kDisconnected = -2147417848;

constexpr const char* kProduct = R"(ProductDocument Product1.CATProduct
product Product1
  child "Part 77"
  child Sub times 2
product Sub
  child "Part 46" times 3
)";

constexpr const char* kDrawing = R"(DrawingDocument Drawing1.CATDrawing
sheet "Sheet.1" active
  view "Main View" at 10 20 active
    table at 5 6 anchor 4 weight 3 selected columns 10 20.5
      row 7 font 2.5 "Arial" cells "a" "b"
        cell 2 font 5 "Courier New"
      row 8
    text "volný \"text\"\n2" at 1 2 font 4 "Arial"
sheet "Sheet.2"
sheet "Detail" detail
)";

Value Get(const ObjectPtr& object, const char* name) {
    return object->get({"", name});
}

ObjectPtr GetObject(const ObjectPtr& object, const char* name) {
    return Get(object, name).AsObject();
}

Value Call(const ObjectPtr& object, const char* name, const Array& arguments) {
    return object->call({"", name}, arguments);
}

void Put(const ObjectPtr& object, const char* name, const Value& value) {
    object->put({"", name}, value);
}

void ExpectError(long number, const std::string& description, const std::function<void()>& action) {
    try {
        action();
        ADD_FAILURE() << "no error " << number;
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, number);
        EXPECT_EQ(error.description, description);
    }
}

void ExpectNumber(long number, const std::function<void()>& action) {
    EXPECT_EQ(testing_support::ErrorOf(action), number);
}

TEST(SessionTitle, NamesTheActiveDocumentAndSaysThatItIsASimulation) {
    Session session;
    EXPECT_EQ(session.WindowTitle(), "CATIA V5 - simulace");
    session.LoadDocument("p.txt", kProduct);
    session.LoadDocument("d.txt", kDrawing);
    EXPECT_EQ(session.WindowTitle(), "CATIA V5 - [Drawing1.CATDrawing] - simulace");
    session.Activate("Product1.CATProduct");
    EXPECT_EQ(session.WindowTitle(), "CATIA V5 - [Product1.CATProduct] - simulace");
    session.CloseAllDocuments();
    EXPECT_EQ(session.WindowTitle(), "CATIA V5 - simulace");
}

int CountInstances(const ObjectPtr& product) {
    const ObjectPtr products = GetObject(product, "Products");
    int instances = 0;
    for (int i = 1, count = Get(products, "Count").AsInteger(); i <= count; ++i) {
        instances += 1 + CountInstances(Call(products, "Item", {i}).AsObject());
    }
    return instances;
}

class SimulatorTest : public testing::Test {
  protected:
    void Load(const char* content) { session_.LoadDocument("test.txt", content); }
    ObjectPtr ActiveDocument() { return GetObject(session_.Application(), "ActiveDocument"); }
    ObjectPtr Sheets() { return GetObject(ActiveDocument(), "Sheets"); }
    ObjectPtr View() {
        return GetObject(GetObject(GetObject(Sheets(), "ActiveSheet"), "Views"), "ActiveView");
    }
    ObjectPtr Table() { return Call(GetObject(View(), "Tables"), "Item", {1}).AsObject(); }

    Session session_;
};

TEST_F(SimulatorTest, ProductIsWalked) {
    Load(kProduct);
    const ObjectPtr document = ActiveDocument();
    EXPECT_EQ(Get(document, "name").AsText(), "Product1.CATProduct");
    const ObjectPtr top = GetObject(document, "Product");
    EXPECT_EQ(Get(top, "PartNumber").AsText(), "Product1");
    EXPECT_EQ(CountInstances(top), 9);
    const ObjectPtr products = GetObject(top, "Products");
    EXPECT_EQ(Get(Call(products, "Item", {"Sub.2"}).AsObject(), "PartNumber").AsText(), "Sub");
    const ObjectPtr part = Call(products, "Item", {1}).AsObject();
    EXPECT_EQ(Get(GetObject(part, "Products"), "Count").AsInteger(), 0);
}

TEST_F(SimulatorTest, InstancesShareThePartNumber) {
    Load(kProduct);
    const ObjectPtr products = GetObject(GetObject(ActiveDocument(), "Product"), "Products");
    Put(Call(products, "Item", {2}).AsObject(), "PartNumber", "Other");
    EXPECT_EQ(Get(Call(products, "Item", {3}).AsObject(), "PartNumber").AsText(), "Other");
}

TEST_F(SimulatorTest, ItemOutsideACollectionFails) {
    Load(kProduct);
    const ObjectPtr products = GetObject(GetObject(ActiveDocument(), "Product"), "Products");
    for (const Value& index : {Value(0), Value(4), Value(-1), Value("no such name")}) {
        ExpectError(kFailed, "The method Item failed", [&] { Call(products, "Item", {index}); });
    }
}

TEST_F(SimulatorTest, LargeProductLoads) {
    Load("ProductDocument Big.CATProduct\nproduct Top\nchild A times 100\nproduct A\n"
         "child B times 200\n");
    EXPECT_EQ(CountInstances(GetObject(ActiveDocument(), "Product")), 100 + 100 * 200);
}

TEST_F(SimulatorTest, NoDocumentIsOpen) {
    ExpectError(kFailed, "The method ActiveDocument failed", [&] { ActiveDocument(); });
    EXPECT_EQ(session_.ActiveDocumentName(), "");
    ExpectNumber(438, [&] { Get(session_.Application(), "Nonsense"); });
}

TEST_F(SimulatorTest, WrongArgumentsAreRefused) {
    Load(kDrawing);
    const ObjectPtr table = Table();
    ExpectNumber(450, [&] { Call(table, "SetRowSize", {1}); });
    ExpectNumber(450, [&] { Get(table, "GetRowSize"); });
    ExpectNumber(450, [&] { Call(table, "NumberOfRows", {1}); });
    ExpectError(13, "Type mismatch", [&] { Call(table, "SetRowSize", {1, "abc"}); });
    ExpectNumber(13, [&] { Call(table, "SetRowSize", {"", 1}); });
    ExpectNumber(6, [&] { Call(table, "SetRowSize", {3e10, 1}); });
    ExpectNumber(6, [&] { Put(table, "AnchorPoint", "99999999999"); });
    ExpectNumber(13, [&] { Put(table, "AnchorPoint", std::numeric_limits<double>::quiet_NaN()); });
    ExpectNumber(13, [&] { Call(table, "SetRowSize", {1, Array{}}); });
    ExpectNumber(438, [&] { Put(table, "NumberOfRows", 3); });
    ExpectNumber(438, [&] { Put(table, "GetRowSize", 3); });
}

TEST_F(SimulatorTest, ArgumentsAreConverted) {
    Load(kDrawing);
    const ObjectPtr table = Table();
    Call(table, "SetRowSize", {"2", " 6.8 "});
    EXPECT_EQ(Call(table, "GetRowSize", {2.4}).AsReal(), 6.8);
    Call(table, "SetRowSize", {1, "1,234.5"}); // the comma groups
    EXPECT_EQ(Call(table, "GetRowSize", {1}).AsReal(), 1234.5);
    Call(table, "SetCellString", {1, 1, 12.0});
    EXPECT_EQ(Call(table, "GetCellString", {1, 1}).AsText(), "12");
    Call(table, "SetCellString", {1, 1, 0.1});
    EXPECT_EQ(Call(table, "GetCellString", {1, 1}).AsText(), "0.1");
    Call(table, "SetCellString", {1, 1, std::make_shared<Value>(7)});
    EXPECT_EQ(Call(table, "GetCellString", {1, 1}).AsText(), "7");
    Call(table, "SetCellString", {1, 1, Value()});
    EXPECT_EQ(Call(table, "GetCellString", {1, 1}).AsText(), "");

    session_.decimal_separator = ',';
    Call(table, "SetRowSize", {1, "6,8"});
    EXPECT_EQ(Call(table, "GetRowSize", {1}).AsReal(), 6.8);
    ExpectNumber(13, [&] { Call(table, "SetRowSize", {1, "6.8"}); });
    Call(table, "SetCellString", {1, 1, 2.5});
    EXPECT_EQ(Call(table, "GetCellString", {1, 1}).AsText(), "2,5");
}

TEST_F(SimulatorTest, TableMembers) {
    Load(kDrawing);
    const ObjectPtr table = Table();
    EXPECT_EQ(Get(table, "NumberOfRows").AsInteger(), 2);
    EXPECT_EQ(Get(table, "NumberOfColumns").AsInteger(), 2);
    EXPECT_EQ(Get(table, "X").AsReal(), 5);
    EXPECT_EQ(Get(table, "Y").AsReal(), 6);
    Put(table, "X", 1.5);
    Put(table, "Y", "2");
    EXPECT_EQ(Get(table, "X").AsReal(), 1.5);
    EXPECT_EQ(Get(table, "Y").AsReal(), 2);
    EXPECT_EQ(Get(table, "AnchorPoint").AsInteger(), 4);
    Put(table, "AnchorPoint", 8.0);
    EXPECT_EQ(Get(table, "AnchorPoint").AsInteger(), 8);
    ExpectError(kFailed, "The method AnchorPoint failed", [&] { Put(table, "AnchorPoint", 9); });
    Call(table, "SetcolumnSize", {2, 33});
    EXPECT_EQ(Call(table, "GetColumnSize", {2}).AsReal(), 33);
    for (const Value& size :
         {Value(0), Value(-1.0), Value(std::numeric_limits<double>::quiet_NaN())}) {
        ExpectError(kFailed, "The method SetRowSize failed", [&] {
            Call(table, "SetrowSize", {1, size});
        });
        ExpectNumber(kFailed, [&] { Call(table, "SetColumnSize", {1, size}); });
    }
    ExpectNumber(kFailed, [&] { Call(table, "GetRowSize", {3}); });
    ExpectNumber(kFailed, [&] { Call(table, "GetCellString", {0, 1}); });
    ExpectNumber(kFailed, [&] { Call(table, "SetCellString", {1, 3, "x"}); });
    ExpectNumber(kFailed, [&] { Call(table, "GetCellObject", {3, 1}); });
}

TEST_F(SimulatorTest, RowsAreAddedBeforeARowOrAtTheEnd) {
    Load(kDrawing);
    const ObjectPtr table = Table();
    Call(table, "SetCellString", {2, 1, "second"});
    Call(table, "AddRow", {2});
    EXPECT_EQ(Get(table, "NumberOfRows").AsInteger(), 3);
    EXPECT_EQ(Call(table, "GetCellString", {1, 1}).AsText(), "a");
    EXPECT_EQ(Call(table, "GetCellString", {3, 1}).AsText(), "second");
    for (int column = 1; column <= 2; ++column) {
        EXPECT_EQ(Call(table, "GetCellString", {2, column}).AsText(), "");
        // Nothing of the rows beside it.
        const ObjectPtr cell = Call(table, "GetCellObject", {2, column}).AsObject();
        EXPECT_EQ(Call(cell, "GetFontSize", {0, 0}).AsReal(), 3.5);
        EXPECT_EQ(Call(cell, "GetFontName", {0, 0}).AsText(), "Monospac821 BT");
    }
    EXPECT_EQ(Call(table, "GetRowSize", {1}).AsReal(), 7);
    EXPECT_EQ(Call(table, "GetRowSize", {2}).AsReal(), 5.25);
    EXPECT_EQ(Call(table, "GetRowSize", {3}).AsReal(), 8);

    Call(table, "AddRow", {0});
    EXPECT_EQ(Get(table, "NumberOfRows").AsInteger(), 4);
    EXPECT_EQ(Call(table, "GetCellString", {3, 1}).AsText(), "second");
    EXPECT_EQ(Call(table, "GetRowSize", {4}).AsReal(), 5.25);
    Call(table, "AddRow", {1});
    EXPECT_EQ(Call(table, "GetCellString", {2, 1}).AsText(), "a");
    for (const int outside : {-1, 6, 7}) {
        ExpectError(kFailed, "The method AddRow failed", [&] { Call(table, "AddRow", {outside}); });
    }
    EXPECT_EQ(Get(table, "NumberOfRows").AsInteger(), 5);
    Load(session_.DrawingAsText().c_str());
}

TEST_F(SimulatorTest, RowsAreRemovedWithTheirTexts) {
    Load(kDrawing);
    const ObjectPtr table = Table();
    Call(table, "SetCellString", {2, 1, "second"});
    const ObjectPtr first = Call(table, "GetCellObject", {1, 2}).AsObject();
    const ObjectPtr second = Call(table, "GetCellObject", {2, 1}).AsObject();
    for (const int outside : {-1, 0, 3}) {
        ExpectError(kFailed, "The method RemoveRow failed",
                    [&] { Call(table, "RemoveRow", {outside}); });
    }
    Call(table, "RemoveRow", {1});
    EXPECT_EQ(Get(table, "NumberOfRows").AsInteger(), 1);
    EXPECT_EQ(Call(table, "GetCellString", {1, 1}).AsText(), "second");
    EXPECT_EQ(Call(table, "GetRowSize", {1}).AsReal(), 8);
    ExpectNumber(kDisconnected, [&] { Get(first, "Text"); });
    EXPECT_EQ(Get(second, "Text").AsText(), "second");
    ExpectNumber(kFailed, [&] { Call(table, "RemoveRow", {1}); });
    EXPECT_EQ(Get(table, "NumberOfRows").AsInteger(), 1) << "a table keeps one";
}

TEST_F(SimulatorTest, AutomaticSizesMoveWithTheirRows) {
    Load(kDrawing);
    const ObjectPtr table = Table();
    session_.manner.zero_is_automatic = true;
    Call(table, "SetRowSize", {2, 0});
    const double low = Call(table, "GetRowSize", {2}).AsReal();
    Call(table, "AddRow", {1});
    Call(table, "SetCellString", {3, 1, "1\n2\n3"});
    EXPECT_EQ(Call(table, "GetRowSize", {3}).AsReal(), 3 * low);
    EXPECT_EQ(Call(table, "GetRowSize", {2}).AsReal(), 7);
    Call(table, "RemoveRow", {2});
    Call(table, "SetCellString", {2, 1, "1"});
    EXPECT_EQ(Call(table, "GetRowSize", {2}).AsReal(), low);
    Call(table, "RemoveRow", {2});
    Call(table, "SetCellString", {1, 1, "1\n2\n3"});
    EXPECT_EQ(Call(table, "GetRowSize", {1}).AsReal(), 5.25) << "an added row is not automatic";
}

TEST_F(SimulatorTest, CellObjectWritesIntoTheCell) {
    Load(kDrawing);
    const ObjectPtr cell = Call(Table(), "GetCellObject", {1, 2}).AsObject();
    EXPECT_EQ(Call(cell, "GetFontSize", {0, 0}).AsReal(), 5);
    EXPECT_EQ(Call(cell, "GetFontName", {0, 0}).AsText(), "Courier New");
    Put(cell, "Text", "nový");
    Call(cell, "SetFontSize", {0, 0, 3});
    Call(cell, "SetFontName", {0, 0, "Arial"});
    EXPECT_EQ(Call(Table(), "GetCellString", {1, 2}).AsText(), "nový");
    EXPECT_EQ(Call(cell, "GetFontSize", {0, 0}).AsReal(), 3);
    EXPECT_NE(session_.DrawingAsText().find("row 7 font 2.5 \"Arial\" cells \"a\" \"nový\"\n"
                                            "        cell 2 font 3 \"Arial\"\n"),
              std::string::npos);
    ExpectNumber(kFailed, [&] { Call(cell, "SetFontSize", {0, 0, 0}); });
    ExpectNumber(kFailed, [&] { Call(cell, "SetFontName", {0, 0, ""}); });
    ExpectNumber(kFailed, [&] { Call(cell, "GetFontSize", {1, 99}); });
}

TEST_F(SimulatorTest, TablesAndTextsAreAdded) {
    Load(kDrawing);
    const ObjectPtr tables = GetObject(View(), "Tables");
    const ObjectPtr table = Call(tables, "Add", {100.0, 100.0, 9, 7, "6.8", 20}).AsObject();
    EXPECT_EQ(Get(tables, "Count").AsInteger(), 2);
    EXPECT_EQ(Get(table, "NumberOfRows").AsInteger(), 9);
    EXPECT_EQ(Call(table, "GetRowSize", {9}).AsReal(), 6.8);
    EXPECT_EQ(Call(table, "GetColumnSize", {7}).AsReal(), 20);
    for (const Array& wrong :
         {Array{0, 0, 0, 7, 1, 1}, Array{0, 0, 1, -1, 1, 1}, Array{0, 0, 1, 1, 0, 1},
          Array{0, 0, 1, 1, 1, -1}, Array{0, 0, 100000, 100000, 1, 1}}) {
        ExpectError(kFailed, "The method Add failed", [&] { Call(tables, "Add", wrong); });
    }
    const ObjectPtr texts = GetObject(View(), "Texts");
    EXPECT_EQ(Get(Call(texts, "Add", {"x", 1, 2}).AsObject(), "Text").AsText(), "x");
    EXPECT_EQ(Get(texts, "Count").AsInteger(), 2);
}

TEST_F(SimulatorTest, SheetsAreNamedAndAdded) {
    Load(kDrawing);
    const ObjectPtr sheets = Sheets();
    const ObjectPtr added = Call(sheets, "Add", {7.0}).AsObject();
    EXPECT_EQ(Get(added, "Name").AsText(), "7");
    EXPECT_EQ(Get(Call(sheets, "Item", {4}).AsObject(), "Name").AsText(), "7");
    EXPECT_EQ(Get(GetObject(sheets, "ActiveSheet"), "Name").AsText(), "7");
    ExpectError(kFailed, "The method Add failed", [&] { Call(sheets, "Add", {"Sheet.2"}); });
    ExpectError(kFailed, "The method Name failed", [&] { Put(added, "Name", "Sheet.2"); });
    Put(added, "Name", "7");
    Put(added, "Name", "Osm");
    EXPECT_EQ(Get(Call(sheets, "Item", {"Osm"}).AsObject(), "Name").AsText(), "Osm");
    EXPECT_EQ(Get(GetObject(added, "Views"), "Count").AsInteger(), 2);
}

TEST_F(SimulatorTest, DetailSheetsAnswerABooleanOrANumber) {
    Load(kDrawing);
    const ObjectPtr detail = Call(Sheets(), "Item", {3}).AsObject();
    EXPECT_EQ(Get(detail, "IsDetail"), Value(true));
    session_.detail_as_number = true;
    EXPECT_EQ(Get(detail, "IsDetail"), Value(1));
    EXPECT_EQ(Get(Call(Sheets(), "Item", {1}).AsObject(), "IsDetail"), Value(false));
}

TEST_F(SimulatorTest, SheetsAreReordered) {
    Load(kDrawing);
    const ObjectPtr root = GetObject(ActiveDocument(), "DrawingRoot");
    const auto order = [&](std::initializer_list<int> places) {
        Array sheets;
        for (const int place : places) {
            sheets.push_back(Call(Sheets(), "Item", {place}));
        }
        return std::make_shared<Value>(sheets);
    };
    Call(root, "reorder_sheets", {order({2, 1, 3})});
    EXPECT_EQ(Get(Call(Sheets(), "Item", {1}).AsObject(), "Name").AsText(), "Sheet.2");
    for (const auto& wrong : {order({1, 2}), order({1, 1, 3}), order({1, 2, 3, 3}), order({}),
                              order({3, 1, 2}), order({1, 3, 2})}) {
        ExpectError(kFailed, "The method reorder_Sheets failed",
                    [&] { Call(root, "reorder_Sheets", {wrong}); });
    }
    ExpectNumber(13, [&] { Call(root, "reorder_Sheets", {*order({1, 2, 3})}); }); // by value
    EXPECT_EQ(Get(Call(Sheets(), "Item", {1}).AsObject(), "Name").AsText(), "Sheet.2");
}

TEST_F(SimulatorTest, SelectionAndLineWidth) {
    Load(kDrawing);
    const ObjectPtr selection = GetObject(ActiveDocument(), "Selection");
    EXPECT_EQ(Get(selection, "Count2").AsInteger(), 1);
    const ObjectPtr selected = Call(selection, "Item2", {1}).AsObject();
    EXPECT_EQ(Get(selected, "Type").AsText(), "DrawingTable");
    EXPECT_EQ(Get(GetObject(selected, "Value"), "NumberOfRows").AsInteger(), 2);
    ExpectError(kFailed, "The method Item2 failed", [&] { Call(selection, "Item2", {2}); });

    const ObjectPtr properties = GetObject(selection, "VisProperties");
    const auto width = std::make_shared<Value>(0);
    EXPECT_EQ(Call(properties, "GetRealWidth", {width}), Value(0));
    EXPECT_EQ(*width, Value(3));
    ExpectNumber(13, [&] { Call(properties, "GetRealWidth", {0}); }); // not by reference

    Call(selection, "Add", {Call(GetObject(View(), "Texts"), "Item", {1})});
    Call(selection, "Add", {Table()}); // is there already
    EXPECT_EQ(Get(selection, "Count").AsInteger(), 2);
    EXPECT_EQ(Call(properties, "GetRealWidth", {width}), Value(1)); // 3 and 1
    Call(properties, "SetRealWidth", {2.0, 1});
    EXPECT_EQ(Call(properties, "GetRealWidth", {width}), Value(0));
    EXPECT_EQ(*width, Value(2));
    for (const Array& wrong : {Array{0, 1}, Array{64, 1}, Array{2, 2}, Array{2, -1}}) {
        ExpectError(kFailed, "The method SetRealWidth failed",
                    [&] { Call(properties, "SetRealWidth", wrong); });
    }
    Call(properties, "SetRealWidth", {63, 0});
    Get(selection, "Clear");
    EXPECT_EQ(Get(selection, "Count2").AsInteger(), 0);
    ExpectNumber(kFailed, [&] { Call(selection, "Add", {Value(ActiveDocument())}); });
    ExpectNumber(13, [&] { Call(selection, "Add", {Value(ObjectPtr())}); });
}

TEST_F(SimulatorTest, LogShowsTheKindsOfArguments) {
    Load(kDrawing);
    const ObjectPtr tables = GetObject(View(), "Tables");
    const ObjectPtr selection = GetObject(ActiveDocument(), "Selection");
    const ObjectPtr table = Table();
    session_.ClearLog();
    Call(tables, "add", {100.0, 100.5, 9, 7, "6.8", 20});
    Put(table, "anchorpoint", 2);
    Call(table, "SetCellString", {1, 1, "a\"b\n"});
    Get(selection, "Clear");
    Call(selection, "Add", {table});
    Call(GetObject(selection, "VisProperties"), "GetRealWidth", {std::make_shared<Value>(0)});
    ExpectNumber(438, [&] { Call(table, "Nonsense", {true, Value()}); });
    EXPECT_EQ(session_.Log(),
              (std::vector<std::string>{
                  "DrawingTables.Add(100.0, 100.5, 9, 7, \"6.8\", 20)",
                  "DrawingTable.AnchorPoint = 2", "DrawingTable.SetCellString(1, 1, \"a\\\"b\\n\")",
                  "Selection.Clear()", "Selection.Add(DrawingTable)", "Selection.VisProperties",
                  "VisPropertySet.GetRealWidth(ref 0)", "DrawingTable.Nonsense(True, Empty)"}));
}

TEST_F(SimulatorTest, RefusedFault) {
    Load(kProduct);
    const ObjectPtr document = ActiveDocument();
    session_.ClearLog();
    session_.Arm({2, FaultKind::kRefused, 1});
    Get(document, "Name");
    ExpectError(kFailed, "The method Name failed", [&] { Get(document, "name"); });
    EXPECT_EQ(Get(document, "Name").AsText(), "Product1.CATProduct");
    EXPECT_EQ(session_.Log().size(), 3U);
}

TEST_F(SimulatorTest, BusyFault) {
    Load(kProduct);
    const ObjectPtr document = ActiveDocument();
    session_.Arm({1, FaultKind::kBusy, 2});
    for (int i = 0; i < 2; ++i) {
        ExpectError(kRejected, "Call was rejected by callee.", [&] { Get(document, "Name"); });
    }
    EXPECT_EQ(Get(document, "Name").AsText(), "Product1.CATProduct");
}

TEST_F(SimulatorTest, VanishedFault) {
    Load(kProduct);
    const ObjectPtr document = ActiveDocument();
    session_.Arm({1, FaultKind::kVanished, 1});
    for (int i = 0; i < 2; ++i) {
        ExpectError(kUnavailable, "The RPC server is unavailable.", [&] { Get(document, "Name"); });
    }
    ExpectNumber(429, [&] { (void)session_.Application(); });
    session_.Arm({});
    ExpectNumber(kUnavailable, [&] { Get(document, "Name"); });
    EXPECT_EQ(Get(ActiveDocument(), "Name").AsText(), "Product1.CATProduct");
}

TEST_F(SimulatorTest, ObjectsOutliveWhatTheyShow) {
    ObjectPtr application;
    {
        Session session;
        session.LoadDocument("test.txt", kDrawing);
        application = session.Application();
        const ObjectPtr document = GetObject(application, "ActiveDocument");
        const ObjectPtr sheets = GetObject(document, "Sheets");
        session.CloseAllDocuments();
        ExpectNumber(kDisconnected, [&] { Get(sheets, "Count"); });
        session.LoadDocument("test.txt", kDrawing);
        session.before_call = [&](const std::string&) { session.CloseAllDocuments(); };
        const ObjectPtr active = session.Application();
        ExpectNumber(kFailed, [&] { Get(active, "ActiveDocument"); });
    }
    ExpectNumber(kUnavailable, [&] { Get(application, "ActiveDocument"); });
}

TEST_F(SimulatorTest, ChangesAreReported) {
    Load(kDrawing);
    const ObjectPtr table = Table();
    int changes = 0;
    session_.changed = [&] { ++changes; };
    Call(table, "GetRowSize", {1});
    EXPECT_EQ(changes, 0);
    Call(table, "SetRowSize", {1, 5});
    Put(table, "AnchorPoint", 0);
    EXPECT_EQ(changes, 2);
    ExpectNumber(kFailed, [&] { Call(table, "SetRowSize", {1, 0}); });
    EXPECT_EQ(changes, 2);
}

TEST_F(SimulatorTest, ConvertsInTheUsersLanguageWhateverTheCalls) {
    Load(kDrawing);
    const ObjectPtr table = Table();
    session_.manner.converts_in_users_language = true;
    ExpectNumber(13, [&] { Call(table, "SetRowSize", {1, "6.8"}); });
    Call(table, "SetRowSize", {1, "6,8"});
    EXPECT_EQ(Call(table, "GetRowSize", {1}).AsReal(), 6.8);
    Call(table, "SetRowSize", {1, 4.9});
    EXPECT_EQ(Call(table, "GetRowSize", {1}).AsReal(), 4.9);
}

TEST_F(SimulatorTest, LengthsComeThroughInches) {
    Load(kDrawing);
    const ObjectPtr table = Table();
    Call(table, "SetColumnSize", {1, 13.88});
    Put(table, "X", 14.68);
    session_.manner.lengths_through_inches = true;
    EXPECT_EQ(Call(table, "GetColumnSize", {1}).AsReal(), 13.879999999999999);
    EXPECT_EQ(Get(table, "X").AsReal(), 14.680000000000001);
    EXPECT_EQ(Call(table, "GetRowSize", {1}).AsReal(), 7);
}

TEST_F(SimulatorTest, ASizeOfZeroIsAutomatic) {
    Load(kDrawing);
    const ObjectPtr table = Table();
    session_.manner.zero_is_automatic = true;
    Call(table, "SetColumnSize", {1, "0"});
    Call(table, "SetRowSize", {1, 0});
    const auto width = [&] { return Call(table, "GetColumnSize", {1}).AsReal(); };
    const auto height = [&] { return Call(table, "GetRowSize", {1}).AsReal(); };
    const double narrow = width();
    const double low = height();
    EXPECT_GT(narrow, 0);
    EXPECT_GT(low, 0);
    Call(table, "SetCellString", {2, 1, "a much longer text"});
    EXPECT_GT(width(), 5 * narrow);
    EXPECT_EQ(height(), low) << "it stands in the other row";
    Call(Call(table, "GetCellObject", {1, 2}).AsObject(), "SetFontSize", {0, 0, 50});
    EXPECT_GT(height(), 50);
    Call(table, "SetRowSize", {1, 4});
    EXPECT_EQ(height(), 4);
    Call(table, "SetCellString", {1, 1, "1\n2\n3\n4"});
    EXPECT_EQ(height(), 4) << "it is fixed again";
    ExpectNumber(kFailed, [&] { Call(table, "SetRowSize", {1, -1}); });
    Load(session_.DrawingAsText().c_str());
}

TEST_F(SimulatorTest, NewSheetsStandBeforeTheDetails) {
    Load(kDrawing);
    session_.manner.new_sheets_before_details = true;
    Call(Sheets(), "Add", {"New"});
    EXPECT_EQ(Get(Call(Sheets(), "Item", {3}).AsObject(), "Name").AsText(), "New");
    EXPECT_EQ(Get(Call(Sheets(), "Item", {4}).AsObject(), "Name").AsText(), "Detail");
    EXPECT_EQ(Get(GetObject(Sheets(), "ActiveSheet"), "Name").AsText(), "New");
}

TEST_F(SimulatorTest, EmptyTextsAreRefused) {
    Load(kDrawing);
    const ObjectPtr texts = GetObject(View(), "Texts");
    Call(texts, "Add", {"", 1, 2});
    session_.manner.refuses_empty_texts = true;
    ExpectError(kFailed, "The method Add failed", [&] { Call(texts, "Add", {"", 1, 2}); });
    Call(texts, "Add", {"x", 1, 2});
    EXPECT_EQ(Get(texts, "Count").AsInteger(), 3);
}

TEST_F(SimulatorTest, LineBreaksComeAsPairs) {
    Load(kDrawing);
    session_.manner.line_breaks_are_pairs = true;
    for (const char* breaks : {"a\nb\n", "a\r\nb\r\n"}) {
        Call(Table(), "SetCellString", {1, 1, breaks});
        EXPECT_EQ(Call(Table(), "GetCellString", {1, 1}).AsText(), "a\r\nb\r\n");
    }
    EXPECT_EQ(Get(Call(GetObject(View(), "Texts"), "Item", {1}).AsObject(), "Text").AsText(),
              "volný \"text\"\r\n2");
    Call(Table(), "SetCellString", {1, 1, ""});
    EXPECT_EQ(Call(Table(), "GetCellString", {1, 1}).AsText(), "");
}

TEST_F(SimulatorTest, AReadOnlyDocumentRefusesEveryChange) {
    Load(kDrawing);
    const std::string before = session_.DrawingAsText();
    session_.manner.read_only = true;
    const ObjectPtr selection = GetObject(ActiveDocument(), "Selection");
    ExpectNumber(kFailed, [&] { Call(Table(), "SetCellString", {1, 1, "x"}); });
    ExpectNumber(kFailed, [&] { Put(Table(), "X", 1); });
    ExpectNumber(kFailed, [&] { Call(Sheets(), "Add", {"x"}); });
    ExpectNumber(kFailed, [&] {
        Call(GetObject(selection, "VisProperties"), "SetRealWidth", {2, 1});
    });
    EXPECT_EQ(session_.DrawingAsText(), before);
    Call(selection, "Clear", {});
    EXPECT_EQ(Get(selection, "Count2").AsInteger(), 0) << "the selection is no part of it";
}

TEST_F(SimulatorTest, AReleaseMayLackMembers) {
    Load(kDrawing);
    session_.manner.missing_members = {"Selection.Count2"};
    const ObjectPtr selection = GetObject(ActiveDocument(), "Selection");
    ExpectNumber(438, [&] { Get(selection, "count2"); });
    EXPECT_EQ(Get(selection, "Count").AsInteger(), 1);
}

TEST_F(SimulatorTest, ADocumentIsClosedAndTablesAreDeletedInACall) {
    Load(kProduct);
    Load(kDrawing);
    const ObjectPtr document = ActiveDocument();
    const ObjectPtr table = Table();
    const ObjectPtr cell = Call(table, "GetCellObject", {1, 1}).AsObject();
    session_.Arm({2, FaultKind::kDeleted});
    Get(table, "X");
    ExpectNumber(kDisconnected, [&] { Get(table, "X"); });
    ExpectNumber(kDisconnected, [&] { Get(cell, "Text"); });
    const ObjectPtr selection = GetObject(document, "Selection");
    EXPECT_EQ(Get(selection, "Count2").AsInteger(), 0);
    ExpectNumber(kFailed, [&] { Call(selection, "Add", {table}); });
    EXPECT_EQ(session_.DrawingAsText().find("table"), std::string::npos);

    session_.Arm({1, FaultKind::kClosed});
    ExpectNumber(kDisconnected, [&] { Get(document, "Name"); });
    EXPECT_EQ(session_.ActiveDocumentName(), "Product1.CATProduct");
    session_.Arm({1, FaultKind::kClosed});
    ExpectNumber(kFailed, [&] { ActiveDocument(); });
    session_.CloseActiveDocument();
    session_.DeleteTables();
    EXPECT_EQ(session_.ActiveDocumentName(), "");
}

TEST_F(SimulatorTest, SelectsATableAmongOthersAndActivatesAView) {
    Load(kDrawing);
    const ObjectPtr selection = GetObject(ActiveDocument(), "Selection");
    const auto types = [&] {
        std::string listed;
        for (int i = 1; i <= Get(selection, "Count2").AsInteger(); ++i) {
            listed += Get(Call(selection, "Item2", {i}).AsObject(), "Type").AsText() + " ";
        }
        return listed;
    };
    using Selecting = Session::Selecting;
    EXPECT_TRUE(session_.SelectTable("Sheet.1", "Main View", 1, Selecting::kBeforeItsView));
    EXPECT_EQ(types(), "DrawingTable DrawingView DrawingText ");
    EXPECT_TRUE(session_.SelectTable("Sheet.1", "Main View", 1, Selecting::kAfterItsView));
    EXPECT_EQ(types(), "DrawingView DrawingText DrawingTable ");
    EXPECT_TRUE(session_.SelectTable("Sheet.1", "Main View", 1));
    EXPECT_EQ(types(), "DrawingTable ");
    EXPECT_FALSE(session_.SelectTable("Sheet.1", "none", 1));

    EXPECT_TRUE(session_.ActivateSheet("Sheet.2"));
    EXPECT_TRUE(session_.ActivateView("Sheet.2", "Background View"));
    EXPECT_FALSE(session_.ActivateView("Sheet.2", "none"));
    EXPECT_FALSE(session_.ActivateView("none", "Main View"));
    Call(GetObject(View(), "Texts"), "Add", {"in the background", 1, 2});
    EXPECT_NE(session_.DrawingAsText().find("view \"Background View\" at 0 0 active\n"
                                            "    text \"in the background\""),
              std::string::npos);
}

TEST_F(SimulatorTest, NamesGrow) {
    Load(kProduct);
    session_.AddToNames("Ж");
    EXPECT_EQ(session_.ActiveDocumentName(), "Product1Ж.CATProduct");
    const ObjectPtr top = GetObject(ActiveDocument(), "Product");
    EXPECT_EQ(Get(top, "PartNumber").AsText(), "Product1Ж");
    const ObjectPtr sub = Call(GetObject(top, "Products"), "Item", {"Sub.2Ж"}).AsObject();
    EXPECT_EQ(Get(sub, "PartNumber").AsText(), "SubЖ") << "once, however often it is used";
    Load(kDrawing);
    session_.AddToNames("Ж");
    EXPECT_EQ(Get(Call(Sheets(), "Item", {"Sheet.2Ж"}).AsObject(), "Name").AsText(), "Sheet.2Ж");
}

TEST_F(SimulatorTest, PersonsActions) {
    Load(kProduct);
    Load(kDrawing);
    EXPECT_EQ(session_.DocumentNames(),
              (std::vector<std::string>{"Product1.CATProduct", "Drawing1.CATDrawing"}));
    EXPECT_TRUE(session_.ActivateSheet("Sheet.2"));
    EXPECT_FALSE(session_.ActivateSheet("none"));
    session_.ClearSelection();
    EXPECT_TRUE(session_.SelectTable("Sheet.1", "Main View", 1));
    EXPECT_FALSE(session_.SelectTable("Sheet.1", "Main View", 2));
    EXPECT_EQ(session_.ActiveDocument()->selection.size(), 1U);
    session_.Activate("Product1.CATProduct");
    EXPECT_EQ(session_.ActiveDocumentName(), "Product1.CATProduct");
    EXPECT_EQ(session_.DrawingAsText(), "");
    EXPECT_NE(session_.DrawingAsText("Drawing1.CATDrawing"), "");
    EXPECT_THROW(session_.Activate("none"), std::runtime_error);
}

TEST_F(SimulatorTest, DrawingTextReadsBack) {
    Load(kDrawing);
    const std::string text = session_.DrawingAsText();
    EXPECT_NE(text.find("table at 5 6 anchor 4 weight 3 selected columns 10 20.5\n"),
              std::string::npos);
    EXPECT_NE(text.find("text \"volný \\\"text\\\"\\n2\" at 1 2 font 4 \"Arial\"\n"),
              std::string::npos);
    Load(text.c_str());
    EXPECT_EQ(session_.DrawingAsText(), text);
}

TEST_F(SimulatorTest, MalformedFilesAreRefusedWithPlaceAndReason) {
    const auto expect = [&](const std::string& content, const std::string& message) {
        try {
            session_.LoadDocument("f.txt", content);
            ADD_FAILURE() << content;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), message);
        }
    };
    const std::string drawing = "DrawingDocument D\n";
    expect("", "f.txt:1: there is no document line");
    expect("Nonsense D", "f.txt:1: ProductDocument, DrawingDocument or PartDocument is expected "
                         "first");
    expect("ProductDocument P", "f.txt:1: a product document needs a product");
    expect(drawing, "f.txt:2: a drawing needs a sheet");
    expect(drawing + "child x", "f.txt:2: not in a DrawingDocument");
    expect(drawing + "view x", "f.txt:2: there is no sheet above");
    expect(drawing + "sheet \"x", "f.txt:2: a quoted text has no end");
    expect(drawing + "sheet x\nsheet x", "f.txt:3: sheet \"x\" is already there");
    expect(drawing + "sheet x big", "f.txt:2: \"big\" is not expected here");
    expect(drawing + "sheet x size 1 0", "f.txt:2: a size must be greater than 0");
    expect(drawing + "sheet x size 1 inf", "f.txt:2: \"inf\" is no number");
    expect(drawing + "sheet x\nview v\ntable columns 5\nview w",
           "f.txt:5: the table above has no rows");
    expect("ProductDocument P\nproduct a\nchild b\nproduct b\nchild a",
           "f.txt:5: product \"a\" contains itself");
    std::string deep = "ProductDocument P\n";
    for (int i = 0; i < 5000; ++i) {
        deep += "product p" + std::to_string(i) + "\nchild p" + std::to_string(i + 1) + "\n";
    }
    EXPECT_THROW(session_.LoadDocument("f.txt", deep), std::runtime_error);
    EXPECT_TRUE(session_.DocumentNames().empty());
}

TEST_F(SimulatorTest, SamplesLoad) {
    for (const char* name : {"gearbox-assembly.txt", "gearbox-drawing.txt"}) {
        std::ifstream file(std::string(SAMPLES_FOLDER) + "/" + name, std::ios::binary);
        session_.LoadDocument(name, std::string{std::istreambuf_iterator<char>(file), {}});
    }
    EXPECT_EQ(session_.ActiveDocumentName(), "Gearbox.CATDrawing");
    EXPECT_TRUE(session_.ActiveDocument()->selection.empty())
        << "a newcomer's first table would not be the selected one";
    session_.Activate("Gearbox.CATProduct");
    EXPECT_EQ(CountInstances(GetObject(ActiveDocument(), "Product")), 58);
}

} // namespace
