// Links below an item are no part of it: nothing may be counted, dated, renamed or deleted behind
// them. What they show here are canary folders in the tests' own temporary tree.

#include <gtest/gtest.h>

#include "fsutil/FileQueries.h"
#include "fsutil/NameCase.h"
#include "fsutil/TreeOperations.h"
#include "platform/WindowsHeader.h"
#include "tests/support/DiskTest.h"
#include "tests/support/WineBridge.h"

namespace vw::MFileDosShell {
namespace {

using test::Exists;
using test::FileCall;
using test::ReadTree;
using test::TempTree;
using test::TestEnvironment;
using test::Tree;

constexpr DateParts kOld{2001, 2, 3, 4, 5, 6};
constexpr DateParts kNew{2024, 12, 31, 23, 59, 59};

class NoCopies : public CopyDates {
  public:
    Date PackageDate(std::wstring_view) override {
        ADD_FAILURE() << "no copy was there to ask for";
        return kMissingDate;
    }
};

// Wine refuses to remove a link to a folder, and would remove what it shows when that is empty;
// Windows removes the link. This file system does the latter everywhere.
class RemovingLinks : public test::ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    void RemoveFolder(std::wstring_view path) override {
        const std::wstring name(path);
        const DWORD attributes = GetFileAttributesW(name.c_str());
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
            Inner().RemoveFolder(path);
        } else {
            ++removedLinks;
            test::RemoveLink(path);
        }
    }

    int removedLinks = 0;
};

// Item\own.txt, Item\Link -> Canary, Canary\Sub\Song.MP3, and Loop -> Item inside of the item.
class LinksTest : public test::DiskTest {
  protected:
    void SetUp() override {
        tree.File(L"Item\\own.txt", "own", kOld);
        tree.File(L"Canary\\Sub\\Song.MP3", "canary", kNew);
        if (!tree.Link(L"Item\\Link", L"Canary") || !tree.Link(L"Item\\Loop", L"Item")) {
            GTEST_SKIP() << "this system makes no links";
        }
        canary = ReadTree(tree.Path(L"Canary"));
        ASSERT_EQ(canary.size(), 2U);
        ASSERT_TRUE(world.files.Stat(tree.Path(L"Item\\Link"))->isLink);
        world.files.Heal();
    }

    void TearDown() override {
        if (!canary.empty()) {
            EXPECT_EQ(ReadTree(tree.Path(L"Canary")), canary);
        }
    }

    NoCopies copies;
    Tree canary;
};

TEST_F(LinksTest, SizeAndDate_LinkInTree_IsNotEntered) {
    EXPECT_EQ(PathSize(world.system, tree.Path(L"Item"), true), 3);
    EXPECT_EQ(PathDate(world.system, copies, tree.Path(L"Item")), MakeDate(kOld));
    EXPECT_EQ(CPathSize(world.system, tree.Path(L"Item")), L"3Byte");
}

TEST_F(LinksTest, SizeAndDate_LinkAsItem_IsFollowed) {
    EXPECT_EQ(PathSize(world.system, tree.Path(L"Item\\Link"), true), 6);
    EXPECT_EQ(PathDate(world.system, copies, tree.Path(L"Item\\Link")), MakeDate(kNew));
    EXPECT_EQ(PathDate(world.system, copies, tree.Path(L"Item\\Link\\")), MakeDate(kNew));
    EXPECT_TRUE(PathExist(world.system, tree.Path(L"Item\\Link")));
}

TEST_F(LinksTest, Delete_LinkInTree_KeepsItsTarget) {
    RemovingLinks disk(world.disk);
    System system = world.With(disk);
    DeletePath(system, tree.Path(L"Item"));
    EXPECT_EQ(disk.removedLinks, 2);
    EXPECT_FALSE(Exists(tree.Path(L"Item")));
}

TEST_F(LinksTest, Delete_LinkAsItem_RemovesTheLinkAlone) {
    RemovingLinks disk(world.disk);
    System system = world.With(disk);
    DeletePath(system, tree.Path(L"Item\\Link\\"));
    EXPECT_EQ(disk.removedLinks, 1);
    EXPECT_FALSE(Exists(tree.Path(L"Item\\Link")));
    EXPECT_TRUE(Exists(tree.Path(L"Item\\own.txt")));
}

TEST_F(LinksTest, Delete_LinkCannotBeRemoved_KeepsItsTarget) {
    DeletePath(world.system, tree.Path(L"Item"));
    for (const auto& operation : world.files.Operations()) {
        EXPECT_EQ(operation.path.find(L"Link\\"), std::wstring::npos) << Describe(operation);
        EXPECT_EQ(operation.path.find(L"Loop\\"), std::wstring::npos) << Describe(operation);
    }
    if (Exists(tree.Path(L"Item"))) {
        EXPECT_NE(world.errors.TakeOne().number, 0) << "what stays has to be told";
    }
}

TEST_F(LinksTest, TreeNamesLower_LinkInTree_IsNotEntered) {
    // The name of the link stays, for the same reason as above: Wine would rename the canary. The
    // other link goes: it would show nothing once its folder has another name.
    test::RemoveLink(tree.Path(L"Item\\Loop"));
    tree.File(L"Item\\UPPER.TXT");
    world.files.FailFrom(1, error_number::kPermissionDenied, [](const auto& operation) {
        return operation.call == FileCall::Rename && operation.path.ends_with(L"Link");
    });
    TreeNamesLower(world.system, tree.Path(L"Item"));
    EXPECT_EQ(ReadTree(tree.Path(L"item")).count(L"upper.txt"), 1U);
    EXPECT_EQ(world.files.Faults().size(), 1U);
    EXPECT_EQ(world.pump.Yields(), 3) << "two files and the link";
}

TEST(LinksToFiles, SizeAndDate_AreThoseOfTheTarget) {
    const TempTree tree;
    tree.File(L"Canary\\six", "canary", kNew);
    tree.File(L"Item\\own.txt", "own", kOld);
    if (!tree.Link(L"Item\\shown", L"Canary\\six")) GTEST_SKIP() << "this system makes no links";
    TestEnvironment world;
    NoCopies copies;
    EXPECT_EQ(PathSize(world.system, tree.Path(L"Item"), true), 9);
    EXPECT_EQ(PathSize(world.system, tree.Path(L"Item\\shown")), 6);
    EXPECT_EQ(PathDate(world.system, copies, tree.Path(L"Item")), MakeDate(kNew));
}

}  // namespace
}  // namespace vw::MFileDosShell
