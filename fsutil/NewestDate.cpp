#include "fsutil/NewestDate.h"

#include <algorithm>

#include "fsutil/TreeWalk.h"

namespace vw {

Date NewestFileDate(FileSystem& files, std::wstring_view path, const std::function<void()>& yield) {
    const std::optional<FileFacts> facts = files.Look(path);
    if (!facts) return kMissingDate;
    if (!facts->isFolder) return facts->lastWrite;
    Date newest = kMissingDate;
    TreeVisitor visitor;
    visitor.file = [&](const FolderEntry& file) { newest = std::max(newest, file.lastWrite); };
    visitor.yield = yield;
    WalkTree(files, path, visitor);
    return newest;
}

}  // namespace vw
