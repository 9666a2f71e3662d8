// Tables and texts of a view. A table's cell is a text of its own.
#include <cmath>

#include "objects.hpp"
#include "session.hpp"

namespace simulator {

using automation::Array;
using automation::ObjectPtr;
using automation::Value;

namespace {

double Finite(double number) {
    if (!std::isfinite(number)) {
        throw Refusal();
    }
    return number;
}

double Positive(double number) {
    if (!(Finite(number) > 0)) {
        throw Refusal();
    }
    return number;
}

class TextObject : public SessionObject {
  public:
    // `table` is the one that has the text in a cell; null where none has.
    TextObject(LinkPtr link, DocumentPtr document, std::shared_ptr<Text> text,
               std::shared_ptr<Table> table)
        : SessionObject(std::move(link), std::move(document)), text_(std::move(text)),
          table_(std::move(table)) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "DrawingText",
            {Property<TextObject>(
                 "Text", Kind::kText,
                 [](TextObject& object) {
                     return object.link()->session->Answered(object.text_->text);
                 },
                 [](TextObject& object, const Value& value) {
                     object.text_->text = value.AsText();
                     object.Fit();
                 }),
             Function<TextObject>("GetFontName", {Kind::kLong, Kind::kLong},
                                  [](TextObject& object, const Array& arguments) {
                                      return object.Whole(arguments).font_name;
                                  }),
             Function<TextObject>("GetFontSize", {Kind::kLong, Kind::kLong},
                                  [](TextObject& object, const Array& arguments) {
                                      return object.link()->session->Answered(
                                          object.Whole(arguments).font_size);
                                  }),
             Sub<TextObject>("SetFontName", {Kind::kLong, Kind::kLong, Kind::kText},
                             [](TextObject& object, const Array& arguments) {
                                 if (arguments[2].AsText().empty()) {
                                     throw Refusal();
                                 }
                                 object.Whole(arguments).font_name = arguments[2].AsText();
                             }),
             Sub<TextObject>("SetFontSize", {Kind::kLong, Kind::kLong, Kind::kReal},
                             [](TextObject& object, const Array& arguments) {
                                 object.Whole(arguments).font_size =
                                     Positive(arguments[2].AsReal());
                                 object.Fit();
                             })}};
        return info;
    }

    [[nodiscard]] std::shared_ptr<Element> Selectable() const override { return text_; }
    [[nodiscard]] const Table* DisplayingTable() const override { return table_.get(); }
    [[nodiscard]] bool Gone() const override { return text_->removed || SessionObject::Gone(); }

  private:
    // The model has one font for a whole text: any part of it but the whole is refused.
    [[nodiscard]] Text& Whole(const Array& arguments) const {
        if (arguments[0].AsInteger() != 0 || arguments[1].AsInteger() != 0) {
            throw Refusal();
        }
        return *text_;
    }

    void Fit() const {
        if (table_ != nullptr) {
            FitAutomaticSizes(*table_);
        }
    }

    std::shared_ptr<Text> text_;
    std::shared_ptr<Table> table_;
};

