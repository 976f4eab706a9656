// "BackupTo: X:" means the root of the drive, wherever the process happens to be on it.

#include <gtest/gtest.h>

#include "engine/DestinationLock.h"
#include "tests/engine/EngineFixture.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/OtherRun.h"
#include "tests/support/TestDrive.h"

namespace vw::test {
namespace {

class DestinationRoot : public testing::Test {
  public:
    DestinationRoot(const DestinationRoot&) = delete;
    DestinationRoot& operator=(const DestinationRoot&) = delete;

  protected:
    DestinationRoot() {
        Clean();
        world.tree.Folder(elsewhere);
        world.ListText(L"BackupTo: " + drive.Name() + L"\r\nBackages: 3\r\n~\\rooted.txt\r\n");
    }
    ~DestinationRoot() override { Clean(); }

    // A run that failed may have left more than copies.
    void Clean() {
        world.tree.Remove(elsewhere);
        Lines left;
        world.disk.List(drive.Name() + L"\\", [&](const FolderEntry& entry) {
            if (entry.name.starts_with(L"rooted")) left.emplace_back(entry.name);
        });
        for (const std::wstring& name : left) world.tree.Remove(drive.Name() + L"\\" + name);
    }

    [[nodiscard]] std::wstring Copy(int number) const {
        return drive.Name() + L"\\rooted«000" + std::to_wstring(number) + L"».txt";
    }

    TestDrive drive;
    EngineFixture world;
    const std::wstring elsewhere = drive.Name() + L"\\Elsewhere";
};

TEST_F(DestinationRoot, CopiesRotate_WithAnotherCurrentFolder) {
    const CurrentFolder current(elsewhere);
    for (int version = 1; version <= 4; ++version) {
        world.tree.File(L"rooted.txt", std::to_string(version), Day(version));
        const RunResult result = world.Run();
        EXPECT_EQ(result.exitCode, 0) << Joined(result.lines);
    }
    EXPECT_EQ(ReadBytes(Copy(1)), "4");
    EXPECT_EQ(ReadBytes(Copy(2)), "3");
    EXPECT_EQ(ReadBytes(Copy(3)), "2");
    world.ExpectRun(NoChange(L"~\\rooted.txt"));
}

TEST_F(DestinationRoot, LockIsTheRoots_WithAnotherCurrentFolder) {
    world.tree.File(L"rooted.txt", "1", Day(1));
    world.state.silentRun = true;
    const CurrentFolder current(elsewhere);
    const OtherRun other(drive.Name() + L"\\");
    EXPECT_EQ(world.Run().exitCode, error_number::kDestinationBusy);
}

TEST_F(DestinationRoot, LockFile_IsInTheRoot) {
    world.tree.File(L"rooted.txt", "1", Day(1));
    const CurrentFolder current(elsewhere);
    int asked = 0;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::Copy) return;
        ++asked;
        EXPECT_TRUE(Exists(drive.Name() + L"\\Vaultwright.vwlock"));
    });
    world.Run();
    EXPECT_EQ(asked, 1);
}

TEST_F(DestinationRoot, FreeSpaceAndKind_AreReadFromTheRoot) {
    world.tree.File(L"rooted.txt", "1", Day(1));
    const CurrentFolder current(elsewhere);
    world.drive.kind = DriveType::Fixed;
    world.Run();
    EXPECT_EQ(Joined(world.drive.asked), Joined({drive.Name() + L"\\"}));
}

// However the path of the item is spelled, and whatever the current folder of the drive is.
TEST_F(DestinationRoot, ItemOnTheDrive_IsRefused) {
    const CurrentFolder current(elsewhere);
    world.state.BackupTo = drive.Name();
    world.With([&](CPackage& engine) {
        for (const std::wstring& path : {drive.Name() + L"\\Docs\\a.txt", drive.Name() + L"\\",
                                         std::wstring(L"..\\a.txt"), std::wstring(L"..")}) {
            EXPECT_TRUE(engine.IsRefused(path)) << testing::PrintToString(path);
        }
        EXPECT_FALSE(engine.IsRefused(world.Path(L"a.txt")));
    });
}

}  // namespace
}  // namespace vw::test
