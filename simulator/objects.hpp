// The classes of automation objects. Each is a handle on a piece of the model.
#pragma once

#include <cstdint>
#include <vector>

#include "session_object.hpp"

namespace simulator {

automation::ObjectPtr MakeApplication(LinkPtr link);
automation::ObjectPtr MakeDocument(LinkPtr link, DocumentPtr document);
automation::ObjectPtr MakeProduct(LinkPtr link, DocumentPtr document,
                                  std::shared_ptr<Product> product);
automation::ObjectPtr MakeSelection(LinkPtr link, DocumentPtr document);
automation::ObjectPtr MakeSheets(LinkPtr link, DocumentPtr document);
automation::ObjectPtr MakeDrawingRoot(LinkPtr link, DocumentPtr document);
automation::ObjectPtr MakeTables(LinkPtr link, DocumentPtr document, std::shared_ptr<View> view);
automation::ObjectPtr MakeTexts(LinkPtr link, DocumentPtr document, std::shared_ptr<View> view);
// The object of a drawing's sheet, view, table or text.
automation::ObjectPtr MakeSheet(LinkPtr link, DocumentPtr document, std::shared_ptr<Sheet> sheet);
automation::ObjectPtr MakeView(LinkPtr link, DocumentPtr document, std::shared_ptr<View> view);
automation::ObjectPtr MakeTable(LinkPtr link, DocumentPtr document, std::shared_ptr<Table> table);
automation::ObjectPtr MakeText(LinkPtr link, DocumentPtr document, std::shared_ptr<Text> text);
// The one of the four that `element` is.
automation::ObjectPtr MakeElement(LinkPtr link, DocumentPtr document,
                                  const std::shared_ptr<Element>& element);

// The size of a collection as its Count. Collections are kept small enough for a long.
template <typename Elements>
std::int32_t Count(const Elements& elements) {
    return static_cast<std::int32_t>(elements.size());
}

// The place, from 0, that `index` from 1 means among `size`. Raises Refusal outside.
inline std::size_t PlaceOf(std::int32_t index, std::size_t size) {
    if (index < 1 || static_cast<std::size_t>(index) > size) {
        throw Refusal();
    }
    return static_cast<std::size_t>(index) - 1;
}

// The element that Item means by `index`, a number from 1 or a name. `name_of` gives an element's
// name. Raises Refusal where there is none.
template <typename Elements, typename NameOf>
const typename Elements::value_type& ItemOf(const Elements& elements,
                                            const automation::Value& index, NameOf name_of) {
    if (!index.Is<std::string>()) {
        return elements[PlaceOf(index.AsInteger(), elements.size())];
    }
    for (const auto& element : elements) {
        if (name_of(element) == index.AsText()) {
            return element;
        }
    }
    throw Refusal();
}

} // namespace simulator
