#include "app/Program.h"
#include "list/editing/SubItem.h"

// What the rooms below ask of the program.

namespace vw {

void Program::Msg(std::wstring_view title, std::wstring_view message, std::wstring_view subMessage,
                  bool wait, bool close, bool showReport) {
    if (state_.silentRun) {
        report_.Msg(title, message, subMessage);
        windows_->frmBusyDialog.SendView();
    } else {
        windows_->frmBusyDialog.Msg(title, message, subMessage, wait, close, showReport);
    }
}

void Program::Msg(std::wstring_view title, std::wstring_view message) {
    Msg(title, message, {}, false, false, false);
}

void Program::Report(std::wstring_view text, bool wait) {
    if (state_.silentRun) {
        report_.Report(text);
        windows_->frmBusyDialog.SendView();
    } else {
        windows_->frmBusyDialog.Report(text, wait);
    }
}

void Program::BusyHide(bool pause) {
    windows_->frmBusyDialog.BusyHide(pause);
    streams_.Flush();
}

void Program::DuringCopy() { windows_->frmBusyDialog.Repaint(); }

void Program::AbortRun() {
    if (engine_) engine_->Abort();
}

// A report that the user wants to keep keeps the main window waiting.
void Program::Ready(bool flag) {
    if (!windows_ || windows_->frmBusyDialog.KeepsReport()) return;
    Form& main = windows_->frmMain;
    if (!main.IsLoaded()) return;
    main.EnableForm(flag);
    main.SetMousePointer(flag ? MousePointer::Default : MousePointer::Hourglass);
}

void Program::UnloadTrayIcon() { windows_->frmTrayIcon.Unload(); }

std::vector<Form*> Program::LoadedForms() { return windows_->LoadedForms(); }

void Program::AsAbout() { windows_->frmAbout.AsAbout(windows_->frmMain); }

void Program::UnloadOpeningScreen() { windows_->frmAbout.Unload(); }

void Program::SetCaption() { windows_->main.SetCaption(); }

void Program::CheckAutoBackup(bool on) {
    if (windows_) windows_->main.CheckAutoBackup(on);
}

void Program::ShowRecentFiles(const RecentFileMenu& menu) { windows_->main.ShowRecentFiles(menu); }

void Program::FileOpen(std::wstring_view path) { windows_->list.FileOpen(path); }

void Program::GetList() { windows_->list.GetList(); }

void Program::ApplicationSartup(bool flag) { logonStart_.ApplicationSartup(flag); }

std::int16_t Program::LocationID(std::wstring_view path) { return Engine().LocationID(path); }

// The user sees his copies without choosing a drive first.
void Program::ListLoaded() {
    if (state_.silentRun) return;
    windows_->browser.RestoreFrom(state_.BackupTo);
    windows_->browser.ListRestoreFiles();
    RestoredPath(SubItem(windows_->list.Rows().List(), L"Path"));
}

void Program::ListRestoreFiles() { windows_->browser.ListRestoreFiles(); }

void Program::RestoredPath(std::wstring_view path) { windows_->browser.RestoredPath(path); }

}  // namespace vw
