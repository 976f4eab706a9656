#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/CommentLine.h"
#include "engine/Destination.h"
#include "engine/ListedItems.h"
#include "fsutil/CopyDates.h"
#include "fsutil/PathText.h"
#include "fsutil/Patience.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"
#include "platform/System.h"

namespace vw {

namespace MFileDosShell {
struct Survey;
}  // namespace MFileDosShell
class ProgramControl;
struct RunText;
struct SourceFolder;
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
    void KeepCopiesOfMissingItems(bool keep) noexcept { keepMissing_ = keep; }

    /// Whether the destination takes no copy of this item: one lies in the other, or the path of
    /// one begins with that of the other.
    [[nodiscard]] bool IsRefused(std::wstring_view path) const;

    /// Takes the destination from the current list (an empty list is made when it is missing) and
    /// checks it.
    void GetBackupTo();

    /// Tells the user that the destination folder is missing, and ends the program, when it is.
    void ErrorOnBackupFolderNotExists();

    /// The location number of an item: the smallest whose copy 1 is free or comes from the item's
    /// own folder. Always 0 for a folder. -1 after an error, which has been told.
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
    /// replaced (58), nor is anything where nothing stood.
    void Extract(std::wstring_view copyPath, const std::wstring& target, const TargetState& before);

    /// Does something with the copies of a folder while no backup can move them, of this process or
    /// another; waits for one that goes on. False when the user cancelled the wait. What `work`
    /// throws comes out.
    [[nodiscard]] bool InDestination(std::wstring_view folder, const std::function<void()>& work);

    /// Deletes a copy, within InDestination. All or nothing: one that somebody uses stays whole.
    /// Raises the error of the disk.
    void DeleteCopy(std::wstring_view copyPath);

    /// Asks the work to stop at the next file. Harmless when none is going on.
    void Abort() noexcept { state_.cancelRequested = true; }

    /// Builds, step by step, the batch file for the external packer; the last step runs it through
    /// `shellPath`.
    /// Part of the given interface; not called by the program.
    void PackageBat_(std::wstring_view archive, std::wstring_view files,
                     std::wstring_view workingFolder, bool continued, bool finished,
                     const std::function<void(std::wstring_view)>& shellPath);

  private:
    /// What a backup has copied of its item.
    struct CopyTally {
        std::wstring itemPath;
        bool isFolder = false;
        std::size_t copied = 0;
        std::size_t failed = 0;
        bool givenUp = false;      ///< the disk is full or a drive is gone: no copy comes of it
        bool cutShort = false;     ///< a cancel left something out
        bool holdsItself = false;  ///< the copy would lie in what is copied
    };

    /// One copy of one item on its way to its place.
    struct NewCopy {
        std::wstring itemPath;
        std::int16_t location = 0;
        std::wstring place;    ///< where the copy belongs
        bool inSeries = true;  ///< copy 1 of its series: the others are shifted up for it
        Date newestDate = 0;
        std::uint64_t fileSize = 0;  ///< of a file item
        Completeness completeness = Completeness::Whole;
        bool overCutShort = false;  ///< copy 1 of this item was cut short by a cancel
        std::wstring entry;         ///< its present path
        bool ready = false;  ///< whole: should this run die, a later one puts it in its place
    };

    /// Keeps the destination of the state locked as long as it lives.
    class Visit;
    enum class Entrance { Entered, Cancelled, Refused };
    /// How the older copies make room for a new one.
    enum class Room {
        Rotate,            ///< all copies move up
        CompleteRotation,  ///< an earlier run began it: only those below the lowest gap move up
        Replace,           ///< the new copy replaces what is in its place
    };
    /// What became of a copy that an earlier run left ready.
    enum class ReadyOutcome { None, Finished, Stuck };
    /// Differs: the incomplete copy is not of what the item holds now.
    enum class Completion { Done, Differs };
    struct CompletionPlan;
    /// Undone: nothing has changed. Broken: some copies could not even go back.
    enum class Rotation { Done, Undone, Broken };

