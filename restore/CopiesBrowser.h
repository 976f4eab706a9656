#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/EngineProvider.h"
#include "list/editing/RestoreView.h"
#include "platform/ErrorTrap.h"
#include "platform/System.h"
#include "restore/CopyList.h"
#include "restore/ItemList.h"
#include "restore/ListedCopy.h"
#include "restore/ShownFolder.h"
#include "ui/ListView.h"

namespace vw {

class Form;
class StatusLine;

/// The restore view of the main window: every item that has copies on the chosen drive
/// (lsvRestore1), and the copies of the selected one (lsvRestore2). Both lists show one folder.
/// When its drive was removed or exchanged, a click lists both anew.
class CopiesBrowser final : public RestoreView {
  public:
    CopiesBrowser(System& system, Form& main, StatusLine& status, EngineProvider engine);

    /// The copy folder: "\Backup" on the drive chosen in cmbDestination, made when it is missing.
    /// Falls back to C: if the folder neither exists nor can be created. Throws when the disk
    /// cannot be queried.
    [[nodiscard]] std::wstring RestoreFrom();
    /// Chooses the drive of a path.
    void RestoreFrom(std::wstring_view path);
    /// The user chose a drive himself.
    void SourceChosen() noexcept { sourceChosen_ = true; }

    void ListLoaded(std::wstring_view destination) override;

    /// Lists the items of the copy folder, and the copies of the first one.
    void ListRestoreFiles() override;

    /// Lists the copies of the item in a row of the upper list; both lists, when their folder is
    /// not the one any more that they show.
    void ListCopyes(int row);

    /// Selects the row of a protected item and lists its copies; nothing happens for an item
    /// without copies.
    void RestoredPath(std::wstring_view path) override;

    /// Whether the two lists show a protected item and its copies.
    [[nodiscard]] bool Shows(std::wstring_view path);

    /// Whether the lower list shows the copies of the selected item. When it shows those of another
    /// one it is filled anew, and what the user chose in it is no longer there.
    [[nodiscard]] bool FollowSelection();

    /// Lists the copies of the same item anew and selects the same copy again.
    void SelectLast();

    /// Whether the lists still show `folder`, and it is the same folder on the disk. Lists both
    /// anew when it is not. Throws when the disk cannot answer.
    [[nodiscard]] bool IsStillShown(const std::wstring& folder);

    enum class Select { FirstItem, SameItem };
    /// Lists both lists anew and selects the first row, or that of the same name and place if there
    /// is one.
    void ListAnew(Select select = Select::SameItem);

    /// The row whose copies the lower list shows, selected or not; -1 when there is none.
    [[nodiscard]] int ListedRow();
    /// What that row shows, its copies and the selected one; nothing when there is no such row.
    [[nodiscard]] std::optional<CopySelection> Selection();

    void lsvRestore1ItemClick(int row);
    void lsvRestore1ColumnClick(int column);
    void lsvRestore2ColumnClick(int column);

    /// The list of items and the list of copies.
    [[nodiscard]] ListView& Items() { return items_.View(); }
    [[nodiscard]] ListView& Copies() { return copies_.View(); }

  private:
    // False when the drive was exchanged; then the lower list is empty.
    bool ShowCopies(int row);

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmMain"};
    Form& main_;
    StatusLine& status_;
    ShownFolder shown_;
    ItemList items_;
    CopyList copies_;
    std::optional<std::size_t> listed_;  ///< tag of the row whose copies the lower list shows
    bool sourceChosen_ = false;
    bool listing_ = false;
    bool isNoticeShown_ = false;  ///< the status line says that the drive was exchanged
};

}  // namespace vw
