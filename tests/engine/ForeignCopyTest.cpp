// What another program puts into the destination while a run works there: a computer that does not
// see the lock, or a person. Its copies and comments are left alone.

#include <gtest/gtest.h>

#include <utility>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"
#include "tests/support/DestinationChecker.h"

namespace vw::test {
namespace {

using namespace std::chrono_literals;

std::string CommentOf(const EngineFixture& world, const wchar_t* date, const std::wstring& folder) {
    return world.ansi.Encode(L"Backed Files Date Last Modified:" + std::wstring(date) +
                             L"+Original Location:" + folder) +
           "\r\n";
}

// Runs, and lets `act` happen right before the n-th operation of a kind on the item "b.txt".
RunResult RunWith(EngineFixture& world, FileCall call, const std::function<void()>& act) {
    bool acted = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (acted || operation.call != call || operation.path != world.Path(L"B\\b.txt")) return;
        acted = true;
        act();
    });
    RunResult result = world.Run();
    world.files.Heal();
    EXPECT_TRUE(acted);
    return result;
}

constexpr const wchar_t* kTheirDate = L"01/01/2009-00:00:00";

TEST(CopyOfAnotherProgram, AppearsDuringTheCopy_IsKept) {
    EngineFixture world;
    DestinationChecker checker(world.Store());
    world.tree.File(L"A\\b.txt", "A", Day(1));
    world.tree.File(L"B\\b.txt", "B", Day(2));
    checker.LearnAll({world.Path(L"A\\b.txt"), world.Path(L"B\\b.txt")});
    world.List({L"B\\b.txt"});
    const std::string theirs = CommentOf(world, L"01/01/2010-00:01:01", world.Path(L"A"));
    const RunResult result = RunWith(world, FileCall::Copy, [&] {
        world.tree.File(L"Store\\b«0001».txt", "A", Day(1));
        world.tree.File(L"Store\\b«0001».txt.vwc", theirs);
    });
    EXPECT_EQ(result.exitCode, error_number::kAlreadyExists);
    EXPECT_EQ(Joined(result.lines),
              Joined({L"Backing: ~\\B\\b.txt", L"* Backing: ~\\B\\b.txt",
                      L"Left alone, it was not made by this run: ~\\Store\\b«0001».txt",
                      L"! 58 BackupPath ~\\Store\\b«0001».txt", L"[BusyHide true]"}));
    EXPECT_EQ(ReadBytes(world.Store(L"b«0001».txt")), "A");
    EXPECT_EQ(ReadBytes(world.Store(L"b«0001».txt.vwc")), theirs);
    EXPECT_EQ(checker.Violations(), "");
    // The next run finds a number of its own for the copy that is ready.
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(world.Copies(), (Listing{{L"b«0001».txt", "A"}, {L"b«0101».txt", "B"}}));
    EXPECT_EQ(ReadBytes(world.Store(L"b«0001».txt.vwc")), theirs);
    EXPECT_EQ(checker.Violations(), "");
    world.ExpectRun(NoChange(L"~\\B\\b.txt"));
}

TEST(CommentOfAnotherProgram, AppearsDuringTheCopy_IsKept) {
    EngineFixture world;
    world.tree.File(L"B\\b.txt", "B", Day(2));
    world.List({L"B\\b.txt"});
    const std::string theirs = CommentOf(world, kTheirDate, world.Path(L"A"));
    const RunResult result =
        RunWith(world, FileCall::Copy, [&] { world.tree.File(L"Store\\b«0001».txt.vwc", theirs); });
    EXPECT_EQ(result.exitCode, error_number::kAlreadyExists);
    EXPECT_EQ(ReadBytes(world.Store(L"b«0001».txt.vwc")), theirs);
    EXPECT_FALSE(Exists(world.Store(L"b«0001».txt")));
}

// It comes between the look at the place and the rename into it.
TEST(CopyOfAnotherProgram, AppearsBeforeTheRename_GetsNoComment) {
    EngineFixture world;
    world.tree.File(L"B\\b.txt", "B", Day(2));
    world.List({L"B\\b.txt"});
    bool acted = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (acted || operation.call != FileCall::Rename ||
            operation.to != world.Store(L"b«0001».txt")) {
            return;
        }
        acted = true;
        world.tree.File(L"Store\\b«0001».txt", "A");
    });
    EXPECT_EQ(world.Run().exitCode, error_number::kAlreadyExists);
    EXPECT_TRUE(acted);
    EXPECT_EQ(ReadBytes(world.Store(L"b«0001».txt")), "A");
    EXPECT_FALSE(Exists(world.Store(L"b«0001».txt.vwc")));
}

