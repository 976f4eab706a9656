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

// Every type is read in the same way, hence no use of the type asked for.
std::wstring CCommonAPI::RegValue(HKEY RegRootKey, std::wstring_view sRegistryKey,
                                  std::wstring_view sValueName,
                                  [[maybe_unused]] DWORD RegDataType) {
    return Quietly(L"RegValue", std::wstring(), [&]() -> std::wstring {
        if (sRegistryKey.empty()) return {};
        RegistryKey key;
        if (OpenKey(RegRootKey, sRegistryKey, key) != ERROR_SUCCESS) return {};

        const std::string name = ansi_.Encode(sValueName);
        char probe[] = "0";
        DWORD size = 0;
        registry_.QueryValue(key.Get(), name, probe, size);
        if (size < 2) return {};

        std::string data(static_cast<std::size_t>(size) + 1, ' ');
        if (registry_.QueryValue(key.Get(), name, data.data(), size) != ERROR_SUCCESS) return {};
        // Drops the end mark of a text; a NUL inside a double word costs its last byte as well.
        if (data.find('\0') != std::string::npos) data.resize(size > 0 ? size - 1 : 0);
        return ansi_.Decode(data);
    });
}

}  // namespace vw
