#include "app/Application.h"

#include <exception>

#include "app/MVaultwright.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/ExitStatus.h"
#include "platform/ProgramEnd.h"
#include "progress/SilentReport.h"

// How the program starts and ends.

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
      report_(report),
      language_(settings, system.boxes, state),
      logonStart_(system, api, settings, state, *this) {}

void Application::Start(std::wstring_view processCommandLine) {
    MVaultwright start(system_, state_, settings_, language_, logonStart_, *this);
    start.Main(processCommandLine);
    if (!windows_) return;
    AppearInSilentRun();
    if (state_.silentRun) lingersSince_ = system_.clock.Milliseconds();
    // What an error leaves of a silent run is the icon and its Exit entry; nobody can use an icon
    // that is not seen.
    const TrayIcon& icon = windows_->frmTrayIcon;
    if (icon.Window().IsLoaded() && !(icon.IsReachable() && DesktopIsVisible())) frmUnload();
}

bool Application::IsAlive() {
    if (!windows_) return false;
    windows_->idleWatch.Look();
    // A scheduler would wait for days for somebody who chooses Exit. While the menu of the icon is
    // open this is not asked.
    if (lingersSince_ && system_.clock.Milliseconds() - *lingersSince_ >= kLingerMilliseconds) {
        frmUnload();
    }
    return !windows_->LoadedForms().empty();
}

bool Application::HasMessages() {
    if (!state_.silentRun) return true;
    if (!windows_) return false;
    windows_->silent.AppearIfDue();
    return !windows_->LoadedForms().empty();
}

void Application::OnSilentBox() {
    if (lingersSince_) lingersSince_ = system_.clock.Milliseconds();
    AppearInSilentRun();
}

void Application::AppearInSilentRun() {
    if (state_.silentRun && windows_) windows_->silent.Appear();
}

// Windows ask before they go: the main window saves its list, the busy dialog cancels the work.
void Application::frmUnload() {
    if (unloading_ || rebuilding_) return;
    unloading_ = true;
    state_.endRequested = true;
    if (working_) {
        system_.exitStatus.Note(error_number::kCancelled);
        state_.cancelRequested = true;
        if (state_.silentRun) {
            report_.Failure(state_.arabic ? L"أُلغيت العملية"
                                          : DescriptionOf(error_number::kCancelled));
        }
        EndRun();
    }
    if (windows_) {
        // The work ends before the window whose list it works on.
        windows_->frmBusyDialog.Window().Unload();
        for (Form* form : windows_->LoadedForms()) form->Unload();
    }
    system_.programEnd.End(system_.exitStatus.Code());
}

void Application::EndAtOnce() {
    EndRun();
    if (windows_) {
        // Not by way of its closing, which would unload everything else.
        unloading_ = true;
        windows_->frmTrayIcon.Unload();
    }
    system_.programEnd.End(system_.exitStatus.Code());
    std::terminate();  // for compilers that do not see that the end is one
}

void Application::EndProcess() { system_.programEnd.End(system_.exitStatus.Code()); }

CPackage& Application::Engine() {
    if (!engine_) {
        engine_ = std::make_unique<CPackage>(system_, state_, static_cast<RunHost&>(*this));
    }
    return *engine_;
}

}  // namespace vw
