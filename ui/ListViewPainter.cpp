#include "ui/ListViewPainter.h"

#include <algorithm>

#include "ui/DisplayText.h"
#include "ui/Gdi.h"
#include "ui/Painting.h"
#include "ui/resource.h"

namespace vw {

namespace {

// The last one is the sign that lies over the others.
constexpr std::array kRowIcons{IDI_File, IDI_Folder, IDI_Rule, IDI_WarningMark};
constexpr int kSmallIcon = 16;
constexpr int kRowHeight = 22;
constexpr int kLargeIcon = 32;
constexpr int kEmptyTextMargin = 24;

ImageList RowImages(int pixels, int height) {
    ImageList images = MakeImageList(kRowIcons, pixels, height);
    ImageList_SetOverlayImage(images.Get(), static_cast<int>(kRowIcons.size()) - 1,
                              kWarningOverlay);
    return images;
}

}  // namespace

RowPictures::RowPictures(int dpi)
    : small(RowImages(Scaled(kSmallIcon, dpi), Scaled(kRowHeight, dpi))),
      pixels(Scaled(kSmallIcon, dpi)),
      dpi_(dpi) {
    for (std::size_t i = 0; i < icons.size(); ++i) icons[i] = Picture(kRowIcons[i], pixels);
    mark = Picture(IDI_WarningMark, pixels);
}

HIMAGELIST RowPictures::Large() {
    const int largePixels = Scaled(kLargeIcon, dpi_);
    if (!large_) large_ = RowImages(largePixels, largePixels);
    return large_.Get();
}

// Those of another resolution are gone when they are replaced.
void ListViewPainter::TakeLargePictures(bool isNeeded) const {
    const HIMAGELIST large = isNeeded && pictures_ != nullptr ? pictures_->Large() : nullptr;
    control_.Send(LVM_SETIMAGELIST, LVSIL_NORMAL, large);
}

void ListViewPainter::Answer(NMLVDISPINFOW& info) {
    const auto& row = rows_.At(info.item.iItem);
    const auto column = static_cast<std::size_t>(info.item.iSubItem);
    if (column >= row.cells.size()) return;
    if ((info.item.mask & LVIF_IMAGE) != 0) info.item.iImage = static_cast<int>(row.icon);
    // The control draws the sign itself in the views with icons.
    if ((info.item.mask & LVIF_STATE) != 0 && !row.warning.empty()) {
        info.item.state |= INDEXTOOVERLAYMASK(kWarningOverlay);
    }
    if ((info.item.mask & LVIF_TEXT) == 0) return;
    asked_ = row.cells[column].text;
    info.item.pszText = asked_.data();
}

std::optional<LRESULT> ListViewPainter::OnCustomDraw(const NMLVCUSTOMDRAW& draw) {
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            isFocused_ = GetFocus() == control_.Handle();
            return CDRF_NOTIFYPOSTPAINT | CDRF_NOTIFYITEMDRAW;
        case CDDS_ITEMPREPAINT:
            if (!control_.IsDetails()) return CDRF_DODEFAULT;
            PaintRow(draw.nmcd.hdc, static_cast<int>(draw.nmcd.dwItemSpec));
            return CDRF_SKIPDEFAULT;
        case CDDS_POSTPAINT:
            if (rows_.Count() == 0) PaintEmptyText(draw.nmcd.hdc);
            return CDRF_DODEFAULT;
        default:
            return std::nullopt;
    }
}

