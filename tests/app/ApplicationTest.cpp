// The windowed life of the program: its start, its commands and its end.

#include <gmock/gmock.h>

#include "tests/app/ApplicationFixture.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

TEST_F(App, Start_OpensTheDefaultListAndClosesTheOpeningScreen) {
    WriteDefaultList({letter}, 4);
    Start();
    EXPECT_TRUE(Main().IsVisible());
    EXPECT_EQ(Main().State(), WindowState::Maximised);
    EXPECT_EQ(Main().Caption(), L"Vaultwright ");
    EXPECT_FALSE(Windows().frmAbout.Window().IsLoaded());
    EXPECT_THAT(Paths(), ElementsAre(letter));
    EXPECT_EQ(Main().Text(L"lblBackages"), L"4");
    EXPECT_TRUE(Main().Menus().IsEnabled(L"mnuOptions", 0));
    EXPECT_FALSE(Main().Menus().IsChecked(L"mnuOptions", 0));
    EXPECT_TRUE(Main().Menus().IsChecked(L"mnuViewMethod", 3));
    EXPECT_TRUE(Main().Menus().IsChecked(L"mnuViewAlign", 2));
    EXPECT_TRUE(IsAlive());
}

TEST_F(App, Start_ShowsTheOpeningScreenUntilTheMainWindow) {
    WriteDefaultList({letter});
    int looks = 0;
    world.pump.AtEachYield([&] {
        const HWND main = FindWindowW(L"frmMainEn", nullptr);
        if (main == nullptr || IsWindowVisible(main) != 0) return;
        ++looks;
        EXPECT_TRUE(IsWindowVisible(FindWindowW(L"frmAboutEn", nullptr)))
            << "another program comes to the front";
    });
    Start();
    EXPECT_GT(looks, 0);
}

TEST_F(App, Start_MainWindowIsPaintedWhenTheOpeningScreenGoes) {
    WriteDefaultList({letter});
    Start();
    ASSERT_TRUE(Main().IsVisible());
    ASSERT_EQ(FindWindowW(L"frmAboutEn", nullptr), nullptr);
    EXPECT_FALSE(GetUpdateRect(Main().Handle(), nullptr, FALSE));
    EXPECT_FALSE(GetUpdateRect(Main().Control(L"lsvBackupList"), nullptr, FALSE));
}

TEST_F(App, OffersDrivesAAndCAndOthersWithRoom) {
    WriteDefaultList({});
    Start();
    const auto drives = Main().Choices(L"cmbDestination");
    ASSERT_GE(drives.size(), 3U);
    EXPECT_EQ(drives[0], L"A:");
    EXPECT_EQ(drives[1], L"C:");
    EXPECT_THAT(drives, Contains(drive.Name()));
    EXPECT_THAT(drives, testing::Not(Contains(L"B:")));
}

TEST_F(App, OtherList_CaptionHasItsName_NoLogonStart) {
    const std::wstring other = tree.File(L"Work & play.vwl", "");
    Start(L"\"" + other + L"\"");
    EXPECT_EQ(Main().Caption(), L"Vaultwright- مهمة نسخ يدوي [Work & play.vwl]");
    EXPECT_FALSE(Main().Menus().IsEnabled(L"mnuOptions", 0));
}

TEST_F(App, Open_SameCount_ListIsNotModified) {
    WriteDefaultList({letter}, 3);
    Start();
    EXPECT_FALSE(state.listModified) << "the first change of the count belongs to the start";
}

TEST_F(App, Open_OtherCount_ListIsModified) {
    WriteDefaultList({letter}, 9);
    Start();
    EXPECT_TRUE(state.listModified);
}

TEST_F(App, Close_SavesTheListAndEnds) {
    WriteDefaultList({letter});
    Start();
    Main().SetValue(L"vsBackages", 6);
    EXPECT_TRUE(state.listModified);
    EXPECT_THROW(Close(), ProgramEnded);
    EXPECT_NE(ReadBytes(state.DefaultListPath()).find("Backages: 6\r\n"), std::string::npos);
}

