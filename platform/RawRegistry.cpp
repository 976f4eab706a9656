#include "platform/RawRegistry.h"

// Needs the declarations of the system first.
#include <shlwapi.h>

namespace vw {

LSTATUS SystemRegistry::CreateKey(HKEY root, const std::string& path, RegistryKey& key) {
    HKEY opened = nullptr;
    const LSTATUS status = RegCreateKeyA(root, path.c_str(), &opened);
    key.Reset(status == ERROR_SUCCESS ? opened : nullptr);
    return status;
}

LSTATUS SystemRegistry::QueryValue(HKEY key, const std::string& name, char* data, DWORD& size) {
    return RegQueryValueExA(key, name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(data),
                            &size);
}

LSTATUS SystemRegistry::SetValue(HKEY key, const std::string& name, DWORD type,
                                 std::string_view bytes) {
    return RegSetValueExA(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                          static_cast<DWORD>(bytes.size()));
}

LSTATUS SystemRegistry::DeleteValue(HKEY key, const std::string& name) {
    return RegDeleteValueA(key, name.c_str());
}

LSTATUS SystemRegistry::DeleteTree(HKEY parent, const std::string& name) {
    return SHDeleteKeyA(parent, name.c_str());
}

}  // namespace vw
