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

/// Whether a control needs a frame around it that is not mirrored. A report is a list of paths,
/// which read from left to right in an Arabic form too; and a control with scroll bars that is not
/// mirrored itself needs a parent that is not either: its inside is misplaced otherwise on some
/// systems.
[[nodiscard]] constexpr bool NeedsFrame(ControlKind kind, Language language) noexcept {
    return kind == ControlKind::Report && language == Language::Arabic;
}

/// Makes such a frame, still without place. Throws the system's error.
[[nodiscard]] HWND MakeFrame(HWND form, const ControlData& data);

/// Makes the window of a control, still without place and font, in its form or its frame; the
/// direction of writing comes from there. Throws the system's error.
[[nodiscard]] HWND MakeControl(HWND parent, const ControlData& data, Language language);

}  // namespace vw
