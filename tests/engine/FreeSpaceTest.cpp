#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

constexpr std::uint64_t kSpare = 52'428'800;

TEST(FreeSpace, AcceptsExactlyTheItemAndTheSpare) {
    EngineFixture world;
    world.tree.File(L"a.txt", "12345", Day(1));
    world.List({L"a.txt"});
    world.drive.kind = DriveType::Fixed;
    world.drive.freeBytes[world.Store()] = kSpare + 5;
    world.ExpectRun(BackedUp(L"~\\a.txt"));
}

TEST(FreeSpace, Shortage_EndsTheItemBeforeTheRotation) {
    EngineFixture world;
    world.List({L"a.txt", L"b.txt"});
    for (int step = 1; step <= 3; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        world.Run();
    }
    const Tree before = ReadTree(world.Store());
    world.tree.File(L"a.txt", "12345", Day(9));
    world.tree.File(L"b.txt", "1", Day(9));
    world.drive.kind = DriveType::Fixed;
    world.drive.freeBytes[world.Store()] = kSpare + 4;
    const RunResult result = world.Run();
    // The next item needs less and is backed up.
    EXPECT_EQ(Joined(result.lines),
              Joined(Lines{L"! 1004 BackupPath ~\\Store"} + BackedUp(L"~\\b.txt") + kDone));
    EXPECT_EQ(result.exitCode, error_number::kNotEnoughSpace);
    ASSERT_EQ(result.errors.size(), 1U);
    EXPECT_EQ(result.errors[0].description,
              L"لا توجد مساحة كافية على القرص\r\n" + world.Store().substr(0, 1));
    world.tree.Remove(L"Store\\b«0001».txt");
    world.tree.Remove(L"Store\\b«0001».txt.vwc");
    EXPECT_EQ(ReadTree(world.Store()), before);
}

TEST(FreeSpace, UnchangedItem_IsMeasuredToo) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.Run();
    world.drive.kind = DriveType::Fixed;
    world.drive.freeBytes[world.Store()] = kSpare;
    world.ExpectRun({L"! 1004 BackupPath ~\\Store"});
}

/// Three unchanged items on a fixed drive that has room.
class FreeSpaceOfUnchangedItems : public testing::Test {
  protected:
    FreeSpaceOfUnchangedItems() {
        for (const auto* name : {L"a.txt", L"b.txt", L"c.txt"}) world.tree.File(name, "12345");
        world.List({L"a.txt", L"b.txt", L"c.txt"});
        world.Run();
        world.drive.kind = DriveType::Fixed;
        world.drive.freeBytes[world.Store()] = kSpare + 5;
        world.drive.asked.clear();
    }
    [[nodiscard]] std::size_t Questions() const { return world.drive.asked.size(); }

    EngineFixture world;
};

TEST_F(FreeSpaceOfUnchangedItems, NextItemsAtOnce_IsMeasuredOnce) {
    world.ExpectRun(NoChange(L"~\\a.txt") + NoChange(L"~\\b.txt") + NoChange(L"~\\c.txt"));
    EXPECT_EQ(Questions(), 1U);
}

TEST_F(FreeSpaceOfUnchangedItems, AfterATenthOfASecond_IsMeasuredAgain) {
    world.pump.AtEachYield([&] { world.clock.Advance(100); });
    world.Run();
    EXPECT_EQ(Questions(), 3U);
    world.drive.asked.clear();
    world.pump.AtEachYield({});
    world.Run();
    EXPECT_EQ(Questions(), 1U) << "a run asks for itself";
}

TEST_F(FreeSpaceOfUnchangedItems, ExactlyATenthOfASecondLater_IsMeasuredAgain) {
    world.files.OnOperation([this, waited = false](const FileOperation& operation) mutable {
        if (waited || operation.path != world.Path(L"b.txt")) return;
        waited = true;
        world.clock.Advance(100);
    });
    world.Run();
    EXPECT_EQ(Questions(), 2U);
}

TEST_F(FreeSpaceOfUnchangedItems, LargerItem_IsMeasuredAgainAndRefused) {
    world.tree.File(L"b.txt", "123456");
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines),
              Joined(NoChange(L"~\\a.txt") + Lines{L"! 1004 BackupPath ~\\Store"} +
                     NoChange(L"~\\c.txt") + kDone));
    EXPECT_EQ(Questions(), 3U);
}

