#include <gtest/gtest.h>

#include "platform/MessageBoxes.h"
#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"
#include "tests/support/YieldWatch.h"

namespace vw::test {
namespace {

RunResult GetBackupTo(EngineFixture& world) {
    return world.With([](CPackage& engine) { engine.GetBackupTo(); });
}

TEST(GetBackupTo, ReadsTheDestinationFromTheList) {
    EngineFixture world;
    const std::wstring other = world.tree.Folder(L"Other");
    world.ListText(L"Backages: 7\r\nbackupto: ~\\Other\r\nC:\\x.txt\r\n");
    const RunResult result = GetBackupTo(world);
    EXPECT_EQ(world.state.BackupTo, other);
    EXPECT_EQ(world.state.copiesCount, 3);
    EXPECT_FALSE(result.ended);
    EXPECT_EQ(result.exitCode, 0);
}

TEST(GetBackupTo, ReadsTheLastOfSeveralDestinations) {
    EngineFixture world;
    const std::wstring last = world.tree.Folder(L"Last");
    world.ListText(L"BackupTo: ~\\Store\r\nBackupTo: ~\\Last\r\n");
    GetBackupTo(world);
    EXPECT_EQ(world.state.BackupTo, last);
}

TEST(GetBackupTo, KeepsTheDestinationUncheckedWithoutAKeyLine) {
    for (const wchar_t* text : {L"", L"C:\\x.txt\r\n", L"Backages: 3\r\n", L"BackupTo\r\n"}) {
        EngineFixture world;
        world.ListText(text);
        world.state.BackupTo = world.Path(L"Nowhere");
        EXPECT_FALSE(GetBackupTo(world).ended);
        EXPECT_EQ(world.state.BackupTo, world.Path(L"Nowhere"));
    }
}

TEST(GetBackupTo, MakesAMissingListEmpty) {
    EngineFixture world;
    ASSERT_FALSE(Exists(world.state.currentListPath));
    EXPECT_EQ(GetBackupTo(world).exitCode, 0);
    EXPECT_EQ(ReadBytes(world.state.currentListPath), "");
    EXPECT_EQ(world.state.BackupTo, world.Store());
}

TEST(GetBackupTo, DriveAlone_MeansItsBackupFolder) {
    EngineFixture world;
    world.ListText(L"BackupTo: Q:\r\n");
    world.boxes.Expect(L"\r\nQ:\\Backup");
    EXPECT_TRUE(GetBackupTo(world).ended);
    EXPECT_EQ(world.state.BackupTo, L"Q:\\Backup");
}

TEST(GetBackupTo, DriveRoot_IsUsedUnchanged) {
    EngineFixture world;
    const std::wstring root = world.Path().substr(0, 3);
    world.ListText(L"BackupTo: " + root + L"\r\n");
    EXPECT_FALSE(GetBackupTo(world).ended);
    EXPECT_EQ(world.state.BackupTo, root);
}

TEST(GetBackupTo, NoBlankAfterTheKey_LosesACharacter) {
    EngineFixture world;
    world.ListText(L"BackupTo:C:\\Backup\r\n");
    world.boxes.Expect(L"\r\n:\\Backup");
    EXPECT_TRUE(GetBackupTo(world).ended);
    EXPECT_EQ(world.state.BackupTo, L":\\Backup");
}

TEST(GetBackupTo, FirstDestinationIsMissing_EndsTheProgram) {
    EngineFixture world;
    world.ListText(L"BackupTo: ~\\Nowhere\r\nBackupTo: ~\\Store\r\n");
    world.boxes.Expect(world.Path(L"Nowhere"));
    const RunResult result = GetBackupTo(world);
    EXPECT_TRUE(result.ended);
    EXPECT_EQ(result.exitCode, error_number::kPathNotFound);
}

TEST(GetBackupTo, UnreadableList_IsReported) {
    EngineFixture world;
    world.List({});
    const FileHandle held = HoldOpen(world.state.currentListPath);
    EXPECT_EQ(Joined(GetBackupTo(world).lines), Joined({L"! 70 GetBackupTo ~\\App\\List.vwl"}));
}

TEST(MissingDestination, Error_IsShownInARightToLeftBox) {
    EngineFixture world;
    world.state.BackupTo = world.Path(L"Nowhere");
    world.boxes.Expect({});
    const RunResult result =
        world.With([](CPackage& engine) { engine.ErrorOnBackupFolderNotExists(); });
    EXPECT_TRUE(result.ended);
    EXPECT_EQ(result.exitCode, error_number::kPathNotFound);
    EXPECT_EQ(Joined(result.lines), Joined({L"[EndAtOnce]"}));
    ASSERT_EQ(world.boxes.Shown().size(), 1U);
    const MessageBoxRequest& box = world.boxes.Shown().front();
    EXPECT_EQ(box.text, L"فشلت العملية بسبب عدم توفر مجلد النسخ إلى:\r\n" + world.Path(L"Nowhere"));
    EXPECT_EQ(box.icon, BoxIcon::Exclamation);
    EXPECT_TRUE(box.rightToLeft);
}

TEST(MissingDestination, FileOfThatName_EndsTheProgram) {
    EngineFixture world;
    world.state.BackupTo = world.tree.File(L"file");
    world.boxes.Expect({});
    EXPECT_TRUE(world.With([](CPackage& engine) { engine.ErrorOnBackupFolderNotExists(); }).ended);
}

TEST(MissingDestination, NoDestination_EndsTheProgram) {
    EngineFixture world;
    world.state.BackupTo.clear();
    world.tree.File(L"a.txt", "a", Day(1));
    world.ListText(L"~\\a.txt\r\n");
    world.boxes.Expect({});
    EXPECT_TRUE(world.Run().ended);
}

TEST(PresentDestination, FolderExists_ReportsNothing) {
    EngineFixture world;
    const RunResult result =
        world.With([](CPackage& engine) { engine.ErrorOnBackupFolderNotExists(); });
    EXPECT_FALSE(result.ended);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.lines, Lines());
}

TEST(Destination, FinalSeparator_HasNoEffect) {
    EngineFixture world;
    world.tree.File(L"a.txt", "1", Day(1));
    world.ListText(L"BackupTo: ~\\Store\\\r\n~\\a.txt\r\n");
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    world.ExpectRun(NoChange(L"~\\a.txt"));
    world.tree.File(L"a.txt", "2", Day(2));
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "2"}, {L"a«0002».txt", "1"}}));
}

