// Sheets, their views, and the order of the sheets.
#include <algorithm>
#include <set>

#include "objects.hpp"
#include "session.hpp"

namespace simulator {

using automation::Array;
using automation::ObjectPtr;
using automation::Value;

namespace {

class ViewObject : public SessionObject {
  public:
    ViewObject(LinkPtr link, DocumentPtr document, std::shared_ptr<View> view)
        : SessionObject(std::move(link), std::move(document)), view_(std::move(view)) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "DrawingView",
            {ReadOnly<ViewObject>("Tables",
                                  [](ViewObject& object) {
                                      return MakeTables(object.link(), object.document(),
                                                        object.view_);
                                  }),
             ReadOnly<ViewObject>("Texts", [](ViewObject& object) {
                 return MakeTexts(object.link(), object.document(), object.view_);
             })}};
        return info;
    }

    [[nodiscard]] std::string Label() const override {
        return "DrawingView(\"" + view_->name + "\")";
    }
    [[nodiscard]] std::shared_ptr<Element> Selectable() const override { return view_; }

  private:
    std::shared_ptr<View> view_;
};

class ViewsObject : public SessionObject {
  public:
    ViewsObject(LinkPtr link, DocumentPtr document, std::shared_ptr<Sheet> sheet)
        : SessionObject(std::move(link), std::move(document)), sheet_(std::move(sheet)) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "DrawingViews",
            {ReadOnly<ViewsObject>("Count",
                                   [](ViewsObject& views) { return Count(views.sheet_->views); }),
             Function<ViewsObject>("Item", {Kind::kIndex},
                                   [](ViewsObject& views, const Array& arguments) {
                                       return views.Object(
                                           ItemOf(views.sheet_->views, arguments[0],
                                                  [](const auto& view) { return view->name; }));
                                   }),
             ReadOnly<ViewsObject>("ActiveView", [](ViewsObject& views) {
                 return views.Object(views.sheet_->active_view);
             })}};
        return info;
    }

  private:
    [[nodiscard]] ObjectPtr Object(const std::shared_ptr<View>& view) const {
        return MakeView(link(), document(), view);
    }

    std::shared_ptr<Sheet> sheet_;
};

class SheetObject : public SessionObject {
  public:
    SheetObject(LinkPtr link, DocumentPtr document, std::shared_ptr<Sheet> sheet)
        : SessionObject(std::move(link), std::move(document)), sheet_(std::move(sheet)) {}

    [[nodiscard]] const ClassInfo& Class() const override;

    [[nodiscard]] std::string Label() const override {
        return "DrawingSheet(\"" + sheet_->name + "\")";
    }
    [[nodiscard]] std::shared_ptr<Element> Selectable() const override { return sheet_; }

  private:
    void Rename(const std::string& name) {
        if (name != sheet_->name && SheetNamed(*document(), name) != nullptr) {
            throw Refusal();
        }
        sheet_->name = name;
    }

    [[nodiscard]] Value IsDetail() const;

    std::shared_ptr<Sheet> sheet_;
};

class SheetsObject : public SessionObject {
  public:
    using SessionObject::SessionObject;

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "DrawingSheets",
            {ReadOnly<SheetsObject>(
                 "Count", [](SheetsObject& sheets) { return Count(sheets.document()->sheets); }),
             Function<SheetsObject>("Item", {Kind::kIndex},
                                    [](SheetsObject& sheets, const Array& arguments) {
                                        return sheets.Object(
                                            ItemOf(sheets.document()->sheets, arguments[0],
                                                   [](const auto& sheet) { return sheet->name; }));
                                    }),
             ReadOnly<SheetsObject>("ActiveSheet",
                                    [](SheetsObject& sheets) {
                                        return sheets.Object(sheets.document()->active_sheet);
                                    }),
             Maker<SheetsObject>("Add", {Kind::kText},
                                 [](SheetsObject& sheets, const Array& arguments) {
                                     return sheets.Add(arguments[0].AsText());
                                 })}};
        return info;
    }

  private:
    [[nodiscard]] ObjectPtr Object(const std::shared_ptr<Sheet>& sheet) const {
        return MakeSheet(link(), document(), sheet);
    }

    [[nodiscard]] ObjectPtr Add(const std::string& name) const {
        Document& drawing = *document();
        if (SheetNamed(drawing, name) != nullptr) {
            throw Refusal();
        }
        const auto place = link()->session->manner.new_sheets_before_details
                               ? std::find_if(drawing.sheets.begin(), drawing.sheets.end(),
                                              [](const auto& sheet) { return sheet->detail; })
                               : drawing.sheets.end();
        drawing.active_sheet = *drawing.sheets.insert(place, simulator::MakeSheet(name));
        return Object(drawing.active_sheet);
    }
};

