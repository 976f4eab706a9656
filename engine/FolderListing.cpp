#include "engine/FolderListing.h"

#include "fsutil/WorkingName.h"

namespace vw {

FolderListing ListFolder(FileSystem& files, std::wstring_view folder,
                         std::wstring_view copyInTheMaking) {
    FolderListing source;
    files.List(folder, [&](const FolderEntry& entry) {
        if (entry.isFolder && entry.name == copyInTheMaking) source.holdsCopyInTheMaking = true;
        // Another run may hold its lock in a destination that lies here.
        if (IsOwnEntry(entry.name)) return;
        if (entry.isLink) {
            source.links.emplace_back(entry.name);
        } else if (!entry.isFolder) {
            source.files.push_back({std::wstring(entry.name), entry.size, entry.lastWrite});
        } else {
            source.folders.emplace_back(entry.name);
        }
    });
    return source;
}

}  // namespace vw
