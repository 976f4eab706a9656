#include <gmock/gmock.h>

#include <string>

#include "tests/progress/BusyDialogFixture.h"
#include "tests/support/ImportHook.h"

namespace vw {
namespace {

using test::Calls;
using test::ImportHook;

class BusyDialogTest : public test::BusyDialogWindow {};

INSTANTIATE_TEST_SUITE_P(Languages, BusyDialogTest, testing::ValuesIn(test::kLanguages));

TEST_P(BusyDialogTest, Msg_AddsALineToTheReport) {
    dialog.Msg(L"Backing:", L"C:\\a.txt", L"", false, false, false);
    dialog.Msg(L"Title", L"message", L"more", false, false, true);
    EXPECT_EQ(Report(), L"Backing:: C:\\a.txt - \r\nTitle: message - more\r\n");
    EXPECT_EQ(Window().Text(L"lblTitle"), L"Title");
    EXPECT_EQ(Window().Text(L"lblMsg"), L"message");
    EXPECT_EQ(Window().Text(L"lblSubMsg"), L"more");
}

TEST_P(BusyDialogTest, Msg_First_IsShownAtOnceWithoutTheReport) {
    dialog.Msg(L"Backing:", L"C:\\a.txt", L"", false, false, false);
    EXPECT_TRUE(Window().IsVisible());
    EXPECT_EQ(Window().Text(L"lblMsg"), L"C:\\a.txt");
    EXPECT_FALSE(Window().IsShown(L"txtReport"));
    dialog.Msg(L"Backing:", L"C:\\b.txt", L"", false, false, true);
    EXPECT_TRUE(Window().IsShown(L"txtReport"));
    dialog.Msg(L"Backing:", L"C:\\c.txt", L"", false, false, false);
    EXPECT_FALSE(Window().IsShown(L"txtReport"));
}

TEST_P(BusyDialogTest, Msg_FirstAfterAReportLine_IsShownAtOnce) {
    dialog.Report(L"a line", false);
    dialog.Msg(L"Backing:", L"C:\\a.txt", L"", false, false, false);
    EXPECT_EQ(Window().Text(L"lblTitle"), L"Backing:");
}

TEST_P(BusyDialogTest, SessionEnds_RequestsCancelAndEnd) {
    dialog.Msg(L"Backing:", L"C:\\a.txt", L"", false, false, false);
    SendMessageW(Window().Handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_TRUE(state.cancel.IsRequested());
    EXPECT_TRUE(state.endRequested);
}

TEST_P(BusyDialogTest, BusyHide_HiddenDuringItsWait_KeepsTheReport) {
    dialog.Report(L"x", false);
    Window().Check(L"chkDontHide", true);
    world.pump.AtYield(3, [&] { Window().Hide(); });
    dialog.BusyHide(true);
    EXPECT_TRUE(Window().IsLoaded());
}

TEST_P(BusyDialogTest, Report_WithAPause_WaitsOutsideARunOnly) {
    dialog.Report(L"x", true);
    EXPECT_EQ(world.pump.Waited(), 2000U);
    world.pump.Restart();
    const auto before = world.pump.Waited();
    state.isWorking = true;
    for (int i = 0; i < 300; ++i) dialog.Report(L"unchanged", true);
    EXPECT_EQ(world.pump.Waited(), before) << "300 unchanged items are no ten minutes";
}

TEST_P(BusyDialogTest, Msg_ManyInAShortTime_ShowsTheLastOneLater) {
    for (int i = 0; i < 100; ++i) {
        dialog.Msg(L"Backing:", std::to_wstring(i), L"", false, false, false);
    }
    EXPECT_EQ(Window().Text(L"lblMsg"), L"0");
    world.clock.Advance(200);
    dialog.Report(L"next", false);
    EXPECT_EQ(Window().Text(L"lblMsg"), L"99");
    EXPECT_EQ(Report(), dialog.ReportText());
    EXPECT_TRUE(Report().ends_with(L"Backing:: 99 - \r\nnext\r\n"));
}

TEST_P(BusyDialogTest, Msg_WithAPause_IsShownBeforeIt) {
    dialog.Msg(L"Backing:", L"first", L"", false, false, false);
    world.pump.AtYield(1, [&] { EXPECT_EQ(Window().Text(L"lblMsg"), L"last"); });
    dialog.Msg(L"Backing:", L"last", L"", true, false, false);
}

TEST_P(BusyDialogTest, BusyHide_ReportIsKept_EnterClosesIt) {
    dialog.Report(L"x", false);
    EXPECT_EQ(EnterButton(), 0) << "Enter cancels no work";
    Window().Check(L"chkDontHide", true);
    dialog.BusyHide(false);
    EXPECT_EQ(EnterButton(), ID_cmdCancel);
}

TEST_P(BusyDialogTest, ClosedWhileMinimised_NextRunShowsItsWindow) {
    dialog.Report(L"x", false);
    Minimise();
    Window().Unload();
    dialog.Report(L"x", false);
    EXPECT_FALSE(IsIconic(Window().Handle()));
}

TEST_P(BusyDialogTest, Msg_FirstOfTheNextRun_IsShownAtOnce) {
    dialog.Msg(L"Backing:", L"C:\\a.txt", L"", false, false, false);
    Window().Unload();
    dialog.Report(L"a line", false);
    dialog.Msg(L"Backing:", L"C:\\b.txt", L"", false, false, false);
    EXPECT_EQ(Window().Text(L"lblMsg"), L"C:\\b.txt");
}

TEST_P(BusyDialogTest, Timer_ShowsThePendingMessage) {
    dialog.Msg(L"Backing:", L"first", L"", false, false, false);
    dialog.Msg(L"Backing:", L"last", L"", false, false, false);
    Tick();
    EXPECT_EQ(Window().Text(L"lblMsg"), L"last");
}

TEST_P(BusyDialogTest, Repaint_ShowsThePendingMessage) {
    dialog.Msg(L"Backing:", L"small", L"", false, false, false);
    dialog.Msg(L"Backing:", L"large", L"", false, false, false);
    dialog.Repaint();
    EXPECT_EQ(Window().Text(L"lblMsg"), L"large");
}

TEST_P(BusyDialogTest, ShownOrRepainted_IsPaintedAtOnce) {
    const auto isPainted = [this] {
        return GetUpdateRect(Window().Handle(), nullptr, FALSE) == FALSE;
    };
    dialog.Report(L"x", false);
    EXPECT_TRUE(isPainted());
    InvalidateRect(Window().Handle(), nullptr, TRUE);
    dialog.Repaint();
    EXPECT_TRUE(isPainted());
}

decltype(SetWindowTextW)* setText = nullptr;
test::TestClock* slowClock = nullptr;

BOOL WINAPI SetTextSlowly(HWND window, LPCWSTR text) {
    slowClock->Advance(30);
    return setText(window, text);
}

TEST_P(BusyDialogTest, SlowUpdate_TakesATwentiethOfTheTime) {
    dialog.Msg(L"Backing:", L"first", L"", false, false, false);
    slowClock = &world.clock;
    {
        const ImportHook slow("SetWindowTextW", &SetTextSlowly);
        setText = slow.Original<decltype(SetWindowTextW)>();
        const auto begin = world.clock.Milliseconds();
        dialog.Msg(L"Backing:", L"second", L"", false, false, true);
        ASSERT_EQ(world.clock.Milliseconds() - begin, 30U);
    }
    dialog.Msg(L"Backing:", L"third", L"", false, false, false);
    world.clock.Advance(599);
    dialog.Report(L"a line", false);
    EXPECT_EQ(Window().Text(L"lblMsg"), L"second");
    world.clock.Advance(1);
    dialog.Report(L"a line", false);
    EXPECT_EQ(Window().Text(L"lblMsg"), L"third");
}

TEST_P(BusyDialogTest, Timer_MovesTheBarInACycle) {
    dialog.Report(L"x", false);
    EXPECT_TRUE(Window().IsTimerEnabled(L"tmrBusy"));
    for (const int value : {10, 20, 30, 40, 50, 60, 70, 80, 90, 0, 10}) {
        Tick();
        EXPECT_EQ(Window().Progress(L"ProgressBar1"), value);
    }
}

TEST_P(BusyDialogTest, Msg_TextIsEnd_ClosesTheDialogAtTheNextTick) {
    dialog.Msg(L"Title", L"end", L"", false, false, false);
    Tick();
    EXPECT_TRUE(Window().IsLoaded());
    dialog.Msg(L"Title", L"End", L"", false, false, false);
    Tick();
    EXPECT_FALSE(Window().IsLoaded());
}

TEST_P(BusyDialogTest, Msg_WithPauseOrClose_WaitsOrCloses) {
    dialog.Msg(L"Title", L"message", L"", true, false, false);
    EXPECT_GE(world.pump.Waited(), 2000U);
    EXPECT_TRUE(Window().IsLoaded());
    dialog.Msg(L"Title", L"message", L"", false, true, false);
    EXPECT_FALSE(Window().IsLoaded());
}

TEST_P(BusyDialogTest, KeepOpenTicked_NeitherWaitsNorCloses) {
    dialog.Report(L"x", false);
    Window().Check(L"chkDontHide", true);
    dialog.Msg(L"Title", L"message", L"", true, true, false);
    EXPECT_EQ(world.pump.Waited(), 0U);
    EXPECT_TRUE(Window().IsVisible());
    dialog.BusyHide(true);
    EXPECT_TRUE(Window().IsVisible());
    EXPECT_TRUE(Window().IsShown(L"txtReport"));
    EXPECT_TRUE(Report().ends_with(L"Done:  - \r\n"));
    EXPECT_TRUE(dialog.KeepsReport());
    EXPECT_EQ(host.calls, Calls{});
}

TEST_P(BusyDialogTest, BusyHide_LongReport_ShowsItsEnd) {
    for (int i = 0; i < 300; ++i) dialog.Report(L"line " + std::to_wstring(i), false);
    Window().Check(L"chkDontHide", true);
    dialog.BusyHide(true);
    const HWND report = Window().Control(L"txtReport");
    const LRESULT last = SendMessageW(report, EM_POSFROMCHAR, Report().find(L"Done"), 0);
    RECT inside{};
    GetClientRect(report, &inside);
    EXPECT_GT(static_cast<short>(HIWORD(last)), inside.bottom / 2) << "nothing below the end";
    EXPECT_LT(static_cast<short>(HIWORD(last)), inside.bottom);
    EXPECT_GT(inside.bottom, 50);
}

TEST_P(BusyDialogTest, BusyHide_FillsTheBarAndCloses) {
    dialog.Msg(L"Backing:", L"x", L"", false, false, false);
    std::wstring report;
    int bar = 0;
    bool ticking = true;
    world.pump.AtYield(1, [&] {
        report = Report();
        bar = Window().Progress(L"ProgressBar1");
        ticking = Window().IsTimerEnabled(L"tmrBusy");
    });
    dialog.BusyHide(true);
    EXPECT_EQ(report, L"Backing:: x - \r\nDone:  - \r\n");
    EXPECT_EQ(bar, kProgressMaximum);
    EXPECT_FALSE(ticking);
    EXPECT_GE(world.pump.Waited(), 2000U);
    EXPECT_FALSE(Window().IsLoaded());
    EXPECT_TRUE(state.cancel.IsRequested()) << "every closing asks for it";
}

TEST_P(BusyDialogTest, BusyHide_WithoutPause_ClosesAtOnce) {
    dialog.Report(L"x", false);
    dialog.BusyHide(false);
    EXPECT_EQ(world.pump.Waited(), 0U);
    EXPECT_FALSE(Window().IsLoaded());
}

TEST_P(BusyDialogTest, BusyHide_NeverShown_YieldsAndCancelsNothing) {
    dialog.BusyHide(true);
    EXPECT_FALSE(Window().IsLoaded());
    EXPECT_EQ(world.pump.Yields(), 0);
    EXPECT_FALSE(state.cancel.IsRequested());
}

TEST_P(BusyDialogTest, CancelButton_RequestsCancelAndEnablesTheMainWindow) {
    dialog.Report(L"x", false);
    Window().Check(L"chkDontHide", true);
    Press();
    EXPECT_FALSE(Window().IsLoaded());
    EXPECT_TRUE(state.cancel.IsRequested());
    EXPECT_EQ(host.calls, (Calls{"ready"}));
}

TEST_P(BusyDialogTest, CheckBox_ClosesNothing) {
    dialog.Report(L"x", false);
    SendMessageW(Window().Handle(), WM_COMMAND, MAKEWPARAM(ID_chkDontHide, BN_CLICKED),
                 reinterpret_cast<LPARAM>(Window().Control(L"chkDontHide")));
    EXPECT_TRUE(Window().IsLoaded());
}

TEST_P(BusyDialogTest, CloseBox_EnablesTheMainWindow) {
    dialog.Report(L"x", false);
    SendMessageW(Window().Handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(host.calls, (Calls{"ready"}));
}

TEST_P(BusyDialogTest, Minimised_LoadsTheIcon_CloseRestoresTheMainWindow) {
    dialog.Report(L"x", false);
    Minimise();
    EXPECT_EQ(host.calls, Calls{"load icon"});
    host.calls.clear();
    Window().Unload();
    EXPECT_EQ(host.calls, (Calls{"unload icon", "ready", "show main"}));
}

TEST_P(BusyDialogTest, RestoredByItsButton_ShowsTheMainWindow) {
    dialog.Report(L"x", false);
    Minimise();
    ShowWindow(Window().Handle(), SW_RESTORE);
    EXPECT_EQ(host.calls, (Calls{"load icon", "unload icon", "show main"}));
    EXPECT_TRUE(Window().IsVisible());
    EXPECT_EQ(Window().State(), WindowState::Normal);
}

TEST_P(BusyDialogTest, HiddenWhileMinimised_NextMessageShowsItsButton) {
    test::LoadedForm main{MainForm(), GetParam()};
    dialog.Report(L"x", false);
    Minimise();
    Window().Hide();
    main.form.Show(ShowHow::Activate);
    ASSERT_EQ(GetActiveWindow(), main.form.Handle());
    dialog.Report(L"y", false);
    EXPECT_EQ(GetActiveWindow(), main.form.Handle()) << "the user works elsewhere";
    EXPECT_TRUE(Window().IsVisible());
    EXPECT_EQ(Window().State(), WindowState::Minimised);
}

TEST_P(BusyDialogTest, BusyHide_HiddenByTheIcon_ShowsTheMainWindow) {
    dialog.Report(L"x", false);
    Minimise();
    Window().Hide();
    host.calls.clear();
    dialog.BusyHide(false);
    EXPECT_FALSE(Window().IsLoaded());
    EXPECT_THAT(host.calls, testing::IsSupersetOf({"unload icon", "ready", "show main"}));
}

TEST_P(BusyDialogTest, BusyHide_MinimisedAndReportKept_ShowsItAndTheMainWindow) {
    dialog.Report(L"x", false);
    Window().Check(L"chkDontHide", true);
    Minimise();
    Window().Hide();
    host.calls.clear();
    dialog.BusyHide(true);
    EXPECT_TRUE(Window().IsVisible());
    EXPECT_EQ(Window().State(), WindowState::Normal);
    EXPECT_EQ(host.calls, (Calls{"unload icon", "show main"}));
}

TEST_P(BusyDialogTest, BusyHide_NeverShown_DoesNothing) {
    state.silentRun = true;
    dialog.SendView();
    dialog.BusyHide(false);
    EXPECT_EQ(dialog.ReportText(), L"");
    EXPECT_EQ(host.calls, Calls{});
    state.silentRun = false;
}

TEST_P(BusyDialogTest, Wait_CancelOrUnload_Ends) {
    dialog.Report(L"x", false);
    world.pump.AtYield(3, [&] { state.cancel.Request(); });
    dialog.Wait(2);
    EXPECT_EQ(world.pump.Yields(), 3);

    state.cancel.Begin();
    world.pump.Restart();
    world.pump.AtYield(2, [&] { Window().Unload(); });
    dialog.Wait(2);
    EXPECT_EQ(world.pump.Yields(), 2);
}

TEST_P(BusyDialogTest, BusyHide_ClosedDuringItsWait_UnloadsOnce) {
    dialog.Report(L"x", false);
    world.pump.AtYield(5, [&] { Press(); });
    dialog.BusyHide(true);
    EXPECT_FALSE(Window().IsLoaded());
    EXPECT_EQ(host.calls, (Calls{"ready"})) << "once";
}

TEST_P(BusyDialogTest, SilentRun_LoadsAndNeverShowsIt) {
    state.silentRun = true;
    dialog.SendView();
    EXPECT_TRUE(Window().IsLoaded());
    EXPECT_FALSE(Window().IsVisible());
    dialog.Report(L"x", true);
    dialog.BusyHide(true);
    EXPECT_TRUE(Window().IsLoaded());
    EXPECT_EQ(world.pump.Yields(), 0);
}

}  // namespace
}  // namespace vw
