// Procedures put before those of controls.

#include "ui/Subclass.h"

#include <gtest/gtest.h>

// The common controls' declarations need those of the window system first.
#include <commctrl.h>

namespace vw {
namespace {

constexpr UINT kAsked = WM_APP + 1;

struct Seen {
    int messages = 0;
    bool takesItselfAway = false;
};

LRESULT Answer(HWND window, UINT message, WPARAM wParam, LPARAM lParam, void* data) {
    auto& seen = *static_cast<Seen*>(data);
    ++seen.messages;
    if (message == kAsked && seen.takesItselfAway) Unsubclass(window);
    if (message == kAsked) return 40 + CallControl(window, message, wParam, lParam);
    return CallControl(window, message, wParam, lParam);
}

/// A label, whose own procedure answers kAsked with 0.
class SubclassTest : public testing::Test {
  protected:
    ~SubclassTest() override {
        if (IsWindow(window) != 0) DestroyWindow(window);
    }
    [[nodiscard]] LRESULT Ask() const { return SendMessageW(window, kAsked, 0, 0); }

    HWND window = CreateWindowExW(0, WC_STATICW, L"text", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                  nullptr, nullptr);
    const LONG_PTR original = GetWindowLongPtrW(window, GWLP_WNDPROC);
    Seen seen;
};

TEST_F(SubclassTest, Procedure_IsCalledBeforeThatOfTheControl) {
    EXPECT_EQ(Ask(), 0);
    Subclass(window, Answer, &seen);
    EXPECT_EQ(Ask(), 40);
    EXPECT_EQ(seen.messages, 1);
    wchar_t text[20] = L"";
    GetWindowTextW(window, text, 20);
    EXPECT_STREQ(text, L"text") << "the control answers the rest";
}

TEST_F(SubclassTest, Unsubclass_ControlIsAsBefore) {
    Subclass(window, Answer, &seen);
    Unsubclass(window);
    EXPECT_EQ(Ask(), 0);
    EXPECT_EQ(seen.messages, 0);
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_WNDPROC), original);
    Unsubclass(window);
    EXPECT_EQ(Ask(), 0) << "once more has no effect";
}

TEST_F(SubclassTest, UnsubclassDuringAMessage_ControlStillAnswersIt) {
    seen.takesItselfAway = true;
    Subclass(window, Answer, &seen);
    EXPECT_EQ(Ask(), 40);
    EXPECT_EQ(Ask(), 0);
}

LRESULT CALLBACK PassOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                        DWORD_PTR) {
    return DefSubclassProc(window, message, wParam, lParam);
}

TEST_F(SubclassTest, UnsubclassBelowAnotherProcedure_OtherOneStaysInPlace) {
    Subclass(window, Answer, &seen);
    SetWindowSubclass(window, PassOn, 1, 0);
    EXPECT_EQ(Ask(), 40);
    Unsubclass(window);
    EXPECT_EQ(Ask(), 0);
    RemoveWindowSubclass(window, PassOn, 1);
    EXPECT_EQ(Ask(), 0);
}

TEST_F(SubclassTest, DestroyedWindow_ProcedureSeesItsLastMessage) {
    Subclass(window, Answer, &seen);
    DestroyWindow(window);
    EXPECT_GE(seen.messages, 2) << "WM_DESTROY, WM_NCDESTROY";
    EXPECT_EQ(IsWindow(window), 0);
}

}  // namespace
}  // namespace vw
