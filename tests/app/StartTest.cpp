// What the start procedure hands to the list, to the restore view and to the commands.

#include <gmock/gmock.h>

#include "platform/Scoped.h"
#include "platform/SystemPath.h"
#include "tests/app/ApplicationFixture.h"
#include "tests/app/ShownWindows.h"
#include "tests/support/CurrentFolder.h"
#include "tests/support/DeadServer.h"
#include "tests/support/ImportHook.h"
#include "ui/resource.h"

// Behind the header of Windows, which it builds on.
#include <commctrl.h>

namespace vw::test {
namespace {

using testing::ElementsAre;

class StartTest : public App {
  protected:
    StartTest() { settings.SaveSetting(setting::kBackupTo, drive.Backup()); }

    /// A copy in the copy folder of the test's drive, whose comment names the folder "Home".
    std::wstring Copy(const std::wstring& name) {
        tree.File(drive.Backup() + L"\\" + name + L".vwc",
                  world.ansi.Encode(L"+Original Location:" + tree.Path(L"Home") + L"\r\n"));
        return tree.File(drive.Backup() + L"\\" + name);
    }
    [[nodiscard]] std::wstring SelectedItem() {
        ListView& items = Main().List(L"lsvRestore1");
        return items.Selected() < 0 ? L"" : items.Rows().SubItem(items.Selected(), L"Name");
    }
    [[nodiscard]] std::vector<std::wstring> CopiesShown() {
        ListView& copies = Main().List(L"lsvRestore2");
        std::vector<std::wstring> paths;
        paths.reserve(static_cast<std::size_t>(copies.Rows().Count()));
        for (int row = 0; row < copies.Rows().Count(); ++row) {
            paths.push_back(copies.Rows().SubItem(row, L"BackupName"));
        }
        return paths;
    }
    [[nodiscard]] std::vector<std::wstring> NamesInVault() const {
        std::vector<std::wstring> names;
        for (const auto& [name, node] : ReadTree(drive.Backup())) names.push_back(name);
        return names;
    }
    /// False as long as the windows are not made either.
    [[nodiscard]] bool IsMainLoaded() { return world.pump.Yields() > 1 && Main().IsLoaded(); }
    /// What the restore view shows at the end of a silent run, whose window nobody sees.
    struct RestoreView {
        std::wstring drive;
        std::wstring item;
        std::vector<std::wstring> copies;
    };
    RestoreView ViewOfSilentRun(const std::wstring& arguments) {
        RestoreView view;
        const ShownWindows windows;
        world.pump.AtEachYield([&] {
            if (world.pump.Yields() <= 1 || !Main().IsLoaded()) return;
            view = {Main().Text(L"cmbDestination"), SelectedItem(), CopiesShown()};
        });
        EXPECT_THROW(Start(arguments), ProgramEnded);
        EXPECT_TRUE(windows.All().empty());
        return view;
    }
};

TEST_F(StartTest, AnyList_SavesThroughOneTemporaryFileOfTheProgram) {
    Start(L"\"" + tree.File(L"Work.vwl", "") + L"\"");
    EXPECT_EQ(state.temporaryListPath, state.applicationFolder + L"\\FilesList.vwl.tmp");
}

TEST_F(StartTest, SystemFileAsList_CountsAsMissing) {
    const std::wstring list = tree.File(L"Work.vwl", "");
    tree.SetAttributes(L"Work.vwl", FILE_ATTRIBUTE_SYSTEM);
    if (!world.disk.Stat(list)->isSystem) GTEST_SKIP() << "this disk keeps no system attribute";
    Start(list);
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kListPathMissing);
}

TEST_F(StartTest, FolderOrHiddenFileAsList_CountsAsMissing) {
    tree.File(L"Hidden.vwl", "");
    tree.SetAttributes(L"Hidden.vwl", FILE_ATTRIBUTE_HIDDEN);
    ASSERT_TRUE(world.disk.Stat(tree.Path(L"Hidden.vwl"))->isHidden);
    for (const std::wstring& list : {tree.Path(L"Hidden.vwl"), tree.Folder(L"Folder.vwl")}) {
        Start(list);
        EXPECT_EQ(world.errors.TakeOne().number, error_number::kListPathMissing);
    }
}

TEST_F(StartTest, Messages_AreProcessedBeforeTheLanguageAndBehindTheWindows) {
    settings.SaveSetting(setting::kArabic, L"-1");
    settings.SaveSetting(L"ArabicPrepared", L"-1");
    bool isBefore = false;
    bool isBehind = false;
    world.pump.AtYield(1, [&] { isBefore = !state.IsArabic(); });
    world.pump.AtYield(
        2, [&] { isBehind = state.IsArabic() && !Windows().frmAbout.Window().IsLoaded(); });
    Start();
    EXPECT_TRUE(isBefore);
    EXPECT_TRUE(isBehind);
}

TEST_F(StartTest, BackupOfTheDefaultList_MessagesAreProcessedBeforeTheRun) {
    WriteDefaultList({});
    bool isWorking = true;
    world.pump.AtYield(3, [&] { isWorking = state.isWorking; });
    EXPECT_THROW(Start(L"/B"), ProgramEnded);
    EXPECT_FALSE(isWorking);
}

TEST_F(StartTest, StartupSwitch_LogonStartIsOn_BacksUpTheDefaultList) {
    logon.Set(L"anything");
    WriteDefaultList({letter});
    EXPECT_THROW(Start(L"/Startup"), ProgramEnded);
    EXPECT_TRUE(Exists(drive.Backup() + L"\\Letter«0001».txt"));
}

TEST_F(StartTest, WholeDriveAsItem_IsRefused) {
    world.boxes.Expect(L"not a drive");
    EXPECT_THROW(Start(L"C:"), ProgramEnded);
}

TEST_F(StartTest, RootOfADriveAsItem_IsRefused) {
    world.boxes.Expect(L"not a drive");
    EXPECT_THROW(Start(L"C:\\"), ProgramEnded);
}

TEST_F(StartTest, StartAgain_ListIsMissing_MainWindowIsThere) {
    WriteDefaultList({letter});
    Start();
    Start(tree.Path(L"Missing.vwl"));
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kListPathMissing);
    EXPECT_TRUE(Main().IsVisible());
}

