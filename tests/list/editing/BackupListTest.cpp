#include "list/editing/BackupList.h"

#include <gmock/gmock.h>

#include <iostream>

#include "list/format/ListText.h"
#include "platform/RuntimeError.h"
#include "tests/list/editing/ListFixture.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class BackupLists : public ListFixture {};

TEST_F(BackupLists, LoadsDestinationCountAndItems) {
    const std::wstring a = tree.File(L"a.txt", "aaaa", {2024, 5, 6, 7, 8, 9});
    tree.File(L"Sub\\b.txt", std::string(2048, 'b'), {2024, 1, 1, 0, 0, 0});
    tree.File(L"Sub\\Deep\\c.txt", "c", {2024, 2, 2, 0, 0, 0});
    ListFile("BackupTo: D:\\Vault\r\nBackages: 7\r\n" +
             world.ansi.Encode(a + L"\r\n" + Path(L"Sub\\") + L"\r\n" + Path(L"Sub\\*")) + "\r\n");
    list.GetList();
    EXPECT_EQ(state.BackupTo, L"D:\\Vault");
    EXPECT_EQ(state.copiesCount, 7);
    EXPECT_EQ(main.form.Text(L"lblBackages"), L"7");
    EXPECT_EQ(main.form.Value(L"vsBackages"), 7);
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"D:");
    ASSERT_EQ(View().Rows().Count(), 3);
    EXPECT_EQ(View().Rows().SubItem(0, L"Name"), L"a");
    EXPECT_EQ(View().Rows().SubItem(0, L"Type"), L".txt");
    EXPECT_EQ(View().Rows().SubItem(0, L"Size"), L"4Byte");
    EXPECT_EQ(View().Rows().SubItem(0, L"SP"), L"00");
    EXPECT_EQ(View().Rows().SubItem(0, L"Location"), tree.Path());
    EXPECT_EQ(View().Rows().SubItem(1, L"Type"), L"Folder");
    EXPECT_EQ(View().Rows().SubItem(1, L"Size"), L"2.0KByte");
    EXPECT_EQ(View().Rows().SubItem(2, L"Name"), L"files in Sub");
    EXPECT_EQ(View().Rows().SubItem(2, L"Type"), L"Rule");
    EXPECT_EQ(View().Rows().SubItem(2, L"Size"), L"");
    EXPECT_EQ(View().Rows().SubItem(2, L"Date"), L"");
    EXPECT_EQ(View().Rows().At(0).icon, RowIcon::File);
    EXPECT_EQ(View().Rows().At(1).icon, RowIcon::Folder);
    EXPECT_EQ(View().Rows().At(2).icon, RowIcon::Rule);
    EXPECT_EQ(View().Selected(), 0);
    EXPECT_THAT(calls, ElementsAre(L"count 7", L"ListLoaded D:\\Vault", L"RestoredPath " + a));
}

TEST_F(BackupLists, ListsEachFolderOnce) {
    tree.File(L"Sub\\b.txt");
    tree.File(L"Sub\\Deep\\c.txt");
    ListFile(world.ansi.Encode(Path(L"Sub\\")));
    world.files.FailNth(1000000, 0, OnlyCalls({FileCall::List}));
    list.GetList();
    EXPECT_EQ(world.files.Count(), 2) << "each folder is listed once, for its size and its date";
}

TEST_F(BackupLists, SilentRun_ListsNoFolder) {
    const std::wstring folder = tree.Folder(L"Sub") + L"\\";
    tree.File(L"Sub\\b.txt");
    ListFile(world.ansi.Encode(folder + L"\r\n" + Path(L"gone.txt")));
    state.silentRun = true;
    world.files.FailNth(1000000, 0, OnlyCalls({FileCall::List}));
    list.GetList();
    EXPECT_EQ(world.files.Count(), 0) << "for rows that nobody sees";
    EXPECT_THAT(Paths(), ElementsAre(folder));
    EXPECT_EQ(View().Rows().SubItem(0, L"Size"), L"");
    EXPECT_THAT(list.Rows().Warnings(), IsEmpty());
    EXPECT_THAT(calls, Not(Contains(L"ListLoaded " + state.BackupTo)));
}

