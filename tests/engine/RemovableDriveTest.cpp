// People pull sticks out: what a copy on one consists of is on the stick itself when the run ends.

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineWorld.h"

namespace vw::test {
namespace {

class RemovableDrive : public testing::Test {
  protected:
    /// The names of the files that were flushed by the last run, without their folders.
    [[nodiscard]] Lines Flushed() const {
        Lines names;
        for (const FileOperation& operation : world.world.files.Operations()) {
            if (operation.call != FileCall::FlushFile) continue;
            names.push_back(operation.path.substr(operation.path.rfind(L'\\') + 1));
        }
        return names;
    }

    EngineWorld world;
};

TEST_F(RemovableDrive, FileItem_IsFlushedBeforeItIsReady) {
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.drive.kind = DriveKind::Removable;
    EXPECT_EQ(world.Run().exitCode, 0);
    const auto& all = world.world.files.Operations();
    const auto first = [&](FileCall call) {
        return std::find_if(
                   all.begin(), all.end(),
                   [call](const FileOperation& operation) { return operation.call == call; }) -
               all.begin();
    };
    EXPECT_LT(first(FileCall::Copy), first(FileCall::FlushFile));
    EXPECT_LT(first(FileCall::FlushFile), first(FileCall::Write));
    EXPECT_LT(first(FileCall::Write), first(FileCall::Move));
}

TEST_F(RemovableDrive, LargeFilesOfAFolder_AreFlushed) {
    world.tree.File(L"Work\\large.bin", std::string(1024 * 1024, 'x'), Day(1));
    world.tree.File(L"Work\\small.bin", std::string(1024 * 1024 - 1, 'x'), Day(1));
    world.List({L"Work\\"});
    world.drive.kind = DriveKind::Removable;
    EXPECT_EQ(world.Run().exitCode, 0);
    EXPECT_EQ(Joined(Flushed()), Joined({L"large.bin"}));
}

TEST_F(RemovableDrive, OtherDrives_AreNotFlushed) {
    for (const DriveKind kind : {DriveKind::Fixed, DriveKind::Network, DriveKind::Memory}) {
        EngineWorld other;
        other.tree.File(L"a.txt", "a", Day(1));
        other.List({L"a.txt"});
        other.drive.kind = kind;
        EXPECT_EQ(other.Run().exitCode, 0);
        for (const FileOperation& operation : other.world.files.Operations()) {
            EXPECT_NE(operation.call, FileCall::FlushFile);
        }
    }
}

TEST_F(RemovableDrive, FileThatCannotBeFlushed_IsToldAndIsNoCopy) {
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.drive.kind = DriveKind::Removable;
    world.world.files.FailNth(1, error_number::kDeviceError, OnlyCalls({FileCall::FlushFile}));
    EXPECT_EQ(world.Run().exitCode, error_number::kDeviceError);
    EXPECT_EQ(world.Copies(), Listing());
}

}  // namespace
}  // namespace vw::test
