#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "fsutil/FileQueries.h"
#include "fsutil/NetworkProbe.h"
#include "platform/ErrorTrap.h"
#include "platform/System.h"
#include "ui/ListView.h"

namespace vw {

class Form;
struct ListContext;
struct ProgramState;

/// The items of the current backup list: the rows of lsvBackupList. An item is known by its path,
/// in any letter case.
class ListRows {
  public:
    ListRows(System& system, const ProgramState& state, Form& main, const ListContext& context);

    enum class Outcome { Added, AlreadyThere, Vanished };

    /// The network drives and shares that were probed. AddToList adds items of those that do not
    /// answer without querying the disk about them: their cells stay empty.
    [[nodiscard]] NetworkProbe& Network() noexcept { return probe_; }

    /// Adds an item with its facts from the disk. Adds and reports nothing for an item
    /// that is there already, and for a file or folder that does not exist.
    Outcome AddToList(std::wstring_view path);

    /// Shows the size and the newest date of an item as they are now. An item that is not in the
    /// list, and a rule, which shows neither, are left alone.
    void Refresh(std::wstring_view path, std::uint64_t bytes, Date newest);

    /// Marks the items that will not be backed up the way their owner thinks.
    void UpdateWarnings();

    /// The warnings of the present rows, each with the path that it is about.
    [[nodiscard]] std::vector<std::wstring> Warnings();

    /// The path of the item in a row.
    [[nodiscard]] const std::wstring& PathOf(int row);

    /// The path of the selected item; empty when none is selected.
    [[nodiscard]] std::wstring SelectedPath();

    /// The row of an item, in any letter case; -1 when it is not in the list.
    [[nodiscard]] int RowOf(std::wstring_view path);

    void Remove(int row);
    void Clear();

    [[nodiscard]] int Count();

    /// The paths of all items in the order shown.
    [[nodiscard]] std::vector<std::wstring> Paths();

    /// The list view itself.
    [[nodiscard]] ListView& List();

  private:
    /// A row. Its cells are made from it, and commands read it instead of them.
    struct ItemRow {
        std::wstring path;
        std::optional<std::uint64_t> bytes{};  ///< as far as they are known and shown
        std::optional<Date> newest{};
    };

    int AddRow(std::wstring_view text, RowIcon icon, ItemRow item);
    [[nodiscard]] ItemRow& RowAt(int row);
    void ShowStats(int row, std::uint64_t bytes, Date newest);
    void AddRule(std::wstring_view path);
    Outcome AddFileOrFolder(std::wstring_view path);
    [[nodiscard]] std::optional<MFileDosShell::SizeAndDate> Facts(std::wstring_view path);
    [[nodiscard]] std::wstring LocationText(std::wstring_view path, bool isKnown);

    System& system_;
    ErrorTrap trap_{system_.errors, L"Form", L"frmMain"};
    const ProgramState& state_;
    Form& main_;
    const ListContext& context_;
    NetworkProbe probe_;
    std::vector<ItemRow> items_;  ///< by the tags of the rows
    std::unordered_set<std::wstring> keys_;
    int refreshed_ = -1;  ///< the row that was refreshed last
};

}  // namespace vw
