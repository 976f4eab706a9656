#include "list/format/Settings.h"

#include <cwchar>
#include <optional>
#include <utility>

#include "platform/ErrorTrap.h"
#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw::MRecentFiles {
namespace {

constexpr std::wstring_view kCompanyKey = L"Software\\Tallowmere.Net\\";

std::optional<std::wstring> ReadText(const std::wstring& keyPath, const std::wstring& name) {
    std::wstring text;
    DWORD bytes = 0;
    LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, keyPath.c_str(), name.c_str(), RRF_RT_REG_SZ,
                                  nullptr, nullptr, &bytes);
    // Another instance may store a longer text between asking for the size and reading.
    while (status == ERROR_SUCCESS) {
        text.resize(bytes / sizeof(wchar_t) + 1);
        bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        status = RegGetValueW(HKEY_CURRENT_USER, keyPath.c_str(), name.c_str(), RRF_RT_REG_SZ,
                              nullptr, text.data(), &bytes);
        if (status == ERROR_SUCCESS) {
            text.resize(std::wcslen(text.c_str()));
            return text;
        }
        if (status == ERROR_MORE_DATA) status = ERROR_SUCCESS;
    }
    return std::nullopt;
}

}  // namespace

SettingsStore::SettingsStore(ErrorSink& errors, std::wstring_view executableBaseName)
    : trap_(errors, L"Module", L"MRecentFiles"),
      keyPath_(std::wstring(kCompanyKey).append(executableBaseName)) {}

std::wstring SettingsStore::GetSetting(std::wstring_view key, std::wstring_view whenAbsent) const {
    return trap_.Or(std::wstring(whenAbsent), L"GetSetting", [&] {
        return ReadText(keyPath_, std::wstring(key)).value_or(std::wstring(whenAbsent));
    });
}

void SettingsStore::SaveSetting(std::wstring_view key, std::wstring_view value) {
    trap_(L"SaveSetting", [&] {
        HKEY opened = nullptr;
        if (RegCreateKeyExW(HKEY_CURRENT_USER, keyPath_.c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                            nullptr, &opened, nullptr) != ERROR_SUCCESS) {
            Throw(error_number::kInvalidCall, L"HKEY_CURRENT_USER\\" + keyPath_);
        }
        const RegistryKey settings(opened);
        const std::wstring text(value);
        const auto* const data = reinterpret_cast<const BYTE*>(text.c_str());
        const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
        if (RegSetValueExW(settings.Get(), std::wstring(key).c_str(), 0, REG_SZ, data, size) !=
            ERROR_SUCCESS) {
            Throw(error_number::kInvalidCall, L"HKEY_CURRENT_USER\\" + keyPath_);
        }
    });
}

}  // namespace vw::MRecentFiles
