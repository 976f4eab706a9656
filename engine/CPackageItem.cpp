#include <algorithm>

#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "engine/DestinationVisit.h"
#include "engine/ItemChecks.h"
#include "engine/RunTexts.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "platform/EventPump.h"
#include "platform/ExitStatus.h"
#include "platform/Like.h"
#include "platform/RuntimeError.h"
#include "platform/SystemPath.h"
#include "platform/TextCase.h"

namespace vw {

namespace {

// Room that a drive keeps besides the item itself.
constexpr double kSpareBytes = 50.0 * 1024 * 1024;

}  // namespace

void CPackage::BackupPath(std::wstring_view sPath, std::int16_t iSP, bool bPathIsFolder,
                          bool bSubFolder, std::wstring_view sPackage) {
    trap_(L"BackupPath", [&] {
        state_.cancelRequested = false;
        system_.pump.DoEventsIfDue();
        const std::wstring_view path =
            sPath.ends_with(L"\\*") ? sPath.substr(0, sPath.size() - 2) : sPath;
        ErrorOnBackupFolderNotExists();
        // On its own it is a run of its own; what another one was refused may be free by now.
        if (!visiting_) {
            refusedDestination_.clear();
            patience_.StartRun();
        }
        const Visit visit(*this);
        if (EnterDestination() != Entrance::Entered) return;
        BackUpItem(path, iSP, bPathIsFolder, bSubFolder, sPackage);
    });
}

void CPackage::BackUpItem(std::wstring_view path, std::int16_t location, bool isFolder,
                          bool subFolders, std::wstring_view givenCopy) {
    const auto facts = system_.files.Look(path);
    if (facts && IsRefused(path)) {
        Refuse(path);
        return;
    }
    if (facts && facts->isLink && !facts->isFolder) {
        Tell(run_text::kLinkLeftOut, path);
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
    const MFileDosShell::Survey survey = MFileDosShell::SurveyOf(system_, *this, path, facts);
    if (facts) {
        progress_.OnSurveyed(path, facts->isFolder ? survey.treeBytes : facts->size, survey.newest);
    }
    NewCopy copy{.itemPath = std::wstring(path),
                 .location = location,
                 .place = std::wstring(givenCopy),
                 .inSeries = givenCopy.empty(),
                 .newestDate = survey.newest,
                 .fileSize = facts ? facts->size : 0,
                 .entry = {}};
    Room room = copy.inSeries ? Room::Rotate : Room::Replace;
    if (copy.inSeries) {
        copy.place = CFilePackageName(path, 1, location, Target());
        if (facts && HasImpossibleName(copy.place)) Raise(error_number::kBadName, copy.place);
        if (Collides(path, location, isFolder, copy.place)) {
            Refuse(path);
            return;
        }
        const ReadyCopy* const waiting = destination_->ReadyOf(path);
        const Date waitingDate = waiting != nullptr ? waiting->date : kMissingDate;
        if (FinishReadyCopy(path, location, copy.place) == ReadyOutcome::Stuck) {
            // Nothing is copied again that already waits for its place.
            if (!facts || waitingDate == copy.newestDate) return;
            room = Room::CompleteRotation;
        }
        const bool stands = CopyStands(copy.place);
        const std::wstring comment = stands ? CommentOf(copy.place) : std::wstring();
        const Date copyDate = stands ? DateOf(copy.place, comment) : kMissingDate;
        CheckFreeSpace(survey.bytes);
        const bool isOwn = EqualNoCase(NamedLocation(comment), MFileDosShell::CFileLocation(path));
        // Older comments were written by the rules of their present year.
        if (survey.HasDate(copyDate)) {
            copy.completeness = CompletenessOf(comment);
            const bool isWhole = copy.completeness == Completeness::Whole;
            if (isWhole || !isOwn || !isFolder || !facts || !facts->isFolder) {
                TellNoChange(path);
                return;
            }
            if (CompleteCopy(copy, subFolders) == Completion::Done) return;
            copy.completeness = Completeness::Whole;
        }
        copy.overCutShort = isOwn && CompletenessOf(comment) == Completeness::CutShort;
        // The copies make room when the new one stands, so that a copy that fails costs none of
        // them. Here and now they do it for a vanished item, and a count of 0 is refused.
        if (!facts || state_.copiesCount <= 0) {
            const bool rotated = RenamePackages(path, location);
            room = Room::Replace;
            if (!facts && !rotated && state_.copiesCount > 0) return;
        }
    }
    if (facts && !AgreesToContents(path, survey, subFolders)) return;
    progress_.Report(L"Backing: " + copy.itemPath, false);
    progress_.OnItem(ItemEvent::Copying, path,
                     subFolders ? ItemSize{survey.treeFiles, survey.treeBytes}
                                : ItemSize{survey.files, static_cast<std::uint64_t>(survey.bytes)});
    if (isFolder && !(facts && facts->isFolder)) Raise(error_number::kPathNotFound, path);
    MakeCopy(copy, isFolder, subFolders, room);
}

void CPackage::TellNoChange(std::wstring_view path) {
    progress_.Report(L"No change since last backup for the path:", false);
    progress_.Report(path, true);
    progress_.OnItem(ItemEvent::Unchanged, path, {});
}

void CPackage::MakeCopy(NewCopy& copy, bool isFolder, bool subFolders, Room room) {
    copy.entry = destination_->WorkingPath(WorkingState::New, copy.itemPath, copy.place);
    if (destination_->MayHold(copy.entry)) Remove(copy.entry);
    destination_->Added(copy.entry);
    CopyTally tally{.itemPath = copy.itemPath, .isFolder = isFolder};
    try {
        if (isFolder) {
            BackupFolder(copy.entry, copy.itemPath, copy.itemPath, subFolders, tally);
        } else {
            BackupFile(copy.entry, copy.itemPath, copy.fileSize, tally);
            if (tally.copied > 0) {
                CheckFileCopy(copy.entry, copy.itemPath, copy.fileSize, tally);
            }
        }
        const bool nothing = tally.copied == 0 && (!isFolder || tally.failed > 0 || tally.cutShort);
        // A safety copy has to be whole; a cancelled one is none.
        const bool isUseless = tally.cutShort && !copy.inSeries;
        if (nothing || isUseless || tally.givenUp || tally.holdsItself) {
            Remove(copy.entry);
            if (tally.holdsItself) Refuse(copy.itemPath);
            return;
        }
        if (isFolder && tally.failed > 0) copy.completeness = Completeness::MissesFiles;
        if (tally.cutShort) copy.completeness = Completeness::CutShort;
        // Of two copies that were cut short neither may drive out a whole one.
        if (copy.overCutShort && tally.cutShort) {
            Remove(copy.entry);
            Tell(run_text::kOlderPartKept, copy.itemPath);
            return;
        }
        if (!PlaceCopy(copy, copy.overCutShort ? Room::Replace : room)) return;
        TellIncomplete(copy);
        progress_.OnItem(ItemEvent::Copied, copy.itemPath, {});
        if (!state_.cancelRequested) progress_.Report(L"\tDone.", false);
    } catch (const RuntimeError&) {
        if (!copy.ready) Remove(copy.entry);
        throw;
    }
}

void CPackage::TellIncomplete(const NewCopy& copy) {
    switch (copy.completeness) {
        case Completeness::Whole:
            return;
        case Completeness::MissesFiles:
            return Tell(run_text::kMissesFiles, copy.itemPath);
        case Completeness::CutShort:
            return Tell(run_text::kIncomplete, copy.itemPath);
    }
}

bool CPackage::IsRefused(std::wstring_view path) const {
    return OverlapsDestination(path, Target()) || PathContains(TargetFolder(), path) ||
           PathContains(path, TargetFolder());
}

void CPackage::Refuse(std::wstring_view path) {
    system_.exitStatus.Note(error_number::kAccessError);
    progress_.Report(L"لا يمكن نسخ المسار التالي إلى المجلد المحدد", false);
    progress_.Report(path, true);
    progress_.OnItem(ItemEvent::Refused, path, {});
}

// For a folder only the files directly in it count; a destination that is no fixed disk is not
// asked, the drive of the temporary folder stands in for it.
void CPackage::CheckFreeSpace(std::int64_t itemBytes) {
    MFileDosShell::FolderFreeSpace(system_,
                                   destination_->IsOnFixedDrive()
                                       ? TargetFolder()
                                       : MFileDosShell::TempPath(system_, {}, false),
                                   kSpareBytes + static_cast<double>(itemBytes));
}

}  // namespace vw
