#include "platform/LocalTime.h"

#include <gtest/gtest.h>

#include <string_view>

#include "tests/support/ImportHook.h"

namespace vw {
namespace {

// Central Europe: one hour ahead, two from the last Sunday of March to that of October.
TIME_ZONE_INFORMATION CentralEurope() {
    TIME_ZONE_INFORMATION zone{};
    zone.Bias = -60;
    zone.DaylightBias = -60;
    zone.StandardDate.wMonth = 10;
    zone.StandardDate.wDay = 5;
    zone.StandardDate.wHour = 3;
    zone.DaylightDate.wMonth = 3;
    zone.DaylightDate.wDay = 5;
    zone.DaylightDate.wHour = 2;
    return zone;
}

FILETIME Utc(WORD year, WORD month, WORD day, WORD hour, WORD minute, WORD second, WORD ms = 0) {
    const SYSTEMTIME parts{year, month, 0, day, hour, minute, second, ms};
    FILETIME time{};
    EXPECT_NE(SystemTimeToFileTime(&parts, &time), 0);
    return time;
}

TEST(LocalTimeTest, UsesTheOffsetOfTheDayOfTheFile) {
    const TIME_ZONE_INFORMATION zone = CentralEurope();
    const LocalTime localTime(&zone);
    EXPECT_EQ(localTime.DateOf(Utc(2024, 7, 1, 12, 0, 0)), MakeDate({2024, 7, 1, 14, 0, 0}));
    EXPECT_EQ(localTime.DateOf(Utc(2024, 11, 20, 12, 0, 0)), MakeDate({2024, 11, 20, 13, 0, 0}));
}

TEST(LocalTimeTest, ChangeOfTheOffset_TakesEffectAtItsSecond) {
    const TIME_ZONE_INFORMATION zone = CentralEurope();
    const LocalTime localTime(&zone);
    EXPECT_EQ(localTime.DateOf(Utc(2024, 3, 31, 0, 59, 59)), MakeDate({2024, 3, 31, 1, 59, 59}));
    EXPECT_EQ(localTime.DateOf(Utc(2024, 3, 31, 1, 0, 0)), MakeDate({2024, 3, 31, 3, 0, 0}));
    EXPECT_EQ(localTime.DateOf(Utc(2024, 10, 27, 0, 59, 59)), MakeDate({2024, 10, 27, 2, 59, 59}));
    EXPECT_EQ(localTime.DateOf(Utc(2024, 10, 27, 1, 0, 0)), MakeDate({2024, 10, 27, 2, 0, 0}));
}

TEST(LocalTimeTest, EarlierConversions_DoNotChangeTheResult) {
    const TIME_ZONE_INFORMATION zone = CentralEurope();
    const LocalTime asked(&zone);
    for (WORD hour = 0; hour < 24; ++hour) {
        for (WORD minute = 0; minute < 60; minute = static_cast<WORD>(minute + 7)) {
            const FILETIME time = Utc(2024, 10, 27, hour, minute, 30);
            const LocalTime fresh(&zone);
            EXPECT_EQ(asked.DateOf(time), fresh.DateOf(time)) << hour << ":" << minute;
        }
    }
}

TEST(LocalTimeTest, CutsOffFractionsOfASecond) {
    const TIME_ZONE_INFORMATION zone = CentralEurope();
    const LocalTime localTime(&zone);
    EXPECT_EQ(localTime.DateOf(Utc(2024, 1, 1, 10, 20, 30, 999)),
              MakeDate({2024, 1, 1, 11, 20, 30}));
}

BOOL WINAPI ConvertNothing(const TIME_ZONE_INFORMATION*, const SYSTEMTIME*, LPSYSTEMTIME) {
    return FALSE;
}

TEST(LocalTimeTest, SystemCannotConvert_TimeStaysAsItIs) {
    const test::ImportHook convert("SystemTimeToTzSpecificLocalTime", &ConvertNothing);
    EXPECT_EQ(LocalTime(nullptr, nullptr).DateOf(Utc(2024, 7, 1, 12, 0, 0)),
              MakeDate({2024, 7, 1, 12, 0, 0}));
}

BOOL WINAPI ConvertByYear(const DYNAMIC_TIME_ZONE_INFORMATION*, const SYSTEMTIME*, LPSYSTEMTIME) {
    return FALSE;
}
FARPROC WINAPI FindConversion(HMODULE, LPCSTR name) {
    const bool isAsked = std::string_view(name) == "SystemTimeToTzSpecificLocalTimeEx";
    return isAsked ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&ConvertByYear)) : nullptr;
}

