#include "platform/Wildcards.h"

#include <cstddef>

#include "platform/Digits.h"
#include "platform/TextCase.h"

namespace vw {
namespace {

constexpr std::size_t kNone = std::wstring_view::npos;

/// Whether a list (the text between "[" and "]") holds the character. Both sides of a range are
/// compared by their upper-case forms; a range that runs backwards holds nothing.
bool ListHolds(std::wstring_view list, wchar_t character) noexcept {
    const wchar_t upper = UpperCase(character);
    std::size_t i = 0;
    while (i < list.size()) {
        const wchar_t first = UpperCase(list[i]);
        const bool isRange = i + 2 < list.size() && list[i + 1] == L'-';
        const wchar_t last = isRange ? UpperCase(list[i + 2]) : first;
        if (first <= upper && upper <= last) {
            return true;
        }
        i += isRange ? 3 : 1;
    }
    return false;
}

/// One part of a pattern other than "*".
struct Element {
    std::size_t length = 1;  ///< characters that it takes in the pattern
    bool isGroup = false;
    std::wstring_view list;  ///< of a group: without "[", "!" and "]"
    bool isNegated = false;
};

/// The part at `position`. `lastClose` is the place of the pattern's last "]", so that many "["
/// without their "]" do not each search the rest of a long pattern.
Element ElementAt(std::wstring_view pattern, std::size_t position, std::size_t lastClose) noexcept {
    Element element;
    const bool isGroup = pattern[position] == L'[' && lastClose != kNone && lastClose > position;
    if (!isGroup) {
        return element;
    }
    const std::size_t close = pattern.find(L']', position);
    element.isGroup = true;
    element.length = close - position + 1;
    element.list = pattern.substr(position + 1, close - position - 1);
    // A list of nothing but "!" names that character.
    if (element.list.size() > 1 && element.list.front() == L'!') {
        element.isNegated = true;
        element.list.remove_prefix(1);
    }
    return element;
}

bool Matches(const Element& element, wchar_t sign, wchar_t character) noexcept {
    if (element.isGroup) {
        return ListHolds(element.list, character) != element.isNegated;
    }
    switch (sign) {
        case L'?':
            return true;
        case L'#':
            return IsDigit(character);
        default:
            return sign == character || UpperCase(sign) == UpperCase(character);
    }
}

}  // namespace

bool MatchesWildcard(std::wstring_view text, std::wstring_view pattern) {
    const std::size_t lastClose = pattern.rfind(L']');
    std::size_t atText = 0;
    std::size_t atPattern = 0;
    // Only the last "*" seen ever needs to take more: the part before it has matched at the
    // earliest possible place. So the time grows with text times pattern at the most.
    std::size_t afterStar = kNone;
    std::size_t starEnd = 0;

    while (true) {
        if (atPattern < pattern.size() && pattern[atPattern] == L'*') {
            afterStar = ++atPattern;
            starEnd = atText;
            continue;
        }
        if (atPattern < pattern.size()) {
            const Element element = ElementAt(pattern, atPattern, lastClose);
            const bool isEmptyGroup = element.isGroup && element.list.empty();
            if (isEmptyGroup) {
                atPattern += element.length;
                continue;
            }
            if (atText < text.size() && Matches(element, pattern[atPattern], text[atText])) {
                atPattern += element.length;
                ++atText;
                continue;
            }
        } else if (atText == text.size()) {
            return true;
        }
        if (afterStar == kNone || starEnd == text.size()) {
            return false;
        }
        atText = ++starEnd;
        atPattern = afterStar;
    }
}

}  // namespace vw