    // The run (CPackageRun.cpp).
    void StartRun();
    [[nodiscard]] std::wstring ReadCurrentList();
    void LearnList(std::wstring_view text);
    void BackUpUnderLock(std::wstring_view path, bool isFolder, bool subFolders);
    [[nodiscard]] Entrance EnterDestination();
    [[nodiscard]] Entrance WaitForDestination();

    // One item (CPackageItem.cpp).
    void BackUpItem(std::wstring_view path, std::int16_t location, bool isFolder, bool subFolders,
                    std::wstring_view givenCopy);
    void TellNoChange(std::wstring_view path);
    void Refuse(std::wstring_view path);
    void CheckFreeSpace(std::int64_t itemBytes);
    void MakeCopy(NewCopy& copy, bool isFolder, bool subFolders, Room room);
    void TellIncomplete(const NewCopy& copy);

    // Files in the cloud, encrypted files (CPackageContents.cpp).
    [[nodiscard]] bool AgreesToContents(std::wstring_view path, const MFileDosShell::Survey& survey,
                                        bool subFolders);

    // Items whose names collide (CPackageCollision.cpp).
    [[nodiscard]] bool Collides(std::wstring_view path, std::int16_t location, bool isFolder,
                                const std::wstring& place);
    [[nodiscard]] bool LosesTo(const std::vector<ListedItem>& rivals, std::wstring_view path,
                               std::int16_t location, bool owns);
    [[nodiscard]] bool OwnsCopyAt(std::wstring_view path, std::wstring_view copyPath);
    [[nodiscard]] bool LiesInCopyOfOther(const std::wstring& place);
    [[nodiscard]] bool HoldsCopyOfOther(const std::wstring& place);
    [[nodiscard]] bool MeetsCommentOfOther(const std::wstring& place);

    // Completing a copy (CPackageCompletion.cpp).
    [[nodiscard]] Completion CompleteCopy(const NewCopy& copy, bool subFolders);
    [[nodiscard]] bool PlanCompletion(const std::wstring& copyFolder, const std::wstring& relative,
                                      bool subFolders, const std::wstring& itemPath,
                                      CompletionPlan& plan);
    void AddMissing(const NewCopy& copy, const CompletionPlan& plan, CopyTally& tally);
    void AddFile(const NewCopy& copy, const std::wstring& source, const std::wstring& target,
                 std::uint64_t size, CopyTally& tally);

    // Copying (CPackageCopy.cpp).
    void BackupFolder(std::wstring_view sPackage, std::wstring_view folder, std::wstring_view root,
                      bool bSubFolder, CopyTally& tally);
    [[nodiscard]] bool MustStop(CopyTally& tally) const;
    bool CopyStep(std::wstring_view procedure, std::uint64_t size, CopyTally& tally,
                  const std::function<void()>& step);
    void GiveUpIfGone(CopyTally& tally);
    [[nodiscard]] bool Stands(std::wstring_view path);
    void BackupFile(std::wstring_view destination, std::wstring_view source, std::uint64_t size,
                    CopyTally& tally);
    [[nodiscard]] bool IsTooLargeForDrive(std::uint64_t size);
    void CheckFolderCopy(const std::wstring& copyFolder, const std::wstring& folder,
                         const SourceFolder& source, CopyTally& tally);
    void CheckFileCopy(const std::wstring& copy, const std::wstring& source,
                       std::uint64_t sourceSize, CopyTally& tally);

    // Copying back (CPackageExtract.cpp).
    void ExtractTo(std::wstring_view copyPath, const std::wstring& target,
                   const TargetState& before);
    void ExtractFolder(const std::wstring& copy, const std::wstring& target,
                       const TargetState& before);
    bool EnterTarget(const std::wstring& target, const TargetState* before);
    void ExtractFile(const std::wstring& copy, const std::wstring& target, std::uint64_t size,
                     const std::function<bool(const FileFacts&)>& mayReplace);

    void KeepFolderInfo(const std::wstring& from, const std::wstring& to,
                        FileSystem::Marks marks = FileSystem::Marks::Replace);

