#include "fsutil/SizeText.h"

#include <gtest/gtest.h>

namespace vw {
namespace {

TEST(SizeText, ChoosesTheUnitAndRoundsToOneDecimal) {
    struct Row {
        std::uint64_t bytes;
        const wchar_t* text;
    };
    const Row rows[] = {
        {0, L"0Byte"},
        {1, L"1Byte"},
        {1023, L"1023Byte"},
        {1024, L"1024Byte"},  // a boundary belongs to the lower unit
        {1025, L"1.0KByte"},
        {1075, L"1.0KByte"},  // 1.0498
        {1076, L"1.1KByte"},  // 1.0508
        {1536, L"1.5KByte"},
        {1280, L"1.3KByte"},  // 1.25: half goes up
        {1792, L"1.8KByte"},  // 1.75
        {2304, L"2.3KByte"},  // 2.25: not to the even digit
        {10239, L"10.0KByte"},
        {1048575, L"1024.0KByte"},
        {1048576, L"1024.0KByte"},
        {1048577, L"1.0MByte"},
        {1572864, L"1.5MByte"},
        {20971520, L"20.0MByte"},
        {1310720, L"1.3MByte"},
        {4294967296, L"4096.0MByte"},
        {16777217, L"16.0MByte"},
        {0xFFFFFFFFFFFFFFFF, L"17592186044416.0MByte"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(SizeText(row.bytes, L'.'), row.text) << row.bytes;
    }
}

TEST(SizeText, RoundsInSinglePrecision) {
    // A little less than 100.05 MB, which only the neighbour in single precision rounds up.
    EXPECT_EQ(SizeText(104910028, L'.'), L"100.1MByte");
    EXPECT_EQ(SizeText(104910027, L'.'), L"100.0MByte");
}

TEST(SizeText, UsesTheDecimalSignOfTheUser) {
    EXPECT_EQ(SizeText(1536, L','), L"1,5KByte");
    EXPECT_EQ(SizeText(1572864, L'\u066B'), L"1\u066B5MByte");
    EXPECT_EQ(SizeText(512, L','), L"512Byte");
}

}  // namespace
}  // namespace vw
