#include "list/format/FieldReader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vw {
namespace {

using Fields = std::vector<std::wstring>;

Fields FieldsOf(std::wstring_view text) {
    Fields fields;
    FieldReader reader(text);
    while (!reader.AtEnd()) {
        fields.push_back(reader.Next());
    }
    return fields;
}

struct Row {
    std::wstring text;
    Fields fields;
};

void Check(const Row& row) {
    EXPECT_EQ(FieldsOf(row.text), row.fields) << testing::PrintToString(row.text);
}

TEST(FieldReader, EndsFieldsAtCommasAndLineEnds) {
    const Row rows[] = {
        {L"", {}},
        {L"a", {L"a"}},
        {L"a,b", {L"a", L"b"}},
        {L"a\r\nb\r\n", {L"a", L"b"}},
        {L"a\nb\n", {L"a", L"b"}},
        {L"a\rb\r", {L"a", L"b"}},
        {L"a\r\nb", {L"a", L"b"}},  // no line end behind the last line
        {L"a\n\rb", {L"a", L"", L"b"}},
        {L"a\n\nb", {L"a", L"", L"b"}},
        {L"a,\nb", {L"a", L"", L"b"}},
        {L"BackupTo: C:\\Backup\r\nBackages: 3\r\nC:\\Work\\\r\n",
         {L"BackupTo: C:\\Backup", L"Backages: 3", L"C:\\Work\\"}},
    };
    for (const Row& row : rows) Check(row);
}

TEST(FieldReader, NothingBetweenCommas_IsAnEmptyField) {
    const Row rows[] = {
        {L"a,,b", {L"a", L"", L"b"}},
        {L",a", {L"", L"a"}},
        {L"\r\n", {L""}},
        {L"a\r\n\r\nb", {L"a", L"", L"b"}},
        {L"   ", {L""}},
        {L"a\r\n  ", {L"a", L""}},
        {L"a, ,b", {L"a", L"", L"b"}},
        // A comma has a field behind it as long as the text goes on, a line end being enough.
        {L"a,\r\n", {L"a", L""}},
        {L"a,\r\nb", {L"a", L"", L"b"}},
        {L"a,", {L"a"}},
    };
    for (const Row& row : rows) Check(row);
}

TEST(FieldReader, SkipsBlanksBeforeAFieldOnly) {
    const Row rows[] = {
        {L"  a", {L"a"}},           {L"\ta", {L"a"}},
        {L"a  ", {L"a  "}},         {L"a b ,  c\t\r\n d", {L"a b ", L"c\t", L"d"}},
        {L"\u00A0a", {L"\u00A0a"}},
    };
    for (const Row& row : rows) Check(row);
}

TEST(FieldReader, RemovesQuotesAndKeepsWhatTheyEnclose) {
    const Row rows[] = {
        {L"\"a\"", {L"a"}},
        {L"\"C:\\a,b.txt\"\r\nc", {L"C:\\a,b.txt", L"c"}},
        {L"\"two\r\nlines\",b", {L"two\r\nlines", L"b"}},
        {L"\" a \"", {L" a "}},
        {L"  \"a\"  ,b", {L"a", L"b"}},
        {L"\"\"", {L""}},
        {L"\"\",b", {L"", L"b"}},
        {L"\"a\"rest,b", {L"a", L"b"}},  // what follows the closing quote is dropped
        {L"\"a\" \"b\"\r\nc", {L"a", L"c"}},
        {L"\"a\"\"b\",c", {L"a", L"c"}},  // a doubled quote is no quote
        {L"\"open,\r\nto the end", {L"open,\r\nto the end"}},
        {L"\"", {L""}},
        {L"a\"b\",c", {L"a\"b\"", L"c"}},  // a quote inside a field is an ordinary character
    };
    for (const Row& row : rows) Check(row);
}

TEST(FieldReader, EndsAtCtrlZ) {
    const Row rows[] = {
        {L"a\r\n\x1A", {L"a"}},
        {L"a\x1A"
         L"b,c",
         {L"a"}},
        {L"\x1A", {}},
        {L"\"a\x1A"
         L"b\",c",
         {L"a"}},
        {L"a,\x1A", {L"a"}},
    };
    for (const Row& row : rows) Check(row);
}

TEST(FieldReader, ReadsNulAsAnOrdinaryCharacter) {
    using namespace std::string_literals;
    Check({L"a\0b,\0\r\nc"s, {L"a\0b"s, L"\0"s, L"c"}});
}

TEST(FieldReader, ReadsAPathWithACommaAsTwoFields) {
    Check({L"C:\\Docs\\a, b.txt\r\n", {L"C:\\Docs\\a", L"b.txt"}});
}

TEST(FieldReader, ReadsALineOfAMegabyte) {
    const std::wstring line(1 << 20, L'x');
    Check({line + L"\r\nend", {line, L"end"}});
    EXPECT_EQ(FieldsOf(std::wstring(1 << 20, L',')).size(), 1U << 20);
    EXPECT_EQ(FieldsOf(std::wstring(1 << 20, L'"')).size(), 1U);
}

TEST(FieldReader, ReturnsEmptyFieldsAfterTheEnd) {
    FieldReader reader(L"a");
    EXPECT_FALSE(reader.AtEnd());
    EXPECT_EQ(reader.Next(), L"a");
    EXPECT_TRUE(reader.AtEnd());
    EXPECT_EQ(reader.Next(), L"");
    EXPECT_EQ(reader.Next(), L"");
    EXPECT_TRUE(reader.AtEnd());
}

}  // namespace
}  // namespace vw
