#pragma once

#include <cstdint>

#include "platform/Date.h"
#include "platform/WindowsHeader.h"

namespace vw {

/// File times as local dates. The offset is the one that was valid on the file's own day, so a
/// change to or from daylight saving time moves no date and causes no new copy.
class LocalTime {
  public:
    /// The zone of this computer, or `zone` when given.
    explicit LocalTime(const TIME_ZONE_INFORMATION* zone = nullptr);

    /// Local date of a file time, fractions of a second cut off; at most
    /// kLastDate.
    [[nodiscard]] Date DateOf(const FILETIME& fileTime) const;

  private:
    [[nodiscard]] std::int64_t OffsetAt(std::int64_t utcSeconds) const;

    bool hasZone_ = false;
    TIME_ZONE_INFORMATION zone_{};
    // Asking the system takes far longer than the rest of looking at a file. Offsets change only
    // at full quarters of an hour, so neighbours in a folder share one answer.
    mutable std::int64_t quarter_ = INT64_MIN;
    mutable std::int64_t offset_ = 0;
};

}  // namespace vw
