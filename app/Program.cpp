#include "app/Program.h"

#include "fsutil/PathText.h"
#include "platform/CurrentFolder.h"
#include "platform/SystemPath.h"

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
      errors_(boxes_, exitStatus_, state_),
      ansi_(CP_ACP),
      system_{files_, pump_, boxes_, errors_, exitStatus_, *this, clock_, ansi_},
      settings_(errors_, state_.executableBaseName),
      api_(registry_, ansi_, boxes_, faults_),
      application_(system_, state_, settings_, api_, report_) {
    // The drive that the program was started in, such as that of a list which was double-clicked,
    // can be taken out while the program runs.
    CompleteRelativePathsIn(CurrentFolder());
    WorkIn(state_.applicationFolder);
    pump_.SetFilter(Form::TranslateKeys);
    pump_.SetGate([this] {
        application_.ShowWindowsIfDue();
        return !state_.silentRun || application_.HasLoadedWindow();
    });
    errors_.SetNote(
        [this](std::wstring_view details) { application_.LongWork().NoteError(details); });
    pump_.SetQuit([this] { application_.frmUnload(); });
}

int Program::Run(std::wstring_view processCommandLine) {
    application_.Start(processCommandLine);
    pump_.RunWhile([this] {
        application_.OnIdle();
        return application_.HasLoadedWindow();
    });
    streams_.Flush();
    return exitStatus_.Code();
}

void Program::Echo(std::wstring_view text) {
    // Where both streams meet, once is enough.
    if (!streams_.AreOne()) report_.Report(text, false);
    streams_.Error(text);
    application_.OnSilentBox();
}

void Program::End(int exitCode) {
    streams_.Flush();
    ExitProcess(static_cast<UINT>(exitCode));
}

}  // namespace vw
