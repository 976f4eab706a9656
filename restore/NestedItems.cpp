#include "restore/NestedItems.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "engine/CommentLine.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/FileSystem.h"
#include "platform/MessagePump.h"
#include "platform/TextCase.h"
#include "restore/CopyGroup.h"

namespace vw {
namespace {

std::wstring Below(const std::wstring& folder, std::wstring_view name) {
    return folder.empty() ? std::wstring(name) : JoinPath(folder, name);
}

/// Paths below a folder of copies.
struct Findings {
    std::vector<std::wstring> commented;
    std::vector<std::wstring> bare;  ///< named like a copy, without a comment
    bool foreign = false;            ///< it holds files that belong to no item
};

/// Searches one folder of copies. Copies are not entered once they are known as such; a folder that
/// holds foreign files is the user's own, and all that is below it. The folders to come are kept
/// here and not on the stack: trees can be thousands of levels deep.
class Search {
  public:
    Search(FileSystem& files, MessagePump& pump, const std::wstring& top,
           const std::vector<NestedItem>& known)
        : files_(files), pump_(pump), top_(top), known_(known) {
        const std::wstring name = MFileDosShell::CFileName(top);
        const auto mark = FindCopyMark(name);
        name_ = name.substr(0, mark ? mark->open : name.rfind(L'\u00AB'));
        comment_ = name_ + std::wstring(kCommentExtension);
    }

    [[nodiscard]] Findings Find() const {
        Findings found;
        std::vector<std::wstring> pending{std::wstring()};
        while (!pending.empty()) {
            const Level level = ReadNext(pending);
            found.foreign = found.foreign || level.isForeign;
            if (level.hasComment) {
                found.commented.push_back(level.copy);
            } else if (level.hasCopy) {
                std::vector<std::wstring> inside;
                if (MayLeadFurther(level)) inside = CommentedBelow(level.copy);
                if (inside.empty()) found.bare.push_back(level.copy);
                std::ranges::move(inside, std::back_inserter(found.commented));
            }
        }
        return found;
    }

  private:
    /// What one folder holds.
    struct Level {
        std::wstring copy;  ///< path of the entry that is named like a copy, or would be
        bool hasCopy = false;
        bool copyIsFolder = false;
        bool hasComment = false;
        bool isForeign = false;
    };

    // Reads the last of the pending folders, whose subfolders take its place.
    [[nodiscard]] Level ReadNext(std::vector<std::wstring>& pending) const {
        const std::wstring folder = std::move(pending.back());
        pending.pop_back();
        Level level{.copy = Below(folder, name_)};
        std::vector<std::wstring> others;
        files_.List(folder.empty() ? top_ : JoinPath(top_, folder), [&](const FolderEntry& entry) {
            pump_.ProcessMessagesIfDue();
            if (entry.isFolder && entry.isLink) return;
            if (EqualNoCase(entry.name, name_)) {
                level.copy = Below(folder, entry.name);
                level.hasCopy = true;
                level.copyIsFolder = entry.isFolder;
            } else if (entry.isFolder) {
                others.push_back(Below(folder, entry.name));
            } else if (EqualNoCase(entry.name, comment_)) {
                level.hasComment = true;
            } else if (!entry.isHidden && !entry.isSystem) {
                // What the system leaves in folders that were looked at is hidden.
                level.isForeign = true;
            }
        });
        if (!level.isForeign)
            std::move(others.rbegin(), others.rend(), std::back_inserter(pending));
        return level;
    }

    // Whether the entry may also be a folder on the way to the copies of an item of the same name.
    [[nodiscard]] bool MayLeadFurther(const Level& level) const {
        return level.copyIsFolder && !IsKnown(level.copy);
    }

    [[nodiscard]] std::vector<std::wstring> CommentedBelow(const std::wstring& path) const {
        std::vector<std::wstring> commented;
        std::vector<std::wstring> pending{path};
        while (!pending.empty()) {
            Level level = ReadNext(pending);
            if (level.hasComment) {
                commented.push_back(std::move(level.copy));
            } else if (MayLeadFurther(level)) {
                pending.push_back(std::move(level.copy));
            }
        }
        return commented;
    }

    [[nodiscard]] bool IsKnown(const std::wstring& path) const {
        return std::ranges::any_of(
            known_, [&](const NestedItem& item) { return EqualNoCase(item.below, path); });
    }

    FileSystem& files_;
    MessagePump& pump_;
    const std::wstring& top_;
    const std::vector<NestedItem>& known_;
    std::wstring name_;
    std::wstring comment_;
};

/// Whether one of two paths is the other or leads to it.
bool Overlap(std::wstring_view first, std::wstring_view second) {
    if (first.size() > second.size()) std::swap(first, second);
    return EqualNoCase(second.substr(0, first.size()), first) &&
           (second.size() == first.size() || second[first.size()] == L'\\');
}

void FindCopy(FileSystem& files, const std::vector<std::wstring>& folders, NestedItem& item) {
    for (const std::wstring& folder : folders) {
        if (const auto facts = files.Stat(JoinPath(folder, item.below))) {
            item.hasCopy = true;
            item.isFolder = facts->isFolder;
            return;
        }
    }
}

}  // namespace

std::vector<NestedItem> FindNestedItems(FileSystem& files, MessagePump& pump,
                                        const CopyGroup& group) {
    std::vector<NestedItem> items;
    if (!group.MayHoldOthers()) return items;
    std::vector<std::wstring> folders;
    for (const CopyEntry& copy : group.copies) {
        if (copy.isFolder) folders.push_back(copy.path);
    }
    std::vector<std::wstring> bare;
    for (const std::wstring& folder : folders) {
        Findings found = Search(files, pump, folder, items).Find();
        for (std::wstring& below : found.commented) {
            const bool isNew = std::ranges::none_of(
                items, [&](const NestedItem& item) { return EqualNoCase(item.below, below); });
            if (isNew) items.push_back({.below = std::move(below), .commentIn = folder});
        }
        if (!found.foreign) std::ranges::move(found.bare, std::back_inserter(bare));
    }
    for (std::wstring& below : bare) {
        const bool isNew = std::ranges::none_of(
            items, [&](const NestedItem& item) { return Overlap(item.below, below); });
        if (isNew) items.push_back({.below = std::move(below), .commentIn = {}});
    }
    for (NestedItem& item : items) FindCopy(files, folders, item);
    return items;
}

bool HoldsAny(FileSystem& files, std::wstring_view folder, const std::vector<NestedItem>& items) {
    return std::ranges::any_of(items, [&](const NestedItem& item) {
        const std::wstring copy = JoinPath(folder, item.below);
        return files.Stat(copy) || files.Stat(copy + std::wstring(kCommentExtension));
    });
}

}  // namespace vw
