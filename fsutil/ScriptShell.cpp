#include "fsutil/Scripting.h"
#include "platform/Com.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

// Behind the header above, which they build on.
#include <oaidl.h>
#include <objbase.h>
#include <oleauto.h>

namespace vw::MMyScripting {

namespace {

// A value that crosses to an object; freed at the end.
struct Variant : VARIANT {
    Variant() noexcept : VARIANT{} {}
    explicit Variant(int number) noexcept : Variant() {
        vt = VT_I4;
        lVal = number;
    }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }
};

// Reads a property, or calls a method, by its name. False when the object refuses.
bool Get(IDispatch& object, const wchar_t* name, VARIANT* argument, Variant& result) {
    auto* text = const_cast<LPOLESTR>(name);
    DISPID id = 0;
    if (FAILED(object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id))) return false;
    DISPPARAMS parameters{};
    parameters.rgvarg = argument;
    parameters.cArgs = argument == nullptr ? 0 : 1;
    return SUCCEEDED(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT,
                                   DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters, &result,
                                   nullptr, nullptr));
}

}  // namespace

struct ScriptShell::Objects {
    ComApartment apartment;
    ComPtr<IDispatch> shell;  // released before the apartment ends
};

ScriptShell::ScriptShell() = default;
ScriptShell::~ScriptShell() = default;

bool ScriptShell::IsCreated() const noexcept { return objects_ != nullptr; }

void ScriptShell::Create() {
    if (objects_) return;
    auto objects = std::make_unique<Objects>();
    CLSID identifier{};
    if (SUCCEEDED(CLSIDFromProgID(L"WScript.Shell", &identifier))) {
        objects->shell = MakeComObject<IDispatch>(identifier, IID_IDispatch);
    }
    if (!objects->shell) {
        ThrowWith(error_number::kAccessError, L"The object WScript.Shell cannot be created");
    }
    objects_ = std::move(objects);
}

std::wstring ScriptShell::SpecialFolder(int number) {
    try {
        Create();
    } catch (const RuntimeError&) {
        return {};
    }
    Variant collection;
    if (!Get(*objects_->shell, L"SpecialFolders", nullptr, collection) ||
        collection.vt != VT_DISPATCH || collection.pdispVal == nullptr) {
        return {};
    }
    Variant argument(number);
    Variant folder;
    if (!Get(*collection.pdispVal, L"Item", &argument, folder) || folder.vt != VT_BSTR) return {};
    return std::wstring(folder.bstrVal, SysStringLen(folder.bstrVal));
}

}  // namespace vw::MMyScripting
