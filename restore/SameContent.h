#pragma once

#include <string_view>

namespace vw {

class FileSystem;

/// Whether a copy stands for what it was made from: the same files and folders below it, each file
/// with the same length and date, as exactly as any drive keeps it (two seconds). Links to folders
/// do not count; they are not copied. Raises what the disk cannot tell.
[[nodiscard]] bool SameContent(FileSystem& files, std::wstring_view original,
                               std::wstring_view copy);

}  // namespace vw
