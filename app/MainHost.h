#pragma once

namespace vw {

/// What the main window asks of the program around it.
class MainHost {
  public:
    MainHost() = default;
    MainHost(const MainHost&) = delete;
    MainHost& operator=(const MainHost&) = delete;
    virtual ~MainHost() = default;

    /// Disables the main window and shows the hourglass (false), or gives it back (true).
    virtual void Ready(bool flag) = 0;

    /// Backs up the current list, with the busy dialog.
    virtual void BackUpCurrentList() = 0;
    /// Hides the busy dialog, if it is still there.
    virtual void EndBusy() = 0;
    /// Shows the report of the last run again.
    virtual void ShowLastReport() = 0;

    /// Cleans the temporary folders.
    virtual void DeleteTemporaryFiles() = 0;

    /// Shows the About box until it is closed.
    virtual void AsAbout() = 0;
    /// The main window is there: the opening screen goes.
    virtual void UnloadOpeningScreen() = 0;

    /// Unloads every window and ends the program.
    virtual void frmUnload() = 0;
    /// Ends the program at once, leaving nothing in the notification area.
    virtual void EndAtOnce() = 0;
};

}  // namespace vw
