#pragma once

namespace vw {

/// The end of the process. Tests stand in for it, since it never comes back.
class ProgramEnd {
  public:
    ProgramEnd() = default;
    ProgramEnd(const ProgramEnd&) = delete;
    ProgramEnd& operator=(const ProgramEnd&) = delete;
    virtual ~ProgramEnd() = default;

    /// Ends the process at once with `exitCode`.
    [[noreturn]] virtual void End(int exitCode) = 0;
};

}  // namespace vw
