#include "fsutil/NewestDate.h"

#include <algorithm>

#include "fsutil/TreeWalk.h"

namespace vw {

void NewestDates::Take(const FileInfo& file) {
    newest = std::max(newest, file.lastWrite);
    newestByPresentRules =
        std::max(newestByPresentRules.value_or(kMissingDate), file.lastWriteByPresentRules);
}

NewestDates NewestFileDates(FileSystem& files, std::wstring_view path,
                            const std::function<void()>& yield) {
    NewestDates dates;
    const std::optional<FileInfo> facts = files.Stat(path);
    if (!facts) return dates;
    if (!facts->isFolder) {
        dates.Take(*facts);
        return dates;
    }
    TreeVisitor visitor;
    visitor.file = [&](const FolderEntry& file) { dates.Take(file); };
    visitor.yield = yield;
    WalkTree(files, path, visitor);
    return dates;
}

Date NewestFileDate(FileSystem& files, std::wstring_view path, const std::function<void()>& yield) {
    return NewestFileDates(files, path, yield).newest;
}

}  // namespace vw
