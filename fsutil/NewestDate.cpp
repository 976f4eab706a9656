#include "fsutil/NewestDate.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/RuntimeError.h"

namespace vw {

Date NewestFileDate(FileSystem& files, std::wstring_view path, const std::function<void()>& yield) {
    const auto facts = files.Look(path);
    if (!facts) return kMissingDate;
    if (!facts->isFolder) return facts->lastWrite;
    Date newest = kMissingDate;
    std::vector<std::wstring> folders{std::wstring(path)};
    while (!folders.empty()) {
        const std::wstring folder = std::move(folders.back()) + L"\\";
        folders.pop_back();
        try {
            files.List(folder, [&](const FolderEntry& entry) {
                if (!entry.isFolder) {
                    newest = std::max(newest, entry.lastWrite);
                } else if (!entry.isLink) {
                    folders.push_back(folder + std::wstring(entry.name));
                }
                yield();
            });
        } catch (const RuntimeError&) {
            // One folder that may not be read must not hide the dates of the others.
        }
    }
    return newest;
}

}  // namespace vw