TEST_F(StartTest, StartAgain_OtherList_CaptionHasItsName) {
    WriteDefaultList({letter});
    Start();
    Start(tree.File(L"Work.vwl", ""));
    EXPECT_THAT(Main().Caption(), testing::HasSubstr(L"Work.vwl"));
}

TEST_F(StartTest, AboutIsOpen_MainWindowIsShownAgain_StaysOpen) {
    WriteDefaultList({});
    Start();
    Windows().frmAbout.Window().Load();
    application.ShowMainWindow();
    EXPECT_TRUE(Windows().frmAbout.Window().IsLoaded());
}

TEST_F(StartTest, RelativePath_IsCompletedWithItsSeparator) {
    tree.Folder(drive.Backup());
    const CurrentFolder here(tree.Path());
    EXPECT_THROW(Start(L"/B Home\\"), ProgramEnded);
    EXPECT_EQ(world.errors.TakeOne().path, tree.Path(L"Home\\")) << "a folder is no file";
}

TEST_F(StartTest, SingleItem_IsSelectedAndItsCopiesAreShown) {
    Copy(L"Aaa«0001».txt");
    const std::wstring copy = Copy(L"Letter«0001».txt");
    Start(letter);
    EXPECT_EQ(Main().List(L"lsvBackupList").Selected(), 0);
    EXPECT_EQ(SelectedItem(), L"Letter");
    EXPECT_THAT(CopiesShown(), ElementsAre(copy));
}

TEST_F(StartTest, RestoreSwitchWithItem_ShowsItsCopiesInTheDefaultDestination) {
    Copy(L"Aaa«0001».txt");
    const std::wstring copy = Copy(L"Letter«0001».txt");
    tree.Folder(L"Vault of the list");
    tree.File(state.DefaultListPath(),
              world.ansi.Encode(L"BackupTo: " + tree.Path(L"Vault of the list") + L"\r\n"));
    const RestoreView view = ViewOfSilentRun(L"/R " + letter);
    EXPECT_EQ(view.drive, drive.Name());
    EXPECT_EQ(view.item, L"Letter");
    EXPECT_THAT(view.copies, ElementsAre(copy));
}

TEST_F(StartTest, RestoreSwitchWithCopy_ShowsTheDriveOfTheCopy) {
    settings.SaveSetting(setting::kBackupTo, tree.Path(L"Default vault"));
    const std::wstring copy = Copy(L"Letter«0001».txt");
    const RestoreView view = ViewOfSilentRun(L"/R " + copy);
    EXPECT_EQ(view.drive, drive.Name());
    EXPECT_THAT(view.copies, ElementsAre(copy));
}