// Copy 1 has moved up, and its place is free for a moment.
TEST(CopyOfAnotherProgram, AppearsBehindTheRotation_IsKept) {
    EngineFixture world;
    world.tree.File(L"B\\b.txt", "1", Day(1));
    world.List({L"B\\b.txt"});
    world.Run();
    world.tree.File(L"B\\b.txt", "2", Day(2));
    bool isRotated = false;
    bool acted = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (isRotated && !std::exchange(acted, true)) {
            world.tree.File(L"Store\\b«0001».txt", "theirs");
        }
        if (operation.to == world.Store(L"b«0002».txt")) isRotated = true;
    });
    EXPECT_EQ(world.Run().exitCode, error_number::kAlreadyExists);
    EXPECT_TRUE(acted);
    EXPECT_EQ(ReadBytes(world.Store(L"b«0001».txt")), "theirs");
    EXPECT_EQ(ReadBytes(world.Store(L"b«0002».txt")), "1");
}

TEST(CopyOfAnotherProgram, ExistsBeforeTheRun_IsRotated) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "new", Day(2));
    world.tree.File(L"Store\\Work«0001»\\x.txt", "theirs", Day(1));
    world.List({L"Work\\"});
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\a.txt"}));
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0002»\\x.txt")), "theirs");
}

// ---------------------------------------------------------------------------------------------
// A ready copy that cannot take its place.

const Lines kFinished{L"Completed an interrupted copy: ~\\a.txt"};

std::wstring ReadyName(const EngineFixture& world, const ProcessTag& owner, Date date, Date made) {
    const std::wstring path = world.Path(L"a.txt");
    const WorkingName name{
        WorkingState::Ready, NameKey(path), NameKey(world.Store(L"a«0001».txt")), date, owner, made,
        Completeness::Whole};
    return FormatWorkingName(name, L"a");
}

TEST(StuckReadyCopy, ItemChanges_NewerCopyReplacesIt) {
    EngineFixture world;
    world.List({L"a.txt"}, 3);
    for (int step = 1; step <= 3; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        if (step < 3) world.Run();
    }
    world.drive.held = {world.Store(L"a«0001».txt")};
    EXPECT_EQ(world.Run().exitCode, error_number::kPermissionDenied);
    ASSERT_EQ(LeftOvers(world).size(), 1U);
    EXPECT_EQ(ReadBytes(world.Store(LeftOvers(world)[0])), "3");
    // Nothing is copied again while the item stays as it is.
    world.ExpectRun({L"! 70 BackupPath ~\\Store\\a«0001».txt"});
    // A newer copy takes the place of the one that waits.
    for (int step = 4; step <= 5; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        const RunResult result = world.Run();
        EXPECT_EQ(result.exitCode, error_number::kPermissionDenied) << Joined(result.lines);
        ASSERT_EQ(LeftOvers(world).size(), 1U);
        EXPECT_EQ(ReadBytes(world.Store(LeftOvers(world)[0])), std::to_string(step));
    }
    world.drive.held.clear();
    world.ExpectRun(kFinished + NoChange(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(),
              (Listing{{L"a«0001».txt", "5"}, {L"a«0002».txt", "2"}, {L"a«0003».txt", "1"}}));
}

// Rotated for the stuck copy, the series must not be rotated once more for the newer one.
TEST(StuckReadyCopy, ItemChanges_NewerCopyUsesItsRotation) {
    EngineFixture world;
    world.List({L"a.txt"}, 3);
    for (int step = 1; step <= 3; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        if (step < 3) world.Run();
    }
    world.files.FailFrom(1, error_number::kDeviceError, OnlyCalls({FileCall::Replace}));
    EXPECT_EQ(world.Run().exitCode, error_number::kDeviceError);
    world.tree.File(L"a.txt", "4", Day(4));
    EXPECT_EQ(world.Run().exitCode, error_number::kDeviceError);
    world.files.Heal();
    world.ExpectRun(kFinished + NoChange(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(),
              (Listing{{L"a«0001».txt", "4"}, {L"a«0002».txt", "2"}, {L"a«0003».txt", "1"}}));
}

// An older state of the item was backed up last: the dates of the contents state no order.
TEST(ReadyCopyOfAnOlderDate, MadeLaterThanCopyOne_IsFinished) {
    EngineFixture world;
    world.List({L"a.txt"}, 3);
    world.tree.File(L"a.txt", "day 9", Day(9));
    world.Run();
    const Date made = ReadDate(world.Store(L"a«0001».txt.vwc"));
    world.tree.File(L"Store\\" + ReadyName(world, DeadProcess(), MakeDate(Day(3)), made + 60s),
                    "day 3");
    world.tree.Remove(L"a.txt");
    world.Run();
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "day 3"}, {L"a«0003».txt", "day 9"}}));
}

