#include "ui/ToolBarKeys.h"

#include "ui/Subclass.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>

namespace vw {

namespace {

int CountOf(HWND bar) noexcept { return static_cast<int>(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0)); }

TBBUTTON ButtonAt(HWND bar, int position) noexcept {
    TBBUTTON button{};
    SendMessageW(bar, TB_GETBUTTON, static_cast<WPARAM>(position),
                 reinterpret_cast<LPARAM>(&button));
    return button;
}

bool MayBePressed(HWND bar, int position) noexcept {
    const TBBUTTON button = ButtonAt(bar, position);
    return (button.fsStyle & BTNS_SEP) == 0 && (button.fsState & TBSTATE_ENABLED) != 0 &&
           (button.fsState & TBSTATE_HIDDEN) == 0;
}

bool IsMirrored(HWND window) noexcept {
    return (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
}

}  // namespace

ToolBarKeys::ToolBarKeys(HWND bar) : bar_(bar) { Subclass(bar_, OnControlMessage, this); }

ToolBarKeys::~ToolBarKeys() {
    if (bar_ != nullptr) Unsubclass(bar_);
}

// The first button from a position on that may be pressed, in the direction of the step.
void ToolBarKeys::Mark(int from, int step) {
    const int count = CountOf(bar_);
    for (int position = from; position >= 0 && position < count; position += step) {
        if (!MayBePressed(bar_, position)) continue;
        marked_ = position;
        SendMessageW(bar_, TB_SETHOTITEM, static_cast<WPARAM>(position), 0);
        return;
    }
}

// The command may unload the form, and this object with it.
void ToolBarKeys::Press() {
    const auto hot = static_cast<int>(SendMessageW(bar_, TB_GETHOTITEM, 0, 0));
    if (hot < 0 || !MayBePressed(bar_, hot)) return;
    SendMessageW(GetParent(bar_), WM_COMMAND, MAKEWPARAM(ButtonAt(bar_, hot).idCommand, BN_CLICKED),
                 reinterpret_cast<LPARAM>(bar_));
}

bool ToolBarKeys::OnKey(WPARAM key) {
    const int forward = IsMirrored(bar_) ? -1 : 1;
    switch (key) {
        case VK_LEFT:
            Mark(marked_ - forward, -forward);
            return true;
        case VK_RIGHT:
            Mark(marked_ + forward, forward);
            return true;
        case VK_HOME:
            Mark(0, 1);
            return true;
        case VK_END:
            Mark(CountOf(bar_) - 1, -1);
            return true;
        case VK_RETURN:
        case VK_SPACE:
            Press();
            return true;
        default:
            return false;
    }
}

LRESULT ToolBarKeys::OnControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      void* data) {
    auto* self = static_cast<ToolBarKeys*>(data);
    switch (message) {
        case WM_GETDLGCODE: {
            const auto* key = reinterpret_cast<const MSG*>(lParam);
            const bool enter = key != nullptr && key->wParam == VK_RETURN;
            return DLGC_WANTARROWS | (enter ? DLGC_WANTMESSAGE : 0);
        }
        case WM_KEYDOWN:
            if (self->OnKey(wParam)) return 0;
            break;
        case WM_SETFOCUS: {
            const LRESULT result = CallControl(window, message, wParam, lParam);
            self->Mark(self->marked_ < 0 ? 0 : self->marked_, 1);
            return result;
        }
        case WM_KILLFOCUS:
            SendMessageW(window, TB_SETHOTITEM, static_cast<WPARAM>(-1), 0);
            break;
        case WM_NCDESTROY:
            self->bar_ = nullptr;
            break;
        default:
            break;
    }
    return CallControl(window, message, wParam, lParam);
}

}  // namespace vw
