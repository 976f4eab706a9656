#pragma once

#include <cstdint>
#include <string_view>

namespace vw {

/// The 16-bit number that a setting or a list line holds, read by the user's number format and
/// rounded to the nearest whole, halves to the even side ("2.5" is 2). Throws 13 when the text is
/// no number, 6 when the number does not fit.
[[nodiscard]] std::int16_t ParseInt16(std::wstring_view text);

/// The yes or no that a setting holds: "True", "False" in any letter case, or a number (0 is no).
/// Throws 13 for any other text.
[[nodiscard]] bool ParseBool(std::wstring_view text);

}  // namespace vw
