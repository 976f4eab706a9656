#include <gtest/gtest.h>

#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

namespace vw {
namespace {

using test::LoadedForm;

class FormKeys : public testing::Test, protected test::PostedKeys {
  protected:
    void PressWithControl(HWND window, WPARAM key) {
        BYTE before[256];
        BYTE keys[256];
        GetKeyboardState(before);
        std::copy(std::begin(before), std::end(before), keys);
        keys[VK_CONTROL] = 0x80;
        MSG message{};
        message.hwnd = window;
        message.message = WM_KEYDOWN;
        message.wParam = key;
        SetKeyboardState(keys);
        Form::TranslateKeys(message);
        SetKeyboardState(before);
    }
};

// The focus stays in a control of a window that is disabled while a command runs.
TEST_F(FormKeys, DisabledForm_ListIgnoresArrowKeys) {
    LoadedForm main(MainForm(), Language::English);
    ListView& list = main.form.List(L"lsvBackupList");
    for (const wchar_t* const name : {L"a", L"b", L"c"}) list.Add(name, RowIcon::File);
    list.Select(0);
    main.form.Show(ShowHow::KeepFocus);
    Press(list.Handle(), VK_DOWN);
    EXPECT_EQ(list.Selected(), 1);
    main.form.EnableForm(false);
    Press(list.Handle(), VK_DOWN);
    EXPECT_EQ(list.Selected(), 1);
}

TEST_F(FormKeys, Accelerators_RaiseClickOfTheirMenuEntry) {
    LoadedForm main(MainForm(), Language::English);
    const struct {
        WPARAM key;
        bool control;
        const wchar_t* name;
    } keys[]{{'N', true, L"mnuFileNew"},
             {'O', true, L"mnuFileOpen"},
             {'S', true, L"mnuFileSave"},
             {VK_F1, false, L"mnuHelpHelp"},
             {VK_F5, false, L"mnuBackup"}};
    main.form.Show(ShowHow::KeepFocus);
    const HWND list = main.Control(L"lsvBackupList");
    for (const auto& key : keys) {
        if (key.control) {
            PressWithControl(list, key.key);
        } else {
            Press(list, key.key);
        }
        EXPECT_EQ(main.events.Last().kind, EventKind::Click);
        EXPECT_EQ(main.events.Last().control, key.name);
        main.events.events.clear();
    }
    Press(list, 'N');
    for (const ControlEvent& event : main.events.events) EXPECT_NE(event.kind, EventKind::Click);
}

TEST_F(FormKeys, DisabledForm_AcceleratorRaisesNoEvent) {
    LoadedForm main(MainForm(), Language::English);
    main.form.Show(ShowHow::KeepFocus);
    main.form.EnableForm(false);
    Press(main.Handle(), VK_F5);
    EXPECT_TRUE(main.events.events.empty());
}

TEST_F(FormKeys, DisabledEntry_AcceleratorRaisesNoClick) {
    LoadedForm main(MainForm(), Language::English);
    main.form.Show(ShowHow::KeepFocus);
    main.form.Menus().Enable(L"mnuBackup", false);
    Press(main.Control(L"lsvBackupList"), VK_F5);
    for (const ControlEvent& event : main.events.events) EXPECT_EQ(event.kind, EventKind::KeyUp);
}

TEST_F(FormKeys, Delete_RaisesKeyUpOfTheList) {
    LoadedForm main(MainForm(), Language::English);
    main.form.Show(ShowHow::KeepFocus);
    Press(main.Control(L"lsvRestore2"), VK_DELETE);
    ASSERT_EQ(main.events.events.size(), 1U);
    EXPECT_EQ(main.events.Last().control, L"lsvRestore2");
    EXPECT_EQ(main.events.Last().kind, EventKind::KeyUp);
    EXPECT_EQ(main.events.Last().value, VK_DELETE);
}

TEST_F(FormKeys, Enter_ActivatesTheRowOfAList) {
    LoadedForm main(MainForm(), Language::English);
    main.form.Show(ShowHow::KeepFocus);
    ListView& list = main.form.List(L"lsvBackupList");
    list.Add(L"a", RowIcon::File);
    list.Select(0);
    Press(list.Handle(), VK_RETURN);
    bool opened = false;
    for (const ControlEvent& event : main.events.events) {
        if (event.kind == EventKind::ItemActivate) opened = event.control == L"lsvBackupList";
    }
    EXPECT_TRUE(opened);
}

TEST_F(FormKeys, Tab_VisitsTheControlsInTheirOrder) {
    LoadedForm main(MainForm(), Language::English);
    main.form.Show();
    std::vector<int> visited;
    HWND control = nullptr;
    for (int i = 0; i < 6; ++i) {
        control = GetNextDlgTabItem(main.Handle(), control, FALSE);
        visited.push_back(GetDlgCtrlID(control));
    }
    EXPECT_EQ(visited, (std::vector<int>{ID_Toolbar1, ID_cmbDestination, ID_vsBackages,
                                         ID_lsvBackupList, ID_lsvRestore1, ID_lsvRestore2}));
}

TEST_F(FormKeys, WindowOpens_ListHasTheFocus) {
    LoadedForm main(MainForm(), Language::Arabic);
    main.form.Show();
    pump.ProcessMessages();
    if (GetActiveWindow() != main.Handle()) GTEST_SKIP() << "another program is in front";
    EXPECT_EQ(GetFocus(), main.Control(L"lsvBackupList"));
}

TEST_F(FormKeys, Esc_ClosesTheOpeningScreen) {
    LoadedForm about(AboutForm(), Language::English);
    about.form.Show(ShowHow::KeepFocus);
    Press(about.Handle(), VK_ESCAPE);
    EXPECT_FALSE(about.form.IsLoaded());
    EXPECT_EQ(about.events.unloadReasons, (std::vector<UnloadReason>{UnloadReason::User}));
}

TEST_F(FormKeys, Filter_HandlesMessagesBeforeTheirWindows) {
    LoadedForm main(MainForm(), Language::English);
    int seen = 0;
    pump.SetFilter([&](const MSG& message) {
        if (message.message != WM_COMMAND) return false;
        ++seen;
        return true;
    });
    PostMessageW(main.Handle(), WM_COMMAND, ID_mnuFileNew, 0);
    pump.ProcessMessages();
    EXPECT_EQ(seen, 1);
    EXPECT_TRUE(main.events.events.empty());
    pump.SetFilter({});
    PostMessageW(main.Handle(), WM_COMMAND, ID_mnuFileNew, 0);
    pump.ProcessMessages();
    EXPECT_EQ(main.events.Last().control, L"mnuFileNew");
}

}  // namespace
}  // namespace vw
