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

void RestoreCommands::mnuDelCopyClick() { DoDelCopy(true); }

void RestoreCommands::mnuDelCopiesClick() { DoDelFile(); }

void RestoreCommands::mnuOpenCopyClick() {
    Trapped(system_.errors, Named(L"mnuOpenCopyClick"), [this] {
        const std::wstring path = SubItem(browser_.Copies(), L"BackupName");
        if (path.empty()) {
            TellNothingSelected();
            return;
        }
        ExpectCopy(path);
        MMyScripting::ShellPath(system_, path);
    });
}

// A run of another process may have moved the copies since they were listed: under the name of the
// one that the user saw would stand another.
bool RestoreCommands::IsStillThere(const std::wstring& path) {
    return system_.files.Look(path) &&
           DateText(MFileDosShell::PathDate(system_, host_.Engine(), path)) ==
               SubItem(browser_.Copies(), L"Date");
}

void RestoreCommands::ExpectCopy(const std::wstring& path) {
    if (IsStillThere(path)) return;
    const int row = browser_.Items().Selected();
    if (row >= 0) browser_.ListCopyes(row);
    if (browser_.Copies().Count() == 0) browser_.ListRestoreFiles();
    Raise(error_number::kFileNotFound, path);
}

void RestoreCommands::TellNothingSelected() {
    system_.boxes.MsgBox({.text = main_.Text(L"lblNoRestore")});
}

bool RestoreCommands::Ask(const std::wstring& question) {
    return system_.boxes.MsgBox(
               {.text = question, .buttons = BoxButtons::YesNo, .rightToLeft = true}) ==
           BoxAnswer::Yes;
}

void RestoreCommands::DoDelCopy(bool ask) {
    Trapped(system_.errors, Named(L"DoDelCopy"), [&] {
        ListView& items = browser_.Items();
        ListView& copies = browser_.Copies();
        const int row = items.Selected();
        if (row < 0 || copies.Selected() < 0) {
            TellNothingSelected();
            return;
        }
        if (!ask) {
            DeleteCopy();
            return;
        }
        const bool isFolder = EqualNoCase(SubItem(items, L"Type"), L"Folder");
        // No blank behind the bracket.
        if (!Ask(L"هل تريد بالتأكيد حذف النسخة رقم [" + SubItem(copies, kNameColumn) + L"]من " +
                 (isFolder ? L"المجلد:" : L"الملف:") + L"\r\n" + SubItem(items, kNameColumn))) {
            return;
        }
        const bool others = copies.Count() > 1;
        Trapped(system_.errors, Named(L"DoDelCopy"), [this] { DeleteCopy(); });
        if (others) {
            browser_.ListCopyes(row);
        } else {
            browser_.ListRestoreFiles();
        }
    });
}

// Only the newest copy has a comment file. A copy that stays, because somebody uses it, keeps its
// comment: without it nobody would know where the item was.
void RestoreCommands::DeleteCopy() {
    const std::wstring path = SubItem(browser_.Copies(), L"BackupName");
    static_cast<void>(host_.Engine().InDestination(CopyFolderOf(path), [&] {
        if (!IsStillThere(path)) Raise(error_number::kFileNotFound, path);
        host_.Engine().DeleteCopy(path);
        MFileDosShell::DeletePath(system_, CPackage::PackageCommentFile(path));
        RemoveEmptyFolders(MFileDosShell::CFileLocation(path), CopyFolderOf(path));
    }));
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
        ListView& items = browser_.Items();
        if (items.Selected() < 0) {
            TellNothingSelected();
            return;
        }
        if (!Ask(L"هل تريد بالتأكيد حذف كافة النسخ الاحتياطية العائدة للملف:\r\n" +
                 SubItem(items, kNameColumn))) {
            return;
        }
        for (int row = browser_.Copies().Count() - 1; row >= 0; --row) {
            browser_.Copies().Select(row);
            DoDelCopy(false);
        }
        browser_.ListRestoreFiles();
    });
}

}  // namespace vw
