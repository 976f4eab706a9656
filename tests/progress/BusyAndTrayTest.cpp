#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "platform/ProgramControl.h"
#include "platform/ProgramState.h"
#include "platform/RuntimeError.h"
#include "progress/BusyDialog.h"
#include "progress/TrayIcon.h"
#include "tests/support/TestEnvironment.h"
#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

namespace vw {
namespace {

/// The program around both windows, which fails where a test wants it to.
class Surroundings final : public ProgramControl {
  public:
    void Ready(bool) override {
        if (failing == L"ready") Throw(70);
        ++ready;
    }
    [[noreturn]] void EndAtOnce() override { throw test::ProgramEnded{0}; }
    [[nodiscard]] BusyDialog::Surroundings OfDialog() {
        return {.program = *this,
                .showIcon =
                    [this](bool on) {
                        if (on && failing == L"icon") Throw(70);
                        if (icon != nullptr) on ? icon->Load() : icon->Unload();
                    },
                .showMainWindow = [this] { main->Show(ShowHow::KeepFocus); }};
    }
    std::vector<Form*> LoadedForms() {
        if (failing == L"forms") Throw(70);
        return {main, &busy->Window(), &icon->Window()};
    }
    void frmUnload() override {
        if (failing == L"end") Throw(70);
    }

    std::wstring_view failing;
    int ready = 0;
    Form* main = nullptr;
    BusyDialog* busy = nullptr;
    TrayIcon* icon = nullptr;
};

class BusyAndTray : public testing::TestWithParam<Language> {
  protected:
    BusyAndTray() {
        host.main = &main.form;
        host.busy = &dialog;
        host.icon = &icon;
    }

    void Choose(int id) { SendMessageW(icon.Window().Handle(), WM_COMMAND, id, 0); }
    void ExpectTold(std::wstring_view procedure, std::wstring_view kind,
                    std::wstring_view container) {
        const test::ToldError told = world.errors.TakeOne();
        EXPECT_EQ(told.number, 70);
        EXPECT_EQ(told.procedure, procedure);
        EXPECT_EQ(told.kind, kind);
        EXPECT_EQ(told.container, container);
    }

    test::TestEnvironment world;
    ProgramState state;
    Surroundings host;
    test::LoadedForm main{MainForm(), GetParam()};
    BusyDialog dialog{world.system, state, GetParam(), host.OfDialog()};
    TrayIcon icon{world.system, state, GetParam(), host, [this] { return host.LoadedForms(); }};
};

INSTANTIATE_TEST_SUITE_P(Languages, BusyAndTray, testing::ValuesIn(test::kLanguages));

TEST_P(BusyAndTray, Minimised_MovesIntoTheIcon_CloseShowsTheMainWindow) {
    main.form.Show(ShowHow::KeepFocus);
    dialog.Report(L"x", false);
    ShowWindow(dialog.Window().Handle(), SW_MINIMIZE);
    EXPECT_TRUE(icon.IsReachable());
    EXPECT_FALSE(dialog.Window().IsVisible());
    EXPECT_FALSE(main.form.IsVisible());
    dialog.Window().Unload();
    EXPECT_FALSE(icon.Window().IsLoaded());
    EXPECT_TRUE(main.form.IsVisible());
    EXPECT_EQ(host.ready, 1);
}

TEST_P(BusyAndTray, ClosedDuringAnyWait_StaysClosed) {
    state.isWorking = true;
    for (const int moment : {1, 2, 20, 39, 40, 41, 60}) {
        state.cancel.Begin();
        host.ready = 0;
        world.pump.Restart();
        world.pump.AtYield(moment, [&] { dialog.Window().Unload(); });
        dialog.Msg(L"Backing:", L"a", L"", true, false, false);
        dialog.Msg(L"Backing:", L"b", L"", false, false, false);
        dialog.BusyHide(true);
        EXPECT_FALSE(dialog.Window().IsLoaded()) << moment;
        EXPECT_TRUE(state.cancel.IsRequested()) << moment;
        EXPECT_EQ(host.ready, 1) << moment;
    }
}

TEST_P(BusyAndTray, FailureDuringClosing_IsReported_DialogCloses) {
    dialog.Report(L"x", false);
    host.failing = L"ready";
    dialog.Window().Unload();
    ExpectTold(L"Form_QueryUnload", L"Form", L"frmBusyDialog");
    EXPECT_FALSE(dialog.Window().IsLoaded());
    EXPECT_TRUE(state.cancel.IsRequested());
}

TEST_P(BusyAndTray, FailureWhileMinimising_IsReported) {
    dialog.Report(L"x", false);
    host.failing = L"icon";
    ShowWindow(dialog.Window().Handle(), SW_MINIMIZE);
    ExpectTold(L"Form_Resize", L"Form", L"frmBusyDialog");
}

TEST_P(BusyAndTray, FailureOfAWait_IsReportedOnce_DialogEnds) {
    dialog.Report(L"x", false);
    world.pump.AtYield(3, [] { Throw(70); });
    dialog.BusyHide(true);
    ExpectTold(L"Wait", L"Module", L"MBusyDialog");
    EXPECT_FALSE(dialog.Window().IsLoaded());
}

TEST_P(BusyAndTray, FailuresOfTheIcon_NameTheirProcedure) {
    host.failing = L"forms";
    icon.Load();
    ExpectTold(L"Form_Load", L"Form", L"frmTrayIcon");
    EXPECT_TRUE(icon.IsReachable());
    host.failing = L"end";
    Choose(ID_mnuProp1Exit);
    ExpectTold(L"mnuProp1Exit_Click", L"Form", L"frmTrayIcon");
    state.silentRun = true;
    icon.Unload();
    ExpectTold(L"Form_QueryUnload", L"Form", L"frmTrayIcon");
    EXPECT_FALSE(icon.Window().IsLoaded());
}

}  // namespace
}  // namespace vw
