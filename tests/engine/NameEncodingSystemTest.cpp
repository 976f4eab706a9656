// The encoding of folder names with the system's own code pages.
#include <gtest/gtest.h>

#include <string>

#include "engine/NameEncoding.h"
#include "platform/SystemCodePage.h"

namespace vw {
namespace {

class NameEncodingSystem : public testing::TestWithParam<unsigned> {};

TEST_P(NameEncodingSystem, DecodesEveryCharacterAloneAndInRuns) {
    const CodePage ansi(GetParam());
    std::wstring run;
    for (unsigned unit = 0x20; unit <= 0xFFFF; ++unit) {
        const auto character = static_cast<wchar_t>(unit);
        if (character == L'\'') {
            continue;
        }
        const std::wstring name{L'C', L':', L'\\', character, L'\u0645', L'a'};
        ASSERT_EQ(EnglishNameOrigin(EnglishNameFrom(name, ansi), ansi), name) << unit;
        run += character;
    }
    EXPECT_EQ(EnglishNameOrigin(EnglishNameFrom(run, ansi), ansi), run);
}

// Western, Arabic, Greek, Thai; two bytes in Japan, China, Korea and Taiwan; UTF-8 as a code page.
INSTANTIATE_TEST_SUITE_P(CodePages, NameEncodingSystem,
                         testing::Values(1252U, 1256U, 1253U, 874U, 932U, 936U, 949U, 950U, 65001U),
                         [](const testing::TestParamInfo<unsigned>& info) {
                             return std::to_string(info.param);
                         });

// Bytes of UTF-8 would be other letters after the system is switched back.
TEST(NameEncodingUtf8, WritesUnitsAndReadsBytesOfBefore) {
    const CodePage utf8(65001, 1256);
    EXPECT_EQ(EnglishNameFrom(L"C:\\\u0645\\x", utf8), L"C:\\'u0u6u4u5'\\x");
    EXPECT_EQ(EnglishNameOrigin(L"C:\\'u0u6u4u5'\\x", CodePage(1252)), L"C:\\\u0645\\x");
    EXPECT_EQ(EnglishNameOrigin(L"C:\\'E3E1DD'\\x", utf8), L"C:\\\u0645\u0644\u0641\\x");
    EXPECT_EQ(EnglishNameOrigin(L"C:\\'D985'\\x", utf8), L"C:\\\u0645\\x");
}

TEST(NameEncodingJapanese, WritesBothBytesOfJapaneseCharacters) {
    const CodePage ansi(932);
    EXPECT_EQ(EnglishNameFrom(L"C:\\\u8868\\x", ansi), L"C:\\'955C'\\x");
    EXPECT_EQ(EnglishNameOrigin(L"C:\\'955C'\\x", ansi), L"C:\\\u8868\\x");
}

}  // namespace
}  // namespace vw
