#include <algorithm>
#include <array>
#include <utility>

#include "platform/TextCase.h"
#include "ui/DisplayText.h"
#include "ui/Gdi.h"
#include "ui/ListView.h"
#include "ui/Painting.h"
#include "ui/PrivateMessages.h"
#include "ui/Subclass.h"
#include "ui/resource.h"
// The extended window macros need the declarations of the window system first.
#include <windowsx.h>

// How a list view looks, and its notifications.

namespace vw {

namespace {

// The last one is the sign that lies over the others.
constexpr std::array kRowIcons{IDI_File, IDI_Folder, IDI_Rule, IDI_WarningMark};
constexpr int kSmallIcon = 16;
constexpr int kRowHeight = 22;
constexpr int kLargeIcon = 32;
constexpr int kCellMargin = 6;
constexpr int kTextAfterIcon = 4;
constexpr int kEmptyTextMargin = 24;

ImageList RowImages(int pixels, int height) {
    ImageList images = MakeImageList(kRowIcons, pixels, height);
    ImageList_SetOverlayImage(images.Get(), static_cast<int>(kRowIcons.size()) - 1,
                              kWarningOverlay);
    return images;
}

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
    TakeLargePictures(style);
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

RowPictures::RowPictures(int dpi)
    : small(RowImages(Scaled(kSmallIcon, dpi), Scaled(kRowHeight, dpi))),
      pixels(Scaled(kSmallIcon, dpi)),
      dpi_(dpi) {
    for (std::size_t i = 0; i < icons.size(); ++i) icons[i] = LoadPicture(kRowIcons[i], pixels);
    mark = LoadPicture(IDI_WarningMark, pixels);
}

HIMAGELIST RowPictures::Large() {
    const int largePixels = Scaled(kLargeIcon, dpi_);
    if (!large_) large_ = RowImages(largePixels, largePixels);
    return large_.Get();
}

// Those of another resolution are gone when they are replaced.
void ListView::TakeLargePictures(ViewStyle style) {
    const bool needsThem = pictures_ != nullptr && style == ViewStyle::LargeIcons;
    SendMessageW(control_, LVM_SETIMAGELIST, LVSIL_NORMAL,
                 reinterpret_cast<LPARAM>(needsThem ? pictures_->Large() : nullptr));
}

void ListView::SetPictures(RowPictures& pictures, HFONT font, int dpi) {
    dpi_ = dpi;
    pictures_ = &pictures;
    SendMessageW(control_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    SendMessageW(control_, LVM_SETIMAGELIST, LVSIL_SMALL,
                 reinterpret_cast<LPARAM>(pictures.small.Get()));
    TakeLargePictures(Style());
    FitColumns();
}

void ListView::MarkSortColumn(int column, bool ascending) {
    isSortMarked_ = column >= 0;
    const auto header = reinterpret_cast<HWND>(SendMessageW(control_, LVM_GETHEADER, 0, 0));
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

// The header takes no keyboard: Ctrl and the number of a column stand for a click on it. Whether it
// was such a key.
bool ListView::SortByKey(WPARAM key) const {
    const auto column = static_cast<std::size_t>(key) - L'1';
    if (key < L'1' || column >= data_.columns.size() || GetKeyState(VK_CONTROL) >= 0) return false;
    NMLISTVIEW click{};
    click.hdr = {control_, static_cast<UINT_PTR>(data_.id), static_cast<UINT>(LVN_COLUMNCLICK)};
    click.iItem = -1;
    click.iSubItem = static_cast<int>(column);
    SendMessageW(GetParent(control_), WM_NOTIFY, click.hdr.idFrom,
                 reinterpret_cast<LPARAM>(&click));
    return true;
}

// Asked for with each row that is added, so it has to cost nothing when there is no mark.
void ListView::ClearSortMark() {
    if (isSortMarked_) MarkSortColumn(-1, true);
}

void ListView::Answer(NMLVDISPINFOW& info) {
    const Row* const row = RowAt(info.item.iItem);
    const auto column = static_cast<std::size_t>(info.item.iSubItem);
    if (row == nullptr || column >= row->cells.size()) return;
    if ((info.item.mask & LVIF_IMAGE) != 0) info.item.iImage = static_cast<int>(row->icon);
    // The control draws the sign itself in the views with icons.
    if ((info.item.mask & LVIF_STATE) != 0 && !row->warning.empty()) {
        info.item.state |= INDEXTOOVERLAYMASK(kWarningOverlay);
    }
    if ((info.item.mask & LVIF_TEXT) == 0) return;
    asked_ = row->cells[column].text;
    info.item.pszText = asked_.data();
}

// The row whose name begins with the letters that the user has typed, from a row on; -1 when there
// is none.
int ListView::FindForKeys(const NMLVFINDITEMW& wanted) const {
    constexpr UINT kByText = LVFI_STRING | LVFI_PARTIAL;
    if ((wanted.lvfi.flags & kByText) == 0 || wanted.lvfi.psz == nullptr) return -1;
    const std::wstring letters = UpperCase(wanted.lvfi.psz);
    const bool isWhole = (wanted.lvfi.flags & LVFI_PARTIAL) == 0;
    for (int i = 0; i < Count(); ++i) {
        const int row = std::max(0, wanted.iStart) + i;
        if (row >= Count() && (wanted.lvfi.flags & LVFI_WRAP) == 0) return -1;
        const std::wstring name = UpperCase(RowAt(row % Count())->cells.front().text);
        if (isWhole ? name == letters : name.starts_with(letters)) return row % Count();
    }
    return -1;
}

std::optional<LRESULT> ListView::OnCustomDraw(const NMLVCUSTOMDRAW& draw) {
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            return CDRF_NOTIFYPOSTPAINT | CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT:
            if (Style() != ViewStyle::Details) return CDRF_DODEFAULT;
            PaintRow(draw.nmcd.hdc, static_cast<int>(draw.nmcd.dwItemSpec));
            return CDRF_SKIPDEFAULT;
        case CDDS_POSTPAINT:
            if (rows_.empty()) PaintEmptyText(draw.nmcd.hdc);
            return CDRF_DODEFAULT;
        default:
            return std::nullopt;
    }
}

void ListView::PaintRow(HDC dc, int row) const {
    const Row* content = RowAt(row);
    if (content == nullptr) return;
    const auto state = static_cast<UINT>(SendMessageW(
        control_, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED | LVIS_FOCUSED));
    const bool selected = (state & LVIS_SELECTED) != 0;
    const bool focused = GetFocus() == control_;
    const RowColours colours = ColoursOfRow(selected, focused);

    const SavedDc saved(dc);
    SelectFontOf(control_, dc);
    {
        const Unmirrored upright(dc);
        RECT whole = RowArea(row, LVIR_BOUNDS);
        RECT visible{};
        GetClientRect(control_, &visible);
        IntersectRect(&visible, &visible, &whole);
        whole = upright.Turned(whole);
        const Buffered buffer(dc, upright.Turned(visible));
        Fill(buffer.Canvas(), whole, colours.background);
        PaintIcon(buffer.Canvas(), upright.Turned(RowArea(row, LVIR_ICON)), *content);
        SetTextColor(buffer.Canvas(), colours.text);
        for (std::size_t column = 0; column < content->cells.size(); ++column) {
            const RECT cell = upright.Turned(CellArea(row, static_cast<int>(column)));
            PaintText(
                buffer.Canvas(), cell, content->cells[column].text,
                {.rightToLeft = language_ == Language::Arabic,
                 .side = EndsAtFarSide(data_.columns[column].kind, language_) ? TextSide::End
                                                                              : TextSide::Start,
                 .name = true,
                 .oneLine = true,
                 .shorten = true});
        }
        if ((state & LVIS_FOCUSED) != 0 && focused) DrawFocusRect(buffer.Canvas(), &whole);
    }
}

// A row paints its own background in one step with its text. Erased before, it would flicker in a
// list without a buffer.
void ListView::KeepRows(HDC dc) const {
    if (language_ != Language::Arabic || rows_.empty() || Style() != ViewStyle::Details) return;
    const auto first = static_cast<int>(SendMessageW(control_, LVM_GETTOPINDEX, 0, 0));
    const auto shown = static_cast<int>(SendMessageW(control_, LVM_GETCOUNTPERPAGE, 0, 0));
    const RECT top = RowArea(first, LVIR_BOUNDS);
    const RECT bottom = RowArea(std::min(first + shown, Count() - 1), LVIR_BOUNDS);
    ExcludeClipRect(dc, top.left, top.top, top.right, bottom.bottom);
}

RECT ListView::RowArea(int row, LONG part) const {
    RECT area{};
    area.left = part;
    SendMessageW(control_, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&area));
    return area;
}

// At the side of its area where reading begins.
void ListView::PaintIcon(HDC dc, const RECT& area, const Row& row) const {
    if (pictures_ == nullptr) return;
    const int pixels = pictures_->pixels;
    const int left = language_ == Language::Arabic ? static_cast<int>(area.right) - pixels
                                                   : static_cast<int>(area.left);
    const int top = static_cast<int>(area.top + area.bottom - pixels) / 2;
    DrawIconEx(dc, left, top, pictures_->icons[static_cast<std::size_t>(row.icon)].Get(), pixels,
               pixels, 0, nullptr, DI_NORMAL);
    if (row.warning.empty()) return;
    DrawIconEx(dc, left, top, pictures_->mark.Get(), pixels, pixels, 0, nullptr, DI_NORMAL);
}

// The area for the text of a cell: the column less the margins at both sides.
RECT ListView::CellArea(int row, int column) const {
    RECT area{};
    area.left = LVIR_LABEL;
    area.top = column;
    SendMessageW(control_, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&area));
    area.left += Scaled(column == 0 ? kTextAfterIcon : kCellMargin, dpi_);
    area.right -= Scaled(kCellMargin, dpi_);
    area.right = std::max(area.left, area.right);
    return area;
}

void ListView::PaintEmptyText(HDC dc) const {
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
    const SavedDc saved(dc);
    SelectFontOf(control_, dc);
    SetTextColor(dc, HintColour());
    const int room = static_cast<int>(area.right - area.left);
    const auto lines = static_cast<int>(Wrapped(text, room, MeasureIn(dc)).size());
    // Placed at one third of the free height: it looks better than the exact centre.
    const LONG free = area.bottom - area.top - lines * LineStep(LineHeight(dc));
    area.top += std::max(0L, free / 3);
    PaintText(dc, area, text,
              {.rightToLeft = language_ == Language::Arabic, .side = TextSide::Centre});
}

std::optional<LRESULT> ListView::OnNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            Answer(reinterpret_cast<NMLVDISPINFOW&>(header));
            return 0;
        case LVN_ODFINDITEMW:
            return FindForKeys(reinterpret_cast<const NMLVFINDITEMW&>(header));
        case LVN_ODSTATECHANGED:
            InvalidateRect(control_, nullptr, FALSE);
            return 0;
        case LVN_ITEMCHANGED: {
            // Row -1 means all rows.
            const int row = reinterpret_cast<const NMLISTVIEW&>(header).iItem;
            if (row < 0) InvalidateRect(control_, nullptr, FALSE);
            RepaintRow(row);
            return std::nullopt;
        }
        case NM_CUSTOMDRAW:
            return OnCustomDraw(reinterpret_cast<const NMLVCUSTOMDRAW&>(header));
        default:
            return std::nullopt;
    }
}

