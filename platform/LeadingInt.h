#pragma once

#include <string>
#include <string_view>

namespace vw {

/// The number that `text` begins with; 0 when it begins with none. Blanks, tabs and line feeds are
/// skipped wherever they are ("1 2" gives 12). Decimal digits with an optional sign only; a
/// number beyond the range of an int gives that end of the range.
[[nodiscard]] int ParseLeadingInt(std::wstring_view text) noexcept;

/// A number with at least two digits: 0 gives "00", 7 "07", 123 "123", -4 "-04".
[[nodiscard]] std::wstring TwoDigits(int number);

}  // namespace vw
