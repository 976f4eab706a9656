#include <string>

#include "engine/CopySeries.h"
#include "engine/RunTexts.h"
#include "fsutil/PathText.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

// Copies that an earlier run left ready: complete on the disk, but not in their place.

namespace vw {

// A copy that cannot be placed is reported and kept; the item is still backed up.
ReadyOutcome CopySeries::FinishReadyCopy(std::wstring_view path, std::int16_t location,
                                         std::wstring_view place) {
    const ReadyCopy* const found = session_->ReadyOf(path);
    if (found == nullptr) return ReadyOutcome::None;
    const Date made = found->made;
    const PendingCopy copy{.itemPath = std::wstring(path),
                           .location = location,
                           .finalPath = std::wstring(place),
                           .newestDate = found->date,
                           .completeness = found->completeness,
                           .currentPath = found->path,
                           .isComplete = true};
    const bool finished = trap_(L"BackupPath", [&] {
        if (session_.Contains(copy.finalPath) && IsMadeAfter(copy.finalPath, made)) {
            Notice(run_text::kReadyDropped, path);
            DeleteAtomically(copy.currentPath, copy.itemPath, copy.finalPath);
        } else if (Stat(copy.currentPath)) {
            PutReadyInPlace(copy);
        }
        session_->RemovePending(path);
    });
    return finished ? ReadyOutcome::Finished : ReadyOutcome::Stuck;
}

void CopySeries::PutReadyInPlace(const PendingCopy& copy) {
    const std::wstring comment = comments_.Prepare(copy);
    try {
        const bool replaces = copy.completeness != Completeness::CutShort &&
                              session_.Contains(copy.finalPath) &&
                              IsCutShortCopyOf(copy.itemPath, comments_.Read(copy.finalPath));
        if (!replaces) {
            const Shift shift =
                ShiftCopies(copy.itemPath, copy.location, LowestGap(copy.itemPath, copy.location));
            if (shift.error) throw RuntimeError(*shift.error);
        }
        MoveIntoPlace(copy, comment);
    } catch (const RuntimeError&) {
        Remove(comment);
        throw;
    }
    session_->Displaced().Remove(copy.itemPath);
    Notice(run_text::kFinishedLater, copy.itemPath);
    ReportIncomplete(copy);
}

// The dates of the contents state no order: an older state of an item may be backed up later. False
// when the order is not known.
bool CopySeries::IsMadeAfter(std::wstring_view copyPath, Date made) {
    if (made == kNoDate) return false;
    const auto comment = Stat(CommentStore::FileOf(copyPath));
    return comment && !comment->isFolder && comment->lastWrite > made + kCoarsestDateStep;
}

bool CopySeries::IsCutShortCopyOf(std::wstring_view path, std::wstring_view comment) {
    return CompletenessOf(comment) == Completeness::CutShort &&
           EqualNoCase(comments_.NamedLocation(comment), MFileDosShell::CFileLocation(path));
}

}  // namespace vw
