#include "restore/RestoreCommands.h"

#include "engine/CPackage.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "fsutil/Scripting.h"
#include "fsutil/TreeOperations.h"
#include "platform/MessageBoxes.h"
#include "platform/ProgressReporter.h"
#include "platform/TextCase.h"
#include "restore/CopiesBrowser.h"
#include "restore/RestoreTexts.h"
#include "restore/RestoreWork.h"

// Deleting and opening copies. Restoring is in Restoring.cpp.

namespace vw {

RestoreCommands::RestoreCommands(System& system, ProgramState& state, Form& main,
                                 CopiesBrowser& browser, FileDialogs& dialogs,
                                 FileDialogSetup& dialog, ProgressReporter& progress,
                                 EngineProvider engine)
    : system_(system),
      state_(state),
      browser_(browser),
      selector_(system, main, browser, engine),
      dialogs_(dialogs),
      dialog_(dialog),
      progress_(progress),
      engine_(std::move(engine)) {}

void RestoreCommands::mnuRestoreClick() { DoRestore(false); }

void RestoreCommands::mnuRestoreToClick() { DoRestore(true); }

void RestoreCommands::mnuDelCopyClick() { DoDelCopy(); }

void RestoreCommands::mnuDelCopiesClick() { DoDelFile(); }

void RestoreCommands::mnuOpenCopyClick() {
    trap_(L"mnuOpenCopyClick", [this] {
        const auto selection = selector_.Read(true);
        if (!selection) return;
        selector_.RequireUnchanged(*selection, selection->copy);
        if (selection->copy.isIncomplete) selector_.ShowMessage(restore_text::kIncomplete);
        MMyScripting::ShellPath(system_, selection->copy.path);
    });
}

bool RestoreCommands::Ask(const std::wstring& question) {
    return system_.boxes.Show(
               {.text = question, .buttons = BoxButtons::YesNo, .rightToLeft = true}) ==
           BoxAnswer::Yes;
}

void RestoreCommands::DoDelCopy() {
    trap_(L"DoDelCopy", [this] {
        const auto selection = selector_.Read(true);
        if (!selection) return;
        const bool isFolder = EqualNoCase(selection->item.type, L"Folder");
        // No blank behind the bracket.
        if (!Ask(L"هل تريد بالتأكيد حذف النسخة رقم [" + selection->copy.label + L"]من " +
                 (isFolder ? L"المجلد:" : L"الملف:") + L"\r\n" + selection->item.text)) {
            return;
        }
        Delete([&] {
            if (DeleteCopy(*selection, selection->copy) == Outcome::Changed) return;
            if (selection->copies.size() > 1 && browser_.ListedRow() >= 0) {
                browser_.ListCopyes(browser_.ListedRow());
            } else {
                browser_.ListRestoreFiles();
            }
        });
    });
}

// A dialog that came up because a deletion had to wait goes with it. One that was there before,
// such as that of a restore that ended with a No, stays.
void RestoreCommands::Delete(const std::function<void()>& deletion) {
    const RestoreWork work(state_);
    const bool wasBusy = progress_.IsShown();
    deletion();
    if (!wasBusy) progress_.BusyHide(false);
}

// Only the newest copy has a comment file. A copy that stays, because somebody uses it, keeps its
// comment: without it the original place of the item would be lost.
RestoreCommands::Outcome RestoreCommands::DeleteCopy(const CopySelection& selection,
                                                     const ListedCopy& copy) {
    Outcome outcome = Outcome::Tried;
    trap_(L"DoDelCopy", [&] {
        const bool entered = engine_().InDestination(selection.folder, [&] {
            outcome = Outcome::Changed;
            selector_.RequireUnchanged(selection, copy);
            outcome = Outcome::Tried;
            engine_().DeleteCopy(copy.path);
            MFileDosShell::DeletePath(system_, CPackage::PackageCommentFile(copy.path));
            // A copy of an item below a folder with a point in its name is in folders of its own.
            // An empty one would look like a copy.
            RemoveEmptyFolders(system_.files, MFileDosShell::CFileLocation(copy.path),
                               selection.folder);
        });
        if (!entered) outcome = Outcome::Cancelled;
    });
    return outcome;
}

// A copy that cannot be deleted is reported, and the others are still deleted. A copy that is no
// longer the one shown ends the command and lists the copies anew.
void RestoreCommands::DoDelFile() {
    trap_(L"DoDelFile", [this] {
        const auto selection = selector_.Read(false);
        if (!selection) return;
        if (!Ask(L"هل تريد بالتأكيد حذف كافة النسخ الاحتياطية العائدة للملف:\r\n" +
                 selection->item.text)) {
            return;
        }
        Delete([&] {
            for (auto copy = selection->copies.rbegin(); copy != selection->copies.rend(); ++copy) {
                const Outcome outcome = DeleteCopy(*selection, *copy);
                if (outcome == Outcome::Changed) return;
                if (outcome == Outcome::Cancelled) break;
            }
            browser_.ListRestoreFiles();
        });
    });
}

}  // namespace vw
