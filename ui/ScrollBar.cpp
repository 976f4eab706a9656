#include "ui/ScrollBar.h"

#include <algorithm>

#include "ui/Subclass.h"

namespace vw::ScrollBar {

namespace {

SCROLLINFO Info(HWND bar) noexcept {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_POS | SIF_TRACKPOS;
    GetScrollInfo(bar, SB_CTL, &info);
    return info;
}

LRESULT PassFocusOn(HWND bar, UINT message, WPARAM wParam, LPARAM lParam, void* label) {
    const LRESULT result = CallControl(bar, message, wParam, lParam);
    if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
        InvalidateRect(static_cast<HWND>(label), nullptr, FALSE);
    }
    return result;
}

}  // namespace

int Value(HWND bar) noexcept { return -Info(bar).nPos; }

bool SetValue(HWND bar, int value, int lowest, int highest) noexcept {
    SCROLLINFO info = Info(bar);
    const bool changes = info.nPos != -value;
    info.fMask = SIF_RANGE | SIF_POS;
    info.nPos = -value;
    info.nMin = std::min(-highest, -value);
    info.nMax = std::max(-lowest, -value);
    SetScrollInfo(bar, SB_CTL, &info, TRUE);
    return changes;
}

int PositionFor(HWND bar, WPARAM request) noexcept {
    const SCROLLINFO info = Info(bar);
    int position = info.nPos;
    switch (LOWORD(request)) {
        case SB_LINEUP:
        case SB_PAGEUP:
            --position;
            break;
        case SB_LINEDOWN:
        case SB_PAGEDOWN:
            ++position;
            break;
        case SB_TOP:
            position = info.nMin;
            break;
        case SB_BOTTOM:
            position = info.nMax;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            position = info.nTrackPos;
            break;
        default:
            break;
    }
    return -std::clamp(position, info.nMin, info.nMax);
}

void RepaintWithFocus(HWND bar, HWND label) noexcept { Subclass(bar, PassFocusOn, label); }

}  // namespace vw::ScrollBar
