#include "platform/TextCase.h"

#include <gtest/gtest.h>

#include <utility>

namespace vw {
namespace {

TEST(TextCase, ReturnsCapitalsOfOneUnitEach) {
    struct Row {
        wchar_t character;
        wchar_t upper;
    };
    const Row rows[] = {
        {L'a', L'A'},
        {L'z', L'Z'},
        {L'A', L'A'},
        {L'`', L'`'},
        {L'{', L'{'},
        {L'1', L'1'},
        {L'\0', L'\0'},
        {L'\u00E9', L'\u00C9'},
        {L'\u0436', L'\u0416'},
        {L'\u03C9', L'\u03A9'},
        {L'\u00DF', L'\u00DF'},  // no single capital
        {L'\u0645', L'\u0645'},  // Arabic letters have no case
        {L'i', L'I'},            // on Turkish systems too
        {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xD83D)},
        {static_cast<wchar_t>(0xDE00), static_cast<wchar_t>(0xDE00)},
        {static_cast<wchar_t>(0xFFFF), static_cast<wchar_t>(0xFFFF)},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(UpperCase(row.character), row.upper) << static_cast<int>(row.character);
    }
}

TEST(TextCase, KeepsCapitals) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const wchar_t upper = UpperCase(static_cast<wchar_t>(unit));
        ASSERT_EQ(UpperCase(upper), upper) << unit;
    }
}

TEST(TextCase, AsciiLetters_EndAtAAndZ) { EXPECT_EQ(UpperCase(L"@AZ[`az{"), L"@AZ[`AZ{"); }

TEST(TextCase, MakesKeysOfNames) {
    EXPECT_EQ(UpperCase(std::wstring_view(L"c:\\Docs\\r\u00E9sum\u00E9.txt")),
              L"C:\\DOCS\\R\u00C9SUM\u00C9.TXT");
    EXPECT_EQ(UpperCase(std::wstring_view()), L"");
}

TEST(TextCase, EqualNoCase_ComparesUnitByUnit) {
    for (const auto& [left, right] :
         {std::pair(L"", L""), std::pair(L"abc", L"ABC"), std::pair(L"\u00E9", L"\u00C9")}) {
        EXPECT_TRUE(EqualNoCase(left, right)) << testing::PrintToString(left);
    }
    for (const auto& [left, right] :
         {std::pair(L"", L"a"), std::pair(L"abc", L"ABD"), std::pair(L"ab", L"ABC"),
          std::pair(L"a_b", L"aBb"), std::pair(L"stra\u00DFe", L"strasse")}) {
        EXPECT_FALSE(EqualNoCase(left, right)) << testing::PrintToString(left);
        EXPECT_FALSE(EqualNoCase(right, left)) << testing::PrintToString(left);
    }
}

TEST(TextCase, FindsTheFirstPositionIgnoringCase) {
    constexpr std::size_t none = std::wstring_view::npos;
    struct Row {
        std::wstring_view text;
        std::wstring_view part;
        std::size_t place;
    };
    const Row rows[] = {
        {L"abcABC", L"bC", 1}, {L"abcABC", L"x", none}, {L"abc", L"abcd", none},
        {L"abc", L"ABC", 0},   {L"abc", L"c", 2},       {L"abc", L"", 0},
        {L"", L"", 0},         {L"", L"a", none},       {L"aab", L"AB", 1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(FindNoCase(row.text, row.part), row.place) << testing::PrintToString(row.text);
    }
}

}  // namespace
}  // namespace vw
