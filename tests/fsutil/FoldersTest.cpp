#include "fsutil/Folders.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/support/DiskTest.h"

namespace vw::test {
namespace {

using MFileDosShell::FolderExists;
using MFileDosShell::MakeFolderIfMissing;

using FoldersTest = DiskTest;

TEST_F(FoldersTest, Exists_FolderAlone) {
    tree.File(L"Docs\\a.txt");
    EXPECT_TRUE(FolderExists(world.files, tree.Path(L"Docs")));
    EXPECT_FALSE(FolderExists(world.files, tree.Path(L"Docs\\a.txt")));
    EXPECT_FALSE(FolderExists(world.files, tree.Path(L"missing")));
}

TEST_F(FoldersTest, Exists_DiskCannotAnswer_IsFalse) {
    world.files.FailNth(1, error_number::kNotReady);
    EXPECT_FALSE(FolderExists(world.files, tree.Path()));
}

TEST_F(FoldersTest, Make_Missing_IsMade) {
    EXPECT_TRUE(MakeFolderIfMissing(world.files, tree.Path(L"Docs")));
    EXPECT_TRUE(Exists(tree.Path(L"Docs")));
}

TEST_F(FoldersTest, Make_ThereAlready_IsLeft) {
    tree.File(L"Docs\\a.txt");
    world.files.DieAtNth(1, OnlyChanges());
    EXPECT_TRUE(MakeFolderIfMissing(world.files, tree.Path(L"Docs")));
}

TEST_F(FoldersTest, Make_FileInTheWay_ReturnsFalse) {
    tree.File(L"Docs");
    EXPECT_FALSE(MakeFolderIfMissing(world.files, tree.Path(L"Docs")));
}

}  // namespace
}  // namespace vw::test
