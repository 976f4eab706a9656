#pragma once

namespace vw {

/// Whether anybody can see a window of this process: a scheduler may run it in a session without
/// a screen.
[[nodiscard]] bool DesktopIsVisible();

}  // namespace vw
