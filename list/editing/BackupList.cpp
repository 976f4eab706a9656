#include "list/editing/BackupList.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "fsutil/FileQueries.h"
#include "fsutil/Folders.h"
#include "fsutil/NetworkProbe.h"
#include "list/editing/FileDialogs.h"
#include "list/editing/Filter.h"
#include "list/editing/ListContext.h"
#include "list/editing/ListSaving.h"
#include "list/editing/RecentFiles.h"
#include "list/editing/RestoreView.h"
#include "list/format/CopiesCount.h"
#include "list/format/FieldReader.h"
#include "list/format/ListLine.h"
#include "list/format/ListText.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/MessagePump.h"
#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "platform/Scoped.h"
#include "platform/TextDirection.h"
#include "platform/Wildcards.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"
#include "ui/StatusLine.h"

namespace vw {
namespace {
// Shown when the drive of the former destination is not there either.
constexpr std::wstring_view kFallbackDrive = L"C:";

// OFN_... flags of the dialogs on lists.
constexpr std::uint32_t kSaveFlags = 0x80006;  // explorer style, no read-only box, may overwrite
constexpr std::uint32_t kOpenFlags = 0x81004;  // explorer style, no read-only box, must exist

/// Restores the path of the previous list unless LetGo() is called. Until the new list is loaded, a
/// save under its name would overwrite it with the old rows.
class PreviousListGuard {
  public:
    PreviousListGuard(ProgramState& state, bool& keepOld)
        : state_(state),
          keepOld_(keepOld),
          path_(state.currentListPath),
          kept_(keepOld),
          modified_(state.listModified) {}
    ~PreviousListGuard() {
        if (gone_) return;
        state_.currentListPath.swap(path_);
        keepOld_ = kept_;
        state_.listModified = modified_;
    }
    PreviousListGuard(const PreviousListGuard&) = delete;
    PreviousListGuard& operator=(const PreviousListGuard&) = delete;

    void LetGo() noexcept { gone_ = true; }

