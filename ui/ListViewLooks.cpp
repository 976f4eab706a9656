#include <algorithm>
#include <array>

#include "ui/DisplayText.h"
#include "ui/ListView.h"
#include "ui/PrivateMessages.h"

// How a list view looks and what it tells its form.

namespace vw {

namespace {

constexpr int kCellPadding = 14;
constexpr int kNarrowestColumn = 56;
constexpr int kWidestColumn = 420;
constexpr int kEmptyTextMargin = 24;

}  // namespace

ViewStyle ListView::Style() const noexcept {
    switch (GetWindowLongW(control_, GWL_STYLE) & LVS_TYPEMASK) {
        case LVS_ICON:
            return ViewStyle::LargeIcons;
        case LVS_SMALLICON:
            return ViewStyle::SmallIcons;
        case LVS_LIST:
            return ViewStyle::List;
        default:
            return ViewStyle::Details;
    }
}

void ListView::SetStyle(ViewStyle style) {
    constexpr std::array kTypes{LVS_ICON, LVS_SMALLICON, LVS_LIST, LVS_REPORT};
    const LONG rest = GetWindowLongW(control_, GWL_STYLE) & ~LVS_TYPEMASK;
    SetWindowLongW(control_, GWL_STYLE, rest | kTypes[static_cast<std::size_t>(style)]);
    InvalidateRect(control_, nullptr, TRUE);
}

void ListView::SetArrange(ViewArrange arrange) {
    LONG style = GetWindowLongW(control_, GWL_STYLE) & ~(LVS_ALIGNMASK | LVS_AUTOARRANGE);
    if (arrange == ViewArrange::Left) style |= LVS_ALIGNLEFT | LVS_AUTOARRANGE;
    if (arrange == ViewArrange::Top) style |= LVS_ALIGNTOP | LVS_AUTOARRANGE;
    SetWindowLongW(control_, GWL_STYLE, style);
    if (arrange != ViewArrange::None) SendMessageW(control_, LVM_ARRANGE, LVA_DEFAULT, 0);
}

void ListView::SetPictures(HIMAGELIST small, HIMAGELIST large, HFONT font, int dpi) {
    dpi_ = dpi;
    SendMessageW(control_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    SendMessageW(control_, LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(small));
    SendMessageW(control_, LVM_SETIMAGELIST, LVSIL_NORMAL, reinterpret_cast<LPARAM>(large));
    FitColumns();
}

void ListView::FitColumns() {
    for (std::size_t column = 0; column < data_.columns.size(); ++column) {
        SendMessageW(control_, LVM_SETCOLUMNWIDTH, column, MAKELPARAM(WidthOf(column), 0));
    }
}

// Measuring every cell of a long list would take longer than filling it, so the cells with the most
// letters stand for the others.
int ListView::WidthOf(std::size_t column) const {
    if (rows_.empty()) return Scaled(data_.columns[column].width, dpi_);
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
    const auto widthOf = [this](const std::wstring& text) {
        return static_cast<int>(
            SendMessageW(control_, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text.c_str())));
    };
    const std::wstring header(data_.columns[column].header.In(language_));
    // The mark of the direction takes some room beside the header's text.
    int width = widthOf(header) + Scaled(kCellPadding, dpi_);
    for (const std::wstring* text : longest) width = std::max(width, widthOf(*text));
    width += Scaled(kCellPadding, dpi_);
    if (column == 0) width += GetSystemMetrics(SM_CXSMICON) * dpi_ / kDesignDpi;
    return std::clamp(width, Scaled(kNarrowestColumn, dpi_), Scaled(kWidestColumn, dpi_));
}

void ListView::MarkSortColumn(int column, bool ascending) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(control_, LVM_GETHEADER, 0, 0));
    const auto count = static_cast<int>(data_.columns.size());
    for (int i = 0; i < count; ++i) {
        HDITEMW item{};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (i == column) item.fmt |= ascending ? HDF_SORTUP : HDF_SORTDOWN;
        SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
}

void ListView::ClearSortMark() { MarkSortColumn(-1, true); }

// Asked while the list is being painted, the answer is for the eye; asked by anybody else, such as
// a screen reader, it is the text itself.
void ListView::FillDisplay(NMLVDISPINFOW& info) {
    const auto* row = reinterpret_cast<const Row*>(info.item.lParam);
    const auto column = static_cast<std::size_t>(info.item.iSubItem);
    if (row == nullptr || column >= row->cells.size()) return;
    if ((info.item.mask & LVIF_IMAGE) != 0) info.item.iImage = static_cast<int>(row->icon);
    if ((info.item.mask & LVIF_TEXT) == 0) return;
    displayed_ = row->cells[column].text;
    if (painting_) {
        const bool rightToLeft = language_ == Language::Arabic;
        displayed_ = data_.columns[column].kind == ColumnKind::Path
                         ? PathForDisplay(displayed_, rightToLeft)
                         : TextForDisplay(displayed_, rightToLeft);
    }
    info.item.pszText = displayed_.data();
}

