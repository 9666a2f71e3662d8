// A document's selection and the visual properties that act on all of it.
#include <algorithm>

#include "objects.hpp"

namespace simulator {

using automation::Array;
using automation::ObjectPtr;
using automation::Reference;
using automation::Value;

namespace {

constexpr std::int32_t kPropertyDefined = 0;   // one value for the whole selection
constexpr std::int32_t kPropertyUndefined = 1; // several, or nothing is selected

class SelectedElementObject : public SessionObject {
  public:
    SelectedElementObject(LinkPtr link, DocumentPtr document, std::shared_ptr<Element> element)
        : SessionObject(std::move(link), std::move(document)), element_(std::move(element)) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "SelectedElement",
            {ReadOnly<SelectedElementObject>(
                 "Type",
                 [](SelectedElementObject& selected) {
                     const ObjectPtr object = selected.Object();
                     return static_cast<const SessionObject&>(*object).Class().name;
                 }),
             ReadOnly<SelectedElementObject>(
                 "Value", [](SelectedElementObject& selected) { return selected.Object(); })}};
        return info;
    }

  private:
    [[nodiscard]] ObjectPtr Object() const { return MakeElement(link(), document(), element_); }

    std::shared_ptr<Element> element_;
};

class VisPropertySetObject : public SessionObject {
  public:
    using SessionObject::SessionObject;

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "VisPropertySet",
            {Sub<VisPropertySetObject>("SetRealWidth", {Kind::kLong, Kind::kLong},
                                       [](VisPropertySetObject& set, const Array& arguments) {
                                           set.SetRealWidth(arguments[0].AsInteger(),
                                                            arguments[1].AsInteger());
                                       }),
             Function<VisPropertySetObject>("GetRealWidth", {Kind::kLongReference},
                                            [](VisPropertySetObject& set, const Array& arguments) {
                                                return set.GetRealWidth(
                                                    *std::get<Reference>(arguments[0].storage()));
                                            })}};
        return info;
    }

  private:
    void SetRealWidth(std::int32_t width, std::int32_t inheritance) const {
        if (width < 1 || width > kThickestLine || inheritance < 0 || inheritance > 1) {
            throw Refusal();
        }
        for (const auto& element : document()->selection) {
            element->line_width = width;
        }
    }

    std::int32_t GetRealWidth(Value& width) const {
        const auto& selection = document()->selection;
        if (selection.empty()) {
            return kPropertyUndefined;
        }
        const std::int32_t first = selection.front()->line_width;
        if (std::any_of(selection.begin(), selection.end(),
                        [&](const auto& element) { return element->line_width != first; })) {
            return kPropertyUndefined;
        }
        width = first;
        return kPropertyDefined;
    }
};

class SelectionObject : public SessionObject {
  public:
    using SessionObject::SessionObject;

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "Selection",
            {CountNamed("Count2"), CountNamed("Count"), ItemNamed("Item2"), ItemNamed("Item"),
             Selecting("Add", {Kind::kObject},
                       [](SelectionObject& selection, const Array& arguments) {
                           selection.Add(arguments[0].AsObject());
                       }),
             Selecting("Clear", {},
                       [](SelectionObject& selection, const Array&) {
                           selection.document()->selection.clear();
                       }),
             ReadOnly<SelectionObject>("VisProperties",
                                       [](SelectionObject& selection) -> ObjectPtr {
                                           return std::make_shared<VisPropertySetObject>(
                                               selection.link(), selection.document());
                                       })}};
        return info;
    }

  private:
    // The two names that superseded an older one each.
    static MemberInfo CountNamed(std::string name) {
        return ReadOnly<SelectionObject>(std::move(name), [](SelectionObject& selection) {
            return Count(selection.document()->selection);
        });
    }

    // What is selected is no part of the document's content.
    template <typename Call>
    static MemberInfo Selecting(std::string name, std::vector<Kind> parameters, Call call) {
        MemberInfo member = Sub<SelectionObject>(std::move(name), std::move(parameters), call);
        member.when_read_only = true;
        return member;
    }

    static MemberInfo ItemNamed(std::string name) {
        return Function<SelectionObject>(
            std::move(name), {Kind::kLong},
            [](SelectionObject& selection, const Array& arguments) -> ObjectPtr {
                const auto& all = selection.document()->selection;
                return std::make_shared<SelectedElementObject>(
                    selection.link(), selection.document(),
                    all[PlaceOf(arguments[0].AsInteger(), all.size())]);
            });
    }

    void Add(const ObjectPtr& object) const {
        const auto* ours = dynamic_cast<const SessionObject*>(object.get());
        const bool here = ours != nullptr && ours->document() == document();
        const auto element = here ? ours->Selectable() : nullptr;
        const auto table = std::dynamic_pointer_cast<Table>(element);
        if (element == nullptr || (table != nullptr && table->deleted)) {
            throw Refusal();
        }
        if (!IsSelected(*document(), element)) {
            document()->selection.push_back(element);
        }
    }
};

} // namespace

ObjectPtr MakeSelection(LinkPtr link, DocumentPtr document) {
    return std::make_shared<SelectionObject>(std::move(link), std::move(document));
}

ObjectPtr MakeElement(LinkPtr link, DocumentPtr document, const std::shared_ptr<Element>& element) {
    if (auto table = std::dynamic_pointer_cast<Table>(element)) {
        return MakeTable(std::move(link), std::move(document), std::move(table));
    }
    if (auto text = std::dynamic_pointer_cast<Text>(element)) {
        return MakeText(std::move(link), std::move(document), std::move(text));
    }
    if (auto view = std::dynamic_pointer_cast<View>(element)) {
        return MakeView(std::move(link), std::move(document), std::move(view));
    }
    return MakeSheet(std::move(link), std::move(document),
                     std::dynamic_pointer_cast<Sheet>(element));
}

} // namespace simulator
