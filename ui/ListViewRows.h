#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/FormData.h"

namespace vw {

/// Key of the first column, which is the row's own text.
inline constexpr std::wstring_view kNameColumn = L"Name";

/// Icons of rows, in the order of the image lists.
enum class RowIcon { File, Folder, Rule };

/// The rows of a list view as data, without a window. Rows count from 0, columns have keys. A key
/// that the list does not have throws kInvalidCall.
class ListViewRows {
  public:
    /// What a column is sorted by where its text would not do: bytes, dates.
    using Value = std::int64_t;
    using Compare = std::function<int(std::wstring_view, std::wstring_view)>;

    struct Cell {
        std::wstring text;
        std::optional<Value> value;
    };
    struct Row {
        RowIcon icon = RowIcon::File;
        std::size_t tag = 0;      ///< a number of the caller's own
        std::vector<Cell> cells;  ///< by the positions of the columns
        std::wstring warning{};   ///< empty: none
    };

    explicit ListViewRows(std::span<const ColumnData> columns) noexcept : columns_(columns) {}

    [[nodiscard]] int Count() const noexcept { return static_cast<int>(rows_.size()); }

    /// What a row that is not there has for a tag.
    static constexpr std::size_t kNoTag = static_cast<std::size_t>(-1);

    /// A row, until rows come or go. One without cells and with kNoTag when there is no such row.
    [[nodiscard]] const Row& At(int row) const noexcept;

    /// The text of a row in a column; empty when there is no such row.
    [[nodiscard]] std::wstring SubItem(int row, std::wstring_view key) const;

    /// The first row with this text in this column, compared by code units; -1 when there is none.
    [[nodiscard]] int Find(std::wstring_view key, std::wstring_view text) const;

    /// The next row from `first` on whose name begins with these letters, or is this `whole` name,
    /// in any letter case; -1 when there is none. A search that wraps goes on with the first row.
    [[nodiscard]] int FindName(std::wstring_view letters, int first, bool whole, bool wraps) const;

    /// Position of a column from its key, and back.
    [[nodiscard]] int ColumnOf(std::wstring_view key) const;
    [[nodiscard]] std::wstring_view KeyOf(int column) const noexcept;

    /// Adds a row at the end.
    void Add(std::wstring_view text, RowIcon icon, std::size_t tag);
    void Remove(int row) { rows_.erase(rows_.begin() + row); }
    void Clear() noexcept { rows_.clear(); }
    void SetSubItem(int row, std::wstring_view key, Cell cell);
    void SetWarning(int row, std::wstring_view warning);

    /// Sorts once, by value where both rows have one and by `compare` otherwise. Equal rows keep
    /// their order. Returns where each of the rows was before.
    std::vector<int> Sort(std::wstring_view key, bool ascending, const Compare& compare);

  private:
    std::span<const ColumnData> columns_;
    std::vector<Row> rows_;
};

}  // namespace vw
