#include <algorithm>
#include <string>

#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWalk.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

// Items whose copies would have each other's names. Below a folder with a point in its name the
// name of a copy goes on with folders: the copies of D:\Work.old\Data\ lie in folders that are
// named like the copies of D:\Data.old\. One of the two is refused, because a rotation of one would
// carry off the copies of the other.

namespace vw {

namespace {

std::wstring WithoutSeparator(std::wstring path) {
    while (path.ends_with(L'\\')) path.pop_back();
    return path;
}

}  // namespace

bool CPackage::Collides(std::wstring_view path, std::int16_t location, bool isFolder,
                        const std::wstring& place) {
    const std::vector<ListedItem> rivals = listed_.RivalsOf(Target(), path);
    const std::wstring copy = WithoutSeparator(place);
    const bool isTaken = LiesInCopyOfOther(copy) || HoldsCopyOfOther(copy) ||
                         (isFolder && MeetsCommentOfOther(copy));
    if (rivals.empty() && !isTaken) return false;
    const bool owns = OwnsCopyAt(path, place);
    return LosesTo(rivals, path, location, owns) || (isTaken && !owns);
}

// The item whose copies are there goes on, else the first in the list.
bool CPackage::LosesTo(const std::vector<ListedItem>& rivals, std::wstring_view path,
                       std::int16_t location, bool owns) {
    const std::size_t order = listed_.OrderOf(Target(), path);
    return std::ranges::any_of(rivals, [&](const ListedItem& rival) {
        const std::int16_t number = rival.isFile ? FindLocation(rival.path) : std::int16_t{0};
        if (number != location) return false;
        const bool rivalOwns =
            OwnsCopyAt(rival.path, CFilePackageName(rival.path, 1, number, Target()));
        return owns == rivalOwns ? rival.order < order : rivalOwns;
    });
}

// Whether the comment of the copy names the item's own folder.
bool CPackage::OwnsCopyAt(std::wstring_view path, std::wstring_view copyPath) {
    if (!CopyStands(PackageCommentFile(copyPath))) return false;
    return EqualNoCase(NamedLocation(TryReadComment(copyPath)), MFileDosShell::CFileLocation(path));
}

// A folder that the copy would lie in has a comment of its own, so it is a copy or was one.
bool CPackage::LiesInCopyOfOther(const std::wstring& place) {
    for (std::wstring folder = MFileDosShell::CFileLocation(place); folder.size() > Target().size();
         folder = MFileDosShell::CFileLocation(folder)) {
        if (CopyStands(PackageCommentFile(folder))) return true;
    }
    return false;
}

// A folder without a comment in the place is no copy of this item when it holds the
// comment of another one. The last folder of such a copy is named like the beginning of its path.
bool CPackage::HoldsCopyOfOther(const std::wstring& place) {
    const std::wstring comment = PackageCommentFile(place);
    const bool isTop = EqualNoCase(MFileDosShell::CFileLocation(place), Target());
    if (!destination_->MayHold(place)) return false;
    if (isTop ? destination_->MayHold(comment) : CopyStands(comment)) return false;
    const auto facts = Stat(place);
    if (!facts || !facts->isFolder) return false;
    std::wstring name = place.substr(Target().size() + 1);
    name = PackageCommentFile(name.substr(0, name.find(L'\u00AB')));
    bool found = false;
    TreeVisitor visitor;
    visitor.file = [&](const FolderEntry& file) { found = found || EqualNoCase(file.name, name); };
    visitor.enters = [&](const std::wstring&) { return !found; };
    visitor.yield = [this] { system_.pump.DoEventsIfDue(); };
    WalkTree(system_.files, place, visitor);
    return found;
}

// The comment of the copy would have the name of another item's copy, which has a comment too; or
// the copy would have the name of another copy's comment.
bool CPackage::MeetsCommentOfOther(const std::wstring& place) {
    if (CopyStands(PackageCommentFile(PackageCommentFile(place)))) return true;
    return UpperCase(place).ends_with(UpperCase(kCommentExtension)) &&
           CopyStands(place.substr(0, place.size() - kCommentExtension.size()));
}

}  // namespace vw
