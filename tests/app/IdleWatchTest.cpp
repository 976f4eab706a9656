// Windows that a shell without an icon would leave hidden for good.

#include "app/IdleWatch.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/ProgramState.h"
#include "progress/BusyDialog.h"
#include "progress/TrayIcon.h"
#include "tests/support/QuietProgram.h"
#include "tests/support/TestEnvironment.h"
#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

bool shellTakesIcons = false;

BOOL WINAPI AnswerOfShell(DWORD, NOTIFYICONDATAW*) { return shellTakesIcons ? TRUE : FALSE; }

class IdleWatchTest : public testing::Test {
  protected:
    IdleWatchTest() {
        shellTakesIcons = false;
        icon.Load();
        main.form.Hide();
    }
    void LookForASecond() {
        watch.Check();
        world.clock.Advance(1000);
        watch.Check();
    }

    TestEnvironment world;
    ProgramState state;
    QuietProgram program;
    LoadedForm main{MainForm(), Language::English};
    BusyDialog dialog{world.system, state, Language::English,
                      BusyDialog::Surroundings{
                          .program = program, .showIcon = [](bool) {}, .showMainWindow = [] {}}};
    TrayIcon icon{
        world.system,  state, Language::English, program, [] { return std::vector<Form*>{}; },
        &AnswerOfShell};
    IdleWatch watch{world.clock, state, main.form, dialog, icon};
};

TEST_F(IdleWatchTest, IconWasRefused_HiddenWindowIsShown) {
    ASSERT_TRUE(icon.Window().IsLoaded());
    LookForASecond();
    EXPECT_TRUE(main.form.IsVisible());
}

TEST_F(IdleWatchTest, IconIsThere_HiddenWindowStaysBehindIt) {
    shellTakesIcons = true;
    SendMessageW(icon.Window().Handle(), WM_TIMER, ID_Timer1, 0);
    ASSERT_TRUE(icon.IsReachable());
    LookForASecond();
    EXPECT_FALSE(main.form.IsVisible());
}

TEST_F(IdleWatchTest, DisabledWindow_GetsItsPointerBack) {
    main.form.Show();
    main.form.EnableForm(false);
    main.form.SetMousePointer(MousePointer::Hourglass);
    LookForASecond();
    SendMessageW(main.form.Handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(main.form.Handle()),
                 MAKELPARAM(HTERROR, WM_MOUSEMOVE));
    EXPECT_NE(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
}

TEST_F(IdleWatchTest, MainWindowIsNotLoaded_IsNotLoaded) {
    main.form.Unload();
    LookForASecond();
    EXPECT_FALSE(main.form.IsLoaded());
}

TEST_F(IdleWatchTest, SilentRun_HiddenWindowStaysHidden) {
    state.silentRun = true;
    LookForASecond();
    EXPECT_FALSE(main.form.IsVisible());
}

TEST_F(IdleWatchTest, BusyDialogIsVisible_MainWindowStaysHidden) {
    dialog.Window().Load();
    dialog.Window().Show(ShowHow::Normal);
    LookForASecond();
    EXPECT_FALSE(main.form.IsVisible());
}

TEST_F(IdleWatchTest, HiddenForAMomentTwice_StaysHidden) {
    watch.Check();
    world.clock.Advance(600);
    main.form.Show();
    watch.Check();
    main.form.Hide();
    watch.Check();
    world.clock.Advance(600);
    watch.Check();
    EXPECT_FALSE(main.form.IsVisible());
}

TEST_F(IdleWatchTest, HiddenOnceMore_WaitsASecondAgain) {
    LookForASecond();
    main.form.Hide();
    watch.Check();
    EXPECT_FALSE(main.form.IsVisible());
    world.clock.Advance(1000);
    watch.Check();
    EXPECT_TRUE(main.form.IsVisible());
}

}  // namespace
}  // namespace vw::test
