// Steps of the main window whose effect a later step of a usual start hides, and the order in which
// windows go.

#include <gmock/gmock.h>

#include <utility>

#include "tests/app/ApplicationFixture.h"
#include "tests/app/StartedCommands.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

/// Windows without the main one, which the tests load: the list that was asked for is missing.
class MainWindowLoad : public App {
  protected:
    MainWindowLoad() {
        Start(L"C:\\no such list.vwl");
        EXPECT_EQ(world.errors.TakeOne().number, error_number::kListPathMissing);
    }
};

TEST_F(MainWindowLoad, LogonStartIsOn_MarksItsEntry) {
    logon.Set(L"anything");
    Main().Load();
    EXPECT_TRUE(Main().Menus().IsChecked(L"mnuOptions", 0));
}

// That the program starts at log-on is news only when the user has just chosen it.
TEST_F(MainWindowLoad, LogonStartIsOn_StatusLineIsEmpty) {
    logon.Set(L"anything");
    Main().Load();
    EXPECT_EQ(Main().Text(L"sbrStatus"), L"");
}

TEST_F(MainWindowLoad, RecentLists_AreInTheMenu) {
    settings.SaveSetting(std::wstring(setting::kRecentFile) + L"1", tree.Path(L"Holidays.vwl"));
    Main().Load();
    EXPECT_TRUE(Main().Menus().IsShown(L"mnuRecentFile", 1));
    EXPECT_THAT(Main().Menus().Text(L"mnuRecentFile", 1), testing::HasSubstr(L"Holidays"));
}

TEST_F(MainWindowLoad, CountIsOne_FirstChangeOfItIsTheUsers) {
    state.copiesCount = 1;
    Main().Load();
    Main().SetValue(L"vsBackages", 5);
    EXPECT_TRUE(state.listModified);
}

TEST_F(MainWindowLoad, CountIsSet_FirstChangeOfItIsTheUsers) {
    state.copiesCount = 4;
    Main().Load();
    EXPECT_EQ(Main().Text(L"lblBackages"), L"4");
    EXPECT_FALSE(state.listModified);
    Main().SetValue(L"vsBackages", 5);
    EXPECT_TRUE(state.listModified);
}

TEST_F(MainWindowLoad, CountIsZero_FirstChangeOfItIsTheLists) {
    state.copiesCount = 0;
    Main().Load();
    EXPECT_EQ(Main().Text(L"lblBackages"), L"0");
    Main().SetValue(L"vsBackages", 5);
    EXPECT_FALSE(state.listModified);
    EXPECT_EQ(Main().Text(L"lblBackages"), L"5");
}

TEST_F(MainWindowLoad, BeforeAnyList_ShowsDriveCAndTheNameOfTheList) {
    state.currentListPath = L"C:\\Lists\\Work.vwl";
    Main().Load();
    EXPECT_EQ(Main().Text(L"cmbDestination"), L"C:");
    EXPECT_EQ(Main().Caption(), L"Vaultwright- مهمة نسخ يدوي [Work.vwl]");
}

TEST_F(MainWindowLoad, DialogFolder_IsMyDocumentsOnC) {
    const std::wstring documents = L"C:\\My Documents";
    ASSERT_TRUE(CreateDirectoryW(documents.c_str(), nullptr));
    Main().Load();
    RemoveDirectoryW(documents.c_str());
    EXPECT_EQ(Windows().list.Dialog().defaultFolder, documents);
}

TEST_F(MainWindowLoad, DialogFolder_NoneOnC_IsMyDocumentsOnD) {
    Main().Load();
    EXPECT_EQ(Windows().list.Dialog().defaultFolder, L"D:\\My Documents");
}

