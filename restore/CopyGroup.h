#pragma once

#include <string>
#include <vector>

namespace vw {

/// An entry of the copy folder that is named like a copy.
struct CopyEntry {
    std::wstring path;
    bool isFolder = false;
    bool hasComment = false;  ///< a comment file is beside it
};

/// The copies of one item: those whose names differ in the copy number only.
struct CopyGroup {
    std::wstring origin;  ///< the item's name
    int location = 0;
    std::vector<CopyEntry> copies;  ///< the first one is the lowest
    bool hasComment = false;  ///< there is one, of a copy of the series or of one that is gone

    /// Whether the copies may be folders around those of items below a folder with a point in its
    /// name. The copies of a folder that is an item itself have a comment beside them.
    [[nodiscard]] bool MayHoldOthers() const;
};

/// Puts each copy to its series, however the copies of items are mixed. `copies` are in order of
/// their names, the series come in that of their first copies. `comments` are the paths of the
/// comment files beside them.
[[nodiscard]] std::vector<CopyGroup> GroupCopies(std::vector<CopyEntry> copies,
                                                 const std::vector<std::wstring>& comments);

}  // namespace vw
