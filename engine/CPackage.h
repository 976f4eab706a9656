#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "engine/BackupRun.h"
#include "engine/CommentStore.h"
#include "engine/CopyRestorer.h"
#include "engine/CopySeries.h"
#include "engine/DestinationSession.h"
#include "engine/EnginePart.h"
#include "engine/ItemBackup.h"
#include "engine/LocationNumbers.h"
#include "fsutil/CopyDates.h"
#include "fsutil/Patience.h"

namespace vw {

class TargetState;

/// The backup engine. One for the whole program, made on first use. The public procedures trap
/// their errors: an error is reported and ends the procedure, and what was done before stays.
/// Exceptions: InDestination and DeleteCopy throw, BackupItem has no trap of its own.
class CPackage final : public CopyDates {
  public:
    CPackage(System& system, ProgramState& state, ProgressReporter& progress,
             ProgramControl& program);

    /// Backs up every item of the current list that changed since its newest copy.
    void BackupAll();

    /// Backs up the one item that a command line names, as a file, to the destination in use.
    void BackupItem(std::wstring_view path);

    /// Backs up one item: location number, whether it is a folder, whether its sub-folders belong
    /// to it, and the copy's path when the caller gives one (a safety copy: nothing is rotated and
    /// the change test is left out).
    void BackupPath(std::wstring_view sPath, std::int16_t iSP, bool bPathIsFolder, bool bSubFolder,
                    std::wstring_view sPackage = {});

    /// Sets whether an item that does not exist keeps its copies as they are; otherwise they are
    /// shifted up (the default).
    void KeepCopiesOfMissingItems(bool keep) noexcept { item_.KeepCopiesOfMissingItems(keep); }

    /// Whether the destination takes no copy of this item: one lies in the other, or the path of
    /// one begins with that of the other.
    [[nodiscard]] bool IsRefused(std::wstring_view path) const;

    /// Takes the destination from the current list (an empty list is made when it is missing) and
    /// checks it.
    void GetBackupTo();

    /// Tells the user that the destination folder is missing, and ends the program, when it is.
    void ErrorOnBackupFolderNotExists();

    /// The location number of an item: the smallest whose copy 1 is free or comes from the item's
    /// own folder. Always 0 for a folder. -1 after an error, which has been reported.
    [[nodiscard]] std::int16_t LocationID(std::wstring_view path);

    /// Shifts the copies of an item up by one; copy number N leaves the series. All or nothing:
    /// when one cannot be moved the others go back. False after an error, which has been reported.
    bool RenamePackages(std::wstring_view sPath, std::int16_t iSP);

    /// The comment file of a copy.
    [[nodiscard]] static std::wstring PackageCommentFile(std::wstring_view copyPath);

    /// The comment of a copy; empty when it has none.
    [[nodiscard]] std::wstring PackageComment(std::wstring_view copyPath);

    /// Stores the comment of a copy.
    void PackageComment(std::wstring_view copyPath, std::wstring_view text);

    [[nodiscard]] Date PackageDate(std::wstring_view copyPath) override;

    /// The folder that a copy was made from; "??" when it is unknown or no longer exists.
    [[nodiscard]] std::wstring PackageOriginalLocation(std::wstring_view copyPath);

    /// Whether the comment of a copy marks it as incomplete: a cancel cut it short, or files could
    /// not be read. False after an error, which has been reported.
    [[nodiscard]] bool IsMarkedIncomplete(std::wstring_view copyPath);

    /// Copies a stored copy back into a folder, under the item's own name, over what is there:
    /// folders are merged, a file is replaced in one step. Read-only files are not replaced (70).
    void Extract(std::wstring_view copyPath, std::wstring_view destinationFolder, bool showMessage);

    /// The same to the exact path `target`. Files that are not as `before` has them are not
    /// replaced (58), nor is anything where nothing was.
    void Extract(std::wstring_view copyPath, const std::wstring& target, const TargetState& before);

    /// Does something with the copies of a folder while no backup can move them, of this process or
    /// another; waits for one that goes on. False when the user cancelled the wait. What `work`
    /// throws comes out.
    [[nodiscard]] bool InDestination(std::wstring_view folder, const std::function<void()>& work);

    /// Deletes a copy, within InDestination. All or nothing: one that somebody uses stays whole.
    /// Throws the error of the disk.
    void DeleteCopy(std::wstring_view copyPath);

    /// Asks the work to stop at the next file. Harmless when none is going on.
    void Abort() noexcept { state_.cancel.Request(); }

    /// Builds, step by step, the batch file for the external packer; the last step runs it through
    /// `shellPath`.
    /// Part of the given interface; not called by the program.
    void PackageBat_(std::wstring_view archive, std::wstring_view files,
                     std::wstring_view workingFolder, bool continued, bool finished,
                     const std::function<void(std::wstring_view)>& shellPath);

  private:
    ErrorTrap trap_;
    System& system_;
    ProgramState& state_;
    Patience patience_;
    EngineContext context_;
    DestinationSession session_;
    CommentStore comments_;
    LocationNumbers numbers_;
    CopySeries series_;
    ItemBackup item_;
    BackupRun run_;
    CopyRestorer restorer_;
};

}  // namespace vw
