#include "com/client.hpp"

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <windows.h>

#include <ole2.h>
#include <wrl/client.h>

#include "automation/number_texts.hpp"
#include "automation/run_time_error.hpp"
#include "com/implementation.hpp"
#include "com/utf.hpp"
#include "com/variant.hpp"

using automation::Array;
using automation::Member;
using automation::ObjectPtr;
using automation::RunTimeError;
using automation::Value;
using Microsoft::WRL::ComPtr;

namespace com {

namespace {

// "." is the decimal separator of texts whatever the user's locale, where the server heeds it.
constexpr LCID kUnitedStates = 0x0409;

constexpr DWORD kRetryEvery = 250;    // milliseconds
constexpr DWORD kGiveUpAfter = 30000; // milliseconds since the first attempt

// A process has one thread that calls, and one watch.
CallWatch* call_watch = nullptr;
bool calling = false;
bool giving_back = false; // a reference
bool waiting = false;

// Whether the wait for a call is to go on.
bool GoesOn(ULONGLONG milliseconds, bool rejected) {
    if (call_watch == nullptr) {
        return true;
    }
    waiting = true;
    return call_watch->Waiting(milliseconds, rejected);
}

// Waits before a rejected call, made first at the tick `start`, is tried again. False where it is
// to be given up.
bool WaitForRetry(ULONGLONG start) {
    constexpr ULONGLONG kLookEvery = 50;
    const ULONGLONG end = GetTickCount64() + kRetryEvery;
    while (true) {
        const ULONGLONG now = GetTickCount64();
        if (!GoesOn(now - start, true)) {
            return false;
        }
        if (now >= end) {
            return true;
        }
        MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(std::min(end - now, kLookEvery)),
                                    QS_ALLINPUT, 0);
    }
}

bool IsRejection(HRESULT result) {
    return result == RPC_E_CALL_REJECTED || result == RPC_E_SERVERCALL_RETRYLATER;
}

// Says for as long as it lives that a call is being made.
class Calling {
  public:
    Calling() : inside_another_(std::exchange(calling, true)) {}
    ~Calling() {
        calling = inside_another_;
        if (!inside_another_ && std::exchange(waiting, false)) {
            call_watch->WaitEnded();
        }
    }
    Calling(const Calling&) = delete;
    Calling& operator=(const Calling&) = delete;

