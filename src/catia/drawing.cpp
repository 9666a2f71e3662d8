#include "catia/drawing.hpp"

namespace catia {

void DrawingText::SetFontName(int first, int count, const std::string& name) const {
    object_->call({"DrawingText", "SetFontName"}, {first, count, name});
}

void DrawingText::SetFontSize(int first, int count, double size) const {
    object_->call({"DrawingText", "SetFontSize"}, {first, count, size});
}

void DrawingTable::SetAnchorPoint(double code) const {
    object_->put({"DrawingTable", "AnchorPoint"}, code);
}

void DrawingTable::SetrowSize(int row, const std::string& height) const {
    object_->call({"DrawingTable", "SetrowSize"}, {row, height});
}

void DrawingTable::SetColumnSize(int column, const std::string& width) const {
    object_->call({"DrawingTable", "SetColumnSize"}, {column, width});
}

DrawingText DrawingTable::GetCellObject(int row, int column) const {
    return DrawingText(object_->call({"DrawingTable", "GetCellObject"}, {row, column}).AsObject());
}

void DrawingTable::SetCellString(int row, int column, const automation::Value& text) const {
    object_->call({"DrawingTable", "SetCellString"}, {row, column, text});
}

DrawingTable DrawingTables::Add(double x, double y, int rows, int columns,
                                const std::string& row_height, int column_width) const {
    return DrawingTable(
        object_->call({"DrawingTables", "Add"}, {x, y, rows, columns, row_height, column_width})
            .AsObject());
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

DrawingSheet DrawingSheets::ActiveSheet() const {
    return DrawingSheet(object_->get({"DrawingSheets", "ActiveSheet"}).AsObject());
}

void VisPropertySet::SetRealWidth(double width, int inheritance) const {
    object_->call({"VisPropertySet", "SetRealWidth"}, {width, inheritance});
}

void Selection::Add(const DrawingTable& table) const {
    object_->call({"Selection", "Add"}, {table.object()});
}

VisPropertySet Selection::VisProperties() const {
    return VisPropertySet(object_->get({"Selection", "VisProperties"}).AsObject());
}

} // namespace catia
