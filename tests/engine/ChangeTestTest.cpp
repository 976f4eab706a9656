#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "tests/engine/EngineFixture.h"

namespace vw::test {
namespace {

TEST(ChangeTest, NewDateSameContent_IsCopied) {
    EngineFixture world;
    world.tree.File(L"a.txt", "same", Day(1));
    world.List({L"a.txt"});
    world.Run();
    world.tree.SetDate(L"a.txt", Day(2));
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "same"}, {L"a«0002».txt", "same"}}));
}

TEST(ChangeTest, EarlierDate_IsCopied) {
    EngineFixture world;
    world.tree.File(L"a.txt", "later", Day(9));
    world.List({L"a.txt"});
    world.Run();
    world.tree.File(L"a.txt", "clock set back", Day(1));
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(ReadBytes(world.Store(L"a«0001».txt")), "clock set back");
}

TEST(ChangeTest, NewContentSameDate_IsUnchanged) {
    EngineFixture world;
    world.tree.File(L"a.txt", "one", Day(1));
    world.List({L"a.txt"});
    world.Run();
    world.tree.File(L"a.txt", "two", Day(1));
    world.ExpectRun(NoChange(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "one"}}));
}

TEST(ChangeTest, CopyDeletedDuringTheRun_IsMadeAgainByTheNextRun) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.tree.File(L"b.txt", "b", Day(1));
    world.List({L"a.txt", L"b.txt"});
    world.Run();
    world.drive.marks[L"a.txt"] = [&](FileInfo&) {
        DeleteFileW(world.Store(L"b«0001».txt").c_str());
    };
    world.ExpectRun(NoChange(L"~\\a.txt") + NoChange(L"~\\b.txt"));
    world.drive.marks.clear();
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "a"}}));
    world.ExpectRun(NoChange(L"~\\a.txt") + BackedUp(L"~\\b.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "a"}, {L"b«0001».txt", "b"}}));
}

TEST(ChangeTest, ItemChangedAfterItWasAsked_IsCopiedByTheNextRun) {
    EngineFixture world;
    world.tree.File(L"a.txt", "one", Day(1));
    world.List({L"a.txt"});
    world.Run();
    world.drive.marks[L"a.txt"] = [&](FileInfo&) { world.tree.File(L"a.txt", "two", Day(2)); };
    world.ExpectRun(NoChange(L"~\\a.txt"));
    world.drive.marks.clear();
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(ReadBytes(world.Store(L"a«0001».txt")), "two");
}

TEST(ChangeTest, DatesWithinOneSecond_AreEqual) {
    EngineFixture world;
    const std::wstring file = world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.Run();
    SetPartOfSecond(file, 9'999'999);
    ASSERT_EQ(ReadDate(file), MakeDate(Day(1)));
    world.ExpectRun(NoChange(L"~\\a.txt"));
    SetPartOfSecond(file, 0);
    world.ExpectRun(NoChange(L"~\\a.txt"));
}

TEST(ChangeTest, ComparesTheCommentNotTheDateOfTheCopy) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.Run();
    world.tree.SetDate(L"Store\\a«0001».txt", Day(5));
    world.ExpectRun(NoChange(L"~\\a.txt"));
}

TEST(ChangeTest, ChangeDeepInAFolder_IsCopied) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.tree.File(L"Work\\Sub\\Deeper\\b.txt", "b", Day(1));
    world.List({L"Work\\"});
    world.Run();
    world.tree.File(L"Work\\Sub\\Deeper\\b.txt", "new", Day(2));
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\a.txt", L"~\\Work\\Sub\\Deeper\\b.txt"}));
}

TEST(ChangeTest, ChangeBesideTheNewestFile_IsUnchanged) {
    EngineFixture world;
    world.tree.File(L"Work\\new.txt", "new", Day(9));
    world.tree.File(L"Work\\old.txt", "old", Day(1));
    world.List({L"Work\\"});
    world.Run();
    world.tree.File(L"Work\\old.txt", "older date", Day(2));
    world.tree.Remove(L"Work\\none.txt");
    world.tree.Folder(L"Work\\New folder");
    world.ExpectRun(NoChange(L"~\\Work\\"));
}

