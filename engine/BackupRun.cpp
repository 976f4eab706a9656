#include <utility>

#include "engine/BackupRun.h"
#include "engine/RunTexts.h"
#include "list/format/CopiesCount.h"
#include "list/format/FieldReader.h"
#include "list/format/ListLine.h"
#include "list/format/ListText.h"
#include "platform/ExitStatus.h"
#include "platform/MessagePump.h"
#include "platform/ProgramControl.h"
#include "platform/RuntimeError.h"

namespace vw {

namespace {

// A rule for all files of a folder names the folder.
std::wstring_view PathOf(std::wstring_view item) {
    return item.ends_with(L"\\*") ? item.substr(0, item.size() - 2) : item;
}

}  // namespace

BackupRun::BackupRun(const EngineContext& context, DestinationSession& session,
                     LocationNumbers& numbers, ItemBackup& item)
    : EnginePart(context), session_(session), numbers_(numbers), item_(item) {}

// What one run was refused is tried again by the next.
void BackupRun::StartRun() {
    state_.cancel.Begin();
    session_.StartRun();
    patience_.StartRun();
}

void BackupRun::BackUpList() {
    trap_(L"BackupAll", [&] {
        StartRun();
        const std::wstring text = ReadCurrentList();
        const DestinationSession::Visit visit(session_);
        ReadItems(text);
        FieldReader fields(text);
        while (!fields.AtEnd()) {
            system_.pump.ProcessMessages();
            if (state_.cancel.IsRequested()) {
                system_.exitStatus.Note(error_number::kCancelled);
                program_.Ready(true);
                return;
            }
            const ListLine line = ReadListLine(fields.Next());
            switch (line.kind) {
                case ListLineKind::Destination:
                    state_.BackupTo = line.value;
                    session_.RequireFolder();
                    break;
                case ListLineKind::CopiesCount:
                    TakeCopiesCount(line.value, state_.copiesCount);
                    break;
                case ListLineKind::Item: {
                    BackUpUnderLock(line.value, ItemKindOf(line.value));
                    // Closing the busy dialog, which is how a cancel comes, has called Ready and
                    // hidden the dialog already.
                    if (state_.cancel.IsRequested()) {
                        system_.exitStatus.Note(error_number::kCancelled);
                        return;
                    }
                    break;
                }
                case ListLineKind::Empty:
                    break;
            }
        }
        if (session_.IsEntered()) session_->Displaced().RemoveAll();
        progress_.BusyHide(true);
    });
}

// The whole list is known before the first item of it is backed up: names of copies may collide.
void BackupRun::ReadItems(std::wstring_view text) {
    item_.Listed().Clear();
    FieldReader fields(text);
    std::wstring destination = session_.Target();
    while (!fields.AtEnd()) {
        const ListLine line = ReadListLine(fields.Next());
        if (line.kind == ListLineKind::Destination) destination = line.value;
        if (line.kind == ListLineKind::Item) item_.Listed().Add(destination, line.value);
    }
}

void BackupRun::BackUpFile(std::wstring_view path) {
    const DestinationSession::Visit visit(session_);
    StartRun();
    item_.Listed().Clear();
    BackUpUnderLock(path, ItemKind::File);
    if (session_.IsEntered()) session_->Displaced().RemoveAll();
    if (state_.cancel.IsRequested()) system_.exitStatus.Note(error_number::kCancelled);
}

void BackupRun::BackUpUnderLock(std::wstring_view path, ItemKind kind) {
    progress_.OnItem(ItemEvent::Started, path, {});
    session_.RequireFolder();
    Entrance entrance = Entrance::Refused;
    trap_(L"BackupPath", [&] { entrance = session_.Enter(); });
    if (entrance != Entrance::Entered) return;
    const auto facts = TryStat(PathOf(path));
    const std::int16_t location = LocationOf(path, facts.has_value());
    if (location < 0 || state_.cancel.IsRequested()) return;
    trap_(L"BackupPath", [&] {
        if (session_.Enter() != Entrance::Entered) return;
        item_.BackUp(PathOf(path), location, kind, {}, facts);
    });
}

// The facts of an item serve both its number and its backup. The backup asks again for an item that
// is not there, or that cannot be asked.
std::optional<FileInfo> BackupRun::TryStat(std::wstring_view path) {
    try {
        return system_.files.Stat(path);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

std::int16_t BackupRun::LocationOf(std::wstring_view path, bool isThere) {
    const ErrorTrap trap(system_.errors, L"Module", L"MVaultwright");
    return trap.Or(std::int16_t{-1}, L"LocationID", [&] { return numbers_.Find(path, isThere); });
}

void BackupRun::BackUpPath(std::wstring_view givenPath, std::int16_t location, ItemKind kind,
                           std::wstring_view givenCopy) {
    trap_(L"BackupPath", [&] {
        state_.cancel.Begin();
        system_.pump.ProcessMessagesIfDue();
        session_.RequireFolder();
        // On its own it is a run of its own; what another one was refused may be free by now.
        if (!session_.IsVisiting()) {
            session_.ForgetRefusal();
            patience_.StartRun();
        }
        const DestinationSession::Visit visit(session_);
        if (session_.Enter() != Entrance::Entered) return;
        item_.BackUp(PathOf(givenPath), location, kind, givenCopy, {});
    });
}

std::wstring BackupRun::ReadCurrentList() {
    if (!system_.files.Stat(state_.currentListPath)) {
        system_.files.Write(state_.currentListPath, {}, FileSystem::Flush::Yes);
    }
    return DecodeList(system_.files.Read(state_.currentListPath), system_.ansi);
}

}  // namespace vw
