#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/WindowsHeader.h"
#include "ui/FormData.h"
#include "ui/Icons.h"

namespace vw {

class AccessibleNames;

/// Key of the first column, which is the row's own text.
inline constexpr std::wstring_view kNameColumn = L"Name";

/// Icons of rows, in the order of the image lists.
enum class RowIcon { File, Folder, Rule };

/// The overlay image of rows with a warning.
inline constexpr int kWarningOverlay = 1;

/// The pictures of rows for one resolution of the screen.
struct RowPictures {
    explicit RowPictures(int dpi);

    /// Those of the view with large icons, made when they are asked for first.
    [[nodiscard]] HIMAGELIST Large();

    ImageList small;
    std::array<IconHandle, 3> icons;  ///< the small ones, for rows that are drawn here
    IconHandle mark;                  ///< small, for rows with a warning
    int pixels;                       ///< of a small icon

  private:
    ImageList large_;
    int dpi_;
};

/// How a list view shows its rows, in the order of the View menu.
enum class ViewStyle { LargeIcons, SmallIcons, List, Details };

/// How icons are put in order, in the order of the View menu.
enum class ViewArrange { None, Left, Top };

/// A list view with its rows. Rows count from 0, columns have keys. The rows are kept here and the
/// control asks for those that it shows, so that a row costs nothing before it is seen and what is
/// read back is exactly what was put in. In the Details view the rows are drawn here: paths read
/// from left to right in every language and lose their middle, not their end.
class ListView {
  public:
    using Value = std::int64_t;
    using Compare = std::function<int(std::wstring_view, std::wstring_view)>;

    /// Takes over a control that was made for this data. Must outlive it or be notified of its end.
    ListView(HWND control, const ControlData& data, Language language);
    ~ListView();
    ListView(const ListView&) = delete;
    ListView& operator=(const ListView&) = delete;

    [[nodiscard]] HWND Handle() const noexcept { return control_; }
    [[nodiscard]] int Count() const noexcept;

    /// Adds a row at the end and gives its number.
    int Add(std::wstring_view text, RowIcon icon);
    void Remove(int row);
    void Clear();

    /// The text of a row in a column; empty when there is no such row. A key that the list does not
    /// have throws 5.
    [[nodiscard]] std::wstring SubItem(int row, std::wstring_view key) const;

    /// Sets it. `value` is what the column is sorted by where its text would not do: bytes, dates.
    void SetSubItem(int row, std::wstring_view key, std::wstring_view text,
                    std::optional<Value> value = std::nullopt);

    [[nodiscard]] RowIcon IconOf(int row) const noexcept;

    /// A number of the caller's own, which stays with its row however the rows are sorted; 0 at
    /// first.
    [[nodiscard]] std::size_t Tag(int row) const noexcept;
    void SetTag(int row, std::size_t tag) noexcept;

    /// Sets the warning of each row, in the order of the rows; empty texts are none.
    /// A row with a warning carries a sign. Its tool tip says why, and so does a screen reader.
    void ShowWarnings(const std::vector<std::wstring>& warnings);
    [[nodiscard]] std::wstring WarningOf(int row) const;

    /// The tool tip for a place of the control: the whole text of a cell that has no room for it,
    /// and the warning of its row. Empty when there is nothing to add to what is seen.
    [[nodiscard]] std::wstring TipAt(POINT place) const;

    /// Uses these, which may be none, for what screen readers say and for the tip that goes when
    /// the mouse leaves its cell.
    void Attach(AccessibleNames* names, HWND tips) noexcept;

    /// The first row with this text in this column, compared by code units; -1 when there is none.
    [[nodiscard]] int Find(std::wstring_view key, std::wstring_view text) const;

    /// The selected row, -1 when there is none.
    [[nodiscard]] int Selected() const noexcept;
    /// Selects a row and gives it the focus mark; -1 selects none. Throws no event.
    void Select(int row);
    void EnsureVisible(int row);

    /// While redrawing is off, rows come in without being painted. When it is switched on again the
    /// columns get as wide as what they hold.
    void SetRedraw(bool on);
    /// Makes the columns as wide as what they hold. Where the list is too narrow for that, columns
    /// of paths give way, then that of the names. Widths that the user chose stay.
    void FitColumns();