TEST(ReadyCopy, CopyOneWasMadeLater_IsRemoved) {
    struct Row {
        std::chrono::seconds ahead;  ///< from the time of copy 1 to that of the ready copy
        bool dropped;
    };
    for (const Row row :
         {Row{-1h, true}, Row{-3s, true}, Row{-2s, false}, Row{0s, false}, Row{1h, false}}) {
        EngineFixture world;
        world.List({L"a.txt"}, 3);
        world.tree.File(L"a.txt", "copy 1", Day(5));
        world.Run();
        const Date made = ReadDate(world.Store(L"a«0001».txt.vwc"));
        world.tree.File(
            L"Store\\" + ReadyName(world, DeadProcess(), MakeDate(Day(7)), made + row.ahead),
            "ready");
        const Lines lines = world.Run().lines;
        EXPECT_EQ(lines.front(),
                  row.dropped
                      ? L"Copy of an interrupted run removed, there is a later one: ~\\a.txt"
                      : L"Completed an interrupted copy: ~\\a.txt")
            << row.ahead.count();
        EXPECT_EQ(LeftOvers(world), Lines());
    }
}

// Names that the versions before wrote hold no time: the order is not known.
TEST(ReadyCopyOfAnEarlierVersion, NewerCopyOne_IsFinished) {
    EngineFixture world;
    world.List({L"a.txt"}, 3);
    world.tree.File(L"a.txt", "copy 1", Day(5));
    world.Run();
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", DeadProcess(),
                                              MakeDate(Day(3))),
                    "ready");
    world.tree.Remove(L"a.txt");
    world.Run();
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "ready"}, {L"a«0003».txt", "copy 1"}}));
}

// ---------------------------------------------------------------------------------------------
// A rotation that was cut off.

// Killed at each change of the rotation of a vanished item; the next runs complete it.
TEST(RotationOfAVanishedItem, KilledAtAnyChange_IsCompletedOnce) {
    int points = 0;
    for (int n = 1;; ++n) {
        EngineFixture world;
        world.List({L"a.txt", L"b.txt"}, 3);
        for (int step = 1; step <= 3; ++step) {
            world.tree.File(L"a.txt", std::to_string(step), Day(step));
            world.Run();
        }
        world.tree.File(L"b.txt", "b", Day(1));
        world.tree.Remove(L"a.txt");
        world.files.DieAtNth(n, [](const FileOperation& operation) {
            return operation.call == FileCall::Rename || operation.call == FileCall::RemoveFile;
        });
        world.Run();
        const bool died = !world.files.Faults().empty();
        world.files.Heal();
        if (!died || Exists(world.Store(L"b«0001».txt"))) break;
        ++points;
        SCOPED_TRACE("killed at step " + std::to_string(n));
        UpdateControls(world, DeadProcess());
        for (int run = 0; run < 2; ++run) {
            world.Run();
            const Listing copies = world.Copies();
            const bool rotated = copies.contains(L"a«0002».txt");
            ASSERT_TRUE(rotated) << Joined(world.Run().lines);
            EXPECT_EQ(copies.at(L"a«0002».txt"), "3");
            EXPECT_EQ(copies.at(L"a«0003».txt"), "2");
        }
        EXPECT_EQ(LeftOvers(world), Lines());
    }
    EXPECT_GE(points, 4);
}

