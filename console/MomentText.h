#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Date.h"

namespace vw {

/// A time of day.
struct ClockTime {
    int hour = 0;
    int minute = 0;
};

/// "19:05"; nothing for anything else.
[[nodiscard]] std::optional<ClockTime> ReadClockTime(std::string_view text);

/// "2024-05-31", with or without " 19:05" or " 19:05:59" ("T" may replace the blank). A day alone
/// is its last second, a minute alone its last second too. Nothing for anything else.
[[nodiscard]] std::optional<Date> ReadMoment(std::string_view text);

/// 0 for "SUN" to 6 for "SAT", in any letter case; nothing for anything else.
[[nodiscard]] std::optional<int> ReadWeekday(std::string_view text);

/// "2024-05-31 19:05:59"; "-" for the dates that mean nothing.
[[nodiscard]] std::wstring MomentText(Date date);

}  // namespace vw
