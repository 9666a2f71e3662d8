#include <windows.h>

#include <initguid.h> // before the header whose identifiers it defines

#include "win32/accessible_names.hpp"

#include <array>

#include "com/utf.hpp"

namespace win32 {

AccessibleNames::AccessibleNames() {
    if (FAILED(CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IAccPropServices,
                                reinterpret_cast<void**>(services_.GetAddressOf())))) {
        services_.Reset();
    }
}

void AccessibleNames::SetName(HWND control, std::string_view name) const {
    Set(control, PROPID_ACC_NAME, name);
}

void AccessibleNames::SetHelp(HWND control, std::string_view text) const {
    Set(control, PROPID_ACC_HELP, text);
}

void AccessibleNames::Clear(HWND control) const {
    if (services_ != nullptr) {
        const std::array<GUID, 2> properties{PROPID_ACC_NAME, PROPID_ACC_HELP};
        static_cast<void>(services_->ClearHwndProps(control, static_cast<DWORD>(OBJID_CLIENT),
                                                    CHILDID_SELF, properties.data(),
                                                    static_cast<int>(properties.size())));
    }
}

void AccessibleNames::Set(HWND control, const GUID& property, std::string_view text) const {
    if (services_ != nullptr && !text.empty()) {
        static_cast<void>(services_->SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT),
                                                    CHILDID_SELF, property,
                                                    com::Widen(text).c_str()));
    }
}

} // namespace win32
