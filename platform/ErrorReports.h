#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "platform/ErrorTrap.h"

namespace vw {

class ExitStatus;
class MessageBoxes;
struct ProgramState;

/// Tells errors in message boxes and notes the first one for the exit code.
class ErrorReports final : public ErrorSink {
  public:
    ErrorReports(MessageBoxes& boxes, ExitStatus& exitStatus, const ProgramState& state)
        : boxes_(boxes), exitStatus_(exitStatus), state_(state) {}

    /// Called with the text of an error before its message box is shown, so that the report lists
    /// it too.
    using Note = std::function<void(std::wstring_view details)>;

    /// Sets the listener from now on.
    void SetNote(Note note) { note_ = std::move(note); }

    void Report(const Procedure& where, const RuntimeError& error) override;
    void BeginLimit(int most) override;
    int EndLimit() override;

  private:
    MessageBoxes& boxes_;
    ExitStatus& exitStatus_;
    const ProgramState& state_;
    Note note_;
    int limits_ = 0;  ///< that began and did not end
    int most_ = 0;
    int told_ = 0;  ///< under the outermost limit
};

}  // namespace vw
