#include <limits>
#include <utility>

#include "engine/CopyName.h"
#include "engine/LocationNumbers.h"
#include "fsutil/PathText.h"
#include "list/format/ListLine.h"
#include "platform/MessagePump.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

// Which number of a name an item has. A number belongs to the file whose copies it numbers, also
// while copy 1 is missing.

namespace vw {

LocationNumbers::LocationNumbers(const EngineContext& context, DestinationSession& session,
                                 CommentStore& comments)
    : EnginePart(context), session_(session), comments_(comments) {}

std::int16_t LocationNumbers::Find(std::wstring_view path, bool isThere) {
    const bool isFile = ItemKindOf(path) == ItemKind::File;
    for (int number = 0; number <= std::numeric_limits<std::int16_t>::max(); ++number) {
        system_.pump.ProcessMessagesIfDue();
        const std::wstring copy = CFilePackageName(path, 1, number, session_.Target());
        // A copy that a killed run left ready keeps its place: another item may not move in.
        if (isFile && session_.IsEntered() && session_->IsReservedForOther(copy, path)) continue;
        if (isFile && IsCommentNameTaken(copy)) continue;
        std::optional<FileInfo> facts;
        bool isOfOther = false;
        if (!session_.IsEntered() || session_->MayContain(copy)) {
            // A comment that names the folder of an item that is there decides, whatever is beside
            // the comment: most items need no more than this.
            if (isFile && isThere) {
                if (OwnsCopy(path, isThere, copy)) return static_cast<std::int16_t>(number);
                isOfOther = true;
            }
            facts = Stat(copy);
        }
        if (!facts || facts->isFolder) {
            if (isFile && IsNumberOfOther(path, number, copy)) continue;
            return static_cast<std::int16_t>(number);
        }
        if (!isOfOther && OwnsCopy(path, isThere, copy)) return static_cast<std::int16_t>(number);
    }
    Throw(error_number::kOverflow, path);
}

// Whether the comment of the copy names the item's folder, and that folder exists.
bool LocationNumbers::OwnsCopy(std::wstring_view path, bool isThere, std::wstring_view copy) {
    const std::wstring folder = MFileDosShell::CFileLocation(path);
    std::wstring comment = comments_.TryRead(copy);
    // The folder of another item may lie on a drive that cannot be asked.
    if (!EqualNoCase(comments_.NamedLocation(comment), folder)) return false;
    if (!isThere && !EqualNoCase(comments_.OriginalLocation(comment), folder)) return false;
    // The run asks for its date next.
    if (session_.IsEntered()) session_->CacheComment(copy, std::move(comment));
    return true;
}

// Copy 1 of a number is missing: its comment, which no rotation takes along, still names the item
// that the older copies are of. A folder of that name is the copy of another item.
bool LocationNumbers::IsNumberOfOther(std::wstring_view path, int number, std::wstring_view copy) {
    const std::wstring commentFile = CommentStore::FileOf(copy);
    if (session_.IsEntered() && !session_->MayContain(commentFile)) return false;
    const auto facts = Stat(commentFile);
    if (!facts || facts->isFolder) return facts.has_value();
    const std::wstring comment = comments_.TryRead(copy);
    if (!CommentLocationField(FirstLine(comment)) ||
        EqualNoCase(comments_.NamedLocation(comment), MFileDosShell::CFileLocation(path))) {
        return false;
    }
    for (int older = 2; older <= kHighestCopyNumber; ++older) {
        if (session_.Contains(CFilePackageName(path, older, number, session_.Target())))
            return true;
    }
    return false;
}

// A file called "X.vwc" has copies that are named like the comments of the file "X". The copies
// have comments of their own.
bool LocationNumbers::IsCommentNameTaken(std::wstring_view copyPath) {
    return session_.Contains(CommentStore::FileOf(CommentStore::FileOf(copyPath)));
}

}  // namespace vw
