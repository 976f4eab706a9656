#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Date.h"
#include "platform/System.h"
#include "restore/CopySeries.h"
#include "restore/NestedItems.h"
#include "ui/ListView.h"

namespace vw {

class Form;
class RestoreHost;
struct FileFacts;

/// The restore view of the main window: every item that has copies on the chosen drive
/// (lsvRestore1), and the copies of the selected one (lsvRestore2). Nothing is kept between two
/// listings; the disk tells everything anew.
class CopiesBrowser {
  public:
    CopiesBrowser(System& system, Form& main, RestoreHost& host);

    /// The copy folder: "\Backup" on the drive chosen in cmbDestination, made when it is missing.
    /// A drive that has none and takes none gives way to C:.
    [[nodiscard]] std::wstring RestoreFrom();
    /// Chooses the drive of a path.
    void RestoreFrom(std::wstring_view path);
    /// The user chose a drive himself.
    void SourceChosen() noexcept { sourceChosen_ = true; }

    /// Lists the items of the copy folder, and the copies of the first one.
    void ListRestoreFiles();

    /// Lists the copies of the item in a row of the upper list.
    void ListCopyes(int row);

    /// Selects the row of a protected item and lists its copies; nothing happens for an item
    /// without copies.
    void RestoredPath(std::wstring_view path);

    /// Whether the lower list shows the copies of the selected item. When it shows those of another
    /// one it is filled anew, and what the user chose in it is no longer there.
    [[nodiscard]] bool FollowSelection();

    /// Lists the copies of the selected item anew and selects the same copy again.
    void SelectLast();

    void lsvRestore1ItemClick(int row);
    void lsvRestore1ColumnClick(int column);
    void lsvRestore2ColumnClick(int column);

    /// The list of items and the list of copies.
    [[nodiscard]] ListView& Items();
    [[nodiscard]] ListView& Copies();

  private:
    /// A row's item as the disk tells it, whatever the list shows of it.
    struct Item {
        std::wstring origin;     ///< its name
        std::wstring topOrigin;  ///< the same as the entries of the copy folder have it
        int location = 0;
        std::wstring nested;  ///< below a copy, when the copy itself is only the folder around it
        std::vector<NestedItem> beside;  ///< folders of their copies are none of this item
    };

    /// What the upper list shows of an item.
    struct ItemRow {
        Item item;
        bool isFolder = false;
        std::wstring commentOf;  ///< the copy whose comment tells where it was; may be empty
    };

    /// How a list is sorted until another column is clicked.
    struct SortState {
        std::wstring_view key = kNameColumn;
        bool descending = false;
    };

    /// What the lower list shows of a copy.
    struct CopyRow {
        std::wstring label;
        std::wstring path;
        bool isFolder = false;
        std::int64_t size = 0;  ///< bytes; -1 when it is gone
        Date date = 0;
    };

    void List();
    [[nodiscard]] std::vector<CopySeries> FindCopies(const std::wstring& folder);
    void AddItems(const CopySeries& series);
    void AddItem(ItemRow added);
    void ClearCopies();
    void NameCopies(int row);
    [[nodiscard]] bool AddCopies(const std::wstring& folder, int row);
    [[nodiscard]] std::optional<FileFacts> CopyIn(const std::wstring& entry, const FileFacts& facts,
                                                  const Item& item);
    [[nodiscard]] CopyRow ReadCopy(const std::wstring& entry, const FileFacts& facts,
                                   const std::wstring& nested);
    void AddCopy(const CopyRow& copy);
    [[nodiscard]] int RowOf(std::wstring_view path);
    void SelectFirstCopy();
    void Sort(ListView& list, const SortState& state);
    void TurnSort(ListView& list, SortState& state, int column);

    System& system_;
    Form& main_;
    RestoreHost& host_;
    std::vector<Item> items_;            ///< by the tags of the rows
    std::optional<std::size_t> listed_;  ///< tag of the row whose copies the lower list shows
    SortState itemsSort_;
    SortState copiesSort_;
    bool sourceChosen_ = false;
    bool listing_ = false;
    int copiesListing_ = 0;  ///< number of the listing that the lower list belongs to
};

}  // namespace vw
