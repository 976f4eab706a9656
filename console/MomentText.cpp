#include "console/MomentText.h"

#include <array>
#include <charconv>

#include "platform/DateText.h"

namespace vw {
namespace {

constexpr std::array<std::string_view, 7> kWeekdays{"SUN", "MON", "TUE", "WED",
                                                    "THU", "FRI", "SAT"};

// The number that `text` is, of exactly this many digits and in this range.
std::optional<int> Digits(std::string_view text, std::size_t count, int least, int most) {
    int number = 0;
    if (text.size() != count || text.find_first_not_of("0123456789") != text.npos) {
        return std::nullopt;
    }
    std::from_chars(text.data(), text.data() + text.size(), number);
    if (number < least || number > most) return std::nullopt;
    return number;
}

}  // namespace

std::optional<ClockTime> ReadClockTime(std::string_view text) {
    // The hour may have one digit.
    if ((text.size() != 4 && text.size() != 5) || text[text.size() - 3] != ':') return std::nullopt;
    const std::size_t hourDigits = text.size() - 3;
    const auto hour = Digits(text.substr(0, hourDigits), hourDigits, 0, 23);
    const auto minute = Digits(text.substr(hourDigits + 1), 2, 0, 59);
    if (!hour || !minute) return std::nullopt;
    return ClockTime{*hour, *minute};
}

std::optional<Date> ReadMoment(std::string_view text) {
    constexpr std::size_t kDay = 10;
    constexpr std::size_t kMinute = 16;
    constexpr std::size_t kSecond = 19;
    if (text.size() != kDay && text.size() != kMinute && text.size() != kSecond) {
        return std::nullopt;
    }
    if (text[4] != '-' || text[7] != '-') return std::nullopt;
    const auto year = Digits(text.substr(0, 4), 4, 1000, 9999);
    const auto month = Digits(text.substr(5, 2), 2, 1, 12);
    const auto day = Digits(text.substr(8, 2), 2, 1, 31);
    if (!year || !month || !day) return std::nullopt;
    DateParts parts{*year, *month, *day, 23, 59, 59};
    if (text.size() > kDay) {
        const auto time = ReadClockTime(text.substr(kDay + 1, 5));
        if (!time || (text[kDay] != ' ' && text[kDay] != 'T')) return std::nullopt;
        parts.hour = time->hour;
        parts.minute = time->minute;
    }
    if (text.size() == kSecond) {
        const auto second = Digits(text.substr(kMinute + 1), 2, 0, 59);
        if (!second || text[kMinute] != ':') return std::nullopt;
        parts.second = *second;
    }
    const Date date = MakeDate(parts);
    // 30 February rolls over into March.
    if (PartsOf(date).day != parts.day) return std::nullopt;
    return date;
}

std::optional<int> ReadWeekday(std::string_view text) {
    std::string upper;
    for (const char letter : text) {
        upper += letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    }
    for (std::size_t day = 0; day < kWeekdays.size(); ++day) {
        if (kWeekdays[day] == upper) return static_cast<int>(day);
    }
    return std::nullopt;
}

std::wstring MomentText(Date date) {
    return date == kMissingDate || date == kEmptyFolderDate ? L"-" : PlainDateText(date);
}

}  // namespace vw
