// How a run ends for a user who looks at the window afterwards, and for a scheduler that waits.

#include <gmock/gmock.h>

#include "fsutil/FileQueries.h"
#include "platform/Handle.h"
#include "tests/app/ApplicationFixture.h"
#include "tests/app/ShownWindows.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint64_t kMinute = 60'000;

class RunOutcome : public App {
  protected:
    [[nodiscard]] std::wstring Status() { return Main().Text(L"sbrStatus"); }
    void ClickStatus() {
        SendMessageW(Main().Handle(), WM_COMMAND, MAKEWPARAM(ID_sbrStatus, STN_CLICKED),
                     reinterpret_cast<LPARAM>(Main().Control(L"sbrStatus")));
        Rethrow();
    }
    /// A file that is open without sharing as long as the result lives.
    [[nodiscard]] FileHandle Locked(const std::wstring& name) const {
        return FileHandle(CreateFileW(tree.File(name).c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    }
};

TEST_F(RunOutcome, BackupNow_StatusLineCountsItems) {
    WriteDefaultList({letter, tree.Path(L"Home\\")});
    Start();
    EXPECT_EQ(Status(), L"");
    Choose(ID_mnuBackup);
    EXPECT_THAT(Status(), HasSubstr(L": 2 copied, 0 unchanged, 0 failed"));
    Choose(ID_mnuBackup);
    EXPECT_THAT(Status(), HasSubstr(L": 0 copied, 2 unchanged, 0 failed"));
}

TEST_F(RunOutcome, BackupNow_ItemThatFails_StatusLineReportsIt) {
    const FileHandle lock = Locked(L"Home\\Locked.txt");
    WriteDefaultList({letter, tree.Path(L"Home\\Locked.txt")});
    Start();
    Choose(ID_mnuBackup);
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_THAT(Status(), HasSubstr(L": 1 copied, 0 unchanged, 1 failed"));
}

TEST_F(RunOutcome, StatusLine_Clicked_ShowsTheReportAgain) {
    WriteDefaultList({letter});
    Start();
    ClickStatus();
    EXPECT_FALSE(Windows().frmBusyDialog.Window().IsVisible()) << "there was no run";
    Choose(ID_mnuBackup);
    Form& busy = Windows().frmBusyDialog.Window();
    EXPECT_FALSE(busy.IsVisible());
    ClickStatus();
    ASSERT_TRUE(busy.IsVisible());
    EXPECT_TRUE(busy.IsShown(L"txtReport"));
    EXPECT_THAT(busy.Text(L"txtReport"), HasSubstr(L"Backing: " + letter));
    EXPECT_THAT(busy.Text(L"txtReport"), HasSubstr(L": 1 copied, 0 unchanged, 0 failed\r\n"));
    EXPECT_THAT(busy.Text(L"txtReport"), HasSubstr(L"\r\nFilesList.vwl, ")) << "not its folder";
    EXPECT_TRUE(Main().IsFormEnabled());
    busy.Unload();
    ClickStatus();
    EXPECT_THAT(busy.Text(L"txtReport"), HasSubstr(L"Backing: " + letter)) << "once more";
    // The next run has a report of its own.
    Choose(ID_mnuBackup);
    EXPECT_THAT(Windows().frmBusyDialog.Window().Text(L"txtReport"), IsEmpty());
    ClickStatus();
    EXPECT_THAT(busy.Text(L"txtReport"), testing::Not(HasSubstr(L"Backing: " + letter)));
}

TEST_F(RunOutcome, ManyErrors_ShowThreeBoxesAndOneAtTheEnd) {
    std::vector<FileHandle> locks;
    locks.reserve(25);
    for (int i = 0; i < 25; ++i) {
        locks.push_back(Locked(L"Home\\Full\\Locked " + std::to_wstring(i) + L".txt"));
    }
    tree.File(L"Home\\Full\\Free.txt");
    WriteDefaultList({tree.Path(L"Home\\Full\\")});
    Start();
    bool isBusyShown = false;
    world.boxes.OnBox([&] { isBusyShown = Windows().frmBusyDialog.Window().IsVisible(); });
    world.boxes.Expect(L"There were 25 errors.");
    Choose(ID_mnuBackup);
    EXPECT_THAT(world.errors.Take(), SizeIs(3));
    EXPECT_TRUE(isBusyShown) << "the number is shown beside the report";
}

TEST_F(RunOutcome, ThreeErrors_AreAllShownAndNotCounted) {
    std::vector<FileHandle> locks;
    std::vector<std::wstring> items;
    for (int i = 0; i < 3; ++i) {
        const std::wstring name = L"Home\\Locked " + std::to_wstring(i) + L".txt";
        locks.push_back(Locked(name));
        items.push_back(tree.Path(name));
    }
    WriteDefaultList(items);
    Start();
    Choose(ID_mnuBackup);
    EXPECT_THAT(world.errors.Take(), SizeIs(3));
}

TEST_F(RunOutcome, OpenedList_ItemsThatAreNotThere_AreNamed) {
    const std::wstring gone = tree.Path(L"Home\\Gone.doc");
    WriteDefaultList({letter, gone});
    Start();
    EXPECT_THAT(Status(), HasSubstr(L"Not there now: " + gone + L"."));
    state.listModified = true;
    Choose(ID_mnuFileSave);
    EXPECT_EQ(Status(), L"") << "the next save took it off the list";
}

TEST_F(RunOutcome, BackupNow_ItemChangedSinceLoading_RowShowsItAsItIs) {
    const std::wstring plan = tree.File(L"Home\\Docs\\Plan.txt", "12", {2024, 1, 1, 12, 0, 0});
    WriteDefaultList({letter, plan, tree.Path(L"Home\\Docs\\")});
    Start();
    ListView& list = Main().List(L"lsvBackupList");
    const std::wstring before = list.Rows().SubItem(1, L"Date");
    tree.File(L"Home\\Docs\\Plan.txt", "123456", {2024, 1, 2, 12, 0, 0});
    Choose(ID_mnuBackup);
    EXPECT_EQ(list.Rows().SubItem(1, L"Size"), MFileDosShell::CSize(6));
    EXPECT_EQ(list.Rows().SubItem(2, L"Size"), MFileDosShell::CSize(6));
    EXPECT_NE(list.Rows().SubItem(1, L"Date"), before);
    EXPECT_EQ(list.Rows().SubItem(2, L"Date"), list.Rows().SubItem(1, L"Date"));
}

TEST_F(RunOutcome, BackupNow_SelectedItemHasCopies_TheyAreShownUnderItsName) {
    const std::wstring early = tree.File(L"Home\\Archive.txt");
    WriteDefaultList({early, letter});
    Start();
    Main().List(L"lsvBackupList").Select(1);
    Choose(ID_mnuBackup);
    ListView& stored = Main().List(L"lsvRestore1");
    EXPECT_EQ(stored.Rows().SubItem(stored.Selected(), kNameColumn), L"Letter");
    EXPECT_EQ(Main().Text(L"lblCopiesHeading"), L"Copies of Letter.txt, " + tree.Path(L"Home"));
}

TEST_F(RunOutcome, NoCopies_HeadingNamesNoItem) {
    WriteDefaultList({letter});
    Start();
    EXPECT_EQ(Main().Text(L"lblCopiesHeading"), L"Copies of the selected item");
}

TEST_F(RunOutcome, ItemsThatGoWrong_CarryWarningsAndTheReportRepeatsThem) {
    const std::wstring comma = tree.File(L"Home\\one, two.txt");
    const std::wstring inside = drive.Backup() + L"\\Inside.txt";
    WriteDefaultList({letter, inside});
    tree.File(inside);
    Start();
    ListView& list = Main().List(L"lsvBackupList");
    EXPECT_EQ(list.Rows().At(0).warning, L"");
    EXPECT_THAT(list.Rows().At(1).warning, HasSubstr(L"Not backed up: "));
    Windows().editing.lsvBackupList_OLEDragDrop({comma});
    EXPECT_THAT(list.Rows().At(2).warning, HasSubstr(L"comma"));
    Choose(ID_mnuBackup);
    ClickStatus();
    EXPECT_THAT(Windows().frmBusyDialog.Window().Text(L"txtReport"),
                HasSubstr(list.Rows().At(2).warning + L"\r\n" + comma));
}

TEST_F(RunOutcome, SilentRun_WrongCommandLine_EndsAfterAMinute) {
    Start(L"/B " + tree.Path(L"No such list.vwl"));
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kListPathMissing);
    world.clock.Advance(kMinute - 1);
    EXPECT_TRUE(IsAlive());
    // A box, too, gives its reader a minute more.
    application.OnSilentBox();
    world.clock.Advance(kMinute - 1);
    EXPECT_TRUE(IsAlive());
    world.clock.Advance(1);
    try {
        application.OnIdle();
        FAIL() << "it waits for somebody who chooses Exit";
    } catch (const ProgramEnded& end) {
        EXPECT_EQ(end.exitCode, error_number::kListPathMissing);
    }
}

TEST_F(RunOutcome, StartupSwitch_WhileItIsOff_EndsWithZero) {
    Start(L"/Startup");
    EXPECT_TRUE(IsAlive());
    world.clock.Advance(kMinute);
    try {
        application.OnIdle();
        FAIL() << "it waits for somebody who chooses Exit";
    } catch (const ProgramEnded& end) {
        EXPECT_EQ(end.exitCode, 0);
    }
}

TEST_F(RunOutcome, ExitWhileMinimised_ShowsNoMainWindow) {
    WriteDefaultList({letter});
    Start();
    const HWND main = Main().Handle();
    bool isShown = true;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::Copy) return;
        ShowWindow(Windows().frmBusyDialog.Window().Handle(), SW_MINIMIZE);
        const ShownWindows windows;
        try {
            application.frmUnload();
        } catch (const ProgramEnded&) {
            isShown = std::ranges::count(windows.All(), main) != 0;
            throw;
        }
    });
    EXPECT_THROW(Choose(ID_mnuBackup), ProgramEnded);
    EXPECT_FALSE(isShown);
}

TEST_F(RunOutcome, InteractiveRun_DoesNotEndByATimeout) {
    WriteDefaultList({letter});
    Start();
    world.clock.Advance(10 * kMinute);
    EXPECT_TRUE(IsAlive());
}

}  // namespace
}  // namespace vw::test
