#include "ui/ScrollBar.h"

#include <algorithm>

namespace vw::ScrollBar {

namespace {

SCROLLINFO Info(HWND bar) noexcept {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_POS | SIF_TRACKPOS;
    GetScrollInfo(bar, SB_CTL, &info);
    return info;
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

int Wanted(HWND bar, WPARAM request) noexcept {
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

}  // namespace vw::ScrollBar