TEST_F(App, CloseInTheMenu_SavesNothing) {
    WriteDefaultList({letter});
    Start();
    Main().SetValue(L"vsBackages", 6);
    EXPECT_THROW(Choose(ID_mnuFileClose), ProgramEnded);
    EXPECT_THAT(ReadBytes(state.DefaultListPath()), testing::HasSubstr("Backages: 3\r\n"));
}

TEST_F(App, SwitchLanguage_StoresItAndEnds) {
    WriteDefaultList({letter});
    Start();
    Main().SetValue(L"vsBackages", 7);
    EXPECT_THROW(Choose(ID_mnuToolEnAr), ProgramEnded);
    EXPECT_THAT(ReadBytes(state.DefaultListPath()), testing::HasSubstr("Backages: 7\r\n"));
    EXPECT_EQ(settings.GetSetting(setting::kArabic, L""), L"-1");
}

TEST_F(App, StartAgain_OtherLanguage_RebuildsTheMainWindow) {
    WriteDefaultList({letter});
    Start();
    Main().SetValue(L"vsBackages", 8);
    settings.SaveSetting(setting::kArabic, L"-1");
    settings.SaveSetting(L"ArabicPrepared", L"-1");
    Start();
    EXPECT_EQ(Main().Name(), L"frmMainAr");
    EXPECT_TRUE(Main().IsVisible());
    EXPECT_EQ(Main().Text(L"lblBackages"), L"8") << "the list was saved before";
}

TEST_F(App, FailingHandler_IsReportedOnce_WindowIsEnabled) {
    WriteDefaultList({letter});
    Start();
    world.files.FailNth(1, error_number::kDeviceError, OnlyCalls({FileCall::Stat}));
    Choose(ID_mnuHelpHelp);
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.procedure, L"mnuHelpHelpClick");
    EXPECT_EQ(error.container, L"frmMain");
    EXPECT_FALSE(Main().IsFormEnabled());
    EXPECT_TRUE(IsAlive());
    EXPECT_FALSE(Main().IsFormEnabled());
    world.clock.Advance(1000);
    EXPECT_TRUE(IsAlive());
    EXPECT_TRUE(Main().IsFormEnabled());
    Choose(ID_mnuViewMethod_0);
    EXPECT_TRUE(Main().Menus().IsChecked(L"mnuViewMethod", 0));
}

TEST_F(App, AllWindowsHidden_MainWindowIsShownAfterASecond) {
    WriteDefaultList({letter});
    Start();
    Main().Hide();
    EXPECT_TRUE(IsAlive());
    world.clock.Advance(999);
    EXPECT_TRUE(IsAlive());
    EXPECT_FALSE(Main().IsVisible());
    world.clock.Advance(1);
    EXPECT_TRUE(IsAlive());
    EXPECT_TRUE(Main().IsVisible());
}

TEST_F(App, ReportIsOpen_MainWindowStaysDisabled) {
    WriteDefaultList({letter});
    Start();
    world.pump.AtEachYield([this] {
        if (Windows().frmBusyDialog.Window().IsVisible()) {
            Windows().frmBusyDialog.Window().Check(L"chkDontHide", true);
        }
    });
    Choose(ID_mnuBackup);
    EXPECT_TRUE(Windows().frmBusyDialog.Window().IsVisible());
    EXPECT_FALSE(Main().IsFormEnabled());
    world.clock.Advance(5000);
    EXPECT_TRUE(IsAlive());
    EXPECT_FALSE(Main().IsFormEnabled()) << "a report is open";
    // Minimised behind the icon, and the icon was clicked.
    Main().Hide();
    Windows().frmBusyDialog.Window().Hide();
    for (int i = 0; i < 2; ++i) {
        world.clock.Advance(5000);
        EXPECT_TRUE(IsAlive());
    }
    EXPECT_TRUE(Main().IsVisible());
    EXPECT_TRUE(Windows().frmBusyDialog.Window().IsVisible());
    EXPECT_FALSE(Main().IsFormEnabled()) << "the report is still open";
    Windows().frmBusyDialog.Window().Unload();
    EXPECT_TRUE(Main().IsFormEnabled());
}

