#pragma once

#include <vector>

#include "app/IdleWatch.h"
#include "app/MainWindow.h"
#include "app/SilentWindows.h"
#include "list/editing/BackupList.h"
#include "list/editing/ListEditing.h"
#include "list/editing/RecentFiles.h"
#include "list/editing/UserFileDialogs.h"
#include "progress/BusyDialog.h"
#include "progress/TrayIcon.h"
#include "restore/CopiesBrowser.h"
#include "restore/RestoreCommands.h"
#include "ui/AboutBox.h"
#include "ui/Form.h"

namespace vw {

class BusyHost;
class ListHost;
class MainHost;
class RestoreHost;

/// What the windows ask of the program.
struct WindowHosts {
    MainHost& main;
    BusyHost& busy;
    TrayHost& tray;
    ListHost& list;
    RecentFilesHost& recent;
    RestoreHost& restore;
};

/// The four windows of the interface language under their names, and the logic behind the main
/// one. Made together; each is loaded when it is first needed, and a silent run needs few.
class WindowSet {
  public:
    WindowSet(System& system, ProgramState& state, MRecentFiles::SettingsStore& settings,
              LogonStart& logonStart, LanguageChoice& language, const WindowHosts& hosts);

    /// Every form that is loaded.
    [[nodiscard]] std::vector<Form*> LoadedForms();

  private:
    [[nodiscard]] static Language LanguageOf(const ProgramState& state);

    Language language_;

  public:
    MainWindow main;
    Form frmMain;
    BusyDialog frmBusyDialog;
    TrayIcon frmTrayIcon;
    AboutBox frmAbout;
    SilentWindows silent;

    UserFileDialogs dialogs;
    MRecentFiles::RecentFiles recent;
    BackupList list;
    ListEditing editing;
    CopiesBrowser browser;
    RestoreCommands restore;
    IdleWatch idleWatch;
};

}  // namespace vw
