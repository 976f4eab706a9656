#include "console/Interrupts.h"

#include <atomic>
#include <string_view>

#include "platform/RuntimeError.h"
#include "platform/WindowsHeader.h"

namespace vw::Interrupts {
namespace {

std::atomic<int> requests{0};
HANDLE requested = nullptr;
bool isAnnounced = false;

void Announce() {
    constexpr std::wstring_view kText = L"\r\nStopping. Press Ctrl+C again to stop at once.\r\n";
    for (const DWORD stream : {STD_ERROR_HANDLE, STD_OUTPUT_HANDLE}) {
        DWORD written = 0;
        // Fails where the stream is no terminal.
        if (WriteConsoleW(GetStdHandle(stream), kText.data(), static_cast<DWORD>(kText.size()),
                          &written, nullptr) != 0) {
            return;
        }
    }
}

// Runs in a thread of the system's own.
BOOL WINAPI OnControl(DWORD event) {
    const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
    if (++requests > 1 && isKey) {
        TerminateProcess(GetCurrentProcess(), static_cast<UINT>(error_number::kCancelled));
    }
    // The run may end as soon as the event is set.
    if (isKey && isAnnounced) Announce();
    SetEvent(requested);
    // The system ends the process as soon as this returns: the run gets what time there is.
    if (!isKey) Sleep(INFINITE);
    return TRUE;
}

}  // namespace

void Watch(bool announces) {
    isAnnounced = announces;
    requested = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    // A program started in a group of its own ignores Ctrl+C unless it says otherwise.
    SetConsoleCtrlHandler(nullptr, FALSE);
    SetConsoleCtrlHandler(OnControl, TRUE);
}

bool WasRequested() noexcept { return requests.load(std::memory_order_relaxed) > 0; }

void WaitFor(unsigned milliseconds) {
    if (requested == nullptr || WasRequested()) {
        Sleep(WasRequested() ? 0 : milliseconds);
    } else {
        WaitForSingleObject(requested, milliseconds);
    }
}

}  // namespace vw::Interrupts
