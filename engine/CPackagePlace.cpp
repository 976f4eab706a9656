#include "engine/CPackage.h"
#include "engine/NameEncoding.h"
#include "engine/RunTexts.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWork.h"
#include "platform/AnsiCodec.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"

// How a copy gets into its series, so that a run may be killed at any moment:
//
//   new     "X.vwnew-..."    being written; worthless if its process dies, a later run removes it
//     |  the copy is whole, its comment stands beside it under a working name
//   ready   "X.vwready-..."  its name holds the date for the comment; a later run can finish it
//     |  1. the old copies move up by one, the last one leaves as "X.vwold-..."
//     |  2. whatever still stands in the place leaves too
//     |  3. the comment takes its name
//     |  4. the copy takes its name, in one rename
//   copy 1  what left the series is deleted
//
// The comment goes first: a new copy beside the comment of an old one would look changed, and the
// next run would rotate once too often. While the copy is ready every step can be done again.

namespace vw {

bool CPackage::PlaceCopy(NewCopy& copy, bool mayRotate) {
    const std::wstring comment = PrepareComment(copy);
    if (copy.inSeries) {
        const std::wstring ready = destination_->WorkingPath(WorkingState::Ready, copy.itemPath,
                                                             copy.place, copy.newestDate);
        // A scanner works through what was just written; hours of copying depend on this rename.
        MoveEntry(copy.entry, ready, Patience::kLong);
        copy.entry = ready;
        copy.ready = true;
        // Whatever goes wrong from here on, no other item of this run may move into its place.
        destination_->Awaits(copy.itemPath, copy.place, copy.newestDate, ready);
    }
    const Rotation rotation = mayRotate ? Rotate(copy.itemPath, copy.location) : Rotation::Done;
    if (rotation == Rotation::Broken) return false;
    if (rotation == Rotation::Undone && CopyStands(copy.place)) {
        destination_->Finished(copy.itemPath);
        Condemn(copy.entry, copy.itemPath, copy.place);
        Remove(comment);
        return false;
    }
    TakePlace(copy, comment);
    destination_->Finished(copy.itemPath);
    return true;
}

void CPackage::FinishReadyCopy(std::wstring_view path, std::int16_t location,
                               std::wstring_view place) {
    const ReadyCopy* const found = destination_->ReadyOf(path);
    if (found == nullptr) return;
    const NewCopy copy{.itemPath = std::wstring(path),
                       .location = location,
                       .place = std::wstring(place),
                       .inSeries = true,
                       .newestDate = found->date,
                       .entry = found->path,
                       .ready = true};
    // Another run may have made a copy since, which is as good or newer.
    const bool isLate = CopyStands(copy.place) && PackageDate(copy.place) >= copy.newestDate;
    if (isLate) {
        Condemn(copy.entry, copy.itemPath, copy.place);
    } else if (system_.files.Look(copy.entry)) {
        const std::wstring comment = PrepareComment(copy);
        Rotation outcome = Rotation::Undone;
        ShiftCopies(path, location, LowestGap(path, location), outcome);
        TakePlace(copy, comment);
        Tell(run_text::kFinishedLater, path);
    }
    destination_->Finished(path);
}

// It must not look like a copy, or ready to be one, while it is being deleted: half of it would
// pass for the whole.
void CPackage::Condemn(std::wstring_view entry, std::wstring_view itemPath,
                       std::wstring_view place) {
    const std::wstring condemned = destination_->WorkingPath(WorkingState::Old, itemPath, place);
    MoveEntry(entry, condemned);
    Remove(condemned);
}

void CPackage::DeleteCopy(std::wstring_view copyPath) { Condemn(copyPath, copyPath, copyPath); }

std::wstring CPackage::PrepareComment(const NewCopy& copy) {
    const std::wstring folder = MFileDosShell::CFileLocation(copy.itemPath);
    const std::wstring text = CommentText(
        CommentLine(copy.newestDate, separators_, EnglishNameFrom(folder, system_.ansi)),
        copy.completeness);
    const std::wstring path =
        PackageCommentFile(destination_->WorkingPath(WorkingState::New, copy.itemPath, copy.place));
    system_.files.Write(path, system_.ansi.Encode(text), FileSystem::Flush::No);
    return path;
}

void CPackage::TakePlace(const NewCopy& copy, const std::wstring& comment) {
    std::wstring displaced;
    if (CopyStands(copy.place)) {
        displaced = destination_->WorkingPath(WorkingState::Old, copy.itemPath, copy.place);
        MoveEntry(copy.place, displaced);
    }
    try {
        const std::wstring commentFile = PackageCommentFile(copy.place);
        // Below a dotted folder the name of a copy holds folders of its own.
        MakeFolders(system_.files, MFileDosShell::CFileLocation(commentFile));
        patience_.Perform([&] { system_.files.Replace(comment, commentFile); }, commentFile);
        MoveEntry(copy.entry, copy.place);
    } catch (const RuntimeError&) {
        // A copy that is not ready is given up, so what it was to replace has to stay.
        if (!copy.ready) {
            Remove(comment);
            if (!displaced.empty()) static_cast<void>(MoveBack({{copy.place, displaced}}));
        }
        throw;
    }
    if (!displaced.empty()) Remove(displaced);
}

// For what is no copy (any more): a later run removes what cannot go now.
void CPackage::Remove(std::wstring_view path) noexcept {
    try {
        DeleteTree(
            system_.files, path, [this] { system_.pump.DoEventsIfDue(); }, &patience_);
    } catch (...) {
    }
}

}  // namespace vw
