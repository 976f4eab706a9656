#include "list/format/CopiesCount.h"

#include <gtest/gtest.h>

namespace vw::test {
namespace {

std::int16_t Taken(std::wstring_view value) {
    std::int16_t count = 7;
    TakeCopiesCount(value, count);
    return count;
}

TEST(CopiesCount, Number_IsReadAsTheSystemReadsNumbers) {
    struct Row {
        const wchar_t* value;
        int count;
    };
    for (const Row& row :
         {Row{L"5", 5}, Row{L" 12 ", 12}, Row{L"0", 0}, Row{L"-3", -3}, Row{L"007", 7},
          Row{L"2.5", 2}, Row{L"3.5", 4}, Row{L"32767", 32767}, Row{L"-32768", -32768}}) {
        EXPECT_EQ(Taken(row.value), row.count) << row.value;
    }
}

TEST(CopiesCount, NoNumberOrTooLarge_KeepsTheOneBefore) {
    for (const auto* value :
         {L"", L" ", L"many", L"5x", L"32768", L"-32769", L"1e9", L"\x0665\x0665\x0665x"}) {
        EXPECT_EQ(Taken(value), 7) << value;
    }
}

}  // namespace
}  // namespace vw::test
