#include "engine/DestinationLock.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "fsutil/WorkingName.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/WindowsHeader.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"
#include "tests/support/OtherRun.h"
#include "tests/support/WineBridge.h"

namespace vw::test {
namespace {

// Another mutex than the one of this computer: what is left of the lock is what two computers
// share.
constexpr std::wstring_view kOtherComputer = L"destination of another computer";

/// A disk on which holding some files fails with these codes of the system.
class RefusingDisk final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    std::unique_ptr<HeldFile> Hold(std::wstring_view path) override {
        const DWORD code = path.ends_with(kLockFileName) ? lockCode : probeCode;
        if (code != ERROR_SUCCESS && path.starts_with(folder)) RaiseCode(code, path);
        return Inner().Hold(path);
    }

    DWORD lockCode = ERROR_SUCCESS;
    DWORD probeCode = ERROR_SUCCESS;
    std::wstring folder;  ///< only below it; empty for all folders
};

class DestinationLockTest : public testing::Test {
  protected:
    EngineFixture world;
    const std::wstring lockFile = world.Store(kLockFileName);
};

TEST_F(DestinationLockTest, File_LocksOutOtherComputers) {
    auto first = std::make_optional<DestinationLock>(world.disk, world.Store());
    ASSERT_TRUE(first->TryTake());
    EXPECT_FALSE(first->IsForThisComputerOnly());
    DestinationLock second(world.disk, world.Store(), kOtherComputer);
    EXPECT_FALSE(second.TryTake());
    EXPECT_FALSE(second.TryTake());
    first.reset();
    EXPECT_TRUE(second.TryTake());
    EXPECT_FALSE(second.IsForThisComputerOnly());
}

TEST_F(DestinationLockTest, SecondNameOfTheFolder_IsTheSameLock) {
    if (!world.tree.Link(L"Linked", world.Store())) GTEST_SKIP() << "no links here";
    DestinationLock first(world.disk, world.Store());
    ASSERT_TRUE(first.TryTake());
    DestinationLock second(world.disk, world.Path(L"Linked"));
    EXPECT_FALSE(second.TryTake());
}

TEST_F(DestinationLockTest, File_WhileHeld_IsHiddenAndRemovedWithTheLock) {
    {
        DestinationLock lock(world.disk, world.Store());
        ASSERT_TRUE(lock.TryTake());
        EXPECT_NE(GetFileAttributesW(lockFile.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
        EXPECT_EQ(DeleteFileW(lockFile.c_str()), 0);
        EXPECT_EQ(MoveFileW(lockFile.c_str(), world.Store(L"x").c_str()), 0);
        EXPECT_FALSE(CopyFileW(lockFile.c_str(), world.Store(L"y").c_str(), TRUE));
    }
    EXPECT_FALSE(Exists(lockFile));
}

TEST_F(DestinationLockTest, LeftOverFile_IsReused) {
    const unsigned long hiddenAndReadOnly = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY;
    for (const unsigned long mark : {0UL, hiddenAndReadOnly}) {
        world.tree.File(L"Store\\" + std::wstring(kLockFileName), "left over");
        if (mark != 0) world.tree.SetAttributes(L"Store\\" + std::wstring(kLockFileName), mark);
        {
            DestinationLock lock(world.disk, world.Store());
            EXPECT_TRUE(lock.TryTake()) << mark;
        }
        EXPECT_FALSE(Exists(lockFile)) << mark;
    }
}

TEST_F(DestinationLockTest, Mutex_IsTakenFirstAndLocksOutOthers) {
    const OtherRun older(world.Store());
    DestinationLock lock(world.files, world.Store());
    EXPECT_FALSE(lock.TryTake());
    EXPECT_TRUE(world.files.Operations().empty());
}

TEST_F(DestinationLockTest, CodesOfAHeldFile_MeanHeld) {
    for (const DWORD code : {ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION, ERROR_DELETE_PENDING}) {
        RefusingDisk disk(world.disk);
        disk.lockCode = code;
        DestinationLock lock(disk, world.Store());
        EXPECT_FALSE(lock.TryTake()) << code;
        disk.lockCode = ERROR_SUCCESS;
        EXPECT_TRUE(lock.TryTake()) << code;
        EXPECT_FALSE(lock.IsForThisComputerOnly()) << code;
    }
}

TEST_F(DestinationLockTest, AccessDenied_WithTheFileThere_MeansHeld) {
    world.tree.File(L"Store\\" + std::wstring(kLockFileName), "");
    RefusingDisk disk(world.disk);
    disk.lockCode = ERROR_ACCESS_DENIED;
    disk.probeCode = ERROR_ACCESS_DENIED;
    DestinationLock lock(disk, world.Store());
    EXPECT_FALSE(lock.TryTake());
}

TEST_F(DestinationLockTest, AccessDenied_FileCannotBeAskedAbout_ProbeDecides) {
    world.files.FailFrom(1, error_number::kPermissionDenied, OnlyCalls({FileCall::Stat}));
    RefusingDisk disk(world.files);
    disk.lockCode = ERROR_ACCESS_DENIED;
    disk.probeCode = ERROR_ACCESS_DENIED;
    DestinationLock lock(disk, world.Store());
    EXPECT_TRUE(lock.TryTake());
    EXPECT_TRUE(lock.IsForThisComputerOnly());
}

TEST_F(DestinationLockTest, AccessDenied_WhereAProbeCanBeMade_MeansHeld) {
    RefusingDisk disk(world.disk);
    disk.lockCode = ERROR_ACCESS_DENIED;
    DestinationLock lock(disk, world.Store());
    EXPECT_FALSE(lock.TryTake());
    EXPECT_EQ(ReadTree(world.Store()).size(), 0U) << "the probe is gone";
}

TEST_F(DestinationLockTest, NoFileCanBeMade_OnlyTheMutexIsTaken) {
    for (const auto& [lockCode, probeCode] :
         std::vector<std::pair<DWORD, DWORD>>{{ERROR_WRITE_PROTECT, ERROR_SUCCESS},
                                              {ERROR_ACCESS_DENIED, ERROR_ACCESS_DENIED},
                                              {ERROR_ACCESS_DENIED, ERROR_WRITE_PROTECT}}) {
        RefusingDisk disk(world.disk);
        disk.lockCode = lockCode;
        disk.probeCode = probeCode;
        DestinationLock lock(disk, world.Store());
        EXPECT_TRUE(lock.TryTake()) << lockCode;
        EXPECT_TRUE(lock.IsForThisComputerOnly()) << lockCode;
    }
}

TEST_F(DestinationLockTest, OtherFailures_AreRaised) {
    for (const auto& [code, number] :
         std::vector<std::pair<DWORD, int>>{{ERROR_DISK_FULL, error_number::kDiskFull},
                                            {ERROR_PATH_NOT_FOUND, error_number::kPathNotFound},
                                            {ERROR_IO_DEVICE, error_number::kDeviceError}}) {
        RefusingDisk disk(world.disk);
        disk.lockCode = code;
        DestinationLock lock(disk, world.Store());
        try {
            static_cast<void>(lock.TryTake());
            ADD_FAILURE() << code << " was not raised";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), number);
        }
    }
}

TEST_F(DestinationLockTest, Run_WaitsForTheRunOfAnotherComputer) {
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    auto other = std::make_optional<DestinationLock>(world.disk, world.Store(), kOtherComputer);
    ASSERT_TRUE(other->TryTake());
    world.pump.AtYield(20, [&] {
        EXPECT_FALSE(Exists(world.Store(L"a«0001».txt")));
        other.reset();
    });
    world.ExpectRun(Lines{L"Waiting for another backup in: ~\\Store"} + BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "a"}}));
}