void ListViewPainter::PaintRow(HDC dc, int row) const {
    const auto& content = rows_.At(row);
    if (content.cells.empty()) return;
    const HWND window = control_.Handle();
    const auto state =
        static_cast<UINT>(control_.Send(LVM_GETITEMSTATE, row, LVIS_SELECTED | LVIS_FOCUSED));
    const bool selected = (state & LVIS_SELECTED) != 0;
    const RowColours colours = ColoursOfRow(selected, isFocused_);

    const SavedDc saved(dc);
    SelectObject(dc, FontOf(window));
    {
        const Unmirrored upright(dc);
        RECT whole = control_.RowArea(row, LVIR_BOUNDS);
        RECT visible{};
        GetClientRect(window, &visible);
        IntersectRect(&visible, &visible, &whole);
        whole = upright.Turned(whole);
        const Buffered buffer(dc, upright.Turned(visible));
        Fill(buffer.Canvas(), whole, colours.background);
        PaintIcon(buffer.Canvas(), upright.Turned(control_.RowArea(row, LVIR_ICON)), content);
        SetTextColor(buffer.Canvas(), colours.text);
        for (std::size_t column = 0; column < content.cells.size(); ++column) {
            const RECT cell = upright.Turned(control_.CellArea(row, static_cast<int>(column)));
            PaintText(
                buffer.Canvas(), cell, content.cells[column].text,
                {.rightToLeft = language_ == Language::Arabic,
                 .side = EndsAtFarSide(data_.columns[column].kind, language_) ? TextSide::End
                                                                              : TextSide::Start,
                 .name = true,
                 .oneLine = true,
                 .shorten = true});
        }
        if ((state & LVIS_FOCUSED) != 0 && isFocused_) DrawFocusRect(buffer.Canvas(), &whole);
    }
}

// A row paints its own background in one step with its text. Erased before, it would flicker in a
// list without a buffer.
void ListViewPainter::KeepRows(HDC dc) const {
    if (language_ != Language::Arabic || rows_.Count() == 0 || !control_.IsDetails()) return;
    const int first = control_.Send(LVM_GETTOPINDEX);
    const int last = std::min(first + control_.Send(LVM_GETCOUNTPERPAGE), rows_.Count() - 1);
    const RECT top = control_.RowArea(first, LVIR_BOUNDS);
    const RECT bottom = control_.RowArea(last, LVIR_BOUNDS);
    ExcludeClipRect(dc, top.left, top.top, top.right, bottom.bottom);
}

// At the side of its area where reading begins.
void ListViewPainter::PaintIcon(HDC dc, const RECT& area, const ListViewRows::Row& row) const {
    if (pictures_ == nullptr) return;
    const int pixels = pictures_->pixels;
    const int left = language_ == Language::Arabic ? static_cast<int>(area.right) - pixels
                                                   : static_cast<int>(area.left);
    const int top = static_cast<int>(area.top + area.bottom - pixels) / 2;
    pictures_->icons[static_cast<std::size_t>(row.icon)].Draw(dc, left, top);
    if (!row.warning.empty()) pictures_->mark.Draw(dc, left, top);
}

void ListViewPainter::PaintEmptyText(HDC dc) const {
    const std::wstring_view text = data_.emptyText.In(language_);
    if (text.empty()) return;
    RECT area{};
    GetClientRect(control_.Handle(), &area);
    const HWND header = control_.Header();
    if (IsWindowVisible(header) != 0 && control_.IsDetails()) {
        RECT headerArea{};
        GetClientRect(header, &headerArea);
        area.top += headerArea.bottom;
    }
    InflateRect(&area, -Scaled(kEmptyTextMargin, control_.Dpi()), 0);
    const SavedDc saved(dc);
    SelectObject(dc, FontOf(control_.Handle()));
    SetTextColor(dc, HintColour());
    const int room = static_cast<int>(area.right - area.left);
    const auto lines = static_cast<int>(Wrapped(text, room, MeasureIn(dc)).size());
    // Placed at one third of the free height: it looks better than the exact centre.
    const LONG free = area.bottom - area.top - lines * LineStep(LineHeight(dc));
    area.top += std::max(0L, free / 3);
    PaintText(dc, area, text,
              {.rightToLeft = language_ == Language::Arabic, .side = TextSide::Centre});
}

}  // namespace vw
