#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vw {

class FileSystem;

/// What a copy holds when its item lies below a folder with a point in its name: the copy of
/// C:\Users\j.smith\Docs\ is the folder Docs«0001».smith, and in it the folder Docs.
struct NestedCopy {
    std::wstring below;  ///< path of the item's copy below the folder
    bool isFolder = false;
};

/// The one element below `folder`, at any depth, that has its comment file beside it and nothing
/// else around it; nothing when the folder is a copy itself.
[[nodiscard]] std::optional<NestedCopy> FindNestedCopy(FileSystem& files, std::wstring_view folder);

}  // namespace vw
