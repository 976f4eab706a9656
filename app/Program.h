#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "app/LanguageChoice.h"
#include "app/LogonStart.h"
#include "app/StartCommands.h"
#include "engine/CPackage.h"
#include "engine/RunHost.h"
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
#include "progress/SilentReport.h"
#include "progress/TrayIcon.h"

namespace vw {

/// The whole program: makes the real parts, binds them together and keeps them while it runs.
class Program final : private RunHost,
                      private StartCommands,
                      private TrayHost,
                      private AutoBackupMark,
                      private ProgramEnd {
  public:
    Program();

    /// Runs the program on its command line; gives the exit code once no window is loaded.
    int Run(std::wstring_view processCommandLine);

  private:
    void Msg(std::wstring_view title, std::wstring_view message, std::wstring_view subMessage,
             bool wait, bool close, bool showReport) override;
    void Report(std::wstring_view text, bool wait) override;
    void BusyHide(bool pause) override;
    void Ready(bool flag) override;
    void DuringCopy() override;
    [[noreturn]] void EndAtOnce() override;

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
    void frmUnload() override;
    void EndProcess() override;

    void ExitChosen() override;
    void TrayClosing() override;
    void CheckAutoBackup(bool on) override;
    [[noreturn]] void End(int exitCode) override;

    CPackage& Engine();
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
    LanguageChoice language_;
    LogonStart logonStart_;
    std::unique_ptr<TrayIcon> trayIcon_;
    std::unique_ptr<CPackage> engine_;
    bool working_ = false;
    bool unloading_ = false;
};

}  // namespace vw
