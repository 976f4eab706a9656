#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/CommentStore.h"
#include "engine/DestinationSession.h"
#include "engine/EnginePart.h"
#include "engine/ListedItems.h"
#include "engine/LocationNumbers.h"

namespace vw {

/// Finds items whose copies would have each other's names.
class CollisionCheck final : private EnginePart {
  public:
    CollisionCheck(const EngineContext& context, DestinationSession& session,
                   CommentStore& comments, LocationNumbers& numbers);

    /// Whether an item must not be copied to `place`, because copies of another item are there or
    /// an item of the list has the better right to it.
    [[nodiscard]] bool Collides(std::wstring_view path, std::int16_t location, bool isFolder,
                                const std::wstring& place, const ListedItems& listed);

  private:
    [[nodiscard]] bool IsOutrankedBy(const std::vector<ListedItem>& rivals, std::wstring_view path,
                                     std::int16_t location, bool owns, const ListedItems& listed);
    [[nodiscard]] bool OwnsCopyAt(std::wstring_view path, std::wstring_view copyPath);
    [[nodiscard]] bool LiesInCopyOfOther(const std::wstring& place);
    [[nodiscard]] bool HoldsCopyOfOther(const std::wstring& place);
    [[nodiscard]] bool TakesCommentNameOfOther(const std::wstring& place);

    DestinationSession& session_;
    CommentStore& comments_;
    LocationNumbers& numbers_;
};

}  // namespace vw
