#pragma once

#include <functional>
#include <string_view>

namespace vw {

class FileSystem;

/// Whether a copy equals what it was made from: the same files and folders below it, each file
/// with the same length and date, as exactly as any drive keeps it (two seconds). Links to folders
/// do not count; they are not copied. Throws the error of the disk.
[[nodiscard]] bool SameContent(FileSystem& files, std::wstring_view original,
                               std::wstring_view copy);

/// Whether a copy has all that is in an existing item, so that the item may be overwritten: a file
/// byte by byte, of a folder every file with its name, length and date. The copy of a folder may
/// have more. `progress` is called now and then. Throws the error of the disk.
[[nodiscard]] bool HasContentOf(FileSystem& files, std::wstring_view original,
                                std::wstring_view copy, const std::function<void()>& progress);

}  // namespace vw
