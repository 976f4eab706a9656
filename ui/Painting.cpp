#include "ui/Painting.h"

// The text shaping declarations need those of the window system first.
#include <usp10.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace vw {

namespace {

int PlainWidth(HDC canvas, std::wstring_view text) {
    SIZE size{};
    GetTextExtentPoint32W(canvas, text.data(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
}

// Arabic letters join, and are narrower then than each alone: the plain measure does not see that
// on every system.
int ShapedWidth(HDC canvas, std::wstring_view text) {
    SCRIPT_STRING_ANALYSIS analysis = nullptr;
    const auto length = static_cast<int>(text.size());
    const HRESULT result = ScriptStringAnalyse(canvas, text.data(), length, length * 3 / 2 + 16, -1,
                                               SSA_GLYPHS | SSA_FALLBACK | SSA_LINK, 0, nullptr,
                                               nullptr, nullptr, nullptr, nullptr, &analysis);
    if (FAILED(result)) return PlainWidth(canvas, text);
    const SIZE* size = ScriptString_pSize(analysis);
    const int width = size == nullptr ? 0 : static_cast<int>(size->cx);
    ScriptStringFree(&analysis);
    return width;
}

// Begins where the canvas's pen stands and leaves it where the next piece goes.
void PaintPiece(HDC canvas, const RECT& clip, std::wstring_view text, bool fromRight) {
    const UINT options = ETO_CLIPPED | (fromRight ? UINT{ETO_RTLREADING} : 0U);
    ExtTextOutW(canvas, 0, 0, options, &clip, text.data(), static_cast<UINT>(text.size()), nullptr);
}

// The system places each piece from the pen, by the width that it really draws: at the right side
// that makes the edge straight.
void PaintLine(HDC canvas, const RECT& area, int y, std::wstring_view line, const TextLook& look) {
    const bool centred = look.side == TextSide::Centre;
    const bool atLeft = (look.side == TextSide::Start) != look.rightToLeft;
    const LONG x = centred ? (area.left + area.right) / 2 : atLeft ? area.left : area.right;
    const UINT align = centred ? TA_CENTER : atLeft ? TA_LEFT : TA_RIGHT;
    const UINT alignBefore = SetTextAlign(canvas, align | TA_TOP | TA_UPDATECP);
    MoveToEx(canvas, x, y, nullptr);
    if (LooksLikePath(line) && !centred) {
        std::vector<std::wstring_view> pieces = PathPieces(line);
        if (!atLeft) std::reverse(pieces.begin(), pieces.end());
        for (const std::wstring_view piece : pieces) PaintPiece(canvas, area, piece, false);
    } else {
        const bool fromRight =
            look.name ? NameReadsFromRight(line) : look.rightToLeft && PhraseReadsFromRight(line);
        PaintPiece(canvas, area, line, fromRight);
    }
    SetTextAlign(canvas, alignBefore);
}

}  // namespace

Unmirrored::Unmirrored(HDC canvas) noexcept : canvas_(canvas), layout_(GetLayout(canvas)) {
    if (layout_ == GDI_ERROR) layout_ = 0;
}

Unmirrored::~Unmirrored() { SetLayout(canvas_, layout_); }

RECT Unmirrored::Turned(const RECT& area) const noexcept {
    RECT turned = area;
    if ((layout_ & LAYOUT_RTL) == 0) return turned;
    SetLayout(canvas_, layout_);
    LPtoDP(canvas_, reinterpret_cast<POINT*>(&turned), 2);
    SetLayout(canvas_, 0);
    DPtoLP(canvas_, reinterpret_cast<POINT*>(&turned), 2);
    if (turned.left > turned.right) {
        // The last pixel at one side is the first at the other.
        std::swap(turned.left, turned.right);
        ++turned.left;
        ++turned.right;
    }
    return turned;
}

Measure MeasureIn(HDC canvas) {
    return [canvas](std::wstring_view text) {
        if (!PhraseReadsFromRight(text)) return PlainWidth(canvas, text);
        if (!LooksLikePath(text)) return ShapedWidth(canvas, text);
        int width = 0;
        for (const std::wstring_view piece : PathPieces(text)) width += ShapedWidth(canvas, piece);
        return width;
    };
}

int LineHeight(HDC canvas) {
    TEXTMETRICW metrics{};
    GetTextMetricsW(canvas, &metrics);
    return static_cast<int>(metrics.tmHeight);
}

void PaintText(HDC canvas, const RECT& area, std::wstring_view text, const TextLook& look) {
    const Unmirrored upright(canvas);
    const RECT place = upright.Turned(area);
    const int room = static_cast<int>(place.right - place.left);
    const int height = LineHeight(canvas);
    const int modeBefore = SetBkMode(canvas, TRANSPARENT);
    int y = static_cast<int>(place.top);
    if (look.oneLine) {
        y += std::max(0, (static_cast<int>(place.bottom - place.top) - height) / 2);
        PaintLine(canvas, place, y,
                  look.shorten ? Shortened(text, room, MeasureIn(canvas)) : std::wstring(text),
                  look);
    } else {
        for (const std::wstring& line : Wrapped(text, room, MeasureIn(canvas))) {
            PaintLine(canvas, place, y, line, look);
            y += height;
        }
    }
    SetBkMode(canvas, modeBefore);
}

void Fill(HDC canvas, const RECT& area, COLORREF colour) noexcept {
    const COLORREF before = SetDCBrushColor(canvas, colour);
    FillRect(canvas, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    SetDCBrushColor(canvas, before);
}

COLORREF MixedColour(COLORREF first, COLORREF second, int share) noexcept {
    const auto mix = [share](int a, int b) { return static_cast<BYTE>(a + (b - a) * share / 100); };
    return RGB(mix(GetRValue(first), GetRValue(second)), mix(GetGValue(first), GetGValue(second)),
               mix(GetBValue(first), GetBValue(second)));
}

bool HighContrast() noexcept {
    HIGHCONTRASTW setting{};
    setting.cbSize = sizeof setting;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0);
    return (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

}  // namespace vw
