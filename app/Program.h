#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/LanguageChoice.h"
#include "app/LogonStart.h"
#include "app/MainHost.h"
#include "app/StartCommands.h"
#include "app/WindowSet.h"
#include "engine/CPackage.h"
#include "engine/RunHost.h"
#include "fsutil/Scripting.h"
#include "fsutil/TempCleaning.h"
#include "list/editing/ListHost.h"
#include "list/editing/RecentFilesHost.h"
#include "list/format/Settings.h"
#include "platform/CCommonAPI.h"
#include "platform/DebugOutput.h"
#include "platform/ErrorReports.h"
#include "platform/ExitStatus.h"
#include "platform/ProgramEnd.h"
#include "platform/ProgramState.h"
#include "platform/StandardStreams.h"
#include "platform/System.h"
#include "platform/SystemClock.h"
#include "platform/SystemCodePage.h"
#include "platform/UserBoxes.h"
#include "platform/Win32FileSystem.h"
#include "platform/WindowEventPump.h"
#include "progress/BusyHost.h"
#include "progress/SilentReport.h"
#include "restore/RestoreHost.h"

namespace vw {

/// The whole program: makes the real parts, binds them together and keeps them while it runs. What
/// a lower room asks of those above it is answered here.
class Program final : private StartCommands,
                      private RunHost,
                      private MainHost,
                      private BusyHost,
                      private TrayHost,
                      private ListHost,
                      private RecentFilesHost,
                      private RestoreHost,
                      private CleaningHost,
                      private AutoBackupMark,
                      private ProgramEnd {
  public:
    Program();

    /// Runs the program on its command line; gives the exit code once no window is loaded.
    int Run(std::wstring_view processCommandLine);

  private:
    // The start procedure (ProgramJobs.cpp).
    void MakeWindows() override;
    void LoadTrayIcon() override;
    void ShowOpeningScreen() override;
    void ShowMainWindow() override;
    void BackUpCurrentList() override;
    void BackUpItem(std::wstring_view path) override;
    void ShowCopies(std::wstring_view itemOrCopy) override;
    void DeleteTemporaryFiles() override;
    void LoadCurrentList() override;
    void LoadSingleItem(std::wstring_view path) override;
    void EndProcess() override;

    // The run and the busy dialog.
    void Msg(std::wstring_view title, std::wstring_view message, std::wstring_view subMessage,
             bool wait, bool close, bool showReport) override;
    void Msg(std::wstring_view title, std::wstring_view message) override;
    void Report(std::wstring_view text, bool wait) override;
    void BusyHide(bool pause) override;
    void BusyHide() override { BusyHide(true); }
    void EndBusy() override { BusyHide(false); }
    void DuringCopy() override;
    void AbortRun() override;
    [[nodiscard]] bool IsRunning() const override { return working_; }

    // The windows.
    void Ready(bool flag) override;
    void UnloadTrayIcon() override;
    [[nodiscard]] std::vector<Form*> LoadedForms() override;
    void AsAbout() override;
    void UnloadOpeningScreen() override;
    void SetCaption() override;
    void CheckAutoBackup(bool on) override;
    void ShowRecentFiles(const RecentFileMenu& menu) override;

    // The list and the copies.
    void FileOpen(std::wstring_view path) override;
    void GetList() override;
    void ApplicationSartup(bool flag) override;
    [[nodiscard]] std::int16_t LocationID(std::wstring_view path) override;
    [[nodiscard]] CopyDates& StoredDates() override { return Engine(); }
    void ListLoaded() override;
    void ListRestoreFiles() override;
    void RestoredPath(std::wstring_view path) override;
    [[nodiscard]] CPackage& Engine() override;

    // The end.
    void frmUnload() override;
    [[noreturn]] void EndAtOnce() override;
    [[noreturn]] void End(int exitCode) override;

    template <class Work>
    void Working(Work&& work);
    void Echo(std::wstring_view text);

    ProgramState state_;
    StandardStreams streams_;
    SilentReport report_;
    ExitStatus exitStatus_;
    UserBoxes boxes_;
    ErrorReports errors_;
    Win32FileSystem files_;
    WindowEventPump pump_;
    SystemClock clock_;
    CodePage ansi_;
    System system_;
    MRecentFiles::SettingsStore settings_;
    SystemRegistry registry_;
    DebugOutput faults_;
    CCommonAPI api_;
    MMyScripting::ScriptShell shell_;
    LanguageChoice language_;
    LogonStart logonStart_;
    std::unique_ptr<CPackage> engine_;
    std::unique_ptr<WindowSet> windows_;
    bool working_ = false;
    bool unloading_ = false;
};

}  // namespace vw
