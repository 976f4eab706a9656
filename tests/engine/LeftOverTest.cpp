#include <gtest/gtest.h>

#include "platform/WindowsHeader.h"
#include "tests/engine/EngineFixture.h"
#include "tests/engine/LeftOvers.h"

// Entries of runs that were killed, which a later run removes.

namespace vw::test {
namespace {

TEST(LeftOverOfADeadProcess, InUse_IsRemovedByALaterRun) {
    EngineFixture world;
    world.tree.File(L"other.txt", "x", Day(1));
    world.List({L"other.txt"});
    const std::wstring name = LeftOverName(world, WorkingState::New, L"a.txt", DeadProcess());
    world.tree.File(L"Store\\" + name, "half");
    {
        const FileHandle held = HoldInPlace(world.Store(name));
        world.ExpectRun(BackedUp(L"~\\other.txt"));
        EXPECT_TRUE(Exists(world.Store(name)));
    }
    world.ExpectRun(NoChange(L"~\\other.txt"));
    EXPECT_FALSE(Exists(world.Store(name)));
}

// What a killed run had written may be what the new copy has no room for.
TEST(LeftOverOfADeadProcess, NewCopyIsMade_IsGoneBefore) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    const std::wstring name = LeftOverName(world, WorkingState::New, L"b.txt", DeadProcess());
    world.tree.File(L"Store\\" + name, "half");
    bool wasThere = true;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call == FileCall::Copy) wasThere = Exists(world.Store(name));
    });
    world.Run();
    EXPECT_FALSE(wasThere);
}

TEST(LeftOverOfADeadProcess, ReadOnlyFiles_AreRemoved) {
    EngineFixture world;
    world.List({});
    world.tree.File(L"other.txt", "x", Day(1));
    world.List({L"other.txt"});
    const std::wstring name =
        L"Store\\" + LeftOverName(world, WorkingState::Old, L"Work\\", DeadProcess());
    world.tree.File(name + L"\\a.txt", "x");
    world.tree.SetAttributes(name + L"\\a.txt", FILE_ATTRIBUTE_READONLY);
    world.Run();
    EXPECT_TRUE(LeftOvers(world).empty());
}

TEST(LeftOverOfADeadProcess, ItemNamedLikeTheLock_LeftOverIsRemoved) {
    EngineFixture world;
    const std::wstring item = std::wstring(kLockFileName) + L".txt";
    world.tree.File(L"Store\\" + LeftOverName(world, WorkingState::New, item, DeadProcess()), "x");
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.Run();
    EXPECT_EQ(LeftOvers(world), Lines());
}

TEST(ItemNamedLikeTheLock, BackedUpTwice_ItsCopyIsFound) {
    EngineFixture world;
    const std::wstring item = std::wstring(kLockFileName) + L".txt";
    world.List({item}, 2);
    for (int step = 1; step <= 2; ++step) {
        world.tree.File(item, std::to_string(step), Day(step));
        world.ExpectRun(BackedUp(L"~\\" + item));
        world.ExpectRun(NoChange(L"~\\" + item));
    }
    const std::wstring name(kLockFileName);
    EXPECT_EQ(world.Copies(), (Listing{{name + L"«0001».txt", "2"}, {name + L"«0002».txt", "1"}}));
}

TEST(LeftOverOfADeadProcess, FormerDestinationOrSingleItem_IsRemoved) {
    for (const bool isSingle : {false, true}) {
        EngineFixture world;
        world.tree.Folder(L"Second");
        const std::wstring item = world.tree.File(L"a.txt", "a", Day(1));
        world.ListText(L"~\\a.txt\r\nBackupTo: ~\\Second\r\n~\\a.txt\r\n");
        world.tree.File(
            L"Store\\" + LeftOverName(world, WorkingState::Old, L"b.txt", DeadProcess()), "b");
        if (isSingle) {
            world.With([&](CPackage& engine) { engine.BackupItem(item); });
        } else {
            world.Run();
        }
        EXPECT_EQ(LeftOvers(world), Lines()) << isSingle;
    }
}

}  // namespace
}  // namespace vw::test
