#include "list/editing/ListEditing.h"

#include "fsutil/Folders.h"
#include "fsutil/PathText.h"
#include "list/editing/BackupList.h"
#include "list/editing/FileDialogs.h"
#include "list/editing/Filter.h"
#include "list/editing/ListContext.h"
#include "list/editing/RestoreView.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/MessagePump.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"
#include "platform/TextCase.h"
#include "platform/UserLocale.h"
#include "platform/Wildcards.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"

namespace vw {
namespace {

using namespace MFileDosShell;
constexpr wchar_t kSeparator = L'\0';  // between the names of a multiple selection

std::wstring WithoutSeparator(std::wstring_view folder) {
    return std::wstring(folder.substr(0, folder.find_last_not_of(L'\\') + 1));
}

}  // namespace

ListEditing::ListEditing(System& system, ProgramState& state, Form& main, FileDialogs& dialogs,
                         BackupList& list, const ListContext& context)
    : system_(system),
      state_(state),
      main_(main),
      dialogs_(dialogs),
      list_(list),
      rows_(list.Rows()),
      context_(context) {}

bool ListEditing::PathIsDrive(std::wstring_view path, bool ask) {
    const bool isDrive = MatchesWildcard(path, L"?:");
    if (isDrive && ask) system_.boxes.Show({.text = std::wstring(kDriveRefused)});
    return isDrive;
}

// Folders are chosen with a dialog that names a file in them.
std::wstring ListEditing::GetFileFolder(FileDialogKind kind) {
    std::wstring path;
    trap_(L"GetFileFolder", [&] {
        MRecentFiles::Filter(list_.Dialog(), kind, list_.Dialog().defaultFolder);
        if (kind == FileDialogKind::AddFiles) {
            path = dialogs_.ShowOpen(list_.Dialog()).value_or(L"");
            return;
        }
        const auto chosen = dialogs_.ShowSave(list_.Dialog());
        if (!chosen) return;
        // The path of a folder may be typed instead of the proposed name.
        const std::wstring folder = FolderExists(system_.files, *chosen) ? WithoutSeparator(*chosen)
                                                                         : CFileLocation(*chosen);
        if (PathIsDrive(folder, true)) return;
        path = folder;
        if (kind == FileDialogKind::AddFolder) path += L"\\";
        if (kind == FileDialogKind::AddRule) path += L"\\*";
    });
    // Dialogs on lists leave the title unchanged.
    list_.Dialog().title.clear();
    return path;
}

void ListEditing::Save() {
    state_.listModified = true;
    list_.FileSave();
}

bool ListEditing::IsShownText(std::wstring_view text) {
    ListView& list = rows_.List();
    for (int row = 0; row < list.Count(); ++row) {
        if (EqualNoCase(list.SubItem(row, kNameColumn), text)) return true;
    }
    return false;
}

void ListEditing::mnuAddFolderClick() { AddItem(FileDialogKind::AddFolder); }

void ListEditing::AddRule() { AddItem(FileDialogKind::AddRule); }

void ListEditing::AddItem(FileDialogKind kind) {
    context_.startAtLogon(true);
    const std::wstring path = GetFileFolder(kind);
    if (path.empty() || IsShownText(path) || path.ends_with(L":\\\\")) return;
    const int before = BeginAdding();
    Add(path);
    rows_.List().FitColumns();
    SelectAdded(before);
    Save();
}

int ListEditing::BeginAdding() {
    offered_.clear();
    return rows_.Count();
}

void ListEditing::Add(const std::wstring& path) {
    offered_ = path;
    rows_.AddToList(path);
}

// What was added last is what the user goes on with; when all of it is there already, that.
void ListEditing::SelectAdded(int countBefore) {
    const int newest = rows_.Count() - 1;
    const int row = newest >= countBefore ? newest : rows_.RowOf(offered_);
    if (row < 0) return;
    rows_.List().Select(row);
    rows_.List().EnsureVisible(row);
}

void ListEditing::CopyTo() {
    trap_(L"CopyTo", [&] {
        const std::wstring folder = GetFileFolder(FileDialogKind::ChooseDestination);
        if (!folder.empty()) list_.ChooseDestination(folder);
    });
}

void ListEditing::mnuAddFileClick() {
    context_.startAtLogon(true);
    const std::wstring selection = GetFileFolder(FileDialogKind::AddFiles);
    if (selection.empty()) return;
    // Also what the end of the session finds half added is saved.
    state_.listModified = true;
    const int before = BeginAdding();
    {
        const RedrawPause pause(rows_.List());
        AddChosen(selection);
    }
    SelectAdded(before);
    context_.progress.BusyHide(true);
    Save();
}

void ListEditing::AddChosen(const std::wstring& selection) {
    if (selection.find(kSeparator) != std::wstring::npos) {
        AddMultiselect(selection);
    } else if (selection.ends_with(L"\\*")) {
        AddMatching(selection);
    } else {
        const auto facts = system_.files.Stat(selection);
        if (facts && facts->isFolder) {
            AddAllFilesInFolder(selection);
        } else {
            Add(selection);
        }
    }
}

// Shows what is being added, adds it and lets the windows live; false once the user has cancelled.
bool ListEditing::AddShown(std::wstring_view caption, const std::wstring& path) {
    if (state_.cancel.IsRequested()) return false;
    context_.progress.Msg(caption, path);
    Add(path);
    system_.pump.ProcessMessagesIfDue();
    return true;
}

// The names come from the end of the selection.
void ListEditing::AddMultiselect(std::wstring_view selection) {
    trap_(L"AddMultiselect", [&] {
        const std::wstring folder(selection.substr(0, selection.find(kSeparator)));
        const auto facts = system_.files.Stat(folder);
        if (folder.size() == selection.size() || !facts || !facts->isFolder) return;
        state_.cancel.Begin();
        while (selection.size() > folder.size()) {
            const std::size_t separator = selection.rfind(kSeparator);
            const std::wstring_view name = selection.substr(separator + 1);
            if (!name.empty() && !AddShown(L"Adding file", JoinPath(folder, name))) return;
            selection = selection.substr(0, separator);
        }
    });
}

void ListEditing::AddMatching(std::wstring_view pattern) {
    const std::wstring folder(pattern.substr(0, pattern.size() - 1));
    std::vector<std::wstring> files;
    system_.files.List(folder, [&](const FolderEntry& entry) {
        if (!entry.isFolder) files.push_back(JoinPath(folder, entry.name));
    });
    state_.cancel.Begin();
    for (const std::wstring& path : files) {
        if (!AddShown(L"Adding", path)) return;
    }
}

// The folders to come are kept here and not on the stack: trees can be thousands of levels deep. An
// error ends the folder that it came in.
void ListEditing::AddAllFilesInFolder(const std::wstring& folder) {
    std::vector<std::wstring> pending{folder};
    do {
        const std::wstring current = std::move(pending.back());
        pending.pop_back();
        trap_(L"AddAllFilesInFolder", [&] {
            std::vector<std::wstring> files;
            std::vector<std::wstring> subFolders;
            system_.files.List(current, [&](const FolderEntry& entry) {
                if (entry.isLink) return;
                (entry.isFolder ? subFolders : files).push_back(JoinPath(current, entry.name));
            });
            state_.cancel.Begin();
            for (const std::wstring& path : files) {
                if (!AddShown(L"Adding file", path)) return;
            }
            pending.insert(pending.end(), subFolders.rbegin(), subFolders.rend());
        });
        system_.pump.ProcessMessagesIfDue();
    } while (!pending.empty() && !state_.cancel.IsRequested());
}

void ListEditing::lsvBackupList_OLEDragDrop(const std::vector<std::wstring>& paths) {
    state_.listModified = true;
    const int before = BeginAdding();
    bool drives = false;
    {
        const RedrawPause pause(rows_.List());
        for (const std::wstring& path : paths) {
            if (PathIsDrive(WithoutSeparator(path), !drives)) {
                drives = true;
                continue;
            }
            const auto facts = system_.files.Stat(path);
            if (!facts) continue;
            Add(facts->isFolder ? WithSeparator(path) : path);
            system_.pump.ProcessMessagesIfDue();
        }
    }
    SelectAdded(before);
    Save();
}

void ListEditing::DelItem() {
    if (rows_.Count() == 0) {
        system_.boxes.Show({.text = main_.Text(control::lblNoFileToBack), .rightToLeft = true});
        return;
    }
    ListView& list = rows_.List();
    const int selected = list.Selected();
    if (selected < 0) return;
    rows_.Remove(selected);
    Save();
    const int count = rows_.Count();
    if (count == 0) {
        context_.startAtLogon(false);
    } else {
        list.Select(selected < count ? selected : count - 1);
    }
}

void ListEditing::mnuDelAllClick() {
    // One click beside Delete, without a question: the list can be had back.
    if (rows_.Count() > 0) list_.KeepOldList();
    rows_.Clear();
    state_.listModified = true;
    context_.startAtLogon(false);
    list_.FileSave();
}

void ListEditing::lsvBackupListClick() { context_.copies.RestoredPath(rows_.SelectedPath()); }

void ListEditing::lsvBackupListColumnClick(int column) {
    descending_ = !descending_;
    ListView& list = rows_.List();
    list.Sort(list.KeyOf(column), !descending_, CompareForUser);
}

}  // namespace vw
