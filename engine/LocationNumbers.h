#pragma once

#include <cstdint>
#include <string_view>

#include "engine/CommentStore.h"
#include "engine/DestinationSession.h"
#include "engine/EnginePart.h"

namespace vw {

/// The numbers that distinguish files of one name from different folders.
class LocationNumbers final : private EnginePart {
  public:
    LocationNumbers(const EngineContext& context, DestinationSession& session,
                    CommentStore& comments);

    /// The location number of an item: the smallest whose copy 1 is free or comes from the item's
    /// own folder. Always 0 for a folder. `isThere`: the item was found on the disk, so its folder
    /// is not asked about. Throws kOverflow when none is free.
    [[nodiscard]] std::int16_t Find(std::wstring_view path, bool isThere = false);

  private:
    [[nodiscard]] bool OwnsCopy(std::wstring_view path, bool isThere, std::wstring_view copy);
    [[nodiscard]] bool IsNumberOfOther(std::wstring_view path, int number, std::wstring_view copy);
    [[nodiscard]] bool IsCommentNameTaken(std::wstring_view copyPath);

    DestinationSession& session_;
    CommentStore& comments_;
};

}  // namespace vw
