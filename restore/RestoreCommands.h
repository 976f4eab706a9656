#pragma once

#include <functional>
#include <optional>
#include <string>

#include "engine/EngineProvider.h"
#include "platform/ErrorTrap.h"
#include "platform/System.h"
#include "restore/CopySelector.h"
#include "restore/SafetyCopies.h"

namespace vw {

class CopiesBrowser;
class FileDialogs;
class Form;
class ProgressReporter;
struct FileDialogSetup;
struct ProgramState;

/// The commands on stored copies: restore, open, delete. They act on the listed item and the copy
/// that is selected in the restore view, as the rows described them: before each step the disk is
/// asked whether they still are what was shown. What a restore would overwrite is kept as a safety
/// copy first, unless a listed copy has it. They run inside the command bracket of the main window.
class RestoreCommands {
  public:
    RestoreCommands(System& system, ProgramState& state, Form& main, CopiesBrowser& browser,
                    FileDialogs& dialogs, FileDialogSetup& dialog, ProgressReporter& progress,
                    EngineProvider engine);

    /// Restores the selected copy to where its item was.
    void mnuRestoreClick();
    /// Restores it to a folder that the user chooses.
    void mnuRestoreToClick();
    /// Deletes the selected copy after a question.
    void mnuDelCopyClick();
    /// Deletes all copies of the listed item after a question.
    void mnuDelCopiesClick();
    /// Opens the selected copy with its program.
    void mnuOpenCopyClick();

  private:
    /// Where a copy goes.
    struct RestoreTarget {
        std::wstring folder;
        std::wstring requestedPath;  ///< what the question is about
        std::wstring path;           ///< what is written: the item keeps its own name
        bool existed = false;  ///< whether the user was asked about something at `requestedPath`
    };

    enum class Outcome { Tried, Cancelled, Changed };

    // Restoring (Restoring.cpp).
    void DoRestore(bool askLocation);
    void Restore(const CopySelection& selection, const RestoreTarget& wanted);
    [[nodiscard]] std::optional<RestoreTarget> ChooseTarget(const CopySelection& selection,
                                                            bool ask);
    void RefuseStoredCopy(const RestoreTarget& wanted, const std::wstring& folder);
    [[nodiscard]] bool MayReplace(const RestoreTarget& wanted);

    [[nodiscard]] bool MakeSafetyCopy(const RestoreTarget& wanted, const CopySelection& selection);
    [[nodiscard]] bool MakeSafetyCopy(const std::wstring& path, SafetyCopies::Proof proof,
                                      const CopySelection& selection);

    // Deleting and opening (RestoreCommands.cpp).
    void DoDelCopy();
    void Delete(const std::function<void()>& deletion);
    [[nodiscard]] Outcome DeleteCopy(const CopySelection& selection, const ListedCopy& copy);
    void DoDelFile();

    [[nodiscard]] bool Ask(const std::wstring& question);

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmMain"};
    ProgramState& state_;
    CopiesBrowser& browser_;
    CopySelector selector_;
    FileDialogs& dialogs_;
    FileDialogSetup& dialog_;
    ProgressReporter& progress_;
    EngineProvider engine_;
};

}  // namespace vw
