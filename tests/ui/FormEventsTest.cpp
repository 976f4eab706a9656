#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/ui/FormFixture.h"
#include "ui/resource.h"
// The shell's declarations need those of the window system first.
#include <shlobj.h>

namespace vw {
namespace {

using test::LoadedForm;

void Command(HWND form, int id, int code = 0, HWND control = nullptr) {
    SendMessageW(form, WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(control));
}

TEST(FormEventsOf, MenuEntry_RaisesClickWithNameAndIndex) {
    LoadedForm main(MainForm(), Language::English);
    Command(main.Handle(), ID_mnuFileNew);
    EXPECT_EQ(main.events.Last().control, L"mnuFileNew");
    EXPECT_EQ(main.events.Last().index, kNoIndex);
    EXPECT_EQ(main.events.Last().kind, EventKind::Click);
    Command(main.Handle(), ID_mnuViewAlign_2);
    EXPECT_EQ(main.events.Last().control, L"mnuViewAlign");
    EXPECT_EQ(main.events.Last().index, 2);
    EXPECT_EQ(main.events.events.size(), 2U);
}

TEST(FormEventsOf, DisabledOrHiddenEntry_RaisesNoClick) {
    LoadedForm main(MainForm(), Language::Arabic);
    main.form.Menus().Enable(L"mnuAddFile", false);
    Command(main.Handle(), ID_mnuAddFile);
    Command(main.Handle(), ID_mnuRecentFile_1);
    main.form.Tools(L"Toolbar1").Enable(L"FileNew", false);
    Command(main.Handle(), ID_Toolbar1_FileNew);
    EXPECT_TRUE(main.events.events.empty());
}

TEST(FormEventsOf, ToolbarButton_RaisesClickWithItsKey) {
    LoadedForm main(MainForm(), Language::English);
    Command(main.Handle(), ID_Toolbar1_ActionRestoreTo);
    EXPECT_EQ(main.events.Last().control, L"Toolbar1");
    EXPECT_EQ(main.events.Last().key, L"ActionRestoreTo");
    Command(main.Handle(), ID_Toolbar1_Del, 0, main.Control(L"Toolbar1"));
    EXPECT_EQ(main.events.Last().key, L"Del");
}

TEST(FormEventsOf, ButtonLabelAndForm_RaiseClick) {
    LoadedForm about(AboutForm(), Language::English);
    about.form.ShowControl(L"cmdClose", true);
    SendMessageW(about.Control(L"cmdClose"), BM_CLICK, 0, 0);
    EXPECT_EQ(about.events.Last().control, L"cmdClose");
    SendMessageW(about.Control(L"lblTitle"), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    SendMessageW(about.Control(L"lblTitle"), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    EXPECT_EQ(about.events.Last().control, L"lblTitle");
    SendMessageW(about.Handle(), WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    EXPECT_EQ(about.events.Last().control, L"");
    EXPECT_EQ(about.events.events.size(), 3U);
}

TEST(FormEventsOf, CheckBox_RaisesClickForTheUserOnly) {
    LoadedForm busy(BusyForm(), Language::English);
    busy.form.Check(L"chkDontHide", true);
    EXPECT_TRUE(busy.form.IsChecked(L"chkDontHide"));
    EXPECT_TRUE(busy.events.events.empty());
    SendMessageW(busy.Control(L"chkDontHide"), BM_CLICK, 0, 0);
    EXPECT_FALSE(busy.form.IsChecked(L"chkDontHide"));
    EXPECT_EQ(busy.events.Last().control, L"chkDontHide");
}

TEST(FormEventsOf, AllRowsOfAListChange_RaisesNoSelection) {
    LoadedForm main(MainForm(), Language::English);
    NMLISTVIEW change{};
    change.hdr = {main.Control(L"lsvRestore1"), ID_lsvRestore1, LVN_ITEMCHANGED};
    change.uChanged = LVIF_STATE;
    change.uNewState = LVIS_SELECTED;
    for (const int row : {0, -1}) {
        change.iItem = row;
        SendMessageW(main.Handle(), WM_NOTIFY, ID_lsvRestore1, reinterpret_cast<LPARAM>(&change));
    }
    ASSERT_EQ(main.events.events.size(), 1U);
    EXPECT_EQ(main.events.Last().value, 0);
}

TEST(FormEventsOf, DropDown_ProgramChooses_RaisesNoEvent) {
    LoadedForm main(MainForm(), Language::English);
    main.form.SetChoices(L"cmbDestination", {L"A:", L"C:", L"D:"});
    main.form.Choose(L"cmbDestination", L"d:");
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"D:");
    main.form.Choose(L"cmbDestination", L"Z:");
    EXPECT_EQ(main.form.Text(L"cmbDestination"), L"Z:");
    EXPECT_EQ(main.form.Choices(L"cmbDestination"),
              (std::vector<std::wstring>{L"A:", L"C:", L"D:", L"Z:"}));
    EXPECT_TRUE(main.events.events.empty());
}

class Scroll : public testing::Test {
  protected:
    void Press(int request) {
        SendMessageW(main.Handle(), WM_VSCROLL, MAKEWPARAM(request, 0),
                     reinterpret_cast<LPARAM>(main.Control(L"vsBackages")));
    }

    LoadedForm main{MainForm(), Language::English};
};

TEST_F(Scroll, SetValue_NewValue_RaisesChange) {
    EXPECT_EQ(main.form.Value(L"vsBackages"), 0);
    main.form.SetValue(L"vsBackages", 3);
    ASSERT_EQ(main.events.events.size(), 1U);
    EXPECT_EQ(main.events.Last().control, L"vsBackages");
    EXPECT_EQ(main.events.Last().kind, EventKind::Change);
    EXPECT_EQ(main.events.Last().value, 3);
    main.form.SetValue(L"vsBackages", 3);
    EXPECT_EQ(main.events.events.size(), 1U);
}

TEST_F(Scroll, UpperArrow_IncreasesTheValue) {
    main.form.SetValue(L"vsBackages", 3);
    Press(SB_LINEUP);
    EXPECT_EQ(main.form.Value(L"vsBackages"), 4);
    EXPECT_EQ(main.events.Last().value, 4);
    Press(SB_LINEDOWN);
    Press(SB_ENDSCROLL);
    EXPECT_EQ(main.form.Value(L"vsBackages"), 3);
    EXPECT_EQ(main.events.events.size(), 3U);
}

TEST_F(Scroll, UserChanges_StayBetweenOneAndTwenty) {
    main.form.SetValue(L"vsBackages", 1);
    Press(SB_LINEDOWN);
    EXPECT_EQ(main.form.Value(L"vsBackages"), 1);
    EXPECT_EQ(main.events.events.size(), 1U);
    main.form.SetValue(L"vsBackages", 20);
    Press(SB_LINEUP);
    EXPECT_EQ(main.form.Value(L"vsBackages"), 20);
    Press(SB_BOTTOM);
    EXPECT_EQ(main.form.Value(L"vsBackages"), 1);
    Press(SB_TOP);
    EXPECT_EQ(main.form.Value(L"vsBackages"), 20);
}

TEST_F(Scroll, SetValue_OutsideTheRange_IsKept) {
    for (const int value : {300, 0, -4, 32767}) {
        main.form.SetValue(L"vsBackages", value);
        EXPECT_EQ(main.form.Value(L"vsBackages"), value);
    }
    main.form.SetValue(L"vsBackages", 5);
    Press(SB_TOP);
    EXPECT_EQ(main.form.Value(L"vsBackages"), 20) << "the range is the user's again";
}

TEST(FormEventsOf, Timer_RaisesEventsOnlyWhileEnabled) {
    LoadedForm tray(TrayForm(), Language::English);
    SendMessageW(tray.Handle(), WM_TIMER, ID_Timer1, 0);
    EXPECT_TRUE(tray.events.events.empty());
    tray.form.EnableTimer(L"Timer1", true);
    EXPECT_TRUE(tray.form.IsTimerEnabled(L"Timer1"));
    SendMessageW(tray.Handle(), WM_TIMER, ID_Timer1, 0);
    EXPECT_EQ(tray.events.Last().control, L"Timer1");
    EXPECT_EQ(tray.events.Last().kind, EventKind::Timer);
    tray.form.EnableTimer(L"Timer1", false);
    SendMessageW(tray.Handle(), WM_TIMER, ID_Timer1, 0);
    EXPECT_EQ(tray.events.events.size(), 1U);
}

TEST(FormEventsOf, NotificationIcon_RaisesMouseEvents) {
    LoadedForm tray(TrayForm(), Language::Arabic);
    SendMessageW(tray.Handle(), WM_MOUSEMOVE, 1, WM_RBUTTONDOWN);
    ASSERT_EQ(tray.events.mouse.size(), 1U);
    EXPECT_EQ(tray.events.mouse[0].first, WM_RBUTTONDOWN);
}

TEST(FormEventsOf, NewTaskBar_RaisesAnEvent) {
    LoadedForm tray(TrayForm(), Language::English);
    SendMessageW(tray.Handle(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    EXPECT_EQ(tray.events.taskbars, 1);
}

TEST(FormEventsOf, DroppedFiles_RaiseAnEventWithTheirPaths) {
    LoadedForm main(MainForm(), Language::English);
    const std::wstring paths =
        std::wstring(L"C:\\Docs\\a.txt") + L'\0' + L"C:\\العمل" + L'\0' + L'\0';
    const std::size_t bytes = sizeof(DROPFILES) + paths.size() * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GHND, bytes);
    auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    drop->fWide = TRUE;
    paths.copy(reinterpret_cast<wchar_t*>(drop + 1), paths.size());
    GlobalUnlock(memory);
    SendMessageW(main.Control(L"lsvBackupList"), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    EXPECT_EQ(main.events.Last().control, L"lsvBackupList");
    EXPECT_EQ(main.events.Last().kind, EventKind::DropFiles);
    EXPECT_EQ(main.events.Last().files,
              (std::vector<std::wstring>{L"C:\\Docs\\a.txt", L"C:\\العمل"}));
    const auto accepts = [&](const wchar_t* name) {
        return (GetWindowLongW(main.Control(name), GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0;
    };
    EXPECT_TRUE(accepts(L"lsvBackupList"));
    EXPECT_FALSE(accepts(L"lsvRestore1"));
}

TEST(FormEventsOf, HandlerThrows_ExceptionIsCaughtAtTheWindow) {
    LoadedForm main(MainForm(), Language::English);
    main.events.onControl = [](Form&, const ControlEvent&) { throw std::runtime_error("x"); };
    Command(main.Handle(), ID_mnuFileNew);
    ASSERT_NE(main.events.escaped, nullptr);
    EXPECT_THROW(std::rethrow_exception(main.events.escaped), std::runtime_error);
}

TEST(FormEventsOf, HandlerUnloadsItsForm_FormIsUnloaded) {
    LoadedForm busy(BusyForm(), Language::English);
    busy.events.onControl = [](Form& form, const ControlEvent&) { form.Unload(); };
    SendMessageW(busy.Control(L"cmdCancel"), BM_CLICK, 0, 0);
    EXPECT_FALSE(busy.form.IsLoaded());
    EXPECT_EQ(busy.events.unloads, 1);

    LoadedForm main(MainForm(), Language::Arabic);
    main.events.onControl = busy.events.onControl;
    main.form.List(L"lsvBackupList").Add(L"a", RowIcon::File);
    SendMessageW(main.Control(L"lsvBackupList"), WM_KEYDOWN, VK_DOWN, 0);
    SendMessageW(main.Control(L"lsvBackupList"), WM_KEYDOWN, VK_DELETE, 0);
    SendMessageW(main.Control(L"lsvBackupList"), WM_KEYUP, VK_DELETE, 0);
    EXPECT_FALSE(main.form.IsLoaded());
}

}  // namespace
}  // namespace vw
