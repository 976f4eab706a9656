#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "console/Output.h"
#include "platform/ErrorTrap.h"
#include "platform/ExitStatus.h"
#include "platform/MessageBoxes.h"
#include "platform/MessagePump.h"
#include "platform/ProcessExit.h"
#include "platform/ProgramState.h"
#include "platform/System.h"
#include "platform/SystemClock.h"
#include "platform/SystemCodePage.h"
#include "platform/Win32FileSystem.h"

namespace vw {

/// The world that the verbs work in: the real disk, errors as lines on standard error, and no
/// window anywhere.
class Console final : private ErrorSink,
                      private MessageBoxes,
                      private MessagePump,
                      private ProcessExit {
  public:
    /// `files` replaces the real disk in tests and must outlive this object.
    explicit Console(Output& output, FileSystem* files = nullptr);

    /// Runs a verb. What it throws is written as an error. Gives the exit code: the first error's
    /// number, else what the verb gives.
    int Run(const std::function<int()>& verb);

    /// Writes an error and notes its number for the exit code. A cancelled run is reported once,
    /// and so is each error of a path, however many steps meet it.
    void Report(const RuntimeError& error);

    /// Runs `step`; an error is written and costs the rest nothing. False when there was one.
    bool Try(const std::function<void()>& step);

    /// How many errors there were.
    [[nodiscard]] int Errors() const noexcept { return errors_; }

    /// Called now and then while something goes on.
    void SetTick(std::function<void()> tick) { tick_ = std::move(tick); }

    /// Throws the error of a cancelled run when the user asked to stop.
    static void StopIfRequested();

    /// An argument as an absolute path.
    [[nodiscard]] std::wstring FullPath(std::wstring_view argument);

    Output& output;

  private:
    void Report(const Procedure& where, const RuntimeError& error) override;
    BoxAnswer Show(const MessageBoxRequest& content) override;
    void ProcessMessages() override;
    void ProcessMessagesIfDue() override { ProcessMessages(); }
    void WaitForMessages(unsigned milliseconds) override;
    [[noreturn]] void End(int exitCode) override;

    Win32FileSystem files_;
    SystemClock clock_;
    CodePage ansi_;
    int errors_ = 0;
    bool isCancelReported_ = false;
    std::set<std::pair<std::wstring, int>> reported_;  ///< paths and numbers of errors
    std::function<void()> tick_;

  public:
    ExitStatus exitStatus;
    ProgramState state;
    System system;
};

}  // namespace vw
