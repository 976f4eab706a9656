#include "restore/CopiesBrowser.h"

#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/FileQueries.h"
#include "fsutil/Folders.h"
#include "fsutil/PathText.h"
#include "fsutil/Waking.h"
#include "list/editing/SubItem.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/TextCase.h"
#include "platform/UserLocale.h"
#include "platform/Wildcards.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"
#include "ui/StatusLine.h"

// What the restore view shows as a whole; its two lists are filled in CopiesListing.cpp.

namespace vw {
namespace {

using namespace MFileDosShell;
constexpr std::wstring_view kFallbackDrive = L"C:";
constexpr std::wstring_view kNewestLabel = L"N01";

}  // namespace

CopiesBrowser::CopiesBrowser(System& system, Form& main, StatusLine& status, EngineProvider engine)
    : system_(system), main_(main), status_(status), engine_(std::move(engine)) {}

// The user sees his copies without choosing a drive first.
void CopiesBrowser::ListLoaded(std::wstring_view destination) {
    RestoreFrom(destination);
    ListRestoreFiles();
}

ListView& CopiesBrowser::Items() { return main_.List(control::lsvRestore1); }

ListView& CopiesBrowser::Copies() { return main_.List(control::lsvRestore2); }

std::wstring CopiesBrowser::RestoreFrom() {
    std::wstring path = main_.Text(control::cmbDestination).append(kBackupFolder);
    const auto isThere = [&] {
        const auto facts = system_.files.Stat(path);
        return facts && facts->isFolder;
    };
    if (isThere()) return path;
    try {
        system_.files.CreateFolder(path);
    } catch (const RuntimeError&) {
        // An absent drive, or one that takes no folder, has no copies to show.
    }
    if (isThere()) return path;
    main_.Choose(control::cmbDestination, kFallbackDrive);
    return std::wstring(kFallbackDrive).append(kBackupFolder);
}

void CopiesBrowser::RestoreFrom(std::wstring_view path) {
    sourceChosen_ = true;
    const std::wstring_view drive = path.substr(0, 2);
    if (MatchesWildcard(drive, L"[A-Z]:")) main_.Choose(control::cmbDestination, drive);
}

void CopiesBrowser::RestoredPath(std::wstring_view path) {
    trap_(L"RestoredPath", [&] {
        const int row = RowOf(path);
        if (row < 0) return;
        Items().Select(row);
        lsvRestore1ItemClick(row);
    });
}

bool CopiesBrowser::Shows(std::wstring_view path) {
    const int row = RowOf(path);
    return row >= 0 && row == Items().Selected() && listed_ == Items().Tag(row);
}

// A row shows the name of a folder without what is behind its point; the row that remembers the
// whole name goes before one that only shows it.
int CopiesBrowser::RowOf(std::wstring_view path) {
    if (path.ends_with(L'*')) path.remove_suffix(1);
    const std::wstring name = CFileName(path);
    const std::wstring folder = CFileLocation(path);
    ListView& items = Items();
    const int count = items.Count();
    int shown = -1;
    for (int row = 0; row < count; ++row) {
        const ShownItem& item = ItemAt(row).shown;
        if (!EqualNoCase(item.originalLocation, folder)) continue;
        const bool hasExtension = !IsFolderType(item.type);
        if (!hasExtension && EqualNoCase(item.name, name)) return row;
        if (EqualNoCase(item.text + (hasExtension ? item.type : L""), name)) {
            // The first one counts unless another row has the whole name.
            if (hasExtension) return row;
            if (shown < 0) shown = row;
        }
    }
    return shown;
}

void CopiesBrowser::lsvRestore1ItemClick(int row) {
    trap_(L"lsvRestore1ItemClick", [&] {
        const int selected = Items().Selected();
        if (selected >= 0) Items().EnsureVisible(selected);
        ListCopyes(row);
    });
}

// Selection changes made while a command runs throw no event, so the copies list may be stale.
bool CopiesBrowser::FollowSelection() {
    const int row = Items().Selected();
    if (row < 0 || listed_ == Items().Tag(row)) return true;
    ListCopyes(row);
    return false;
}

bool CopiesBrowser::IsFolderStillThere() {
    const std::wstring chosen = main_.Text(control::cmbDestination).append(kBackupFolder);
    const auto isThere = [this] { return shown_.IsStillThere(system_.files); };
    const CancelToken never;
    if (EqualNoCase(chosen, shown_.Path()) && IsThereAfterWaking(system_, never, isThere)) {
        return true;
    }
    ListAnew();
    return false;
}

// The user looks at the same item as before, when the other folder has it too.
void CopiesBrowser::ListAnew() {
    // A listing that is under way reads the folder anew by itself.
    if (listing_) return;
    const auto before = CurrentItem();
    ListRestoreFiles();
    if (!before) return;
    ListView& items = Items();
    for (int row = 0; row < items.Count(); ++row) {
        const ShownItem& item = ItemAt(row).shown;
        if (EqualNoCase(item.text, before->text) && EqualNoCase(item.type, before->type) &&
            EqualNoCase(item.originalLocation, before->originalLocation)) {
            items.Select(row);
            lsvRestore1ItemClick(row);
            return;
        }
    }
}

int CopiesBrowser::ListedRow() {
    if (!listed_) return -1;
    for (int row = 0; row < Items().Count(); ++row) {
        if (Items().Tag(row) == *listed_) return row;
    }
    return -1;
}

std::optional<ShownItem> CopiesBrowser::CurrentItem() {
    const int row = ListedRow();
    if (row < 0 || *listed_ >= items_.size()) return std::nullopt;
    return items_[*listed_].shown;
}

std::optional<ListedCopy> CopiesBrowser::SelectedCopy() {
    const int row = Copies().Selected();
    if (row < 0) return std::nullopt;
    return copies_.at(Copies().Tag(row));
}

std::vector<ListedCopy> CopiesBrowser::ListedCopies() {
    std::vector<ListedCopy> listed;
    listed.reserve(copies_.size());
    for (int row = 0; row < Copies().Count(); ++row) {
        listed.push_back(copies_.at(Copies().Tag(row)));
    }
    return listed;
}

// After a restore a new safety copy may be there, and the user looks at the same copy as before.
void CopiesBrowser::SelectLast() {
    trap_(L"SelectLast", [this] {
        const int row = ListedRow();
        if (row < 0) return;
        const std::wstring label = SubItem(Copies(), kNameColumn);
        ListCopyes(row);
        const int again = label.empty() ? -1 : Copies().Find(kNameColumn, label);
        if (again < 0) return;
        Copies().Select(again);
        Copies().EnsureVisible(again);
    });
}

// A single copy that is not the newest is not selected by itself.
void CopiesBrowser::SelectFirstCopy() {
    ListView& copies = Copies();
    int row = copies.Find(kNameColumn, kNewestLabel);
    if (row < 0 && copies.Count() > 1) row = 0;
    copies.Select(row);
}

void CopiesBrowser::lsvRestore1ColumnClick(int column) {
    trap_(L"lsvRestore1ColumnClick", [&] { TurnSort(Items(), itemsSort_, column); });
}

void CopiesBrowser::lsvRestore2ColumnClick(int column) {
    trap_(L"lsvRestore2ColumnClick", [&] { TurnSort(Copies(), copiesSort_, column); });
}

// The order turns round at every click, whichever column it was.
void CopiesBrowser::TurnSort(ListView& list, SortState& state, int column) {
    state.descending = !state.descending;
    state.key = list.KeyOf(column);
    Sort(list, state);
}

void CopiesBrowser::Sort(ListView& list, const SortState& state) {
    list.Sort(state.key, !state.descending, CompareForUser);
}

}  // namespace vw