  private:
    bool inside_another_;
};

// Makes `call`, which returns an HRESULT, and repeats it while the server rejects it, up to the
// time limit. Raises 18 (user interrupt) where the person gives it up.
template <typename Call>
HRESULT Retrying(Call call) {
    const Calling while_calling;
    const ULONGLONG start = GetTickCount64();
    while (true) {
        const HRESULT result = call();
        if (result == RPC_E_CALL_CANCELED && !GoesOn(GetTickCount64() - start, false)) {
            throw automation::UserInterrupt();
        }
        if (!IsRejection(result) || GetTickCount64() - start + kRetryEvery > kGiveUpAfter) {
            return result;
        }
        if (!WaitForRetry(start)) {
            throw automation::UserInterrupt();
        }
    }
}

// The system's text for `result`, without the line break at its end.
std::string SystemText(HRESULT result) {
    wchar_t* text = nullptr;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(result), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    if (length == 0) {
        return "Automation error";
    }
    std::wstring_view line(text, length);
    while (line.ends_with(L'\n') || line.ends_with(L'\r')) {
        line.remove_suffix(1);
    }
    std::string narrow = Narrow(line);
    LocalFree(text);
    return narrow;
}

RunTimeError ErrorOf(HRESULT result) {
    switch (result) {
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND:
        return automation::MemberNotSupported();
    case DISP_E_TYPEMISMATCH:
        return automation::TypeMismatch();
    case DISP_E_OVERFLOW:
        return automation::Overflow();
    case DISP_E_BADINDEX:
        return automation::SubscriptOutOfRange();
    case DISP_E_BADPARAMCOUNT:
        return {450, "Wrong number of arguments or invalid property assignment"};
    default:
        return {result, SystemText(result)};
    }
}

// An EXCEPINFO that frees its texts.
struct ExceptionInfo : EXCEPINFO {
    ExceptionInfo() : EXCEPINFO{} {}
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;
    ~ExceptionInfo() {
        SysFreeString(bstrSource);
        SysFreeString(bstrDescription);
        SysFreeString(bstrHelpFile);
    }
};

RunTimeError ErrorOf(ExceptionInfo& info) {
    if (info.pfnDeferredFillIn != nullptr) {
        info.pfnDeferredFillIn(&info);
    }
    // Classic run-time errors travel in HRESULTs of the control facility.
    constexpr unsigned long kClassic = 0x800A0000;
    const auto scode = static_cast<unsigned long>(info.scode);
    long number = info.wCode;
    if (number == 0) {
        number = (scode & 0xFFFF0000) == kClassic ? static_cast<long>(scode & 0xFFFF)
                                                  : static_cast<long>(info.scode);
    }
    const std::string description =
        info.bstrDescription != nullptr
            ? Narrow({info.bstrDescription, SysStringLen(info.bstrDescription)})
            : SystemText(info.scode);
    return {number, description};
}

// Whether a server has refused an argument's type, by its answer or by an exception.
bool IsTypeMismatch(const RunTimeError& error) {
    return error.number == automation::TypeMismatch().number || error.number == DISP_E_TYPEMISMATCH;
}

// What all objects of one application object share.
struct Connection {
    // Held as long as any of them: with it COM keeps what it gives references back through, which
    // it would otherwise make anew for each.
    ComPtr<IDispatch> application;
    // The DISPIDs of members by class of object and name.
    std::map<std::pair<std::string, std::string>, DISPID> ids;
};

class ComObject : public automation::Object {
  public:
    ComObject(ComPtr<IDispatch> dispatch, std::shared_ptr<Connection> connection)
        : dispatch_(std::move(dispatch)), connection_(std::move(connection)) {}
    ~ComObject() override {
        const Calling while_calling; // the server may be at work
        giving_back = true;
        dispatch_.Reset();
        connection_.reset();
        giving_back = false;
    }
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

  private:
    Value Get(const Member& member) override { return Call(member, {}); }

