#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/EngineProvider.h"
#include "list/editing/RestoreView.h"
#include "platform/ErrorTrap.h"
#include "platform/FileSystem.h"
#include "platform/System.h"
#include "restore/CopyGroup.h"
#include "restore/ListedCopy.h"
#include "restore/NestedItems.h"
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

    /// Lists both lists anew when their folder is not the one any more that they show. False then.
    /// Throws when the disk cannot answer.
    [[nodiscard]] bool IsFolderStillThere();

    /// Lists both lists anew and selects the row of the same name and place.
    void ListAnew();

    /// The folder of the copies that the lists show; empty when they show none.
    [[nodiscard]] const std::wstring& ShownPath() const noexcept { return shown_.Path(); }

    /// The row whose copies the lower list shows, selected or not; -1 when there is none.
    [[nodiscard]] int ListedRow();
    /// What that row shows; nothing when there is none.
    [[nodiscard]] std::optional<ShownItem> CurrentItem();

    /// The selected copy; nothing when there is none.
    [[nodiscard]] std::optional<ListedCopy> SelectedCopy();
    /// Every copy in the order of the rows.
    [[nodiscard]] std::vector<ListedCopy> ListedCopies();

    void lsvRestore1ItemClick(int row);
    void lsvRestore1ColumnClick(int column);
    void lsvRestore2ColumnClick(int column);

    /// The list of items and the list of copies.
    [[nodiscard]] ListView& Items();
    [[nodiscard]] ListView& Copies();

  private:
    /// A row of the upper list, and how the copies of its item are found.
    struct ItemRow {
        ShownItem shown{};
        std::wstring topOrigin{};  ///< its name as the entries of the copy folder have it
        std::wstring nested{};  ///< below a copy, when the copy itself is only the folder around it
        std::vector<NestedItem> beside{};  ///< folders of their copies are none of this item
    };

    /// How a list is sorted until another column is clicked.
    struct SortState {
        std::wstring_view key = kNameColumn;
        bool descending = false;
    };

    /// An entry of the copy folder that may be a copy of the item.
    struct FoundCopy {
        std::wstring name;
        FileInfo facts;
    };

    [[nodiscard]] static bool IsFolderType(std::wstring_view type);
    void List();
    [[nodiscard]] std::vector<CopyGroup> FindCopies(const std::wstring& folder);
    void AddItems(const CopyGroup& series);
    void AddItem(ItemRow item, bool isFolder);
    [[nodiscard]] std::wstring ReadPlace(ShownItem& item);
    [[nodiscard]] const ItemRow& ItemAt(int row);
    void ClearCopies();
    void NameCopies(const ShownItem& item);
    [[nodiscard]] bool AddCopies(const std::wstring& folder, const ItemRow& item);
    [[nodiscard]] std::optional<FileInfo> CopyIn(const std::wstring& entry, const FileInfo& facts,
                                                 const ItemRow& item);
    [[nodiscard]] ListedCopy ReadCopy(const std::wstring& entry, const FileInfo& facts,
                                      const std::wstring& nested, bool mayHaveComment);
    [[nodiscard]] bool ReadComment(ListedCopy& copy);
    void AddCopy(ListedCopy copy);
    void MarkIncompleteCopies();
    [[nodiscard]] int RowOf(std::wstring_view path);
    void SelectFirstCopy();
    void Sort(ListView& list, const SortState& state);
    void TurnSort(ListView& list, SortState& state, int column);

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmMain"};
    Form& main_;
    StatusLine& status_;
    EngineProvider engine_;
    ShownFolder shown_;
    std::vector<ItemRow> items_;         ///< by the tags of the rows of the upper list
    std::vector<ListedCopy> copies_;     ///< by the tags of the rows of the lower list
    std::optional<std::size_t> listed_;  ///< tag of the row whose copies the lower list shows
    SortState itemsSort_;
    SortState copiesSort_;
    bool sourceChosen_ = false;
    bool listing_ = false;
    bool isNoticeShown_ = false;  ///< the status line says that the drive was exchanged
    int copiesListing_ = 0;       ///< number of the listing that the lower list belongs to
};

}  // namespace vw
