#include "list/format/ListText.h"

#include <gtest/gtest.h>

#include <vector>

#include "list/format/FieldReader.h"
#include "list/format/ListLine.h"
#include "tests/support/FakeCodePage.h"

namespace vw {
namespace {

using Items = std::vector<std::wstring>;

const test::FakeCodePage western(test::kWestern);
const test::FakeCodePage arabic(test::kArabic);

TEST(ListText, WritesDestinationCountAndItems) {
    EXPECT_EQ(
        EncodeList(L"C:\\Backup", 3, Items{L"C:\\Docs\\report.doc", L"C:\\Projects\\"}, western),
        "BackupTo: C:\\Backup\r\n"
        "Backages: 3\r\n"
        "C:\\Docs\\report.doc\r\n"
        "C:\\Projects\\\r\n");
    EXPECT_EQ(EncodeList(L"", 0, Items{}, western), "BackupTo: \r\nBackages: 0\r\n");
    EXPECT_EQ(EncodeList(L"D:", -32768, Items{}, western), "BackupTo: D:\r\nBackages: -32768\r\n");
}

TEST(ListText, UsesTheCodePageIfItHasEveryLetter) {
    EXPECT_EQ(EncodeList(L"C:\\\u00C9t\u00E9", 3, Items{L"C:\\\u20AC"}, western),
              "BackupTo: C:\\\xC9t\xE9\r\nBackages: 3\r\nC:\\\x80\r\n");
    EXPECT_EQ(EncodeList(L"C:\\x", 3, Items{L"C:\\\u0645\u0644\u0641"}, arabic),
              "BackupTo: C:\\x\r\nBackages: 3\r\nC:\\\xE3\xE1\xDD\r\n");
}

TEST(ListText, UsesUtf8IfALetterWouldBeLost) {
    EXPECT_EQ(EncodeList(L"C:\\\u00E9", 3, Items{L"C:\\\u0645"}, western),
              "\xEF\xBB\xBF"
              "BackupTo: C:\\\xC3\xA9\r\nBackages: 3\r\nC:\\\xD9\x85\r\n");
    EXPECT_EQ(EncodeList(L"C:\\\u0645", 3, Items{}, western),
              "\xEF\xBB\xBF"
              "BackupTo: C:\\\xD9\x85\r\nBackages: 3\r\n");
}

TEST(ListText, ReadsUtf8OnlyAfterItsMark) {
    EXPECT_EQ(DecodeList("\xEF\xBB\xBF"
                         "C:\\\xD9\x85",
                         western),
              L"C:\\\u0645");
    EXPECT_EQ(DecodeList("C:\\\xD9\x85", western), L"C:\\\u00D9\u2026");
    EXPECT_EQ(DecodeList("\xEF\xBB\xBF", western), L"");
    EXPECT_EQ(DecodeList("\xEF\xBB", western), L"\u00EF\u00BB");
    EXPECT_EQ(DecodeList("", western), L"");
    EXPECT_EQ(DecodeList("\xEF\xBB\xBF"
                         "a\xFFz",
                         western),
              L"a\uFFFDz");
}

/// What a reader of the list gets of the bytes.
struct ReadBack {
    std::wstring destination;
    std::wstring copiesCount;
    Items items;
};

ReadBack Read(std::string_view bytes, const AnsiCodec& ansi) {
    const std::wstring text = DecodeList(bytes, ansi);
    FieldReader reader(text);
    ReadBack result;
    while (!reader.AtEnd()) {
        const ListLine line = ReadListLine(reader.Next());
        switch (line.kind) {
            case ListLineKind::Destination:
                result.destination = line.value;
                break;
            case ListLineKind::CopiesCount:
                result.copiesCount = line.value;
                break;
            case ListLineKind::Item:
                result.items.push_back(line.value);
                break;
            case ListLineKind::Empty:
                break;
        }
    }
    return result;
}

TEST(ListText, EncodeThenRead_ReturnsTheSameList) {
    const auto high = static_cast<wchar_t>(0xD83D);
    const auto low = static_cast<wchar_t>(0xDE00);
    const Items items{
        L"C:\\Docs\\*",
        L"C:\\\u00C9t\u00E9\\",
        L"C:\\\u0645\u0644\u0641.txt",
        L"\\\\server\\share\\\u6587\\",
        std::wstring(L"C:\\") + high + low + L".txt",
        std::wstring(L"C:\\half ") + high + L".txt",
    };
    for (const AnsiCodec* const ansi : {&western, &arabic}) {
        for (std::size_t count = 0; count <= items.size(); ++count) {
            const std::span<const std::wstring> some(items.data(), count);
            const ReadBack back = Read(EncodeList(L"E:\\Store", 7, some, *ansi), *ansi);
            EXPECT_EQ(back.destination, L"E:\\Store");
            EXPECT_EQ(back.copiesCount, L"7");
            EXPECT_EQ(back.items, Items(some.begin(), some.end()));
        }
    }
}

TEST(ListText, ReadsAnyBytes) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    EXPECT_EQ(DecodeList(bytes, western).size(), 256U);
    EXPECT_FALSE(DecodeList("\xEF\xBB\xBF" + bytes, western).empty());
}

}  // namespace
}  // namespace vw
