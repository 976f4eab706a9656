#include <algorithm>

#include "ui/ColumnWidths.h"
#include "ui/Gdi.h"
#include "ui/ListView.h"
#include "ui/Painting.h"

// How wide the columns of a list view are.

namespace vw {

namespace {

constexpr int kCellMargin = 6;
constexpr int kIconAndGaps = 26;
constexpr int kSortMark = 26;
constexpr int kNarrowestColumn = 40;
constexpr int kNarrowestFirstColumn = 84;  // an icon, a label and the mark of the direction
constexpr int kNarrowestPath = 72;
constexpr int kReadablePath = 140;  // a folder and the most part of a name
constexpr int kNarrowestName = 120;
constexpr int kWidestColumn = 420;

}  // namespace

// Widths that the user chose stay; the others share what is left.
void ListView::FitColumns() {
    std::vector<ColumnNeed> needs;
    for (std::size_t column = 0; column < data_.columns.size(); ++column) {
        ColumnNeed need{.ideal = WidthOf(column), .mayHide = data_.columns[column].mayHide};
        if (column < userWidths_.size() && userWidths_[column] > 0) {
            need.ideal = Scaled(userWidths_[column], dpi_);
        } else if (data_.columns[column].kind == ColumnKind::Path) {
            need.least = Scaled(kNarrowestPath, dpi_);
            need.readable = Scaled(kReadablePath, dpi_);
            need.shrinks = Shrinks::First;
        } else if (column == 0) {
            need.least = Scaled(kNarrowestName, dpi_);
            need.shrinks = Shrinks::Last;
        }
        needs.push_back(need);
    }
    const std::vector<int> widths = FittedWidths(needs, Room());
    bool changed = false;
    for (std::size_t column = 0; column < widths.size(); ++column) {
        if (SendMessageW(control_, LVM_GETCOLUMNWIDTH, column, 0) == widths[column]) continue;
        SendMessageW(control_, LVM_SETCOLUMNWIDTH, column, MAKELPARAM(widths[column], 0));
        changed = true;
    }
    // The control moves what it has painted to the new places, but paths are shortened anew.
    if (changed) InvalidateRect(control_, nullptr, TRUE);
}

// What the columns have, beside the scroll bar that the rows need.
int ListView::Room() const {
    RECT area{};
    GetClientRect(control_, &area);
    const int bar = GetSystemMetricsForDpi(SM_CXVSCROLL, static_cast<UINT>(dpi_));
    const bool hasBar = (GetWindowLongW(control_, GWL_STYLE) & WS_VSCROLL) != 0;
    const bool needsBar =
        Count() > static_cast<int>(SendMessageW(control_, LVM_GETCOUNTPERPAGE, 0, 0));
    return static_cast<int>(area.right) + (hasBar ? bar : 0) - (needsBar ? bar : 0);
}

void ListView::KeepUserWidth(int column, int pixels) {
    const auto position = static_cast<std::size_t>(column);
    if (position >= data_.columns.size()) return;
    userWidths_.resize(data_.columns.size());
    userWidths_[position] = std::max(1, MulDiv(pixels, kDesignDpi, dpi_));
}

// Measuring every cell of a long list would take longer than filling it, so the cells with the most
// letters stand for the others.
int ListView::WidthOf(std::size_t column) const {
    constexpr std::size_t kMeasured = 12;
    std::vector<const std::wstring*> longest;
    for (const auto& row : rows_) {
        const std::wstring& text = row->cells[column].text;
        if (longest.size() == kMeasured && text.size() <= longest.back()->size()) continue;
        const auto place = std::find_if(longest.begin(), longest.end(), [&](const auto* other) {
            return other->size() < text.size();
        });
        longest.insert(place, &text);
        if (longest.size() > kMeasured) longest.pop_back();
    }
    const WindowDc dc(control_);
    const SavedDc saved(dc.Get());
    SelectFontOf(control_, dc.Get());
    const Measure widthOf = MeasureIn(dc.Get());
    const int icon = column == 0 ? Scaled(kIconAndGaps, dpi_) : 0;
    int width = 0;
    for (const std::wstring* text : longest) width = std::max(width, widthOf(*text) + icon);
    // The header may have another font, and the mark of the direction takes some room beside its
    // text.
    const auto header = reinterpret_cast<HWND>(SendMessageW(control_, LVM_GETHEADER, 0, 0));
    SelectFontOf(header, dc.Get());
    width = std::max(width,
                     widthOf(data_.columns[column].header.In(language_)) + Scaled(kSortMark, dpi_));
    width += 2 * Scaled(kCellMargin, dpi_) + 1;
    const int narrowest = column == 0 ? kNarrowestFirstColumn : kNarrowestColumn;
    const int least = rows_.empty() ? data_.columns[column].width : narrowest;
    return std::clamp(width, Scaled(least, dpi_), Scaled(kWidestColumn, dpi_));
}

}  // namespace vw
