#include "app/MainWindow.h"

#include "app/Application.h"
#include "app/DriveChoices.h"
#include "app/MainCommands.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/ProgramState.h"
#include "platform/Scoped.h"
#include "platform/SystemPath.h"
#include "platform/TextCase.h"
#include "platform/WindowsHeader.h"
#include "ui/ControlNames.h"
#include "ui/EscapedError.h"
#include "ui/resource.h"
// The shell's declarations need those of the window system first.
#include <shellapi.h>

// The window itself: load, close, caption, and which command an event runs.

namespace vw {

namespace {

constexpr std::wstring_view kDialogFolder = L"C:\\My Documents";
constexpr std::wstring_view kOtherDialogFolder = L"D:\\My Documents";
// Part of the caption in both languages: a backup that the user starts himself.
constexpr std::wstring_view kManualTask = L"- مهمة نسخ يدوي [";

}  // namespace

MainWindow::MainWindow(const MainParts& parts)
    : parts_(parts), system_(parts.system), state_(parts.state), form_(parts.form) {}

void MainWindow::OnLoad(Form& form) {
    trap_(L"Form_Load", [&] {
        form.SetChoices(control::cmbDestination, DriveChoices(system_.files));
        ShowLists(form, ViewStyle::Details);
        ArrangeLists(form, ViewArrange::Top);
        parts_.list.Dialog().defaultFolder =
            system_.files.Stat(kDialogFolder) ? kDialogFolder : kOtherDialogFolder;
        parts_.list.Dialog().lastFolder = FolderOfRelativePaths();
        ShowAutoBackup(parts_.logonStart.ApplicationSartup(), false);
        form.SetText(control::lblBackages, std::to_wstring(state_.copiesCount));
        loadGuard_ = true;
        if (state_.copiesCount != 0) form.SetValue(control::vsBackages, state_.copiesCount);
        parts_.recent.UpdateRecentFiles();
        form.Maximise();
        form.Choose(control::cmbDestination, L"C:");
        SetCaption();
    });
}

bool MainWindow::OnQueryUnload(Form&, UnloadReason reason) {
    trap_(L"Form_QueryUnload", [&] {
        if (reason == UnloadReason::SessionEnd) {
            state_.sessionEnds = true;
            parts_.list.FileSave();
        } else {
            parts_.list.SaveOnClose();
        }
        parts_.application.frmUnload();
    });
    return true;
}

void MainWindow::OnEscaped(Form&, const std::exception_ptr& error) noexcept {
    ReportEscaped(error, trap_);
}

bool MainWindow::DefaultListInUse() const {
    return EqualNoCase(state_.currentListPath, state_.DefaultListPath());
}

void MainWindow::SetCaption() {
    std::wstring caption(kApplicationTitle);
    if (DefaultListInUse()) {
        caption += L' ';
    } else {
        caption.append(kManualTask).append(MFileDosShell::CFileName(state_.currentListPath));
        caption += L']';
    }
    form_.SetCaption(caption);
    form_.Menus().Enable(control::mnuOptions, DefaultListInUse(), 0);
    if (oneItem_ && !EqualNoCase(state_.currentListPath, state_.SingleItemListPath())) {
        oneItem_ = false;
        EnableEditing(true);
    }
}

void MainWindow::ShowAutoBackup(bool isOn, bool isNew) {
    if (form_.IsLoaded()) form_.Menus().Check(control::mnuOptions, isOn, 0);
    if (!isNew) return;
    parts_.status.ShowNotice(
        state_.IsArabic()
            ? L"سيبدأ Windows تشغيل Vaultwright عند تسجيل الدخول. لا يُنسخ شيء عندئذٍ: يبدأ "
              L"النسخ الاحتياطي بالأمر «النسخ الآن»."
            : L"Windows now starts Vaultwright at log-on. That alone backs nothing up: a "
              L"backup runs when you choose Backup now.");
}

void MainWindow::ShowRecentFiles(const RecentFileMenu& menu) {
    int index = 1;
    for (const RecentFileEntry& entry : menu) {
        form_.Menus().SetText(control::mnuRecentFile, entry.caption, index);
        form_.Menus().Show(control::mnuRecentFile, entry.visible, index);
        ++index;
    }
}

void MainWindow::KeepToOneItem() {
    oneItem_ = true;
    EnableEditing(false);
}

void MainWindow::EnableEditing(bool on) {
    for (const std::wstring_view name :
         {control::mnuAddFile, control::mnuAddFiles, control::mnuAddFolder, control::mnuDel,
          control::mnuDelAll}) {
        form_.Menus().Enable(name, on);
    }
    for (const auto* key : {L"FileNew", L"FileOpen", L"FileSave", L"EditAddFile", L"EditAddFiles",
                            L"EditAddFolder", L"Del", L"EditDelAll"}) {
        form_.Tools(control::Toolbar1).Enable(key, on);
    }
    DragAcceptFiles(form_.Control(control::lsvBackupList), on ? TRUE : FALSE);
}

void MainWindow::OnControl(Form&, const ControlEvent& event) {
    switch (event.id) {
        default:
            if (event.kind == EventKind::Click) Run(event.id);
            break;
        case ID_vsBackages:
            // The count changes by program too, in the middle of other commands.
            vsBackagesChange(event.value);
            break;
        case ID_cmbDestination:
            return InBracket(L"cmbDestination_Click", [this] { cmbDestinationClick(); });
        case ID_lsvBackupList:
        case ID_lsvRestore1:
        case ID_lsvRestore2:
            OnList(event);
            break;
        case ID_sbrStatus:
            trap_(L"sbrStatus_Click", [this] {
                if (!isRunning_) parts_.busy.ShowLastReport();
            });
            break;
    }
}

void MainWindow::OnList(const ControlEvent& event) {
    const bool items = event.id == ID_lsvBackupList;
    const bool stored = event.id == ID_lsvRestore1;
    switch (event.kind) {
        case EventKind::Click:
            if (items) OnItemClicked(event.value);
            break;
        case EventKind::Selection:
            if (items) {
                InBracket(L"lsvBackupListClick", [this] { parts_.editing.lsvBackupListClick(); });
            } else if (stored) {
                InBracket(L"lsvRestore1ItemClick",
                          [&] { parts_.browser.lsvRestore1ItemClick(event.value); });
            }
            break;
        case EventKind::KeyUp:
            if (event.value == VK_DELETE) {
                const int entry = items ? ID_mnuDel : stored ? ID_mnuDelCopies : ID_mnuDelCopy;
                if (form_.Menus().IsEnabled(entry)) Run(entry);
            }
            break;
        case EventKind::ItemActivate:
            if (!stored) Run(items ? ID_mnuOpen : ID_mnuOpenCopy);
            break;
        case EventKind::ColumnClick:
            OnColumnClick(event);
            break;
        case EventKind::DropFiles:
            InBracket(L"lsvBackupList_OLEDragDrop",
                      [&] { parts_.editing.lsvBackupList_OLEDragDrop(event.files); });
            break;
        default:
            break;
    }
}

// A click on the row that is selected already is no change of the selection. The copies may be
// those of another item meanwhile.
void MainWindow::OnItemClicked(int row) {
    if (row < 0 || parts_.browser.Shows(parts_.list.Rows().PathOf(row))) return;
    InBracket(L"lsvBackupListClick", [this] { parts_.editing.lsvBackupListClick(); });
}

void MainWindow::OnColumnClick(const ControlEvent& event) {
    InBracket(L"lsvBackupList_ColumnClick", [&] {
        if (event.id == ID_lsvBackupList) {
            parts_.editing.lsvBackupListColumnClick(event.value);
        } else if (event.id == ID_lsvRestore1) {
            parts_.browser.lsvRestore1ColumnClick(event.value);
        } else {
            parts_.browser.lsvRestore2ColumnClick(event.value);
        }
    });
}

void MainWindow::Run(int id) {
    const MainCommand* command = MainCommand::Find(id);
    if (command != nullptr) InBracket(command->procedure, [&] { command->run(parts_); });
}

// A handler that fails leaves the window disabled: nothing half done can be worked with. The idle
// watch gives it back soon.
void MainWindow::InBracket(std::wstring_view procedure, const std::function<void()>& body) {
    if (isRunning_) return;
    const ScopedFlag guard(isRunning_);
    trap_(procedure, [&] {
        parts_.application.Ready(false);
        body();
        // The busy dialog enables the window again before the command ends, so selection changes
        // made in between are picked up here.
        while (form_.IsLoaded() && !parts_.browser.FollowSelection()) continue;
        parts_.application.Ready(true);
    });
}

void MainWindow::cmbDestinationClick() {
    parts_.browser.SourceChosen();
    parts_.list.ChooseDestination(form_.Text(control::cmbDestination).append(kBackupFolder));
}

void MainWindow::vsBackagesChange(int value) {
    trap_(L"vsBackagesChange", [&] {
        if (!loadGuard_) state_.listModified = true;
        loadGuard_ = false;
        form_.SetText(control::lblBackages, std::to_wstring(value));
        state_.copiesCount = static_cast<std::int16_t>(value);
    });
}

}  // namespace vw
