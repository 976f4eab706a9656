#include "platform/AnsiCodec.h"
#include "platform/CCommonAPI.h"

namespace vw {

// Every type is read in the same way, hence no use of the type asked for.
std::wstring CCommonAPI::RegValue(HKEY RegRootKey, std::wstring_view sRegistryKey,
                                  std::wstring_view sValueName,
                                  [[maybe_unused]] DWORD RegDataType) {
    return trap_.Or(std::wstring(), L"RegValue", [&]() -> std::wstring {
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

void CCommonAPI::RegValue(HKEY RegRootKey, std::wstring_view sRegistryKey,
                          std::wstring_view sValueName, DWORD RegDataType,
                          std::wstring_view sValueData) {
    trap_(L"RegValue", [&] {
        if (sRegistryKey.empty()) return;
        if (sValueName.empty() && sValueData.empty()) {
            RegDeleteKeyVB(RegRootKey, sRegistryKey);
            return;
        }
        RegistryKey key;
        if (OpenKey(RegRootKey, sRegistryKey, key) != ERROR_SUCCESS) return;
        if (sValueData.empty()) {
            RegDeleteValue(RegRootKey, sRegistryKey, sValueName);
            return;
        }
        const std::string data = ansi_.Encode(sValueData);
        registry_.SetValue(key.Get(), ansi_.Encode(sValueName), RegDataType,
                           std::string_view(data.c_str(), data.size() + 1));
    });
}

LSTATUS CCommonAPI::RegDeleteValue(HKEY RegRootKey, std::wstring_view sRegistryKey,
                                   std::wstring_view sValueName) {
    return trap_.Or(LSTATUS{ERROR_SUCCESS}, L"RegDeleteValue", [&]() -> LSTATUS {
        if (sRegistryKey.empty() || sValueName.empty()) return ERROR_BADKEY;
        RegistryKey key;
        if (OpenKey(RegRootKey, sRegistryKey, key) != ERROR_SUCCESS) return ERROR_SUCCESS;
        return registry_.DeleteValue(key.Get(), ansi_.Encode(sValueName));
    });
}

}  // namespace vw
