#pragma once

#include <cstdint>

#include "platform/Clock.h"

namespace vw::test {

/// A clock that stops until the test moves it.
class TestClock final : public Clock {
  public:
    [[nodiscard]] std::uint64_t Milliseconds() const override { return now_; }
    [[nodiscard]] std::optional<std::uint64_t> MillisecondsSinceWaking() const override {
        if (!wokeAt_) return std::nullopt;
        return now_ - *wokeAt_;
    }
    /// The computer wakes now.
    void Wake() noexcept { wokeAt_ = now_; }
    void Advance(std::uint64_t milliseconds) noexcept { now_ += milliseconds; }

  private:
    std::uint64_t now_ = 1'000'000;
    std::optional<std::uint64_t> wokeAt_;
};

}  // namespace vw::test