TEST_F(DestinationLockTest, Run_WaitsForOneUnderAnotherNameOfTheFolder) {
    if (!world.tree.Link(L"Linked", world.Store())) GTEST_SKIP() << "no links here";
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.state.silentRun = true;
    DestinationLock other(world.disk, world.Path(L"Linked"));
    ASSERT_TRUE(other.TryTake());
    const RunResult result = world.Run();
    EXPECT_EQ(result.exitCode, error_number::kDestinationBusy);
    EXPECT_FALSE(Exists(world.Store(L"a«0001».txt")));
}

TEST_F(DestinationLockTest, Run_WriteProtectedDisk_ReportsTheMissingLockOnce) {
    world.tree.File(L"a.txt", "a", Day(1));
    world.tree.File(L"b.txt", "b", Day(1));
    world.List({L"a.txt", L"b.txt"});
    RefusingDisk disk(world.drive);
    disk.lockCode = ERROR_WRITE_PROTECT;
    System system = world.TestEnvironment::With(disk);
    RecordingHost host(world.Path(), world.errors, world.exitStatus);
    CPackage engine(system, world.state, host, host);
    engine.BackupAll();
    EXPECT_EQ(Joined(host.log),
              Joined(Lines{L"Nothing may be written here, so runs of other computers are not kept "
                           L"out: ~\\Store"} +
                     BackedUp(L"~\\a.txt") + BackedUp(L"~\\b.txt") + kDone));
    engine.BackupAll();
    EXPECT_EQ(std::count(host.log.begin(), host.log.end(), host.log.front()), 2);
}

