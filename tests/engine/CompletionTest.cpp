// What the completion of an incomplete copy does besides adding the files that it lacks.

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"
#include "tests/support/YieldWatch.h"

namespace vw::test {
namespace {

/// A copy of a folder that lacks one file, which can be read now.
class CompletedCopy : public testing::Test {
  protected:
    CompletedCopy() {
        world.tree.File(L"Work\\a.txt", "a", Day(1));
        world.tree.Folder(L"Work\\Empty");
        const std::wstring used = world.tree.File(L"Work\\Sub\\b.txt", "b", Day(1));
        world.tree.SetDate(L"Work\\Sub", Day(2));
        world.tree.SetDate(L"Work", Day(3));
        world.List({L"Work\\"});
        const FileHandle held = HoldOpen(used);
        world.Run();
    }
    [[nodiscard]] std::wstring Copy(const std::wstring& name = {}) const {
        return world.Store(L"Work«0001»" + name);
    }
    [[nodiscard]] bool IsIncomplete() {
        bool isIncomplete = false;
        world.With([&](CPackage& engine) { isIncomplete = engine.IsMarkedIncomplete(Copy()); });
        return isIncomplete;
    }

    EngineFixture world;
};

TEST_F(CompletedCopy, FoldersOfAddedFiles_HaveTheirDates) {
    ASSERT_TRUE(IsIncomplete());
    world.Run();
    EXPECT_FALSE(IsIncomplete());
    EXPECT_EQ(ReadDate(Copy(L"\\Sub")), MakeDate(Day(2)));
    EXPECT_EQ(ReadDate(Copy()), MakeDate(Day(3)));
}

TEST_F(CompletedCopy, LinkInTheItem_IsNamed) {
    world.drive.marks[L"link.txt"] = [](FileInfo& facts) { facts.isLink = true; };
    world.tree.File(L"Work\\Sub\\link.txt", "x", Day(1));
    EXPECT_NE(Joined(world.Run().lines).find("Sub\\link.txt"), std::string::npos);
    EXPECT_FALSE(Exists(Copy(L"\\Sub\\link.txt")));
}

TEST_F(CompletedCopy, FileInPlaceOfAFolder_IsMadeAnew) {
    const std::wstring folder = L"Store\\Work«0001»\\Sub";
    world.tree.Remove(folder);
    world.tree.File(folder, "no folder");
    world.Run();
    EXPECT_EQ(ReadTree(Copy()), ReadTree(world.Path(L"Work")));
}

TEST_F(CompletedCopy, FolderCannotBeMade_StaysIncomplete) {
    world.tree.Remove(L"Store\\Work«0001»\\Empty");
    world.files.FailFrom(1, error_number::kPermissionDenied, [](const FileOperation& operation) {
        return operation.call == FileCall::CreateFolder &&
               operation.path.find(L"Empty") != std::wstring::npos;
    });
    EXPECT_EQ(world.Run().exitCode, error_number::kPermissionDenied);
    world.files.Heal();
    EXPECT_TRUE(IsIncomplete());
    EXPECT_TRUE(Exists(Copy(L"\\Sub\\b.txt"))) << "what could be added";
}

// Its parent gets an entry, and a date of today with it.
TEST_F(CompletedCopy, FolderIsAdded_ItsParentHasItsDate) {
    world.tree.Remove(L"Store\\Work«0001»\\Empty");
    world.Run();
    EXPECT_TRUE(Exists(Copy(L"\\Empty")));
    EXPECT_EQ(ReadDate(Copy()), MakeDate(Day(3)));
}

TEST_F(CompletedCopy, FileInTheRootIsAdded_IsNoFolder) {
    world.tree.Remove(L"Store\\Work«0001»\\a.txt");
    world.files.Heal();
    world.Run();
    EXPECT_TRUE(Exists(Copy(L"\\a.txt")));
    EXPECT_TRUE(std::ranges::none_of(world.files.Operations(), [](const FileOperation& operation) {
        return operation.call == FileCall::CopyFolderInfo && operation.to.ends_with(L"a.txt");
    }));
}

TEST_F(CompletedCopy, FullDisk_IsReportedOnceForTwoFolders) {
    world.tree.Folder(L"Work\\Empty\\Deeper");
    world.tree.Remove(L"Store\\Work«0001»\\Empty");
    world.files.FailFrom(1, error_number::kDiskFull, OnlyCalls({FileCall::CreateFolder}));
    EXPECT_EQ(world.Run().errors.size(), 1U);
    world.files.Heal();
    EXPECT_TRUE(IsIncomplete());
}

TEST_F(CompletedCopy, ItemGoesAway_MissingFolderIsReported) {
    world.files.OnOperation([this](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) world.tree.Remove(L"Work");
    });
    EXPECT_EQ(world.Run().exitCode, error_number::kPathNotFound);
    world.files.Heal();
    EXPECT_TRUE(IsIncomplete());
}

TEST_F(CompletedCopy, AddedFileIsTruncated_IsNotTaken) {
    world.tree.File(L"Work\\Sub\\b.txt", "12345678", Day(1));
    world.files.TruncateNthCopy(1);
    const RunResult result = world.Run();
    EXPECT_EQ(result.errors.size(), 1U) << Joined(result.lines);
    EXPECT_TRUE(IsIncomplete());
    EXPECT_FALSE(Exists(Copy(L"\\Sub\\b.txt")));
    EXPECT_EQ(LeftOvers(world), Lines());
}

TEST_F(CompletedCopy, AddedFileCannotTakeItsName_LeavesNothing) {
    world.files.FailFrom(1, error_number::kPermissionDenied, [](const FileOperation& operation) {
        return operation.call == FileCall::Rename &&
               operation.to.find(L"b.txt") != std::wstring::npos;
    });
    EXPECT_EQ(world.Run().exitCode, error_number::kPermissionDenied);
    world.files.Heal();
    EXPECT_TRUE(IsIncomplete());
    EXPECT_EQ(LeftOvers(world), Lines());
}

// The next file is copied under the same working name.
TEST_F(CompletedCopy, AddedFileStaysUnderItsWorkingName_NextOneIsAdded) {
    world.tree.File(L"Work\\Sub\\c.txt", "c", Day(1));
    bool isRefused = false;
    bool isStuck = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Rename && operation.to == Copy(L"\\Sub\\b.txt")) {
            isRefused = true;
            Throw(error_number::kDeviceError, operation.path);
        }
        if (operation.call == FileCall::RemoveFile && isRefused && !std::exchange(isStuck, true)) {
            Throw(error_number::kDeviceError, operation.path);
        }
    });
    world.Run();
    world.files.Heal();
    EXPECT_TRUE(isStuck);
    EXPECT_FALSE(Exists(Copy(L"\\Sub\\b.txt")));
    EXPECT_EQ(ReadBytes(Copy(L"\\Sub\\c.txt")), "c");
    EXPECT_TRUE(IsIncomplete());
}

TEST(LongCompletion, ManyFiles_WindowsKeepWorking) {
    EngineFixture world;
    constexpr int kFiles = 30;
    for (int i = 0; i < kFiles; ++i) {
        world.tree.File(L"Work\\" + std::to_wstring(i), "x", Day(1));
    }
    world.List({L"Work\\"});
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) world.state.cancel.Request();
    });
    world.Run();
    YieldWatch watch(world.files, world.pump, [&](const FileOperation& operation) {
        return operation.call == FileCall::List && operation.path == world.Store(L"Work«0001»\\");
    });
    world.Run();
    EXPECT_GE(watch.YieldsBehind(), kFiles) << "while the copy is compared";
    EXPECT_LT(watch.MostOperations(), kFiles) << "while files are added";
    EXPECT_EQ(ReadTree(world.Store(L"Work«0001»")), ReadTree(world.Path(L"Work")));
}

}  // namespace
}  // namespace vw::test
