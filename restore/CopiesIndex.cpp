#include "restore/CopiesIndex.h"

#include <algorithm>

#include "engine/CopyName.h"
#include "fsutil/PathText.h"
#include "platform/LeadingInt.h"
#include "platform/TextCase.h"
#include "platform/Wildcards.h"

namespace vw {
namespace {

constexpr int kLastRotating = 20;
constexpr std::wstring_view kCommentPattern = L"*.vwc";

}  // namespace

std::wstring CopyLabel(int copyNumber) {
    return copyNumber <= kLastRotating ? L"N" + TwoDigits(copyNumber)
                                       : L"U" + TwoDigits(copyNumber - kLastRotating);
}

bool IsSafetyLabel(std::wstring_view label) noexcept { return label.starts_with(L'U'); }

int NumberOfLabel(std::wstring_view label) {
    const std::wstring_view digits = label.size() > 2 ? label.substr(label.size() - 2) : label;
    const int number = ParseLeadingInt(digits);
    return IsSafetyLabel(label) ? number + kLastRotating : number;
}

int NextSafetyNumber(int highest) noexcept { return std::max(highest, kLastRotating) + 1; }

bool IsCopyName(std::wstring_view name) {
    return MatchesWildcard(name, kCopyNamePattern) && !MatchesWildcard(name, kCommentPattern);
}

bool IsCommentName(std::wstring_view name) {
    return MatchesWildcard(name, kCopyNamePattern) && MatchesWildcard(name, kCommentPattern);
}

std::wstring CopyFolderOf(std::wstring_view copyPath) {
    const std::wstring_view before = copyPath.substr(0, copyPath.find(L'\u00AB'));
    const std::size_t separator = before.rfind(L'\\');
    return std::wstring(copyPath.substr(0, separator == copyPath.npos ? 0 : separator));
}

// The builder's own pattern would take "#" or "[" of an item's name for wildcards.
CopiesOfItem::CopiesOfItem(std::wstring_view itemName, int location) {
    const std::wstring pattern =
        MFileDosShell::CFileName(CFilePackageName(itemName, kAnyCopyNumber, location, {}));
    const std::size_t mark = pattern.rfind(L"??\u00BB");
    begin_ = UpperCase(std::wstring_view(pattern).substr(0, mark));
    end_ = UpperCase(std::wstring_view(pattern).substr(mark + 2));
}

bool CopiesOfItem::Contains(std::wstring_view name) const {
    if (name.size() != begin_.size() + 2 + end_.size()) return false;
    return EqualNoCase(name.substr(0, begin_.size()), begin_) &&
           EqualNoCase(name.substr(begin_.size() + 2), end_);
}

}  // namespace vw
