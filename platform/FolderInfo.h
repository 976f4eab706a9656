#pragma once

#include <string_view>

namespace vw {

/// Copies the dates and the hidden, system and read-only marks of a folder of the real disk; see
/// FileSystem::CopyFolderInfo.
void CopyInfoOfFolder(std::wstring_view from, std::wstring_view to, bool keepMarks);

}  // namespace vw
