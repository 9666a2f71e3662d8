#include "catia/drawing.hpp"

namespace catia {

std::string DrawingText::Text() const {
    return object_->get({"DrawingText", "Text"}).AsText();
}

std::string DrawingText::GetFontName(int first, int count) const {
    return object_->call({"DrawingText", "GetFontName"}, {first, count}).AsText();
}

double DrawingText::GetFontSize(int first, int count) const {
    return object_->call({"DrawingText", "GetFontSize"}, {first, count}).AsReal();
}

void DrawingText::SetFontName(int first, int count, const std::string& name) const {
    object_->call({"DrawingText", "SetFontName"}, {first, count, name});
}

void DrawingText::SetFontSize(int first, int count, double size) const {
    object_->call({"DrawingText", "SetFontSize"}, {first, count, size});
}

int DrawingTable::NumberOfRows() const {
    return object_->get({"DrawingTable", "NumberOfRows"}).AsInteger();
}

int DrawingTable::NumberOfColumns() const {
    return object_->get({"DrawingTable", "NumberOfColumns"}).AsInteger();
}

double DrawingTable::X() const {
    return object_->get({"DrawingTable", "X"}).AsReal();
}

double DrawingTable::Y() const {
    return object_->get({"DrawingTable", "Y"}).AsReal();
}

double DrawingTable::GetRowSize(int row) const {
    return object_->call({"DrawingTable", "GetRowSize"}, {row}).AsReal();
}

double DrawingTable::GetColumnSize(int column) const {
    return object_->call({"DrawingTable", "GetColumnSize"}, {column}).AsReal();
}

std::string DrawingTable::GetCellString(int row, int column) const {
    return object_->call({"DrawingTable", "GetCellString"}, {row, column}).AsText();
}

int DrawingTable::AnchorPoint() const {
    return object_->get({"DrawingTable", "AnchorPoint"}).AsInteger();
}

void DrawingTable::SetAnchorPoint(double code) const {
    object_->put({"DrawingTable", "AnchorPoint"}, code);
}

void DrawingTable::SetComputeMode(int mode) const {
    object_->put({"DrawingTable", "ComputeMode"}, mode);
}

void DrawingTable::SetrowSize(int row, const std::string& height) const {
    object_->call({"DrawingTable", "SetrowSize"}, {row, height});
}

void DrawingTable::SetColumnSize(int column, const std::string& width) const {
    object_->call({"DrawingTable", "SetColumnSize"}, {column, width});
}

void DrawingTable::SetrowSize(int row, double height) const {
    object_->call({"DrawingTable", "SetrowSize"}, {row, height});
}

void DrawingTable::SetColumnSize(int column, double width) const {
    object_->call({"DrawingTable", "SetColumnSize"}, {column, width});
}

DrawingText DrawingTable::GetCellObject(int row, int column) const {
    return DrawingText(object_->call({"DrawingTable", "GetCellObject"}, {row, column}).AsObject());
}

void DrawingTable::SetCellString(int row, int column, const automation::Value& text) const {
    object_->call({"DrawingTable", "SetCellString"}, {row, column, text});
}

void DrawingTable::AddRow(int row) const {
    object_->call({"DrawingTable", "AddRow"}, {row});
}

void DrawingTable::RemoveRow(int row) const {
    object_->call({"DrawingTable", "RemoveRow"}, {row});
}

DrawingTable DrawingTables::Add(double x, double y, int rows, int columns,
                                const std::string& row_height, int column_width) const {
    return DrawingTable(
        object_->call({"DrawingTables", "Add"}, {x, y, rows, columns, row_height, column_width})
            .AsObject());
}

DrawingText DrawingTexts::Add(const automation::Value& text, double x, double y) const {
    return DrawingText(object_->call({"DrawingTexts", "Add"}, {text, x, y}).AsObject());
}

DrawingTexts DrawingView::Texts() const {
    return DrawingTexts(object_->get({"DrawingView", "Texts"}).AsObject());
}

DrawingTables DrawingView::Tables() const {
    return DrawingTables(object_->get({"DrawingView", "Tables"}).AsObject());
}

DrawingView DrawingViews::ActiveView() const {
    return DrawingView(object_->get({"DrawingViews", "ActiveView"}).AsObject());
}

DrawingViews DrawingSheet::Views() const {
    return DrawingViews(object_->get({"DrawingSheet", "Views"}).AsObject());
}

std::string DrawingSheet::Name() const {
    return object_->get({"DrawingSheet", "Name"}).AsText();
}

void DrawingSheet::SetName(const std::string& name) const {
    object_->put({"DrawingSheet", "Name"}, name);
}

automation::Value DrawingSheet::IsDetail() const {
    return object_->get({"DrawingSheet", "IsDetail"});
}

int DrawingSheets::Count() const {
    return object_->get({"DrawingSheets", "Count"}).AsInteger();
}

DrawingSheet DrawingSheets::Item(const automation::Value& index) const {
    return DrawingSheet(object_->call({"DrawingSheets", "Item"}, {index}).AsObject());
}

DrawingSheet DrawingSheets::Add(const automation::Value& name) const {
    return DrawingSheet(object_->call({"DrawingSheets", "Add"}, {name}).AsObject());
}

void DrawingRoot::reorder_Sheets(const std::vector<DrawingSheet>& sheets) const {
    automation::Array order;
    for (const DrawingSheet& sheet : sheets) {
        order.emplace_back(sheet.object());
    }
    const auto reference = std::make_shared<automation::Value>(std::move(order));
    object_->call({"DrawingRoot", "reorder_Sheets"}, {automation::Value(reference)});
}

DrawingSheet DrawingSheets::ActiveSheet() const {
    return DrawingSheet(object_->get({"DrawingSheets", "ActiveSheet"}).AsObject());
}

void VisPropertySet::SetRealWidth(double width, int inheritance) const {
    object_->call({"VisPropertySet", "SetRealWidth"}, {width, inheritance});
}

int VisPropertySet::GetRealWidth() const {
    // The width comes back through the argument; the result is a status.
    const auto width = std::make_shared<automation::Value>(0);
    object_->call({"VisPropertySet", "GetRealWidth"}, {automation::Value(width)});
    return width->AsInteger();
}

std::string SelectedElement::Type() const {
    return object_->get({"SelectedElement", "Type"}).AsText();
}

automation::ObjectPtr SelectedElement::Value() const {
    return object_->get({"SelectedElement", "Value"}).AsObject();
}

int Selection::Count2() const {
    return object_->get({"Selection", "Count2"}).AsInteger();
}

SelectedElement Selection::Item2(int index) const {
    return SelectedElement(object_->call({"Selection", "Item2"}, {index}).AsObject());
}

void Selection::Add(const DrawingTable& table) const {
    object_->call({"Selection", "Add"}, {table.object()});
}

VisPropertySet Selection::VisProperties() const {
    return VisPropertySet(object_->get({"Selection", "VisProperties"}).AsObject());
}

} // namespace catia
