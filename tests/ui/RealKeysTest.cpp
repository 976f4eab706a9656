// Every entry of the menus by real keys, as the system's keyboard brings them.

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "platform/WindowMessagePump.h"
#include "tests/ui/FormFixture.h"

namespace vw::test {
namespace {

class RealKeys : public testing::TestWithParam<Language> {
  protected:
    RealKeys() {
        pump.SetFilter(Form::TranslateKeys);
        for (const int index : {1, 2, 3}) {
            main.form.Menus().SetText(L"mnuRecentFile", L"list " + std::to_wstring(index), index);
            main.form.Menus().Show(L"mnuRecentFile", true, index);
        }
        main.form.Show();
        SetForegroundWindow(main.Handle());
        SetFocus(main.Control(L"lsvBackupList"));
        pump.ProcessMessages();
    }

    /// Presses keys one after another on the keyboard and processes what comes of them.
    void Type(const std::vector<WORD>& keys) {
        std::vector<INPUT> strokes;
        for (const WORD key : keys) {
            INPUT stroke{};
            stroke.type = INPUT_KEYBOARD;
            stroke.ki.wVk = key;
            strokes.push_back(stroke);
            stroke.ki.dwFlags = KEYEVENTF_KEYUP;
            strokes.push_back(stroke);
        }
        ASSERT_EQ(SendInput(static_cast<UINT>(strokes.size()), strokes.data(), sizeof(INPUT)),
                  strokes.size());
        pump.ProcessMessages();
    }

    void TypeWithControl(WORD key) {
        INPUT control{};
        control.type = INPUT_KEYBOARD;
        control.ki.wVk = VK_CONTROL;
        SendInput(1, &control, sizeof control);
        Type({key});
        control.ki.dwFlags = KEYEVENTF_KEYUP;
        SendInput(1, &control, sizeof control);
        pump.ProcessMessages();
    }

    /// What an entry of the menu bar runs by F10 and the arrow keys: its name and index.
    std::wstring Run(int menu, int entry) {
        std::vector<WORD> keys{VK_F10};
        keys.insert(keys.end(), static_cast<std::size_t>(menu), next);
        keys.push_back(VK_DOWN);
        keys.insert(keys.end(), static_cast<std::size_t>(entry), VK_DOWN);
        keys.push_back(VK_RETURN);
        main.events.events.clear();
        Type(keys);
        return Clicked();
    }
    [[nodiscard]] std::wstring Clicked() const {
        for (const ControlEvent& event : main.events.events) {
            if (event.kind == EventKind::Click) {
                return std::wstring(event.control) + L' ' + std::to_wstring(event.index);
            }
        }
        return {};
    }

