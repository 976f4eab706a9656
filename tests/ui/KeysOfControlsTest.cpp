// Controls that would keep the keyboard for themselves: the report and the toolbar.

#include <gmock/gmock.h>

#include "tests/ui/FormFixture.h"
#include "ui/resource.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>

namespace vw::test {
namespace {

using testing::ElementsAre;

class KeysOf : public testing::TestWithParam<Language>, protected PostedKeys {};

class KeysOfReport : public KeysOf {
  protected:
    KeysOfReport() {
        busy.form.Show();
        busy.form.ShowControl(L"txtReport", true);
        pump.ProcessMessages();
        SetFocus(report);
    }

    LoadedForm busy{BusyForm(), GetParam()};
    const HWND report = busy.Control(L"txtReport");
};

TEST_P(KeysOfReport, Tab_LeavesIt) {
    Press(report, VK_TAB);
    EXPECT_EQ(GetFocus(), busy.Control(L"chkDontHide"));
    Press(GetFocus(), VK_TAB);
    EXPECT_EQ(GetFocus(), busy.Control(L"cmdCancel"));
    Press(GetFocus(), VK_TAB);
    EXPECT_EQ(GetFocus(), report);
}

TEST_P(KeysOfReport, Escape_IsAClickOnClose) {
    Press(report, VK_ESCAPE);
    EXPECT_TRUE(IsWindow(report));
    ASSERT_EQ(busy.events.events.size(), 1U);
    EXPECT_EQ(busy.events.Last().control, L"cmdCancel");
    EXPECT_EQ(busy.events.Last().kind, EventKind::Click);
}

// An edit control of a dialog asks its parent to close, or to give the keyboard on.
TEST_P(KeysOfReport, RequestsToItsParent_ReachTheForm) {
    SendMessageW(GetParent(report), WM_NEXTDLGCTL,
                 reinterpret_cast<WPARAM>(busy.Control(L"cmdCancel")), TRUE);
    EXPECT_EQ(GetFocus(), busy.Control(L"cmdCancel"));
    busy.events.letsGo = false;
    SendMessageW(GetParent(report), WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindow(report));
    EXPECT_THAT(busy.events.unloadReasons, ElementsAre(UnloadReason::User));
}

TEST_P(KeysOfReport, Enter_OnlyWithADefaultButton_IsAClick) {
    for (const HWND control : {report, busy.Control(L"cmdCancel")}) {
        SetFocus(control);
        busy.form.SetDefaultButton({});
        busy.events.events.clear();
        Press(control, VK_RETURN);
        EXPECT_TRUE(busy.events.events.empty());
        busy.form.SetDefaultButton(L"cmdCancel");
        Press(control, VK_RETURN);
        ASSERT_EQ(busy.events.events.size(), 1U);
        EXPECT_EQ(busy.events.Last().control, L"cmdCancel");
    }
}

class KeysOfToolbar : public KeysOf {
  protected:
    KeysOfToolbar() {
        main.form.Show();
        pump.ProcessMessages();
        SetFocus(bar);
    }
    /// The key of the button that Enter or the space bar presses.
    std::wstring Pressed(WPARAM key) {
        main.events.events.clear();
        Press(bar, key);
        return main.events.events.empty() ? std::wstring() : std::wstring(main.events.Last().key);
    }

    LoadedForm main{MainForm(), GetParam()};
    const HWND bar = main.Control(L"Toolbar1");
    /// The arrow key of the direction of reading, and the other one.
    const WPARAM next = GetParam() == Language::Arabic ? VK_LEFT : VK_RIGHT;
    const WPARAM previous = GetParam() == Language::Arabic ? VK_RIGHT : VK_LEFT;
};

TEST_P(KeysOfToolbar, ArrowKeys_ReachEveryButton) {
    std::vector<std::wstring> reached{Pressed(VK_SPACE)};
    std::vector<std::wstring> wanted;
    for (const ControlData& control : MainForm().controls) {
        for (const ToolButtonData& button : control.buttons) wanted.emplace_back(button.key);
    }
    while (reached.size() < wanted.size()) {
        Press(bar, next);
        reached.push_back(Pressed(reached.size() % 2 == 0 ? VK_SPACE : VK_RETURN));
    }
    EXPECT_EQ(reached, wanted);
    Press(bar, next);
    EXPECT_EQ(Pressed(VK_RETURN), wanted.back()) << "the last one stays marked";
    Press(bar, VK_HOME);
    EXPECT_EQ(Pressed(VK_RETURN), wanted.front());
    Press(bar, VK_END);
    Press(bar, previous);
    EXPECT_EQ(Pressed(VK_RETURN), wanted[wanted.size() - 2]);
}

TEST_P(KeysOfToolbar, DisabledButton_IsSkipped) {
    const std::wstring first = Pressed(VK_RETURN);
    main.form.Tools(L"Toolbar1").Enable(first, false);
    Press(bar, VK_HOME);
    EXPECT_NE(Pressed(VK_RETURN), first);
    EXPECT_NE(Pressed(VK_RETURN), L"");
}

TEST_P(KeysOfToolbar, Tab_LeavesItWithoutAMark) {
    EXPECT_GE(SendMessageW(bar, TB_GETHOTITEM, 0, 0), 0);
    Press(bar, VK_TAB);
    EXPECT_EQ(GetFocus(), main.Control(L"cmbDestination"));
    EXPECT_EQ(SendMessageW(bar, TB_GETHOTITEM, 0, 0), -1);
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, KeysOfReport, testing::ValuesIn(kLanguages));
INSTANTIATE_TEST_SUITE_P(InBothLanguages, KeysOfToolbar, testing::ValuesIn(kLanguages));

}  // namespace
}  // namespace vw::test