class TableObject : public SessionObject {
  public:
    TableObject(LinkPtr link, DocumentPtr document, std::shared_ptr<Table> table)
        : SessionObject(std::move(link), std::move(document)), table_(std::move(table)) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "DrawingTable",
            {ReadOnly<TableObject>(
                 "NumberOfRows",
                 [](TableObject& object) { return Count(object.table_->row_sizes); }),
             ReadOnly<TableObject>(
                 "NumberOfColumns",
                 [](TableObject& object) { return Count(object.table_->column_sizes); }),
             Property<TableObject>(
                 "X", Kind::kReal,
                 [](TableObject& object) { return object.Answered(object.table_->x); },
                 [](TableObject& object, const Value& value) {
                     object.table_->x = Finite(value.AsReal());
                 }),
             Property<TableObject>(
                 "Y", Kind::kReal,
                 [](TableObject& object) { return object.Answered(object.table_->y); },
                 [](TableObject& object, const Value& value) {
                     object.table_->y = Finite(value.AsReal());
                 }),
             Property<TableObject>(
                 "AnchorPoint", Kind::kLong,
                 [](TableObject& object) { return std::int32_t{object.table_->anchor_point}; },
                 [](TableObject& object, const Value& value) {
                     if (value.AsInteger() < 0 || value.AsInteger() > kLastAnchorPoint) {
                         throw Refusal();
                     }
                     object.table_->anchor_point = value.AsInteger();
                 }),
             Property<TableObject>(
                 "ComputeMode", Kind::kLong,
                 [](TableObject& object) {
                     return ComputesDisplay(*object.table_) ? kComputeModeOn : kComputeModeOff;
                 },
                 [](TableObject& object, const Value& value) {
                     if (value.AsInteger() != kComputeModeOn &&
                         value.AsInteger() != kComputeModeOff) {
                         throw Refusal();
                     }
                     SetComputesDisplay(*object.table_, value.AsInteger() == kComputeModeOn);
                 }),
             Function<TableObject>("GetRowSize", {Kind::kLong},
                                   [](TableObject& object, const Array& arguments) {
                                       return object.Answered(
                                           Size(object.table_->row_sizes, arguments));
                                   }),
             Function<TableObject>("GetColumnSize", {Kind::kLong},
                                   [](TableObject& object, const Array& arguments) {
                                       return object.Answered(
                                           Size(object.table_->column_sizes, arguments));
                                   }),
             Sub<TableObject>("SetRowSize", {Kind::kLong, Kind::kReal},
                              [](TableObject& object, const Array& arguments) {
                                  object.SetSize(object.table_->row_sizes,
                                                 object.table_->automatic_rows, arguments);
                              }),
             Sub<TableObject>("SetColumnSize", {Kind::kLong, Kind::kReal},
                              [](TableObject& object, const Array& arguments) {
                                  object.SetSize(object.table_->column_sizes,
                                                 object.table_->automatic_columns, arguments);
                              }),
             Sub<TableObject>("AddRow", {Kind::kLong},
                              [](TableObject& object, const Array& arguments) {
                                  object.AddRow(arguments[0].AsInteger());
                              }),
             Sub<TableObject>("RemoveRow", {Kind::kLong},
                              [](TableObject& object, const Array& arguments) {
                                  object.RemoveRow(arguments[0].AsInteger());
                              }),
             Function<TableObject>("GetCellString", {Kind::kLong, Kind::kLong},
                                   [](TableObject& object, const Array& arguments) {
                                       return object.link()->session->Answered(
                                           object.Cell(arguments)->text);
                                   }),
             Sub<TableObject>("SetCellString", {Kind::kLong, Kind::kLong, Kind::kText},
                              [](TableObject& object, const Array& arguments) {
                                  object.Cell(arguments)->text = arguments[2].AsText();
                                  FitAutomaticSizes(*object.table_);
                              }),
             Function<TableObject>("GetCellObject", {Kind::kLong, Kind::kLong},
                                   [](TableObject& object, const Array& arguments) {
                                       return object.CellObject(arguments);
                                   })}};
        return info;
    }

    [[nodiscard]] std::shared_ptr<Element> Selectable() const override { return table_; }
    [[nodiscard]] const Table* DisplayingTable() const override { return table_.get(); }

  private:
    static constexpr std::int32_t kComputeModeOff = 0;
    static constexpr std::int32_t kComputeModeOn = 1;

    [[nodiscard]] ObjectPtr CellObject(const Array& arguments) const {
        return std::make_shared<TextObject>(link(), document(), Cell(arguments), table_);
    }

    static double Size(const std::vector<double>& sizes, const Array& arguments) {
        return sizes[PlaceOf(arguments[0].AsInteger(), sizes.size())];
    }

    [[nodiscard]] double Answered(double length) const { return link()->session->Answered(length); }

    void SetSize(std::vector<double>& sizes, std::set<std::size_t>& automatic,
                 const Array& arguments) const {
        const std::size_t place = PlaceOf(arguments[0].AsInteger(), sizes.size());
        const double size = arguments[1].AsReal();
        if (size == 0 && link()->session->manner.zero_is_automatic) {
            automatic.insert(place);
        } else {
            sizes[place] = Positive(size);
            automatic.erase(place);
        }
        FitAutomaticSizes(*table_);
    }

    // Before that row; 0 is after the last one.
    void AddRow(std::int32_t row) const {
        const std::size_t rows = table_->row_sizes.size();
        if ((rows + 1) * table_->column_sizes.size() > static_cast<std::size_t>(kMostCells)) {
            throw Refusal();
        }
        simulator::AddRow(*table_, row == 0 ? rows : PlaceOf(row, rows));
    }

    // A table keeps one row.
    void RemoveRow(std::int32_t row) const {
        const std::size_t rows = table_->row_sizes.size();
        const std::size_t place = PlaceOf(row, rows);
        if (rows == 1) {
            throw Refusal();
        }
        simulator::RemoveRow(*table_, place);
    }

    [[nodiscard]] const std::shared_ptr<Text>& Cell(const Array& arguments) const {
        return table_->Cell(PlaceOf(arguments[0].AsInteger(), table_->row_sizes.size()),
                            PlaceOf(arguments[1].AsInteger(), table_->column_sizes.size()));
    }

    std::shared_ptr<Table> table_;
};

