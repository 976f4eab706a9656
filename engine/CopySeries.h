#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/CommentStore.h"
#include "engine/DestinationSession.h"
#include "engine/EnginePart.h"
#include "engine/PendingCopy.h"
#include "platform/RuntimeError.h"

namespace vw {

/// How the older copies make room for a new one.
enum class Room {
    Rotate,            ///< all copies move up
    CompleteRotation,  ///< an earlier run began it: only those below the lowest gap move up
    Replace,           ///< the new copy replaces what is in its place
};

/// What a rotation has done. Undone: nothing has changed. Broken: some copies could not be moved
/// back.
enum class Rotation { Done, RolledBack, RollbackFailed };

/// What became of a copy that an earlier run left ready.
enum class ReadyOutcome { None, Finished, Stuck };

/// The copies of an item: numbers them anew, puts a new one in its place, deletes one. Works in the
/// destination that the session has entered.
class CopySeries final : private EnginePart {
  public:
    CopySeries(const EngineContext& context, DestinationSession& session, CommentStore& comments);

    // Placing (CopySeries.cpp).

    /// Puts a new copy into its place, with its comment. False when it could not; the error has
    /// been reported.
    [[nodiscard]] bool PlaceCopy(PendingCopy& copy, Room room);

    /// Renames an entry to a working name and deletes it then, so that a partially deleted entry is
    /// never mistaken for a complete copy. All or nothing. Throws the error of the disk.
    void DeleteAtomically(std::wstring_view entry, std::wstring_view itemPath,
                          std::wstring_view place);

    /// Reports that a copy in its place is not whole.
    void ReportIncomplete(const PendingCopy& copy);

    // Copies that an earlier run left ready (ReadyCopies.cpp).

    /// Puts the ready copy of an item into its place, or drops it when a later one is there.
    [[nodiscard]] ReadyOutcome FinishReadyCopy(std::wstring_view path, std::int16_t location,
                                               std::wstring_view place);

    // Rotation (Rotation.cpp).

    /// Makes room for copy 1. Errors are reported.
    [[nodiscard]] Rotation Rotate(std::wstring_view path, std::int16_t location, Room room);

  private:
    /// What came of moving copies up, and the error that stopped it.
    struct Shift {
        Rotation outcome = Rotation::Done;
        std::optional<RuntimeError> error;
    };

    [[nodiscard]] bool MakeReady(PendingCopy& copy, const std::wstring& comment);
    void RefuseForeign(std::wstring_view path);
    void MoveIntoPlace(const PendingCopy& copy, const std::wstring& comment);

    void PutReadyInPlace(const PendingCopy& copy);
    [[nodiscard]] bool IsMadeAfter(std::wstring_view copyPath, Date made);
    [[nodiscard]] bool IsCutShortCopyOf(std::wstring_view path, std::wstring_view comment);

    [[nodiscard]] bool WasCutOff(std::wstring_view path, std::int16_t location);
    [[nodiscard]] Shift ShiftCopies(std::wstring_view path, std::int16_t location, int last);
    [[nodiscard]] bool MoveBack(const std::vector<std::pair<std::wstring, std::wstring>>& moved);
    [[nodiscard]] int LowestGap(std::wstring_view path, std::int16_t location);

    DestinationSession& session_;
    CommentStore& comments_;
};

}  // namespace vw
