// Choosing a drive: only what the user confirms counts.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/ui/FormFixture.h"
#include "ui/resource.h"

namespace vw::test {
namespace {

class DropDownBox : public testing::TestWithParam<Language>, protected PostedKeys {
  protected:
    DropDownBox() {
        main.form.SetChoices(L"cmbDestination", {L"A:", L"C:", L"D:", L"E:"});
        main.form.Choose(L"cmbDestination", L"C:");
        // An open list marks the entry below the pointer.
        SetCursorPos(GetSystemMetrics(SM_CXSCREEN) - 1, GetSystemMetrics(SM_CYSCREEN) - 1);
        main.form.Show();
        SetFocus(box);
        pump.ProcessMessages();
        main.events.events.clear();
    }
    void Press(WPARAM key) { PostedKeys::Press(box, key); }
    [[nodiscard]] bool IsOpen() const { return SendMessageW(box, CB_GETDROPPEDSTATE, 0, 0) != 0; }
    [[nodiscard]] std::wstring Chosen() const { return main.form.Text(L"cmbDestination"); }
    /// How often the form reported a choice.
    [[nodiscard]] int Choices() const {
        return static_cast<int>(std::ranges::count_if(
            main.events.events,
            [](const ControlEvent& event) { return event.kind == EventKind::Selection; }));
    }

    LoadedForm main{MainForm(), GetParam()};
    const HWND box = main.Control(L"cmbDestination");
};

TEST_P(DropDownBox, Wheel_ClosedBox_ChoosesNothing) {
    for (const int delta : {-WHEEL_DELTA, WHEEL_DELTA, -WHEEL_DELTA}) {
        SendMessageW(box, WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
        pump.ProcessMessages();
        EXPECT_EQ(Chosen(), L"C:");
    }
    EXPECT_EQ(Choices(), 0);
    EXPECT_FALSE(IsOpen());
}

TEST_P(DropDownBox, ArrowKeys_ClosedBox_OpenTheList) {
    for (const WPARAM key : {VK_DOWN, VK_UP, VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_NEXT}) {
        Press(key);
        EXPECT_TRUE(IsOpen()) << key;
        EXPECT_EQ(Chosen(), L"C:") << key;
        Press(VK_ESCAPE);
        EXPECT_FALSE(IsOpen()) << key;
    }
    EXPECT_EQ(Choices(), 0);
}

TEST_P(DropDownBox, Enter_OpenList_ChoosesOnce) {
    Press(VK_DOWN);
    Press(VK_DOWN);
    Press(VK_DOWN);
    EXPECT_EQ(Choices(), 0) << "only marked so far";
    Press(VK_RETURN);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Chosen(), L"E:");
    EXPECT_EQ(Choices(), 1);
}

TEST_P(DropDownBox, Escape_OpenList_RestoresTheSelection) {
    Press(VK_DOWN);
    Press(VK_DOWN);
    Press(VK_DOWN);
    Press(VK_ESCAPE);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Chosen(), L"C:");
    EXPECT_EQ(Choices(), 0);
}

TEST_P(DropDownBox, FocusLeavesOpenList_RestoresTheSelection) {
    Press(VK_DOWN);
    Press(VK_DOWN);
    SetFocus(main.Control(L"lsvBackupList"));
    pump.ProcessMessages();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Chosen(), L"C:");
    EXPECT_EQ(Choices(), 0);
}

TEST_P(DropDownBox, CommandBegins_OpenList_RestoresTheSelection) {
    Press(VK_DOWN);
    Press(VK_DOWN);
    main.form.EnableForm(false);
    pump.ProcessMessages();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Chosen(), L"C:");
    EXPECT_EQ(Choices(), 0);
    main.form.EnableForm(true);
}

TEST_P(DropDownBox, DriveLetter_ClosedBox_IsMarkedInTheOpenList) {
    PostMessageW(box, WM_CHAR, L'e', 0);
    pump.ProcessMessages();
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Choices(), 0);
    Press(VK_RETURN);
    EXPECT_EQ(Chosen(), L"E:");
    EXPECT_EQ(Choices(), 1);
}

TEST_P(DropDownBox, SelectionOfAProgram_ClosedBox_CountsAtOnce) {
    SendMessageW(box, CB_SETCURSEL, 2, 0);
    SendMessageW(main.Handle(), WM_COMMAND, MAKEWPARAM(ID_cmbDestination, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(box));
    EXPECT_EQ(Choices(), 1);
    EXPECT_EQ(Chosen(), L"D:");
}

// Some systems report the change only after the list was closed.
TEST_P(DropDownBox, ChangeReportedAfterTheEnd_CountsOnce) {
    const auto notify = [&](int code) {
        SendMessageW(main.Handle(), WM_COMMAND, MAKEWPARAM(ID_cmbDestination, code),
                     reinterpret_cast<LPARAM>(box));
    };
    notify(CBN_DROPDOWN);
    SendMessageW(box, CB_SETCURSEL, 3, 0);
    for (const int code : {CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}) notify(code);
    pump.ProcessMessages();
    EXPECT_EQ(Choices(), 1);
    EXPECT_EQ(Chosen(), L"E:");
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, DropDownBox, testing::ValuesIn(kLanguages));

}  // namespace
}  // namespace vw::test
