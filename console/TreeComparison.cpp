#include "console/TreeComparison.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "fsutil/PathText.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

struct Pending {
    std::wstring below;
    bool inFirst = true;
    bool inSecond = true;
};

using Entries = std::vector<ComparedEntry>;
using NameMap = std::unordered_map<std::wstring, std::size_t>;

Entries ListedIn(FileSystem& files, const std::wstring& folder, const ComparisonVisitor& visitor) {
    Entries entries;
    files.List(folder, [&](const FolderEntry& entry) {
        if (!entry.isLink) {
            entries.push_back({static_cast<const FileInfo&>(entry), std::wstring(entry.name)});
        }
        visitor.yield();
    });
    return entries;
}

/// Takes pairs out of two lists: entries whose names agree after `key`.
template <class Key>
void TakePairs(Entries& first, Entries& second, std::vector<ComparedPair>& pairs, Key key) {
    if (first.empty() || second.empty()) return;
    NameMap names;
    names.reserve(second.size());
    for (std::size_t i = 0; i < second.size(); ++i) names.emplace(key(second[i].name), i);
    std::vector<bool> taken(second.size());
    std::erase_if(first, [&](ComparedEntry& entry) {
        const auto found = names.find(key(entry.name));
        if (found == names.end() || taken[found->second]) return false;
        taken[found->second] = true;
        pairs.push_back({std::move(entry), std::move(second[found->second])});
        return true;
    });
    std::size_t index = 0;
    std::erase_if(second, [&](const ComparedEntry&) { return taken[index++]; });
}

}  // namespace

void CompareTrees(FileSystem& files, std::wstring_view first, std::wstring_view second,
                  bool subFolders, const ComparisonVisitor& visitor) {
    std::vector<Pending> pending{{}};
    while (!pending.empty()) {
        const Pending now = std::move(pending.back());
        pending.pop_back();
        ComparedFolder folder{.below = now.below, .onlyFirst = {}, .onlySecond = {}, .both = {}};
        try {
            if (now.inFirst) {
                folder.onlyFirst = ListedIn(files, JoinPath(first, now.below), visitor);
            }
            if (now.inSecond) {
                folder.onlySecond = ListedIn(files, JoinPath(second, now.below), visitor);
            }
        } catch (const RuntimeError& error) {
            // What cannot be listed on one side must not pass for missing there.
            if (error.Number() == error_number::kCancelled) throw;
            visitor.failed(error);
            continue;
        }
        if (!subFolders) {
            std::erase_if(folder.onlyFirst, [](const FileInfo& entry) { return entry.isFolder; });
        }
        std::vector<ComparedPair> pairs;
        TakePairs(folder.onlyFirst, folder.onlySecond, pairs, [](const auto& n) { return n; });
        TakePairs(folder.onlyFirst, folder.onlySecond, pairs,
                  [](const auto& n) { return UpperCase(n); });
        const auto below = [&](const std::wstring& name) { return now.below + name + L"\\"; };
        for (ComparedPair& pair : pairs) {
            if (pair.first.isFolder && pair.second.isFolder) {
                pending.push_back({below(pair.first.name)});
            } else {
                folder.both.push_back(std::move(pair));
            }
        }
        // A folder of one side alone is entered; it is listed itself only when it is empty.
        const auto enter = [&](Entries& entries, bool inFirst) {
            std::erase_if(entries, [&](const ComparedEntry& entry) {
                if (!entry.isFolder) return false;
                pending.push_back({below(entry.name), inFirst, !inFirst});
                return true;
            });
        };
        const bool isEmpty = folder.onlyFirst.empty() && folder.onlySecond.empty() && pairs.empty();
        enter(folder.onlyFirst, true);
        enter(folder.onlySecond, false);
        if (isEmpty && now.inFirst != now.inSecond) {
            ComparedEntry itself;
            itself.isFolder = true;
            (now.inFirst ? folder.onlyFirst : folder.onlySecond).push_back(itself);
        }
        visitor.folder(folder);
    }
}

}  // namespace vw
