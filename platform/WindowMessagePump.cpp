#include "platform/WindowMessagePump.h"

#include "platform/WindowsHeader.h"

namespace vw {

void WindowMessagePump::ProcessMessages() {
    if (!gate_ || gate_()) EmptyQueue();
    lastPass_ = GetTickCount64();
}

void WindowMessagePump::EmptyQueue() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (message.message == WM_QUIT) {
            if (quit_) quit_();
            continue;
        }
        if (filter_ && filter_(message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

void WindowMessagePump::ProcessMessagesIfDue() {
    constexpr std::uint64_t kMilliseconds = 30;
    if (GetTickCount64() - lastPass_ >= kMilliseconds) ProcessMessages();
}

void WindowMessagePump::WaitForMessages(unsigned milliseconds) {
    MsgWaitForMultipleObjectsEx(0, nullptr, milliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    ProcessMessages();
}

}  // namespace vw
