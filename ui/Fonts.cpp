#include "ui/Fonts.h"

#include <algorithm>

#include "platform/SystemError.h"

namespace vw {

namespace {

constexpr int kPointsPerInch = 72;

void PutFace(LOGFONTW& font, std::wstring_view face) {
    face = face.substr(0, LF_FACESIZE - 1);
    *std::copy(face.begin(), face.end(), font.lfFaceName) = L'\0';
}

std::wstring MessageFace() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) == 0) return {};
    return metrics.lfMessageFont.lfFaceName;
}

int CALLBACK NoteFace(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM found) {
    *reinterpret_cast<bool*>(found) = true;
    return 0;
}

}  // namespace

bool FaceExists(std::wstring_view face) {
    LOGFONTW wanted{};
    wanted.lfCharSet = DEFAULT_CHARSET;
    PutFace(wanted, face);
    bool found = false;
    const HDC screen = GetDC(nullptr);
    EnumFontFamiliesExW(screen, &wanted, NoteFace, reinterpret_cast<LPARAM>(&found), 0);
    ReleaseDC(nullptr, screen);
    return found;
}

HFONT Fonts::Get(const FontData& font) {
    const auto same = [&](const Entry& entry) {
        return entry.face == font.face && entry.points == font.points && entry.bold == font.bold;
    };
    const auto known = std::find_if(entries_.begin(), entries_.end(), same);
    if (known != entries_.end()) return known->font.Get();

    LOGFONTW wanted{};
    wanted.lfHeight = -MulDiv(font.points, dpi_, kPointsPerInch);
    wanted.lfWeight = font.bold ? FW_SEMIBOLD : FW_NORMAL;
    wanted.lfCharSet = DEFAULT_CHARSET;
    wanted.lfQuality = DEFAULT_QUALITY;
    const bool named = !font.face.empty() && FaceExists(font.face);
    PutFace(wanted, named ? std::wstring(font.face) : MessageFace());
    FontHandle made(CreateFontIndirectW(&wanted));
    if (!made) RaiseLast({});
    entries_.push_back({font.face, font.points, font.bold, std::move(made)});
    return entries_.back().font.Get();
}

}  // namespace vw
