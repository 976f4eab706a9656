#include <algorithm>
#include <utility>

#include "engine/CopyName.h"
#include "engine/ItemBackup.h"
#include "engine/ItemChecks.h"
#include "engine/RunTexts.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "platform/Clock.h"
#include "platform/ExitStatus.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/SystemPath.h"
#include "platform/TextCase.h"

namespace vw {

namespace {

// Room that a drive keeps besides the item itself.
constexpr double kSpareBytes = 50.0 * 1024 * 1024;

// How long an answer about free space serves the next items.
constexpr std::uint64_t kFreshMilliseconds = 100;

}  // namespace

ItemBackup::ItemBackup(const EngineContext& context, CopyDates& dates, DestinationSession& session,
                       CommentStore& comments, LocationNumbers& numbers, CopySeries& series)
    : EnginePart(context),
      dates_(dates),
      session_(session),
      comments_(comments),
      series_(series),
      copier_(context, session),
      completion_(context, session, comments, series, copier_),
      collisions_(context, session, comments, numbers),
      contents_(context) {}

void ItemBackup::BackUp(std::wstring_view path, std::int16_t location, ItemKind kind,
                        std::wstring_view givenCopy, const std::optional<FileInfo>& known) {
    const bool isFolder = kind != ItemKind::File;
    const auto facts = known ? known : system_.files.Stat(path);
    if (facts && IsRefused(path)) {
        Refuse(path);
        return;
    }
    if (facts && facts->isLink && !facts->isFolder) {
        Notice(run_text::kLinkLeftOut, path);
        progress_.OnItem(ItemEvent::Unchanged, path, {});
        return;
    }
    if (!facts) {
        system_.exitStatus.Note(isFolder ? error_number::kPathNotFound
                                         : error_number::kFileNotFound);
        progress_.Report(L"تأكد من توفر المجلد التالي", false);
        progress_.Report(path, true);
        progress_.OnItem(ItemEvent::Missing, path, {});
        if (keepMissing_) return;
    }
    const MFileDosShell::ItemStats stats =
        MFileDosShell::GetItemStats(system_, dates_, path, facts);
    if (facts) {
        progress_.OnItemStats(path, facts->isFolder ? stats.treeBytes : facts->size, stats.newest);
    }
    PendingCopy copy{.itemPath = std::wstring(path),
                     .location = location,
                     .finalPath = std::wstring(givenCopy),
                     .inSeries = givenCopy.empty(),
                     .newestDate = stats.newest,
                     .fileSize = facts ? facts->size : 0,
                     .currentPath = {}};
    Room room = copy.inSeries ? Room::Rotate : Room::Replace;
    if (copy.inSeries) {
        copy.finalPath = CFilePackageName(path, 1, location, session_.Target());
        if (facts && HasImpossibleName(copy.finalPath))
            Throw(error_number::kBadName, copy.finalPath);
        if (collisions_.Collides(path, location, isFolder, copy.finalPath, listed_)) {
            Refuse(path);
            return;
        }
        const ReadyCopy* const waiting = session_->ReadyOf(path);
        const Date waitingDate = waiting != nullptr ? waiting->date : kMissingDate;
        if (series_.FinishReadyCopy(path, location, copy.finalPath) == ReadyOutcome::Stuck) {
            // Nothing is copied again that already waits for its place.
            if (!facts || waitingDate == copy.newestDate) return;
            room = Room::CompleteRotation;
        }
        const bool hasCopy = session_.IsListed(copy.finalPath);
        const std::wstring comment = hasCopy ? comments_.TextOf(copy.finalPath) : std::wstring();
        const Date copyDate = hasCopy ? comments_.DateOf(copy.finalPath, comment) : kMissingDate;
        CheckFreeSpace(stats.bytes);
        const bool isOwn =
            EqualNoCase(comments_.NamedLocation(comment), MFileDosShell::CFileLocation(path));
        // Older comments were written by the rules of their present year.
        if (stats.HasDate(copyDate)) {
            copy.completeness = CompletenessOf(comment);
            const bool isWhole = copy.completeness == Completeness::Whole;
            if (isWhole || !isOwn || !isFolder || !facts || !facts->isFolder) {
                ReportNoChange(path);
                return;
            }
            if (completion_.Complete(copy, kind == ItemKind::Folder) == Completion::Done) return;
            copy.completeness = Completeness::Whole;
        }
        copy.replacesCutShort = isOwn && CompletenessOf(comment) == Completeness::CutShort;
        // The copies make room when the new one is complete, so that a failure costs none of
        // them. Here and now they do it for a vanished item, and a count of 0 is refused.
        if (!facts || state_.copiesCount <= 0) {
            const bool rotated = series_.Rotate(path, location, Room::Rotate) == Rotation::Done;
            room = Room::Replace;
            if (!facts && !rotated && state_.copiesCount > 0) return;
        }
    }
    if (facts && !contents_.MayCopy(path, stats, kind == ItemKind::Folder)) return;
    progress_.Report(L"Backing: " + copy.itemPath, false);
    progress_.OnItem(ItemEvent::Copying, path,
                     kind == ItemKind::Folder
                         ? ItemSize{stats.treeFiles, stats.treeBytes}
                         : ItemSize{stats.files, static_cast<std::uint64_t>(stats.bytes)});
    if (isFolder && !(facts && facts->isFolder)) Throw(error_number::kPathNotFound, path);
    MakeCopy(copy, kind, room);
}

void ItemBackup::ReportNoChange(std::wstring_view path) {
    progress_.Report(L"No change since last backup for the path:", false);
    progress_.Report(path, true);
    progress_.OnItem(ItemEvent::Unchanged, path, {});
}

void ItemBackup::MakeCopy(PendingCopy& copy, ItemKind kind, Room room) {
    freeSpace_.reset();
    const bool isFolder = kind != ItemKind::File;
    copy.currentPath = session_->WorkingPath(WorkingState::New, copy.itemPath, copy.finalPath);
    if (session_->MayContain(copy.currentPath)) Remove(copy.currentPath);
    session_->OnAdded(copy.currentPath);
    CopyResult result{.itemPath = copy.itemPath, .isFolder = isFolder};
    try {
        if (isFolder) {
            copier_.CopyFolder(copy.currentPath, copy.itemPath, kind == ItemKind::Folder, result);
        } else {
            copier_.BackupFile(copy.currentPath, copy.itemPath, copy.fileSize, result);
            if (result.copied > 0) {
                copier_.CheckFileCopy(copy.currentPath, copy.itemPath, copy.fileSize, result);
            }
        }
        const bool nothing =
            result.copied == 0 && (!isFolder || result.failed > 0 || result.cancelled);
        // A safety copy has to be whole; a cancelled one is none.
        const bool isUseless = result.cancelled && !copy.inSeries;
        if (nothing || isUseless || result.aborted || result.containsDestination) {
            Remove(copy.currentPath);
            if (result.containsDestination) Refuse(copy.itemPath);
            return;
        }
        if (isFolder && result.failed > 0) copy.completeness = Completeness::MissesFiles;
        if (result.cancelled) copy.completeness = Completeness::CutShort;
        // Of two copies that were cut short neither may drive out a whole one.
        if (copy.replacesCutShort && result.cancelled) {
            Remove(copy.currentPath);
            Notice(run_text::kOlderPartKept, copy.itemPath);
            return;
        }
        if (!series_.PlaceCopy(copy, copy.replacesCutShort ? Room::Replace : room)) return;
        series_.ReportIncomplete(copy);
        progress_.OnItem(ItemEvent::Copied, copy.itemPath, {});
        if (!state_.cancel.IsRequested()) progress_.Report(L"\tDone.", false);
    } catch (const RuntimeError&) {
        if (!copy.isComplete) Remove(copy.currentPath);
        throw;
    }
}

bool ItemBackup::IsRefused(std::wstring_view path) const {
    return OverlapsDestination(path, session_.Target()) || PathContains(session_.Folder(), path) ||
           PathContains(path, session_.Folder());
}

void ItemBackup::Refuse(std::wstring_view path) {
    system_.exitStatus.Note(error_number::kAccessError);
    progress_.Report(L"لا يمكن نسخ المسار التالي إلى المجلد المحدد", false);
    progress_.Report(path, true);
    progress_.OnItem(ItemEvent::Refused, path, {});
}

// For a folder only the files directly in it count; a destination that is no fixed disk is not
// asked, the drive of the temporary folder is asked instead. Thousands of unchanged files have one
// answer, as long as this run writes nothing and no other program can have written much.
void ItemBackup::CheckFreeSpace(std::int64_t itemBytes) {
    std::wstring folder = session_->IsOnFixedDrive() ? session_.Folder()
                                                     : MFileDosShell::TempPath(system_, {}, false);
    const double needed = kSpareBytes + static_cast<double>(itemBytes);
    const std::uint64_t now = system_.clock.Milliseconds();
    if (freeSpace_ && freeSpace_->folder == folder && freeSpace_->bytes >= needed &&
        now - freeSpace_->asked < kFreshMilliseconds) {
        return;
    }
    freeSpace_.reset();
    const double bytes = MFileDosShell::FolderFreeSpace(system_, folder, needed);
    if (bytes >= needed) freeSpace_ = {std::move(folder), bytes, now};
}

}  // namespace vw
