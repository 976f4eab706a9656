// Items whose copies would have each other's names: one goes on, the other is refused.

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/support/DestinationChecker.h"
#include "tests/support/YieldWatch.h"

namespace vw::test {
namespace {

class Collision : public testing::Test {
  protected:
    void MakeSources(int step) {
        world_.tree.File(L"Data.old\\y.txt", "y" + std::to_string(step), Day(step));
        world_.tree.File(L"Data.old\\Data\\x.txt", "x" + std::to_string(step), Day(step));
        world_.tree.File(L"Work.old\\Data\\z.txt", "z" + std::to_string(step), Day(step));
        for (const std::wstring& item : {kOuter, kInner}) checker_.Learn(world_.Path(item));
    }

    const std::wstring kOuter = L"Data.old\\";
    const std::wstring kInner = L"Work.old\\Data\\";
    const Lines kOuterFiles{L"~\\Data.old\\y.txt", L"~\\Data.old\\Data\\x.txt"};
    EngineFixture world_;
    DestinationChecker checker_{world_.Store()};
};

TEST_F(Collision, NestedItemSecond_IsRefused) {
    MakeSources(1);
    world_.List({kOuter, kInner});
    RunResult result = world_.Run();
    EXPECT_EQ(Joined(result.lines), Joined(BackedUp(L"~\\Data.old\\", kOuterFiles) +
                                           Refused(L"~\\Work.old\\Data\\") + kDone));
    EXPECT_EQ(result.exitCode, error_number::kAccessError);
    EXPECT_EQ(checker_.Violations(), "");
    MakeSources(2);
    EXPECT_EQ(world_.Run().exitCode, error_number::kAccessError);
    EXPECT_EQ(checker_.Violations(), "");
    EXPECT_EQ(ReadTree(world_.Store(L"Data«0001».old")), ReadTree(world_.Path(L"Data.old")));
}

TEST_F(Collision, OuterItemSecond_IsRefused) {
    MakeSources(1);
    world_.List({kInner, kOuter});
    for (int step = 1; step <= 3; ++step) {
        MakeSources(step);
        const RunResult result = world_.Run();
        EXPECT_EQ(Joined(result.lines),
                  Joined(BackedUp(L"~\\Work.old\\Data\\", {L"~\\Work.old\\Data\\z.txt"}) +
                         Refused(L"~\\Data.old\\") + kDone));
        EXPECT_EQ(checker_.Violations(), "");
    }
}

TEST_F(Collision, OneItemHasCopies_OtherIsRefused) {
    MakeSources(1);
    world_.List({kInner});
    world_.Run();
    MakeSources(2);
    world_.List({kOuter, kInner});
    EXPECT_EQ(Joined(world_.Run().lines),
              Joined(Refused(L"~\\Data.old\\") +
                     BackedUp(L"~\\Work.old\\Data\\", {L"~\\Work.old\\Data\\z.txt"}) + kDone));
    EXPECT_EQ(checker_.Violations(), "");
}

TEST_F(Collision, CopiesOfAnUnlistedItem_ItemIsRefused) {
    MakeSources(1);
    world_.List({kOuter});
    world_.Run();
    const Tree before = ReadTree(world_.Store());
    world_.List({kInner});
    EXPECT_EQ(Joined(world_.Run().lines), Joined(Refused(L"~\\Work.old\\Data\\") + kDone));
    EXPECT_EQ(ReadTree(world_.Store()), before);
    world_.tree.Remove(L"Store");
    world_.tree.Folder(L"Store");
    world_.Run();
    world_.List({kOuter});
    EXPECT_EQ(Joined(world_.Run().lines), Joined(Refused(L"~\\Data.old\\") + kDone));
    EXPECT_EQ(checker_.Violations(), "");
}

// The item is away: its rotation would move a part of the other item's copy.
TEST_F(Collision, VanishedItem_RotatesNothing) {
    MakeSources(1);
    world_.List({kOuter, kInner});
    world_.Run();
    world_.tree.Remove(L"Work.old");
    const Tree before = ReadTree(world_.Store());
    world_.Run();
    EXPECT_EQ(ReadTree(world_.Store()), before);
}

// Neither has copies, so the first in the list has the better right, also while it is away.
TEST_F(Collision, FirstItemIsAway_SecondIsRefused) {
    for (const bool outerFirst : {true, false}) {
        MakeSources(1);
        world_.tree.Remove(outerFirst ? L"Data.old" : L"Work.old");
        const Lines items = outerFirst ? Lines{kOuter, kInner} : Lines{kInner, kOuter};
        world_.List(items);
        EXPECT_EQ(Joined(world_.Run().lines),
                  Joined(Missing(L"~\\" + items[0]) + NoChange(L"~\\" + items[0]) +
                         Refused(L"~\\" + items[1]) + kDone));
        EXPECT_TRUE(world_.Copies().empty());
    }
}

TEST_F(Collision, ItemsOfTwoDestinations_AreBothBackedUp) {
    MakeSources(1);
    world_.tree.Folder(L"Other");
    for (const bool outerFirst : {true, false}) {
        const std::wstring first = outerFirst ? kOuter : kInner;
        const std::wstring second = outerFirst ? kInner : kOuter;
        std::wstring list = L"BackupTo: ~\\Store\r\n~\\";
        list.append(first).append(L"\r\nBackupTo: ~\\Other\r\n~\\").append(second).append(L"\r\n");
        world_.ListText(list);
        EXPECT_EQ(world_.Run().exitCode, 0);
        for (const wchar_t* const store : {L"Store", L"Other"}) {
            EXPECT_FALSE(ReadTree(world_.Path(store)).empty()) << outerFirst;
            world_.tree.Remove(store);
            world_.tree.Folder(store);
        }
    }
}

TEST_F(Collision, ItemOfTheListBefore_HoldsNoName) {
    for (const bool outerFirst : {true, false}) {
        MakeSources(1);
        world_.tree.Remove(outerFirst ? L"Data.old" : L"Work.old");
        const Lines items = outerFirst ? Lines{kOuter, kInner} : Lines{kInner, kOuter};
        world_.With([&](CPackage& engine) {
            world_.List(items);
            engine.BackupAll();
            EXPECT_TRUE(world_.Copies().empty()) << outerFirst;
            world_.tree.File(L"Third\\t.txt", "t", Day(1));
            world_.List({L"Third\\", items[1]});
            engine.BackupAll();
            EXPECT_TRUE(Exists(world_.Store(outerFirst ? L"Data«0001».old\\Data\\z.txt"
                                                       : L"Data«0001».old\\y.txt")));
        });
        world_.tree.Remove(L"Store");
        world_.tree.Folder(L"Store");
    }
}

TEST_F(Collision, FirstItemIsARuleAndAway_SecondIsRefused) {
    for (const bool outerFirst : {true, false}) {
        MakeSources(1);
        world_.tree.Remove(outerFirst ? L"Data.old" : L"Work.old");
        const std::wstring second = outerFirst ? kInner : kOuter;
        world_.List({(outerFirst ? kOuter : kInner) + L"*", second});
        const Lines lines = world_.Run().lines;
        EXPECT_NE(Joined(lines).find(Joined(Refused(L"~\\" + second))), std::string::npos)
            << Joined(lines);
        EXPECT_TRUE(world_.Copies().empty());
    }
}

// A destination may lie in a folder of copies and be named like one of them.
TEST_F(Collision, DestinationHasACommentFile_NestedItemIsBackedUp) {
    MakeSources(1);
    world_.tree.File(L"Store.vwc", "comment");
    world_.tree.File(L"Store\\vwc", "no comment");
    world_.List({kInner});
    world_.ExpectRun(BackedUp(L"~\\Work.old\\Data\\", {L"~\\Work.old\\Data\\z.txt"}));
}

TEST(CollisionOfAFile, FolderOfTheOtherItem_ItemIsRefused) {
    for (const bool fileFirst : {true, false}) {
        EngineFixture world;
        DestinationChecker checker(world.Store());
        const std::wstring file = L"x\\README.smith";
        const std::wstring inner = L"j.smith\\README";
        world.List(fileFirst ? Lines{file, inner} : Lines{inner, file});
        for (int step = 1; step <= 4; ++step) {
            world.tree.File(file, "file " + std::to_string(step), Day(step));
            world.tree.File(inner, "nested " + std::to_string(step), Day(step));
            checker.LearnAll({world.Path(file), world.Path(inner)});
            const RunResult result = world.Run();
            EXPECT_EQ(result.exitCode, error_number::kAccessError) << Joined(result.lines);
            EXPECT_TRUE(result.errors.empty());
            EXPECT_EQ(checker.Violations(), "");
        }
        EXPECT_EQ(ReadBytes(world.Store(fileFirst ? L"README«0001».smith"
                                                  : L"README«0001».smith\\README")),
                  fileFirst ? "file 4" : "nested 4");
    }
}

// The copies of "Notes.vwc" are named like the comments of "Notes".
TEST(NameOfAComment, IsACopyOfAFile_UsesTheNextNumber) {
    for (const bool first : {true, false}) {
        EngineFixture world;
        DestinationChecker checker(world.Store());
        const Lines items =
            first ? Lines{L"A\\Notes.vwc", L"A\\Notes"} : Lines{L"A\\Notes", L"A\\Notes.vwc"};
        world.List(items);
        for (int step = 1; step <= 3; ++step) {
            world.tree.File(L"A\\Notes", "notes " + std::to_string(step), Day(step));
            world.tree.File(L"A\\Notes.vwc", "vwc " + std::to_string(step), Day(step));
            for (const std::wstring& item : items) checker.Learn(world.Path(item));
            EXPECT_EQ(world.Run().exitCode, 0);
            EXPECT_EQ(checker.Violations(), "");
        }
        EXPECT_EQ(ReadBytes(world.Store(first ? L"Notes«0101»" : L"Notes«0001»")), "notes 3");
        EXPECT_EQ(ReadBytes(world.Store(first ? L"Notes«0001».vwc" : L"Notes«0101».vwc")), "vwc 3");
        world.ExpectRun(NoChange(L"~\\" + items[0]) + NoChange(L"~\\" + items[1]));
    }
}

TEST(NameOfAComment, IsACopyOfAFile_FolderIsRefused) {
    EngineFixture world;
    world.tree.File(L"A\\Notes.vwc", "vwc", Day(1));
    world.tree.File(L"B\\Notes\\a.txt", "a", Day(2));
    world.List({L"A\\Notes.vwc", L"B\\Notes\\"});
    for (int run = 0; run < 2; ++run) {
        const RunResult result = world.Run();
        EXPECT_EQ(result.exitCode, error_number::kAccessError) << Joined(result.lines);
        EXPECT_EQ(ReadBytes(world.Store(L"Notes«0001».vwc")), "vwc");
        EXPECT_FALSE(Exists(world.Store(L"Notes«0001»")));
    }
}

TEST(NameOfACopy, IsAComment_FolderUsesTheNextNumber) {
    EngineFixture world;
    world.tree.File(L"B\\Notes\\a.txt", "a", Day(2));
    world.tree.File(L"C\\Notes.vwc\\b.txt", "b", Day(3));
    world.List({L"B\\Notes\\", L"C\\Notes.vwc\\"});
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(world.Run().exitCode, 0);
        EXPECT_TRUE(world.Comment(L"Notes«0001»").starts_with("Backed Files"));
        EXPECT_EQ(ReadBytes(world.Store(L"Notes«0101».vwc\\b.txt")), "b");
    }
}

// The comment is missing, and a later backup of the other folder would write it.
TEST(NameOfACopy, MayBecomeAComment_FolderIsRefused) {
    EngineFixture world;
    world.tree.File(L"Store\\Notes«0001»\\a.txt", "a", Day(2));
    world.tree.File(L"C\\Notes.vwc\\b.txt", "b", Day(3));
    world.List({L"C\\Notes.vwc\\"});
    world.ExpectRun(Refused(L"~\\C\\Notes.vwc\\"));
    EXPECT_FALSE(Exists(world.Store(L"Notes«0001».vwc")));
}

TEST(CopyWithoutAComment, HoldsNestedCopyDeeper_IsRefused) {
    EngineFixture world;
    world.tree.File(L"Work.old\\Sub\\Deep\\Data\\z.txt", "z", Day(1));
    world.List({L"Work.old\\Sub\\Deep\\Data\\"});
    world.Run();
    const Tree before = ReadTree(world.Store());
    world.tree.File(L"Data.old\\y.txt", "y", Day(2));
    world.List({L"Data.old\\"});
    world.ExpectRun(Refused(L"~\\Data.old\\"));
    EXPECT_EQ(ReadTree(world.Store()), before);
}

// The copies of the other file of this name have number 0, and so would those of the folder.
TEST(CollisionOfAFile, HasAnotherNumberThanTheFirstItem_IsBackedUp) {
    EngineFixture world;
    world.tree.File(L"y\\README.smith", "y", Day(1));
    world.List({L"y\\README.smith"});
    world.Run();
    world.tree.File(L"x\\README.smith", "x", Day(1));
    world.tree.File(L"j.smith\\README\\a.txt", "nested", Day(1));
    world.List({L"j.smith\\README\\", L"x\\README.smith"});
    world.ExpectRun(Refused(L"~\\j.smith\\README\\") + BackedUp(L"~\\x\\README.smith"));
    EXPECT_EQ(world.Copies(),
              (Listing{{L"README«0001».smith", "y"}, {L"README«0101».smith", "x"}}));
}

// Number 0 is taken for the first file by the comment of another copy, for the second by a copy of
// unknown origin.
TEST(CollisionOfAFile, FirstFileIsAwayWithNumber1_SecondIsRefused) {
    EngineFixture world;
    world.tree.File(L"Store\\README«0001».smith.vwc.vwc", "comment");
    world.tree.File(L"Store\\README«0001».smith\\README", "of unknown origin");
    world.tree.File(L"j.smith\\README", "nested", Day(1));
    world.List({L"x\\README.smith", L"j.smith\\README"});
    world.ExpectRun(Missing(L"~\\x\\README.smith") + NoChange(L"~\\x\\README.smith") +
                    Refused(L"~\\j.smith\\README"));
}

// A file that is backed up alone has no rivals in the list of the run before.
TEST(CollisionOfAFile, BackedUpAlone_IsNotRefusedForAListedItem) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"x\\README.smith", "x", Day(1));
    world.List({L"j.smith\\README\\", L"x\\README.smith"});
    world.With([&](CPackage& engine) {
        engine.BackupAll();
        EXPECT_TRUE(world.Copies().empty());
        engine.BackupItem(file);
    });
    EXPECT_EQ(world.Copies(), (Listing{{L"README«0001».smith", "x"}}));
}

TEST(CopyWithoutAComment, IsSearched_WindowsKeepWorking) {
    EngineFixture world;
    constexpr int kFiles = 20;
    for (int i = 0; i < kFiles; ++i) {
        world.tree.File(L"Store\\Data«0001».old\\" + std::to_wstring(i), "x", Day(1));
    }
    world.tree.File(L"Data.old\\y.txt", "y", Day(2));
    world.List({L"Data.old\\"});
    YieldWatch watch(world.files, world.pump, [&](const FileOperation& operation) {
        return operation.call == FileCall::List && operation.path == world.Store(L"Data«0001».old");
    });
    world.Run();
    EXPECT_GE(watch.YieldsBehind(), kFiles);
}

}  // namespace
}  // namespace vw::test
