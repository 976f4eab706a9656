#include "platform/Win32MessageBoxes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/platform/TestWindow.h"
#include "tests/support/ImportHook.h"

namespace vw::test {
namespace {

// What the system was asked to show, and what it answers.
struct Asked {
    HWND owner;
    std::wstring text;
    std::wstring title;
    UINT style;
    bool ownerEnabled;
    bool watchedEnabled;
};
std::vector<Asked> asked;
HWND watched = nullptr;  // another window of the program
int answer = IDOK;

int WINAPI RecordBox(HWND owner, LPCWSTR text, LPCWSTR title, UINT style) {
    asked.push_back(
        {owner, text, title, style, IsWindowEnabled(owner) != 0, IsWindowEnabled(watched) != 0});
    // As the end of a real box does.
    if (owner != nullptr) EnableWindow(owner, TRUE);
    return answer;
}

class MessageBoxes : public testing::Test {
  protected:
    void SetUp() override {
        asked.clear();
        answer = IDOK;
    }

    /// The style of the one box that this content makes.
    UINT StyleOf(const MessageBoxRequest& content) {
        asked.clear();
        boxes.Show(content);
        return asked.size() == 1 ? asked[0].style : ~0U;
    }

    const ImportHook hook{"MessageBoxW", &RecordBox};
    ProgramState state;
    std::vector<std::wstring> echoed;
    Win32MessageBoxes boxes{state, [this](std::wstring_view text) { echoed.emplace_back(text); }};
};

TEST_F(MessageBoxes, NoTitleGiven_HasTheTitleOfTheProgram) {
    boxes.Show({.text = L"Done"});
    boxes.Show({.text = L"?", .title = L"Another"});
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].text, L"Done");
    EXPECT_EQ(asked[0].title, L"Vaultwright");
    EXPECT_EQ(asked[1].title, L"Another");
    EXPECT_TRUE(echoed.empty());
}

// The numbers that people's tools know.
TEST_F(MessageBoxes, RightToLeft_HasTheStyleForIt) {
    EXPECT_EQ(StyleOf({.text = L"?", .buttons = BoxButtons::YesNo, .rightToLeft = true}), 1572868U);
    EXPECT_EQ(StyleOf({.text = L"!", .rightToLeft = true}), 0x80000U | 0x100000U);
}

TEST_F(MessageBoxes, RightToLeft_PathsAreMarkedOnDisplayOnly) {
    state.silentRun = true;
    const std::wstring question = L"حذف الملف:\r\n";
    boxes.Show({.text = question + L"C:\\عقود\\", .rightToLeft = true});
    boxes.Show({.text = question + L"C:\\Docs\\a.txt", .rightToLeft = true});
    boxes.Show({.text = question + L"C:\\عقود\\"});
    ASSERT_EQ(asked.size(), 3U);
    EXPECT_EQ(asked[0].text, question + L"\u202AC:\\\u200Eعقود\\\u200E\u202C");
    EXPECT_EQ(asked[1].text, question + L"C:\\Docs\\a.txt");
    EXPECT_EQ(asked[2].text, L"\u202Bحذف الملف:\u200F\u202C\r\nC:\\\u200Eعقود\\")
        << "a box that reads from left to right";
    EXPECT_EQ(echoed.front(), question + L"C:\\عقود\\") << "what is logged has no marks";
}

TEST_F(MessageBoxes, ButtonsAndIcon_HaveTheirStyles) {
    EXPECT_EQ(StyleOf({.text = L"!"}), UINT{MB_OK});
    EXPECT_EQ(StyleOf({.text = L"?", .buttons = BoxButtons::YesNo}), UINT{MB_YESNO});
    EXPECT_EQ(StyleOf({.text = L"?", .buttons = BoxButtons::YesNo, .secondIsDefault = true}),
              UINT{MB_YESNO | MB_DEFBUTTON2});
    EXPECT_EQ(StyleOf({.text = L"!", .icon = BoxIcon::Exclamation}), UINT{MB_ICONEXCLAMATION});
}

TEST_F(MessageBoxes, AnyButtonButYes_IsNo) {
    for (const auto& [button, meaning] :
         {std::pair(IDYES, BoxAnswer::Yes), std::pair(IDNO, BoxAnswer::No),
          std::pair(IDCANCEL, BoxAnswer::No), std::pair(0, BoxAnswer::No)}) {
        answer = button;
        EXPECT_EQ(boxes.Show({.text = L"?", .buttons = BoxButtons::YesNo}), meaning) << button;
    }
    answer = IDOK;
    EXPECT_EQ(boxes.Show({.text = L"!"}), BoxAnswer::Ok);
    answer = 0;
    EXPECT_EQ(boxes.Show({.text = L"!"}), BoxAnswer::Ok) << "no memory for a box";
}

