#include "fsutil/Folders.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/support/TempTree.h"
#include "tests/support/TestEnvironment.h"

namespace vw::test {
namespace {

using MFileDosShell::FolderExists;
using MFileDosShell::MakeFolderIfMissing;

class FoldersTest : public testing::Test {
  protected:
    TempTree tree;
    TestEnvironment env;
};

TEST_F(FoldersTest, Exists_FolderAlone) {
    tree.File(L"Docs\\a.txt");
    EXPECT_TRUE(FolderExists(env.files, tree.Path(L"Docs")));
    EXPECT_FALSE(FolderExists(env.files, tree.Path(L"Docs\\a.txt")));
    EXPECT_FALSE(FolderExists(env.files, tree.Path(L"missing")));
}

TEST_F(FoldersTest, Exists_DiskCannotAnswer_IsFalse) {
    env.files.FailNth(1, error_number::kNotReady);
    EXPECT_FALSE(FolderExists(env.files, tree.Path()));
}

TEST_F(FoldersTest, Make_Missing_IsMade) {
    EXPECT_TRUE(MakeFolderIfMissing(env.files, tree.Path(L"Docs")));
    EXPECT_TRUE(Exists(tree.Path(L"Docs")));
}

TEST_F(FoldersTest, Make_ThereAlready_IsLeft) {
    tree.File(L"Docs\\a.txt");
    env.files.DieAtNth(1, OnlyChanges());
    EXPECT_TRUE(MakeFolderIfMissing(env.files, tree.Path(L"Docs")));
}

TEST_F(FoldersTest, Make_FileInTheWay_ReturnsFalse) {
    tree.File(L"Docs");
    EXPECT_FALSE(MakeFolderIfMissing(env.files, tree.Path(L"Docs")));
}

}  // namespace
}  // namespace vw::test
