#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/FileSystem.h"

namespace vw {

class Patience;

/// Whether a path is all of a drive or of a network share.
[[nodiscard]] bool IsRoot(FileSystem& files, std::wstring_view path);

/// Deletes a file, or a folder with all its contents, deepest first; the final "\" of the path is
/// ignored. A link is removed without what it shows. Throws the first failure. Nothing happens
/// when nothing is there. `yield` is called after each entry. With `patience` what others have open
/// is waited for.
void DeleteTree(FileSystem& files, std::wstring_view path, const std::function<void()>& yield,
                Patience* patience = nullptr);

/// Removes an empty folder, and then each parent that has become empty, up to `top`, which stays.
/// Ends without an error at the first folder that holds something else.
void RemoveEmptyFolders(FileSystem& files, std::wstring folder, std::wstring_view top);

/// Makes the folder and every parent that is missing.
void CreateFolders(FileSystem& files, std::wstring_view path);

}  // namespace vw
