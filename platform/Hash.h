#pragma once

#include <cstdint>

namespace vw {

/// FNV-1a, 64 bits. Its values are stored in file names and names of locks, so they must not
/// change.
class Fnv64 {
  public:
    /// Adds a byte; names of locks add whole UTF-16 units in the same way.
    constexpr void Add(std::uint64_t value) noexcept { value_ = (value_ ^ value) * 1099511628211U; }
    [[nodiscard]] constexpr std::uint64_t Value() const noexcept { return value_; }

  private:
    std::uint64_t value_ = 14695981039346656037U;
};

/// The same with 32 bits.
class Fnv32 {
  public:
    constexpr void Add(std::uint32_t value) noexcept { value_ = (value_ ^ value) * 16777619U; }
    [[nodiscard]] constexpr std::uint32_t Value() const noexcept { return value_; }

  private:
    std::uint32_t value_ = 2166136261U;
};

}  // namespace vw
