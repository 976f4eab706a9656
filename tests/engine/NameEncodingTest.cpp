#include "engine/NameEncoding.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/FakeCodePage.h"

namespace vw {
namespace {

const test::FakeCodePage western(test::kWestern);
const test::FakeCodePage arabic(test::kArabic);
const test::FakeDoubleByteCodePage eastern;

struct Row {
    std::wstring_view name;
    std::wstring_view encoded;
};

void Check(const AnsiCodec& ansi, const Row& row) {
    EXPECT_EQ(EnglishNameFrom(row.name, ansi), row.encoded);
    EXPECT_EQ(EnglishNameOrigin(row.encoded, ansi), row.name);
}

TEST(NameEncoding, WritesCodePageBytesBetweenApostrophes) {
    const Row rows[] = {
        {L"", L""},
        {L"C:\\Docs", L"C:\\Docs"},
        // three Arabic letters at the end: the run stays open
        {L"C:\\\u0645\u0644\u0641", L"C:\\'E3E1DD"},
        {L"C:\\\u0645\u0644\u0641\\x", L"C:\\'E3E1DD'\\x"},
        {L"\u0645 \u0644", L"'E3' 'E1"},
        {L"\u060C", L"'A1"},
    };
    for (const Row& row : rows) Check(arabic, row);

    Check(western, {L"C:\\\u00C9t\u00E9\\\u20AC", L"C:\\'C9't'E9'\\'80"});
}

TEST(NameEncoding, WritesUnitsForLettersOutsideTheCodePage) {
    const Row rows[] = {
        {L"C:\\\u0643", L"C:\\'u0u6u4u3"},
        {L"\u00E9\u0643\u00E9", L"'E9u0u6u4u3E9"},
        {L"a\u0643b", L"a'u0u6u4u3'b"},
        {L"\uFFFD", L"'uFuFuFuD"},
    };
    for (const Row& row : rows) Check(western, row);

    const std::wstring pair{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    Check(western, {pair, L"'uDu8u3uDuDuEu0u0"});
}

/// A code page that gives look-alikes for what it does not have, as the system's tables may.
class FittingCodePage final : public AnsiCodec {
  public:
    [[nodiscard]] std::string Encode(std::wstring_view text) const override {
        std::wstring fitted(text);
        std::replace(fitted.begin(), fitted.end(), L'\u0101', L'a');
        std::replace(fitted.begin(), fitted.end(), L'\u2025', L'\u2026');
        return western.Encode(fitted);
    }
    [[nodiscard]] std::wstring Decode(std::string_view bytes) const override {
        return western.Decode(bytes);
    }
};

TEST(NameEncoding, DoesNotReplaceLettersBySimilarOnes) {
    const FittingCodePage ansi;
    Check(ansi, {L"\u0101", L"'u0u1u0u1"});
    Check(ansi, {L"\u2025\u2026", L"'u2u0u2u585"});
}

TEST(NameEncoding, WritesBothBytesOfADoubleByteCharacter) {
    const Row rows[] = {
        {L"C:\\\u3041\u3042x", L"C:\\'81418142'x"},
        {L"\u8868\\\u8868", L"'815C'\\'815C"},  // its second byte is that of "\"
        {L"\u3041\u00E9\u3042", L"'8141u0u0uEu98142"},
    };
    for (const Row& row : rows) Check(eastern, row);
}

TEST(NameEncoding, ReadsDamagedTextWithoutFailing) {
    const Row rows[] = {
        // encoded text on the right, what it gives on the left
        {L"", L"'"},
        {L"", L"''"},
        {L"ab", L"a''b"},
        {L"\u00E9", L"'e9"},       // small digits
        {L"\u00E9", L"'xxE9"},     // pairs that are no number are dropped
        {L"\u017E\t", L"'zE9E9"},  // "zE" goes as a pair, then follow "9E" and "9"
        {L"\u00BC", L"'A'bc"},     // "A'" is one pair too, so the run goes on
        {L"\n", L"'A"},            // a digit alone at the end
        {L"\u00E9\n", L"'E9A"},
        {L"", L"'g"},
        {L"", L"'u"},
        {L"", L"'u0"},
        {L"", L"'u0u6u4"},  // three of four pairs
        {L"b", L"'u0u6'b"},
        {L"\u00E9", L"'u0u6E9"},  // broken off by a byte
        {L"\u00E9", L"'u0u6E9u4u3"},
        {L"\u0643", L"'u0u6xxu0u6u4u3"},
        {L"", L"'ux"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(EnglishNameOrigin(row.encoded, western), row.name)
            << testing::PrintToString(row.encoded);
    }
}

TEST(NameEncoding, ReadsEveryHexadecimalDigit) {
    EXPECT_EQ(EnglishNameOrigin(L"'0A0f'x", arabic), L"\n\x0Fx");
    EXPECT_EQ(EnglishNameOrigin(L"'u0u6u4u3", arabic), L"\u0643");
    EXPECT_EQ(EnglishNameOrigin(L"'u0u6ufua", arabic), L"\u06FA") << "small letters, too";
    EXPECT_EQ(EnglishNameOrigin(L"'e3E1", arabic), EnglishNameOrigin(L"'E3e1", arabic));
    EXPECT_EQ(EnglishNameOrigin(L"'0", arabic), std::wstring(1, L'\0')) << "a digit alone";
}

TEST(NameEncoding, KeepsACommentDate) {
    EXPECT_EQ(EnglishNameOrigin(L"05/03/2005-14:07:09+Original Location:C:\\'E9", western),
              L"05/03/2005-14:07:09+Original Location:C:\\\u00E9");
}

TEST(NameEncoding, Apostrophe_IsNotReadBack) {
    EXPECT_EQ(EnglishNameFrom(L"C:\\O'Brien", western), L"C:\\O'Brien");
    EXPECT_NE(EnglishNameOrigin(L"C:\\O'Brien", western), L"C:\\O'Brien");
}

TEST(NameEncoding, WritesSevenBitCharactersOnly) {
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
        const std::wstring encoded =
            EnglishNameFrom(std::wstring{static_cast<wchar_t>(unit)}, arabic);
        ASSERT_TRUE(std::all_of(encoded.begin(), encoded.end(), [](wchar_t character) {
            return character < 0x80;
        })) << unit;
    }
}

TEST(NameEncoding, DecodesEveryCharacterAloneAndInRuns) {
    for (const AnsiCodec* const ansi :
         {static_cast<const AnsiCodec*>(&western), static_cast<const AnsiCodec*>(&arabic),
          static_cast<const AnsiCodec*>(&eastern)}) {
        std::wstring run;
        for (unsigned unit = 0x20; unit <= 0xFFFF; ++unit) {
            const auto character = static_cast<wchar_t>(unit);
            if (character == L'\'') continue;
            const std::wstring names[] = {
                {character},
                {L'C', L':', L'\\', character, L'a'},
                {L'\u00E9', character, L'\u0645'},
                {character, character},
            };
            for (const std::wstring& name : names) {
                ASSERT_EQ(EnglishNameOrigin(EnglishNameFrom(name, *ansi), *ansi), name) << unit;
            }
            run += character;
        }
        EXPECT_EQ(EnglishNameOrigin(EnglishNameFrom(run, *ansi), *ansi), run);
    }
}

}  // namespace
}  // namespace vw
