#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

// A small tree of the kinds of things that people have.
void MakeWork(const EngineFixture& world) {
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.tree.File(L"Work\\b.txt", "bb", Day(2));
    world.tree.File(L"Work\\Sub\\c.txt", "ccc", Day(3));
    world.tree.Folder(L"Work\\Empty\\Deeper");
}

TEST(BackupRun, CopiesEveryKindOfItemOnTheFirstRun) {
    EngineFixture world;
    world.tree.File(L"Report.doc", "report", Day(1));
    MakeWork(world);
    world.tree.File(L"Rule\\r.txt", "r", Day(4));
    world.tree.File(L"Rule\\Sub\\left.txt", "left", Day(5));
    world.List({L"Report.doc", L"Work\\", L"Rule\\*"});
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines),
              Joined(BackedUp(L"~\\Report.doc") +
                     BackedUp(L"~\\Work\\",
                              {L"~\\Work\\a.txt", L"~\\Work\\b.txt", L"~\\Work\\Sub\\c.txt"}) +
                     BackedUp(L"~\\Rule", {L"~\\Rule\\r.txt"}) + kDone));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(world.Copies(), (Listing{{L"Report«0001».doc", "report"},
                                       {L"Work«0001»", kFolder},
                                       {L"Work«0001»\\a.txt", "a"},
                                       {L"Work«0001»\\b.txt", "bb"},
                                       {L"Work«0001»\\Sub", kFolder},
                                       {L"Work«0001»\\Sub\\c.txt", "ccc"},
                                       {L"Work«0001»\\Empty", kFolder},
                                       {L"Work«0001»\\Empty\\Deeper", kFolder},
                                       {L"Rule«0001»", kFolder},
                                       {L"Rule«0001»\\r.txt", "r"}}));
    EXPECT_EQ(world.Comments(), (std::set<std::wstring>{L"Report«0001».doc.vwc", L"Work«0001».vwc",
                                                        L"Rule«0001».vwc"}));
}

TEST(BackupRun, DoesNotCopyUnchangedItems) {
    EngineFixture world;
    world.tree.File(L"Report.doc", "report", Day(1));
    MakeWork(world);
    world.List({L"Report.doc", L"Work\\", L"Work\\*"});
    world.Run();
    const Tree before = ReadTree(world.Store());
    world.ExpectRun(NoChange(L"~\\Report.doc") + NoChange(L"~\\Work\\") + NoChange(L"~\\Work"));
    EXPECT_EQ(ReadTree(world.Store()), before);
}

TEST(BackupRun, Copies_HaveTheDatesOfTheirFiles) {
    EngineFixture world;
    MakeWork(world);
    world.List({L"Work\\"});
    world.Run();
    EXPECT_EQ(ReadDate(world.Store(L"Work«0001»\\b.txt")), MakeDate(Day(2)));
    EXPECT_EQ(ReadDate(world.Store(L"Work«0001»\\Sub\\c.txt")), MakeDate(Day(3)));
}

TEST(BackupRun, CopiesAChangedFileAndKeepsTheOldCopy) {
    EngineFixture world;
    world.tree.File(L"a.txt", "one", Day(1));
    world.List({L"a.txt"});
    world.Run();
    world.tree.File(L"a.txt", "two", Day(2));
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "two"}, {L"a«0002».txt", "one"}}));
}

TEST(BackupRun, MovesAFolderCopyAsAWhole) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "one", Day(1));
    world.tree.File(L"Work\\Sub\\gone.txt", "gone", Day(1));
    world.List({L"Work\\"});
    world.Run();
    world.tree.Remove(L"Work\\Sub");
    world.tree.File(L"Work\\a.txt", "two", Day(2));
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\a.txt"}));
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder},
                                       {L"Work«0001»\\a.txt", "two"},
                                       {L"Work«0002»", kFolder},
                                       {L"Work«0002»\\a.txt", "one"},
                                       {L"Work«0002»\\Sub", kFolder},
                                       {L"Work«0002»\\Sub\\gone.txt", "gone"}}));
}

TEST(BackupRun, ShowsEachFileWithoutWaitingClosingOrReport) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.Run();
    EXPECT_EQ(world.host.messages,
              (std::vector<ShownMessage>{{L"Backing:", world.Path(L"a.txt")}}));
}

