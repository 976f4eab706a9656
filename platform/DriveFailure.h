#pragma once

#include "platform/RuntimeError.h"

namespace vw {

/// Whether an error concerns the way to a file (its drive, device or network), so that other files
/// there fail as well. False for what concerns one file: somebody uses it, its rights, its damage.
[[nodiscard]] bool ConcernsDrive(const RuntimeError& error) noexcept;

/// Whether an error is that of a cloud which cannot be reached: other files that are only there
/// fail as well.
[[nodiscard]] bool ConcernsCloud(const RuntimeError& error) noexcept;

}  // namespace vw
