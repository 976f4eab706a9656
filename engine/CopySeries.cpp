#include "engine/CopySeries.h"
#include "engine/NameEncoding.h"
#include "engine/RunTexts.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeOperations.h"
#include "platform/AnsiCodec.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"

// How a copy gets into its series, so that a run may be killed at any moment:
//
//   new     "X.vwnew-..."    being written; worthless if its process dies, a later run removes it
//     |  the copy is whole, its comment is beside it under a working name
//   ready   "X.vwready-..."  its name holds the date for the comment; a later run can finish it
//     |  ("X.vwpart-..." and "X.vwcut-..." when it is not whole, for the mark in the comment)
//     |  1. the old copies move up by one, the last one leaves as "X.vwold-..."
//     |  2. whatever is still in the place leaves too
//     |  3. the comment takes its name
//     |  4. the copy takes its name, in one rename
//   copy 1  what left the series is deleted
//
// The comment goes first: a new copy beside the comment of an old one would look changed, and the
// next run would rotate once too often. While the copy is ready every step can be done again.
//
// What nobody knew of when the destination was listed belongs to another program: a computer that
// does not see our lock, or a person. Nothing is taken from it, neither its name nor its comment,
// so the disk itself is asked before each of the two.

namespace vw {

CopySeries::CopySeries(const EngineContext& context, DestinationSession& session,
                       CommentStore& comments)
    : EnginePart(context), session_(session), comments_(comments) {}

bool CopySeries::PlaceCopy(PendingCopy& copy, Room room) {
    const std::wstring comment = comments_.Prepare(copy);
    try {
        if (copy.inSeries && !MakeReady(copy, comment)) {
            Remove(copy.currentPath);
            Remove(comment);
            return false;
        }
        Rotation rotation = Rotation::Done;
        if (room != Room::Replace) rotation = Rotate(copy.itemPath, copy.location, room);
        // The copy stays ready: a later run finishes it without copying everything again.
        const bool isBlocked =
            rotation == Rotation::RolledBack && session_.Contains(copy.finalPath);
        if (rotation == Rotation::RollbackFailed || isBlocked) {
            Remove(comment);
            return false;
        }
        MoveIntoPlace(copy, comment);
    } catch (const RuntimeError&) {
        Remove(comment);
        throw;
    }
    session_->RemovePending(copy.itemPath);
    return true;
}

// From here on no other item of this run may move into the place of the copy, whatever goes wrong.
// False when an earlier copy is ready that holds more than this one.
bool CopySeries::MakeReady(PendingCopy& copy, const std::wstring& comment) {
    std::wstring older;
    if (const ReadyCopy* const waiting = session_->ReadyOf(copy.itemPath)) {
        if (waiting->completeness < copy.completeness) return false;
        older = waiting->path;
    }
    // The time of the disk, which also dates the comment of the copy in the place.
    const auto facts = Stat(comment);
    if (!facts) Throw(error_number::kDeviceError, comment);
    const std::wstring ready = session_->ReadyPath(copy.itemPath, copy.finalPath, copy.newestDate,
                                                   facts->lastWrite, copy.completeness);
    // A scanner works through what was just written; hours of copying depend on this rename.
    session_.MoveEntry(copy.currentPath, ready, Patience::kLong);
    copy.currentPath = ready;
    copy.isComplete = true;
    session_->AddPending(copy.itemPath, copy.finalPath,
                         {.path = ready,
                          .date = copy.newestDate,
                          .made = facts->lastWrite,
                          .completeness = copy.completeness});
    if (!older.empty()) {
        Notice(run_text::kReadyDropped, copy.itemPath);
        try {
            DeleteAtomically(older, copy.itemPath, copy.finalPath);
        } catch (const RuntimeError&) {
            // A later run finds both and takes the newer one.
        }
    }
    return true;
}

void CopySeries::RefuseForeign(std::wstring_view path) {
    if (session_->MayContain(path) || !Stat(path)) return;
    Notice(run_text::kLeftAlone, path);
    Throw(error_number::kAlreadyExists, path);
}

void CopySeries::DeleteAtomically(std::wstring_view entry, std::wstring_view itemPath,
                                  std::wstring_view place) {
    const std::wstring condemned = session_->WorkingPath(WorkingState::Old, itemPath, place);
    session_.MoveEntry(entry, condemned);
    Remove(condemned);
}

void CopySeries::ReportIncomplete(const PendingCopy& copy) {
    switch (copy.completeness) {
        case Completeness::Whole:
            return;
        case Completeness::MissesFiles:
            return Notice(run_text::kMissesFiles, copy.itemPath);
        case Completeness::CutShort:
            return Notice(run_text::kIncomplete, copy.itemPath);
    }
}

void CopySeries::MoveIntoPlace(const PendingCopy& copy, const std::wstring& comment) {
    const std::wstring commentFile = CommentStore::FileOf(copy.finalPath);
    RefuseForeign(copy.finalPath);
    RefuseForeign(commentFile);
    std::wstring displaced;
    if (session_.Contains(copy.finalPath)) {
        displaced = session_->WorkingPath(WorkingState::Old, copy.itemPath, copy.finalPath);
        session_.MoveEntry(copy.finalPath, displaced);
    }
    bool commentTaken = false;
    try {
        // Below a dotted folder the name of a copy holds folders of its own.
        CreateFolders(system_.files, MFileDosShell::CFileLocation(commentFile));
        patience_.Perform([&] { system_.files.Replace(comment, commentFile); }, commentFile);
        session_->OnAdded(commentFile);
        commentTaken = true;
        session_.MoveEntry(copy.currentPath, copy.finalPath);
    } catch (const RuntimeError&) {
        // A copy that is not ready is given up, so what it was to replace has to stay.
        if (!copy.isComplete && !displaced.empty()) {
            static_cast<void>(MoveBack({{copy.finalPath, displaced}}));
        }
        // The comment does not describe the entry in the place.
        if (commentTaken && Exists(copy.finalPath)) Remove(commentFile);
        throw;
    }
    if (!displaced.empty()) Remove(displaced);
}

}  // namespace vw
