#pragma once

#include <chrono>

#include "platform/Date.h"
#include "platform/WindowsHeader.h"

namespace vw {

/// The conversion of the system that has the rules of each year: null for `zone` means the zone
/// of this computer.
using YearwiseLocalTime = BOOL(WINAPI*)(const DYNAMIC_TIME_ZONE_INFORMATION* zone,
                                        const SYSTEMTIME* utc, SYSTEMTIME* local);

/// SystemTimeToTzSpecificLocalTimeEx where the system offers it, null elsewhere.
[[nodiscard]] YearwiseLocalTime SystemYearwiseLocalTime();

/// File times as local dates. The offset is the one that was valid on the file's own day, by the
/// rules of that year: neither a change to or from daylight saving time nor a change of its rules
/// moves a date and causes a new copy.
class LocalTime {
  public:
    /// The zone of this computer.
    LocalTime() : LocalTime(nullptr, SystemYearwiseLocalTime()) {}

    /// The zone `zone`, whose rules are the same in every year.
    explicit LocalTime(const TIME_ZONE_INFORMATION* zone) : LocalTime(zone, nullptr) {}

    /// The rules of the present year from `zone` (null for this computer), those of other years
    /// from `yearwise`; null when they are not known.
    LocalTime(const TIME_ZONE_INFORMATION* zone, YearwiseLocalTime yearwise);

    /// Local date of a file time by the rules of its own year, fractions of a second cut off; at
    /// most kLastDate.
    [[nodiscard]] Date DateOf(const FILETIME& fileTime) const;

    /// The same by the rules of the present year.
    [[nodiscard]] Date DateByPresentRules(const FILETIME& fileTime) const;

  private:
    // Asking the system takes far longer than the rest of looking at a file. Offsets change only
    // at full quarters of an hour, so neighbours in a folder share one answer.
    using Quarters = std::chrono::duration<std::int64_t, std::ratio<900>>;
    struct Answer {
        std::chrono::sys_time<Quarters> quarter = std::chrono::sys_time<Quarters>::min();
        std::chrono::seconds ownYear{0};
        std::chrono::seconds presentYear{0};
    };

    [[nodiscard]] const Answer& OffsetsAt(std::chrono::sys_seconds time) const;

    bool hasZone_ = false;
    TIME_ZONE_INFORMATION zone_{};
    YearwiseLocalTime yearwise_ = nullptr;
    mutable Answer answer_;
};

/// The present moment as a local date.
[[nodiscard]] Date LocalNow();

}  // namespace vw
