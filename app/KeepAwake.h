#pragma once

#include "platform/WindowsHeader.h"

namespace vw {

/// Keeps the computer from going to sleep as long as it lives; the screen may go dark.
class KeepAwake {
  public:
    KeepAwake() noexcept { SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED); }
    ~KeepAwake() { SetThreadExecutionState(ES_CONTINUOUS); }
    KeepAwake(const KeepAwake&) = delete;
    KeepAwake& operator=(const KeepAwake&) = delete;
};

}  // namespace vw
