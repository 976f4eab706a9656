#pragma once

#include <vector>

#include "app/IdleWatch.h"
#include "app/MainWindow.h"
#include "app/SilentWindows.h"
#include "list/editing/BackupList.h"
#include "list/editing/ListContext.h"
#include "list/editing/ListEditing.h"
#include "list/editing/RecentFiles.h"
#include "list/editing/UserFileDialogs.h"
#include "progress/BusyDialog.h"
#include "progress/TrayIcon.h"
#include "restore/CopiesBrowser.h"
#include "restore/RestoreCommands.h"
#include "ui/AboutBox.h"
#include "ui/Form.h"
#include "ui/StatusLine.h"

namespace vw {

class Application;

/// The four windows of the interface language under their names, and the logic behind the main
/// one. Made together; each is loaded when it is first needed, and a silent run needs few.
class WindowSet {
  public:
    WindowSet(System& system, ProgramState& state, MRecentFiles::SettingsStore& settings,
              LogonStart& logonStart, LanguageChoice& language, Application& application);

    /// Every form that is loaded.
    [[nodiscard]] std::vector<Form*> LoadedForms();

    Form frmMain;  ///< sends its events to `main`, none before it is loaded
    TrayIcon frmTrayIcon;
    BusyDialog frmBusyDialog;
    AboutBox frmAbout;
    SilentWindows silent;

    StatusLine status;
    CopiesBrowser browser;
    ListContext context;
    UserFileDialogs dialogs;
    MRecentFiles::RecentFiles recent;
    BackupList list;
    ListEditing editing;
    RestoreCommands restore;
    IdleWatch idleWatch;
    MainWindow main;
};

}  // namespace vw
