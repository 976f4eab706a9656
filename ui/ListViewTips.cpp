#include "ui/AccessibleNames.h"
#include "ui/DisplayText.h"
#include "ui/Gdi.h"
#include "ui/ListView.h"
#include "ui/Painting.h"

// What a list view says beyond its cells: warnings, and texts that have no room.

namespace vw {

void ListView::Attach(AccessibleNames* names, HWND tips) noexcept {
    names_ = names;
    tips_ = tips;
}

void ListView::ShowWarnings(const std::vector<std::wstring>& warnings) {
    bool changed = false;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const std::wstring& text = row < warnings.size() ? warnings[row] : std::wstring();
        if (rows_[row]->warning == text) continue;
        rows_[row]->warning = text;
        RepaintRow(static_cast<int>(row));
        changed = true;
    }
    if (changed) SpeakWarnings();
}

std::wstring ListView::WarningOf(int row) const {
    const Row* found = RowAt(row);
    return found == nullptr ? std::wstring() : found->warning;
}

// Descriptions belong to positions, and rows change theirs.
void ListView::SpeakWarnings() {
    if (names_ == nullptr) return;
    bool any = false;
    for (const auto& row : rows_) any = any || !row->warning.empty();
    if (!any && !speaks_) return;
    speaks_ = any;
    int position = 0;
    for (const auto& row : rows_) names_->Describe(control_, position++, row->warning);
    names_->Describe(control_, position, {});
}

std::pair<int, int> ListView::CellAt(POINT place) const {
    LVHITTESTINFO hit{};
    hit.pt = place;
    if (SendMessageW(control_, LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit)) < 0) {
        return {-1, -1};
    }
    return {hit.iItem, hit.iSubItem};
}

bool ListView::IsShortened(int row, int column) const {
    const std::wstring& text =
        rows_[static_cast<std::size_t>(row)]->cells[static_cast<std::size_t>(column)].text;
    const RECT cell = CellArea(row, column);
    const WindowDc dc(control_);
    const SavedDc saved(dc.Get());
    SelectFontOf(control_, dc.Get());
    return MeasureIn(dc.Get())(text) > cell.right - cell.left;
}

std::wstring ListView::TipAt(POINT place) const {
    const auto [row, column] = CellAt(place);
    const Row* found = RowAt(row);
    if (found == nullptr || column < 0 || column >= static_cast<int>(found->cells.size()))
        return {};
    std::wstring tip;
    if (Style() != ViewStyle::Details || IsShortened(row, column)) {
        tip = found->cells[static_cast<std::size_t>(column)].text;
    }
    if (found->warning.empty()) return tip;
    return tip.empty() ? found->warning : tip + L"\r\n" + found->warning;
}

// Tool tips that watch a window look their data up by name with each of its messages.
void ListView::RelayToTips(UINT message, WPARAM wParam, LPARAM lParam) const {
    if (tips_ == nullptr || message < WM_MOUSEFIRST || message > WM_MOUSELAST) return;
    MSG relayed{};
    relayed.hwnd = control_;
    relayed.message = message;
    relayed.wParam = wParam;
    relayed.lParam = lParam;
    SendMessageW(tips_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
}

void ListView::FollowMouse(POINT place) {
    const auto cell = CellAt(place);
    if (cell == mouseAt_) return;
    mouseAt_ = cell;
    if (tips_ != nullptr) SendMessageW(tips_, TTM_POP, 0, 0);
}

// The control repaints less of a row than is drawn here when its state changes.
void ListView::RepaintRow(int row) const {
    if (isPaused_ || row < 0 || row >= shownCount_) return;
    RECT area = RowArea(row, LVIR_BOUNDS);
    RECT all{};
    GetClientRect(control_, &all);
    area.left = all.left;
    area.right = all.right;
    InvalidateRect(control_, &area, FALSE);
}

}  // namespace vw
