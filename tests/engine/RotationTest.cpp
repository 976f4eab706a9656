#include <gtest/gtest.h>

#include <limits>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"

namespace vw::test {
namespace {

// Copies of the item "a.txt" with these numbers, each with its number as content.
void MakeCopies(const EngineFixture& world, const std::vector<int>& numbers) {
    for (const int number : numbers) {
        const std::wstring digits = (number < 10 ? L"0" : L"") + std::to_wstring(number);
        world.tree.File(L"Store\\a«00" + digits + L"».txt", std::to_string(number), Day(number));
    }
}

// The item is there and new; its copy 1, if any, has its comment.
void MakeNewItem(EngineFixture& world) {
    world.tree.File(L"a.txt", "new", Day(99));
    world.tree.File(L"Store\\a«0001».txt.vwc",
                    "Backed Files Date Last Modified:01/01/2001-01:01:01+Original Location:" +
                        world.ansi.Encode(world.Path()) + "\r\n");
}

TEST(Rotation, MovesTheSeriesAndRemovesTheOldest) {
    EngineFixture world;
    world.List({L"a.txt"}, 3);
    for (int step = 1; step <= 5; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        world.ExpectRun(BackedUp(L"~\\a.txt"));
    }
    EXPECT_EQ(world.Copies(),
              (Listing{{L"a«0001».txt", "5"}, {L"a«0002».txt", "4"}, {L"a«0003».txt", "3"}}));
}

TEST(Rotation, CountIsOne_ReplacesTheCopy) {
    EngineFixture world;
    world.List({L"a.txt", L"Work\\"}, 1);
    for (int step = 1; step <= 3; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        world.tree.File(L"Work\\" + std::to_wstring(step), "w", Day(step));
        world.tree.Remove(L"Work\\" + std::to_wstring(step - 1));
        EXPECT_EQ(world.Run().exitCode, 0);
    }
    EXPECT_EQ(world.Copies(),
              (Listing{{L"a«0001».txt", "3"}, {L"Work«0001»", kFolder}, {L"Work«0001»\\3", "w"}}));
}

TEST(Rotation, CountIsZero_IsReportedAndCopyOneReplaced) {
    for (const int count : {0, -1, -32768}) {
        EngineFixture world;
        MakeCopies(world, {1, 2, 3});
        MakeNewItem(world);
        world.List({L"a.txt"}, count);
        const RunResult result = world.Run();
        EXPECT_EQ(Joined(result.lines),
                  Joined(Lines{L"! 1000 RenamePackages ~\\a.txt"} + BackedUp(L"~\\a.txt") + kDone));
        EXPECT_EQ(result.exitCode, error_number::kZeroCopyNumber);
        EXPECT_EQ(world.Copies(),
                  (Listing{{L"a«0001».txt", "new"}, {L"a«0002».txt", "2"}, {L"a«0003».txt", "3"}}));
    }
}

TEST(Rotation, CountIsZero_NewCopyFails_KeepsCopyOne) {
    EngineFixture world;
    MakeCopies(world, {1, 2});
    MakeNewItem(world);
    world.List({L"a.txt"}, 0);
    const FileHandle held = HoldOpen(world.Path(L"a.txt"));
    world.ExpectRun({L"! 1000 RenamePackages ~\\a.txt", L"Backing: ~\\a.txt",
                     L"* Backing: ~\\a.txt", L"! 70 BackupFile ~\\a.txt"});
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "1"}, {L"a«0002».txt", "2"}}));
}

TEST(Rotation, DoesNotCloseAGap) {
    EngineFixture world;
    MakeCopies(world, {1, 2, 4});
    MakeNewItem(world);
    world.List({L"a.txt"}, 4);
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(),
              (Listing{{L"a«0001».txt", "new"}, {L"a«0002».txt", "1"}, {L"a«0003».txt", "2"}}));
}