TEST_F(App, Run_ListsAreUpdated_MainWindowStaysDisabled) {
    WriteDefaultList({letter});
    Start();
    bool wasBusy = false;
    bool wasEnabled = false;
    int looks = 0;
    world.pump.AtEachYield([&] {
        const bool busy = Windows().frmBusyDialog.Window().IsLoaded();
        wasBusy = wasBusy || busy;
        if (busy || !wasBusy) return;
        ++looks;
        wasEnabled = wasEnabled || Main().IsFormEnabled();
    });
    Choose(ID_mnuBackup);
    EXPECT_GT(looks, 0);
    EXPECT_FALSE(wasEnabled) << "a command that is chosen now is lost";
    EXPECT_TRUE(Main().IsFormEnabled());
}

TEST_F(App, SingleItemMode_DisablesTheEditingCommands) {
    Start(L"\"" + letter + L"\"");
    EXPECT_THAT(Paths(), ElementsAre(letter));
    for (const auto* name :
         {L"mnuAddFile", L"mnuAddFiles", L"mnuAddFolder", L"mnuDel", L"mnuDelAll"}) {
        EXPECT_FALSE(Main().Menus().IsEnabled(name));
    }
    for (const auto* button : {L"FileNew", L"FileOpen", L"FileSave", L"EditAddFile",
                               L"EditAddFiles", L"EditAddFolder", L"Del", L"EditDelAll"}) {
        EXPECT_FALSE(Main().Tools(L"Toolbar1").IsEnabled(button));
    }
    const HWND items = Main().Control(L"lsvBackupList");
    EXPECT_EQ(GetWindowLongW(items, GWL_EXSTYLE) & WS_EX_ACCEPTFILES, 0);
    EXPECT_TRUE(Main().Menus().IsEnabled(L"mnuBackup"));
    EXPECT_TRUE(Main().Menus().IsEnabled(L"mnuRestore"));
}

TEST_F(App, SingleItemMode_OnlyAnotherListEnablesEditing) {
    Start(L"\"" + letter + L"\"");
    Windows().main.SetCaption();
    EXPECT_FALSE(Main().Menus().IsEnabled(L"mnuAddFile"));
    Choose(ID_mnuRecentFile_0);
    EXPECT_EQ(state.currentListPath, state.DefaultListPath());
    EXPECT_TRUE(Main().Menus().IsEnabled(L"mnuAddFile"));
}

TEST_F(App, CountIsChanged_DestinationStays) {
    const std::wstring vault = tree.Folder(L"Vault");
    tree.File(state.DefaultListPath(), world.ansi.Encode(L"BackupTo: " + vault + L"\r\n"));
    Start();
    Main().SetValue(L"vsBackages", 7);
    EXPECT_EQ(state.BackupTo, vault);
}

// As the shell passes it, without a final "\".
TEST_F(App, SingleItemMode_BacksUpAFolder) {
    const std::wstring folder = tree.Folder(L"Work");
    tree.File(L"Work\\a.txt");
    Start(L"\"" + folder + L"\"");
    EXPECT_THAT(Paths(), ElementsAre(folder + L"\\"));
    state.BackupTo = drive.Backup();
    Choose(ID_mnuBackup);
    EXPECT_TRUE(world.disk.Stat(state.BackupTo + L"\\Work«0001»\\a.txt"));
}

