#include "app/MVaultwright.h"

#include "app/Application.h"
#include "engine/CopyName.h"
#include "fsutil/NetworkProbe.h"
#include "fsutil/PathText.h"
#include "list/editing/ListEditing.h"
#include "platform/Conversions.h"
#include "platform/ErrorTrap.h"
#include "platform/ExitStatus.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/MessagePump.h"
#include "platform/ProcessExit.h"
#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "platform/System.h"
#include "platform/Wildcards.h"

namespace vw {

MVaultwright::MVaultwright(System& system, ProgramState& state,
                           MRecentFiles::SettingsStore& settings, LanguageChoice& language,
                           LogonStart& logonStart, Application& application)
    : system_(system),
      state_(state),
      settings_(settings),
      language_(language),
      logonStart_(logonStart),
      application_(application) {}

void MVaultwright::Main(std::wstring_view processCommandLine) {
    trap_(L"Main", [&] {
        std::wstring arguments = ArgumentText(processCommandLine);
        // Known before the first question can come up: nothing may wait in a silent run.
        state_.silentRun = StartsSilently(arguments);
        system_.pump.ProcessMessages();
        language_.Read();
        application_.MakeWindows();
        system_.pump.ProcessMessages();
        Start(std::move(arguments));
    });
}

void MVaultwright::Start(std::wstring arguments) {
    if (state_.silentRun) {
        application_.Windows().silent.Begin();
    } else {
        application_.ShowOpeningScreen();
    }
    state_.defaultDestination = BackupToDefault();
    state_.BackupTo = state_.defaultDestination;
    if (IsStartupCommand(arguments)) {
        if (!logonStart_.ApplicationSartup()) return;
        arguments = L"/Backup";
    }
    state_.copiesCount = ParseInt16(settings_.GetSetting(setting::kBackages, L"3"));
    state_.temporaryListPath = state_.DefaultListPath() + L".tmp";
    const CommandLine commandLine = SplitCommandLine(arguments);
    Dispatch(commandLine);
    if (state_.silentRun) application_.frmUnload();
}

void MVaultwright::Dispatch(const CommandLine& commandLine) {
    const std::wstring argument = CompleteIfPresent(commandLine.argument);
    switch (ActionFor(commandLine)) {
        case StartAction::BackupList:
            state_.currentListPath = ExistingList(argument);
            application_.LongWork().BackUpCurrentList();
            break;
        case StartAction::BackupItem:
            application_.LongWork().BackUpItem(argument);
            break;
        case StartAction::BackupDefaultList:
            state_.currentListPath = state_.DefaultListPath();
            system_.pump.ProcessMessages();
            application_.LongWork().BackUpCurrentList();
            break;
        case StartAction::Restore:
            state_.currentListPath = state_.DefaultListPath();
            ShowCopies(argument);
            break;
        case StartAction::DeleteTemporary:
            application_.DeleteTemporaryFiles();
            break;
        case StartAction::OpenList:
            state_.currentListPath = ExistingList(argument);
            LoadCurrentList();
            application_.ShowMainWindow();
            break;
        case StartAction::OpenItem: {
            // As it was typed: "C:" alone would be completed to the current folder of that drive.
            if (RefusedAsDrive(commandLine.argument)) {
                application_.frmUnload();
                break;
            }
            const auto facts = system_.files.Stat(argument);
            if (!facts) Throw(error_number::kListPathMissing, argument);
            state_.currentListPath = state_.SingleItemListPath();
            if (system_.files.Stat(state_.currentListPath)) {
                system_.files.RemoveFile(state_.currentListPath);
            }
            // The shell passes folders without their final "\".
            LoadSingleItem(facts->isFolder ? MFileDosShell::WithSeparator(argument) : argument);
            application_.ShowMainWindow();
            break;
        }
        case StartAction::OpenDefaultList:
            state_.currentListPath = state_.DefaultListPath();
            LoadCurrentList();
            application_.ShowMainWindow();
            break;
        case StartAction::Author:
            system_.boxes.Show({.text = L"Author name is 'Nadir Qasemi'"});
            system_.programEnd.End(system_.exitStatus.Code());
            break;
    }
}

// Shows the copies of an item, or of the item that a copy was made of.
void MVaultwright::ShowCopies(std::wstring_view itemOrCopy) {
    application_.Engine().GetBackupTo();
    WindowSet& windows = application_.Windows();
    windows.frmMain.Load();
    const bool isCopy = MatchesWildcard(itemOrCopy, kCopyNamePattern);
    windows.browser.RestoreFrom(isCopy ? itemOrCopy : std::wstring_view(state_.defaultDestination));
    windows.browser.ListRestoreFiles();
    windows.browser.RestoredPath(isCopy ? ParseCopyName(itemOrCopy).origin
                                        : std::wstring(itemOrCopy));
}

void MVaultwright::LoadCurrentList() {
    WindowSet& windows = application_.Windows();
    windows.frmMain.Load();
    windows.list.GetList();
    windows.main.SetCaption();
}

// Makes the current list one of this item alone, which the user cannot change.
void MVaultwright::LoadSingleItem(std::wstring_view path) {
    LoadCurrentList();
    WindowSet& windows = application_.Windows();
    ListRows& rows = windows.list.Rows();
    rows.AddToList(path);
    rows.List().Columns().Fit();
    rows.List().Select(0);
    state_.listModified = true;
    windows.list.FileSave();
    windows.main.KeepToOneItem();
    windows.browser.RestoredPath(path);
}

std::wstring MVaultwright::BackupToDefault() {
    std::wstring folder = settings_.GetSetting(setting::kBackupTo, L"C:\\Backup");
    try {
        NetworkProbe probe(system_);
        if (!state_.silentRun) probe.Ask({folder});
        if (!probe.MayAnswer(folder)) return folder;
        if (!system_.files.Stat(folder)) system_.files.CreateFolder(folder);
    } catch (const RuntimeError&) {
        // A run that needs the folder reports it as missing.
    }
    return folder;
}

// A whole drive cannot be one item: a box says so, and the program ends.
bool MVaultwright::RefusedAsDrive(std::wstring_view path) {
    if (!MatchesWildcard(path, L"?:") && !MatchesWildcard(path, L"?:\\")) return false;
    system_.boxes.Show({.text = std::wstring(kDriveRefused)});
    return true;
}

// Hidden and system files do not count as lists: they are not what a user would hand over.
std::wstring MVaultwright::ExistingList(std::wstring_view argument) {
    const auto facts = system_.files.Stat(argument);
    if (!facts || facts->isFolder || facts->isHidden || facts->isSystem) {
        Throw(error_number::kListPathMissing, argument);
    }
    return std::wstring(argument);
}

// What is relative now is another path for the next start.
std::wstring MVaultwright::CompleteIfPresent(const std::wstring& path) {
    try {
        if (path.empty() || !system_.files.Stat(path)) return path;
        const std::wstring full = system_.files.FullPath(path);
        return path.ends_with(L'\\') ? MFileDosShell::WithSeparator(full) : full;
    } catch (const RuntimeError&) {
        // Whoever works with the path reports what is wrong with it, and a silent run ends then.
        return path;
    }
}

}  // namespace vw
