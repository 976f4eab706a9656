// The drive of the copies is pulled out, exchanged or fails to answer while its copies are listed:
// no click and no command may then act on the copies of another folder.

#include <gmock/gmock.h>

#include "platform/RuntimeError.h"
#include "tests/restore/RestoreFixture.h"
#include "tests/support/CopiesOnC.h"

namespace vw::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// A letter with one copy on R:, and another item of the same name with copies on C:.
class ExchangedDrive : public RestoreEnvironment {
  protected:
    ExchangedDrive() {
        if (!copiesOnC_.MayBeUsed()) return;
        for (const auto* name : {L"\\Letter«0002».txt", L"\\Letter«0021».txt"}) {
            tree.File(kOnC + name, "OTHER letter", {2023, 5, 5, 5, 5, 5});
        }
        // Its comment names another folder.
        const std::wstring other =
            tree.File(L"Other\\Letter.txt", "OTHER letter", {2023, 5, 5, 5, 5, 5});
        state.BackupTo = kOnC;
        BackUp(other);
        state.BackupTo = vault;
        for (int day = 1; day <= 2; ++day) {
            tree.File(L"Home\\Letter.txt", "mine " + std::to_string(day), {2024, 1, day, 9, 0, 0});
            BackUp(letter);
        }
        browser.ListRestoreFiles();
        onC = ReadTree(kOnC);
        onDrive = ReadTree(vault);
    }
    void SetUp() override {
        if (!copiesOnC_.MayBeUsed()) GTEST_SKIP() << "somebody keeps copies on C:";
    }

    /// Runs a command and answers every question with Yes.
    void Give(void (RestoreCommands::*command)()) {
        FakeMessageBoxes boxes;
        boxes.AnswerAll(BoxAnswer::Yes);
        System system{world.files,      world.pump,       boxes,       world.errors,
                      world.exitStatus, world.programEnd, world.clock, world.ansi};
        (Commands(system).*command)();
        for (const MessageBoxRequest& box : boxes.Shown()) messages.push_back(box.text);
        for (const ToldError& error : world.errors.Take()) {
            messages.push_back(error.description);
            named.push_back(error.path);
        }
    }
    void Click(std::wstring_view item) {
        const int row = browser.Items().Rows().Find(L"Name", item);
        ASSERT_GE(row, 0);
        browser.Items().Select(row);
        browser.lsvRestore1ItemClick(row);
    }
    [[nodiscard]] std::vector<std::wstring> ListedCopies() {
        return Column(browser.Copies(), L"BackupName");
    }

    const std::wstring kOnC = L"C:\\Backup";
    const std::wstring letter = tree.Path(L"Home\\Letter.txt");
    Tree onC;
    Tree onDrive;
    std::vector<std::wstring> messages;  ///< texts of the questions and errors
    std::vector<std::wstring> named;     ///< the paths that the errors name

  private:
    CopiesOnC copiesOnC_;
};

TEST_F(ExchangedDrive, Restore_DriveGone_TouchesNoOtherItem) {
    drive.PullOut();
    Give(&RestoreCommands::mnuRestoreClick);
    EXPECT_THAT(messages, Not(IsEmpty())) << "stopped without a message";
    EXPECT_EQ(ReadBytes(letter), "mine 2");
    // The lists show the other folder now, and both of them do.
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"C:");
    EXPECT_THAT(ListedCopies(), Each(HasSubstr(L"C:\\Backup")));
    EXPECT_EQ(browser.Items().Rows().SubItem(0, L"Orginal Location"), tree.Path(L"Other"));
}

TEST_F(ExchangedDrive, Restore_DriveIsBackAfterWaking_Restores) {
    SelectCopy(L"N02");
    drive.PullOut();
    world.clock.Wake();
    world.pump.Restart();
    world.pump.AtYield(4, [this] { drive.Insert(); });
    Give(&RestoreCommands::mnuRestoreClick);
    EXPECT_EQ(ReadBytes(letter), "mine 1");
    EXPECT_EQ(main.form.Text(L"cmbDestination"), vault.substr(0, 2));
}

TEST_F(ExchangedDrive, Restore_TwiceAfterDriveGone_NeverWritesOtherContent) {
    drive.PullOut();
    for (int times = 1; times <= 2; ++times) {
        Give(&RestoreCommands::mnuRestoreClick);
        EXPECT_EQ(ReadBytes(letter), "mine 2") << times;
    }
}

TEST_F(ExchangedDrive, DeleteAll_DriveGone_DeletesNothing) {
    drive.PullOut();
    Give(&RestoreCommands::mnuDelCopiesClick);
    EXPECT_EQ(ReadTree(kOnC), onC);
    EXPECT_THAT(messages, SizeIs(1)) << "nothing is asked about copies that are gone";
    EXPECT_THAT(named, ElementsAre(vault));
    drive.Insert();
    EXPECT_EQ(ReadTree(vault), onDrive);
}