TEST(Destination, KeepsForeignFiles) {
    EngineFixture world;
    world.tree.File(L"Store\\letter.txt", "letter");
    world.tree.File(L"Store\\a.vwnew-1", "no working name");
    world.tree.File(L"Store\\.vwold-", "no working name");
    world.tree.File(L"Store\\a«00».txt", "no copy");
    world.tree.File(L"a.txt", "1", Day(1));
    world.List({L"a.txt"});
    world.Run();
    EXPECT_EQ(world.Copies(), (Listing{{L"letter.txt", "letter"},
                                       {L"a.vwnew-1", "no working name"},
                                       {L".vwold-", "no working name"},
                                       {L"a«00».txt", "no copy"},
                                       {L"a«0001».txt", "1"}}));
}

TEST(Destination, ManyEntries_YieldsAfterEachWhileItIsListed) {
    EngineFixture world;
    constexpr int kEntries = 20;
    for (int i = 0; i < kEntries; ++i) world.tree.File(L"Store\\" + std::to_wstring(i), "x");
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    YieldWatch watch(world.files, world.pump, [&](const FileOperation& operation) {
        return operation.call == FileCall::List && operation.path == world.Store();
    });
    world.Run();
    EXPECT_GE(watch.YieldsBehind(), kEntries);
}

}  // namespace
}  // namespace vw::test
