#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Date.h"

namespace vw {

/// A row of the upper list: an item that has copies. Its cells are made from it, and commands read
/// it instead of them.
struct ShownItem {
    std::wstring name{};  ///< the item's own name, as it is restored
    std::wstring text{};  ///< the text of its row
    std::wstring type{};  ///< "Folder", or the extension; empty outside the details view
    int location = 0;
    /// What the row shows; kUnknownLocation when it is unknown, empty outside the details view.
    std::wstring originalLocation{};
    std::wstring commentOf{};  ///< the copy whose comment was read for it; may be empty
    std::wstring place{};      ///< folder that this comment named; may be empty
};

/// Whether the type that a row shows is that of a folder.
[[nodiscard]] inline bool IsFolderType(std::wstring_view type) { return type == L"Folder"; }

/// A row of the lower list: a copy as the disk described it when it was listed.
struct ListedCopy {
    std::wstring label;
    std::wstring path;
    bool isFolder = false;
    std::int64_t size = 0;  ///< bytes; -1 when it is gone
    Date date = kNoDate;
    std::wstring place;  ///< folder that its own comment named; empty without one
    bool isIncomplete = false;
};

/// What a command works on, as the lists showed it when the command was given; what is selected
/// may change before it ends.
struct CopySelection {
    std::wstring folder;  ///< of the copies
    ShownItem item;
    ListedCopy copy;  ///< the selected one; without a path when none is selected
    std::vector<ListedCopy> copies;
};

}  // namespace vw
