#pragma once

#include "platform/WindowsHeader.h"
#include "ui/FormData.h"

namespace vw {

/// Whether controls of a kind are windows.
[[nodiscard]] bool HasWindow(ControlKind kind) noexcept;

/// Makes the window of a control, still without place and font. Raises the system's error.
[[nodiscard]] HWND MakeControl(HWND form, const ControlData& data, Language language);

}  // namespace vw
