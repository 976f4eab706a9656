#include "ui/ToolBar.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/RuntimeError.h"

namespace vw {

namespace {

constexpr int kIconSize = 20;
constexpr int kButtonHeight = 32;
constexpr int kButtonPadding = 8;
constexpr int kTextGap = 6;
constexpr int kAccentRounding = 6;

bool HighContrast() noexcept {
    HIGHCONTRASTW setting{};
    setting.cbSize = sizeof setting;
    SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof setting, &setting, 0);
    return (setting.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

// A colour between two others; `share` hundredths of the second.
COLORREF Mixed(COLORREF first, COLORREF second, int share) noexcept {
    const auto mix = [share](int a, int b) { return static_cast<BYTE>(a + (b - a) * share / 100); };
    return RGB(mix(GetRValue(first), GetRValue(second)), mix(GetGValue(first), GetGValue(second)),
               mix(GetBValue(first), GetBValue(second)));
}

}  // namespace

ToolBar::ToolBar(HWND control, const ControlData& data, Language language)
    : control_(control), data_(data), language_(language) {
    SendMessageW(control_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(control_, TB_SETEXTENDEDSTYLE, 0,
                 TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_DOUBLEBUFFER);
    AddButtons();
}

void ToolBar::AddButtons() {
    std::vector<TBBUTTON> buttons;
    std::vector<std::wstring> texts;
    texts.reserve(data_.buttons.size());
    int picture = 0;
    for (const ToolButtonData& data : data_.buttons) {
        if (data.beginsGroup) {
            TBBUTTON line{};
            line.iBitmap = 0;
            line.fsStyle = BTNS_SEP;
            buttons.push_back(line);
        }
        texts.emplace_back(data.text.In(language_));
        TBBUTTON button{};
        button.iBitmap = picture++;
        button.idCommand = data.id;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = BTNS_BUTTON | BTNS_AUTOSIZE;
        if (data.showText) button.fsStyle |= BTNS_SHOWTEXT;
        button.iString = reinterpret_cast<INT_PTR>(texts.back().c_str());
        buttons.push_back(button);
    }
    SendMessageW(control_, TB_ADDBUTTONSW, buttons.size(),
                 reinterpret_cast<LPARAM>(buttons.data()));
}

void ToolBar::SetPictures(int dpi, HFONT font, HFONT boldFont) {
    dpi_ = dpi;
    boldFont_ = boldFont;
    const int pixels = Scaled(kIconSize, dpi);
    std::vector<int> icons;
    for (const ToolButtonData& button : data_.buttons) {
        const bool turned = language_ == Language::Arabic && button.arabicIcon != 0;
        icons.push_back(turned ? button.arabicIcon : button.icon);
        if (button.accentIcon != 0) accentIcon_ = LoadPicture(button.accentIcon, pixels);
    }
    ImageList pictures = MakeImageList(icons, pixels);
    SendMessageW(control_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures.Get()));
    pictures_ = std::move(pictures);
    SendMessageW(control_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    const int padding = Scaled(kButtonPadding, dpi);
    SendMessageW(control_, TB_SETPADDING, 0, MAKELPARAM(padding, padding));
    SendMessageW(control_, TB_SETBUTTONSIZE, 0,
                 MAKELPARAM(pixels + padding, Scaled(kButtonHeight, dpi)));
    SendMessageW(control_, TB_AUTOSIZE, 0, 0);

    // The accented button is as wide as its bold text wants, which the control does not know of.
    for (const ToolButtonData& data : data_.buttons) {
        if (data.accentIcon == 0) continue;
        const HDC canvas = GetDC(control_);
        const HGDIOBJ before = SelectObject(canvas, boldFont);
        const std::wstring_view text = data.text.In(language_);
        SIZE size{};
        GetTextExtentPoint32W(canvas, text.data(), static_cast<int>(text.size()), &size);
        SelectObject(canvas, before);
        ReleaseDC(control_, canvas);
        TBBUTTONINFOW info{};
        info.cbSize = sizeof info;
        info.dwMask = TBIF_SIZE;
        info.cx = static_cast<WORD>(pixels + size.cx + Scaled(kTextGap, dpi) + 2 * padding +
                                    Scaled(kTextGap, dpi));
        SendMessageW(control_, TB_SETBUTTONINFOW, static_cast<WPARAM>(data.id),
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
    Raise(error_number::kInvalidCall, key);
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

int ToolBar::NeededWidth() const noexcept {
    SIZE size{};
    SendMessageW(control_, TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&size));
    return size.cx;
}

std::optional<LRESULT> ToolBar::OnNotify(NMHDR& header) {
    switch (header.code) {
        case NM_CUSTOMDRAW:
            return OnCustomDraw(reinterpret_cast<const NMTBCUSTOMDRAW&>(header));
        case TBN_GETINFOTIPW: {
            auto& info = reinterpret_cast<NMTBGETINFOTIPW&>(header);
            const ToolButtonData* button = Find(info.iItem);
            if (button == nullptr || info.cchTextMax <= 0) return 0;
            const std::wstring_view tip = button->tip.In(language_);
            const auto room = static_cast<std::size_t>(info.cchTextMax) - 1;
            const std::size_t length = tip.copy(info.pszText, room);
            info.pszText[length] = L'\0';
            return 0;
        }
        default:
            return std::nullopt;
    }
}

std::optional<LRESULT> ToolBar::OnCustomDraw(const NMTBCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return std::nullopt;
    const ToolButtonData* button = Find(static_cast<int>(draw.nmcd.dwItemSpec));
    const bool disabled = (draw.nmcd.uItemState & CDIS_DISABLED) != 0;
    if (button == nullptr || button->accentIcon == 0 || disabled || HighContrast()) {
        return CDRF_DODEFAULT;
    }
    PaintAccented(draw, *button);
    return CDRF_SKIPDEFAULT;
}

void ToolBar::PaintAccented(const NMTBCUSTOMDRAW& draw, const ToolButtonData& button) const {
    const HDC canvas = draw.nmcd.hdc;
    RECT area = draw.nmcd.rc;
    const bool pressed = (draw.nmcd.uItemState & CDIS_SELECTED) != 0;
    const bool hot = (draw.nmcd.uItemState & CDIS_HOT) != 0;
    const COLORREF plain = GetSysColor(COLOR_HIGHLIGHT);
    const COLORREF fill = pressed ? Mixed(plain, RGB(0, 0, 0), 18)
                          : hot   ? Mixed(plain, RGB(255, 255, 255), 14)
                                  : plain;
    const int saved = SaveDC(canvas);
    SelectObject(canvas, GetStockObject(DC_BRUSH));
    SelectObject(canvas, GetStockObject(DC_PEN));
    SetDCBrushColor(canvas, fill);
    SetDCPenColor(canvas, fill);
    const int inset = Scaled(1, dpi_);
    const int rounding = Scaled(kAccentRounding, dpi_);
    RoundRect(canvas, area.left + inset, area.top + inset, area.right - inset, area.bottom - inset,
              rounding, rounding);

    const int pixels = Scaled(kIconSize, dpi_);
    const int iconLeft = area.left + Scaled(kButtonPadding, dpi_);
    const int iconTop = (area.top + area.bottom - pixels) / 2;
    if (accentIcon_) {
        DrawIconEx(canvas, iconLeft, iconTop, accentIcon_.Get(), pixels, pixels, 0, nullptr,
                   DI_NORMAL | DI_NOMIRROR);
    }
    SelectObject(canvas, boldFont_);
    SetTextColor(canvas, GetSysColor(COLOR_HIGHLIGHTTEXT));
    SetBkMode(canvas, TRANSPARENT);
    area.left = iconLeft + pixels + Scaled(kTextGap, dpi_);
    const std::wstring_view text = button.text.In(language_);
    DrawTextW(canvas, text.data(), static_cast<int>(text.size()), &area,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    RestoreDC(canvas, saved);
}

}  // namespace vw
