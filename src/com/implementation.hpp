// The common ground of the objects that are given to COM: their references are counted, and each
// answers to one interface.
#pragma once

#include <utility>

#include <windows.h>

#include <unknwn.h>
#include <wrl/client.h>

namespace com {

// Has one reference when it is made, and goes with its last.
template <typename Interface>
class Implementation : public Interface {
  public:
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (id != IID_IUnknown && id != __uuidof(Interface)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<Interface*>(this);
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

  protected:
    Implementation() = default;
    virtual ~Implementation() = default;

  private:
    LONG references_ = 1;
};

// A new `Object`, which is an Implementation.
template <typename Object, typename... Arguments>
Microsoft::WRL::ComPtr<Object> Make(Arguments&&... arguments) {
    Microsoft::WRL::ComPtr<Object> made;
    made.Attach(new Object(std::forward<Arguments>(arguments)...));
    return made;
}

} // namespace com