class DrawingRootObject : public SessionObject {
  public:
    using SessionObject::SessionObject;

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "DrawingRoot",
            {Sub<DrawingRootObject>("reorder_Sheets", {Kind::kArrayReference},
                                    [](DrawingRootObject& root, const Array& arguments) {
                                        root.Reorder(std::get<Array>(arguments[0].storage()));
                                    })}};
        return info;
    }

  private:
    void Reorder(const Array& order) const {
        auto& sheets = document()->sheets;
        std::vector<std::shared_ptr<Sheet>> reordered;
        for (const Value& each : order) {
            const auto* object = std::get_if<ObjectPtr>(&each.storage());
            const auto* ours =
                object != nullptr ? dynamic_cast<SessionObject*>(object->get()) : nullptr;
            auto sheet =
                ours != nullptr ? std::dynamic_pointer_cast<Sheet>(ours->Selectable()) : nullptr;
            if (std::find(sheets.begin(), sheets.end(), sheet) == sheets.end()) {
                throw Refusal();
            }
            reordered.push_back(std::move(sheet));
        }
        const bool every_sheet_once =
            reordered.size() == sheets.size() &&
            std::set(reordered.begin(), reordered.end()).size() == sheets.size();
        const bool details_last = std::is_partitioned(
            reordered.begin(), reordered.end(), [](const auto& sheet) { return !sheet->detail; });
        if (!every_sheet_once || !details_last) {
            throw Refusal();
        }
        sheets = std::move(reordered);
    }
};

Value SheetObject::IsDetail() const {
    if (sheet_->detail && link()->session->detail_as_number) {
        return std::int32_t{1};
    }
    return sheet_->detail;
}

const ClassInfo& SheetObject::Class() const {
    static const ClassInfo info{
        "DrawingSheet",
        {Property<SheetObject>(
             "Name", Kind::kText, [](SheetObject& object) { return object.sheet_->name; },
             [](SheetObject& object, const Value& value) { object.Rename(value.AsText()); }),
         Function<SheetObject>("IsDetail", {},
                               [](SheetObject& object, const Array&) { return object.IsDetail(); }),
         ReadOnly<SheetObject>("Views", [](SheetObject& object) -> ObjectPtr {
             return std::make_shared<ViewsObject>(object.link(), object.document(), object.sheet_);
         })}};
    return info;
}

} // namespace

ObjectPtr MakeSheets(LinkPtr link, DocumentPtr document) {
    return std::make_shared<SheetsObject>(std::move(link), std::move(document));
}

ObjectPtr MakeDrawingRoot(LinkPtr link, DocumentPtr document) {
    return std::make_shared<DrawingRootObject>(std::move(link), std::move(document));
}

ObjectPtr MakeSheet(LinkPtr link, DocumentPtr document, std::shared_ptr<Sheet> sheet) {
    return std::make_shared<SheetObject>(std::move(link), std::move(document), std::move(sheet));
}

ObjectPtr MakeView(LinkPtr link, DocumentPtr document, std::shared_ptr<View> view) {
    return std::make_shared<ViewObject>(std::move(link), std::move(document), std::move(view));
}

} // namespace simulator
