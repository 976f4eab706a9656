// Backing up through the real windows: menus, busy dialog, icon, the end of the program.

#include <gmock/gmock.h>

#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kTrayMessage = 512;

class Backup : public BackupWindows {};

TEST_F(Backup, EmptyList_ShowsAMessage_KeepsTheFile) {
    const std::wstring list = WriteDefaultList({});
    const std::string before = ReadBytes(list);
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    window.AnswerBox(L"لا يوجد تحديد في قائمة النسخ");
    window.WaitUntilReady();
    window.Close();
    EXPECT_EQ(ReadBytes(list), before);
}

TEST_F(Backup, ShowsTheCopiesAfterTheRun) {
    program.tree.File(L"Home\\Deep\\Inner.doc");
    WriteDefaultList({letter, Home(L"Deep") + L"\\"});
    DrivenProgram window(program.With(L""));
    EXPECT_EQ(window.List(ID_lsvRestore1).Count(), 0);
    BackUp(window);
    EXPECT_THAT(window.List(ID_lsvRestore1).Column(kName), ElementsAre(L"Deep", L"Letter"));
    EXPECT_THAT(window.List(ID_lsvRestore1).Column(1), ElementsAre(L"Folder", L".txt"));
    EXPECT_THAT(window.List(ID_lsvRestore1).Column(2), ElementsAre(L"0", L"0"));
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(kName), ElementsAre(L"N01"));
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
    // A click on an item of the list shows its copies.
    window.List(ID_lsvBackupList).Select(1);
    window.List(ID_lsvBackupList).Select(0);
    window.WaitUntilReady();
    EXPECT_EQ(window.List(ID_lsvRestore1).Selected(), 1);
    EXPECT_THAT(window.List(ID_lsvRestore2).Column(3),
                ElementsAre(Vault() + L"\\Letter«0001».txt"));
    window.Close();
}

TEST_F(Backup, CancelInTheBusyDialog_EndsTheRun) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_Toolbar1_ActionBackup);
    const HWND busy = window.WaitForBusyDialog();
    EXPECT_FALSE(IsWindowEnabled(window.Main()));
    EXPECT_EQ(WindowText(busy), L"Vault wright – please wait:");
    EXPECT_EQ(WindowText(FindControl(busy, ID_lblTitle)), L"Backing:");
    // A second command while one runs does nothing.
    window.Begin(ID_mnuBackup);
    window.Begin(ID_mnuDelAll);
    PostMessageW(busy, WM_COMMAND, MAKEWPARAM(ID_cmdCancel, BN_CLICKED),
                 reinterpret_cast<LPARAM>(FindControl(busy, ID_cmdCancel)));
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntilReady();
    EXPECT_EQ(window.List(ID_lsvBackupList).Count(), 2);
    EXPECT_THAT(InVault(), testing::Not(Contains(L"Letter«0001».txt")));
    BackUp(window);
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
    window.Close();
}

TEST_F(Backup, KeepOpenTicked_ReportStaysOpen) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    const HWND busy = window.WaitForBusyDialog();
    SendMessageW(FindControl(busy, ID_chkDontHide), BM_CLICK, 0, 0);
    const HWND report = FindControl(busy, ID_txtReport);
    window.WaitUntil([&] { return WindowText(report).ends_with(L"Done:  - \r\n"); }, "no end");
    EXPECT_NE(WindowText(report).find(L"Backing:: " + letter + L" - \r\n"), std::wstring::npos);
    EXPECT_TRUE(IsWindowVisible(report));
    Sleep(3000);
    EXPECT_TRUE(IsWindowVisible(busy));
    EXPECT_FALSE(IsWindowEnabled(window.Main())) << "until the report is closed";
    PostMessageW(busy, WM_CLOSE, 0, 0);
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntilReady();
    window.Close();
}

