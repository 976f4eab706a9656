#include "platform/LocalTime.h"

#include <algorithm>
#include <optional>

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

// What a conversion of the system adds to a time; nothing when it cannot convert it.
template <class Convert>
std::optional<std::int64_t> OffsetBy(const SYSTEMTIME& utc, std::int64_t seconds, Convert convert) {
    SYSTEMTIME localParts{};
    FILETIME local{};
    if (convert(&utc, &localParts) == 0 || SystemTimeToFileTime(&localParts, &local) == 0) {
        return std::nullopt;
    }
    return SecondsOf(local) - seconds;
}

// A damaged time stamp can lie beyond what a comment can hold.
Date Limited(std::int64_t seconds) { return std::min(seconds, kLastDate); }

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
    const std::int64_t seconds = SecondsOf(fileTime);
    return Limited(seconds + OffsetsAt(seconds).ownYear);
}

Date LocalTime::DateByPresentRules(const FILETIME& fileTime) const {
    const std::int64_t seconds = SecondsOf(fileTime);
    return Limited(seconds + OffsetsAt(seconds).presentYear);
}

const LocalTime::Answer& LocalTime::OffsetsAt(std::int64_t utcSeconds) const {
    const std::int64_t quarter = utcSeconds / kQuarterOfAnHour;
    if (quarter == answer_.quarter) return answer_;
    const std::int64_t start = quarter * kQuarterOfAnHour;
    const FILETIME utc = FileTimeOf(start);
    SYSTEMTIME parts{};
    answer_ = {.quarter = quarter};
    // A time stamp beyond the calendar stays as it is.
    if (FileTimeToSystemTime(&utc, &parts) == 0) return answer_;
    answer_.presentYear =
        OffsetBy(parts, start, [this](const SYSTEMTIME* from, SYSTEMTIME* to) {
            return SystemTimeToTzSpecificLocalTime(hasZone_ ? &zone_ : nullptr, from, to);
        }).value_or(0);
    answer_.ownYear = answer_.presentYear;
    if (yearwise_ != nullptr) {
        answer_.ownYear = OffsetBy(parts, start, [this](const SYSTEMTIME* from, SYSTEMTIME* to) {
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
