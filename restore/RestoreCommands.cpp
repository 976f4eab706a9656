#include "restore/RestoreCommands.h"

#include "engine/CPackage.h"
#include "engine/CopyComment.h"
#include "fsutil/FileQueries.h"
#include "fsutil/PathText.h"
#include "fsutil/Scripting.h"
#include "fsutil/TreeOperations.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/ProgressReporter.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "restore/CopiesBrowser.h"
#include "restore/RestoreWork.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"

// Deleting and opening copies, and what every command does first: finding out what is selected and
// whether the disk still has it. Restoring is in Restoring.cpp.

namespace vw {

RestoreCommands::RestoreCommands(System& system, ProgramState& state, Form& main,
                                 CopiesBrowser& browser, FileDialogs& dialogs,
                                 FileDialogSetup& dialog, ProgressReporter& progress,
                                 EngineProvider engine)
    : system_(system),
      state_(state),
      main_(main),
      browser_(browser),
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
        const auto selection = Selected(true);
        if (!selection) return;
        ExpectUnchanged(*selection, selection->copy);
        WarnIfIncomplete(selection->copy);
        MMyScripting::ShellPath(system_, selection->copy.path);
    });
}

// Nothing when there is nothing to work on, which the user has seen then.
std::optional<RestoreCommands::Selection> RestoreCommands::Selected(bool needsCopy) {
    if (!browser_.FollowSelection()) return std::nullopt;
    const auto item = browser_.CurrentItem();
    const auto copy = browser_.SelectedCopy();
    if (!item || (needsCopy && !copy)) {
        ShowNothingSelected();
        return std::nullopt;
    }
    Selection selection{.folder = browser_.ShownPath(),
                        .item = *item,
                        .copy = copy.value_or(ListedCopy{}),
                        .copies = browser_.ListedCopies()};
    if (!browser_.IsFolderStillThere()) {
        ThrowWith(error_number::kFileNotFound, In(restore_text::kFolderChanged),
                  needsCopy ? selection.copy.path : selection.folder);
    }
    return selection;
}

// A run of another process may have moved the copies since they were listed: under the name of the
// one that the user saw another one would be. The comment of an item's copies moves with them, so
// it counts where there is one.
bool RestoreCommands::IsUnchanged(const Selection& selection, const ListedCopy& copy) {
    const auto facts = system_.files.Stat(copy.path);
    if (!facts || facts->isFolder != copy.isFolder) return false;
    if (!facts->isFolder && static_cast<std::int64_t>(facts->size) != copy.size) return false;
    if (MFileDosShell::PathDate(system_, engine_(), copy.path) != copy.date) return false;
    const auto names = [this](const std::wstring& commentOf, const std::wstring& place) {
        if (commentOf.empty() || place.empty()) return true;
        const auto comment = ReadCopyComment(system_, commentOf);
        return !comment || EqualNoCase(comment->place, place);
    };
    return names(selection.item.commentOf, selection.item.place) && names(copy.path, copy.place);
}

// Throws when a copy is not the one any more that the user saw; the lists show what is there then.
void RestoreCommands::ExpectUnchanged(const Selection& selection, const ListedCopy& copy) {
    if (!browser_.IsFolderStillThere() || browser_.ShownPath() != selection.folder) {
        ThrowWith(error_number::kFileNotFound, In(restore_text::kFolderChanged), copy.path);
    }
    if (IsUnchanged(selection, copy)) return;
    browser_.ListAnew();
    ThrowWith(error_number::kFileNotFound, In(restore_text::kCopyChanged), copy.path);
}

void RestoreCommands::WarnIfIncomplete(const ListedCopy& copy) {
    if (copy.isIncomplete) ShowMessage(restore_text::kIncomplete);
}

void RestoreCommands::ShowMessage(const RestoreText& text) {
    system_.boxes.Show({.text = In(text), .rightToLeft = main_.InLanguage() == Language::Arabic});
}

std::wstring RestoreCommands::In(const RestoreText& text) const {
    return std::wstring(text.In(main_.InLanguage()));
}

void RestoreCommands::ShowNothingSelected() {
    system_.boxes.Show({.text = main_.Text(control::lblNoRestore), .rightToLeft = true});
}

bool RestoreCommands::Ask(const std::wstring& question) {
    return system_.boxes.Show(
               {.text = question, .buttons = BoxButtons::YesNo, .rightToLeft = true}) ==
           BoxAnswer::Yes;
}

void RestoreCommands::DoDelCopy() {
    trap_(L"DoDelCopy", [this] {
        const auto selection = Selected(true);
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
RestoreCommands::Outcome RestoreCommands::DeleteCopy(const Selection& selection,
                                                     const ListedCopy& copy) {
    Outcome outcome = Outcome::Failed;
    trap_(L"DoDelCopy", [&] {
        const bool entered = engine_().InDestination(selection.folder, [&] {
            outcome = Outcome::Changed;
            ExpectUnchanged(selection, copy);
            outcome = Outcome::Failed;
            engine_().DeleteCopy(copy.path);
            MFileDosShell::DeletePath(system_, CPackage::PackageCommentFile(copy.path));
            // A copy of an item below a folder with a point in its name is in folders of its own.
            // An empty one would look like a copy.
            RemoveEmptyFolders(system_.files, MFileDosShell::CFileLocation(copy.path),
                               selection.folder);
            outcome = Outcome::Done;
        });
        if (!entered) outcome = Outcome::Cancelled;
    });
    return outcome;
}

// A copy that cannot be deleted is reported, and the others are still deleted. A copy that is no
// longer the one shown ends the command and lists the copies anew.
void RestoreCommands::DoDelFile() {
    trap_(L"DoDelFile", [this] {
        const auto selection = Selected(false);
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
