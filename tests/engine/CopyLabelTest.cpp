#include "engine/CopyLabel.h"

#include <gtest/gtest.h>

namespace vw {
namespace {

TEST(CopyLabel, RotatingAndSafetyCopies_ReadBackTheirNumber) {
    const struct {
        int number;
        const wchar_t* label;
    } rows[]{{0, L"N00"}, {1, L"N01"}, {9, L"N09"}, {20, L"N20"}, {21, L"U01"}, {99, L"U79"}};
    for (const auto& row : rows) {
        EXPECT_EQ(CopyLabel(row.number), row.label);
        EXPECT_EQ(NumberOfLabel(row.label), row.number);
    }
}

TEST(NextSafetyNumber, AnyHighestNumber_FollowsItFromU01On) {
    EXPECT_EQ(NextSafetyNumber(0), 21);
    EXPECT_EQ(NextSafetyNumber(5), 21);
    EXPECT_EQ(NextSafetyNumber(20), 21);
    EXPECT_EQ(NextSafetyNumber(21), 22);
    EXPECT_EQ(NextSafetyNumber(23), 24);
}

}  // namespace
}  // namespace vw
