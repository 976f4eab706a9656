#include <gtest/gtest.h>

#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/Win32FileSystem.h"
#include "tests/support/TempTree.h"

namespace vw {
namespace {

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

TEST_F(FolderInfoTest, MissingFolder_Throws) {
    EXPECT_THROW(files.CopyFolderInfo(tree.Path(L"None"), to, FileSystem::Marks::Replace),
                 RuntimeError);
    EXPECT_THROW(files.CopyFolderInfo(from, tree.Path(L"None"), FileSystem::Marks::Replace),
                 RuntimeError);
}

}  // namespace
}  // namespace vw
