#include <gtest/gtest.h>

#include "fsutil/FileQueries.h"
#include "platform/WindowsHeader.h"
#include "tests/support/DiskTest.h"

namespace vw::MFileDosShell {
namespace {

using test::Exists;
using test::FileCall;
using test::OnlyCalls;
using test::OnlyChanges;
using test::ReadTree;
using test::ToldError;

using DeletePathTest = test::DiskTest;

TEST_F(DeletePathTest, DeletesAFile) {
    tree.File(L"gone.txt");
    tree.File(L"stays.txt");
    DeletePath(world.system, tree.Path(L"gone.txt"));
    EXPECT_FALSE(Exists(tree.Path(L"gone.txt")));
    EXPECT_TRUE(Exists(tree.Path(L"stays.txt")));
}

TEST_F(DeletePathTest, DeletesAFolderWithAllItsContents) {
    tree.File(L"Top\\a.txt");
    tree.File(L"Top\\Sub\\مجلد\\ملف.txt");
    tree.Folder(L"Top\\empty");
    tree.File(L"Top2\\stays.txt");
    DeletePath(world.system, tree.Path(L"Top\\"));
    EXPECT_FALSE(Exists(tree.Path(L"Top")));
    EXPECT_TRUE(Exists(tree.Path(L"Top2\\stays.txt")));
    EXPECT_GE(world.pump.Yields(), 5) << "the window has to live meanwhile";
}

TEST_F(DeletePathTest, MissingPath_ChangesNothing) {
    tree.File(L"stays.txt");
    DeletePath(world.system, tree.Path(L"missing"));
    DeletePath(world.system, tree.Path(L"missing\\below"));
    DeletePath(world.system, tree.Path(L"*"));
    DeletePath(world.system, L"");
    EXPECT_TRUE(Exists(tree.Path(L"stays.txt")));
}

TEST_F(DeletePathTest, DeletesReadOnlyHiddenAndSystemItems) {
    constexpr DWORD kAll = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    tree.File(L"Top\\Sub\\a.txt");
    tree.SetAttributes(L"Top\\Sub\\a.txt", kAll);
    tree.SetAttributes(L"Top\\Sub", kAll);
    tree.SetAttributes(L"Top", FILE_ATTRIBUTE_READONLY);
    tree.File(L"b.txt");
    tree.SetAttributes(L"b.txt", kAll);
    DeletePath(world.system, tree.Path(L"Top"));
    DeletePath(world.system, tree.Path(L"b.txt"));
    EXPECT_TRUE(ReadTree(tree.Path()).empty());
}

TEST_F(DeletePathTest, FileInUse_IsReportedAndKept) {
    const std::wstring file = tree.File(L"Top\\Sub\\locked.txt");
    const FileHandle held = test::OpenAlone(file);
    DeletePath(world.system, tree.Path(L"Top"));
    const ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, error_number::kPermissionDenied);
    EXPECT_EQ(told.path, file);
    EXPECT_EQ(told.procedure, L"DeletePath");
    EXPECT_TRUE(Exists(file));
}

TEST_F(DeletePathTest, StopsAtTheFirstFailure) {
    for (const wchar_t* name : {L"a", L"b", L"c", L"d"}) tree.File(std::wstring(L"Top\\") + name);
    world.files.FailNth(2, error_number::kPermissionDenied, OnlyChanges());
    DeletePath(world.system, tree.Path(L"Top"));
    EXPECT_EQ(world.errors.TakeOne().path, world.files.Faults()[0].path);
    EXPECT_EQ(world.files.Count(), 2);
    EXPECT_EQ(ReadTree(tree.Path(L"Top")).size(), 3U);
}

TEST_F(DeletePathTest, DeletionHasNoEffect_IsReported) {
    const std::wstring file = tree.File(L"a.txt");
    const std::wstring folder = tree.Folder(L"Top");
    world.files.IgnoreNth(1, OnlyCalls({FileCall::RemoveFile}));
    DeletePath(world.system, file);
    ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, error_number::kPermissionDenied);
    EXPECT_EQ(told.path, file);

    world.files.IgnoreNth(1, OnlyCalls({FileCall::RemoveFolder}));
    DeletePath(world.system, folder);
    told = world.errors.TakeOne();
    EXPECT_EQ(told.number, error_number::kPermissionDenied);
    EXPECT_EQ(told.path, folder);
}

TEST_F(DeletePathTest, FileOnlySeemsDeleted_FolderIsReported) {
    tree.File(L"Top\\a.txt");
    world.files.IgnoreNth(1, OnlyCalls({FileCall::RemoveFile}));
    DeletePath(world.system, tree.Path(L"Top"));
    const ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, error_number::kAccessError);
    EXPECT_EQ(told.path, tree.Path(L"Top"));
}

TEST_F(DeletePathTest, UnreadableFolder_IsReported) {
    tree.File(L"Top\\Sub\\a.txt");
    world.files.FailNth(2, error_number::kPermissionDenied, OnlyCalls({FileCall::List}));
    DeletePath(world.system, tree.Path(L"Top"));
    EXPECT_EQ(world.errors.TakeOne().path, tree.Path(L"Top\\Sub"));
    EXPECT_TRUE(Exists(tree.Path(L"Top\\Sub\\a.txt")));
}

TEST_F(DeletePathTest, RefusesTheRootOfADrive) {
    for (const wchar_t* root : {L"C:\\", L"C:/", L"C:\\\\", L"C:\\windows\\..", L"\\\\?\\C:\\"}) {
        // Should the guard fail, nothing may really be deleted.
        world.files.DieAtNth(1, OnlyChanges());
        DeletePath(world.system, root);
        EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
        EXPECT_EQ(world.files.Count(), 0);
    }
}

TEST_F(DeletePathTest, DeletesPathsBeyond260Characters) {
    std::wstring relative = L"Top";
    for (int i = 0; i < 60; ++i) relative += L"\\a rather long folder";
    const std::wstring file = tree.File(relative + L"\\f.txt");
    ASSERT_GT(file.size(), 1200U);
    DeletePath(world.system, tree.Path(L"Top"));
    EXPECT_FALSE(Exists(tree.Path(L"Top")));
}

}  // namespace
}  // namespace vw::MFileDosShell
