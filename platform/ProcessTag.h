#pragma once

#include <cstdint>
#include <string_view>

namespace vw {

/// Tells one process from every other, also after its end: what it leaves in a destination carries
/// its tag.
struct ProcessTag {
    std::uint32_t computer = 0;  ///< ComputerTag of its name and its installation of Windows
    std::uint32_t processId = 0;
    std::uint64_t processStart = 0;  ///< start time, since process ids are used again

    friend bool operator==(const ProcessTag&, const ProcessTag&) = default;
};

/// Tells a computer from others, also from one of the same name. Earlier versions of the program
/// knew no `installation`.
[[nodiscard]] std::uint32_t ComputerTag(std::wstring_view name, std::wstring_view installation);

/// The tag of this process.
[[nodiscard]] ProcessTag ThisProcess();

/// Whether the process certainly is no more. A process of another computer, or one that may not be
/// asked, counts as running.
[[nodiscard]] bool IsGone(const ProcessTag& tag);

}  // namespace vw
