#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "engine/TargetState.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWalk.h"
#include "list/editing/FileDialogs.h"
#include "list/editing/Filter.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/Like.h"
#include "platform/MsgBox.h"
#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "platform/SystemPath.h"
#include "platform/TextCase.h"
#include "restore/CopiesBrowser.h"
#include "restore/RestoreCommands.h"
#include "restore/RestoreHost.h"
#include "restore/RestoreWork.h"
#include "ui/Form.h"

// Restoring a copy. Nothing is overwritten before the user said so and a copy verifiably has it.
// What the disk cannot tell ends the restore: nothing may be overwritten because a question about
// it failed.

namespace vw {
namespace {

using namespace MFileDosShell;

constexpr Procedure Named(std::wstring_view name) { return {name, L"Form", L"frmMain"}; }

constexpr std::wstring_view kUnknown = L"??";
constexpr std::wstring_view kUnknownFolder = L"C:\\My Documents";
constexpr std::uint32_t kSaveFlags = 524294;  // explorer style, no read-only box, may overwrite

// The folder that copies lie in on every drive.
constexpr std::wstring_view kAnyCopyFolder = L"?:\\Backup";

// A path without links, also one whose end does not exist yet.
std::wstring RealPathOf(FileSystem& files, const std::wstring& path) {
    std::wstring existing = path;
    while (!files.Look(existing)) {
        std::wstring parent = CFileLocation(existing);
        if (parent.size() >= existing.size() || parent.empty()) return path;
        existing = std::move(parent);
    }
    return files.RealPath(existing) + path.substr(existing.size());
}

// Whether a path is a stored copy or lies in one: an entry of a copy folder that is named so.
bool IsInStoredCopy(const std::wstring& path, const std::wstring& copyFolder) {
    for (std::size_t end = path.find(L'\\'); end != path.npos;) {
        const std::wstring folder = path.substr(0, end);
        const std::size_t next = path.find(L'\\', end + 1);
        const std::wstring name = path.substr(end + 1, next == path.npos ? next : next - end - 1);
        if (FindCopyMark(name) && (Like(UpperCase(folder), UpperCase(kAnyCopyFolder)) ||
                                   EqualNoCase(folder, copyFolder))) {
            return true;
        }
        end = next;
    }
    return false;
}

}  // namespace

void RestoreCommands::DoRestore(bool askLocation) {
    Trapped(system_.errors, Named(L"DoRestore"), [&] {
        const auto selection = Selected(true);
        if (!selection) return;
        ExpectUnchanged(*selection, selection->copy);
        TellIncomplete(selection->copy);
        auto goal = ChooseGoal(*selection, askLocation);
        if (!goal) return;
        RefuseStoredCopy(*goal, selection->folder);
        host_.Msg(L"Restoring: ", goal->typed);
        goal->existed = system_.files.Look(goal->typed).has_value();
        if (goal->existed && !MayReplace(*goal)) return;
        Restore(*selection, *goal);
    });
}

void RestoreCommands::Restore(const Selection& selection, const Goal& goal) {
    const RestoreWork work(host_, state_);
    bool isCancelled = false;
    const bool entered = host_.Engine().InDestination(selection.folder, [&] {
        ExpectUnchanged(selection, selection.copy);
        // Where nothing stood when the user was asked, nothing may be replaced.
        const bool mayStand = goal.existed || !EqualNoCase(goal.typed, goal.target);
        const TargetState before =
            mayStand ? TargetState(system_.files, system_.pump, goal.target) : TargetState();
        isCancelled = !KeepForUndo(goal, selection);
        if (!isCancelled) host_.Engine().Extract(selection.copy.path, goal.target, before);
    });
    if (entered) browser_.SelectLast();
    if (entered && !isCancelled) {
        host_.BusyHide(true);
        return;
    }
    host_.BusyHide(false);
    if (!state_.silentRun) Tell(restore_text::kCancelled);
}

std::optional<RestoreCommands::Goal> RestoreCommands::ChooseGoal(const Selection& selection,
                                                                 bool ask) {
    const ShownItem& item = selection.item;
    const std::wstring location =
        item.originalLocation.empty() ? std::wstring(kUnknown) : item.originalLocation;
    if (!ask && location != kUnknown) {
        const std::wstring target = location + L"\\" + item.name;
        return Goal{.folder = location, .typed = target, .target = target};
    }
    MRecentFiles::Filter(dialog_, FileDialogKind::SaveList, dialog_.defaultFolder);
    dialog_.flags = kSaveFlags;
    dialog_.defaultExtension.clear();
    dialog_.fileName = item.name;
    dialog_.initialFolder = location == kUnknown ? kUnknownFolder : location;
    const auto chosen = dialogs_.ShowSave(dialog_);
    if (!chosen) return std::nullopt;
    // The item takes its own name, whatever was typed beside the folder.
    const std::wstring folder = CFileLocation(*chosen);
    // A dialog opens the folder whose name is confirmed instead of taking it. What is confirmed
    // inside it means the folder itself: the item would end one folder deeper otherwise.
    if (EqualNoCase(CFileName(folder), item.name) && selection.copy.isFolder) {
        return Goal{.folder = CFileLocation(folder), .typed = folder, .target = folder};
    }
    return Goal{.folder = folder, .typed = *chosen, .target = JoinPath(folder, item.name)};
}

// A copy that is written into would no longer be what was backed up; one that is restored into
// itself would never come to an end.
void RestoreCommands::RefuseStoredCopy(const Goal& goal, const std::wstring& folder) {
    const std::wstring name = CFileName(goal.target);
    const std::wstring where = system_.files.FullPath(goal.folder);
    if (IsInStoredCopy(JoinPath(where, name), folder) ||
        IsInStoredCopy(JoinPath(RealPathOf(system_.files, where), name),
                       RealPathOf(system_.files, folder))) {
        RaiseWith(error_number::kAccessError, In(restore_text::kInsideCopy), goal.target);
    }
}

bool RestoreCommands::MayReplace(const Goal& goal) {
    return Ask(L"هل تريد بالتأكيد حذف الملف التالي واستبداله بالنسخة الاحتياطية:\r\n" + goal.typed);
}

}  // namespace vw
