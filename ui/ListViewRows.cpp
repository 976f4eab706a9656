#include "ui/ListViewRows.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

namespace vw {

const ListViewRows::Row& ListViewRows::At(int row) const noexcept {
    static const Row kNone{.tag = kNoTag, .cells = {}};
    return row < 0 || row >= Count() ? kNone : rows_[static_cast<std::size_t>(row)];
}

std::wstring ListViewRows::SubItem(int row, std::wstring_view key) const {
    const auto column = static_cast<std::size_t>(ColumnOf(key));
    const auto& cells = At(row).cells;
    return cells.empty() ? std::wstring() : cells[column].text;
}

int ListViewRows::Find(std::wstring_view key, std::wstring_view text) const {
    const auto column = static_cast<std::size_t>(ColumnOf(key));
    const auto found =
        std::ranges::find_if(rows_, [&](const Row& row) { return row.cells[column].text == text; });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

int ListViewRows::FindName(std::wstring_view letters, int first, bool whole, bool wraps) const {
    const std::wstring wanted = UpperCase(letters);
    const int begin = std::max(0, first);
    const int end = wraps ? begin + Count() : Count();
    for (int row = begin; row < end; ++row) {
        const std::wstring name = UpperCase(At(row % Count()).cells.front().text);
        if (whole ? name == wanted : name.starts_with(wanted)) return row % Count();
    }
    return -1;
}

int ListViewRows::ColumnOf(std::wstring_view key) const {
    const auto column = std::ranges::find(columns_, key, &ColumnData::key);
    if (column == columns_.end()) Throw(error_number::kInvalidCall, key);
    return static_cast<int>(column - columns_.begin());
}

std::wstring_view ListViewRows::KeyOf(int column) const noexcept {
    const auto position = static_cast<std::size_t>(column);
    return position < columns_.size() ? columns_[position].key : std::wstring_view();
}

void ListViewRows::Add(std::wstring_view text, RowIcon icon, std::size_t tag) {
    Row& added = rows_.emplace_back(Row{icon, tag, std::vector<Cell>(columns_.size())});
    added.cells.front().text = text;
}

void ListViewRows::SetSubItem(int row, std::wstring_view key, Cell cell) {
    const auto column = static_cast<std::size_t>(ColumnOf(key));
    if (row < 0 || row >= Count()) Throw(error_number::kInvalidCall, key);
    rows_[static_cast<std::size_t>(row)].cells[column] = std::move(cell);
}

void ListViewRows::SetWarning(int row, std::wstring_view warning) {
    rows_[static_cast<std::size_t>(row)].warning = warning;
}

std::vector<int> ListViewRows::Sort(std::wstring_view key, bool ascending, const Compare& compare) {
    const auto column = static_cast<std::size_t>(ColumnOf(key));
    std::vector<int> order(rows_.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, [&](int first, int second) {
        const Cell& left = At(ascending ? first : second).cells[column];
        const Cell& right = At(ascending ? second : first).cells[column];
        if (left.value && right.value) return *left.value < *right.value;
        return compare(left.text, right.text) < 0;
    });
    std::vector<Row> sorted;
    sorted.reserve(rows_.size());
    for (const int row : order) sorted.push_back(std::move(rows_[static_cast<std::size_t>(row)]));
    rows_ = std::move(sorted);
    return order;
}

}  // namespace vw
