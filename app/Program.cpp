#include "app/Program.h"

#include "app/MVaultwright.h"
#include "fsutil/PathText.h"
#include "platform/Desktop.h"

// How the program is put together, and how it ends.

namespace vw {

namespace {

std::wstring ProgramPath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

ProgramState InitialState() {
    const std::wstring path = ProgramPath();
    ProgramState state;
    state.applicationFolder = MFileDosShell::CFileLocation(path);
    state.executableBaseName = MFileDosShell::CFileFirstName(path);
    return state;
}

}  // namespace

Program::Program()
    : state_(InitialState()),
      report_(streams_),
      boxes_(state_, [this](std::wstring_view text) { Echo(text); }),
      errors_(boxes_, exitStatus_),
      ansi_(CP_ACP),
      system_{files_, pump_, boxes_, errors_, exitStatus_, *this, clock_, ansi_},
      settings_(errors_, state_.executableBaseName),
      api_(registry_, ansi_, boxes_, faults_),
      language_(settings_, boxes_, state_),
      logonStart_(system_, api_, settings_, state_, *this) {
    pump_.SetFilter(Form::TranslateKeys);
}

int Program::Run(std::wstring_view processCommandLine) {
    MVaultwright start(system_, state_, settings_, language_, logonStart_, *this);
    start.Main(processCommandLine);
    if (!windows_) return exitStatus_.Code();
    // What an error leaves of a silent run is the icon and its Exit entry; nobody can use an icon
    // that is not seen.
    const TrayIcon& icon = windows_->frmTrayIcon;
    if (icon.Window().IsLoaded() && !(icon.IsReachable() && DesktopIsVisible())) frmUnload();
    pump_.RunWhile([this] {
        windows_->idleWatch.Look();
        return !windows_->LoadedForms().empty();
    });
    streams_.Flush();
    return exitStatus_.Code();
}

void Program::Echo(std::wstring_view text) {
    // On a console both streams meet, and once is enough.
    if (!streams_.ShareConsole()) report_.Report(text);
    streams_.Error(text);
}

// Windows ask before they go: the main window saves its list, the busy dialog cancels the work.
void Program::frmUnload() {
    if (unloading_) return;
    unloading_ = true;
    if (working_) exitStatus_.Note(error_number::kCancelled);
    if (windows_) {
        for (Form* form : windows_->LoadedForms()) form->Unload();
    }
    End(exitStatus_.Code());
}

void Program::EndAtOnce() {
    if (windows_) {
        // Not by way of its closing, which would unload everything else.
        unloading_ = true;
        windows_->frmTrayIcon.Unload();
    }
    End(exitStatus_.Code());
}

void Program::EndProcess() { End(exitStatus_.Code()); }

void Program::End(int exitCode) {
    streams_.Flush();
    ExitProcess(static_cast<UINT>(exitCode));
}

CPackage& Program::Engine() {
    if (!engine_) {
        engine_ = std::make_unique<CPackage>(system_, state_, static_cast<RunHost&>(*this));
    }
    return *engine_;
}

}  // namespace vw
