#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "list/editing/FileDialogSetup.h"
#include "list/editing/ListRows.h"
#include "list/format/Settings.h"
#include "platform/ErrorTrap.h"
#include "platform/System.h"

namespace vw {

class FileDialogs;
class Form;
struct ListContext;
struct ProgramState;

namespace MRecentFiles {
class RecentFiles;
}

/// The backup list that the main window shows, and its file. Every edit is written to the file at
/// once; the engine reads the file, never the window.
class BackupList {
  public:
    BackupList(System& system, ProgramState& state, Form& main, FileDialogs& dialogs,
               MRecentFiles::SettingsStore& settings, MRecentFiles::RecentFiles& recent,
               const ListContext& context);

    [[nodiscard]] ListRows& Rows() noexcept { return rows_; }
    /// The one file dialog of the main window, cdDialog.
    [[nodiscard]] FileDialogSetup& Dialog() noexcept { return dialog_; }

    /// Writes the list to the current list path if it was modified. When that fails the list stays
    /// modified, so that the next chance to save is taken. Whether nothing is left to write.
    bool FileSave();

    /// The next save keeps the list that the file holds now, as "<list>.old".
    void KeepOldList() noexcept { keepOld_ = true; }

    /// Loads the file named by the current list path; a missing one is made empty. False when it
    /// cannot be read: the rows are those of before.
    bool GetList();

    /// Lets the user name a list and makes it the current one: a new, empty list or, with `saveAs`,
    /// the present one under another name. Unsaved changes are saved once a name was chosen; Cancel
    /// saves nothing. A list that cannot be made leaves the present one.
    void FileNew(bool saveAs);

    /// Opens the list at `path`, or one that the user chooses. Unsaved changes of the present one
    /// are saved first; Cancel saves nothing. A list that cannot be opened leaves it.
    void FileOpen(std::wstring_view path = {});

    /// Opens the list that the program starts with, which is no recent entry. Unsaved
    /// changes of the present one are saved first.
    void OpenDefaultList();

    void FileSaveAs();

    /// Ends the program without saving.
    void DoClose();

    /// Saves before the main window closes, unless it closes without saving.
    void SaveOnClose();

    /// The user chose a destination: it is kept for this list and for new ones, and its folder is
    /// made when it is missing. A drive that is not ready or takes no folder is refused with a
    /// sentence in the status line, and the former destination stays.
    void ChooseDestination(std::wstring_view destination);

  private:
    /// Selects the drive of the destination in cmbDestination. Anything but a drive letter leaves
    /// the box alone.
    void ShowDestinationDrive();
    /// Says that the copies go where they went before, and shows that drive in the box again.
    void RefuseDestination(std::wstring_view destination, bool formerAnswers);
    /// Shows a list's text; true when it has lines that the window does not show.
    [[nodiscard]] bool Load(std::wstring_view text);
    void ReadDestination(std::wstring_view value);
    [[nodiscard]] std::wstring MissingText() const;
    [[nodiscard]] std::optional<std::wstring> AskForList(FileDialogKind kind, std::uint32_t flags);
    /// Saves what was changed and not yet saved, such as the number of copies. When that fails the
    /// user decides whether the changes may be lost.
    [[nodiscard]] bool MayLeaveList();

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmMain"};
    ProgramState& state_;
    Form& main_;
    FileDialogs& dialogs_;
    MRecentFiles::SettingsStore& settings_;
    MRecentFiles::RecentFiles& recent_;
    const ListContext& context_;
    ListRows rows_;
    FileDialogSetup dialog_;
    bool keepOld_ = false;               ///< the file has lines that the next save would lose
    std::optional<std::string> known_;   ///< the file as it was read or written last
    std::vector<std::wstring> missing_;  ///< items of the file that do not exist
    bool loading_ = false;
    bool closingUnsaved_ = false;
};

}  // namespace vw
