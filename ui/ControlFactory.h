#pragma once

#include "platform/WindowsHeader.h"
#include "ui/FormData.h"

namespace vw {

/// Whether controls of a kind are windows.
[[nodiscard]] bool HasWindow(ControlKind kind) noexcept;

/// Whether controls of a kind show a text that the form draws.
[[nodiscard]] constexpr bool IsLabel(ControlKind kind) noexcept {
    return kind == ControlKind::Label || kind == ControlKind::Heading;
}

/// Makes the window of a control, still without place and font. Raises the system's error.
[[nodiscard]] HWND MakeControl(HWND form, const ControlData& data, Language language);

}  // namespace vw
