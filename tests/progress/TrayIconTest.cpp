#include "progress/TrayIcon.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/ProgramState.h"
#include "tests/support/QuietProgram.h"
#include "tests/support/TestEnvironment.h"
#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

namespace vw {
namespace {

class Tray : public testing::TestWithParam<Language> {
  protected:
    void Notify(UINT code) { SendMessageW(icon.Window().Handle(), WM_MOUSEMOVE, 0, code); }
    void Tick() { SendMessageW(icon.Window().Handle(), WM_TIMER, ID_Timer1, 0); }
    void Choose(int id) { SendMessageW(icon.Window().Handle(), WM_COMMAND, id, 0); }

    test::TestEnvironment world;
    ProgramState state;
    test::QuietProgram program;
    test::LoadedForm main{MainForm(), GetParam()};
    TrayIcon icon{world.system, state, GetParam(), program, [this] {
                      return std::vector<Form*>{&main.form, &icon.Window()};
                  }};
};

INSTANTIATE_TEST_SUITE_P(Languages, Tray, testing::ValuesIn(test::kLanguages));

TEST_P(Tray, Load_HidesEveryWindow) {
    main.form.Show(ShowHow::KeepFocus);
    icon.Load();
    EXPECT_FALSE(main.form.IsVisible());
    EXPECT_FALSE(icon.Window().IsVisible());
    EXPECT_TRUE(icon.IsReachable());
    EXPECT_TRUE(icon.Icon().LastStatus());
}

TEST_P(Tray, LoadTwice_HidesAgain_KeepsItsWindow) {
    icon.Load();
    const HWND before = icon.Window().Handle();
    main.form.Show(ShowHow::KeepFocus);
    icon.Load();
    EXPECT_FALSE(main.form.IsVisible());
    EXPECT_EQ(icon.Window().Handle(), before);
}

TEST_P(Tray, Record_HasTheFirstVersionOfItsLayout) {
    icon.Load();
    const NOTIFYICONDATAW record = icon.Icon().InitIconStruct();
    EXPECT_EQ(record.cbSize, NOTIFYICONDATAW_V1_SIZE);
    EXPECT_EQ(record.hWnd, icon.Window().Handle());
    EXPECT_EQ(record.uID, 1U);
    EXPECT_EQ(record.uFlags, 7U);
    EXPECT_EQ(record.uCallbackMessage, 512U);
    EXPECT_NE(record.hIcon, nullptr);
    EXPECT_EQ(record.hIcon, icon.Window().Icon());
    EXPECT_STREQ(record.szTip, GetParam() == Language::English
                                   ? L"Please Wait Vaultwright In Use"
                                   : L"الرجاء الانتظار بينما تتم عملية النسخ الاحنياطي");
}

TEST_P(Tray, SetTip_LongText_IsCutTo63Characters) {
    icon.Load();
    icon.Icon().SetTip(std::wstring(100, L'x'));
    const NOTIFYICONDATAW record = icon.Icon().InitIconStruct();
    EXPECT_EQ(std::wstring(record.szTip), std::wstring(63, L'x'));
    EXPECT_EQ(record.szTip[63], L'\0');
}

TEST_P(Tray, StaticIcon_IsNotAnimated) {
    icon.Load();
    icon.cbStatic_Click();
    const HICON shown = icon.Window().Icon();
    Tick();
    EXPECT_EQ(icon.Window().Icon(), shown);
    EXPECT_STREQ(icon.Icon().InitIconStruct().szTip, L"Vaultwright");
}

TEST_P(Tray, Click_RemovesTheIcon_ShowsNoWindow) {
    main.form.Show(ShowHow::KeepFocus);
    icon.Load();
    Notify(514);
    EXPECT_FALSE(icon.Window().IsLoaded());
    EXPECT_FALSE(icon.IsReachable());
    EXPECT_FALSE(main.form.IsVisible());
    EXPECT_EQ(program.ends, 0);
}

TEST_P(Tray, Click_SilentRun_HasNoEffect) {
    state.silentRun = true;
    icon.Load();
    Notify(514);
    EXPECT_TRUE(icon.Window().IsLoaded());
    EXPECT_EQ(program.ends, 0);
}

TEST_P(Tray, IgnoresOtherCodes) {
    icon.Load();
    for (const UINT code : {512U, 513U, 515U, 517U, 518U, 0U}) Notify(code);
    EXPECT_TRUE(icon.Window().IsLoaded());
}

TEST_P(Tray, Menu_SilentRun_HasNoCancel) {
    icon.Load();
    EXPECT_TRUE(icon.Window().Menus().IsShown(L"mnuProp1Cancel"));
    icon.Unload();
    state.silentRun = true;
    icon.Load();
    EXPECT_FALSE(icon.Window().Menus().IsShown(L"mnuProp1Cancel"));
    EXPECT_TRUE(icon.Window().Menus().IsShown(L"mnuProp1Maximize"));
    EXPECT_TRUE(icon.Window().Menus().IsShown(L"mnuProp1Exit"));
}

TEST_P(Tray, Cancel_RequestsACancel) {
    icon.Load();
    Choose(ID_mnuProp1Cancel);
    EXPECT_TRUE(state.cancel.IsRequested());
    EXPECT_TRUE(icon.Window().IsLoaded());
}

TEST_P(Tray, Exit_EndsTheProgram) {
    icon.Load();
    Choose(ID_mnuProp1Exit);
    EXPECT_EQ(program.ends, 1);
}

TEST_P(Tray, Maximize_RemovesTheIcon) {
    icon.Load();
    Choose(ID_mnuProp1Maximize);
    EXPECT_FALSE(icon.Window().IsLoaded());
}

TEST_P(Tray, Unload_SilentRun_EndsTheProgram) {
    state.silentRun = true;
    icon.Load();
    icon.cbEnd_Click();
    EXPECT_EQ(program.ends, 1);
    EXPECT_FALSE(icon.Window().IsLoaded());
}

TEST_P(Tray, Unload_InteractiveRun_KeepsTheProgramRunning) {
    icon.Load();
    icon.mnuPropAction_Click();
    EXPECT_EQ(program.ends, 0);
    EXPECT_FALSE(icon.Window().IsLoaded());
    EXPECT_TRUE(icon.Icon().LastStatus());
}

TEST_P(Tray, SessionEnds_RequestsCancelAndEnd) {
    icon.Load();
    icon.Unload();
    EXPECT_FALSE(state.endRequested || state.cancel.IsRequested());
    icon.Load();
    SendMessageW(icon.Window().Handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_TRUE(state.endRequested);
    EXPECT_TRUE(state.cancel.IsRequested());
}

TEST_P(Tray, NewTaskBar_AddsTheIconAgain) {
    icon.Load();
    NOTIFYICONDATAW record = icon.Icon().InitIconStruct();
    Shell_NotifyIconW(NIM_DELETE, &record);
    Tick();
    EXPECT_FALSE(icon.Icon().LastStatus());
    SendMessageW(icon.Window().Handle(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    EXPECT_TRUE(icon.IsReachable());
    Tick();
    EXPECT_TRUE(icon.Icon().LastStatus());
}

}  // namespace
}  // namespace vw
