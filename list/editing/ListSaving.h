#pragma once

#include <string_view>

namespace vw {

class FileSystem;

/// Puts the bytes of a list into its file, so that a power cut or an error at any moment leaves
/// either the old list or the new one. They are written to `temporaryPath` first, then beside the
/// list as "<list>.new", which takes the list's place in one step. With `keepOld` the list that was
/// there stays beside it as "<list>.old". Raises what goes wrong.
void ReplaceList(FileSystem& files, std::wstring_view temporaryPath, std::wstring_view listPath,
                 std::string_view bytes, bool keepOld);

}  // namespace vw
