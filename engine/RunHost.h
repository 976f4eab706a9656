#pragma once

#include <string_view>

namespace vw {

/// What a backup run asks of the windows above it: to show how it goes, and to end.
class RunHost {
  public:
    RunHost() = default;
    RunHost(const RunHost&) = delete;
    RunHost& operator=(const RunHost&) = delete;
    virtual ~RunHost() = default;

    /// Shows what is being worked on; the report gets "title: message - subMessage".
    virtual void Msg(std::wstring_view title, std::wstring_view message,
                     std::wstring_view subMessage, bool wait, bool close, bool showReport) = 0;

    /// Adds a line to the report of the run.
    virtual void Report(std::wstring_view text, bool wait) = 0;

    /// The run has gone through its whole list.
    virtual void BusyHide(bool pause) = 0;

    /// Gives the main window back to the user (true), or takes it (false).
    virtual void Ready(bool flag) = 0;

    /// Called now and then while one large file is copied: only to repaint.
    virtual void DuringCopy() = 0;

    /// Ends the program at once, leaving nothing in the notification area.
    [[noreturn]] virtual void EndAtOnce() = 0;
};

}  // namespace vw
