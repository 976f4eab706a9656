#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// Shows in a window's button of the task bar that work is going on, or takes that away again.
/// A system without such buttons is passed over in silence.
void ShowBusyInTaskbar(HWND window, bool busy) noexcept;

}  // namespace vw
