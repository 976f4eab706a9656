#include <algorithm>

#include "ui/ControlFactory.h"
#include "ui/Form.h"
#include "ui/Gdi.h"
#include "ui/Painting.h"

// What a form draws itself: labels and the entries of drop-down boxes. Their texts stay in the
// controls, unchanged, for programs that read them.

namespace vw {

namespace {

constexpr int kChoiceMargin = 4;
constexpr int kStatusMargin = 12;
constexpr int kStatusGap = 6;
// Dark enough to be read on the light background of every theme without high contrast.
constexpr COLORREF kAlertColour = RGB(0xA8, 0x1C, 0x1C);

}  // namespace

// Only the report is left to colour itself: it looks like a field, though nobody writes in it.
std::optional<LRESULT> Form::OnColour(HDC dc, HWND control) {
    const Part* part = FindByWindow(control);
    if (part == nullptr || part->data->kind != ControlKind::Report) return std::nullopt;
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
}

void Form::OnDrawItem(const DRAWITEMSTRUCT& draw) {
    const Part* part = FindByWindow(draw.hwndItem);
    if (part == nullptr) return;
    const SavedDc saved(draw.hDC);
    SelectObject(draw.hDC, FontOf(draw.hwndItem));
    if (IsLabel(part->data->kind)) {
        DrawLabel(*part, draw.hDC, draw.rcItem);
    } else {
        DrawChoice(draw);
    }
}

void Form::DrawLabel(const Part& part, HDC dc, const RECT& area) const {
    const ControlData& data = *part.data;
    if (data.statusLine) {
        DrawStatusLine(part, dc, area);
        return;
    }
    RECT inside = area;
    if (data.framed) {
        // A scroll bar that is two arrows shows nothing of the keyboard.
        const bool marked = std::ranges::any_of(parts_, [&](const Part& other) {
            return other.data->wheelLabel == data.name && GetFocus() == other.window;
        });
        Fill(dc, area, GetSysColor(marked ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW));
        const int frame = marked ? Scaled(2, dpi_) : 1;
        InflateRect(&inside, -frame, -frame);
        Fill(dc, inside, GetSysColor(COLOR_WINDOW));
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    } else if (data.accent) {
        Fill(dc, area, GetSysColor(COLOR_HIGHLIGHT));
        SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
    } else {
        Fill(dc, area, GetSysColor(COLOR_BTNFACE));
        const bool enabled = IsWindowEnabled(part.window) != 0;
        SetTextColor(dc, GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
    }
    PaintText(dc, inside, Text(data.name),
              {.rightToLeft = language_ == Language::Arabic,
               .side = data.centred ? TextSide::Centre : TextSide::Start,
               .oneLine = data.oneLine || data.path,
               .shorten = data.path});
}

// A hairline parts it from the lists. The sign says without colours that something went wrong.
void Form::DrawStatusLine(const Part& part, HDC dc, const RECT& area) const {
    const std::wstring text = Text(part.data->name);
    const bool rightToLeft = language_ == Language::Arabic;
    const COLORREF colour =
        part.alert && !HighContrast() ? kAlertColour : GetSysColor(COLOR_BTNTEXT);
    Fill(dc, area, GetSysColor(COLOR_BTNFACE));
    Fill(dc, {area.left, area.top, area.right, area.top + 1}, GetSysColor(COLOR_3DLIGHT));
    RECT inside = area;
    InflateRect(&inside, -Scaled(kStatusMargin, dpi_), 0);
    if (part.alert && !text.empty()) {
        const Unmirrored upright(dc);
        const RECT whole = upright.Turned(inside);
        const int pixels = Scaled(kStatusSign, dpi_);
        const int left = static_cast<int>(rightToLeft ? whole.right - pixels : whole.left);
        const int top = static_cast<int>(whole.top + whole.bottom - pixels) / 2;
        DrawIconEx(dc, left, top, part.picture.Get(), pixels, pixels, 0, nullptr, DI_NORMAL);
    }
    if (part.alert) {
        // The dc of a mirrored form counts from the right itself.
        const bool mirrored = (GetLayout(dc) & LAYOUT_RTL) != 0;
        const LONG room = Scaled(kStatusSign + kStatusGap, dpi_);
        (rightToLeft && !mirrored ? inside.right : inside.left) +=
            rightToLeft && !mirrored ? -room : room;
    }
    SetTextColor(dc, colour);
    PaintText(dc, inside, text, {.rightToLeft = rightToLeft, .oneLine = true, .shorten = true});
}

void Form::DrawChoice(const DRAWITEMSTRUCT& draw) const {
    // A mirrored box may have clipped its other side.
    SelectClipRgn(draw.hDC, nullptr);
    const bool selected = (draw.itemState & ODS_SELECTED) != 0;
    const bool disabled = (draw.itemState & ODS_DISABLED) != 0;
    Fill(draw.hDC, draw.rcItem, GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    SetTextColor(draw.hDC, GetSysColor(disabled   ? COLOR_GRAYTEXT
                                       : selected ? COLOR_HIGHLIGHTTEXT
                                                  : COLOR_WINDOWTEXT));
    if (draw.itemID == static_cast<UINT>(-1)) return;
    const auto length = SendMessageW(draw.hwndItem, CB_GETLBTEXTLEN, draw.itemID, 0);
    if (length == CB_ERR) return;
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    SendMessageW(draw.hwndItem, CB_GETLBTEXT, draw.itemID, reinterpret_cast<LPARAM>(text.data()));
    RECT area = draw.rcItem;
    InflateRect(&area, -Scaled(kChoiceMargin, dpi_), 0);
    PaintText(draw.hDC, area, text,
              {.rightToLeft = language_ == Language::Arabic, .name = true, .oneLine = true});
    if ((draw.itemState & ODS_FOCUS) != 0 && (draw.itemState & ODS_NOFOCUSRECT) == 0) {
        DrawFocusRect(draw.hDC, &draw.rcItem);
    }
}

}  // namespace vw
