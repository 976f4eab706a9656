#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/ErrorTrap.h"
#include "platform/System.h"
#include "restore/ListedCopy.h"
#include "restore/NestedItems.h"
#include "restore/SortOrder.h"
#include "ui/ListView.h"

namespace vw {

struct CopyGroup;
class Form;

/// A row of the upper list, and how the copies of its item are found.
struct ItemRow {
    ShownItem shown{};
    std::wstring topOrigin{};  ///< its name as the entries of the copy folder have it
    std::wstring nested{};     ///< below a copy, when the copy itself is only the folder around it
    std::vector<NestedItem> beside{};  ///< folders of their copies are none of this item
};

/// The upper list of the restore view, lsvRestore1: the items that have copies in a folder.
class ItemList {
  public:
    ItemList(System& system, Form& main) : system_(system), main_(main) {}

    [[nodiscard]] ListView& View();

    void Clear();

    /// Adds the items that have copies in a folder. Throws the error of the disk.
    void Fill(const std::wstring& folder);

    /// What a row shows; an empty item for a row that is not there.
    [[nodiscard]] const ItemRow& At(int row);

    /// Whether a row shows an item.
    [[nodiscard]] bool Has(int row) { return View().Rows().At(row).tag < items_.size(); }

    /// The row of a protected item; -1 for none.
    [[nodiscard]] int RowOf(std::wstring_view path);

    /// The row of the same name, type and place; the first row for none.
    [[nodiscard]] int RowLike(const ShownItem& item);

    void Sort() { order_.Apply(View()); }
    /// Sorts by a column (from 0), in the other direction than before.
    void SortBy(int column) { order_.Turn(View(), column); }

  private:
    [[nodiscard]] std::vector<CopyGroup> FindCopies(const std::wstring& folder);
    void AddItems(const CopyGroup& series);
    void AddItem(ItemRow item, bool isFolder);
    [[nodiscard]] std::wstring ReadPlace(ShownItem& item);
    [[nodiscard]] bool IsFolderThere(const std::wstring& folder);

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmMain"};
    Form& main_;
    std::vector<ItemRow> items_;  ///< by the tags of the rows
    /// Whether the folders that comments name exist, by their upper-case paths, as this listing
    /// found them.
    std::unordered_map<std::wstring, bool> foldersThere_;
    SortOrder order_;
};

}  // namespace vw
