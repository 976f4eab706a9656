#include "platform/LocalTime.h"

#include <gtest/gtest.h>

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

TEST(LocalTimeTest, TheOffsetIsTheOneOfTheFilesOwnDay) {
    const TIME_ZONE_INFORMATION zone = CentralEurope();
    const LocalTime localTime(&zone);
    EXPECT_EQ(localTime.DateOf(Utc(2024, 7, 1, 12, 0, 0)), MakeDate({2024, 7, 1, 14, 0, 0}));
    EXPECT_EQ(localTime.DateOf(Utc(2024, 11, 20, 12, 0, 0)), MakeDate({2024, 11, 20, 13, 0, 0}));
}

TEST(LocalTimeTest, TheHourOfTheChangeIsCutWhereItChanges) {
    const TIME_ZONE_INFORMATION zone = CentralEurope();
    const LocalTime localTime(&zone);
    EXPECT_EQ(localTime.DateOf(Utc(2024, 3, 31, 0, 59, 59)), MakeDate({2024, 3, 31, 1, 59, 59}));
    EXPECT_EQ(localTime.DateOf(Utc(2024, 3, 31, 1, 0, 0)), MakeDate({2024, 3, 31, 3, 0, 0}));
    EXPECT_EQ(localTime.DateOf(Utc(2024, 10, 27, 0, 59, 59)), MakeDate({2024, 10, 27, 2, 59, 59}));
    EXPECT_EQ(localTime.DateOf(Utc(2024, 10, 27, 1, 0, 0)), MakeDate({2024, 10, 27, 2, 0, 0}));
}

TEST(LocalTimeTest, TheAnswerDoesNotDependOnWhatWasAskedBefore) {
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

TEST(LocalTimeTest, FractionsOfASecondAreCutOff) {
    const TIME_ZONE_INFORMATION zone = CentralEurope();
    const LocalTime localTime(&zone);
    EXPECT_EQ(localTime.DateOf(Utc(2024, 1, 1, 10, 20, 30, 999)),
              MakeDate({2024, 1, 1, 11, 20, 30}));
}

TEST(LocalTimeTest, ATimeStampBeyondTheCalendarIsItsLastSecond) {
    const LocalTime localTime;
    const FILETIME beyond{0xFFFFFFFF, 0xFFFFFFFF};
    EXPECT_EQ(localTime.DateOf(beyond), kLastDate);
}

}  // namespace
}  // namespace vw
