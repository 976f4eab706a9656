#include "platform/WindowEventPump.h"

#include "platform/WindowsHeader.h"

namespace vw {

void WindowEventPump::DoEvents() {
    if (!gate_ || gate_()) ProcessMessages();
    lastPass_ = GetTickCount64();
}

void WindowEventPump::ProcessMessages() {
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

void WindowEventPump::DoEventsIfDue() {
    constexpr std::uint64_t kMilliseconds = 30;
    if (GetTickCount64() - lastPass_ >= kMilliseconds) DoEvents();
}

void WindowEventPump::WaitForEvents(unsigned milliseconds) {
    MsgWaitForMultipleObjectsEx(0, nullptr, milliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    DoEvents();
}

}  // namespace vw