TEST_F(StartTest, RestoreSwitch_DestinationIsGone_EndsTheProgram) {
    const std::wstring gone = tree.Path(L"No vault");
    tree.File(state.DefaultListPath(), world.ansi.Encode(L"BackupTo: " + gone + L"\r\n"));
    world.boxes.Expect(gone);
    EXPECT_THROW(Start(L"/R " + letter), ProgramEnded);
    static_cast<void>(world.errors.Take());
}

int ghostings = 0;

void WINAPI CountGhosting() { ++ghostings; }

TEST_F(StartTest, Window_SystemShowsNoPictureOfIt) {
    const ImportHook count("DisableProcessWindowsGhosting", &CountGhosting);
    ghostings = 0;
    WriteDefaultList({});
    Start();
    EXPECT_EQ(ghostings, 1);
}

TEST_F(StartTest, SwitchAndList_BacksUpTheItemsOfThatListAlone) {
    WriteDefaultList({tree.File(L"Home\\Other.txt")});
    const std::wstring list =
        tree.File(L"Work.vwl",
                  world.ansi.Encode(L"BackupTo: " + drive.Backup() + L"\r\n" + letter + L"\r\n"));
    EXPECT_THROW(Start(L"/B " + list), ProgramEnded);
    EXPECT_EQ(NamesInVault(),
              (std::vector<std::wstring>{L"Letter«0001».txt", L"Letter«0001».txt.vwc"}));
}

TEST_F(StartTest, SwitchAndItem_BacksUpThatItemAlone) {
    WriteDefaultList({tree.File(L"Home\\Other.txt")});
    EXPECT_THROW(Start(L"/B " + letter), ProgramEnded);
    EXPECT_EQ(NamesInVault(),
              (std::vector<std::wstring>{L"Letter«0001».txt", L"Letter«0001».txt.vwc"}));
}

TEST_F(StartTest, SwitchAlone_BacksUpTheDefaultListWithoutAWindow) {
    WriteDefaultList({letter});
    bool isLoaded = false;
    world.files.OnOperation([&](const FileOperation&) { isLoaded = isLoaded || IsMainLoaded(); });
    world.pump.AtEachYield([&] { isLoaded = isLoaded || IsMainLoaded(); });
    EXPECT_THROW(Start(L"/B"), ProgramEnded);
    EXPECT_FALSE(isLoaded);
    EXPECT_TRUE(Exists(drive.Backup() + L"\\Letter«0001».txt"));
}

TEST_F(StartTest, List_IsShownInTheWindow) {
    Start(tree.File(L"Work.vwl", world.ansi.Encode(letter + L"\r\n")));
    EXPECT_TRUE(Main().IsVisible());
    EXPECT_THAT(Paths(), ElementsAre(letter));
}

TEST_F(StartTest, SingleItem_ColumnsFitIt) {
    Start(tree.File(std::wstring(10, L'W') + L".txt"));
    const HWND items = Main().Control(L"lsvBackupList");
    const std::wstring name = Main().List(L"lsvBackupList").Rows().At(0).cells[0].text;
    EXPECT_GT(SendMessageW(items, LVM_GETCOLUMNWIDTH, 0, 0),
              SendMessageW(items, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(name.c_str())));
}

TEST_F(StartTest, FileDialogs_BeginInTheFolderOfTheStart) {
    const ScopeExit forget([] { CompleteRelativePathsIn({}); });
    const std::wstring folder = tree.Folder(L"Here");
    CompleteRelativePathsIn(folder);
    Start();
    EXPECT_EQ(Windows().list.Dialog().lastFolder, folder);
}

TEST_F(StartTest, LanguageCannotBeAskedFor_EndsWithoutWindows) {
    RegDeleteKeyValueW(HKEY_CURRENT_USER, key.Path().c_str(), L"Arabic");
    world.boxes.AnswerAll(BoxAnswer::No);
    world.boxes.OnBox([] { Throw(error_number::kOutOfMemory); });
    Start();
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kOutOfMemory);
    EXPECT_FALSE(IsAlive());
}

