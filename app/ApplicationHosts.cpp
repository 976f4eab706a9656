#include "app/Application.h"
#include "engine/RunTexts.h"
#include "list/editing/RowWarnings.h"
#include "list/editing/SubItem.h"
#include "platform/Clock.h"
#include "platform/EventPump.h"
#include "progress/SilentReport.h"

// What the rooms below ask of the program.

namespace vw {

void Application::Msg(std::wstring_view title, std::wstring_view message,
                      std::wstring_view subMessage, bool wait, bool close, bool showReport) {
    if (state_.silentRun) {
        report_.Msg(title, message, subMessage);
        windows_->silent.AppearIfDue();
    } else {
        windows_->frmBusyDialog.Msg(title, message, subMessage, wait, close, showReport);
    }
}

void Application::Msg(std::wstring_view title, std::wstring_view message) {
    Msg(title, message, {}, false, false, false);
}

void Application::Report(std::wstring_view text, bool wait) {
    if (state_.silentRun) {
        report_.Report(text);
        windows_->silent.AppearIfDue();
    } else {
        windows_->frmBusyDialog.Report(text, wait);
    }
}

void Application::Failure(std::wstring_view text) {
    Notice(text);
    if (state_.silentRun) report_.Failure(text);
}

// The two lines that the report has of such an item say nothing to whoever reads only errors.
void Application::OnItem(ItemEvent event, std::wstring_view path, const ItemSize&) {
    run_.OnItem(event);
    if (!state_.silentRun) return;
    if (event == ItemEvent::Missing) {
        report_.Failure(run_text::kMissing.With(state_.arabic, path));
    } else if (event == ItemEvent::Refused) {
        report_.Failure(run_text::kRefused.With(state_.arabic, path));
    }
}

void Application::OnSurveyed(std::wstring_view path, std::uint64_t bytes, Date newest) {
    if (!state_.silentRun) {
        windows_->list.Rows().Refresh(path, bytes, newest);
    } else if (IsInFuture(newest, runBegan_)) {
        Report(WarningText(RowWarning::FutureDate, state_.arabic), false);
        Report(path, false);
    }
}

// An error of the report itself has no report to go to.
void Application::NoteError(std::wstring_view details) {
    if (working_) run_.NoteFailure();
    if (!working_ || state_.silentRun || noting_ || details.empty()) return;
    noting_ = true;
    windows_->frmBusyDialog.Report(details, false);
    noting_ = false;
}

void Application::BusyHide(bool pause) {
    EndRun();
    EndErrors();
    windows_->frmBusyDialog.BusyHide(pause);
    report_.Flush();
}

bool Application::IsBusyShown() const { return windows_ && windows_->frmBusyDialog.IsShown(); }

// The system's copy call tells how far it is far more often than anybody can see.
void Application::DuringCopy() {
    constexpr std::uint64_t kMilliseconds = 50;
    if (system_.clock.Milliseconds() < nextPainting_) return;
    nextPainting_ = system_.clock.Milliseconds() + kMilliseconds;
    if (!state_.silentRun) windows_->frmBusyDialog.Repaint();
    // A cancel is noted now and acts after the file; the end of the session does not wait for it.
    system_.pump.DoEvents();
}

void Application::AbortRun() {
    if (engine_) engine_->Abort();
}

// A report that the user wants to keep keeps the main window waiting.
void Application::Ready(bool flag) {
    if (!windows_ || windows_->frmBusyDialog.KeepsReport()) return;
    Form& main = windows_->frmMain;
    if (!main.IsLoaded()) return;
    main.EnableForm(flag);
    main.SetMousePointer(flag ? MousePointer::Default : MousePointer::Hourglass);
}

void Application::UnloadTrayIcon() { windows_->frmTrayIcon.Unload(); }

std::vector<Form*> Application::LoadedForms() { return windows_->LoadedForms(); }

void Application::AsAbout() { windows_->frmAbout.AsAbout(windows_->frmMain); }

void Application::ShowLastReport() { windows_->frmBusyDialog.ShowLastReport(); }

// Deferred until the main window is visible: a process that hides its last window loses the
// foreground and may not reclaim it.
void Application::UnloadOpeningScreen() { openingScreenEnds_ = true; }

void Application::SetCaption() { windows_->main.SetCaption(); }

void Application::ShowStatus(std::wstring_view text) {
    if (windows_) windows_->main.Status().ShowNotice(text);
}

void Application::CheckAutoBackup(bool on) {
    if (windows_) windows_->main.CheckAutoBackup(on);
}

void Application::ExplainAutoBackup() {
    ShowStatus(state_.arabic
                   ? L"سيبدأ Windows تشغيل Vaultwright عند تسجيل الدخول. لا يُنسخ شيء عندئذٍ: يبدأ "
                     L"النسخ الاحتياطي بالأمر النسخ الآن."
                   : L"Windows now starts Vaultwright at log-on. That alone backs nothing up: a "
                     L"backup runs when you choose Backup now.");
}

void Application::ShowRecentFiles(const RecentFileMenu& menu) {
    windows_->main.ShowRecentFiles(menu);
}

void Application::FileOpen(std::wstring_view path) { windows_->list.FileOpen(path); }

void Application::OpenDefaultList() { windows_->list.OpenDefaultList(); }

void Application::ApplicationSartup(bool flag) { logonStart_.ApplicationSartup(flag); }

std::int16_t Application::LocationID(std::wstring_view path) { return Engine().LocationID(path); }

// The user sees his copies without choosing a drive first.
void Application::ListLoaded() {
    if (state_.silentRun) return;
    // Those on a drive that does not answer are not there, as far as anybody can see.
    const bool isThere = windows_->list.Rows().MayAnswer(state_.BackupTo);
    windows_->browser.RestoreFrom(isThere ? std::wstring_view(state_.BackupTo) : L"C:");
    windows_->browser.ListRestoreFiles();
    RestoredPath(SubItem(windows_->list.Rows().List(), L"Path"));
}

void Application::ListRestoreFiles() { windows_->browser.ListRestoreFiles(); }

void Application::RestoredPath(std::wstring_view path) { windows_->browser.RestoredPath(path); }
}  // namespace vw
