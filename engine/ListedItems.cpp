#include "engine/ListedItems.h"

#include <algorithm>

#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "fsutil/WorkingName.h"
#include "list/format/ListLine.h"
#include "platform/TextCase.h"

namespace vw {

namespace {

// The copy's path with the numbers that all items may have.
std::wstring AnyCopyOf(std::wstring_view destination, std::wstring_view path) {
    std::wstring copy = CFilePackageName(path, 1, 0, destination);
    while (copy.ends_with(L'\\')) copy.pop_back();
    return copy;
}

// Shows the key of every folder between the destination and the copy.
template <class Visitor>
void VisitParents(std::wstring_view destination, std::wstring_view copy, Visitor visit) {
    for (std::size_t end = copy.rfind(L'\\');
         end != std::wstring_view::npos && end > destination.size();
         end = copy.rfind(L'\\', end - 1)) {
        visit(NameKey(copy.substr(0, end)));
    }
}

}  // namespace

void ListedItems::Clear() noexcept { *this = {}; }

void ListedItems::Add(std::wstring_view destination, std::wstring_view line) {
    const std::size_t order = items_.size();
    std::wstring_view path = line;
    if (path.ends_with(L"\\*")) path.remove_suffix(2);
    items_.push_back({order, std::wstring(path), ItemKindOf(line) == ItemKind::File});
    const std::wstring copy = AnyCopyOf(destination, path);
    byCopy_.emplace(NameKey(copy), order);
    VisitParents(destination, copy,
                 [&](std::uint64_t key) { byParentOfCopy_.emplace(key, order); });
}

std::size_t ListedItems::OrderOf(std::wstring_view destination, std::wstring_view path) const {
    std::size_t order = items_.size();
    const auto [begin, end] = byCopy_.equal_range(NameKey(AnyCopyOf(destination, path)));
    for (auto found = begin; found != end; ++found) {
        if (EqualNoCase(items_[found->second].path, path)) order = std::min(order, found->second);
    }
    return order;
}

std::vector<ListedItem> ListedItems::RivalsOf(std::wstring_view destination,
                                              std::wstring_view path) const {
    std::vector<ListedItem> rivals;
    const auto take = [&](const Index& index, std::uint64_t key) {
        const auto [begin, end] = index.equal_range(key);
        for (auto found = begin; found != end; ++found) rivals.push_back(items_[found->second]);
    };
    const std::wstring copy = AnyCopyOf(destination, path);
    take(byParentOfCopy_, NameKey(copy));
    VisitParents(destination, copy, [&](std::uint64_t key) { take(byCopy_, key); });
    return rivals;
}

}  // namespace vw
