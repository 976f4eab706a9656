#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "ui/ListViewColumns.h"
#include "ui/ListViewControl.h"
#include "ui/ListViewPainter.h"
#include "ui/ListViewRows.h"
#include "ui/ListViewTips.h"

namespace vw {

/// How a list view shows its rows, in the order of the View menu.
enum class ViewStyle { LargeIcons, SmallIcons, List, Details };

/// How icons are put in order, in the order of the View menu.
enum class ViewArrange { None, Left, Top };

/// A list view with its rows. The control asks for those that it shows, so that a row costs nothing
/// before it is seen and what is read back is exactly what was put in.
class ListView {
  public:
    /// Takes over a control that was made for this data. Must outlive it or be notified of its end.
    ListView(HWND control, const ControlData& data, Language language);
    ~ListView();
    ListView(const ListView&) = delete;
    ListView& operator=(const ListView&) = delete;

    [[nodiscard]] HWND Handle() const noexcept { return control_.Handle(); }
    [[nodiscard]] const ListViewRows& Rows() const noexcept { return rows_; }
    [[nodiscard]] ListViewColumns& Columns() noexcept { return columns_; }
    [[nodiscard]] ListViewTips& Tips() noexcept { return tips_; }

    /// Adds a row at the end and gives its number. The tag is the caller's own number, which stays
    /// with the row however the rows are sorted.
    int Add(std::wstring_view text, RowIcon icon, std::size_t tag = 0);
    void Remove(int row);
    void Clear();

    /// Sets the text of a row in a column, and the value that the column is sorted by.
    void SetSubItem(int row, std::wstring_view key, std::wstring_view text,
                    std::optional<ListViewRows::Value> value = std::nullopt);

    /// Sets the warning of each row, in the order of the rows; empty texts are none.
    /// A row with a warning carries a sign. Its tool tip says why, and so does a screen reader.
    void ShowWarnings(const std::vector<std::wstring>& warnings);

    /// Sorts once, by value where both rows have one and by `compare` otherwise. Equal rows keep
    /// their order, the selected row stays selected, and the header shows the direction.
    void Sort(std::wstring_view key, bool ascending, const ListViewRows::Compare& compare);

    /// The selected row, -1 when there is none.
    [[nodiscard]] int Selected() const noexcept;
    /// Selects a row and gives it the focus mark; -1 selects none. Throws no event.
    void Select(int row);
    void EnsureVisible(int row);

    /// While redrawing is off, rows come in without being painted. When it is switched on again the
    /// columns get as wide as what they hold.
    void SetRedraw(bool on);

    [[nodiscard]] ViewStyle Style() const noexcept;
    void SetStyle(ViewStyle style);
    void SetArrange(ViewArrange arrange);

    /// The pictures, font and widths for another resolution of the screen. Pictures and font stay
    /// the caller's, and have to live until they are replaced.
    void SetPictures(RowPictures& pictures, HFONT font, int dpi);

    /// Handles a notification of the control; the answer, or nothing where it is none of the list's
    /// own affairs. A change of the selection that is the program's own doing is its own affair.
    std::optional<LRESULT> OnNotify(NMHDR& header);

  private:
    static LRESULT OnControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    void* data);

    ListViewControl control_;
    ListViewRows rows_;
    ListViewColumns columns_;
    ListViewPainter painter_;
    ListViewTips tips_;
    WPARAM keyDown_ = 0;  ///< pressed in the list and not released yet
};

/// Keeps a list from being painted while many rows come or go.
class RedrawPause {
  public:
    explicit RedrawPause(ListView& list) : list_(list) { list_.SetRedraw(false); }
    ~RedrawPause() { list_.SetRedraw(true); }
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;

  private:
    ListView& list_;
};

}  // namespace vw
