// Folder copies that a cancel cut short, or that miss files which could not be read: the next run
// completes them, and they never pass for whole ones.

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"
#include "tests/support/DestinationChecker.h"

namespace vw::test {
namespace {

const std::wstring kItem = L"~\\Work\\";

void MakeWork(const EngineFixture& world, int step) {
    for (const wchar_t* file : {L"a.txt", L"b.txt", L"Sub\\c.txt", L"Sub\\Deep\\d.txt"}) {
        world.tree.File(L"Work\\" + std::wstring(file), std::to_string(step) + "!", Day(step));
    }
    world.tree.Folder(L"Work\\Empty");
}

// Presses Cancel right before the file `part` is copied.
RunResult CancelledRun(EngineFixture& world, const std::wstring& part) {
    world.files.OnOperation([&world, part](const FileOperation& operation) {
        if (operation.call == FileCall::Copy && operation.path.find(part) != std::wstring::npos) {
            world.state.cancel.Request();
        }
    });
    RunResult result = world.Run();
    world.files.Heal();
    return result;
}

bool IsMarked(EngineFixture& world) {
    bool isMarked = false;
    world.With([&](CPackage& engine) {
        isMarked = engine.IsMarkedIncomplete(world.Store(L"Work«0001»"));
    });
    return isMarked;
}

bool IsWhole(EngineFixture& world) {
    return !IsMarked(world) &&
           ReadTree(world.Store(L"Work«0001»")) == ReadTree(world.Path(L"Work"));
}

TEST(IncompleteCopy, Cancelled_NextRunCompletesIt) {
    EngineFixture world;
    MakeWork(world, 1);
    world.List({L"Work\\"});
    CancelledRun(world, L"a.txt");
    ASSERT_TRUE(IsMarked(world));
    const std::string line = world.Comment(L"Work«0001»").substr(0, 80);
    world.ExpectRun(
        BackedUp(kItem, {L"~\\Work\\b.txt", L"~\\Work\\Sub\\c.txt", L"~\\Work\\Sub\\Deep\\d.txt"}));
    EXPECT_TRUE(IsWhole(world));
    EXPECT_EQ(world.Comment(L"Work«0001»").substr(0, 80), line);
    EXPECT_EQ(LeftOvers(world), Lines());
    world.ExpectRun(NoChange(kItem));
    EXPECT_FALSE(Exists(world.Store(L"Work«0002»")));
}

TEST(IncompleteCopy, ItemIsNoFolderAnyMore_CopyStaysAsItIs) {
    for (const bool isFileNow : {true, false}) {
        EngineFixture world;
        MakeWork(world, 1);
        world.List({L"Work\\"});
        CancelledRun(world, L"b.txt");
        ASSERT_TRUE(IsMarked(world));
        const Tree cutShort = ReadTree(world.Store(L"Work«0001»"));
        if (isFileNow) {
            world.tree.Remove(L"Work");
            world.tree.File(L"Work", "a file", Day(1));
            world.ExpectRun(NoChange(kItem));
        } else {
            world.List({L"Work"});
            world.ExpectRun(NoChange(L"~\\Work"));
        }
        EXPECT_TRUE(IsMarked(world));
        EXPECT_EQ(ReadTree(world.Store(L"Work«0001»")), cutShort);
    }
}

TEST(IncompleteCopy, UnreadableFile_IsCompletedOnceItCanBeRead) {
    EngineFixture world;
    MakeWork(world, 1);
    world.List({L"Work\\"});
    {
        const FileHandle held = HoldOpen(world.Path(L"Work\\Sub\\c.txt"));
        EXPECT_EQ(world.Run().exitCode, error_number::kPermissionDenied);
        const Tree before = ReadTree(world.Store());
        for (int run = 0; run < 3; ++run) {
            const RunResult result = world.Run();
            EXPECT_EQ(Joined(result.lines),
                      Joined({L"Backing: ~\\Work\\", L"* Backing: ~\\Work\\Sub\\c.txt",
                              L"! 70 BackupFile ~\\Work\\Sub\\c.txt",
                              L"Files are missing, copy 1 is incomplete: ~\\Work\\",
                              L"[BusyHide true]"}));
            EXPECT_EQ(result.exitCode, error_number::kPermissionDenied);
            EXPECT_EQ(ReadTree(world.Store()), before);
        }
    }
    world.ExpectRun(BackedUp(kItem, {L"~\\Work\\Sub\\c.txt"}));
    EXPECT_TRUE(IsWhole(world));
}

TEST(IncompleteCopy, UnreadableFolder_StaysMarked) {
    EngineFixture world;
    MakeWork(world, 1);
    world.List({L"Work\\"});
    const auto refuseSub = [&] {
        world.files.FailFrom(1, error_number::kPermissionDenied,
                             [&](const FileOperation& operation) {
                                 return operation.call == FileCall::List &&
                                        operation.path == world.Path(L"Work\\Sub\\");
                             });
    };
    refuseSub();
    world.Run();
    refuseSub();
    EXPECT_EQ(world.Run().exitCode, error_number::kPermissionDenied);
    world.files.Heal();
    EXPECT_TRUE(IsMarked(world));
    EXPECT_FALSE(Exists(world.Store(L"Work«0002»"))) << "what is there is not copied once more";
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_TRUE(IsWhole(world));
}

// Both the copy of a cancel and its completion are cancelled; what there is by then stays.
TEST(IncompleteCopy, CompletionIsCancelled_KeepsItsFiles) {
    EngineFixture world;
    MakeWork(world, 1);
    world.List({L"Work\\"});
    CancelledRun(world, L"a.txt");
    const RunResult result = CancelledRun(world, L"b.txt");
    EXPECT_EQ(result.exitCode, error_number::kCancelled);
    EXPECT_TRUE(IsMarked(world));
    EXPECT_TRUE(Exists(world.Store(L"Work«0001»\\b.txt")));
    EXPECT_FALSE(Exists(world.Store(L"Work«0001»\\Sub\\c.txt")));
    world.Run();
    EXPECT_TRUE(IsWhole(world));
}

TEST(IncompleteCopy, OtherStateOfAFile_IsReplaced) {
    EngineFixture world;
    world.List({L"Work\\"});
    MakeWork(world, 3);
    world.Run();
    MakeWork(world, 4);
    CancelledRun(world, L"b.txt");
    // Not newer than the newest file, so the date of the item stays.
    world.tree.File(L"Work\\a.txt", "other", Day(2));
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_TRUE(IsWhole(world));
    // The copy of the cancel was replaced, not moved up.
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0002»\\b.txt")), "3!");
    EXPECT_FALSE(Exists(world.Store(L"Work«0003»")));
}

// However often Cancel is pressed: the whole copies stay.
TEST(CopyThatWasCutShort, CancelledAgainAndAgain_WholeCopiesStay) {
    EngineFixture world;
    world.List({L"Work\\"}, 2);
    MakeWork(world, 1);
    world.Run();
    for (int step = 2; step <= 5; ++step) {
        MakeWork(world, step);
        const RunResult result = CancelledRun(world, L"b.txt");
        EXPECT_EQ(result.lines.back(),
                  step == 2 ? L"Cancelled, copy 1 is incomplete: ~\\Work\\"
                            : L"Cancelled, the incomplete copy 1 of before was kept: ~\\Work\\");
        EXPECT_TRUE(IsMarked(world));
        EXPECT_EQ(ReadBytes(world.Store(L"Work«0002»\\Sub\\c.txt")), "1!");
        EXPECT_EQ(LeftOvers(world), Lines());
    }
    world.Run();
    EXPECT_TRUE(IsWhole(world));
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0002»\\Sub\\c.txt")), "1!");
}

TEST(CopyThatWasCutShort, FolderOfAnotherLocation_IsRotated) {
    EngineFixture world;
    MakeWork(world, 1);
    world.tree.File(L"Other\\Work\\o.txt", "o", Day(9));
    world.List({L"Work\\"});
    CancelledRun(world, L"b.txt");
    world.List({L"Other\\Work\\"});
    world.ExpectRun(BackedUp(L"~\\Other\\Work\\", {L"~\\Other\\Work\\o.txt"}));
    EXPECT_TRUE(Exists(world.Store(L"Work«0002»\\a.txt")));
}

// The dates are the same, but nothing of the one folder belongs into the copy of the other.
TEST(CopyThatWasCutShort, FolderOfAnotherLocationAndTheSameDate_AddsNothingToIt) {
    EngineFixture world;
    MakeWork(world, 1);
    world.tree.File(L"Other\\Work\\o.txt", "o", Day(1));
    world.List({L"Work\\"});
    CancelledRun(world, L"b.txt");
    const Tree before = ReadTree(world.Store());
    world.List({L"Other\\Work\\"});
    world.Run();
    EXPECT_EQ(ReadTree(world.Store()), before);
}

TEST(CopyThatMissesFiles, ItemChanged_IsRotated) {
    EngineFixture world;
    MakeWork(world, 1);
    world.List({L"Work\\"});
    {
        const FileHandle held = HoldOpen(world.Path(L"Work\\b.txt"));
        world.Run();
    }
    MakeWork(world, 2);
    world.Run();
    EXPECT_TRUE(IsWhole(world));
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0002»\\a.txt")), "1!");
}

TEST(IncompleteCopy, KilledAtAnyChange_IsMarkedWhenFinished) {
    for (int n = 1;; ++n) {
        EngineFixture world;
        DestinationChecker checker(world.Store());
        MakeWork(world, 1);
        checker.Learn(world.Path(L"Work\\"));
        world.List({L"Work\\"});
        {
            const FileHandle held = HoldOpen(world.Path(L"Work\\b.txt"));
            world.files.DieAtNth(n, OnlyChanges());
            world.Run();
        }
        const bool died = !world.files.Faults().empty();
        world.files.Heal();
        if (!died) break;
        SCOPED_TRACE("killed at change " + std::to_string(n));
        UpdateControls(world, DeadProcess());
        EXPECT_EQ(checker.Violations(), "");
        const FileHandle held = HoldOpen(world.Path(L"Work\\b.txt"));
        EXPECT_EQ(world.Run().exitCode, error_number::kPermissionDenied);
        EXPECT_TRUE(IsMarked(world));
        EXPECT_EQ(checker.Violations(), "");
    }
}

// Every operation of a completion fails, from there on or once, or is the last one.
TEST(Completion, FaultAtAnyPoint_LosesNothing) {
    int points = 0;
    struct Plan {
        const char* name;
        std::function<void(FaultyFileSystem&, int)> arrange;
    };
    const Plan plans[] = {
        {"killed", [](FaultyFileSystem& files, int n) { files.DieAtNth(n); }},
        // A folder that cannot be listed while the newest date is looked for is passed over: the
        // item looks older than it is, which costs one more copy.
        {"refused once",
         [](FaultyFileSystem& files, int n) {
             files.FailNth(n, error_number::kPermissionDenied, [](const FileOperation& operation) {
                 return operation.call != FileCall::List ||
                        operation.path.find(L"Store") != std::wstring::npos;
             });
         }},
        {"broken from there on",
         [](FaultyFileSystem& files, int n) { files.FailFrom(n, error_number::kDeviceError); }},
        {"disk full", [](FaultyFileSystem& files, int n) { files.FillDiskFrom(n); }},
        {"cut short", [](FaultyFileSystem& files, int n) { files.TruncateNthCopy(n); }},
    };
    for (const Plan& plan : plans) {
        for (int n = 1;; ++n) {
            EngineFixture world;
            DestinationChecker checker(world.Store());
            world.List({L"Work\\"}, 2);
            MakeWork(world, 1);
            checker.Learn(world.Path(L"Work\\"));
            world.Run();
            MakeWork(world, 2);
            checker.Learn(world.Path(L"Work\\"));
            CancelledRun(world, L"b.txt");
            plan.arrange(world.files, n);
            world.Run();
            const bool went = !world.files.Faults().empty();
            world.files.Heal();
            if (!went) break;
            ++points;
            SCOPED_TRACE(std::string(plan.name) + " at " + std::to_string(n));
            UpdateControls(world, DeadProcess());
            EXPECT_EQ(checker.Violations(), "");
            EXPECT_EQ(ReadBytes(world.Store(L"Work«0002»\\Sub\\c.txt")), "1!");
            EXPECT_EQ(world.Run().exitCode, 0);
            EXPECT_TRUE(IsWhole(world));
            EXPECT_EQ(ReadBytes(world.Store(L"Work«0002»\\Sub\\c.txt")), "1!");
            EXPECT_EQ(LeftOvers(world), Lines());
            EXPECT_EQ(checker.Violations(), "");
            if (HasFailure()) return;
        }
    }
    RecordProperty("points", points);
    EXPECT_GT(points, 60);
}

// The session ends, or the program is closed, in the middle of a folder: that is no cancel.
TEST(EndOfTheSession, DuringACopy_LeavesNoPartialCopy) {
    EngineFixture world;
    world.List({L"Work\\"});
    MakeWork(world, 1);
    world.Run();
    const Tree before = ReadTree(world.Store());
    MakeWork(world, 2);
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::Copy) return;
        world.state.endRequested = true;
        world.state.cancel.Request();
    });
    EXPECT_EQ(world.Run().exitCode, error_number::kCancelled);
    world.files.Heal();
    EXPECT_EQ(ReadTree(world.Store()), before);
    world.state.endRequested = false;
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_TRUE(IsWhole(world));
}

