#include "platform/Utf8.h"

#include <gtest/gtest.h>

namespace vw {
namespace {

using namespace std::string_literals;

TEST(Utf8, EncodesAndDecodesText) {
    struct Row {
        std::wstring text;
        std::string bytes;
    };
    const Row rows[] = {
        {L"", ""},
        {L"C:\\a", "C:\\a"},
        {L"a\0b"s, "a\0b"s},
        {L"\u00E9", "\xC3\xA9"},
        {L"\u07FF\u0800", "\xDF\xBF\xE0\xA0\x80"},
        {L"\u0645\u0644\u0641", "\xD9\x85\xD9\x84\xD9\x81"},
        {L"\uFFFD\uFFFF", "\xEF\xBF\xBD\xEF\xBF\xBF"},
        {{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)}, "\xF0\x9F\x98\x80"},
        {{static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0xDC00)}, "\xF0\x90\x80\x80"},
        {{static_cast<wchar_t>(0xDBFF), static_cast<wchar_t>(0xDFFF)}, "\xF4\x8F\xBF\xBF"},
        // A file's name can hold half a pair; the item must stay the same item.
        {{L'a', static_cast<wchar_t>(0xD83D), L'b'},
         "a\xED\xA0\xBD"
         "b"},
        {{static_cast<wchar_t>(0xDE00)}, "\xED\xB8\x80"},
        {{static_cast<wchar_t>(0xDE00), static_cast<wchar_t>(0xD83D)}, "\xED\xB8\x80\xED\xA0\xBD"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ToUtf8(row.text), row.bytes);
        EXPECT_EQ(FromUtf8(row.bytes), row.text) << testing::PrintToString(row.bytes);
    }
}

TEST(Utf8, DoesNotReadBeyondTheText) {
    const wchar_t pair[] = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(ToUtf8(std::wstring_view(pair, 1)), "\xED\xA0\xBD");
    EXPECT_EQ(FromUtf8(std::string_view("\xC3\xA9", 1)), L"\uFFFD");
}

TEST(Utf8, WritesAReplacementForEachDamagedPart) {
    struct Row {
        std::string bytes;
        std::wstring text;
    };
    const Row rows[] = {
        {"\x80", L"\uFFFD"},
        {"a\xFF"
         "b",
         L"a\uFFFDb"},
        {"\xC3", L"\uFFFD"},    // cut off at the end
        {"\xC3x", L"\uFFFDx"},  // cut off by the next character
        {"\xE2\x82", L"\uFFFD"},
        {"\xE2\x82x", L"\uFFFDx"},
        {"\xF0\x9F\x98", L"\uFFFD"},
        {"\xF0\x9F\x98\xC3\xA9", L"\uFFFD\u00E9"},
        {"\xC0\x80", L"\uFFFD\uFFFD"},  // longer than needed
        {"\xC1\xBF", L"\uFFFD\uFFFD"},
        {"\xE0\x9F\xBF", L"\uFFFD\uFFFD\uFFFD"},
        {"\xF0\x8F\xBF\xBF", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond the last character
        {"\xF5\x80\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xC3\0"s, L"\uFFFD\0"s},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(FromUtf8(row.bytes), row.text) << testing::PrintToString(row.bytes);
    }
}

TEST(Utf8, EncodesAndDecodesEveryUnit) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const std::wstring text{L'<', static_cast<wchar_t>(unit), L'>'};
        ASSERT_EQ(FromUtf8(ToUtf8(text)), text) << unit;
    }
}

}  // namespace
}  // namespace vw
