#pragma once

namespace vw {

/// What the busy dialog asks of the program around it.
class BusyHost {
  public:
    BusyHost() = default;
    BusyHost(const BusyHost&) = delete;
    BusyHost& operator=(const BusyHost&) = delete;
    virtual ~BusyHost() = default;

    /// Asks the engine, if there is one, to stop at the next file.
    virtual void AbortRun() = 0;

    /// Whether a run is going on that will see that it was cancelled.
    [[nodiscard]] virtual bool IsRunning() const = 0;

    /// The dialog was minimised: the notification icon stands in for it.
    virtual void LoadTrayIcon() = 0;
    virtual void UnloadTrayIcon() = 0;

    /// Gives the main window back to the user.
    virtual void Ready(bool flag) = 0;

    /// Shows the main window, if it is loaded, after it was hidden with the dialog.
    virtual void ShowMainWindow() = 0;
};

}  // namespace vw
