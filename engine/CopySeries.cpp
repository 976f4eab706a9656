#include "engine/CopySeries.h"
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
//     |  ("X.vwpart-..." and "X.vwcut-..." when it is not whole, for the mark in the comment)
//     |  1. the old copies move up by one, the last one leaves as "X.vwold-..."
//     |  2. whatever still stands in the place leaves too
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

bool CopySeries::PlaceCopy(NewCopy& copy, Room room) {
    const std::wstring comment = comments_.Prepare(copy);
    try {
        if (copy.inSeries && !MakeReady(copy, comment)) {
            Remove(copy.entry);
            Remove(comment);
            return false;
        }
        Rotation rotation = Rotation::Done;
        if (room != Room::Replace) rotation = Rotate(copy.itemPath, copy.location, room);
        // The copy stays ready: a later run finishes it without copying everything again.
        const bool isBlocked = rotation == Rotation::Undone && session_.Contains(copy.place);
        if (rotation == Rotation::Broken || isBlocked) {
            Remove(comment);
            return false;
        }
        TakePlace(copy, comment);
    } catch (const RuntimeError&) {
        Remove(comment);
        throw;
    }
    session_->Finished(copy.itemPath);
    return true;
}

// From here on no other item of this run may move into the place of the copy, whatever goes wrong.
// False when an earlier copy is ready that holds more than this one.
bool CopySeries::MakeReady(NewCopy& copy, const std::wstring& comment) {
    std::wstring older;
    if (const ReadyCopy* const waiting = session_->ReadyOf(copy.itemPath)) {
        if (waiting->completeness < copy.completeness) return false;
        older = waiting->path;
    }
    // The time of the disk, which also dates the comment of the copy in the place.
    const auto facts = Stat(comment);
    if (!facts) Raise(error_number::kDeviceError, comment);
    const std::wstring ready = session_->ReadyPath(copy.itemPath, copy.place, copy.newestDate,
                                                   facts->lastWrite, copy.completeness);
    // A scanner works through what was just written; hours of copying depend on this rename.
    session_.MoveEntry(copy.entry, ready, Patience::kLong);
    copy.entry = ready;
    copy.ready = true;
    session_->Awaits(copy.itemPath, copy.place,
                     {.path = ready,
                      .date = copy.newestDate,
                      .made = facts->lastWrite,
                      .completeness = copy.completeness});
    if (!older.empty()) {
        Notice(run_text::kReadyDropped, copy.itemPath);
        try {
            Condemn(older, copy.itemPath, copy.place);
        } catch (const RuntimeError&) {
            // A later run finds both and takes the newer one.
        }
    }
    return true;
}

void CopySeries::RefuseForeign(std::wstring_view path) {
    if (session_->MayHold(path) || !Stat(path)) return;
    Notice(run_text::kLeftAlone, path);
    Raise(error_number::kAlreadyExists, path);
}

void CopySeries::Condemn(std::wstring_view entry, std::wstring_view itemPath,
                         std::wstring_view place) {
    const std::wstring condemned = session_->WorkingPath(WorkingState::Old, itemPath, place);
    session_.MoveEntry(entry, condemned);
    Remove(condemned);
}

void CopySeries::ReportIncomplete(const NewCopy& copy) {
    switch (copy.completeness) {
        case Completeness::Whole:
            return;
        case Completeness::MissesFiles:
            return Notice(run_text::kMissesFiles, copy.itemPath);
        case Completeness::CutShort:
            return Notice(run_text::kIncomplete, copy.itemPath);
    }
}

void CopySeries::TakePlace(const NewCopy& copy, const std::wstring& comment) {
    const std::wstring commentFile = CommentStore::FileOf(copy.place);
    RefuseForeign(copy.place);
    RefuseForeign(commentFile);
    std::wstring displaced;
    if (session_.Contains(copy.place)) {
        displaced = session_->WorkingPath(WorkingState::Old, copy.itemPath, copy.place);
        session_.MoveEntry(copy.place, displaced);
    }
    bool commentTaken = false;
    try {
        // Below a dotted folder the name of a copy holds folders of its own.
        MakeFolders(system_.files, MFileDosShell::CFileLocation(commentFile));
        patience_.Perform([&] { system_.files.Replace(comment, commentFile); }, commentFile);
        session_->Added(commentFile);
        commentTaken = true;
        session_.MoveEntry(copy.entry, copy.place);
    } catch (const RuntimeError&) {
        // A copy that is not ready is given up, so what it was to replace has to stay.
        if (!copy.ready && !displaced.empty()) {
            static_cast<void>(MoveBack({{copy.place, displaced}}));
        }
        // The comment does not describe the entry in the place.
        if (commentTaken && Exists(copy.place)) Remove(commentFile);
        throw;
    }
    if (!displaced.empty()) Remove(displaced);
}

}  // namespace vw
