#include "catia/product.hpp"

namespace catia {

int Products::Count() const {
    return object_->get({"Products", "Count"}).AsInteger();
}

Product Products::Item(int index) const {
    return Product(object_->call({"Products", "Item"}, {index}).AsObject());
}

std::string Product::PartNumber() const {
    return object_->get({"Product", "PartNumber"}).AsText();
}

Products Product::Products() const {
    return catia::Products(object_->get({"Product", "Products"}).AsObject());
}

} // namespace catia
