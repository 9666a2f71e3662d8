// CATIA's drawings: sheets, views, tables, texts and the selection. Lengths are in millimetres,
// rows and columns count from 1. A length that the user wrote goes out as the text that it is;
// CATIA converts it.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "automation/object.hpp"

namespace catia {

class DrawingText {
  public:
    explicit DrawingText(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] std::string Text() const;
    // For `count` characters from `first`; 0, 0 is the whole text. Sizes are in millimetres.
    [[nodiscard]] std::string GetFontName(int first, int count) const;
    [[nodiscard]] double GetFontSize(int first, int count) const;
    void SetFontName(int first, int count, const std::string& name) const;
    void SetFontSize(int first, int count, double size) const;

  private:
    automation::ObjectPtr object_;
};

class DrawingTable {
  public:
    explicit DrawingTable(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] int NumberOfRows() const;
    [[nodiscard]] int NumberOfColumns() const;
    [[nodiscard]] double X() const;
    [[nodiscard]] double Y() const;
    [[nodiscard]] double GetRowSize(int row) const;
    [[nodiscard]] double GetColumnSize(int column) const;
    [[nodiscard]] std::string GetCellString(int row, int column) const;
    // The code of the point of the table that stands on its position, 0 to 8.
    [[nodiscard]] int AnchorPoint() const;
    void SetAnchorPoint(double code) const;
    // Whether CATIA computes the display of the table after each of its changes: 1 on, 0 off.
    void SetComputeMode(int mode) const;
    void SetrowSize(int row, const std::string& height) const;
    void SetrowSize(int row, double height) const;
    void SetColumnSize(int column, const std::string& width) const;
    void SetColumnSize(int column, double width) const;
    [[nodiscard]] DrawingText GetCellObject(int row, int column) const;
    void SetCellString(int row, int column, const automation::Value& text) const;
    // An empty row before that row; 0 is after the last one.
    void AddRow(int row) const;
    void RemoveRow(int row) const;

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

class DrawingTexts {
  public:
    explicit DrawingTexts(automation::ObjectPtr object) : object_(std::move(object)) {}

    // At x, y in the view's axes; a text that is given as a number becomes its digits.
    [[nodiscard]] DrawingText Add(const automation::Value& text, double x, double y) const;

  private:
    automation::ObjectPtr object_;
};

class DrawingView {
  public:
    explicit DrawingView(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] DrawingTables Tables() const;
    [[nodiscard]] DrawingTexts Texts() const;

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
    [[nodiscard]] std::string Name() const;
    void SetName(const std::string& name) const;
    // As it comes: a boolean or a number.
    [[nodiscard]] automation::Value IsDetail() const;

    [[nodiscard]] const automation::ObjectPtr& object() const { return object_; }

  private:
    automation::ObjectPtr object_;
};

class DrawingSheets {
  public:
    explicit DrawingSheets(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] int Count() const;
    // By its place, counted from 1, or by its name.
    [[nodiscard]] DrawingSheet Item(const automation::Value& index) const;
    [[nodiscard]] DrawingSheet ActiveSheet() const;
    // A new sheet at the end, which becomes the active one. `name` is a text or a number.
    [[nodiscard]] DrawingSheet Add(const automation::Value& name) const;

  private:
    automation::ObjectPtr object_;
};

class DrawingRoot {
  public:
    explicit DrawingRoot(automation::ObjectPtr object) : object_(std::move(object)) {}

    // Puts the sheets of the drawing, every one of them, into this order.
    void reorder_Sheets(const std::vector<DrawingSheet>& sheets) const;

  private:
    automation::ObjectPtr object_;
};

// The graphic properties of everything that is selected.
class VisPropertySet {
  public:
    explicit VisPropertySet(automation::ObjectPtr object) : object_(std::move(object)) {}

    // `width` is the index of a line thickness, 1 to 63; `inheritance` is 0 or 1.
    void SetRealWidth(double width, int inheritance) const;
    [[nodiscard]] int GetRealWidth() const;

  private:
    automation::ObjectPtr object_;
};

class SelectedElement {
  public:
    explicit SelectedElement(automation::ObjectPtr object) : object_(std::move(object)) {}

    // The class of the selected object: "DrawingTable".
    [[nodiscard]] std::string Type() const;
    [[nodiscard]] automation::ObjectPtr Value() const;

  private:
    automation::ObjectPtr object_;
};

class Selection {
  public:
    explicit Selection(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] int Count2() const;
    // `index` counts from 1.
    [[nodiscard]] SelectedElement Item2(int index) const;
    void Add(const DrawingTable& table) const;
    [[nodiscard]] VisPropertySet VisProperties() const;

  private:
    automation::ObjectPtr object_;
};

} // namespace catia
