#include "platform/LeadingInt.h"

#include <gtest/gtest.h>

#include <limits>

namespace vw {
namespace {

TEST(ParseLeadingInt, ReadsTheNumberAtTheBeginningOfAText) {
    constexpr int kMax = std::numeric_limits<int>::max();
    constexpr int kMin = std::numeric_limits<int>::min();
    struct Row {
        std::wstring_view text;
        int value;
    };
    const Row rows[] = {
        {L"", 0},
        {L"7", 7},
        {L"007", 7},
        {L"42x9", 42},
        {L"x42", 0},
        {L"2.5", 2},
        {L"-3", -3},
        {L"+3", 3},
        {L"--3", 0},
        {L"+-3", 0},
        {L"3-", 3},
        {L"-", 0},
        {L" 5", 5},
        {L"5 ", 5},
        {L"1 2", 12},
        {L"- 4", -4},
        {L"\t\n6", 6},
        {L"\r6", 0},
        {L"\u0665", 0},  // an Arabic five
        {L"&HFF", 0},
        {L"1E3", 1},
        {L"2147483647", kMax},
        {L"2147483648", kMax},
        {L"-2147483648", kMin},
        {L"-2147483649", kMin},
        {L"-2147483647", -kMax},
        {L"99999999999", kMax},
        {L"-99999999999", kMin},
        {L"99999999999999999999999999999999", kMax},
        {L"-99999999999999999999999999999999", kMin},
        {L"00000000000000000000000000000000000012", 12},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ParseLeadingInt(row.text), row.value) << testing::PrintToString(row.text);
    }
}

TEST(TwoDigits, WritesAtLeastTwoDigits) {
    struct Row {
        int number;
        const wchar_t* text;
    };
    const Row rows[] = {
        {0, L"00"},        {7, L"07"},
        {10, L"10"},       {99, L"99"},
        {100, L"100"},     {123, L"123"},
        {-4, L"-04"},      {-12, L"-12"},
        {32767, L"32767"}, {std::numeric_limits<int>::min(), L"-2147483648"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(TwoDigits(row.number), row.text);
    }
}

}  // namespace
}  // namespace vw
