#include "platform/SystemCodePage.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/ImportHook.h"
#include "tests/support/WineBridge.h"

namespace vw {
namespace {

using test::NumberOf;

TEST(SystemCodePage, NumberZero_IsTheCodePageOfTheSystem) {
    EXPECT_EQ(CodePage().Number(), GetACP());
}

// VW_CODE_PAGE sets it where the tests run on another system than usual; without it the tests
// would not notice that they do not.
TEST(SystemCodePage, NumberZero_IsTheOneThatTheTestsExpect) {
    const char* const expected = std::getenv("VW_CODE_PAGE");
    if (expected == nullptr && !test::UnderWine()) GTEST_SKIP() << "any system is meant";
    EXPECT_EQ(std::to_string(CodePage().Number()), expected == nullptr ? "1252" : expected);
}

TEST(SystemCodePage, KeepsItsOwnLetters) {
    EXPECT_EQ(CodePage(1252).Encode(L"a\u00AB\u00BB\u20AC"), "a\xAB\xBB\x80");
    EXPECT_EQ(CodePage(1252).Decode("a\xAB\xBB\x80"), L"a\u00AB\u00BB\u20AC");
    EXPECT_EQ(CodePage(1256).Encode(L"نسخ"), "\xE4\xD3\xCE");
    EXPECT_EQ(CodePage(1256).Decode("\xE4\xD3\xCE"), L"نسخ");
    EXPECT_TRUE(CodePage(1256).Holds(L"C:\\نسخ\\a"));
    EXPECT_FALSE(CodePage(1252).Holds(L"C:\\نسخ\\a"));
}

TEST(SystemCodePage, WritesAQuestionMarkForEachMissingLetter) {
    EXPECT_EQ(CodePage(1252).Encode(L"xنسخy"), "x???y");
}

TEST(SystemCodePage, DoesNotReplaceLettersBySimilarOnes) {
    // U+0100 is an A with a bar, U+2212 a minus, U+FF21 a wide A: best fit would make A, - and A.
    EXPECT_EQ(CodePage(1252).Encode(L"\u0100\u2212\uFF21"), "???");
}

TEST(SystemCodePage, PagesOfMoreThanOneByte_AreConverted) {
    EXPECT_EQ(CodePage(932).Encode(L"\u65E5a"),
              "\x93\xFA"
              "a");
    EXPECT_EQ(CodePage(932).Decode("\x93\xFA"
                                   "a"),
              L"\u65E5a");
    EXPECT_EQ(CodePage(CP_UTF8).Encode(L"\u0646\u0100"), "\xD9\x86\xC4\x80");
    EXPECT_EQ(CodePage(CP_UTF8).Decode("\xD9\x86\xC4\x80"), L"\u0646\u0100");
}

TEST(SystemCodePage, SystemLanguage_HasTheCodePageBeforeUtf8) {
    if (GetACP() == CP_UTF8) GTEST_SKIP() << "this system is switched";
    EXPECT_EQ(CodePage::OfSystemLanguage(), GetACP());
}

// The setting "Use Unicode UTF-8 for worldwide language support" was switched on after the bytes
// were written.
TEST(SystemCodePage, Utf8_ReadsOtherBytesInTheCodePageOfBefore) {
    const CodePage utf8(CP_UTF8, 1256);
    EXPECT_TRUE(utf8.IsUnicode());
    EXPECT_EQ(utf8.Decode("C:\\\xE4\xD3\xCE"), L"C:\\نسخ");
    EXPECT_EQ(utf8.Decode("C:\\\xD9\x86"), L"C:\\\u0646");
    EXPECT_EQ(CodePage(CP_UTF8, 0).Decode("a\xFFz"), L"a\uFFFDz");
    const CodePage ansi(1252, 1256);
    EXPECT_FALSE(ansi.IsUnicode());
    EXPECT_EQ(ansi.Decode("\xE4"), L"\u00E4");
}

TEST(SystemCodePage, KeepsNulAndReturnsEmptyForEmpty) {
    EXPECT_EQ(CodePage(1252).Encode(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(CodePage(1252).Decode(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(CodePage(1252).Encode(L""), "");
    EXPECT_EQ(CodePage(1252).Decode(""), L"");
}

TEST(SystemCodePage, RefusesAPageThatTheSystemLacks) {
    EXPECT_EQ(NumberOf([] { const CodePage page(64999); }), error_number::kInvalidCall);
}

// The system counts in 32 bits with a sign; the text is never looked at.
TEST(SystemCodePage, RefusesTextsOfMoreThanTwoGigabytes) {
    constexpr std::size_t kTooLong = std::size_t{1} << 31;
    const wchar_t text = L'a';
    const char byte = 'a';
    const CodePage page(1252);
    EXPECT_EQ(NumberOf([&] { return page.Encode(std::wstring_view(&text, kTooLong)); }),
              error_number::kOutOfMemory);
    EXPECT_EQ(NumberOf([&] { return page.Decode(std::string_view(&byte, kTooLong)); }),
              error_number::kOutOfMemory);
}

TEST(SystemCodePage, EncodingsOfUnicode_HoldEveryCharacter) {
    for (const unsigned number : {unsigned{CP_UTF8}, unsigned{CP_UTF7}}) {
        EXPECT_TRUE(CodePage(number).IsUnicode()) << number;
    }
    EXPECT_FALSE(CodePage(1252).IsUnicode());
}

int unitsOfTheAnswer = 0;
int WINAPI AnswerCodePage(LCID, LCTYPE, LPWSTR number, int) {
    if (unitsOfTheAnswer > 0) *reinterpret_cast<DWORD*>(number) = 1256;
    return unitsOfTheAnswer;
}

TEST(SystemCodePage, LanguageOfTheSystem_IsItsNumberOrZero) {
    const test::ImportHook answer("GetLocaleInfoW", &AnswerCodePage);
    unitsOfTheAnswer = 2;
    EXPECT_EQ(CodePage::OfSystemLanguage(), 1256U);
    unitsOfTheAnswer = 0;
    EXPECT_EQ(CodePage::OfSystemLanguage(), 0U);
}

const test::ImportHook* conversion = nullptr;
bool hadStandIn = false;
int WINAPI NoteStandIn(UINT page, DWORD flags, LPCWSTR text, int units, LPSTR bytes, int size,
                       LPCCH standIn, LPBOOL used) {
    hadStandIn = standIn != nullptr;
    return conversion->Original<decltype(WideCharToMultiByte)>()(page, flags, text, units, bytes,
                                                                 size, standIn, used);
}

// Windows refuses a replacement character for an encoding that holds everything.
TEST(SystemCodePage, ReplacementCharacter_IsGivenToOtherCodePagesOnly) {
    const test::ImportHook note("WideCharToMultiByte", &NoteStandIn);
    conversion = &note;
    EXPECT_EQ(CodePage(1252).Encode(L"a"), "a");
    EXPECT_TRUE(hadStandIn);
    EXPECT_EQ(CodePage(CP_UTF8).Encode(L"a"), "a");
    EXPECT_FALSE(hadStandIn);
}

std::vector<DWORD> decodingFlags;
const test::ImportHook* decoding = nullptr;
int WINAPI NoteFlags(UINT page, DWORD flags, LPCCH bytes, int size, LPWSTR text, int units) {
    decodingFlags.push_back(flags);
    return decoding->Original<decltype(MultiByteToWideChar)>()(page, flags, bytes, size, text,
                                                               units);
}

// Windows refuses the usual flag for UTF-8 and for encodings of more than two bytes.
TEST(SystemCodePage, Decode_GivesNoFlagsButToTryUtf8) {
    const test::ImportHook note("MultiByteToWideChar", &NoteFlags);
    decoding = &note;
    EXPECT_EQ(CodePage(CP_UTF8, 0).Decode("a"), L"a");
    EXPECT_EQ(CodePage(1252).Decode("a"), L"a");
    EXPECT_THAT(decodingFlags, testing::Each(0U));
    decodingFlags.clear();
    EXPECT_EQ(CodePage(CP_UTF8, 1256).Decode("\xE4"), L"\u0646");
    EXPECT_THAT(decodingFlags,
                testing::ElementsAre(MB_ERR_INVALID_CHARS, MB_ERR_INVALID_CHARS, 0, 0));
}

BOOL WINAPI KnowEveryPage(UINT) { return TRUE; }

TEST(SystemCodePage, ChineseEncodingOfUnicode_HoldsEveryCharacter) {
    const test::ImportHook know("IsValidCodePage", &KnowEveryPage);
    EXPECT_TRUE(CodePage(54936).IsUnicode());
    EXPECT_FALSE(CodePage(54937).IsUnicode());
}

int WINAPI ConvertNothing(UINT, DWORD, LPCWSTR, int, LPSTR, int, LPCCH, LPBOOL) { return 0; }

TEST(SystemCodePage, SystemCannotEncode_Throws) {
    const test::ImportHook convert("WideCharToMultiByte", &ConvertNothing);
    EXPECT_THROW(static_cast<void>(CodePage(1252).Encode(L"a")), RuntimeError);
}

}  // namespace
}  // namespace vw