class TablesObject : public SessionObject {
  public:
    TablesObject(LinkPtr link, DocumentPtr document, std::shared_ptr<View> view)
        : SessionObject(std::move(link), std::move(document)), view_(std::move(view)) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "DrawingTables",
            {ReadOnly<TablesObject>(
                 "Count", [](TablesObject& tables) { return Count(tables.view_->tables); }),
             Function<TablesObject>("Item", {Kind::kLong},
                                    [](TablesObject& tables, const Array& arguments) {
                                        const auto& all = tables.view_->tables;
                                        return tables.Object(
                                            all[PlaceOf(arguments[0].AsInteger(), all.size())]);
                                    }),
             Maker<TablesObject>(
                 "Add",
                 {Kind::kReal, Kind::kReal, Kind::kLong, Kind::kLong, Kind::kReal, Kind::kReal},
                 [](TablesObject& tables, const Array& arguments) {
                     return tables.Add(arguments);
                 })}};
        return info;
    }

  private:
    [[nodiscard]] ObjectPtr Object(const std::shared_ptr<Table>& table) const {
        return MakeTable(link(), document(), table);
    }

    [[nodiscard]] ObjectPtr Add(const Array& arguments) const {
        const std::int32_t rows = arguments[2].AsInteger();
        const std::int32_t columns = arguments[3].AsInteger();
        if (rows < 1 || columns < 1 || rows > kMostCells / columns) {
            throw Refusal();
        }
        auto table = simulator::MakeTable(
            std::vector(static_cast<std::size_t>(rows), Positive(arguments[4].AsReal())),
            std::vector(static_cast<std::size_t>(columns), Positive(arguments[5].AsReal())));
        table->x = Finite(arguments[0].AsReal());
        table->y = Finite(arguments[1].AsReal());
        view_->tables.push_back(table);
        return Object(table);
    }

    std::shared_ptr<View> view_;
};

class TextsObject : public SessionObject {
  public:
    TextsObject(LinkPtr link, DocumentPtr document, std::shared_ptr<View> view)
        : SessionObject(std::move(link), std::move(document)), view_(std::move(view)) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "DrawingTexts",
            {ReadOnly<TextsObject>("Count",
                                   [](TextsObject& texts) { return Count(texts.view_->texts); }),
             Function<TextsObject>("Item", {Kind::kLong},
                                   [](TextsObject& texts, const Array& arguments) {
                                       const auto& all = texts.view_->texts;
                                       return texts.Object(
                                           all[PlaceOf(arguments[0].AsInteger(), all.size())]);
                                   }),
             Maker<TextsObject>("Add", {Kind::kText, Kind::kReal, Kind::kReal},
                                [](TextsObject& texts, const Array& arguments) {
                                    auto text = std::make_shared<Text>();
                                    text->text = arguments[0].AsText();
                                    if (text->text.empty() &&
                                        texts.link()->session->manner.refuses_empty_texts) {
                                        throw Refusal();
                                    }
                                    text->x = Finite(arguments[1].AsReal());
                                    text->y = Finite(arguments[2].AsReal());
                                    texts.view_->texts.push_back(text);
                                    return texts.Object(text);
                                })}};
        return info;
    }

  private:
    [[nodiscard]] ObjectPtr Object(const std::shared_ptr<Text>& text) const {
        return MakeText(link(), document(), text);
    }

    std::shared_ptr<View> view_;
};

} // namespace

ObjectPtr MakeTables(LinkPtr link, DocumentPtr document, std::shared_ptr<View> view) {
    return std::make_shared<TablesObject>(std::move(link), std::move(document), std::move(view));
}

ObjectPtr MakeTexts(LinkPtr link, DocumentPtr document, std::shared_ptr<View> view) {
    return std::make_shared<TextsObject>(std::move(link), std::move(document), std::move(view));
}

ObjectPtr MakeTable(LinkPtr link, DocumentPtr document, std::shared_ptr<Table> table) {
    return std::make_shared<TableObject>(std::move(link), std::move(document), std::move(table));
}

ObjectPtr MakeText(LinkPtr link, DocumentPtr document, std::shared_ptr<Text> text) {
    return std::make_shared<TextObject>(std::move(link), std::move(document), std::move(text),
                                        nullptr);
}

} // namespace simulator
