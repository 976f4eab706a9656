#pragma once

#include <functional>

#include "platform/WindowsHeader.h"

// Behind the header above, which it builds on.
#include <objbase.h>

namespace vw::test {

/// A COM object that lives as long as the test: counting references would say nothing here.
template <class Interface>
class ComObject : public Interface {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, __uuidof(Interface));
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

  protected:
    ~ComObject() = default;
};

/// Creates the objects of a class as the test says.
class ComFactory final : public ComObject<IClassFactory> {
  public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
        return create(id, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    std::function<HRESULT(REFIID, void**)> create;
};

}  // namespace vw::test
