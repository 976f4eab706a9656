#pragma once

#include <functional>
#include <string_view>

#include "list/editing/RecentFiles.h"
#include "platform/ErrorTrap.h"
#include "platform/System.h"
#include "ui/Form.h"

namespace vw {

class AboutBox;
class Application;
class BackupList;
class BusyDialog;
class CopiesBrowser;
class LanguageChoice;
class ListEditing;
class LogonStart;
class RestoreCommands;
class StatusLine;
struct ProgramState;

/// What the main window's commands work on.
struct MainParts {
    System& system;
    ProgramState& state;
    Application& application;
    Form& form;
    StatusLine& status;
    BusyDialog& busy;
    AboutBox& about;
    BackupList& list;
    ListEditing& editing;
    MRecentFiles::RecentFiles& recent;
    CopiesBrowser& browser;
    RestoreCommands& restore;
    LogonStart& logonStart;
    LanguageChoice& language;
};

/// The logic behind frmMain, the same for both of its variants. Its commands are in
/// MainCommands.cpp.
class MainWindow final : public FormEvents {
  public:
    explicit MainWindow(const MainParts& parts);

    /// Shows which list is in use; start at log-on can be switched for the default list only.
    void SetCaption();

    /// Shows whether Windows starts the program at log-on. `isNew` explains it in the status line.
    void ShowAutoBackup(bool isOn, bool isNew);

    /// The recent lists of the File menu.
    void ShowRecentFiles(const RecentFileMenu& menu);

    /// The one item that the program was started for may be backed up and restored, not exchanged.
    /// The commands come back with another list.
    void KeepToOneItem();

  private:
    void OnControl(Form& form, const ControlEvent& event) override;
    void OnLoad(Form& form) override;
    bool OnQueryUnload(Form& form, UnloadReason reason) override;
    void OnEscaped(Form& form, const std::exception_ptr& error) noexcept override;

    void EnableEditing(bool on);
    void OnList(const ControlEvent& event);
    void OnItemClicked(int row);
    void OnColumnClick(const ControlEvent& event);
    void Run(int id);
    void InBracket(std::wstring_view procedure, const std::function<void()>& body);
    void cmbDestinationClick();
    void vsBackagesChange(int value);
    [[nodiscard]] bool DefaultListInUse() const;

    MainParts parts_;
    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmMain"};
    ProgramState& state_;
    Form& form_;
    bool loadGuard_ = false;  ///< the first change of vsBackages is not the user's
    bool isRunning_ = false;  ///< one command at a time
    bool oneItem_ = false;    ///< the list is that of the item that the program was started for
};

}  // namespace vw