TEST_F(Backup, TextOfABox_IsInTheReport) {
    const std::wstring locked = program.tree.File(L"Home\\Work\\locked.txt");
    program.tree.File(L"Home\\Work\\other.txt");
    WriteDefaultList({Home(L"Work") + L"\\"});
    const FileHandle held(
        CreateFileW(locked.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    const HWND busy = window.WaitForBusyDialog();
    SendMessageW(FindControl(busy, ID_chkDontHide), BM_CLICK, 0, 0);
    window.AnswerBox(L"Permission denied");
    const HWND report = FindControl(busy, ID_txtReport);
    window.WaitUntil([&] { return WindowText(report).ends_with(L"Done:  - \r\n"); }, "no end");
    EXPECT_THAT(WindowText(report), testing::HasSubstr(L"Permission denied\r\n" + locked));
    PostMessageW(busy, WM_CLOSE, 0, 0);
    window.WaitUntilReady();
    window.Close();
}

TEST_F(Backup, DialogMinimised_RunContinuesBehindItsIcon) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    const HWND busy = window.WaitForBusyDialog();
    PostMessageW(busy, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    EXPECT_NE(window.Run().WaitForWindow(L"frmTrayIcon"), nullptr);
    window.WaitUntilBusyDialogIsGone();
    window.WaitUntil([&] { return IsWindowVisible(window.Main()) != 0; }, "no main window");
    window.WaitUntilReady();
    EXPECT_EQ(FindWindowOf(window.Run().ProcessId(), L"frmTrayIcon"), nullptr);
    EXPECT_THAT(InVault(), Contains(L"Letter«0001».txt"));
    window.Close();
}

TEST_F(Backup, CancelInTheMenuOfTheIcon_EndsTheRun) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    PostMessageW(window.WaitForBusyDialog(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    const HWND icon = window.Run().WaitForWindow(L"frmTrayIcon");
    PostMessageW(icon, WM_COMMAND, ID_mnuProp1Cancel, 0);
    window.WaitUntil([&] { return IsWindowVisible(window.Main()) != 0; }, "it goes on");
    window.WaitUntilReady();
    EXPECT_THAT(InVault(), testing::Not(Contains(L"Letter«0001».txt")));
    window.Close();
}

TEST_F(Backup, ExitOfTheIcon_EndsTheProgramAtOnce) {
    MakeManyFiles();
    const std::wstring list = WriteDefaultList({Home(L"Many") + L"\\", letter});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    PostMessageW(window.WaitForBusyDialog(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    const HWND icon = window.Run().WaitForWindow(L"frmTrayIcon");
    PostMessageW(icon, WM_COMMAND, ID_mnuProp1Exit, 0);
    EXPECT_EQ(window.Run().WaitForEnd(), 1223U);
    EXPECT_THAT(InVault(), testing::Not(Contains(L"Many«0001»"))) << "half a copy";
}

TEST_F(Backup, ClickOnTheIcon_IdleWindows_AreShownAgain) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\"});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    const HWND busy = window.WaitForBusyDialog();
    SendMessageW(FindControl(busy, ID_chkDontHide), BM_CLICK, 0, 0);
    const HWND report = FindControl(busy, ID_txtReport);
    window.WaitUntil([&] { return WindowText(report).ends_with(L"Done:  - \r\n"); }, "no end");
    PostMessageW(busy, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    const HWND icon = window.Run().WaitForWindow(L"frmTrayIcon");
    window.WaitUntil([&] { return IsWindowVisible(window.Main()) == 0; }, "not hidden");
    PostMessageW(icon, kTrayMessage, 1, WM_LBUTTONUP);
    window.WaitUntil([&] { return IsWindowVisible(window.Main()) != 0; }, "locked out");
    window.WaitUntil([&] { return IsWindowVisible(busy) != 0; }, "no report");
    PostMessageW(busy, WM_CLOSE, 0, 0);
    window.WaitUntilReady();
    window.Close();
}

TEST_F(Backup, SessionEnds_SavesTheListAndAsksNothing) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\"});
    DrivenProgram window(program.With(L""));
    window.ClickMoreCopies(1);
    window.Begin(ID_mnuBackup);
    window.WaitForBusyDialog();
    EXPECT_NE(SendMessageW(window.Main(), WM_QUERYENDSESSION, 0, 0), 0);
    PostMessageW(window.Main(), WM_ENDSESSION, TRUE, 0);
    window.Run().WaitForEnd();
    EXPECT_THAT(LinesOf(program.DefaultList()), Contains(L"Backages: 4"));
    EXPECT_THAT(window.Run().Boxes(), IsEmpty());
    EXPECT_THAT(InVault(), testing::Not(Contains(L"Many«0001»")));
}

// The system asks the windows one after the other, and a run goes on meanwhile.
TEST_F(Backup, SessionEnds_ProgressWindowFirst_LeavesNoPartialCopy) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\"});
    {
        DrivenProgram window(program.With(L""));
        window.Begin(ID_mnuBackup);
        const HWND busy = window.WaitForBusyDialog();
        EXPECT_NE(SendMessageW(busy, WM_QUERYENDSESSION, 0, 0), 0);
        SendMessageW(busy, WM_ENDSESSION, TRUE, 0);
        window.WaitUntilReady();
        EXPECT_THAT(InVault(), IsEmpty());
        PostMessageW(window.Main(), WM_ENDSESSION, TRUE, 0);
        window.Run().WaitForEnd();
    }
    EXPECT_THAT(InVault(), IsEmpty());
    DrivenProgram next(program.With(L""));
    BackUp(next);
    EXPECT_EQ(ReadTree(Vault() + L"\\Many«0001»"), ReadTree(Home(L"Many")));
    EXPECT_EQ(next.Close(), 0U);
}

TEST_F(Backup, QuitMessage_SavesTheListAndEnds) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\"});
    DrivenProgram window(program.With(L""));
    window.ClickMoreCopies(1);
    window.Begin(ID_mnuBackup);
    window.WaitForBusyDialog();
    PostThreadMessageW(GetWindowThreadProcessId(window.Main(), nullptr), WM_QUIT, 0, 0);
    EXPECT_EQ(window.Run().WaitForEnd(), 1223U);
    EXPECT_THAT(LinesOf(program.DefaultList()), Contains(L"Backages: 4"));
    EXPECT_THAT(InVault(), testing::Not(Contains(L"Many«0001»")));
}

TEST_F(Backup, MainWindowClosedInARun_SavesTheListAndEnds) {
    MakeManyFiles();
    WriteDefaultList({Home(L"Many") + L"\\"});
    DrivenProgram window(program.With(L""));
    window.Begin(ID_mnuBackup);
    window.WaitForBusyDialog();
    PostMessageW(window.Main(), WM_CLOSE, 0, 0);
    EXPECT_EQ(window.Run().WaitForEnd(), 1223U);
    EXPECT_THAT(LinesOf(program.DefaultList()), Contains(Home(L"Many") + L"\\"));
}

}  // namespace
}  // namespace vw::test
