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
