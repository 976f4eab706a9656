#pragma once

#include <functional>
#include <string>

#include "platform/WindowsHeader.h"

// Behind the header above, which they build on.
#include <oaidl.h>
#include <objbase.h>
#include <oleauto.h>

namespace vw::test {

/// Stands in for the system's "WScript.Shell" in this thread, as the one of Windows, whose
/// collection has its folders by number; Wine's has them by name only.
class FakeScriptShell {
  public:
    /// Gives the path of a number, or E_INVALIDARG by an empty one.
    explicit FakeScriptShell(std::function<std::wstring(int)> folderOf);
    FakeScriptShell(const FakeScriptShell&) = delete;
    FakeScriptShell& operator=(const FakeScriptShell&) = delete;
    ~FakeScriptShell();

    /// How many objects were made of it.
    [[nodiscard]] int Created() const noexcept { return created_; }

    /// Makes the system refuse to create the object.
    void RefuseToCreate() noexcept { refuses_ = true; }

    /// What the object answers when it is asked for its collection.
    void AnswerForCollection(std::function<HRESULT(VARIANT&)> answer);
    /// What the collection answers when it is asked for a folder.
    void AnswerForFolder(std::function<HRESULT(VARIANT&)> answer);

  private:
    // Lives as long as the test: counting references would say nothing here.
    template <class Interface>
    class Object : public Interface {
      public:
        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
            const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, __uuidof(Interface));
            *object = known ? this : nullptr;
            return known ? S_OK : E_NOINTERFACE;
        }
        ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
        ULONG STDMETHODCALLTYPE Release() override { return 1; }

      protected:
        ~Object() = default;
    };

    class Dispatch : public Object<IDispatch> {
      public:
        HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
            *count = 0;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                                DISPID* ids) override {
            if (count != 1 || name != names[0]) return DISP_E_UNKNOWNNAME;
            ids[0] = 1;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                         VARIANT* result, EXCEPINFO*, UINT*) override {
            return call(*parameters, *result);
        }

        std::wstring name;
        std::function<HRESULT(const DISPPARAMS&, VARIANT&)> call;
    };

    class Factory : public Object<IClassFactory> {
      public:
        HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
            return create(id, object);
        }
        HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

        std::function<HRESULT(REFIID, void**)> create;
    };

    bool initialised_ = false;
    DWORD registration_ = 0;
    int created_ = 0;
    bool refuses_ = false;
    Dispatch collection_;
    Dispatch shell_;
    Factory factory_;
};

}  // namespace vw::test