TEST_F(BackupLists, DestinationIsADriveAlone_MeansItsBackupFolder) {
    ListFile("BackupTo: E:\r\n");
    list.GetList();
    EXPECT_EQ(state.BackupTo, L"E:\\Backup");
}

TEST_F(BackupLists, KeyLinesAnywhere_TheLastOneIsUsed) {
    const std::wstring a = tree.File(L"a.txt");
    ListFile("BACKAGES: 2\r\n" + world.ansi.Encode(a) +
             "\r\nbackupto: D:\\One\r\nBackages: 9\r\nBackupTo: D:\\Two\r\n");
    list.GetList();
    EXPECT_EQ(state.BackupTo, L"D:\\Two");
    EXPECT_EQ(state.copiesCount, 9);
    EXPECT_THAT(Paths(), ElementsAre(a));
}

TEST_F(BackupLists, NoKeyLines_KeepsTheFormerDestinationAndCount) {
    state.BackupTo = L"D:\\Before";
    state.copiesCount = 5;
    ListFile("");
    list.GetList();
    EXPECT_EQ(state.BackupTo, L"D:\\Before");
    EXPECT_EQ(state.copiesCount, 5);
}

TEST_F(BackupLists, CountIsNoNumberOrTooLarge_IsIgnored) {
    state.copiesCount = 4;
    ListFile("Backages: many\r\nBackages: 99999\r\n");
    list.GetList();
    EXPECT_EQ(state.copiesCount, 4);
}

TEST_F(BackupLists, MissingList_IsCreatedEmpty) {
    list.GetList();
    EXPECT_EQ(Saved(), "");
    EXPECT_EQ(View().Rows().Count(), 0);
}

TEST_F(BackupLists, TwoLinesOfOnePath_AreOneItem) {
    const std::wstring a = tree.File(L"a.txt");
    ListFile(world.ansi.Encode(a + L"\r\n" + tree.Path(L"A.TXT") + L"\r\n"));
    list.GetList();
    EXPECT_THAT(Paths(), ElementsAre(a));
}

TEST_F(BackupLists, VanishedItem_NextSaveRemovesIt_KeepsTheOldList) {
    const std::wstring a = tree.File(L"a.txt");
    const std::string before = world.ansi.Encode(a + L"\r\nC:\\gone for ever.txt\r\n");
    ListFile(before);
    list.GetList();
    EXPECT_THAT(Paths(), ElementsAre(a));
    state.listModified = true;
    list.FileSave();
    EXPECT_EQ(Saved(), Expected({a}));
    EXPECT_EQ(ReadBytes(state.currentListPath + L".old"), before);
    // Only the first save has something to keep.
    state.listModified = true;
    list.FileSave();
    EXPECT_EQ(ReadBytes(state.currentListPath + L".old"), before);
}

TEST_F(BackupLists, UnreadableList_NextSaveKeepsItAsOld) {
    const std::wstring a = tree.File(L"a.txt");
    ListFile(world.ansi.Encode(a));
    list.GetList();
    const std::string other = world.ansi.Encode(tree.File(L"b.txt") + L"\r\n");
    state.currentListPath = tree.File(L"Other.vwl", other);
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::Read}));
    list.GetList();
    EXPECT_EQ(world.errors.TakeOne().procedure, L"GetList");
    world.files.Heal();
    state.listModified = true;
    list.FileSave();
    EXPECT_EQ(Saved(), Expected({a})) << "what the window shows";
    EXPECT_EQ(ReadBytes(state.currentListPath + L".old"), other);
}

