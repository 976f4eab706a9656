#include "console/Console.h"

#include <utility>

#include "console/Interrupts.h"
#include "fsutil/PathText.h"
#include "list/format/CopiesCount.h"
#include "list/format/Settings.h"
#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw {
namespace {

/// The window program's name, whose settings hold for this one too.
constexpr std::wstring_view kSettingsOwner = L"Vaultwright";

// Some descriptions are given in Arabic.
std::wstring EnglishReason(const RuntimeError& error) {
    for (const wchar_t unit : error.Description()) {
        if (unit >= L'\u0600' && unit <= L'\u06FF') return DescriptionOf(error.Number());
    }
    return error.Description();
}

}  // namespace

Console::Console(Output& out, FileSystem* files)
    : output(out), ansi_(CP_ACP), system{files != nullptr ? *files : files_,
                                         *this,
                                         *this,
                                         *this,
                                         exitStatus,
                                         *this,
                                         clock_,
                                         ansi_} {
    state.silentRun = true;
    state.executableBaseName = kSettingsOwner;
    const MRecentFiles::SettingsStore settings(*this, kSettingsOwner);
    state.defaultDestination = settings.GetSetting(setting::kBackupTo, L"C:\\Backup");
    state.BackupTo = state.defaultDestination;
    TakeCopiesCount(settings.GetSetting(setting::kBackages, L"3"), state.copiesCount);
}

int Console::Run(const std::function<int()>& verb) {
    int result = 0;
    Try([&] { result = verb(); });
    output.Flush();
    return exitStatus.Code() != 0 ? exitStatus.Code() : result;
}

void Console::Report(const RuntimeError& error) {
    // Every step that the user's wish ends throws it once more.
    const bool isCancel = error.Number() == error_number::kCancelled;
    if (isCancel && std::exchange(isCancelReported_, true)) return;
    ++errors_;
    exitStatus.Note(error.Number());
    if (!reported_.emplace(error.Path(), error.Number()).second) return;
    output.Error(error.Path(), EnglishReason(error), error.Number());
}

bool Console::Try(const std::function<void()>& step) {
    return ErrorTrap(*this, L"Module", L"vw")(L"vw", step);
}

void Console::StopIfRequested() {
    if (Interrupts::WasRequested()) Throw(error_number::kCancelled);
}

std::wstring Console::FullPath(std::wstring_view argument) {
    return system.files.FullPath(argument);
}

void Console::Report(const Procedure&, const RuntimeError& error) { Report(error); }

// The engine shows one box, for a destination that is missing, and ends the run behind it; who ends
// the run writes the error.
BoxAnswer Console::Show(const MessageBoxRequest& content) {
    return content.buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
}

void Console::ProcessMessages() {
    if (Interrupts::WasRequested()) state.cancel.Request();
    if (tick_) tick_();
}

void Console::WaitForMessages(unsigned milliseconds) {
    Interrupts::WaitFor(milliseconds);
    ProcessMessages();
}

void Console::End(int exitCode) {
    output.Flush();
    ExitProcess(static_cast<UINT>(exitCode));
}

}  // namespace vw