TEST(RotationThatWasCutOff, EntriesOfAnEarlierVersion_IsCompleted) {
    EngineFixture world;
    world.List({L"a.txt"}, 3);
    for (int step = 1; step <= 3; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        world.Run();
    }
    world.tree.Remove(L"a.txt");
    // Copy 3 has left and copy 2 has become copy 3.
    const std::wstring path = world.Path(L"a.txt");
    const WorkingName left{WorkingState::Old, NameKey(path), NameKey(world.Store(L"a«0003».txt")),
                           kNoDate, DeadProcess()};
    world.tree.File(L"Store\\" + FormatWorkingName(left, L"a"), "1");
    world.tree.Remove(L"Store\\a«0002».txt");
    world.tree.File(L"Store\\a«0003».txt", "2");
    world.Run();
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "3"}, {L"a«0003».txt", "2"}}));
}

TEST(GapInASeries, NoEntryOfARun_IsRotatedAsUsual) {
    EngineFixture world;
    world.List({L"a.txt"}, 3);
    world.tree.File(L"a.txt", "3", Day(3));
    world.Run();
    world.tree.File(L"Store\\a«0003».txt", "1");
    world.tree.Remove(L"a.txt");
    world.Run();
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "3"}}));
}

// Copy 3 has left, and copy 2 has become copy 3. Returns the entry that left.
std::wstring CutOffRotation(EngineFixture& world) {
    world.List({L"a.txt"}, 3);
    world.tree.File(L"a.txt", "3", Day(3));
    world.Run();
    world.tree.File(L"Store\\a«0003».txt", "2");
    const WorkingName left{WorkingState::Old, NameKey(world.Path(L"a.txt")),
                           NameKey(world.Store(L"a«0003».txt")), kNoDate, DeadProcess()};
    std::wstring entry = FormatWorkingName(left, L"a");
    world.tree.File(L"Store\\" + entry, "1");
    return entry;
}

// The last copy has left, and those below it have moved up already.
TEST(RotationThatWasCutOff, AnyCount_MovesNoOtherCopyOut) {
    for (const int count : {2, 3, 99}) {
        EngineFixture world;
        world.state.copiesCount = static_cast<std::int16_t>(count);
        const std::wstring item = world.Path(L"a.txt");
        const std::wstring digits = (count < 10 ? L"0" : L"") + std::to_wstring(count);
        const std::wstring last = L"a«00" + digits + L"».txt";
        const WorkingName left{WorkingState::Old, NameKey(item), NameKey(world.Store(last)),
                               kNoDate, DeadProcess()};
        world.tree.File(L"Store\\" + FormatWorkingName(left, L"a"), "1");
        world.tree.File(L"Store\\" + last, "2");
        world.With([&](CPackage& engine) { EXPECT_TRUE(engine.RenamePackages(item, 0)); });
        EXPECT_EQ(world.Copies(), (Listing{{last, "2"}})) << count;
    }
}

// While a copy is held the entry that left stays: without it the next run would rotate once more.
TEST(RotationThatWasCutOff, CopyIsHeld_IsCompletedByALaterRun) {
    EngineFixture world;
    const std::wstring entry = CutOffRotation(world);
    world.tree.Remove(L"a.txt");
    world.drive.held = {world.Store(L"a«0001».txt")};
    EXPECT_NE(world.Run().exitCode, 0);
    EXPECT_EQ(LeftOvers(world), Lines{entry});
    world.drive.held.clear();
    world.Run();
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "3"}, {L"a«0003».txt", "2"}}));
}

// The entry that left is removed when the rotation is complete, not only at the end of the run.
TEST(RotationThatWasCutOff, CancelOnceItIsComplete_LeavesNoEntry) {
    EngineFixture world;
    CutOffRotation(world);
    world.tree.File(L"a.txt", "4", Day(4));
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::Ready, L"a.txt", DeadProcess(),
                                              MakeDate(Day(4))),
                    "4");
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.to == world.Store(L"a«0001».txt")) world.state.cancel.Request();
    });
    EXPECT_EQ(world.Run().exitCode, error_number::kCancelled);
    EXPECT_EQ(world.Copies(),
              (Listing{{L"a«0001».txt", "4"}, {L"a«0002».txt", "3"}, {L"a«0003».txt", "2"}}));
}

}  // namespace
}  // namespace vw::test
