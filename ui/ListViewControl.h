#pragma once

#include <utility>

#include "platform/WindowsHeader.h"
#include "ui/Layout.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>

namespace vw {

/// Between the text of a cell and the edge of its column, at 96 DPI.
inline constexpr int kCellMargin = 6;

/// The window of a list view: its messages, its marks of rows, and where it shows what.
class ListViewControl {
  public:
    explicit ListViewControl(HWND window) noexcept : window_(window) {}

    /// Null when the window is gone.
    [[nodiscard]] HWND Handle() const noexcept { return window_; }
    void Forget() noexcept { window_ = nullptr; }

    [[nodiscard]] int Dpi() const noexcept { return dpi_; }
    void SetDpi(int dpi) noexcept { dpi_ = dpi; }

    int Send(UINT message, int index = 0, LPARAM value = 0) const {
        return static_cast<int>(SendMessageW(window_, message, static_cast<WPARAM>(index), value));
    }
    template <class Data>
    int Send(UINT message, int index, Data* data) const {
        return Send(message, index, reinterpret_cast<LPARAM>(data));
    }

    [[nodiscard]] bool IsDetails() const noexcept;
    [[nodiscard]] HWND Header() const noexcept;
    /// The area of a row; `part` is one of LVIR_...
    [[nodiscard]] RECT RowArea(int row, LONG part) const;
    /// The area for the text of a cell: the column less the margins at both sides.
    [[nodiscard]] RECT CellArea(int row, int column) const;
    /// Row and column at a place; -1 where there is none.
    [[nodiscard]] std::pair<int, int> CellAt(POINT place) const;

    /// Gives the control the number of its rows, unless it has it.
    void ShowCount(int count);
    void SetRedraw(bool on);
    [[nodiscard]] bool IsPaused() const noexcept { return isPaused_; }
    void Repaint() const noexcept { InvalidateRect(window_, nullptr, TRUE); }
    void RepaintRow(int row) const;

    /// Moves the marks of selection and focus to these rows; -1 for none.
    void SetMarks(int selected, int focused);
    /// Whether the control reports a change that SetMarks makes.
    [[nodiscard]] bool IsSettingMarks() const noexcept { return isSettingMarks_; }

  private:
    HWND window_;
    int dpi_ = kDesignDpi;
    int shownCount_ = 0;     ///< the number of rows that the control was given
    bool isPaused_ = false;  ///< redrawing is off
    bool isSettingMarks_ = false;
};

}  // namespace vw
