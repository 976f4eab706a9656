#pragma once

namespace vw {

/// The end of the process. Tests replace it, since it never returns.
class ProcessExit {
  public:
    ProcessExit() = default;
    ProcessExit(const ProcessExit&) = delete;
    ProcessExit& operator=(const ProcessExit&) = delete;
    virtual ~ProcessExit() = default;

    /// Ends the process at once with `exitCode`.
    [[noreturn]] virtual void End(int exitCode) = 0;
};

}  // namespace vw
