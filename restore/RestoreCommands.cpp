#include "restore/RestoreCommands.h"

#include "engine/CPackage.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "fsutil/Scripting.h"
#include "list/editing/SubItem.h"
#include "platform/DateText.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MsgBox.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "restore/CopiesBrowser.h"
#include "restore/CopiesIndex.h"
#include "restore/RestoreHost.h"
#include "ui/Form.h"

// Deleting and opening copies; restoring is in Restoring.cpp.

namespace vw {
namespace {

constexpr Procedure Named(std::wstring_view name) { return {name, L"Form", L"frmMain"}; }

}  // namespace

RestoreCommands::RestoreCommands(System& system, ProgramState& state, Form& main,
                                 CopiesBrowser& browser, FileDialogs& dialogs,
                                 FileDialogSetup& dialog, RestoreHost& host)
    : system_(system),
      state_(state),
      main_(main),
      browser_(browser),
      dialogs_(dialogs),
      dialog_(dialog),
      host_(host) {}

void RestoreCommands::mnuRestoreClick() { DoRestore(false); }

void RestoreCommands::mnuRestoreToClick() { DoRestore(true); }

void RestoreCommands::mnuDelCopyClick() { DoDelCopy(); }

void RestoreCommands::mnuDelCopiesClick() { DoDelFile(); }

void RestoreCommands::mnuOpenCopyClick() {
    Trapped(system_.errors, Named(L"mnuOpenCopyClick"), [this] {
        if (!browser_.FollowSelection()) return;
        const ListedCopy copy = SelectedCopy();
        if (copy.path.empty()) {
            TellNothingSelected();
            return;
        }
        ExpectCopy(copy);
        MMyScripting::ShellPath(system_, copy.path);
    });
}

RestoreCommands::ListedCopy RestoreCommands::SelectedCopy() {
    return {SubItem(browser_.Copies(), L"BackupName"), SubItem(browser_.Copies(), L"Date")};
}

// A run of another process may have moved the copies since they were listed: under the name of the
// one that the user saw would stand another.
bool RestoreCommands::IsStillThere(const ListedCopy& copy) {
    return system_.files.Look(copy.path) &&
           DateText(MFileDosShell::PathDate(system_, host_.Engine(), copy.path)) == copy.date;
}

void RestoreCommands::ExpectCopy(const ListedCopy& copy) {
    if (IsStillThere(copy)) return;
    const int row = browser_.Items().Selected();
    if (row >= 0) browser_.ListCopyes(row);
    if (browser_.Copies().Count() == 0) browser_.ListRestoreFiles();
    Raise(error_number::kFileNotFound, copy.path);
}

void RestoreCommands::TellNothingSelected() {
    system_.boxes.MsgBox({.text = main_.Text(L"lblNoRestore"), .rightToLeft = true});
}

bool RestoreCommands::Ask(const std::wstring& question) {
    return system_.boxes.MsgBox(
               {.text = question, .buttons = BoxButtons::YesNo, .rightToLeft = true}) ==
           BoxAnswer::Yes;
}

void RestoreCommands::DoDelCopy() {
    Trapped(system_.errors, Named(L"DoDelCopy"), [this] {
        if (!browser_.FollowSelection()) return;
        ListView& items = browser_.Items();
        ListView& copies = browser_.Copies();
        const int row = items.Selected();
        const ListedCopy copy = SelectedCopy();
        if (row < 0 || copy.path.empty()) {
            TellNothingSelected();
            return;
        }
        const bool isFolder = EqualNoCase(SubItem(items, L"Type"), L"Folder");
        // No blank behind the bracket.
        if (!Ask(L"هل تريد بالتأكيد حذف النسخة رقم [" + SubItem(copies, kNameColumn) + L"]من " +
                 (isFolder ? L"المجلد:" : L"الملف:") + L"\r\n" + SubItem(items, kNameColumn))) {
            return;
        }
        const bool others = copies.Count() > 1;
        DeleteCopy(copy);
        if (others) {
            browser_.ListCopyes(row);
        } else {
            browser_.ListRestoreFiles();
        }
        host_.BusyHide(false);
    });
}

// Only the newest copy has a comment file. A copy that stays, because somebody uses it, keeps its
// comment: without it nobody would know where the item was.
bool RestoreCommands::DeleteCopy(const ListedCopy& copy) {
    bool cancelled = false;
    Trapped(system_.errors, Named(L"DoDelCopy"), [&] {
        const std::wstring folder = CopyFolderOf(copy.path);
        cancelled = !host_.Engine().InDestination(folder, [&] {
            if (!IsStillThere(copy)) Raise(error_number::kFileNotFound, copy.path);
            host_.Engine().DeleteCopy(copy.path);
            MFileDosShell::DeletePath(system_, CPackage::PackageCommentFile(copy.path));
            RemoveEmptyFolders(MFileDosShell::CFileLocation(copy.path), folder);
        });
    });
    return !cancelled;
}

// A copy of an item below a folder with a point in its name lies in folders of its own. They would
// look like a copy, and an empty one.
void RestoreCommands::RemoveEmptyFolders(std::wstring folder, const std::wstring& copyFolder) {
    try {
        for (; folder.size() > copyFolder.size(); folder = MFileDosShell::CFileLocation(folder)) {
            system_.files.EraseFolder(folder);
        }
    } catch (const RuntimeError&) {
        // It holds something else.
    }
}

// One that cannot be deleted is told and costs the others nothing.
void RestoreCommands::DoDelFile() {
    Trapped(system_.errors, Named(L"DoDelFile"), [this] {
        if (!browser_.FollowSelection()) return;
        ListView& items = browser_.Items();
        if (items.Selected() < 0) {
            TellNothingSelected();
            return;
        }
        if (!Ask(L"هل تريد بالتأكيد حذف كافة النسخ الاحتياطية العائدة للملف:\r\n" +
                 SubItem(items, kNameColumn))) {
            return;
        }
        bool goesOn = true;
        for (int row = browser_.Copies().Count() - 1; row >= 0 && goesOn; --row) {
            browser_.Copies().Select(row);
            goesOn = DeleteCopy(SelectedCopy());
        }
        browser_.ListRestoreFiles();
        host_.BusyHide(false);
    });
}

}  // namespace vw
