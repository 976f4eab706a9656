#include <gtest/gtest.h>

#include "platform/RuntimeError.h"
#include "platform/TextDirection.h"
#include "platform/WindowMessagePump.h"
#include "tests/ui/FormFixture.h"
#include "ui/PrivateMessages.h"
#include "ui/resource.h"

namespace vw {
namespace {

using test::LoadedForm;
using test::RecordedEvents;

SIZE OuterSize(const Form& form) {
    RECT rect{};
    GetWindowRect(form.Handle(), &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

TEST(FormState, LoadsHiddenThenShowsHidesAndUnloads) {
    RecordedEvents events;
    Form form(BusyForm(), Language::English, events);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_FALSE(form.IsVisible());
    form.Load();
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_FALSE(form.IsVisible());
    form.Load();
    EXPECT_EQ(events.loads, 1);
    form.Show(ShowHow::KeepFocus);
    EXPECT_TRUE(form.IsVisible());
    form.Hide();
    EXPECT_FALSE(form.IsVisible());
    EXPECT_TRUE(form.Unload());
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_EQ(events.unloads, 1);
    form.Show(ShowHow::KeepFocus);
    EXPECT_EQ(events.loads, 2);
}

TEST(FormState, NotLoaded_CallsHaveNoEffect) {
    RecordedEvents events;
    Form form(BusyForm(), Language::English, events);
    form.SetText(L"lblMsg", L"x");
    form.Append(L"txtReport", L"x");
    form.Check(L"chkDontHide", true);
    form.EnableTimer(L"tmrBusy", true);
    form.SetProgress(L"ProgressBar1", 10);
    form.ShowControl(L"txtReport", true);
    form.SetCaption(L"x");
    form.Hide();
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_EQ(form.Text(L"lblMsg"), L"");
    EXPECT_FALSE(form.IsChecked(L"chkDontHide"));
    EXPECT_FALSE(form.IsTimerEnabled(L"tmrBusy"));
    EXPECT_TRUE(form.Unload()) << "it is not there";
    EXPECT_TRUE(events.unloadReasons.empty());
}

TEST(FormState, UnknownName_ThrowsError5) {
    LoadedForm main(MainForm(), Language::English);
    const auto numberOf = [](const auto& action) {
        try {
            action();
        } catch (const RuntimeError& error) {
            return error.Number();
        }
        return 0;
    };
    EXPECT_EQ(numberOf([&] { main.form.SetText(L"lblNothing", L""); }), 5);
    EXPECT_EQ(numberOf([&] { static_cast<void>(main.form.List(L"Label01")); }), 5);
    EXPECT_EQ(numberOf([&] { main.form.Menus().Check(L"mnuNothing", true); }), 5);
    EXPECT_EQ(numberOf([&] { main.form.Menus().Check(L"mnuOptions", true); }), 5) << "no index";
    EXPECT_EQ(numberOf([&] { main.form.Tools(L"Toolbar1").Enable(L"Nothing", true); }), 5);
    EXPECT_EQ(numberOf([&] {
                  static_cast<void>(main.form.List(L"lsvRestore2").Rows().ColumnOf(L"Path"));
              }),
              5);
    RecordedEvents events;
    Form unloaded(MainForm(), Language::English, events);
    EXPECT_EQ(numberOf([&] { static_cast<void>(unloaded.List(L"lsvBackupList")); }), 5);
}

TEST(FormState, Close_IsRefusedByTheHandler_FormStaysLoaded) {
    LoadedForm main(MainForm(), Language::English);
    main.events.letsGo = false;
    SendMessageW(main.Handle(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(main.form.IsLoaded());
    EXPECT_FALSE(main.form.Unload());
    main.events.letsGo = true;
    SendMessageW(main.Handle(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(main.form.IsLoaded());
    EXPECT_EQ(
        main.events.unloadReasons,
        (std::vector<UnloadReason>{UnloadReason::User, UnloadReason::Program, UnloadReason::User}));
}

TEST(FormState, SessionEnds_UnloadsEvenIfRefused) {
    LoadedForm main(MainForm(), Language::Arabic);
    main.events.letsGo = false;
    EXPECT_NE(SendMessageW(main.Handle(), WM_QUERYENDSESSION, 0, 0), 0);
    SendMessageW(main.Handle(), WM_ENDSESSION, FALSE, 0);
    EXPECT_TRUE(main.form.IsLoaded()) << "somebody else stopped it";
    SendMessageW(main.Handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_FALSE(main.form.IsLoaded());
    EXPECT_EQ(main.events.unloadReasons, (std::vector<UnloadReason>{UnloadReason::SessionEnd}));
}

TEST(FormState, Report_ShownAndHidden_ChangesTheHeight) {
    for (const Language language : test::kLanguages) {
        LoadedForm busy(BusyForm(), language);
        const SIZE closed = OuterSize(busy.form);
        busy.form.ShowControl(L"txtReport", true);
        const SIZE open = OuterSize(busy.form);
        EXPECT_EQ(open.cx, closed.cx);
        EXPECT_EQ(open.cy, closed.cy + Scaled(192, busy.form.Dpi()));
        busy.form.ShowControl(L"txtReport", true);
        EXPECT_EQ(OuterSize(busy.form).cy, open.cy);
        RECT report{};
        GetClientRect(busy.Control(L"txtReport"), &report);
        EXPECT_GT(report.bottom, Scaled(120, busy.form.Dpi()));
        busy.form.ShowControl(L"txtReport", false);
        EXPECT_EQ(OuterSize(busy.form).cy, closed.cy);
    }
}

TEST(FormState, Report_ShownWhileMinimised_StaysMinimised) {
    LoadedForm busy(BusyForm(), Language::English);
    busy.form.Show(ShowHow::KeepFocus);
    const SIZE closed = OuterSize(busy.form);
    busy.form.Show(ShowHow::MinimisedKeepFocus);
    EXPECT_EQ(busy.form.State(), WindowState::Minimised);
    EXPECT_TRUE(busy.form.IsVisible());
    busy.form.ShowControl(L"txtReport", true);
    EXPECT_EQ(busy.form.State(), WindowState::Minimised);
    busy.form.Show(ShowHow::Normal);
    EXPECT_EQ(OuterSize(busy.form).cy, closed.cy + Scaled(192, busy.form.Dpi()));
}

TEST(FormState, Sizes_RaiseEvents) {
    LoadedForm main(MainForm(), Language::English);
    main.events.sizes.clear();
    main.form.Maximise();
    EXPECT_FALSE(main.form.IsVisible()) << "a hidden form stays hidden";
    main.form.Show();
    EXPECT_EQ(main.form.State(), WindowState::Maximised);
    ASSERT_FALSE(main.events.sizes.empty());
    EXPECT_EQ(main.events.sizes.back(), WindowState::Maximised);
    main.form.Show(ShowHow::MinimisedKeepFocus);
    EXPECT_EQ(main.events.sizes.back(), WindowState::Minimised);
}

/// The areas of all child windows of a form in the coordinates of its client area.
std::vector<Rect> ControlAreas(HWND form) {
    std::vector<Rect> areas;
    for (HWND child = GetWindow(form, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        RECT area{};
        GetWindowRect(child, &area);
        MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&area), 2);
        areas.push_back({static_cast<int>(area.left), static_cast<int>(area.top),
                         static_cast<int>(area.right), static_cast<int>(area.bottom)});
    }
    return areas;
}

/// A form that is to be maximised when it is first shown.
class MaximisedForm : public testing::TestWithParam<Language> {
  protected:
    class Events final : public FormEvents {
        void OnLoad(Form& form) override { form.Maximise(); }
        void OnControl(Form&, const ControlEvent&) override {}
        void OnEscaped(Form&, const std::exception_ptr&) noexcept override {}
    };

    MaximisedForm() : form_(MainForm(), GetParam(), events_) { form_.Load(); }

    Events events_;
    Form form_;
};

INSTANTIATE_TEST_SUITE_P(InBothLanguages, MaximisedForm, testing::ValuesIn(test::kLanguages));

TEST_P(MaximisedForm, FirstShown_ControlsHaveTheirPlacesAlready) {
    const std::vector<Rect> hidden = ControlAreas(form_.Handle());
    form_.Show();
    ASSERT_EQ(form_.State(), WindowState::Maximised);
    if (GetParam() == Language::English) {
        EXPECT_EQ(ControlAreas(form_.Handle()), hidden);
    }
    // The places do not depend on the way to them.
    const std::vector<Rect> shown = ControlAreas(form_.Handle());
    form_.Show(ShowHow::Normal);
    EXPECT_NE(ControlAreas(form_.Handle()), shown);
    form_.Show(ShowHow::Maximised);
    EXPECT_EQ(ControlAreas(form_.Handle()), shown);
}

TEST_P(MaximisedForm, FirstShownInNormalSize_ControlsFitIt) {
    form_.Show(ShowHow::Normal);
    ASSERT_EQ(form_.State(), WindowState::Normal);
    const std::vector<Rect> first = ControlAreas(form_.Handle());
    form_.Show(ShowHow::Maximised);
    form_.Show(ShowHow::Normal);
    EXPECT_EQ(ControlAreas(form_.Handle()), first);
}

TEST(FormState, Resize_IsNeverSmallerThanTheDesign) {
    LoadedForm main(MainForm(), Language::English);
    SetWindowPos(main.Handle(), nullptr, 0, 0, 50, 50, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT client{};
    GetClientRect(main.Handle(), &client);
    EXPECT_GE(client.right, Scaled(MainForm().design.width, main.form.Dpi()));
    EXPECT_GE(client.bottom, Scaled(MainForm().design.height, main.form.Dpi()));
}

TEST(FormState, ShowModal_Closed_ReturnsAndEnablesItsOwner) {
    LoadedForm main(MainForm(), Language::English);
    main.form.Show(ShowHow::KeepFocus);
    RecordedEvents events;
    Form about(AboutForm(), Language::English, events);
    WindowMessagePump pump;
    bool ownerEnabled = true;
    events.onControl = [&](Form& form, const ControlEvent&) {
        ownerEnabled = main.form.IsFormEnabled();
        form.Unload();
    };
    about.Load(main.Handle());
    about.ShowControl(L"cmdClose", true);
    PostMessageW(about.Handle(), WM_COMMAND, IDCANCEL, 0);
    about.ShowModal(pump, main.Handle());
    EXPECT_FALSE(ownerEnabled);
    EXPECT_TRUE(main.form.IsFormEnabled());
    EXPECT_FALSE(about.IsLoaded());
    ASSERT_EQ(events.events.size(), 1U);
    EXPECT_EQ(events.Last().control, L"cmdClose") << "Esc presses the button";
}

TEST(FormState, ProgressAndReport_HoldWhatIsWritten) {
    LoadedForm busy(BusyForm(), Language::Arabic);
    busy.form.SetProgress(L"ProgressBar1", 70);
    EXPECT_EQ(busy.form.Progress(L"ProgressBar1"), 70);
    busy.form.SetProgress(L"ProgressBar1", 1000);
    EXPECT_EQ(busy.form.Progress(L"ProgressBar1"), kProgressMaximum);
    busy.form.Append(L"txtReport", L"one\r\n");
    busy.form.Append(L"txtReport", L"اثنان\r\n");
    EXPECT_EQ(busy.form.Text(L"txtReport"), L"one\r\nاثنان\r\n");
    // More than an edit control takes by itself.
    const std::wstring line(1000, L'x');
    std::wstring report;
    for (int i = 0; i < 200; ++i) report += line + L"\r\n";
    busy.form.SetText(L"txtReport", report);
    busy.form.Append(L"txtReport", L"end");
    EXPECT_EQ(busy.form.Text(L"txtReport").size(), report.size() + 3);
}

HWND TipsOfThisThread() {
    HWND tips = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM found) -> BOOL {
            wchar_t name[64] = L"";
            GetClassNameW(window, name, 64);
            if (std::wstring_view(name) != TOOLTIPS_CLASSW) return TRUE;
            *reinterpret_cast<HWND*>(found) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&tips));
    return tips;
}

TEST(FormState, LongPath_LabelHasAllOfItAndATip) {
    LoadedForm busy(BusyForm(), Language::Arabic);
    std::wstring path = L"C:";
    for (int i = 0; i < 30; ++i) path += L"\\مجلد & folder";
    busy.form.SetText(L"lblMsg", path);
    EXPECT_EQ(busy.form.Text(L"lblMsg"), path);
    const HWND label = busy.Control(L"lblMsg");
    const auto moveMouse = [&] {
        SendMessageW(label, WM_SETCURSOR, reinterpret_cast<WPARAM>(label),
                     MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    };
    moveMouse();
    EXPECT_EQ(TipsOfThisThread(), nullptr) << "nobody sees them before the form can be used";
    SendMessageW(busy.Handle(), WM_TIMER, kShownTimer, 0);
    EXPECT_EQ(TipsOfThisThread(), nullptr) << "nobody sees them before the mouse comes";
    moveMouse();
    const HWND tips = TipsOfThisThread();
    ASSERT_NE(tips, nullptr);
    NMTTDISPINFOW info{};
    info.hdr = {tips, reinterpret_cast<UINT_PTR>(label), static_cast<UINT>(TTN_GETDISPINFOW)};
    SendMessageW(busy.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(std::wstring(info.lpszText), MarkPath(path)) << "all of it, from left to right";
    busy.form.SetText(L"lblMsg", L"C:\\a");
    SendMessageW(busy.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(std::wstring(info.lpszText), L"") << "no tip for what can be read";
}

// What a report box puts on the clipboard when all of it is copied.
std::wstring CopiedFrom(HWND report) {
    SendMessageW(report, EM_SETSEL, 0, -1);
    SendMessageW(report, WM_COPY, 0, 0);
    if (OpenClipboard(report) == 0) return L"no clipboard";
    const HANDLE data = GetClipboardData(CF_UNICODETEXT);
    std::wstring text;
    if (data != nullptr) {
        text = static_cast<const wchar_t*>(GlobalLock(data));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return text;
}

TEST(FormState, ArabicReport_ShowsPathsWithMarksAndCopiesThemWithout) {
    LoadedForm busy(BusyForm(), Language::Arabic);
    const std::wstring lines = L"تم تخطي الارتباط التالي\r\nC:\\العمل\\عقود\\\r\n";
    busy.form.Append(L"txtReport", lines);
    EXPECT_EQ(busy.form.Text(L"txtReport"), MarkReport(lines));
    EXPECT_NE(busy.form.Text(L"txtReport"), lines);
    EXPECT_EQ(CopiedFrom(busy.Control(L"txtReport")), lines);
}

TEST(FormState, EnglishReport_HasNoMarks) {
    LoadedForm busy(BusyForm(), Language::English);
    const std::wstring lines = L"Backing: C:\\العمل\\عقود\\\r\n";
    busy.form.Append(L"txtReport", lines);
    EXPECT_EQ(busy.form.Text(L"txtReport"), lines);
}

TEST(FormState, ArabicToolTip_ReadsFromRightToLeft) {
    LoadedForm main(MainForm(), Language::Arabic);
    wchar_t text[200] = L"";
    NMTBGETINFOTIPW info{};
    info.hdr = {main.Control(L"Toolbar1"), ID_Toolbar1, static_cast<UINT>(TBN_GETINFOTIPW)};
    info.pszText = text;
    info.cchTextMax = 200;
    info.iItem = ID_Toolbar1_FileNew;
    SendMessageW(main.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(std::wstring(text), MarkSentence(L"قائمة جديدة (Ctrl+N)"));
}

TEST(FormState, SetIcon_ChangesTheIconOfTheWindow) {
    LoadedForm tray(TrayForm(), Language::English);
    const HICON first = tray.form.Icon();
    EXPECT_NE(first, nullptr);
    tray.form.SetIcon(L"Image1", 2);
    EXPECT_NE(tray.form.Icon(), nullptr);
    EXPECT_NE(tray.form.Icon(), first);
    EXPECT_EQ(reinterpret_cast<HICON>(SendMessageW(tray.Handle(), WM_GETICON, ICON_SMALL, 0)),
              tray.form.Icon());
}

TEST(FormState, Hourglass_IsShownOverADisabledForm) {
    LoadedForm main(MainForm(), Language::English);
    main.form.EnableForm(false);
    main.form.SetMousePointer(MousePointer::Hourglass);
    EXPECT_FALSE(main.form.IsFormEnabled());
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    SendMessageW(main.Handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(main.Handle()),
                 MAKELPARAM(HTERROR, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
    main.form.SetMousePointer(MousePointer::Default);
    SendMessageW(main.Handle(), WM_SETCURSOR, reinterpret_cast<WPARAM>(main.Handle()),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
}

}  // namespace
}  // namespace vw
