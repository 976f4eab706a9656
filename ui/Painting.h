#pragma once

#include <string_view>

#include "platform/WindowsHeader.h"
#include "ui/Bitmap.h"
#include "ui/DisplayText.h"

namespace vw {

/// How a text is aligned in its space.
enum class TextSide { Start, Centre, End };

/// How a text is drawn.
struct TextLook {
    bool rightToLeft = false;  ///< direction of the window: at which side a text starts
    TextSide side = TextSide::Start;
    bool name = false;     ///< not a sentence but a name, date or size
    bool oneLine = false;  ///< half-way down; otherwise words wrap, from the top
    bool shorten = false;  ///< of one line: "…" for what has no room
};

/// Draws a text with the font and colours of the dc. A path reads from left to right,
/// everything else in the direction of its own letters, whatever the direction of the window.
void PaintText(HDC dc, const RECT& area, std::wstring_view text, const TextLook& look);

/// Measures in a font, which has to live longer.
[[nodiscard]] Measure MeasureWith(HGDIOBJ font);

/// Measures in the font of a dc.
[[nodiscard]] Measure MeasureIn(HDC dc);

/// Measures in the font that a window shows its text in.
[[nodiscard]] Measure MeasureIn(HWND window);

/// How high one line of the dc's font is.
[[nodiscard]] int LineHeight(HDC dc);

/// From one line of a wrapped text to the next.
[[nodiscard]] int LineStep(int lineHeight) noexcept;

/// Fills with one colour.
void Fill(HDC dc, const RECT& area, COLORREF colour) noexcept;

/// A colour between two others; `share` hundredths of the second.
[[nodiscard]] COLORREF MixedColour(COLORREF first, COLORREF second, int share) noexcept;

/// The contrast of two colours, from 1 to 21, as the guidelines for accessible content define it.
[[nodiscard]] double ContrastOf(COLORREF first, COLORREF second) noexcept;

/// The colours of a row of a list.
struct RowColours {
    COLORREF background;
    COLORREF text;
};

/// Those of a row that is selected or not, in a list with the keyboard or without it. A row that is
/// selected without the keyboard has a contrast of at least 3 to the others, and its text one of at
/// least 4.5 to it; with the keyboard it has the colours of the system.
[[nodiscard]] RowColours ColoursOfRow(bool selected, bool focused) noexcept;

/// The colour of a hint in an empty list: calmer than a text, with a contrast of at least 4.5 to
/// the list.
[[nodiscard]] COLORREF HintColour() noexcept;

/// Whether the user chose a high contrast: then only the system's own colours are used.
[[nodiscard]] bool HighContrast() noexcept;

/// A dc that counts from the left for a while, also in a mirrored window: what is drawn in this
/// time comes out the way round that it was drawn, on every system.
class Unmirrored {
  public:
    explicit Unmirrored(HDC dc) noexcept;
    ~Unmirrored();
    Unmirrored(const Unmirrored&) = delete;
    Unmirrored& operator=(const Unmirrored&) = delete;

    /// A rectangle of the mirrored dc, counted from the left.
    [[nodiscard]] RECT Turned(const RECT& area) const noexcept;

  private:
    HDC canvas_;
    DWORD layout_;
};

/// A dc in memory for an area of another one, with the same coordinates. It comes onto the
/// other one, which must not be mirrored, all at once when it goes: nothing flickers.
class Buffered {
  public:
    Buffered(HDC dc, const RECT& area);
    ~Buffered();
    Buffered(const Buffered&) = delete;
    Buffered& operator=(const Buffered&) = delete;

    [[nodiscard]] HDC Canvas() const noexcept { return buffer_.Get(); }

  private:
    HDC canvas_;
    RECT area_;
    Bitmap picture_;
    BitmapDc buffer_;
};

}  // namespace vw