TEST(BackupRun, ItemAboveTheDestinationLine_GoesToTheFormerDestination) {
    EngineFixture world;
    world.tree.File(L"above.txt", "above", Day(1));
    world.tree.File(L"below.txt", "below", Day(1));
    const std::wstring other = world.tree.Folder(L"Other");
    world.ListText(L"~\\above.txt\r\nBackupTo: ~\\Other\r\n~\\below.txt\r\n");
    world.ExpectRun(BackedUp(L"~\\above.txt") + BackedUp(L"~\\below.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"above«0001».txt", "above"}}));
    EXPECT_EQ(ReadBytes(other + L"\\below«0001».txt"), "below");
    EXPECT_EQ(world.state.BackupTo, other);

    // The destination stays in effect: now both items go there.
    world.ExpectRun(BackedUp(L"~\\above.txt") + NoChange(L"~\\below.txt"));
    EXPECT_EQ(ReadBytes(other + L"\\above«0001».txt"), "above");
}

TEST(BackupRun, AppliesTheCountToItemsBelowItOnly) {
    EngineFixture world;
    world.state.copiesCount = 1;
    world.ListText(L"~\\one.txt\r\nBackages: 2\r\n~\\two.txt\r\n");
    for (int step = 1; step <= 4; ++step) {
        world.state.copiesCount = 1;
        world.tree.File(L"one.txt", std::to_string(step), Day(step));
        world.tree.File(L"two.txt", std::to_string(step), Day(step));
        world.Run();
    }
    EXPECT_EQ(world.Copies(),
              (Listing{{L"one«0001».txt", "4"}, {L"two«0001».txt", "4"}, {L"two«0002».txt", "3"}}));
    EXPECT_EQ(world.state.copiesCount, 2);
}

TEST(BackupRun, EndsTheProgramAtAMissingDestination) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.ListText(L"~\\a.txt\r\nBackupTo: ~\\Nowhere\r\n~\\a.txt\r\n");
    const std::string list = ReadBytes(world.state.currentListPath);
    world.boxes.Expect(L"فشلت العملية بسبب عدم توفر مجلد النسخ إلى:\r\n" + world.Path(L"Nowhere"));
    const RunResult result = world.Run();
    EXPECT_TRUE(result.ended);
    EXPECT_EQ(result.exitCode, error_number::kPathNotFound);
    EXPECT_EQ(Joined(result.lines), Joined(BackedUp(L"~\\a.txt") + Lines{L"[EndAtOnce]"}));
    EXPECT_EQ(ReadBytes(world.state.currentListPath), list);
}

TEST(BackupRun, DestinationVanishesBetweenItems_EndsTheProgram) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.ListText(L"~\\a.txt\r\n");
    world.state.BackupTo = world.Path(L"Nowhere");
    world.boxes.Expect(world.Path(L"Nowhere"));
    EXPECT_TRUE(world.Run().ended);
    EXPECT_FALSE(Exists(world.Path(L"Nowhere")));
}

TEST(BackupRun, YieldsBeforeEveryLineOfTheList) {
    EngineFixture world;
    world.ListText(L"\r\n\r\n\r\n");
    world.ExpectRun({});
    EXPECT_EQ(world.pump.Yields(), 3);
}

TEST(BackupRun, YieldsAfterEveryFileOfAFolder) {
    EngineFixture world;
    for (int i = 0; i < 5; ++i) {
        world.tree.File(L"Work\\" + std::to_wstring(i), "x", Day(1));
    }
    world.List({L"Work\\"});
    // What the log holds at each yield: between two files there must be one.
    std::vector<std::size_t> shown;
    world.pump.AtEachYield([&] { shown.push_back(world.host.messages.size()); });
    world.Run();
    for (std::size_t files = 1; files <= 5; ++files) {
        EXPECT_NE(std::find(shown.begin(), shown.end(), files), shown.end()) << files;
    }
}

// Calls back in the middle of each copy, as the system does for large files.
class SlowDisk : public ForwardingFileSystem {
  public:
    using ForwardingFileSystem::ForwardingFileSystem;
    void Copy(std::wstring_view from, std::wstring_view to, const CopyProgress& progress) override {
        ASSERT_TRUE(progress);
        progress();
        if (meanwhile) meanwhile();
        progress();
        Inner().Copy(from, to, progress);
    }
    std::function<void()> meanwhile;
};