TEST_F(FreeSpaceOfUnchangedItems, ShortDrive_RefusesEachOfThem) {
    world.drive.freeBytes[world.Store()] = kSpare + 4;
    const Lines refused{L"! 1004 BackupPath ~\\Store"};
    world.ExpectRun(refused + refused + refused);
    EXPECT_EQ(Questions(), 3U);
}

TEST_F(FreeSpaceOfUnchangedItems, CopyInBetween_IsMeasuredAgain) {
    world.tree.File(L"b.txt", "new", Day(9));
    world.ExpectRun(NoChange(L"~\\a.txt") + BackedUp(L"~\\b.txt") + NoChange(L"~\\c.txt"));
    EXPECT_EQ(Questions(), 2U) << "for a and b together, and for c after the copy of b";
}

TEST(FreeSpace, CountsOnlyTheFilesDirectlyInAFolder) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "12", Day(1));
    world.tree.File(L"Work\\b.txt", "345", Day(1));
    world.tree.File(L"Work\\Sub\\c.txt", std::string(1000, 'c'), Day(1));
    world.List({L"Work\\"});
    world.drive.kind = DriveType::Fixed;
    world.drive.freeBytes[world.Store()] = kSpare + 4;
    world.ExpectRun({L"! 1004 BackupPath ~\\Store"});
    world.drive.freeBytes[world.Store()] = kSpare + 5;
    world.ExpectRun(
        BackedUp(L"~\\Work\\", {L"~\\Work\\a.txt", L"~\\Work\\b.txt", L"~\\Work\\Sub\\c.txt"}));
}

TEST(FreeSpace, MissingItem_NeedsOneByteLess) {
    EngineFixture world;
    world.List({L"a.txt"});
    world.drive.kind = DriveType::Fixed;
    world.drive.freeBytes[world.Store()] = kSpare - 1;
    world.ExpectRun(Missing(L"~\\a.txt") + NoChange(L"~\\a.txt"));
    world.drive.freeBytes[world.Store()] = kSpare - 2;
    world.ExpectRun(Missing(L"~\\a.txt") + Lines{L"! 1004 BackupPath ~\\Store"});
}

TEST(FreeSpace, NoFixedDisk_TemporaryFolderIsMeasured) {
    for (const DriveType kind : {DriveType::Removable, DriveType::Network, DriveType::Optical,
                                 DriveType::Memory, DriveType::Unknown}) {
        EngineFixture world;
        const std::wstring temp = world.disk.TempFolder();
        world.tree.File(L"a.txt", "12345", Day(1));
        world.List({L"a.txt"});
        world.drive.kind = kind;
        world.drive.freeBytes[world.Store()] = 0;
        world.drive.freeBytes[temp] = kSpare + 4;
        EXPECT_EQ(world.Run().exitCode, error_number::kNotEnoughSpace);
        world.drive.freeBytes[temp] = kSpare + 5;
        world.ExpectRun(BackedUp(L"~\\a.txt"));
        EXPECT_EQ(world.drive.asked, (Lines{temp, temp}));
    }
}

TEST(FreeSpace, Unknown_IsReported_ItemIsBackedUp) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.files.FailNth(1, error_number::kNotReady, OnlyCalls({FileCall::FreeSpace}));
    world.ExpectRun(Lines{L"! 71 FolderFreeSpace ~\\Store"} + BackedUp(L"~\\a.txt"));
}

TEST(FreeSpace, CountsFilesBeyondFourGigabytes) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"large.bin", "", Day(1));
    // Sparse: it takes no room on the disk. The copy is never begun.
    constexpr std::uint64_t kLarge = 5ULL << 30;
    ASSERT_TRUE(MakeLong(file, kLarge));
    world.List({L"large.bin"});
    world.drive.kind = DriveType::Fixed;
    world.drive.freeBytes[world.Store()] = kSpare + kLarge - 1;
    world.ExpectRun({L"! 1004 BackupPath ~\\Store"});
}

}  // namespace
}  // namespace vw::test