// A command that is under way has disabled the window; a box in the middle of it does not give it
// back.
TEST_F(MessageBoxes, OwnerIsDisabled_StaysDisabledAfterTheBox) {
    const TestWindow window(L"vwBoxOwner");
    ShowWindow(window.Handle(), SW_SHOW);
    SetActiveWindow(window.Handle());
    for (const BOOL enabled : {FALSE, TRUE}) {
        EnableWindow(window.Handle(), enabled);
        boxes.Show({.text = L"!"});
        EXPECT_EQ(asked.back().owner, window.Handle());
        EXPECT_TRUE(asked.back().ownerEnabled) << "another program would come forward";
        EXPECT_EQ(IsWindowEnabled(window.Handle()) != 0, enabled != 0);
    }
    ShowWindow(window.Handle(), SW_HIDE);
    SetActiveWindow(window.Handle());
    ASSERT_EQ(GetActiveWindow(), window.Handle());
    boxes.Show({.text = L"!"});
    EXPECT_EQ(asked.back().owner, nullptr) << "nobody sees what belongs to a hidden window";
}

TEST_F(MessageBoxes, AnotherProgramInFront_BoxBelongsToTheTopWindow) {
    const TestWindow window(L"vwBoxOwner");
    SetActiveWindow(nullptr);
    ASSERT_EQ(GetActiveWindow(), nullptr);
    boxes.Show({.text = L"?", .buttons = BoxButtons::YesNo});
    EXPECT_EQ(asked.back().owner, window.Handle());
}

TEST_F(MessageBoxes, SecondWindow_CannotBeUsedUnderABox) {
    const TestWindow main(L"vwBoxMain");
    const TestWindow busy(L"vwBoxBusy");
    for (const HWND active : {main.Handle(), busy.Handle()}) {
        const HWND other = active == main.Handle() ? busy.Handle() : main.Handle();
        SetActiveWindow(active);
        asked.clear();
        watched = other;
        boxes.Show({.text = L"?", .buttons = BoxButtons::YesNo});
        ASSERT_EQ(asked.size(), 1U);
        EXPECT_EQ(asked[0].owner, active);
        EXPECT_FALSE(asked[0].watchedEnabled);
        EXPECT_TRUE(IsWindowEnabled(other));
    }
    watched = nullptr;
}

TEST_F(MessageBoxes, LongText_IsShortened) {
    boxes.Show({.text = std::wstring(1U << 20U, L'x')});
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].text.size(), 2001U);
    EXPECT_TRUE(asked[0].text.ends_with(L"x\u2026"));
}

TEST_F(MessageBoxes, SilentRun_ShowsThreeBoxesAtMostAndEchoesAll) {
    state.silentRun = true;
    answer = IDNO;
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(boxes.Show({.text = std::to_wstring(i), .buttons = BoxButtons::YesNo}),
                  BoxAnswer::No);
    }
    EXPECT_LE(asked.size(), 3U);
    EXPECT_EQ(echoed, (std::vector<std::wstring>{L"0", L"1", L"2", L"3", L"4"}));
}

int timersSet = 0;
const ImportHook* timer = nullptr;
UINT_PTR WINAPI SetShortTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC call) {
    EXPECT_EQ(milliseconds, 5000U);
    // Some systems report, too, that no window is active any more.
    if (window == nullptr) return 0;
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    EXPECT_STREQ(name, L"#32770") << "the box itself, not one of its buttons";
    ++timersSet;
    return timer->Original<decltype(SetTimer)>()(window, id, 1, call);
}
int hooksTakenOut = 0;
const ImportHook* unhooking = nullptr;
BOOL WINAPI CountUnhooking(HHOOK hook) {
    ++hooksTakenOut;
    return unhooking->Original<decltype(UnhookWindowsHookEx)>()(hook);
}

// Boxes of the system itself; nobody but their timer closes them.
TEST(BoxOfASilentRun, NobodyAnswers_ClosesItselfWithTheSafeAnswer) {
    const ImportHook set("SetTimer", &SetShortTimer);
    const ImportHook unhook("UnhookWindowsHookEx", &CountUnhooking);
    timer = &set;
    unhooking = &unhook;
    hooksTakenOut = 0;
    timersSet = 0;
    ProgramState state;
    state.silentRun = true;
    Win32MessageBoxes boxes(state, [](std::wstring_view) {});
    EXPECT_EQ(boxes.Show({.text = L"Done"}), BoxAnswer::Ok);
    EXPECT_EQ(boxes.Show({.text = L"?", .buttons = BoxButtons::YesNo}), BoxAnswer::No);
    EXPECT_EQ(timersSet, 2) << "one for each box that came up";
    EXPECT_EQ(hooksTakenOut, 2);
}

TEST_F(MessageBoxes, SessionEnds_ShowsNothingAndReturnsTheSafeAnswer) {
    state.sessionEnds = true;
    answer = IDYES;
    EXPECT_EQ(boxes.Show({.text = L"?", .buttons = BoxButtons::YesNo}), BoxAnswer::No);
    EXPECT_EQ(boxes.Show({.text = L"Done"}), BoxAnswer::Ok);
    EXPECT_TRUE(asked.empty());
}

}  // namespace
}  // namespace vw::test
