#include "ui/Icons.h"

#include <algorithm>

#include "platform/SystemError.h"
#include "ui/Bitmap.h"

namespace vw {

namespace {

std::size_t SquareOf(int side) noexcept {
    return static_cast<std::size_t>(side) * static_cast<std::size_t>(side);
}

const void* ResourceOf(int id, const wchar_t* type) noexcept {
    const HMODULE program = GetModuleHandleW(nullptr);
    const HRSRC resource = FindResourceW(program, MAKEINTRESOURCEW(id), type);
    return resource == nullptr ? nullptr : LockResource(LoadResource(program, resource));
}

// The entries of a group of icons in the resources follow its head without gaps, so the system's
// own declarations of icon files do not fit them.
constexpr std::size_t kGroupHead = 6;
constexpr std::size_t kGroupEntry = 14;

std::uint16_t NumberAt(const std::uint8_t* place) noexcept {
    return static_cast<std::uint16_t>(place[0] | place[1] << 8);
}

// The image of exactly this size. Its rows go from the bottom, and its height counts the rows of
// its mask too.
const BITMAPINFOHEADER* ImageOf(int id, int pixels) noexcept {
    const auto* const group = static_cast<const std::uint8_t*>(ResourceOf(id, RT_GROUP_ICON));
    if (group == nullptr) return nullptr;
    const std::size_t count = NumberAt(group + 4);
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* const entry = group + kGroupHead + i * kGroupEntry;
        if (entry[0] != pixels) continue;
        const void* const image = ResourceOf(NumberAt(entry + 12), RT_ICON);
        const auto* const header = static_cast<const BITMAPINFOHEADER*>(image);
        const bool fits = header != nullptr && header->biSize == sizeof *header &&
                          header->biWidth == pixels && header->biHeight == 2 * pixels &&
                          header->biBitCount == 32 && header->biCompression == BI_RGB;
        if (fits) return header;
    }
    return nullptr;
}

// The system stretches the image of another size.
std::vector<std::uint32_t> StretchedPixels(int id, int pixels) {
    const IconHandle icon = LoadPicture(id, pixels);
    ICONINFO info{};
    if (!icon || GetIconInfo(icon.Get(), &info) == 0) return {};
    const BitmapHandle colours(info.hbmColor);
    const BitmapHandle mask(info.hbmMask);
    const Bitmap image(pixels, pixels);
    const BitmapDc source(colours.Get());
    const BitmapDc target(image.Get());
    BitBlt(target.Get(), 0, 0, pixels, pixels, source.Get(), 0, 0, SRCCOPY);
    GdiFlush();
    return {image.Pixels(), image.Pixels() + SquareOf(pixels)};
}

}  // namespace

IconHandle LoadPicture(int id, int pixels) noexcept {
    return IconHandle(static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                                    IMAGE_ICON, pixels, pixels, 0)));
}

std::vector<std::uint32_t> PixelsOfIcon(int id, int pixels) {
    const BITMAPINFOHEADER* const header = ImageOf(id, pixels);
    if (header == nullptr) return StretchedPixels(id, pixels);
    const auto width = static_cast<std::size_t>(pixels);
    const auto* row = reinterpret_cast<const std::uint32_t*>(header + 1) + SquareOf(pixels);
    std::vector<std::uint32_t> image;
    image.reserve(SquareOf(pixels));
    for (int i = 0; i < pixels; ++i) {
        row -= width;
        image.insert(image.end(), row, row + width);
    }
    return image;
}

ImageList MakeImageList(std::span<const int> ids, int pixels, int height) {
    const int count = static_cast<int>(ids.size());
    ImageList list(ImageList_Create(pixels, height, ILC_COLOR32, count, 1));
    if (!list) RaiseLast({});
    const std::size_t above =
        static_cast<std::size_t>((height - pixels) / 2) * static_cast<std::size_t>(pixels);
    for (const int id : ids) {
        const Bitmap picture(pixels, height);
        const std::vector<std::uint32_t> image = PixelsOfIcon(id, pixels);
        std::copy(image.begin(), image.end(), picture.Pixels() + above);
        ImageList_Add(list.Get(), picture.Get(), nullptr);
    }
    return list;
}

}  // namespace vw
