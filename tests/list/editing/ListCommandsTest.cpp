// New, open, save as, close and the destination: the commands on whole lists.

#include <gmock/gmock.h>

#include "list/editing/BackupList.h"
#include "platform/FileSystem.h"
#include "platform/RuntimeError.h"
#include "platform/TextDirection.h"
#include "tests/list/editing/ListFixture.h"
#include "tests/support/TestDrive.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class ListCommands : public ListFixture {};

TEST_F(ListCommands, New_HasTheChosenNameAndIsEmpty) {
    const std::wstring a = tree.File(L"a.txt");
    ListFile(world.ansi.Encode(a));
    list.GetList();
    const std::wstring chosen = tree.File(L"New.vwl", "an old list");
    dialogs.Expect(chosen);
    list.FileNew(false);
    EXPECT_EQ(state.currentListPath, chosen);
    EXPECT_EQ(Saved(), "");
    EXPECT_EQ(View().Rows().Count(), 0);
    EXPECT_TRUE(state.listModified);
    EXPECT_EQ(recent.RecentFile(1), chosen);
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_TRUE(dialogs.saving[0]);
    EXPECT_EQ(dialogs.shown[0].flags, 0x80006U);
    EXPECT_EQ(dialogs.shown[0].filter, L"مهمة نسخ احتياطي(As *.vwl)|*.vwl");
    EXPECT_EQ(dialogs.shown[0].defaultExtension, L"vwl");
    EXPECT_THAT(calls, Contains(L"SetCaption"));
}

