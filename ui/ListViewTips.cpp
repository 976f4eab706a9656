#include "ui/ListViewTips.h"

#include "ui/AccessibleNames.h"
#include "ui/Painting.h"
// The extended window macros need the declarations of the window system first.
#include <windowsx.h>

namespace vw {

// Descriptions belong to positions, and rows change theirs.
void ListViewTips::DescribeRows() {
    if (names_ == nullptr) return;
    bool hasWarnings = false;
    for (int row = 0; row < rows_.Count(); ++row) hasWarnings |= !rows_.At(row).warning.empty();
    if (!std::exchange(hasDescriptions_, hasWarnings) && !hasWarnings) return;
    for (int row = 0; row <= rows_.Count(); ++row) {
        names_->Describe(control_.Handle(), row, rows_.At(row).warning);
    }
}

bool ListViewTips::IsShortened(int row, int column) const {
    const std::wstring& text = rows_.At(row).cells[static_cast<std::size_t>(column)].text;
    const RECT cell = control_.CellArea(row, column);
    return MeasureIn(control_.Handle())(text) > cell.right - cell.left;
}

std::wstring ListViewTips::TipAt(POINT place) const {
    const auto [row, column] = control_.CellAt(place);
    const auto& found = rows_.At(row);
    if (column < 0 || column >= static_cast<int>(found.cells.size())) return {};
    std::wstring tip;
    if (!control_.IsDetails() || IsShortened(row, column)) {
        tip = found.cells[static_cast<std::size_t>(column)].text;
    }
    if (found.warning.empty()) return tip;
    return tip.empty() ? found.warning : tip + L"\r\n" + found.warning;
}

// Tool tips that watch a window look their data up by name with each of its messages.
void ListViewTips::OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message < WM_MOUSEFIRST || message > WM_MOUSELAST || tips_ == nullptr) return;
    MSG relayed{};
    relayed.hwnd = control_.Handle();
    relayed.message = message;
    relayed.wParam = wParam;
    relayed.lParam = lParam;
    SendMessageW(tips_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
    if (message != WM_MOUSEMOVE) return;
    const auto cell = control_.CellAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
    if (std::exchange(mouseAt_, cell) != cell) SendMessageW(tips_, TTM_POP, 0, 0);
}

}  // namespace vw
