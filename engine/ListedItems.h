#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vw {

/// An item of the list, at its place in the order of the list.
struct ListedItem {
    std::size_t order = 0;
    std::wstring path;  ///< without the "\*" of a rule
    bool isFile = false;
};

/// The items of a list by the names of their copies. Below a folder with a point in its name the
/// name of a copy holds folders of its own, so that the copy of one item may lie inside the copy of
/// another.
class ListedItems {
  public:
    void Clear() noexcept;

    /// Adds the next item of the list, as the list writes it, with the destination that is in
    /// effect for it.
    void Add(std::wstring_view destination, std::wstring_view line);

    /// The order of an item; the number of all items when the list does not hold it.
    [[nodiscard]] std::size_t OrderOf(std::wstring_view destination, std::wstring_view path) const;

    /// The items of other paths whose copies lie inside the copies of `path`, or hold them, if
    /// their location numbers are the same.
    [[nodiscard]] std::vector<ListedItem> RivalsOf(std::wstring_view destination,
                                                   std::wstring_view path) const;

  private:
    using Index = std::unordered_multimap<std::uint64_t, std::size_t>;

    std::vector<ListedItem> items_;
    Index byCopy_;          ///< key of the copy's path
    Index byParentOfCopy_;  ///< key of each folder of the destination that the copy lies in
};

}  // namespace vw
