#pragma once

#include "platform/ErrorTrap.h"

namespace vw {

class ExitStatus;
class MsgBoxes;

/// Tells errors in message boxes and notes the first one for the exit code.
class ErrorReports final : public ErrorSink {
  public:
    ErrorReports(MsgBoxes& boxes, ExitStatus& exitStatus)
        : boxes_(boxes), exitStatus_(exitStatus) {}

    void Tell(const Procedure& where, const RuntimeError& error) override;

  private:
    MsgBoxes& boxes_;
    ExitStatus& exitStatus_;
};

}  // namespace vw
