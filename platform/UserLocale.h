#pragma once

#include <string>

namespace vw {

/// Separators of the user's locale as the system tells them; they may be longer than one character.
[[nodiscard]] std::wstring UserDateSeparator();
[[nodiscard]] std::wstring UserTimeSeparator();
[[nodiscard]] std::wstring UserDecimalSign();

}  // namespace vw
