#include <limits>
#include <utility>

#include "engine/CPackage.h"
#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "list/format/ListLine.h"
#include "platform/EventPump.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"

// Which number of a name an item has. A number belongs to the file whose copies it numbers, also
// while copy 1 is missing.

namespace vw {

namespace {

constexpr int kHighestNumber = 99;

}  // namespace

std::int16_t CPackage::FindLocation(std::wstring_view path) {
    const std::wstring folder = MFileDosShell::CFileLocation(path);
    const bool isFile = ItemKindOf(path) == ItemKind::File;
    for (int number = 0; number <= std::numeric_limits<std::int16_t>::max(); ++number) {
        system_.pump.DoEventsIfDue();
        const std::wstring copy = CFilePackageName(path, 1, number, Target());
        // A copy that a killed run left ready keeps its place: another item may not move in.
        if (isFile && destination_ && destination_->AwaitedByOther(copy, path)) continue;
        if (isFile && IsCommentNameTaken(copy)) continue;
        std::optional<FileFacts> facts;
        if (!destination_ || destination_->MayHold(copy)) facts = Stat(copy);
        if (!facts || facts->isFolder) {
            if (isFile && IsNumberOfOther(path, number, copy)) continue;
            return static_cast<std::int16_t>(number);
        }
        std::wstring comment = TryReadComment(copy);
        // The folder of another item may lie on a drive that cannot be asked.
        if (EqualNoCase(NamedLocation(comment), folder) &&
            EqualNoCase(OriginalLocation(comment), folder)) {
            // The run asks for its date next.
            if (destination_) destination_->Remember(copy, std::move(comment));
            return static_cast<std::int16_t>(number);
        }
    }
    Raise(error_number::kOverflow, path);
}

// Copy 1 of a number is missing: its comment, which no rotation takes along, still names the item
// that the older copies are of. A folder of that name is the copy of another item.
bool CPackage::IsNumberOfOther(std::wstring_view path, int number, std::wstring_view copy) {
    const std::wstring commentFile = PackageCommentFile(copy);
    if (destination_ && !destination_->MayHold(commentFile)) return false;
    const auto facts = Stat(commentFile);
    if (!facts || facts->isFolder) return facts.has_value();
    const std::wstring comment = TryReadComment(copy);
    if (!CommentLocationField(FirstLine(comment)) ||
        EqualNoCase(NamedLocation(comment), MFileDosShell::CFileLocation(path))) {
        return false;
    }
    for (int older = 2; older <= kHighestNumber; ++older) {
        if (CopyStands(CFilePackageName(path, older, number, Target()))) return true;
    }
    return false;
}

// A file called "X.vwc" has copies that are named like the comments of the file "X". The copies
// have comments of their own.
bool CPackage::IsCommentNameTaken(std::wstring_view copyPath) {
    return CopyStands(PackageCommentFile(PackageCommentFile(copyPath)));
}

}  // namespace vw
