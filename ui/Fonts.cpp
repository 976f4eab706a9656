#include "ui/Fonts.h"

#include <algorithm>

#include "platform/SystemError.h"
#include "ui/Gdi.h"

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

// Called for each character set of a face.
int CALLBACK NoteFace(const LOGFONTW* font, const TEXTMETRICW*, DWORD type, LPARAM info) {
    auto& face = *reinterpret_cast<FaceInfo*>(info);
    face.exists = true;
    face.isRaster = type == RASTER_FONTTYPE;
    face.hasArabic = face.hasArabic || font->lfCharSet == ARABIC_CHARSET;
    return 1;
}

constexpr std::wstring_view kScalableSans = L"Microsoft Sans Serif";

std::wstring FaceFor(const FontData& font, int dpi) {
    const FaceInfo face = font.face.empty() ? FaceInfo() : InfoOf(font.face);
    if (Serves(face, font, dpi)) return std::wstring(font.face);
    return face.exists && InfoOf(kScalableSans).exists ? std::wstring(kScalableSans)
                                                       : MessageFace();
}

}  // namespace

FaceInfo InfoOf(std::wstring_view face) {
    LOGFONTW wanted{};
    wanted.lfCharSet = DEFAULT_CHARSET;
    PutFace(wanted, face);
    FaceInfo info;
    const WindowDc screen(nullptr);
    EnumFontFamiliesExW(screen.Get(), &wanted, NoteFace, reinterpret_cast<LPARAM>(&info), 0);
    return info;
}

bool Serves(const FaceInfo& face, const FontData& font, int dpi) noexcept {
    constexpr int kEnlarged = 120;
    if (!face.exists) return false;
    return !face.isRaster || (dpi < kEnlarged && (face.hasArabic || !font.hasArabic));
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
    PutFace(wanted, FaceFor(font, dpi_));
    FontHandle made(CreateFontIndirectW(&wanted));
    if (!made) RaiseLast({});
    entries_.push_back({font.face, font.points, font.bold, std::move(made)});
    return entries_.back().font.Get();
}

}  // namespace vw
