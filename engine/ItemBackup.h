#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/CollisionCheck.h"
#include "engine/CommentStore.h"
#include "engine/ContentsCheck.h"
#include "engine/CopyCompletion.h"
#include "engine/CopySeries.h"
#include "engine/DestinationSession.h"
#include "engine/EnginePart.h"
#include "engine/ItemCopier.h"
#include "engine/ListedItems.h"
#include "engine/LocationNumbers.h"
#include "fsutil/CopyDates.h"
#include "list/format/ListLine.h"

namespace vw {

/// Backs up one item: decides whether it changed, has it copied and put into its series. Works in
/// the destination that the session has entered.
class ItemBackup final : private EnginePart {
  public:
    ItemBackup(const EngineContext& context, CopyDates& dates, DestinationSession& session,
               CommentStore& comments, LocationNumbers& numbers, CopySeries& series);

    /// Backs up an item. `givenCopy` is the path of its copy when the caller gives one: nothing is
    /// rotated then, and the change test is left out. `known` are the facts of the item that were
    /// just asked for; without them the disk is asked. Throws what concerns the item as a whole.
    void BackUp(std::wstring_view path, std::int16_t location, ItemKind kind,
                std::wstring_view givenCopy, const std::optional<FileInfo>& known);

    /// The items of the run, whose copies may have colliding names.
    [[nodiscard]] ListedItems& Listed() noexcept { return listed_; }

    /// Sets whether an item that does not exist keeps its copies as they are.
    void KeepCopiesOfMissingItems(bool keep) noexcept { keepMissing_ = keep; }

    /// Whether the destination takes no copy of this item: one lies in the other, or the path of
    /// one begins with that of the other.
    [[nodiscard]] bool IsRefused(std::wstring_view path) const;

  private:
    void MakeCopy(PendingCopy& copy, ItemKind kind, Room room);
    void ReportNoChange(std::wstring_view path);
    void Refuse(std::wstring_view path);
    void CheckFreeSpace(std::int64_t itemBytes);

    CopyDates& dates_;
    DestinationSession& session_;
    CommentStore& comments_;
    CopySeries& series_;
    ItemCopier copier_;
    CopyCompletion completion_;
    CollisionCheck collisions_;
    ContentsCheck contents_;
    ListedItems listed_;
    bool keepMissing_ = false;
    /// The last answer about free space; see CheckFreeSpace.
    struct FreeSpace {
        std::wstring folder;
        double bytes = 0;
        std::uint64_t asked = 0;
    };
    std::optional<FreeSpace> freeSpace_;
};

}  // namespace vw
