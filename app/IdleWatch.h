#pragma once

#include <cstdint>
#include <optional>

namespace vw {

class BusyDialog;
class Clock;
class Form;
class TrayIcon;
struct ProgramState;

/// Gives the user the window back when nothing else would: after a command that failed, which
/// leaves the main window disabled, and after a click on the icon that hid all windows and then
/// went away itself. Looks only while the program is idle, and waits a second first.
class IdleWatch {
  public:
    IdleWatch(const Clock& clock, const ProgramState& state, Form& main, BusyDialog& busy,
              TrayIcon& tray);

    /// To be called between two messages of the main loop, when no command and no box is open.
    void Check();

  private:
    [[nodiscard]] bool UserIsLockedOut() const;
    void GiveAccess();

    const Clock& clock_;
    const ProgramState& state_;
    Form& main_;
    BusyDialog& busy_;
    TrayIcon& tray_;
    std::optional<std::uint64_t> since_;
};

}  // namespace vw
