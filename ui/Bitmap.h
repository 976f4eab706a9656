#pragma once

#include <cstdint>

#include "platform/Handle.h"

namespace vw {

/// Bitmaps.
struct BitmapTraits {
    using Type = HBITMAP;
    static Type Empty() noexcept { return nullptr; }
    static void Close(Type handle) noexcept { DeleteObject(handle); }
};
using BitmapHandle = UniqueHandle<BitmapTraits>;

/// A bitmap in memory with its pixels: rows from the top, four bytes a pixel, which are blue,
/// green, red and opacity from the lowest. At least one pixel wide and high.
class Bitmap {
  public:
    Bitmap() = default;
    /// Throws the system's error when there is no memory for it.
    Bitmap(int width, int height);

    [[nodiscard]] HBITMAP Get() const noexcept { return handle_.Get(); }
    /// The first pixel; lives as long as the bitmap.
    [[nodiscard]] std::uint32_t* Pixels() const noexcept { return pixels_; }

  private:
    BitmapHandle handle_;
    std::uint32_t* pixels_ = nullptr;
};

/// A device context in memory that draws on a bitmap. The bitmap has to live longer.
class BitmapDc {
  public:
    explicit BitmapDc(HBITMAP bitmap) noexcept
        : dc_(CreateCompatibleDC(nullptr)), before_(SelectObject(dc_, bitmap)) {}
    ~BitmapDc() {
        SelectObject(dc_, before_);
        DeleteDC(dc_);
    }
    BitmapDc(const BitmapDc&) = delete;
    BitmapDc& operator=(const BitmapDc&) = delete;

    [[nodiscard]] HDC Get() const noexcept { return dc_; }

  private:
    HDC dc_;
    HGDIOBJ before_;
};

}  // namespace vw
