#include "fsutil/PathText.h"

#include <gtest/gtest.h>

namespace vw::MFileDosShell {
namespace {

struct Row {
    std::wstring_view path;
    std::wstring_view result;
};

TEST(PathText, CFileName_ReturnsTheLastComponent) {
    const Row rows[] = {
        {L"C:\\A\\B\\", L"B"},
        {L"C:\\A\\B", L"B"},
        {L"C:\\A\\f.txt", L"f.txt"},
        {L"C:\\", L"C:"},
        {L"C:", L"C:"},
        {L"name", L"name"},
        {L"name\\", L"name"},
        {L"C:\\A\\\\", L""},  // a single final separator goes
        {L"\\", L""},
        {L"", L""},
        {L"\\\\server\\share\\x", L"x"},
        {L"C:\\A\\*", L"*"},
        {L"C:/A/B", L"C:/A/B"},
        {L"C:\\\u0645\u0644\u0641\\", L"\u0645\u0644\u0641"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CFileName(row.path), row.result) << testing::PrintToString(row.path);
    }
}

TEST(PathText, CFileLocation_ReturnsTheParentFolder) {
    const Row rows[] = {
        {L"C:\\A\\f.txt", L"C:\\A"},
        {L"C:\\A\\B\\", L"C:\\A"},
        {L"C:\\A\\B", L"C:\\A"},
        {L"C:\\f.txt", L"C:"},
        {L"C:\\", L""},
        {L"C:", L""},
        {L"name", L""},
        {L"name\\", L""},
        {L"\\name", L""},
        {L"", L""},
        {L"C:\\A\\\\", L"C:\\A"},
        {L"C:\\A\\*", L"C:\\A"},
        {L"\\\\server\\share", L"\\\\server"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CFileLocation(row.path), row.result) << testing::PrintToString(row.path);
    }
}

TEST(PathText, CFileExt_BeginsAtTheLastDotOfTheWholePath) {
    const Row rows[] = {
        {L"C:\\A\\f.txt", L".txt"},
        {L"C:\\A\\f.tar.gz", L".gz"},
        {L"C:\\A\\f", L""},
        {L"C:\\My.Dir\\Sub", L".Dir\\Sub"},
        {L"C:\\Docs.old\\", L".old\\"},
        {L"C:\\Data.bak\\Report", L".bak\\Report"},
        {L"C:\\A\\f.", L"."},
        {L".profile", L".profile"},
        {L"", L""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CFileExt(row.path), row.result) << testing::PrintToString(row.path);
    }
}

TEST(PathText, CFileFirstName_ReturnsTheNameWithoutExtension) {
    const Row rows[] = {
        {L"C:\\A\\f.tar.gz", L"f.tar"},
        {L"C:\\A\\B\\", L"B"},
        {L"C:\\A\\f", L"f"},
        {L"C:\\Data.bak\\Report", L"Report"},
        {L"C:\\Docs.old\\", L"Docs"},
        {L"C:\\A\\.profile", L""},
        {L"C:\\A\\f.", L"f"},
        {L"C:\\", L"C:"},
        {L"", L""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(CFileFirstName(row.path), row.result) << testing::PrintToString(row.path);
    }
}

TEST(PathText, QuoteRmove_RemovesBothQuotes) {
    const Row rows[] = {
        {L"\"C:\\a b\"", L"C:\\a b"},
        {L"\"\"", L"\"\""},  // exactly two quotes stay
        {L"\"a\"", L"a"},
        {L"\"\"\"", L"\""},
        {L"\"a", L"\"a"},
        {L"a\"", L"a\""},
        {L"a", L"a"},
        {L"\"", L"\""},
        {L"", L""},
        {L"\"\"a\"\"", L"\"a\""},
    };
    for (const Row& row : rows) {
        std::wstring text(row.path);
        const std::wstring& result = QuoteRmove(text);
        EXPECT_EQ(text, row.result) << testing::PrintToString(row.path);
        EXPECT_EQ(&result, &text);
    }
}

TEST(PathText, Quote_ChecksTheFirstCharacterOnly) {
    const Row rows[] = {
        {L"C:\\a b", L"\"C:\\a b\""},
        {L"\"C:\\a b\"", L"\"C:\\a b\""},
        {L"\"a", L"\"a"},
        {L"a\"", L"\"a\"\""},  // ends with a quote but does not begin with one
        {L"", L"\"\""},
        {L"\"", L"\""},
    };
    for (const Row& row : rows) {
        std::wstring text(row.path);
        const std::wstring& result = Quote(text);
        EXPECT_EQ(text, row.result) << testing::PrintToString(row.path);
        EXPECT_EQ(&result, &text);
    }
}

TEST(PathText, WithSeparator_EndsWithOneSeparator) {
    EXPECT_EQ(WithSeparator(L"C:\\A"), L"C:\\A\\");
    EXPECT_EQ(WithSeparator(L"C:\\A\\"), L"C:\\A\\");
    EXPECT_EQ(WithSeparator(L"C:\\"), L"C:\\");
}

TEST(PathText, JoinPath_PutsOneSeparatorBetween) {
    EXPECT_EQ(JoinPath(L"C:\\A", L"f"), L"C:\\A\\f");
    EXPECT_EQ(JoinPath(L"C:\\", L"f"), L"C:\\f");
    EXPECT_EQ(JoinPath(L"C:/A/", L"f"), L"C:/A/f");
}

TEST(PathText, DestinationFolder_OfADrive_IsItsRoot) {
    const Row rows[] = {{L"C:", L"C:\\"},       {L"C:\\", L"C:\\"}, {L"C:\\A", L"C:\\A"},
                        {L"CD", L"CD"},         {L"abc:", L"abc:"}, {L":", L":"},
                        {L"C:\\A:", L"C:\\A:"}, {L"abc", L"abc"},   {L"", L""}};
    for (const Row& row : rows) EXPECT_EQ(DestinationFolder(row.path), row.result);
}

}  // namespace
}  // namespace vw::MFileDosShell