TEST(Rotation, MovesEveryCopyAcrossAGap) {
    EngineFixture world;
    MakeCopies(world, {1, 3, 5});
    MakeNewItem(world);
    world.List({L"a.txt"}, 7);
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "new"},
                                       {L"a«0002».txt", "1"},
                                       {L"a«0004».txt", "3"},
                                       {L"a«0006».txt", "5"}}));
}

TEST(Rotation, NoCopyOne_MovesTheOthers) {
    EngineFixture world;
    MakeCopies(world, {2, 3});
    MakeNewItem(world);
    world.List({L"a.txt"}, 3);
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "new"}, {L"a«0003».txt", "2"}}));
}

TEST(Rotation, LoweredCount_KeepsTheCopiesAboveIt) {
    EngineFixture world;
    MakeCopies(world, {1, 2, 3, 4, 5});
    MakeNewItem(world);
    world.List({L"a.txt"}, 3);
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "new"},
                                       {L"a«0002».txt", "1"},
                                       {L"a«0003».txt", "2"},
                                       {L"a«0004».txt", "4"},
                                       {L"a«0005».txt", "5"}}));
}

TEST(Rotation, RaisedCount_KeepsMoreCopies) {
    EngineFixture world;
    MakeCopies(world, {1, 2});
    MakeNewItem(world);
    world.List({L"a.txt"}, 20);
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(),
              (Listing{{L"a«0001».txt", "new"}, {L"a«0002».txt", "1"}, {L"a«0003».txt", "2"}}));
}

TEST(Rotation, AcceptsMoreThan99Copies) {
    EngineFixture world;
    MakeCopies(world, {1, 99, 100});
    MakeNewItem(world);
    world.List({L"a.txt"}, 200);
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "new"},
                                       {L"a«0002».txt", "1"},
                                       {L"a«00100».txt", "99"},
                                       {L"a«00101».txt", "100"}}));
}

TEST(Rotation, DoesNotMoveComments) {
    EngineFixture world;
    world.List({L"a.txt"});
    for (int step = 1; step <= 3; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        world.Run();
    }
    EXPECT_EQ(world.Comments(), std::set<std::wstring>{L"a«0001».txt.vwc"});
    // A comment beside an older copy is somebody else's; it is neither moved nor deleted.
    world.tree.File(L"Store\\a«0002».txt.vwc", "mine");
    world.tree.File(L"a.txt", "4", Day(4));
    world.Run();
    EXPECT_EQ(ReadBytes(world.Store(L"a«0002».txt.vwc")), "mine");
    EXPECT_FALSE(Exists(world.Store(L"a«0003».txt.vwc")));
}

TEST(Rotation, DoesNotMoveOtherItemsAndLocations) {
    EngineFixture world;
    MakeCopies(world, {1, 2, 3});
    MakeNewItem(world);
    world.tree.File(L"Store\\a«0101».txt", "other place");
    world.tree.File(L"Store\\a«0003».tx", "other ending");
    world.tree.File(L"Store\\aa«0003».txt", "other name");
    world.tree.File(L"Store\\a«0021».txt", "safety copy");
    world.List({L"a.txt"});
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "new"},
                                       {L"a«0002».txt", "1"},
                                       {L"a«0003».txt", "2"},
                                       {L"a«0101».txt", "other place"},
                                       {L"a«0003».tx", "other ending"},
                                       {L"aa«0003».txt", "other name"},
                                       {L"a«0021».txt", "safety copy"}}));
}

TEST(Rotation, FileAndFolderOfOneName_ShareASeries) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "folder", Day(1));
    world.List({L"Work\\"});
    world.Run();
    world.tree.Remove(L"Work");
    world.tree.File(L"Work", "file", Day(2));
    world.List({L"Work"});
    world.ExpectRun(BackedUp(L"~\\Work"));
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", "file"},
                                       {L"Work«0002»", kFolder},
                                       {L"Work«0002»\\a.txt", "folder"}}));
    world.tree.Remove(L"Work");
    world.tree.File(L"Work\\b.txt", "folder again", Day(3));
    world.List({L"Work\\"});
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\b.txt"}));
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder},
                                       {L"Work«0001»\\b.txt", "folder again"},
                                       {L"Work«0002»", "file"},
                                       {L"Work«0003»", kFolder},
                                       {L"Work«0003»\\a.txt", "folder"}}));
}

