#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"

// The extension of a copy's name is taken from the whole path, so the copies of a folder (or of a
// file without an extension) below a dotted folder are in folders of their own.

namespace vw::test {
namespace {

TEST(NestedCopy, FolderBelowADottedFolder_IsRotated) {
    EngineFixture world;
    world.List({L"Old.Files\\Work\\"}, 3);
    for (int step = 1; step <= 5; ++step) {
        world.tree.File(L"Old.Files\\Work\\a.txt", std::to_string(step), Day(step));
        world.ExpectRun(BackedUp(L"~\\Old.Files\\Work\\", {L"~\\Old.Files\\Work\\a.txt"}));
        world.ExpectRun(NoChange(L"~\\Old.Files\\Work\\"));
    }
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001».Files", kFolder},
                                       {L"Work«0001».Files\\Work", kFolder},
                                       {L"Work«0001».Files\\Work\\a.txt", "5"},
                                       {L"Work«0002».Files", kFolder},
                                       {L"Work«0002».Files\\Work", kFolder},
                                       {L"Work«0002».Files\\Work\\a.txt", "4"},
                                       {L"Work«0003».Files", kFolder},
                                       {L"Work«0003».Files\\Work", kFolder},
                                       {L"Work«0003».Files\\Work\\a.txt", "3"}}));
    EXPECT_EQ(world.Comments(), std::set<std::wstring>{L"Work«0001».Files\\Work.vwc"});
}

TEST(NestedCopy, FileWithoutExtension_KeepsItsLocation) {
    EngineFixture world;
    world.List({L"j.smith\\README", L"j.jones\\README"}, 2);
    for (int step = 1; step <= 3; ++step) {
        world.tree.File(L"j.smith\\README", "s" + std::to_string(step), Day(step));
        world.tree.File(L"j.jones\\README", "j" + std::to_string(step), Day(step));
        world.ExpectRun(BackedUp(L"~\\j.smith\\README") + BackedUp(L"~\\j.jones\\README"));
    }
    EXPECT_EQ(world.Copies(), (Listing{{L"README«0001».smith", kFolder},
                                       {L"README«0001».smith\\README", "s3"},
                                       {L"README«0002».smith", kFolder},
                                       {L"README«0002».smith\\README", "s2"},
                                       {L"README«0001».jones", kFolder},
                                       {L"README«0001».jones\\README", "j3"},
                                       {L"README«0002».jones", kFolder},
                                       {L"README«0002».jones\\README", "j2"}}));
}

TEST(NestedCopy, AnyDepth_IsMadeWithItsFolders) {
    EngineFixture world;
    world.tree.File(L"a.b\\c\\d\\e\\f.txt", "f", Day(1));
    world.List({L"a.b\\c\\d\\e\\"}, 1);
    for (int step = 1; step <= 2; ++step) {
        world.tree.File(L"a.b\\c\\d\\e\\f.txt", std::to_string(step), Day(step));
        EXPECT_EQ(world.Run().exitCode, 0);
    }
    EXPECT_EQ(ReadBytes(world.Store(L"e«0001».b\\c\\d\\e\\f.txt")), "2");
    EXPECT_EQ(world.Copies().size(), 5U);
}

TEST(NestedCopy, DottedFolderItself_IsNotNested) {
    EngineFixture world;
    world.List({L"Old.Files\\", L"Old.Files\\*"});
    for (int step = 1; step <= 2; ++step) {
        world.tree.File(L"Old.Files\\a.txt", std::to_string(step), Day(step));
        world.ExpectRun(BackedUp(L"~\\Old.Files\\", {L"~\\Old.Files\\a.txt"}) +
                        NoChange(L"~\\Old.Files"));
    }
    EXPECT_EQ(world.Copies(), (Listing{{L"Old«0001».Files", kFolder},
                                       {L"Old«0001».Files\\a.txt", "2"},
                                       {L"Old«0002».Files", kFolder},
                                       {L"Old«0002».Files\\a.txt", "1"}}));
}

// Its comment says that nothing has changed, and the folder around it holds something else.
TEST(NestedCopy, CopyWasDeletedByHand_IsMadeAgain) {
    EngineFixture world;
    world.tree.File(L"Old.Files\\Work\\a.txt", "a", Day(1));
    world.List({L"Old.Files\\Work\\"});
    world.Run();
    world.tree.Remove(L"Store\\Work«0001».Files\\Work");
    world.tree.File(L"Store\\Work«0001».Files\\letter.txt", "letter");
    world.Run();
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0001».Files\\Work\\a.txt")), "a");
}

