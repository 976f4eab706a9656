#pragma once

#include <string>
#include <string_view>

namespace vw {

/// The label of a copy: N01 to N20 for the copies that rotate, U01 and up for the safety copies
/// that a restore makes (21 and up). N00 for a name without a number.
[[nodiscard]] std::wstring CopyLabel(int copyNumber);

/// Whether a label is that of a safety copy.
[[nodiscard]] bool IsSafetyLabel(std::wstring_view label) noexcept;

/// The copy number of a label: its last two characters, and 20 more behind a "U".
[[nodiscard]] int NumberOfLabel(std::wstring_view label);

/// The lowest and the highest number of a safety copy: U01 and U79. More digits could not be read
/// back from a name.
inline constexpr int kLowestSafetyNumber = 21;
inline constexpr int kHighestSafetyNumber = 99;

/// The number that the next safety copy gets when `highest` is the highest in use; it may be one
/// more than kHighestSafetyNumber.
[[nodiscard]] int NextSafetyNumber(int highest) noexcept;

}  // namespace vw
