#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/System.h"

namespace vw {

/// What the comment file of a copy says.
struct CopyComment {
    std::optional<Date> date;  ///< newest date of the item; nothing when the comment has none
    std::wstring place;        ///< folder that the copy was made from; empty when it is not named
    bool isIncomplete = false;
};

/// Reads the comment of a copy; nothing when the copy has none. Raises what the disk cannot tell,
/// and 5 for a date that is none.
[[nodiscard]] std::optional<CopyComment> ReadCopyComment(System& system,
                                                         std::wstring_view copyPath);

}  // namespace vw
