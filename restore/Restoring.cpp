#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWalk.h"
#include "list/editing/FileDialogs.h"
#include "list/editing/Filter.h"
#include "list/editing/SubItem.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "platform/Val.h"
#include "restore/CopiesBrowser.h"
#include "restore/CopiesIndex.h"
#include "restore/RestoreCommands.h"
#include "restore/RestoreHost.h"
#include "restore/SameContent.h"
#include "ui/Form.h"

// Restoring a copy. Nothing is overwritten before the user said so and, where no stored copy has
// its date, a safety copy of it verifiably stands on the disk. What the disk cannot tell ends the
// restore: nothing may be overwritten because a question about it failed.

namespace vw {
namespace {

using namespace MFileDosShell;

constexpr Procedure Named(std::wstring_view name) { return {name, L"Form", L"frmMain"}; }

constexpr std::wstring_view kUnknown = L"??";
constexpr std::wstring_view kUnknownFolder = L"C:\\My Documents";
constexpr std::uint32_t kSaveFlags = 524294;  // explorer style, no read-only box, may overwrite
constexpr int kHighestNumber = 99;            // more digits could not be read back from a name

}  // namespace

void RestoreCommands::DoRestore(bool askLocation) {
    Trapped(system_.errors, Named(L"DoRestore"), [&] {
        if (!browser_.FollowSelection()) return;
        const ListedCopy copy = SelectedCopy();
        if (copy.path.empty()) {
            TellNothingSelected();
            return;
        }
        ExpectCopy(copy);
        std::wstring location = SubItem(browser_.Items(), L"Orginal Location");
        if (location.empty()) location = kUnknown;
        const std::wstring name = CFileName(CFileOrigin(copy.path));
        const SafePlace place{CopyFolderOf(copy.path), Val(SubItem(browser_.Items(), L"SP"))};
        const auto goal = ChooseGoal(name, location, askLocation || location == kUnknown);
        if (!goal) return;
        host_.Msg(L"Restoring: ", goal->typed);
        if (!MayReplace(*goal)) return;
        const bool entered = host_.Engine().InDestination(place.folder, [&] {
            ExpectCopy(copy);
            // The item takes its own name, whatever was typed beside the folder.
            KeepForUndo(*goal, JoinPath(goal->folder, name), place);
            host_.Engine().Extract(copy.path, goal->folder, false);
        });
        if (!entered) return;
        browser_.SelectLast();
        host_.BusyHide(true);
    });
}

std::optional<RestoreCommands::Goal> RestoreCommands::ChooseGoal(const std::wstring& name,
                                                                 const std::wstring& location,
                                                                 bool ask) {
    if (!ask) return Goal{location, location + L"\\" + name};
    MRecentFiles::Filter(dialog_, FileDialogKind::SaveList, dialog_.defaultFolder);
    dialog_.flags = kSaveFlags;
    dialog_.defaultExtension.clear();
    dialog_.fileName = name;
    dialog_.initialFolder = location == kUnknown ? kUnknownFolder : location;
    const auto chosen = dialogs_.ShowSave(dialog_);
    if (!chosen) return std::nullopt;
    return Goal{CFileLocation(*chosen), *chosen};
}

bool RestoreCommands::MayReplace(const Goal& goal) {
    return !system_.files.Look(goal.typed) ||
           Ask(L"هل تريد بالتأكيد حذف الملف التالي واستبداله بالنسخة الاحتياطية:\r\n" + goal.typed);
}

void RestoreCommands::KeepForUndo(const Goal& goal, const std::wstring& target,
                                  const SafePlace& place) {
    if (system_.files.Look(goal.typed)) KeepForUndo(goal.typed, place);
    if (!EqualNoCase(goal.typed, target) && system_.files.Look(target)) {
        KeepForUndo(target, place);
    }
}

// Raises when what is about to be overwritten could not be kept.
void RestoreCommands::KeepForUndo(const std::wstring& path, const SafePlace& place) {
    int highest = 0;
    if (IsStored(path, highest)) return;
    const std::wstring copyName = FreeSafetyName(path, NextSafetyNumber(highest), place);
    const auto facts = system_.files.Look(path);
    const bool isFolder = facts && facts->isFolder;
    host_.Engine().BackupPath(path, static_cast<std::int16_t>(place.location), isFolder, isFolder,
                              copyName);
    if (!state_.cancelRequested && SameContent(system_.files, path, copyName)) return;
    RemovePartial(copyName);
    Raise(error_number::kAccessError, path);
}

// It has the date of what it was made from, and would count as its safety copy.
void RestoreCommands::RemovePartial(const std::wstring& copyName) {
    Trapped(system_.errors, Named(L"DoRestore"), [&] {
        if (system_.files.Look(copyName)) host_.Engine().DeleteCopy(copyName);
        const std::wstring comment = CPackage::PackageCommentFile(copyName);
        if (system_.files.Look(comment)) system_.files.EraseFile(comment);
    });
    browser_.SelectLast();
}

// What stands under the name that is due is a safety copy of another item: the user typed its name,
// or restores elsewhere. It stays.
std::wstring RestoreCommands::FreeSafetyName(const std::wstring& path, int number,
                                             const SafePlace& place) {
    for (; number <= kHighestNumber; ++number) {
        std::wstring copyName = CFilePackageName(path, number, place.location, place.folder);
        if (!system_.files.Look(copyName)) return copyName;
    }
    Raise(error_number::kOverflow, path);
}

// Whether one of the listed copies has the date of the item; `highest` is the highest number of
// those looked at.
bool RestoreCommands::IsStored(const std::wstring& path, int& highest) {
    const Date date = NewestDateOf(system_, host_.Engine(), path);
    ListView& copies = browser_.Copies();
    const int count = copies.Count();
    for (int row = 0; row < count; ++row) {
        highest = std::max(highest, NumberOfLabel(copies.SubItem(row, kNameColumn)));
        const std::wstring copy = copies.SubItem(row, L"BackupName");
        if (NewestDateOf(system_, host_.Engine(), copy) != date) continue;
        // One that did not become whole and could not be removed has the date, too.
        if (!IsSafetyLabel(copies.SubItem(row, kNameColumn)) ||
            SameContent(system_.files, path, copy)) {
            return true;
        }
    }
    return false;
}

}  // namespace vw
