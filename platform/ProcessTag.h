#pragma once

#include <cstdint>

namespace vw {

/// Tells one process from every other, also after its end: what it leaves in a destination carries
/// its tag.
struct ProcessTag {
    std::uint32_t computer = 0;  ///< hash of the computer's name
    std::uint32_t processId = 0;
    std::uint64_t processStart = 0;  ///< start time, since process ids are used again

    friend bool operator==(const ProcessTag&, const ProcessTag&) = default;
};

/// The tag of this process.
[[nodiscard]] ProcessTag ThisProcess();

/// Whether the process certainly is no more. A process of another computer, or one that may not be
/// asked, counts as running.
[[nodiscard]] bool IsGone(const ProcessTag& tag);

}  // namespace vw
