#include "app/Program.h"

#include "app/MVaultwright.h"
#include "fsutil/PathText.h"
#include "platform/Desktop.h"
#include "platform/RuntimeError.h"

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
      logonStart_(system_, api_, settings_, state_, *this) {}

int Program::Run(std::wstring_view processCommandLine) {
    MVaultwright start(system_, state_, settings_, language_, logonStart_, *this);
    start.Main(processCommandLine);
    // What an error leaves is the icon and its Exit entry; nobody can use an icon that is not seen.
    if (trayIcon_ && !(trayIcon_->IsReachable() && DesktopIsVisible())) frmUnload();
    pump_.RunWhile([this] { return trayIcon_ != nullptr; });
    streams_.Flush();
    return exitStatus_.Code();
}

void Program::Echo(std::wstring_view text) {
    // On a console both streams meet, and once is enough.
    if (!streams_.ShareConsole()) report_.Report(text);
    streams_.Error(text);
}

void Program::Msg(std::wstring_view title, std::wstring_view message, std::wstring_view subMessage,
                  bool, bool, bool) {
    if (state_.silentRun) report_.Msg(title, message, subMessage);
}

void Program::Report(std::wstring_view text, bool) {
    if (state_.silentRun) report_.Report(text);
}

void Program::BusyHide(bool) { streams_.Flush(); }

void Program::Ready(bool) {}

void Program::DuringCopy() {}

void Program::EndAtOnce() {
    trayIcon_.reset();
    End(exitStatus_.Code());
}

// An Arabic window needs the keyboard and the digits to go with it.
void Program::MakeWindows() { language_.PrepareArabicOnce(api_); }

void Program::LoadTrayIcon() {
    trayIcon_ = std::make_unique<TrayIcon>(static_cast<TrayHost&>(*this), state_.arabic);
}

void Program::ShowOpeningScreen() {}

void Program::ShowMainWindow() {}

void Program::BackUpCurrentList() {
    working_ = true;
    Engine().BackupAll();
    working_ = false;
}

void Program::BackUpItem(std::wstring_view path) {
    working_ = true;
    Engine().BackupItem(path);
    working_ = false;
}

void Program::ShowCopies(std::wstring_view) { Engine().GetBackupTo(); }

void Program::DeleteTemporaryFiles() {}

// A list that does not exist yet is made empty.
void Program::LoadCurrentList() {
    Trapped(errors_, {L"GetList", L"Form", L"frmMain"}, [this] {
        if (!files_.Look(state_.currentListPath)) {
            files_.Write(state_.currentListPath, {}, FileSystem::Flush::Yes);
        }
    });
}

void Program::LoadSingleItem(std::wstring_view) { LoadCurrentList(); }

void Program::frmUnload() {
    if (unloading_) return;
    unloading_ = true;
    if (working_) exitStatus_.Note(error_number::kCancelled);
    trayIcon_.reset();
    End(exitStatus_.Code());
}

void Program::EndProcess() { End(exitStatus_.Code()); }

void Program::ExitChosen() { frmUnload(); }

void Program::TrayClosing() { frmUnload(); }

void Program::CheckAutoBackup(bool) {}

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
