#include "tests/fsutil/FakeScriptShell.h"

#include <gtest/gtest.h>

#include <utility>

namespace vw::test {

FakeScriptShell::FakeScriptShell(std::function<std::wstring(int)> folderOf)
    : initialised_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {
    collection_.name = L"Item";
    collection_.call = [folderOf = std::move(folderOf)](const DISPPARAMS& parameters,
                                                        VARIANT& result) {
        if (parameters.cArgs != 1 || parameters.rgvarg[0].vt != VT_I4) return DISP_E_TYPEMISMATCH;
        const std::wstring folder = folderOf(parameters.rgvarg[0].lVal);
        if (folder.empty()) return E_INVALIDARG;
        result.vt = VT_BSTR;
        result.bstrVal = SysAllocString(folder.c_str());
        return S_OK;
    };
    shell_.name = L"SpecialFolders";
    shell_.call = [this](const DISPPARAMS& parameters, VARIANT& result) {
        if (parameters.cArgs != 0) return DISP_E_BADPARAMCOUNT;
        result.vt = VT_DISPATCH;
        result.pdispVal = &collection_;
        return S_OK;
    };
    factory_.create = [this](REFIID id, void** object) -> HRESULT {
        *object = nullptr;
        if (refuses_) return E_FAIL;
        ++created_;
        return shell_.QueryInterface(id, object);
    };
    CLSID identifier{};
    EXPECT_EQ(CLSIDFromProgID(L"WScript.Shell", &identifier), S_OK);
    EXPECT_EQ(CoRegisterClassObject(identifier, &factory_, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                    &registration_),
              S_OK);
}

FakeScriptShell::~FakeScriptShell() {
    CoRevokeClassObject(registration_);
    if (initialised_) CoUninitialize();
}

void FakeScriptShell::AnswerForCollection(std::function<HRESULT(VARIANT&)> answer) {
    shell_.call = [answer = std::move(answer)](const DISPPARAMS&, VARIANT& result) {
        return answer(result);
    };
}

void FakeScriptShell::AnswerForFolder(std::function<HRESULT(VARIANT&)> answer) {
    collection_.call = [answer = std::move(answer)](const DISPPARAMS&, VARIANT& result) {
        return answer(result);
    };
}

}  // namespace vw::test