TEST(IncompleteCopy, FileOfSameSizeOrSameDateDiffers_IsMadeAnew) {
    struct Row {
        const char* content;
        int day;
    };
    for (const Row row : {Row{"9!", 2}, Row{"longer", 4}}) {
        EngineFixture world;
        world.List({L"Work\\"});
        MakeWork(world, 4);
        CancelledRun(world, L"b.txt");
        ASSERT_TRUE(IsMarked(world));
        world.tree.File(L"Store\\Work«0001»\\a.txt", row.content, Day(row.day));
        EXPECT_EQ(world.Run().exitCode, 0);
        EXPECT_TRUE(IsWhole(world)) << row.content;
    }
}

TEST(IncompleteCopy, WholeOneIsReady_TakesItsPlace) {
    EngineFixture world;
    world.List({L"Work\\"});
    MakeWork(world, 1);
    CancelledRun(world, L"b.txt");
    ASSERT_TRUE(IsMarked(world));
    const std::wstring ready =
        LeftOverName(world, WorkingState::Ready, L"Work\\", DeadProcess(), MakeDate(Day(2)));
    world.tree.File(L"Store\\" + ready + L"\\a.txt", "whole", Day(2));
    world.tree.Remove(L"Work");
    world.tree.File(L"Work\\a.txt", "whole", Day(2));
    world.ExpectRun(Lines{L"Completed an interrupted copy: ~\\Work\\"} + NoChange(kItem));
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder}, {L"Work«0001»\\a.txt", "whole"}}));
}