TEST_F(ListCommands, SaveAs_WritesTheItemsUnderTheOtherName) {
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

TEST_F(ListCommands, SaveAs_DiskIsFull_KeepsTheOtherList) {
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

TEST_F(ListCommands, SaveAs_Cancelled_SavesUnderTheOldName) {
    ListFile("");
    list.GetList();
    state.listModified = true;
    dialogs.Expect(std::nullopt);
    list.FileSaveAs();
    EXPECT_EQ(Saved(), Expected({}));
}

TEST_F(ListCommands, Open_ShowsTheCopiesOfTheFirstItem) {
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

TEST_F(ListCommands, Open_EmptyList_ShowsNoCopies) {
    list.FileOpen(tree.File(L"Other.vwl", ""));
    EXPECT_THAT(calls, Contains(L"RestoredPath "));
}

TEST_F(ListCommands, CancelledDialogs_ChangeNothing) {
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

TEST_F(ListCommands, NewAndOpenByDialog_SaveTheListThatTheyLeave) {
    const std::wstring first = ListFile("");
    list.GetList();
    state.listModified = true;
    dialogs.Expect(Path(L"New.vwl"));
    list.FileNew(false);
    EXPECT_EQ(ReadBytes(first), Expected({}));

    state.listModified = true;
    dialogs.Expect(first);
    list.FileOpen();
    EXPECT_EQ(ReadBytes(Path(L"New.vwl")), Expected({}));
}

TEST_F(ListCommands, Close_SavesExceptInASilentRun) {
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

TEST_F(ListCommands, ChooseDestination_IsStoredAndSavedAtOnce) {
    ListFile("");
    list.GetList();
    calls.clear();
    const std::wstring vault = Path(L"Other vault");
    list.ChooseDestination(vault);
    EXPECT_EQ(state.BackupTo, vault);
    EXPECT_EQ(settings.GetSetting(setting::kBackupTo, L""), vault);
    EXPECT_EQ(Saved(), Expected({}));
    EXPECT_THAT(calls, ElementsAre(L"ListRestoreFiles", L"RestoredPath "));
    EXPECT_TRUE(Exists(vault)) << "made when it is missing";
    EXPECT_EQ(main.form.Text(L"cmbDestination"), vault.substr(0, 2));
    EXPECT_EQ(Status(), L"");
}

TEST_F(ListCommands, ChooseDestination_DriveNotReady_KeepsTheFormerOne) {
    const std::wstring vault = tree.Folder(L"Vault");
    ListFile("BackupTo: " + world.ansi.Encode(vault) + "\r\n");
    list.GetList();
    settings.SaveSetting(setting::kBackupTo, vault);
    const std::string before = Saved();
    calls.clear();
    main.form.Choose(L"cmbDestination", L"Q:");
    list.ChooseDestination(L"Q:\\Backup");
    EXPECT_EQ(state.BackupTo, vault);
    EXPECT_EQ(settings.GetSetting(setting::kBackupTo, L""), vault);
    EXPECT_EQ(Saved(), before);
    EXPECT_FALSE(state.listModified);
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_EQ(main.form.Text(L"cmbDestination"), vault.substr(0, 2));
    EXPECT_EQ(Status(), L"Drive Q: is not ready. The copies still go to " + vault + L".");
}

TEST_F(ListCommands, ChooseDestination_DriveNotReady_NamesPathsInOrderInArabic) {
    const std::wstring vault = tree.Folder(L"العمل\\نسخ");
    state.BackupTo = vault;
    state.language = Language::Arabic;
    list.ChooseDestination(L"Q:\\Backup");
    EXPECT_NE(MarkPath(vault), vault);
    EXPECT_EQ(Status(), L"محرك الأقراص " + MarkPath(L"Q:") + L" غير جاهز. تبقى النسخ في " +
                            MarkPath(vault) + L".");
}

TEST_F(ListCommands, ChooseDestination_FolderCannotBeMade_KeepsTheFormerOne) {
    state.BackupTo = tree.Folder(L"Vault");
    tree.File(L"Occupied");
    list.ChooseDestination(Path(L"Occupied"));
    list.ChooseDestination(Path(L"Missing\\Deep"));
    EXPECT_EQ(state.BackupTo, Path(L"Vault"));
    world.files.FailNth(1, error_number::kAccessError, OnlyCalls({FileCall::CreateFolder}));
    list.ChooseDestination(Path(L"Refused"));
    EXPECT_EQ(state.BackupTo, Path(L"Vault"));
}

TEST_F(ListCommands, ChooseDestination_NoDriveIsReady_ShowsC) {
    state.BackupTo = L"X:\\Backup";
    main.form.Choose(L"cmbDestination", L"Q:");
    list.ChooseDestination(L"Q:\\Backup");
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"C:");
    EXPECT_EQ(state.BackupTo, L"X:\\Backup");
}

TEST_F(ListCommands, CopyTo_AsksForTheFolder) {
    ListFile("");
    list.GetList();
    calls.clear();
    for (const auto& answer : {std::optional<std::wstring>(),
                               std::optional<std::wstring>(L"C:\\name that is proposed")}) {
        dialogs.Expect(answer);
        if (answer) world.boxes.Expect(L"Add sub path; not a drive");
        editing.CopyTo();
        EXPECT_THAT(calls, IsEmpty());
    }
    const std::wstring vault = tree.Folder(L"Vault");
    dialogs.Expect(vault + L"\\ChooseFolder....Don't modify this line");
    editing.CopyTo();
    EXPECT_EQ(state.BackupTo, vault);
    EXPECT_TRUE(dialogs.saving.back());
    EXPECT_EQ(Saved(), Expected({}));
}

TEST_F(ListCommands, OpenedWithUnsavedChanges_FormerListIsSaved) {
    ListFile("");
    list.GetList();
    state.copiesCount = 8;
    state.listModified = true;
    const std::wstring former = state.currentListPath;
    list.FileOpen(tree.File(L"Other.vwl", ""));
    EXPECT_NE(ReadBytes(former).find("Backages: 8"), std::string::npos);
    EXPECT_FALSE(state.listModified);
}

TEST_F(ListCommands, OpenedAfterAFailedSave_OtherListIsUnmodified) {
    ListFile("");
    list.GetList();
    state.listModified = true;
    const std::wstring former = state.currentListPath;
    for (const BoxAnswer answer : {BoxAnswer::No, BoxAnswer::Yes}) {
        world.files.FillDiskFrom(1);
        world.boxes.Expect(L"could not be saved", answer);
        const std::wstring other = tree.File(L"Other.vwl", "");
        list.FileOpen(other);
        EXPECT_EQ(world.errors.TakeOne().procedure, L"FileSave");
        world.files.Heal();
        const bool left = answer == BoxAnswer::Yes;
        EXPECT_EQ(state.currentListPath, left ? other : former);
        EXPECT_EQ(state.listModified, !left);
    }
}

TEST_F(ListCommands, SaveAs_OverAnotherList_KeepsNoOldFile) {
    ListFile(world.ansi.Encode(tree.File(L"a.txt")));
    list.GetList();
    const std::wstring other = tree.File(L"Other.vwl", "an old list");
    dialogs.Expect(other);
    list.FileSaveAs();
    EXPECT_FALSE(world.disk.Stat(other + L".old")) << "the user has agreed to replace it";
}

TEST_F(ListCommands, Open_UnreadableList_IsARecentList) {
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

TEST_F(ListCommands, UnsavedChanges_QuestionHasNoAsItsDefault) {
    world.disk.Write(state.DefaultListPath(), "", FileSystem::Flush::No);
    ListFile("");
    list.GetList();
    for (const Language language : {Language::English, Language::Arabic}) {
        state.language = language;
        state.listModified = true;
        world.files.FillDiskFrom(1);
        world.boxes.Expect(L"", BoxAnswer::No);
        list.OpenDefaultList();
        world.files.Heal();
        static_cast<void>(world.errors.Take());
        const MessageBoxRequest& box = world.boxes.Shown().back();
        EXPECT_EQ(box.buttons, BoxButtons::YesNo);
        EXPECT_TRUE(box.secondIsDefault);
        EXPECT_EQ(box.rightToLeft, language == Language::Arabic);
        EXPECT_EQ(state.currentListPath, Path(L"List.vwl"));
    }
}

TEST_F(ListCommands, OpenDefault_ShowsItsItemsUnmodified) {
    ListFile("");
    list.GetList();
    const std::wstring a = tree.File(L"a.txt");
    const std::wstring list1 = state.DefaultListPath();
    world.disk.Write(list1, world.ansi.Encode(a), FileSystem::Flush::No);
    for (const bool changesAreGivenUp : {false, true}) {
        state.currentListPath = Path(L"List.vwl");
        state.listModified = changesAreGivenUp;
        if (changesAreGivenUp) {
            world.files.FailNth(1, error_number::kDiskFull, OnlyCalls({FileCall::Write}));
            world.boxes.Expect(L"could not be saved", BoxAnswer::Yes);
        }
        list.OpenDefaultList();
        world.files.Heal();
        EXPECT_EQ(world.errors.Take().size(), changesAreGivenUp ? 1U : 0U);
        EXPECT_EQ(state.currentListPath, list1);
        EXPECT_FALSE(state.listModified);
        EXPECT_THAT(Paths(), ElementsAre(a));
    }
}

TEST_F(ListCommands, ChooseDestination_DriveHasNoCopies_BoxNamesIt) {
    TestDrive stick;
    main.form.SetChoices(L"cmbDestination", {L"C:", stick.Name()});
    onCopiesListed = [this] { main.form.Choose(L"cmbDestination", L"C:"); };
    list.ChooseDestination(stick.Backup());
    EXPECT_EQ(main.form.Text(L"cmbDestination"), stick.Name());
    main.form.Choose(L"cmbDestination", L"Q:");
    list.ChooseDestination(L"Q:\\Backup");
    EXPECT_EQ(main.form.Text(L"cmbDestination"), stick.Name()) << "the former one is there";
}

}  // namespace
}  // namespace vw::test
