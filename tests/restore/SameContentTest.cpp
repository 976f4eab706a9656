#include "restore/SameContent.h"

#include <gtest/gtest.h>

#include "platform/Win32FileSystem.h"
#include "tests/support/TempTree.h"

namespace vw::test {
namespace {

/// An item and a copy of it, as files or as folders.
class Contents : public testing::Test {
  protected:
    [[nodiscard]] bool Same() { return SameContent(disk_, item, copy); }
    [[nodiscard]] bool Holds() {
        return HasContentOf(disk_, item, copy, [] {});
    }
    void File(std::wstring_view name, std::string_view bytes, int second = 0) const {
        tree.File(name, bytes, {2024, 1, 1, 9, 0, second});
    }

    TempTree tree;
    const std::wstring item = tree.Path(L"Item");
    const std::wstring copy = tree.Path(L"Copy");

  private:
    Win32FileSystem disk_;
};

TEST_F(Contents, Files_EqualLengthAndDate_AreTheSame) {
    File(L"Item", "abc");
    File(L"Copy", "xyz");
    EXPECT_TRUE(Same());
    EXPECT_FALSE(Holds()) << "other bytes";
    File(L"Copy", "abc");
    EXPECT_TRUE(Holds());
}

TEST_F(Contents, Files_OtherLength_Differ) {
    File(L"Item", "abc");
    File(L"Copy", "ab");
    EXPECT_FALSE(Same());
    EXPECT_FALSE(Holds());
}

TEST_F(Contents, Files_DatesTwoSecondsApart_AreTheSame) {
    for (const int second : {10, 12}) {
        File(L"Item", "abc", second);
        File(L"Copy", "abc", 22 - second);
        EXPECT_TRUE(Same()) << second;
        EXPECT_TRUE(Holds()) << second;
    }
}

TEST_F(Contents, Files_DatesThreeSecondsApart_Differ) {
    for (const int second : {10, 13}) {
        File(L"Item", "abc", second);
        File(L"Copy", "abc", 23 - second);
        EXPECT_FALSE(Same()) << second;
        EXPECT_FALSE(Holds()) << second;
    }
}

TEST_F(Contents, FileAndFolder_Differ) {
    File(L"Item", "");
    tree.Folder(L"Copy");
    EXPECT_FALSE(Same());
    EXPECT_FALSE(Holds());
}

TEST_F(Contents, OneIsMissing_Differ) {
    File(L"Item", "abc");
    EXPECT_FALSE(Same());
    EXPECT_FALSE(Holds());
    tree.Remove(L"Item");
    File(L"Copy", "abc");
    EXPECT_FALSE(Same());
    EXPECT_FALSE(Holds());
}

TEST_F(Contents, Folders_ComparedAtEveryLevel) {
    for (const auto* root : {L"Item", L"Copy"}) {
        File(std::wstring(root) + L"\\a.txt", "a");
        File(std::wstring(root) + L"\\Sub\\b.txt", "b");
        tree.Folder(std::wstring(root) + L"\\Empty");
    }
    EXPECT_TRUE(Same());
    EXPECT_TRUE(Holds());
    File(L"Copy\\Sub\\b.txt", "longer");
    EXPECT_FALSE(Same());
    EXPECT_FALSE(Holds());
}

TEST_F(Contents, FolderCopyWithMore_HoldsAllButIsNotTheSame) {
    File(L"Item\\Sub\\a.txt", "a");
    File(L"Copy\\Sub\\a.txt", "a");
    File(L"Copy\\Sub\\b.txt", "b");
    EXPECT_FALSE(Same());
    EXPECT_TRUE(Holds());
}

TEST_F(Contents, FolderCopyWithLess_Differs) {
    File(L"Item\\a.txt", "a");
    File(L"Item\\b.txt", "b");
    File(L"Copy\\b.txt", "b");
    EXPECT_FALSE(Same());
    EXPECT_FALSE(Holds());
}

TEST_F(Contents, FolderCopyWithOtherNames_Differs) {
    File(L"Item\\a.txt", "a");
    File(L"Copy\\b.txt", "a");
    EXPECT_FALSE(Same());
    EXPECT_FALSE(Holds());
}

TEST_F(Contents, FolderWhereTheItemHasAFile_Differs) {
    File(L"Item\\a", "");
    tree.Folder(L"Copy\\a");
    EXPECT_FALSE(Same());
    EXPECT_FALSE(Holds());
}

TEST_F(Contents, FileWhereTheItemHasAFolder_Differs) {
    tree.Folder(L"Item\\a");
    File(L"Copy\\a", "");
    EXPECT_FALSE(Same());
    EXPECT_FALSE(Holds());
}

TEST_F(Contents, EntriesOfTheProgram_DoNotCount) {
    File(L"Item\\a.txt", "a");
    File(L"Copy\\a.txt", "a");
    File(L"Item\\Vaultwright.vwlock", "1");
    EXPECT_TRUE(Same());
}

TEST_F(Contents, LinksToFolders_DoNotCount) {
    File(L"Item\\a.txt", "a");
    File(L"Copy\\a.txt", "a");
    if (!tree.Link(L"Item\\Way", tree.Folder(L"Elsewhere"))) GTEST_SKIP() << "no links here";
    EXPECT_TRUE(Same());
}

}  // namespace
}  // namespace vw::test
