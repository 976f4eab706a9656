// What the user starts by a menu or a button.

#include <gmock/gmock.h>

#include "tests/app/ApplicationFixture.h"
#include "tests/app/StartedCommands.h"
#include "tests/support/FileDialogHook.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

TEST_F(App, ListIsEmpty_BackupAndOpenSaySoAndDoNothing) {
    WriteDefaultList({});
    Start();
    const StartedCommands started;
    for (const int id : {ID_mnuBackup, ID_mnuOpen, ID_Toolbar1_ActionOpen}) {
        world.boxes.Expect(Main().Text(L"lblNoFileToBack"));
        world.files.Heal();
        Choose(id);
        EXPECT_TRUE(world.boxes.Shown().back().rightToLeft);
        for (const FileOperation& operation : world.files.Operations()) {
            EXPECT_NE(operation.path, state.currentListPath) << Describe(operation);
        }
    }
    EXPECT_THAT(started.Lines(), IsEmpty());
}

TEST_F(App, BackupNow_ListCannotBeSaved_BacksUpNothing) {
    WriteDefaultList({letter});
    Start();
    Main().SetValue(L"vsBackages", 7);
    world.files.FailFrom(1, error_number::kPermissionDenied, [](const FileOperation& operation) {
        return operation.call == FileCall::Write && operation.path.ends_with(L".tmp");
    });
    Choose(ID_mnuBackup);
    EXPECT_EQ(world.errors.TakeOne().number, error_number::kPermissionDenied);
    EXPECT_FALSE(Exists(drive.Backup() + L"\\Letter«0001».txt"));
}

TEST_F(App, Start_NoCountInTheList_HasThatOfTheSettings) {
    settings.SaveSetting(setting::kBackages, L"7");
    tree.Folder(drive.Backup());
    tree.File(state.DefaultListPath(), world.ansi.Encode(letter + L"\r\n"));
    Start();
    EXPECT_EQ(Main().Text(L"lblBackages"), L"7");
}

TEST_F(App, Start_ListIsNotThere_IsReportedAsItWasTyped) {
    Start(L"missing list.vwl");
    EXPECT_EQ(world.errors.TakeOne().path, L"missing list.vwl");
}

TEST_F(App, LargeIcons_TheirButtonIsPressed) {
    WriteDefaultList({letter});
    Start();
    Choose(ID_mnuViewMethod_0);
    EXPECT_TRUE(Main().Tools(L"Toolbar1").IsChecked(L"ViewLIcons"));
    Choose(ID_mnuViewMethod_3);
    EXPECT_FALSE(Main().Tools(L"Toolbar1").IsChecked(L"ViewLIcons"));
}

TEST_F(App, RecentList_EachEntryOpensItsOwn) {
    const std::wstring older = tree.File(L"Older.vwl", world.ansi.Encode(letter + L"\r\n"));
    const std::wstring newer = tree.File(L"Newer.vwl", "");
    const std::wstring newest = tree.File(L"Newest.vwl", "");
    WriteDefaultList({});
    Start();
    state.currentListPath = newest;
    for (const std::wstring& list : {older, newer, newest}) {
        Windows().recent.RecentFile(1, list);
    }
    Choose(ID_mnuRecentFile_3);
    EXPECT_EQ(state.currentListPath, older);
    Choose(ID_mnuRecentFile_3);
    EXPECT_EQ(state.currentListPath, newer);
    Choose(ID_mnuRecentFile_0);
    EXPECT_EQ(state.currentListPath, state.DefaultListPath());
    Choose(ID_mnuRecentFile_1);
    EXPECT_EQ(state.currentListPath, newer);
    Choose(ID_mnuRecentFile_2);
    EXPECT_EQ(state.currentListPath, older);
}

TEST_F(App, LogonStartIsSwitchedOn_StatusLineSaysWhatItDoes) {
    WriteDefaultList({letter});
    Start();
    for (const auto& [language, text] :
         {std::pair(Language::English, L"Windows now starts Vaultwright at log-on."),
          std::pair(Language::Arabic, L"عند تسجيل الدخول")}) {
        state.language = language;
        if (Main().Menus().IsChecked(L"mnuOptions", 0)) Choose(ID_mnuOptions_0);
        Choose(ID_mnuOptions_0);
        EXPECT_THAT(Main().Text(L"sbrStatus"), testing::HasSubstr(text));
    }
}

TEST_F(App, NewList_HasTheNameThatIsAskedFor) {
    WriteDefaultList({letter});
    Start();
    FileDialogHook dialog;
    dialog.answer = tree.Path(L"Mine.vwl");
    Choose(ID_mnuFileNew);
    EXPECT_EQ(state.currentListPath, dialog.answer);
    EXPECT_TRUE(Exists(dialog.answer));
}

TEST_F(App, About_IsShownOverAReadyWindow) {
    WriteDefaultList({});
    Start();
    bool isShown = false;
    world.pump.AtEachYield([&] {
        Form& about = Windows().frmAbout.Window();
        if (!about.IsVisible()) return;
        isShown = true;
        EXPECT_FALSE(Main().IsFormEnabled()) << "below the box";
        SendMessageW(Main().Handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(Main().Handle()),
                     MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
        about.Unload();
    });
    Choose(ID_mnuHelpAbout);
    EXPECT_TRUE(isShown);
    EXPECT_TRUE(Main().IsFormEnabled());
}

class HelpCommand : public App {
  protected:
    /// The pages that the command opens.
    [[nodiscard]] std::vector<std::wstring> Opened() {
        const StartedCommands started;
        Choose(ID_mnuHelpHelp);
        static_cast<void>(world.errors.Take());
        return started.Lines();
    }
    const std::wstring page = kBaseName + L".htm";
};

TEST_F(HelpCommand, EachLanguage_OpensItsPage) {
    tree.File(L"Program\\Help\\" + page);
    tree.File(L"Program\\Help\\en\\" + page);
    WriteDefaultList({});
    Start();
    EXPECT_THAT(Opened(), ElementsAre(EndsWith(tree.Path(L"Program\\Help\\en\\" + page))));
    state.language = Language::Arabic;
    EXPECT_THAT(Opened(), ElementsAre(EndsWith(tree.Path(L"Program\\Help\\" + page))));
}

TEST_F(HelpCommand, PageIsMissing_OpensNotThatOfTheOtherLanguage) {
    tree.File(L"Program\\Help\\" + page);
    WriteDefaultList({});
    Start();
    EXPECT_THAT(Opened(), IsEmpty());
}

}  // namespace
}  // namespace vw::test
