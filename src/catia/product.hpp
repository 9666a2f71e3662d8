// CATIA's product structure.
#pragma once

#include <string>
#include <utility>

#include "automation/object.hpp"

namespace catia {

class Product;

// The children of a product; a part has none.
class Products {
  public:
    explicit Products(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] int Count() const;
    // `index` counts from 1.
    [[nodiscard]] Product Item(int index) const;

  private:
    automation::ObjectPtr object_;
};

class Product {
  public:
    explicit Product(automation::ObjectPtr object) : object_(std::move(object)) {}

    [[nodiscard]] std::string PartNumber() const;
    [[nodiscard]] catia::Products Products() const;

  private:
    automation::ObjectPtr object_;
};

} // namespace catia