TEST(Rotation, RemovesAFolderCopyWithReadOnlyFiles) {
    EngineFixture world;
    world.List({L"Work\\"}, 1);
    world.tree.File(L"Work\\Sub\\a.txt", "1", Day(1));
    world.tree.SetAttributes(L"Work\\Sub\\a.txt", FILE_ATTRIBUTE_READONLY);
    world.Run();
    world.tree.SetDate(L"Work\\Sub\\a.txt", Day(2));
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\Sub\\a.txt"}));
    EXPECT_EQ(world.Copies().size(), 3U);
}

// A copy somewhere in the series is held by another program: nothing of the item changes.
class HeldCopy : public testing::TestWithParam<int> {};

TEST_P(HeldCopy, AnyCopyInUse_RotationIsUndoneAndItemFails) {
    EngineFixture world;
    MakeCopies(world, {1, 2, 3, 4});
    MakeNewItem(world);
    world.List({L"a.txt"}, 3);
    const Tree before = ReadTree(world.Store());
    const std::wstring copy = L"a«000" + std::to_wstring(GetParam()) + L"».txt";
    {
        const FileHandle held = HoldInPlace(world.Store(copy));
        world.ExpectRun({L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt",
                         L"! 70 RenamePackages ~\\Store\\" + copy});
        // However often it happens: a copy that is always held never costs another one, and the new
        // one is made only once.
        for (int run = 0; run < 4; ++run) {
            world.ExpectRun({L"! 70 BackupPath ~\\Store\\" + copy});
            EXPECT_EQ(LeftOvers(world).size(), 1U);
            Tree after = ReadTree(world.Store());
            for (const std::wstring& name : LeftOvers(world)) after.erase(name);
            EXPECT_EQ(after, before);
        }
    }
    world.ExpectRun(Lines{L"Completed an interrupted copy: ~\\a.txt"} + NoChange(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "new"},
                                       {L"a«0002».txt", "1"},
                                       {L"a«0003».txt", "2"},
                                       {L"a«0004».txt", "4"}}));
}

INSTANTIATE_TEST_SUITE_P(OfTheSeries, HeldCopy, testing::Values(1, 2, 3));

TEST(Rotation, CopyInUse_NextItemIsBackedUp) {
    EngineFixture world;
    MakeCopies(world, {1});
    MakeNewItem(world);
    world.tree.File(L"b.txt", "b", Day(1));
    world.List({L"a.txt", L"b.txt"});
    const FileHandle held = HoldInPlace(world.Store(L"a«0001».txt"));
    world.ExpectRun(Lines{L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt",
                          L"! 70 RenamePackages ~\\Store\\a«0001».txt"} +
                    BackedUp(L"~\\b.txt"));
}

TEST(Rotation, CopyAboveTheCountInUse_HasNoEffect) {
    EngineFixture world;
    MakeCopies(world, {1, 2, 3, 4});
    MakeNewItem(world);
    world.List({L"a.txt"}, 3);
    const FileHandle held = HoldInPlace(world.Store(L"a«0004».txt"));
    world.ExpectRun(BackedUp(L"~\\a.txt"));
}

TEST(Rotation, ItemIsAwayAndCopyInUse_NothingElseIsTried) {
    for (const int count : {1, 3}) {
        EngineFixture world;
        world.tree.File(L"a.txt", "a", Day(1));
        world.List({L"a.txt"}, count);
        world.Run();
        world.tree.Remove(L"a.txt");
        const FileHandle held = HoldInPlace(world.Store(L"a«0001».txt"));
        world.ExpectRun(Missing(L"~\\a.txt") + Lines{L"! 70 RenamePackages ~\\Store\\a«0001».txt"});
    }
}

