#include "platform/SystemPath.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/ImportHook.h"

namespace vw {
namespace {

using test::NumberOf;

struct PathRow {
    std::wstring_view typed;
    std::wstring_view absolute;
    std::wstring_view system;
};

TEST(SystemPathTest, TypedPath_BecomesAbsoluteWithoutLengthLimit) {
    const std::vector<PathRow> rows = {
        {L"C:\\", L"C:\\", L"\\\\?\\C:\\"},
        {L"C:\\a.txt", L"C:\\a.txt", L"\\\\?\\C:\\a.txt"},
        {L"C:\\a\\", L"C:\\a", L"\\\\?\\C:\\a"},
        {L"C:/a/b.txt", L"C:\\a\\b.txt", L"\\\\?\\C:\\a\\b.txt"},
        {L"D:\\\\Name\u00AB0001\u00BB.doc", L"D:\\Name\u00AB0001\u00BB.doc",
         L"\\\\?\\D:\\Name\u00AB0001\u00BB.doc"},
        {L"C:\\a\\.\\b\\..\\c", L"C:\\a\\c", L"\\\\?\\C:\\a\\c"},
        {L"C:\\..\\..\\a", L"C:\\a", L"\\\\?\\C:\\a"},
        {L"C:\\a. \\b ", L"C:\\a. \\b ", L"\\\\?\\C:\\a. \\b "},
        {L"\\\\server\\share", L"\\\\server\\share", L"\\\\?\\UNC\\server\\share"},
        {L"\\\\server\\share\\", L"\\\\server\\share", L"\\\\?\\UNC\\server\\share"},
        {L"\\\\server\\share\\a\\\\b\\", L"\\\\server\\share\\a\\b",
         L"\\\\?\\UNC\\server\\share\\a\\b"},
        {L"\\\\server\\share\\..\\..\\a", L"\\\\server\\share\\a", L"\\\\?\\UNC\\server\\share\\a"},
        {L"\\\\?\\C:\\a\\..", L"\\\\?\\C:\\a\\..", L"\\\\?\\C:\\a\\.."},
    };
    for (const PathRow& row : rows) {
        EXPECT_EQ(AbsolutePath(row.typed), row.absolute);
        EXPECT_EQ(SystemPath(row.typed), row.system);
    }
}

TEST(SystemPathTest, RelativePaths_FolderNamed_AreCompletedWithIt) {
    CompleteRelativePathsIn(L"Q:\\Lists\\of mine");
    EXPECT_EQ(AbsolutePath(L"x\\y.txt"), L"Q:\\Lists\\of mine\\x\\y.txt");
    EXPECT_EQ(AbsolutePath(L"..\\y.txt"), L"Q:\\Lists\\y.txt");
    EXPECT_EQ(AbsolutePath(L"\\y.txt"), L"Q:\\y.txt");
    EXPECT_EQ(AbsolutePath(L"q:y.txt"), L"Q:\\Lists\\of mine\\y.txt");
    EXPECT_EQ(AbsolutePath(L"q:"), L"Q:\\Lists\\of mine");
    EXPECT_EQ(AbsolutePath(L"C:\\y.txt"), L"C:\\y.txt");
    EXPECT_EQ(AbsolutePath(L"q:/y.txt"), L"q:\\y.txt");
    EXPECT_THROW(static_cast<void>(AbsolutePath(L"NUL")), RuntimeError);
    CompleteRelativePathsIn(L"\\\\server\\share\\Lists");
    EXPECT_EQ(AbsolutePath(L"y.txt"), L"\\\\server\\share\\Lists\\y.txt");
    CompleteRelativePathsIn({});
}

TEST(SystemPathTest, RelativePath_IsCompletedWithTheCurrentFolder) {
    std::wstring current(GetCurrentDirectoryW(0, nullptr), L'\0');
    GetCurrentDirectoryW(static_cast<DWORD>(current.size()), current.data());
    current.pop_back();
    if (current.back() != L'\\') current += L'\\';
    EXPECT_EQ(AbsolutePath(L"x\\y.txt"), current + L"x\\y.txt");
    EXPECT_EQ(AbsolutePath(current.substr(0, 2) + L"z"), current + L"z");
}

DWORD WINAPI CompleteNothing(LPCWSTR, DWORD, LPWSTR, LPWSTR*) {
    SetLastError(ERROR_NOT_READY);
    return 0;
}

TEST(SystemPathTest, RelativePath_SystemCannotComplete_Throws) {
    const test::ImportHook complete("GetFullPathNameW", &CompleteNothing);
    EXPECT_EQ(NumberOf([] { return AbsolutePath(L"x"); }), error_number::kNotReady);
}

TEST(SystemPathTest, DriveLetterAlone_MeansItsCurrentFolder) {
    const std::wstring drive = AbsolutePath(L"C:");
    EXPECT_TRUE(drive.starts_with(L"C:\\")) << drive.size();
}

TEST(SystemPathTest, PathThatNamesNoFile_ThrowsBadName) {
    for (const std::wstring_view path :
         {std::wstring_view(), std::wstring_view(L"C:\\a\0b", 6), std::wstring_view(L"NUL"),
          std::wstring_view(L"\\\\.\\C:")}) {
        EXPECT_EQ(NumberOf([&] { return SystemPath(path); }), error_number::kBadName)
            << path.size() << " characters";
    }
}

TEST(SystemPathTest, NamesDevice_DevicesOnly_ReturnsTrue) {
    for (const wchar_t* device : {L"NUL", L"COM1", L"\\\\.\\C:", L"//./C:", L"\\\\./C:"}) {
        EXPECT_TRUE(NamesDevice(device));
    }
    for (const wchar_t* other :
         {L"", L"C:\\a", L"C:/a", L"C:\\a\\nul", L"a.txt", L"\\\\?\\C:\\a", L"\\\\server\\share"}) {
        EXPECT_FALSE(NamesDevice(other));
    }
}

TEST(SystemPathTest, PathTooLongForTheSystem_ThrowsBadName) {
    const std::wstring longest = L"C:\\" + std::wstring(32'000, L'x');
    EXPECT_EQ(SystemPath(longest), L"\\\\?\\" + longest);
    // Windows takes 32,767 units, the final zero among them.
    EXPECT_EQ(SystemPath(L"C:\\" + std::wstring(32'759, L'x')).size(), 32'766U);
    EXPECT_THROW(static_cast<void>(SystemPath(L"C:\\" + std::wstring(32'760, L'x'))), RuntimeError);
    for (const std::size_t length : {32'770U, 65'536U, 1U << 20}) {
        for (const wchar_t* const root : {L"C:\\", L"\\\\server\\share\\", L"\\\\?\\C:\\"}) {
            EXPECT_EQ(NumberOf([&] { return SystemPath(root + std::wstring(length, L'x')); }), 52)
                << length << " characters";
        }
    }
}

TEST(SystemPathTest, PathContains_ComparesWholeComponentsIgnoringCase) {
    EXPECT_TRUE(PathContains(L"E:\\Store", L"e:\\STORE"));
    EXPECT_TRUE(PathContains(L"E:\\Store\\", L"E:\\store\\a.txt"));
    EXPECT_TRUE(PathContains(L"E:\\", L"E:\\Store"));
    EXPECT_TRUE(PathContains(L"E:\\Sto[re", L"E:\\x\\..\\sto[re\\a"));
    EXPECT_FALSE(PathContains(L"E:\\Store", L"E:\\Store2\\a.txt"));
    EXPECT_FALSE(PathContains(L"E:\\Store\\a", L"E:\\Store"));
    EXPECT_TRUE(PathContains(L"\\\\s\\share", L"\\\\S\\Share\\x"));
}

TEST(SystemPathTest, WithoutLongPrefix_OtherPaths_StayAsTheyAre) {
    for (const wchar_t* path :
         {L"abcdC:\\x", L"C:\\x", L"\\\\?\\Volume{1}\\x", L"\\\\?\\1:\\x", L"ab", L""}) {
        EXPECT_EQ(WithoutLongPrefix(path), path);
    }
    for (const wchar_t* path : {L"A:\\x", L"C:\\x", L"Z:\\x", L"a:\\x", L"z:\\x"}) {
        EXPECT_EQ(WithoutLongPrefix(std::wstring(L"\\\\?\\") + path), path);
    }
}

TEST(SystemPathTest, PathContains_PrefixOfLongPaths_IsTheSamePlace) {
    EXPECT_TRUE(PathContains(L"\\\\?\\E:\\Store\\", L"E:\\Store"));
    EXPECT_TRUE(PathContains(L"E:\\Store", L"\\\\?\\e:\\store\\"));
    EXPECT_TRUE(PathContains(L"\\\\?\\E:\\", L"E:\\Store"));
    EXPECT_TRUE(PathContains(L"\\\\s\\share", L"\\\\?\\UNC\\S\\Share\\x"));
    EXPECT_FALSE(PathContains(L"\\\\?\\E:\\Store", L"E:\\Store2"));
    EXPECT_FALSE(PathContains(L"E:\\", L"\\\\?\\Volume{1}\\Store"));
    EXPECT_TRUE(PathContains(L"\\\\?\\Volume{1}\\Store", L"\\\\?\\Volume{1}\\Store\\"));
    EXPECT_TRUE(PathContains(L"\\\\?\\Volume{1}\\Store\\", L"\\\\?\\Volume{1}\\Store"));
}

}  // namespace
}  // namespace vw
