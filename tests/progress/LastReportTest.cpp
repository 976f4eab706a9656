// The report of a run: whole while it lasts, and shown again behind it.

#include <gmock/gmock.h>

#include "tests/progress/BusyDialogFixture.h"

namespace vw {
namespace {

class LastReport : public test::BusyDialogWindow {};

INSTANTIATE_TEST_SUITE_P(Languages, LastReport, testing::ValuesIn(test::kLanguages));

TEST_P(LastReport, ShowLastReport_ShowsItWithAFullBar) {
    dialog.Report(L"a line", false);
    Window().Unload();
    dialog.ShowLastReport();
    EXPECT_TRUE(Window().IsVisible());
    EXPECT_TRUE(Window().IsShown(L"txtReport"));
    EXPECT_EQ(Window().Text(L"lblTitle"), L"Done");
    EXPECT_EQ(Report(), L"a line\r\n");
    EXPECT_EQ(Window().Progress(L"ProgressBar1"), kProgressMaximum);
    EXPECT_EQ(EnterButton(), ID_cmdCancel);
}

TEST_P(LastReport, ShowLastReport_NoReportOrSilentRun_ShowsNothing) {
    dialog.ShowLastReport();
    EXPECT_FALSE(Window().IsLoaded());
    dialog.Report(L"a line", false);
    Window().Unload();
    state.silentRun = true;
    dialog.ShowLastReport();
    EXPECT_FALSE(Window().IsLoaded());
    state.silentRun = false;
}

TEST_P(LastReport, NextRun_ShowsNoMessageOfTheOneBefore) {
    dialog.Msg(L"Backing:", L"C:\\a.txt", L"", false, false, false);
    Window().Unload();
    dialog.Report(L"a line", false);
    EXPECT_EQ(Window().Text(L"lblMsg"), L"");
}

TEST_P(LastReport, ShownAgain_NextLineBeginsANewReport) {
    dialog.Report(L"before", false);
    Window().Unload();
    dialog.ShowLastReport();
    dialog.Report(L"a line", false);
    dialog.Repaint();
    EXPECT_EQ(Report(), L"a line\r\n");
    EXPECT_EQ(EnterButton(), 0) << "Enter cancels no work";
    EXPECT_EQ(Window().Progress(L"ProgressBar1"), 0);
}

TEST_P(LastReport, ClosedDuringARun_LastReportHasTheLinesBehindIt) {
    state.isWorking = true;
    dialog.Report(L"before", false);
    Window().Unload();
    dialog.Report(L"behind", false);
    state.isWorking = false;
    dialog.ShowLastReport();
    EXPECT_EQ(Report(), L"before\r\nbehind\r\n");
}

TEST_P(LastReport, ClosedDuringARun_NextRunsReportBehindIt_IsWhole) {
    state.isWorking = true;
    dialog.Report(L"before", false);
    Window().Unload();
    dialog.Report(L"behind", false);
    dialog.Repaint();
    state.isWorking = false;
    state.cancel.Begin();
    dialog.Report(L"the next run", false);
    EXPECT_EQ(Report(), L"the next run\r\n");
}

TEST_P(LastReport, ClosedDuringARun_LinesOfTheNext_AreInTheirOwnReport) {
    state.isWorking = true;
    dialog.Report(L"before", false);
    Window().Unload();
    dialog.Report(L"behind", false);
    state.cancel.Begin();
    dialog.Report(L"the next run", false);
    Window().Unload();
    dialog.ShowLastReport();
    EXPECT_EQ(Report(), L"the next run\r\n");
}

TEST_P(LastReport, KeepOpenTicked_AppliesToOneRunOnly) {
    dialog.Report(L"x", false);
    Window().Check(L"chkDontHide", true);
    Window().Unload();
    dialog.Report(L"y", false);
    EXPECT_FALSE(Window().IsChecked(L"chkDontHide"));
    EXPECT_EQ(dialog.ReportText(), L"y\r\n") << "a new report";
}

TEST_P(LastReport, ClosedDuringARun_StaysClosedUntilTheNextRun) {
    state.isWorking = true;
    dialog.Report(L"x", false);
    Press();
    dialog.Msg(L"Backing:", L"y", L"", false, false, false);
    EXPECT_FALSE(Window().IsLoaded());
    EXPECT_TRUE(dialog.ReportText().ends_with(L"Backing:: y - \r\n"));
    // The next run clears the cancel.
    state.cancel.Begin();
    dialog.Msg(L"Backing:", L"z", L"", false, false, false);
    EXPECT_TRUE(Window().IsVisible());
    EXPECT_EQ(dialog.ReportText(), L"Backing:: z - \r\n") << "a report of its own";
}

TEST_P(LastReport, WorkAfterARun_ShowsItDespiteTheOldCancel) {
    state.isWorking = true;
    dialog.Report(L"x", false);
    dialog.BusyHide(false);
    state.isWorking = false;
    EXPECT_TRUE(state.cancel.IsRequested());
    dialog.Msg(L"Restoring: ", L"y", L"", false, false, false);
    EXPECT_TRUE(Window().IsVisible());
    world.pump.Restart();
    dialog.Wait(2);
    EXPECT_GE(world.pump.Yields(), 40) << "an old cancel does not shorten the wait";
}

TEST_P(LastReport, Report_TenThousandLines_IsKeptWhole) {
    std::size_t units = 0;
    for (int i = 0; i < 10000; ++i) {
        const std::wstring line = L"Backing: " + std::to_wstring(i);
        units += line.size() + 2;
        dialog.Report(line, false);
        if (i % 100 == 0) world.clock.Advance(60);
    }
    dialog.Msg(L"End of it", L"", L"", false, false, true);
    EXPECT_GT(Report().size(), units);
    EXPECT_EQ(Report(), dialog.ReportText());
}

}  // namespace
}  // namespace vw
