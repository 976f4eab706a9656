#include "ui/Picture.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "ui/Icons.h"

namespace vw {

namespace {

constexpr std::uint32_t kOpaque = 255;

struct Colour {
    std::uint32_t blue, green, red, opacity;
};

Colour ColourOf(std::uint32_t pixel) noexcept {
    return {pixel & 0xFF, pixel >> 8 & 0xFF, pixel >> 16 & 0xFF, pixel >> 24};
}

std::uint32_t PixelOf(const Colour& colour) noexcept {
    return colour.opacity << 24 | colour.red << 16 | colour.green << 8 | colour.blue;
}

std::uint32_t Multiplied(std::uint32_t pixel) noexcept {
    const Colour colour = ColourOf(pixel);
    const auto times = [&](std::uint32_t part) { return part * colour.opacity / kOpaque; };
    return PixelOf({times(colour.blue), times(colour.green), times(colour.red), colour.opacity});
}

std::uint32_t FadedPixel(std::uint32_t pixel) noexcept {
    const Colour colour = ColourOf(pixel);
    const std::uint32_t grey = (colour.blue * 11 + colour.green * 59 + colour.red * 30) / 100;
    const auto faded = [](std::uint32_t part) { return part * 40 / 100; };
    return PixelOf({faded(grey), faded(grey), faded(grey), faded(colour.opacity)});
}

}  // namespace

Picture::Picture(int id, int pixels) : pixels_(pixels) {
    const std::vector<std::uint32_t> image = PixelsOfIcon(id, pixels);
    if (image.empty()) return;
    bitmap_ = Bitmap(pixels, pixels);
    std::transform(image.begin(), image.end(), bitmap_.Pixels(), Multiplied);
}

void Picture::Draw(HDC dc, int left, int top) const {
    if (IsEmpty()) return;
    const BitmapDc source(bitmap_.Get());
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, kOpaque, AC_SRC_ALPHA};
    GdiAlphaBlend(dc, left, top, pixels_, pixels_, source.Get(), 0, 0, pixels_, pixels_, blend);
}

Picture Picture::Faded() const {
    Picture faded;
    if (IsEmpty()) return faded;
    faded.pixels_ = pixels_;
    faded.bitmap_ = Bitmap(pixels_, pixels_);
    const auto count = static_cast<std::size_t>(pixels_) * static_cast<std::size_t>(pixels_);
    std::transform(bitmap_.Pixels(), bitmap_.Pixels() + count, faded.bitmap_.Pixels(), FadedPixel);
    return faded;
}

}  // namespace vw
