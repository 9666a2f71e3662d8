#include "com_registration.hpp"

#include <array>
#include <utility>

#include <ole2.h>

#include "com/implementation.hpp"
#include "com/utf.hpp"
#include "files.hpp"

using Microsoft::WRL::ComPtr;

namespace simulator {

namespace {

// Hands out the one application object, whoever asks for a new one.
class ApplicationFactory : public com::Implementation<IClassFactory> {
  public:
    explicit ApplicationFactory(ComPtr<IDispatch> application)
        : application_(std::move(application)) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        *object = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : application_->QueryInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    ComPtr<IDispatch> application_;
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

bool EnterClass(HKEY root, const std::wstring& prefix, const std::wstring& class_id) {
    return SetText(root, prefix + kProgramId + L"\\CLSID", class_id) &&
           SetText(root, prefix + L"CLSID\\" + class_id + L"\\LocalServer32",
                   L"\"" + com::Widen(ProgramPath()) + L"\"") &&
           SetText(root, prefix + L"CLSID\\" + class_id + L"\\ProgID", kProgramId);
}

// Where a user who may not write HKEY_CLASSES_ROOT has classes of his own.
constexpr const wchar_t* kUserClasses = L"Software\\Classes\\";

std::wstring ClassPrefix(HKEY root) {
    return root == HKEY_CURRENT_USER ? kUserClasses : L"";
}

} // namespace

ApplicationRegistration::ApplicationRegistration(Server& server) {
    CLSID class_id{};
    if (FAILED(CLSIDFromProgID(kProgramId, &class_id)) || class_id == kOwnClass) {
        class_id = kOwnClass;
        std::array<wchar_t, 40> text{};
        StringFromGUID2(kOwnClass, text.data(), static_cast<int>(text.size()));
        class_id_text_ = text.data();
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
    const auto factory = com::Make<ApplicationFactory>(application);
    if (FAILED(CoRegisterClassObject(class_id, factory.Get(), CLSCTX_LOCAL_SERVER,
                                     REGCLS_MULTIPLEUSE, &class_object_)) ||
        FAILED(RegisterActiveObject(application.Get(), class_id, ACTIVEOBJECT_STRONG,
                                    &running_object_))) {
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
