#include "platform/Date.h"

#include "platform/RuntimeError.h"

namespace vw {
namespace {

constexpr std::int64_t kSecondsPerDay = 86400;
constexpr std::int64_t kYearsPerEra = 400;  // after an era the calendar repeats itself
constexpr std::int64_t kDaysPerEra = 146097;

constexpr std::int64_t FloorDivide(std::int64_t number, std::int64_t divisor) noexcept {
    return number / divisor - (number % divisor < 0 ? 1 : 0);
}

/// Days from 1 March to the first day of a month of the year that begins on 1 March. With that
/// beginning the leap day is the last day of its year and disturbs no sum; the lengths of the
/// months then repeat every five months, which the fraction reproduces.
constexpr std::int64_t DaysBeforeMonth(std::int64_t monthFromMarch) noexcept {
    return (153 * monthFromMarch + 2) / 5;
}

/// Days from 1 March of the year 0 to the first day of a month, which may lie beyond its year.
constexpr std::int64_t DayOfMonthStart(std::int64_t year, std::int64_t month) noexcept {
    const std::int64_t months = year * 12 + (month - 3);
    const std::int64_t marchYear = FloorDivide(months, 12);
    const std::int64_t era = FloorDivide(marchYear, kYearsPerEra);
    const std::int64_t yearOfEra = marchYear - era * kYearsPerEra;
    return era * kDaysPerEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 +
           DaysBeforeMonth(months - marchYear * 12);
}

constexpr std::int64_t kEpochDay = DayOfMonthStart(1601, 1);

constexpr int CenturyYear(int year) noexcept {
    if (year < 0 || year > 99) {
        return year;
    }
    return year + (year < 30 ? 2000 : 1900);
}

}  // namespace

Date MakeDate(const DateParts& parts) {
    const std::int64_t day = DayOfMonthStart(CenturyYear(parts.year), parts.month) +
                             (std::int64_t{parts.day} - 1) - kEpochDay;
    const Date date = day * kSecondsPerDay + std::int64_t{parts.hour} * 3600 +
                      std::int64_t{parts.minute} * 60 + parts.second;
    if (date < kFirstDate || date > kLastDate) {
        Throw(error_number::kInvalidCall);
    }
    return date;
}

DateParts PartsOf(Date date) noexcept {
    const std::int64_t day = FloorDivide(date, kSecondsPerDay);
    const std::int64_t remainder = date % kSecondsPerDay;
    const std::int64_t second = remainder < 0 ? remainder + kSecondsPerDay : remainder;

    const std::int64_t dayFromMarch = day + kEpochDay;
    const std::int64_t era = FloorDivide(dayFromMarch, kDaysPerEra);
    const std::int64_t dayOfEra = dayFromMarch - era * kDaysPerEra;
    // Leap days are taken out first (one in 1,461 days, none in most centuries, one in an era).
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / (kDaysPerEra - 1)) / 365;
    const std::int64_t dayOfYear = dayOfEra - (yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const bool isInNextYear = monthFromMarch >= 10;

    DateParts parts;
    parts.year = static_cast<int>(era * kYearsPerEra + yearOfEra + (isInNextYear ? 1 : 0));
    parts.month = static_cast<int>(monthFromMarch + (isInNextYear ? -9 : 3));
    parts.day = static_cast<int>(dayOfYear - DaysBeforeMonth(monthFromMarch) + 1);
    parts.hour = static_cast<int>(second / 3600);
    parts.minute = static_cast<int>(second / 60 % 60);
    parts.second = static_cast<int>(second % 60);
    return parts;
}

}  // namespace vw
