#pragma once

#include <functional>
#include <string>

#include "platform/WindowsHeader.h"
#include "tests/support/ComDoubles.h"

// Behind the headers above, which they build on.
#include <oaidl.h>
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
    class Dispatch final : public ComObject<IDispatch> {
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

    bool initialised_ = false;
    DWORD registration_ = 0;
    int created_ = 0;
    bool refuses_ = false;
    Dispatch collection_;
    Dispatch shell_;
    ComFactory factory_;
};

}  // namespace vw::test
