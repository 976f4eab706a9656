#include "restore/SameContent.h"

#include <map>
#include <string>
#include <vector>

#include "fsutil/WorkingName.h"
#include "platform/FileSystem.h"

namespace vw {
namespace {

using Entries = std::map<std::wstring, FileInfo>;

Entries EntriesOf(FileSystem& files, const std::wstring& folder) {
    Entries entries;
    files.List(folder, [&](const FolderEntry& entry) {
        // Neither links nor the program's own entries are copied.
        if (IsOwnEntry(entry.name) || entry.isLink) return;
        entries.emplace(entry.name, entry);
    });
    return entries;
}

/// Whether a folder copy has every file of the original; with `exactly` it has nothing else.
bool HasTree(FileSystem& files, std::wstring_view original, std::wstring_view copy, bool exactly) {
    std::vector<std::wstring> below{L""};
    while (!below.empty()) {
        const std::wstring folder = below.back();
        below.pop_back();
        const Entries expected = EntriesOf(files, std::wstring(original) + folder);
        const Entries found = EntriesOf(files, std::wstring(copy) + folder);
        if (exactly && expected.size() != found.size()) return false;
        for (const auto& [name, facts] : expected) {
            const auto match = found.find(name);
            if (match == found.end() || match->second.isFolder != facts.isFolder) return false;
            if (facts.isFolder) {
                below.push_back(std::wstring(folder).append(L"\\").append(name));
            } else if (!HaveSameInfo(facts, match->second)) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace

bool SameContent(FileSystem& files, std::wstring_view original, std::wstring_view copy) {
    const auto first = files.Stat(original);
    const auto second = files.Stat(copy);
    if (!first || !second || first->isFolder != second->isFolder) return false;
    return first->isFolder ? HasTree(files, original, copy, true) : HaveSameInfo(*first, *second);
}

bool HasContentOf(FileSystem& files, std::wstring_view original, std::wstring_view copy,
                  const std::function<void()>& progress) {
    const auto first = files.Stat(original);
    const auto second = files.Stat(copy);
    if (!first || !second || first->isFolder != second->isFolder) return false;
    if (first->isFolder) return HasTree(files, original, copy, false);
    return HaveSameInfo(*first, *second) && files.HaveSameBytes(original, copy, progress);
}

}  // namespace vw