TEST(ChangeTest, CopiesARuleAgainForAChangeBelowItsFiles) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.List({L"Work\\*"});
    world.Run();
    world.tree.File(L"Work\\Sub\\b.txt", "b", Day(2));
    world.ExpectRun(BackedUp(L"~\\Work", {L"~\\Work\\a.txt"}));
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder},
                                       {L"Work«0001»\\a.txt", "a"},
                                       {L"Work«0002»", kFolder},
                                       {L"Work«0002»\\a.txt", "a"}}));
}

TEST(ChangeTest, CopiesAFolderWithoutFilesOnce) {
    EngineFixture world;
    world.tree.Folder(L"Work\\Empty");
    world.List({L"Work\\"});
    world.ExpectRun(BackedUp(L"~\\Work\\", {}));
    EXPECT_EQ(world.Copies(), (Listing{{L"Work«0001»", kFolder}, {L"Work«0001»\\Empty", kFolder}}));
    world.ExpectRun(NoChange(L"~\\Work\\"));
}

TEST(ChangeTest, NoComment_ComparesTheDatesOfTheCopy) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.List({L"Work\\"});
    world.Run();
    world.tree.Remove(L"Store\\Work«0001».vwc");
    world.ExpectRun(NoChange(L"~\\Work\\"));
    world.tree.SetDate(L"Store\\Work«0001»\\a.txt", Day(2));
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\a.txt"}));
}

TEST(ChangeTest, DamagedDate_IsCopied) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.List({L"Work\\"});
    world.Run();
    world.tree.File(L"Store\\Work«0001».vwc",
                    "Backed Files Date Last Modified:garbage+Original Location:\r\n");
    world.ExpectRun(BackedUp(L"~\\Work\\", {L"~\\Work\\a.txt"}));
    EXPECT_EQ(world.Copies().size(), 4U);
}

TEST(ChangeTest, ImpossibleDate_IsCopied) {
    EngineFixture world;
    world.tree.File(L"Work\\a.txt", "a", Day(1));
    world.List({L"Work\\"});
    world.Run();
    world.tree.File(L"Store\\Work«0001».vwc",
                    "Backed Files Date Last Modified:99/99/9999-99:99:99\r\n");
    world.ExpectRun(Lines{L"! 5 PackageDate ~\\Store\\Work«0001».vwc"} +
                    BackedUp(L"~\\Work\\", {L"~\\Work\\a.txt"}));
    world.ExpectRun(NoChange(L"~\\Work\\"));
}

TEST(ChangeTest, ItemNamedAsACopy_ReadsTheCommentBesideIt) {
    EngineFixture world;
    world.tree.File(L"x«y»\\Work\\a.txt", "a", Day(1));
    world.tree.File(L"x«y»\\b«0001».txt", "b", Day(2));
    world.List({L"x«y»\\Work\\", L"x«y»\\b«0001».txt"});
    world.ExpectRun(BackedUp(L"~\\x«y»\\Work\\", {L"~\\x«y»\\Work\\a.txt"}) +
                    BackedUp(L"~\\x«y»\\b«0001».txt"));
    // The stored date of such an "item" is asked for: a comment beside it decides.
    world.tree.File(L"x«y»\\b«0001».txt.vwc",
                    "Backed Files Date Last Modified:01/02/2003-04:05:06\r\n");
    world.ExpectRun(NoChange(L"~\\x«y»\\Work\\") + BackedUp(L"~\\x«y»\\b«0001».txt"));
    EXPECT_EQ(ReadBytes(world.Store(L"b«0001»«0001».txt")), "b");
    EXPECT_NE(world.Comment(L"b«0001»«0001».txt").find("2003"), std::string::npos);
}

TEST(VanishedItem, WithoutCopies_IsReportedAndUnchanged) {
    EngineFixture world;
    world.List({L"a.txt", L"Work\\", L"Rule\\*"});
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines),
              Joined(Missing(L"~\\a.txt") + NoChange(L"~\\a.txt") + Missing(L"~\\Work\\") +
                     NoChange(L"~\\Work\\") + Missing(L"~\\Rule") + NoChange(L"~\\Rule") + kDone));
    EXPECT_EQ(result.exitCode, error_number::kFileNotFound);
    EXPECT_EQ(world.Copies(), Listing());
}

