#pragma once

#include <cstdint>
#include <string>

#include "platform/Date.h"

namespace vw {

/// A row of the upper list: an item that has copies.
struct ShownItem {
    std::wstring name;  ///< the item's own name, as it is restored
    std::wstring text;  ///< the text of its row
    std::wstring type;  ///< "Folder", or the extension
    int location = 0;
    std::wstring originalLocation;  ///< what the row shows; "??" when it is unknown
    std::wstring commentOf;         ///< the copy whose comment was read for it; may be empty
    std::wstring place;             ///< folder that this comment named; may be empty
};

/// A row of the lower list: a copy as the disk described it when it was listed.
struct ListedCopy {
    std::wstring label;
    std::wstring path;
    bool isFolder = false;
    std::int64_t size = 0;  ///< bytes; -1 when it is gone
    Date date = 0;
    std::wstring place;  ///< folder that its own comment named; empty without one
    bool isIncomplete = false;
};

}  // namespace vw