TEST_F(StartTest, WindowProgram_HasNoIcon) {
    WriteDefaultList({});
    Start();
    world.clock.Advance(10'000);
    application.ShowWindowsIfDue();
    EXPECT_FALSE(Windows().frmTrayIcon.Window().IsLoaded());
}

TEST_F(StartTest, EndAtOnce_UnloadsTheIconAlone) {
    WriteDefaultList({});
    Start();
    Windows().frmTrayIcon.Load();
    EXPECT_THROW(application.EndAtOnce(), ProgramEnded);
    EXPECT_TRUE(Main().IsLoaded());
    EXPECT_FALSE(Windows().frmTrayIcon.Window().IsLoaded());
}

TEST_F(StartTest, DuringARun_MainWindowShowsTheHourglass) {
    WriteDefaultList({letter});
    Start();
    const auto cursor = [this] {
        SendMessageW(Main().Handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Main().Handle()),
                     MAKELPARAM(HTERROR, WM_MOUSEMOVE));
        return GetCursor();
    };
    bool waited = false;
    world.pump.AtEachYield([&] { waited = waited || cursor() == LoadCursorW(nullptr, IDC_WAIT); });
    Choose(ID_mnuBackup);
    EXPECT_TRUE(waited);
    SendMessageW(Main().Handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Main().Handle()),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

class ViewMenuTest : public App {
  protected:
    ViewMenuTest() {
        WriteDefaultList({letter});
        Start();
    }
    [[nodiscard]] LONG StyleBits(const wchar_t* list, LONG mask) {
        return GetWindowLongW(Main().Control(list), GWL_STYLE) & mask;
    }
    static constexpr const wchar_t* kLists[]{L"lsvBackupList", L"lsvRestore1", L"lsvRestore2"};
};

TEST_F(ViewMenuTest, Method_AppliesToAllListsAndPressesItsButton) {
    Choose(ID_mnuViewMethod_1);
    for (const auto* name : kLists) EXPECT_EQ(Main().List(name).Style(), ViewStyle::SmallIcons);
    for (const auto* key : {L"ViewLIcons", L"ViewSIcons", L"ViewList", L"ViewDetails"}) {
        EXPECT_EQ(Main().Tools(L"Toolbar1").IsChecked(key),
                  std::wstring_view(key) == L"ViewSIcons");
    }
}

TEST_F(ViewMenuTest, Arrangement_AppliesToAllLists) {
    constexpr LONG kMask = LVS_ALIGNMASK | LVS_AUTOARRANGE;
    Choose(ID_mnuViewAlign_1);
    for (const auto* name : kLists) {
        EXPECT_EQ(StyleBits(name, kMask), LVS_ALIGNLEFT | LVS_AUTOARRANGE);
    }
    Choose(ID_mnuViewAlign_0);
    for (const auto* name : kLists) EXPECT_EQ(StyleBits(name, LVS_AUTOARRANGE), 0);
}

// A start with the list, the destination and the setting of a server that is gone.
TEST_F(StartTest, ServerIsGone_WindowAsksItNothing) {
    const std::wstring letter = tree.File(L"Home\\Letter.txt", "Dear Sir");
    tree.File(state.DefaultListPath(),
              world.ansi.Encode(L"BackupTo: Q:\\Backup\r\nQ:\\Docs\\a.txt\r\n" + letter +
                                L"\r\nQ:\\Docs\\More\\\r\n"));
    settings.SaveSetting(setting::kBackupTo, L"Q:\\Backup");
    DeadServer server(world.files);
    System system = world.With(server);
    Application started(system, state, settings, api, report);
    started.Start(L"program.exe");
    EXPECT_THAT(server.askedByWindow, testing::IsEmpty());
    EXPECT_GT(server.questions, 0);
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kAccessError) << "one box for all rows";
    ListRows& rows = started.Windows().list.Rows();
    EXPECT_THAT(rows.Paths(), ElementsAre(L"Q:\\Docs\\a.txt", letter, L"Q:\\Docs\\More\\"));
    EXPECT_EQ(rows.List().Rows().SubItem(0, L"Size"), L"");
    EXPECT_NE(rows.List().Rows().SubItem(1, L"Size"), L"");
    EXPECT_EQ(rows.List().Rows().SubItem(1, L"SP"), L"") << "only the destination knows it";
    EXPECT_EQ(started.Windows().frmMain.Text(L"cmbDestination"), L"Q:");
    // The drive can be chosen no more, and the choice does not stop the window either.
    started.Windows().list.ChooseDestination(L"Q:\\Backup");
    EXPECT_THAT(server.askedByWindow, testing::IsEmpty());
    EXPECT_EQ(state.BackupTo, L"Q:\\Backup");
    EXPECT_THROW(started.frmUnload(), ProgramEnded);
}

}  // namespace
}  // namespace vw::test
