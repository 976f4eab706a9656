#pragma once

#include "platform/ErrorTrap.h"

namespace vw {

/// Tells errors to an attached debugger only: for services whose failure the user never sees.
class DebugOutput final : public ErrorSink {
  public:
    void Report(const Procedure& where, const RuntimeError& error) override;
};

}  // namespace vw
