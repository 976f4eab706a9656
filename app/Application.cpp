#include "app/Application.h"

#include <exception>
#include <utility>

#include "app/MVaultwright.h"
#include "fsutil/TempCleaning.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/ExitStatus.h"
#include "platform/ProcessExit.h"
#include "platform/Scoped.h"

namespace vw {

namespace {

constexpr std::uint64_t kLingerMilliseconds = 60'000;

}  // namespace

Application::Application(System& system, ProgramState& state, MRecentFiles::SettingsStore& settings,
                         CCommonAPI& api, SilentReport& report)
    : system_(system),
      state_(state),
      settings_(settings),
      api_(api),
      language_(settings, system.boxes, state),
      logonStart_(system, api, settings, state,
                  [this](bool isOn, bool isNew) {
                      if (windows_) windows_->main.ShowAutoBackup(isOn, isNew);
                  }),
      work_(system, state, report, [this]() -> CPackage& { return Engine(); }) {}

void Application::Start(std::wstring_view processCommandLine) {
    MVaultwright start(system_, state_, settings_, language_, logonStart_, *this);
    start.Main(processCommandLine);
    if (!windows_) return;
    ShowSilentWindows();
    if (state_.silentRun) lingersSince_ = system_.clock.Milliseconds();
    // What an error leaves of a silent run is the icon and its Exit entry; nobody can use an icon
    // that is not seen.
    const TrayIcon& icon = windows_->frmTrayIcon;
    if (icon.Window().IsLoaded() && !(icon.IsReachable() && DesktopIsVisible())) frmUnload();
}

void Application::OnIdle() {
    if (!windows_) return;
    windows_->idleWatch.Check();
    // A scheduler would wait for days for somebody who chooses Exit. While the menu of the icon is
    // open this is not called.
    if (lingersSince_ && system_.clock.Milliseconds() - *lingersSince_ >= kLingerMilliseconds) {
        frmUnload();
    }
}

bool Application::HasLoadedWindow() const { return windows_ && !windows_->LoadedForms().empty(); }

void Application::ShowWindowsIfDue() {
    if (windows_) windows_->silent.ShowWindowsIfDue();
}

void Application::ShowSilentWindows() {
    if (state_.silentRun && windows_) windows_->silent.ShowWindows();
}

void Application::OnSilentBox() {
    if (lingersSince_) lingersSince_ = system_.clock.Milliseconds();
    ShowSilentWindows();
}

// An Arabic window needs the keyboard and the digits to go with it.
void Application::MakeWindows() {
    const bool again = windows_ && windows_->frmMain.IsLoaded();
    if (again) {
        // It saves its list, and the program does not end with it.
        const ScopedFlag rebuilding(isRebuilding_);
        windows_->frmMain.Unload();
    }
    language_.PrepareArabicOnce(api_);
    windows_ =
        std::make_unique<WindowSet>(system_, state_, settings_, logonStart_, language_, *this);
    work_.SetWindows(windows_.get());
    if (again) ShowMainWindow();
}

// The dialog is painted while one large file is copied; a system that takes the program for hung
// would hide it behind a picture of itself.
void Application::ShowOpeningScreen() {
    DisableProcessWindowsGhosting();
    windows_->frmAbout.ShowOpeningScreen();
    isOpening_ = true;
}

// The opening screen stays until the main window is visible and painted. A process that hides its
// last window loses the foreground and may not reclaim it, and an empty window looks broken.
void Application::ShowMainWindow() {
    if (isUnloading_) return;
    if (state_.silentRun) return;
    windows_->frmMain.Show();
    windows_->frmMain.Repaint();
    if (isOpening_) windows_->frmAbout.Unload();
    isOpening_ = false;
}

void Application::DeleteTemporaryFiles() {
    work_.Run([this] { MFileDosShell::DellTemp(system_, state_, shell_, api_.IsWinNT(), work_); });
}

CPackage& Application::Engine() {
    if (!engine_) engine_ = std::make_unique<CPackage>(system_, state_, work_, *this);
    return *engine_;
}

// A report that the user wants to keep keeps the main window disabled.
void Application::Ready(bool flag) {
    if (!windows_ || windows_->frmBusyDialog.KeepsReport()) return;
    Form& main = windows_->frmMain;
    main.EnableForm(flag);
    main.SetMousePointer(flag ? MousePointer::Default : MousePointer::Hourglass);
}

// Windows ask before they go: the main window saves its list, the busy dialog cancels the work.
void Application::frmUnload() {
    if (isRebuilding_ || std::exchange(isUnloading_, true)) return;
    state_.endRequested = true;
    work_.Abort();
    if (windows_) {
        // The work ends before the window whose list it works on.
        windows_->frmBusyDialog.Window().Unload();
        for (Form* form : windows_->LoadedForms()) form->Unload();
    }
    system_.programEnd.End(system_.exitStatus.Code());
}

void Application::EndAtOnce() {
    work_.EndRun();
    if (windows_) {
        // Not by way of its closing, which would unload everything else.
        isUnloading_ = true;
        windows_->frmTrayIcon.Unload();
    }
    system_.programEnd.End(system_.exitStatus.Code());
    std::terminate();  // for compilers that do not see that the end is one
}

}  // namespace vw
