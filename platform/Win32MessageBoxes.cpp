#include "platform/Win32MessageBoxes.h"

#include <utility>
#include <vector>

#include "platform/Desktop.h"
#include "platform/EnabledBoxOwner.h"
#include "platform/Scoped.h"
#include "platform/TextDirection.h"
#include "platform/WindowsHeader.h"

namespace vw {

namespace {

constexpr int kMostSilentBoxes = 3;
constexpr UINT kSilentBoxMilliseconds = 5000;
constexpr UINT_PTR kCloseTimer = 0x5657;
// A damaged list can make a path of a megabyte; a box that large would never come up.
constexpr std::size_t kMostUnits = 2000;

void CALLBACK CloseBox(HWND box, UINT, UINT_PTR timer, DWORD) {
    KillTimer(box, timer);
    EndDialog(box, GetDlgItem(box, IDNO) != nullptr ? IDNO : IDOK);
}

// Sets the timer on the box itself as soon as it is activated, so that it goes with the box.
LRESULT CALLBACK OnActivation(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE) {
        SetTimer(reinterpret_cast<HWND>(wParam), kCloseTimer, kSilentBoxMilliseconds, CloseBox);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

UINT StyleOf(const MessageBoxRequest& content) {
    UINT style = content.buttons == BoxButtons::YesNo ? MB_YESNO : MB_OK;
    if (content.icon == BoxIcon::Exclamation) style |= MB_ICONEXCLAMATION;
    if (content.rightToLeft) style |= MB_RIGHT | MB_RTLREADING;
    if (content.secondIsDefault) style |= MB_DEFBUTTON2;
    return style;
}

// Whether a window is one of those that a user works with, and on the screen.
bool IsWorkWindow(HWND window) {
    return IsWindowVisible(window) != 0 && IsIconic(window) == 0 &&
           (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
}

std::vector<HWND> WorkWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM found) -> BOOL {
            if (IsWorkWindow(window))
                reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

// The active window; while another program is in front, the window that lies on top.
HWND OwnerAmong(const std::vector<HWND>& windows) {
    const HWND active = GetActiveWindow();
    if (active != nullptr && IsWindowVisible(active) != 0) return active;
    return windows.empty() ? nullptr : windows.front();
}

/// Keeps every window but the owner of a box from being used while the box is shown: closing the
/// busy dialog would enable the main window under an open question.
class OthersDisabled {
  public:
    OthersDisabled(const std::vector<HWND>& windows, HWND owner) {
        for (const HWND window : windows) {
            if (window == owner || IsWindowEnabled(window) == 0) continue;
            EnableWindow(window, FALSE);
            disabled_.push_back(window);
        }
    }
    ~OthersDisabled() {
        for (const HWND window : disabled_) {
            if (IsWindow(window) != 0) EnableWindow(window, TRUE);
        }
    }
    OthersDisabled(const OthersDisabled&) = delete;
    OthersDisabled& operator=(const OthersDisabled&) = delete;

  private:
    std::vector<HWND> disabled_;
};

// The answer of a box that nobody answers.
BoxAnswer SafeAnswer(const MessageBoxRequest& content) {
    return content.buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
}

BoxAnswer ShowNow(const MessageBoxRequest& content) {
    std::wstring text = content.text.substr(0, kMostUnits);
    if (text.size() < content.text.size()) text += L"\u2026";
    text = content.rightToLeft ? MarkLines(text) : MarkReport(text);
    const std::vector<HWND> windows = WorkWindows();
    const HWND owner = OwnerAmong(windows);
    const EnabledBoxOwner enabled(owner);
    const OthersDisabled others(windows, owner);
    const int button = MessageBoxW(owner, text.c_str(), content.title.c_str(), StyleOf(content));
    switch (button) {
        case IDYES:
            return BoxAnswer::Yes;
        case IDNO:
            return BoxAnswer::No;
        default:
            return SafeAnswer(content);
    }
}

}  // namespace

Win32MessageBoxes::Win32MessageBoxes(const ProgramState& state, Echo echo)
    : state_(state), echo_(std::move(echo)) {}

BoxAnswer Win32MessageBoxes::Show(const MessageBoxRequest& content) {
    if (state_.sessionEnds) return SafeAnswer(content);
    return state_.silentRun ? Silently(content) : ShowNow(content);
}

BoxAnswer Win32MessageBoxes::Silently(const MessageBoxRequest& content) {
    echo_(content.text);
    if (shown_ < kMostSilentBoxes && DesktopIsVisible()) {
        ++shown_;
        const HHOOK hook = SetWindowsHookExW(WH_CBT, OnActivation, nullptr, GetCurrentThreadId());
        // Without the hook nothing would close the box, so it is not shown at all.
        if (hook != nullptr) {
            const ScopeExit unhook([hook] { UnhookWindowsHookEx(hook); });
            return ShowNow(content);
        }
    }
    return SafeAnswer(content);
}

}  // namespace vw
