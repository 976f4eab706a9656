#pragma once

#include <string>
#include <utility>

#include "ui/ListViewControl.h"
#include "ui/ListViewRows.h"

namespace vw {

class AccessibleNames;

/// What a list view says beyond its cells: texts that have no room, and the warnings of rows.
class ListViewTips {
  public:
    ListViewTips(const ListViewControl& control, const ListViewRows& rows) noexcept
        : control_(control), rows_(rows) {}

    /// Uses these, which may be none, for what screen readers say.
    void Attach(AccessibleNames* names) noexcept { names_ = names; }

    /// Relays the messages of the mouse to these tips, and hides the tip of a cell that it leaves.
    void RelayTo(HWND tips) noexcept { tips_ = tips; }

    /// Call before those are gone.
    void Detach() noexcept {
        names_ = nullptr;
        tips_ = nullptr;
    }

    /// The tool tip for a place of the control: the whole text of a cell that has no room for it,
    /// and the warning of its row. Empty when there is nothing to add to what is seen.
    [[nodiscard]] std::wstring TipAt(POINT place) const;

    /// Describes the rows to screen readers by their warnings.
    void DescribeRows();

    /// Call before the control handles a message.
    void OnControlMessage(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    [[nodiscard]] bool IsShortened(int row, int column) const;

    const ListViewControl& control_;
    const ListViewRows& rows_;
    AccessibleNames* names_ = nullptr;
    HWND tips_ = nullptr;
    std::pair<int, int> mouseAt_{-1, -1};  ///< row and column below the mouse
    bool hasDescriptions_ = false;
};

}  // namespace vw
