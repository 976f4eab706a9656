// Backing up through the real windows: menus, busy dialog, icon, the end of the program.

#include <gmock/gmock.h>

#include "tests/windows/BackupWindows.h"

namespace vw::test {
namespace {

using testing::Contains;
using testing::IsEmpty;

constexpr int kTrayMessage = 512;

class Backup : public BackupWindows {};

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

}  // namespace
}  // namespace vw::test
