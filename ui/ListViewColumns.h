#pragma once

#include <vector>

#include "ui/DisplayText.h"
#include "ui/FormData.h"
#include "ui/ListViewControl.h"
#include "ui/ListViewRows.h"

namespace vw {

/// The columns of a list view: their widths, and the mark of the direction in their header.
class ListViewColumns {
  public:
    /// Adds the columns of `data` to the control.
    ListViewColumns(const ListViewControl& control, const ListViewRows& rows,
                    const ControlData& data, Language language);

    /// Makes the columns as wide as what they hold. Where the list is too narrow for that, columns
    /// of paths give way, then that of the names. Widths that the user chose stay.
    void Fit();

    /// Call when the list has another size.
    void FitToSize();

    /// Shows the direction in the header of a column.
    void MarkSorted(int column, bool ascending);
    /// Takes the mark of the direction off the header.
    void ClearSortMark();

    /// Call after the control has handled a notification of its header.
    void OnHeaderNotify(const NMHEADERW& header);

    /// The header takes no keyboard: Ctrl and the number of a column replace a click on it. Whether
    /// it was such a key.
    [[nodiscard]] bool OnKeyDown(WPARAM key) const;

  private:
    struct ColumnMeasures {
        Measure cells;
        Measure header;
    };

    [[nodiscard]] int WidthOf(std::size_t column, const ColumnMeasures& widths) const;
    [[nodiscard]] int Room() const;

    const ListViewControl& control_;
    const ListViewRows& rows_;
    const ControlData& data_;
    Language language_;
    std::vector<int> userWidths_;  ///< at 96 DPI; 0: not chosen by the user
    bool isDragged_ = false;
    bool isSortMarked_ = false;
};

}  // namespace vw
