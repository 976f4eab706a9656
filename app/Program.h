#pragma once

#include <string_view>

#include "app/Application.h"
#include "list/format/Settings.h"
#include "platform/CCommonAPI.h"
#include "platform/DebugOutput.h"
#include "platform/ErrorReports.h"
#include "platform/ExitStatus.h"
#include "platform/ProcessExit.h"
#include "platform/ProgramState.h"
#include "platform/StandardStreams.h"
#include "platform/System.h"
#include "platform/SystemClock.h"
#include "platform/SystemCodePage.h"
#include "platform/Win32FileSystem.h"
#include "platform/Win32MessageBoxes.h"
#include "platform/WindowMessagePump.h"
#include "progress/SilentReport.h"

namespace vw {

/// The program in the real world: makes the real parts, gives them to the application and keeps
/// them while it runs.
class Program final : private ProcessExit {
  public:
    Program();

    /// Runs the program on its command line; gives the exit code once no window is loaded.
    int Run(std::wstring_view processCommandLine);

  private:
    [[noreturn]] void End(int exitCode) override;
    void Echo(std::wstring_view text);

    ProgramState state_;
    StandardStreams streams_;
    SilentReport report_;
    ExitStatus exitStatus_;
    Win32MessageBoxes boxes_;
    ErrorReports errors_;
    Win32FileSystem files_;
    WindowMessagePump pump_;
    SystemClock clock_;
    CodePage ansi_;
    System system_;
    MRecentFiles::SettingsStore settings_;
    SystemRegistry registry_;
    DebugOutput faults_;
    CCommonAPI api_;
    Application application_;
};

}  // namespace vw
