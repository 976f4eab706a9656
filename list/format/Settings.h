#pragma once

#include <string>
#include <string_view>

#include "platform/ErrorTrap.h"

namespace vw {

class ErrorSink;

/// Names of the settings that the program keeps for each user.
namespace setting {
inline constexpr std::wstring_view kArabic = L"Arabic";          ///< "-1" Arabic, "0" English
inline constexpr std::wstring_view kBackupTo = L"BackupTo";      ///< default destination
inline constexpr std::wstring_view kBackages = L"Backages";      ///< copies to keep; only read
inline constexpr std::wstring_view kStartup = L"Startup";        ///< "-1" starts at log-on, "0" not
inline constexpr std::wstring_view kRecentFile = L"RecentFile";  ///< followed by 1 to 4
}  // namespace setting

/// A yes or no as the settings store it: "-1" or "0".
[[nodiscard]] constexpr std::wstring_view SettingText(bool flag) { return flag ? L"-1" : L"0"; }

namespace MRecentFiles {

/// The user's settings, texts by name, in the registry below
/// HKEY_CURRENT_USER\Software\Tallowmere.Net\<base name of the executable>.
class SettingsStore {
  public:
    /// `executableBaseName` keeps the settings of a renamed program, and of tests, apart.
    SettingsStore(ErrorSink& errors, std::wstring_view executableBaseName);

    /// The text stored under `key`; `whenAbsent` when there is none that can be read as text.
    [[nodiscard]] std::wstring GetSetting(std::wstring_view key,
                                          std::wstring_view whenAbsent) const;

    /// Stores `value` under `key`. A refused write is reported as error 5.
    void SaveSetting(std::wstring_view key, std::wstring_view value);

  private:
    ErrorTrap trap_;
    std::wstring keyPath_;
};

}  // namespace MRecentFiles
}  // namespace vw
