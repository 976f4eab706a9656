#pragma once

#include <string>
#include <string_view>

namespace vw {

/// Names the folder that relative paths are completed with. A process keeps the drive of its
/// current folder in use, so the program works elsewhere. Empty: the current folder, as at first.
void CompleteRelativePathsIn(std::wstring folder);
[[nodiscard]] const std::wstring& FolderOfRelativePaths() noexcept;

/// The absolute form of a typed path: separators as "\", double ones collapsed, "." and ".."
/// resolved, relative paths completed ("C:" is the current folder of that drive).
[[nodiscard]] std::wstring AbsolutePath(std::wstring_view path);

/// The form in which every path is handed to the system: absolute, with the prefix that lifts the
/// limit of 260 characters ("\\?\" or "\\?\UNC\"). No final "\" but at a drive root. Throws 52 for
/// an empty path and for one that is too long for the system (more than 32,766 characters).
[[nodiscard]] std::wstring SystemPath(std::wstring_view path);

/// Whether a path means a device, such as "NUL" or "con.txt" in the current folder. No file or
/// folder can have such a path.
[[nodiscard]] bool NamesDevice(std::wstring_view path);

/// The same place without the prefix that lifts the limit of 260 characters: "E:\Store" for
/// "\\?\E:\Store". A path without a drive or server behind the prefix keeps it.
[[nodiscard]] std::wstring WithoutLongPrefix(std::wstring_view path);

/// Whether `inner` is `outer` or lies in it, by whole components and without regard to case or to
/// the prefix of long paths.
[[nodiscard]] bool PathContains(std::wstring_view outer, std::wstring_view inner);

}  // namespace vw
