#pragma once

#include <string>

#include "platform/Date.h"

namespace vw {

/// A date and its time as the user's locale writes them: short date and long time.
[[nodiscard]] std::wstring DateText(Date date);

}  // namespace vw
