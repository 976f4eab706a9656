#include <algorithm>
#include <string>

#include "engine/CollisionCheck.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "fsutil/TreeWalk.h"
#include "platform/MessagePump.h"
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

CollisionCheck::CollisionCheck(const EngineContext& context, DestinationSession& session,
                               CommentStore& comments, LocationNumbers& numbers)
    : EnginePart(context), session_(session), comments_(comments), numbers_(numbers) {}

bool CollisionCheck::Collides(std::wstring_view path, std::int16_t location, bool isFolder,
                              const std::wstring& place, const ListedItems& listed) {
    const std::vector<ListedItem> rivals = listed.RivalsOf(session_.Target(), path);
    const std::wstring copy = WithoutSeparator(place);
    const bool isTaken = LiesInCopyOfOther(copy) || HoldsCopyOfOther(copy) ||
                         (isFolder && TakesCommentNameOfOther(copy));
    if (rivals.empty() && !isTaken) return false;
    const bool owns = OwnsCopyAt(path, place);
    return IsOutrankedBy(rivals, path, location, owns, listed) || (isTaken && !owns);
}

// The item whose copies are there goes on, else the first in the list.
bool CollisionCheck::IsOutrankedBy(const std::vector<ListedItem>& rivals, std::wstring_view path,
                                   std::int16_t location, bool owns, const ListedItems& listed) {
    const std::size_t order = listed.OrderOf(session_.Target(), path);
    return std::ranges::any_of(rivals, [&](const ListedItem& rival) {
        const std::int16_t number = rival.isFile ? numbers_.Find(rival.path) : std::int16_t{0};
        if (number != location) return false;
        const bool rivalOwns =
            OwnsCopyAt(rival.path, CFilePackageName(rival.path, 1, number, session_.Target()));
        return owns == rivalOwns ? rival.order < order : rivalOwns;
    });
}

// Whether the comment of the copy names the item's own folder.
bool CollisionCheck::OwnsCopyAt(std::wstring_view path, std::wstring_view copyPath) {
    if (!session_.Contains(CommentStore::FileOf(copyPath))) return false;
    return EqualNoCase(comments_.NamedLocation(comments_.TryRead(copyPath)),
                       MFileDosShell::CFileLocation(path));
}

// A folder that the copy would lie in has a comment of its own, so it is a copy or was one.
bool CollisionCheck::LiesInCopyOfOther(const std::wstring& place) {
    for (std::wstring folder = MFileDosShell::CFileLocation(place);
         folder.size() > session_.Target().size(); folder = MFileDosShell::CFileLocation(folder)) {
        if (session_.Contains(CommentStore::FileOf(folder))) return true;
    }
    return false;
}

// A folder without a comment in the place is no copy of this item when it holds the
// comment of another one. The last folder of such a copy is named like the beginning of its path.
bool CollisionCheck::HoldsCopyOfOther(const std::wstring& place) {
    const std::wstring comment = CommentStore::FileOf(place);
    const bool isTop = EqualNoCase(MFileDosShell::CFileLocation(place), session_.Target());
    if (!session_->MayContain(place)) return false;
    if (isTop ? session_->MayContain(comment) : session_.Contains(comment)) return false;
    std::wstring name = place.substr(session_.Target().size() + 1);
    name = CommentStore::FileOf(name.substr(0, name.find(L'\u00AB')));
    bool found = false;
    TreeVisitor visitor;
    visitor.file = [&](const FolderEntry& file) { found = found || EqualNoCase(file.name, name); };
    visitor.enters = [&](const std::wstring&) { return !found; };
    visitor.yield = [this] { system_.pump.ProcessMessagesIfDue(); };
    WalkTree(system_.files, place, visitor);
    return found;
}

// The comment of the copy would have the name of another item's copy, which has a comment too; or
// the copy would have the name of another copy's comment.
bool CollisionCheck::TakesCommentNameOfOther(const std::wstring& place) {
    if (session_.Contains(CommentStore::FileOf(CommentStore::FileOf(place)))) return true;
    return UpperCase(place).ends_with(UpperCase(kCommentExtension)) &&
           session_.Contains(place.substr(0, place.size() - kCommentExtension.size()));
}

}  // namespace vw