TEST(Rotation, NoCopyOneAndCopyInUse_MakesCopyOne) {
    EngineFixture world;
    MakeCopies(world, {2, 3});
    MakeNewItem(world);
    world.List({L"a.txt"}, 4);
    const FileHandle held = HoldInPlace(world.Store(L"a«0003».txt"));
    world.ExpectRun({L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt",
                     L"! 70 RenamePackages ~\\Store\\a«0003».txt", L"\tDone."});
    EXPECT_EQ(world.Copies(),
              (Listing{{L"a«0001».txt", "new"}, {L"a«0002».txt", "2"}, {L"a«0003».txt", "3"}}));
}

// The disk reports that the last copy has left its place.
TEST(Rotation, NestedLeavingRenameIsIgnored_NoCopyBeyondCount) {
    EngineFixture world;
    world.List({L"j.smith\\README"}, 2);
    for (int step = 1; step <= 3; ++step) {
        world.tree.File(L"j.smith\\README", std::to_string(step), Day(step));
        if (step < 3) world.Run();
    }
    world.files.IgnoreNth(1, [&](const FileOperation& operation) {
        return operation.call == FileCall::Rename &&
               operation.path == world.Store(L"README«0002».smith\\README");
    });
    world.Run();
    EXPECT_FALSE(world.files.Faults().empty());
    EXPECT_FALSE(Exists(world.Store(L"README«0003».smith\\README")));
}

TEST(RenamePackages, MovesTheCopiesWithoutABackup) {
    EngineFixture world;
    MakeCopies(world, {1, 2, 3});
    world.state.copiesCount = 3;
    const std::wstring item = world.Path(L"a.txt");
    bool moved = false;
    world.With([&](CPackage& engine) { moved = engine.RenamePackages(item, 0); });
    EXPECT_TRUE(moved);
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "1"}, {L"a«0003».txt", "2"}}));
}

TEST(RenamePackages, CountOfOne_RemovesTheCopy) {
    EngineFixture world;
    MakeCopies(world, {1});
    world.state.copiesCount = 1;
    world.With(
        [&](CPackage& engine) { EXPECT_TRUE(engine.RenamePackages(world.Path(L"a.txt"), 0)); });
    EXPECT_EQ(world.Copies(), Listing());
}

TEST(RenamePackages, NoCopies_ChangesNothing) {
    EngineFixture world;
    bool moved = false;
    world.With([&](CPackage& engine) { moved = engine.RenamePackages(world.Path(L"a.txt"), 0); });
    EXPECT_TRUE(moved);
    EXPECT_EQ(world.Copies(), Listing());
}

TEST(RenamePackages, CountOfZero_IsReported) {
    EngineFixture world;
    MakeCopies(world, {1});
    world.state.copiesCount = 0;
    bool moved = true;
    const RunResult result = world.With(
        [&](CPackage& engine) { moved = engine.RenamePackages(world.Path(L"a.txt"), 0); });
    EXPECT_FALSE(moved);
    EXPECT_EQ(Joined(result.lines), Joined({L"! 1000 RenamePackages ~\\a.txt"}));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "1"}}));
}

TEST(RenamePackages, MovesTheCopiesOfTheGivenLocationOnly) {
    EngineFixture world;
    MakeCopies(world, {1});
    world.tree.File(L"Store\\a«0701».txt", "seven");
    world.With(
        [&](CPackage& engine) { EXPECT_TRUE(engine.RenamePackages(world.Path(L"a.txt"), 7)); });
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "1"}, {L"a«0702».txt", "seven"}}));
}

TEST(RenamePackages, LargestCount_MovesTheCopies) {
    EngineFixture world;
    MakeCopies(world, {1, 2});
    world.state.copiesCount = std::numeric_limits<std::int16_t>::max();
    world.With(
        [&](CPackage& engine) { EXPECT_TRUE(engine.RenamePackages(world.Path(L"a.txt"), 0)); });
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "1"}, {L"a«0003».txt", "2"}}));
}

}  // namespace
}  // namespace vw::test