// Until a drive was chosen, nothing is listed.
TEST_F(MainWindowLoad, FirstChoiceOfADrive_ListsItsCopies) {
    tree.File(drive.Backup() + L"\\Letter«0001».txt");
    state.currentListPath = tree.Path(L"Work.vwl");
    Main().Load();
    Main().Choose(L"cmbDestination", drive.Name());
    const HWND box = Main().Control(L"cmbDestination");
    SendMessageW(Main().Handle(), WM_COMMAND, MAKEWPARAM(ID_cmbDestination, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(box));
    Rethrow();
    EXPECT_EQ(state.BackupTo, drive.Backup());
    EXPECT_EQ(Main().List(L"lsvRestore1").Rows().Count(), 1);
}

TEST_F(App, Start_CopiesOfTheFirstItemAreShown) {
    const std::wstring later = tree.File(L"Home\\Zebra.txt", "z");
    WriteDefaultList({later, letter});
    Start();
    Choose(ID_mnuBackup);
    Start();
    ListView& items = Main().List(L"lsvRestore1");
    ASSERT_EQ(items.Rows().Count(), 2);
    EXPECT_EQ(items.Rows().SubItem(items.Selected(), L"Name"), L"Zebra");
}

TEST_F(App, OpenItem_Rule_OpensItsFolder) {
    tree.File(L"Rule\\a.txt");
    WriteDefaultList({tree.Path(L"Rule\\*")});
    Start();
    const StartedCommands started;
    Choose(ID_mnuOpen);
    static_cast<void>(world.errors.Take());
    EXPECT_THAT(started.Lines(), ElementsAre(EndsWith(L" " + tree.Path(L"Rule\\"))));
}

// A cancelled run gives nothing back itself.
TEST_F(App, BackupNow_CancelledWithoutItsDialog_DialogGoes) {
    WriteDefaultList({letter});
    Start();
    world.pump.Restart();
    int shown = 0;
    world.pump.AtEachYield([&] {
        if (!Windows().frmBusyDialog.Window().IsVisible()) return;
        ++shown;
        state.cancel.Request();
    });
    Choose(ID_mnuBackup);
    EXPECT_GT(shown, 0);
    EXPECT_FALSE(Windows().frmBusyDialog.Window().IsLoaded());
    EXPECT_TRUE(Main().IsFormEnabled());
}

TEST_F(App, Exit_DuringARun_BusyDialogGoesBeforeTheListIsSaved) {
    WriteDefaultList({letter});
    Start();
    Windows().frmTrayIcon.Load();
    world.pump.Restart();
    std::vector<bool> busy;
    bool left = false;
    world.pump.AtEachYield([&] {
        if (!Windows().frmBusyDialog.Window().IsLoaded() || std::exchange(left, true)) return;
        Main().SetValue(L"vsBackages", 7);
        world.files.OnOperation([&](const FileOperation& operation) {
            if (operation.call != FileCall::Write) return;
            if (operation.path != state.temporaryListPath) return;
            busy.push_back(Windows().frmBusyDialog.Window().IsLoaded());
        });
        SendMessageW(Windows().frmTrayIcon.Window().Handle(), WM_COMMAND, ID_mnuProp1Exit, 0);
        Rethrow();
    });
    EXPECT_THROW(Choose(ID_mnuBackup), ProgramEnded);
    EXPECT_THAT(busy, testing::Not(IsEmpty()));
    EXPECT_THAT(busy, Each(false));
}

TEST_F(App, SwitchLanguage_RemovesTheIcon) {
    WriteDefaultList({letter});
    Start();
    Windows().frmTrayIcon.Load();
    EXPECT_THROW(Choose(ID_mnuToolEnAr), ProgramEnded);
    EXPECT_FALSE(Windows().frmTrayIcon.Window().IsLoaded());
}

TEST_F(App, EndOfTheSession_ListCannotBeSaved_NothingIsAsked) {
    WriteDefaultList({letter});
    Start();
    Main().SetValue(L"vsBackages", 7);
    bool ends = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::Write) return;
        ends = state.sessionEnds;
        Throw(error_number::kPermissionDenied, operation.path);
    });
    EXPECT_NE(SendMessageW(Main().Handle(), WM_QUERYENDSESSION, 0, 0), 0);
    EXPECT_THROW(
        {
            SendMessageW(Main().Handle(), WM_ENDSESSION, TRUE, 0);
            Rethrow();
        },
        ProgramEnded);
    EXPECT_TRUE(ends) << "no box is shown then";
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
}

TEST_F(App, EndOfTheSession_DuringARun_StopsIt) {
    const std::wstring second = tree.File(L"Home\\Second.txt");
    WriteDefaultList({letter, second});
    Start();
    bool isEnding = false;
    world.files.OnOperation([&](const FileOperation& operation) {
        if (operation.call != FileCall::Copy || std::exchange(isEnding, true)) return;
        SendMessageW(Main().Handle(), WM_QUERYENDSESSION, 0, 0);
        SendMessageW(Main().Handle(), WM_ENDSESSION, TRUE, 0);
        // The process ends when the step is done.
        static_cast<void>(world.programEnd.Take());
    });
    Choose(ID_mnuBackup);
    EXPECT_TRUE(state.endRequested);
    EXPECT_TRUE(state.cancel.IsRequested());
    EXPECT_FALSE(Exists(drive.Backup() + L"\\Second«0001».txt"));
}

TEST_F(App, OnEscaped_ReportsTheError) {
    Start();
    FormEvents& events = Windows().main;
    events.OnEscaped(Main(), std::make_exception_ptr(
                                 RuntimeError(error_number::kDiskFull, L"Disk full", {}, 1)));
    const ToldError told = world.errors.TakeOne();
    EXPECT_EQ(told.number, error_number::kDiskFull);
    EXPECT_EQ(told.procedure, L"Form_Event");
}

}  // namespace
}  // namespace vw::test
