#pragma once

#include <cstdint>

namespace vw {

/// A point in local time in whole seconds, counted from 1 January 1601 00:00:00 (Gregorian, also
/// before its introduction). Whole seconds are what a comment file keeps, so dates compare equal
/// exactly when their texts do.
using Date = std::int64_t;

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

/// 1 January 100 and the last second of the year 9999: the dates that comments can hold.
inline constexpr Date kFirstDate = -47366985600;
inline constexpr Date kLastDate = 265046774399;

/// 1 January 1000: the path or copy does not exist.
inline constexpr Date kMissingDate = -18965750400;

/// 1 January 1900: the folder holds no file, the start value of the search for the newest date.
inline constexpr Date kEmptyFolderDate = 9435484800;

}  // namespace vw
