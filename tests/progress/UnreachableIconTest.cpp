// A shell that is busy, as at log-on, and takes no icon at first.

#include <gtest/gtest.h>

#include <vector>

#include "platform/ProgramState.h"
#include "progress/TrayIcon.h"
#include "tests/support/QuietProgram.h"
#include "tests/support/TestEnvironment.h"
#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

/// What the shell is asked for, and what it answers.
struct Shell {
    bool takesIcons = false;
    bool knowsIcon = false;  ///< it has the icon, also when its answer came too late
    std::vector<DWORD> requests;
};

Shell* shell = nullptr;

BOOL WINAPI AnswerOfShell(DWORD request, NOTIFYICONDATAW*) {
    shell->requests.push_back(request);
    if (request == NIM_ADD && shell->takesIcons) {
        shell->knowsIcon = true;
        return TRUE;
    }
    return request != NIM_ADD && shell->knowsIcon ? TRUE : FALSE;
}

class UnreachableIcon : public testing::Test {
  protected:
    UnreachableIcon() {
        shell = &answers;
        main.form.Show(ShowHow::KeepFocus);
    }
    void Tick() { SendMessageW(icon.Window().Handle(), WM_TIMER, ID_Timer1, 0); }

    Shell answers;
    TestEnvironment world;
    ProgramState state;
    QuietProgram program;
    LoadedForm main{MainForm(), Language::English};
    TrayIcon icon{world.system,
                  state,
                  Language::English,
                  program,
                  [this] {
                      return std::vector<Form*>{&main.form, &icon.Window()};
                  },
                  &AnswerOfShell};
};

TEST_F(UnreachableIcon, Load_ShellRefuses_HidesNothing) {
    icon.Load();
    EXPECT_FALSE(icon.IsReachable());
    EXPECT_TRUE(main.form.IsVisible());
    icon.Load();
    EXPECT_TRUE(main.form.IsVisible());
}

TEST_F(UnreachableIcon, Timer_ShellTakesIt_AddsAndHides) {
    icon.Load();
    Tick();
    EXPECT_FALSE(icon.IsReachable());
    EXPECT_TRUE(main.form.IsVisible());
    answers.takesIcons = true;
    answers.requests.clear();
    Tick();
    EXPECT_EQ(answers.requests, (std::vector<DWORD>{NIM_ADD, NIM_MODIFY}));
    EXPECT_TRUE(icon.IsReachable());
    EXPECT_FALSE(main.form.IsVisible());
    answers.requests.clear();
    Tick();
    EXPECT_EQ(answers.requests, std::vector<DWORD>{NIM_MODIFY}) << "added once";
}

TEST_F(UnreachableIcon, Timer_AnswerWasLate_CountsAsAdded) {
    icon.Load();
    answers.knowsIcon = true;
    Tick();
    EXPECT_TRUE(icon.IsReachable());
}

TEST_F(UnreachableIcon, NewTaskBar_ShellRefuses_IsNotReachable) {
    answers.takesIcons = true;
    icon.Load();
    answers.takesIcons = false;
    answers.knowsIcon = false;
    SendMessageW(icon.Window().Handle(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    EXPECT_FALSE(icon.IsReachable());
}

TEST_F(UnreachableIcon, Unload_NeverConfirmed_IsDeleted) {
    icon.Load();
    answers.requests.clear();
    icon.Unload();
    EXPECT_EQ(answers.requests, std::vector<DWORD>{NIM_DELETE});
}

}  // namespace
}  // namespace vw::test
