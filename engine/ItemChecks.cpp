#include "engine/ItemChecks.h"

#include <algorithm>
#include <string>

#include "engine/CPackage.h"
#include "fsutil/PathText.h"
#include "platform/SystemPath.h"
#include "platform/Wildcards.h"

namespace vw {

namespace {

// What the disks of Windows take in one name; the comment's is the longest of a copy.
constexpr std::size_t kLongestName = 255;

}  // namespace

// The destination and the item act as patterns, so an item that merely begins like the destination
// is refused too. The second look is for names that hold pattern characters.
bool OverlapsDestination(std::wstring_view path, std::wstring_view destination) {
    return MatchesWildcard(path, std::wstring(destination) + L"*") ||
           MatchesWildcard(destination, std::wstring(path) + L"*") ||
           PathContains(destination, path) || PathContains(path, destination);
}

// A ":" behind the drive would open a stream of another file instead of a copy. Below a dotted
// folder the name of a copy holds folders, each of which may be too long.
bool HasImpossibleName(std::wstring_view copyPath) {
    bool isTooLong = false;
    std::wstring rest = CPackage::PackageCommentFile(copyPath);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(L'\\'), rest.size());
        isTooLong = isTooLong || end > kLongestName;
        rest.erase(0, end + 1);
    }
    return copyPath.find_first_of(L"*?\"<>|") != std::wstring_view::npos ||
           copyPath.find(L':', 2) != std::wstring_view::npos || isTooLong;
}

}  // namespace vw
