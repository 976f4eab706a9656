#include <gtest/gtest.h>

#include "fsutil/FileQueries.h"
#include "tests/support/DiskTest.h"

namespace vw::MFileDosShell {
namespace {

using PathExistTest = test::DiskTest;

TEST_F(PathExistTest, ReturnsTrueForFilesAndFoldersInAnySpelling) {
    tree.File(L"Sub\\ملف «1».txt");
    EXPECT_TRUE(PathExist(world.system, tree.Path()));
    EXPECT_TRUE(PathExist(world.system, tree.Path() + L"\\"));
    EXPECT_TRUE(PathExist(world.system, tree.Path(L"Sub")));
    EXPECT_TRUE(PathExist(world.system, tree.Path(L"sub")));
    EXPECT_TRUE(PathExist(world.system, tree.Path(L"Sub\\ملف «1».txt")));
    EXPECT_TRUE(PathExist(world.system, tree.Path(L"Sub//ملف «1».txt")));
    EXPECT_TRUE(PathExist(world.system, tree.Path(L"\\\\Sub\\.\\..\\Sub")));
    EXPECT_TRUE(PathExist(world.system, L"C:\\"));
    EXPECT_TRUE(PathExist(world.system, L"C:"));
}

TEST_F(PathExistTest, ReturnsFalseForMissingPaths) {
    tree.File(L"a.txt");
    EXPECT_FALSE(PathExist(world.system, tree.Path(L"b.txt")));
    EXPECT_FALSE(PathExist(world.system, tree.Path(L"no folder\\a.txt")));
    EXPECT_FALSE(PathExist(world.system, tree.Path(L"a.txt\\below")));
    EXPECT_FALSE(PathExist(world.system, L"Q:\\"));
    EXPECT_FALSE(PathExist(world.system, L"\\\\no-such-server-here\\share\\x"));
    EXPECT_FALSE(PathExist(world.system, L""));
}

TEST_F(PathExistTest, FindsPathsBeyond260Characters) {
    std::wstring relative;
    for (int i = 0; i < 12; ++i) relative += L"مجلد طويل الاسم جدا للتجربة\\";
    const std::wstring file = tree.File(relative + L"f.txt");
    ASSERT_GT(file.size(), 300U);
    EXPECT_TRUE(PathExist(world.system, file));
    EXPECT_TRUE(PathExist(world.system, tree.Path(relative)));
    EXPECT_FALSE(PathExist(world.system, tree.Path(relative + L"g.txt")));
}

TEST_F(PathExistTest, FailingDisk_IsReported) {
    world.files.FailNth(1, error_number::kPermissionDenied);
    EXPECT_FALSE(PathExist(world.system, tree.Path()));
    const test::ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, 70);
    EXPECT_EQ(told.path, tree.Path());
    EXPECT_EQ(told.procedure, L"PathExist");
    EXPECT_EQ(told.kind, L"Module");
    EXPECT_EQ(told.container, L"MFileDosShell");
}

}  // namespace
}  // namespace vw::MFileDosShell
