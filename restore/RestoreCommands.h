#pragma once

#include <optional>
#include <string>

#include "platform/System.h"

namespace vw {

class CopiesBrowser;
class FileDialogs;
class Form;
class RestoreHost;
struct FileDialogSetup;
struct ProgramState;

/// The commands on stored copies: restore, open, delete. They act on what is selected in the two
/// lists of the restore view. What a restore would overwrite is kept as a safety copy first, unless
/// one of the listed copies has its date. They run inside the command bracket of the main window.
class RestoreCommands {
  public:
    RestoreCommands(System& system, ProgramState& state, Form& main, CopiesBrowser& browser,
                    FileDialogs& dialogs, FileDialogSetup& dialog, RestoreHost& host);

    /// Restores the selected copy to where its item was.
    void mnuRestoreClick();
    /// Restores it to a folder that the user chooses.
    void mnuRestoreToClick();
    /// Deletes the selected copy after a question.
    void mnuDelCopyClick();
    /// Deletes all copies of the selected item after a question.
    void mnuDelCopiesClick();
    /// Opens the selected copy with its program.
    void mnuOpenCopyClick();

  private:
    /// Where a copy goes.
    struct Goal {
        std::wstring folder;
        std::wstring typed;  ///< what the question is about
    };

    /// A row of the lower list as the user saw it when he gave the command; what is selected may
    /// change before the command ends.
    struct ListedCopy {
        std::wstring path;
        std::wstring date;
    };

    /// Where the safety copies of an item belong.
    struct SafePlace {
        std::wstring folder;
        int location = 0;
    };

    void DoRestore(bool askLocation);
    [[nodiscard]] std::optional<Goal> ChooseGoal(const std::wstring& name,
                                                 const std::wstring& location, bool ask);
    [[nodiscard]] bool MayReplace(const Goal& goal);
    void KeepForUndo(const Goal& goal, const std::wstring& target, const SafePlace& place);
    void KeepForUndo(const std::wstring& path, const SafePlace& place);
    void RemovePartial(const std::wstring& copyName);
    [[nodiscard]] std::wstring FreeSafetyName(const std::wstring& path, int number,
                                              const SafePlace& place);
    [[nodiscard]] bool IsStored(const std::wstring& path, int& highest);
    void DoDelCopy();
    /// False when the user cancelled the wait for a run of another process.
    bool DeleteCopy(const ListedCopy& copy);
    void RemoveEmptyFolders(std::wstring folder, const std::wstring& copyFolder);
    void DoDelFile();
    [[nodiscard]] bool Ask(const std::wstring& question);
    void TellNothingSelected();
    /// The selected copy; without a path when there is none.
    [[nodiscard]] ListedCopy SelectedCopy();
    [[nodiscard]] bool IsStillThere(const ListedCopy& copy);
    /// Raises when a listed copy was deleted or moved by somebody else; the lists then show what is
    /// there.
    void ExpectCopy(const ListedCopy& copy);

    System& system_;
    ProgramState& state_;
    Form& main_;
    CopiesBrowser& browser_;
    FileDialogs& dialogs_;
    FileDialogSetup& dialog_;
    RestoreHost& host_;
};

}  // namespace vw
