#pragma once

#include <string_view>

namespace vw::list_file_type {

// How backup lists can be registered with the system (CCommonAPI::RegisterFileType). No command
// does it.

inline constexpr std::wstring_view kExtension = L".VWL";
inline constexpr std::wstring_view kTypeName = L"VaultwrightFilesList";

/// Below the application folder.
inline constexpr std::wstring_view kIconFile = L"\\vwl.ICO";

/// After the program's path: backs the list up without a window.
inline constexpr std::wstring_view kBackupCommand = L" /B %1";

}  // namespace vw::list_file_type