TEST(NestedCopy, SharesItsFolderWithForeignFiles) {
    EngineFixture world;
    // The copies of Old.Files\Work\ are in a folder that is also named like a copy of "Work"
    // with the ending ".Files".
    world.tree.File(L"Old.Files\\Work\\a.txt", "nested", Day(1));
    world.tree.File(L"Store\\Work«0001».Files\\mine.txt", "mine");
    world.List({L"Old.Files\\Work\\"}, 2);
    world.Run();
    world.tree.File(L"Old.Files\\Work\\a.txt", "nested 2", Day(2));
    world.Run();
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001».Files", kFolder},
                                       {L"Work«0001».Files\\mine.txt", "mine"},
                                       {L"Work«0001».Files\\Work", kFolder},
                                       {L"Work«0001».Files\\Work\\a.txt", "nested 2"},
                                       {L"Work«0002».Files", kFolder},
                                       {L"Work«0002».Files\\Work", kFolder},
                                       {L"Work«0002».Files\\Work\\a.txt", "nested"}}));
}

TEST(NestedCopy, Removed_LeavesNoEmptyFolders) {
    EngineFixture world;
    world.tree.File(L"Old.Files\\Work\\a.txt", "1", Day(1));
    world.tree.File(L"Store\\Work«0003».Files\\Work\\a.txt", "3");
    world.tree.File(L"Store\\Work«0005».Files\\Work\\a.txt", "5");
    world.List({L"Old.Files\\Work\\"}, 3);
    world.Run();
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001».Files", kFolder},
                                       {L"Work«0001».Files\\Work", kFolder},
                                       {L"Work«0001».Files\\Work\\a.txt", "1"},
                                       {L"Work«0005».Files", kFolder},
                                       {L"Work«0005».Files\\Work", kFolder},
                                       {L"Work«0005».Files\\Work\\a.txt", "5"}}));
}

TEST(NestedCopy, VanishedItem_IsRotated) {
    EngineFixture world;
    world.tree.File(L"Old.Files\\Work\\a.txt", "1", Day(1));
    world.List({L"Old.Files\\Work\\"}, 2);
    world.Run();
    world.tree.Remove(L"Old.Files");
    world.ExpectRun(
        Missing(L"~\\Old.Files\\Work\\") +
        Lines{L"Backing: ~\\Old.Files\\Work\\", L"! 76 BackupPath ~\\Old.Files\\Work\\"});
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0002».Files\\Work\\a.txt")), "1");
    EXPECT_FALSE(Exists(world.Store(L"Work«0001».Files\\Work")));
}

TEST(NestedCopy, CopyInUse_RotationIsUndone) {
    EngineFixture world;
    world.List({L"j.smith\\README"}, 3);
    for (int step = 1; step <= 2; ++step) {
        world.tree.File(L"j.smith\\README", std::to_string(step), Day(step));
        world.Run();
    }
    const Tree before = ReadTree(world.Store());
    world.tree.File(L"j.smith\\README", "3", Day(3));
    {
        const FileHandle held = HoldInPlace(world.Store(L"README«0001».smith\\README"));
        EXPECT_EQ(world.Run().exitCode, error_number::kPermissionDenied);
    }
    Tree after = ReadTree(world.Store());
    for (const std::wstring& name : LeftOvers(world)) after.erase(name);
    EXPECT_EQ(after, before);
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(ReadBytes(world.Store(L"README«0003».smith\\README")), "1");
}

TEST(NestedCopy, FileInPlaceOfItsFolder_IsReported) {
    EngineFixture world;
    world.tree.File(L"Old.Files\\Work\\a.txt", "1", Day(1));
    world.tree.File(L"Store\\Work«0001».Files", "a file");
    world.List({L"Old.Files\\Work\\"});
    const RunResult result = world.Run();
    ASSERT_EQ(result.errors.size(), 1U) << Joined(result.lines);
    EXPECT_EQ(result.errors[0].path, world.Store(L"Work«0001».Files"));
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0001».Files")), "a file");
    // As soon as the place is free the copy that is ready takes it.
    world.tree.Remove(L"Store\\Work«0001».Files");
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0001».Files\\Work\\a.txt")), "1");
    EXPECT_EQ(world.Copies().size(), 3U);
}

}  // namespace
}  // namespace vw::test
