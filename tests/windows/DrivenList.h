#pragma once

#include <string>
#include <vector>

#include "platform/WindowsHeader.h"

namespace vw::test {

/// A list view of another process: its rows are read and chosen as a screen reader does.
class DrivenList {
  public:
    explicit DrivenList(HWND list);

    [[nodiscard]] int Count() const;
    [[nodiscard]] std::wstring Text(int row, int column) const;
    /// One column of every row.
    [[nodiscard]] std::vector<std::wstring> Column(int column) const;
    /// The selected row; -1 when there is none.
    [[nodiscard]] int Selected() const;
    [[nodiscard]] std::vector<std::wstring> Headers() const;
    /// Whether a row carries the sign of a warning.
    [[nodiscard]] bool HasWarning(int row) const;

    /// Chooses a row as the user does.
    void Select(int row) const;
    /// Clicks a row, which gives the list the keyboard too.
    void Click(int row) const;
    /// Clicks the header of a column.
    void ClickColumn(int column) const;
    /// Drops files onto it.
    void Drop(const std::vector<std::wstring>& paths) const;

  private:
    HWND list_;
};

}  // namespace vw::test
