#pragma once

#include <exception>
#include <optional>
#include <string_view>

#include "app/StatusLine.h"
#include "list/editing/RecentFilesHost.h"
#include "platform/ErrorTrap.h"
#include "platform/System.h"
#include "ui/Form.h"

namespace vw {

class BackupList;
class CopiesBrowser;
class LanguageChoice;
class ListEditing;
class LogonStart;
class MainHost;
class RestoreCommands;
struct MainCommand;
struct ProgramState;

namespace MRecentFiles {
class RecentFiles;
}

/// What the main window's commands work on.
struct MainParts {
    BackupList& list;
    ListEditing& editing;
    MRecentFiles::RecentFiles& recent;
    CopiesBrowser& browser;
    RestoreCommands& restore;
    LogonStart& logonStart;
    LanguageChoice& language;
};

/// The logic behind frmMain, the same for both of its variants.
class MainWindow final : public FormEvents {
  public:
    MainWindow(System& system, ProgramState& state, Form& form, MainHost& host);

    /// Gives it what its commands work on; they need the window themselves.
    void Bind(MainParts parts);

    /// Shows which list is in use; start at log-on can be switched for the default list only.
    void SetCaption();

    /// The check mark of "Activate Auto Backup".
    void CheckAutoBackup(bool on);

    /// The recent lists of the File menu.
    void ShowRecentFiles(const RecentFileMenu& menu);

    /// The line at the lower edge of the window.
    [[nodiscard]] StatusLine& Status() noexcept { return status_; }

    /// The one item that the program was started for may be backed up and restored, not exchanged.
    /// The commands come back with another list.
    void KeepToOneItem();

    /// What a handler threw beyond the errors that are told.
    [[nodiscard]] std::exception_ptr TakeEscaped() noexcept;

  private:
    friend struct MainCommand;

    void OnControl(Form& form, const ControlEvent& event) override;
    void OnLoad(Form& form) override;
    bool OnQueryUnload(Form& form, UnloadReason reason) override;
    void OnEscaped(Form& form, const std::exception_ptr& error) noexcept override;

    void EnableEditing(bool on);
    void OnList(const ControlEvent& event);
    void OnItemClicked(int row);
    void OnColumnClick(const ControlEvent& event);
    void Run(std::wstring_view control, int index, std::wstring_view key = {});
    template <class Body>
    void InBracket(std::wstring_view procedure, Body&& body);

    // Commands (MainCommands.cpp), by the names of their handlers.
    void mnuFileNewClick(int);
    void mnuFileOpenClick(int);
    void mnuFileSaveClick(int);
    void mnuFileSaveAsClick(int);
    void mnuFileCloseClick(int);
    void mnuRecentFileClick(int index);
    void mnuBackupClick(int);
    void mnuAddFileClick(int);
    void mnuAddFilesClick(int);
    void mnuAddFolderClick(int);
    void mnuDelClick(int);
    void mnuDelAllClick(int);
    void mnuOpenClick(int);
    void mnuRestoreClick(int);
    void mnuRestoreToClick(int);
    void mnuOpenCopyClick(int);
    void mnuDelCopyClick(int);
    void mnuDelCopiesClick(int);
    void mnuViewMethodClick(int index);
    void mnuViewAlignClick(int index);
    void mnuOptionsClick(int index);
    void mnuToolRepairClick(int);
    void mnuToolsDelTempClick(int);
    void mnuHelpHelpClick(int);
    void mnuHelpAboutClick(int);
    void mnuToolEnArClick(int);
    void ActionOpen(int);

    // The rest of the window (MainWindow.cpp).
    void cmbDestinationClick();
    void vsBackagesChange(int value);
    [[nodiscard]] bool DefaultListInUse() const;

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmMain"};
    ProgramState& state_;
    Form& form_;
    MainHost& host_;
    StatusLine status_{form_};
    std::optional<MainParts> parts_;
    std::exception_ptr escaped_;
    bool loadGuard_ = false;  ///< the first change of vsBackages is not the user's
    bool running_ = false;    ///< one command at a time
    bool oneItem_ = false;    ///< the list is that of the item that the program was started for
};

}  // namespace vw
