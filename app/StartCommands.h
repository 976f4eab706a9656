#pragma once

#include <string_view>

namespace vw {

/// What the start procedure starts: the windows of the chosen language and the jobs of a silent
/// run. Each job is finished when its call returns.
class StartCommands {
  public:
    StartCommands() = default;
    StartCommands(const StartCommands&) = delete;
    StartCommands& operator=(const StartCommands&) = delete;
    virtual ~StartCommands() = default;

    /// Makes the window set of the interface language; nothing is shown or loaded yet.
    virtual void MakeWindows() = 0;
    virtual void LoadTrayIcon() = 0;
    virtual void ShowOpeningScreen() = 0;
    virtual void ShowMainWindow() = 0;

    /// Backs up the current list.
    virtual void BackUpCurrentList() = 0;
    /// Backs up one item to the default destination.
    virtual void BackUpItem(std::wstring_view path) = 0;
    /// Shows the copies that "/R" names: of an item, or the one copy itself.
    virtual void ShowCopies(std::wstring_view itemOrCopy) = 0;
    /// Cleans the temporary folders.
    virtual void DeleteTemporaryFiles() = 0;
    /// Loads the current list into the main window.
    virtual void LoadCurrentList() = 0;
    /// Makes the current list one of this item alone, which the user cannot change.
    virtual void LoadSingleItem(std::wstring_view path) = 0;

    /// Unloads every window and ends the process.
    virtual void frmUnload() = 0;
    /// Ends the process at once.
    virtual void EndProcess() = 0;
};

}  // namespace vw
