#include "fsutil/Patience.h"

#include <gtest/gtest.h>

#include <thread>

#include "platform/Handle.h"
#include "platform/RuntimeError.h"
#include "platform/SystemError.h"
#include "platform/WindowsHeader.h"
#include "tests/support/DiskTest.h"
#include "tests/support/ErrorNumber.h"

namespace vw::test {
namespace {

/// A disk on which no folder can be removed, with this code of the system.
class StubbornFolders final : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;

    void RemoveFolder(std::wstring_view path) override { RaiseCode(code, path); }
    std::optional<FileInfo> Stat(std::wstring_view) override {
        return FileInfo{.isFolder = true, .isReadOnly = isReadOnly};
    }

    DWORD code = ERROR_DIR_NOT_EMPTY;
    bool isReadOnly = false;
};

class PatienceTest : public DiskTest {
  protected:
    /// Performs a step that fails with `code` for the next `milliseconds`; gives the number of the
    /// error that came out, 0 for none, and leaves how long it took in `took`.
    int Perform(DWORD code, std::uint64_t milliseconds, std::wstring_view target = {},
                std::uint64_t limit = Patience::kUsual) {
        const std::uint64_t start = world.clock.Milliseconds();
        attempts = 0;
        const auto step = [&] {
            ++attempts;
            if (world.clock.Milliseconds() < start + milliseconds) RaiseCode(code, L"x");
        };
        const int number = NumberOf([&] { patience.Perform(step, target, limit); });
        took = world.clock.Milliseconds() - start;
        return number;
    }

    int RemoveFolder(FileSystem& disk, bool emptiedByUs) {
        System system = world.With(disk);
        Patience waiting(system, cancel);
        const std::uint64_t start = world.clock.Milliseconds();
        const int number = NumberOf([&] { waiting.RemoveFolder(tree.Path(), emptiedByUs); });
        took = world.clock.Milliseconds() - start;
        return number;
    }

