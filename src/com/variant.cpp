#include "com/variant.hpp"

#include <limits>
#include <string_view>

#include "automation/run_time_error.hpp"
#include "com/utf.hpp"

using automation::Array;
using automation::ObjectPtr;
using automation::Reference;
using automation::TypeMismatch;
using automation::Value;
using Microsoft::WRL::ComPtr;

namespace com {

namespace {

void Check(HRESULT result) {
    if (FAILED(result)) {
        throw TypeMismatch();
    }
}

BSTR NewBstr(std::string_view text) {
    const std::wstring wide = Widen(text);
    return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

SAFEARRAY* NewArray(const Array& values, const ObjectToDispatch& to_dispatch) {
    SAFEARRAY* const array =
        SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
    if (array == nullptr) {
        throw TypeMismatch();
    }
    _variant_t owner; // frees it if an element cannot be sent
    V_VT(&owner) = VT_ARRAY | VT_VARIANT;
    V_ARRAY(&owner) = array;
    LONG index = 0;
    for (const Value& value : values) {
        _variant_t element = ToVariant(value, to_dispatch);
        Check(SafeArrayPutElement(array, &index, &element));
        ++index;
    }
    owner.Detach();
    return array;
}

// The size of what a VARIANT of that type holds; 0 where it holds none, as of records.
UINT SizeInVariant(VARTYPE type) {
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
        return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
        return sizeof(void*);
    case VT_DECIMAL:
        return sizeof(DECIMAL);
    case VT_VARIANT:
        return sizeof(VARIANT);
    default:
        return 0;
    }
}

Array ArrayValues(SAFEARRAY* array, VARTYPE type, const DispatchToObject& to_object) {
    Array values;
    if (array == nullptr) {
        return values;
    }
    LONG first = 0;
    LONG last = -1;
    const UINT size = SizeInVariant(type);
    if (SafeArrayGetDim(array) != 1 || size == 0 || SafeArrayGetElemsize(array) != size) {
        throw TypeMismatch();
    }
    Check(SafeArrayGetLBound(array, 1, &first));
    Check(SafeArrayGetUBound(array, 1, &last));
    for (LONG index = first; index <= last; ++index) {
        _variant_t element;
        if (type == VT_VARIANT) {
            Check(SafeArrayGetElement(array, &index, &element));
        } else {
            // A decimal fills the whole VARIANT; the type has its place in it.
            void* const place = type == VT_DECIMAL ? static_cast<void*>(&V_DECIMAL(&element))
                                                   : static_cast<void*>(&V_I8(&element));
            Check(SafeArrayGetElement(array, &index, place));
            V_VT(&element) = type;
        }
        values.push_back(FromVariant(element, to_object));
    }
    return values;
}

template <typename Whole>
Value Number(Whole whole) {
    if (whole >= Whole{0} &&
        static_cast<unsigned long long>(whole) <=
            static_cast<unsigned long long>(std::numeric_limits<std::int32_t>::max())) {
        return static_cast<std::int32_t>(whole);
    }
    if (whole < Whole{0} &&
        static_cast<long long>(whole) >= std::numeric_limits<std::int32_t>::min()) {
        return static_cast<std::int32_t>(whole);
    }
    return static_cast<double>(whole);
}

// The value of type `type` that `data` points at.
VARIANT Borrowed(VARTYPE type, void* data) {
    VARIANT by_reference{};
    V_VT(&by_reference) = static_cast<VARTYPE>(type | VT_BYREF);
    V_BYREF(&by_reference) = data;
    return by_reference;
}

} // namespace

_variant_t ToVariant(const Value& value, const ObjectToDispatch& to_dispatch) {
    _variant_t variant;
    const auto& storage = value.storage();
    if (const auto* truth = std::get_if<bool>(&storage)) {
        V_VT(&variant) = VT_BOOL;
        V_BOOL(&variant) = *truth ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (const auto* integer = std::get_if<std::int32_t>(&storage)) {
        V_VT(&variant) = VT_I4;
        V_I4(&variant) = *integer;
    } else if (const auto* real = std::get_if<double>(&storage)) {
        V_VT(&variant) = VT_R8;
        V_R8(&variant) = *real;
    } else if (const auto* single = std::get_if<float>(&storage)) {
        V_VT(&variant) = VT_R4;
        V_R4(&variant) = *single;
    } else if (const auto* text = std::get_if<std::string>(&storage)) {
        V_BSTR(&variant) = NewBstr(*text);
        V_VT(&variant) = VT_BSTR;
    } else if (const auto* object = std::get_if<ObjectPtr>(&storage)) {
        V_DISPATCH(&variant) = *object != nullptr ? to_dispatch(*object).Detach() : nullptr;
        V_VT(&variant) = VT_DISPATCH;
    } else if (const auto* array = std::get_if<Array>(&storage)) {
        V_ARRAY(&variant) = NewArray(*array, to_dispatch);
        V_VT(&variant) = VT_ARRAY | VT_VARIANT;
    } else if (const auto* reference = std::get_if<Reference>(&storage);
               reference != nullptr && *reference != nullptr) {
        return ToVariant(**reference, to_dispatch);
    }
    return variant;
}

Value FromVariant(const VARIANT& variant, const DispatchToObject& to_object) {
    if (V_ISBYREF(&variant)) {
        VARIANT copy;
        VariantInit(&copy);
        _variant_t owner;
        Check(VariantCopyInd(&copy, const_cast<VARIANT*>(&variant))); // only reads it
        owner.Attach(copy);
        return std::make_shared<Value>(FromVariant(owner, to_object));
    }
    if (V_ISARRAY(&variant)) {
        return ArrayValues(V_ARRAY(&variant), static_cast<VARTYPE>(V_VT(&variant) & VT_TYPEMASK),
                           to_object);
    }
    switch (V_VT(&variant)) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_ERROR: // an argument left out
        return {};
    case VT_BOOL:
        return V_BOOL(&variant) != VARIANT_FALSE;
    case VT_I1:
        return Number(static_cast<signed char>(V_I1(&variant)));
    case VT_UI1:
        return Number(V_UI1(&variant));
    case VT_I2:
        return Number(V_I2(&variant));
    case VT_UI2:
        return Number(V_UI2(&variant));
    case VT_I4:
    case VT_INT:
        return Number(V_I4(&variant));
    case VT_UI4:
    case VT_UINT:
        return Number(V_UI4(&variant));
    case VT_I8:
        return Number(V_I8(&variant));
    case VT_UI8:
        return Number(V_UI8(&variant));
    case VT_R4:
        return V_R4(&variant);
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_DECIMAL: {
        _variant_t real;
        Check(VariantChangeType(&real, const_cast<VARIANT*>(&variant), 0, VT_R8)); // only reads it
        return V_R8(&real);
    }
    case VT_BSTR:
        return Narrow(
            {V_BSTR(&variant) != nullptr ? V_BSTR(&variant) : L"", SysStringLen(V_BSTR(&variant))});
    case VT_DISPATCH:
        return V_DISPATCH(&variant) != nullptr ? to_object(V_DISPATCH(&variant)) : ObjectPtr();
    case VT_UNKNOWN: {
        ComPtr<IDispatch> dispatch;
        if (V_UNKNOWN(&variant) != nullptr) {
            Check(V_UNKNOWN(&variant)->QueryInterface(IID_PPV_ARGS(&dispatch)));
        }
        return dispatch != nullptr ? to_object(dispatch.Get()) : ObjectPtr();
    }
    default:
        throw TypeMismatch();
    }
}

void WriteBack(const VARIANT& variant, const Value& value, const ObjectToDispatch& to_dispatch) {
    _variant_t home = ToVariant(value, to_dispatch);
    const auto type = static_cast<VARTYPE>(V_VT(&variant) & ~VT_BYREF);
    if (type == VT_VARIANT) {
        Check(VariantCopy(V_VARIANTREF(&variant), &home));
        return;
    }
    Check(VariantChangeType(&home, &home, 0, type));
    switch (type) {
    case VT_I2:
    case VT_BOOL:
        *V_I2REF(&variant) = V_I2(&home);
        break;
    case VT_I4:
    case VT_INT:
    case VT_R4:
        *V_I4REF(&variant) = V_I4(&home);
        break;
    case VT_R8:
        *V_R8REF(&variant) = V_R8(&home);
        break;
    case VT_BSTR:
        SysFreeString(*V_BSTRREF(&variant));
        *V_BSTRREF(&variant) = home.Detach().bstrVal;
        break;
    default:
        throw TypeMismatch();
    }
}

OutgoingArgument::OutgoingArgument(const Value& value, const ObjectToDispatch& to_dispatch)
    : owned_(ToVariant(value, to_dispatch)) {
    if (const auto* reference = std::get_if<Reference>(&value.storage())) {
        reference_ = *reference;
    }
    if (reference_ == nullptr) {
        variant_ = owned_;
    } else if (V_VT(&owned_) == VT_EMPTY) {
        variant_ = Borrowed(VT_VARIANT, &owned_);
    } else {
        // All values of a VARIANT but VT_DECIMAL stand at the same place in it.
        variant_ = Borrowed(V_VT(&owned_), &V_I8(&owned_));
    }
}

void OutgoingArgument::TakeBack(const DispatchToObject& to_object) const {
    if (reference_ != nullptr) {
        *reference_ = FromVariant(owned_, to_object);
    }
}

} // namespace com
