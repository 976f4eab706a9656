#include "platform/Conversions.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/ImportHook.h"

// Needs the declarations of the system first.
#include <oleauto.h>

extern "C" {
extern void* __imp_VarI2FromStr;  // NOLINT(clang-diagnostic-reserved-identifier)
}

namespace vw {
namespace {

using test::NumberOf;

struct Number {
    std::wstring_view text;
    std::int16_t value;
};

// For the messages of failed tests.
std::ostream& operator<<(std::ostream& stream, const Number& number) {
    return stream << ToUtf8(number.text);
}

class ConversionsOfNumbers : public testing::TestWithParam<Number> {};

TEST_P(ConversionsOfNumbers, ParseInt16_RoundsHalvesToTheEvenNumber) {
    EXPECT_EQ(ParseInt16(GetParam().text), GetParam().value) << ToUtf8(GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Conversions, ConversionsOfNumbers,
                         testing::Values(Number{L"3", 3}, Number{L" 7 ", 7}, Number{L"-1", -1},
                                         Number{L"0", 0}, Number{L"-0", 0}, Number{L"0042", 42},
                                         Number{L"9999", 9999}, Number{L"10000", 10000},
                                         Number{L"-9999", -9999}, Number{L"3.5", 4},
                                         Number{L"2.5", 2}, Number{L"-2.5", -2}, Number{L"2.6", 3},
                                         Number{L"32767", 32767}, Number{L"-32768", -32768}));

class ConversionsOfOtherTexts : public testing::TestWithParam<std::wstring_view> {};

TEST_P(ConversionsOfOtherTexts, ParseInt16_NoNumber_ThrowsTypeMismatch) {
    EXPECT_EQ(NumberOf([] { return ParseInt16(GetParam()); }), error_number::kTypeMismatch);
}

INSTANTIATE_TEST_SUITE_P(Conversions, ConversionsOfOtherTexts,
                         testing::Values(L"", L"-", L"x", L"3x", L"--3", L"three", L"3 4"));

TEST(Conversions, ParseInt16_Beyond16Bits_ThrowsOverflow) {
    for (const std::wstring_view text : {L"40000", L"32768", L"-32769", L"99999999999"}) {
        EXPECT_EQ(NumberOf([&] { return ParseInt16(text); }), error_number::kOverflow)
            << ToUtf8(text);
    }
}

HRESULT WINAPI RunOutOfMemory(LPCOLESTR, LCID, ULONG, SHORT*) { return E_OUTOFMEMORY; }

TEST(Conversions, ParseInt16_NoMemory_ThrowsOutOfMemory) {
    const test::ImportHook convert(__imp_VarI2FromStr, &RunOutOfMemory);
    EXPECT_EQ(NumberOf([] { return ParseInt16(L"1.5"); }), error_number::kOutOfMemory);
}

// The library that reads the other numbers takes a while to load.
TEST(Conversions, ParseInt16_FewDigits_DoesNotAskTheSystem) {
    const test::ImportHook convert(__imp_VarI2FromStr, &RunOutOfMemory);
    for (const int number : {0, 9, 90, -1, 1234, -9876}) {
        EXPECT_EQ(ParseInt16(std::to_wstring(number)), number);
    }
}

TEST(Conversions, ParseBool_ReadsTrueFalseAndAnyNumber) {
    for (const std::wstring_view yes : {L"-1", L"1", L"2", L"True", L"true", L"TRUE", L"0.1"}) {
        EXPECT_TRUE(ParseBool(yes)) << ToUtf8(yes);
    }
    for (const std::wstring_view no : {L"0", L"False", L"false", L"0.0"}) {
        EXPECT_FALSE(ParseBool(no)) << ToUtf8(no);
    }
}

TEST(Conversions, ParseBool_OtherText_ThrowsTypeMismatch) {
    for (const std::wstring_view text : {L"", L"Arabic", L"N/A", L"yes", L"-1x"}) {
        EXPECT_EQ(NumberOf([&] { return ParseBool(text); }), error_number::kTypeMismatch)
            << ToUtf8(text);
    }
}

}  // namespace
}  // namespace vw
