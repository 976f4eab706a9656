#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Date.h"
#include "platform/ProcessTag.h"

namespace vw {

/// What the name of a comment file adds to the name of its copy.
inline constexpr std::wstring_view kCommentExtension = L".vwc";

/// The file that a run keeps open in its destination so that no other run works there.
inline constexpr std::wstring_view kLockFileName = L"Vaultwright.vwlock";

/// States of an entry in a destination that is no copy (yet, or any more).
enum class WorkingState {
    New,    ///< a copy that is being written: worthless when its process is gone
    Ready,  ///< a whole copy that waits for its place: a later run puts it there
    Old,    ///< a copy that left its series and is being deleted
};

/// Whether a folder copy holds all that its source held when it was made.
enum class Completeness {
    Whole,
    MissesFiles,  ///< some files could not be read
    CutShort,     ///< a cancel left something out
};

/// Name of an entry that is no copy, directly in the destination. It never holds "«", so nobody
/// takes it for a copy. It contains the beginning of the item's name for people.
struct WorkingName {
    WorkingState state = WorkingState::New;
    std::uint64_t item = 0;  ///< NameKey of the item's path
    std::uint64_t copy = 0;  ///< NameKey of the copy-1 path that the entry is meant for
    Date date = kNoDate;     ///< newest date of the item, for the comment (Ready only)
    ProcessTag owner;        ///< only the left-overs of processes that are gone may be touched
    /// When the copy was complete on the disk, in the disk's own time (Ready only); kNoDate in
    /// names that earlier versions wrote. Earlier versions leave names with this field alone.
    Date made = kNoDate;
    Completeness completeness = Completeness::Whole;  ///< of a Ready copy that has `made`

    friend bool operator==(const WorkingName&, const WorkingName&) = default;
};

/// A 64-bit key of a path, the same for all letter cases and with or without a final "\".
[[nodiscard]] std::uint64_t NameKey(std::wstring_view path);

/// The entry's name: with the ending of a comment at most 143 bytes of UTF-8, which shares that
/// encrypt names still take. `firstName` is cut to what fits; its "«" and "»",
/// what no file name may hold, and dots and blanks at its end become "_". A date that a comment
/// could not hold becomes the nearest that it can.
[[nodiscard]] std::wstring FormatWorkingName(const WorkingName& name, std::wstring_view firstName);

/// Takes an entry's name (without a folder) apart; nothing when it is no name that
/// FormatWorkingName gives, since such entries may be deleted.
[[nodiscard]] std::optional<WorkingName> ParseWorkingName(std::wstring_view name);

/// Whether an entry of a folder belongs to the program and not to a user: a working entry, the
/// comment of one, or a lock file, whose name may have an ending.
[[nodiscard]] bool IsOwnEntry(std::wstring_view name);

}  // namespace vw
