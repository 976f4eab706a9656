#include "platform/DateText.h"

#include <array>
#include <cwchar>

#include "platform/WindowsHeader.h"

namespace vw {

std::wstring PlainDateText(Date date) {
    const DateParts parts = PartsOf(date);
    std::array<wchar_t, 64> text{};
    const int length =
        std::swprintf(text.data(), text.size(), L"%04d-%02d-%02d %02d:%02d:%02d", parts.year,
                      parts.month, parts.day, parts.hour, parts.minute, parts.second);
    return {text.data(), static_cast<std::size_t>(length)};
}

// The system writes no dates before its own calendar begins. Only the date that means a missing
// file is older.
std::wstring DateText(Date date) {
    const DateParts parts = PartsOf(date);
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(parts.year);
    time.wMonth = static_cast<WORD>(parts.month);
    time.wDay = static_cast<WORD>(parts.day);
    time.wHour = static_cast<WORD>(parts.hour);
    time.wMinute = static_cast<WORD>(parts.minute);
    time.wSecond = static_cast<WORD>(parts.second);
    std::array<wchar_t, 128> day{};
    std::array<wchar_t, 128> clock{};
    if (GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, day.data(),
                        static_cast<int>(day.size()), nullptr) == 0 ||
        GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, &time, nullptr, clock.data(),
                        static_cast<int>(clock.size())) == 0) {
        return PlainDateText(date);
    }
    const bool isMidnight = parts.hour == 0 && parts.minute == 0 && parts.second == 0;
    return isMidnight ? std::wstring(day.data()) : std::wstring(day.data()) + L" " + clock.data();
}

}  // namespace vw