// The session may end while a long list is loaded, with a change that was not saved before.
TEST_F(BackupLists, Save_WhileTheListLoads_ChangesNothing) {
    std::wstring text;
    for (int i = 0; i < 6; ++i) {
        text += tree.File(L"f" + std::to_wstring(i) + L".txt") + L"\r\n";
    }
    const std::string before = world.ansi.Encode(text);
    for (int moment = 1; moment <= 6; ++moment) {
        ListFile(before);
        state.listModified = true;
        world.pump.Restart();
        world.pump.AtYield(moment, [this] { list.FileSave(); });
        list.GetList();
        EXPECT_EQ(Saved(), before) << moment;
        EXPECT_TRUE(state.listModified);
        EXPECT_EQ(View().Rows().Count(), 6);
    }
    list.FileSave();
    EXPECT_EQ(Saved(), Expected(Paths()));
    EXPECT_FALSE(Exists(state.currentListPath + L".old"));
}

TEST_F(BackupLists, ManyItems_YieldsAfterEachLine) {
    constexpr int kItems = 2000;
    std::string text;
    for (int i = 0; i < kItems; ++i) text += "C:\\Folder " + std::to_string(i) + "\\*\r\n";
    ListFile(text + text);
    world.pump.Restart();
    list.GetList();
    EXPECT_EQ(View().Rows().Count(), kItems);
    EXPECT_GE(world.pump.Yields(), 2 * kItems) << "once for each line";
    state.listModified = true;
    list.FileSave();
    EXPECT_EQ(Saved(), Expected(Paths()));
}

TEST_F(BackupLists, ItemWithAComma_IsMissingAfterTheNextLoad) {
    const std::wstring comma = tree.File(L"one, two.txt");
    ListFile("");
    list.GetList();
    list.Rows().AddToList(comma);
    state.listModified = true;
    list.FileSave();
    EXPECT_EQ(Saved(), Expected({comma}));
    list.GetList();
    EXPECT_THAT(Paths(), IsEmpty());
}

TEST_F(BackupLists, PatternLine_IsNoItemOfTheWindow) {
    tree.File(L"a.txt");
    ListFile(world.ansi.Encode(Path(L"a*")));
    list.GetList();
    EXPECT_THAT(Paths(), IsEmpty());
}

TEST_F(BackupLists, Save_UnchangedList_DoesNotWriteTheFile) {
    ListFile("BackupTo: D:\\Vault\r\n");
    tree.SetDate(L"List.vwl", {2020, 1, 1, 0, 0, 0});
    list.GetList();
    state.listModified = false;
    list.FileSave();
    EXPECT_EQ(ReadDate(state.currentListPath), MakeDate({2020, 1, 1, 0, 0, 0}));
    EXPECT_EQ(Saved(), "BackupTo: D:\\Vault\r\n");
}

// "Use Unicode UTF-8 for worldwide language support" is switched on, and off again.
TEST_F(BackupLists, KeepsItsItemsWhenTheCodePageChanges) {
    const std::wstring arabic = tree.File(L"رسالة.txt");
    world.ansi.Use(1256);
    ListFile(world.ansi.Encode(arabic + L"\r\n"));
    for (const unsigned page : {65001U, 1252U, 65001U, 1256U}) {
        world.ansi.Use(page, 1256);
        list.GetList();
        EXPECT_THAT(Paths(), ElementsAre(arabic)) << page;
        state.listModified = true;
        list.FileSave();
        EXPECT_EQ(Saved().starts_with("\xEF\xBB\xBF"), page != 1256U) << page;
    }
}

TEST_F(BackupLists, SavesInTheOrderShown) {
    const std::wstring b = tree.File(L"b.txt");
    const std::wstring a = tree.File(L"a.txt");
    ListFile(world.ansi.Encode(b + L"\r\n" + a + L"\r\n"));
    list.GetList();
    editing.lsvBackupListColumnClick(0);
    editing.lsvBackupListColumnClick(0);
    state.listModified = true;
    list.FileSave();
    EXPECT_EQ(Saved(), Expected({a, b}));
}