TEST_F(DestinationLockTest, Run_ComesBackToAWriteProtectedDisk_ReportsTheMissingLockOnce) {
    world.tree.File(L"a.txt", "a", Day(1));
    world.tree.Folder(L"Second");
    world.ListText(
        L"~\\a.txt\r\nBackupTo: ~\\Second\r\n~\\a.txt\r\nBackupTo: ~\\Store\r\n~\\a.txt\r\n");
    RefusingDisk disk(world.drive);
    disk.lockCode = ERROR_WRITE_PROTECT;
    disk.folder = world.Store();
    System system = world.TestEnvironment::With(disk);
    RecordingHost host(world.Path(), world.errors, world.exitStatus);
    CPackage engine(system, world.state, host, host);
    engine.BackupAll();
    EXPECT_EQ(std::count(host.log.begin(), host.log.end(), host.log.front()), 1)
        << Joined(host.log);
}

TEST_F(DestinationLockTest, AnyWork_GivesTheLockBackAtItsEnd) {
    const std::wstring item = world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    CPackage engine(world.system, world.state, world.host, world.host);
    const std::vector<std::pair<const char*, std::function<void()>>> works{
        {"list", [&] { engine.BackupAll(); }},
        {"file", [&] { engine.BackupItem(item); }},
        {"path", [&] { engine.BackupPath(item, 0, false, false); }},
        {"rotation", [&] { engine.RenamePackages(item, 0); }},
        {"other work", [&] { EXPECT_TRUE(engine.InDestination(world.Store(), [] {})); }}};
    for (const auto& [name, work] : works) {
        work();
        EXPECT_TRUE(DestinationLock(world.disk, world.Store(), kOtherComputer).TryTake()) << name;
    }
}

TEST_F(DestinationLockTest, WalkOverASource_SkipsLockAndWorkingEntries) {
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    const std::wstring inner = world.tree.Folder(L"Work\\Other store");
    world.tree.File(L"Work\\Other store\\" +
                        LeftOverName(world, WorkingState::Ready, L"x.txt", ProcessElsewhere()),
                    "ready", Day(5));
    world.tree.File(L"Work\\Other store\\" +
                        LeftOverName(world, WorkingState::New, L"y", ProcessElsewhere()) +
                        L"\\half.txt",
                    "new", Day(6));
    world.tree.File(L"Work\\Other store\\" +
                        LeftOverName(world, WorkingState::New, L"z", ProcessElsewhere()) + L".vwc",
                    "comment", Day(7));
    world.tree.File(L"Work\\Other store\\x«0001».txt", "x", Day(2));
    DestinationLock other(world.disk, inner);
    ASSERT_TRUE(other.TryTake());
    world.List({L"Work\\"});
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder},
                                       {L"Work«0001»\\a.txt", "a"},
                                       {L"Work«0001»\\Other store", kFolder},
                                       {L"Work«0001»\\Other store\\x«0001».txt", "x"}}));
    // The newest date is that of a file of the user.
    EXPECT_EQ(world.Comment(L"Work«0001»").substr(32, 10), "01/01/2010");
    world.ExpectRun(NoChange(world.host.Short(world.Path(L"Work\\"))));
}

}  // namespace
}  // namespace vw::test
