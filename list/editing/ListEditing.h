#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "list/editing/FileDialogSetup.h"
#include "platform/ErrorTrap.h"
#include "platform/System.h"

namespace vw {

class BackupList;
class FileDialogs;
class Form;
struct ListContext;
class ListRows;
struct ProgramState;

/// What is said when a whole drive was chosen where a folder is needed.
inline constexpr std::wstring_view kDriveRefused = L"Add sub path; not a drive";

/// The commands that add items to the current backup list and take them off it. Each saves the list
/// before it ends. They run inside the command bracket of the main window, which traps what they
/// throw under the name of the handler.
class ListEditing {
  public:
    ListEditing(System& system, ProgramState& state, Form& main, FileDialogs& dialogs,
                BackupList& list, const ListContext& context);

    /// Lets the user choose files: one, several, a pattern, or a folder whose files are all added.
    void mnuAddFileClick();
    /// Lets the user choose a folder whose files are backed up, whatever they are at the time.
    void AddRule();
    /// Lets the user choose a folder that is backed up with all that it holds.
    void mnuAddFolderClick();
    /// Files and folders were dropped onto the list.
    void lsvBackupList_OLEDragDrop(const std::vector<std::wstring>& paths);

    /// Takes the selected item off the list.
    void DelItem();
    void mnuDelAllClick();

    /// Lets the user choose any folder as the destination.
    /// Part of the given interface; not called by the program.
    void CopyTo();

    /// A row was chosen: its copies are shown.
    void lsvBackupListClick();
    /// The header of a column (from 0) was clicked. The order turns round at every click, whichever
    /// column it was.
    void lsvBackupListColumnClick(int column);

    /// Whether a path is only a drive; with `ask` a box says that it needs a folder.
    [[nodiscard]] bool PathIsDrive(std::wstring_view path, bool ask);

    /// Lets the user choose a folder (as the item or destination that `kind` makes of it) or files;
    /// empty on Cancel and for a bare drive. The path of an existing folder means that folder,
    /// any other one for the folder that it lies in.
    [[nodiscard]] std::wstring GetFileFolder(FileDialogKind kind);

  private:
    [[nodiscard]] bool IsShownText(std::wstring_view text);
    void Save();
    void AddItem(FileDialogKind kind);

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmMain"};
    ProgramState& state_;
    Form& main_;
    FileDialogs& dialogs_;
    BackupList& list_;
    ListRows& rows_;
    const ListContext& context_;
    bool descending_ = false;
};

}  // namespace vw
