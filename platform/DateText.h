#pragma once

#include <string>

#include "platform/Date.h"

namespace vw {

/// A date and its time as the user's locale writes them: short date and long time, at midnight the
/// date alone.
[[nodiscard]] std::wstring DateText(Date date);

/// "2024-05-31 19:05:59", the same for every user.
[[nodiscard]] std::wstring PlainDateText(Date date);

}  // namespace vw