    Value Call(const Member& member, const Array& arguments) override {
        return Invoke(member, arguments, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
    }

    void Put(const Member& member, const Value& value) override {
        Invoke(member, {value}, DISPATCH_PROPERTYPUT);
    }

    DISPID IdOf(const Member& member) {
        std::pair key(std::string(member.object_class), std::string(member.name));
        if (const auto known = connection_->ids.find(key); known != connection_->ids.end()) {
            return known->second;
        }
        std::wstring name = Widen(member.name);
        LPOLESTR name_pointer = name.data();
        DISPID id = DISPID_UNKNOWN;
        const HRESULT result = Retrying([&] {
            return dispatch_->GetIDsOfNames(IID_NULL, &name_pointer, 1, kUnitedStates, &id);
        });
        if (FAILED(result)) {
            throw ErrorOf(result);
        }
        connection_->ids.emplace(std::move(key), id);
        return id;
    }

    Value Invoke(const Member& member, const Array& arguments, WORD flags) {
        const auto to_dispatch = [](const ObjectPtr& object) {
            const auto* ours = dynamic_cast<const ComObject*>(object.get());
            if (ours == nullptr) {
                throw automation::TypeMismatch();
            }
            return ours->dispatch_;
        };
        const auto to_object = [this](IDispatch* dispatch) -> ObjectPtr {
            return std::make_shared<ComObject>(dispatch, connection_);
        };

        const DISPID id = IdOf(member);
        // The error that the server answers with, if any.
        const auto send = [&](const Array& sent, Value& answer) -> std::optional<RunTimeError> {
            std::deque<OutgoingArgument> outgoing; // does not move its elements
            std::vector<VARIANT> reversed(sent.size());
            for (std::size_t i = 0; i < sent.size(); ++i) {
                outgoing.emplace_back(sent[i], to_dispatch);
                reversed[sent.size() - 1 - i] = outgoing.back().variant();
            }
            DISPID named = DISPID_PROPERTYPUT;
            DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
            if (flags == DISPATCH_PROPERTYPUT) {
                parameters.rgdispidNamedArgs = &named;
                parameters.cNamedArgs = 1;
            }

            _variant_t returned;
            ExceptionInfo exception;
            const HRESULT result = Retrying([&] {
                return dispatch_->Invoke(id, IID_NULL, kUnitedStates, flags, &parameters,
                                         flags == DISPATCH_PROPERTYPUT ? nullptr : &returned,
                                         &exception, nullptr);
            });
            if (result == DISP_E_EXCEPTION) {
                return ErrorOf(exception);
            }
            if (FAILED(result)) {
                return ErrorOf(result);
            }
            for (const OutgoingArgument& argument : outgoing) {
                argument.TakeBack(to_object);
            }
            answer = FromVariant(returned, to_object);
            return std::nullopt;
        };

        Value answer;
        auto refusal = send(arguments, answer);
        if (refusal && IsTypeMismatch(*refusal)) {
            // A server that leaves the conversion to its type information converts texts in the
            // user's language, whatever language it is called in. It has not carried the call out.
            if (const auto numbers = automation::TextsAsNumbers(member, arguments)) {
                refusal = send(*numbers, answer);
            }
        }
        if (refusal) {
            throw RunTimeError(*refusal);
        }
        return answer;
    }

    ComPtr<IDispatch> dispatch_;
    std::shared_ptr<Connection> connection_;
};

class MessageFilter : public Implementation<IMessageFilter> {
  public:
    DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override {
        return SERVERCALL_ISHANDLED;
    }
    DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD milliseconds_since_call,
                                              DWORD) override {
        constexpr auto kCancel = static_cast<DWORD>(-1);
        constexpr DWORD kAtOnce = 0;
        return milliseconds_since_call + kRetryEvery <= kGiveUpAfter &&
                       WaitForRetry(GetTickCount64() - milliseconds_since_call)
                   ? kAtOnce
                   : kCancel;
    }
    DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD milliseconds_since_call, DWORD) override {
        const bool goes_on = !calling || GoesOn(milliseconds_since_call, false);
        // References are given back whatever the person wants.
        return goes_on || giving_back ? PENDINGMSG_WAITNOPROCESS : PENDINGMSG_CANCELCALL;
    }
};

} // namespace

ObjectPtr GetActiveObject(std::string_view program_id) {
    CLSID class_id{};
    if (FAILED(CLSIDFromProgID(Widen(program_id).c_str(), &class_id))) {
        throw automation::CannotCreateObject();
    }
    return GetActiveObject(class_id);
}

ObjectPtr GetActiveObject(const CLSID& class_id) {
    ComPtr<IUnknown> running;
    ComPtr<IDispatch> application;
    const auto find = [&] {
        const HRESULT found = ::GetActiveObject(class_id, nullptr, &running);
        return FAILED(found) ? found : running.As(&application);
    };
    if (FAILED(Retrying(find))) {
        throw automation::CannotCreateObject();
    }
    auto connection = std::make_shared<Connection>();
    connection->application = application;
    return std::make_shared<ComObject>(std::move(application), std::move(connection));
}

bool IsCalling() {
    return calling;
}

MessageFilterRegistration::MessageFilterRegistration(CallWatch& watch) {
    call_watch = &watch;
    CoRegisterMessageFilter(Make<MessageFilter>().Get(), nullptr);
}

MessageFilterRegistration::~MessageFilterRegistration() {
    CoRegisterMessageFilter(nullptr, nullptr);
    call_watch = nullptr;
}

} // namespace com
