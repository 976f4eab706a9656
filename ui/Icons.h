#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/Handle.h"
// The common controls' declarations need those of the window system first.
#include <commctrl.h>

namespace vw {

/// Icons.
struct IconHandleTraits {
    using Type = HICON;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { DestroyIcon(handle); }
};
using IconHandle = UniqueHandle<IconHandleTraits>;

/// Image lists of the common controls.
struct ImageListTraits {
    using Type = HIMAGELIST;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { ImageList_Destroy(handle); }
};
using ImageList = UniqueHandle<ImageListTraits>;

/// An icon of the program's resources, this many pixels wide and high: the picture of that
/// size, or the one next to it stretched. Empty when there is no such icon.
[[nodiscard]] IconHandle LoadPicture(int id, int pixels) noexcept;

/// The pixels of such an icon: rows from the top, four bytes a pixel, which are blue, green, red
/// and opacity from the lowest. Read from the resources, where that is much quicker than to make an
/// icon. Empty when there is no such icon.
[[nodiscard]] std::vector<std::uint32_t> PixelsOfIcon(int id, int pixels);

/// An image list of these icons in this order, each half-way down a picture that is `height` pixels
/// high. An icon that cannot be had leaves a gap, so that the others keep their positions.
[[nodiscard]] ImageList MakeImageList(std::span<const int> ids, int pixels, int height);

}  // namespace vw
