#include "engine/CPackage.h"

#include "engine/CommentLine.h"
#include "engine/CopyName.h"
#include "engine/TargetState.h"
#include "fsutil/PathText.h"
#include "list/format/FieldReader.h"
#include "list/format/ListLine.h"

// The given procedures; each hands its work to the part of the engine that does it.

namespace vw {

CPackage::CPackage(System& system, ProgramState& state, ProgressReporter& progress,
                   ProgramControl& program)
    : trap_(system.errors, L"Class Module", L"CPackage"),
      system_(system),
      state_(state),
      patience_(system, state.cancel),
      context_{.system = system,
               .state = state,
               .progress = progress,
               .program = program,
               .patience = patience_,
               .duringCopy = [&progress] { progress.DuringCopy(); }},
      session_(context_),
      comments_(context_, session_),
      numbers_(context_, session_, comments_),
      series_(context_, session_, comments_),
      item_(context_, *this, session_, comments_, numbers_, series_),
      run_(context_, session_, numbers_, item_),
      restorer_(context_) {}

void CPackage::BackupAll() { run_.BackUpList(); }

void CPackage::BackupItem(std::wstring_view path) { run_.BackUpFile(path); }

void CPackage::BackupPath(std::wstring_view sPath, std::int16_t iSP, bool bPathIsFolder,
                          bool bSubFolder, std::wstring_view sPackage) {
    const ItemKind kind = !bPathIsFolder ? ItemKind::File
                          : bSubFolder   ? ItemKind::Folder
                                         : ItemKind::Rule;
    run_.BackUpPath(sPath, iSP, kind, sPackage);
}

bool CPackage::IsRefused(std::wstring_view path) const { return item_.IsRefused(path); }

void CPackage::GetBackupTo() {
    trap_(L"GetBackupTo", [&] {
        const std::wstring text = run_.ReadCurrentList();
        FieldReader fields(text);
        while (!fields.AtEnd()) {
            const ListLine line = ReadListLine(fields.Next());
            if (line.kind != ListLineKind::Destination) continue;
            state_.BackupTo = CompleteDestination(line.value);
            session_.RequireFolder();
        }
    });
}

void CPackage::ErrorOnBackupFolderNotExists() { session_.RequireFolder(); }

std::int16_t CPackage::LocationID(std::wstring_view path) { return run_.LocationOf(path); }

bool CPackage::RenamePackages(std::wstring_view sPath, std::int16_t iSP) {
    const DestinationSession::Visit visit(session_);
    return series_.Rotate(sPath, iSP, Room::Rotate) == Rotation::Done;
}

std::wstring CPackage::PackageCommentFile(std::wstring_view copyPath) {
    return CommentStore::FileOf(copyPath);
}

std::wstring CPackage::PackageComment(std::wstring_view copyPath) {
    return FirstLine(comments_.TextOf(copyPath));
}

void CPackage::PackageComment(std::wstring_view copyPath, std::wstring_view text) {
    comments_.Store(copyPath, text);
}

Date CPackage::PackageDate(std::wstring_view copyPath) {
    return comments_.DateOf(copyPath, comments_.TextOf(copyPath));
}

std::wstring CPackage::PackageOriginalLocation(std::wstring_view copyPath) {
    return comments_.LocationOf(copyPath);
}

bool CPackage::IsMarkedIncomplete(std::wstring_view copyPath) {
    return CompletenessOf(comments_.TextOf(copyPath)) != Completeness::Whole;
}

void CPackage::Extract(std::wstring_view copyPath, std::wstring_view destinationFolder,
                       bool showMessage) {
    trap_(L"Extract", [&] {
        if (showMessage) context_.progress.Msg(L"Restoring: ", copyPath);
        const std::wstring target = JoinPath(destinationFolder, ItemNameOf(copyPath));
        restorer_.Restore(copyPath, target, TargetState(system_.files, system_.pump, target));
    });
}

void CPackage::Extract(std::wstring_view copyPath, const std::wstring& target,
                       const TargetState& before) {
    trap_(L"Extract", [&] { restorer_.Restore(copyPath, target, before); });
}

bool CPackage::InDestination(std::wstring_view folder, const std::function<void()>& work) {
    const DestinationSession::TargetOverride target(session_, folder);
    const DestinationSession::Visit visit(session_);
    state_.cancel.Begin();
    session_.ForgetRefusal();
    patience_.StartRun();
    if (session_.Enter() != Entrance::Entered) return false;
    work();
    return true;
}

void CPackage::DeleteCopy(std::wstring_view copyPath) {
    series_.DeleteAtomically(copyPath, copyPath, copyPath);
}

}  // namespace vw
