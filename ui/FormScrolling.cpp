#include "ui/Form.h"
#include "ui/ScrollBar.h"

// How the user changes the number of a scroll bar.

namespace vw {

void Form::OnScroll(HWND bar, WPARAM request) {
    const Part* part = FindByWindow(bar);
    if (part == nullptr || part->data->kind != ControlKind::ScrollBar) return;
    SetValue(part->data->name, ScrollBar::PositionFor(bar, request));
}

// Touchpads report a notch in many small steps. A lower number of copies deletes copies, so it
// takes a whole notch with the pointer over the number.
void Form::OnWheel(int delta, POINT pointer) {
    const Part* bar = nullptr;
    for (const Part& part : parts_) {
        if (part.data->kind != ControlKind::ScrollBar) continue;
        const Part* label = part.data->wheelLabel.empty() ? nullptr : Find(part.data->wheelLabel);
        for (const Part* under : {&part, label}) {
            RECT area{};
            if (under != nullptr && GetWindowRect(under->window, &area) != 0 &&
                PtInRect(&area, pointer) != 0) {
                bar = &part;
            }
        }
    }
    if (bar == nullptr || delta == 0) {
        if (bar == nullptr) wheelRest_ = 0;
        return;
    }
    // Turning back begins a new notch.
    if (wheelRest_ != 0 && (wheelRest_ > 0) != (delta > 0)) wheelRest_ = 0;
    wheelRest_ += delta;
    const HWND window = bar->window;
    for (; wheelRest_ >= WHEEL_DELTA; wheelRest_ -= WHEEL_DELTA) OnScroll(window, SB_LINEUP);
    for (; wheelRest_ <= -WHEEL_DELTA; wheelRest_ += WHEEL_DELTA) OnScroll(window, SB_LINEDOWN);
}

}  // namespace vw
