#include "platform/TextCase.h"

#include <algorithm>

namespace vw {
namespace {

/// Nearly every character of a path is ASCII and needs no look into the system's table.
wchar_t Upper(wchar_t character) noexcept {
    if (character < 0x80) {
        const bool isSmall = character >= L'a' && character <= L'z';
        return isSmall ? static_cast<wchar_t>(character - L'a' + L'A') : character;
    }
    return UpperCase(character);
}

bool SameUnit(wchar_t left, wchar_t right) noexcept {
    return left == right || Upper(left) == Upper(right);
}

}  // namespace

std::wstring UpperCase(std::wstring_view text) {
    std::wstring upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
    return upper;
}

int CompareNoCase(std::wstring_view left, std::wstring_view right) noexcept {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (left[i] == right[i]) {
            continue;
        }
        const wchar_t a = Upper(left[i]);
        const wchar_t b = Upper(right[i]);
        if (a != b) {
            return a < b ? -1 : 1;
        }
    }
    if (left.size() == right.size()) {
        return 0;
    }
    return left.size() < right.size() ? -1 : 1;
}

bool EqualNoCase(std::wstring_view left, std::wstring_view right) noexcept {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(), SameUnit);
}

std::size_t FindNoCase(std::wstring_view text, std::wstring_view part) noexcept {
    const auto found = std::search(text.begin(), text.end(), part.begin(), part.end(), SameUnit);
    if (found == text.end() && !part.empty()) {
        return std::wstring_view::npos;
    }
    return static_cast<std::size_t>(found - text.begin());
}

}  // namespace vw
