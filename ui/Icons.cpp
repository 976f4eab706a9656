#include "ui/Icons.h"

#include <cstdint>
#include <vector>

#include "platform/SystemError.h"

namespace vw {

namespace {

/// Bitmaps.
struct BitmapTraits {
    using Type = HBITMAP;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { DeleteObject(handle); }
};
using BitmapHandle = UniqueHandle<BitmapTraits>;

/// Canvases of our own.
struct CanvasTraits {
    using Type = HDC;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { DeleteDC(handle); }
};
using CanvasHandle = UniqueHandle<CanvasTraits>;

// Rows from the top, four bytes a pixel.
BITMAPINFO FormatOf(int width, int height) noexcept {
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = width;
    format.bmiHeader.biHeight = -height;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    return format;
}

// Blue, green, red and opacity, a byte each, from the lowest.
std::uint32_t Faded(std::uint32_t pixel) noexcept {
    const auto byte = [pixel](int position) { return (pixel >> (8 * position)) & 0xFF; };
    const std::uint32_t grey = (byte(0) * 11 + byte(1) * 59 + byte(2) * 30) / 100;
    const std::uint32_t opacity = byte(3) * 40 / 100;
    return opacity << 24 | grey << 16 | grey << 8 | grey;
}

}  // namespace

IconHandle LoadPicture(int id, int pixels) noexcept {
    return IconHandle(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                                    IMAGE_ICON, pixels, pixels, 0)));
}

IconHandle FadedPicture(HICON icon, int pixels) {
    ICONINFO info{};
    if (icon == nullptr || GetIconInfo(icon, &info) == 0) return IconHandle();
    const BitmapHandle colours(info.hbmColor);
    const BitmapHandle mask(info.hbmMask);
    const CanvasHandle dc(CreateCompatibleDC(nullptr));
    BITMAPINFO format = FormatOf(pixels, pixels);
    const auto size = static_cast<std::size_t>(pixels);
    std::vector<std::uint32_t> image(size * size);
    const auto rows = static_cast<UINT>(pixels);
    GetDIBits(dc.Get(), colours.Get(), 0, rows, image.data(), &format, DIB_RGB_COLORS);
    for (std::uint32_t& pixel : image) pixel = Faded(pixel);
    SetDIBits(dc.Get(), colours.Get(), 0, rows, image.data(), &format, DIB_RGB_COLORS);
    return IconHandle(CreateIconIndirect(&info));
}

ImageList MakeImageList(std::span<const int> ids, int pixels, int height) {
    const int count = static_cast<int>(ids.size());
    ImageList list(ImageList_Create(pixels, height, ILC_COLOR32, count, 1));
    if (!list) RaiseLast({});
    const CanvasHandle dc(CreateCompatibleDC(nullptr));
    BITMAPINFO iconFormat = FormatOf(pixels, pixels);
    const BITMAPINFO format = FormatOf(pixels, height);
    for (const int id : ids) {
        void* image = nullptr;
        const BitmapHandle picture(
            CreateDIBSection(dc.Get(), &format, DIB_RGB_COLORS, &image, nullptr, 0));
        if (!picture) RaiseLast({});
        const IconHandle icon = LoadPicture(id, pixels);
        ICONINFO info{};
        if (icon && GetIconInfo(icon.Get(), &info) != 0) {
            const BitmapHandle colours(info.hbmColor);
            const BitmapHandle mask(info.hbmMask);
            const auto above = static_cast<std::size_t>((height - pixels) / 2);
            auto* rows =
                static_cast<std::uint32_t*>(image) + above * static_cast<std::size_t>(pixels);
            GetDIBits(dc.Get(), colours.Get(), 0, static_cast<UINT>(pixels), rows, &iconFormat,
                      DIB_RGB_COLORS);
        }
        ImageList_Add(list.Get(), picture.Get(), nullptr);
    }
    return list;
}

}  // namespace vw
