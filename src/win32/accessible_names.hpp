// What programs that read aloud are told of controls that have no text and no label to tell it.
#pragma once

#include <windows.h>

#include <oleacc.h>
#include <wrl/client.h>

#include <string_view>

namespace win32 {

class AccessibleNames {
  public:
    // Where the system has no service for it, the names that Windows finds by itself remain.
    AccessibleNames();

    void SetName(HWND control, std::string_view name) const;
    // What its tip says.
    void SetHelp(HWND control, std::string_view text) const;
    // Before a control goes that was given any of this.
    void Clear(HWND control) const;

  private:
    void Set(HWND control, const GUID& property, std::string_view text) const;

    Microsoft::WRL::ComPtr<IAccPropServices> services_;
};

} // namespace win32