TEST(IncompleteCopy, IsReadyAndFinished_IsReported) {
    EngineFixture world;
    world.List({L"Work\\"});
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.tree.File(L"Work\\b.txt", "b", Day(1));
    const std::wstring path = world.Path(L"Work\\");
    const WorkingName ready{
        WorkingState::Ready,      NameKey(path), NameKey(world.Store(L"Work«0001»")),
        MakeDate(Day(1)),         DeadProcess(), MakeDate(Day(1)),
        Completeness::MissesFiles};
    world.tree.File(L"Store\\" + FormatWorkingName(ready, L"Work") + L"\\a.txt", "a", Day(1));
    world.ExpectRun(Lines{L"Completed an interrupted copy: ~\\Work\\",
                          L"Files are missing, copy 1 is incomplete: ~\\Work\\"} +
                    BackedUp(kItem, {L"~\\Work\\b.txt"}));
    EXPECT_TRUE(IsWhole(world));
}

TEST(IncompleteCopy, WholeOneIsReadyAndHeldUp_IsGivenUp) {
    EngineFixture world;
    world.List({L"Work\\"});
    MakeWork(world, 1);
    world.Run();
    world.drive.held = {world.Store(L"Work«0001»")};
    MakeWork(world, 2);
    world.Run();
    const Lines ready = LeftOvers(world);
    ASSERT_EQ(ready.size(), 1U);
    MakeWork(world, 3);
    {
        const FileHandle locked = HoldOpen(world.Path(L"Work\\b.txt"));
        const RunResult result = world.Run();
        EXPECT_EQ(std::ranges::count(result.lines, L"\tDone."), 0) << Joined(result.lines);
    }
    EXPECT_EQ(LeftOvers(world), ready);
    EXPECT_EQ(ReadBytes(world.Store(ready[0] + L"\\b.txt")), "2!");
}

}  // namespace
}  // namespace vw::test
