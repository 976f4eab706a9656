#include "platform/WindowMessagePump.h"

#include <gtest/gtest.h>

#include "platform/WindowsHeader.h"
#include "tests/support/ImportHook.h"

namespace vw {
namespace {

// Counts the timer-like messages that a hidden window receives.
class CountingWindow {
  public:
    CountingWindow() {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"VaultwrightPumpTest";
        RegisterClassW(&windowClass);
        window_ = CreateWindowExW(0, windowClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE,
                                  nullptr, windowClass.hInstance, nullptr);
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&count_));
    }
    CountingWindow(const CountingWindow&) = delete;
    CountingWindow& operator=(const CountingWindow&) = delete;
    ~CountingWindow() { DestroyWindow(window_); }

    void Post() const { PostMessageW(window_, WM_APP, 0, 0); }
    [[nodiscard]] int Count() const { return count_; }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_APP) ++*reinterpret_cast<int*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND window_ = nullptr;
    int count_ = 0;
};

TEST(WindowEventPumpTest, ProcessMessages_ProcessesEveryMessage) {
    const CountingWindow window;
    WindowMessagePump pump;
    for (int i = 0; i < 5; ++i) window.Post();
    pump.ProcessMessages();
    EXPECT_EQ(window.Count(), 5);
}

TEST(WindowEventPumpTest, MessageThatTheFilterTakes_ReachesNoWindow) {
    const CountingWindow window;
    WindowMessagePump pump;
    int filtered = 0;
    pump.SetFilter([&](const MSG& message) {
        if (message.message != WM_APP) return false;
        ++filtered;
        return true;
    });
    window.Post();
    pump.ProcessMessages();
    EXPECT_EQ(filtered, 1);
    EXPECT_EQ(window.Count(), 0);
}

int translated = 0;
BOOL WINAPI CountTranslation(const MSG* message) {
    if (message->message == WM_APP) ++translated;
    return TRUE;
}

TEST(WindowEventPumpTest, Message_IsTranslatedToItsCharacter) {
    const test::ImportHook translate("TranslateMessage", &CountTranslation);
    const CountingWindow window;
    WindowMessagePump pump;
    translated = 0;
    window.Post();
    pump.ProcessMessages();
    EXPECT_EQ(translated, 1);
}

TEST(WindowEventPumpTest, ProcessMessagesIfDue_ProcessesAfterTheInterval) {
    const CountingWindow window;
    WindowMessagePump pump;
    pump.ProcessMessages();
    window.Post();
    const ULONGLONG start = GetTickCount64();
    while (window.Count() == 0 && GetTickCount64() - start < 5000) pump.ProcessMessagesIfDue();
    EXPECT_EQ(window.Count(), 1);
    EXPECT_GE(GetTickCount64() - start, 15U) << "processed at once, as if messages cost nothing";
}

TEST(WindowEventPumpTest, ProcessMessages_GateIsClosed_ProcessesNothing) {
    const CountingWindow window;
    WindowMessagePump pump;
    bool open = false;
    pump.SetGate([&] { return open; });
    window.Post();
    pump.ProcessMessages();
    EXPECT_EQ(window.Count(), 0);
    open = true;
    pump.ProcessMessages();
    EXPECT_EQ(window.Count(), 1);
}

TEST(WindowEventPumpTest, QuitMessage_IsReportedOnce_OthersContinue) {
    const CountingWindow window;
    WindowMessagePump pump;
    int told = 0;
    pump.SetQuit([&] { ++told; });
    pump.SetFilter([](const MSG& message) {
        EXPECT_NE(message.message, static_cast<UINT>(WM_QUIT)) << "it is for no window";
        return false;
    });
    PostQuitMessage(7);
    pump.ProcessMessages();
    window.Post();
    pump.ProcessMessages();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(window.Count(), 1);
}

int waits = 0;
DWORD WINAPI NoteWait(DWORD objects, const HANDLE*, DWORD milliseconds, DWORD kinds, DWORD flags) {
    ++waits;
    EXPECT_EQ(objects, 0U);
    EXPECT_EQ(milliseconds, 250U);
    EXPECT_EQ(kinds, static_cast<DWORD>(QS_ALLINPUT));
    EXPECT_EQ(flags, static_cast<DWORD>(MWMO_INPUTAVAILABLE));
    return WAIT_TIMEOUT;
}

TEST(WindowEventPumpTest, WaitForMessages_WaitsNoLongerThanItIsTold) {
    const test::ImportHook wait("MsgWaitForMultipleObjectsEx", &NoteWait);
    waits = 0;
    WindowMessagePump().WaitForMessages(250);
    EXPECT_EQ(waits, 1);
}

TEST(WindowEventPumpTest, WaitForMessages_MessageArrives_Returns) {
    const CountingWindow window;
    WindowMessagePump pump;
    window.Post();
    pump.WaitForMessages(60000);
    EXPECT_EQ(window.Count(), 1);
}

}  // namespace
}  // namespace vw
