#include "ui/Bitmap.h"

#include <algorithm>

#include "platform/SystemError.h"

namespace vw {

Bitmap::Bitmap(int width, int height) {
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = std::max(1, width);
    format.bmiHeader.biHeight = -std::max(1, height);
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    void* pixels = nullptr;
    handle_ = BitmapHandle(CreateDIBSection(nullptr, &format, DIB_RGB_COLORS, &pixels, nullptr, 0));
    if (!handle_) RaiseLast({});
    pixels_ = static_cast<std::uint32_t*>(pixels);
}

}  // namespace vw
