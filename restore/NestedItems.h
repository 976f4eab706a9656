#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vw {

struct CopyGroup;
class FileSystem;
class MessagePump;

/// An item below a folder with a point in its name. The copies of C:\j.smith\My\Docs\ are
/// My\Docs in the folders Docs«0001».smith, Docs«0002».smith and so on; other items may have
/// theirs in the same folders. The last name is always the one before the marks.
struct NestedItem {
    std::wstring below;      ///< path of its copies below each of the folders
    std::wstring commentIn;  ///< the folder with its comment; empty when it has none
    bool hasCopy = false;    ///< whether one of the folders holds a copy; a comment may be all
    bool isFolder = false;   ///< of its lowest copy
};

/// The items whose copies are in the folders of a group. Only the folders of a group without
/// comments hold such items. An item is recognised by a comment, at any depth, for all of the
/// folders. A copy without a comment counts by its name, unless its folder holds anything else:
/// then it may be the user's own, and the folder a copy itself.
[[nodiscard]] std::vector<NestedItem> FindNestedItems(FileSystem& files, MessagePump& pump,
                                                      const CopyGroup& group);

/// Whether a folder holds a copy, or a comment, of one of the items; otherwise it is a copy itself.
[[nodiscard]] bool HoldsAny(FileSystem& files, std::wstring_view folder,
                            const std::vector<NestedItem>& items);

}  // namespace vw
