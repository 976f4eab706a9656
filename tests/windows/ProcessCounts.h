#pragma once

#include <cstddef>
#include <ostream>

#include "platform/WindowsHeader.h"

namespace vw::test {

/// What a process holds of the system: what grows when it forgets to give things back.
struct ProcessCounts {
    int handles = 0;         ///< files, events, threads...
    int drawing = 0;         ///< fonts, brushes, bitmaps...
    int windows = 0;         ///< windows, menus, icons...
    std::size_t memory = 0;  ///< bytes of its own

    /// Counts another process, from outside. It should be idle.
    [[nodiscard]] static ProcessCounts Of(DWORD process);
};

std::ostream& operator<<(std::ostream& stream, const ProcessCounts& counts);

}  // namespace vw::test
