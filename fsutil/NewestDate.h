#pragma once

#include <functional>
#include <string_view>

#include "platform/Date.h"
#include "platform/FileSystem.h"

namespace vw {

/// The last-modified date of a file; for a folder the newest one of the files in its tree;
/// kMissingDate for nothing and for a tree without files. Links are not entered and what cannot be
/// read is left out. `yield` is called after each entry.
[[nodiscard]] Date NewestFileDate(FileSystem& files, std::wstring_view path,
                                  const std::function<void()>& yield);

}  // namespace vw