    WindowMessagePump pump;
    LoadedForm main{MainForm(), GetParam()};
    WORD next = VK_RIGHT;
};

TEST_P(RealKeys, MenuKeys_ReachEveryEntry) {
    if (GetForegroundWindow() != main.Handle()) GTEST_SKIP() << "another program is in front";
    // The next menu of an Arabic window is the one to the left, where the system mirrors its keys.
    const std::wstring second = L"mnuBackup -1";
    if (GetParam() == Language::Arabic) {
        next = VK_LEFT;
        if (Run(1, 0) != second) next = VK_RIGHT;
    }
    EXPECT_EQ(Run(1, 0), second);
    int menu = -1;
    int entry = 0;
    for (const MenuItemData& data : MainForm().menu) {
        if (data.level == 0) {
            ++menu;
            entry = 0;
            continue;
        }
        if (data.separator) continue;
        EXPECT_EQ(Run(menu, entry),
                  std::wstring(data.NameIn(GetParam())) + L' ' + std::to_wstring(data.index));
        ++entry;
    }
    EXPECT_EQ(menu, 6);
}

TEST_P(RealKeys, Escape_LeavesTheMenus) {
    if (GetForegroundWindow() != main.Handle()) GTEST_SKIP() << "another program is in front";
    Type({VK_F10, VK_DOWN, VK_DOWN, VK_ESCAPE, VK_ESCAPE});
    EXPECT_EQ(Clicked(), L"");
    EXPECT_EQ(GetFocus(), main.Control(L"lsvBackupList"));
    // The keyboard belongs to the window again.
    Type({VK_F5});
    EXPECT_EQ(Clicked(), L"mnuBackup -1");
}

TEST_P(RealKeys, Tab_VisitsEveryControlInACycle) {
    if (GetForegroundWindow() != main.Handle()) GTEST_SKIP() << "another program is in front";
    const std::array order{L"lsvBackupList",  L"lsvRestore1", L"lsvRestore2",  L"Toolbar1",
                           L"cmbDestination", L"vsBackages",  L"lsvBackupList"};
    for (std::size_t i = 1; i < order.size(); ++i) {
        Type({VK_TAB});
        EXPECT_EQ(GetFocus(), main.Control(order[i])) << Narrow(order[i]);
    }
}

TEST_P(RealKeys, ArrowKeys_ChangeTheNumberOfCopies) {
    if (GetForegroundWindow() != main.Handle()) GTEST_SKIP() << "another program is in front";
    main.form.SetValue(L"vsBackages", 5);
    SetFocus(main.Control(L"vsBackages"));
    Type({VK_UP, VK_UP});
    EXPECT_EQ(main.form.Value(L"vsBackages"), 7);
    Type({VK_DOWN});
    EXPECT_EQ(main.form.Value(L"vsBackages"), 6);
}

TEST_P(RealKeys, ControlAndNumber_IsAClickOnThatColumn) {
    if (GetForegroundWindow() != main.Handle()) GTEST_SKIP() << "another program is in front";
    for (const auto* name : {L"lsvBackupList", L"lsvRestore1", L"lsvRestore2"}) {
        SetFocus(main.Control(name));
        const int count = static_cast<int>(main.form.List(name).Rows().KeyOf(6).empty() ? 4 : 7);
        for (int column = 0; column < count; ++column) {
            main.events.events.clear();
            TypeWithControl(static_cast<WORD>(L'1' + column));
            ASSERT_FALSE(main.events.events.empty());
            EXPECT_EQ(main.events.events.front().control, name);
            EXPECT_EQ(main.events.events.front().kind, EventKind::ColumnClick);
            EXPECT_EQ(main.events.events.front().value, column);
        }
        main.events.events.clear();
        Type({L'1'});
        for (const ControlEvent& event : main.events.events) {
            EXPECT_NE(event.kind, EventKind::ColumnClick);
        }
    }
}

TEST_P(RealKeys, ControlR_IsAClickOnTheStatusLine) {
    if (GetForegroundWindow() != main.Handle()) GTEST_SKIP() << "another program is in front";
    TypeWithControl(L'R');
    EXPECT_EQ(Clicked(), L"sbrStatus -1");
}

TEST_P(RealKeys, BusyDialog_TabVisitsControls_EscPressesCancel) {
    LoadedForm busy(BusyForm(), GetParam());
    busy.form.Show();
    busy.form.ShowControl(L"txtReport", true);
    SetForegroundWindow(busy.Handle());
    pump.ProcessMessages();
    if (GetForegroundWindow() != busy.Handle()) GTEST_SKIP() << "another program is in front";
    EXPECT_EQ(GetFocus(), busy.Control(L"cmdCancel"));
    for (const auto* control : {L"txtReport", L"chkDontHide", L"cmdCancel"}) {
        Type({VK_TAB});
        EXPECT_EQ(GetFocus(), busy.Control(control)) << Narrow(control);
    }
    SetFocus(busy.Control(L"chkDontHide"));
    Type({VK_SPACE});
    EXPECT_TRUE(busy.form.IsChecked(L"chkDontHide"));
    busy.events.events.clear();
    Type({VK_ESCAPE});
    EXPECT_EQ(busy.events.Last().control, L"cmdCancel");
}

TEST_P(RealKeys, AboutBox_IsClosedByEnterAndEscape) {
    for (const WORD key : {WORD{VK_RETURN}, WORD{VK_ESCAPE}}) {
        LoadedForm about(AboutForm(), GetParam());
        about.form.ShowControl(L"cmdClose", true);
        about.form.Show();
        SetForegroundWindow(about.Handle());
        pump.ProcessMessages();
        if (GetForegroundWindow() != about.Handle()) GTEST_SKIP() << "another program is in front";
        Type({key});
        EXPECT_TRUE(!about.form.IsLoaded() || about.events.Last().control == L"cmdClose") << key;
    }
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, RealKeys, testing::ValuesIn(kLanguages));

}  // namespace
}  // namespace vw::test
