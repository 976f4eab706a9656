#pragma once

#include <cstdint>

#include "platform/Clock.h"

namespace vw::test {

/// A clock that stands still until the test moves it.
class TestClock final : public Clock {
  public:
    [[nodiscard]] std::uint64_t Milliseconds() const override { return now_; }
    void Advance(std::uint64_t milliseconds) noexcept { now_ += milliseconds; }

  private:
    std::uint64_t now_ = 1'000'000;
};

}  // namespace vw::test
