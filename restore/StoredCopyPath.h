#pragma once

#include <string>

namespace vw {

class FileSystem;

/// Whether `name` in `folder` would be a stored copy or lie in one: an entry of a copy folder that
/// is named so. Copy folders are `copyFolder` and \Backup of every drive. Links are followed; the
/// end of the path need not exist. Throws the error of the disk.
[[nodiscard]] bool IsInStoredCopy(FileSystem& files, const std::wstring& folder,
                                  const std::wstring& name, const std::wstring& copyFolder);

}  // namespace vw
