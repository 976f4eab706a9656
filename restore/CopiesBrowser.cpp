#include "restore/CopiesBrowser.h"

#include "engine/CopyName.h"
#include "fsutil/Folders.h"
#include "fsutil/PathText.h"
#include "fsutil/Waking.h"
#include "list/editing/SubItem.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"
#include "platform/Scoped.h"
#include "platform/TextCase.h"
#include "platform/Wildcards.h"
#include "restore/RestoreTexts.h"
#include "ui/ControlNames.h"
#include "ui/Form.h"
#include "ui/StatusLine.h"

namespace vw {
namespace {

using namespace MFileDosShell;
constexpr std::wstring_view kFallbackDrive = L"C:";

void ShowExchange(StatusLine& status, const Form& main) {
    status.ShowNotice(restore_text::kListedAnew.In(main.InLanguage()));
}

// Whether the folder that the lists show is still that of the chosen drive.
bool IsStillChosen(System& system, Form& main, const ShownFolder& shown) {
    const std::wstring chosen = main.Text(control::cmbDestination).append(kBackupFolder);
    const CancelToken never;
    return EqualNoCase(chosen, shown.Path()) &&
           IsThereAfterWaking(system, never, [&] { return shown.IsStillThere(system.files); });
}

}  // namespace

CopiesBrowser::CopiesBrowser(System& system, Form& main, StatusLine& status, EngineProvider engine)
    : system_(system),
      main_(main),
      status_(status),
      items_(system, main),
      copies_(system, main, std::move(engine)) {}

// The user sees his copies without choosing a drive first.
void CopiesBrowser::ListLoaded(std::wstring_view destination) {
    RestoreFrom(destination);
    ListRestoreFiles();
}

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

void CopiesBrowser::ListRestoreFiles() { ListAnew(Select::FirstItem); }

void CopiesBrowser::ListAnew(Select select) {
    if (!sourceChosen_ || listing_) return;
    const auto before = select == Select::SameItem ? Selection() : std::nullopt;
    const ScopedFlag guard(listing_);
    trap_(L"ListRestoreFiles", [&] {
        const RedrawPause pause(Items());
        items_.Clear();
        listed_.reset();
        copies_.Clear();
        shown_.Clear();
        const std::wstring folder = RestoreFrom();
        // A drive without a copy folder has no copies; that needs no message.
        if (system_.files.Stat(folder)) {
            // Identify the folder before listing it: a drive that is exchanged later has another
            // one.
            shown_.Take(system_.files, folder);
            items_.Fill(folder);
        }
        items_.Sort();
        if (Items().Rows().Count() == 0) return;
        const int row = before ? items_.RowLike(before->item) : 0;
        Items().Select(row);
        Items().EnsureVisible(row);
        ShowCopies(row);
    });
}

void CopiesBrowser::ListCopyes(int row) {
    if (ShowCopies(row)) return;
    ListAnew();
    ShowExchange(status_, main_);
    isNoticeShown_ = true;
}

bool CopiesBrowser::ShowCopies(int row) {
    bool isExchanged = false;
    trap_(L"ListCopyes", [&] {
        const RedrawPause pause(Copies());
        // Whatever goes wrong now, no copies of another item are left below.
        copies_.Clear();
        listed_ = Items().Rows().At(row).tag;
        isExchanged = !IsStillChosen(system_, main_, shown_);
        if (isExchanged) {
            ShowExchange(status_, main_);
            isNoticeShown_ = true;
            return;
        }
        if (std::exchange(isNoticeShown_, false)) status_.ShowNotice({});
        // A copy: the list may be filled anew while messages are processed.
        const ItemRow item = items_.At(row);
        copies_.Fill(shown_.Path(), item);
    });
    return !isExchanged;
}

void CopiesBrowser::RestoredPath(std::wstring_view path) {
    trap_(L"RestoredPath", [&] {
        const int row = items_.RowOf(path);
        if (row < 0) return;
        Items().Select(row);
        lsvRestore1ItemClick(row);
    });
}

bool CopiesBrowser::Shows(std::wstring_view path) {
    const int row = items_.RowOf(path);
    return row >= 0 && row == Items().Selected() && listed_ == Items().Rows().At(row).tag;
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
    if (row < 0 || listed_ == Items().Rows().At(row).tag) return true;
    ListCopyes(row);
    return false;
}

bool CopiesBrowser::IsStillShown(const std::wstring& folder) {
    if (IsStillChosen(system_, main_, shown_)) return shown_.Path() == folder;
    ListAnew();
    return false;
}

int CopiesBrowser::ListedRow() {
    if (!listed_) return -1;
    for (int row = 0; row < Items().Rows().Count(); ++row) {
        if (Items().Rows().At(row).tag == *listed_) return row;
    }
    return -1;
}

std::optional<CopySelection> CopiesBrowser::Selection() {
    const int row = ListedRow();
    if (!items_.Has(row)) return std::nullopt;
    return CopySelection{.folder = shown_.Path(),
                         .item = items_.At(row).shown,
                         .copy = copies_.Selected().value_or(ListedCopy{}),
                         .copies = copies_.All()};
}

// After a restore a new safety copy may be there, and the user looks at the same copy as before.
void CopiesBrowser::SelectLast() {
    trap_(L"SelectLast", [this] {
        const int row = ListedRow();
        if (row < 0) return;
        const std::wstring label = SubItem(Copies(), kNameColumn);
        ListCopyes(row);
        const int again = label.empty() ? -1 : Copies().Rows().Find(kNameColumn, label);
        if (again < 0) return;
        Copies().Select(again);
        Copies().EnsureVisible(again);
    });
}

void CopiesBrowser::lsvRestore1ColumnClick(int column) {
    trap_(L"lsvRestore1ColumnClick", [&] { items_.SortBy(column); });
}

void CopiesBrowser::lsvRestore2ColumnClick(int column) {
    trap_(L"lsvRestore2ColumnClick", [&] { copies_.SortBy(column); });
}

}  // namespace vw
