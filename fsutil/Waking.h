#pragma once

#include <functional>

#include "platform/CancelToken.h"
#include "platform/System.h"

namespace vw {

/// Whether something is there. Drives and servers come back some seconds after the computer: when
/// it woke less than a minute ago, the question is asked again for up to ten seconds, and messages
/// are processed meanwhile. A cancel ends the wait; `cancel` is read during it.
[[nodiscard]] bool IsThereAfterWaking(System& system, const CancelToken& cancel,
                                      const std::function<bool()>& isThere);

}  // namespace vw
