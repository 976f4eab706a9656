#include "list/format/CopiesCount.h"

#include <gtest/gtest.h>

namespace vw::test {
namespace {

TEST(CopiesCount, Number_IsTaken) {
    std::int16_t count = 3;
    TakeCopiesCount(L"12", count);
    EXPECT_EQ(count, 12);
}

TEST(CopiesCount, NoNumberOrTooLarge_KeepsTheOneBefore) {
    for (const auto* value : {L"", L"many", L"32768"}) {
        std::int16_t count = 3;
        TakeCopiesCount(value, count);
        EXPECT_EQ(count, 3);
    }
}

}  // namespace
}  // namespace vw::test
