#include "list/editing/ListEditing.h"

#include "fsutil/Folders.h"
#include "fsutil/PathText.h"
#include "list/editing/BackupList.h"
#include "list/editing/FileDialogs.h"
#include "list/editing/Filter.h"
#include "list/editing/ItemAdder.h"
#include "list/editing/ListContext.h"
#include "list/editing/RestoreView.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"
#include "platform/MessagePump.h"
#include "platform/ProgramState.h"
#include "platform/ProgressReporter.h"
#include "platform/UserLocale.h"
#include "platform/Wildcards.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"

namespace vw {
namespace {

using namespace MFileDosShell;
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
    return rows_.List().Rows().FindName(text, 0, true, false) >= 0;
}

void ListEditing::mnuAddFolderClick() { AddItem(FileDialogKind::AddFolder); }

void ListEditing::AddRule() { AddItem(FileDialogKind::AddRule); }

void ListEditing::AddItem(FileDialogKind kind) {
    context_.startAtLogon(true);
    const std::wstring path = GetFileFolder(kind);
    if (path.empty() || IsShownText(path) || path.ends_with(L":\\\\")) return;
    ItemAdder adder(system_, state_, rows_, context_.progress);
    adder.Add(path);
    rows_.List().Columns().Fit();
    adder.SelectNewest();
    Save();
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
    ItemAdder adder(system_, state_, rows_, context_.progress);
    {
        const RedrawPause pause(rows_.List());
        adder.AddChosen(selection);
    }
    adder.SelectNewest();
    context_.progress.BusyHide(true);
    Save();
}

void ListEditing::lsvBackupList_OLEDragDrop(const std::vector<std::wstring>& paths) {
    state_.listModified = true;
    ItemAdder adder(system_, state_, rows_, context_.progress);
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
            adder.Add(facts->isFolder ? WithSeparator(path) : path);
            system_.pump.ProcessMessagesIfDue();
        }
    }
    adder.SelectNewest();
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
    list.Sort(list.Rows().KeyOf(column), !descending_, CompareForUser);
}

}  // namespace vw
