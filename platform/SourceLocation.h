#pragma once

#include <cstdint>
#include <version>

#if defined(__cpp_lib_source_location)

#include <source_location>

namespace vw {
/// The source line of a call, as it is shown to users behind "in line".
using SourceLocation = std::source_location;
}  // namespace vw

#else

namespace vw {

/// Stands in for std::source_location where the compiler (clang up to 15, and with it clang-tidy)
/// does not know it yet; the pure files are built, fuzzed and checked with such a one.
class SourceLocation {
  public:
    [[nodiscard]] static constexpr SourceLocation current(
        std::uint_least32_t line = __builtin_LINE()) noexcept {
        SourceLocation location;
        location.line_ = line;
        return location;
    }

    [[nodiscard]] constexpr std::uint_least32_t line() const noexcept { return line_; }

  private:
    std::uint_least32_t line_ = 0;
};

}  // namespace vw

#endif