std::optional<LRESULT> ListView::OnCustomDraw(NMLVCUSTOMDRAW& draw) {
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            painting_ = true;
            return CDRF_NOTIFYPOSTPAINT;
        case CDDS_POSTPAINT:
            painting_ = false;
            if (rows_.empty()) PaintEmptyText(draw.nmcd.hdc);
            return CDRF_DODEFAULT;
        default:
            return std::nullopt;
    }
}

void ListView::PaintEmptyText(HDC canvas) const {
    const std::wstring_view text = data_.emptyText.In(language_);
    if (text.empty()) return;
    RECT area{};
    GetClientRect(control_, &area);
    const auto header = reinterpret_cast<HWND>(SendMessageW(control_, LVM_GETHEADER, 0, 0));
    if (header != nullptr && IsWindowVisible(header) != 0 && Style() == ViewStyle::Details) {
        RECT headerArea{};
        GetClientRect(header, &headerArea);
        area.top += headerArea.bottom;
    }
    InflateRect(&area, -Scaled(kEmptyTextMargin, dpi_), 0);
    const HGDIOBJ font = reinterpret_cast<HGDIOBJ>(SendMessageW(control_, WM_GETFONT, 0, 0));
    const HGDIOBJ fontBefore = SelectObject(canvas, font);
    const COLORREF colourBefore = SetTextColor(canvas, GetSysColor(COLOR_GRAYTEXT));
    const int modeBefore = SetBkMode(canvas, TRANSPARENT);
    constexpr UINT kFormat = DT_CENTER | DT_WORDBREAK | DT_NOPREFIX;
    RECT needed = area;
    const auto length = static_cast<int>(text.size());
    DrawTextW(canvas, text.data(), length, &needed, kFormat | DT_CALCRECT);
    // A third of the way down looks more like the middle than the middle does.
    const LONG height = needed.bottom - needed.top;
    area.top += std::max(0L, (area.bottom - area.top - height) / 3);
    DrawTextW(canvas, text.data(), length, &area, kFormat);
    SetBkMode(canvas, modeBefore);
    SetTextColor(canvas, colourBefore);
    SelectObject(canvas, fontBefore);
}

std::optional<LRESULT> ListView::OnNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            FillDisplay(reinterpret_cast<NMLVDISPINFOW&>(header));
            return 0;
        case LVN_DELETEALLITEMS:
            // One word for all of them is enough.
            rows_.clear();
            return TRUE;
        case LVN_DELETEITEM:
            Forget(reinterpret_cast<Row*>(reinterpret_cast<const NMLISTVIEW&>(header).lParam));
            if (rows_.empty()) InvalidateRect(control_, nullptr, TRUE);
            return 0;
        case NM_CUSTOMDRAW:
            return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
        default:
            return std::nullopt;
    }
}

LRESULT CALLBACK ListView::Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR id, DWORD_PTR data) {
    auto* self = reinterpret_cast<ListView*>(data);
    switch (message) {
        case LVM_INSERTITEMW:
            // The first row takes the place of the text about the empty list.
            if (self->rows_.size() == 1) InvalidateRect(window, nullptr, TRUE);
            break;
        case WM_SIZE:
            if (self->rows_.empty()) InvalidateRect(window, nullptr, TRUE);
            break;
        case WM_GETDLGCODE: {
            // Enter opens a row here; everywhere else it presses the default button.
            const auto* key = reinterpret_cast<const MSG*>(lParam);
            const LRESULT codes = DefSubclassProc(window, message, wParam, lParam);
            const bool enter = key != nullptr && key->wParam == VK_RETURN;
            return enter ? codes | DLGC_WANTMESSAGE : codes;
        }
        case WM_KEYUP:
        case WM_DROPFILES: {
            const LRESULT result =
                message == WM_KEYUP ? DefSubclassProc(window, message, wParam, lParam) : 0;
            SendMessageW(GetParent(window), message == WM_KEYUP ? kListKeyUp : kListDrop, wParam,
                         reinterpret_cast<LPARAM>(window));
            return result;
        }
        case WM_NCDESTROY:
            RemoveWindowSubclass(window, Subclass, id);
            self->control_ = nullptr;
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace vw