TEST_F(ExchangedDrive, DeleteOne_DriveGone_DeletesNothing) {
    SelectCopy(L"N02");
    drive.PullOut();
    Give(&RestoreCommands::mnuDelCopyClick);
    EXPECT_EQ(ReadTree(kOnC), onC);
    EXPECT_THAT(messages, SizeIs(1));
    EXPECT_THAT(named, ElementsAre(vault + L"\\Letter«0002».txt"));
}

TEST_F(ExchangedDrive, Click_DriveGone_ListsBothFromC) {
    drive.PullOut();
    Click(L"Letter");
    EXPECT_THAT(ListedCopies(), Each(HasSubstr(L"C:\\Backup")));
    EXPECT_EQ(browser.Items().Rows().SubItem(0, L"Orginal Location"), tree.Path(L"Other"));
    EXPECT_THAT(world.boxes.Shown(), IsEmpty());
    EXPECT_THAT(Status(), HasSubstr(L"exchanged"));
}

TEST_F(ExchangedDrive, Click_OneQuestionFails_StaysOnItsDrive) {
    for (const FileCall call : {FileCall::Stat, FileCall::Identify, FileCall::List}) {
        world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({call}));
        Click(L"Letter");
        static_cast<void>(world.errors.Take());
        world.files.Heal();
        EXPECT_EQ(main.form.Text(L"cmbDestination"), drive.Name());
        EXPECT_THAT(ListedCopies(), Each(HasSubstr(vault)));
        EXPECT_THAT(Status(), IsEmpty());
    }
    Click(L"Letter");
    EXPECT_THAT(ListedCopies(), SizeIs(2));
}

TEST_F(ExchangedDrive, List_OneQuestionFails_StaysOnItsDrive) {
    for (int n = 1; n <= 3; ++n) {
        world.files.FailNth(n, error_number::kPermissionDenied, OnlyCalls({FileCall::Stat}));
        browser.ListRestoreFiles();
        static_cast<void>(world.errors.Take());
        world.files.Heal();
        EXPECT_EQ(main.form.Text(L"cmbDestination"), drive.Name()) << n;
    }
}

TEST_F(ExchangedDrive, Command_OneQuestionFails_StopsAndStaysOnItsDrive) {
    for (const auto& command :
         {&RestoreCommands::mnuRestoreClick, &RestoreCommands::mnuDelCopyClick,
          &RestoreCommands::mnuDelCopiesClick}) {
        browser.ListRestoreFiles();
        world.files.FailNth(1, error_number::kPermissionDenied,
                            OnlyCalls({FileCall::Stat, FileCall::Identify}));
        Give(command);
        world.files.Heal();
        EXPECT_EQ(main.form.Text(L"cmbDestination"), drive.Name());
        EXPECT_EQ(ReadBytes(letter), "mine 2");
        EXPECT_EQ(ReadTree(vault), onDrive);
    }
    EXPECT_EQ(ReadTree(kOnC), onC);
}

/// The same name from two folders, numbered the other way round on each of two sticks.
class TwoSticks : public RestoreEnvironment {
  protected:
    TwoSticks() {
        for (const auto* folder : {L"A", L"B"}) {
            tree.File(std::wstring(folder) + L"\\Report.doc",
                      folder == std::wstring(L"A") ? "A's text" : "B's text",
                      {2024, 1, 1, 9, 0, 0});
        }
        BackUpInOrder({L"A", L"B"});
        drive.Insert(L"second");
        tree.Folder(vault);
        BackUpInOrder({L"B", L"A"});
        second = ReadTree(vault);
        drive.Insert();
        tree.File(L"B\\Report.doc", "B's new text", {2024, 2, 1, 9, 0, 0});
        browser.ListRestoreFiles();
        SelectPlace(tree.Path(L"B"));
    }
    void BackUpInOrder(const std::vector<std::wstring>& folders) {
        for (const std::wstring& folder : folders) BackUp(tree.Path(folder + L"\\Report.doc"));
    }
    void SelectPlace(const std::wstring& place) {
        const int row = browser.Items().Rows().Find(L"Orginal Location", place);
        ASSERT_GE(row, 0);
        browser.Items().Select(row);
        browser.lsvRestore1ItemClick(row);
    }

    Tree second;
};

TEST_F(ExchangedDrive, DriveAndFolderOnCAreGone_ListsNothingWithoutANotice) {
    tree.Remove(kOnC);
    drive.PullOut();
    browser.ListRestoreFiles();
    EXPECT_THAT(Items(), IsEmpty());
    EXPECT_THAT(Status(), IsEmpty());
}

