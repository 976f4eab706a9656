#pragma once

#include <cstdint>
#include <string>

#include "engine/CommentLine.h"
#include "platform/Date.h"

namespace vw {

/// One copy of one item on its way to its place.
struct PendingCopy {
    std::wstring itemPath;
    std::int16_t location = 0;
    std::wstring finalPath;  ///< where the copy belongs
    bool inSeries = true;    ///< copy 1 of its series: the others are shifted up for it
    Date newestDate = kNoDate;
    std::uint64_t fileSize = 0;  ///< of a file item
    Completeness completeness = Completeness::Whole;
    bool replacesCutShort = false;  ///< copy 1 of this item was cut short by a cancel
    std::wstring currentPath;       ///< its present path
    bool isComplete = false;  ///< whole: should this run die, a later one puts it in its place
};

}  // namespace vw
