#include "ui/ToolBar.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/RuntimeError.h"
#include "platform/TextDirection.h"
#include "ui/Gdi.h"
#include "ui/Painting.h"

namespace vw {

namespace {

constexpr int kIconSize = 20;
constexpr int kButtonHeight = 32;
constexpr int kPadding = 5;
constexpr int kTextGap = 5;
constexpr int kTextMargin = 2;
constexpr int kRounding = 6;

bool Has(const NMTBCUSTOMDRAW& draw, UINT state) noexcept {
    return (draw.nmcd.uItemState & state) != 0;
}

// The colour behind a button, or none.
std::optional<COLORREF> BackgroundOf(const NMTBCUSTOMDRAW& draw, bool accented) {
    const bool pressed = Has(draw, CDIS_SELECTED);
    const bool hot = Has(draw, CDIS_HOT);
    const COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
    if (accented) {
        if (pressed) return MixedColour(highlight, RGB(0, 0, 0), 18);
        if (hot) return MixedColour(highlight, RGB(255, 255, 255), 14);
        return highlight;
    }
    const COLORREF face = GetSysColor(COLOR_BTNFACE);
    if (pressed) return MixedColour(face, highlight, 38);
    if (hot) return MixedColour(face, highlight, 16);
    if (Has(draw, CDIS_CHECKED)) return MixedColour(face, highlight, 24);
    return std::nullopt;
}

void PaintBackground(HDC dc, const RECT& area, COLORREF fill, COLORREF edge, int dpi) {
    SelectObject(dc, GetStockObject(DC_BRUSH));
    SelectObject(dc, GetStockObject(DC_PEN));
    SetDCBrushColor(dc, fill);
    SetDCPenColor(dc, edge);
    const int rounding = Scaled(kRounding, dpi);
    RoundRect(dc, area.left, area.top, area.right, area.bottom, rounding, rounding);
}

void PaintIcon(HDC dc, int left, int top, int pixels, const Picture& icon) {
    const Unmirrored upright(dc);
    const RECT place = upright.Turned({left, top, left + pixels, top + pixels});
    icon.Draw(dc, static_cast<int>(place.left), static_cast<int>(place.top));
}

}  // namespace

ToolBar::ToolBar(HWND control, const ControlData& data, Language language)
    : control_(control), keys_(control), data_(data), language_(language) {
    SendMessageW(control_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(control_, TB_SETEXTENDEDSTYLE, 0,
                 TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_DOUBLEBUFFER);
    AddButtons();
}

void ToolBar::AddButtons() {
    std::vector<TBBUTTON> buttons;
    std::vector<std::wstring> texts;
    texts.reserve(data_.buttons.size());
    for (const ToolButtonData& data : data_.buttons) {
        if (data.beginsGroup) {
            TBBUTTON line{};
            line.iBitmap = 0;
            line.fsStyle = BTNS_SEP;
            buttons.push_back(line);
        }
        texts.emplace_back(data.text.In(language_));
        TBBUTTON button{};
        button.iBitmap = 0;
        button.idCommand = data.id;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = BTNS_BUTTON;
        if (data.showText) button.fsStyle |= BTNS_SHOWTEXT;
        button.iString = reinterpret_cast<INT_PTR>(texts.back().c_str());
        buttons.push_back(button);
    }
    SendMessageW(control_, TB_ADDBUTTONSW, buttons.size(),
                 reinterpret_cast<LPARAM>(buttons.data()));
}

void ToolBar::SetPictures(int dpi, HFONT font, HFONT boldFont) {
    dpi_ = dpi;
    font_ = font;
    boldFont_ = boldFont;
    const int pixels = Scaled(kIconSize, dpi);
    icons_.clear();
    icons_.resize(data_.buttons.size());
    ImageList room(ImageList_Create(pixels, pixels, ILC_COLOR32, 1, 1));
    SendMessageW(control_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(room.Get()));
    room_ = std::move(room);
    SendMessageW(control_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    const int padding = Scaled(kPadding, dpi);
    SendMessageW(control_, TB_SETPADDING, 0, MAKELPARAM(2 * padding, 2 * padding));
    SendMessageW(control_, TB_SETBUTTONSIZE, 0,
                 MAKELPARAM(pixels + 2 * padding, Scaled(kButtonHeight, dpi)));
    SendMessageW(control_, TB_AUTOSIZE, 0, 0);
    SetWidths();
    InvalidateRect(control_, nullptr, TRUE);
}

// Buttons are as wide as what they show, with the same margin on both sides.
void ToolBar::SetWidths() {
    for (const ToolButtonData& button : data_.buttons) {
        int width = Scaled(kIconSize, dpi_) + 2 * Scaled(kPadding, dpi_);
        if (button.showText) {
            const Measure widthOf = MeasureWith(button.accentIcon != 0 ? boldFont_ : font_);
            width += Scaled(kTextGap, dpi_) + widthOf(button.text.In(language_)) +
                     Scaled(kTextMargin, dpi_);
        }
        TBBUTTONINFOW info{};
        info.cbSize = sizeof info;
        info.dwMask = TBIF_SIZE;
        info.cx = static_cast<WORD>(width);
        SendMessageW(control_, TB_SETBUTTONINFOW, static_cast<WPARAM>(button.id),
                     reinterpret_cast<LPARAM>(&info));
    }
}

const ToolButtonData* ToolBar::Find(int id) const noexcept {
    for (const ToolButtonData& button : data_.buttons) {
        if (button.id == id) return &button;
    }
    return nullptr;
}

WPARAM ToolBar::IdOf(std::wstring_view key) const {
    for (const ToolButtonData& button : data_.buttons) {
        if (button.key == key) return static_cast<WPARAM>(button.id);
    }
    Throw(error_number::kInvalidCall, key);
}

bool ToolBar::IsEnabled(std::wstring_view key) const {
    return SendMessageW(control_, TB_ISBUTTONENABLED, IdOf(key), 0) != 0;
}

void ToolBar::Enable(std::wstring_view key, bool on) {
    SendMessageW(control_, TB_ENABLEBUTTON, IdOf(key), MAKELPARAM(on ? TRUE : FALSE, 0));
}

bool ToolBar::IsChecked(std::wstring_view key) const {
    return SendMessageW(control_, TB_ISBUTTONCHECKED, IdOf(key), 0) != 0;
}

void ToolBar::Check(std::wstring_view key, bool on) {
    SendMessageW(control_, TB_CHECKBUTTON, IdOf(key), MAKELPARAM(on ? TRUE : FALSE, 0));
}

std::optional<LRESULT> ToolBar::OnNotify(NMHDR& header) {
    switch (header.code) {
        case NM_CUSTOMDRAW:
            return OnCustomDraw(reinterpret_cast<const NMTBCUSTOMDRAW&>(header));
        case TBN_GETINFOTIPW: {
            auto& info = reinterpret_cast<NMTBGETINFOTIPW&>(header);
            const ToolButtonData* button = Find(info.iItem);
            if (button == nullptr || info.cchTextMax <= 0) return 0;
            const std::wstring tip = MarkSentence(button->tip.In(language_));
            const auto room = static_cast<std::size_t>(info.cchTextMax) - 1;
            const std::size_t length = tip.copy(info.pszText, room);
            info.pszText[length] = L'\0';
            return 0;
        }
        default:
            return std::nullopt;
    }
}

// Making a picture takes longer than painting it, and most buttons show one of the three.
const Picture& ToolBar::PictureOf(std::size_t position, Look look) {
    const ToolButtonData& button = data_.buttons[position];
    Pictures& pictures = icons_[position];
    const int pixels = Scaled(kIconSize, dpi_);
    if (look == Look::Accented) {
        if (pictures.accented.IsEmpty()) pictures.accented = Picture(button.accentIcon, pixels);
        return pictures.accented;
    }
    const bool turned = language_ == Language::Arabic && button.arabicIcon != 0;
    if (pictures.normal.IsEmpty()) {
        pictures.normal = Picture(turned ? button.arabicIcon : button.icon, pixels);
    }
    if (look == Look::Normal) return pictures.normal;
    if (pictures.faded.IsEmpty()) pictures.faded = pictures.normal.Faded();
    return pictures.faded;
}

std::optional<LRESULT> ToolBar::OnCustomDraw(const NMTBCUSTOMDRAW& draw) {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return std::nullopt;
    const ToolButtonData* button = Find(static_cast<int>(draw.nmcd.dwItemSpec));
    // Lines between groups draw themselves.
    if (button == nullptr || icons_.empty()) return CDRF_DODEFAULT;
    PaintButton(draw, static_cast<std::size_t>(button - data_.buttons.data()));
    return CDRF_SKIPDEFAULT;
}

void ToolBar::PaintButton(const NMTBCUSTOMDRAW& draw, std::size_t position) {
    const ToolButtonData& button = data_.buttons[position];
    const bool disabled = Has(draw, CDIS_DISABLED);
    const bool accented = button.accentIcon != 0 && !disabled && !HighContrast();
    const HDC dc = draw.nmcd.hdc;
    const RECT area = draw.nmcd.rc;
    const SavedDc saved(dc);
    const auto background = disabled ? std::nullopt : BackgroundOf(draw, accented);
    if (background) {
        const bool checked = Has(draw, CDIS_CHECKED) && !accented;
        const COLORREF edge = checked ? GetSysColor(COLOR_HIGHLIGHT) : *background;
        PaintBackground(dc, area, *background, edge, dpi_);
    }

    const int pixels = Scaled(kIconSize, dpi_);
    const int left = static_cast<int>(area.left) + Scaled(kPadding, dpi_);
    const int top = static_cast<int>(area.top + area.bottom - pixels) / 2;
    const Look look = disabled ? Look::Faded : (accented ? Look::Accented : Look::Normal);
    // The pictures for windows from right to left are drawn that way already.
    PaintIcon(dc, left, top, pixels, PictureOf(position, look));

    if (Has(draw, CDIS_HOT) && GetFocus() == control_) {
        RECT mark = area;
        InflateRect(&mark, -Scaled(kTextMargin, dpi_), -Scaled(kTextMargin, dpi_));
        DrawFocusRect(dc, &mark);
    }
    if (button.showText) {
        SelectObject(dc, button.accentIcon != 0 ? boldFont_ : font_);
        SetTextColor(dc, GetSysColor(disabled   ? COLOR_GRAYTEXT
                                     : accented ? COLOR_HIGHLIGHTTEXT
                                                : COLOR_BTNTEXT));
        RECT place = area;
        place.left = left + pixels + Scaled(kTextGap, dpi_);
        PaintText(dc, place, button.text.In(language_),
                  {.rightToLeft = language_ == Language::Arabic, .oneLine = true});
    }
}

}  // namespace vw
