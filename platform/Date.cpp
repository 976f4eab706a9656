#include "platform/Date.h"

#include "platform/RuntimeError.h"

namespace vw {
namespace {

constexpr int CenturyYear(int year) noexcept {
    if (year < 0 || year > 99) {
        return year;
    }
    return year + (year < 30 ? 2000 : 1900);
}

}  // namespace

Date MakeDate(const DateParts& parts) {
    using namespace std::chrono;
    const months month = years(CenturyYear(parts.year)) + months(parts.month) - months(1);
    // The library counts no more years.
    if (abs(month) >= years(32767)) Throw(error_number::kInvalidCall);
    const Date date = local_days((year(0) / January + month) / 1) + days(parts.day) - days(1) +
                      hours(parts.hour) + minutes(parts.minute) + seconds(parts.second);
    if (date < kFirstDate || date > kLastDate) Throw(error_number::kInvalidCall);
    return date;
}

DateParts PartsOf(Date date) noexcept {
    using namespace std::chrono;
    const auto midnight = floor<days>(date);
    const year_month_day day{midnight};
    const hh_mm_ss time{date - midnight};
    return {.year = int{day.year()},
            .month = static_cast<int>(unsigned{day.month()}),
            .day = static_cast<int>(unsigned{day.day()}),
            .hour = static_cast<int>(time.hours().count()),
            .minute = static_cast<int>(time.minutes().count()),
            .second = static_cast<int>(time.seconds().count())};
}

}  // namespace vw
