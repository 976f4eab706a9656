#include <algorithm>

#include "engine/CPackage.h"
#include "engine/CopyComment.h"
#include "engine/CopyName.h"
#include "fsutil/FileQueries.h"
#include "platform/ErrorTrap.h"
#include "platform/EventPump.h"
#include "platform/FileSystem.h"
#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "restore/CopiesBrowser.h"
#include "restore/CopiesIndex.h"
#include "restore/RestoreCommands.h"
#include "restore/RestoreHost.h"
#include "restore/SameContent.h"

// Keeping what a restore is about to overwrite.

namespace vw {

// False when the user cancelled.
bool RestoreCommands::KeepForUndo(const Goal& goal, const Selection& selection) {
    if (goal.existed && system_.files.Look(goal.typed) &&
        !KeepForUndo(goal.typed, Proof::Date, selection)) {
        return false;
    }
    if (EqualNoCase(goal.typed, goal.target) || !system_.files.Look(goal.target)) return true;
    // Nobody was asked about this one.
    return KeepForUndo(goal.target, Proof::Content, selection);
}

// Raises when what is about to be overwritten could not be kept.
bool RestoreCommands::KeepForUndo(const std::wstring& path, Proof proof,
                                  const Selection& selection) {
    const bool isStored = IsStored(path, proof, selection);
    if (state_.cancelRequested) return false;
    if (isStored) return true;
    const std::wstring copyName = FreeSafetyName(path, selection);
    const auto facts = system_.files.Look(path);
    const bool isFolder = facts && facts->isFolder;
    host_.Engine().BackupPath(path, static_cast<std::int16_t>(selection.item.location), isFolder,
                              isFolder, copyName);
    if (!state_.cancelRequested && SameContent(system_.files, path, copyName)) return true;
    RemovePartial(copyName);
    if (state_.cancelRequested) return false;
    Raise(error_number::kAccessError, path);
}

// It has the date of what it was made from, and would count as its safety copy.
void RestoreCommands::RemovePartial(const std::wstring& copyName) {
    Trapped(system_.errors, {L"DoRestore", L"Form", L"frmMain"}, [&] {
        if (system_.files.Look(copyName)) host_.Engine().DeleteCopy(copyName);
        const std::wstring comment = CPackage::PackageCommentFile(copyName);
        if (system_.files.Look(comment)) system_.files.EraseFile(comment);
    });
    browser_.SelectLast();
}

// The number behind the highest one; when there is none any more, the lowest free one. What stands
// under a name that is due is a safety copy of another item: the user typed its name, or restores
// elsewhere. It stays.
std::wstring RestoreCommands::FreeSafetyName(const std::wstring& path, const Selection& selection) {
    int highest = 0;
    for (const ListedCopy& copy : selection.copies) {
        highest = std::max(highest, NumberOfLabel(copy.label));
    }
    const auto findFrom = [&](int first) -> std::wstring {
        for (int number = first; number <= kHighestSafetyNumber; ++number) {
            std::wstring copyName =
                CFilePackageName(path, number, selection.item.location, selection.folder);
            if (!system_.files.Look(copyName)) return copyName;
        }
        return {};
    };
    std::wstring copyName = findFrom(NextSafetyNumber(highest));
    if (copyName.empty()) copyName = findFrom(kLowestSafetyNumber);
    if (copyName.empty()) {
        RaiseWith(error_number::kOverflow, In(restore_text::kAllNumbersUsed), path);
    }
    return copyName;
}

// Whether one of the listed copies has what stands at a path. The date alone decides for a file
// that the user was asked about and a copy that a backup made whole; otherwise the content has to
// be equal, too.
bool RestoreCommands::IsStored(const std::wstring& path, Proof proof, const Selection& selection) {
    const auto facts = system_.files.Look(path);
    const Date date = MFileDosShell::NewestDateOf(system_, host_.Engine(), path);
    for (const ListedCopy& copy : selection.copies) {
        if (state_.cancelRequested) return false;
        if (MFileDosShell::NewestDateOf(system_, host_.Engine(), copy.path) != date) continue;
        if (proof == Proof::Date && facts && !facts->isFolder && !copy.isFolder &&
            !IsSafetyLabel(copy.label)) {
            const auto comment = ReadCopyComment(system_, copy.path);
            if (!comment || !comment->isIncomplete) return true;
        }
        if (HasContentOf(system_.files, path, copy.path,
                         [this] { system_.pump.DoEventsIfDue(); })) {
            return true;
        }
    }
    return false;
}

}  // namespace vw
