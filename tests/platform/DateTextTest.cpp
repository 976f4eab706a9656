#include "platform/DateText.h"

#include <gtest/gtest.h>

namespace vw {
namespace {

TEST(DateText, WritesTheTimeAfterTheDate) {
    const Date noon = MakeDate({2024, 5, 6, 12, 0, 0});
    const Date midnight = MakeDate({2024, 5, 6, 0, 0, 0});
    EXPECT_TRUE(DateText(noon).starts_with(DateText(midnight) + L" "));
}

TEST(DateText, HourMinuteAndSecond_AreWritten) {
    const std::wstring noon = DateText(MakeDate({2024, 5, 6, 12, 0, 0}));
    for (const DateParts& other : {DateParts{2024, 5, 6, 11, 0, 0}, DateParts{2024, 5, 6, 12, 1, 0},
                                   DateParts{2024, 5, 6, 12, 0, 1}}) {
        EXPECT_NE(DateText(MakeDate(other)), noon);
    }
}

TEST(DateText, Midnight_IsTheDateAlone) {
    const std::wstring text = DateText(MakeDate({2024, 5, 6, 0, 0, 0}));
    EXPECT_NE(text.find(L"2024"), std::wstring::npos);
    EXPECT_EQ(text.find(L':'), std::wstring::npos);
}

TEST(DateText, DateBeforeTheSystemCalendar_IsWrittenInIsoForm) {
    EXPECT_EQ(DateText(MakeDate({1000, 1, 1, 0, 0, 0})), L"1000-01-01 00:00:00");
}

}  // namespace
}  // namespace vw