TEST(VanishedItem, ExitCode_DiffersForFolderAndFile) {
    EngineFixture world;
    for (const wchar_t* item : {L"Work\\", L"Rule\\*"}) {
        world.List({item});
        EXPECT_EQ(world.Run().exitCode, error_number::kPathNotFound);
    }
}

TEST(VanishedItem, File_CopiesRotate_Fails) {
    EngineFixture world;
    world.List({L"a.txt"}, 2);
    for (int step = 1; step <= 2; ++step) {
        world.tree.File(L"a.txt", std::to_string(step), Day(step));
        world.Run();
    }
    world.tree.Remove(L"a.txt");
    const std::string comment = world.Comment(L"a«0001».txt");
    const RunResult result = world.Run();
    EXPECT_EQ(Joined(result.lines), Joined(Missing(L"~\\a.txt") +
                                           Lines{L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt",
                                                 L"! 53 BackupFile ~\\a.txt"} +
                                           kDone));
    EXPECT_EQ(result.exitCode, error_number::kFileNotFound);
    // Copy 2 was beyond the count, copy 1 took its place; no comment was written.
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "2"}}));
    EXPECT_EQ(world.Comment(L"a«0001».txt"), comment);
    // Without a copy 1 nothing is there to rotate any more: the other copies stay.
    world.ExpectRun(Missing(L"~\\a.txt") + NoChange(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0002».txt", "2"}}));
}

TEST(VanishedItem, FolderAndRule_CopiesRotate_Fail) {
    for (const wchar_t* item : {L"Work\\", L"Work\\*"}) {
        EngineFixture world;
        world.List({item});
        world.tree.File(L"Work\\a.txt", "a", Day(1));
        world.Run();
        world.tree.Remove(L"Work");
        const std::wstring shown = item[5] == L'*' ? L"~\\Work" : L"~\\Work\\";
        const RunResult result = world.Run();
        EXPECT_EQ(Joined(result.lines),
                  Joined(Missing(shown) + Lines{L"Backing: " + shown, L"! 76 BackupPath " + shown} +
                         kDone));
        EXPECT_EQ(result.exitCode, error_number::kPathNotFound);
        EXPECT_EQ(world.Copies(), (Listing{{L"Work«0002»", kFolder}, {L"Work«0002»\\a.txt", "a"}}));
    }
}

TEST(VanishedItem, CountIsZero_KeepsItsCopies) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.Run();
    world.tree.Remove(L"a.txt");
    world.List({L"a.txt"}, 0);
    world.ExpectRun(Missing(L"~\\a.txt") + Lines{L"! 1000 RenamePackages ~\\a.txt",
                                                 L"Backing: ~\\a.txt", L"* Backing: ~\\a.txt",
                                                 L"! 53 BackupFile ~\\a.txt"});
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "a"}}));
}

TEST(VanishedItem, ExistsAgain_IsBackedUp) {
    EngineFixture world;
    world.tree.File(L"a.txt", "one", Day(1));
    world.List({L"a.txt"});
    world.Run();
    world.tree.Remove(L"a.txt");
    world.Run();
    world.tree.File(L"a.txt", "two", Day(2));
    world.ExpectRun(BackedUp(L"~\\a.txt"));
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "two"}, {L"a«0003».txt", "one"}}));
}

TEST(VanishedItem, CopyInUse_CopiesDoNotRotate) {
    EngineFixture world;
    world.tree.File(L"a.txt", "a", Day(1));
    world.List({L"a.txt"});
    world.Run();
    world.tree.Remove(L"a.txt");
    const FileHandle held = HoldInPlace(world.Store(L"a«0001».txt"));
    world.ExpectRun(Missing(L"~\\a.txt") + Lines{L"! 70 RenamePackages ~\\Store\\a«0001».txt"});
    EXPECT_EQ(world.Copies(), (Listing{{L"a«0001».txt", "a"}}));
}

}  // namespace
}  // namespace vw::test
