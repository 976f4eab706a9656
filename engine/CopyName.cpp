#include "engine/CopyName.h"

#include <algorithm>
#include <cstddef>

#include "fsutil/PathText.h"
#include "platform/Digits.h"
#include "platform/LeadingInt.h"
#include "platform/RuntimeError.h"
#include "platform/TextCase.h"
#include "platform/Wildcards.h"

namespace vw {
namespace {

constexpr wchar_t kOpen = L'\u00AB';
constexpr wchar_t kClose = L'\u00BB';
constexpr std::wstring_view kCommentPattern = L"*.vwc";

/// The two characters that begin `distance` before the last "»"; empty when there is no such
/// place.
std::wstring_view PairBeforeClose(std::wstring_view copyName, std::size_t distance) noexcept {
    const std::size_t close = copyName.rfind(kClose);
    if (close == std::wstring_view::npos || close < distance) {
        return {};
    }
    return copyName.substr(close - distance, 2);
}

}  // namespace

std::wstring CFilePackageName(std::wstring_view itemPath, int copyNumber, int locationNumber,
                              std::wstring_view destination) {
    if (copyNumber == 0) {
        Throw(error_number::kZeroCopyNumber, itemPath);
    }
    std::wstring name(destination);
    name += L'\\';
    name += MFileDosShell::CFileFirstName(itemPath);
    name += kOpen;
    name += TwoDigits(locationNumber);
    name += copyNumber == kAnyCopyNumber ? std::wstring(L"??") : TwoDigits(copyNumber);
    name += kClose;
    name += MFileDosShell::CFileExt(itemPath);
    return name;
}

int CFileBackNumber(std::wstring_view copyName) noexcept {
    const std::wstring_view digits = PairBeforeClose(copyName, 2);
    if (digits.size() != 2 || !IsDigit(digits[0]) || !IsDigit(digits[1])) {
        return 0;
    }
    return (digits[0] - L'0') * 10 + (digits[1] - L'0');
}

std::wstring CFileSP(std::wstring_view copyName) {
    return std::wstring(PairBeforeClose(copyName, 4));
}

std::wstring CFileOrigin(std::wstring_view copyName) {
    const std::size_t open = copyName.find(kOpen);
    if (open == std::wstring_view::npos) {
        return {};
    }
    std::wstring name(copyName.substr(0, open));
    const std::size_t close = copyName.rfind(kClose);
    name += close == std::wstring_view::npos ? copyName : copyName.substr(close + 1);
    return name;
}

std::optional<CopyMark> FindCopyMark(std::wstring_view name) noexcept {
    constexpr std::size_t kDigits = 4;
    for (std::size_t open = name.rfind(kOpen); open != std::wstring_view::npos;
         open = open == 0 ? std::wstring_view::npos : name.rfind(kOpen, open - 1)) {
        const std::size_t close = open + kDigits + 1;
        if (close < name.size() && name[close] == kClose &&
            std::ranges::all_of(name.substr(open + 1, kDigits), IsDigit)) {
            return CopyMark{open, close};
        }
    }
    return std::nullopt;
}

CopyNameParts ParseCopyName(std::wstring_view name) {
    const auto mark = FindCopyMark(name);
    if (!mark) return {CFileOrigin(name), ParseLeadingInt(CFileSP(name)), CFileBackNumber(name)};
    const std::wstring_view begin = name.substr(0, mark->close + 1);
    return {std::wstring(name.substr(0, mark->open)).append(name.substr(mark->close + 1)),
            ParseLeadingInt(CFileSP(begin)), CFileBackNumber(begin)};
}

std::wstring ItemNameOf(std::wstring_view copyPath) {
    const std::wstring name = MFileDosShell::CFileName(copyPath);
    const bool isNested = !FindCopyMark(name) && FindCopyMark(copyPath);
    return isNested || name.find(kOpen) == name.npos ? name : ParseCopyName(name).origin;
}

bool IsCopyName(std::wstring_view name) {
    return MatchesWildcard(name, kCopyNamePattern) && !MatchesWildcard(name, kCommentPattern);
}

bool IsCommentName(std::wstring_view name) {
    return MatchesWildcard(name, kCopyNamePattern) && MatchesWildcard(name, kCommentPattern);
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
