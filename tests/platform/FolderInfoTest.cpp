#include <gtest/gtest.h>

#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/Win32FileSystem.h"
#include "tests/support/ErrorNumber.h"
#include "tests/support/ImportHook.h"
#include "tests/support/TempTree.h"

namespace vw {
namespace {

using test::NumberOf;

constexpr DWORD kMarks = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_READONLY;

class FolderInfoTest : public testing::Test {
  protected:
    [[nodiscard]] DWORD MarksOf(const std::wstring& name) const {
        return GetFileAttributesW(tree.Path(name).c_str()) & kMarks;
    }

    /// Whether this disk keeps a mark of a folder at all.
    [[nodiscard]] bool Keeps(DWORD mark) const {
        tree.Folder(L"Probe");
        tree.SetAttributes(L"Probe", mark);
        const bool keeps = (MarksOf(L"Probe") & mark) != 0;
        tree.SetAttributes(L"Probe", mark, false);
        return keeps;
    }

    test::TempTree tree;
    Win32FileSystem files;
    const std::wstring from = tree.Folder(L"From");
    const std::wstring to = tree.Folder(L"To");
};

TEST_F(FolderInfoTest, Dates_AreThoseOfTheOtherFolder) {
    const DateParts date{2011, 3, 4, 5, 6, 7};
    tree.SetDate(L"From", date);
    files.CopyFolderInfo(from, to, FileSystem::Marks::Replace);
    EXPECT_EQ(test::ReadDate(to), MakeDate(date));
    EXPECT_EQ(files.Stat(to)->lastWrite, files.Stat(from)->lastWrite);
}

TEST_F(FolderInfoTest, Marks_AreThoseOfTheOtherFolder) {
    int kept = 0;
    for (const DWORD mark :
         {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM, FILE_ATTRIBUTE_READONLY}) {
        if (!Keeps(mark)) continue;
        ++kept;
        tree.SetAttributes(L"From", mark);
        files.CopyFolderInfo(from, to, FileSystem::Marks::Replace);
        EXPECT_EQ(MarksOf(L"To"), mark);
        tree.SetAttributes(L"From", mark, false);
        files.CopyFolderInfo(from, to, FileSystem::Marks::Replace);
        EXPECT_EQ(MarksOf(L"To"), 0U);
    }
    if (kept == 0) GTEST_SKIP() << "this disk keeps no marks of folders";
}

TEST_F(FolderInfoTest, MarksThatAreKept_AreJoined) {
    if (!Keeps(FILE_ATTRIBUTE_HIDDEN)) GTEST_SKIP() << "this disk keeps no marks of folders";
    tree.SetAttributes(L"To", FILE_ATTRIBUTE_HIDDEN);
    files.CopyFolderInfo(from, to, FileSystem::Marks::Keep);
    EXPECT_EQ(MarksOf(L"To"), DWORD{FILE_ATTRIBUTE_HIDDEN});
}

/// What a folder was to be given.
FILE_BASIC_INFO given{};
BOOL WINAPI NoteInfo(HANDLE, FILE_INFO_BY_HANDLE_CLASS, LPVOID info, DWORD) {
    given = *static_cast<const FILE_BASIC_INFO*>(info);
    return TRUE;
}

// Not every disk of a test keeps the date of creation.
TEST_F(FolderInfoTest, DateOfCreation_IsThatOfTheOtherFolder) {
    FILE_BASIC_INFO source{};
    {
        const FileHandle folder(CreateFileW(from.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ,
                                            nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                            nullptr));
        ASSERT_NE(GetFileInformationByHandleEx(folder.Get(), FileBasicInfo, &source, sizeof source),
                  FALSE);
    }
    // Such a mark of the folder for temporary files would be kept.
    tree.SetAttributes(L"To", FILE_ATTRIBUTE_NOT_CONTENT_INDEXED, false);
    const test::ImportHook note("SetFileInformationByHandle", &NoteInfo);
    files.CopyFolderInfo(from, to, FileSystem::Marks::Replace);
    EXPECT_EQ(given.CreationTime.QuadPart, source.CreationTime.QuadPart);
    EXPECT_EQ(given.LastWriteTime.QuadPart, source.LastWriteTime.QuadPart);
    EXPECT_EQ(given.LastAccessTime.QuadPart, 0);
    EXPECT_EQ(given.FileAttributes, DWORD{FILE_ATTRIBUTE_NORMAL});
}

BOOL WINAPI RefuseInfo(HANDLE, FILE_INFO_BY_HANDLE_CLASS, LPVOID, DWORD) {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

TEST_F(FolderInfoTest, SystemRefuses_ThrowsWithTheNewFolder) {
    const test::ImportHook refuse("SetFileInformationByHandle", &RefuseInfo);
    const RuntimeError error =
        test::ErrorOf([&] { files.CopyFolderInfo(from, to, FileSystem::Marks::Replace); });
    EXPECT_EQ(error.Path(), to);
}

TEST_F(FolderInfoTest, MissingFolder_Throws) {
    const std::wstring none = tree.Path(L"None");
    EXPECT_EQ(NumberOf([&] { files.CopyFolderInfo(none, to, FileSystem::Marks::Replace); }),
              error_number::kFileNotFound);
    EXPECT_EQ(NumberOf([&] { files.CopyFolderInfo(from, none, FileSystem::Marks::Replace); }),
              error_number::kFileNotFound);
}

BOOL WINAPI AnswerNoInfo(HANDLE, FILE_INFO_BY_HANDLE_CLASS, LPVOID, DWORD) {
    SetLastError(ERROR_CRC);
    return FALSE;
}

TEST_F(FolderInfoTest, SystemKnowsNothing_Throws) {
    const test::ImportHook answer("GetFileInformationByHandleEx", &AnswerNoInfo);
    EXPECT_EQ(NumberOf([&] { files.CopyFolderInfo(from, to, FileSystem::Marks::Replace); }),
              error_number::kDeviceError);
}

}  // namespace
}  // namespace vw
