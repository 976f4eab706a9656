#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/EngineProvider.h"
#include "platform/FileSystem.h"
#include "platform/System.h"
#include "restore/ItemList.h"
#include "restore/ListedCopy.h"
#include "restore/SortOrder.h"

namespace vw {

class Form;

/// The lower list of the restore view, lsvRestore2: the copies of one item.
class CopyList {
  public:
    CopyList(System& system, Form& main, EngineProvider engine);

    [[nodiscard]] ListView& View();

    /// Removes all rows. A listing that is still under way ends: its copies are those of another
    /// item.
    void Clear();

    /// Lists the copies of an item in an empty list and selects the newest one. Throws the error of
    /// the disk.
    void Fill(const std::wstring& folder, const ItemRow& item);

    /// The selected copy; nothing when there is none.
    [[nodiscard]] std::optional<ListedCopy> Selected();
    /// Every copy in the order of the rows.
    [[nodiscard]] std::vector<ListedCopy> All();

    /// Sorts by a column (from 0), in the other direction than before.
    void SortBy(int column) { order_.Turn(View(), column); }

  private:
    void ShowHeading(const ShownItem& item);
    [[nodiscard]] bool AddCopies(const std::wstring& folder, const ItemRow& item);
    [[nodiscard]] std::optional<FileInfo> CopyIn(const std::wstring& entry, const FileInfo& facts,
                                                 const ItemRow& item);
    [[nodiscard]] ListedCopy ReadCopy(const std::wstring& entry, const FileInfo& facts,
                                      const std::wstring& nested, bool mayHaveComment);
    [[nodiscard]] bool ReadComment(ListedCopy& copy);
    void AddCopy(ListedCopy copy);
    void MarkIncomplete();
    void SelectFirst();

    System& system_;
    Form& main_;
    EngineProvider engine_;
    std::vector<ListedCopy> copies_;  ///< by the tags of the rows
    SortOrder order_;
    int listing_ = 0;  ///< number of the listing that the rows belong to
};

}  // namespace vw