    // Placing (CPackagePlace.cpp).
    [[nodiscard]] bool PlaceCopy(NewCopy& copy, Room room);
    [[nodiscard]] bool MakeReady(NewCopy& copy, const std::wstring& comment);
    void RefuseForeign(std::wstring_view path);
    [[nodiscard]] ReadyOutcome FinishReadyCopy(std::wstring_view path, std::int16_t location,
                                               std::wstring_view place);
    void PutReadyInPlace(const NewCopy& copy);
    [[nodiscard]] bool IsMadeAfter(std::wstring_view copyPath, Date made);
    [[nodiscard]] bool IsCutShortCopyOf(std::wstring_view path, std::wstring_view comment);
    void Condemn(std::wstring_view entry, std::wstring_view itemPath, std::wstring_view place);
    void TakePlace(const NewCopy& copy, const std::wstring& comment);
    [[nodiscard]] std::wstring PrepareComment(const NewCopy& copy);
    void Remove(std::wstring_view path) noexcept;

    // Rotation (CPackageRotation.cpp).
    [[nodiscard]] Rotation Rotate(std::wstring_view path, std::int16_t location, Room room);
    [[nodiscard]] bool WasCutOff(std::wstring_view path, std::int16_t location);
    void ShiftCopies(std::wstring_view path, std::int16_t location, int last, Rotation& outcome);
    [[nodiscard]] bool MoveBack(const std::vector<std::pair<std::wstring, std::wstring>>& moved);
    [[nodiscard]] int LowestGap(std::wstring_view path, std::int16_t location);
    void RemoveEmptyParents(std::wstring_view copyPath);

    // Questions (CPackage.cpp, CPackageComment.cpp).
    [[nodiscard]] const std::wstring& Target() const noexcept {
        return elsewhere_.empty() ? state_.BackupTo : elsewhere_;
    }
    /// The destination as a folder of the disk.
    [[nodiscard]] std::wstring TargetFolder() const {
        return MFileDosShell::DestinationFolder(Target());
    }
    [[nodiscard]] bool CopyStands(std::wstring_view copyPath);
    [[nodiscard]] std::int16_t FindLocation(std::wstring_view path);
    [[nodiscard]] bool IsNumberOfOther(std::wstring_view path, int number, std::wstring_view copy);
    [[nodiscard]] bool IsCommentNameTaken(std::wstring_view copyPath);
    [[nodiscard]] std::optional<FileFacts> Stat(std::wstring_view path);
    [[nodiscard]] std::wstring ReadCommentText(std::wstring_view copyPath);
    [[nodiscard]] std::wstring ReadFirstComment(std::wstring_view copyPath);
    [[nodiscard]] std::wstring TryReadComment(std::wstring_view copyPath);
    [[nodiscard]] std::wstring CommentOf(std::wstring_view copyPath);
    [[nodiscard]] Date DateOf(std::wstring_view copyPath, std::wstring_view comment);
    [[nodiscard]] std::wstring NamedLocation(std::wstring_view comment);
    [[nodiscard]] std::wstring OriginalLocation(std::wstring_view comment);

    void MoveEntry(std::wstring_view from, std::wstring_view to,
                   std::uint64_t patience = Patience::kUsual);
    [[nodiscard]] std::string ReadCommentFile(const std::wstring& file);
    void Tell(const RunText& text, std::wstring_view path);

    System& system_;
    ErrorTrap trap_{system_.errors, L"Class Module", L"CPackage"};
    ProgramState& state_;
    ProgressReporter& progress_;
    ProgramControl& program_;
    DateSeparators separators_;
    FileSystem::CopyProgress duringCopy_;
    std::wstring elsewhere_;  ///< where copies go instead of the destination of the list
    bool keepMissing_ = false;
    Patience patience_;
    bool visiting_ = false;
    std::unique_ptr<Destination> destination_;
    ListedItems listed_;  ///< of the run that is going on
    std::wstring refusedDestination_;
    std::wstring toldUnlocked_;  ///< the destination without a lock file reported last
};

}  // namespace vw