TEST(LocalTimeTest, ConversionByYear_IsTheSystemsWhereItHasOne) {
    const test::ImportHook find("GetProcAddress", &FindConversion);
    EXPECT_EQ(SystemYearwiseLocalTime(), &ConvertByYear);
}

TEST(LocalTimeTest, Now_IsTheTimeOfTheSystem) {
    FILETIME before{};
    FILETIME after{};
    GetSystemTimeAsFileTime(&before);
    const Date now = LocalNow();
    GetSystemTimeAsFileTime(&after);
    EXPECT_GE(now, LocalTime().DateOf(before));
    EXPECT_LE(now, LocalTime().DateOf(after));
}

TEST(LocalTimeTest, TimeBeyondTheCalendar_ReturnsItsLastSecond) {
    const LocalTime localTime;
    const FILETIME beyond{0xFFFFFFFF, 0xFFFFFFFF};
    EXPECT_EQ(localTime.DateOf(beyond), kLastDate);
}

// The system's call of each year's own rules, which Wine 8 lacks: no daylight saving time from 2020
// on, one hour of it all year before.
BOOL WINAPI ByOwnYear(const DYNAMIC_TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* utc,
                      SYSTEMTIME* local) {
    EXPECT_EQ(zone, nullptr);
    FILETIME time{};
    if (SystemTimeToFileTime(utc, &time) == 0) return FALSE;
    constexpr std::uint64_t kHour = 36'000'000'000;
    std::uint64_t ticks =
        (static_cast<std::uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
    ticks += (utc->wYear < 2020 ? 2 : 1) * kHour;
    time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    return FileTimeToSystemTime(&time, local);
}

BOOL WINAPI Refuse(const DYNAMIC_TIME_ZONE_INFORMATION*, const SYSTEMTIME*, SYSTEMTIME*) {
    return FALSE;
}

TEST(LocalTimeTest, KnownRulesOfTheYear_AreUsed) {
    const TIME_ZONE_INFORMATION zone = CentralEurope();
    const LocalTime localTime(&zone, ByOwnYear);
    const FILETIME before = Utc(2019, 12, 1, 12, 0, 0);
    EXPECT_EQ(localTime.DateOf(before), MakeDate({2019, 12, 1, 14, 0, 0}));
    EXPECT_EQ(localTime.DateByPresentRules(before), MakeDate({2019, 12, 1, 13, 0, 0}));
    const FILETIME after = Utc(2024, 7, 1, 12, 0, 0);
    EXPECT_EQ(localTime.DateOf(after), MakeDate({2024, 7, 1, 13, 0, 0}));
    EXPECT_EQ(localTime.DateByPresentRules(after), MakeDate({2024, 7, 1, 14, 0, 0}));
}

TEST(LocalTimeTest, UnknownRules_ThoseOfThePresentYearAreUsed) {
    const TIME_ZONE_INFORMATION zone = CentralEurope();
    for (const YearwiseLocalTime yearwise :
         {YearwiseLocalTime{nullptr}, YearwiseLocalTime{Refuse}}) {
        const LocalTime localTime(&zone, yearwise);
        const FILETIME time = Utc(2019, 7, 1, 12, 0, 0);
        EXPECT_EQ(localTime.DateOf(time), MakeDate({2019, 7, 1, 14, 0, 0}));
        EXPECT_EQ(localTime.DateByPresentRules(time), MakeDate({2019, 7, 1, 14, 0, 0}));
    }
}

}  // namespace
}  // namespace vw
