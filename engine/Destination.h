#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "engine/DestinationLock.h"
#include "engine/DisplacedCopies.h"
#include "fsutil/WorkingName.h"
#include "platform/System.h"

namespace vw {

class Patience;

/// A whole copy that is not in its place: its run was killed, or the place is refused.
struct ReadyCopy {
    std::wstring path;
    Date date = kNoDate;     ///< newest date of the item, for the comment
    std::uint64_t copy = 0;  ///< NameKey of the copy-1 path that it was made for
    Date made = kNoDate;     ///< when it was complete on the disk
    Completeness completeness = Completeness::Whole;
};

/// A destination while a run works in it: locked against every other run, cleared
/// of what dead runs left behind, and its entries known, so that asking for a copy that does not
/// exist costs nothing however many copies there are.
class Destination {
  public:
    /// `folder` must exist when Enter is called.
    Destination(System& system, std::wstring_view folder, Patience& patience);

    [[nodiscard]] const std::wstring& Folder() const noexcept { return folder_; }

    /// Takes the lock unless another run has it; the first success also cleans and scans the
    /// folder.
    [[nodiscard]] bool TryEnter();

    /// Whether the runs of other computers cannot be kept out; see DestinationLock.
    [[nodiscard]] bool IsLockedForThisComputerOnly() const noexcept {
        return lock_.IsForThisComputerOnly();
    }

    /// False when certainly nothing is at `copyPath`; true when the disk has to be asked.
    [[nodiscard]] bool MayContain(std::wstring_view copyPath) const;

    /// Whether a path names an entry of the folder itself, not something deeper.
    [[nodiscard]] bool IsTopEntry(std::wstring_view copyPath) const;

    /// Notes that something is at `path` now.
    void OnAdded(std::wstring_view path);

    /// Notes that nothing is at `path` any more.
    void OnRemoved(std::wstring_view path);

    /// Caches the comment of a copy for the call that follows, which would read it again.
    void CacheComment(std::wstring_view copyPath, std::wstring comment);

    /// The comment that was kept for this copy, once, unless something was added since.
    [[nodiscard]] std::optional<std::wstring> TakeCachedComment(std::wstring_view copyPath);

    /// Whether the folder lies on a fixed disk; looked up once.
    [[nodiscard]] bool IsOnFixedDrive();

    /// Path of a working entry of this process for an item and a copy of it.
    [[nodiscard]] std::wstring WorkingPath(WorkingState state, std::wstring_view itemPath,
                                           std::wstring_view copyPath, Date date = kNoDate) const;

    /// Path of the ready copy of an item: `date` and `completeness` are for its comment, `made` is
    /// the time of that comment.
    [[nodiscard]] std::wstring ReadyPath(std::wstring_view itemPath, std::wstring_view copyPath,
                                         Date date, Date made, Completeness completeness) const;

    /// The ready copy of an item that waits for its place; nothing when there is none.
    [[nodiscard]] const ReadyCopy* ReadyOf(std::wstring_view itemPath) const;

    /// Remembers the ready copy of an item. Its `copy` is taken from the place `copyPath`.
    void AddPending(std::wstring_view itemPath, std::wstring_view copyPath, ReadyCopy ready);

    /// Forgets the ready copy of an item: it is in its place now, or it was given up.
    void RemovePending(std::wstring_view itemPath);

    /// Whether a ready copy of another item waits for the place `copyPath`.
    [[nodiscard]] bool IsReservedForOther(std::wstring_view copyPath,
                                          std::wstring_view itemPath) const;

    /// The copies that a process that is gone took out of their series.
    [[nodiscard]] DisplacedCopies& Displaced() noexcept { return displaced_; }

  private:
    void Scan();
    void Clean(std::wstring_view entryName);

    System& system_;
    Patience& patience_;
    std::wstring folder_;  ///< as the names of copies begin
    std::wstring place_;   ///< the same for the disk: "X:" is a root in names only
    DestinationLock lock_;
    ProcessTag self_;
    std::unordered_set<std::uint64_t> entries_;
    std::optional<bool> onFixedDrive_;
    std::wstring cachedCopy_;  ///< empty for none
    std::wstring cachedComment_;
    std::map<std::uint64_t, ReadyCopy> ready_;
    DisplacedCopies displaced_{[this](std::wstring_view name) { Clean(name); }};
};

}  // namespace vw
