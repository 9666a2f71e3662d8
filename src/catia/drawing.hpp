// CATIA's drawings: sheets, views, tables, texts and the selection. Lengths are in millimetres,
// rows and columns count from 1. A length that the user wrote goes out as the text that it is;
// CATIA converts it.
#pragma once

#include <string>
#include <utility>

#include "automation/object.hpp"

namespace catia {

class DrawingText {
  public:
    explicit DrawingText(automation::ObjectPtr object) : object_(std::move(object)) {}

    // For `count` characters from `first`; 0, 0 is the whole text.
    void SetFontName(int first, int count, const std::string& name) const;
    void SetFontSize(int first, int count, double size) const;

  private:
    automation::ObjectPtr object_;
};

class DrawingTable {
  public:
    explicit DrawingTable(automation::ObjectPtr object) : object_(std::move(object)) {}

    // The code of the point of the table that stands on its position, 0 to 8.
    void SetAnchorPoint(double code) const;
    void SetrowSize(int row, const std::string& height) const;
    void SetColumnSize(int column, const std::string& width) const;
    [[nodiscard]] DrawingText GetCellObject(int row, int column) const;
    void SetCellString(int row, int column, const automation::Value& text) const;

    [[nodiscard]] const automation::ObjectPtr& object() const { return object_; }

  private:
    automation::ObjectPtr object_;
};

class DrawingTables {
  public:
    explicit DrawingTables(automation::ObjectPtr object) : object_(std::move(object)) {}

    // At x, y in the view's axes.
    [[nodiscard]] DrawingTable Add(double x, double y, int rows, int columns,
                                   const std::string& row_height, int column_width) const;

  private:
    automation::ObjectPtr object_;
};

class DrawingView {
  public:
    explicit DrawingView(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] DrawingTables Tables() const;

  private:
    automation::ObjectPtr object_;
};

class DrawingViews {
  public:
    explicit DrawingViews(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] DrawingView ActiveView() const;

  private:
    automation::ObjectPtr object_;
};

class DrawingSheet {
  public:
    explicit DrawingSheet(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] DrawingViews Views() const;

  private:
    automation::ObjectPtr object_;
};

class DrawingSheets {
  public:
    explicit DrawingSheets(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] DrawingSheet ActiveSheet() const;

  private:
    automation::ObjectPtr object_;
};

// The graphic properties of everything that is selected.
class VisPropertySet {
  public:
    explicit VisPropertySet(automation::ObjectPtr object) : object_(std::move(object)) {}

    // `width` is the index of a line thickness, 1 to 63; `inheritance` is 0 or 1.
    void SetRealWidth(double width, int inheritance) const;

  private:
    automation::ObjectPtr object_;
};

class Selection {
  public:
    explicit Selection(automation::ObjectPtr object) : object_(std::move(object)) {}

    void Add(const DrawingTable& table) const;
    [[nodiscard]] VisPropertySet VisProperties() const;

  private:
    automation::ObjectPtr object_;
};

} // namespace catia
