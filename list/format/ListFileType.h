#pragma once

#include <string_view>

namespace vw::list_file_type {

// How the system can be told of backup lists (CCommonAPI::RegisterFileType). No command does it.

inline constexpr std::wstring_view kExtension = L".VWL";
inline constexpr std::wstring_view kTypeName = L"VaultwrightFilesList";

/// Below the application folder.
inline constexpr std::wstring_view kIconFile = L"\\vwl.ICO";

/// After the program's path: backs the list up without a window.
inline constexpr std::wstring_view kBackupCommand = L" /B %1";

}  // namespace vw::list_file_type
