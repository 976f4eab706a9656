#include "engine/DisplacedCopies.h"

#include <algorithm>

#include "fsutil/WorkingName.h"

namespace vw {

void DisplacedCopies::Add(std::wstring_view entryName, std::uint64_t item, std::uint64_t copy) {
    entries_.push_back({std::wstring(entryName), item, copy});
}

bool DisplacedCopies::Contains(std::wstring_view itemPath, std::wstring_view copyPath) const {
    return std::ranges::any_of(
        entries_, [item = NameKey(itemPath), copy = NameKey(copyPath)](const Entry& entry) {
            return entry.item == item && entry.copy == copy;
        });
}

void DisplacedCopies::Keep(std::wstring_view itemPath) {
    for (Entry& entry : entries_) {
        if (entry.item == NameKey(itemPath)) entry.isKept = true;
    }
}

void DisplacedCopies::Remove(std::wstring_view itemPath) {
    const std::uint64_t item = NameKey(itemPath);
    std::erase_if(entries_, [&](const Entry& entry) {
        if (entry.item == item) removeEntry_(entry.name);
        return entry.item == item;
    });
}

void DisplacedCopies::RemoveAll() {
    std::erase_if(entries_, [&](const Entry& entry) {
        if (!entry.isKept) removeEntry_(entry.name);
        return !entry.isKept;
    });
}

}  // namespace vw
