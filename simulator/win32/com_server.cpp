#include "com_server.hpp"

#include <array>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include <ole2.h>

#include "automation/run_time_error.hpp"
#include "call_clock.hpp"
#include "com/implementation.hpp"
#include "com/utf.hpp"
#include "com/variant.hpp"
#include "simulator/session_object.hpp"

using automation::Array;
using automation::ObjectPtr;
using automation::RunTimeError;
using automation::Value;
using Microsoft::WRL::ComPtr;

namespace simulator {

namespace {

constexpr DISPID kIdsPerClass = 1000;

// Asks an interface whether it is one of this server's; the answer is borrowed.
constexpr IID kOwnObject = {
    0x5f0c2d71, 0x8f0e, 0x4a8b, {0x9b, 0x52, 0x0d, 0x6e, 0x1c, 0x7a, 0x33, 0x94}};

// The classes have DISPIDs of their own, but what all documents have stands under the same in each.
DISPID FirstId(const ClassInfo& info) {
    static std::map<std::string, DISPID> first_ids;
    const std::string family = info.name.ends_with("Document") ? "Document" : info.name;
    const auto next = static_cast<DISPID>(first_ids.size() + 1) * kIdsPerClass;
    return first_ids.emplace(family, next).first->second;
}

char DecimalSeparator(LCID locale) {
    std::array<wchar_t, 8> separator{L'.'};
    GetLocaleInfoW(locale, LOCALE_SDECIMAL, separator.data(), static_cast<int>(separator.size()));
    return separator[0] == L',' ? ',' : '.';
}

class SessionDispatch : public com::Implementation<IDispatch> {
  public:
    SessionDispatch(Server& server, std::shared_ptr<SessionObject> object)
        : server_(server), object_(std::move(object)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (id == kOwnObject) {
            *object = this;
            return S_OK;
        }
        return Implementation::QueryInterface(id, object);
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = nullptr;
        return DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override {
        const TimedCall timed;
        const ClassInfo& info = object_->Class();
        const std::string name = com::Narrow(names[0]);
        server_.session.NoteLookup(info.name, name);
        if (server_.session.dialog_open) {
            return RPC_E_CALL_REJECTED;
        }
        for (UINT i = 0; i < count; ++i) {
            ids[i] = DISPID_UNKNOWN; // arguments have no names
        }
        const MemberInfo* const member = object_->FindMember(name);
        if (member == nullptr) {
            return DISP_E_UNKNOWNNAME;
        }
        ids[0] = FirstId(info) + static_cast<DISPID>(member - info.members.data());
        return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrong_argument) override;

    [[nodiscard]] const std::shared_ptr<SessionObject>& object() const { return object_; }

  private:
    Server& server_;
    std::shared_ptr<SessionObject> object_;
};

ObjectPtr ObjectOf(IDispatch* dispatch) {
    void* own = nullptr;
    if (FAILED(dispatch->QueryInterface(kOwnObject, &own))) {
        throw automation::TypeMismatch(); // an object of another server
    }
    return static_cast<SessionDispatch*>(own)->object();
}

BSTR NewBstr(std::string_view text) {
    return SysAllocString(com::Widen(text).c_str());
}

// What the client's end of the call gets for `error`.
HRESULT Report(const RunTimeError& error, const std::string& class_name, EXCEPINFO* exception) {
    switch (error.number) {
    case 6:
        return DISP_E_OVERFLOW;
    case 9:
        return DISP_E_BADINDEX;
    case 13:
        return DISP_E_TYPEMISMATCH;
    case 438:
        return DISP_E_MEMBERNOTFOUND;
    case 450:
        return DISP_E_BADPARAMCOUNT;
    case RPC_E_CALL_REJECTED:
    case RPC_E_DISCONNECTED:
        return error.number;
    default:
        break;
    }
    if (exception != nullptr) {
        *exception = {};
        exception->scode = error.number;
        exception->bstrSource = NewBstr("CATIA" + class_name);
        exception->bstrDescription = NewBstr(error.description);
    }
    return DISP_E_EXCEPTION;
}

HRESULT SessionDispatch::Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO* exception, UINT* wrong_argument) {
    const TimedCall timed;
    const auto to_dispatch = [this](const ObjectPtr& object) {
        return MakeDispatch(server_, object);
    };
    const ClassInfo& info = object_->Class();
    const DISPID place = id - FirstId(info);
    if (place < 0 || static_cast<std::size_t>(place) >= info.members.size()) {
        return DISP_E_MEMBERNOTFOUND;
    }
    const automation::Member member{info.name, info.members[static_cast<std::size_t>(place)].name};
    const bool assigns = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (parameters->cNamedArgs != (assigns ? 1U : 0U)) {
        return DISP_E_NONAMEDARGS;
    }
    if (assigns && parameters->cArgs != 1) {
        return DISP_E_BADPARAMCOUNT;
    }
    if (wrong_argument != nullptr) {
        *wrong_argument = 0;
    }
    // The client may end, and with it the last reference, while the call runs.
    const ComPtr<IDispatch> alive(this);
    try {
        Array arguments;
        for (UINT i = parameters->cArgs; i > 0; --i) {
            arguments.push_back(com::FromVariant(parameters->rgvarg[i - 1], ObjectOf));
        }
        server_.session.decimal_separator = DecimalSeparator(locale);
        if (assigns) {
            object_->put(member, arguments[0]);
            return S_OK;
        }
        std::vector<Value> before; // of what came by reference
        for (const Value& argument : arguments) {
            const auto* reference = std::get_if<automation::Reference>(&argument.storage());
            before.push_back(reference != nullptr ? **reference : Value());
        }
        const Value returned = object_->call(member, arguments);
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            const auto* reference = std::get_if<automation::Reference>(&arguments[i].storage());
            if (reference != nullptr && !(**reference == before[i])) {
                com::WriteBack(parameters->rgvarg[arguments.size() - 1 - i], **reference,
                               to_dispatch);
            }
        }
        if (result != nullptr) {
            *result = com::ToVariant(returned, to_dispatch).Detach();
        }
        return S_OK;
    } catch (const RunTimeError& error) {
        if (error.number == ServerUnavailable().number) {
            server_.before_vanishing();
            TerminateProcess(GetCurrentProcess(), 1);
        }
        return Report(error, info.name, exception);
    }
}

} // namespace

ComPtr<IDispatch> MakeDispatch(Server& server, ObjectPtr object) {
    return com::Make<SessionDispatch>(server,
                                      std::static_pointer_cast<SessionObject>(std::move(object)));
}

} // namespace simulator