TEST_F(App, MissingList_IsReported_OpeningScreenStays) {
    Start(L"C:\\no such list.vwl");
    const ToldError error = world.errors.TakeOne();
    EXPECT_EQ(error.number, error_number::kListPathMissing);
    EXPECT_EQ(error.description, L"Path not found");
    EXPECT_EQ(error.procedure, L"Main");
    EXPECT_TRUE(IsAlive());
    Windows().frmAbout.Unload();
    EXPECT_FALSE(IsAlive());
}

// The user, or the system, acts in the middle of a run, at any moment: no crash, no second run
// inside the first, and everything ends as if it had come at a better time.
class InARun : public App, public testing::WithParamInterface<int> {
  protected:
    InARun() {
        for (int i = 0; i < 8; ++i) {
            tree.File(L"Home\\Work\\f" + std::to_wstring(i) + L".txt", "x");
        }
        WriteDefaultList({tree.Path(L"Home\\Work\\"), letter});
        Start();
    }
    /// Does something at the k-th moment of a run; true when the run ended the program.
    template <class Act>
    bool BackUpAnd(Act act) {
        world.pump.Restart();
        world.pump.AtYield(GetParam(), act);
        try {
            Choose(ID_mnuBackup);
        } catch (const ProgramEnded&) {
            return true;
        }
        return false;
    }
    void ExpectWhole() {
        const std::wstring copy = drive.Backup() + L"\\Work«0001»";
        if (Exists(copy)) {
            for (const auto& [path, node] : ReadTree(copy)) EXPECT_EQ(node.bytes, "x");
        }
        EXPECT_FALSE(Exists(drive.Backup() + L"\\Work«0002»")) << "a second run inside the first";
        EXPECT_THAT(Paths().size(), 2U);
    }
};

INSTANTIATE_TEST_SUITE_P(Moments, InARun, testing::Values(1, 2, 3, 5, 8, 11, 14, 30));

TEST_P(InARun, SecondBackup_HasNoEffect) {
    EXPECT_FALSE(BackUpAnd([this] {
        SendMessageW(Main().Handle(), WM_COMMAND, ID_mnuBackup, 0);
        SendMessageW(Main().Handle(), WM_COMMAND, ID_mnuDelAll, 0);
    }));
    ExpectWhole();
    EXPECT_TRUE(Exists(drive.Backup() + L"\\Letter«0001».txt"));
    EXPECT_TRUE(Main().IsFormEnabled());
}

TEST_P(InARun, Cancel_EndsIt) {
    EXPECT_FALSE(BackUpAnd([this] { Windows().frmBusyDialog.Window().Unload(); }));
    ExpectWhole();
    EXPECT_FALSE(Windows().frmBusyDialog.Window().IsLoaded());
    EXPECT_TRUE(Main().IsFormEnabled());
    // The next run completes.
    world.pump.Restart();
    Choose(ID_mnuBackup);
    EXPECT_TRUE(Exists(drive.Backup() + L"\\Letter«0001».txt"));
}

TEST_P(InARun, DriveIsChosen_DestinationIsUnchanged) {
    EXPECT_FALSE(BackUpAnd([this] {
        const HWND box = Main().Control(L"cmbDestination");
        SendMessageW(Main().Handle(), WM_COMMAND, MAKEWPARAM(ID_cmbDestination, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(box));
    }));
    ExpectWhole();
    EXPECT_EQ(state.BackupTo, drive.Backup());
}

TEST_P(InARun, CloseMainWindow_EndsTheProgram) {
    EXPECT_TRUE(BackUpAnd([this] { Close(); }));
    EXPECT_EQ(world.exitStatus.Code(), error_number::kCancelled);
}

TEST_P(InARun, ExitOfTheIcon_EndsTheProgram) {
    EXPECT_TRUE(BackUpAnd([this] {
        Windows().frmTrayIcon.Load();
        SendMessageW(Windows().frmTrayIcon.Window().Handle(), WM_COMMAND, ID_mnuProp1Exit, 0);
        Rethrow();
    }));
    EXPECT_EQ(world.exitStatus.Code(), error_number::kCancelled);
}

}  // namespace
}  // namespace vw::test
