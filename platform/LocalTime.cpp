#include "platform/LocalTime.h"

#include <algorithm>
#include <optional>

namespace vw {

namespace {

using std::chrono::seconds;
using std::chrono::sys_seconds;

constexpr std::uint64_t kTicksPerSecond = 10'000'000;
constexpr sys_seconds kFileTimesBegin{kNoDate.time_since_epoch()};

sys_seconds TimeOf(const FILETIME& time) {
    const auto ticks = (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    return kFileTimesBegin + seconds{ticks / kTicksPerSecond};
}

FILETIME FileTimeOf(sys_seconds time) {
    const auto seconds = static_cast<std::uint64_t>((time - kFileTimesBegin).count());
    const std::uint64_t ticks = seconds * kTicksPerSecond;
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

// What a conversion of the system adds to a time; nothing when it cannot convert it.
template <class Convert>
std::optional<seconds> OffsetBy(const SYSTEMTIME& utc, sys_seconds time, Convert convert) {
    SYSTEMTIME localParts{};
    FILETIME local{};
    if (convert(&utc, &localParts) == 0 || SystemTimeToFileTime(&localParts, &local) == 0) {
        return std::nullopt;
    }
    return TimeOf(local) - time;
}

// A damaged time stamp can lie beyond what a comment can hold.
Date Local(sys_seconds utc, seconds offset) {
    return std::min(Date{utc.time_since_epoch() + offset}, kLastDate);
}

}  // namespace

YearwiseLocalTime SystemYearwiseLocalTime() {
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    if (kernel == nullptr) return nullptr;
    const FARPROC address = GetProcAddress(kernel, "SystemTimeToTzSpecificLocalTimeEx");
    return reinterpret_cast<YearwiseLocalTime>(reinterpret_cast<void*>(address));
}

LocalTime::LocalTime(const TIME_ZONE_INFORMATION* zone, YearwiseLocalTime yearwise)
    : hasZone_(zone != nullptr), yearwise_(yearwise) {
    if (hasZone_) zone_ = *zone;
}

Date LocalTime::DateOf(const FILETIME& fileTime) const {
    const sys_seconds utc = TimeOf(fileTime);
    return Local(utc, OffsetsAt(utc).ownYear);
}

Date LocalTime::DateByPresentRules(const FILETIME& fileTime) const {
    const sys_seconds utc = TimeOf(fileTime);
    return Local(utc, OffsetsAt(utc).presentYear);
}

const LocalTime::Answer& LocalTime::OffsetsAt(sys_seconds time) const {
    const auto quarter = std::chrono::floor<Quarters>(time);
    if (quarter == answer_.quarter) return answer_;
    const FILETIME utc = FileTimeOf(quarter);
    SYSTEMTIME parts{};
    answer_ = {.quarter = quarter};
    // A time stamp beyond the calendar stays as it is.
    if (FileTimeToSystemTime(&utc, &parts) == 0) return answer_;
    answer_.presentYear =
        OffsetBy(parts, quarter, [this](const SYSTEMTIME* from, SYSTEMTIME* to) {
            return SystemTimeToTzSpecificLocalTime(hasZone_ ? &zone_ : nullptr, from, to);
        }).value_or(seconds{0});
    answer_.ownYear = answer_.presentYear;
    if (yearwise_ != nullptr) {
        answer_.ownYear = OffsetBy(parts, quarter, [this](const SYSTEMTIME* from, SYSTEMTIME* to) {
                              return yearwise_(nullptr, from, to);
                          }).value_or(answer_.presentYear);
    }
    return answer_;
}

Date LocalNow() {
    FILETIME utc{};
    GetSystemTimeAsFileTime(&utc);
    return LocalTime().DateOf(utc);
}

}  // namespace vw
