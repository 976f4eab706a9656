#include "engine/CPackage.h"
#include "engine/CopyLabel.h"
#include "engine/CopyName.h"
#include "engine/TargetState.h"
#include "fsutil/PathText.h"
#include "list/editing/FileDialogs.h"
#include "list/editing/Filter.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "restore/CopiesBrowser.h"
#include "restore/RestoreCommands.h"
#include "restore/RestoreTexts.h"
#include "restore/RestoreWork.h"
#include "restore/StoredCopyPath.h"

// Restoring a copy. Nothing is overwritten before the user said so and a copy verifiably has it.
// An unanswered query ends the restore: nothing may be overwritten because a question about
// it failed.

namespace vw {
namespace {

using namespace MFileDosShell;
constexpr std::wstring_view kUnknownFolder = L"C:\\My Documents";
constexpr std::uint32_t kSaveFlags = 524294;  // explorer style, no read-only box, may overwrite

}  // namespace

void RestoreCommands::DoRestore(bool askLocation) {
    trap_(L"DoRestore", [&] {
        const auto selection = selector_.Read(true);
        if (!selection) return;
        selector_.RequireUnchanged(*selection, selection->copy);
        if (selection->copy.isIncomplete) selector_.ShowMessage(restore_text::kIncomplete);
        auto wanted = ChooseTarget(*selection, askLocation);
        if (!wanted) return;
        RefuseStoredCopy(*wanted, selection->folder);
        progress_.Msg(L"Restoring: ", wanted->requestedPath);
        wanted->existed = system_.files.Stat(wanted->requestedPath).has_value();
        if (wanted->existed && !MayReplace(*wanted)) return;
        Restore(*selection, *wanted);
    });
}

void RestoreCommands::Restore(const CopySelection& selection, const RestoreTarget& wanted) {
    const RestoreWork work(state_);
    bool isDone = false;
    const bool entered = engine_().InDestination(selection.folder, [&] {
        selector_.RequireUnchanged(selection, selection.copy);
        // Where nothing was when the user was asked, nothing may be replaced.
        const bool mayExist = wanted.existed || !EqualNoCase(wanted.requestedPath, wanted.path);
        const TargetState before =
            mayExist ? TargetState(system_.files, system_.pump, wanted.path) : TargetState();
        isDone = MakeSafetyCopy(wanted, selection);
        if (isDone) engine_().Extract(selection.copy.path, wanted.path, before);
    });
    if (entered) browser_.SelectLast();
    if (isDone) {
        progress_.BusyHide(true);
        return;
    }
    progress_.BusyHide(false);
    if (!state_.silentRun) selector_.ShowMessage(restore_text::kCancelled);
}

std::optional<RestoreCommands::RestoreTarget> RestoreCommands::ChooseTarget(
    const CopySelection& selection, bool ask) {
    const ShownItem& item = selection.item;
    const std::wstring location =
        item.originalLocation.empty() ? std::wstring(kUnknownLocation) : item.originalLocation;
    if (!ask && location != kUnknownLocation) {
        const std::wstring target = location + L"\\" + item.name;
        return RestoreTarget{.folder = location, .requestedPath = target, .path = target};
    }
    MRecentFiles::Filter(dialog_, FileDialogKind::SaveList, dialog_.defaultFolder);
    dialog_.flags = kSaveFlags;
    dialog_.defaultExtension.clear();
    dialog_.fileName = item.name;
    dialog_.initialFolder = location == kUnknownLocation ? kUnknownFolder : location;
    const auto chosen = dialogs_.ShowSave(dialog_);
    if (!chosen) return std::nullopt;
    // The item takes its own name, whatever was typed beside the folder.
    const std::wstring folder = CFileLocation(*chosen);
    // A dialog opens the folder whose name is confirmed instead of taking it. What is confirmed
    // inside it means the folder itself: the item would end one folder deeper otherwise.
    if (EqualNoCase(CFileName(folder), item.name) && selection.copy.isFolder) {
        return RestoreTarget{
            .folder = CFileLocation(folder), .requestedPath = folder, .path = folder};
    }
    return RestoreTarget{
        .folder = folder, .requestedPath = *chosen, .path = JoinPath(folder, item.name)};
}

// A copy that is written into would no longer be what was backed up; one that is restored into
// itself would never come to an end.
void RestoreCommands::RefuseStoredCopy(const RestoreTarget& wanted, const std::wstring& folder) {
    if (IsInStoredCopy(system_.files, wanted.folder, CFileName(wanted.path), folder)) {
        ThrowWith(error_number::kAccessError, selector_.In(restore_text::kInsideCopy), wanted.path);
    }
}

// False when the user cancelled.
bool RestoreCommands::MakeSafetyCopy(const RestoreTarget& wanted, const CopySelection& selection) {
    if (wanted.existed && system_.files.Stat(wanted.requestedPath) &&
        !MakeSafetyCopy(wanted.requestedPath, SafetyCopies::Proof::Date, selection)) {
        return false;
    }
    if (EqualNoCase(wanted.requestedPath, wanted.path) || !system_.files.Stat(wanted.path))
        return true;
    // Nobody was asked about this one.
    return MakeSafetyCopy(wanted.path, SafetyCopies::Proof::Content, selection);
}

// Throws when what is about to be overwritten could not be kept.
bool RestoreCommands::MakeSafetyCopy(const std::wstring& path, SafetyCopies::Proof proof,
                                     const CopySelection& selection) {
    SafetySeries series{selection.folder, selection.item.location, {}};
    for (const ListedCopy& copy : selection.copies) {
        series.copies.push_back({copy.path, NumberOfLabel(copy.label)});
    }
    SafetyCopies copies(system_, state_, engine_());
    const auto outcome =
        copies.Keep(path, proof, series, selector_.In(restore_text::kAllNumbersUsed));
    if (outcome == SafetyCopies::Outcome::Failed) {
        browser_.SelectLast();
        Throw(error_number::kAccessError, path);
    }
    return outcome == SafetyCopies::Outcome::Kept;
}

bool RestoreCommands::MayReplace(const RestoreTarget& wanted) {
    return Ask(L"هل تريد بالتأكيد حذف الملف التالي واستبداله بالنسخة الاحتياطية:\r\n" +
               wanted.requestedPath);
}

}  // namespace vw