TEST(BackupRun, LargeFile_CancelledMeanwhile_IsCopiedToItsEnd) {
    EngineFixture world;
    MakeWork(world);
    world.List({L"Work\\*"});
    SlowDisk slow(world.disk);
    System system = world.TestEnvironment::With(slow);
    int yields = 0;
    slow.meanwhile = [&] {
        // A cancel seen now waits for the end of the file.
        world.state.cancel.Request();
        yields = world.pump.Yields();
    };
    CPackage engine(system, world.state, world.host, world.host);
    engine.BackupAll();
    EXPECT_GE(world.host.repaints, 2);
    EXPECT_GT(world.pump.Yields(), yields);
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder}, {L"Work«0001»\\a.txt", "a"}}));
    EXPECT_EQ(world.exitStatus.Code(), error_number::kCancelled);
}

TEST(BackupRun, ExitCode_SeveralFailures_IsTheFirst) {
    EngineFixture world;
    world.tree.File(L"locked.txt", "x", Day(1));
    const FileHandle held = HoldOpen(world.Path(L"locked.txt"));
    world.List({L"Store\\", L"missing.txt", L"locked.txt"});
    EXPECT_EQ(world.Run().exitCode, error_number::kAccessError);
    world.List({L"missing.txt", L"Store\\", L"locked.txt"});
    EXPECT_EQ(world.Run().exitCode, error_number::kFileNotFound);
    world.List({L"locked.txt", L"missing.txt", L"Store\\"});
    EXPECT_EQ(world.Run().exitCode, error_number::kPermissionDenied);
}

TEST(BackupRun, FileInUse_OtherFilesAreCopied) {
    EngineFixture world;
    MakeWork(world);
    world.List({L"Work\\"});
    {
        const FileHandle held = HoldOpen(world.Path(L"Work\\a.txt"));
        const RunResult result = world.Run();
        EXPECT_EQ(Joined(result.lines),
                  Joined(Lines{L"Backing: ~\\Work\\", L"* Backing: ~\\Work\\a.txt",
                               L"! 70 BackupFile ~\\Work\\a.txt", L"* Backing: ~\\Work\\b.txt",
                               L"* Backing: ~\\Work\\Sub\\c.txt",
                               L"Files are missing, copy 1 is incomplete: ~\\Work\\", L"\tDone."} +
                         kDone));
        EXPECT_EQ(result.exitCode, error_number::kPermissionDenied);
    }
    EXPECT_FALSE(Exists(world.Store(L"Work«0001»\\a.txt")));
    EXPECT_EQ(ReadBytes(world.Store(L"Work«0001»\\b.txt")), "bb");
    // The next run completes the copy.
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\a.txt"}));
    EXPECT_EQ(ReadTree(world.Store(L"Work«0001»")), ReadTree(world.Path(L"Work")));
    world.ExpectRun(NoChange(L"~\\Work\\"));
}

TEST(BackupRun, FileInUse_ErrorNamesItsProcedure) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    const FileHandle held = HoldOpen(world.Path(L"a.txt"));
    const RunResult result = world.Run();
    ASSERT_EQ(result.errors.size(), 1U);
    EXPECT_EQ(result.errors[0].procedure, L"BackupFile");
    EXPECT_EQ(result.errors[0].kind, L"Class Module");
    EXPECT_EQ(result.errors[0].container, L"CPackage");
    EXPECT_EQ(result.errors[0].path, world.Path(L"a.txt"));
}

TEST(BackupRun, UnreadableList_IsReported) {
    EngineFixture world;
    world.List({});
    const FileHandle held = HoldOpen(world.state.currentListPath);
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines), Joined({L"! 70 BackupAll ~\\App\\List.vwl"}));
    EXPECT_EQ(result.exitCode, error_number::kPermissionDenied);
}

TEST(BackupItem, CopiesToTheCurrentDestinationWithoutAList) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"a.txt", "a", Day(1));
    const RunResult result = world.With([&](CPackage& engine) { engine.BackupItem(file); });
    EXPECT_EQ(Joined(result.lines), Joined(BackedUp(L"~\\a.txt")));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "a"}}));
    EXPECT_FALSE(Exists(world.state.currentListPath));
}

TEST(BackupItem, FolderWithoutSeparator_FailsAsAFile) {
    EngineFixture world;
    MakeWork(world);
    const std::wstring folder = world.Path(L"Work");
    const RunResult result = world.With([&](CPackage& engine) { engine.BackupItem(folder); });
    EXPECT_EQ(Joined(result.lines),
              Joined({L"Backing: ~\\Work", L"* Backing: ~\\Work", L"! 53 BackupFile ~\\Work"}));
    EXPECT_EQ(result.exitCode, error_number::kFileNotFound);
    EXPECT_EQ(world.Copies(), Listing());
}

