#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace automation {

class Object;
class Value;

using ObjectPtr = std::shared_ptr<Object>;
using Array = std::vector<Value>;
// An argument passed by reference: the called member fills in the pointed-to value. What stands in
// it before the call says how it goes out (an integer as a reference to a long, and so on).
using Reference = std::shared_ptr<Value>;

// What an automation call takes and gives: nothing, a boolean, an integer, a real of double or of
// single precision, a text (UTF-8),
// an object, an array of values, or a reference to a value. The kind is sent as it stands here; a
// server converts it to what its member declares.
class Value {
  public:
    using Storage = std::variant<std::monostate, bool, std::int32_t, double, float, std::string,
                                 ObjectPtr, Array, Reference>;

    Value() = default;
    Value(bool truth) : storage_(truth) {}
    Value(std::int32_t integer) : storage_(integer) {}
    Value(double real) : storage_(real) {}
    Value(float real) : storage_(real) {}
    Value(std::string text) : storage_(std::move(text)) {}
    Value(std::string_view text) : storage_(std::string(text)) {}
    Value(const char* text) : storage_(std::string(text)) {}
    Value(ObjectPtr object) : storage_(std::move(object)) {}
    Value(Array array) : storage_(std::move(array)) {}
    Value(Reference reference) : storage_(std::move(reference)) {}

    [[nodiscard]] const Storage& storage() const { return storage_; }

    template <typename Kind>
    [[nodiscard]] bool Is() const {
        return std::holds_alternative<Kind>(storage_);
    }

    // What a caller expects of a result. Numbers convert into one another; every other difference
    // raises 13 (type mismatch), and AsObject raises 424 (object required).
    [[nodiscard]] std::int32_t AsInteger() const;
    [[nodiscard]] double AsReal() const;
    [[nodiscard]] const std::string& AsText() const;
    [[nodiscard]] const ObjectPtr& AsObject() const;

    friend bool operator==(const Value& left, const Value& right) {
        return left.storage_ == right.storage_;
    }

  private:
    Storage storage_;
};

} // namespace automation
