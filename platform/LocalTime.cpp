#include "platform/LocalTime.h"

#include <algorithm>

namespace vw {

namespace {

constexpr std::int64_t kTicksPerSecond = 10'000'000;
constexpr std::int64_t kQuarterOfAnHour = 900;

std::int64_t SecondsOf(const FILETIME& time) {
    const auto ticks = (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    return static_cast<std::int64_t>(ticks / kTicksPerSecond);
}

FILETIME FileTimeOf(std::int64_t seconds) {
    const auto ticks = static_cast<std::uint64_t>(seconds) * kTicksPerSecond;
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

}  // namespace

LocalTime::LocalTime(const TIME_ZONE_INFORMATION* zone) : hasZone_(zone != nullptr) {
    if (hasZone_) zone_ = *zone;
}

Date LocalTime::DateOf(const FILETIME& fileTime) const {
    const std::int64_t seconds = SecondsOf(fileTime);
    // A damaged time stamp can lie beyond what a comment can hold.
    return std::min(seconds + OffsetAt(seconds), kLastDate);
}

std::int64_t LocalTime::OffsetAt(std::int64_t utcSeconds) const {
    const std::int64_t quarter = utcSeconds / kQuarterOfAnHour;
    if (quarter == quarter_) return offset_;
    const std::int64_t start = quarter * kQuarterOfAnHour;
    const FILETIME utc = FileTimeOf(start);
    SYSTEMTIME utcParts{};
    SYSTEMTIME localParts{};
    FILETIME local{};
    if (FileTimeToSystemTime(&utc, &utcParts) == 0 ||
        SystemTimeToTzSpecificLocalTime(hasZone_ ? &zone_ : nullptr, &utcParts, &localParts) == 0 ||
        SystemTimeToFileTime(&localParts, &local) == 0) {
        return 0;  // a time stamp beyond the calendar stays as it is
    }
    quarter_ = quarter;
    offset_ = SecondsOf(local) - start;
    return offset_;
}

}  // namespace vw