TEST_F(BackupLists, DestinationWithoutADrive_KeepsTheChosenDrive) {
    main.form.SetChoices(L"cmbDestination", {L"A:", L"C:"});
    main.form.Choose(L"cmbDestination", L"C:");
    ListFile("BackupTo: \\\\server\\share\r\n");
    list.GetList();
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"C:");
    EXPECT_EQ(state.BackupTo, L"\\\\server\\share");
}

// A drive without copies shows those of C:; the box still names the drive of the list.
TEST_F(BackupLists, DriveOfTheListHasNoCopies_BoxNamesIt) {
    main.form.SetChoices(L"cmbDestination", {L"C:", L"D:"});
    onCopiesListed = [this] { main.form.Choose(L"cmbDestination", L"C:"); };
    ListFile("BackupTo: D:\\Vault\r\n");
    list.GetList();
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"D:");
}

TEST_F(BackupLists, LastDestinationHasNoDrive_ShowsTheOneBefore) {
    main.form.SetChoices(L"cmbDestination", {L"C:", L"D:"});
    ListFile("BackupTo: D:\\Vault\r\nBackupTo: \\\\server\\share\r\n");
    list.GetList();
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"D:");
}

TEST_F(BackupLists, ListOfAMissingFolder_IsReported) {
    state.currentListPath = Path(L"Missing\\List.vwl");
    list.GetList();
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kPathNotFound);
    EXPECT_EQ(error.procedure, L"GetList");
    EXPECT_EQ(error.container, L"frmMain");
}

// Whatever goes wrong while a list is saved, at any of its steps: the old list or the new one is
// there, whole, the edit is not forgotten, and the next save brings it to the disk.
TEST_F(BackupLists, SurvivesAFailureAtEveryStepOfASave) {
    const std::wstring a = tree.File(L"a.txt");
    const std::string before =
        world.ansi.Encode(L"BackupTo: D:\\Vault\r\n" + a + L"\r\nC:\\gone\r\n");
    int points = 0;
    for (const int error :
         {error_number::kDiskFull, error_number::kPermissionDenied, error_number::kDeviceError}) {
        for (int n = 1;; ++n) {
            SCOPED_TRACE(std::to_string(error) + " at step " + std::to_string(n));
            ListFile(before);
            tree.Remove(L"List.vwl.old");
            list.GetList();
            state.listModified = true;
            world.files.FailNth(n, error);
            list.FileSave();
            const bool failed = !world.files.Faults().empty();
            world.files.Heal();
            const auto errors = world.errors.Take();
            const std::string now = Saved();
            EXPECT_TRUE(now == before || now == Expected({a})) << now;
            if (!errors.empty()) {
                EXPECT_TRUE(state.listModified);
                EXPECT_EQ(errors.front().procedure, L"FileSave");
            }
            list.FileSave();
            EXPECT_EQ(Saved(), Expected({a}));
            if (!failed) break;
            ++points;
        }
    }
    std::cout << points << " failures of a save tried\n";
    EXPECT_GT(points, 15);
}

// The program may be killed at any step; what it was writing is there in half.
TEST_F(BackupLists, SurvivesAKillAtEveryStepOfASave) {
    const std::wstring a = tree.File(L"a.txt");
    const std::string before =
        world.ansi.Encode(L"BackupTo: D:\\Vault\r\n" + a + L"\r\nC:\\gone\r\n");
    int kills = 0;
    for (bool died = true; died;) {
        ListFile(before);
        list.GetList();
        state.listModified = true;
        world.files.DieAtNth(kills + 1);
        died = false;
        try {
            list.FileSave();
        } catch (const Died&) {
            died = true;
            ++kills;
        }
        world.files.Heal();
        const std::string now = Saved();
        EXPECT_TRUE(now == before || now == Expected({a})) << "killed at " << kills << ": " << now;
    }
    std::cout << kills << " kills of a save tried\n";
    EXPECT_GT(kills, 5);
}

}  // namespace
}  // namespace vw::test
