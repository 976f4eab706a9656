#pragma once

#include "platform/Handle.h"
#include "platform/WindowsHeader.h"

namespace vw {

/// Keeps the computer from going to sleep as long as it lives; the screen may go dark.
class KeepAwake {
  public:
    KeepAwake() noexcept;
    ~KeepAwake();
    KeepAwake(const KeepAwake&) = delete;
    KeepAwake& operator=(const KeepAwake&) = delete;

  private:
    FileHandle request_;
};

}  // namespace vw