  private:
    ProgramState& state_;
    bool& keepOld_;
    std::wstring path_;
    bool kept_;
    bool modified_;
    bool gone_ = false;
};

// The items of a list, and the places that its copies go to.
std::vector<std::wstring> PathsOf(std::wstring_view text) {
    std::vector<std::wstring> paths;
    FieldReader fields(text);
    while (!fields.AtEnd()) {
        ListLine line = ReadListLine(fields.Next());
        if (line.kind == ListLineKind::Item || line.kind == ListLineKind::Destination) {
            paths.push_back(std::move(line.value));
        }
    }
    return paths;
}

}  // namespace

BackupList::BackupList(System& system, ProgramState& state, Form& main, FileDialogs& dialogs,
                       MRecentFiles::SettingsStore& settings, MRecentFiles::RecentFiles& recent,
                       const ListContext& context)
    : system_(system),
      state_(state),
      main_(main),
      dialogs_(dialogs),
      settings_(settings),
      recent_(recent),
      context_(context),
      rows_(system, state, main, context) {}

bool BackupList::FileSave() {
    trap_(L"FileSave", [this] {
        // Half a list is not saved: the session may end in the middle of loading.
        if (!state_.listModified || loading_) return;
        rows_.UpdateWarnings();
        state_.listModified = false;
        try {
            const std::string bytes =
                EncodeList(state_.BackupTo, state_.copiesCount, rows_.Paths(), system_.ansi);
            ReplaceList(system_.files, state_.temporaryListPath, state_.currentListPath, bytes,
                        keepOld_, known_);
            keepOld_ = false;
            known_ = bytes;
            // What the notice announced has happened.
            if (!std::exchange(missing_, {}).empty()) context_.status.ShowNotice({});
        } catch (...) {
            state_.listModified = true;
            throw;
        }
    });
    return !state_.listModified;
}

bool BackupList::GetList() {
    // Until all of the file is shown: what cannot be read is kept by the next save.
    keepOld_ = true;
    std::wstring text;
    const bool read = trap_(L"GetList", [&] {
        NetworkProbe probe(system_);
        if (!state_.silentRun) probe.Ask({state_.currentListPath});
        probe.Require(state_.currentListPath);
        if (!system_.files.Stat(state_.currentListPath)) {
            system_.files.Write(state_.currentListPath, {}, FileSystem::Flush::No);
        }
        known_ = system_.files.Read(state_.currentListPath);
        text = DecodeList(*known_, system_.ansi);
    });
    if (!read) return false;
    trap_(L"GetList", [&] {
        keepOld_ = Load(text);
        main_.SetValue(control::vsBackages, state_.copiesCount);
        main_.SetText(control::lblBackages, std::to_wstring(state_.copiesCount));
        if (rows_.Count() > 0) rows_.List().Select(0);
        rows_.UpdateWarnings();
        // Copies on a drive that does not answer are not there, as far as anybody can see.
        if (!state_.silentRun) {
            const bool isThere = rows_.Network().MayAnswer(state_.BackupTo);
            context_.copies.ListLoaded(isThere ? std::wstring_view(state_.BackupTo) : L"C:");
            context_.copies.RestoredPath(rows_.SelectedPath());
        }
        context_.status.ShowNotice(MissingText());
        // Where the drive is not there, other copies are listed; the box names the list's drive.
        ShowDestinationDrive();
    });
    return true;
}

bool BackupList::Load(std::wstring_view text) {
    const ScopedFlag loading(loading_);
    if (!state_.silentRun) rows_.Network().Ask(PathsOf(text));
    const RedrawPause pause(rows_.List());
    // A server that is away answers for none of the rows.
    const BoxLimit oneBox(system_.errors, 1);
    missing_.clear();
    bool dropped = false;
    // The window shows one destination and one number for all items.
    using Keys = std::pair<std::wstring, std::int16_t>;
    std::optional<Keys> keys;
    const auto compareKeys = [&] {
        Keys now{state_.BackupTo, state_.copiesCount};
        dropped = dropped || (keys && *keys != now);
        keys = std::move(now);
    };
    rows_.Clear();
    FieldReader fields(text);
    while (!fields.AtEnd()) {
        system_.pump.ProcessMessagesIfDue();
        const ListLine line = ReadListLine(fields.Next());
        switch (line.kind) {
            case ListLineKind::Empty:
                break;
            case ListLineKind::Destination:
                ReadDestination(line.value);
                break;
            case ListLineKind::CopiesCount:
                TakeCopiesCount(line.value, state_.copiesCount);
                break;
            case ListLineKind::Item:
                compareKeys();
                if (rows_.AddToList(line.value) == ListRows::Outcome::Vanished) {
                    dropped = true;
                    missing_.push_back(line.value);
                }
                break;
        }
    }
    if (keys) compareKeys();
    return dropped;
}

// Empty when every item of the list is there.
std::wstring BackupList::MissingText() const {
    constexpr std::size_t kNamed = 20;
    if (missing_.empty()) return {};
    std::wstring text(state_.IsArabic() ? L"غير موجود الآن: " : L"Not there now: ");
    for (std::size_t i = 0; i < std::min(kNamed, missing_.size()); ++i) {
        if (i > 0) text += state_.IsArabic() ? L"\u200F، " : L", ";
        text += state_.IsArabic() ? MarkPath(missing_[i]) : missing_[i];
    }
    if (missing_.size() > kNamed) text += L"\u2026";
    return text + (state_.IsArabic() ? L". ستتم الإزالة من القائمة عند حفظها."
                                     : L". The next save takes it off the list.");
}

void BackupList::ReadDestination(std::wstring_view value) {
    try {
        state_.BackupTo = CompleteDestination(value);
        ShowDestinationDrive();
    } catch (const RuntimeError&) {
        // The rest of the list is still good.
    }
}

void BackupList::ShowDestinationDrive() {
    const std::wstring drive = state_.BackupTo.substr(0, 2);
    if (MatchesWildcard(drive, L"[A-Z]:")) main_.Choose(control::cmbDestination, drive);
}

std::optional<std::wstring> BackupList::AskForList(FileDialogKind kind, std::uint32_t flags) {
    MRecentFiles::Filter(dialog_, kind, dialog_.defaultFolder);
    dialog_.flags = flags;
    return kind == FileDialogKind::SaveList ? dialogs_.ShowSave(dialog_)
                                            : dialogs_.ShowOpen(dialog_);
}

bool BackupList::MayLeaveList() {
    if (FileSave()) return true;
    const auto* question = state_.IsArabic()
                               ? L"تعذّر حفظ التغييرات في هذه القائمة. هل تريد الانتقال "
                                 L"إلى قائمة أخرى وفقدان هذه التغييرات؟"
                               : L"The changes to this list could not be saved. Open "
                                 L"another list and lose these changes?";
    return system_.boxes.Show({.text = question,
                               .buttons = BoxButtons::YesNo,
                               .rightToLeft = state_.IsArabic(),
                               .secondIsDefault = true}) == BoxAnswer::Yes;
}

void BackupList::FileNew(bool saveAs) {
    trap_(L"FileNew", [&] {
        const auto chosen = AskForList(FileDialogKind::SaveList, kSaveFlags);
        if (!chosen || (!saveAs && !MayLeaveList())) return;
        PreviousListGuard former(state_, keepOld_);
        state_.currentListPath = *chosen;
        // A list that is saved under this name replaces the file in one step; until then it stays.
        if (!saveAs) {
            MFileDosShell::DeletePath(system_, state_.currentListPath);
            if (!GetList()) return;
        }
        former.LetGo();
        if (saveAs) known_.reset();
        context_.showCaption();
        state_.listModified = true;
        recent_.RecentFile(1, state_.currentListPath);
    });
}

void BackupList::FileOpen(std::wstring_view path) {
    trap_(L"FileOpen", [&] {
        const auto chosen = path.empty() ? AskForList(FileDialogKind::OpenList, kOpenFlags)
                                         : std::optional<std::wstring>(path);
        if (!chosen || !MayLeaveList()) return;
        PreviousListGuard former(state_, keepOld_);
        state_.currentListPath = *chosen;
        // The other list starts unmodified, also when this one was given up.
        state_.listModified = false;
        recent_.RecentFile(1, state_.currentListPath);
        if (!GetList()) return;
        former.LetGo();
        context_.showCaption();
    });
}

void BackupList::OpenDefaultList() {
    if (!MayLeaveList()) return;
    PreviousListGuard former(state_, keepOld_);
    state_.currentListPath = state_.DefaultListPath();
    state_.listModified = false;
    if (GetList()) former.LetGo();
}

void BackupList::FileSaveAs() {
    trap_(L"FileSaveAs", [this] {
        FileNew(true);
        FileSave();
    });
}

void BackupList::DoClose() {
    trap_(L"DoClose", [this] {
        closingUnsaved_ = true;
        context_.program.frmUnload();
    });
}

void BackupList::SaveOnClose() {
    if (!state_.silentRun && !closingUnsaved_) FileSave();
}

void BackupList::RefuseDestination(std::wstring_view destination, bool formerAnswers) {
    const std::wstring drive(destination.substr(0, 2));
    context_.status.ShowNotice(
        state_.IsArabic() ? L"محرك الأقراص " + MarkPath(drive) + L" غير جاهز. تبقى النسخ في " +
                                MarkPath(state_.BackupTo) + L'.'
                          : L"Drive " + drive + L" is not ready. The copies still go to " +
                                state_.BackupTo + L'.');
    const std::wstring former = state_.BackupTo.substr(0, 2);
    if (formerAnswers && MatchesWildcard(former, L"[A-Z]:") &&
        MFileDosShell::FolderExists(system_.files, former + L"\\")) {
        ShowDestinationDrive();
    } else {
        main_.Choose(control::cmbDestination, kFallbackDrive);
    }
}

void BackupList::ChooseDestination(std::wstring_view destination) {
    NetworkProbe probe(system_);
    probe.Ask({std::wstring(destination), state_.BackupTo});
    if (!probe.MayAnswer(destination) ||
        !MFileDosShell::MakeFolderIfMissing(system_.files, destination)) {
        RefuseDestination(destination, probe.MayAnswer(state_.BackupTo));
        return;
    }
    state_.BackupTo = destination;
    state_.listModified = true;
    settings_.SaveSetting(setting::kBackupTo, destination);
    context_.copies.ListRestoreFiles();
    context_.copies.RestoredPath(rows_.SelectedPath());
    ShowDestinationDrive();
    FileSave();
}

}  // namespace vw
