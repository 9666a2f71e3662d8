#include "com_server.hpp"

#include <map>
#include <memory>
#include <utility>
#include <vector>

#include <ole2.h>

#include "automation/run_time_error.hpp"
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
    wchar_t separator[8] = L".";
    GetLocaleInfoW(locale, LOCALE_SDECIMAL, separator, 8);
    return separator[0] == L',' ? ',' : '.';
}

class SessionDispatch : public IDispatch {
  public:
    SessionDispatch(Server& server, std::shared_ptr<SessionObject> object)
        : server_(server), object_(std::move(object)) {}
    SessionDispatch(const SessionDispatch&) = delete;
    SessionDispatch& operator=(const SessionDispatch&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (id == kOwnObject) {
            *object = this;
            return S_OK;
        }
        if (id != IID_IUnknown && id != IID_IDispatch) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        return static_cast<ULONG>(InterlockedIncrement(&references_));
    }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = InterlockedDecrement(&references_);
        if (left == 0) {
            delete this;
        }
        return static_cast<ULONG>(left);
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
        const ClassInfo& info = object_->Class();
        const std::string name = com::Narrow(names[0]);
        server_.session.NoteLookup(info.name, name);
        for (UINT i = 0; i < count; ++i) {
            ids[i] = DISPID_UNKNOWN; // arguments have no names
        }
        const MemberInfo* const member = info.Find(name);
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
    virtual ~SessionDispatch() = default;

    Server& server_;
    std::shared_ptr<SessionObject> object_;
    LONG references_ = 1;
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

// Hands out the one application object, whoever asks for a new one.
class ApplicationFactory : public IClassFactory {
  public:
    explicit ApplicationFactory(ComPtr<IDispatch> application)
        : application_(std::move(application)) {}
    ApplicationFactory(const ApplicationFactory&) = delete;
    ApplicationFactory& operator=(const ApplicationFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (id != IID_IUnknown && id != IID_IClassFactory) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        return static_cast<ULONG>(InterlockedIncrement(&references_));
    }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = InterlockedDecrement(&references_);
        if (left == 0) {
            delete this;
        }
        return static_cast<ULONG>(left);
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        *object = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : application_->QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    virtual ~ApplicationFactory() = default;

    ComPtr<IDispatch> application_;
    LONG references_ = 1;
};

constexpr const wchar_t* kProgramId = L"CATIA.Application";

// The class that the session brings where no CATIA is installed.
constexpr CLSID kOwnClass = {
    0x2b6f1a5e, 0x41d3, 0x4c0a, {0xa7, 0x18, 0x5e, 0x90, 0x3d, 0x62, 0xc4, 0x7f}};

bool SetText(HKEY root, const std::wstring& key, const std::wstring& text) {
    return RegSetKeyValueW(root, key.c_str(), nullptr, REG_SZ, text.c_str(),
                           static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) ==
           ERROR_SUCCESS;
}

std::wstring ProgramPath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

bool EnterClass(HKEY root, const std::wstring& prefix, const std::wstring& class_id) {
    return SetText(root, prefix + kProgramId + L"\\CLSID", class_id) &&
           SetText(root, prefix + L"CLSID\\" + class_id + L"\\LocalServer32",
                   L"\"" + ProgramPath() + L"\"") &&
           SetText(root, prefix + L"CLSID\\" + class_id + L"\\ProgID", kProgramId);
}

// Where a user who may not write HKEY_CLASSES_ROOT has classes of his own.
constexpr const wchar_t* kUserClasses = L"Software\\Classes\\";

std::wstring ClassPrefix(HKEY root) {
    return root == HKEY_CURRENT_USER ? kUserClasses : L"";
}

} // namespace

ComPtr<IDispatch> MakeDispatch(Server& server, ObjectPtr object) {
    ComPtr<IDispatch> dispatch;
    dispatch.Attach(
        new SessionDispatch(server, std::static_pointer_cast<SessionObject>(std::move(object))));
    return dispatch;
}

// Right after a system has started, the services that keep registrations may not answer yet.
template <typename Register>
static HRESULT WhenServicesRun(Register register_it) {
    constexpr int kTries = 20;
    constexpr DWORD kPause = 100; // milliseconds
    HRESULT result = register_it();
    for (int tries = 1; tries < kTries && FAILED(result); ++tries) {
        Sleep(kPause);
        result = register_it();
    }
    return result;
}

ApplicationRegistration::ApplicationRegistration(Server& server) {
    CLSID class_id{};
    if (FAILED(CLSIDFromProgID(kProgramId, &class_id)) || class_id == kOwnClass) {
        class_id = kOwnClass;
        wchar_t text[40];
        StringFromGUID2(kOwnClass, text, 40);
        class_id_text_ = text;
        for (const HKEY root : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER}) {
            if (EnterClass(root, ClassPrefix(root), class_id_text_)) {
                registry_root_ = root;
                break;
            }
        }
        if (registry_root_ == nullptr) {
            problem_ = "CATIA.Application cannot be entered in the registry.";
        }
    }
    const ComPtr<IDispatch> application = MakeDispatch(server, server.session.Application());
    ComPtr<IClassFactory> factory;
    factory.Attach(new ApplicationFactory(application));
    const auto register_class = [&] {
        return CoRegisterClassObject(class_id, factory.Get(), CLSCTX_LOCAL_SERVER,
                                     REGCLS_MULTIPLEUSE, &class_object_);
    };
    const auto register_application = [&] {
        return RegisterActiveObject(application.Get(), class_id, ACTIVEOBJECT_STRONG,
                                    &running_object_);
    };
    if (FAILED(WhenServicesRun(register_class)) || FAILED(WhenServicesRun(register_application))) {
        problem_ = "The session cannot be registered as a running CATIA.";
    }
}

ApplicationRegistration::~ApplicationRegistration() {
    if (running_object_ != 0) {
        RevokeActiveObject(running_object_, nullptr);
    }
    if (class_object_ != 0) {
        CoRevokeClassObject(class_object_);
    }
    if (registry_root_ != nullptr) {
        const std::wstring prefix = ClassPrefix(registry_root_);
        RegDeleteTreeW(registry_root_, (prefix + kProgramId).c_str());
        RegDeleteTreeW(registry_root_, (prefix + L"CLSID\\" + class_id_text_).c_str());
    }
}

} // namespace simulator
