#include <string>

#include "engine/CPackage.h"
#include "engine/RunTexts.h"
#include "fsutil/PathText.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

// Copies that an earlier run left ready: complete on the disk, but not in their place.

namespace vw {

namespace {

// Disks of the older formats keep times in steps of two seconds.
constexpr Date kTimeStep = 2;

}  // namespace

// A copy that cannot be placed is reported and kept; the item is still backed up.
CPackage::ReadyOutcome CPackage::FinishReadyCopy(std::wstring_view path, std::int16_t location,
                                                 std::wstring_view place) {
    const ReadyCopy* const found = destination_->ReadyOf(path);
    if (found == nullptr) return ReadyOutcome::None;
    const Date made = found->made;
    const NewCopy copy{.itemPath = std::wstring(path),
                       .location = location,
                       .place = std::wstring(place),
                       .inSeries = true,
                       .newestDate = found->date,
                       .completeness = found->completeness,
                       .entry = found->path,
                       .ready = true};
    const bool finished = trap_(L"BackupPath", [&] {
        if (CopyStands(copy.place) && IsMadeAfter(copy.place, made)) {
            Tell(run_text::kReadyDropped, path);
            Condemn(copy.entry, copy.itemPath, copy.place);
        } else if (Stat(copy.entry)) {
            PutReadyInPlace(copy);
        }
        destination_->Finished(path);
    });
    return finished ? ReadyOutcome::Finished : ReadyOutcome::Stuck;
}

void CPackage::PutReadyInPlace(const NewCopy& copy) {
    const std::wstring comment = PrepareComment(copy);
    try {
        const bool replaces = copy.completeness != Completeness::CutShort &&
                              CopyStands(copy.place) &&
                              IsCutShortCopyOf(copy.itemPath, ReadCommentText(copy.place));
        if (!replaces) {
            Rotation outcome = Rotation::Undone;
            ShiftCopies(copy.itemPath, copy.location, LowestGap(copy.itemPath, copy.location),
                        outcome);
        }
        TakePlace(copy, comment);
    } catch (const RuntimeError&) {
        Remove(comment);
        throw;
    }
    destination_->RemoveLeft(copy.itemPath);
    Tell(run_text::kFinishedLater, copy.itemPath);
    TellIncomplete(copy);
}

// The dates of the contents state no order: an older state of an item may be backed up later. False
// when the order is not known.
bool CPackage::IsMadeAfter(std::wstring_view copyPath, Date made) {
    if (made == 0) return false;
    const auto comment = Stat(PackageCommentFile(copyPath));
    return comment && !comment->isFolder && comment->lastWrite > made + kTimeStep;
}

bool CPackage::IsCutShortCopyOf(std::wstring_view path, std::wstring_view comment) {
    return CompletenessOf(comment) == Completeness::CutShort &&
           EqualNoCase(NamedLocation(comment), MFileDosShell::CFileLocation(path));
}

}  // namespace vw