TEST_F(ExchangedDrive, ListingFailed_NothingIsStillShown) {
    world.files.FailNth(1, error_number::kPermissionDenied, OnlyCalls({FileCall::Stat}));
    browser.ListRestoreFiles();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_THAT(Items(), IsEmpty());
    world.files.Heal();
    EXPECT_FALSE(browser.IsStillShown(vault));
}

TEST_F(TwoSticks, Restore_AfterExchange_StopsAndListsTheOtherStick) {
    drive.Insert(L"second");
    commands.mnuRestoreClick();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kFileNotFound);
    EXPECT_EQ(ReadBytes(tree.Path(L"B\\Report.doc")), "B's new text");
    EXPECT_EQ(ReadTree(vault), second);
    // The row of the same name and place is the selected one.
    const int row = browser.Items().Selected();
    EXPECT_EQ(browser.Items().Rows().SubItem(row, L"Orginal Location"), tree.Path(L"B"));
    EXPECT_THAT(Column(browser.Copies(), L"BackupName"),
                ElementsAre(vault + L"\\Report«0001».doc"));
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    commands.mnuRestoreClick();
    EXPECT_EQ(ReadBytes(tree.Path(L"B\\Report.doc")), "B's text");
}

TEST_F(TwoSticks, Click_AfterExchange_SelectsTheRowOfTheSamePlace) {
    drive.Insert(L"second");
    SelectPlace(tree.Path(L"B"));
    const int row = browser.Items().Selected();
    EXPECT_EQ(browser.Items().Rows().SubItem(row, L"Orginal Location"), tree.Path(L"B"));
    EXPECT_EQ(browser.Items().Rows().SubItem(row, L"SP"), L"0");
    EXPECT_THAT(Column(browser.Copies(), L"BackupName"),
                ElementsAre(vault + L"\\Report«0001».doc"));
    EXPECT_THAT(Status(), HasSubstr(L"exchanged"));
    EXPECT_THAT(world.boxes.Shown(), IsEmpty());
}

TEST_F(TwoSticks, ExchangeDuringAListing_IsShown_NoCopiesAreListed) {
    world.pump.Restart();
    world.pump.AtYield(1, [this] { drive.Insert(L"second"); });
    browser.ListRestoreFiles();
    EXPECT_THAT(Status(), HasSubstr(L"exchanged"));
    EXPECT_THAT(Column(browser.Copies(), L"BackupName"), IsEmpty());
    drive.Insert();
    SelectPlace(tree.Path(L"A"));
    EXPECT_THAT(Status(), IsEmpty());
}

TEST_F(TwoSticks, NextClick_WithdrawsTheNoticeOfTheExchangeAlone) {
    drive.Insert(L"second");
    SelectPlace(tree.Path(L"B"));
    SelectPlace(tree.Path(L"A"));
    EXPECT_THAT(Status(), IsEmpty());
    statusLine.ShowNotice(L"Another notice.");
    SelectPlace(tree.Path(L"B"));
    EXPECT_THAT(Status(), HasSubstr(L"Another notice."));
}

TEST_F(TwoSticks, Restore_ExchangeDuringQuestion_OverwritesNothing) {
    world.boxes.Expect(kQuestion, BoxAnswer::Yes);
    world.boxes.OnBox([this] { drive.Insert(L"second"); });
    commands.mnuRestoreClick();
    EXPECT_THAT(world.errors.Take(), SizeIs(1));
    EXPECT_EQ(ReadBytes(tree.Path(L"B\\Report.doc")), "B's new text");
}

TEST_F(TwoSticks, DeleteAll_ExchangeDuringQuestion_DeletesNothing) {
    const Tree first = ReadTree(vault);
    world.boxes.Expect(L"Report", BoxAnswer::Yes);
    world.boxes.OnBox([this] { drive.Insert(L"second"); });
    commands.mnuDelCopiesClick();
    EXPECT_THAT(world.errors.Take(), Not(IsEmpty()));
    EXPECT_EQ(ReadTree(vault), second);
    drive.Insert();
    EXPECT_EQ(ReadTree(vault), first);
}

// A computer of the house has rotated in between: the numbers mean other items now.
TEST_F(TwoSticks, Restore_NumberOfAnotherPlace_OverwritesNothing) {
    tree.File(
        vault + L"\\Report«0101».doc.vwc",
        "Backed Files Date Last Modified:01/01/2024-09:00:00+Original Location:C:\\windows\r\n");
    commands.mnuRestoreClick();
    EXPECT_THAT(world.errors.Take(), SizeIs(1));
    EXPECT_EQ(ReadBytes(tree.Path(L"B\\Report.doc")), "B's new text");
}

TEST_F(RestoreEnvironment, RestoreFrom_FileNamedBackup_UsesC) {
    tree.Remove(vault);
    world.disk.Write(vault, "no folder", FileSystem::Flush::No);
    EXPECT_EQ(browser.RestoreFrom(), L"C:\\Backup");
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"C:");
}

}  // namespace
}  // namespace vw::test
