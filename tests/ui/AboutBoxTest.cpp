#include "ui/AboutBox.h"

#include <gtest/gtest.h>

#include "platform/WindowMessagePump.h"
#include "tests/support/TestEnvironment.h"
#include "tests/ui/FormFixture.h"
#include "ui/ProgramVersion.h"
#include "ui/resource.h"

namespace vw {
namespace {

using test::LoadedForm;
using test::TestEnvironment;

void Click(Form& form, std::wstring_view label) {
    const HWND control = form.Control(label);
    SendMessageW(form.Handle(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), STN_CLICKED),
                 reinterpret_cast<LPARAM>(control));
}

class About : public testing::Test {
  protected:
    TestEnvironment world;
    WindowMessagePump pump;
    System system{world.files,      pump,        world.boxes, world.errors, world.exitStatus,
                  world.programEnd, world.clock, world.ansi};
};

TEST_F(About, ShowsVersionPartsOneTwoAndLast) {
    EXPECT_EQ(OwnVersion(), (ProgramVersion{1, 2, 0, 133}));
    AboutBox about(system, Language::English);
    about.ShowOpeningScreen();
    EXPECT_EQ(about.Window().Text(L"lblVer"), L"1.2");
    EXPECT_EQ(about.Window().Text(L"lblRevision"), L"133");
    EXPECT_FALSE(about.Window().IsShown(L"cmdClose"));
}

TEST_F(About, OpeningScreen_Click_IsClosedByItsCloseBoxOnly) {
    SetActiveWindow(nullptr);
    AboutBox about(system, Language::Arabic);
    about.ShowOpeningScreen();
    for (const auto* label : {L"Label1", L"lblTitle", L"lblRevision", L"lblVer", L"lblD"}) {
        Click(about.Window(), label);
        EXPECT_TRUE(about.Window().IsLoaded()) << test::Narrow(label);
    }
    SendMessageW(about.Window().Handle(), WM_LBUTTONUP, 0, 0);
    EXPECT_TRUE(about.Window().IsLoaded());
    SendMessageW(about.Window().Handle(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(about.Window().IsLoaded());
    about.Unload();
}

TEST_F(About, OpenedFromAnotherWindow_Click_Closes) {
    LoadedForm main(MainForm(), Language::English);
    main.form.Show();
    for (const auto* label : {L"", L"Label1", L"lblTitle", L"lblRevision"}) {
        SetActiveWindow(main.Handle());
        ASSERT_EQ(GetActiveWindow(), main.Handle());
        AboutBox about(system, Language::English);
        about.ShowOpeningScreen();
        Click(about.Window(), L"lblVer");
        Click(about.Window(), L"lblD");
        EXPECT_TRUE(about.Window().IsLoaded());
        if (*label == L'\0') {
            SendMessageW(about.Window().Handle(), WM_LBUTTONUP, 0, 0);
        } else {
            Click(about.Window(), label);
        }
        EXPECT_FALSE(about.Window().IsLoaded()) << test::Narrow(label);
    }
}

TEST_F(About, AsAbout_ButtonIsPressed_Returns) {
    LoadedForm main(MainForm(), Language::English);
    main.form.Show();
    AboutBox about(system, Language::English);
    about.Window().Load(main.Handle());
    bool shown = false;
    PostMessageW(about.Window().Handle(), WM_COMMAND, MAKEWPARAM(ID_cmdClose, BN_CLICKED),
                 reinterpret_cast<LPARAM>(about.Window().Control(L"cmdClose")));
    pump.SetFilter([&](const MSG&) {
        shown = shown || (about.Window().IsLoaded() && about.Window().IsShown(L"cmdClose"));
        return false;
    });
    about.AsAbout(main.form);
    EXPECT_TRUE(shown);
    EXPECT_FALSE(about.Window().IsLoaded());
    EXPECT_TRUE(main.form.IsFormEnabled());
    EXPECT_EQ(GetWindow(main.Handle(), GW_OWNER), nullptr);
}

TEST_F(About, AsAbout_SessionEnds_Returns) {
    LoadedForm main(MainForm(), Language::English);
    main.form.Show();
    AboutBox about(system, Language::English);
    PostMessageW(main.Handle(), WM_ENDSESSION, TRUE, 0);
    about.AsAbout(main.form);
    EXPECT_FALSE(about.Window().IsLoaded()) << "a window goes with its owner";
    EXPECT_FALSE(main.form.IsLoaded());
}

}  // namespace
}  // namespace vw
