#include "fsutil/NameCase.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/DiskTest.h"

namespace vw::MFileDosShell {
namespace {

using test::FileCall;
using test::OnlyCalls;
using test::OnlyChanges;
using test::ReadTree;
using test::TempTree;

using FolderNameLowerTest = test::DiskTest;
using FileNameLowerTest = test::DiskTest;
using TreeNamesLowerTest = test::DiskTest;

// Names as they are on the disk, with their letter case.
std::vector<std::wstring> Names(const TempTree& tree) {
    std::vector<std::wstring> names;
    for (const auto& [name, node] : ReadTree(tree.Path())) names.push_back(name);
    return names;
}

using NameList = std::vector<std::wstring>;

TEST(LowerCase, ConvertsAllAlphabetsWithoutLanguageRules) {
    EXPECT_EQ(LowerCase(L"ABC«É»ÇΣ"), L"abc«é»çσ");
    EXPECT_EQ(LowerCase(L"TITLE I"), L"title i");
    EXPECT_EQ(LowerCase(L"ملف 1"), L"ملف 1");
    EXPECT_EQ(LowerCase(L"A"), L"a");
    EXPECT_EQ(LowerCase(L""), L"");
}

TEST_F(FolderNameLowerTest, RenamesTheFolderAlone) {
    tree.File(L"OUTER\\Inner\\File.TXT");
    FolderNameLower(world.system, tree.Path(L"OUTER\\Inner\\"));
    EXPECT_EQ(Names(tree), (NameList{L"OUTER", L"OUTER\\inner", L"OUTER\\inner\\File.TXT"}));
    FolderNameLower(world.system, tree.Path(L"OUTER"));
    EXPECT_EQ(Names(tree), (NameList{L"outer", L"outer\\inner", L"outer\\inner\\File.TXT"}));
}

TEST_F(FolderNameLowerTest, RenamesByWayOfTheNameWithAnAtSign) {
    tree.Folder(L"Docs");
    FolderNameLower(world.system, tree.Path(L"Docs"));
    ASSERT_EQ(world.files.Operations().size(), 2U);
    EXPECT_EQ(world.files.Operations()[0].path, tree.Path(L"Docs"));
    EXPECT_EQ(world.files.Operations()[0].to, tree.Path(L"Docs@"));
    EXPECT_EQ(world.files.Operations()[1].path, tree.Path(L"Docs@"));
    EXPECT_EQ(world.files.Operations()[1].to, tree.Path(L"docs"));
}

TEST_F(FolderNameLowerTest, KeepsALowerCaseNameAndADrive) {
    tree.Folder(L"lower");
    FolderNameLower(world.system, tree.Path(L"lower"));
    FolderNameLower(world.system, L"C:\\");
    FolderNameLower(world.system, L"C:");
    FolderNameLower(world.system, L"");
    EXPECT_EQ(world.files.Count(), 0);
}

TEST_F(FolderNameLowerTest, RenameFails_KeepsTheOldName) {
    tree.File(L"Docs\\File");
    for (int n = 1; n <= 2; ++n) {
        world.files.FailNth(n, error_number::kPermissionDenied, OnlyCalls({FileCall::Rename}));
        FolderNameLower(world.system, tree.Path(L"Docs"));
        EXPECT_EQ(Names(tree), (NameList{L"Docs", L"Docs\\File"})) << "failed at rename " << n;
    }
    FolderNameLower(world.system, L"C:\\No Such Folder\\Here");
}

TEST_F(FileNameLowerTest, RenamesTheFileAndUpdatesThePath) {
    std::wstring path = tree.File(L"Docs\\ملف File.TXT", "bytes");
    const std::wstring before = path;
    FileNameLower(world.system, path);
    EXPECT_EQ(path, LowerCase(before));
    EXPECT_EQ(Names(tree), (NameList{L"Docs", L"Docs\\ملف file.txt"}));
    EXPECT_EQ(world.files.Read(path), "bytes");
}

TEST_F(FileNameLowerTest, RenamesByWayOfTheLowerCaseNameWithAnAtSign) {
    std::wstring path = tree.File(L"File.TXT");
    FileNameLower(world.system, path);
    ASSERT_EQ(world.files.Operations().size(), 2U);
    EXPECT_EQ(world.files.Operations()[0].to, tree.Path(L"file.txt@"));
    EXPECT_EQ(world.files.Operations()[1].path, tree.Path(L"file.txt@"));
    EXPECT_EQ(world.files.Operations()[1].to, tree.Path(L"file.txt"));
}

TEST_F(FileNameLowerTest, RenameFails_EarlierRenamesAreUndone) {
    const std::wstring before = tree.File(L"File.TXT", "bytes");
    for (int n = 1; n <= 2; ++n) {
        std::wstring path = before;
        world.files.FailNth(n, error_number::kPermissionDenied, OnlyCalls({FileCall::Rename}));
        FileNameLower(world.system, path);
        EXPECT_EQ(Names(tree), NameList{L"File.TXT"}) << "failed at rename " << n;
        EXPECT_EQ(path, LowerCase(before)) << "in any case";
    }
}

TEST_F(FileNameLowerTest, NameTakenOrFileInUse_KeepsTheFile) {
    std::wstring taken = tree.File(L"One.txt", "1");
    tree.File(L"one.txt@", "other");
    std::wstring used = tree.File(L"Two.txt", "2");
    {
        const FileHandle held = test::OpenAlone(used);
        FileNameLower(world.system, taken);
        FileNameLower(world.system, used);
    }
    EXPECT_EQ(Names(tree), (NameList{L"One.txt", L"Two.txt", L"one.txt@"}));
}

TEST_F(TreeNamesLowerTest, RenamesEveryEntryOfTheTree) {
    tree.File(L"Top\\A.TXT", "a");
    tree.File(L"Top\\b.txt", "b");
    tree.File(L"Top\\SUB\\Deeper\\ÉCOLE ملف.Doc", "c");
    tree.File(L"Top\\lower\\UPPER", "d");
    TreeNamesLower(world.system, tree.Path(L"Top"));
    EXPECT_EQ(Names(tree),
              (NameList{L"top", L"top\\a.txt", L"top\\b.txt", L"top\\lower", L"top\\lower\\upper",
                        L"top\\sub", L"top\\sub\\deeper", L"top\\sub\\deeper\\école ملف.doc"}));
    EXPECT_EQ(test::ReadBytes(tree.Path(L"top\\sub\\deeper\\école ملف.doc")), "c");
    EXPECT_GE(world.pump.Yields(), 7);
}

TEST_F(TreeNamesLowerTest, RenameFails_OtherEntriesAreRenamed) {
    tree.File(L"Top\\One", "1");
    tree.File(L"Top\\Sub\\Two", "2");
    tree.File(L"Top\\Three", "3");
    world.files.FailFrom(1, error_number::kPermissionDenied, [](const auto& operation) {
        return operation.call == FileCall::Rename && operation.path.ends_with(L"Sub");
    });
    TreeNamesLower(world.system, tree.Path(L"Top"));
    EXPECT_EQ(Names(tree),
              (NameList{L"top", L"top\\Sub", L"top\\Sub\\two", L"top\\one", L"top\\three"}));
}

TEST_F(TreeNamesLowerTest, DriveLetterAlone_MeansItsCurrentFolder) {
    tree.File(L"vwtest top\\File");
    const test::CurrentFolder current(tree.Path(L"vwtest top"));
    // Should it leave the folder, nothing may be renamed there.
    world.files.DieAtNth(1, [&](const auto& operation) {
        return operation.call == FileCall::Rename && !operation.path.starts_with(tree.Path());
    });
    TreeNamesLower(world.system, tree.Path().substr(0, 2));
    EXPECT_EQ(Names(tree), (NameList{L"vwtest top", L"vwtest top\\file"}));
}

TEST_F(TreeNamesLowerTest, MissingPath_ChangesNothing) {
    tree.File(L"Docs\\File.TXT");
    const test::CurrentFolder current(tree.Path(L"Docs"));
    TreeNamesLower(world.system, tree.Path(L"Docs\\Missing"));
    TreeNamesLower(world.system, L"");
    EXPECT_EQ(Names(tree), (NameList{L"Docs", L"Docs\\File.TXT"}));
}

TEST_F(TreeNamesLowerTest, KeepsLowerCaseNames) {
    tree.File(L"top\\sub\\file.txt");
    world.files.DieAtNth(1, OnlyChanges());
    TreeNamesLower(world.system, tree.Path(L"top"));
    EXPECT_EQ(world.files.Count(), 0);
}

}  // namespace
}  // namespace vw::MFileDosShell
