// New, open, save as, close and the destination: the commands on whole lists.

#include <gmock/gmock.h>

#include "list/editing/BackupList.h"
#include "platform/RuntimeError.h"
#include "tests/list/editing/ListWorld.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class ListCommands : public ListWorld {};

TEST_F(ListCommands, NewTakesTheChosenNameAndIsEmpty) {
    const std::wstring a = tree.File(L"a.txt");
    ListFile(world.ansi.Encode(a));
    list.GetList();
    const std::wstring chosen = tree.File(L"New.vwl", "an old list");
    dialogs.Expect(chosen);
    list.FileNew(false);
    EXPECT_EQ(state.currentListPath, chosen);
    EXPECT_EQ(Saved(), "");
    EXPECT_EQ(View().Count(), 0);
    EXPECT_TRUE(state.listModified);
    EXPECT_EQ(recent.RecentFile(1), chosen);
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_TRUE(dialogs.saving[0]);
    EXPECT_EQ(dialogs.shown[0].flags, 0x80006U);
    EXPECT_EQ(dialogs.shown[0].filter, L"مهمة نسخ احتياطي(As *.vwl)|*.vwl");
    EXPECT_EQ(dialogs.shown[0].defaultExtension, L"vwl");
    EXPECT_THAT(calls, Contains(L"SetCaption"));
}

TEST_F(ListCommands, SaveAsWritesTheItemsUnderTheOtherName) {
    const std::wstring a = tree.File(L"a.txt");
    ListFile(world.ansi.Encode(a));
    list.GetList();
    const std::wstring other = tree.File(L"Other.vwl", "an old list");
    dialogs.Expect(other);
    list.FileSaveAs();
    EXPECT_EQ(state.currentListPath, other);
    EXPECT_EQ(Saved(), Expected({a}));
    EXPECT_FALSE(state.listModified);
}

TEST_F(ListCommands, SaveAsThatFailsLeavesTheOtherList) {
    ListFile("");
    list.GetList();
    const std::wstring other = tree.File(L"Other.vwl", "an old list");
    dialogs.Expect(other);
    world.files.FillDiskFrom(1);
    list.FileSaveAs();
    EXPECT_EQ(world.errors.TakeOne().procedure, L"FileSave");
    EXPECT_EQ(ReadBytes(other), "an old list");
    EXPECT_TRUE(state.listModified);
}

TEST_F(ListCommands, CancelledSaveAsSavesUnderTheOldName) {
    ListFile("");
    list.GetList();
    state.listModified = true;
    dialogs.Expect(std::nullopt);
    list.FileSaveAs();
    EXPECT_EQ(Saved(), Expected({}));
}

TEST_F(ListCommands, OpenAsksAndShowsTheCopiesOfItsFirstItem) {
    const std::wstring a = tree.File(L"a.txt");
    const std::wstring other = tree.File(L"Other.vwl", world.ansi.Encode(a));
    dialogs.Expect(other);
    list.FileOpen();
    EXPECT_THAT(Paths(), ElementsAre(a));
    EXPECT_EQ(recent.RecentFile(1), other);
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_FALSE(dialogs.saving[0]);
    EXPECT_EQ(dialogs.shown[0].flags, 0x81004U);
    EXPECT_THAT(calls, Contains(L"RestoredPath " + a));
    EXPECT_THAT(calls, Contains(L"SetCaption"));
}

TEST_F(ListCommands, OpenAnEmptyListAsksForTheCopiesOfNothing) {
    list.FileOpen(tree.File(L"Other.vwl", ""));
    EXPECT_THAT(calls, Contains(L"RestoredPath "));
}

TEST_F(ListCommands, CancelledDialogsChangeNothing) {
    ListFile("BackupTo: D:\\Vault\r\n");
    list.GetList();
    state.listModified = false;
    calls.clear();
    for (int i = 0; i < 2; ++i) dialogs.Expect(std::nullopt);
    list.FileNew(false);
    list.FileOpen();
    EXPECT_EQ(state.currentListPath, Path(L"List.vwl"));
    EXPECT_FALSE(state.listModified);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(ListCommands, ClosingWithoutSavingSavesNothing) {
    ListFile("BackupTo: D:\\Vault\r\n");
    list.GetList();
    state.listModified = true;
    list.DoClose();
    list.SaveOnClose();
    EXPECT_EQ(Saved(), "BackupTo: D:\\Vault\r\n");
    EXPECT_THAT(calls, Contains(L"frmUnload"));
}

TEST_F(ListCommands, ClosingSavesButNotInASilentRun) {
    ListFile("");
    list.GetList();
    state.listModified = true;
    state.silentRun = true;
    list.SaveOnClose();
    EXPECT_EQ(Saved(), "");
    state.silentRun = false;
    list.SaveOnClose();
    EXPECT_EQ(Saved(), Expected({}));
}

TEST_F(ListCommands, AChosenDestinationIsStoredAndSavedAtOnce) {
    ListFile("");
    list.GetList();
    calls.clear();
    list.CopyTo(L"");
    EXPECT_THAT(calls, IsEmpty());
    list.CopyTo(L"D:\\Other vault");
    EXPECT_EQ(state.BackupTo, L"D:\\Other vault");
    EXPECT_EQ(settings.GetSetting(setting::kBackupTo, L""), L"D:\\Other vault");
    EXPECT_EQ(Saved(), Expected({}));
    EXPECT_THAT(calls, ElementsAre(L"ListRestoreFiles", L"RestoredPath "));
}

TEST_F(ListCommands, SaveAs_OverAnotherList_KeepsNoOldFile) {
    ListFile(world.ansi.Encode(tree.File(L"a.txt")));
    list.GetList();
    const std::wstring other = tree.File(L"Other.vwl", "an old list");
    dialogs.Expect(other);
    list.FileSaveAs();
    EXPECT_FALSE(world.disk.Look(other + L".old")) << "the user has agreed to replace it";
}

TEST_F(ListCommands, Open_ListCannotBeRead_IsStillARecentList) {
    ListFile("");
    list.GetList();
    const std::wstring other = Path(L"Unplugged\\Other.vwl");
    list.FileOpen(other);
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPathNotFound);
    EXPECT_EQ(recent.RecentFile(1), other);
}

TEST_F(ListCommands, GetList_WithoutDestination_ShowsTheDriveOfThePresentOne) {
    state.BackupTo = L"D:\\Vault";
    main.form.Choose(L"cmbDestination", L"C:");
    ListFile("Backages: 4\r\n");
    list.GetList();
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"D:");
}

}  // namespace
}  // namespace vw::test
