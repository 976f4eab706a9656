#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vw {

class FileSystem;

/// Puts the bytes of a list into its file, so that a power cut or an error at any moment leaves
/// either the old list or the new one. They are written to `temporaryPath` first, then beside the
/// list as "<list>.new", which takes the list's place in one step. With `keepOld`, and when the
/// file is no longer `known` because another window saved it, the list that was there stays beside
/// it as "<list>.old". Throws the error of the step that failed.
void ReplaceList(FileSystem& files, std::wstring_view temporaryPath, std::wstring_view listPath,
                 std::string_view bytes, bool keepOld, const std::optional<std::string>& known);

}  // namespace vw
