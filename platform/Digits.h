#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vw {

/// Whether a character is one of the digits 0 to 9. Other digits of Unicode do not count.
[[nodiscard]] constexpr bool IsDigit(wchar_t character) noexcept {
    return character >= L'0' && character <= L'9';
}

/// A number as `width` hexadecimal digits in lower case; higher digits are cut off.
[[nodiscard]] inline std::wstring ToHex(std::uint64_t number, std::size_t width) {
    std::wstring digits(width, L'0');
    for (std::size_t i = width; i > 0; --i) {
        digits[i - 1] = L"0123456789abcdef"[number & 0xFU];
        number >>= 4U;
    }
    return digits;
}

}  // namespace vw
