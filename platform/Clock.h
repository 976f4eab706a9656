#pragma once

#include <cstdint>

namespace vw {

/// Time that only runs forward, for waiting; dates of files do not come from here.
class Clock {
  public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// Milliseconds since some fixed moment.
    [[nodiscard]] virtual std::uint64_t Milliseconds() const = 0;
};

}  // namespace vw