    /// Sorts once, by value where both rows have one and by `compare` otherwise. Equal rows keep
    /// their order, the selected row stays selected, and the header shows the direction.
    void Sort(std::wstring_view key, bool ascending, const Compare& compare);
    /// Takes the mark of the direction off the header.
    void ClearSortMark();

    [[nodiscard]] ViewStyle Style() const noexcept;
    void SetStyle(ViewStyle style);
    void SetArrange(ViewArrange arrange);

    /// Position of a column from its key, and back. A key that the list does not have throws 5.
    [[nodiscard]] int ColumnOf(std::wstring_view key) const;
    [[nodiscard]] std::wstring_view KeyOf(int column) const noexcept;

    /// Whether a change of the selection is the program's own doing.
    [[nodiscard]] bool IsSelecting() const noexcept { return selecting_; }

    /// The pictures, font and widths for another resolution of the screen. Pictures and font stay
    /// the caller's, and have to live until they are replaced.
    void SetPictures(RowPictures& pictures, HFONT font, int dpi);

    /// Handles a notification of the control; the answer, or nothing where it is none of the list's
    /// own affairs.
    std::optional<LRESULT> OnNotify(NMHDR& header);

  private:
    struct Cell {
        std::wstring text;
        std::optional<Value> value;
    };
    struct Row {
        RowIcon icon = RowIcon::File;
        std::size_t tag = 0;
        std::wstring warning;
        std::vector<Cell> cells;
    };

    [[nodiscard]] Row* RowAt(int row) const noexcept;
    void ShowCount();
    void SetState(int row, UINT state);
    void Answer(NMLVDISPINFOW& info);
    [[nodiscard]] int FindForKeys(const NMLVFINDITEMW& wanted) const;
    std::optional<LRESULT> OnCustomDraw(const NMLVCUSTOMDRAW& draw);
    void TakeLargePictures(ViewStyle style);
    void PaintRow(HDC dc, int row) const;
    void PaintIcon(HDC dc, const RECT& area, const Row& row) const;
    void RepaintRow(int row) const;
    void KeepRows(HDC dc) const;
    [[nodiscard]] RECT RowArea(int row, LONG part) const;
    [[nodiscard]] RECT CellArea(int row, int column) const;
    void PaintEmptyText(HDC dc) const;
    void MarkSortColumn(int column, bool ascending);
    bool SortByKey(WPARAM key) const;
    // Columns (ListViewColumns.cpp).
    [[nodiscard]] int WidthOf(std::size_t column) const;
    [[nodiscard]] int Room() const;
    void KeepUserWidth(int column, int pixels);

    // Warnings and tips (ListViewTips.cpp).
    void SpeakWarnings();
    [[nodiscard]] std::pair<int, int> CellAt(POINT place) const;
    [[nodiscard]] bool IsShortened(int row, int column) const;
    void FollowMouse(POINT place);
    void RelayToTips(UINT message, WPARAM wParam, LPARAM lParam) const;

    static LRESULT OnControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    void* data);

    HWND control_;
    const ControlData& data_;
    Language language_;
    std::vector<std::unique_ptr<Row>> rows_;  ///< in the order of the control
    int shownCount_ = 0;                      ///< the number of rows that the control was given
    bool isPaused_ = false;                   ///< redrawing is off
    std::wstring asked_;                      ///< the text that the control asked for last
    RowPictures* pictures_ = nullptr;
    int dpi_ = kDesignDpi;
    bool selecting_ = false;
    bool isSortMarked_ = false;
    AccessibleNames* names_ = nullptr;
    HWND tips_ = nullptr;
    std::pair<int, int> mouseAt_{-1, -1};  ///< row and column below the mouse
    std::vector<int> userWidths_;          ///< at 96 DPI; 0: not chosen by the user
    bool isColumnDragged_ = false;         ///< the columns are not fitted meanwhile
    bool speaks_ = false;                  ///< warnings were announced to a screen reader
    WPARAM keyDown_ = 0;                   ///< pressed in the list and not let go yet
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
