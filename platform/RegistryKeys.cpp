#include "platform/AnsiCodec.h"
#include "platform/CCommonAPI.h"

namespace vw {

// File types are registered under paths that begin with "\", which the system refuses. The first
// call still gets the path as it is; only that refusal is answered with a second one.
LSTATUS CCommonAPI::OpenKey(HKEY root, std::wstring_view path, RegistryKey& key) {
    const LSTATUS status = registry_.CreateKey(root, ansi_.Encode(path), key);
    if (status != ERROR_BAD_PATHNAME || !path.starts_with(L'\\')) return status;
    return registry_.CreateKey(root, ansi_.Encode(path.substr(1)), key);
}

LSTATUS CCommonAPI::RegKeyCreate(std::wstring_view sRegistryKey) {
    return trap_.Or(LSTATUS{ERROR_SUCCESS}, L"RegKeyCreate", [&]() -> LSTATUS {
        if (sRegistryKey.empty()) return ERROR_BADKEY;
        RegistryKey key;
        return OpenKey(HKEY_LOCAL_MACHINE, sRegistryKey, key);
    });
}

LSTATUS CCommonAPI::RegDeleteKeyVB(HKEY RegRootKey, std::wstring_view sRegistryKey) {
    return trap_.Or(LSTATUS{ERROR_SUCCESS}, L"RegDeleteKeyVB", [&]() -> LSTATUS {
        const std::size_t slash = sRegistryKey.rfind(L'\\');
        if (slash == std::wstring_view::npos) return ERROR_SUCCESS;
        const std::wstring_view parent = sRegistryKey.substr(0, slash);
        const std::wstring_view child = sRegistryKey.substr(slash + 1);
        // The system takes an empty name for the parent itself: removing a type of no name would
        // empty the whole of HKEY_CLASSES_ROOT.
        if (child.empty()) return ERROR_BADKEY;

        RegistryKey key;
        if (OpenKey(RegRootKey, parent, key) != ERROR_SUCCESS) return ERROR_SUCCESS;
        return registry_.DeleteTree(key.Get(), ansi_.Encode(child));
    });
}

}  // namespace vw
