#include "fsutil/TreeWalk.h"
#include "fsutil/PathText.h"

#include <utility>
#include <vector>

#include "fsutil/WorkingName.h"
#include "platform/RuntimeError.h"

namespace vw {

void WalkTree(FileSystem& files, std::wstring_view folder, const TreeVisitor& visitor) {
    // "C:" is the current folder of that drive, so nothing may be joined to it as it is. The
    // folders to come are kept here and not on the stack: trees can be thousands of levels deep.
    std::vector<std::wstring> pending;
    pending.push_back(folder.ends_with(L':') ? files.FullPath(folder) : std::wstring(folder));
    while (!pending.empty()) {
        const std::wstring current = std::move(pending.back());
        pending.pop_back();
        std::vector<std::wstring> subFolders;
        try {
            files.List(current, [&](const FolderEntry& entry) {
                // Left out are the entries of a destination that lies in the tree, folders
                // elsewhere, and files without bytes.
                const bool isLeftOut = IsOwnEntry(entry.name) || entry.isLink;
                if (!isLeftOut && entry.isFolder) {
                    subFolders.push_back(JoinPath(current, entry.name));
                } else if (!isLeftOut) {
                    visitor.file(entry);
                }
                visitor.yield();
            });
        } catch (const RuntimeError&) {
            if (visitor.raisesUnreadable) throw;
            // A folder that its owner closed to us, or that went away meanwhile: what the rest of
            // the tree says still helps, and one box per such folder would help nobody.
        }
        if (visitor.left) visitor.left();
        for (std::wstring& path : subFolders) {
            if (!visitor.enters || visitor.enters(path)) pending.push_back(std::move(path));
        }
    }
}

}  // namespace vw