LRESULT ListView::OnControlMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   void* data) {
    auto* self = static_cast<ListView*>(data);
    self->RelayToTips(message, wParam, lParam);
    switch (message) {
        case WM_ERASEBKGND: {
            const auto dc = reinterpret_cast<HDC>(wParam);
            const SavedDc saved(dc);
            self->KeepRows(dc);
            return CallControl(window, message, wParam, lParam);
        }
        case WM_SIZE: {
            if (self->rows_.empty()) InvalidateRect(window, nullptr, TRUE);
            const LRESULT result = CallControl(window, message, wParam, lParam);
            // The scroll bar that a wider column brings changes the size in the middle of a drag.
            if (self->pictures_ != nullptr && wParam != SIZE_MINIMIZED && !self->isColumnDragged_) {
                self->FitColumns();
            }
            return result;
        }
        case WM_NOTIFY: {
            const auto& header = *reinterpret_cast<const NMHEADERW*>(lParam);
            if (header.hdr.code == HDN_BEGINTRACKW) self->isColumnDragged_ = true;
            const LRESULT result = CallControl(window, message, wParam, lParam);
            if (header.hdr.code == HDN_ENDTRACKW) {
                self->isColumnDragged_ = false;
                if (header.pitem != nullptr && (header.pitem->mask & HDI_WIDTH) != 0) {
                    self->KeepUserWidth(header.iItem, header.pitem->cxy);
                }
            } else if (header.hdr.code == HDN_DIVIDERDBLCLICKW) {
                self->KeepUserWidth(header.iItem, static_cast<int>(SendMessageW(
                                                      window, LVM_GETCOLUMNWIDTH,
                                                      static_cast<WPARAM>(header.iItem), 0)));
            }
            return result;
        }
        case WM_MOUSEMOVE:
            self->FollowMouse({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
            break;
        case WM_GETDLGCODE: {
            // Enter opens a row here; everywhere else it presses the default button.
            const auto* key = reinterpret_cast<const MSG*>(lParam);
            const LRESULT codes = CallControl(window, message, wParam, lParam);
            const bool enter = key != nullptr && key->wParam == VK_RETURN;
            return enter ? codes | DLGC_WANTMESSAGE : codes;
        }
        case WM_KEYDOWN:
            if (self->SortByKey(wParam)) return 0;
            self->keyDown_ = wParam;
            break;
        case WM_KEYUP: {
            // A key that was pressed in a box, and let go when the box was gone, is not meant here.
            const LRESULT result = CallControl(window, message, wParam, lParam);
            if (std::exchange(self->keyDown_, 0) == wParam) {
                SendMessageW(GetParent(window), kListKeyUp, wParam,
                             reinterpret_cast<LPARAM>(window));
            }
            return result;
        }
        case WM_SETFOCUS:
            self->RepaintRow(self->Selected());
            break;
        case WM_KILLFOCUS:
            self->RepaintRow(self->Selected());
            self->keyDown_ = 0;
            break;
        case WM_DROPFILES:
            SendMessageW(GetParent(window), kListDrop, wParam, reinterpret_cast<LPARAM>(window));
            return 0;
        case WM_NCDESTROY:
            self->control_ = nullptr;
            break;
        default:
            break;
    }
    return CallControl(window, message, wParam, lParam);
}

}  // namespace vw
