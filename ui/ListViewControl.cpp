#include "ui/ListViewControl.h"

#include <algorithm>

#include "platform/Scoped.h"

namespace vw {

namespace {

constexpr int kTextAfterIcon = 4;
constexpr UINT kMarks = LVIS_SELECTED | LVIS_FOCUSED;

}  // namespace

bool ListViewControl::IsDetails() const noexcept {
    return (GetWindowLongW(window_, GWL_STYLE) & LVS_TYPEMASK) == LVS_REPORT;
}

HWND ListViewControl::Header() const noexcept {
    return reinterpret_cast<HWND>(SendMessageW(window_, LVM_GETHEADER, 0, 0));
}

RECT ListViewControl::RowArea(int row, LONG part) const {
    RECT area{};
    area.left = part;
    Send(LVM_GETITEMRECT, row, &area);
    return area;
}

RECT ListViewControl::CellArea(int row, int column) const {
    RECT area{};
    area.left = LVIR_LABEL;
    area.top = column;
    Send(LVM_GETSUBITEMRECT, row, &area);
    area.left += Scaled(column == 0 ? kTextAfterIcon : kCellMargin, dpi_);
    area.right -= Scaled(kCellMargin, dpi_);
    area.right = std::max(area.left, area.right);
    return area;
}

std::pair<int, int> ListViewControl::CellAt(POINT place) const {
    LVHITTESTINFO hit{};
    hit.pt = place;
    if (Send(LVM_SUBITEMHITTEST, 0, &hit) < 0) return {-1, -1};
    return {hit.iItem, hit.iSubItem};
}

// A message for each row would take longer than all else that the row needs.
void ListViewControl::ShowCount(int count) {
    if (shownCount_ == count) return;
    // The first row takes the place of the text about the empty list, and the other way round.
    if (shownCount_ == 0 || count == 0) Repaint();
    shownCount_ = count;
    Send(LVM_SETITEMCOUNT, count, LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
}

void ListViewControl::SetRedraw(bool on) {
    isPaused_ = !on;
    Send(WM_SETREDRAW, on ? TRUE : FALSE);
}

// The control repaints less of a row than is drawn here when its state changes.
void ListViewControl::RepaintRow(int row) const {
    if (isPaused_ || row < 0 || row >= shownCount_) return;
    RECT area = RowArea(row, LVIR_BOUNDS);
    RECT all{};
    GetClientRect(window_, &all);
    area.left = all.left;
    area.right = all.right;
    InvalidateRect(window_, &area, FALSE);
}

void ListViewControl::SetMarks(int selected, int focused) {
    const ScopedFlag setting(isSettingMarks_);
    const auto setState = [this](int row, UINT state) {
        LVITEMW item{};
        item.stateMask = kMarks;
        item.state = state;
        Send(LVM_SETITEMSTATE, row, &item);
    };
    setState(-1, 0);  // all rows
    if (selected >= 0) setState(selected, selected == focused ? kMarks : LVIS_SELECTED);
    if (focused >= 0 && focused != selected) setState(focused, LVIS_FOCUSED);
}

}  // namespace vw
