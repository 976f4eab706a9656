#include "ui/Painting.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/TextDirection.h"
#include "ui/Gdi.h"

namespace vw {

namespace {

constexpr wchar_t kEllipsis = 0x2026;

int PlainWidth(HDC dc, std::wstring_view text) {
    SIZE size{};
    GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &size);
    return static_cast<int>(size.cx);
}

/// A dc in memory with a font.
class Scratch {
  public:
    explicit Scratch(HGDIOBJ font) : scratch_(CreateCompatibleDC(nullptr)) {
        SelectObject(scratch_, font);
        SetTextAlign(scratch_, TA_LEFT | TA_TOP | TA_UPDATECP);
    }
    ~Scratch() { DeleteDC(scratch_); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    [[nodiscard]] HDC Dc() const noexcept { return scratch_; }

    // Arabic letters join, and are narrower then than each alone. Not every system measures
    // it, but drawing does: the pen goes as far as the text is wide.
    [[nodiscard]] int DrawnWidth(std::wstring_view text) const {
        if (!IsShownAsPath(text)) return WidthOfPiece(text);
        int width = 0;
        for (const std::wstring_view piece : PathPieces(text)) width += WidthOfPiece(piece);
        return width;
    }

  private:
    [[nodiscard]] int WidthOfPiece(std::wstring_view text) const {
        MoveToEx(scratch_, 0, 0, nullptr);
        ExtTextOutW(scratch_, 0, 0, 0, nullptr, text.data(), static_cast<UINT>(text.size()),
                    nullptr);
        POINT pen{};
        GetCurrentPositionEx(scratch_, &pen);
        return static_cast<int>(pen.x);
    }

    HDC scratch_;
};

// Begins at the position of the dc's pen and leaves it where the next piece goes.
void PaintPiece(HDC dc, const RECT& clip, std::wstring_view text, bool fromRight) {
    const UINT options = ETO_CLIPPED | (fromRight ? UINT{ETO_RTLREADING} : 0U);
    ExtTextOutW(dc, 0, 0, options, &clip, text.data(), static_cast<UINT>(text.size()), nullptr);
}

// The system places each piece from the pen, by the width that it really draws: at the right side
// that makes the edge straight.
void PaintLine(HDC dc, const RECT& area, int y, std::wstring_view line, const TextLook& look) {
    const bool centred = look.side == TextSide::Centre;
    const bool atLeft = (look.side == TextSide::Start) != look.rightToLeft;
    const LONG x = centred ? (area.left + area.right) / 2 : atLeft ? area.left : area.right;
    const UINT align = centred ? TA_CENTER : atLeft ? TA_LEFT : TA_RIGHT;
    const UINT alignBefore = SetTextAlign(dc, align | TA_TOP | TA_UPDATECP);
    MoveToEx(dc, x, y, nullptr);
    if (IsShownAsPath(line) && !centred) {
        std::vector<std::wstring_view> pieces = PathPieces(line);
        if (!atLeft) std::reverse(pieces.begin(), pieces.end());
        for (const std::wstring_view piece : pieces) {
            // What was cut off belongs behind the last letter that is left.
            const bool cutName = piece.ends_with(kEllipsis) && NameReadsFromRight(piece);
            PaintPiece(dc, area, piece, cutName);
        }
    } else {
        const bool fromRight =
            look.name ? NameReadsFromRight(line) : look.rightToLeft && PhraseReadsFromRight(line);
        PaintPiece(dc, area, line, fromRight);
    }
    SetTextAlign(dc, alignBefore);
}

}  // namespace

Unmirrored::Unmirrored(HDC dc) noexcept : canvas_(dc), layout_(GetLayout(dc)) {
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

Measure MeasureWith(HGDIOBJ font) {
    const auto scratch = std::make_shared<Scratch>(font);
    return [scratch](std::wstring_view text) {
        return PhraseReadsFromRight(text) ? scratch->DrawnWidth(text)
                                          : PlainWidth(scratch->Dc(), text);
    };
}

// Called for each cell that is painted: a dc in memory is made only where a text needs it.
Measure MeasureIn(HDC dc) {
    return [dc, scratch = std::shared_ptr<Scratch>()](std::wstring_view text) mutable {
        if (!PhraseReadsFromRight(text)) return PlainWidth(dc, text);
        if (!scratch) scratch = std::make_shared<Scratch>(GetCurrentObject(dc, OBJ_FONT));
        return scratch->DrawnWidth(text);
    };
}

Measure MeasureIn(HWND window) { return MeasureWith(FontOf(window)); }

Buffered::Buffered(HDC dc, const RECT& area)
    : canvas_(dc),
      area_(area),
      picture_(static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top)),
      buffer_(picture_.Get()) {
    SetViewportOrgEx(Canvas(), -area.left, -area.top, nullptr);
    SelectObject(Canvas(), GetCurrentObject(dc, OBJ_FONT));
}

Buffered::~Buffered() {
    BitBlt(canvas_, area_.left, area_.top, area_.right - area_.left, area_.bottom - area_.top,
           Canvas(), area_.left, area_.top, SRCCOPY);
}

int LineStep(int lineHeight) noexcept { return lineHeight * 6 / 5; }

int LineHeight(HDC dc) {
    TEXTMETRICW metrics{};
    GetTextMetricsW(dc, &metrics);
    return static_cast<int>(metrics.tmHeight);
}

void PaintText(HDC dc, const RECT& area, std::wstring_view text, const TextLook& look) {
    const Unmirrored upright(dc);
    const RECT place = upright.Turned(area);
    const int room = static_cast<int>(place.right - place.left);
    const int height = LineHeight(dc);
    const int modeBefore = SetBkMode(dc, TRANSPARENT);
    int y = static_cast<int>(place.top);
    if (look.oneLine) {
        y += std::max(0, (static_cast<int>(place.bottom - place.top) - height) / 2);
        PaintLine(dc, place, y,
                  look.shorten ? Shorten(text, room, MeasureIn(dc)) : std::wstring(text), look);
    } else {
        for (const std::wstring& line : Wrapped(text, room, MeasureIn(dc))) {
            PaintLine(dc, place, y, line, look);
            y += LineStep(height);
        }
    }
    SetBkMode(dc, modeBefore);
}

void Fill(HDC dc, const RECT& area, COLORREF colour) noexcept {
    const COLORREF before = SetDCBrushColor(dc, colour);
    FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    SetDCBrushColor(dc, before);
}

COLORREF MixedColour(COLORREF first, COLORREF second, int share) noexcept {
    const auto mix = [share](int a, int b) { return static_cast<BYTE>(a + (b - a) * share / 100); };
    return RGB(mix(GetRValue(first), GetRValue(second)), mix(GetGValue(first), GetGValue(second)),
               mix(GetBValue(first), GetBValue(second)));
}

double ContrastOf(COLORREF first, COLORREF second) noexcept {
    const auto channel = [](int value) {
        const double share = value / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&](COLORREF colour) {
        return 0.2126 * channel(GetRValue(colour)) + 0.7152 * channel(GetGValue(colour)) +
               0.0722 * channel(GetBValue(colour));
    };
    const double left = luminance(first);
    const double right = luminance(second);
    return (std::max(left, right) + 0.05) / (std::min(left, right) + 0.05);
}

// Without the keyboard the row is greyer: calm, but still the one that a command works on. It is as
// dark as its text needs.
RowColours ColoursOfRow(bool selected, bool focused) noexcept {
    constexpr int kGreyShare = 60;
    constexpr double kLeastContrast = 3.0;
    constexpr double kLeastTextContrast = 4.5;
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    const COLORREF windowText = GetSysColor(COLOR_WINDOWTEXT);
    if (!selected) return {window, windowText};
    const RowColours full{GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_HIGHLIGHTTEXT)};
    if (focused || HighContrast()) return full;
    const COLORREF grey =
        MixedColour(GetSysColor(COLOR_HIGHLIGHT), GetSysColor(COLOR_GRAYTEXT), kGreyShare);
    for (const int share : {0, 15, 30, 45, 60}) {
        const COLORREF background = MixedColour(grey, windowText, share);
        if (ContrastOf(background, window) >= kLeastContrast &&
            ContrastOf(background, full.text) >= kLeastTextContrast) {
            return {background, full.text};
        }
    }
    return full;
}

COLORREF HintColour() noexcept {
    constexpr int kWindowShare = 35;
    const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
    return HighContrast() ? text : MixedColour(text, GetSysColor(COLOR_WINDOW), kWindowShare);
}

bool HighContrast() noexcept {
    HIGHCONTRASTW setting{};
    setting.cbSize = sizeof setting;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0);
    return (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

}  // namespace vw
