#include "platform/Date.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/RuntimeError.h"
#include "tests/support/ErrorNumber.h"

namespace vw {

void PrintTo(const DateParts& parts, std::ostream* out) {
    *out << parts.year << '-' << parts.month << '-' << parts.day << ' ' << parts.hour << ':'
         << parts.minute << ':' << parts.second;
}

namespace {

using namespace std::chrono_literals;

TEST(Date, CountsSeconds) {
    EXPECT_EQ(MakeDate({1970, 1, 1, 0, 0, 0}), Date(0s));
    EXPECT_EQ(MakeDate({1970, 1, 1, 0, 0, 1}), Date(1s));
    EXPECT_EQ(MakeDate({1970, 1, 2, 0, 0, 0}), Date(86400s));
    EXPECT_EQ(MakeDate({1969, 12, 31, 23, 59, 59}), Date(-1s));
    EXPECT_EQ(MakeDate({1601, 1, 1}), Date(-11644473600s));
    EXPECT_EQ(MakeDate({2005, 3, 5, 14, 7, 9}), Date(1110031629s));
}

TEST(Date, DatesWithAMeaning_AreGiven) {
    EXPECT_EQ(MakeDate({1000, 1, 1}), kMissingDate);
    EXPECT_EQ(MakeDate({1900, 1, 1}), kEmptyFolderDate);
    EXPECT_EQ(MakeDate({1601, 1, 1}), kNoDate);
}

TEST(Date, EndsOfTheCalendar_AreDates) {
    EXPECT_EQ(MakeDate({100, 1, 1}), kFirstDate);
    EXPECT_EQ(MakeDate({9999, 12, 31, 23, 59, 59}), kLastDate);
    EXPECT_EQ(PartsOf(kFirstDate), (DateParts{100, 1, 1, 0, 0, 0}));
    EXPECT_EQ(PartsOf(kLastDate), (DateParts{9999, 12, 31, 23, 59, 59}));
}

TEST(Date, NormalisesPartsBeyondTheirRange) {
    struct Row {
        DateParts parts;
        DateParts same;
    };
    const Row rows[] = {
        {{2005, 3, 0}, {2005, 2, 28}},
        {{2004, 3, 0}, {2004, 2, 29}},
        {{2005, 2, 29}, {2005, 3, 1}},
        {{2000, 2, 29}, {2000, 2, 29}},
        {{1900, 2, 29}, {1900, 3, 1}},
        {{2005, 13, 1}, {2006, 1, 1}},
        {{2005, 0, 1}, {2004, 12, 1}},
        {{2005, -1, 1}, {2004, 11, 1}},
        {{2005, 99, 99}, {2013, 6, 7}},
        {{2005, 1, -1}, {2004, 12, 30}},
        {{2005, 1, 1, 24, 0, 0}, {2005, 1, 2, 0, 0, 0}},
        {{2005, 1, 1, 99, 99, 99}, {2005, 1, 5, 4, 40, 39}},
        {{2005, 1, 1, -1, 0, 0}, {2004, 12, 31, 23, 0, 0}},
        {{2005, 1, 1, 0, 0, -1}, {2004, 12, 31, 23, 59, 59}},
        {{0, 0, 0, 0, 0, 0}, {1999, 11, 30, 0, 0, 0}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PartsOf(MakeDate(row.parts)), row.same) << testing::PrintToString(row.parts);
    }
}

TEST(Date, ShortYears_MeanThoseFrom1930To2029) {
    struct Row {
        int year;
        int meant;
    };
    const Row rows[] = {{0, 2000}, {5, 2005}, {29, 2029}, {30, 1930}, {99, 1999}, {100, 100}};
    for (const Row& row : rows) {
        EXPECT_EQ(PartsOf(MakeDate({row.year, 6, 15})).year, row.meant) << row.year;
    }
}

TEST(Date, RefusesPartsBeyondTheCalendar) {
    constexpr int kMax = std::numeric_limits<int>::max();
    constexpr int kMin = std::numeric_limits<int>::min();
    const DateParts rows[] = {
        {10000, 1, 1},
        {9999, 13, 1},
        {9999, 12, 31, 24, 0, 0},
        {100, 1, 0},
        {100, 0, 1},
        {-1, 1, 1},
        {-999, 1, 1},
        {65536 + 2024, 1, 1},
        {kMax, kMax, kMax, kMax, kMax, kMax},
        {kMin, kMin, kMin, kMin, kMin, kMin},
        {kMax, kMin, kMax, kMin, kMax, kMin},
    };
    for (const DateParts& parts : rows) {
        EXPECT_EQ(test::NumberOf([&] { return MakeDate(parts); }), error_number::kInvalidCall)
            << testing::PrintToString(parts);
    }
}

TEST(Date, EveryDayOfTheCalendar_RoundTrips) {
    constexpr int kLengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    Date date = kFirstDate;
    for (int year = 100; year <= 9999; ++year) {
        const bool isLeap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
        for (int month = 1; month <= 12; ++month) {
            const int length = kLengths[month - 1] + (isLeap && month == 2 ? 1 : 0);
            for (int day = 1; day <= length; ++day) {
                ASSERT_EQ(MakeDate({year, month, day}), date);
                ASSERT_EQ(PartsOf(date), (DateParts{year, month, day}));
                ASSERT_EQ(PartsOf(date + 86399s), (DateParts{year, month, day, 23, 59, 59}));
                date += 24h;
            }
        }
    }
    EXPECT_EQ(date, kLastDate + 1s);
}

}  // namespace
}  // namespace vw
