#pragma once

#include <string>
#include <string_view>

namespace vw {

/// Separators of the user's locale as the system gives them; they may be longer than one character.
[[nodiscard]] std::wstring UserDateSeparator();
[[nodiscard]] std::wstring UserTimeSeparator();
[[nodiscard]] std::wstring UserDecimalSign();

/// Less than, equal to or greater than 0: the order of two texts in lists that the user reads,
/// without regard to case.
[[nodiscard]] int CompareForUser(std::wstring_view left, std::wstring_view right);

}  // namespace vw
