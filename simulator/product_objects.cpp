// Products and their instances. Instances of one product share it, and with it the part number.
#include "objects.hpp"

namespace simulator {

namespace {

class ProductsObject : public SessionObject {
  public:
    ProductsObject(LinkPtr link, DocumentPtr document, std::shared_ptr<Product> product)
        : SessionObject(std::move(link), std::move(document)), product_(std::move(product)) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "Products",
            {ReadOnly<ProductsObject>(
                 "Count",
                 [](ProductsObject& products) { return Count(products.product_->instances); }),
             Function<ProductsObject>(
                 "Item", {Kind::kIndex},
                 [](ProductsObject& products, const automation::Array& arguments) {
                     const Product::Instance& instance =
                         ItemOf(products.product_->instances, arguments[0],
                                [](const Product::Instance& each) { return each.name; });
                     return MakeProduct(products.link(), products.document(), instance.reference);
                 })}};
        return info;
    }

  private:
    std::shared_ptr<Product> product_;
};

class ProductObject : public SessionObject {
  public:
    ProductObject(LinkPtr link, DocumentPtr document, std::shared_ptr<Product> product)
        : SessionObject(std::move(link), std::move(document)), product_(std::move(product)) {}

    [[nodiscard]] const ClassInfo& Class() const override {
        static const ClassInfo info{
            "Product",
            {Property<ProductObject>(
                 "PartNumber", Kind::kText,
                 [](ProductObject& object) { return object.product_->part_number; },
                 [](ProductObject& object, const automation::Value& value) {
                     object.product_->part_number = value.AsText();
                 }),
             ReadOnly<ProductObject>("Products",
                                     [](ProductObject& object) -> automation::ObjectPtr {
                                         return std::make_shared<ProductsObject>(
                                             object.link(), object.document(), object.product_);
                                     })}};
        return info;
    }

    [[nodiscard]] std::string Label() const override {
        return "Product(\"" + product_->part_number + "\")";
    }

  private:
    std::shared_ptr<Product> product_;
};

} // namespace

automation::ObjectPtr MakeProduct(LinkPtr link, DocumentPtr document,
                                  std::shared_ptr<Product> product) {
    return std::make_shared<ProductObject>(std::move(link), std::move(document),
                                           std::move(product));
}

} // namespace simulator
