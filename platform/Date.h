#pragma once

#include <chrono>

namespace vw {

/// A point in local time in whole seconds, in the Gregorian calendar, also before its introduction.
/// Whole seconds are what a comment file keeps, so dates compare equal exactly when their texts do.
using Date = std::chrono::local_seconds;

/// Date and time of day in the calendar's own terms.
struct DateParts {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;

    friend bool operator==(const DateParts&, const DateParts&) = default;
};

/// The date of `parts`. Months, days and times beyond their range roll over (day 0 is the last day
/// of the month before, month 13 the next January); years 0 to 29 mean 2000 to 2029 and 30 to 99
/// mean 1930 to 1999. Throws error 5 when the result lies outside the years 100 to 9999.
[[nodiscard]] Date MakeDate(const DateParts& parts);

/// Year to second of a date.
[[nodiscard]] DateParts PartsOf(Date date) noexcept;

/// 1 January of a year, 00:00:00.
[[nodiscard]] constexpr Date YearBegin(int year) noexcept {
    return std::chrono::local_days{std::chrono::year{year} / std::chrono::January / 1};
}

/// 1 January 100 and the last second of the year 9999: the dates that comments can hold.
inline constexpr Date kFirstDate = YearBegin(100);
inline constexpr Date kLastDate = YearBegin(10000) - std::chrono::seconds{1};

/// Drives of the older formats, as small devices have them, keep dates in steps as coarse as this.
inline constexpr std::chrono::seconds kCoarsestDateStep{2};

/// Whether two dates are the same as exactly as any drive keeps them.
[[nodiscard]] constexpr bool IsSameDate(Date first, Date second) noexcept {
    return abs(first - second) <= kCoarsestDateStep;
}

/// The path or copy does not exist.
inline constexpr Date kMissingDate = YearBegin(1000);

/// The folder holds no file, the start value of the search for the newest date.
inline constexpr Date kEmptyFolderDate = YearBegin(1900);

/// No date is known; the first one that a file can have.
inline constexpr Date kNoDate = YearBegin(1601);

}  // namespace vw
