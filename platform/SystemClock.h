#pragma once

#include "platform/Clock.h"

namespace vw {

/// The computer's running time.
class SystemClock final : public Clock {
  public:
    [[nodiscard]] std::uint64_t Milliseconds() const override;
    [[nodiscard]] std::optional<std::uint64_t> MillisecondsSinceWaking() const override;
};

}  // namespace vw
