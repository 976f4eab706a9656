#include "console/TaskNames.h"

#include <algorithm>

#include "platform/Handle.h"
#include "platform/SystemError.h"

namespace vw {
namespace {

constexpr const wchar_t* kKey = L"Software\\Tallowmere.Net\\Vaultwright\\Tasks";
constexpr DWORD kLongestName = 16384;

}  // namespace

void TaskNames::Add(const std::wstring& name) {
    const DWORD one = 1;
    const LSTATUS result =
        RegSetKeyValueW(HKEY_CURRENT_USER, kKey, name.c_str(), REG_DWORD, &one, sizeof one);
    if (result != ERROR_SUCCESS) RaiseCode(static_cast<std::uint32_t>(result), name);
}

void TaskNames::Remove(const std::wstring& name) {
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kKey, name.c_str());
}

std::vector<std::wstring> TaskNames::All() {
    std::vector<std::wstring> names;
    HKEY opened = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, kKey, 0, KEY_QUERY_VALUE, &opened) != ERROR_SUCCESS) {
        return names;
    }
    const RegistryKey key(opened);
    std::wstring name(kLongestName, L'\0');
    for (DWORD index = 0;; ++index) {
        DWORD length = kLongestName;
        if (RegEnumValueW(key.Get(), index, name.data(), &length, nullptr, nullptr, nullptr,
                          nullptr) != ERROR_SUCCESS) {
            break;
        }
        names.push_back(name.substr(0, length));
    }
    std::ranges::sort(names);
    return names;
}

}  // namespace vw
