#pragma once

#include <string_view>

namespace vw {

class FileSystem;

namespace MFileDosShell {

/// Whether there is a folder at `path`. A drive that cannot answer has none.
[[nodiscard]] bool FolderExists(FileSystem& files, std::wstring_view path);

/// Makes the folder `path` unless it is there; false when neither is possible. Its parent must
/// exist.
[[nodiscard]] bool MakeFolderIfMissing(FileSystem& files, std::wstring_view path);

}  // namespace MFileDosShell

}  // namespace vw