TEST(BackupItem, EndsTheProgramAtAMissingDestination) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"a.txt", "a", Day(1));
    world.state.BackupTo = world.Path(L"Nowhere");
    world.boxes.Expect(world.Path(L"Nowhere"));
    const RunResult result = world.With([&](CPackage& engine) { engine.BackupItem(file); });
    EXPECT_TRUE(result.ended);
    EXPECT_EQ(result.exitCode, error_number::kPathNotFound);
}

TEST(BackupPath, Rule_CopiesTheFilesOfItsFolder) {
    EngineFixture world;
    MakeWork(world);
    const RunResult result = world.With(
        [&](CPackage& engine) { engine.BackupPath(world.Path(L"Work\\*"), 0, true, false); });
    EXPECT_EQ(Joined(result.lines),
              Joined(BackedUp(L"~\\Work", {L"~\\Work\\a.txt", L"~\\Work\\b.txt"})));
}

TEST(BackupPath, UsesTheGivenLocationNumber) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"a.txt", "a", Day(1));
    world.With([&](CPackage& engine) { engine.BackupPath(file, 7, false, false); });
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0701».txt", "a"}}));
}

TEST(BackupPath, SafetyCopy_IsMadeWithoutRotationOrChangeTest) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.Run();
    const std::wstring safety = world.Store(L"a«0021».txt");
    for (const char* content : {"a", "b"}) {
        world.tree.File(L"a.txt", content, Day(1));
        const RunResult result =
            world.With([&](CPackage& engine) { engine.BackupPath(file, 0, false, false, safety); });
        EXPECT_EQ(Joined(result.lines), Joined(BackedUp(L"~\\a.txt")));
        EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "a"}, {L"a«0021».txt", content}}));
        EXPECT_EQ(world.Comment(L"a«0021».txt"), world.Comment(L"a«0001».txt"));
    }
}

TEST(BackupPath, FailedSafetyCopy_KeepsWhatWasInItsPlace) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"a.txt", "new", Day(1));
    const std::wstring safety = world.tree.File(L"Store\\a«0021».txt", "old");
    world.files.FailNth(2, error_number::kPermissionDenied, OnlyCalls({FileCall::Rename}));
    const RunResult result =
        world.With([&](CPackage& engine) { engine.BackupPath(file, 0, false, false, safety); });
    EXPECT_EQ(result.exitCode, error_number::kPermissionDenied);
    world.files.Heal();
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0021».txt", "old"}}));
}

TEST(BackupPath, CommentOfASafetyCopyFails_KeepsTheFormerOne) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"a.txt", "new", Day(1));
    const std::wstring safety = world.tree.File(L"Store\\a«0021».txt", "old");
    world.tree.File(L"Store\\a«0021».txt.vwc", "old comment\r\n");
    world.files.FailFrom(1, error_number::kDeviceError, OnlyCalls({FileCall::Replace}));
    world.With([&](CPackage& engine) { engine.BackupPath(file, 0, false, false, safety); });
    world.files.Heal();
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0021».txt", "old"}}));
    EXPECT_EQ(world.Comment(L"a«0021».txt"), "old comment");
}

TEST(BackupRun, FoldersWithoutFiles_YieldsAfterEach) {
    for (const bool readable : {true, false}) {
        EngineFixture world;
        constexpr int kFolders = 5;
        world.tree.File(L"Work\\a.txt", "a", Day(1));
        for (int i = 0; i < kFolders; ++i) world.tree.Folder(L"Work\\" + std::to_wstring(i));
        world.List({L"Work\\"});
        bool copying = false;
        const OperationFilter isSubFolder = [&](const FileOperation& operation) {
            if (operation.call == FileCall::Copy) copying = true;
            return copying && operation.call == FileCall::List &&
                   operation.path.starts_with(world.Path(L"Work\\"));
        };
        if (!readable) world.files.FailFrom(1, error_number::kPermissionDenied, isSubFolder);
        std::set<int> yields;
        world.files.OnOperation([&](const FileOperation& operation) {
            if (isSubFolder(operation)) yields.insert(world.pump.Yields());
        });
        world.Run();
        // Between two folders there is a yield.
        EXPECT_EQ(yields.size(), static_cast<std::size_t>(kFolders)) << readable;
    }
}

}  // namespace
}  // namespace vw::test
