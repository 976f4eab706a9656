#include "app/MainCommands.h"

#include <algorithm>
#include <array>

#include "app/KeepAwake.h"
#include "app/LanguageChoice.h"
#include "app/LogonStart.h"
#include "app/MainHost.h"
#include "fsutil/NameCase.h"
#include "fsutil/PathText.h"
#include "fsutil/Scripting.h"
#include "list/editing/BackupList.h"
#include "list/editing/ListEditing.h"
#include "list/editing/RecentFiles.h"
#include "list/editing/SubItem.h"
#include "platform/FileSystem.h"
#include "platform/MsgBox.h"
#include "platform/ProgramState.h"
#include "platform/TextCase.h"
#include "restore/CopiesBrowser.h"
#include "restore/RestoreCommands.h"

namespace vw {

// Buttons of one array entry name their index; those without an entry of their own come last.
const MainCommand* MainCommand::Find(std::wstring_view menu, std::wstring_view key) {
    static constexpr MainCommand kCommands[] = {
        {L"mnuAddFile", L"EditAddFile", 0, L"mnuAddFileClick", &MainWindow::mnuAddFileClick},
        {L"mnuAddFiles", L"EditAddFiles", 0, L"AddRule", &MainWindow::mnuAddFilesClick},
        {L"mnuAddFolder", L"EditAddFolder", 0, L"mnuAddFolderClick",
         &MainWindow::mnuAddFolderClick},
        {L"mnuDel", L"Del", 0, L"mnuDelClick", &MainWindow::mnuDelClick},
        {L"mnuDelAll", L"EditDelAll", 0, L"mnuDelAllClick", &MainWindow::mnuDelAllClick},
        {L"mnuBackup", L"ActionBackup", 0, L"mnuBackupClick", &MainWindow::mnuBackupClick},
        {{}, L"ActionOpen", 0, L"mnuOpenClick", &MainWindow::ActionOpen},
        {L"mnuRestore", L"ActionRestore", 0, L"mnuRestoreClick", &MainWindow::mnuRestoreClick},
        {L"mnuRestoreTo", L"ActionRestoreTo", 0, L"mnuRestoreToClick",
         &MainWindow::mnuRestoreToClick},
        {L"mnuViewMethod", L"ViewLIcons", 0, L"mnuViewMethodClick",
         &MainWindow::mnuViewMethodClick},
        {{}, L"ViewSIcons", 1, L"mnuViewMethodClick", &MainWindow::mnuViewMethodClick},
        {{}, L"ViewList", 2, L"mnuViewMethodClick", &MainWindow::mnuViewMethodClick},
        {{}, L"ViewDetails", 3, L"mnuViewMethodClick", &MainWindow::mnuViewMethodClick},
        {L"mnuFileNew", L"FileNew", 0, L"mnuFileNewClick", &MainWindow::mnuFileNewClick},
        {L"mnuFileOpen", L"FileOpen", 0, L"mnuFileOpenClick", &MainWindow::mnuFileOpenClick},
        {L"mnuFileSave", L"FileSave", 0, L"mnuFileSaveClick", &MainWindow::mnuFileSaveClick},
        {L"mnuFileSaveAs", L"FileSaveAs", 0, L"mnuFileSaveAsClick",
         &MainWindow::mnuFileSaveAsClick},
        {L"mnuFileClose", L"FileExit", 0, L"mnuFileCloseClick", &MainWindow::mnuFileCloseClick},
        {L"mnuRecentFile", {}, 0, L"mnuRecentFileClick", &MainWindow::mnuRecentFileClick},
        {L"mnuOpen", {}, 0, L"mnuOpenClick", &MainWindow::mnuOpenClick},
        {L"mnuOpenCopy", {}, 0, L"mnuOpenCopyClick", &MainWindow::mnuOpenCopyClick},
        {L"mnuDelCopy", {}, 0, L"mnuDelCopyClick", &MainWindow::mnuDelCopyClick},
        {L"mnuDelCopies", {}, 0, L"mnuDelCopiesClick", &MainWindow::mnuDelCopiesClick},
        {L"mnuViewAlign", {}, 0, L"mnuViewAlignClick", &MainWindow::mnuViewAlignClick},
        {L"mnuOptions", {}, 0, L"mnuOptionsClick", &MainWindow::mnuOptionsClick},
        {L"mnuToolRepair", {}, 0, L"mnuToolRepairClick", &MainWindow::mnuToolRepairClick},
        {L"mnuToolsDelTemp", {}, 0, L"mnuToolsDelTempClick", &MainWindow::mnuToolsDelTempClick},
        {L"mnuHelpHelp", {}, 0, L"mnuHelpHelpClick", &MainWindow::mnuHelpHelpClick},
        {L"mnuHelpAbout", {}, 0, L"mnuHelpAboutClick", &MainWindow::mnuHelpAboutClick},
        {L"mnuToolEnAr", {}, 0, L"mnuToolEnArClick", &MainWindow::mnuToolEnArClick},
    };
    const auto found =
        std::find_if(std::begin(kCommands), std::end(kCommands), [&](const MainCommand& command) {
            return menu.empty() ? !command.key.empty() && EqualNoCase(command.key, key)
                                : command.menu == menu;
        });
    return found == std::end(kCommands) ? nullptr : &*found;
}

void MainWindow::mnuFileNewClick(int) { parts_->list.FileNew(false); }

void MainWindow::mnuFileOpenClick(int) { parts_->list.FileOpen(); }

void MainWindow::mnuRecentFileClick(int index) { parts_->recent.mnuRecentFileClick(index); }

void MainWindow::mnuFileSaveClick(int) { parts_->list.FileSave(); }

void MainWindow::mnuFileSaveAsClick(int) { parts_->list.FileSaveAs(); }

void MainWindow::mnuFileCloseClick(int) { parts_->list.DoClose(); }

void MainWindow::mnuBackupClick(int) {
    if (parts_->list.Rows().Count() == 0) {
        system_.boxes.MsgBox({.text = form_.Text(L"lblNoFileToBack"), .rightToLeft = true});
        return;
    }
    // The engine reads the file: a run with a file that differs from the window would back up what
    // was deleted, and leave out what was added.
    if (!parts_->list.FileSave()) return;
    state_.cancelRequested = false;
    host_.BackUpCurrentList();
    // The end of the busy dialog has given the window back, but the command still runs: what the
    // user chose now would be lost.
    host_.Ready(false);
    parts_->browser.ListRestoreFiles();
    // The user goes on with the item that is selected, if it has copies.
    parts_->browser.RestoredPath(SubItem(parts_->list.Rows().List(), L"Path"));
    parts_->list.Rows().UpdateWarnings();
    host_.Ready(true);
    host_.EndBusy();
}

void MainWindow::mnuAddFileClick(int) { parts_->editing.mnuAddFileClick(); }

void MainWindow::mnuAddFilesClick(int) { parts_->editing.AddRule(); }

void MainWindow::mnuAddFolderClick(int) { parts_->editing.mnuAddFolderClick(); }

void MainWindow::mnuDelClick(int) { parts_->editing.DelItem(); }

void MainWindow::mnuDelAllClick(int) { parts_->editing.mnuDelAllClick(); }

// For a rule, opens its folder.
void MainWindow::mnuOpenClick(int) {
    if (parts_->list.Rows().Count() == 0) {
        system_.boxes.MsgBox({.text = form_.Text(L"lblNoFileToBack"), .rightToLeft = true});
        return;
    }
    std::wstring path = SubItem(parts_->list.Rows().List(), L"Path");
    if (path.ends_with(L'*')) path.pop_back();
    if (!path.empty()) MMyScripting::ShellPath(system_, path);
}

// The button belongs to the list that the user worked in last.
void MainWindow::ActionOpen(int index) {
    const HWND focus = GetFocus();
    const bool atCopies = focus != nullptr && (focus == form_.Control(L"lsvRestore1") ||
                                               focus == form_.Control(L"lsvRestore2"));
    if (atCopies && parts_->browser.Copies().Selected() >= 0) {
        mnuOpenCopyClick(index);
    } else {
        mnuOpenClick(index);
    }
}

void MainWindow::mnuRestoreClick(int) {
    const KeepAwake awake;
    parts_->restore.mnuRestoreClick();
}

void MainWindow::mnuRestoreToClick(int) {
    const KeepAwake awake;
    parts_->restore.mnuRestoreToClick();
}

void MainWindow::mnuOpenCopyClick(int) { parts_->restore.mnuOpenCopyClick(); }

void MainWindow::mnuDelCopyClick(int) {
    const KeepAwake awake;
    parts_->restore.mnuDelCopyClick();
}

void MainWindow::mnuDelCopiesClick(int) {
    const KeepAwake awake;
    parts_->restore.mnuDelCopiesClick();
}

void MainWindow::mnuViewMethodClick(int index) {
    static constexpr std::array kKeys{L"ViewLIcons", L"ViewSIcons", L"ViewList", L"ViewDetails"};
    const auto chosen = static_cast<std::size_t>(index);
    for (const auto* name : {L"lsvBackupList", L"lsvRestore1", L"lsvRestore2"}) {
        form_.List(name).SetStyle(static_cast<ViewStyle>(index));
    }
    form_.Menus().CheckOnly(L"mnuViewMethod", index);
    for (std::size_t i = 0; i < kKeys.size(); ++i) {
        form_.Tools(L"Toolbar1").Check(kKeys[i], i == chosen);
    }
}

void MainWindow::mnuViewAlignClick(int index) {
    for (const auto* name : {L"lsvBackupList", L"lsvRestore1", L"lsvRestore2"}) {
        form_.List(name).SetArrange(static_cast<ViewArrange>(index));
    }
    form_.Menus().CheckOnly(L"mnuViewAlign", index);
}

void MainWindow::mnuOptionsClick(int index) {
    if (index == 0)
        parts_->logonStart.ApplicationSartup(!form_.Menus().IsChecked(L"mnuOptions", 0));
}

// Nothing brings the old names back, so the user is asked first.
void MainWindow::mnuToolRepairClick(int) {
    std::wstring folder = parts_->editing.GetFileFolder(FileDialogKind::AddFolder);
    MFileDosShell::QuoteRmove(folder);
    if (folder.empty()) return;
    const std::wstring question =
        state_.arabic
            ? L"هل تريد تحويل الأحرف الكبيرة في أسماء كل الملفات والمجلدات داخل هذا "
              L"المجلد إلى أحرف صغيرة؟ لا يمكن التراجع عن ذلك."
            : L"Rename all files and folders in this folder to lower case? This cannot be "
              L"undone.";
    if (system_.boxes.MsgBox({.text = question + L"\r\n" + folder,
                              .buttons = BoxButtons::YesNo,
                              .rightToLeft = state_.arabic,
                              .secondIsDefault = true}) != BoxAnswer::Yes) {
        return;
    }
    const KeepAwake awake;
    MFileDosShell::TreeNamesLower(system_, folder);
    system_.boxes.MsgBox({.text = L"Done"});
}

void MainWindow::mnuToolsDelTempClick(int) { host_.DeleteTemporaryFiles(); }

// A page that is missing opens nothing.
void MainWindow::mnuHelpHelpClick(int) {
    const std::wstring page = state_.applicationFolder +
                              (state_.arabic ? L"\\Help\\" : L"\\Help\\en\\") +
                              state_.executableBaseName + L".htm";
    if (system_.files.Look(page)) MMyScripting::ShellPath(system_, page);
}

void MainWindow::mnuHelpAboutClick(int) {
    // The box disables the window itself, and gives it back before it goes.
    host_.Ready(true);
    host_.AsAbout();
}

void MainWindow::mnuToolEnArClick(int) {
    parts_->language.Write(!state_.arabic);
    parts_->list.FileSave();
    host_.EndAtOnce();
}

}  // namespace vw
