#include "platform/LeadingInt.h"

#include <cstdint>
#include <limits>

#include "platform/Digits.h"

namespace vw {
namespace {

bool IsBlank(wchar_t character) noexcept {
    return character == L' ' || character == L'\t' || character == L'\n';
}

}  // namespace

int ParseLeadingInt(std::wstring_view text) noexcept {
    constexpr std::int64_t kLimit = std::numeric_limits<int>::max();
    bool isNegative = false;
    bool signIsOver = false;
    std::int64_t value = 0;
    for (const wchar_t character : text) {
        if (IsBlank(character)) {
            continue;
        }
        if (IsDigit(character)) {
            // Held just beyond the range, so that a long run of digits cannot overflow.
            value = value > kLimit ? kLimit + 1 : value * 10 + (character - L'0');
        } else if (!signIsOver && (character == L'-' || character == L'+')) {
            isNegative = character == L'-';
        } else {
            break;
        }
        signIsOver = true;
    }
    if (isNegative) {
        return value > kLimit ? std::numeric_limits<int>::min() : static_cast<int>(-value);
    }
    return value > kLimit ? std::numeric_limits<int>::max() : static_cast<int>(value);
}

std::wstring TwoDigits(int number) {
    const bool isNegative = number < 0;
    const std::int64_t size = isNegative ? -std::int64_t{number} : number;
    std::wstring digits = std::to_wstring(size);
    if (digits.size() < 2) {
        digits.insert(0, 1, L'0');
    }
    return isNegative ? L"-" + digits : digits;
}

}  // namespace vw
