#pragma once

namespace vw {

/// What the layers below may ask of the program as a whole.
class ProgramControl {
  public:
    ProgramControl() = default;
    ProgramControl(const ProgramControl&) = delete;
    ProgramControl& operator=(const ProgramControl&) = delete;
    virtual ~ProgramControl() = default;

    /// Disables the main window and shows the hourglass (false), or gives it back (true).
    virtual void Ready(bool flag) = 0;

    /// Unloads every window and ends the program.
    virtual void frmUnload() = 0;

    /// Ends the program at once, leaving nothing in the notification area.
    [[noreturn]] virtual void EndAtOnce() = 0;
};

}  // namespace vw