    CancelToken cancel;
    Patience patience{world.system, cancel};
    std::uint64_t took = 0;
    int attempts = 0;
};

TEST_F(PatienceTest, Success_DoesNotWait) {
    EXPECT_EQ(Perform(ERROR_SHARING_VIOLATION, 0), 0);
    EXPECT_EQ(attempts, 1);
    EXPECT_EQ(world.pump.Yields(), 0);
    EXPECT_TRUE(world.files.Operations().empty());
}

TEST_F(PatienceTest, HeldForSeconds_RetriesWithGrowingPauses) {
    for (const DWORD code : {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED}) {
        EXPECT_EQ(Perform(code, 9000), 0) << code;
        EXPECT_LT(attempts, 20) << code;
        EXPECT_GT(attempts, 8) << code;
    }
}

TEST_F(PatienceTest, HeldForGood_StopsAfterTenSeconds) {
    EXPECT_EQ(Perform(ERROR_SHARING_VIOLATION, 60'000), error_number::kPermissionDenied);
    EXPECT_EQ(took, Patience::kUsual);
}

TEST_F(PatienceTest, LongStep_WaitsThirtySeconds) {
    EXPECT_EQ(Perform(ERROR_ACCESS_DENIED, 29'000, {}, Patience::kLong), 0);
    EXPECT_EQ(Perform(ERROR_ACCESS_DENIED, 60'000, {}, Patience::kLong),
              error_number::kPermissionDenied);
    EXPECT_EQ(took, Patience::kLong);
}

TEST_F(PatienceTest, AfterATimeout_WaitsHalfASecond) {
    Perform(ERROR_SHARING_VIOLATION, 60'000);
    EXPECT_NE(Perform(ERROR_SHARING_VIOLATION, 60'000, {}, Patience::kLong), 0);
    EXPECT_EQ(took, 500U);
    EXPECT_EQ(Perform(ERROR_SHARING_VIOLATION, 400), 0);
    patience.StartRun();
    EXPECT_EQ(Perform(ERROR_SHARING_VIOLATION, 9000), 0);
}

TEST_F(PatienceTest, Cancel_EndsTheWait) {
    world.pump.AtYield(5, [&] { cancel.Request(); });
    EXPECT_EQ(Perform(ERROR_SHARING_VIOLATION, 60'000), error_number::kPermissionDenied);
    EXPECT_LT(took, 2000U);
}

TEST_F(PatienceTest, CancelledBefore_WaitsHalfASecond) {
    cancel.Request();
    EXPECT_EQ(Perform(ERROR_SHARING_VIOLATION, 400), 0);
    EXPECT_NE(Perform(ERROR_SHARING_VIOLATION, 60'000), 0);
    EXPECT_EQ(took, 500U);
}

TEST_F(PatienceTest, MessagesArriveMeanwhile_KeepsItsPauses) {
    world.pump.MessageEvery(10);
    EXPECT_NE(Perform(ERROR_SHARING_VIOLATION, 60'000), 0);
    EXPECT_EQ(took, Patience::kUsual);
    EXPECT_LT(attempts, 20);
    cancel.Request();
    EXPECT_NE(Perform(ERROR_SHARING_VIOLATION, 60'000), 0);
    EXPECT_EQ(took, 500U);
    EXPECT_LT(attempts, 10);
}

TEST_F(PatienceTest, CancelInALongPause_EndsItAtOnce) {
    world.pump.MessageEvery(10);
    const std::uint64_t start = world.clock.Milliseconds();
    std::uint64_t cancelled = 0;
    world.pump.AtEachYield([&] {
        if (world.clock.Milliseconds() < start + 5000 || cancelled != 0) return;
        cancelled = world.clock.Milliseconds();
        cancel.Request();
    });
    EXPECT_NE(Perform(ERROR_SHARING_VIOLATION, 60'000), 0);
    EXPECT_EQ(start + took, cancelled);
}

TEST_F(PatienceTest, DeniedWithUnknownAttributes_IsRetried) {
    world.files.FailFrom(1, error_number::kNotReady, OnlyCalls({FileCall::Stat}));
    EXPECT_EQ(Perform(ERROR_ACCESS_DENIED, 1000, tree.Path(L"a")), 0);
}

TEST_F(PatienceTest, DeniedByAReadOnlyMark_IsNotRetried) {
    const std::wstring file = tree.File(L"a.txt");
    EXPECT_EQ(Perform(ERROR_ACCESS_DENIED, 1000, file), 0);
    tree.SetAttributes(L"a.txt", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Perform(ERROR_ACCESS_DENIED, 1000, file), error_number::kPermissionDenied);
    EXPECT_EQ(took, 0U);
    EXPECT_EQ(Perform(ERROR_SHARING_VIOLATION, 1000, file), 0) << "that is no matter of marks";
}

TEST_F(PatienceTest, OtherFailures_AreNotRetried) {
    for (const DWORD code : {ERROR_FILE_NOT_FOUND, ERROR_DISK_FULL, ERROR_ALREADY_EXISTS,
                             ERROR_DIR_NOT_EMPTY, ERROR_WRITE_PROTECT}) {
        EXPECT_NE(Perform(code, 1000), 0) << code;
        EXPECT_EQ(took, 0U) << code;
    }
}

TEST_F(PatienceTest, NotEmpty_AfterEmptyingTheFolderOnly_IsRetried) {
    StubbornFolders disk(world.disk);
    EXPECT_EQ(RemoveFolder(disk, false), error_number::kAccessError);
    EXPECT_EQ(took, 0U);
    EXPECT_EQ(RemoveFolder(disk, true), error_number::kAccessError);
    EXPECT_EQ(took, Patience::kUsual);
    disk.code = ERROR_SHARING_VIOLATION;
    EXPECT_EQ(RemoveFolder(disk, false), error_number::kPermissionDenied);
    EXPECT_EQ(took, Patience::kUsual);
}

TEST_F(PatienceTest, FolderIsDenied_WithoutAReadOnlyMarkOnly_IsRetried) {
    StubbornFolders disk(world.disk);
    disk.code = ERROR_ACCESS_DENIED;
    disk.isReadOnly = true;
    EXPECT_NE(RemoveFolder(disk, true), 0);
    EXPECT_EQ(took, 0U);
    disk.isReadOnly = false;
    EXPECT_NE(RemoveFolder(disk, true), 0);
    EXPECT_EQ(took, Patience::kUsual);
    disk.code = ERROR_SHARING_VIOLATION;
    disk.isReadOnly = true;
    EXPECT_NE(RemoveFolder(disk, true), 0);
    EXPECT_EQ(took, Patience::kUsual) << "that is no matter of marks";
    disk.code = ERROR_WRITE_PROTECT;
    EXPECT_NE(RemoveFolder(disk, true), 0);
    EXPECT_EQ(took, 0U);
}

// As a virus scanner looks into a file that was just written.
TEST_F(PatienceTest, Briefly_FileHeldForAMoment_IsRetried) {
    const std::wstring next = tree.File(L"next.txt", "next");
    const std::wstring list = tree.File(L"list.txt", "list");
    FileHandle reader(CreateFileW(list.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(reader);
    const auto replace = [&] {
        RetryBriefly([&] {
            ++attempts;
            world.disk.Replace(next, list);
        });
    };
    EXPECT_THROW(replace(), RuntimeError);
    EXPECT_EQ(attempts, 21) << "half a second";
    EXPECT_TRUE(Exists(next));
    std::thread leaving([&] {
        Sleep(60);
        reader.Reset();
    });
    EXPECT_NO_THROW(replace());
    leaving.join();
    EXPECT_EQ(ReadBytes(list), "next");
}

}  // namespace
}  // namespace vw::test
