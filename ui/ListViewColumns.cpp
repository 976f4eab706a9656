#include "ui/ListViewColumns.h"

#include <algorithm>
#include <functional>

#include "ui/ColumnWidths.h"
#include "ui/Painting.h"

namespace vw {

namespace {

constexpr int kIconAndGaps = 26;
constexpr int kSortMark = 26;
constexpr int kNarrowestColumn = 40;
constexpr int kNarrowestFirstColumn = 84;  // an icon, a label and the mark of the direction
constexpr int kNarrowestPath = 72;
constexpr int kReadablePath = 140;  // a folder and the most part of a name
constexpr int kNarrowestName = 120;
constexpr int kWidestColumn = 420;

}  // namespace

ListViewColumns::ListViewColumns(const ListViewControl& control, const ListViewRows& rows,
                                 const ControlData& data, Language language)
    : control_(control),
      rows_(rows),
      data_(data),
      language_(language),
      userWidths_(data.columns.size()) {
    int position = 0;
    for (const ColumnData& column : data.columns) {
        std::wstring header(column.header.In(language));
        LVCOLUMNW info{};
        info.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH | LVCF_SUBITEM;
        info.fmt = EndsAtFarSide(column.kind, language) ? LVCFMT_RIGHT : LVCFMT_LEFT;
        info.cx = column.width;
        info.iSubItem = position;
        info.pszText = header.data();
        control_.Send(LVM_INSERTCOLUMNW, position++, &info);
    }
}

// Widths that the user chose stay; the others share what is left. A list without a size is fitted
// when it has one.
void ListViewColumns::Fit() {
    const int room = Room();
    if (room <= 0) return;
    const ColumnMeasures widths{MeasureIn(control_.Handle()), MeasureIn(control_.Header())};
    std::vector<ColumnNeed> needs;
    for (std::size_t column = 0; column < data_.columns.size(); ++column) {
        ColumnNeed need{.ideal = WidthOf(column, widths), .mayHide = data_.columns[column].mayHide};
        if (userWidths_[column] > 0) {
            need.ideal = Scaled(userWidths_[column], control_.Dpi());
        } else if (data_.columns[column].kind == ColumnKind::Path) {
            need.least = Scaled(kNarrowestPath, control_.Dpi());
            need.readable = Scaled(kReadablePath, control_.Dpi());
            need.shrinks = Shrinks::First;
        } else if (column == 0) {
            need.least = Scaled(kNarrowestName, control_.Dpi());
            need.shrinks = Shrinks::Last;
        }
        needs.push_back(need);
    }
    bool changed = false;
    int column = 0;
    for (const int width : FittedWidths(needs, room)) {
        if (control_.Send(LVM_GETCOLUMNWIDTH, column) != width) {
            control_.Send(LVM_SETCOLUMNWIDTH, column, MAKELPARAM(width, 0));
            changed = true;
        }
        ++column;
    }
    // The control moves what it has painted to the new places, but paths are shortened anew.
    if (changed) control_.Repaint();
}

// The scroll bar that a wider column brings changes the size in the middle of a drag.
void ListViewColumns::FitToSize() {
    if (!isDragged_) Fit();
}

// What the columns have, beside the scroll bar that the rows need.
int ListViewColumns::Room() const {
    RECT area{};
    GetClientRect(control_.Handle(), &area);
    const int bar = GetSystemMetricsForDpi(SM_CXVSCROLL, static_cast<UINT>(control_.Dpi()));
    const bool hasBar = (GetWindowLongW(control_.Handle(), GWL_STYLE) & WS_VSCROLL) != 0;
    const bool needsBar = rows_.Count() > control_.Send(LVM_GETCOUNTPERPAGE);
    return static_cast<int>(area.right) + (hasBar ? bar : 0) - (needsBar ? bar : 0);
}

// Measuring every cell of a long list would take longer than filling it, so the cells with the most
// letters stand for the others.
int ListViewColumns::WidthOf(std::size_t column, const ColumnMeasures& widths) const {
    constexpr std::size_t kMeasured = 12;
    std::vector<std::wstring_view> longest;
    for (int row = 0; row < rows_.Count(); ++row) {
        const std::wstring_view text = rows_.At(row).cells[column].text;
        if (longest.size() == kMeasured && text.size() <= longest.back().size()) continue;
        longest.insert(std::ranges::upper_bound(longest, text.size(), std::greater{},
                                                &std::wstring_view::size),
                       text);
        if (longest.size() > kMeasured) longest.pop_back();
    }
    const int dpi = control_.Dpi();
    const int icon = column == 0 ? Scaled(kIconAndGaps, dpi) : 0;
    int width = 0;
    for (const std::wstring_view text : longest) width = std::max(width, widths.cells(text) + icon);
    // The header may have another font, and the mark of the direction takes some room beside its
    // text.
    const std::wstring_view header = data_.columns[column].header.In(language_);
    width = std::max(width, widths.header(header) + Scaled(kSortMark, dpi));
    width += 2 * Scaled(kCellMargin, dpi) + 1;
    const int narrowest = column == 0 ? kNarrowestFirstColumn : kNarrowestColumn;
    const int least = rows_.Count() == 0 ? data_.columns[column].width : narrowest;
    return std::clamp(width, Scaled(least, dpi), Scaled(kWidestColumn, dpi));
}

void ListViewColumns::MarkSorted(int column, bool ascending) {
    isSortMarked_ = column >= 0;
    const HWND header = control_.Header();
    const auto count = static_cast<int>(data_.columns.size());
    for (int i = 0; i < count; ++i) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        const int before = item.fmt;
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == column) item.fmt |= ascending ? HDF_SORTUP : HDF_SORTDOWN;
        if (item.fmt == before) continue;
        SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
}

// Called with each row that is added, so it has to cost nothing when there is no mark.
void ListViewColumns::ClearSortMark() {
    if (isSortMarked_) MarkSorted(-1, true);
}

void ListViewColumns::OnHeaderNotify(const NMHEADERW& header) {
    const bool isDragEnd = header.hdr.code == HDN_ENDTRACKW;
    isDragged_ = header.hdr.code == HDN_BEGINTRACKW || (isDragged_ && !isDragEnd);
    if (!isDragEnd && header.hdr.code != HDN_DIVIDERDBLCLICKW) return;
    const auto column = static_cast<std::size_t>(header.iItem);
    if (column >= userWidths_.size()) return;
    if (isDragEnd && (header.pitem == nullptr || (header.pitem->mask & HDI_WIDTH) == 0)) return;
    const int pixels =
        isDragEnd ? header.pitem->cxy : control_.Send(LVM_GETCOLUMNWIDTH, header.iItem);
    userWidths_[column] = std::max(1, MulDiv(pixels, kDesignDpi, control_.Dpi()));
}

bool ListViewColumns::OnKeyDown(WPARAM key) const {
    const auto column = static_cast<std::size_t>(key) - L'1';
    if (key < L'1' || column >= data_.columns.size() || GetKeyState(VK_CONTROL) >= 0) return false;
    NMLISTVIEW click{};
    click.hdr = {control_.Handle(), static_cast<UINT_PTR>(data_.id),
                 static_cast<UINT>(LVN_COLUMNCLICK)};
    click.iItem = -1;
    click.iSubItem = static_cast<int>(column);
    SendMessageW(GetParent(control_.Handle()), WM_NOTIFY, click.hdr.idFrom,
                 reinterpret_cast<LPARAM>(&click));
    return true;
}

}  // namespace vw
