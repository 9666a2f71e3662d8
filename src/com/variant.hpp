// Values to and from VARIANTs, for both ends of a COM call. Values go out in the kind that they
// are; every kind of number is taken.
#pragma once

#include <functional>

#include <windows.h>

#include <comutil.h>
#include <wrl/client.h>

#include "automation/value.hpp"

namespace com {

// The interface of an object that goes out, and the object for an interface that came; neither is
// called with null. What cannot be sent raises 13 (type mismatch).
using ObjectToDispatch =
    std::function<Microsoft::WRL::ComPtr<IDispatch>(const automation::ObjectPtr&)>;
using DispatchToObject = std::function<automation::ObjectPtr(IDispatch*)>;

// A reference goes out as what it refers to: OutgoingArgument sends references as such.
_variant_t ToVariant(const automation::Value& value, const ObjectToDispatch& to_dispatch);

// What came by reference becomes a Reference to a copy; WriteBack carries a change home. Raises 13
// (type mismatch) for what a Value cannot hold.
automation::Value FromVariant(const VARIANT& variant, const DispatchToObject& to_object);

// Puts `value` into what `variant`, which came by reference, refers to, in the type that is there.
// Raises 13 (type mismatch) where it does not convert.
void WriteBack(const VARIANT& variant, const automation::Value& value,
               const ObjectToDispatch& to_dispatch);

// One argument of a call. It owns what it sends and must stay where it is until the call is over.
class OutgoingArgument {
  public:
    OutgoingArgument(const automation::Value& value, const ObjectToDispatch& to_dispatch);
    OutgoingArgument(const OutgoingArgument&) = delete;
    OutgoingArgument& operator=(const OutgoingArgument&) = delete;

    // For the call's argument array, which borrows it.
    [[nodiscard]] const VARIANT& variant() const { return variant_; }
    // After the call: what was filled in by reference goes back into the value.
    void TakeBack(const DispatchToObject& to_object) const;

  private:
    _variant_t owned_;  // the value itself, or what the reference refers to
    VARIANT variant_{}; // borrows from it
    automation::Reference reference_;
};

} // namespace com
