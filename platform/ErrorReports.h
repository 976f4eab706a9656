#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "platform/ErrorTrap.h"

namespace vw {

class ExitStatus;
class MsgBoxes;

/// Tells errors in message boxes and notes the first one for the exit code.
class ErrorReports final : public ErrorSink {
  public:
    ErrorReports(MsgBoxes& boxes, ExitStatus& exitStatus)
        : boxes_(boxes), exitStatus_(exitStatus) {}

    /// Gets what an error means and its path before the box comes: a report names it long after.
    using Note = std::function<void(std::wstring_view details)>;

    /// Sets who is told from now on.
    void SetNote(Note note) { note_ = std::move(note); }

    void Tell(const Procedure& where, const RuntimeError& error) override;

  private:
    MsgBoxes& boxes_;
    ExitStatus& exitStatus_;
    Note note_;
};

}  // namespace vw
