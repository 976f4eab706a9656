#pragma once

#include <cstdint>
#include <optional>

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

    /// Milliseconds since the computer last woke from sleep; nothing when it has not slept since
    /// its start, or when that cannot be found out.
    [[nodiscard]] virtual std::optional<std::uint64_t> MillisecondsSinceWaking() const = 0;
};

}  // namespace vw
