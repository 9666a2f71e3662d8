#include "com_registration.hpp"

#include <array>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include <ole2.h>

#include "com/implementation.hpp"
#include "com/utf.hpp"
#include "files.hpp"
#include "text/text.hpp"

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

// Where a user who may not write HKEY_CLASSES_ROOT has classes of his own; HKEY_LOCAL_MACHINE has
// those of all users under the same name.
constexpr const wchar_t* kUserClasses = L"Software\\Classes\\";

std::wstring ClassPrefix(HKEY root) {
    return root == HKEY_CURRENT_USER ? kUserClasses : L"";
}

std::wstring OwnClassText() {
    std::array<wchar_t, 40> text{};
    StringFromGUID2(kOwnClass, text.data(), static_cast<int>(text.size()));
    return text.data();
}

// The text of a key; nothing where there is none.
std::optional<std::wstring> KeyText(HKEY root, const std::wstring& key) {
    constexpr DWORD kLongest = 32768;
    std::vector<wchar_t> text(kLongest);
    auto bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegGetValueW(root, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) !=
        ERROR_SUCCESS) {
        return std::nullopt;
    }
    return text.data();
}

bool RemoveKey(HKEY root, const std::wstring& key) {
    const LSTATUS result = RegDeleteTreeW(root, key.c_str());
    return result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND;
}

// Whether the command starts this program, however its path is written.
bool StartsThisProgram(const std::wstring& command) {
    const std::string text = com::Narrow(command);
    std::error_code not_there;
    return std::filesystem::equivalent(com::Widen(text::ProgramOf(text)), com::Widen(ProgramPath()),
                                       not_there);
}

// Of one part of the registry.
bool RemoveLeftClasses(HKEY root) {
    const std::wstring own_class = std::wstring(kUserClasses) + L"CLSID\\" + OwnClassText();
    const std::wstring program_id = std::wstring(kUserClasses) + kProgramId;
    const auto command = KeyText(root, own_class + L"\\LocalServer32");
    if (command && !StartsThisProgram(*command)) {
        return true;
    }
    const bool names_own_class = KeyText(root, program_id + L"\\CLSID") == OwnClassText();
    const bool name_gone = !names_own_class || RemoveKey(root, program_id);
    return RemoveKey(root, own_class) && name_gone;
}

} // namespace

ApplicationRegistration::ApplicationRegistration(Server& server, com::Purpose purpose) {
    const bool on_trial = purpose == com::Purpose::kTrial;
    const CLSID class_id = on_trial ? com::kTrialClass : EnterInRegistry();
    const ComPtr<IDispatch> application = MakeDispatch(server, server.session.Application());
    const auto factory = com::Make<ApplicationFactory>(application);
    if ((!on_trial && FAILED(CoRegisterClassObject(class_id, factory.Get(), CLSCTX_LOCAL_SERVER,
                                                   REGCLS_MULTIPLEUSE, &class_object_))) ||
        FAILED(RegisterActiveObject(application.Get(), class_id, ACTIVEOBJECT_STRONG,
                                    &running_object_))) {
        problem_ = "The session cannot be registered as a running CATIA.";
    }
}

CLSID ApplicationRegistration::EnterInRegistry() {
    CLSID class_id{};
    if (SUCCEEDED(CLSIDFromProgID(kProgramId, &class_id)) && class_id != kOwnClass) {
        return class_id;
    }
    class_id_text_ = OwnClassText();
    for (const HKEY root : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER}) {
        if (EnterClass(root, ClassPrefix(root), class_id_text_)) {
            registry_root_ = root;
            break;
        }
    }
    if (registry_root_ == nullptr) {
        problem_ = "CATIA.Application cannot be entered in the registry.";
    }
    return kOwnClass;
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

bool RemoveLeftRegistration() {
    const bool persons_gone = RemoveLeftClasses(HKEY_CURRENT_USER);
    return RemoveLeftClasses(HKEY_LOCAL_MACHINE) && persons_gone;
}

} // namespace simulator
